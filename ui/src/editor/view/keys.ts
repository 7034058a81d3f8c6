// What each key does in a body.

import {
  baseKeymap,
  chainCommands,
  createParagraphNear,
  deleteSelection,
  exitCode,
  joinBackward,
  joinForward,
  liftEmptyBlock,
  newlineInCode,
  selectNodeBackward,
  selectNodeForward,
} from "prosemirror-commands";
import { redo, undo } from "prosemirror-history";
import type { Attrs, Node, NodeType } from "prosemirror-model";
import { liftListItem, sinkListItem, splitListItem } from "prosemirror-schema-list";
import { type Command, type EditorState, Selection, TextSelection, type Transaction } from "prosemirror-state";
import { canSplit } from "prosemirror-transform";
import { elementAttrs } from "../model/schema";
import { withAttribute } from "../model/tags";
import {
  asParagraphs,
  breakLine,
  clearLooks,
  listAround,
  nodeType,
  quote,
  setLine,
  toggleList,
  toggleTag,
} from "./commands";

const fresh = (attrs: Attrs): Attrs => ({ ...attrs, open: withAttribute(attrs.open ?? "", "id", null) });

/** What follows a line that is broken: another of its kind, or a paragraph after a heading. */
function nextLine(state: EditorState, node: Node, atEnd: boolean): { type: NodeType; attrs: Attrs } {
  const paragraph = nodeType(state, "paragraph");
  const plain = node.type.name === "run" || (atEnd && /^h\d$/.test(node.attrs.tag));
  if (plain) return { type: paragraph, attrs: elementAttrs("p", { before: node.attrs.before }) };
  return { type: node.type, attrs: fresh(node.attrs) };
}

const splitLine: Command = (state, dispatch) => {
  const { $from, $to } = state.selection;
  if (!$from.parent.isTextblock || $from.depth === 0 || $from.parent.type.spec.code) return false;
  const { tr } = state;
  if (!state.selection.empty) tr.deleteSelection();
  const $at = tr.doc.resolve(tr.mapping.map($from.pos));
  const node = $at.parent;
  const atEnd = $to.parentOffset === $to.parent.content.size;
  const next = nextLine(state, node, atEnd);
  if (!canSplit(tr.doc, $at.pos, 1, [next])) return false;
  tr.split($at.pos, 1, [next]);
  // Words of the body itself become paragraphs as soon as there are two of them.
  if (node.type.name === "run")
    tr.setNodeMarkup($at.before(), nodeType(state, "paragraph"), elementAttrs("p", { before: node.attrs.before }));
  dispatch?.(tr.scrollIntoView());
  return true;
};

const item = (state: EditorState) => nodeType(state, "item");
const inItem = (state: EditorState) => listAround(state.selection.$from) !== null;

const enter = chainCommands(
  newlineInCode,
  (state, dispatch) =>
    inItem(state) &&
    splitListItem(item(state), itemHere(state))(state, dispatch && ((tr) => dispatch(likeBefore(state, tr)))),
  createParagraphNear,
  (state, dispatch) => liftEmptyBlock(state, dispatch && ((tr) => dispatch(asParagraphs(tr)))),
  splitLine,
);

function itemHere(state: EditorState): Attrs {
  const { $from } = state.selection;
  for (let depth = $from.depth; depth > 0; --depth) {
    if ($from.node(depth).type.name === "item") return { ...fresh($from.node(depth).attrs), tail: "" };
  }
  return elementAttrs("li");
}

/** The new entry holds plain words when the one before it does; what has left the list is a paragraph. */
function likeBefore(state: EditorState, tr: Transaction): Transaction {
  const { $from } = tr.selection;
  const inRun = state.selection.$from.parent.type.name === "run";
  const starts =
    $from.depth > 1 && $from.node($from.depth - 1).type.name === "item" && $from.index($from.depth - 1) === 0;
  if (inRun && starts && $from.parent.type.name === "paragraph")
    tr.setNodeMarkup($from.before(), state.schema.nodes.run!, { before: "" });
  return asParagraphs(tr);
}

const leaveCell =
  (direction: 1 | -1): Command =>
  (state, dispatch) => {
    const { $from } = state.selection;
    for (let depth = $from.depth; depth > 0; --depth) {
      if ($from.node(depth).type.name !== "cell") continue;
      const edge = direction > 0 ? $from.after(depth) : $from.before(depth);
      const next = Selection.findFrom(state.doc.resolve(edge), direction, true);
      if (!next) return false;
      dispatch?.(state.tr.setSelection(TextSelection.create(state.doc, next.from)).scrollIntoView());
      return true;
    }
    return false;
  };

const backspace = chainCommands(deleteSelection, joinBackward, selectNodeBackward);
const del = chainCommands(deleteSelection, joinForward, selectNodeForward);

/** Keys of a body of blocks; those of the interface come on top. */
export const keys: Record<string, Command> = {
  ...baseKeymap,
  Enter: enter,
  "Shift-Enter": chainCommands(exitCode, breakLine),
  "Mod-Enter": () => false,
  Backspace: backspace,
  Delete: del,
  Tab: chainCommands((state, dispatch) => inItem(state) && sinkListItem(item(state))(state, dispatch), leaveCell(1)),
  "Shift-Tab": chainCommands(
    (state, dispatch) =>
      inItem(state) && liftListItem(item(state))(state, dispatch && ((tr) => dispatch(asParagraphs(tr)))),
    leaveCell(-1),
  ),
  "Mod-z": undo,
  "Mod-y": redo,
  "Mod-Shift-z": redo,
  "Mod-b": toggleTag("strong"),
  "Mod-i": toggleTag("em"),
  "Mod-u": toggleTag("u"),
  "Mod-Alt-0": setLine("p"),
  "Mod-Alt-1": setLine("h1"),
  "Mod-Alt-2": setLine("h2"),
  "Mod-Alt-3": setLine("h3"),
  "Mod-Alt-4": setLine("h4"),
  "Mod-Shift-7": toggleList("ol"),
  "Mod-Shift-8": toggleList("ul"),
  "Mod-Shift-9": quote,
  "Mod-\\": clearLooks,
};

/** Keys where nothing but words can stand. */
export const wordKeys: Record<string, Command> = {
  Enter: () => true,
  "Shift-Enter": () => true,
  Backspace: deleteSelection,
  Delete: deleteSelection,
  "Mod-a": baseKeymap["Mod-a"]!,
  "Mod-z": undo,
  "Mod-y": redo,
  "Mod-Shift-z": redo,
  "Mod-b": toggleTag("strong"),
  "Mod-i": toggleTag("em"),
};
