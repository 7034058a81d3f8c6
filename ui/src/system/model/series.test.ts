import assert from "node:assert/strict";
import { test } from "node:test";
import { periodsOf, pointsOf, topOf, yearBefore } from "./series";

test("periods go from the first day's to the last day's", () => {
  assert.deepEqual(periodsOf("20240227", "20240302", "day"), [
    "20240227",
    "20240228",
    "20240229",
    "20240301",
    "20240302",
  ]);
  assert.deepEqual(periodsOf("20251115", "20260203", "month"), ["202511", "202512", "202601", "202602"]);
  assert.deepEqual(periodsOf("20241231", "20260101", "year"), ["2024", "2025", "2026"]);
  assert.deepEqual(periodsOf("20260102", "20260101", "day"), []);
});

test("a period is compared with the same one a year before", () => {
  assert.deepEqual(["20261122", "202611", "2026"].map(yearBefore), ["20251122", "202511", "2025"]);
  const hits = (period: string, views: number) => ({ period, views, visitors: 1 });
  const points = pointsOf(
    ["202601", "202602"],
    [hits("202602", 7)],
    [hits("202502", 5)],
    [
      { day: "20260203", pages: 2 },
      { day: "20260220", pages: 1 },
    ],
  );
  assert.deepEqual(points, [
    { period: "202601", views: 0, visitors: 0, viewsBefore: 0, visitorsBefore: 0, published: 0 },
    { period: "202602", views: 7, visitors: 1, viewsBefore: 5, visitorsBefore: 1, published: 3 },
  ]);
});

test("the top of a drawing is round", () => {
  assert.deepEqual([0, 5, 6, 12, 51, 400, 1000].map(topOf), [5, 5, 10, 20, 100, 500, 1000]);
});
