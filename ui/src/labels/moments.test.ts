import assert from "node:assert/strict";
import { test } from "node:test";
import { plural, setWords, t } from ".";
import { ago, momentOf, when } from "./moments";

const now = new Date("2026-06-15T12:00:00");

test("a moment of today is its time, of yesterday says so, an older one is its day", () => {
  setWords("en", {});
  assert.match(when("2026-06-15T10:42:00", now), /^10:42/);
  assert.match(when("2026-06-14T10:42:00", now), /^yesterday, 10:42/);
  assert.equal(when("2026-05-03T10:42:00", now), "3 May");
  assert.equal(when("2025-05-03T10:42:00", now), "3 May 2025");
});

test("no moment, and the one that stands for none, say nothing", () => {
  for (const text of [null, undefined, "", "1900-01-01T00:00:00", "no"]) assert.equal(when(text, now), "");
  assert.equal(momentOf("1900-01-01T00:00:00"), null);
});

test("how long ago is told in the language", () => {
  setWords("en", {});
  assert.equal(ago("2026-06-15T11:46:00", now), "14 minutes ago");
  assert.equal(ago("2026-06-18T12:00:00", now), "in 3 days");
  setWords("de", {});
  assert.equal(ago("2026-06-15T11:46:00", now), "vor 14 Minuten");
});

test("a word fills its places and counts as its language does", () => {
  setWords("en", { 4032: "Select {name}", 4041: "{count} waits", 4042: "{count} wait" });
  assert.equal(t(4032, { name: "a {name}" }), "Select a {name}");
  assert.equal(plural(1, 4041, 4042), "1 waits");
  assert.equal(plural(0, 4041, 4042), "0 wait");
  assert.equal(plural(1200, 4041, 4042), "1,200 wait");
});
