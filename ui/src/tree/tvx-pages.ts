import { html, nothing, type PropertyValues } from "lit";
import { customElement, query, state } from "lit/decorators.js";
import { call } from "../api";
import type { SitemapNode } from "../formats/sitemap";
import { editFlagsOf } from "../formats/status";
import { TvxElement, Watch } from "../kit/element";
import { icon } from "../kit/icon";
import { kindIcon, liveMark, liveWord, stateMark, stateWord } from "../kit/marks";
import { type MenuEntry, openMenu, rule } from "../kit/tvx-menu";
import "../kit/tvx-tree";
import { toast } from "../kit/tvx-toast";
import type { Drop, DropPlace, TreeRow, TvxTree } from "../kit/tvx-tree";
import { L, type Label, t } from "../labels";
import { go, pageAddress, place } from "../shell/address";
import { keyOf } from "../shell/keys";
import { actions, moves } from "../shell/registry";
import { type PageState, sought, workplace } from "../shell/workplace";
import { hasState, hasWords, inScope, type ShownNode, type StateFilter } from "./model";
import { collapse, expand, load, reveal, shownPage, tree } from "./tree-data";
import "./tvx-pages.css";

const filters: [StateFilter, Label][] = [
  ["changed", L.markChanged],
  ["new", L.markNew],
  ["approved", L.markApproved],
  ["marked", L.markMarked],
  ["held", L.heldBySomebody],
  ["off", L.offLine],
  ["mine", L.whereIMayEdit],
];

/** The page tree of the left side. */
@customElement("tvx-pages")
export class TvxPages extends TvxElement {
  @state() private words = "";
  @state() private filter: StateFilter | "" = "";
  @state() private scope = "";
  @state() private selected: ReadonlySet<string> = new Set();
  @state() private cut = { nodeId: "", copies: false };
  @query("tvx-tree") private readonly list!: TvxTree;
  private readonly tree = new Watch(this, tree);
  private revealed = 0;

  constructor() {
    super();
    new Watch(this, place, () => void this.showPlace());
    new Watch(this, sought);
  }

  override connectedCallback(): void {
    super.connectedCallback();
    void this.showPlace();
  }

  protected override updated(_changed: PropertyValues): void {
    if (this.tree.value.phase === "ready" && this.revealed !== shownPage()) void this.showPlace();
    void this.showSought();
  }

  /** What somebody looks for stands here, whatever was filtered. */
  private async showSought(): Promise<void> {
    const nodeId = sought.value;
    const { phase, model, site, lang } = this.tree.value;
    if (phase !== "ready" || !nodeId.startsWith(`${site}.${lang}`)) return;
    sought.value = "";
    this.words = "";
    this.filter = "";
    await reveal(nodeId);
    await this.updateComplete;
    if (model.node(nodeId)) this.list?.focusRow(nodeId);
    else toast(t(L.pageGone), { kind: "warn" });
  }

  /** What is opened anywhere is shown here. */
  private async showPlace(): Promise<void> {
    const pageId = shownPage();
    const { phase, model, site, lang } = this.tree.value;
    if (!pageId || phase !== "ready" || this.revealed === pageId) return;
    this.revealed = pageId;
    const nodeId = model.page(pageId)?.nodeId ?? String(await call("cManager.getNodeId", { pageId }).catch(() => ""));
    if (!nodeId.startsWith(`${site}.${lang}`)) return;
    await reveal(nodeId);
    await this.updateComplete;
    this.list?.reveal(nodeId);
  }

  private get fits(): ((node: SitemapNode) => boolean) | undefined {
    const tests = [
      ...(this.words.trim() ? [hasWords(this.words)] : []),
      ...(this.filter === "mine" ? [inScope(this.scope)] : this.filter ? [hasState(this.filter)] : []),
    ];
    return tests.length > 0 ? (node) => tests.every((test) => test(node)) : undefined;
  }

  private async choose(filter: StateFilter): Promise<void> {
    const { site, lang } = this.tree.value;
    if (filter === "mine") this.scope = String(await call("cManager.getLoginScope", { site, lang, task: "edit" }));
    this.filter = this.filter === filter ? "" : filter;
  }

  private filterMenu(event: Event): void {
    const entries = filters.map(([id, label]) => ({
      label: t(label as typeof L.offLine),
      checked: id === this.filter,
      run: () => void this.choose(id),
    }));
    openMenu(event.currentTarget as HTMLElement, entries, t(L.filterByState));
  }

  private async toggle(nodeId: string): Promise<void> {
    if (this.tree.value.model.expanded.has(nodeId)) return collapse(nodeId);
    try {
      await expand(nodeId);
    } catch {
      toast(t(L.couldNotLoad), { kind: "danger" });
    }
  }

