/** What can be done to a page at once: each runs, says what came of it, and knows its way back. */

import { isProblem } from "../api";
import { toast } from "../kit/tvx-toast";
import { L, t } from "../labels";
import type { PageFacts } from "./data";
import type { Step } from "./model/next-step";
import {
  type BatchCall,
  publishOutcome,
  type Subject,
  switchOnOff,
  type Undoable,
  workflowBatch,
} from "./model/workflow";
import { changed } from "./pages-changed";
import { type BatchEnd, runAll, runCalls } from "./run";
import { dayText, today } from "./words";

export const subjectOf = (page: PageFacts): Subject => ({
  pageIdent: String(page.pageId),
  parameters: page.parameters,
  title: page.title,
});

/** Says what kept it from being done, unless its reader herself did. */
export function failed(error: unknown): void {
  if (error instanceof DOMException && error.name === "AbortError") return;
  toast(isProblem(error) ? error.message : String(error), { kind: "danger" });
}

/** Does something with Undo beside it. */
export async function doUndoable(
  page: { readonly pageId: number; readonly nodeId: string },
  what: Undoable,
  done: string,
  undone: string,
): Promise<void> {
  const run = async (call: BatchCall, text: string, undo?: () => unknown): Promise<void> => {
    try {
      await runAll([call]);
      changed(page);
      toast(text, undo ? { undo } : {});
    } catch (error) {
      failed(error);
      changed(page);
    }
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
  return page.onlineFrom > today()
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
  try {
    const end = await runSteps(page, steps);
    changed(page);
    if (end.problem) toast(end.problem.message, { kind: "warn" });
    else toast(t(steps.includes("approve") ? L.approvedDone : L.checkedIn));
  } catch (error) {
    failed(error);
  }
}

/** One call and the sentence that follows it. */
export async function one(page: PageFacts, call: BatchCall, done: string): Promise<unknown> {
  try {
    const [answer] = await runAll([call]);
    changed(page);
    toast(done);
    return answer;
  } catch (error) {
    failed(error);
    changed(page);
    return undefined;
  }
}

export const takeBack = (page: PageFacts): Promise<unknown> =>
  one(
    page,
    { on: "cManager", do: "approvePage", with: { pageIdent: String(page.pageId), state: 0 } },
    t(L.approvalTakenBack),
  );

export const askFor = (page: PageFacts): Promise<unknown> =>
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
