/** Which part of a website a role's rights reach, chosen in its tree. */

import { html, nothing, type TemplateResult } from "lit";
import { customElement, property, state } from "lit/decorators.js";
import { TvxElement } from "../kit/element";
import { icon } from "../kit/icon";
import { dialog } from "../kit/tvx-dialog";
import "../kit/tvx-tree";
import type { TreeRow } from "../kit/tvx-tree";
import { L, t } from "../labels";
import { type Child, childrenOf } from "../pages/children";
import { titleOr } from "../pages/words";
import { titlesOf } from "./data";
import { chosenAbove, flippedNode } from "./model/grants";
import "./rights.css";

/** A website's tree with boxes. Tells "tvx-choose" (the nodes). */
@customElement("tvx-scope-tree")
export class TvxScopeTree extends TvxElement {
  @property() site = "";
  @property() language = "";
  @property({ attribute: false }) scope: readonly string[] = [];
  @property({ type: Boolean }) fixed = false;
  @state() private known = new Map<string, readonly Child[]>();
  @state() private open: ReadonlySet<string> = new Set();
  @state() private gone: readonly string[] = [];
  @state() private fault = "";

  override connectedCallback(): void {
    super.connectedCallback();
    void this.begin();
  }

  private async begin(): Promise<void> {
    try {
      await this.expand("");
      const root = this.known.get("")?.[0]?.nodeId;
      if (root) await this.expand(root);
      for (const node of this.scope) for (const above of waysTo(node)) await this.expand(above);
      const titles = await titlesOf(this.scope);
      this.gone = this.scope.filter((node) => titles.get(node) === undefined);
    } catch (error) {
      this.fault = error instanceof Error ? error.message : String(error);
    }
  }

  private async expand(node: string): Promise<void> {
    this.open = new Set([...this.open, node]);
    if (this.known.has(node)) return;
    const found = await childrenOf(node, this.site, this.language);
    this.known = new Map([...this.known, [node, found]]);
  }

  private async toggle(node: string): Promise<void> {
    if (this.open.has(node)) {
      this.open = new Set([...this.open].filter((each) => each !== node));
      return;
    }
    try {
      await this.expand(node);
    } catch (error) {
      this.fault = error instanceof Error ? error.message : String(error);
    }
  }

  private flip(node: string): void {
    if (this.fixed || chosenAbove(this.scope, node)) return;
    this.tell("tvx-choose", flippedNode(this.scope, node));
  }

  private rows(node: string, level: number): TreeRow[] {
    const children = this.known.get(node) ?? [];
    return children.flatMap((child, at) => {
      const row: TreeRow = {
        id: child.nodeId,
        name: titleOr(child.title),
        level,
        setSize: children.length,
        position: at + 1,
        expandable: child.hasChildren,
        expanded: this.open.has(child.nodeId),
        content: this.content(child),
      };
      return row.expanded && child.hasChildren ? [row, ...this.rows(child.nodeId, level + 1)] : [row];
    });
  }

  private content(child: Child): TemplateResult {
    const isChosen = this.scope.includes(child.nodeId);
    const isBelow = chosenAbove(this.scope, child.nodeId) !== "";
    const mark = isChosen
      ? icon("square-check", t(L.scopeChosen))
      : isBelow
        ? icon("check", t(L.scopeBelow))
        : icon("square-dashed");
    return html`<span class="scope-mark ${isChosen || isBelow ? "is" : ""}">${mark}</span><span class="cut">${titleOr(child.title)}</span>`;
  }

  protected override render(): TemplateResult {
    const rows = this.rows("", 1);
    const selected = new Set(this.scope);
    return html`${this.fault ? html`<p class="notice danger" role="alert">${icon("circle-alert")}<span>${this.fault}</span></p>` : nothing}
      ${this.gone.map((node) => this.lost(node))}
      ${
        rows.length
          ? html`<tvx-tree .rows=${rows} .selected=${selected} .label=${t(L.scopeTree)}
        @tvx-toggle=${(event: CustomEvent<string>) => void this.toggle(event.detail)}
        @tvx-open=${(event: CustomEvent<string>) => this.flip(event.detail)}
        @tvx-select=${(event: CustomEvent<string>) => this.flip(event.detail)}></tvx-tree>`
          : this.fault
            ? nothing
            : html`<p class="soft" aria-busy="true">${t(L.loadingTree)}</p>`
      }`;
  }

  private lost(node: string): TemplateResult {
    const remove = (): void => {
      this.gone = this.gone.filter((each) => each !== node);
      this.tell(
        "tvx-choose",
        this.scope.filter((each) => each !== node),
      );
    };
    return html`<p class="notice warn">${icon("triangle-alert")}<span class="grow">${t(L.scopePageGone, { node })}</span>
      ${this.fixed ? nothing : html`<button class="button small" @click=${remove}>${t(L.delete)}</button>`}</p>`;
  }
}

/** The nodes above a node, from the top. */
function waysTo(node: string): string[] {
  const way: string[] = [];
  for (let at = node.slice(0, -3); at.length > 5; at = at.slice(0, -3)) way.unshift(at);
  return way;
}

/** The chosen nodes, none for the whole website; undefined when nothing is to change. */
export async function scopeDialog(
  title: string,
  site: string,
  lang: string,
  scope: readonly string[],
  fixed: boolean,
): Promise<readonly string[] | undefined> {
  let chosen = scope;
  const answer = await dialog({
    title,
    body: (box) => html`<p class="note">${t(L.scopeHint)}</p>
      <p class="scope-says" role="status">${chosen.length ? t(L.scopeSome) : t(L.scopeWhole)}
        ${chosen.length && !fixed ? html`<button class="button small" @click=${() => choose([])}>${t(L.scopeWholeAgain)}</button>` : nothing}</p>
      <tvx-scope-tree .site=${site} .language=${lang} .scope=${chosen} ?fixed=${fixed} @tvx-choose=${(event: CustomEvent<string[]>) => choose(event.detail)}></tvx-scope-tree>${remember(box)}`,
    ...(fixed
      ? {}
      : {
          actions: () => [
            { name: "cancel", label: t(L.cancel) },
            { name: "go", label: t(L.scopeTake), kind: "primary" as const },
          ],
        }),
  });
  return answer === "go" ? chosen : undefined;

  function choose(nodes: readonly string[]): void {
    chosen = nodes;
    opened?.requestUpdate();
  }
}

let opened: { requestUpdate(): void } | undefined;
function remember(box: { requestUpdate(): void }): typeof nothing {
  opened = box;
  return nothing;
}
