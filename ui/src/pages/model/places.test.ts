import assert from "node:assert/strict";
import { test } from "node:test";
import {
  inScope,
  landsBefore,
  landsIn,
  type Refusal,
  refusesCopy,
  refusesMove,
  reorder,
  type Side,
  step,
} from "./places";

const scope = "bg.en";

for (const [from, to, side, refusal] of [
  ["bg.en.01", "bg.en.02", "into", undefined],
  ["bg.en.01", "bg.en.02", "before", undefined],
  ["bg.en.01.03", "bg.en.02.01", "after", undefined],
  ["bg.en", "bg.en.02", "into", "root"],
  ["bg.en.01", "bg.en", "before", "rootHasNoNeighbours"],
  ["bg.en.01", "bg.en.01", "into", "itself"],
  ["bg.en.01", "bg.en.01.04", "into", "itself"],
  ["bg.en.01", "bg.en.01.04", "before", "itself"],
  ["bg.en.01", "bg.en", "into", "isThere"],
  ["bg.en.01", "bg.en.01", "before", "isThere"],
  ["bg.en.01", "bg.en.99", "into", "system"],
  ["bg.en.01", "bg.en.99", "after", "system"],
  ["bg.en.99", "bg.en.01", "into", "system"],
  ["bg.en.99.02", "bg.en.01", "into", "system"],
  ["bg.en.99.02", "bg.en.99.01", "before", undefined],
  ["bg.en.01", "bg.de.01", "into", "otherWebsite"],
  ["bg.en.01", "ri.en.01", "into", "otherWebsite"],
] as readonly (readonly [string, string, Side, Refusal | undefined])[])
  test(`moving ${from} ${side} ${to}: ${refusal ?? "goes"}`, () =>
    assert.equal(refusesMove({ from, to, side, scope }), refusal));

test("a branch isn't another whose number begins alike", () => {
  assert.equal(refusesMove({ from: "bg.en.01", to: "bg.en.01.02", side: "into", scope }), "itself");
  assert.equal(inScope("bg.en.011", "bg.en.01"), false);
});

test("a move needs the right at both ends", () => {
  assert.equal(refusesMove({ from: "bg.en.01.01", to: "bg.en.02", side: "into", scope: "bg.en.01" }), "noRight");
  assert.equal(refusesMove({ from: "bg.en.02.01", to: "bg.en.01", side: "into", scope: "bg.en.01" }), "noRight");
  assert.equal(
    refusesMove({ from: "bg.en.02.01", to: "bg.en.01", side: "into", scope: "bg.en.01, bg.en.02" }),
    undefined,
  );
  assert.equal(refusesMove({ from: "bg.en.02.01", to: "bg.en.01", side: "into", scope: "" }), "noRight");
});

test("98 children are all a page can have, and a new order among them needs no place", () => {
  const question = { from: "bg.en.01.01", to: "bg.en.02", side: "into" as const, scope };
  assert.equal(refusesMove({ ...question, children: 97 }), undefined);
  assert.equal(refusesMove({ ...question, children: 98 }), "full");
  assert.equal(refusesMove({ from: "bg.en.01.01", to: "bg.en.01.07", side: "before", scope, children: 98 }), undefined);
});

test("a copy goes to other websites and next to itself, but not between system and other pages", () => {
  const question = { from: "bg.en.01", side: "into" as const, scope: "bg.en,ri.de" };
  assert.equal(refusesCopy({ ...question, to: "ri.de.02" }), undefined);
  assert.equal(refusesCopy({ ...question, to: "bg.en" }), undefined);
  assert.equal(refusesCopy({ ...question, to: "bg.en.01" }), undefined);
  assert.equal(refusesCopy({ ...question, to: "bg.en.99" }), "system");
  assert.equal(refusesCopy({ ...question, from: "bg.en.99.01", to: "bg.en.02" }), "system");
  assert.equal(refusesCopy({ ...question, to: "bg.fr" }), "noRight");
});

test("a system branch is copied to a website that has none", () => {
  const question = { from: "bg.en.99", to: "ri.de", side: "into" as const, scope: "ri.de" };
  assert.equal(refusesCopy({ ...question, hasSystemBranch: false }), undefined);
  assert.equal(refusesCopy({ ...question, hasSystemBranch: true }), "hasSystemBranch");
});

test("before and after land under the target's parent", () => {
  assert.equal(landsIn("bg.en.01.02", "before"), "bg.en.01");
  assert.equal(landsIn("bg.en.01.02", "into"), "bg.en.01.02");
});

const after = (order: readonly number[], page: number, before: number | undefined): number[] => {
  const result = [...order];
  for (const call of reorder(order, page, before)) {
    const a = result.indexOf(Number(call.with?.["nodeIdentFrom"]));
    const b = result.indexOf(Number(call.with?.["nodeIdentTo"]));
    const direction = call.with?.["direction"];
    assert.equal(direction, a < b ? "down" : "up", "a swap that the server would ignore");
    [result[a], result[b]] = [result[b] as number, result[a] as number];
  }
  return result;
};

test("swaps bring a page to its place and leave the others in their order", () => {
  assert.deepEqual(after([1, 2, 3, 4, 5], 5, 2), [1, 5, 2, 3, 4]);
  assert.deepEqual(after([1, 2, 3, 4, 5], 1, 4), [2, 3, 1, 4, 5]);
  assert.deepEqual(after([1, 2, 3, 4, 5], 2, undefined), [1, 3, 4, 5, 2]);
  assert.deepEqual(after([1, 2, 3], 2, 3), [1, 2, 3]);
  assert.deepEqual(reorder([1, 2], 9, 1), []);
});

test("after a page is before the one behind it, or last", () => {
  assert.equal(landsBefore([1, 2, 3], 2, "after"), 3);
  assert.equal(landsBefore([1, 2, 3], 3, "after"), undefined);
  assert.equal(landsBefore([1, 2, 3], 2, "before"), 2);
  assert.equal(landsBefore([1, 2, 3], 2, "into"), undefined);
});

test("one step up or down swaps with the neighbour, never with the system branch", () => {
  const siblings = [
    { pageId: 1, nodeId: "bg.en.01", title: "a" },
    { pageId: 2, nodeId: "bg.en.02", title: "b" },
    { pageId: 3, nodeId: "bg.en.99", title: "system" },
  ];
  assert.deepEqual(step(siblings, 2, "up")?.with, { nodeIdentFrom: "2", nodeIdentTo: "1", direction: "up" });
  assert.equal(step(siblings, 2, "down"), undefined);
  assert.equal(step(siblings, 1, "up"), undefined);
});
