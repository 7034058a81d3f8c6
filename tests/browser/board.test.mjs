import assert from "node:assert/strict";
import { describe, test } from "node:test";
import { faultsOf, servedDemo } from "./support.mjs";

const boards = { "bg/en": 331, "bg/de": 332, "ri/en": 333, "ri/de": 334 };
const homes = [1, 101, 201, 301];

const brokenPictures = (page) => page.evaluate(async () => {
  const pictures = [...document.images];
  for (const picture of pictures) picture.loading = "eager";
  await Promise.all(pictures.map((picture) => picture.decode().catch(() => {})));
  return pictures.filter((picture) => picture.naturalWidth === 0).map((picture) => picture.outerHTML);
});

describe("the message board", () => {
  const site = servedDemo();

  const open = async (page, address) => {
    const answer = await page.goto(`${site.address}${address}`);
    assert.equal(answer.status(), 200, address);
    return page;
  };
  const withoutScripts = async () => {
    const context = await site.browser.newContext({ javaScriptEnabled: false });
    return context.newPage();
  };
  const categories = () => site.query("select msgB_site || '/' || msgB_lang as tree, msgB_catId from TORVEX_MSGB_CATEGORIES_LIVE")
    .map(({ tree, msgB_catId }) => `/torvex_msgBoard/?pageId=${boards[tree]}&cat=${msgB_catId}`);

  test("is reached from its page and walked without scripts", async () => {
    const page = await withoutScripts();
    await open(page, "/tvx.asp?pageId=331");
    assert.match(page.url(), /\/torvex_msgBoard\/\?pageId=331/);
    await page.getByRole("link", { name: "In flower now" }).click();
    assert.match(page.url(), /cat=01\.01/);
    assert.equal(await page.locator(".board-item").count(), 3);
    await page.getByRole("link", { name: "Page 2", exact: true }).click();
    assert.equal(await page.locator(".board-item").count(), 2);
    assert.match(await page.locator(".board-pages [aria-current]").innerText(), /^Page\s+2$/);
    await page.getByRole("link", { name: "archive" }).click();
    await page.getByText("Winter aconite under the old lime").waitFor();
    await page.getByRole("link", { name: "current" }).click();
    assert.equal(await page.locator(".board-item").count(), 3);
    await page.getByRole("link", { name: "Garden news" }).click();
    assert.equal(await page.locator(".board-categories a").count(), 5);
  });

  test("is walked by the keyboard", async () => {
    const page = await open(await site.browser.newPage(), "/torvex_msgBoard/?pageId=331");
    const link = page.getByRole("link", { name: "Walks and workshops" });
    for (let i = 0; i < 60 && !(await link.evaluate((element) => element === document.activeElement)); ++i)
      await page.keyboard.press("Tab");
    await Promise.all([page.waitForURL(/cat=01\.02/), page.keyboard.press("Enter")]);
    await page.getByRole("heading", { name: "Pruning old apple trees" }).waitFor();
  });

  test("brings the function that scripts call for a category", async () => {
    const page = await open(await site.browser.newPage(), "/torvex_msgBoard/?pageId=333");
    await Promise.all([page.waitForURL(/cat=01\.03/), page.evaluate(() => window.viewCat("01.03"))]);
    await page.getByText("The fern of 1907").waitFor();
  });

  test("shows every picture that it names", async () => {
    const page = await site.browser.newPage();
    for (const address of categories()) {
      await open(page, address);
      assert.deepEqual(await brokenPictures(page), [], address);
    }
  });

  test("has no findings of axe and no sideways scrolling in any category, light or dark", async () => {
    const faults = [];
    for (const colorScheme of ["light", "dark"]) {
      const page = await site.browser.newPage({ viewport: { width: 360, height: 740 }, colorScheme });
      for (const address of categories()) {
        await open(page, address);
        faults.push(...await faultsOf(page, `${address} ${colorScheme}`));
      }
      await page.close();
    }
    assert.deepEqual(faults, []);
  });

  test("feeds the newsflashes of the home pages, which have no findings either", async () => {
    const faults = [];
    for (const width of [360, 1280]) {
      const page = await site.browser.newPage({ viewport: { width, height: 800 } });
      for (const pageId of homes) {
        await open(page, `/tvx.asp?pageId=${pageId}`);
        assert.ok(await page.locator("[aria-labelledby=newsflash-1] .card").count() >= 2, `page ${pageId}`);
        assert.ok(await page.locator("[aria-labelledby=newsflash-2] li").count() >= 3, `page ${pageId}`);
        assert.deepEqual(await brokenPictures(page), [], `page ${pageId}`);
        faults.push(...await faultsOf(page, `page ${pageId}`));
      }
      await page.close();
    }
    assert.deepEqual(faults, []);
  });
});
