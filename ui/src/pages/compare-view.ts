/** Design against live: the setup as a table, texts by their words with marks, and as source. */

import { html, nothing, type PropertyValues, type TemplateResult } from "lit";
import { customElement, property, state } from "lit/decorators.js";
import { call } from "../api";
import { TvxElement } from "../kit/element";
import { faultNotice } from "../kit/fault-notice";
import { icon } from "../kit/icon";
import { L, t } from "../labels";
import type { PageFacts } from "./data";
import { bodyCounts, type Difference, partName } from "./differences";
import { type Piece, pieces, wordsOf } from "./model/changes";
import "./compare-view.css";

@customElement("tvx-compare")
export class TvxCompare extends TvxElement {
  @property({ attribute: false }) page: PageFacts | undefined;
  @state() private rows: readonly Difference[] | undefined;
  @state() private fault: unknown;
  @state() private source = false;

  protected override willUpdate(properties: PropertyValues<this>): void {
    if (properties.has("page")) void this.load();
  }

  private async load(): Promise<void> {
    if (!this.page) return;
    const { pageId } = this.page;
    try {
      const rows = (await call("desk.compare", { pageIdent: String(pageId) })) as Difference[];
      if (this.page?.pageId !== pageId) return;
      this.rows = rows;
      this.fault = undefined;
    } catch (error) {
      this.fault = error;
    }
  }

  protected override render(): TemplateResult {
    if (this.fault) return html`<div class="compare">${faultNotice(this.fault, () => this.load())}</div>`;
    if (!this.rows) return html`<div class="compare" aria-busy="true"><div class="skeleton compare-wait"></div></div>`;
    if (this.rows.length === 0)
      return html`<div class="empty">${icon("circle-check")}<h2>${t(L.noDifference)}</h2></div>`;
    const setup = this.rows.filter((row) => row.part !== "body");
    const bodies = this.rows.filter((row) => row.part === "body");
    return html`<div class="compare" tabindex="0" role="region" aria-label=${t(L.viewCompare)}>
      ${setup.length ? this.table(setup) : nothing}
      ${bodies.length ? this.switch() : nothing}
      ${bodies.map((row) => this.body(row))}
    </div>`;
  }

  private table(rows: readonly Difference[]): TemplateResult {
    const cell = (text: string): TemplateResult => (text === "" ? html`<span class="soft">–</span>` : html`${text}`);
    return html`<section class="card compare-card"><table class="compare-table">
      <caption>${t(L.setupPanel)}</caption>
      <thead><tr><td></td><th scope="col">${t(L.viewLive)}</th><th scope="col">${t(L.viewDesign)}</th></tr></thead>
      <tbody>${rows.map((row) => html`<tr><th scope="row">${partName(row)}</th><td><del>${cell(row.live)}</del></td><td><ins>${cell(row.design)}</ins></td></tr>`)}</tbody>
    </table></section>`;
  }

  private switch(): TemplateResult {
    const button = (source: boolean, label: string): TemplateResult =>
      html`<button type="button" aria-pressed=${source === this.source} @click=${() => {
        this.source = source;
      }}>${label}</button>`;
    return html`<div class="inline"><div class="choice" role="group" aria-label=${t(L.compareAs)}>${button(false, t(L.compareWords))}${button(true, t(L.compareSource))}</div>
      <span class="note compare-legend"><ins>${t(L.compareNew)}</ins> <del>${t(L.compareGone)}</del></span></div>`;
  }

  private body(row: Difference): TemplateResult {
    const [live, design] = this.source ? [row.live, row.design] : [wordsOf(row.live), wordsOf(row.design)];
    return html`<section class="card compare-card"><h2>${partName(row)} <span class="note">${bodyCounts(row)}</span></h2>
      <div class="compare-text ${this.source ? "source" : ""}">${pieces(live, design).map((piece) => this.piece(piece))}</div></section>`;
  }

  private piece(piece: Piece): TemplateResult {
    if (piece.kind === "same") return html`${this.shortened(piece.text)}`;
    return piece.kind === "new" ? html`<ins>${piece.text}</ins>` : html`<del>${piece.text}</del>`;
  }

  /** Long stretches that are the same show their ends only. */
  private shortened(text: string): string {
    const lines = text.split("\n");
    return lines.length > 12 ? [...lines.slice(0, 4), "…", ...lines.slice(-4)].join("\n") : text;
  }
}
