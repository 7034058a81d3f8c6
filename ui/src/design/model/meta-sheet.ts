/** The sheet of meta data: pages by tags, with what they have from the pages above them. No DOM. */

/** As the server tells it: a line for each tag of a page, or one with tag 0 for a page that has none. */
export interface MetaLine {
  readonly pageId: number;
  readonly nodeId: string;
  readonly title: string;
  readonly tag: number;
  readonly value: string;
  readonly inherited: number;
}

/** `value` is what the page has of its own; what it inherits stands in `above`. */
export interface MetaCell {
  readonly value: string;
  readonly inherited: boolean;
  readonly above: string;
}

export interface MetaPage {
  readonly pageId: number;
  readonly nodeId: string;
  readonly title: string;
  readonly cells: ReadonlyMap<number, MetaCell>;
}

export const EMPTY: MetaCell = { value: "", inherited: false, above: "" };

/** Line ends as fields have them: a value is stored with bare carriage returns. */
const shown = (value: string): string => value.replace(/\r\n?/g, "\n");

export function pagesFrom(lines: readonly MetaLine[]): MetaPage[] {
  const pages = new Map<number, { page: MetaLine; cells: Map<number, MetaCell> }>();
  for (const line of lines) {
    const found = pages.get(line.pageId) ?? { page: line, cells: new Map<number, MetaCell>() };
    const inherited = line.inherited === 1;
    const value = shown(line.value);
    if (line.tag > 0)
      found.cells.set(line.tag, { value: inherited ? "" : value, inherited, above: inherited ? value : "" });
    pages.set(line.pageId, found);
  }
  return [...pages.values()].map(({ page: { pageId, nodeId, title }, cells }) => ({ pageId, nodeId, title, cells }));
}

export const cellOf = (page: MetaPage, tag: number): MetaCell => page.cells.get(tag) ?? EMPTY;

const parentOf = (nodeId: string): string => nodeId.slice(0, -3);

/** What a page would inherit, as far as the pages above it are known; else what was told of it. */
export function aboveOf(pages: readonly MetaPage[], page: MetaPage, tag: number): string {
  const byNode = new Map(pages.map((one) => [one.nodeId, one]));
  for (let node = parentOf(page.nodeId); node.length >= 5; node = parentOf(node)) {
    const ancestor = byNode.get(node);
    if (!ancestor) return cellOf(page, tag).above;
    const cell = cellOf(ancestor, tag);
    if (cell.inherited || (cell.value === "" && !ancestor.cells.has(tag))) continue;
    return cell.value;
  }
  return "";
}

/** With a cell in the place of one; an empty one that isn't inherited is none. */
export const withCell = (pages: readonly MetaPage[], pageId: number, tag: number, cell: MetaCell): MetaPage[] =>
  pages.map((page) => {
    if (page.pageId !== pageId) return page;
    const cells = new Map(page.cells);
    if (cell.value === "" && !cell.inherited) cells.delete(tag);
    else cells.set(tag, cell);
    return { ...page, cells };
  });
