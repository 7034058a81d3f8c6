/** Search with filters, kept searches, and work with what was found. */

import { html, nothing, type PropertyValues, type TemplateResult } from "lit";
import { customElement, property, state } from "lit/decorators.js";
import { call, isCancelled } from "../api";
import type { Found } from "../formats/found";
import { TvxElement } from "../kit/element";
import { faultNotice } from "../kit/fault-notice";
import { type IconName, icon } from "../kit/icon";
import "../kit/tvx-table";
import type { TableColumn } from "../kit/tvx-table";
import { toast } from "../kit/tvx-toast";
import { L, type Label, plural, t } from "../labels";
import { go, pageAddress, setQuery } from "../shell/address";
import { hasTreeOf, kept, showInTree, workplace } from "../shell/workplace";
import type { PageState } from "./model/status";
import { selectionBar } from "./selection";
import { STATE_ICONS, stateWord, titleOr, word } from "./words";
import "./chips.css";
import "./lists.css";

interface Kept {
  readonly name: string;
  readonly query: string;
}

const PAUSE = 200;
/** So many of each kind come at once. */
const OF_EACH = 30;
const KINDS: readonly { kind: string; label: Label }[] = [
  { kind: "", label: L.all },
  { kind: "page", label: L.pages },
  { kind: "image", label: L.kindsImages },
  { kind: "document", label: L.kindsDocuments },
];
const ICONS: Readonly<Record<Found["kind"], IconName>> = { page: "file-text", image: "image", document: "file" };
const STATES: readonly PageState[] = ["new", "changed", "approved", "marked", "live"];

const keyOf = (row: Found): string => `${row.kind} ${row.pageId} ${row.siteId} ${row.path}`;

/** Media have no language. */
const websiteOf = ({ siteId, lang }: Found) =>
  workplace.value.websites.find((one) => one.site === siteId && (lang === "" || one.lang === lang));

@customElement("tvx-search-page")
export class TvxSearchPage extends TvxElement {
  @property({ attribute: false }) params = new URLSearchParams();
  @state() private rows: readonly Found[] | undefined;
  @state() private more = false;
  @state() private fault: unknown;
  @state() private busy = false;
  @state() private selected: ReadonlySet<string> = new Set();
  private asked: AbortController | undefined;
  private timer: ReturnType<typeof setTimeout> | undefined;
  private last = "";
  private from = 0;

  private get words(): string {
    return this.params.get("words") ?? "";
  }

  private get kinds(): string {
    return this.params.get("kinds") ?? "";
  }

  private get website(): string {
    return this.params.get("in") ?? "";
  }

  private get state(): string {
    return this.params.get("state") ?? "";
  }

  protected override willUpdate(properties: PropertyValues<this>): void {
    if (!properties.has("params")) return;
    const wanted = this.params.toString();
    if (wanted === this.last && this.rows) return;
    this.last = wanted;
    void this.search(0);
  }

  private set(values: Record<string, string>): void {
    clearTimeout(this.timer);
    this.timer = setTimeout(() => setQuery(values), PAUSE);
  }

  private async search(from: number): Promise<void> {
    this.asked?.abort();
    if (this.words.trim() === "") {
      this.rows = undefined;
      return;
    }
    const asked = new AbortController();
    this.asked = asked;
    this.busy = true;
    const [site = "", lang = ""] = this.website.split(".");
    try {
      const filters = this.state ? `state:${this.state}` : "";
      const found = (await call(
        "desk.find",
        { words: this.words, kinds: this.kinds, site, lang, filters, from },
        { signal: asked.signal },
      )) as Found[];
      this.from = from;
      this.rows = from > 0 ? [...(this.rows ?? []), ...found] : found;
      this.more = (["page", "image", "document"] as const).some(
        (kind) => found.filter((row) => row.kind === kind).length === OF_EACH,
      );
      this.fault = undefined;
      if (from === 0) this.selected = new Set();
    } catch (error) {
      if (!isCancelled(error)) this.fault = error;
    } finally {
      if (this.asked === asked) this.busy = false;
    }
  }

  private get searches(): readonly Kept[] {
    try {
      return JSON.parse(kept.get("searches") || "[]") as Kept[];
    } catch {
      return [];
    }
  }

  private keep(searches: readonly Kept[]): void {
    kept.set("searches", JSON.stringify(searches));
    this.requestUpdate();
  }

  private keepThis(): void {
    const query = this.params.toString();
    const name = [this.words, this.state && stateWord(this.state as PageState)].filter(Boolean).join(" · ");
    this.keep([...this.searches.filter((each) => each.query !== query), { name, query }]);
    toast(t(L.searchKept));
  }

  private get columns(): TableColumn<Found>[] {
    return [
      {
        id: "title",
        label: t(L.title),
        cell: (row) =>
          html`<span class="found-title">${icon(ICONS[row.kind])}${this.link(row)}</span>${row.excerpt ? html`<span class="note found-excerpt">${row.excerpt}</span>` : nothing}`,
        by: (row) => row.title,
      },
      {
        id: "state",
        label: t(L.searchState),
        cell: (row) =>
          row.state
            ? html`<span class="chip ${row.state}">${icon(STATE_ICONS[row.state])}<span class="chip-word">${stateWord(row.state)}</span></span>`
            : nothing,
        by: (row) => row.state,
        width: "172px",
      },
      {
        id: "path",
        label: t(L.pathColumn),
        cell: (row) => html`<span class="soft">${row.path}</span>`,
        by: (row) => row.path,
        wide: true,
      },
      {
        id: "where",
        label: t(L.searchWhere),
        cell: (row) =>
          html`<span class="soft">${websiteOf(row)?.siteName ?? row.siteId}</span><br><span class="note">${row.lang && (websiteOf(row)?.langName ?? row.lang)}</span>`,
        by: (row) => `${row.siteId}.${row.lang}`,
        wide: true,
        width: "132px",
      },
      { id: "tree", label: "", cell: (row) => this.treeButton(row), width: "56px" },
    ];
  }

