/** Sends the calls that the models of this folder make. */

import { rowsOf } from "../api/answer";
import { isProblem, type Problem } from "../api/problem";
import { type CallOptions, request } from "../api/request";
import type { BatchCall } from "./model/workflow";

export interface BatchEnd {
  /** What each call gave, as far as the batch came. */
  readonly results: readonly unknown[];
  /** What stopped it, if anything did. */
  readonly problem: Problem | undefined;
  /** The place of the call that stopped it. */
  readonly at: number;
}

interface Entry {
  result?: unknown;
  problem?: ConstructorParameters<typeof Problem>[0];
}

const resultsOf = (entries: readonly Entry[]): unknown[] => entries.map((entry) => rowsOf(entry.result));

/** Runs calls one after another at the server; a refusal is told, all else is thrown. */
export async function runCalls(calls: readonly BatchCall[], options: CallOptions = {}): Promise<BatchEnd> {
  try {
    const answer = (await request("batch", { calls }, "write", options)) as { results: Entry[] };
    return { results: resultsOf(answer.results), problem: undefined, at: -1 };
  } catch (error) {
    if (!isProblem(error) || ![403, 409, 412].includes(error.status)) throw error;
    return { results: resultsOf(error.fields.results ?? []), problem: error, at: error.fields.call ?? 0 };
  }
}

/** For calls none of which may be refused. */
export async function runAll(calls: readonly BatchCall[], options: CallOptions = {}): Promise<readonly unknown[]> {
  const end = await runCalls(calls, options);
  if (end.problem) throw end.problem;
  return end.results;
}
