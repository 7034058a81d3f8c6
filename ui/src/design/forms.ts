/** Applications and feeds: what their records hold, and how they are read and saved. */

import { Batch, call } from "../api";
import type { Step } from "../api/batch";
import { L, type Label } from "../labels";
import { workplace } from "../shell/workplace";
import type { DesignKind, DesignLine, Place, Use } from "./data";

/** Flags are "1" or "". */
export type Texts = Readonly<Record<string, string>>;

export interface FormField {
  readonly part: string;
  readonly label: Label;
  readonly longest: number;
  readonly hint?: Label;
  readonly kind?: "address" | "flag";
  /** Asked for when one is added. */
  readonly isFirst?: boolean;
}

/** As it was read: what a save expects to find again. */
export interface FormData extends Place {
  readonly id: number;
  /** Not for a number of another website's either. */
  readonly isThere: boolean;
  readonly texts: Texts;
  readonly expected: unknown;
  readonly uses: readonly Use[];
}

export interface FormKind extends DesignKind {
  readonly item: "application" | "htmlFeed" | "xmlFeed";
  readonly isOfWebsite: boolean;
  readonly fields: readonly FormField[];
  readonly list: (place: Place) => Promise<DesignLine[]>;
  /** Reads it, or goes on only where it is still so. */
  readonly reads: (work: Batch, id: number, place: Place, expected?: unknown) => Step<unknown>;
  /** From what reading it gave; nothing when it isn't there. */
  readonly textsOf: (read: unknown) => Texts | undefined;
  readonly saves: (work: Batch, id: number, place: Place, texts: Texts) => Step<unknown>;
  readonly remove: (id: number) => Promise<unknown>;
  /** What it gives now. */
  readonly tries?: (id: number) => Promise<string>;
}

const NAME: FormField = { part: "name", label: L.name, longest: 50, isFirst: true };
const DESCRIPTION: FormField = { part: "description", label: L.description, longest: 500 };
const PARAMETERS: FormField = {
  part: "parameters",
  label: L.feedParameters,
  longest: 1000,
  hint: L.feedParametersHint,
};

const asTexts = (from: Readonly<Record<string, unknown>>, names: Readonly<Record<string, string>>): Texts =>
  Object.fromEntries(Object.entries(names).map(([part, name]) => [part, String(from[name] ?? "")]));

const APPLICATION_PARTS = {
  name: "appName",
  description: "appDescription",
  urlPublic: "appURLPublic",
  urlAdmin: "appURLAdmin",
  urlPublish: "appURLPublish",
} as const;

const applications: FormKind = {
  item: "application",
  address: "/torvex/applications.asp",
  entry: 40,
  isOfWebsite: false,
  icon: "app-window",
  title: L.applications,
  add: L.newApplication,
  isEmpty: L.applicationsEmpty,
  fields: [
    NAME,
    DESCRIPTION,
    { part: "urlPublic", label: L.urlPublic, longest: 500, hint: L.urlPublicHint, kind: "address", isFirst: true },
    { part: "urlAdmin", label: L.urlAdmin, longest: 500, hint: L.urlAdminHint, kind: "address" },
    { part: "urlPublish", label: L.urlPublish, longest: 500, hint: L.urlPublishHint, kind: "address" },
  ],
  list: async () =>
    (await call("application.getApplicationList", { listType: 3 })).map((line) => ({
      id: line.app_id,
      name: line.app_name,
      description: line.app_description,
      isSystem: line.app_system === 1,
    })),
  reads: (work, appId, _place, expected) => {
    work.do("application.getApplication", { appId });
    if (expected) work.expect("application", expected);
    return work.get("application", "appExists", ...Object.values(APPLICATION_PARTS));
  },
  textsOf: (result) => {
    const read = (result ?? {}) as Record<string, unknown>;
    return read.appExists === true ? asTexts(read, APPLICATION_PARTS) : undefined;
  },
  saves: (work, appId, _place, texts) => work.do("registers.saveApplication", { appId, ...texts } as never),
  remove: (appId) => call("application.delApplication", { appId }),
};

const feedLines = (lines: readonly { feedId: number; feedName: string; feedDescription: string }[]): DesignLine[] =>
  lines.map(({ feedId, feedName, feedDescription }) => ({
    id: feedId,
    name: feedName,
    description: feedDescription,
    isSystem: false,
  }));

const firstOf = (lines: unknown, names: Readonly<Record<string, string>>): Texts | undefined => {
  const [line] = lines as Record<string, unknown>[];
  return line ? asTexts(line, names) : undefined;
};

const asBefore = (expected: unknown) => (expected === undefined ? {} : { expect: { is: expected } });

const HTML_PARTS = {
  name: "feedName",
  description: "feedDescription",
  url: "feedURL",
  file: "feedFile",
  parameters: "feedParameters",
};

