import assert from "node:assert/strict";
import { test } from "node:test";
import { answered, hasMore, hiddenWith, historyFrom, isBelow, shownWith, stateOf } from "./model";

const post = (reaction_reference: string, reaction_online = 1, reaction_id = 1) => ({
  reaction_reference,
  reaction_online,
  reaction_id,
});
const thread = [post("02"), post("01.01.01", 0), post("01.01", 0), post("01.02"), post("01"), post("", 1, 0)];

test("a record is marked, new, changed or live", () => {
  assert.equal(stateOf({ isLive: 1, modified: 1, deleted: 1 }), "marked");
  assert.equal(stateOf({ isLive: 0, modified: 1, deleted: 0 }), "new");
  assert.equal(stateOf({ isLive: 1, modified: 1, deleted: 0 }), "changed");
  assert.equal(stateOf({ isLive: 1, modified: 0, deleted: 0 }), "live");
});

test("places lie below others by whole levels", () => {
  assert.ok(isBelow("01.02", "01"));
  assert.ok(isBelow("01", ""));
  assert.ok(!isBelow("01", "01"));
  assert.ok(!isBelow("011.02", "01"));
  assert.equal(answered("01.02"), "01");
  assert.equal(answered("01"), "");
});

test("what goes off with a reaction is what is on below it", () => {
  assert.deepEqual(hiddenWith(thread, "01"), ["01.02", "01"]);
  assert.deepEqual(hiddenWith(thread, "02"), ["02"]);
});

test("what goes on with a reaction is what is off above it, the topmost first", () => {
  assert.deepEqual(shownWith(thread, "01.01.01"), ["01.01", "01.01.01"]);
  assert.deepEqual(shownWith(thread, "02"), []);
});

test("what is written becomes history so many days later, or never", () => {
  const now = new Date(2026, 1, 25, 12);
  assert.equal(historyFrom(5, now), "20260302");
  assert.equal(historyFrom(0, now), "");
});

test("a list may go on behind what came in full", () => {
  assert.ok(!hasMore([]));
  assert.ok(!hasMore(Array(499)));
  assert.ok(hasMore(Array(500)));
  assert.ok(!hasMore(Array(501)));
});
