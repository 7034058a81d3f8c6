import assert from "node:assert/strict";
import { test } from "node:test";
import { shownDays, visitsOf } from "./visits";

const days = Array.from({ length: 2 * shownDays }, (_, i) => String(20260601 + i));

test("days without a visit stand in the row too", () => {
  const { days: shown } = visitsOf([{ period: days[20]!, views: 7, visitors: 3 }], days);
  assert.equal(shown.length, shownDays);
  assert.deepEqual(
    shown.filter(({ views }) => views > 0),
    [{ day: days[20], views: 7, visitors: 3 }],
  );
});

test("views are summed, and those of the days before apart", () => {
  const rows = [
    { period: days[0]!, views: 5, visitors: 1 },
    { period: days[13]!, views: 6, visitors: 1 },
    { period: days[14]!, views: 10, visitors: 4 },
    { period: days[27]!, views: 1, visitors: 1 },
  ];
  const { views, visitors, before } = visitsOf(rows, days);
  assert.deepEqual([views, visitors, before], [11, 5, 11]);
});

test("other days don't count", () => {
  assert.equal(visitsOf([{ period: "20260501", views: 5, visitors: 1 }], days).views, 0);
});
