// A start tag as it stands in a text: what it says, and the same tag with one thing changed and all else left as it is.
import { parseFragment } from "parse5";

const words = (text: string) => new Set(text.split(" "));

/** Elements that run along in a line of text. */
export const inlineTags = words(
  "a abbr acronym b bdi bdo big blink cite code data del dfn em font i ins kbd label mark nobr q s samp small span strike strong sub sup time tt u var",
);
/** Elements that hold words directly. */
export const textTags = words("p h1 h2 h3 h4 h5 h6");
export const listTags = words("ul ol menu dir");
export const tablePartTags = words("thead tbody tfoot");
export const cellTags = words("td th");
/** Elements that hold other blocks, or words, or both. */
export const boxTags = words(
  "address article aside blockquote center dd details dir div dl dt fieldset figcaption figure footer form header hgroup legend li main nav search section summary",
);
/** Elements that take lines of their own. What is in none of these lists runs along in a line. */
export const blockTags = new Set([
  ...textTags,
  ...listTags,
  ...tablePartTags,
  ...cellTags,
  ...boxTags,
  ...words("pre hr table caption colgroup col tr dialog frameset plaintext listing xmp"),
]);
export const voidTags = words("area base br col embed hr img input link meta param source track wbr");
/** Elements without a place of their own: they stand where their neighbours do. */
export const neutralTags = words("script style link meta template noscript base title");
/** What isn't known is a line's part when it shows something in a line. */
export const inlineIslandTags = words(
  "svg math img input button select textarea iframe object embed video audio canvas picture map area output meter progress ruby applet wbr br",
);

export interface Attribute {
  name: string;
  value: string;
  start: number;
  end: number;
}

const attributePattern = /[\s/]*([^\s/>][^\s/>=]*)(?:\s*=\s*(?:"([^"]*)"|'([^']*)'|([^\s>"'][^\s>]*)))?/y;
const namePattern = /^<([a-z][^\s/>]*)/i;

export const tagName = (open: string): string => namePattern.exec(open)?.[1]?.toLowerCase() ?? "";

export function decodeAttribute(value: string): string {
  if (!value.includes("&")) return value;
  const [element] = parseFragment(`<i a="${value.replaceAll('"', "&quot;")}">`).childNodes;
  return (element && "attrs" in element && element.attrs[0]?.value) || "";
}

export const escapeAttribute = (value: string): string =>
  value.replaceAll("&", "&amp;").replaceAll('"', "&quot;").replaceAll("<", "&lt;").replaceAll("\u00a0", "&nbsp;");

function scan(open: string): Attribute[] {
  const found: Attribute[] = [];
  const end = open.endsWith("/>") ? open.length - 2 : open.length - 1;
  let at = (namePattern.exec(open)?.[0] ?? "<").length;
  while (at < end) {
    attributePattern.lastIndex = at;
    const match = attributePattern.exec(open);
    if (!match?.[1]) break;
    at = attributePattern.lastIndex;
    const name = match[1].toLowerCase();
    const raw = match[2] ?? match[3] ?? match[4] ?? "";
    const start = at - match[0].length + (/^[\s/]*/.exec(match[0])?.[0].length ?? 0);
    if (!found.some((other) => other.name === name)) found.push({ name, value: decodeAttribute(raw), start, end: at });
  }
  return found;
}

const scanned = new Map<string, Attribute[]>();

/** The attributes of a start tag; of two with one name the first counts. */
export function attributesOf(open: string): Attribute[] {
  const known = scanned.get(open);
  if (known) return known;
  if (scanned.size > 5000) scanned.clear();
  const found = scan(open);
  scanned.set(open, found);
  return found;
}

export const attributeOf = (open: string, name: string): string | null =>
  attributesOf(open).find((attribute) => attribute.name === name)?.value ?? null;

/** The tag with an attribute set to a value, or without it for null. */
export function withAttribute(open: string, name: string, value: string | null): string {
  const old = attributesOf(open).find((attribute) => attribute.name === name);
  if (value === null) {
    return old ? open.slice(0, old.start).trimEnd() + open.slice(old.end) : open;
  }
  const text = `${name}="${escapeAttribute(value)}"`;
  if (old) return open.slice(0, old.start) + text + open.slice(old.end);
  const ending = /\s*\/?>$/.exec(open)?.index ?? open.length;
  return `${open.slice(0, ending)} ${text}${open.slice(ending)}`;
}

/** The tag under another name, with its attributes. */
export const renamed = (open: string, name: string): string => open.replace(namePattern, `<${name}`);

/** An attribute's style with one property set, or without it for "". */
export function withStyle(open: string, property: string, value: string): string {
  const others = (attributeOf(open, "style") ?? "")
    .split(";")
    .map((part) => part.trim())
    .filter((part) => part && part.slice(0, part.indexOf(":")).trim().toLowerCase() !== property);
  const all = value ? [...others, `${property}: ${value}`] : others;
  return withAttribute(open, "style", all.length ? all.join("; ") : null);
}
