/** The tags of a template, and what is wrong with them. No DOM. */

export interface Finding {
  readonly kind: "notClosed" | "notOpened" | "openedTwice" | "noEnd" | "bodyMissing";
  /** Of the tag or block; the number of a body. */
  readonly name: string;
  /** From 1. */
  readonly line: number;
}

/** Tags as `<!--!name!-->`; nothing else closes one. */
export const TAG = /<!--!([\s\S]*?)!-->/g;
const OPENING = "<!--!";

/** Tells in which line a place is; asked for places that follow one another. */
function lineCounter(source: string): (at: number) => number {
  let line = 1;
  let end = source.indexOf("\n");
  return (at) => {
    while (end >= 0 && end < at) {
      ++line;
      end = source.indexOf("\n", end + 1);
    }
    return line;
  };
}

/** A tag that isn't closed before the next one begins takes that with it. */
function unended(source: string): Finding[] {
  const findings: Finding[] = [];
  const lineAt = lineCounter(source);
  for (let at = source.indexOf(OPENING); at >= 0; at = source.indexOf(OPENING, at + OPENING.length)) {
    const next = source.indexOf(OPENING, at + OPENING.length);
    const end = source.indexOf("!-->", at + OPENING.length);
    if (end >= 0 && (next < 0 || end < next)) continue;
    findings.push({
      kind: "noEnd",
      name: source.slice(at, at + 30).split(/[\r\n]/)[0] ?? "",
      line: lineAt(at),
    });
  }
  return findings;
}

function blocks(source: string): Finding[] {
  const open = new Map<string, { name: string; line: number }>();
  const findings: Finding[] = [];
  const lineAt = lineCounter(source);
  for (const { 1: tag = "", index } of source.matchAll(TAG)) {
    const [, name = "", side = ""] = /^(.*)_(start|end)$/i.exec(tag) ?? [];
    if (!name) continue;
    const key = name.toLowerCase();
    const line = lineAt(index);
    if (side.toLowerCase() === "start") {
      if (open.has(key)) findings.push({ kind: "openedTwice", name, line });
      else open.set(key, { name, line });
    } else if (!open.delete(key)) findings.push({ kind: "notOpened", name, line });
  }
  return [...findings, ...[...open.values()].map((one): Finding => ({ kind: "notClosed", ...one }))];
}

/** Blocks that begin before a place and end nowhere, the last one first. */
export function openBlocks(source: string, before: number): string[] {
  const open = new Map<string, string>();
  for (const { 1: tag = "", index } of source.matchAll(TAG)) {
    const [, name = "", side = ""] = /^([\w()]+)_(start|end)$/i.exec(tag) ?? [];
    const key = name.toLowerCase();
    if (side.toLowerCase() === "end") open.delete(key);
    else if (name && index < before) open.set(key, name);
  }
  return [...open.values()].reverse();
}

/** A page's bodies are numbered from 1: a number that is left out is a body that authors never see. */
function missingBodies(source: string): Finding[] {
  const numbers = new Map<number, number>();
  const lineAt = lineCounter(source);
  for (const { 1: tag = "", index } of source.matchAll(TAG)) {
    const number = Number(/^torvex_body_(\d{1,4})(?:_start)?$/i.exec(tag)?.[1] ?? 0);
    if (number > 0 && !numbers.has(number)) numbers.set(number, lineAt(index));
  }
  const last = Math.max(0, ...numbers.keys());
  return Array.from({ length: last }, (_, at) => at + 1)
    .filter((number) => !numbers.has(number))
    .map((number) => ({ kind: "bodyMissing", name: String(number), line: numbers.get(last) ?? 1 }));
}

/** What is wrong, by line. */
export const findingsIn = (source: string): Finding[] =>
  [...unended(source), ...blocks(source), ...missingBodies(source)].sort((a, b) => a.line - b.line);
