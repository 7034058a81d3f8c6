import assert from "node:assert/strict";
import { test } from "node:test";
import { callOf, fileLink } from "./page-calls";

test("links to pages are read in each of their forms", () => {
  const page = { kind: "page", page: "12" };
  for (const href of [
    "javascript:top.page('12')",
    'javascript:top.page("12","bg.en.01")',
    "javascript:window.top.page('12','bg.en.01')",
    "page(12)",
    "PAGE('12')",
    "/tvx.asp?pageId=12",
    "tvx.asp?a=1&pageId=12",
  ]) {
    assert.deepEqual(callOf(href), page, href);
  }
});

test("documents and other addresses are read with what is escaped in them", () => {
  assert.deepEqual(callOf("javascript:top.popup('/documents/bg/plan.pdf','Anna\\'s plan')"), {
    kind: "file",
    path: "/documents/bg/plan.pdf",
    title: "Anna's plan",
  });
  assert.deepEqual(callOf("javascript:top.viewLink('https://example.org/?a=\\x3cb\\u003e')"), {
    kind: "link",
    address: "https://example.org/?a=<b>",
  });
  assert.deepEqual(callOf("javascript:top.viewLink('https://example.org/?a=(1)')"), {
    kind: "link",
    address: "https://example.org/?a=(1)",
  });
  assert.deepEqual(callOf("javascript:top.popup('a%20b.pdf','%C3%A9')"), {
    kind: "file",
    path: "a%20b.pdf",
    title: "%C3%A9",
  });
  assert.deepEqual(callOf("file(001/plan.pdf)"), { kind: "file", path: "001/plan.pdf", title: "" });
});

test("the handles of a body are read", () => {
  assert.deepEqual(callOf("javascript:top.link.editBody('bg.en.01',2)"), {
    kind: "editBody",
    nodeId: "bg.en.01",
    bodyId: 2,
  });
  assert.deepEqual(callOf("javascript:top.link.setupBody('bg.en.01',2,1,0)"), {
    kind: "setupBody",
    nodeId: "bg.en.01",
    bodyId: 2,
    bodyType: 1,
    feedId: 0,
  });
});

test("what is no such call is nothing", () => {
  for (const href of [
    "javascript:alert(1)",
    "javascript:top.page('1');alert(2)",
    "javascript:top.page(document.cookie)",
    "javascript:top.page('12'",
    "window.status=top.torvex_empty;return true;",
    "top.page('12')",
    "javascript:top.page('1'+'2')",
    "javascript:top.constructor('x')",
    "data:text/html,x",
    "#top",
    "",
    "javascript:top.page()",
  ]) {
    assert.equal(callOf(href), null, href);
  }
});

test("a document of another website is named with its site", () => {
  assert.equal(fileLink("001/a.pdf", "ri", "bg"), "file(ri/001/a.pdf)");
  assert.equal(fileLink("001/a.pdf", "bg", "bg"), "file(001/a.pdf)");
});
