import { rowsOf } from "../api/answer";
import { isProblem } from "../api/problem";
import { requestNow } from "../api/request";
import { type EditFlags, editFlagsOf, type PageWord } from "../formats/status";
import { Store } from "../kit/store";

export interface Login {
  loginId: number;
  username: string;
  name: string;
  isAdministrator: boolean;
  /** A role demands a second factor, and it isn't set up yet: nothing else is open. */
  mustEnrol: boolean;
}

const noRights = editFlagsOf("");
const everything = editFlagsOf("11111");

const hasAny = (rights: EditFlags) => Object.values(rights).some(Boolean);

export interface Website {
  site: string;
  lang: string;
  siteName: string;
  langName: string;
  title: string;
  rights: EditFlags;
}

/** Who works, and where. */
export interface Workplace {
  login: Login | null;
  websites: Website[];
  entries: SessionRights["entries"];
  site: string;
  lang: string;
  rights: EditFlags;
  /** Somebody is moving pages here: nobody can come in until that is done. */
  closed: boolean;
}

export const workplace = new Store<Workplace>({
  login: null,
  websites: [],
  entries: [],
  site: "",
  lang: "",
  rights: noRights,
  closed: false,
});

/** The page that the centre shows, as far as it is known; whoever changes it says so by `changedPages`. */
export interface PageState {
  pageId: number;
  nodeId: string;
  site: string;
  lang: string;
  title: string;
  /** "P", "A", "F", "N" (without a setup yet), "S". */
  type: string;
  state: PageWord;
  /** Who holds it: "" nobody, and whether that is me. */
  holder: string;
  heldByMe: boolean;
  heldByOther: boolean;
  rights: EditFlags;
  /** Whether it is switched on, where that is known; null where visitors never had it. */
  on?: boolean | null;
}

export const currentPage = new Store<PageState | null>(null);

/** What changed about pages, for who shows them: numbers of pages, or "all" for a whole tree. */
export type Change = { pageIds: number[]; nodeIds?: string[] } | "all";
const changeListeners = new Set<(change: Change) => void>();

export function onPagesChanged(listener: (change: Change) => void): () => void {
  changeListeners.add(listener);
  return () => changeListeners.delete(listener);
}

export function pagesChanged(change: Change): void {
  for (const listener of [...changeListeners]) listener(change);
}

const keptAt = (name: string) => `torvex.${workplace.value.login?.loginId ?? 0}.${name}`;

/** What this login chose to keep in this browser. */
export const kept = {
  get: (name: string) => localStorage.getItem(keptAt(name)) ?? "",
  set: (name: string, value: string) => localStorage.setItem(keptAt(name), value),
};

/** What a login may do, in any branch; as `/torvex/api/session` tells it. */
export interface SessionRights {
  all: boolean;
  pages: { site: string; lang: string; may: (keyof EditFlags)[] }[];
  entries: { entry: number; site: string; lang: string; view: boolean; edit: boolean }[];
}

export const nothingAllowed: SessionRights = { all: false, pages: [], entries: [] };

function rightsIn({ all, pages }: SessionRights, site: string, lang: string): EditFlags {
  if (all) return everything;
  const may = pages.filter((one) => one.site === site && one.lang === lang).flatMap((one) => one.may);
  return Object.fromEntries(
    Object.keys(noRights).map((right) => [right, may.includes(right as keyof EditFlags)]),
  ) as unknown as EditFlags;
}

/** Entries from here on are those of sites and languages. */
const firstOfSites = 110;

const hasEntry = ({ entries }: SessionRights, { site, lang }: { site: string; lang: string }) =>
  entries.some((one) => one.entry >= firstOfSites && ["", site].includes(one.site) && ["", lang].includes(one.lang));

type WebsiteRow = Omit<Website, "rights">;

/** All websites; past the queue, and without a login to wait for. None for who isn't logged in. */
export async function allWebsites(): Promise<WebsiteRow[]> {
  try {
    return rowsOf(((await requestNow("cManager/getWebsites", {})) as { result: unknown }).result) as WebsiteRow[];
  } catch (error) {
    if (isProblem(error) && (error.status === 401 || error.kind === "second-factor-demanded")) return [];
    throw error;
  }
}

/** Those of them where this login can do something. */
export function takeWebsites(all: WebsiteRow[], rights: SessionRights): void {
  const offered = all
    .map((row): Website => ({ ...row, rights: rightsIn(rights, row.site, row.lang) }))
    .filter((website) => hasAny(website.rights) || hasEntry(rights, website));
  const [site, lang] = kept.get("website").split(".");
  const first =
    offered.find((one) => one.site === site && one.lang === lang) ??
    offered.find((one) => one.lang === document.documentElement.lang) ??
    offered[0];
  workplace.patch({ websites: offered, entries: rights.entries });
  if (first) enter(first.site, first.lang);
}

export const websiteAt = (site: string, lang: string) =>
  workplace.value.websites.find((one) => one.site === site && one.lang === lang);

/** "Garden · English", or its codes where this login has no part in it; nothing for no website. */
export function websiteName(site: string, lang: string): string {
  const known = websiteAt(site, lang);
  if (known) return `${known.siteName} · ${known.langName}`;
  return site ? `${site} · ${lang}` : "";
}

function mayUse(access: "view" | "edit", entry: number, site: string, lang: string): boolean {
  const { entries, login } = workplace.value;
  const holds = (one: Workplace["entries"][number]) =>
    one.entry === entry && one[access] && ["", site].includes(one.site) && ["", lang].includes(one.lang);
  return (login?.isAdministrator ?? false) || entries.some(holds);
}

/** Whether the login may look at an entry of the administration menu in a website. */
export const maySee = (entry: number, site: string, lang: string) => mayUse("view", entry, site, lang);

/** Whether it may change what the entry keeps there. */
export const mayChangeIn = (entry: number, site: string, lang: string) => mayUse("edit", entry, site, lang);

/** Works in another website from now on. */
export function enter(site: string, lang: string): void {
  const website = websiteAt(site, lang);
  if (!website || (site === workplace.value.site && lang === workplace.value.lang)) return;
  workplace.patch({ site, lang, rights: website.rights, closed: false });
  kept.set("website", `${site}.${lang}`);
}

/** A node that somebody wants to see in the tree: whoever draws the tree shows it there, with the keyboard on it. */
export const sought = new Store("");

const websiteOfNode = (nodeId: string) => websiteAt(nodeId.slice(0, 2), nodeId.slice(3, 5));

/** Whether this login has a tree where the node stands. */
export const hasTreeOf = (nodeId: string): boolean => websiteOfNode(nodeId) !== undefined;

/** Shows a node in the tree of its website, which one works in from now on. */
export function showInTree(nodeId: string): void {
  const website = websiteOfNode(nodeId);
  if (!website) return;
  enter(website.site, website.lang);
  sought.value = nodeId;
}
