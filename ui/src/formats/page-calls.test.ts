import assert from "node:assert/strict";
import { test } from "node:test";
import { pageCallOf } from "./page-calls";

test("a link to a page names it", () => {
  assert.deepEqual(pageCallOf("javascript:top.page('12')"), { kind: "page", page: "12" });
  assert.deepEqual(pageCallOf(`javascript:top.page("12","bg.en.01")`), { kind: "page", page: "12" });
});

test("an address opens beside the interface", () => {
  assert.deepEqual(pageCallOf("javascript:top.viewLink('https://example.org/?a=(1)')"), {
    kind: "viewLink",
    address: "https://example.org/?a=(1)",
  });
  assert.deepEqual(pageCallOf("top.popup('/documents/bg/001/plan.pdf','Our plan, \\'26')"), {
    kind: "popup",
    address: "/documents/bg/001/plan.pdf",
    title: "Our plan, '26",
  });
});

test("a body is edited, set up or copied", () => {
  assert.deepEqual(pageCallOf("top.link.editBody('bg.en.01',2)"), { kind: "editBody", nodeId: "bg.en.01", bodyId: 2 });
  assert.deepEqual(pageCallOf("javascript:top.link.setupBody('bg.en.01',2,1,0)"), {
    kind: "setupBody",
    nodeId: "bg.en.01",
    bodyId: 2,
    type: "1",
    feed: "0",
  });
  assert.deepEqual(pageCallOf("top.content.nodeId='bg.en.01';top.content.bodyId=2;top.link.copyBody();"), {
    kind: "copyBody",
    nodeId: "bg.en.01",
    bodyId: 2,
  });
});

test("anything else is nothing to act on", () => {
  for (const script of ["", "alert(1)", "window.status=top.torvex_empty;return true;", "top.page('12'"]) {
    assert.equal(pageCallOf(script), null);
  }
});
