import assert from "node:assert/strict";
import { test } from "node:test";
import { aboveOf, cellOf, EMPTY, type MetaLine, pagesFrom, withCell } from "./meta-sheet";

const line = (pageId: number, nodeId: string, tag: number, value: string, inherited = 0): MetaLine => ({
  pageId,
  nodeId,
  title: `Page ${pageId}`,
  tag,
  value,
  inherited,
});

const pages = pagesFrom([
  line(1, "bg.en", 7, "A garden"),
  line(1, "bg.en", 8, "garden"),
  line(2, "bg.en.01", 7, "A garden", 1),
  line(3, "bg.en.01.01", 7, "A garden", 1),
  line(4, "bg.en.02", 0, ""),
]);

test("each page comes once, with what it has of its own apart from what it inherits", () => {
  assert.deepEqual(
    pages.map(({ pageId }) => pageId),
    [1, 2, 3, 4],
  );
  assert.deepEqual(cellOf(pages[0]!, 8), { value: "garden", inherited: false, above: "" });
  assert.deepEqual(cellOf(pages[1]!, 7), { value: "", inherited: true, above: "A garden" });
  assert.deepEqual(cellOf(pages[3]!, 7), EMPTY);
  assert.equal(cellOf(pagesFrom([line(1, "bg.en", 7, "one\rtwo\r\nthree")])[0]!, 7).value, "one\ntwo\nthree");
});

test("what is inherited follows a change above it", () => {
  const changed = withCell(pages, 2, 7, { value: "Roses", inherited: false, above: "" });
  assert.equal(aboveOf(changed, changed[2]!, 7), "Roses");
  assert.equal(aboveOf(pages, pages[2]!, 7), "A garden");
  assert.equal(aboveOf(pages, pages[3]!, 7), "A garden");
  assert.equal(aboveOf(pages, pages[0]!, 7), "");
});

test("where a page above isn't known, what was told holds", () => {
  const alone = pagesFrom([line(3, "bg.en.01.01", 7, "A garden", 1)]);
  assert.equal(aboveOf(alone, alone[0]!, 7), "A garden");
});

test("a cell that says nothing is none", () => {
  const changed = withCell(pages, 1, 7, EMPTY);
  assert.equal(changed[0]!.cells.has(7), false);
  assert.equal(aboveOf(changed, changed[1]!, 7), "");
});
