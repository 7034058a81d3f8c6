/** The next step that a page's main button offers: as far as the state and the rights of the reader go. */

import type { EditRights, PageStatus } from "./status";

export type Step = "checkIn" | "saveSetup" | "approve" | "publish";

/** Why there is nothing further to do for this reader. */
export type Stop = "held" | "waitsForApproval" | "waitsForPublishing" | "nothing" | "noRight";

export interface NextStep {
  /** What the button is called after; "edit" begins something new. */
  readonly goal: "checkIn" | "approve" | "publish" | "remove" | "edit" | "none";
  /** What runs, in this order. */
  readonly steps: readonly Step[];
  /** What keeps the page from going further. */
  readonly stop: Stop | undefined;
}

const none = (stop: Stop): NextStep => ({ goal: "none", steps: [], stop });

export function nextStep(status: PageStatus, rights: EditRights): NextStep {
  if (status.heldByOther) return none("held");
  if (status.approved) return ofApproved(status, rights);
  if (isDone(status)) return ofDone(status, rights);
  return ofUnapproved(status, rights);
}

function isDone(status: PageStatus): boolean {
  return status.edit === "P" && !status.marked;
}

function ofApproved(status: PageStatus, rights: EditRights): NextStep {
  if (!rights.publish) return none("waitsForPublishing");
  return { goal: status.marked ? "remove" : "publish", steps: ["publish"], stop: undefined };
}

function ofDone(status: PageStatus, rights: EditRights): NextStep {
  if (!rights.edit) return none("nothing");
  if (status.held) return { goal: "checkIn", steps: ["checkIn"], stop: undefined };
  return { goal: "edit", steps: [], stop: undefined };
}

function ofUnapproved(status: PageStatus, rights: EditRights): NextStep {
  if (status.held && !rights.edit) return none("noRight");
  const steps: Step[] = status.held ? ["checkIn"] : [];
  if (!rights.approve || (needsSetup(status) && !rights.edit)) return upToCheckIn(steps, rights);
  if (needsSetup(status)) steps.push("saveSetup");
  steps.push("approve");
  if (!rights.publish) return { goal: "approve", steps, stop: undefined };
  steps.push("publish");
  return { goal: status.marked ? "remove" : "publish", steps, stop: undefined };
}

/** How a page will stand once the text that is being typed is saved: held by its author, changed, and no longer marked. */
export function onceSaved(status: PageStatus): PageStatus {
  return { ...status, edit: "M", held: true, marked: false };
}

/** A page that was never saved can't be approved, unless its removal is. */
function needsSetup(status: PageStatus): boolean {
  return status.edit === "N" && !status.marked;
}

function upToCheckIn(steps: readonly Step[], rights: EditRights): NextStep {
  if (steps.length) return { goal: "checkIn", steps, stop: undefined };
  return rights.edit ? { goal: "edit", steps: [], stop: "waitsForApproval" } : none("waitsForApproval");
}

/** Who may take back an approval, so that the page can be changed again. */
export function mayTakeBack(status: PageStatus, rights: EditRights): boolean {
  return status.approved && rights.approve;
}
