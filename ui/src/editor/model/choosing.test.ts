import assert from "node:assert/strict";
import { test } from "node:test";
import { MOST_RECENT, pathsFrom, sizesOf, withLatest } from "./choosing";

test("sizes that occur are told once, the most frequent first, and none for what has none", () => {
  const small = { width: 20, height: 10 };
  const large = { width: 600, height: 400 };
  assert.deepEqual(sizesOf([small, large, { width: 0, height: 0 }, large]), ["600 × 400", "20 × 10"]);
  assert.deepEqual(sizesOf([]), []);
});

test("a picture that is chosen again comes first and stands once", () => {
  assert.deepEqual(withLatest(["a", "b", "c"], "b"), ["b", "a", "c"]);
});

test("no more than some are remembered", () => {
  const many = Array.from({ length: MOST_RECENT }, (_, i) => `${i}.png`);
  const now = withLatest(many, "new.png");
  assert.equal(now.length, MOST_RECENT);
  assert.equal(now[0], "new.png");
  assert.ok(!now.includes(many.at(-1) as string));
});

test("what isn't a list of paths is none", () => {
  assert.deepEqual(pathsFrom(null), []);
  assert.deepEqual(pathsFrom("{"), []);
  assert.deepEqual(pathsFrom('{"a": 1}'), []);
  assert.deepEqual(pathsFrom('["a.png", 3]'), ["a.png"]);
});
