import type { Found } from "../formats/found";
import type { PageWord } from "../formats/status";
import type { IconName } from "../kit/icon";
import { L, t } from "../labels";
import { go, pageAddress } from "../shell/address";
import { actions, commands } from "../shell/registry";
import { currentPage, hasTreeOf, kept, showInTree, websiteAt } from "../shell/workplace";
import { hasWords } from "../tree/model";
import { tree } from "../tree/tree-data";

/** Something that can be chosen. */
export interface Entry {
  id: string;
  group: "recent" | "pages" | "media" | "commands";
  label: string;
  note?: string;
  icon: IconName;
  state?: PageWord;
  key?: string;
  run: () => unknown;
  /** Where it stands, for pages of a tree. */
  show?: () => unknown;
}

interface RecentPage {
  pageId: number;
  title: string;
}

const keptRecent = 8;
const mostPages = 12;
const mostCommands = 8;

function recentPages(): RecentPage[] {
  try {
    return JSON.parse(kept.get("recent") || "[]");
  } catch {
    return [];
  }
}

/** Remembers a page that was opened. */
export function remember({ pageId, title }: RecentPage): void {
  const others = recentPages().filter((page) => page.pageId !== pageId);
  kept.set("recent", JSON.stringify([{ pageId, title }, ...others].slice(0, keptRecent)));
}

const pageEntry = (pageId: number, label: string, more: Partial<Entry> = {}): Entry => ({
  id: `page-${pageId}`,
  group: "pages",
  label,
  icon: "file-text",
  run: () => go(pageAddress(pageId)),
  ...more,
});

/** Where a page stands can be shown, if its tree is one of mine. */
const standing = (nodeId: string): Partial<Entry> => (hasTreeOf(nodeId) ? { show: () => showInTree(nodeId) } : {});

const wordsIn = (text: string, words: string) =>
  words
    .toLowerCase()
    .split(/\s+/)
    .filter(Boolean)
    .every((word) => text.toLowerCase().includes(word));

function commandEntries(words: string): Entry[] {
  const page = currentPage.value;
  const own = page
    ? actions.value
        .filter((one) => one.when(page) && !(one.disabled?.(page) ?? ""))
        .map(
          (one): Entry => ({
            id: one.id,
            group: "commands",
            label: one.label(page),
            note: page.title,
            icon: one.icon ?? "command",
            run: () => one.run(page),
            ...(one.key ? { key: one.key } : {}),
          }),
        )
    : [];
  const everywhere = commands.value
    .filter((one) => one.id !== "palette" && (one.when?.() ?? true))
    .map(
      (one): Entry => ({
        id: one.id,
        group: "commands",
        label: one.label(),
        icon: one.icon ?? "command",
        run: one.run,
        ...(one.key ? { key: one.key } : {}),
      }),
    );
  return [...own, ...everywhere].filter(({ label }) => wordsIn(label, words)).slice(0, mostCommands);
}

function knownPages(words: string): Entry[] {
  const { model } = tree.value;
  return model
    .all()
    .filter(hasWords(words))
    .sort(
      (a, b) =>
        Number(!a.title.toLowerCase().startsWith(words.toLowerCase())) -
        Number(!b.title.toLowerCase().startsWith(words.toLowerCase())),
    )
    .slice(0, mostPages)
    .map((node) =>
      pageEntry(node.pageId, node.title, {
        note: model.parent(node.nodeId)?.title ?? "",
        state: node.state,
        ...standing(node.nodeId),
      }),
    );
}

function byNumber(words: string): Entry[] {
  const number = /^#?(\d+)$/.exec(words.trim())?.[1];
  return number ? [pageEntry(Number(number), t(L.pageNumber, { id: number }))] : [];
}

/** What can be told at once: recent pages before the first key, then pages that are known and commands. */
export function entriesNow(words: string): Entry[] {
  if (words.trim() === "") {
    const recent = recentPages().map(({ pageId, title }) =>
      pageEntry(pageId, title, { group: "recent", icon: "history" }),
    );
    return [...recent, ...commandEntries("")];
  }
  return [...knownPages(words), ...byNumber(words), ...commandEntries(words)];
}

const mediaIcons = { image: "image", document: "file" } as const;

function foundEntry(found: Found): Entry {
  const { kind, pageId, siteId, lang, nodeId, title, path, state, excerpt } = found;
  const website = websiteAt(siteId, lang);
  if (kind === "page") {
    const note = [website ? `${website.siteName} · ${website.langName}` : "", path || excerpt]
      .filter(Boolean)
      .join(" — ");
    return pageEntry(pageId, title, { note, ...(state ? { state } : {}), ...standing(nodeId) });
  }
  const program = kind === "image" ? "images" : "documents";
  return {
    id: `${kind}-${siteId}-${path}`,
    group: "media",
    label: title,
    note: path,
    icon: mediaIcons[kind],
    run: () => go(`/torvex/${program}.asp?site=${siteId}&path=${encodeURIComponent(path)}`),
  };
}

export const foundEntries = (found: Found[]) => found.map(foundEntry);

const groups = ["recent", "pages", "media", "commands"] as const;
const groupWords = { recent: L.recentPages, pages: L.pages, media: L.media, commands: L.commands } as const;

/** Both lists, each thing once, in the order of the groups: what stands there already keeps its place. */
export function merged(now: Entry[], found: Entry[]): Entry[] {
  const known = new Set(now.map(({ id }) => id));
  const all = [...now, ...found.filter(({ id }) => !known.has(id))];
  return groups.flatMap((group) => all.filter((entry) => entry.group === group));
}

export const grouped = (entries: Entry[]): [string, Entry[]][] =>
  groups
    .map((group): [string, Entry[]] => [t(groupWords[group]), entries.filter((entry) => entry.group === group)])
    .filter(([, list]) => list.length > 0);
