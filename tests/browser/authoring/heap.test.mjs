// A day of many pages leaves nothing behind in the browser: a part of what bench/authors.sh measures on a large site.
import assert from "node:assert/strict";
import { describe, test } from "node:test";
import { servedAuthors } from "./door.mjs";
import { heapOf, openById } from "./watch.mjs";
import { workAs } from "./workplace.mjs";

const pages = [4, 7, 8, 9, 11, 12, 13, 14, 18, 19];

describe("pages opened one after another", () => {
  const site = servedAuthors();

  test("leave no memory and no listeners behind", async (t) => {
    const work = await workAs(site, "iris");
    await work.openPage(pages[0]);
    const heap = await heapOf(work.page);
    const round = async () => {
      for (const pageId of pages) await openById(work.page, pageId);
    };
    await round();
    await round();
    const before = await heap();
    for (let i = 0; i < 3; ++i) await round();
    const after = await heap();
    const grown = (after.used - before.used) / 1024 / 1024;
    t.diagnostic(`30 pages: ${grown.toFixed(2)} MB (goal 20 in 500), ${after.nodes - before.nodes} nodes, ${after.jsEventListeners - before.jsEventListeners} listeners`);
    assert.ok(grown < 1.2, `${grown} MB`);
    // Those of a page that is shown may be those of a longer one.
    assert.ok(after.jsEventListeners - before.jsEventListeners < 100);
    assert.deepEqual(work.faults, []);
    await work.close();
  });
});
