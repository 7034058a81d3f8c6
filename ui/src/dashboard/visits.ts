/** Visits of days, in which those without any stand too. */
export interface Day {
  day: string;
  views: number;
  visitors: number;
}

/** A row of `desk.getHits`. */
export interface Hits {
  period: string;
  views: number;
  visitors: number;
}

export const shownDays = 14;

export interface Visits {
  days: Day[];
  views: number;
  visitors: number;
  /** Views of as many days before. */
  before: number;
}

const sum = (days: readonly Day[], what: "views" | "visitors") => days.reduce((all, day) => all + day[what], 0);

/** `wanted` are twice as many days as are shown, the first first. */
export function visitsOf(rows: readonly Hits[], wanted: readonly string[]): Visits {
  const known = new Map(rows.map((row) => [row.period, row]));
  const all = wanted.map((day) => ({
    day,
    views: known.get(day)?.views ?? 0,
    visitors: known.get(day)?.visitors ?? 0,
  }));
  const days = all.slice(-shownDays);
  return {
    days,
    views: sum(days, "views"),
    visitors: sum(days, "visitors"),
    before: sum(all.slice(0, -shownDays), "views"),
  };
}
