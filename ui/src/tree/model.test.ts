import assert from "node:assert/strict";
import { test } from "node:test";
import { sitemapOf } from "../formats/sitemap";
import { hasState, hasWords, inScope, TreeModel } from "./model";

const record = (pageId: number, nodeId: string, title: string, flags: string, live = "[*idem*]#1P001") =>
  `${pageId}#${nodeId}#${(nodeId.length - 5) / 3}#${title}#${flags}#0#${live}###`;

const text =
  record(1, "bg.en", "Home", "1PP000") +
  record(2, "bg.en.01", "Visit", "1FP000") +
  record(3, "bg.en.01.01", "Plan your visit", "1PM100") +
  record(7, "bg.en.02", "The garden", "1PP000") +
  record(9, "bg.en.03", "Old programme", "0PP010");

function tree(): TreeModel {
  const model = new TreeModel();
  model.takeAll(sitemapOf(text));
  return model;
}

const titles = (model: TreeModel, ...fits: Parameters<TreeModel["shown"]>) =>
  model.shown(...fits).map(({ node }) => node.title);

test("the root is open at first, its branches are not", () => {
  assert.deepEqual(titles(tree()), ["Home", "Visit", "The garden", "Old programme"]);
});

test("an open branch shows what is below it, with level and place", () => {
  const model = tree();
  model.expanded.add("bg.en.01");
  const rows = model.shown();
  assert.deepEqual(
    rows.map(({ node, level, position, setSize }) => [node.title, level, position, setSize]),
    [
      ["Home", 1, 1, 1],
      ["Visit", 2, 1, 3],
      ["Plan your visit", 3, 1, 1],
      ["The garden", 2, 2, 3],
      ["Old programme", 2, 3, 3],
    ],
  );
});

test("what wasn't fetched is unknown, and no longer when it was", () => {
  const model = tree();
  assert.ok(model.isUnknown("bg.en.02"));
  assert.ok(!model.isUnknown("bg.en.01"));
  assert.ok(!model.isUnknown("bg.en.03"));
  model.takeBranch("bg.en.02", sitemapOf(record(8, "bg.en.02.01", "Palm House", "0PP000")));
  model.expanded.add("bg.en.02");
  assert.ok(!model.isUnknown("bg.en.02"));
  assert.ok(titles(model).includes("Palm House"));
});

test("a branch that is fetched again loses what is gone, with all below it", () => {
  const model = tree();
  model.expanded.add("bg.en.01");
  model.takeBranch(
    "bg.en",
    sitemapOf(record(7, "bg.en.02", "The garden", "0PP000") + record(10, "bg.en.04", "New", "0PN000")),
  );
  assert.deepEqual(titles(model), ["Home", "The garden", "New"]);
  assert.equal(model.page(3), undefined);
  assert.equal(model.page(10)?.nodeId, "bg.en.04");
});

test("a branch that lost its last page is no branch", () => {
  const model = tree();
  model.takeBranch("bg.en.01", []);
  assert.equal(model.node("bg.en.01")?.hasChildren, false);
});

test("what fits is shown with what stands above it", () => {
  const model = tree();
  assert.deepEqual(titles(model, hasWords("plan VISIT")), ["Home", "Visit", "Plan your visit"]);
  assert.deepEqual(titles(model, hasState("marked")), ["Home", "Old programme"]);
  assert.deepEqual(titles(model, hasState("held")), ["Home", "Visit", "Plan your visit"]);
  assert.deepEqual(titles(model, hasWords("nothing like it")), []);
});

test("a scope holds its nodes and what lies below them", () => {
  const node = (nodeId: string) => tree().node(nodeId)!;
  assert.ok(inScope("bg.en.01")(node("bg.en.01.01")));
  assert.ok(inScope("bg.en.02, bg.en.01")(node("bg.en.01")));
  assert.ok(!inScope("bg.en.01")(node("bg.en")));
  assert.ok(!inScope("bg.en.0")(node("bg.en.01")));
  assert.ok(!inScope("")(node("bg.en")));
});

test("the nodes above one begin with the root", () => {
  assert.deepEqual(TreeModel.above("bg.en.01.02"), ["bg.en", "bg.en.01"]);
  assert.deepEqual(TreeModel.above("bg.en"), []);
});
