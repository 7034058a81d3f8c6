/** What can be done to a page at once: each runs, says what came of it, and knows its way back. */

import { isProblem, type Problem } from "../api";
import type { TvxDialog } from "../kit/tvx-dialog";
import { type Toast, toast } from "../kit/tvx-toast";
import { L, t } from "../labels";
import { todayAsDigits } from "../labels/moments";
import { go, pageAddress } from "../shell/address";
import type { PageFacts } from "./data";
import type { Step } from "./model/next-step";
import {
  type BatchCall,
  mark,
  publishOutcome,
  type Subject,
  switchOnOff,
  type Undoable,
  workflowBatch,
} from "./model/workflow";
import { changed } from "./pages-changed";
import { type BatchEnd, runAll, runCalls } from "./run";
import { dayText } from "./words";

export const subjectOf = (page: PageFacts): Subject => ({
  pageIdent: String(page.pageId),
  parameters: page.parameters,
  title: page.title,
});

/** A page that something was to be done to, and what its reader may do with it. */
export interface Doing {
  readonly pageId: number;
  readonly nodeId: string;
  readonly rights?: { readonly edit: boolean; readonly approve: boolean };
}

const callOn = (page: Doing, name: string, args: Record<string, unknown> = {}): BatchCall => ({
  on: "cManager",
  do: name,
  with: { pageIdent: String(page.pageId), ...args },
});

/** What can be done about a refusal, as far as its reader may; nothing where the page's own state says it. */
export function nextMove({ kind, holder }: Problem, page: Doing, again: () => unknown): Toast["action"] {
  switch (kind) {
    case "locked-by-other":
      return { label: t(L.askForIt), run: () => askFor({ ...page, holder }) };
    case "approved":
      return page.rights?.approve ? { label: t(L.takeBackApproval), run: () => takeBack(page) } : undefined;
    case "not-approved":
      return page.rights?.approve ? { label: t(L.approve), run: () => approve(page) } : undefined;
    case "never-published":
      return page.rights?.edit ? { label: t(L.mark), run: () => markForRemoval(page) } : undefined;
    case "parent-not-live":
      return { label: t(L.openParent), run: () => go(pageAddress(page.nodeId.slice(0, -3))) };
    case "gone":
    case "parent-gone":
    case "website-gone":
      return { label: t(L.toTheDashboard), run: () => go("/torvex/") };
    case "failed":
      return { label: t(L.tryAgain), run: again };
    default:
      return undefined;
  }
}

const LEADS_ELSEWHERE: readonly string[] = ["gone", "parent-gone", "parent-not-live", "website-gone"];

/** The same inside a window, which stays open with all that was typed there unless the step leads elsewhere. */
export function nextMoveIn(dialog: TvxDialog, problem: Problem, page: Doing): Toast["action"] {
  const move = problem.kind === "failed" ? undefined : nextMove(problem, page, () => {});
  if (!move || !LEADS_ELSEWHERE.includes(problem.kind)) return move;
  return {
    label: move.label,
    run: () => {
      dialog.close();
      return move.run();
    },
  };
}

/** Says what a refusal says, with the next step beside it. */
export const refused = (problem: Problem, page: Doing, again: () => unknown): void =>
  tellRefusal(problem, nextMove(problem, page, again));

export function tellRefusal(problem: Problem, action: Toast["action"]): void {
  toast(problem.message, { kind: problem.status === 409 ? "warn" : "danger", ...(action ? { action } : {}) });
}

/** Says what kept it from being done, unless its reader herself did. */
export function failed(error: unknown): void {
  if (error instanceof DOMException && error.name === "AbortError") return;
  toast(isProblem(error) ? error.message : String(error), { kind: "danger" });
}

export const failedFor = (error: unknown, page: Doing, again: () => unknown): void =>
  isProblem(error) ? refused(error, page, again) : failed(error);

