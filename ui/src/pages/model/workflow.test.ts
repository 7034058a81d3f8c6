import assert from "node:assert/strict";
import { test } from "node:test";
import { mark, publishOutcome, stepAt, switchOnOff, titleFrom, workflowBatch } from "./workflow";

const page = { pageIdent: "12", parameters: "PM1000", title: "Autumn walks" };
const told = (calls: { do?: string; set?: string }[]): string =>
  calls.map((call) => call.do ?? `set ${call.set}`).join(" ");

test("the word in place of an empty title is never a title", () => {
  assert.equal(titleFrom("[no title]"), "");
  assert.equal(titleFrom("[no title] really"), "[no title] really");
});

test("a batch begins with the state that its author saw, and stops unless it still holds", () => {
  const [guard] = workflowBatch(page, ["checkIn"]);
  assert.deepEqual(guard, {
    on: "cManager",
    do: "getPageParameters",
    with: { pageIdent: "12" },
    expect: { is: "PM1000" },
  });
});

test("publishing with all rights checks in, approves and publishes", () => {
  const calls = workflowBatch(page, ["checkIn", "approve", "publish"]);
  assert.equal(told(calls), "getPageParameters checkIn approvePage publishPage");
  assert.deepEqual(calls[2]?.with, { pageIdent: "12", state: 1 });
});

test("a page that was never saved is read and saved unchanged before it is approved", () => {
  assert.equal(
    told(workflowBatch(page, ["saveSetup", "approve"])),
    "getPageParameters getPage savePageSetup approvePage",
  );
});

test("an empty title stays empty, although reading gives a word in its place", () => {
  const calls = workflowBatch({ ...page, title: "" }, ["saveSetup"]);
  assert.equal(told(calls), "getPageParameters getPage set pgTitle savePageSetup");
  assert.equal(calls[2]?.to, "");
});

test("the place where a batch stopped tells the step", () => {
  const steps = ["checkIn", "saveSetup", "approve"] as const;
  assert.deepEqual(
    [0, 1, 2, 3, 4, 5].map((place) => stepAt(page, steps, place)),
    [undefined, "checkIn", "saveSetup", "saveSetup", "approve", undefined],
  );
});

test("each answer of publishing has its meaning, and 0 means removed for a mark", () => {
  assert.deepEqual(
    ["0", "1", "2", "3", "4", "-1"].map((answer) => publishOutcome(answer, false)),
    ["off", "published", "later", "folder", "system", undefined],
  );
  assert.equal(publishOutcome("0", true), "removed");
});

test("switching and marking know their way back", () => {
  assert.deepEqual(switchOnOff("12", false, true).undoes.with, { pageIdent: "12", onOff: "on", cascading: true });
  assert.deepEqual(mark("12", true).undoes.with, { pageIdent: "12", state: 0 });
});
