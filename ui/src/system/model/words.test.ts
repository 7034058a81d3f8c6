import assert from "node:assert/strict";
import { test } from "node:test";
import { csvText, readCsv } from "./csv";
import { hasSamePlaces, importOf, isMissing, placesIn, tablesOf, type Word } from "./words";

const known: Word[] = [
  { label: 1, english: "OK", word: "" },
  { label: 2, english: "Cancel", word: "Annuler" },
  { label: 3, english: "= {count} pages", word: "" },
  { label: 4, english: "", word: "" },
];

test("a word is missing where English has one", () => {
  assert.deepEqual(known.map(isMissing), [true, false, true, false]);
});

test("places have to be those of the English word", () => {
  assert.deepEqual(placesIn("{b} of {a}, {b}"), ["a", "b"]);
  const word = (text: string) => hasSamePlaces({ label: 3, english: "{count} pages", word: text });
  assert.deepEqual(
    [word("{count} pages"), word(""), word("{nombre} pages"), word("pages")],
    [true, true, false, false],
  );
});

test("a table as it was saved changes what its translator filled in", () => {
  const table = csvText([
    ["label", "english", "text"],
    [1, "OK", "D'accord"],
    [2, "Cancel", "Annuler"],
    [3, "= {count} pages", "= {count} pages"],
    [4, "", ""],
  ]);
  const plan = importOf(known, readCsv(table));
  assert.deepEqual([plan.added, plan.changed, plan.same, plan.bad], [2, 0, 2, []]);
  assert.deepEqual(
    [...plan.changes],
    [
      [1, "D'accord"],
      [3, "= {count} pages"],
    ],
  );
});

test("lines that can't be taken are told by their numbers", () => {
  const plan = importOf(known, readCsv('1;Oui\n\n2;"Non;\nmerci"\nx;y\n99;Rien\n3\n1;Bon\n4;"'));
  assert.deepEqual(plan.bad, [
    { line: 5, why: "cells" },
    { line: 6, why: "unknown" },
    { line: 7, why: "cells" },
    { line: 9, why: "quote" },
  ]);
  assert.deepEqual(
    [...plan.changes],
    [
      [1, "Bon"],
      [2, "Non;\nmerci"],
    ],
  );
  assert.deepEqual([plan.added, plan.changed], [1, 1]);
});

test("an empty word takes none away", () => {
  assert.deepEqual([...importOf(known, readCsv("2,\n1,")).changes], []);
});

test("what is sent comes in pieces", () => {
  const changes = new Map(Array.from({ length: 3000 }, (_, at) => [at, `"${"w".repeat(300)}`]));
  const tables = tablesOf(changes);
  assert.equal(tables.length, 3);
  assert.deepEqual(
    new Map(tables.flatMap((table) => readCsv(table, ",").lines.map(({ cells }) => [Number(cells[0]), cells[1]!]))),
    changes,
  );
  assert.deepEqual(tablesOf(new Map()), []);
});

test("100,000 lines are compared in a moment", () => {
  const table = readCsv(csvText(Array.from({ length: 100_000 }, (_, at) => [at, "x"])));
  const began = performance.now();
  assert.equal(importOf(known, table).bad.length, 99_996);
  assert.ok(performance.now() - began < 2000);
});
