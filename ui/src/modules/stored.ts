/** Records of the modules at the server: read among others, and saved only over what was read. */

import { Batch } from "../api";
import type { Expect, Step } from "../api/batch";
import { Problem } from "../api/problem";
import { L, t } from "../labels";
import { isChanged } from "../records/lock";
import { hasMore } from "./model";

/** A record as it is now. */
export interface Found<Values> {
  readonly values: Values;
  /** Calls that go on only where it is still so. */
  readonly asBefore: () => Batch;
}

export interface Stored<Values> {
  /** Nothing when it is gone. */
  readonly now: () => Promise<Found<Values> | undefined>;
  /** Behind the calls of `work`, and together with them. */
  readonly save: (values: Values, work: Batch) => Promise<unknown>;
}

/** What stands beside a record may change at any time, too; more often than this in a row it doesn't. */
const MOST_TRIES = 5;

/** Saves what `make` makes of the record as it is now; false when that is nothing. */
export async function saveOver<Values>(
  stored: Stored<Values>,
  make: (now: Values) => Values | undefined,
): Promise<boolean> {
  for (let tries = 1; ; ++tries) {
    const found = await stored.now();
    if (!found) throw new Problem({ status: 409, detail: t(L.moduleRecordGone) });
    const values = make(found.values);
    if (!values) return false;
    try {
      await stored.save(values, found.asBefore());
      return true;
    } catch (error) {
      if (!isChanged(error) || tries === MOST_TRIES) throw error;
    }
  }
}

/** All but the mark is saved as it is now, not as it was when it was listed. */
export const saveMark = <Values extends { marked: number }>(
  stored: Stored<Values>,
  marked: boolean,
): Promise<boolean> => saveOver(stored, (now) => ({ ...now, marked: marked ? 1 : 0 }));

interface AsBefore {
  readonly expect?: Expect;
}

/** Asks for a list within a batch. */
export type Reading<Row> = (work: Batch, asBefore: AsBefore) => Step<readonly Row[]>;

/** A larger one than what a request may hold can't be named as what is expected. */
const LARGEST = 1_500_000;

async function readOnce<Row>(read: Reading<Row>) {
  const work = new Batch();
  const step = read(work, {});
  await work.run();
  const asBefore = (): Batch => {
    const next = new Batch();
    if (JSON.stringify(step.raw).length <= LARGEST) read(next, { expect: { is: step.raw } });
    return next;
  };
  return { rows: step.value, asBefore };
}

/** A record that is read among others. */
export async function foundAmong<Row, Values>(
  read: Reading<Row>,
  isIt: (row: Row) => boolean,
  valuesOf: (row: Row) => Values,
): Promise<Found<Values> | undefined> {
  const { rows, asBefore } = await readOnce(read);
  const row = rows.find(isIt);
  return row && { values: valuesOf(row), asBefore };
}

/** The same in a list that comes in pieces. */
export async function foundInPieces<Row, Values>(
  readFrom: (from: number) => Reading<Row>,
  isIt: (row: Row) => boolean,
  valuesOf: (row: Row) => Values,
): Promise<Found<Values> | undefined> {
  for (let from = 0; ; ) {
    const { rows, asBefore } = await readOnce(readFrom(from));
    const row = rows.find(isIt);
    if (row) return { values: valuesOf(row), asBefore };
    if (!hasMore(rows)) return undefined;
    from += rows.length;
  }
}

/** Runs a call behind those of a batch that it belongs to. */
export async function behind<T>(work: Batch, call: Step<T>): Promise<T> {
  await work.run();
  return call.value;
}
