/** What search pages decide, as it comes from the server and goes there. */

import { type AnswerOf, type Batch, call } from "../api";
import type { Place } from "./screen";
import { behind, foundAmong, type Stored } from "./stored";

export const SEARCH = 245;
/** Who may have the copies renewed that are searched. */
export const CATALOGUE = 64;

export type SearchPage = AnswerOf<"registers.getSearches">[number];
export type SearchedWord = AnswerOf<"registers.getSearchWords">[number];

export const searchesOf = (place: Place): Promise<readonly SearchPage[]> => call("registers.getSearches", place);

export const wordsOf = (pageId: number): Promise<readonly SearchedWord[]> =>
  call("registers.getSearchWords", { pageId });

export const valuesOf = (one: SearchPage) => ({
  catalogName: one.search_catalogName ?? "",
  catalogLocation: one.search_catalogLocation,
  serverName: one.search_serverName ?? "",
  webshare: one.search_webshare ?? "",
  includePages: one.search_includePages,
  includeDocuments: one.search_includeDocuments,
  pageScopes: one.search_pageScopes ?? "",
  documentScopes: one.search_documentScopes ?? "",
  includeDocumentTypes: one.search_includeDocumentTypes,
  documentTypes: one.search_documentTypes ?? "",
  properties: one.search_properties ?? "",
  sortOrder: one.search_sortOrder,
  maxResults: one.search_maxResults,
  resultsPerPage: one.search_resultsPerPage,
  wordLength: one.search_wordLength,
  match: one.search_match,
  derivation: one.search_derivation,
  security: one.search_security,
});
export type SearchValues = ReturnType<typeof valuesOf>;

/** The form decides what it can. */
export const newSearch = (others: readonly SearchPage[]): SearchValues => ({
  catalogName: others[0]?.search_catalogName ?? "torvex",
  catalogLocation: 0,
  serverName: "",
  webshare: "",
  includePages: 3,
  includeDocuments: 3,
  pageScopes: "",
  documentScopes: "",
  includeDocumentTypes: 1,
  documentTypes: "",
  properties: "",
  sortOrder: 1,
  maxResults: 100,
  resultsPerPage: 20,
  wordLength: 1,
  match: 0,
  derivation: 0,
  security: 1,
});

export const saveSearch = (pageId: number, values: SearchValues, work: Batch): Promise<unknown> =>
  behind(work, work.do("registers.saveSearch", { pageId, ...values }));

export const storedSearch = (place: Place, pageId: number): Stored<SearchValues> => ({
  now: () =>
    foundAmong(
      (work, asBefore) => work.do("registers.getSearches", { ...place }, asBefore),
      (one) => one.search_pageId === pageId,
      valuesOf,
    ),
  save: (values, work) => saveSearch(pageId, values, work),
});

export const propertiesOf = (site: string): Promise<string> => call("search.getAllProperties", { site });

export const renewCopies = (): Promise<unknown> => call("search.initializePages", {});
