/** What visitors of a website searched for in a stretch of time, and what they didn't find. */

import { html, nothing, type PropertyValues, svg, type TemplateResult } from "lit";
import { customElement, property, state } from "lit/decorators.js";
import { type AnswerOf, call } from "../api";
import { TvxElement } from "../kit/element";
import { faultNotice } from "../kit/fault-notice";
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
  @state() private lines: readonly Line[] | undefined;
  @state() private hasMore = false;
  @state() private busy = false;
  @state() private fault: unknown;
  private wanted = "";

  protected override willUpdate(_changed: PropertyValues<this>): void {
    const wanted = [this.site, this.language, this.from, this.to, this.kind].join();
    if (!this.site || wanted === this.wanted) return;
    this.wanted = wanted;
    void this.load();
  }

  private readonly load = async (start = 0): Promise<void> => {
    const { wanted, site, language, from, to, kind } = this;
    this.busy = true;
    try {
      const lines = await call("desk.getSearchedWords", { site, lang: language, from, to, kind, start });
      if (wanted !== this.wanted) return;
      this.lines = start > 0 ? [...(this.lines ?? []), ...lines] : lines;
      this.hasMore = lines.length === AT_ONCE;
      this.fault = undefined;
    } catch (error) {
      if (wanted === this.wanted) this.fault = error;
    }
    if (wanted === this.wanted) this.busy = false;
  };

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
      ${this.hasMore ? html`<p><button type="button" class="button" @click=${() => this.busy || this.load(lines.length)}>${t(L.showMore)}</button></p>` : nothing}`;
  }

  protected override render(): TemplateResult {
    const { site, language, from, to } = this;
    const kinds = (Object.entries(KINDS) as [WordsKind, Label][]).map(
      ([kind, label]) =>
        html`<button type="button" aria-pressed=${String(kind === this.kind)} @click=${() => setQuery({ words: kind === "all" ? "" : kind })}>${word(label)}</button>`,
    );
    return html`<section aria-busy=${this.busy ? "true" : nothing} aria-labelledby="stat-words">
      <div class="inline"><h2 id="stat-words">${t(L.wordsSearched)}</h2><div class="choice" role="group" aria-label=${t(L.wordsSearched)}>${kinds}</div><span class="grow"></span>
        <a class="button small" href="/torvex/api/export/searches.csv?site=${site}&lang=${language}&from=${from}&to=${to}" download>${t(L.sitemapCsv)}</a></div>
      ${faultNotice(this.fault, () => this.load())}
      ${this.lines ? this.list(this.lines) : html`<div class="skeleton stat-wait"></div>`}</section>`;
  }
}
