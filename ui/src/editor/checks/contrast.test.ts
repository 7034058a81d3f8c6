import assert from "node:assert/strict";
import { test } from "node:test";
import { colorOf, needed, over, ratio } from "./contrast";

test("the ratio is WCAG's", () => {
  assert.equal(ratio([0, 0, 0, 1], [255, 255, 255, 1]), 21);
  assert.equal(ratio([118, 118, 118, 1], [255, 255, 255, 1]).toFixed(2), "4.54");
});

test("colors are read as browsers tell them, others are none", () => {
  assert.deepEqual(colorOf("rgb(1, 2, 3)"), [1, 2, 3, 1]);
  assert.deepEqual(colorOf("rgba(1, 2, 3, 0.5)"), [1, 2, 3, 0.5]);
  assert.equal(colorOf("color(srgb 1 0 0)"), null);
});

test("what lets light through takes the color of what is behind it", () => {
  assert.deepEqual(over([0, 0, 0, 0.5], [255, 255, 255, 1]), [127.5, 127.5, 127.5, 1]);
});

test("large words need less", () => {
  assert.deepEqual([needed(16, 400), needed(24, 400), needed(19, 700), needed(18, 700)], [4.5, 3, 3, 4.5]);
});
