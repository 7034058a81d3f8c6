import { call } from "../api";
import { isProblem } from "../api/problem";
import type { PageWord } from "../formats/status";
import { pageList, pagesIn } from "../formats/status";
import type { Store } from "../kit/store";

export type WorkKind = "mine" | "approve" | "publish" | "marked" | "dates";

/** A page on a list of what is to be done. */
export interface WorkRow {
  pageId: number;
  siteId: string;
  lang: string;
  nodeId: string;
  title: string;
  liveTitle: string | null;
  pageType: string;
  state: PageWord;
  editor: string;
  since: string | null;
  holder: string;
  holderSince: string | null;
  /** "yyyymmdd", or nothing. */
  onlineFrom?: string;
  onlineTo?: string;
}

export const keyOf = ({ pageId }: { pageId: number }) => String(pageId);

export const workOf = async (kind: WorkKind) => (await call("desk.getWork", { site: "", lang: "", kind })) as WorkRow[];

/** What becomes of pages that are worked on one after another. */
export interface Run {
  running: boolean;
  done: number;
  all: number;
  /** Why a page stayed, by its number. */
  reasons: ReadonlyMap<string, string>;
}

export const noRun: Run = { running: false, done: 0, all: 0, reasons: new Map() };

const reasonOf = (error: unknown) => (isProblem(error) ? error.message : String(error));
const inNodeOrder = (rows: WorkRow[]) => [...rows].sort((a, b) => (a.nodeId < b.nodeId ? -1 : 1));

/** Does one thing to pages one by one, parents first; `stop` ends it after the page in hand. */
export async function runEach(
  rows: WorkRow[],
  one: (row: WorkRow) => Promise<unknown>,
  run: Store<Run>,
  stop: AbortSignal,
): Promise<WorkRow[]> {
  const done: WorkRow[] = [];
  run.value = { running: true, done: 0, all: rows.length, reasons: new Map() };
  for (const row of inNodeOrder(rows)) {
    if (stop.aborted) break;
    try {
      await one(row);
      done.push(row);
    } catch (error) {
      run.patch({ reasons: new Map(run.value.reasons).set(keyOf(row), reasonOf(error)) });
    }
    run.patch({ done: run.value.done + 1 });
  }
  run.patch({ running: false });
  return done;
}

/** Approves all at once; what stayed is asked for its reason by trying it alone. */
export async function approveAll(rows: WorkRow[], run: Store<Run>): Promise<WorkRow[]> {
  run.value = { running: true, done: 0, all: rows.length, reasons: new Map() };
  const left = new Set(
    pagesIn(String(await call("cManager.approvePages", { pageList: pageList(rows.map(({ pageId }) => pageId)) }))),
  );
  const stayed = rows.filter((row) => left.has(keyOf(row)));
  const late = await runEach(
    stayed,
    ({ pageId }) => call("cManager.approvePage", { pageIdent: String(pageId), state: 1 }),
    run,
    new AbortController().signal,
  );
  return [...rows.filter((row) => !left.has(keyOf(row))), ...late];
}

/** Lets go of pages; those that stayed held are given back. */
export async function releaseAll(rows: WorkRow[]): Promise<WorkRow[]> {
  const left = new Set(
    pagesIn(String(await call("cManager.unlockPages", { pageList: pageList(rows.map(({ pageId }) => pageId)) }))),
  );
  return rows.filter((row) => !left.has(keyOf(row)));
}
