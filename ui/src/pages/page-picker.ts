/** A tree to choose a page from; what can't be chosen is grey and says why. */

import { html, nothing, type PropertyValues, type TemplateResult } from "lit";
import { customElement, property, state } from "lit/decorators.js";
import { TvxElement } from "../kit/element";
import { icon } from "../kit/icon";
import "../kit/tvx-tree";
import type { TreeRow, TvxTree } from "../kit/tvx-tree";
import { L, t } from "../labels";
import { type Child, childrenOf } from "./children";
import { parentOf } from "./model/places";
import { KIND_ICONS, kindWord, titleOr } from "./words";
import "./page-picker.css";

@customElement("tvx-page-picker")
export class TvxPagePicker extends TvxElement {
  @property() site = "";
  @property() language = "";
  @property({ attribute: false }) label = "";
  /** The node that is chosen. */
  @property() chosen = "";
  /** A node that is shown at the beginning, with the way to it open. */
  @property() shownFirst = "";
  /** Why a page can't be chosen; empty when it can. */
  @property({ attribute: false }) refuses: (page: Child) => string = () => "";
  @state() private known = new Map<string, readonly Child[]>();
  @state() private open = new Set<string>();
  @state() private waiting = new Set<string>();
  @state() private fault = "";

  protected override willUpdate(changed: PropertyValues<this>): void {
    if (changed.has("site") || changed.has("language")) void this.begin();
  }

  private async begin(): Promise<void> {
    this.known = new Map();
    this.open = new Set();
    await this.expand("");
    const root = this.known.get("")?.[0]?.nodeId;
    if (root) await this.expand(root);
    for (const node of this.wayTo(this.shownFirst)) await this.expand(node);
    await this.updateComplete;
    if (this.shownFirst) this.querySelector<TvxTree>("tvx-tree")?.reveal(this.shownFirst);
  }

  private wayTo(node: string): string[] {
    const way: string[] = [];
    for (let at = parentOf(node); at.length > 5; at = parentOf(at)) way.unshift(at);
    return way;
  }

  private async expand(node: string): Promise<void> {
    this.open = new Set([...this.open, node]);
    if (this.known.has(node)) return;
    this.waiting = new Set([...this.waiting, node]);
    try {
      const found = await childrenOf(node, this.site, this.language);
      this.known = new Map([...this.known, [node, found]]);
    } catch (error) {
      this.fault = error instanceof Error ? error.message : String(error);
    }
    this.waiting = new Set([...this.waiting].filter((each) => each !== node));
  }

  private toggle(node: string): void {
    if (this.open.has(node)) this.open = new Set([...this.open].filter((each) => each !== node));
    else void this.expand(node);
  }

  /** All that is known of a page that the tree shows. */
  pageAt(node: string): Child | undefined {
    return this.known.get(parentOf(node))?.find((each) => each.nodeId === node);
  }

  /** The children of a page, as far as they are read. */
  below(node: string): readonly Child[] | undefined {
    return this.known.get(node);
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
        loading: this.waiting.has(child.nodeId),
        content: this.content(child),
        dimmed: this.refuses(child) !== "",
      };
      return row.expanded && child.hasChildren ? [row, ...this.rows(child.nodeId, level + 1)] : [row];
    });
  }

  private content(child: Child): TemplateResult {
    const why = this.refuses(child);
    return html`${icon(KIND_ICONS[child.type] ?? "file-text", kindWord(child.type))}<span class="cut">${titleOr(child.title)}</span>
      ${why ? html`<span class="note picker-why">${why}</span>` : child.nodeId === this.chosen ? html`<span class="picker-chosen">${icon("check")}</span>` : nothing}`;
  }

  private choose(node: string): void {
    const page = this.pageAt(node);
    if (page && this.refuses(page) === "") this.tell<Child>("tvx-choose", page);
    else if (page?.hasChildren) this.toggle(node);
  }

  protected override render(): TemplateResult {
    if (this.fault)
      return html`<div class="notice danger" role="alert">${icon("circle-alert")}<span>${this.fault}</span></div>`;
    const rows = this.rows("", 1);
    if (rows.length === 0) return html`<p class="soft picker-empty" aria-busy="true">${t(L.loadingTree)}</p>`;
    return html`<tvx-tree .rows=${rows} .current=${this.chosen} .selected=${new Set([this.chosen])} .label=${this.label}
      @tvx-toggle=${(event: CustomEvent<string>) => this.toggle(event.detail)}
      @tvx-open=${(event: CustomEvent<string>) => this.choose(event.detail)}
      @tvx-select=${(event: CustomEvent<string>) => this.choose(event.detail)}></tvx-tree>`;
  }
}

declare global {
  interface HTMLElementTagNameMap {
    "tvx-page-picker": TvxPagePicker;
  }
}
