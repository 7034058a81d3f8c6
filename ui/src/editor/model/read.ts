// A body's text as a document. Each part is accepted only if writing it gives back the source that it covers; what
// doesn't is an island that holds that source.

import { type DefaultTreeAdapterTypes as Dom, defaultTreeAdapter, html, parseFragment } from "parse5";
import { Fragment, type Mark, type Node, type NodeType, type Schema } from "prosemirror-model";
import { shown, takeBlanks, withBlanksInBreaks } from "./blanks";
import { escapeText, isBlank, type Unit, unitsOf } from "./characters";
import { schema as wholeSchema } from "./schema";
import * as tags from "./tags";
import { write, writeLine } from "./write";

interface Extent {
  start: number;
  end: number;
}

/** What stands between two places of the source: a node, or text that belongs to none or to several. */
interface Item extends Extent {
  node: Dom.ChildNode | null;
  /** Whether it takes a line of its own. */
  block: boolean;
}

/** The parts overlap beyond what holds them. */
class Crossed extends Error {}

const isElement = (node: Dom.ChildNode): node is Dom.Element => "tagName" in node;
const isText = (node: Dom.ChildNode): node is Dom.TextNode => node.nodeName === "#text";
const isNeutral = (node: Dom.ChildNode) => !isText(node) && (!isElement(node) || tags.neutralTags.has(node.tagName));
const isSvg = (node: Dom.Element) => node.namespaceURI !== html.NS.HTML;

export class Reader {
  private readonly extents = new Map<Dom.ChildNode, Extent | null>();
  private readonly blocks = new Map<Dom.ChildNode, boolean>();

  constructor(
    private readonly source: string,
    private readonly schema: Schema = wholeSchema,
  ) {}

  /** The whole text as blocks. */
  doc(): Node {
    const root = this.parsed();
    const { nodes, tail } = this.flow(this.items(root.childNodes, 0, this.source.length));
    if (!nodes.length) return this.type("doc").create({ lead: this.source }, this.type("paragraph").create());
    return this.type("doc").create({ tail }, nodes);
  }

  /** The whole text as words in a line, or null when there is more in it. */
  line(): Node | null {
    const items = this.items(this.parsed().childNodes, 0, this.source.length);
    if (items.some((item) => item.block)) return null;
    const { content, lead, trail } = this.words(items);
    return this.type("doc").create({ lead, tail: trail }, content);
  }

  private parsed(): Dom.DocumentFragment {
    const context = defaultTreeAdapter.createElement("div", html.NS.HTML, []);
    return parseFragment(context, this.source, { sourceCodeLocationInfo: true });
  }

  private type(name: string): NodeType {
    return this.schema.nodes[name]!;
  }

  private slice({ start, end }: Extent): string {
    return this.source.slice(start, end);
  }

  private extent(node: Dom.ChildNode): Extent | null {
    const known = this.extents.get(node);
    if (known !== undefined) return known;
    const inner = "childNodes" in node && !isTemplate(node) ? node.childNodes.map((child) => this.extent(child)) : [];
    const own = node.sourceCodeLocation;
    const all = [own ? { start: own.startOffset, end: own.endOffset } : null, ...inner].filter(
      (extent) => extent !== null,
    );
    const extent = all.length
      ? { start: Math.min(...all.map(({ start }) => start)), end: Math.max(...all.map(({ end }) => end)) }
      : null;
    this.extents.set(node, extent);
    return extent;
  }

  private isBlock(node: Dom.ChildNode): boolean {
    const known = this.blocks.get(node);
    if (known !== undefined) return known;
    const block = isElement(node) && this.isBlockElement(node);
    this.blocks.set(node, block);
    return block;
  }

  private isBlockElement(node: Dom.Element): boolean {
    if (isSvg(node) || tags.inlineIslandTags.has(node.tagName) || tags.neutralTags.has(node.tagName)) return false;
    return tags.blockTags.has(node.tagName) || node.childNodes.some((child) => this.isBlock(child));
  }

  /** The children in the order of the source, without gap or overlap. */
  private items(children: Dom.ChildNode[], start: number, end: number): Item[] {
    const items: Item[] = [];
    let at = start;
    for (const node of children) {
      const extent = this.extent(node);
      if (!extent) continue;
      let item: Item = { ...extent, node, block: this.isBlock(node) };
      if (extent.start > at) items.push({ start: at, end: extent.start, node: null, block: false });
      while (items.length && items.at(-1)!.end > item.start) {
        const other = items.pop()!;
        item = {
          start: Math.min(other.start, item.start),
          end: Math.max(other.end, item.end),
          node: null,
          block: other.block || item.block,
        };
      }
      if (item.start < start) throw new Crossed();
      items.push(item);
      at = Math.max(at, item.end);
    }
    if (at > end) throw new Crossed();
    if (at < end) items.push({ start: at, end, node: null, block: false });
    return items;
  }

