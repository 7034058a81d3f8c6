/** Where a page may be put: before or after a neighbour, or into a page; what is refused, and the calls that do it. */

import type { BatchCall } from "./workflow";

export interface TreePlace {
  readonly pageId: number;
  readonly nodeId: string;
  readonly title: string;
}

export type Side = "before" | "after" | "into";

export type Refusal =
  | "itself"
  | "root"
  | "system"
  | "otherWebsite"
  | "noRight"
  | "full"
  | "hasSystemBranch"
  | "rootHasNoNeighbours"
  | "isThere";

const ROOT_LENGTH = 5;
const LEVEL_LENGTH = 3;
const MOST_CHILDREN = 98;

export const parentOf = (nodeId: string): string => (nodeId.length > ROOT_LENGTH ? nodeId.slice(0, -LEVEL_LENGTH) : "");

export const websiteOf = (nodeId: string): string => nodeId.slice(0, ROOT_LENGTH);

export const isRoot = (nodeId: string): boolean => nodeId.length <= ROOT_LENGTH;

/** The tree's own test: the two digits anywhere in the node. */
export const isSystem = (nodeId: string): boolean => nodeId.includes("99");

export const isSystemRoot = (nodeId: string): boolean => isSystem(nodeId) && !isSystem(parentOf(nodeId));

export const liesIn = (nodeId: string, branch: string): boolean => nodeId === branch || nodeId.startsWith(`${branch}.`);

/** The page under which something lands that is put at a side of a target. */
export function landsIn(target: string, side: Side): string {
  return side === "into" ? target : parentOf(target);
}

/** What a login may do in branches: the nodes of `getLoginScope`. */
export function inScope(nodeId: string, scope: string): boolean {
  return scope
    .split(",")
    .map((each) => each.trim())
    .some((each) => each !== "" && liesIn(nodeId, each));
}

export interface MoveQuestion {
  readonly from: string;
  readonly to: string;
  readonly side: Side;
  /** Branches in which the login may move. */
  readonly scope: string;
  /** How many children the parent has, where that is known. */
  readonly children?: number;
}

export function refusesMove(question: MoveQuestion): Refusal | undefined {
  const { from, to, side } = question;
  if (isRoot(from)) return "root";
  if (side !== "into" && isRoot(to)) return "rootHasNoNeighbours";
  const parent = landsIn(to, side);
  if (liesIn(parent, from)) return "itself";
  const stays = parent === parentOf(from);
  if (from === to || (stays && side === "into")) return "isThere";
  if (isSystemRoot(from) || (side !== "into" && isSystemRoot(to))) return "system";
  if (!stays && (isSystem(from) || isSystem(parent))) return "system";
  if (websiteOf(from) !== websiteOf(parent)) return "otherWebsite";
  if (!inScope(from, question.scope) || !inScope(parent, question.scope)) return "noRight";
  return !stays && isFull(parent, question.children) ? "full" : undefined;
}

export interface CopyQuestion extends MoveQuestion {
  /** Whether the parent has a system branch already. */
  readonly hasSystemBranch?: boolean;
}

/** A copy asks for the right to edit at its target, and may go to another website. */
export function refusesCopy(question: CopyQuestion): Refusal | undefined {
  const { from, to, side } = question;
  if (isRoot(from)) return "root";
  if (side !== "into" && isRoot(to)) return "rootHasNoNeighbours";
  const parent = landsIn(to, side);
  if (isSystemRoot(from)) {
    if (isSystem(parent)) return "system";
    if (question.hasSystemBranch) return "hasSystemBranch";
  } else if (isSystem(from) !== isSystem(parent)) return "system";
  if (!inScope(parent, question.scope)) return "noRight";
  return isFull(parent, question.children) ? "full" : undefined;
}

function isFull(parent: string, children: number | undefined): boolean {
  return children !== undefined && children >= MOST_CHILDREN + (isSystem(parent) ? 1 : 0);
}

/** What a copy loses in another website. */
export function losesLooks(from: string, to: string): boolean {
  return websiteOf(from) !== websiteOf(to);
}

/**
 * The swaps that bring a page to its place among its siblings. `order` are the siblings' numbers as they stand, with
 * the page among them; it ends before `before`, or last without one.
 */
export function reorder(order: readonly number[], page: number, before: number | undefined): BatchCall[] {
  const from = order.indexOf(page);
  const others = order.filter((each) => each !== page);
  const to = before === undefined ? others.length : others.indexOf(before);
  if (from < 0 || to < 0) return [];
  const passed = to < from ? others.slice(to, from).reverse() : others.slice(from, to);
  return passed.map((sibling) => swap(page, sibling, to < from ? "up" : "down"));
}

function swap(page: number, sibling: number, direction: "up" | "down"): BatchCall {
  return {
    on: "cManager",
    do: "moveNode",
    with: { nodeIdentFrom: String(page), nodeIdentTo: String(sibling), direction },
  };
}

/** The sibling before which a page lands: the target itself, the one behind it, or none for the last place. */
export function landsBefore(siblings: readonly number[], target: number, side: Side): number | undefined {
  if (side === "before") return target;
  if (side === "into") return undefined;
  return siblings[siblings.indexOf(target) + 1];
}

/** One step up or down among the siblings; the system branch stays last. */
export function step(siblings: readonly TreePlace[], page: number, direction: "up" | "down"): BatchCall | undefined {
  const movable = siblings.filter((each) => !isSystemRoot(each.nodeId));
  const at = movable.findIndex((each) => each.pageId === page);
  const other = at < 0 ? undefined : movable[direction === "up" ? at - 1 : at + 1];
  return other && swap(page, other.pageId, direction);
}

export const moveCall = (pageIdentFrom: string, pageIdentTo: string): BatchCall => ({
  on: "cManager",
  do: "movePage",
  with: { pageIdentFrom, pageIdentTo },
});

export const copyCall = (mode: "D" | "L", pageIdentFrom: string, pageIdentTo: string, branch: boolean): BatchCall => ({
  on: "cManager",
  do: "pastePage",
  with: { modeFrom: mode, pageIdentFrom, pageIdentTo, flag: branch ? 1 : 0 },
});
