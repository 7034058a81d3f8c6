// What comes from elsewhere keeps its structure and loses its looks.

import { type DefaultTreeAdapterTypes as Dom, parseFragment, serialize } from "parse5";
import { type Node, Slice } from "prosemirror-model";
import { openBody } from "./body";
import * as tags from "./tags";

const dropped = new Set(
  "script style link meta base title template noscript object embed iframe frame applet input select textarea button svg math video audio canvas".split(
    " ",
  ),
);
const renames = new Map(Object.entries({ b: "strong", i: "em", strike: "s", center: "p" }));
const kept = new Map(
  Object.entries({
    a: ["href", "title", "hreflang", "lang"],
    img: ["src", "alt", "width", "height"],
    td: ["colspan", "rowspan"],
    th: ["colspan", "rowspan", "scope"],
    ol: ["start", "type"],
    abbr: ["title"],
    q: ["cite"],
    blockquote: ["cite"],
  }),
);
const known = new Set([
  ..."a abbr b blockquote br caption center cite code dd del dfn dl dt em figcaption figure h1 h2 h3 h4 h5 h6 hr i img ins kbd li mark ol p pre q s samp small strike strong sub sup table tbody td tfoot th thead tr u ul var".split(
    " ",
  ),
]);
const safeAddress = /^(?:https?:|mailto:|tel:|ftp:|page\(|file\(|\/|#|\.{0,2}\/|[\w.-]+(?:[/?#]|$))/i;

const isElement = (node: Dom.ChildNode): node is Dom.Element => "tagName" in node;
const attribute = (node: Dom.Element, name: string) => node.attrs.find((one) => one.name === name)?.value ?? "";

/** Word marks its list entries and comments by styles; its own elements have a colon in their names. */
const isOffice = (node: Dom.Element) =>
  node.tagName.includes(":") || /mso-(?:list:\s*ignore|element)/i.test(attribute(node, "style"));

/** Programs say with styles what has elements. */
function meant(node: Dom.Element): string[] {
  const style = attribute(node, "style").toLowerCase();
  if (node.tagName !== "span" && node.tagName !== "font") return [];
  return [
    ...(/font-weight:\s*(?:bold|[6-9]00)/.test(style) ? ["strong"] : []),
    ...(/font-style:\s*italic/.test(style) ? ["em"] : []),
    ...(/vertical-align:\s*super/.test(style) ? ["sup"] : []),
    ...(/vertical-align:\s*sub\b/.test(style) ? ["sub"] : []),
  ];
}

function cleanedAll(nodes: Dom.ChildNode[]): Dom.ChildNode[] {
  return nodes.flatMap(cleaned);
}

function wrapped(children: Dom.ChildNode[], names: string[], like: Dom.Element): Dom.ChildNode[] {
  return names.reduceRight(
    (inner, name) => [{ ...like, tagName: name, nodeName: name, attrs: [], childNodes: inner }],
    children,
  );
}

function cleaned(node: Dom.ChildNode): Dom.ChildNode[] {
  if (node.nodeName === "#text") return [node];
  if (!isElement(node) || dropped.has(node.tagName) || isOffice(node)) return [];
  const children = cleanedAll(node.childNodes);
  if (node.tagName === "div" || node.tagName === "section" || node.tagName === "article")
    return divided(node, children);
  // Google's documents come in a <b> that isn't bold.
  const plain = !known.has(node.tagName) || /font-weight:\s*normal/.test(attribute(node, "style"));
  if (plain) return wrapped(children, meant(node), node);
  const tagName = renames.get(node.tagName) ?? node.tagName;
  const attrs = node.attrs.filter(
    ({ name, value }) =>
      kept.get(tagName)?.includes(name) && (!/^(?:href|src|cite)$/.test(name) || safeAddress.test(value.trim())),
  );
  if (tagName === "a" && !attrs.some(({ name }) => name === "href")) return children;
  if (tagName === "img") {
    if (!attrs.some(({ name }) => name === "src")) return [];
    if (!attrs.some(({ name }) => name === "alt")) attrs.push({ name: "alt", value: "" });
  }
  return [{ ...node, tagName, nodeName: tagName, attrs, childNodes: children }];
}

/** A division of words only is a paragraph. */
function divided(node: Dom.Element, children: Dom.ChildNode[]): Dom.ChildNode[] {
  const hasBlocks = children.some((child) => isElement(child) && tags.blockTags.has(child.tagName));
  const empty = children.every((child) => child.nodeName === "#text" && "value" in child && !child.value.trim());
  if (hasBlocks || empty) return children;
  return [{ ...node, tagName: "p", nodeName: "p", attrs: [], childNodes: children }];
}

/** The part of the clipboard's text that was chosen. */
function chosen(html: string): string {
  const [, inside] = /<!--StartFragment-->([\s\S]*)<!--EndFragment-->/.exec(html) ?? [];
  return inside ?? html.replace(/^[\s\S]*<body[^>]*>/i, "").replace(/<\/body>[\s\S]*$/i, "");
}

const emptyParagraph = /<p>(?:\s|&nbsp;|<br>)*<\/p>/g;

/** Text from the clipboard as this system would write it. */
export function cleanHtml(html: string): string {
  const root = parseFragment(chosen(html));
  root.childNodes = cleanedAll(root.childNodes);
  return serialize(root).replace(emptyParagraph, "").trim();
}

/** Where the site's own pictures lie, without the address that the clipboard has them with. */
export const ownAddresses = (html: string, origin: string) => html.replaceAll(`${origin}/images/`, "/images/");

function sliceOf(doc: Node): Slice {
  const only = doc.childCount === 1 ? doc.firstChild : null;
  if (only?.type.name === "run" || only?.type.name === "paragraph") return new Slice(doc.content, 1, 1);
  return new Slice(doc.content, 0, 0);
}

export const pasted = (html: string): Slice => sliceOf(openBody(cleanHtml(html)).doc);

/** Plain text: an empty line begins a paragraph, another line end is one. */
export function pastedText(text: string): Slice {
  const encoded = (part: string) => part.replaceAll("&", "&amp;").replaceAll("<", "&lt;").replaceAll(">", "&gt;");
  const parts = text
    .replaceAll("\r\n", "\n")
    .split(/\n{2,}/)
    .map((part) => encoded(part).replaceAll("\n", "<br>"));
  return sliceOf(openBody(parts.length > 1 ? parts.map((part) => `<p>${part}</p>`).join("\n") : parts[0]!).doc);
}

/** The words alone, for places that take nothing else. */
export function wordsOf(slice: Slice): string {
  const parts: string[] = [];
  slice.content.descendants((node) => {
    if (node.inlineContent) parts.push(node.textContent);
    return !node.inlineContent;
  });
  return (parts.length ? parts.join(" ") : slice.content.textBetween(0, slice.content.size, " ")).replace(/\s+/g, " ");
}
