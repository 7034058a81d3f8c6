/** Words of the interface in a language: what is missing, and what a table of them would change. */

import { type CsvTable, unmarked } from "./csv";

export interface Word {
  readonly label: number;
  readonly english: string;
  /** "" where it is missing. */
  readonly word: string;
}

export const isMissing = ({ english, word }: Word): boolean => english !== "" && word === "";

/** The names in braces, which are filled when a word is shown. */
export const placesIn = (text: string): string[] =>
  [...new Set([...text.matchAll(/\{(\w+)\}/g)].map(([, name]) => name!))].sort();

/** Whether a word has the places of the English one. */
export const hasSamePlaces = ({ english, word }: Word): boolean =>
  word === "" || placesIn(english).join() === placesIn(word).join();

export interface BadLine {
  readonly line: number;
  /** "cells", "unknown" or "quote". */
  readonly why: "cells" | "unknown" | "quote";
}

export interface Import {
  readonly added: number;
  readonly changed: number;
  readonly same: number;
  readonly bad: readonly BadLine[];
  /** What would be written, by label; of two lines for one label the later one counts. */
  readonly changes: ReadonlyMap<number, string>;
}

const isNumber = (text: string): boolean => /^\d{1,9}$/.test(text.trim());

/** Lines are a label and a word, or a label, the English word and the word; an empty word leaves what is there. */
export function importOf(known: readonly Word[], table: CsvTable): Import {
  const words = new Map(known.map((word) => [word.label, word]));
  const changes = new Map<number, string>();
  const bad: BadLine[] = [];
  for (const [at, { line, cells }] of table.lines.entries()) {
    const isHead = at === 0 && !isNumber(cells[0] ?? "");
    if (isHead && cells.length > 1) continue;
    if (cells.length < 2 || !isNumber(cells[0] ?? "")) {
      bad.push({ line, why: "cells" });
      continue;
    }
    const label = Number(cells[0]);
    if (!words.has(label)) bad.push({ line, why: "unknown" });
    else changes.set(label, unmarked((cells.length > 2 ? cells[2] : cells[1]) ?? "").trim());
  }
  if (table.openQuote) bad.push({ line: table.openQuote, why: "quote" });
  let same = 0;
  for (const [label, word] of changes) {
    if (word !== "" && word !== words.get(label)?.word) continue;
    same += 1;
    changes.delete(label);
  }
  const added = [...changes.keys()].filter((label) => words.get(label)?.word === "").length;
  return { added, changed: changes.size - added, same, bad, changes };
}

/** Characters that one request takes without trouble. */
const MOST = 400_000;

/** The changes as tables that `saveWords` takes, each small enough. */
export function tablesOf(changes: ReadonlyMap<number, string>): string[] {
  const tables: string[] = [];
  let table = "";
  for (const [label, word] of changes) {
    const line = `${label},"${word.replaceAll('"', '""')}"\r\n`;
    if (table.length + line.length > MOST) {
      tables.push(table);
      table = "";
    }
    table += line;
  }
  return table ? [...tables, table] : tables;
}
