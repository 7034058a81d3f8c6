import assert from "node:assert/strict";
import { test } from "node:test";
import {
  changedFields,
  changedMeta,
  faultsOf,
  fieldOfCode,
  fromDateField,
  groupsText,
  isDay,
  lostBodies,
  newPageBatch,
  newPageValues,
  SETUP_FIELDS,
  saveWord,
  setupBatch,
  titleBatch,
  toDateField,
  toggleGroup,
} from "./setup";

const values = newPageValues("Autumn walks", "P");

test("each code of saving that concerns a field stands at that field", () => {
  const fields = Object.fromEntries(
    ["-21", "-22", "-23", "-24", "-25", "-26", "-27", "-28", "-29", "-30", "-32", "-33", "-34", "-35"].map((code) => [
      code,
      fieldOfCode(code),
    ]),
  );
  assert.deepEqual(fields, {
    "-21": "pgTitle",
    "-22": "pgType",
    "-23": "pgTemplateId",
    "-24": "pgAppId",
    "-25": "pgBaseTemplateId",
    "-26": "pgStylesheetId",
    "-27": "pgPrevious",
    "-28": "pgNext",
    "-29": "pgUp",
    "-30": "pgLoginPage",
    "-32": "pgOnlineFrom",
    "-33": "pgOnlineTo",
    "-34": "pgTemplateId",
    "-35": "pgAppSystemFolder",
  });
});

test("codes that concern the whole page have no field", () => {
  for (const code of ["-1", "-2", "-4", "-5", "-6", "-10", "-20", "-99", "0"])
    assert.equal(fieldOfCode(code), undefined);
});

test("one batch reads the page, holds it against what was seen, sets every field, saves, and saves meta data", () => {
  const calls = setupBatch({
    pageIdent: "12",
    loaded: { pgTitle: "Walks" },
    values,
    meta: [{ id: 3, name: "description", value: "Every Sunday", inherited: false }],
  });
  assert.deepEqual(calls[0], { on: "cManager", do: "getPage", with: { pageIdent: "12", mode: "D" } });
  assert.deepEqual(calls[1], { on: "cManager", get: ["pgTitle"], expect: { is: { pgTitle: "Walks" } } });
  assert.deepEqual(
    calls.slice(2, 2 + SETUP_FIELDS.length).map((call) => call.set),
    [...SETUP_FIELDS],
  );
  assert.equal(calls.at(-2)?.do, "savePageSetup");
  assert.deepEqual(calls.at(-1)?.with, {
    pageIdent: "12",
    metaIdent: "3",
    metaDataValue: "Every Sunday",
    inherited: false,
  });
  assert.ok(calls.length <= 100);
});

test("a title of 51 characters is told before it is cut, counted in characters", () => {
  assert.deepEqual(faultsOf({ ...values, pgTitle: "😀".repeat(50) }), []);
  assert.deepEqual(faultsOf({ ...values, pgTitle: "x".repeat(51) }), [{ field: "pgTitle", kind: "titleTooLong" }]);
});

test("days that aren't on the calendar, and an end before the beginning, are told", () => {
  assert.deepEqual(faultsOf({ ...values, pgOnlineFrom: "20260230" }), [{ field: "pgOnlineFrom", kind: "noDate" }]);
  assert.deepEqual(faultsOf({ ...values, pgOnlineFrom: "20260502", pgOnlineTo: "20260501" }), [
    { field: "pgOnlineTo", kind: "order" },
  ]);
  assert.deepEqual(faultsOf({ ...values, pgOnlineFrom: "20260501", pgOnlineTo: "20260501" }), []);
});

test("days go to date fields and back", () => {
  assert.equal(toDateField("20260503"), "2026-05-03");
  assert.equal(fromDateField("2026-05-03"), "20260503");
  assert.equal(toDateField(""), "");
  assert.equal(toDateField("99999999"), "");
  assert.equal(isDay("20240229"), true);
  assert.equal(isDay("20250229"), false);
});

test("an application page without an application is told", () => {
  assert.deepEqual(faultsOf({ ...values, pgType: "A" }), [{ field: "pgAppId", kind: "noApplication" }]);
});

test("what changed is told by field and by meta tag", () => {
  assert.deepEqual(changedFields(values, { ...values, pgUp: 4, pgTitle: "Walks" }), ["pgTitle", "pgUp"]);
  const tag = { id: 1, name: "author", value: "Basil", inherited: false };
  assert.deepEqual(changedMeta([tag], [tag]), []);
  assert.deepEqual(changedMeta([tag], [{ ...tag, inherited: true }]), [{ ...tag, inherited: true }]);
});

test("inherited and everybody stand alone among the groups", () => {
  assert.deepEqual(toggleGroup([2, 3], 1, true), [1]);
  assert.deepEqual(toggleGroup([0], 4, true), [4]);
  assert.deepEqual(toggleGroup([2, 3], 3, false), [2]);
  assert.equal(groupsText([7, 2]), "2,7");
  assert.equal(groupsText([0, 7]), "0");
  assert.equal(groupsText([]), "");
});

test("bodies behind the template's last place are lost, and all of a page that has none", () => {
  assert.deepEqual(lostBodies("P", 2, [1, 2, 3, 4]), [3, 4]);
  assert.deepEqual(lostBodies("F", 2, [1, 2]), [1, 2]);
  assert.deepEqual(lostBodies("P", -1, [1, 2]), []);
});

test("the button tells what saving takes back", () => {
  assert.deepEqual(
    [saveWord(false, false), saveWord(true, false), saveWord(false, true), saveWord(true, true)],
    ["save", "saveWithdraws", "saveUnmarks", "saveUnmarks"],
  );
});

test("a new page inherits its looks and readers, and is put in front of a sibling", () => {
  const calls = newPageBatch("bg", "en", { parent: "bg.en.03", before: "17" }, newPageValues("  Seed swap ", "P"));
  assert.deepEqual(calls.at(-1)?.with, { site: "bg", lang: "en", parentIdent: "bg.en.03", insertIdent: "17" });
  const set = Object.fromEntries(calls.slice(0, -1).map((call) => [call.set, call.to]));
  assert.equal(set["pgTitle"], "Seed swap");
  assert.equal(set["pgTemplateId"], 0);
  assert.equal(set["pgGroups"], "0");
});

test("a title goes alone, if it is still the one that was seen", () => {
  const [read, seen, set, save] = titleBatch("12", "", " Walks ");
  assert.deepEqual(read?.with, { pageIdent: "12", mode: "D" });
  assert.deepEqual([seen?.get, seen?.expect], [["pgTitle"], { is: { pgTitle: "[no title]" } }]);
  assert.deepEqual([set?.set, set?.to], ["pgTitle", "Walks"]);
  assert.deepEqual([save?.do, save?.with], ["savePageSetup", { pageIdent: "12" }]);
});
