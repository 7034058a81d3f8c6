// What a body is made of. Each part keeps the very tags that it was read from (`open`, `close`) and the blanks around
// them, so that writing it gives back the same text; what isn't known here is an island and keeps all of its text.
import { type Attrs, type MarkSpec, type NodeSpec, Schema } from "prosemirror-model";

const text = (value = "") => ({ default: value });
const element = (tag = "") => ({
  tag: text(tag),
  open: text(tag && `<${tag}>`),
  close: text(tag && `</${tag}>`),
  before: text(),
});
const held = (tag = "") => ({ ...element(tag), tail: text() });

const nodes: Record<string, NodeSpec> = {
  doc: { content: "block+", attrs: { lead: text(), tail: text() } },
  paragraph: {
    group: "block",
    content: "inline*",
    attrs: { ...element("p"), lead: text(), trail: text() },
  },
  /** Words that stand in a box, a cell or the body itself without an element of their own. */
  run: { group: "block", content: "inline*", attrs: { before: text() } },
  pre: { group: "block", content: "inline*", code: true, attrs: { ...element("pre"), lead: text(), trail: text() } },
  box: { group: "block", content: "block+", attrs: held("div") },
  list: { group: "block", content: "(item | list | island)+", attrs: held("ul") },
  item: { content: "block+", attrs: held("li"), defining: true },
  table: {
    group: "block",
    content: "(caption | columns | tablePart | row | island)*",
    attrs: held("table"),
    isolating: true,
  },
  caption: { content: "block+", attrs: held("caption"), isolating: true },
  columns: { atom: true, selectable: false, attrs: { raw: text(), before: text() } },
  tablePart: { content: "(row | island)*", attrs: held("tbody") },
  row: { content: "(cell | island)*", attrs: held("tr") },
  cell: { content: "block+", attrs: held("td"), isolating: true },
  rule: { group: "block", attrs: element("hr") },
  island: { group: "block", atom: true, attrs: { raw: text(), before: text() }, isolating: true, draggable: true },
  text: { group: "inline" },
  image: { group: "inline", inline: true, draggable: true, attrs: { open: text("<img>") } },
  lineBreak: { group: "inline", inline: true, selectable: false, attrs: { raw: text("<br>") }, leafText: () => "\n" },
  inlineIsland: { group: "inline", inline: true, atom: true, attrs: { raw: text() } },
};

const marks: Record<string, MarkSpec> = {
  /** An element in a line; `at` tells two of the same kind beside each other apart. */
  tag: {
    attrs: { tag: text(), open: text(), close: text(), at: { default: -1 } },
    excludes: "",
    inclusive: true,
  },
  /** A character that the source writes in a way of its own. */
  kept: { attrs: { raw: text(), text: text() }, inclusive: false, excludes: "kept" },
};

export const schema = new Schema({ nodes, marks });

/** For places that take nothing but words, as headings do. */
export const wordsSchema = new Schema({
  nodes: { ...nodes, doc: { content: "inline*", attrs: nodes.doc!.attrs! } },
  marks,
});

/** The attributes of a new element. */
export const elementAttrs = (tag: string, more: Attrs = {}): Attrs => ({
  tag,
  open: `<${tag}>`,
  close: `</${tag}>`,
  ...more,
});
