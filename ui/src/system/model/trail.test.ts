import assert from "node:assert/strict";
import { test } from "node:test";
import { byDays, filtersOf, type TrailLine, wishesIn, wishesNothing } from "./trail";

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
