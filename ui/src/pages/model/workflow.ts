/** The batches that workflow steps send, and what their answers mean. */

import type { Step } from "./next-step";

export interface BatchCall {
  on: string;
  do?: string;
  with?: Record<string, unknown>;
  get?: string | string[];
  set?: string;
  to?: unknown;
  expect?: { is: unknown } | { sha256: string };
  goOn?: boolean;
}

const call = (name: string, args: Record<string, unknown>): BatchCall => ({ on: "cManager", do: name, with: args });

/** Stops a batch when the page isn't any longer as its reader saw it. */
export function stillAs(pageIdent: string, parameters: string): BatchCall {
  return { ...call("getPageParameters", { pageIdent }), expect: { is: parameters } };
}

/** The word that `getPage` gives for an empty title. */
const UNTITLED = "[no title]";

/** A title as `getPage` gives it: the word in place of none must never be saved as one. */
export const titleFrom = (given: string): string => (given === UNTITLED ? "" : given);

/** The other way: what `getPage` gives for a title. */
export const titleAsGiven = (title: string): string => title || UNTITLED;

/** Which page goes on, and from which state. */
export interface Subject {
  readonly pageIdent: string;
  readonly parameters: string;
  readonly title: string;
}

/** Saves the setup as it is, which makes a page that was never saved one that can be approved. */
function untouchedSetup(page: Subject): BatchCall[] {
  const untitled: BatchCall[] = page.title === "" ? [{ on: "cManager", set: "pgTitle", to: "" }] : [];
  return [
    call("getPage", { pageIdent: page.pageIdent, mode: "D" }),
    ...untitled,
    call("savePageSetup", { pageIdent: page.pageIdent }),
  ];
}

export function stepCalls(page: Subject, step: Step): BatchCall[] {
  const { pageIdent } = page;
  switch (step) {
    case "checkIn":
      return [call("checkIn", { pageIdent })];
    case "saveSetup":
      return untouchedSetup(page);
    case "approve":
      return [call("approvePage", { pageIdent, state: 1 })];
    case "publish":
      return [call("publishPage", { pageIdent })];
  }
}

/** One batch for all steps of a page; it stops at the first refusal. */
export function workflowBatch(page: Subject, steps: readonly Step[]): BatchCall[] {
  return [stillAs(page.pageIdent, page.parameters), ...steps.flatMap((step) => stepCalls(page, step))];
}

/** Which step the call of this place in such a batch belongs to; none for the guard before them. */
export function stepAt(page: Subject, steps: readonly Step[], place: number): Step | undefined {
  let end = 1;
  if (place < end) return undefined;
  return steps.find((step) => {
    end += stepCalls(page, step).length;
    return place < end;
  });
}

export type Outcome = "published" | "off" | "removed" | "later" | "folder" | "system";

const OUTCOMES: Readonly<Record<string, Outcome>> = {
  "0": "off",
  "1": "published",
  "2": "later",
  "3": "folder",
  "4": "system",
};

/** What `publishPage` tells; nothing for a refusal. */
export function publishOutcome(answer: string, marked: boolean): Outcome | undefined {
  if (marked && answer === "0") return "removed";
  return OUTCOMES[answer];
}

export interface Undoable {
  readonly does: BatchCall;
  readonly undoes: BatchCall;
}

export function switchOnOff(pageIdent: string, on: boolean, branch: boolean): Undoable {
  const turn = (to: boolean) => call("setOnOff", { pageIdent, onOff: to ? "on" : "off", cascading: branch });
  return { does: turn(on), undoes: turn(!on) };
}

export function mark(pageIdent: string, marked: boolean): Undoable {
  const set = (to: boolean) => call("deletePage", { pageIdent, state: to ? 1 : 0 });
  return { does: set(marked), undoes: set(!marked) };
}
