import { type PageWord, wordOf } from "./status";
import { recordsOf, titleOf } from "./text";

/** How a page stands before visitors: "folder" shows its first page, "outOfDates" waits for its day or is over. */
export type LiveState = "none" | "off" | "on" | "outOfDates" | "folder";

export interface SitemapNode {
  pageId: number;
  nodeId: string;
  /** 0 for what stands just below the root. */
  depth: number;
  title: string;
  hasChildren: boolean;
  type: string;
  edit: string;
  locked: boolean;
  marked: boolean;
  approved: boolean;
  heldByOther: boolean;
  /** Its title for visitors; null when they don't have the page. */
  liveTitle: string | null;
  live: LiveState;
  state: PageWord;
}

/** Pages are being moved in this website: nobody can come in. */
export const isClosed = (text: string) => text === "-1";

const liveStates: Record<string, LiveState> = { "0": "off", "1": "on", "2": "outOfDates", "3": "folder" };

function liveTitleOf(field: string, title: string): string | null {
  if (field === "[*null*]") return null;
  return field === "[*idem*]" ? title : titleOf(field);
}

function nodeOf(fields: string[]): SitemapNode {
  const [pageId = "", nodeId = "", depth = "", encodedTitle = "", flags = "", other = "", liveField = "", live = ""] =
    fields;
  const title = titleOf(encodedTitle);
  const [children, type = "", edit = "", lock, mark, approval] = flags;
  const statuses = { edit, marked: mark === "1", approved: approval === "1" };
  return {
    pageId: Number(pageId),
    nodeId,
    depth: Number(depth),
    title,
    hasChildren: children === "1",
    type,
    ...statuses,
    locked: lock === "1",
    heldByOther: other === "1",
    liveTitle: liveTitleOf(liveField, title),
    live: liveField === "[*null*]" ? "none" : (liveStates[live.at(-1) ?? ""] ?? "none"),
    state: wordOf(statuses),
  };
}

/** The pages of a sitemap's text, depth first. A closed website has none. */
export const sitemapOf = (text: string): SitemapNode[] => (isClosed(text) ? [] : recordsOf(text).map(nodeOf));
