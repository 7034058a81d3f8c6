import assert from "node:assert/strict";
import { test } from "node:test";
import { csvText, dividerOf, readCsv, textOf, unmarked } from "./csv";

const cellsOf = (text: string) => readCsv(text).lines.map(({ cells }) => cells);

test("cells are quoted where they must be, and formulas are marked as texts", () => {
  assert.equal(
    csvText([
      ["a", 'b "c"', "d,e", "f\ng", -1],
      ["=1+1", "-1", "@a", "+a", "a-b"],
    ]),
    'a,"b ""c""","d,e","f\ng",-1\r\n\'=1+1,\'-1,\'@a,\'+a,a-b\r\n',
  );
  assert.deepEqual(["'=1+1", "'-1", "'quoted'", "it's"].map(unmarked), ["=1+1", "-1", "'quoted'", "it's"]);
});

test("a table comes back as it was written", () => {
  const rows = [
    ["1", 'He said "no"', "two\r\nlines", ""],
    ["2", "ä,ö;ü\t€", "'", " blank "],
  ];
  assert.deepEqual(cellsOf(csvText(rows)), rows);
});

test("lines know where they stand, whatever ends them", () => {
  const { lines, openQuote } = readCsv('a,"b\nb"\r\n\r\nc,d\re,f\n');
  assert.deepEqual(
    lines.map(({ line, cells }) => [line, ...cells]),
    [
      [1, "a", "b\nb"],
      [4, "c", "d"],
      [5, "e", "f"],
    ],
  );
  assert.equal(openQuote, 0);
  assert.equal(readCsv('a,b\nc,"d').openQuote, 2);
  assert.deepEqual(cellsOf("a,"), [["a", ""]]);
});

test("the sign that divides is the first line's", () => {
  assert.equal(dividerOf('"a;b;c",d\n;;;'), ",");
  assert.equal(dividerOf("a;b"), ";");
  assert.equal(dividerOf("1;Yes, please"), ";");
  assert.equal(dividerOf("a\tb,c\td"), "\t");
  assert.equal(dividerOf(""), ",");
});

test("a file is read by its mark, or in the encoding that is told", () => {
  const bytes = (...numbers: number[]) => Uint8Array.from(numbers);
  assert.equal(textOf(bytes(0xef, 0xbb, 0xbf, 0xc3, 0xa4)), "ä");
  assert.equal(textOf(bytes(0xff, 0xfe, 0xe4, 0)), "ä");
  assert.equal(textOf(bytes(0xfe, 0xff, 0, 0xe4), "windows-1252"), "ä");
  assert.equal(textOf(bytes(0xe4), "windows-1252"), "ä");
  assert.throws(() => textOf(bytes(0xe4)));
});

test("100,000 lines are read in a moment", () => {
  const text = csvText(Array.from({ length: 100_000 }, (_, at) => [at, `word "${at}"`, "Wort,\nzwei"]));
  const began = performance.now();
  assert.equal(readCsv(text).lines.length, 100_000);
  assert.ok(performance.now() - began < 3000);
});
