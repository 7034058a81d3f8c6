import assert from "node:assert/strict";
import { test } from "node:test";
import { rowsOf } from "./answer";
import { Problem } from "./problem";

test("a grid comes as its rows, by the names of its columns", () => {
  const columns = [
    { name: "pageId", type: "number" },
    { name: "title", type: "text" },
  ];
  assert.deepEqual(rowsOf({ columns, rows: [[12, "Walks"]] }), [{ pageId: 12, title: "Walks" }]);
  assert.deepEqual(rowsOf({ columns, rows: [] }), []);
});

test("anything else stays as it is", () => {
  for (const value of [null, "0", 3, true, []]) assert.equal(rowsOf(value), value);
});

test("a refusal is told by its operation and code, whatever type the code has", () => {
  const problem = new Problem({ status: 409, operation: "cManager.checkOut", code: -1, detail: "held" });
  assert.ok(problem.is("cManager.checkOut", "-1"));
  assert.ok(problem.is("cManager.checkOut"));
  assert.ok(!problem.is("cManager.checkOut", "-2"));
  assert.ok(!problem.is("cManager.saveBody", "-1"));
  assert.equal(problem.message, "held");
});