const htmlFeeds: FormKind = {
  item: "htmlFeed",
  address: "/torvex/htmlFeeds.asp",
  entry: 231,
  isOfWebsite: true,
  icon: "globe",
  title: L.htmlFeeds,
  add: L.newHtmlFeed,
  isEmpty: L.feedsEmpty,
  fields: [
    NAME,
    DESCRIPTION,
    { part: "url", label: L.feedUrl, longest: 500, hint: L.feedUrlHint, isFirst: true },
    { part: "file", label: L.feedFile, longest: 500, hint: L.feedFileHint, isFirst: true },
    PARAMETERS,
  ],
  list: async ({ site, lang }) => feedLines(await call("registers.getHTMLfeeds", { site, lang })),
  reads: (work, feedId, { site, lang }, expected) =>
    work.do("registers.getHTMLfeeds", { site, lang, feedId }, asBefore(expected)),
  textsOf: (result) => firstOf(result, HTML_PARTS),
  saves: (work, feedId, { site, lang }, texts) =>
    work.do("registers.saveHTMLfeed", { feedId, site, lang, ...texts } as never),
  remove: (feedId) => call("cManager.deleteHTMLfeed", { feedId }),
  tries: (feedId) => call("cManager.getBodyHTML", { feedId }),
};

const XML_PARTS = {
  name: "feedName",
  description: "feedDescription",
  urlXml: "feedURL_XML",
  fileXml: "feedFile_XML",
  urlXsl: "feedURL_XSL",
  fileXsl: "feedFile_XSL",
  parameters: "feedParameters",
};

const xmlFeeds: FormKind = {
  item: "xmlFeed",
  address: "/torvex/xmlFeeds.asp",
  entry: 232,
  isOfWebsite: true,
  icon: "file-code",
  title: L.xmlFeeds,
  add: L.newXmlFeed,
  isEmpty: L.feedsEmpty,
  fields: [
    NAME,
    DESCRIPTION,
    { part: "urlXml", label: L.feedUrlXml, longest: 500, hint: L.feedUrlHint, isFirst: true },
    { part: "fileXml", label: L.feedFileXml, longest: 500, hint: L.feedFileHint, isFirst: true },
    { part: "urlXsl", label: L.feedUrlXsl, longest: 500, hint: L.feedUrlHint, isFirst: true },
    { part: "fileXsl", label: L.feedFileXsl, longest: 500, hint: L.feedFileHint, isFirst: true },
    PARAMETERS,
    { part: "blanks", label: L.feedBlanks, longest: 1, kind: "flag" },
  ],
  list: async ({ site, lang }) => feedLines(await call("registers.getXMLfeeds", { site, lang })),
  reads: (work, feedId, { site, lang }, expected) =>
    work.do("registers.getXMLfeeds", { site, lang, feedId }, asBefore(expected)),
  textsOf: (result) => {
    const texts = firstOf(result, { ...XML_PARTS, blanks: "feedPreserveWhiteSpace" });
    return texts && { ...texts, blanks: texts.blanks === "1" ? "1" : "" };
  },
  saves: (work, feedId, { site, lang }, { blanks, ...texts }) =>
    work.do("registers.saveXMLfeed", { feedId, site, lang, ...texts, preserveWhiteSpace: blanks === "1" } as never),
  remove: (feedId) => call("cManager.deleteXMLfeed", { feedId }),
  tries: (feedId) => call("cManager.getBodyXML", { feedId }),
};

export const FORMS: readonly FormKind[] = [applications, htmlFeeds, xmlFeeds];

/** Where records of the kind are looked for. */
export const placeOf = ({ isOfWebsite }: FormKind): Place =>
  isOfWebsite ? { site: workplace.value.site, lang: workplace.value.lang } : { site: "", lang: "" };

export async function formOf(form: FormKind, id: number): Promise<FormData> {
  const place = placeOf(form);
  const work = new Batch();
  const read = form.reads(work, id, place);
  const uses = work.do("desk.getUses", { kind: form.item, id: String(id) });
  await work.run();
  const texts = form.textsOf(read.value);
  return { ...place, id, isThere: texts !== undefined, texts: texts ?? {}, expected: read.raw, uses: uses.value };
}

/** Saves it unless it has been changed since it was read. */
export async function saveForm(form: FormKind, was: FormData, texts: Texts): Promise<void> {
  const work = new Batch();
  form.reads(work, was.id, was, was.expected);
  form.saves(work, was.id, was, texts);
  await work.run();
}

/** The number of the new one. */
export async function addForm(form: FormKind, texts: Texts): Promise<unknown> {
  const all = Object.fromEntries(form.fields.map(({ part }) => [part, texts[part] ?? ""]));
  const work = new Batch();
  const added = form.saves(work, 0, placeOf(form), all);
  await work.run();
  return added.value;
}
