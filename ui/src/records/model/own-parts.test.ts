import assert from "node:assert/strict";
import { test } from "node:test";
import { changedParts, withOwn } from "./own-parts";

const PARTS = ["name", "text"] as const;
const was = { name: "Old", text: "" };

test("parts are changed where they are written otherwise, by case as well", () => {
  assert.deepEqual(changedParts(PARTS, was, { ...was }), []);
  assert.deepEqual(changedParts(PARTS, { name: "old", text: "" }, was), ["name"]);
  assert.deepEqual(changedParts(PARTS, { name: "", text: "T" }, was), ["name", "text"]);
});

test("what one has changed oneself stays on top of what others have saved", () => {
  const theirs = { name: "Theirs", text: "Their text" };
  assert.deepEqual(withOwn(PARTS, theirs, { name: "Mine", text: "" }, was), { name: "Mine", text: "Their text" });
  assert.deepEqual(withOwn(PARTS, theirs, was, was), theirs);
  assert.deepEqual(withOwn(PARTS, theirs, { name: "", text: "" }, was), { name: "", text: "Their text" });
});
