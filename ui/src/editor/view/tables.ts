// Tables: put in, and given rows and columns.
import type { Node, NodeType, ResolvedPos, Schema } from "prosemirror-model";
import { type Command, type EditorState, TextSelection } from "prosemirror-state";
import { elementAttrs } from "../model/schema";
import { attributeOf } from "../model/tags";

const type = (schema: Schema, name: string): NodeType => schema.nodes[name]!;

function newCell(schema: Schema, tag: string, before = ""): Node {
  const attrs = elementAttrs(tag, { before, ...(tag === "th" ? { open: '<th scope="col">' } : {}) });
  return type(schema, "cell").create(attrs, type(schema, "run").create());
}

function newRow(schema: Schema, tag: string, columns: number): Node {
  return type(schema, "row").create(
    elementAttrs("tr", { before: "\n" }),
    Array.from({ length: columns }, () => newCell(schema, tag)),
  );
}

/** A table with a row of headings. */
export function insertTable(rows: number, columns: number): Command {
  return (state, dispatch) => {
    const { schema } = state;
    const head = type(schema, "tablePart").create(
      elementAttrs("thead", { before: "\n", tail: "\n" }),
      newRow(schema, "th", columns),
    );
    const body = type(schema, "tablePart").create(
      elementAttrs("tbody", { before: "\n", tail: "\n" }),
      Array.from({ length: rows - 1 }, () => newRow(schema, "td", columns)),
    );
    const { $from } = state.selection;
    const table = type(schema, "table").create(
      elementAttrs("table", { before: $from.parent.attrs.before ?? "", tail: "\n" }),
      [head, body],
    );
    if ($from.depth === 0) return false;
    const { tr } = state;
    const empty = $from.parent.content.size === 0;
    const at = empty ? $from.before() : $from.after();
    if (!$from.node(-1).canReplaceWith($from.index(-1), $from.indexAfter(-1), table.type)) return false;
    if (empty) tr.replaceWith(at, $from.after(), table);
    else tr.insert(at, table);
    dispatch?.(tr.setSelection(TextSelection.near(tr.doc.resolve(at + 4))).scrollIntoView());
    return true;
  };
}

interface Place {
  table: Node;
  tableAt: number;
  row: Node;
  rowAt: number;
  column: number;
}

function depthOf($pos: ResolvedPos, name: string): number {
  for (let depth = $pos.depth; depth > 0; --depth) if ($pos.node(depth).type.name === name) return depth;
  return 0;
}

export function tableHere(state: EditorState): Place | null {
  const { $from } = state.selection;
  const cell = depthOf($from, "cell");
  const row = depthOf($from, "row");
  const table = depthOf($from, "table");
  if (!cell || !row || !table || row > cell) return null;
  return {
    table: $from.node(table),
    tableAt: $from.before(table),
    row: $from.node(row),
    rowAt: $from.before(row),
    column: $from.index(row),
  };
}

/** Cells that reach over others make rows and columns that aren't simple. */
function isSimple(table: Node): boolean {
  let simple = true;
  table.descendants((node) => {
    const spans =
      node.type.name === "cell" &&
      ["colspan", "rowspan"].some((name) => Number(attributeOf(node.attrs.open, name) ?? 1) > 1);
    if (spans || node.type.name === "table") simple &&= !spans;
    return node.type.name !== "cell";
  });
  return simple;
}

const like = (node: Node, schema: Schema) =>
  type(schema, "cell").create({ ...node.attrs, tail: "" }, type(schema, "run").create());

export const addRow: Command = (state, dispatch) => {
  const place = tableHere(state);
  if (!place || !isSimple(place.table)) return false;
  const { row, rowAt } = place;
  const head = row.child(0).attrs.tag === "th" && row.lastChild?.attrs.tag === "th";
  const cells = row.content.content.filter((node) => node.type.name === "cell");
  const content = head
    ? cells.map((cell) => newCell(state.schema, "td", cell.attrs.before))
    : cells.map((cell) => like(cell, state.schema));
  const { tr } = state;
  const at = rowAt + row.nodeSize;
  tr.insert(at, row.type.create(row.attrs, content));
  dispatch?.(tr.setSelection(TextSelection.near(tr.doc.resolve(at + 2))).scrollIntoView());
  return true;
};

export const deleteRow: Command = (state, dispatch) => {
  const place = tableHere(state);
  if (!place || !isSimple(place.table)) return false;
  let rows = 0;
  place.table.descendants((node) => {
    if (node.type.name === "row") ++rows;
    return node.type.name !== "row";
  });
  if (rows < 2) return deleteTable(state, dispatch);
  dispatch?.(state.tr.delete(place.rowAt, place.rowAt + place.row.nodeSize).scrollIntoView());
  return true;
};

export const deleteTable: Command = (state, dispatch) => {
  const place = tableHere(state);
  if (!place) return false;
  dispatch?.(state.tr.delete(place.tableAt, place.tableAt + place.table.nodeSize).scrollIntoView());
  return true;
};

/** The rows of a table, not of those in its cells. */
function rowsOf({ table, tableAt }: Place): { row: Node; at: number }[] {
  const found: { row: Node; at: number }[] = [];
  table.descendants((node, at) => {
    if (node.type.name === "row") found.push({ row: node, at: tableAt + 1 + at });
    return node.type.name === "tablePart";
  });
  return found;
}

function cellAt(row: Node, at: number, column: number): { node: Node; at: number } | null {
  if (column >= row.childCount) return null;
  let place = at + 1;
  for (let i = 0; i < column; ++i) place += row.child(i).nodeSize;
  return { node: row.child(column), at: place };
}

export const addColumn: Command = (state, dispatch) => {
  const place = tableHere(state);
  if (!place || !isSimple(place.table)) return false;
  const { tr } = state;
  for (const { row, at } of rowsOf(place).reverse()) {
    const cell = cellAt(row, at, Math.min(place.column, row.childCount - 1));
    if (cell) tr.insert(cell.at + cell.node.nodeSize, like(cell.node, state.schema));
  }
  dispatch?.(tr);
  return true;
};

export const deleteColumn: Command = (state, dispatch) => {
  const place = tableHere(state);
  if (!place || !isSimple(place.table)) return false;
  if (place.row.childCount < 2) return deleteTable(state, dispatch);
  const { tr } = state;
  for (const { row, at } of rowsOf(place).reverse()) {
    const cell = cellAt(row, at, place.column);
    if (cell) tr.delete(cell.at, cell.at + cell.node.nodeSize);
  }
  dispatch?.(tr);
  return true;
};
