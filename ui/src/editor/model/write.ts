// A body as text.
import type { Fragment, Mark, Node } from "prosemirror-model";
import { escapeText } from "./characters";
import { voidTags } from "./tags";

/** How elements are closed: as they were, or each by a tag of its own. */
type Style = "asItWas" | "closed";

const finished: Record<Style, WeakMap<Node, string>> = { asItWas: new WeakMap(), closed: new WeakMap() };

function written(text: string, kept: Mark | undefined, style: Style): string {
  if (!kept || (style === "closed" && /^&(?!.*;$)/.test(kept.attrs.raw))) return escapeText(text);
  const { raw, text: character } = kept.attrs;
  let out = "";
  let at = 0;
  while (character && text.startsWith(character, at)) {
    out += raw;
    at += character.length;
  }
  return out + escapeText(text.slice(at));
}

function leaf(node: Node, style: Style): string {
  if (node.isText)
    return written(
      node.text!,
      node.marks.find((mark) => mark.type.name === "kept"),
      style,
    );
  return node.type.name === "image" ? node.attrs.open : node.attrs.raw;
}

const opening = (mark: Mark, style: Style) => mark.attrs.open || (style === "closed" ? `<${mark.attrs.tag}>` : "");
const closing = (mark: Mark, style: Style) => mark.attrs.close || (style === "closed" ? `</${mark.attrs.tag}>` : "");

function writeInline(content: Fragment, style: Style): string {
  let out = "";
  let open: Mark[] = [];
  const closeTo = (depth: number) => {
    for (const mark of open.slice(depth).reverse()) out += closing(mark, style);
    open = open.slice(0, depth);
  };
  content.forEach((node) => {
    const marks = node.marks.filter((mark) => mark.type.name === "tag");
    const differing = marks.findIndex((mark, i) => !open[i]?.eq(mark));
    const shared = differing < 0 ? marks.length : differing;
    closeTo(shared);
    for (const mark of marks.slice(shared)) {
      out += opening(mark, style);
      open.push(mark);
    }
    out += leaf(node, style);
  });
  closeTo(0);
  return out;
}

function writeBlocks(content: Fragment, style: Style): string {
  let out = "";
  content.forEach((node, _, i) => {
    const follows = i > 0 && node.type.name === "run" && content.child(i - 1).type.name === "run";
    out +=
      follows && node.content.size
        ? `${node.attrs.before}<p>${writeInline(node.content, style)}</p>`
        : writeNode(node, style);
  });
  return out;
}

function writeElement(node: Node, style: Style): string {
  const { tag = "", before = "", open = "", close = "", lead = "", trail = "", tail = "" } = node.attrs;
  const closes = style === "closed" && tag !== "";
  const start = open || (closes ? `<${tag}>` : "");
  const inner = node.inlineContent ? writeInline(node.content, style) : writeBlocks(node.content, style);
  const end = voidTags.has(tag) ? "" : close || (closes ? `</${tag}>` : "");
  return `${before}${start}${lead}${inner}${trail}${tail}${end}`;
}

function writeNode(node: Node, style: Style): string {
  if (node.type.spec.atom) return `${node.attrs.before}${node.attrs.raw}`;
  const known = finished[style].get(node);
  if (known !== undefined) return known;
  const text = writeElement(node, style);
  finished[style].set(node, text);
  return text;
}

/** A node, or a whole body, as it is stored. What was read and not changed gives its own source. */
export const write = (node: Node): string => writeNode(node, "asItWas");

/** The same with the tags that the source left out, but for those of its parts that are to stay as they were. */
export function writeClosed(node: Node, staying: ReadonlySet<Node> = new Set()): string {
  if (node.inlineContent) return writeNode(node, "closed");
  const parts = node.content.content.map((child) => writeNode(child, staying.has(child) ? "asItWas" : "closed"));
  return parts.join("") + node.attrs.tail;
}

export const writeLine = (content: Fragment): string => writeInline(content, "asItWas");