  private address(row: Found): string {
    if (row.kind === "page") return pageAddress(row.pageId);
    const folder = row.path.split("/").slice(0, -1).join("");
    return `/torvex/${row.kind === "image" ? "images" : "documents"}.asp?site=${row.siteId}&folder=${folder}&file=${encodeURIComponent(row.path)}`;
  }

  private link(row: Found): TemplateResult {
    return html`<a href=${this.address(row)}>${titleOr(row.title)}</a>`;
  }

  private treeButton({ kind, nodeId, title }: Found): TemplateResult | typeof nothing {
    if (kind !== "page" || !hasTreeOf(nodeId)) return nothing;
    const name = `${t(L.showInTree)}: ${titleOr(title)}`;
    return html`<button class="button quiet small icon-only" aria-label=${name} title=${t(L.showInTree)} @click=${() => showInTree(nodeId)}>${icon("list-tree")}</button>`;
  }

  private filters(): TemplateResult {
    const { websites } = workplace.value;
    const value = (event: Event): string => (event.target as HTMLInputElement | HTMLSelectElement).value;
    return html`<form class="search-form" role="search" @submit=${(event: Event) => event.preventDefault()}>
      <div class="field search-words"><label for="search-words">${t(L.searchWords)}</label>
        <input id="search-words" class="input" type="search" autofocus .value=${this.words} placeholder=${t(L.searchHint)} @input=${(event: Event) => this.set({ words: value(event) })} /></div>
      <div class="field"><label for="search-kinds">${t(L.searchKinds)}</label><select id="search-kinds" class="select" @change=${(event: Event) => this.set({ kinds: value(event) })}>
        ${KINDS.map(({ kind, label }) => html`<option value=${kind} ?selected=${kind === this.kinds}>${word(label)}</option>`)}</select></div>
      <div class="field"><label for="search-where">${t(L.searchWhere)}</label><select id="search-where" class="select" @change=${(event: Event) => this.set({ in: value(event) })}>
        <option value="">${t(L.everywhere)}</option>
        ${websites.map(({ site, lang, siteName, langName }) => html`<option value="${site}.${lang}" ?selected=${`${site}.${lang}` === this.website}>${siteName} · ${langName}</option>`)}</select></div>
      <div class="field"><label for="search-state">${t(L.searchState)}</label><select id="search-state" class="select" @change=${(event: Event) => this.set({ state: value(event) })}>
        <option value="">${t(L.anyState)}</option>
        ${STATES.map((each) => html`<option value=${each} ?selected=${each === this.state}>${stateWord(each)}</option>`)}</select></div>
    </form>`;
  }

  private keptList(): TemplateResult | typeof nothing {
    const { searches } = this;
    if (searches.length === 0) return nothing;
    return html`<div class="inline kept-searches" role="group" aria-label=${t(L.savedSearches)}><span class="note">${t(L.savedSearches)}</span>
      ${searches.map(
        (
          each,
        ) => html`<span class="buttons"><a class="button small" href="/torvex/search?${each.query}">${each.name}</a>
          <button class="button small icon-only" aria-label=${t(L.forgetSearch, { name: each.name })} @click=${() => this.keep(this.searches.filter((one) => one.query !== each.query))}>${icon("x")}</button></span>`,
      )}</div>`;
  }

  private get chosen(): readonly Found[] {
    return this.rows?.filter((row) => row.kind === "page" && this.selected.has(keyOf(row))) ?? [];
  }

  private results(): TemplateResult {
    if (!this.rows) return html`<div class="empty">${icon("search")}<p>${t(L.searchBegin)}</p></div>`;
    if (this.rows.length === 0)
      return html`<div class="empty">${icon("search")}<p>${t(L.searchNothing)}</p><p class="note">${t(L.searchNothingHint)}</p></div>`;
    return html`
      <div class="inline"><span class="note grow" role="status">${this.more ? t(L.foundAtLeast, { count: this.rows.length }) : plural(this.rows.length, L.foundOne, L.foundMany)}</span>
        <button class="button small" @click=${() => this.keepThis()}>${t(L.saveSearch)}</button></div>
      ${
        this.chosen.length
          ? selectionBar(this.chosen, () => {
              this.selected = new Set();
              void this.search(0);
            })
          : nothing
      }
      <tvx-table class="card ${this.busy ? "loading" : ""}" .label=${t(L.search)} .columns=${this.columns} .rows=${this.rows} .keyOf=${keyOf} .nameOf=${(row: Found) => titleOr(row.title)} selectable .selected=${this.selected}
        @tvx-select=${(event: CustomEvent<ReadonlySet<string>>) => {
          this.selected = event.detail;
        }} @tvx-open=${(event: CustomEvent<Found>) => void go(this.address(event.detail))}></tvx-table>
      ${this.more ? html`<p><button class="button" ?disabled=${this.busy} @click=${() => this.search(this.from + OF_EACH)}>${t(L.showMore)}</button></p>` : nothing}`;
  }

  protected override render(): TemplateResult {
    return html`<section class="list-screen" aria-busy=${this.busy ? "true" : nothing}>
      <header class="list-head"><h1>${t(L.search)}</h1></header>
      ${this.filters()}${this.keptList()}
      ${faultNotice(this.fault, () => this.search(0))}
      ${this.fault ? nothing : this.results()}
    </section>`;
  }
}