  private island(extent: Extent, before = ""): Node {
    return this.type("island").create({ raw: this.slice(extent), before });
  }

  /** Blocks, with words between them in runs; the blanks that are left stand ahead of what closes it all. */
  private flow(items: Item[]): { nodes: Node[]; tail: string } {
    const nodes: Node[] = [];
    let before = "";
    let run: Item[] = [];
    const flush = () => {
      if (!run.length) return;
      const { content, lead, trail } = this.words(run);
      if (content.size) {
        nodes.push(this.type("run").create({ before: before + lead }, content));
        before = trail;
      } else before += lead + trail;
      run = [];
    };
    for (const item of items) {
      const blank = this.isBlankItem(item);
      if (blank && !run.length) before += this.slice(item);
      else if (item.block || (item.node && isNeutral(item.node) && !run.length)) {
        flush();
        nodes.push(this.block(item, before));
        before = "";
      } else run.push(item);
    }
    flush();
    return { nodes, tail: before };
  }

  private isBlankItem(item: Item): boolean {
    return (!item.node || isText(item.node)) && isBlank(this.slice(item));
  }

  /** A block, with an island in its place when it doesn't give back its source. */
  private block(item: Item, before: string): Node {
    if (!item.node || !isElement(item.node)) return this.island(item, before);
    try {
      const node = this.element(item.node, before);
      if (node && write(node) === before + this.slice(item)) return node;
    } catch (error) {
      if (!(error instanceof Crossed || error instanceof RangeError)) throw error;
    }
    return this.island(item, before);
  }

  private element(node: Dom.Element, before: string): Node | null {
    const tag = node.tagName;
    if (isSvg(node)) return null;
    if (tag === "hr") return this.type("rule").create({ ...this.tagsOf(node), before });
    if (tag === "colgroup") return this.type("columns").create({ raw: this.slice(this.extent(node)!), before });
    if ((tags.textTags.has(tag) || tag === "pre") && !node.childNodes.some((child) => this.isBlock(child))) {
      return this.textBlock(node, tag === "pre" ? "pre" : "paragraph", before);
    }
    const structure = structures.get(tag);
    if (structure) return this.structure(node, structure, before);
    if (tags.boxTags.has(tag) || tags.inlineTags.has(tag) || tags.textTags.has(tag))
      return this.box(node, "box", before);
    if (tags.cellTags.has(tag)) return this.box(node, "cell", before);
    if (tag === "caption") return this.box(node, "caption", before);
    return null;
  }

  private tagsOf(node: Dom.Element): { tag: string; open: string; close: string } {
    const own = node.sourceCodeLocation;
    const part = (place: { startOffset: number; endOffset: number } | null | undefined) =>
      place ? this.source.slice(place.startOffset, place.endOffset) : "";
    return { tag: node.tagName, open: part(own?.startTag), close: part(own?.endTag) };
  }

  private inner(node: Dom.Element): Extent {
    const own = node.sourceCodeLocation;
    const extent = this.extent(node) ?? { start: 0, end: 0 };
    return {
      start: own?.startTag?.endOffset ?? extent.start,
      end: own?.endTag?.startOffset ?? own?.endOffset ?? extent.end,
    };
  }

  private innerItems(node: Dom.Element): Item[] {
    const { start, end } = this.inner(node);
    return this.items(node.childNodes, start, end);
  }

  private textBlock(node: Dom.Element, name: string, before: string): Node {
    const { content, lead, trail } = this.words(this.innerItems(node), name === "pre");
    return this.type(name).createChecked({ ...this.tagsOf(node), before, lead, trail }, content);
  }

  private box(node: Dom.Element, name: string, before: string): Node | null {
    const { nodes, tail } = this.flow(this.innerItems(node));
    if (!nodes.length && !typedInto.has(node.tagName)) return null;
    const content = nodes.length ? nodes : [this.type("run").create({ before: tail })];
    const named = name === "box" && node.tagName === "li" ? "box" : name;
    return this.type(named).createChecked({ ...this.tagsOf(node), before, tail: nodes.length ? tail : "" }, content);
  }

  private structure(node: Dom.Element, { name, parts }: Structure, before: string): Node {
    const content: Node[] = [];
    let between = "";
    for (const item of this.innerItems(node)) {
      if (this.isBlankItem(item)) between += this.slice(item);
      else {
        content.push(this.part(item, parts, between));
        between = "";
      }
    }
    return this.type(name).createChecked({ ...this.tagsOf(node), before, tail: between }, content);
  }

  private part(item: Item, parts: Map<string, string>, before: string): Node {
    const node = item.node;
    const part = node && isElement(node) ? parts.get(node.tagName) : undefined;
    if (!part || !node || !isElement(node)) return this.island(item, before);
    if (part !== "item") return this.block(item, before);
    try {
      const entry = this.box(node, "item", before);
      if (entry && write(entry) === before + this.slice(item)) return entry;
    } catch (error) {
      if (!(error instanceof Crossed || error instanceof RangeError)) throw error;
    }
    return this.island(item, before);
  }

