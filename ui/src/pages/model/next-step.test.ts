import assert from "node:assert/strict";
import { test } from "node:test";
import { mayTakeBack, type NextStep, nextStep, onceSaved } from "./next-step";
import { readRights, readStatus } from "./status";

function offered(parameters: string, rights: string): NextStep {
  const status = readStatus(parameters);
  assert.ok(status);
  return nextStep(status, readRights(rights));
}

const told = (parameters: string, rights: string): string => {
  const step = offered(parameters, rights);
  return `${step.goal}: ${step.steps.join(" ")}${step.stop ? ` (${step.stop})` : ""}`;
};

const ALL = "11111";
const EDIT = "00001";
const EDIT_APPROVE = "00011";
const APPROVE = "00010";
const PUBLISH = "00100";
const APPROVE_PUBLISH = "00110";
const NOTHING = "00000";

for (const [parameters, rights, expected] of [
  // Changed and held by the reader: as far as the rights go.
  ["PM1000", ALL, "publish: checkIn approve publish"],
  ["PM1000", EDIT, "checkIn: checkIn"],
  ["PM1000", EDIT_APPROVE, "approve: checkIn approve"],
  ["PM1000", NOTHING, "none:  (noRight)"],
  // Changed and free.
  ["PM0000", ALL, "publish: approve publish"],
  ["PM0000", APPROVE, "approve: approve"],
  ["PM0000", APPROVE_PUBLISH, "publish: approve publish"],
  ["PM0000", EDIT, "edit:  (waitsForApproval)"],
  ["PM0000", PUBLISH, "none:  (waitsForApproval)"],
  // Held by another, whatever the rights.
  ["PM1001", ALL, "none:  (held)"],
  ["PN1001", EDIT, "none:  (held)"],
  // Approved.
  ["PM0010", ALL, "publish: publish"],
  ["PM0010", PUBLISH, "publish: publish"],
  ["PM0010", EDIT_APPROVE, "none:  (waitsForPublishing)"],
  // Never saved: the setup is saved first, which needs the right to edit.
  ["PN0000", ALL, "publish: saveSetup approve publish"],
  ["PN1000", ALL, "publish: checkIn saveSetup approve publish"],
  ["PN1000", EDIT_APPROVE, "approve: checkIn saveSetup approve"],
  ["PN0000", APPROVE_PUBLISH, "none:  (waitsForApproval)"],
  ["PN0000", EDIT, "edit:  (waitsForApproval)"],
  // Marked: its removal is approved and published, even where it was never changed or saved.
  ["PP0100", ALL, "remove: approve publish"],
  ["PN0100", APPROVE_PUBLISH, "remove: approve publish"],
  ["PP0100", APPROVE, "approve: approve"],
  ["PM0110", PUBLISH, "remove: publish"],
  ["PM0110", APPROVE, "none:  (waitsForPublishing)"],
  ["PP0100", EDIT, "edit:  (waitsForApproval)"],
  // Nothing to do.
  ["PP0000", ALL, "edit: "],
  ["PP1000", ALL, "checkIn: checkIn"],
  ["PP0000", APPROVE_PUBLISH, "none:  (nothing)"],
  ["FM0000", ALL, "publish: approve publish"],
] as const)
  test(`${parameters} with ${rights} offers ${expected}`, () => assert.equal(told(parameters, rights), expected));

for (const [parameters, rights, expected] of [
  ["PP0000", ALL, "publish"],
  ["PP1000", ALL, "publish"],
  ["PP1000", EDIT_APPROVE, "approve"],
  ["PP0000", EDIT, "checkIn"],
  ["PP0100", ALL, "publish"],
  ["PP1001", ALL, "none"],
  ["PP0010", EDIT, "none"],
] as const)
  test(`${parameters} with ${rights} offers ${expected} while text of it is being typed`, () => {
    const status = readStatus(parameters) ?? assert.fail();
    assert.equal(nextStep(onceSaved(status), readRights(rights)).goal, expected);
  });

test("an approval is taken back by who may approve, and only where there is one", () => {
  const status = (parameters: string) => readStatus(parameters) ?? assert.fail();
  assert.equal(mayTakeBack(status("PM0010"), readRights(APPROVE)), true);
  assert.equal(mayTakeBack(status("PM0010"), readRights(EDIT)), false);
  assert.equal(mayTakeBack(status("PM0000"), readRights(ALL)), false);
});
