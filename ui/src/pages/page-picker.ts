/** A tree to choose a page from; what can't be chosen is grey and says why. */

import { html, nothing, type TemplateResult } from "lit";
import { customElement, property } from "lit/decorators.js";
import { icon } from "../kit/icon";
import "../kit/tvx-tree";
import type { TvxTree } from "../kit/tvx-tree";
import { L, t } from "../labels";
import { BranchTree } from "./branch-tree";
import type { Child } from "./children";
import { KIND_ICONS, kindWord, titleOr } from "./words";
import "./page-picker.css";

@customElement("tvx-page-picker")
export class TvxPagePicker extends BranchTree {
  @property({ attribute: false }) label = "";
  /** The node that is chosen. */
  @property() chosen = "";
  /** A node that is shown at the beginning, with the way to it open. */
  @property() shownFirst = "";
  /** Why a page can't be chosen; empty when it can. */
  @property({ attribute: false }) refuses: (page: Child) => string = () => "";

  protected get shownAtFirst(): readonly string[] {
    return [this.shownFirst];
  }

  protected override async begin(): Promise<void> {
    await super.begin();
    await this.updateComplete;
    if (this.shownFirst) this.querySelector<TvxTree>("tvx-tree")?.reveal(this.shownFirst);
  }

  protected content(child: Child): TemplateResult {
    const why = this.refuses(child);
    return html`${icon(KIND_ICONS[child.type] ?? "file-text", kindWord(child.type))}<span class="cut">${titleOr(child.title)}</span>
      ${why ? html`<span class="note picker-why">${why}</span>` : child.nodeId === this.chosen ? html`<span class="picker-chosen">${icon("check")}</span>` : nothing}`;
  }

  protected override isDimmed(child: Child): boolean {
    return this.refuses(child) !== "";
  }

  private choose(node: string): void {
    const page = this.pageAt(node);
    if (page && this.refuses(page) === "") this.tell<Child>("tvx-choose", page);
    else if (page?.hasChildren) this.toggle(node);
  }

  protected override render(): TemplateResult {
    if (this.fault)
      return html`<div class="notice danger" role="alert">${icon("circle-alert")}<span>${this.fault}</span></div>`;
    const rows = this.rows();
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
