// What stands in a text for which characters: entities, line ends and blanks, one by one.
import { parseFragment } from "parse5";

/** A stretch of source and the characters that it gives; none for a tag that the parser left out. */
export interface Unit {
  raw: string;
  text: string;
}

const unitPattern =
  /[^&<>\u00a0\t\n\f\r ]+(?: [^&<>\u00a0\t\n\f\r ]+)*|&(?:#x[0-9a-f]+|#[0-9]+|[a-z][a-z0-9]*);?|<[a-z!/?][^>]*>|[\t\n\f\r ]+|[\s\S]/giu;
const blank = /^[\t\n\f\r ]+$/;

export const isBlank = (text: string): boolean => text === "" || blank.test(text);

const entities = new Map<string, string>();

function entityText(raw: string): string {
  const known = entities.get(raw);
  if (known !== undefined) return known;
  const [node] = parseFragment(raw).childNodes;
  const text = node && "value" in node ? node.value : "";
  entities.set(raw, text);
  return text;
}

function textOf(raw: string): string {
  if (raw.startsWith("&") && raw.length > 1) return entityText(raw);
  if (raw.startsWith("<") && raw.length > 1) return "";
  return raw;
}

const lineEnds = (text: string) => (!text.includes("\r") ? text : text.replaceAll("\r\n", "\n").replaceAll("\r", "\n"));

/** Letters that follow an entity without a semicolon are characters of their own. */
function split(unit: Unit): Unit[] {
  if (!unit.raw.startsWith("&") || unit.raw.length < 2 || unit.text.length < 2) return [unit];
  let common = 0;
  while (common < unit.text.length - 1 && unit.raw.at(-1 - common) === unit.text.at(-1 - common)) ++common;
  if (!common) return [unit];
  const rest = [...unit.raw.slice(-common)].map((raw) => ({ raw, text: raw }));
  return [{ raw: unit.raw.slice(0, -common), text: unit.text.slice(0, -common) }, ...rest];
}

/** The units of a stretch of source, or null when they don't give the text that the parser found there. */
export function unitsOf(source: string, parsed: string): Unit[] | null {
  const units = (source.match(unitPattern) ?? []).map((raw) => ({ raw, text: lineEnds(textOf(raw)) })).flatMap(split);
  return units.map((unit) => unit.text).join("") === parsed ? units : null;
}

const written: Record<string, string> = { "&": "&amp;", "<": "&lt;", ">": "&gt;", "\u00a0": "&nbsp;" };

export const escapeText = (text: string): string =>
  /[&<>\u00a0]/.test(text) ? text.replace(/[&<>\u00a0]/g, (character) => written[character]!) : text;
