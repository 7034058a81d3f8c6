/** Calls in one request: what a record is read with, and what saves it unless it has been changed meanwhile. */

import { rowsOf } from "../api/answer";
import type { ProblemFields } from "../api/problem";
import { request } from "../api/request";

export interface Step {
  readonly on: string;
  /** An operation, or the properties that are read. */
  readonly do?: string;
  readonly get?: readonly string[];
  readonly with?: Record<string, unknown>;
  readonly expect?: { is: unknown };
}

export const step = (name: string, args: Record<string, unknown>, more: Pick<Step, "expect"> = {}): Step => {
  const [on = "", operation = ""] = name.split(".");
  return { on, do: operation, with: args, ...more };
};

export interface Entry {
  result?: unknown;
  problem?: ProblemFields;
}

/** What a batch may hold. */
const MOST = 100;

/** Calls one after another, in as many batches as it takes; what they gave, as it came. */
export async function run(steps: readonly Step[], lane: "read" | "write"): Promise<Entry[]> {
  const entries: Entry[] = [];
  for (let at = 0; at < steps.length; at += MOST) {
    const answer = await request("batch", { calls: steps.slice(at, at + MOST) }, lane);
    entries.push(...(answer as { results: Entry[] }).results);
  }
  return entries;
}

/** The lines of what a step gave. */
export const rows = <T>(entry: Entry | undefined): T[] => rowsOf(entry?.result) as T[];
