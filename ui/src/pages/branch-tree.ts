/** A website's tree in which branches are read as they are opened: the base of the elements that choose pages in it. */

import type { PropertyValues, TemplateResult } from "lit";
import { property, state } from "lit/decorators.js";
import { TvxElement } from "../kit/element";
import type { TreeRow } from "../kit/tvx-tree";
import { type Child, childrenOf } from "./children";
import { parentOf } from "./model/places";
import { titleOr } from "./words";

/** The nodes between the first page of a website and a node, from the top. */
function wayTo(node: string): string[] {
  const way: string[] = [];
  for (let at = parentOf(node); at.length > 5; at = parentOf(at)) way.unshift(at);
  return way;
}

export abstract class BranchTree extends TvxElement {
  @property() site = "";
  @property() language = "";
  @state() private known = new Map<string, readonly Child[]>();
  @state() private open = new Set<string>();
  @state() private waiting = new Set<string>();
  @state() protected fault = "";

  /** Nodes to which the way is open at the beginning. */
  protected abstract get shownAtFirst(): readonly string[];
  protected abstract content(child: Child): TemplateResult;

  protected isDimmed(_child: Child): boolean {
    return false;
  }

  protected override willUpdate(changed: PropertyValues<this>): void {
    if (changed.has("site") || changed.has("language")) void this.begin();
  }

  protected async begin(): Promise<void> {
    this.known = new Map();
    this.open = new Set();
    await this.expand("");
    const root = this.known.get("")?.[0]?.nodeId;
    if (root) await this.expand(root);
    for (const node of this.shownAtFirst.flatMap(wayTo)) await this.expand(node);
  }

  private async expand(node: string): Promise<void> {
    this.open = new Set([...this.open, node]);
    if (this.known.has(node)) return;
    this.waiting = new Set([...this.waiting, node]);
    try {
      const found = await childrenOf(node, this.site, this.language);
      this.known = new Map([...this.known, [node, found]]);
    } catch (error) {
      this.fault = error instanceof Error ? error.message : String(error);
    }
    this.waiting = new Set([...this.waiting].filter((each) => each !== node));
  }

  protected toggle(node: string): void {
    if (this.open.has(node)) this.open = new Set([...this.open].filter((each) => each !== node));
    else void this.expand(node);
  }

  /** All that is known of a page that the tree shows. */
  pageAt(node: string): Child | undefined {
    return this.known.get(parentOf(node))?.find((each) => each.nodeId === node);
  }

  /** The children of a page, as far as they are read. */
  below(node: string): readonly Child[] | undefined {
    return this.known.get(node);
  }

  protected rows(node = "", level = 1): TreeRow[] {
    const children = this.known.get(node) ?? [];
    return children.flatMap((child, at) => {
      const row: TreeRow = {
        id: child.nodeId,
        name: titleOr(child.title),
        level,
        setSize: children.length,
        position: at + 1,
        expandable: child.hasChildren,
        expanded: this.open.has(child.nodeId),
        loading: this.waiting.has(child.nodeId),
        content: this.content(child),
        dimmed: this.isDimmed(child),
      };
      return row.expanded && child.hasChildren ? [row, ...this.rows(child.nodeId, level + 1)] : [row];
    });
  }
}
