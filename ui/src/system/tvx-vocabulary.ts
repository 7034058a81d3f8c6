/** The words of the interface in a language, beside the English ones; out to a file for translators, and in again. */

import { html, nothing, type PropertyValues, type TemplateResult } from "lit";
import { customElement, property, state } from "lit/decorators.js";
import { live } from "lit/directives/live.js";
import { TvxElement } from "../kit/element";
import { faultNotice } from "../kit/fault-notice";
import { icon } from "../kit/icon";
import "../kit/tvx-table";
import type { TableColumn } from "../kit/tvx-table";
import { toast } from "../kit/tvx-toast";
import { interfaceLanguage, L, plural, t } from "../labels";
import { failed } from "../pages/actions";
import { filterField, matches } from "../records/fields";
import { isChanged, mayChange } from "../records/lock";
import { setQuery } from "../shell/address";
import { type InterfaceLanguage, interfacesOf, saveWord, type Words, wordsOf } from "./data";
import { importWords } from "./import-words";
import { hasSamePlaces, isMissing, placesIn, type Word } from "./model/words";
import "../pages/lists.css";
import "../rights/rights.css";
import "./system.css";

const ENTRY = 52;

/** Roughly where a word stands, by its number. */
function usedIn(label: number): string {
  if (label >= 5000 && label < 5500) return t(L.useAnswers);
  if (label >= 3000 && label < 4000) return t(L.useMenus);
  return label < 3000 ? t(L.useForms) : t(L.useScreens);
}

@customElement("tvx-vocabulary")
export class TvxVocabulary extends TvxElement {
  @property({ attribute: false }) params = new URLSearchParams();
  @state() private languages: readonly InterfaceLanguage[] = [];
  @state() private all: Words | undefined;
  @state() private mayChange = false;
  @state() private fault: unknown;
  private shown = "";

  override connectedCallback(): void {
    super.connectedCallback();
    void this.begin();
  }

  protected override willUpdate(_changed: PropertyValues<this>): void {
    if (this.language && this.language !== this.shown) void this.load();
  }

  /** The one that the address names, else one's own, unless that is English, which stands there anyway. */
  private get language(): string {
    const codes = this.languages.map(({ lang_ID }) => lang_ID);
    const wished = this.params.get("lang") ?? "";
    if (codes.includes(wished)) return wished;
    const own = interfaceLanguage();
    return codes.includes(own) && own !== "en" ? own : (codes.find((code) => code !== "en") ?? codes[0] ?? "");
  }

  private readonly begin = async (): Promise<void> => {
    try {
      const [languages, may] = await Promise.all([interfacesOf(), mayChange(ENTRY)]);
      this.mayChange = may;
      this.languages = languages;
      this.fault = undefined;
      await this.load();
    } catch (error) {
      this.fault = error;
    }
  };

  private readonly load = async (): Promise<void> => {
    const { language } = this;
    this.shown = language;
    try {
      const all = await wordsOf(language);
      if (language !== this.shown) return;
      this.all = all;
      this.fault = undefined;
    } catch (error) {
      this.fault = error;
    }
  };

  private async save(word: Word, field: HTMLInputElement): Promise<void> {
    const { all } = this;
    const text = field.value.trim();
    if (!all || text === word.word) return;
    try {
      await saveWord(all.langId, word, text);
      if (this.all?.langId !== all.langId) return;
      this.all = {
        ...this.all,
        words: this.all.words.map((one) => (one.label === word.label ? { ...one, word: text } : one)),
        expected: undefined,
      };
      toast(t(L.wordSaved, { label: word.label }));
    } catch (error) {
      if (!isChanged(error)) return failed(error);
      toast(t(L.recordChanged), { kind: "warn" });
      await this.load();
    }
  }

  private pressed(event: KeyboardEvent, word: Word): void {
    const field = event.target as HTMLInputElement;
    if (event.key === "Enter") void this.save(word, field);
    else if (event.key === "Escape") field.value = word.word;
    else return;
    event.preventDefault();
    event.stopPropagation();
  }

