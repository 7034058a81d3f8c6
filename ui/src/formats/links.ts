/** What a link of a body leads to. */
export type LinkTarget =
  | { kind: "page"; page: string }
  | { kind: "file"; path: string; site: string }
  | { kind: "address"; address: string }
  /** None has been chosen yet. */
  | { kind: "open" };

const unquoted = (text: string) => text.trim().replace(/^(["'])(.*)\1$/, "$2");

/** The target of the value of an `href`: `page(12)`, `file(001/plan.pdf)`, an address, or nothing yet. */
export function targetOf(href: string): LinkTarget {
  const value = href.trim();
  if (value === "" || value === "#") return { kind: "open" };
  const page = /^page\((.*)\)$/i.exec(value);
  if (page) return { kind: "page", page: unquoted(page[1]!) };
  const file = /^file\((.*)\)$/i.exec(value);
  if (!file) return { kind: "address", address: value };
  const path = unquoted(file[1]!);
  // A site has two characters, a folder three.
  const ofSite = /^(..)\/(.+)$/.exec(path);
  return ofSite ? { kind: "file", site: ofSite[1]!, path: ofSite[2]! } : { kind: "file", site: "", path };
}
