/** A table of visitors in pieces that one request takes: each with the line that names the columns. */

import type { CsvTable } from "./csv";

/** A password that is kept as a hash costs a moment to be compared, so that a piece mustn't have too many lines. */
const MOST = 500;

export interface Piece {
  readonly table: string;
  /** Where each of its lines stands in the file. */
  readonly lines: readonly number[];
}

const quoted = (cell: string): string => `"${cell.replaceAll('"', '""')}"`;

export function piecesOf({ lines }: CsvTable): Piece[] {
  const [head, ...rest] = lines;
  if (!head) return [];
  const pieces: Piece[] = [];
  for (let at = 0; at < rest.length; at += MOST) {
    const part = rest.slice(at, at + MOST);
    // Line ends would count as lines of the piece.
    const rows = [head, ...part].map(({ cells }) =>
      cells.map((cell) => quoted(cell.replace(/[\r\n]+/g, " "))).join(","),
    );
    pieces.push({ table: rows.join("\r\n"), lines: part.map(({ line }) => line) });
  }
  return pieces;
}

/** The line of the file that a line of a piece was; lines count from 1, and the first one names the columns. */
export const lineIn = ({ lines }: Piece, line: number): number => lines[line - 2] ?? 1;

/** The column of a name, in any case; -1 where there is none. */
const columnOf = ({ lines: [head] }: CsvTable, name: string): number =>
  head?.cells.findIndex((cell) => cell.trim().toLowerCase() === name) ?? -1;

/** The passwords that lines of the file give, with the lines of each. */
export function passwordsIn(table: CsvTable): Map<string, number[]> {
  const at = columnOf(table, "password");
  const given = new Map<string, number[]>();
  for (const { line, cells } of at < 0 ? [] : table.lines.slice(1)) {
    const password = cells[at]?.trim() ?? "";
    if (password) given.set(password, [...(given.get(password) ?? []), line]);
  }
  return given;
}

/** Users that stand in several lines of the file: the pieces don't know each other. */
export function twice(table: CsvTable): { line: number; username: string }[] {
  const rest = table.lines.slice(1);
  const at = columnOf(table, "username");
  const seen = new Set<string>();
  if (at < 0) return [];
  return rest.flatMap(({ line, cells }) => {
    const name = (cells[at] ?? "").trim().toLowerCase();
    if (!seen.has(name)) {
      seen.add(name);
      return [];
    }
    return [{ line, username: cells[at] ?? "" }];
  });
}