  private open(nodeId: string): void {
    const node = this.tree.value.model.node(nodeId);
    if (!node) return;
    this.revealed = node.pageId;
    void go(pageAddress(node.pageId));
  }

  private select(nodeId: string): void {
    const selected = new Set(this.selected);
    if (!selected.delete(nodeId)) selected.add(nodeId);
    this.selected = selected;
  }

  /** A node as actions take it, with this login's rights there. */
  private async pageOf(nodeId: string): Promise<PageState | null> {
    const { model, site, lang } = this.tree.value;
    const node = model.node(nodeId);
    if (!node) return null;
    const flags = String(await call("cManager.getLoginEditRights", { site, lang, pageIdent: nodeId }));
    const { pageId, title, type, state, heldByOther, locked } = node;
    return {
      pageId,
      nodeId,
      site,
      lang,
      title,
      type,
      state,
      holder: "",
      heldByMe: locked && !heldByOther,
      heldByOther,
      rights: editFlagsOf(flags),
    };
  }

  private async menu(nodeId: string, anchor: HTMLElement): Promise<void> {
    const page = await this.pageOf(nodeId);
    if (!page || !anchor.isConnected) return;
    const entries: MenuEntry[] = [
      { label: t(L.open), icon: "file-text", key: "Enter", run: () => this.open(nodeId) },
      rule,
    ];
    for (const action of actions.value.filter((one) => one.when(page))) {
      entries.push({
        label: action.label(page),
        ...(action.icon ? { icon: action.icon } : {}),
        ...(action.key ? { key: action.key } : {}),
        ...(action.danger ? { danger: true } : {}),
        disabled: action.disabled?.(page) ?? "",
        run: () => void action.run(page),
      });
    }
    openMenu(anchor, entries.at(-1) === rule ? entries.slice(0, -1) : entries, page.title);
  }

  private async act(key: string, nodeId: string): Promise<void> {
    const page = await this.pageOf(nodeId);
    const action = page && actions.value.find((one) => one.key === key && one.when(page));
    if (!page || !action) return;
    const why = action.disabled?.(page) ?? "";
    if (why) toast(why, { kind: "warn" });
    else await action.run(page);
  }

  private moved(work: Promise<unknown> | undefined): void {
    work?.catch((error: unknown) => toast(error instanceof Error ? error.message : String(error), { kind: "danger" }));
  }

  private pasteInto(nodeId: string): void {
    const { nodeId: from, copies } = this.cut;
    const why = moves.value?.refuses(from, nodeId, "into") ?? "";
    if (!copies && why) return void toast(why, { kind: "warn" });
    this.cut = { nodeId: "", copies: false };
    this.moved(copies ? moves.value?.copy(from, nodeId, "into") : moves.value?.move(from, nodeId, "into"));
  }

  private key(event: KeyboardEvent): void {
    const nodeId = this.list?.focused;
    if (!nodeId || !(event.target as Element).matches(".tree-row")) return;
    const key = keyOf(event);
    const steps: Record<string, "up" | "down"> = { "Alt+ArrowUp": "up", "Alt+ArrowDown": "down" };
    if (steps[key] && moves.value) this.moved(moves.value.step(nodeId, steps[key]));
    else if ((key === "Ctrl+X" || key === "Ctrl+C") && moves.value) this.cut = { nodeId, copies: key === "Ctrl+C" };
    else if (key === "Ctrl+V" && this.cut.nodeId) this.pasteInto(nodeId);
    else if (key === "Shift+F10" || key === "ContextMenu") void this.menu(nodeId, event.target as HTMLElement);
    else if (key === "Escape" && this.cut.nodeId) this.cut = { nodeId: "", copies: false };
    else if (actions.value.some((one) => one.key === key)) void this.act(key, nodeId);
    else return;
    event.preventDefault();
    event.stopPropagation();
  }

  private readonly takes = (from: string, to: string, where: DropPlace) =>
    moves.value !== null && moves.value.refuses(from, to, where) === "";

  private dropped({ from, to, place: where }: Drop): void {
    this.moved(moves.value?.move(from, to, where));
  }

  private toRow = ({ node, level, setSize, position, expanded }: ShownNode): TreeRow => ({
    id: node.nodeId,
    name: this.nameOf(node),
    level,
    setSize,
    position,
    expandable: node.hasChildren,
    expanded,
    loading: this.tree.value.loading.has(node.nodeId),
    dimmed: this.cut.nodeId === node.nodeId && !this.cut.copies,
    content: this.content(node),
  });

  private nameOf(node: SitemapNode): string {
    const { title, state, live, locked, heldByOther } = node;
    const held = locked ? t(heldByOther ? L.heldByAnother : L.heldByYou) : "";
    return [title, state === "live" ? "" : stateWord(state), liveWord(live), held].filter(Boolean).join(", ");
  }

