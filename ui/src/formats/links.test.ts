import assert from "node:assert/strict";
import { test } from "node:test";
import { targetOf } from "./links";

test("a page is named by its number or its node, with or without quotes", () => {
  assert.deepEqual(targetOf("page(12)"), { kind: "page", page: "12" });
  assert.deepEqual(targetOf(`page("bg.en.01")`), { kind: "page", page: "bg.en.01" });
  assert.deepEqual(targetOf("PAGE('12')"), { kind: "page", page: "12" });
});

test("a file is one of this site, or of another when its code stands ahead", () => {
  assert.deepEqual(targetOf("file(001/plan.pdf)"), { kind: "file", site: "", path: "001/plan.pdf" });
  assert.deepEqual(targetOf("file(ri/001/plan.pdf)"), { kind: "file", site: "ri", path: "001/plan.pdf" });
  assert.deepEqual(targetOf("file(The plan)"), { kind: "file", site: "", path: "The plan" });
});

test("everything else is an address, or nothing yet", () => {
  assert.deepEqual(targetOf("https://example.org/"), { kind: "address", address: "https://example.org/" });
  assert.deepEqual(targetOf("page(12"), { kind: "address", address: "page(12" });
  assert.deepEqual(targetOf(""), { kind: "open" });
});
