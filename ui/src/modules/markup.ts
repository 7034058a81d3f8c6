/** HTML that a template has drawn, as far as a preview needs it: known elements and their texts, nothing that loads or runs. */

export interface Drawn {
  readonly tag: string;
  readonly attributes: Readonly<Record<string, string>>;
  readonly children: (Drawn | string)[];
}

const KNOWN = new Set(
  "a b i u s em strong small span div p br hr ul ol li dl dt dd h1 h2 h3 h4 h5 h6 img table tbody thead tr td th blockquote".split(
    " ",
  ),
);
const EMPTY = new Set(["br", "hr", "img"]);
/** What stands in them isn't seen. */
const UNSEEN = /<(script|style|template|noscript|title|textarea)\b[\s\S]*?<\/\1\s*>/gi;
const SIGNS: Readonly<Record<string, string>> = { amp: "&", lt: "<", gt: ">", quot: '"', apos: "'", nbsp: "\u00a0" };

const decoded = (text: string): string =>
  text.replace(/&(?:#(\d{1,6})|#x([0-9a-f]{1,5})|(\w+));/gi, (whole, ten, sixteen, name) => {
    if (name) return SIGNS[String(name).toLowerCase()] ?? whole;
    const code = ten ? Number(ten) : Number.parseInt(sixteen, 16);
    return code > 0 && code <= 0x10ffff ? String.fromCodePoint(code) : whole;
  });

const attribute = (text: string, name: string): string => {
  const found = new RegExp(`\\b${name}\\s*=\\s*(?:"([^"]*)"|'([^']*)'|([^\\s>]+))`, "i").exec(text);
  return decoded(found?.[1] ?? found?.[2] ?? found?.[3] ?? "");
};

/** Pictures of this server alone. */
function attributesOf(tag: string, text: string): Record<string, string> {
  if (tag !== "img") return {};
  const src = attribute(text, "src");
  return { ...(/^\/(?!\/)/.test(src) ? { src } : {}), alt: attribute(text, "alt") };
}

export function markupOf(text: string): Drawn {
  const root: Drawn = { tag: "div", attributes: {}, children: [] };
  const open = [root];
  const say = (words: string) => {
    if (words) open.at(-1)!.children.push(decoded(words));
  };
  const source = text.replace(/<!--[\s\S]*?-->/g, "").replace(UNSEEN, "");
  let at = 0;
  for (const { 0: whole, 1: close, 2: name = "", 3: rest = "", index } of source.matchAll(
    /<(\/?)([a-z][a-z0-9]*)((?:"[^"]*"|'[^']*'|[^'">])*)>/gi,
  )) {
    say(source.slice(at, index));
    at = index + whole.length;
    const tag = name.toLowerCase();
    if (!KNOWN.has(tag)) continue;
    if (close) {
      const depth = open.findLastIndex((one) => one.tag === tag);
      if (depth > 0) open.length = depth;
      continue;
    }
    const made: Drawn = { tag, attributes: attributesOf(tag, rest), children: [] };
    open.at(-1)!.children.push(made);
    if (!EMPTY.has(tag)) open.push(made);
  }
  say(source.slice(at));
  return root;
}

/** As elements of a document. */
export function elementOf(drawn: Drawn): HTMLElement {
  const element = document.createElement(drawn.tag);
  for (const [name, value] of Object.entries(drawn.attributes)) element.setAttribute(name, value);
  for (const child of drawn.children) element.append(typeof child === "string" ? child : elementOf(child));
  return element;
}
