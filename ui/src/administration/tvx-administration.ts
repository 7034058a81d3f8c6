import { html, nothing } from "lit";
import { customElement, state } from "lit/decorators.js";
import { call } from "../api";
import { isProblem } from "../api/problem";
import { type MenuNode, menuOf } from "../formats/menu";
import { TvxElement, Watch } from "../kit/element";
import { icon } from "../kit/icon";
import sprite from "../kit/menu.gen.svg?url";
import "../kit/tvx-tree";
import type { TreeRow } from "../kit/tvx-tree";
import { interfaceLanguage, L, onWords, t } from "../labels";
import { go, place } from "../shell/address";
import { screenAt } from "../shell/registry";
import { websiteAt, workplace } from "../shell/workplace";
import "./tvx-administration.css";

/** What no screen answers isn't offered. */
const hasScreen = (program: string) => program !== "" && screenAt({ path: program }) !== undefined;

/** The administration menu of the left side, in three groups: installation, site, site and language. */
@customElement("tvx-administration")
export class TvxAdministration extends TvxElement {
  @state() private menu: MenuNode[] = [];
  @state() private phase: "loading" | "ready" | "closed" | "failed" = "loading";
  @state() private closed: ReadonlySet<number> = new Set();
  private asked = "";
  private readonly workplace = new Watch(this, workplace, () => void this.fetch());
  private readonly place = new Watch(this, place);
  private forget?: () => void;

  override connectedCallback(): void {
    super.connectedCallback();
    this.forget = onWords(() => void this.fetch());
    void this.fetch();
  }

  override disconnectedCallback(): void {
    super.disconnectedCallback();
    this.forget?.();
  }

  private async fetch(again = false): Promise<void> {
    const { site, lang } = workplace.value;
    const wanted = `${site}.${lang} ${interfaceLanguage()}`;
    if (!site || (wanted === this.asked && !again)) return;
    this.asked = wanted;
    try {
      this.menu = menuOf(String(await call("cManager.getAdvancedMap", { site, lang })));
      this.phase = "ready";
    } catch (error) {
      this.phase = isProblem(error) && error.code === "-1" ? "closed" : "failed";
      if (this.phase === "closed") setTimeout(() => this.isConnected && void this.fetch(true), 2000);
    }
  }

  private flip(id: string): void {
    const closed = new Set(this.closed);
    if (!closed.delete(Number(id))) closed.add(Number(id));
    this.closed = closed;
  }

  private find(id: string, nodes = this.menu): MenuNode | undefined {
    for (const node of nodes) {
      const found = String(node.advId) === id ? node : this.find(id, node.children);
      if (found) return found;
    }
    return undefined;
  }

  private open(id: string): void {
    const node = this.find(id);
    if (node?.program) void go(node.program);
    else if (node) this.flip(id);
  }

  private rows(nodes: MenuNode[], level = 1): TreeRow[] {
    return nodes.flatMap((node, at) => {
      const expandable = node.children.length > 0;
      const expanded = expandable && !this.closed.has(node.advId);
      const row: TreeRow = {
        id: String(node.advId),
        name: node.title,
        level,
        setSize: nodes.length,
        position: at + 1,
        expandable,
        expanded,
        content: html`${node.icon ? html`<svg class="adv" aria-hidden="true"><use href="${sprite}#${node.icon}"></use></svg>` : icon("circle")}<span class="cut grow">${node.title}</span>`,
      };
      return [row, ...(expanded ? this.rows(node.children, level + 1) : [])];
    });
  }

  protected override render() {
    if (this.phase === "loading") return html`<div class="waiting" aria-busy="true"></div>`;
    if (this.phase === "closed")
      return html`<div class="empty" role="status">${icon("loader-circle")}<p>${t(L.pagesAreMoved)}</p></div>`;
    if (this.phase === "failed")
      return html`<div class="empty" role="alert">${icon("cloud-off")}<p>${t(L.couldNotLoad)}</p><button class="button" @click=${() => this.fetch(true)}>${t(L.tryAgain)}</button></div>`;
    const { site, lang } = this.workplace.value;
    const website = websiteAt(site, lang);
    const names = [
      t(L.installation),
      website?.siteName ?? site,
      `${website?.siteName ?? site} · ${website?.langName ?? lang}`,
    ];
    return html`${[0, 1, 2].map((level) => this.group(level, names[level]!))}`;
  }

  private group(level: number, name: string) {
    const reachable = (nodes: MenuNode[]): MenuNode[] =>
      nodes
        .map((node) => ({ ...node, children: reachable(node.children) }))
        .filter(({ program, children }) => children.length > 0 || hasScreen(program));
    const nodes = reachable(this.menu.filter((node) => node.level === level));
    if (nodes.length === 0) return nothing;
    const current = nodes
      .flatMap((node) => [node, ...node.children])
      .find(({ program }) => program.toLowerCase() === this.place.value.path.toLowerCase());
    return html`<section><h2 class="adv-level">${name}</h2>
      <tvx-tree .label=${name} .rows=${this.rows(nodes)} .current=${String(current?.advId ?? "")} @tvx-toggle=${(event: CustomEvent) => this.flip(event.detail)}
        @tvx-open=${(event: CustomEvent) => this.open(event.detail)}></tvx-tree></section>`;
  }
}
