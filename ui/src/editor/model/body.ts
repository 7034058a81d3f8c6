// A body as it is opened for editing and written back.
import type { Node } from "prosemirror-model";
import { Reader } from "./read";
import { schema, wordsSchema } from "./schema";
import { write, writeClosed } from "./write";

/** What a body may hold, by the place that the template gives it. */
export type Place = "blocks" | "words";

export interface Opened {
  doc: Node;
  /** Whether all of it can be edited as it looks, without a change to anything that isn't touched. */
  exact: boolean;
}

const empty = /^(?:\s|&nbsp;)*$/i;

function opened(source: string, doc: Node | null): Opened {
  if (!doc || write(doc) !== source)
    return { doc: doc ?? schema.node("doc", null, [schema.nodes.paragraph!.create()]), exact: false };
  const onlyIslands = doc.childCount > 0 && doc.content.content.every((node) => node.type.name === "island");
  return { doc, exact: !onlyIslands };
}

export function openBody(source: string, place: Place = "blocks"): Opened {
  if (place === "words") return opened(source, new Reader(source, wordsSchema).line());
  if (empty.test(source)) return { doc: schema.node("doc", null, [schema.nodes.paragraph!.create()]), exact: true };
  return opened(source, new Reader(source).doc());
}

/** What a document means, without the ways of writing it. */
function meaning(node: Node): string {
  if (node.type.spec.atom) return `{${node.attrs.raw.trim()}}`;
  if (node.inlineContent) return `${lineTag(node)}(${lineMeaning(node)})`;
  const parts = node.content.content.map((child, i) => {
    const follows = child.type.name === "run" && i > 0 && node.child(i - 1).type.name === "run";
    return follows && child.content.size ? `p(${lineMeaning(child)})` : meaning(child);
  });
  return `${node.attrs.tag ?? ""}[${parts.filter((part) => part !== "run()").join("")}]`;
}

const lineTag = (node: Node) => (node.type.name === "run" ? "run" : (node.attrs.tag ?? ""));

function lineMeaning(node: Node): string {
  const parts: [string, string][] = [];
  node.forEach((child) => {
    const tags = child.marks.flatMap((mark) => (mark.type.name === "tag" ? [mark.attrs.tag] : [])).join(" ");
    const text = child.isText ? child.text! : `{${child.attrs.open ?? child.attrs.raw.trim()}}`;
    const last = parts.at(-1);
    if (last && last[0] === tags) last[1] += text;
    else parts.push([tags, text]);
  });
  return parts
    .map(([tags, text]) => `${tags}:${text}`)
    .join("|")
    .replace(/\s+/g, " ")
    .trim();
}

/** Whether a text reads as what a document shows. */
export function reads(source: string, doc: Node): boolean {
  const reader = new Reader(source, doc.type.schema);
  const again = doc.inlineContent ? reader.line() : reader.doc();
  return again !== null && meaning(again) === meaning(doc);
}

/** The text of an edited body. Should it read as something else than what is shown, for a tag that the source left
    open, the tags that are missing are written: in the parts that were changed, or, if need be, in all. */
export function bodyText(doc: Node, original?: Node): string {
  const text = write(doc);
  if (text === "<p></p>") return "";
  if (reads(text, doc)) return text;
  const mended = writeClosed(doc, new Set(original?.content.content));
  return reads(mended, doc) ? mended : writeClosed(doc);
}
