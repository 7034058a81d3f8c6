// What keys and tools do to a body.

import { lift, wrapIn } from "prosemirror-commands";
import type { Attrs, Mark, MarkType, Node, NodeType, ResolvedPos } from "prosemirror-model";
import { liftListItem, wrapRangeInList } from "prosemirror-schema-list";
import { type Command, type EditorState, NodeSelection, type Transaction } from "prosemirror-state";
import { elementAttrs } from "../model/schema";
import { attributeOf, renamed, withAttribute, withStyle } from "../model/tags";

export const nodeType = (state: EditorState, name: string): NodeType => state.schema.nodes[name]!;
const tagType = (state: EditorState): MarkType => state.schema.marks.tag!;

/** Elements that say the same. */
const kin: Record<string, string[]> = {
  strong: ["strong", "b"],
  em: ["em", "i"],
  s: ["s", "strike", "del"],
};
const sameAs = (tag: string) => kin[tag] ?? [tag];
const isTag = (mark: Mark, tag: string) => mark.type.name === "tag" && sameAs(tag).includes(mark.attrs.tag);

let lastAt = 1e9;
/** A new element of a line, apart from all others of its kind. */
export const newTag = (state: EditorState, tag: string, open = `<${tag}>`): Mark =>
  tagType(state).create({ ...elementAttrs(tag), open, at: ++lastAt });

/** The elements that hold the start of what is chosen. */
export function tagsHere(state: EditorState): readonly Mark[] {
  const { $from, empty, from, to } = state.selection;
  if (empty) return state.storedMarks ?? $from.marks();
  let found: readonly Mark[] | null = null;
  state.doc.nodesBetween(from, to, (node) => {
    if (node.isInline && !found) found = node.marks;
  });
  return found ?? $from.marks();
}

export const hasTag = (state: EditorState, tag: string) => tagsHere(state).some((mark) => isTag(mark, tag));

function tagsIn(state: { doc: Node }, from: number, to: number, test: (mark: Mark) => boolean): Mark[] {
  const found = new Set<Mark>();
  state.doc.nodesBetween(from, to, (node) => {
    for (const mark of node.marks) if (test(mark)) found.add(mark);
  });
  return [...found];
}

export function toggleTag(tag: string): Command {
  return (state, dispatch) => {
    const { empty, from, to, $from } = state.selection;
    if (!$from.parent.inlineContent && empty) return false;
    if ($from.parent.type.spec.code) return false;
    if (!dispatch) return true;
    const on = hasTag(state, tag);
    if (empty) {
      const marks = tagsHere(state);
      dispatch(
        state.tr.setStoredMarks(on ? marks.filter((mark) => !isTag(mark, tag)) : newTag(state, tag).addToSet(marks)),
      );
      return true;
    }
    const { tr } = state;
    if (on) for (const mark of tagsIn(state, from, to, (mark) => isTag(mark, tag))) tr.removeMark(from, to, mark);
    else tr.addMark(from, to, newTag(state, tag));
    dispatch(tr.scrollIntoView());
    return true;
  };
}

/** Takes all that only concerns the looks of a line off what is chosen. */
export const clearLooks: Command = (state, dispatch) => {
  const { from, to, empty } = state.selection;
  if (empty) return false;
  const plain = new Set([
    "b",
    "strong",
    "i",
    "em",
    "u",
    "s",
    "strike",
    "font",
    "span",
    "big",
    "small",
    "tt",
    "sub",
    "sup",
    "mark",
    "code",
  ]);
  const { tr } = state;
  for (const mark of tagsIn(state, from, to, (mark) => plain.has(mark.attrs.tag))) tr.removeMark(from, to, mark);
  dispatch?.(tr);
  return true;
};

/** The whole stretch that an element of a line covers. */
export function stretch($pos: ResolvedPos, mark: Mark): { from: number; to: number } {
  const { parent } = $pos;
  const base = $pos.start();
  let from = -1;
  let to = -1;
  let done = false;
  parent.forEach((node, offset) => {
    const inside = node.marks.some((other) => other.eq(mark));
    const end = base + offset + node.nodeSize;
    if (inside && !done) {
      if (from < 0) from = base + offset;
      to = end;
    } else if (from >= 0 && to < $pos.pos) from = to = -1;
    else if (from >= 0) done = true;
  });
  return from < 0 ? { from: $pos.pos, to: $pos.pos } : { from, to };
}

