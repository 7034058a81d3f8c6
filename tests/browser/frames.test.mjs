import assert from "node:assert/strict";
import { describe, test } from "node:test";
import { sendLogin, servedDemo, setting } from "./support.mjs";

describe("a site in frames mode", () => {
  const site = servedDemo([setting("torvex_frames", 1)]);
  let page;
  const inner = () => page.frameLocator("#page");

  test("shows its pages within the frame set and follows links there", async () => {
    page = await site.browser.newPage({ viewport: { width: 1280, height: 900 } });
    await page.goto(site.address);
    assert.equal(new URL(page.url()).pathname, "/frameset.asp");
    await inner().getByRole("link", { name: "The garden" }).first().click();
    await inner().locator("h1", { hasText: "The garden" }).waitFor();
    await page.waitForURL(/frameset\.asp\?pageId=7$/);
    assert.match(await page.title(), /The garden/);
    assert.equal(await page.evaluate(() => window.torvex_empty), "");
  });

  test("keeps the page when the frame set is loaded again", async () => {
    await page.reload();
    await inner().locator("h1", { hasText: "The garden" }).waitFor();
  });

  test("logs in within the frame set", async () => {
    await page.goto(`${site.address}/frameset.asp?pageId=41`);
    await sendLogin(inner(), "flora", "orchid");
    await inner().locator("h1", { hasText: "Friends’ corner" }).waitFor();
    assert.equal(new URL(page.url()).pathname, "/frameset.asp");
  });
});
