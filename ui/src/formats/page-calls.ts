// What the links and handles of a page would call, read as data: nothing of it ever runs.

export type PageCall =
  | { kind: "page"; page: string }
  | { kind: "link"; address: string }
  | { kind: "file"; path: string; title: string }
  | { kind: "editBody"; nodeId: string; bodyId: number }
  | { kind: "setupBody"; nodeId: string; bodyId: number; bodyType: number; feedId: number };

const escapes: Record<string, string> = { n: "\n", r: "\r", t: "\t", b: "\b", f: "\f", v: "\v", "0": "\0" };

function unescaped(text: string): string {
  return text.replace(/\\(?:x([0-9a-f]{2})|u([0-9a-f]{4})|([\s\S]))/gi, (_, byte, unit, other) =>
    byte || unit ? String.fromCharCode(Number.parseInt(byte ?? unit, 16)) : (escapes[other] ?? other),
  );
}

const argumentPattern = /\s*(?:'((?:[^'\\]|\\[\s\S])*)'|"((?:[^"\\]|\\[\s\S])*)"|(-?\d+))\s*(,|$)/y;

/** The texts and numbers of a list of arguments, or null when there is anything else in it. */
function argumentsOf(list: string): string[] | null {
  const found: string[] = [];
  argumentPattern.lastIndex = 0;
  while (argumentPattern.lastIndex < list.length) {
    const match = argumentPattern.exec(list);
    if (!match) return null;
    found.push(match[3] ?? unescaped(match[1] ?? match[2] ?? ""));
  }
  return found;
}

const callPattern = /^\s*javascript:\s*(?:window\.)?top\.((?:link\.)?[a-z]+)\(([\s\S]*)\);?\s*$/i;

const makers = new Map<string, (args: string[]) => PageCall | null>(
  Object.entries({
    page: ([page]) => (page ? { kind: "page", page } : null),
    viewlink: ([address]) => (address ? { kind: "link", address } : null),
    popup: ([path, title = ""]) => (path ? { kind: "file", path, title } : null),
    "link.editbody": ([nodeId, bodyId]) =>
      nodeId && Number(bodyId) > 0 ? { kind: "editBody", nodeId, bodyId: Number(bodyId) } : null,
    "link.setupbody": ([nodeId, bodyId, bodyType, feedId]) =>
      nodeId && Number(bodyId) > 0
        ? { kind: "setupBody", nodeId, bodyId: Number(bodyId), bodyType: Number(bodyType), feedId: Number(feedId) }
        : null,
  } as Record<string, (args: string[]) => PageCall | null>),
);

const decoded = (text: string) => {
  try {
    return decodeURIComponent(text);
  } catch {
    return text;
  }
};

function callIn(href: string): PageCall | null {
  const [, name, list] = callPattern.exec(href) ?? [];
  const args = list === undefined ? null : argumentsOf(list);
  return (name && args && makers.get(name.toLowerCase())?.(args)) || null;
}

/** Only these lead anywhere: an address of any other kind is none. */
const outside = /^(?:https?|ftp|mailto|tel):/i;

/** Where a link leads: as the server wrote it for authors, or as it stands in a body. */
export function callOf(href: string): PageCall | null {
  if (/^\s*javascript:/i.test(href)) return callIn(href) ?? callIn(decoded(href));
  const page =
    /^page\(\s*["']?([\w.]+)["']?\s*\)$/i.exec(href) ??
    /^\/?(?:tvx|frameset)\.asp\?(?:[^#]*&)?pageId=([\w.]+)/i.exec(href);
  if (page) return { kind: "page", page: page[1]! };
  const file = /^file\(\s*["']?([^)]*?)["']?\s*\)$/i.exec(href);
  if (file) return { kind: "file", path: file[1]!, title: "" };
  return outside.test(href) ? { kind: "link", address: href } : null;
}

/** The call as it stands in a body's text, from what an author chose. */
export const pageLink = (pageId: number) => `page(${pageId})`;
export const fileLink = (path: string, site: string, ownSite: string) =>
  `file(${site && site !== ownSite ? `${site}/` : ""}${path})`;
