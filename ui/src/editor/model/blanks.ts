// Blanks that show nothing are kept where they stand, but out of the words.
import type { Node } from "prosemirror-model";
import { isBlank, type Unit } from "./characters";

/** Blanks of any length show as one. */
export function shown(unit: Unit, keepsBlanks: boolean): Unit[] {
  if (!isBlank(unit.text) || !unit.text) return [unit];
  if (!keepsBlanks) return [{ raw: unit.raw, text: " " }];
  return (unit.raw.match(/\r\n|[\s\S]/g) ?? []).map((raw) => ({ raw, text: raw.startsWith("\r") ? "\n" : raw }));
}

const sourceOf = (node: Node, text: string) => {
  const kept = node.marks.find((mark) => mark.type.name === "kept");
  return kept ? kept.attrs.raw : text;
};
const isBare = (node: Node) =>
  node.isText && node.marks.every((mark) => mark.type.name === "kept" && isBlank(mark.attrs.raw));

/** Takes the blanks at an end of a line out of it. */
export function takeBlanks(nodes: Node[], end: "first" | "last"): string {
  let taken = "";
  for (;;) {
    const blank = takeBlank(nodes, end);
    if (!blank) return taken;
    taken = end === "first" ? taken + blank : blank + taken;
  }
}

function takeBlank(nodes: Node[], end: "first" | "last"): string {
  const at = end === "first" ? 0 : nodes.length - 1;
  const node = nodes[at];
  if (!node || !isBare(node)) return "";
  const text = node.text!;
  if (text === " ") {
    nodes.splice(at, 1);
    return sourceOf(node, text);
  }
  if (node.marks.length || !(end === "first" ? text.startsWith(" ") : text.endsWith(" "))) return "";
  nodes[at] = end === "first" ? node.cut(1) : node.cut(0, text.length - 1);
  return " ";
}

/** A blank that follows a break shows nothing: it belongs to the break. */
export function withBlanksInBreaks(nodes: Node[]): Node[] {
  const out: Node[] = [];
  for (const node of nodes) {
    const last = out.at(-1);
    const tagsOf = (other: Node) => other.marks.filter((mark) => mark.type.name === "tag");
    const follows = last?.type.name === "lineBreak" && node.isText && node.text!.startsWith(" ");
    const sameTags =
      follows && tagsOf(node).length === last.marks.length && last.marks.every((mark, i) => mark.eq(tagsOf(node)[i]!));
    if (!sameTags || (node.text!.length > 1 && node.marks.some((mark) => mark.type.name === "kept"))) {
      out.push(node);
      continue;
    }
    out[out.length - 1] = last!.type.create({ raw: last!.attrs.raw + sourceOf(node, " ") }, null, last!.marks);
    if (node.text!.length > 1) out.push(node.cut(1));
  }
  return out;
}
