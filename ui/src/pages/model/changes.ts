/** What changes for visitors: the rows of `desk.compare` in words, and texts word by word. */

import { diffWordsWithSpace } from "diff";
import { decoded } from "../../formats/text";

export interface Difference {
  readonly part: string;
  readonly bodyId: number;
  readonly design: string;
  readonly live: string;
  /** Of a meta tag. */
  readonly name?: string;
}

export interface Piece {
  readonly text: string;
  readonly kind: "same" | "new" | "gone";
}

/** Beyond this a comparison by words would hold up the screen; the texts stand whole beside each other then. */
const MOST_CHARACTERS = 60000;

export function pieces(live: string, design: string): Piece[] {
  if (live.length + design.length > MOST_CHARACTERS) return whole(live, design);
  return diffWordsWithSpace(live, design).map((each) => ({
    text: each.value,
    kind: each.added ? "new" : each.removed ? "gone" : "same",
  }));
}

function whole(live: string, design: string): Piece[] {
  const both: Piece[] = [
    { text: live, kind: "gone" },
    { text: design, kind: "new" },
  ];
  return both.filter((piece) => piece.text !== "");
}

const words = (text: string): number => text.split(/\s+/u).filter((word) => word !== "").length;

/** How many words came and went. */
export function wordCounts(live: string, design: string): { more: number; fewer: number } {
  const count = { more: 0, fewer: 0 };
  for (const piece of pieces(live, design)) {
    if (piece.kind === "new") count.more += words(piece.text);
    if (piece.kind === "gone") count.fewer += words(piece.text);
  }
  return count;
}

/** The words of a body, as a reader sees them: a new line at each block, no mark-up. */
export function wordsOf(html: string): string {
  const lines = html
    .replace(/<!--[\s\S]*?-->/g, "")
    .replace(/<(script|style)\b[\s\S]*?<\/\1\s*>/gi, "")
    .replace(/<(?:br|\/?(?:p|div|h[1-6]|li|ul|ol|tr|table|blockquote|section|figure|figcaption|hr))\b[^>]*>/gi, "\n")
    .replace(/<\/?[a-z][^>]*>/gi, "");
  return decoded(lines)
    .split("\n")
    .map((line) => line.replace(/\s+/g, " ").trim())
    .filter((line) => line !== "")
    .join("\n");
}

/** Whether only mark-up differs, so that a comparison of words would show nothing. */
export function onlyMarkUp(difference: Difference): boolean {
  return difference.design !== difference.live && wordsOf(difference.design) === wordsOf(difference.live);
}

/** Pictures that say nothing to who doesn't see them: without "alt", not with an empty one, which means decoration. */
export const imagesWithoutAlt = (html: string): number =>
  (html.match(/<img\b(?:[^>"']|"[^"]*"|'[^']*')*>/gi) ?? []).filter(
    (tag) => !/\salt\s*(?:=|\s|\/?>)/i.test(tag.replace(/"[^"]*"|'[^']*'/g, '""')),
  ).length;
