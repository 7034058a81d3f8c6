// A body's parts as elements of the page's own document. Nothing that is put there runs or loads what the page may not.
import type { Mark, Node } from "prosemirror-model";
import type { EditorView, MarkViewConstructor, NodeViewConstructor } from "prosemirror-view";
import { attributeOf, attributesOf } from "../model/tags";

interface Drawn {
  dom: HTMLElement;
  contentDOM?: HTMLElement;
}

const validName = /^[a-z_:][\w:.-]*$/i;
const withheld =
  /^(?:on.*|contenteditable|autofocus|srcdoc|action|formaction|accesskey|tabindex|draggable|popover|is)$/i;

function setAttributes(element: HTMLElement, open: string): void {
  for (const { name, value } of attributesOf(open)) {
    if (!validName.test(name) || withheld.test(name)) continue;
    if (name === "style") element.style.cssText = value;
    else if (name === "href" && /^\s*(?:javascript|data|vbscript):/i.test(value)) element.setAttribute("href", "#");
    else element.setAttribute(name, value);
  }
}

function elementOf(doc: Document, tag: string, open: string): HTMLElement {
  const element = doc.createElement(/^[a-z][a-z0-9-]*$/.test(tag) ? tag : "span");
  setAttributes(element, open);
  return element;
}

const framed = "iframe, frame, object, embed, applet, portal, fencedframe";
const gone = "script, meta, base, noscript, template, link:not([rel~=stylesheet i])";

/** A grey box in place of what would load a document of its own. */
function boxFor(doc: Document, element: Element): HTMLElement {
  const box = doc.createElement("tvx-box");
  box.textContent = element.getAttribute("src") ?? element.getAttribute("data") ?? element.tagName.toLowerCase();
  return box;
}

/** What a stretch of source shows, as far as it may be shown here. */
export function shownOf(doc: Document, raw: string): DocumentFragment {
  const template = doc.createElement("template");
  template.innerHTML = raw;
  const { content } = template;
  for (const element of content.querySelectorAll(gone)) element.remove();
  for (const element of content.querySelectorAll(framed)) element.replaceWith(boxFor(doc, element));
  for (const element of content.querySelectorAll("*")) {
    for (const { name, value } of [...element.attributes]) {
      const runs = /^(?:xlink:)?href$/i.test(name) && /^\s*(?:javascript|data|vbscript):/i.test(value);
      if (runs || (withheld.test(name) && name !== "tabindex")) element.removeAttribute(name);
    }
  }
  return content;
}

const shows = (content: DocumentFragment) =>
  content.querySelector(
    "img, svg, math, video, audio, canvas, input, select, textarea, button, hr, tvx-box, picture, progress, meter",
  ) !== null ||
  /\S/.test(
    [...content.childNodes]
      .filter(({ nodeName }) => nodeName !== "STYLE")
      .map((node) => node.textContent)
      .join(""),
  );

/** What stands for source that shows nothing: its own beginning. */
function chip(doc: Document, raw: string): HTMLElement {
  const element = doc.createElement("tvx-chip");
  const text = raw
    .replace(/^<!--\s*|\s*-->$/g, "")
    .replace(/\s+/g, " ")
    .trim();
  element.textContent = text.length > 40 ? `${text.slice(0, 39)}…` : text;
  return element;
}

export function islandOf(doc: Document, raw: string, inline: boolean): HTMLElement {
  const element = doc.createElement(inline ? "tvx-island" : "tvx-island-block");
  element.setAttribute("contenteditable", "false");
  const content = shownOf(doc, raw);
  if (shows(content)) element.append(content);
  else {
    element.setAttribute("data-quiet", "");
    element.append(chip(doc, raw), content);
  }
  return element;
}

function columnsOf(doc: Document, raw: string): HTMLElement {
  const template = doc.createElement("template");
  template.innerHTML = `<table>${raw}</table>`;
  return template.content.querySelector("colgroup") ?? doc.createElement("colgroup");
}

/** The element of a node, and where its content goes. */
export function draw(doc: Document, node: Node): Drawn {
  const { tag = "", open = "", raw = "" } = node.attrs;
  switch (node.type.name) {
    case "run": {
      const dom = doc.createElement("tvx-run");
      return { dom, contentDOM: dom };
    }
    case "rule":
      return { dom: elementOf(doc, "hr", open) };
    case "image":
      return { dom: elementOf(doc, "img", open) };
    case "lineBreak":
      return { dom: elementOf(doc, "br", raw.slice(0, raw.indexOf(">") + 1)) };
    case "columns":
      return { dom: columnsOf(doc, raw) };
    case "island":
      return { dom: islandOf(doc, raw, false) };
    case "inlineIsland":
      return { dom: islandOf(doc, raw, true) };
    default: {
      const dom = elementOf(doc, tag, open);
      if (tag === "details") dom.setAttribute("open", "");
      return { dom, contentDOM: dom };
    }
  }
}

export function drawMark(doc: Document, mark: Mark): HTMLElement {
  if (mark.type.name === "kept") return doc.createElement("tvx-kept");
  const { tag, open } = mark.attrs;
  const element = elementOf(doc, tag, open);
  if (tag === "a" && attributeOf(open, "href") === null && /[[{]href[\]}]/i.test(open))
    element.setAttribute("href", "#");
  return element;
}

/** Views that make their elements in the document of the page, which isn't the one that the scripts belong to. */
export function viewsFor(
  doc: Document,
  names: string[],
): {
  nodeViews: Record<string, NodeViewConstructor>;
  markViews: Record<string, MarkViewConstructor>;
} {
  const view: NodeViewConstructor = (node: Node, _view: EditorView) => draw(doc, node);
  const mark: MarkViewConstructor = (one: Mark) => {
    const dom = drawMark(doc, one);
    return { dom, contentDOM: dom };
  };
  return { nodeViews: Object.fromEntries(names.map((name) => [name, view])), markViews: { tag: mark, kept: mark } };
}

function drawInto(doc: Document, parent: HTMLElement, content: Node["content"]): void {
  let open: Mark[] = [];
  let places: HTMLElement[] = [parent];
  content.forEach((node) => {
    const shared = open.findIndex((mark, i) => !node.marks[i]?.eq(mark));
    const depth = shared < 0 ? open.length : shared;
    open = open.slice(0, depth);
    places = places.slice(0, depth + 1);
    for (const mark of node.marks.slice(depth)) {
      const element = drawMark(doc, mark);
      places.at(-1)!.append(element);
      open.push(mark);
      places.push(element);
    }
    if (node.isText) places.at(-1)!.append(doc.createTextNode(node.text!));
    else places.at(-1)!.append(still(doc, node));
  });
}

function still(doc: Document, node: Node): HTMLElement {
  const { dom, contentDOM } = draw(doc, node);
  if (contentDOM) drawInto(doc, contentDOM, node.content);
  if (node.isTextblock && !node.content.size) contentDOM?.append(doc.createElement("br"));
  return dom;
}

/** A whole body as it shows, not to be edited. */
export function picture(doc: Document, body: Node): DocumentFragment {
  const fragment = doc.createDocumentFragment();
  const holder = doc.createElement("div");
  drawInto(doc, holder, body.content);
  fragment.append(...holder.childNodes);
  return fragment;
}