  private content(node: SitemapNode) {
    const { title, liveTitle, state, live, locked, heldByOther, type } = node;
    const other =
      liveTitle !== null && liveTitle !== title ? html`<span class="live-title">${liveTitle}</span>` : nothing;
    const held = locked
      ? html`<span class="mark held" title=${t(heldByOther ? L.heldByAnother : L.heldByYou)}>${icon(heldByOther ? "lock" : "pen-line")}</span>`
      : nothing;
    return html`<span class="kind">${kindIcon(type)}</span><span class="cut grow ${state === "marked" ? "struck" : ""}">${title}${other}</span>${held}${liveMark(live)}${stateMark(state)}
      <button class="button quiet small icon-only more" tabindex="-1" aria-label=${t(L.moreFor, { name: title })} @click=${(event: Event) => this.more(event, node)}>${icon("ellipsis")}</button>`;
  }

  private more(event: Event, { nodeId }: SitemapNode): void {
    event.stopPropagation();
    void this.menu(nodeId, event.currentTarget as HTMLElement);
  }

  private addPage(): void {
    const { model, site, lang } = this.tree.value;
    const nodeId = this.list?.focused || model.page(shownPage())?.nodeId || `${site}.${lang}`;
    void this.act("Insert", nodeId);
  }

  protected override render() {
    const { phase } = this.tree.value;
    const canAdd = actions.value.some((one) => one.key === "Insert") && workplace.value.rights.edit;
    return html`
      <div class="tree-tools">
        <label class="unseen" for="tree-filter">${t(L.filterPages)}</label>
        <input id="tree-filter" class="input" type="search" placeholder=${t(L.filterPages)} .value=${this.words} @input=${this.filtered} @keydown=${this.intoList} />
        <button class="button quiet icon-only" aria-label=${t(L.filterByState)} title=${t(L.filterByState)} aria-haspopup="menu" aria-expanded="false"
          aria-pressed=${this.filter ? "true" : "false"} @click=${this.filterMenu}>${icon("list-filter")}</button>
        ${canAdd ? html`<button class="button quiet icon-only" aria-label=${t(L.newPage)} title=${t(L.newPage)} @click=${this.addPage}>${icon("plus")}</button>` : nothing}
      </div>
      ${this.filter ? html`<p class="tree-filtered note">${t(filters.find(([id]) => id === this.filter)![1] as typeof L.offLine)} <button class="link-button" @click=${() => (this.filter = "")}>${t(L.showAll)}</button></p>` : nothing}
      ${phase === "ready" ? this.pages() : this.phase()}
    `;
  }

  private filtered(event: Event): void {
    this.words = (event.target as HTMLInputElement).value;
  }

  private intoList(event: KeyboardEvent): void {
    const first = this.list?.rows[0];
    if (event.key === "Escape" && this.words) this.words = "";
    else if (event.key === "ArrowDown" && first) this.list.focusRow(first.id);
    else return;
    event.preventDefault();
    event.stopPropagation();
  }

  private pages() {
    const { model } = this.tree.value;
    const rows = model.shown(this.fits).map(this.toRow);
    if (rows.length === 0)
      return html`<div class="empty">${icon("list-tree")}<p>${t(this.fits ? L.noPageFits : L.noPagesHere)}</p></div>`;
    return html`
      <tvx-tree class="grow" .label=${t(L.pages)} .rows=${rows} .selected=${this.selected} .current=${model.page(shownPage())?.nodeId ?? ""} .takes=${moves.value ? this.takes : undefined}
        @keydown=${this.key} @tvx-toggle=${(event: CustomEvent) => this.toggle(event.detail)} @tvx-open=${(event: CustomEvent) => this.open(event.detail)}
        @tvx-select=${(event: CustomEvent) => this.select(event.detail)} @tvx-menu=${(event: CustomEvent) => this.menu(event.detail.id, event.detail.anchor)}
        @tvx-drop=${(event: CustomEvent<Drop>) => this.dropped(event.detail)}></tvx-tree>
    `;
  }

  private phase() {
    const { phase, fault } = this.tree.value;
    if (phase === "closed")
      return html`<div class="empty" role="status">${icon("loader-circle")}<p>${t(L.pagesAreMoved)}</p></div>`;
    if (phase === "failed")
      return html`<div class="empty" role="alert">${icon("cloud-off")}<p>${t(L.couldNotLoad)}</p><p class="note">${fault}</p><button class="button" @click=${() => load()}>${t(L.tryAgain)}</button></div>`;
    return html`<div class="tree-skeleton" aria-busy="true">${[70, 52, 64, 40, 58, 46].map(() => html`<div class="skeleton"></div>`)}</div>`;
  }
}
