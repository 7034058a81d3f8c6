import type { SitemapNode } from "../formats/sitemap";

/** A row of the tree as it is drawn. */
export interface ShownNode {
  node: SitemapNode;
  level: number;
  setSize: number;
  position: number;
  expanded: boolean;
}

export type StateFilter = "new" | "changed" | "approved" | "marked" | "held" | "off" | "mine";

const parentOf = (nodeId: string) => nodeId.slice(0, -3);
const isRoot = (node: SitemapNode) => node.depth === 0;

/** The pages of a website, as far as they have been fetched, and which branches are open. */
export class TreeModel {
  private readonly nodes = new Map<string, SitemapNode>();
  private readonly byPage = new Map<number, string>();
  /** The children of each node whose children are known, in their order. */
  private readonly children = new Map<string, string[]>();
  private roots: string[] = [];
  readonly expanded = new Set<string>();

  get size(): number {
    return this.nodes.size;
  }

  all(): SitemapNode[] {
    return [...this.nodes.values()];
  }

  node(nodeId: string): SitemapNode | undefined {
    return this.nodes.get(nodeId);
  }

  page(pageId: number): SitemapNode | undefined {
    return this.nodes.get(this.byPage.get(pageId) ?? "");
  }

  parent(nodeId: string): SitemapNode | undefined {
    return this.nodes.get(parentOf(nodeId));
  }

  childrenOf(nodeId: string): readonly string[] {
    return this.children.get(nodeId) ?? [];
  }

  /** Whether a node's children have to be fetched before it can be opened. */
  isUnknown(nodeId: string): boolean {
    return (this.nodes.get(nodeId)?.hasChildren ?? false) && !this.children.has(nodeId);
  }

  get hasUnknown(): boolean {
    return [...this.nodes.keys()].some((nodeId) => this.isUnknown(nodeId));
  }

  /** Takes the whole text of a website. */
  takeAll(nodes: SitemapNode[]): void {
    this.nodes.clear();
    this.byPage.clear();
    this.children.clear();
    this.roots = [];
    for (const node of nodes) this.add(node);
    for (const root of this.roots) this.expanded.add(root);
  }

  /** Takes what stands just below a node, in place of what was known of it. */
  takeBranch(parent: string, nodes: SitemapNode[]): void {
    const before = this.children.get(parent) ?? [];
    const now = new Set(nodes.map(({ nodeId }) => nodeId));
    for (const gone of before) if (!now.has(gone)) this.drop(gone);
    this.children.set(parent, []);
    for (const node of nodes) this.add(node);
    const above = this.nodes.get(parent);
    if (above) this.nodes.set(parent, { ...above, hasChildren: nodes.length > 0 });
    if (nodes.length === 0) this.expanded.delete(parent);
  }

  private add(node: SitemapNode): void {
    this.nodes.set(node.nodeId, node);
    this.byPage.set(node.pageId, node.nodeId);
    const parent = parentOf(node.nodeId);
    if (isRoot(node)) this.roots.push(node.nodeId);
    else if (this.children.has(parent)) this.children.get(parent)!.push(node.nodeId);
    else this.children.set(parent, [node.nodeId]);
  }

  private drop(nodeId: string): void {
    for (const child of this.childrenOf(nodeId)) this.drop(child);
    this.byPage.delete(this.nodes.get(nodeId)?.pageId ?? -1);
    this.nodes.delete(nodeId);
    this.children.delete(nodeId);
    this.expanded.delete(nodeId);
  }

  /** The nodes above one, from the root on: what has to be open for it to be seen. */
  static above(nodeId: string): string[] {
    const parts = nodeId.split(".");
    return parts.slice(2).map((_, i) => parts.slice(0, i + 2).join("."));
  }

  /** What is to be drawn: open branches, or with a test all that fits together with what stands above it. */
  shown(fits?: (node: SitemapNode) => boolean): ShownNode[] {
    const rows: ShownNode[] = [];
    const wanted = fits ? this.fitting(fits) : undefined;
    this.walk(this.roots, 1, wanted, rows);
    return rows;
  }

  private fitting(fits: (node: SitemapNode) => boolean): Set<string> {
    const wanted = new Set<string>();
    for (const node of this.nodes.values()) {
      if (!fits(node)) continue;
      wanted.add(node.nodeId);
      for (const above of TreeModel.above(node.nodeId)) wanted.add(above);
    }
    return wanted;
  }

  private walk(nodeIds: readonly string[], level: number, wanted: Set<string> | undefined, rows: ShownNode[]): void {
    const here = wanted ? nodeIds.filter((nodeId) => wanted.has(nodeId)) : nodeIds;
    here.forEach((nodeId, at) => {
      const node = this.nodes.get(nodeId)!;
      const children = this.childrenOf(nodeId);
      const expanded = wanted
        ? children.some((child) => wanted.has(child))
        : this.expanded.has(nodeId) && children.length > 0;
      rows.push({ node, level, setSize: here.length, position: at + 1, expanded });
      if (expanded) this.walk(children, level + 1, wanted, rows);
    });
  }
}

const words = (text: string) => text.toLowerCase().split(/\s+/).filter(Boolean);

/** Whether a page has all the words in its title, its live title, its number or its node. */
export function hasWords(filter: string): (node: SitemapNode) => boolean {
  const wanted = words(filter);
  return ({ title, liveTitle, pageId, nodeId }) => {
    const text = `${title} ${liveTitle ?? ""} ${pageId} ${nodeId}`.toLowerCase();
    return wanted.every((word) => text.includes(word));
  };
}

const states: Record<Exclude<StateFilter, "mine">, (node: SitemapNode) => boolean> = {
  new: ({ state }) => state === "new",
  changed: ({ state }) => state === "changed",
  approved: ({ state }) => state === "approved",
  marked: ({ state }) => state === "marked",
  held: ({ locked }) => locked,
  off: ({ live }) => live === "off" || live === "outOfDates" || live === "none",
};

export const hasState = (state: Exclude<StateFilter, "mine">) => states[state];

/** Whether a node is one of a scope's, or lies below one: a scope is nodes divided by commas. */
export function inScope(scope: string): (node: SitemapNode) => boolean {
  const tops = scope
    .split(",")
    .map((top) => top.trim().toLowerCase())
    .filter(Boolean);
  return ({ nodeId }) => tops.some((top) => nodeId === top || nodeId.startsWith(`${top}.`));
}