export const linkHere = (state: EditorState): Mark | undefined =>
  tagsHere(state).find((mark) => mark.attrs.tag === "a");

/** The address of a link, in each of the ways that a body may hold it; "" for one that isn't chosen yet. */
export const addressOf = (mark: Mark): string => attributeOf(mark.attrs.open, "href") ?? "";

/** Makes a link of what is chosen, or leads the one that is there elsewhere. Without words the address is the word. */
export function setLink(href: string, text = "", target = ""): Command {
  return (state, dispatch) => {
    const old = linkHere(state);
    const { tr } = state;
    const base = old ? old.attrs.open.replace(/\s*[[{]href[\]}](?:=(?:"[^"]*"|'[^']*'|[^\s>]*))?/i, "") : "<a>";
    const open = withAttribute(withAttribute(base, "href", href), "target", target || null);
    const mark = newTag(state, "a", open);
    let { from, to } = state.selection;
    if (old && state.selection.empty) ({ from, to } = stretch(state.selection.$from, old));
    if (from === to) {
      tr.insertText(text || href, from);
      to = from + (text || href).length;
    }
    for (const other of tagsIn(tr, from, to, (one) => one.attrs.tag === "a")) tr.removeMark(from, to, other);
    dispatch?.(tr.addMark(from, to, mark).removeStoredMark(tagType(state)).scrollIntoView());
    return true;
  };
}

export const removeLink: Command = (state, dispatch) => {
  const old = linkHere(state);
  if (!old) return false;
  const { empty, $from, from, to } = state.selection;
  const place = empty ? stretch($from, old) : { from, to };
  dispatch?.(state.tr.removeMark(place.from, place.to, old));
  return true;
};

/** The blocks of words in what is chosen. */
function lines(state: EditorState): { node: Node; at: number }[] {
  const found: { node: Node; at: number }[] = [];
  const { from, to } = state.selection;
  state.doc.nodesBetween(from, to, (node, at) => {
    if (node.isTextblock) found.push({ node, at });
    return !node.isTextblock;
  });
  return found;
}

function retagged(node: Node, tag: string): Attrs {
  if (!node.attrs.open) return elementAttrs(tag, { before: node.attrs.before });
  return { ...node.attrs, tag, open: renamed(node.attrs.open, tag), close: `</${tag}>` };
}

export function setLine(tag: string): Command {
  return (state, dispatch) => {
    const type = nodeType(state, tag === "pre" ? "pre" : "paragraph");
    const all = lines(state).filter(({ at }) => {
      const $at = state.doc.resolve(at);
      return $at.parent.canReplaceWith($at.index(), $at.index() + 1, type);
    });
    if (!all.length) return false;
    const { tr } = state;
    for (const { node, at } of all) tr.setNodeMarkup(at, type, retagged(node, tag));
    dispatch?.(tr.scrollIntoView());
    return true;
  };
}

/** The element of the line that holds the cursor. */
export function lineTag(state: EditorState): string {
  const { parent } = state.selection.$from;
  return parent.type.name === "run" ? "" : (parent.attrs.tag ?? "");
}

export function listAround($pos: ResolvedPos): { node: Node; at: number } | null {
  for (let depth = $pos.depth; depth > 0; --depth) {
    if ($pos.node(depth).type.name === "list") return { node: $pos.node(depth), at: $pos.before(depth) };
  }
  return null;
}

export const listTag = (state: EditorState): string => listAround(state.selection.$from)?.node.attrs.tag ?? "";

/** Paragraphs that come to stand in an entry are plain words there, and the other way round. */
export function toggleList(tag: "ul" | "ol"): Command {
  return (state, dispatch) => {
    const around = listAround(state.selection.$from);
    if (around && around.node.attrs.tag === tag)
      return liftListItem(nodeType(state, "item"))(state, dispatch && ((tr) => dispatch(asParagraphs(tr))));
    if (around) {
      dispatch?.(state.tr.setNodeMarkup(around.at, null, retagged(around.node, tag)));
      return true;
    }
    const { $from, $to } = state.selection;
    const range = $from.blockRange($to);
    if (!range) return false;
    const tr = dispatch ? state.tr : null;
    const before = $from.node(range.depth).child(range.startIndex).attrs.before ?? "";
    if (!wrapRangeInList(tr, range, nodeType(state, "list"), elementAttrs(tag, { before }))) return false;
    if (tr) dispatch!(asEntries(tr).scrollIntoView());
    return true;
  };
}

function asEntries(tr: Transaction): Transaction {
  const { $from, $to } = tr.selection;
  const range = listAround($from);
  if (!range) return tr;
  const run = tr.doc.type.schema.nodes.run!;
  const end = listAround($to)?.node.nodeSize ?? range.node.nodeSize;
  const plain: { at: number; before: string }[] = [];
  tr.doc.nodesBetween(range.at, range.at + end, (node, at, parent, index) => {
    if (parent?.type.name === "item" && index === 0 && node.attrs.open === "<p>") plain.push({ at, before: "" });
  });
  for (const { at } of plain) tr.setNodeMarkup(at, run, { before: "" });
  return tr;
}

/** Words that left their list are paragraphs. */
export function asParagraphs(tr: Transaction): Transaction {
  const { schema } = tr.doc.type;
  tr.doc.nodesBetween(tr.selection.from, tr.selection.to, (node, at, parent) => {
    if (node.type.name === "run" && parent?.type.name !== "item")
      tr.setNodeMarkup(at, schema.nodes.paragraph!, elementAttrs("p", { before: node.attrs.before }));
    return !node.isTextblock;
  });
  return tr;
}

export const quote: Command = (state, dispatch) => {
  const { $from } = state.selection;
  for (let depth = $from.depth; depth > 0; --depth) {
    if ($from.node(depth).attrs.tag === "blockquote") return lift(state, dispatch);
  }
  return wrapIn(nodeType(state, "box"), elementAttrs("blockquote"))(state, dispatch);
};

export const breakLine: Command = (state, dispatch) => {
  if (!state.selection.$from.parent.inlineContent) return false;
  const mark = tagsHere(state).filter((one) => one.type.name === "tag");
  dispatch?.(
    state.tr.replaceSelectionWith(nodeType(state, "lineBreak").create(null, null, mark), false).scrollIntoView(),
  );
  return true;
};

export function insertBlock(node: Node): Command {
  return (state, dispatch) => {
    const { $from } = state.selection;
    const empty = $from.parent.isTextblock && $from.parent.content.size === 0 && $from.depth > 0;
    const { tr } = state;
    if (empty) tr.replaceRangeWith($from.before(), $from.after(), node);
    else tr.replaceSelectionWith(node);
    dispatch?.(tr.scrollIntoView());
    return true;
  };
}

export const insertRule: Command = (state, dispatch) => insertBlock(nodeType(state, "rule").create())(state, dispatch);

export function insertImage(open: string): Command {
  return (state, dispatch) => {
    dispatch?.(state.tr.replaceSelectionWith(nodeType(state, "image").create({ open }), true).scrollIntoView());
    return true;
  };
}

/** Changes the element that is chosen as a whole. */
export function setChosen(attrs: Attrs): Command {
  return (state, dispatch) => {
    const { selection } = state;
    if (!(selection instanceof NodeSelection)) return false;
    const tr = state.tr.setNodeMarkup(selection.from, null, { ...selection.node.attrs, ...attrs });
    dispatch?.(tr.setSelection(NodeSelection.create(tr.doc, selection.from)));
    return true;
  };
}

/** A class, or the looks that a site allows, for words or for a line. */
export function setStyle(property: string, value: string): Command {
  return (state, dispatch) => {
    const { empty, from, to } = state.selection;
    if (empty) return false;
    const { tr } = state;
    const old = tagsIn(
      state,
      from,
      to,
      (mark) => mark.attrs.tag === "span" && attributeOf(mark.attrs.open, "style")?.includes(`${property}:`) === true,
    );
    for (const mark of old) tr.removeMark(from, to, mark);
    if (value) tr.addMark(from, to, newTag(state, "span", withStyle("<span>", property, value)));
    dispatch?.(tr);
    return true;
  };
}

export function setLineClass(name: string): Command {
  return (state, dispatch) => {
    const { tr } = state;
    for (const { node, at } of lines(state)) {
      if (node.type.name === "paragraph")
        tr.setNodeMarkup(at, null, { ...node.attrs, open: withAttribute(node.attrs.open, "class", name || null) });
    }
    if (!tr.docChanged) return false;
    dispatch?.(tr);
    return true;
  };
}

export const lineClass = (state: EditorState): string =>
  attributeOf(state.selection.$from.parent.attrs.open ?? "", "class") ?? "";
