import assert from "node:assert/strict";
import { test } from "node:test";
import { isClosed, sitemapOf } from "./sitemap";

const one = (text: string) => sitemapOf(text)[0]!;

test("a record is a page with its place, states and title", () => {
  assert.deepEqual(one("12#bg.en.03.01#2#Paper gardens#0PM100#1#[*idem*]#0P002###"), {
    pageId: 12,
    nodeId: "bg.en.03.01",
    depth: 2,
    title: "Paper gardens",
    hasChildren: false,
    type: "P",
    edit: "M",
    locked: true,
    marked: false,
    approved: false,
    heldByOther: true,
    liveTitle: "Paper gardens",
    live: "outOfDates",
    state: "changed",
  });
});

test("records come in their order", () => {
  const nodes = sitemapOf("1#bg.en#0#Home#1PP000#0#[*idem*]#1P001###2#bg.en.01#1#Visit#1FP000#0#[*idem*]#1F003###");
  assert.deepEqual(
    nodes.map(({ pageId, depth, hasChildren }) => [pageId, depth, hasChildren]),
    [
      [1, 0, true],
      [2, 1, true],
    ],
  );
});

test("a title gets back its characters and its number signs", () => {
  assert.equal(
    one("1#bg.en#0#Fish &amp; chips -@-1 &lt;b&gt; caf&-@-233;#0PP000#0#[*idem*]#0P001###").title,
    "Fish & chips #1 <b> café",
  );
});

test("a page that visitors don't have has no live title", () => {
  const node = one("19#bg.en.06#1#Volunteering#0PN000#0#[*null*]# ###");
  assert.equal(node.liveTitle, null);
  assert.equal(node.live, "none");
  assert.equal(node.state, "new");
});

test("another live title is kept", () => {
  assert.equal(one("19#bg.en.06#1#Autumn walks#0PM000#0#Walks -@-2#0P001###").liveTitle, "Walks #2");
});

test("the live state is off, on, out of its dates or a folder's", () => {
  const live = (digit: string) => one(`1#bg.en#0#Home#0PP000#0#[*idem*]#0P00${digit}###`).live;
  assert.deepEqual(["0", "1", "2", "3"].map(live), ["off", "on", "outOfDates", "folder"]);
});

test("a website that is closed has no pages", () => {
  assert.ok(isClosed("-1"));
  assert.deepEqual(sitemapOf("-1"), []);
});

test("a website without pages has none", () => {
  assert.deepEqual(sitemapOf(""), []);
});