  private async read(): Promise<void> {
    const { language } = this;
    if (await importWords(language)) await this.load();
  }

  private get columns(): TableColumn<Word>[] {
    return [
      {
        id: "label",
        label: t(L.reference),
        cell: (row) => row.label,
        by: (row) => row.label,
        numeric: true,
        wide: true,
        width: "84px",
      },
      {
        id: "english",
        label: t(L.english),
        cell: (row) => html`<span title=${row.english}>${row.english}</span>`,
        by: (row) => row.english,
      },
      {
        id: "word",
        label: this.languages.find(({ lang_ID }) => lang_ID === this.language)?.lang_name ?? this.language,
        cell: (row) => this.field(row),
        by: (row) => row.word,
      },
      {
        id: "used",
        label: t(L.usedIn),
        cell: (row) => html`<span class="soft">${usedIn(row.label)}</span>`,
        by: (row) => usedIn(row.label),
        wide: true,
        width: "120px",
      },
    ];
  }

  private field(row: Word): TemplateResult {
    const wrong = !hasSamePlaces(row);
    const places = placesIn(row.english)
      .map((name) => `{${name}}`)
      .join(", ");
    const why = places ? t(L.placesDiffer, { places }) : t(L.noPlaces);
    return html`<span class="word-cell"><input class="input word-field" lang=${this.language} ?readonly=${!this.mayChange} maxlength="4000" aria-label="${row.label}: ${row.english}" aria-invalid=${wrong ? "true" : nothing}
      .value=${live(row.word)} @keydown=${(event: KeyboardEvent) => this.pressed(event, row)} @change=${(event: Event) => this.save(row, event.target as HTMLInputElement)} />
      ${wrong ? html`<span class="word-wrong" title=${why}>${icon("triangle-alert", why)}</span>` : nothing}</span>`;
  }

  protected override render(): TemplateResult {
    const words = this.params.get("words") ?? "";
    const missing = this.params.get("missing") === "1";
    const left = this.all?.words.filter(isMissing).length ?? 0;
    return html`<section class="list-screen" aria-busy=${this.all || this.fault ? nothing : "true"}>
      <header class="list-head"><h1>${t(L.vocabulary)}</h1>
        <select class="select word-language" aria-label=${t(L.language)} @change=${(event: Event) => setQuery({ lang: (event.target as HTMLSelectElement).value })}>
          ${this.languages.map(({ lang_ID, lang_name }) => html`<option value=${lang_ID} ?selected=${lang_ID === this.language}>${lang_name}</option>`)}</select>
        <span class="note" role="status">${this.all ? plural(left, L.wordsLeftOne, L.wordsLeftMany) : ""}</span><span class="grow"></span>${filterField(words)}
        <label class="check"><input type="checkbox" .checked=${live(missing)} @change=${(event: Event) => setQuery({ missing: (event.target as HTMLInputElement).checked ? "1" : "" })} /><span>${t(L.onlyMissing)}</span></label>
        <a class="button" href="/torvex/api/export/words.csv?lang=${this.language}" download="words-${this.language}.csv">${t(L.sitemapCsv)}</a>
        ${this.mayChange ? html`<button class="button" @click=${this.read}>${icon("upload")}${t(L.readCsv)}</button>` : nothing}</header>
      ${faultNotice(this.fault, this.begin)}
      ${this.all ? this.found(this.all.words, words, missing) : nothing}
    </section>`;
  }

  private found(all: readonly Word[], words: string, missing: boolean): TemplateResult {
    const rows = all.filter(
      (row) => (!missing || isMissing(row)) && matches(words, String(row.label), row.english, row.word),
    );
    if (rows.length === 0) return html`<div class="empty">${icon("languages")}<p>${t(L.nothingFound)}</p></div>`;
    return html`<tvx-table class="card tall-rows" .label=${t(L.vocabulary)} .columns=${this.columns} .rows=${rows} .opens=${false} .keyOf=${(row: Word) => String(row.label)} .nameOf=${(row: Word) => row.english}></tvx-table>`;
  }
}
