/** Sites, languages and their websites, as they come from the server and go there. */

import { Batch, call } from "../api";
import { Problem } from "../api/problem";
import { L, t } from "../labels";
import { mayChangeIn } from "../shell/workplace";

export const SITES = 11;
export const LANGUAGES = 12;
export const TITLES = 211;

export interface Site {
  readonly code: string;
  readonly name: string;
  readonly description: string;
}

export interface Language {
  readonly code: string;
  readonly name: string;
  readonly charset: string;
  readonly charsetId: number;
}

export interface Charset {
  readonly charset_id: number;
  readonly charset_name: string;
  readonly charset_label: string;
}

export interface Website {
  readonly title: string;
  /** Nothing where the login has no part in the website. */
  readonly pages: number | undefined;
  readonly mayTitle: boolean;
}

export const keyOf = (site: string, lang: string): string => `${site}.${lang}`;

export interface Register {
  readonly sites: readonly Site[];
  readonly languages: readonly Language[];
  readonly charsets: readonly Charset[];
  readonly websites: ReadonlyMap<string, Website>;
  readonly maySites: boolean;
  readonly mayLanguages: boolean;
}

/** Deeper than any tree. */
const LEVELS = 1000;

/** How many pages each website has, by its key. */
async function pagesOf(websites: readonly { site: string; lang: string }[]): Promise<Map<string, number>> {
  const work = new Batch();
  const asked = websites.map(({ site, lang }) => {
    const key = keyOf(site, lang);
    return { key, step: work.do("cManager.countPages", { parentIdent: key, levels: LEVELS }, { goOn: true }) };
  });
  await work.run();
  return new Map(asked.filter(({ step }) => step.done).map(({ key, step }) => [key, step.value]));
}

export async function registerOf(): Promise<Register> {
  const work = new Batch();
  const sites = work.do("cManager.getSites", {});
  const languages = work.do("cManager.getLanguages", {});
  const charsets = work.do("cManager.getCharsets", {});
  const websites = work.do("cManager.getWebsites", {});
  await work.run();
  const pages = await pagesOf(websites.value);
  const idOf = (label: string) => charsets.value.find((one) => one.charset_label === label)?.charset_id ?? 0;
  return {
    sites: sites.value.map(({ site, name, description }) => ({ code: site, name, description })),
    languages: languages.value.map(({ lang, name, charset_name, charset_label }) => ({
      code: lang,
      name,
      charset: charset_name,
      charsetId: idOf(charset_label),
    })),
    charsets: charsets.value,
    websites: new Map(
      websites.value.map(({ site, lang, title }) => {
        const key = keyOf(site, lang);
        return [key, { title, pages: pages.get(key), mayTitle: mayChangeIn(TITLES, site, lang) }];
      }),
    ),
    maySites: mayChangeIn(SITES, "", ""),
    mayLanguages: mayChangeIn(LANGUAGES, "", ""),
  };
}

/** What a save expected isn't there any more: what is there in its place. */
export class Changed<T> extends Problem {
  constructor(
    readonly theirs: T,
    detail: string,
  ) {
    super({ status: 412, detail });
  }
}

const isChanged = (error: unknown): boolean => error instanceof Problem && error.changed;
const isFalse = (error: unknown): boolean => error instanceof Problem && error.status === 409 && error.code === "false";

// ---- Sites ----

async function siteNow(code: string): Promise<Site> {
  const work = new Batch();
  const name = work.do("cManager.getSiteName", { site: code });
  const description = work.do("cManager.getSiteDescription", { site: code });
  await work.run();
  return { code, name: name.value, description: description.value };
}

/** Why a site can't be added or called so; "" when nothing is in the way. */
async function siteInTheWay(code: string, name: string): Promise<string> {
  const work = new Batch();
  const isThere = work.do("cManager.isSite", { site: code });
  const its = work.do("cManager.getSiteName", { site: code });
  const namesake = work.do("cManager.getSiteId", { siteName: name });
  await work.run();
  if (isThere.value) return t(L.codeIsTaken, { name: its.value || code });
  return namesake.value ? t(L.siteHasName, { code: namesake.value }) : "";
}

/** A plain "no" in words. */
const explained = async (error: unknown, code: string, name: string, ask: typeof siteInTheWay): Promise<unknown> => {
  if (!isFalse(error)) return error;
  if (!name.trim()) return new Problem({ status: 409, detail: t(L.nameIsMissing) });
  const small = code.trim().toLowerCase();
  const why = await ask(small.length === 1 ? `0${small}` : small, name.trim());
  return new Problem({ status: 409, detail: why || t(L.codeIsNone) });
};

export async function addSite({ code, name, description }: Site): Promise<void> {
  try {
    await call("cManager.addSite", { siteId: code, siteName: name, siteDescription: description });
  } catch (error) {
    throw await explained(error, code, name, siteInTheWay);
  }
}

/** Nobody else may have the name; adding refuses it, and so does renaming here. */
async function refuseNamesake(code: string, name: string, finds: "site" | "language"): Promise<void> {
  const other =
    finds === "site"
      ? await call("cManager.getSiteId", { siteName: name.trim() })
      : await call("cManager.getLanguageId", { languageName: name.trim() });
  if (!name.trim()) throw new Problem({ status: 409, detail: t(L.nameIsMissing) });
  if (!other || other.toLowerCase() === code.toLowerCase()) return;
  const detail = finds === "site" ? t(L.siteHasName, { code: other }) : t(L.langHasName, { code: other });
  throw new Problem({ status: 409, detail });
}

