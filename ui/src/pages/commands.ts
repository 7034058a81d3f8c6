/** What can be done to pages from anywhere: tree, page, Ctrl+K. Dialogs come when they are needed. */

import { call, isProblem, type Problem } from "../api";
import { toast } from "../kit/tvx-toast";
import { L, t } from "../labels";
import { go, pageAddress } from "../shell/address";
import { type Doing, doUndoable, failed, tellRefusal } from "./actions";
import { childrenOf } from "./children";
import { loadPage, type PageFacts } from "./data";
import { type NextStep, nextStep } from "./model/next-step";
import {
  copyCall,
  landsBefore,
  landsIn,
  moveCall,
  parentOf,
  reorder,
  type Side,
  step,
  type TreePlace,
} from "./model/places";
import { mark, switchOnOff } from "./model/workflow";
import { allChanged } from "./pages-changed";
import { runAll, runCalls } from "./run";

/** Does something to a page as it is now. */
async function withPage(pageIdent: string, run: (page: PageFacts) => unknown): Promise<void> {
  try {
    const page = await loadPage(pageIdent);
    if (page) await run(page);
    else toast(t(L.pageGone), { kind: "warn" });
  } catch (error) {
    failed(error);
  }
}

export const publishPage = (pageIdent: string): Promise<void> =>
  withPage(pageIdent, async (page) => {
    const next = nextStep(page.status, page.rights);
    if (next.goal === "remove") return (await import("./removal-dialog")).removalDialog(page, next);
    if (next.goal !== "publish" && next.goal !== "approve") return toast(whyNot(page, next), { kind: "warn" });
    if ((await (await import("./publish-dialog")).publishDialog(page, next)) === "compare")
      await go(`${pageAddress(page.pageId)}&look=compare`);
  });

/** Why a page doesn't go further. */
export function whyNot(page: PageFacts, next: NextStep): string {
  switch (next.stop) {
    case "held":
      return t(L.isHeldFirst, { name: page.holder });
    case "waitsForApproval":
      return t(L.waitsForApproval);
    case "waitsForPublishing":
      return t(L.waitsForPublishing);
    case "noRight":
      return t(L.noRightPublish);
    default:
      return t(L.nothingToDo);
  }
}

export const publishBranch = (pageIdent: string): Promise<void> =>
  withPage(pageIdent, async (page) => (await import("./branch-dialog")).branchDialog(page));

export const changeTitle = (pageIdent: string): Promise<void> =>
  withPage(pageIdent, async (page) => (await import("./title-dialog")).titleDialog(page));

export const resetPage = (pageIdent: string): Promise<void> =>
  withPage(pageIdent, async (page) => (await import("./reset-dialog")).resetDialog(page));

export const markPage = (page: Doing, on: boolean): Promise<void> =>
  doUndoable(
    page,
    mark(String(page.pageId), on),
    t(on ? L.markedDone : L.unmarkedDone),
    t(on ? L.unmarkedDone : L.markedDone),
  );

export const switchPage = (page: Doing, on: boolean, branch = false): Promise<void> =>
  doUndoable(
    page,
    switchOnOff(String(page.pageId), on, branch),
    t(on ? L.switchedOnDone : L.switchedOffDone),
    t(on ? L.switchedOffDone : L.switchedOnDone),
  );

export interface NewPlace {
  readonly site: string;
  readonly lang: string;
  readonly parent: string;
  /** The sibling in front of which it lands; last without one. */
  readonly before?: string;
}

export async function newPage(place: NewPlace): Promise<void> {
  const { newPageDialog } = await import("./new-page-dialog");
  await newPageDialog(place);
}

export async function copyPages(nodeIds: readonly string[]): Promise<void> {
  const { placeDialog } = await import("./place-dialog");
  for (const node of nodeIds) await placeDialog("copy", node);
}

export async function movePages(nodeIds: readonly string[]): Promise<void> {
  const { placeDialog } = await import("./place-dialog");
  for (const node of nodeIds) await placeDialog("move", node);
}

const idOf = (siblings: readonly TreePlace[], nodeId: string): number =>
  siblings.find((each) => each.nodeId === nodeId)?.pageId ?? 0;

/** The swaps that bring a page to a side of another, among the children of one parent as they stand. */
async function bringTo(page: number, parent: string, to: string, side: Side): Promise<void> {
  if (side === "into") return;
  const siblings = await childrenOf(parent);
  const order = siblings.map((each) => each.pageId);
  const before = landsBefore(
    order.filter((each) => each !== page),
    idOf(siblings, to),
    side,
  );
  const calls = reorder(order, page, before);
  if (calls.length) await runAll(calls);
}

/** Offers another place after a refusal; null where one can be chosen anyhow. */
type Elsewhere = (() => unknown) | null;

/** Moves a page without a question; a refusal is told, with who is in the way. */
export async function movePlace(
  from: string,
  to: string,
  side: Side,
  elsewhere: Elsewhere = () => movePages([from]),
): Promise<boolean> {
  try {
    const parent = landsIn(to, side);
    const pageId = await call("cManager.getPageId", { nodeId: from });
    if (parent !== parentOf(from)) {
      const parentId = await call("cManager.getPageId", { nodeId: parent });
      const end = await runCalls([moveCall(String(pageId), String(parentId))]);
      if (end.problem) return refusedMove(end.problem, [from, to, side, elsewhere]);
    }
    await bringTo(pageId, parent, to, side);
    allChanged();
    toast(t(L.movedDone));
    return true;
  } catch (error) {
    failed(error);
    allChanged();
    return false;
  }
}

async function refusedMove(problem: Problem, move: Parameters<typeof movePlace>): Promise<boolean> {
  const [from, , , elsewhere] = move;
  if (problem.code !== "-1") {
    toast(problem.message, { kind: "warn", ...(elsewhere ? { action: { label: t(L.moveTo), run: elsewhere } } : {}) });
    return false;
  }
  const { inTheWay } = await import("./in-the-way");
  return (await inTheWay(from.slice(0, 2), from.slice(3, 5))) ? movePlace(...move) : false;
}

/** Copies a page without a question, with all below it. */
export async function copyPlace(
  from: string,
  to: string,
  side: Side,
  branch = true,
  mode: "D" | "L" = "D",
): Promise<string> {
  try {
    const parent = landsIn(to, side);
    const [node] = (await runAll([copyCall(mode, from, parent, branch)])) as [string];
    const pageId = await call("cManager.getPageId", { nodeId: node });
    await bringTo(pageId, parent, to, side);
    allChanged();
    toast(t(L.copiedDone), { action: { label: t(L.openIt), run: () => go(pageAddress(pageId)) } });
    return node;
  } catch (error) {
    failed(error);
    return "";
  }
}

/** One place up or down among its siblings, with Undo. */
export async function stepPlace(pageIdent: string, direction: "up" | "down"): Promise<void> {
  try {
    const node = /^\d+$/.test(pageIdent) ? await call("cManager.getNodeId", { pageId: Number(pageIdent) }) : pageIdent;
    const siblings = await childrenOf(parentOf(node));
    const swap = step(siblings, idOf(siblings, node), direction);
    if (!swap) return;
    await runAll([swap]);
    allChanged();
    const back = direction === "up" ? "down" : "up";
    toast(t(direction === "up" ? L.movedUp : L.movedDown), { undo: () => stepPlace(pageIdent, back) });
  } catch (error) {
    allChanged();
    if (!isProblem(error)) return failed(error);
    const again = { label: t(L.tryAgain), run: () => stepPlace(pageIdent, direction) };
    tellRefusal(error, error.status === 403 ? undefined : again);
  }
}
