import assert from "node:assert/strict";
import { test } from "node:test";
import { counted, gather } from "./history";

const line = (moment: string, loginId: number, action: string, detail = "") => ({
  moment,
  loginId,
  name: `person ${loginId}`,
  action,
  detail,
});

test("lines of one person within an hour are one entry, newest first", () => {
  const entries = gather([
    line("2026-06-15T10:05:00", 1, "check out"),
    line("2026-06-15T10:40:00", 1, "save"),
    line("2026-06-15T11:00:00", 1, "check in"),
  ]);
  assert.deepEqual(
    entries.map((entry) => [entry.moment, entry.lines.length]),
    [
      ["2026-06-15T11:00:00", 1],
      ["2026-06-15T10:40:00", 2],
    ],
  );
});

test("another person between divides an entry", () => {
  const entries = gather([
    line("2026-06-15T10:05:00", 1, "save"),
    line("2026-06-15T10:10:00", 2, "approve"),
    line("2026-06-15T10:20:00", 1, "unapprove"),
  ]);
  assert.deepEqual(
    entries.map((entry) => entry.loginId),
    [1, 2, 1],
  );
});

test("what was done several times is told once with its count", () => {
  const lines = [line("a", 1, "save", "body 1"), line("b", 1, "save", "body 1"), line("c", 1, "save", "body 2")];
  assert.deepEqual(
    counted(lines).map((each) => [each.detail, each.count]),
    [
      ["body 1", 2],
      ["body 2", 1],
    ],
  );
});
