import assert from "node:assert/strict";
import { test } from "node:test";
import { findingsIn } from "./template-tags";

const told = (source: string): string[] => findingsIn(source).map(({ kind, name, line }) => `${line} ${kind} ${name}`);

test("a template whose blocks are whole and whose bodies are numbered from 1 on is right", () => {
  const source =
    "<!--!head_start!-->\n<!--!torvex_body_1!-->\n<!--!HEAD_END!-->\n<!--!torvex_body_2!--><!--!torvex_body_1!-->";
  assert.deepEqual(told(source), []);
  assert.deepEqual(told(""), []);
  assert.deepEqual(told("<!-- a comment --><p>_start</p>"), []);
});

test("a block that isn't closed, one that isn't opened, and one that is opened twice are told with their lines", () => {
  assert.deepEqual(told("<!--!a_start!-->\n<p>\n"), ["1 notClosed a"]);
  assert.deepEqual(told("\n<!--!a_end!-->"), ["2 notOpened a"]);
  assert.deepEqual(told("<!--!a_start!-->\n<!--!a_start!-->\n<!--!a_end!-->"), ["2 openedTwice a"]);
  assert.deepEqual(told("<!--!a_end!-->\n<!--!a_start!-->"), ["1 notOpened a", "2 notClosed a"]);
});

test("blocks of different names may lie in each other, and one after another", () => {
  assert.deepEqual(
    told("<!--!a_start!--><!--!b_start!--><!--!b_end!--><!--!a_end!--><!--!a_start!--><!--!a_end!-->"),
    [],
  );
});

test("a tag that isn't ended is told, however long what follows it is", () => {
  assert.deepEqual(told("<p>\n<!--!torvex_body_1--><p>more of it</p>"), ["2 noEnd <!--!torvex_body_1--><p>more o"]);
  assert.deepEqual(told("<!--!a <!--!b!-->"), ["1 noEnd <!--!a <!--!b!-->"]);
});

test("a body that is left out is told", () => {
  assert.deepEqual(told("<!--!torvex_body_1!-->\n<!--!torvex_body_4!-->"), ["2 bodyMissing 2", "2 bodyMissing 3"]);
  assert.deepEqual(
    told("<!--!torvex_body_1!--><!--!torvex_body_2_start!--><!--!torvex_body_2_end!--><!--!torvex_body_3!-->"),
    [],
  );
  assert.deepEqual(told("<!--!torvex_body_0!--><!--!torvex_body_x!-->"), []);
});

test("a long template is looked through at once", () => {
  const source = "<!--!a_start!--><!--!a_end!-->\n".repeat(5000);
  const begun = performance.now();
  assert.deepEqual(told(source), []);
  assert.ok(performance.now() - begun < 2000);
});
