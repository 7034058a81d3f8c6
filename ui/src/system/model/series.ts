/** Numbers over time: the periods of a stretch of days, their numbers, and those of the year before. */

export type By = "day" | "month" | "year";
export type What = "views" | "visitors";

/** A row of `desk.getHits`. */
export interface Hits {
  readonly period: string;
  readonly views: number;
  readonly visitors: number;
}

export interface Point {
  /** "20261122", "202611" or "2026". */
  readonly period: string;
  readonly views: number;
  readonly visitors: number;
  /** Of the same period a year before. */
  readonly viewsBefore: number;
  readonly visitorsBefore: number;
  /** Pages that were published in it. */
  readonly published: number;
}

/** The drawing would be no wider for more. */
const MOST = 1100;
const LENGTHS: Readonly<Record<By, number>> = { day: 8, month: 6, year: 4 };

const dateOf = (digits: string): Date =>
  new Date(Number(digits.slice(0, 4)), Number(digits.slice(4, 6) || "1") - 1, Number(digits.slice(6, 8) || "1"));
const digitsOf = (date: Date): string =>
  [date.getFullYear(), date.getMonth() + 1, date.getDate()].map((part) => String(part).padStart(2, "0")).join("");

function next(date: Date, by: By): Date {
  const [year, month, day] = [date.getFullYear(), date.getMonth(), date.getDate()];
  if (by === "day") return new Date(year, month, day + 1);
  return by === "month" ? new Date(year, month + 1, 1) : new Date(year + 1, 0, 1);
}

/** From the first day's to the last day's, both "yyyymmdd". */
export function periodsOf(from: string, to: string, by: By): string[] {
  const periods: string[] = [];
  const last = to.slice(0, LENGTHS[by]);
  for (let date = dateOf(from.slice(0, LENGTHS[by])); periods.length < MOST; date = next(date, by)) {
    const period = digitsOf(date).slice(0, LENGTHS[by]);
    if (period > last) break;
    periods.push(period);
  }
  return periods;
}

/** The same, a year before: of 29 February there is none. */
export const yearBefore = (period: string): string => String(Number(period.slice(0, 4)) - 1) + period.slice(4);

/** Days are counted once in the period that they lie in. */
export function pointsOf(
  periods: readonly string[],
  rows: readonly Hits[],
  before: readonly Hits[],
  publishings: readonly { readonly day: string; readonly pages: number }[],
): Point[] {
  const now = new Map(rows.map((row) => [row.period, row]));
  const earlier = new Map(before.map((row) => [row.period, row]));
  const published = new Map<string, number>();
  const length = periods[0]?.length ?? 8;
  for (const { day, pages } of publishings) {
    const period = day.slice(0, length);
    published.set(period, (published.get(period) ?? 0) + pages);
  }
  return periods.map((period) => ({
    period,
    views: now.get(period)?.views ?? 0,
    visitors: now.get(period)?.visitors ?? 0,
    viewsBefore: earlier.get(yearBefore(period))?.views ?? 0,
    visitorsBefore: earlier.get(yearBefore(period))?.visitors ?? 0,
    published: published.get(period) ?? 0,
  }));
}

/** A round number that nothing is above. */
export function topOf(most: number): number {
  if (most <= 5) return 5;
  const step = 10 ** Math.floor(Math.log10(most));
  return [1, 2, 5, 10].map((times) => times * step).find((top) => top >= most)!;
}
