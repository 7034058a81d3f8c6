/** Tables as text: cells divided by commas, semicolons or tabs; one in quotes may hold these, line ends, and quotes twice. */

const FORMULA = /^[=+\-@\t\r]/;
/** Such a text, as it was marked to be a text. */
const MARKED = /^'[=+\-@\t\r]/;

function cell(value: string | number): string {
  // A spreadsheet would work out what begins so.
  const text = typeof value === "string" && FORMULA.test(value) ? `'${value}` : String(value);
  return /[",\r\n]/.test(text) ? `"${text.replaceAll('"', '""')}"` : text;
}

export const csvText = (rows: readonly (readonly (string | number)[])[]): string =>
  rows.map((row) => `${row.map(cell).join(",")}\r\n`).join("");

/** A cell without the mark that keeps spreadsheets from working it out. */
export const unmarked = (text: string): string => (MARKED.test(text) ? text.slice(1) : text);

export interface CsvLine {
  /** In the text, from 1. */
  readonly line: number;
  readonly cells: readonly string[];
}

export interface CsvTable {
  readonly lines: readonly CsvLine[];
  /** The line in which a quote is opened that nothing closes; 0 when there is none. */
  readonly openQuote: number;
}

const DIVIDERS = ",;\t";

/** The sign that the first line has most of outside of quotes; of as many, the one that comes first. */
export function dividerOf(text: string): string {
  const counts = new Map<string, number>();
  let quoted = false;
  for (const sign of text) {
    if (sign === '"') quoted = !quoted;
    else if (!quoted && (sign === "\n" || sign === "\r")) break;
    else if (!quoted && DIVIDERS.includes(sign)) counts.set(sign, (counts.get(sign) ?? 0) + 1);
  }
  return [...counts].reduce((best, one) => (one[1] > best[1] ? one : best), [",", 0] as [string, number])[0];
}

/** Empty lines are left out. */
export function readCsv(text: string, divider = dividerOf(text)): CsvTable {
  const lines: CsvLine[] = [];
  let number = 1;
  let at = 0;
  while (at < text.length) {
    const cells: string[] = [];
    const line = number;
    let ended = false;
    while (!ended) {
      let value = "";
      if (text[at] === '"') {
        at += 1;
        for (;;) {
          const end = text.indexOf('"', at);
          if (end < 0) return { lines, openQuote: line };
          value += text.slice(at, end);
          at = end + 1;
          if (text[at] !== '"') break;
          value += '"';
          at += 1;
        }
        for (const ends of value.matchAll(/\r\n|\n|\r/g)) number += ends.length ? 1 : 0;
      }
      const begin = at;
      while (at < text.length && text[at] !== divider && text[at] !== "\n" && text[at] !== "\r") at += 1;
      cells.push(value + text.slice(begin, at));
      if (text[at] === divider) {
        at += 1;
        continue;
      }
      ended = true;
      if (text[at] === "\r" && text[at + 1] === "\n") at += 1;
      at += 1;
      number += 1;
    }
    if (cells.length > 1 || cells[0] !== "") lines.push({ line, cells });
  }
  return { lines, openQuote: 0 };
}

/** The text of a file: by its mark, else in the encoding, UTF-8 if none is told. Throws when it isn't in it. */
export function textOf(bytes: Uint8Array, charset = ""): string {
  const marks: [string, readonly number[]][] = [
    ["utf-8", [0xef, 0xbb, 0xbf]],
    ["utf-16le", [0xff, 0xfe]],
    ["utf-16be", [0xfe, 0xff]],
  ];
  const marked = marks.find(([, mark]) => mark.every((byte, at) => bytes[at] === byte));
  return new TextDecoder(marked?.[0] ?? (charset || "utf-8"), { fatal: true }).decode(bytes);
}
