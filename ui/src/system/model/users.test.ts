import assert from "node:assert/strict";
import { test } from "node:test";
import { readCsv } from "./csv";
import { lineIn, passwordsIn, piecesOf, twice } from "./users";

test("each piece has the line that names the columns, and knows where its lines stood", () => {
  const rows = Array.from({ length: 1100 }, (_, at) => `user${at};"a\nb"`);
  const pieces = piecesOf(readCsv(`username;lastname\n${rows.join("\n")}`));
  assert.deepEqual(
    pieces.map(({ lines }) => lines.length),
    [500, 500, 100],
  );
  const second = readCsv(pieces[1]!.table, ",").lines;
  assert.deepEqual(second[0]!.cells, ["username", "lastname"]);
  assert.deepEqual(second[1], { line: 2, cells: ["user500", "a b"] });
  assert.equal(lineIn(pieces[1]!, 2), 2 + 2 * 500);
  assert.equal(lineIn(pieces[0]!, 1), 1);
  assert.deepEqual(piecesOf(readCsv("")), []);
});

test("who stands in the file twice is told", () => {
  assert.deepEqual(twice(readCsv("lastname,username\nA,rose\nB,lily\nC, ROSE ")), [{ line: 4, username: " ROSE " }]);
  assert.deepEqual(twice(readCsv("name\nrose\nrose")), []);
});

test("passwords are told with all lines that give them", () => {
  const table = readCsv("username,Password\nrose,moss\nlily,\nfern, moss \niris,bark");
  assert.deepEqual(
    [...passwordsIn(table)],
    [
      ["moss", [2, 4]],
      ["bark", [5]],
    ],
  );
  assert.deepEqual([...passwordsIn(readCsv("username\nrose"))], []);
  assert.deepEqual([...passwordsIn(readCsv(""))], []);
});