/** Does something with Undo beside it. */
export async function doUndoable(page: Doing, what: Undoable, done: string, undone: string): Promise<void> {
  const run = async (call: BatchCall, text: string, undo?: () => unknown): Promise<void> => {
    try {
      await runAll([call]);
      toast(text, undo ? { undo } : {});
    } catch (error) {
      failedFor(error, page, () => run(call, text, undo));
    }
    changed(page);
  };
  await run(what.does, done, () => run(what.undoes, undone));
}

/** The steps of the workflow, in one batch that stops at a refusal. */
export function runSteps(page: PageFacts, steps: readonly Step[]): Promise<BatchEnd> {
  return runCalls(workflowBatch(subjectOf(page), steps));
}

/** What visitors see after a publishing. */
export function outcomeText(page: PageFacts, answer: string): string {
  switch (publishOutcome(answer, page.status.marked)) {
    case "removed":
      return t(L.removedDone);
    case "off":
      return t(L.publishedOff);
    case "later":
      return laterText(page);
    case "folder":
      return t(L.publishedFolder);
    case "system":
      return t(L.publishedSystem);
    default:
      return t(L.published);
  }
}

function laterText(page: PageFacts): string {
  return page.onlineFrom > todayAsDigits()
    ? t(L.publishedFrom, { day: dayText(page.onlineFrom) })
    : t(L.publishedOver, { day: dayText(page.onlineTo) });
}

/** Says what a publishing came to, with the next step where there is one. */
export function tellOutcome(page: PageFacts, answer: string): void {
  const off = publishOutcome(answer, page.status.marked) === "off";
  const text = outcomeText(page, answer);
  if (off && page.rights.onOff)
    toast(text, {
      action: {
        label: t(L.switchOn),
        run: () =>
          doUndoable(page, switchOnOff(String(page.pageId), true, false), t(L.switchedOnDone), t(L.switchedOffDone)),
      },
    });
  else toast(text);
}

/** Steps that need no questions: checking in, approving. */
export async function stepAtOnce(page: PageFacts, steps: readonly Step[]): Promise<void> {
  const again = () => stepAtOnce(page, steps);
  try {
    const end = await runSteps(page, steps);
    changed(page);
    if (end.problem) refused(end.problem, page, again);
    else toast(t(steps.includes("approve") ? L.approvedDone : L.checkedIn));
  } catch (error) {
    failedFor(error, page, again);
  }
}

/** One call and the sentence that follows it. */
export async function one(page: Doing, call: BatchCall, done: string): Promise<unknown> {
  try {
    const [answer] = await runAll([call]);
    changed(page);
    toast(done);
    return answer;
  } catch (error) {
    failedFor(error, page, () => one(page, call, done));
    changed(page);
    return undefined;
  }
}

const approve = (page: Doing) => one(page, callOn(page, "approvePage", { state: 1 }), t(L.approvedDone));

const markForRemoval = (page: Doing) =>
  doUndoable(page, mark(String(page.pageId), true), t(L.markedDone), t(L.unmarkedDone));

export const takeBack = (page: Doing): Promise<unknown> =>
  one(page, callOn(page, "approvePage", { state: 0 }), t(L.approvalTakenBack));

export const askFor = (page: Doing & { readonly holder: string }): Promise<unknown> =>
  one(
    page,
    { on: "desk", do: "ask", with: { pageIdent: String(page.pageId) } },
    t(L.askedForIt, { name: page.holder }),
  );

/** Frees a page whose holder has left; says so when she hasn't. */
export async function release(page: PageFacts): Promise<void> {
  try {
    const [left] = await runAll([{ on: "cManager", do: "unlockPages", with: { pageList: String(page.pageId) } }]);
    changed(page);
    if (left === "") toast(t(L.released));
    else toast(t(L.releaseRefused, { name: page.holder }), { kind: "warn" });
  } catch (error) {
    failed(error);
  }
}