export async function saveSite(was: Site, { name, description }: Site): Promise<void> {
  const { code } = was;
  await refuseNamesake(code, name, "site");
  const work = new Batch();
  work.do("cManager.getSiteName", { site: code }, { expect: { is: was.name } });
  work.do("cManager.getSiteDescription", { site: code }, { expect: { is: was.description } });
  work.do("cManager.updateSite", { site: code, name, description });
  try {
    await work.run();
  } catch (error) {
    if (!isChanged(error)) throw error;
    const theirs = await siteNow(code);
    throw new Changed(theirs, t(L.isOthersRecord, { theirs: `${theirs.name} – ${theirs.description}` }));
  }
}

export const removeSite = (code: string): Promise<unknown> => call("cManager.deleteSite", { site: code });

// ---- Languages ----

async function languageInTheWay(code: string, name: string): Promise<string> {
  const work = new Batch();
  const isThere = work.do("cManager.isLang", { lang: code });
  const its = work.do("cManager.getLanguageName", { lang: code });
  const namesake = work.do("cManager.getLanguageId", { languageName: name });
  await work.run();
  if (isThere.value) return t(L.codeIsTaken, { name: its.value || code });
  return namesake.value ? t(L.langHasName, { code: namesake.value }) : "";
}

export async function addLanguage({ code, name, charsetId }: Language): Promise<void> {
  try {
    await call("cManager.addLanguage", { langId: code, langName: name, charsetID: charsetId });
  } catch (error) {
    throw await explained(error, code, name, languageInTheWay);
  }
}

export async function saveLanguage(was: Language, { name, charsetId }: Language): Promise<void> {
  const { code } = was;
  await refuseNamesake(code, name, "language");
  const work = new Batch();
  work.do("cManager.getLanguageName", { lang: code }, { expect: { is: was.name } });
  work.do("cManager.getCharsetID", { lang: code }, { expect: { is: was.charsetId } });
  work.do("cManager.updateLanguage", { lang: code, name, charsetID: charsetId });
  try {
    await work.run();
  } catch (error) {
    if (!isChanged(error)) throw error;
    const theirs = (await registerOf()).languages.find((one) => one.code === code) ?? was;
    throw new Changed(theirs, t(L.isOthersRecord, { theirs: `${theirs.name} – ${theirs.charset}` }));
  }
}

export const removeLanguage = (code: string): Promise<unknown> => call("cManager.deleteLanguage", { lang: code });

// ---- Titles ----

/** Puts a title in the place of one; throws what is there when that is another. */
export async function saveTitle(site: string, lang: string, was: string, title: string): Promise<void> {
  const work = new Batch();
  work.do("cManager.getWebsiteTitle", { site, lang }, { expect: { is: was } });
  work.do("cManager.saveWebsiteTitle", { site, lang, title });
  try {
    await work.run();
  } catch (error) {
    if (!isChanged(error)) throw error;
    const theirs = await call("cManager.getWebsiteTitle", { site, lang });
    throw new Changed(theirs, t(L.isOthersTitle, { title: theirs }));
  }
}

// ---- What a removal takes along ----

export interface Part {
  readonly what: string;
  readonly count: number;
}

type Ask = (work: Batch, site: string, lang: string) => (() => number)[];

const ofSite = (work: Batch, site: string) =>
  (["images", "documents"] as const).map((folderType) => {
    const step = work.do("registers.getFolders", { site, folderType }, { goOn: true });
    return () => (step.done ? step.value.reduce((sum, { files }) => sum + files, 0) : 0);
  });

const ofWebsite: Ask = (work, site, lang) =>
  [
    work.do("template.getTemplateList", { site, lang, listType: 2 }, { goOn: true }),
    work.do("BaseTemplate.getBaseTemplateList", { site, lang }, { goOn: true }),
    work.do("StyleSheet.getStylesheetList", { site, lang }, { goOn: true }),
    work.do("newsflash.getNewsflashList", { site, lang }, { goOn: true }),
    work.do("Forum.getForumList", { site, lang }, { goOn: true }),
    work.do("msgBoard.getCategoryList", { site, lang, mode: "D" }, { goOn: true }),
  ].map((step) => () => (step.done ? (step.value as unknown[]).length : 0));

const websiteParts = () => [
  t(L.templates),
  t(L.baseTemplates),
  t(L.stylesheets),
  t(L.newsflashes),
  t(L.forums),
  t(L.boardCategories),
];

/** What is kept for websites, and for a site when one goes as a whole; nothing is told of what one may not read. */
export async function partsOf(websites: readonly [site: string, lang: string][], site = ""): Promise<Part[]> {
  const counts = new Map<string, number>();
  const add = (names: readonly string[], counters: readonly (() => number)[]) =>
    names.forEach((name, at) => {
      counts.set(name, (counts.get(name) ?? 0) + (counters[at]?.() ?? 0));
    });
  if (site) {
    const work = new Batch();
    const media = ofSite(work, site);
    await work.run();
    add([t(L.images), t(L.documents)], media);
  }
  const work = new Batch();
  const each = websites.map(([one, lang]) => ofWebsite(work, one, lang));
  await work.run();
  for (const counters of each) add(websiteParts(), counters);
  return [...counts].map(([what, count]) => ({ what, count })).filter(({ count }) => count > 0);
}
