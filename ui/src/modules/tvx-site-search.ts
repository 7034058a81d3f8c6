/** The search pages of a website: what each decides, what it leaves to its form, and what was searched. */

import { html, type TemplateResult } from "lit";
import { customElement } from "lit/decorators.js";
import { icon } from "../kit/icon";
import { dialog } from "../kit/tvx-dialog";
import { L, number, t } from "../labels";
import { failed } from "../pages/actions";
import { titleOr } from "../pages/words";
import { pageAddress } from "../shell/address";
import { mayChangeIn } from "../shell/workplace";
import { type Group, numbered } from "./form";
import { editButton, emptyNote, moduleList, wordButton } from "./parts";
import { pickPage } from "./pick-page";
import { ModuleScreen, type Place } from "./screen";
import {
  CATALOGUE,
  newSearch,
  propertiesOf,
  renewCopies,
  SEARCH,
  type SearchPage,
  type SearchValues,
  saveSearch,
  searchesOf,
  storedSearch,
  valuesOf,
  wordsOf,
} from "./search-data";

interface Searches {
  readonly searches: readonly SearchPage[];
  readonly properties: string;
}

/** What a search page can leave to its form. */
const byForm = (...words: string[]) => numbered(t(L.searchByForm), ...words);
const scopes = () => byForm(t(L.none), t(L.searchAllSites), t(L.searchThisSite), t(L.searchList));

const groupsOf =
  (properties: string) =>
  ({ catalogLocation }: SearchValues): readonly Group<SearchValues>[] => [
    {
      heading: t(L.siteSearchWhere),
      fields: [
        { name: "includePages", label: t(L.pages), kind: "choice", choices: scopes() },
        { name: "pageScopes", label: t(L.searchPageList), kind: "text", longest: 2000, hint: t(L.searchPageListHint) },
        { name: "includeDocuments", label: t(L.documents), kind: "choice", choices: scopes() },
        {
          name: "documentScopes",
          label: t(L.searchFolderList),
          kind: "text",
          longest: 2000,
          hint: t(L.searchFolderListHint),
        },
        {
          name: "includeDocumentTypes",
          label: t(L.searchTypes),
          kind: "choice",
          choices: byForm(t(L.all), t(L.searchList)),
        },
        { name: "documentTypes", label: t(L.searchTypeList), kind: "text", longest: 2000, hint: "pdf, docx" },
      ],
    },
    {
      heading: t(L.searchHow),
      fields: [
        {
          name: "match",
          label: t(L.searchMatch),
          kind: "choice",
          choices: byForm(t(L.searchSome), t(L.searchEach), t(L.searchPhrase)),
        },
        {
          name: "derivation",
          label: t(L.searchForms),
          kind: "choice",
          choices: byForm(t(L.searchExact), t(L.searchBeginnings), t(L.searchStems)),
        },
        { name: "wordLength", label: t(L.searchShortest), kind: "number", hint: t(L.zeroIsForm) },
        {
          name: "properties",
          label: t(L.searchProperties),
          kind: "text",
          longest: 2000,
          hint: t(L.searchPropertiesHint, { names: properties.replaceAll(",", ", ") }),
        },
      ],
    },
    {
      heading: t(L.results),
      fields: [
        {
          name: "sortOrder",
          label: t(L.mediaOrder),
          kind: "choice",
          choices: byForm(t(L.searchByRank), t(L.orderTitle)),
        },
        { name: "maxResults", label: t(L.searchMost), kind: "number", hint: t(L.zeroIsForm) },
        { name: "resultsPerPage", label: t(L.searchOnPage), kind: "number", least: -1, hint: t(L.searchOnPageHint) },
        {
          name: "security",
          label: t(L.menuRights),
          kind: "choice",
          choices: byForm(t(L.menuRightsTested), t(L.menuRightsAll)),
        },
      ],
    },
    {
      heading: t(L.searchCatalogue),
      fields: [
        { name: "catalogName", label: t(L.name), kind: "text" },
        {
          name: "catalogLocation",
          label: t(L.searchCatalogueAt),
          kind: "choice",
          choices: numbered(t(L.searchHere), t(L.searchElsewhere)),
        },
        ...(catalogLocation === 1
          ? ([
              { name: "serverName", label: t(L.searchServer), kind: "text" },
              { name: "webshare", label: t(L.searchShare), kind: "text", longest: 500 },
            ] as const)
          : []),
      ],
    },
  ];

