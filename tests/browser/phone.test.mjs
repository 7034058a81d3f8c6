import assert from "node:assert/strict";
import { describe, test } from "node:test";
import { servedDemo, setting } from "./support.mjs";

// Runs in the page. What a keyboard can't come to, or to something in it, it can't scroll.
function faultsOfWidth() {
  const faults = [];
  const tooWide = document.documentElement.scrollWidth - window.innerWidth;
  if (tooWide > 0) faults.push(`${tooWide} pixels too wide`);
  for (const element of document.querySelectorAll("body *")) {
    const scrolls = /auto|scroll/.test(getComputedStyle(element).overflowX) && element.scrollWidth > element.clientWidth;
    if (!scrolls) continue;
    const reachable = [element, ...element.querySelectorAll("a[href], area[href], button, input, select, textarea, [tabindex]")];
    if (!reachable.some((candidate) => candidate.tabIndex >= 0)) faults.push(`${element.outerHTML.slice(0, 60)} is out of reach`);
  }
  return faults;
}

describe("a visitor with a small phone", () => {
  // Without groups, so that each page shows itself.
  const site = servedDemo([setting("torvex_extranet", 0)]);

  test("needs no sideways scrolling on any page, and reaches all that scrolls by the keyboard", async () => {
    const page = await site.browser.newPage({ viewport: { width: 360, height: 740 } });
    const pages = site.query("select pageId from TORVEX_PAGES_LIVE where type <> 'F' order by pageId");
    assert.ok(pages.length > 50, `only ${pages.length} pages`);
    const faults = [];
    for (const { pageId } of pages) {
      const answer = await site.open(page, pageId);
      if (!answer.headers()["content-type"].includes("html")) continue;
      faults.push(...(await page.evaluate(faultsOfWidth)).map((fault) => `page ${pageId}: ${fault}`));
    }
    assert.deepEqual(faults, []);
  });
});
