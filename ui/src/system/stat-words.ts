/** What visitors of a website searched for in a stretch of time, and what they didn't find. */

import { html, nothing, type PropertyValues, svg, type TemplateResult } from "lit";
import { customElement, property } from "lit/decorators.js";
import { type AnswerOf, call } from "../api";
import { TvxElement } from "../kit/element";
import { faultNotice } from "../kit/fault-notice";
import { Parts } from "../kit/parts";
import "../kit/tvx-table";
import type { TableColumn } from "../kit/tvx-table";
import { L, type Label, number, t } from "../labels";
import { word } from "../pages/words";
import { setQuery } from "../shell/address";

type Line = AnswerOf<"desk.getSearchedWords">[number];

const KINDS = { all: L.wordsMost, empty: L.wordsEmpty } as const satisfies Record<string, Label>;
export type WordsKind = keyof typeof KINDS;
export const wordsKind = (name: string | null): WordsKind => (name === "empty" ? "empty" : "all");

/** What one answer holds. */
const AT_ONCE = 100;

@customElement("tvx-stat-words")
export class TvxStatWords extends TvxElement {
  @property() site = "";
  @property() language = "";
  @property() from = "";
  @property() to = "";
  @property() kind: WordsKind = "all";
  private readonly lines = new Parts<Line>(this, (start) => this.read(start), AT_ONCE);
  private wanted = "";

  protected override willUpdate(_changed: PropertyValues<this>): void {
    const wanted = [this.site, this.language, this.from, this.to, this.kind].join();
    if (!this.site || wanted === this.wanted) return;
    this.wanted = wanted;
    void this.lines.load();
  }

  private read(start: number): Promise<readonly Line[]> {
    const { site, language: lang, from, to, kind } = this;
    return call("desk.getSearchedWords", { site, lang, from, to, kind, start });
  }

  /** Drawn besides the numbers: searches, and at the end those that found nothing. */
  private bar({ searches, withoutResult }: Line, top: number): TemplateResult {
    const width = (100 * searches) / top;
    const empty = (100 * withoutResult) / top;
    return html`<svg class="word-bar" viewBox="0 0 100 10" preserveAspectRatio="none" aria-hidden="true">
      ${svg`<rect class="word-bar-all" width=${width} height="10"></rect><rect class="word-bar-empty" x=${width - empty} width=${empty} height="10"></rect>`}</svg>`;
  }

  private columns(top: number): TableColumn<Line>[] {
    const amount = (id: "searches" | "withoutResult", label: string): TableColumn<Line> => ({
      id,
      label,
      cell: (row) => number(row[id]),
      by: (row) => row[id],
      numeric: true,
      width: "96px",
    });
    return [
      { id: "word", label: t(L.wordColumn), cell: (row) => row.word, by: (row) => row.word ?? "" },
      { id: "bar", label: t(L.statShown), cell: (row) => this.bar(row, top), wide: true },
      amount("searches", t(L.wordsSearches)),
      amount("withoutResult", t(L.wordsEmpty)),
    ];
  }

  private list(lines: readonly Line[]): TemplateResult {
    if (lines.length === 0) return html`<p class="soft">${t(this.kind === "all" ? L.wordsNone : L.wordsAllFound)}</p>`;
    const top = Math.max(1, ...lines.map(({ searches, withoutResult }) => Math.max(searches, withoutResult)));
    return html`<tvx-table class="card" .label=${t(L.wordsSearched)} .columns=${this.columns(top)} .rows=${[...lines]} .keyOf=${(row: Line) => row.word ?? ""} .nameOf=${(row: Line) => row.word ?? ""}></tvx-table>
      <p class="note word-bars">${t(L.wordsBars)}</p>
      ${this.lines.hasMore ? html`<p><button type="button" class="button" @click=${this.lines.more}>${t(L.showMore)}</button></p>` : nothing}`;
  }

  protected override render(): TemplateResult {
    const { site, language, from, to } = this;
    const { rows, busy, fault, load } = this.lines;
    const kinds = (Object.entries(KINDS) as [WordsKind, Label][]).map(
      ([kind, label]) =>
        html`<button type="button" aria-pressed=${String(kind === this.kind)} @click=${() => setQuery({ words: kind === "all" ? "" : kind })}>${word(label)}</button>`,
    );
    return html`<section aria-busy=${busy ? "true" : nothing} aria-labelledby="stat-words">
      <div class="inline"><h2 id="stat-words">${t(L.wordsSearched)}</h2><div class="choice" role="group" aria-label=${t(L.wordsSearched)}>${kinds}</div><span class="grow"></span>
        <a class="button small" href="/torvex/api/export/searches.csv?site=${site}&lang=${language}&from=${from}&to=${to}" download>${t(L.sitemapCsv)}</a></div>
      ${faultNotice(fault, load)}
      ${rows ? this.list(rows) : html`<div class="skeleton stat-wait"></div>`}</section>`;
  }
}
