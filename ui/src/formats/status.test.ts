import assert from "node:assert/strict";
import { test } from "node:test";
import { editFlagsOf, pageList, pagesIn, parametersOf, statusesOf, wordOf } from "./status";

test("four characters are the states of a page", () => {
  assert.deepEqual(statusesOf("M100"), { edit: "M", locked: true, marked: false, approved: false });
  assert.deepEqual(statusesOf("P011"), { edit: "P", locked: false, marked: true, approved: true });
});

test("a code is no state", () => {
  for (const code of ["-1", "-10", "-99", "", "0", "X000", "M1000"]) assert.equal(statusesOf(code), null);
});

test("six characters add the type and who holds it", () => {
  const page = parametersOf("PM1001");
  assert.deepEqual(page, { type: "P", edit: "M", locked: true, marked: false, approved: false, heldByOther: true });
  assert.equal(parametersOf("PN0000")?.heldByOther, false);
  assert.equal(parametersOf(""), null);
});

test("a mark counts more than an approval, and that more than a change", () => {
  const word = (edit: string, marked: boolean, approved: boolean) => wordOf({ edit, marked, approved });
  assert.equal(word("M", true, true), "marked");
  assert.equal(word("M", false, true), "approved");
  assert.equal(word("M", false, false), "changed");
  assert.equal(word("N", false, false), "new");
  assert.equal(word("P", false, false), "live");
});

test("five flags are the edit rights", () => {
  assert.deepEqual(editFlagsOf("10001"), { onOff: true, move: false, publish: false, approve: false, edit: true });
  assert.deepEqual(Object.values(editFlagsOf("00000")), [false, false, false, false, false]);
});

test("a list of pages comes back without the empty ones", () => {
  assert.equal(pageList([12, "bg.en.01"]), "12,bg.en.01");
  assert.deepEqual(pagesIn("12,,15"), ["12", "15"]);
  assert.deepEqual(pagesIn(""), []);
});