  /** The words of a line; blanks at its ends show nothing and are kept apart. */
  private words(items: Item[], keepsBlanks = false): { content: Fragment; lead: string; trail: string } {
    const nodes = withBlanksInBreaks(this.inline(items, [], keepsBlanks));
    if (keepsBlanks) return { content: Fragment.fromArray(nodes), lead: "", trail: "" };
    const lead = takeBlanks(nodes, "first");
    const trail = takeBlanks(nodes, "last");
    return { content: Fragment.fromArray(nodes), lead, trail };
  }

  private inline(items: Item[], marks: readonly Mark[], keepsBlanks: boolean): Node[] {
    return items.flatMap((item) => {
      const nodes = this.inlineItem(item, marks, keepsBlanks);
      return nodes ?? [this.inlineIsland(this.slice(item), marks)];
    });
  }

  private inlineIsland(raw: string, marks: readonly Mark[]): Node {
    return this.type("inlineIsland").create({ raw }, null, marks);
  }

  private inlineItem(item: Item, marks: readonly Mark[], keepsBlanks: boolean): Node[] | null {
    const { node } = item;
    if (!node) return isBlank(this.slice(item)) ? this.characters(this.slice(item), marks, keepsBlanks) : null;
    if (isText(node)) return this.text(item, node, marks, keepsBlanks);
    if (!isElement(node)) return null;
    if (node.tagName === "br") return [this.type("lineBreak").create({ raw: this.slice(item) }, null, marks)];
    if (node.tagName === "img") return [this.type("image").create({ open: this.slice(item) }, null, marks)];
    return tags.inlineTags.has(node.tagName) && !isSvg(node)
      ? this.inlineElement(item, node, marks, keepsBlanks)
      : null;
  }

  private inlineElement(item: Item, node: Dom.Element, marks: readonly Mark[], keepsBlanks: boolean): Node[] | null {
    const mark = this.schema.marks.tag!.create({ ...this.tagsOf(node), at: item.start });
    try {
      const nodes = this.inline(this.innerItems(node), mark.addToSet(marks), keepsBlanks);
      const own = Fragment.fromArray(
        nodes.map((inner) => inner.mark(inner.marks.filter((other) => !marks.includes(other)))),
      );
      return nodes.length && writeLine(own) === this.slice(item) ? nodes : null;
    } catch (error) {
      if (error instanceof Crossed) return null;
      throw error;
    }
  }

  private text(item: Item, node: Dom.TextNode, marks: readonly Mark[], keepsBlanks: boolean): Node[] | null {
    const units = unitsOf(this.slice(item), node.value);
    return units && this.unitNodes(units, marks, keepsBlanks);
  }

  private characters(raw: string, marks: readonly Mark[], keepsBlanks: boolean): Node[] {
    return this.unitNodes([{ raw, text: raw.replaceAll("\r\n", "\n").replaceAll("\r", "\n") }], marks, keepsBlanks);
  }

  private unitNodes(units: Unit[], marks: readonly Mark[], keepsBlanks: boolean): Node[] {
    const nodes: Node[] = [];
    let plain = "";
    const flush = () => {
      if (plain) nodes.push(this.schema.text(plain, marks));
      plain = "";
    };
    for (const unit of units.flatMap((unit) => shown(unit, keepsBlanks))) {
      if (escapeText(unit.text) === unit.raw) {
        plain += unit.text;
        continue;
      }
      flush();
      if (unit.text)
        nodes.push(this.schema.text(unit.text, this.schema.marks.kept!.create({ ...unit }).addToSet(marks)));
      else nodes.push(this.inlineIsland(unit.raw, marks));
    }
    flush();
    return nodes;
  }
}

interface Structure {
  name: string;
  /** What the elements in it are. */
  parts: Map<string, string>;
}

const rows = { tr: "row" };
const structure = (name: string, parts: Record<string, string>): Structure => ({
  name,
  parts: new Map(Object.entries(parts)),
});
const list = structure("list", { li: "item", ul: "list", ol: "list", menu: "list", dir: "list" });
const tablePart = structure("tablePart", rows);
const tableParts = {
  thead: "tablePart",
  tbody: "tablePart",
  tfoot: "tablePart",
  caption: "caption",
  colgroup: "columns",
};
const structures = new Map(
  Object.entries({
    ul: list,
    ol: list,
    menu: list,
    dir: list,
    table: structure("table", { ...rows, ...tableParts }),
    thead: tablePart,
    tbody: tablePart,
    tfoot: tablePart,
    tr: structure("row", { td: "cell", th: "cell" }),
  }),
);

/** Elements that are there to be filled, even when they are empty. */
const typedInto = new Set(["li", "td", "th", "caption", "blockquote", "dd", "dt", "figcaption"]);

const isTemplate = (node: Dom.ChildNode) => node.nodeName === "template";