@customElement("tvx-site-search")
export class TvxSiteSearch extends ModuleScreen<Searches> {
  protected readonly entry = SEARCH;

  protected async read(place: Place): Promise<Searches> {
    const [searches, properties] = await Promise.all([searchesOf(place), propertiesOf(place.site)]);
    return { searches, properties };
  }

  protected heading(): string {
    return t(L.siteSearch);
  }

  private async add(data: Searches): Promise<void> {
    const page = await pickPage(t(L.newSearch), this.place, t(L.addIt));
    if (!page) return;
    const there = data.searches.find((one) => one.search_pageId === page.pageId);
    if (there) return this.edit(data, there);
    const name = titleOr(page.title);
    await this.fill(
      {
        id: "search",
        title: name,
        values: newSearch(data.searches),
        groups: groupsOf(data.properties),
        save: (given, work) => saveSearch(page.pageId, given, work),
      },
      () => name,
    );
  }

  private async edit({ properties }: Searches, search: SearchPage): Promise<void> {
    const name = titleOr(search.title);
    await this.fill(
      {
        id: "search",
        title: name,
        values: valuesOf(search),
        groups: groupsOf(properties),
        ...storedSearch(this.place, search.search_pageId),
      },
      () => name,
    );
  }

  private async words({ search_pageId, title }: SearchPage): Promise<void> {
    try {
      const words = await wordsOf(search_pageId);
      const list = html`<table class="module-words"><thead><tr><th scope="col">${t(L.searchWordsShort)}</th><th scope="col">${t(L.numberPart)}</th></tr></thead>
        <tbody>${words.map((one) => html`<tr><td>${one.search_word}</td><td>${number(one.search_count)}</td></tr>`)}</tbody></table>`;
      await dialog({
        title: t(L.searchedWords, { name: titleOr(title) }),
        body: () => (words.length ? list : emptyNote("search", t(L.searchedNone))),
      });
    } catch (error) {
      failed(error);
    }
  }

  protected override tools(data: Searches): TemplateResult {
    return html`${
      mayChangeIn(CATALOGUE, "", "")
        ? html`<button type="button" class="button" title=${t(L.renewCopiesHint)} @click=${() => this.act(renewCopies, t(L.copiesRenewed))}>${icon("refresh-cw")}${t(L.renewCopies)}</button>`
        : ""
    }${this.mayEdit ? html`<button type="button" class="button primary" @click=${() => this.add(data)}>${icon("plus")}${t(L.newSearch)}</button>` : ""}`;
  }

  protected content(data: Searches): TemplateResult {
    if (data.searches.length === 0) return emptyNote("search", t(L.searchesEmpty));
    return html`<p class="note">${t(L.siteSearchHint)}</p>${moduleList(
      data.searches,
      (one) => one.search_pageId,
      (one) => this.row(data, one),
    )}`;
  }

  private row(data: Searches, search: SearchPage): TemplateResult {
    const name = titleOr(search.title);
    return html`<li class="card module-row">
      <div class="module-name"><a href=${pageAddress(search.search_pageId)}><strong>${name}</strong></a>
        <p class="note">${t(L.searchCatalogue)}: ${search.search_catalogName}</p></div>
      <div class="module-buttons">${wordButton("bar-chart-3", t(L.searchWordsShort), t(L.searchedWords, { name }), () => this.words(search))}${
        this.mayEdit ? editButton(name, () => this.edit(data, search)) : ""
      }</div></li>`;
  }
}
