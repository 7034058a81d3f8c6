import assert from "node:assert/strict";
import { test } from "node:test";
import { behind, byDays, filtersOf, type TrailLine, wishesIn, wishesNothing } from "./trail";

const wishes = (query: string) => wishesIn(new URLSearchParams(query));
const line = (id: number, moment: string | null): TrailLine => ({
  line: id,
  moment,
  loginId: 7,
  name: "Anna",
  pageId: 0,
  title: "",
  nodeId: "",
  entry: 0,
  action: "save",
  detail: "",
});

test("what is looked for stands in the address", () => {
  assert.equal(
    filtersOf(wishes("who=7&did=check in&from=20261101&to=20261130")),
    "login:7,action:check in,from:20261101,to:20261130",
  );
  assert.equal(filtersOf(wishes("page= 12 ")), "page:12");
  assert.equal(filtersOf(wishes("page=bg.en.03&below=1&entry=61")), "entry:61,branch:bg.en.03");
  assert.equal(filtersOf(wishes("")), "");
  assert.equal(wishesNothing(wishes("below=1")), true);
  assert.equal(wishesNothing(wishes("who=7")), false);
});

test("lines stand by days, each once", () => {
  const days = byDays([
    line(4, "2026-11-22T10:00:00"),
    line(3, "2026-11-22T09:00:00"),
    line(3, "2026-11-22T09:00:00"),
    line(2, "2026-11-20T09:00:00"),
    line(1, null),
  ]);
  assert.deepEqual(
    days.map(({ day, lines }) => [day, lines.map((one) => one.line)]),
    [
      ["2026-11-22", [4, 3]],
      ["2026-11-20", [2]],
      ["", [1]],
    ],
  );
});

const dayOf = ({ moment }: TrailLine) => (moment ?? "").slice(0, 10).replaceAll("-", "");

/** Answers as the server does: the latest first, 200 at once, up to a day, behind so many. */
function served(trail: readonly TrailLine[], filters: string, from: number, days = trail.map(dayOf)): TrailLine[] {
  const to = /(?:^|,)to:(\d+)/.exec(filters)?.[1] ?? "99999999";
  const first = days.findIndex((day) => day <= to);
  return first < 0 ? [] : trail.slice(first + from, first + from + 200);
}

test("a trail of any length is gone through to its end", () => {
  const moment = (at: number) => new Date(Date.UTC(2026, 10, 22) - Math.floor(at / 700) * 86_400_000).toISOString();
  const trail = Array.from({ length: 40_001 }, (_, at) => line(40_001 - at, at > 39_900 ? null : moment(at)));
  const days = trail.map(dayOf);
  const lines = served(trail, "login:7,to:20991231", 0, days);
  for (let more = true; more; ) {
    const next = behind("login:7,to:20991231", lines);
    assert.ok(next.filters.startsWith("login:7,to:"));
    const further = served(trail, next.filters, next.from, days);
    lines.push(...further);
    more = further.length === 200;
  }
  assert.equal(lines.length, trail.length);
  assert.equal(new Set(lines.map((one) => one.line)).size, trail.length);
});

test("a trail that has grown meanwhile leaves no line out", () => {
  const trail = Array.from({ length: 600 }, (_, at) => line(600 - at, "2026-11-22T10:00:00"));
  const lines = served(trail, "", 0);
  trail.unshift(...Array.from({ length: 30 }, (_, at) => line(630 - at, "2026-11-22T11:00:00")));
  for (let parts = 0; parts < 3; ++parts) {
    const next = behind("", lines);
    lines.push(...served(trail, next?.filters ?? "", next?.from ?? 0));
  }
  const seen = new Set(lines.map((one) => one.line));
  assert.ok(Array.from({ length: 600 }, (_, at) => at + 1).every((number) => seen.has(number)));
});

test("lines of one day go on behind the 32,767th", () => {
  const day = Array.from({ length: 32_800 }, (_, at) => line(40_000 - at, "2026-11-22T10:00:00"));
  assert.deepEqual(behind("", day), { filters: "to:20261122", from: 32_800 });
  assert.deepEqual(behind("page:12", day.slice(0, 400)), { filters: "page:12,to:20261122", from: 400 });
});
