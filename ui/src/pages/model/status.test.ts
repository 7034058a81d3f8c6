import assert from "node:assert/strict";
import { test } from "node:test";
import { readRights, readStatus, stateOf } from "./status";

test("a page's parameters are type, edit, lock, delete and approve status and whether another holds it", () => {
  assert.deepEqual(readStatus("AM1010"), {
    kind: "A",
    edit: "M",
    held: true,
    heldByOther: false,
    marked: false,
    approved: true,
  });
});

test("parameters of a page that isn't there are nothing", () => {
  assert.equal(readStatus(""), undefined);
  assert.equal(readStatus("PM10"), undefined);
});

test("rights are on and off, move, publish, approve, edit", () => {
  assert.deepEqual(readRights("10010"), { onOff: true, move: false, publish: false, approve: true, edit: false });
  assert.equal(readRights("").edit, false);
});

for (const [parameters, state] of [
  ["PN0000", "new"],
  ["PM1000", "changed"],
  ["PM0010", "approved"],
  ["PP0100", "marked"],
  ["PP0110", "marked"],
  ["PP0000", "live"],
] as const)
  test(`${parameters} is ${state}`, () => {
    const status = readStatus(parameters);
    assert.ok(status);
    assert.equal(stateOf(status), state);
  });
