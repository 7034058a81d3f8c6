import assert from "node:assert/strict";
import { before, beforeEach, describe, test } from "node:test";
import { findingsOfAxe, logIn, servedDemo, sidewaysScroll } from "./support.mjs";

const english = 381;
const german = 382;

describe("the search of the demo", () => {
  const site = servedDemo();
  let context;
  let page;
  const search = (words, pageId = english) =>
    page.goto(`${site.address}/torvex_search/search.asp?pageId=${pageId}&search_string=${encodeURIComponent(words)}`);
  const links = () => page.locator(".search-results h2 a").evaluateAll((all) => all.map((link) => link.href));
  const titles = () => page.locator(".search-results h2").allInnerTexts();
  const status = async () => (await page.getByRole("status").innerText()).replace(/\s+/g, " ").trim();

  // The catalogue is made in the background.
  before(async () => {
    for (let i = 0; i < 200; ++i) {
      const html = await (await fetch(`${site.address}/torvex_search/search.asp?pageId=${english}&search_string=snowdrops`)).text();
      if (html.includes("search-results")) return;
      await new Promise((resolve) => setTimeout(resolve, 100));
    }
    throw new Error("nothing is found");
  });
  const begin = async (options = {}) => {
    await context?.close();
    context = await site.browser.newContext({ viewport: { width: 1280, height: 900 }, ...options });
    page = await context.newPage();
  };
  beforeEach(() => begin());

  test("finds pages and marks the words", async () => {
    await search("snowdrop");
    assert.ok((await titles()).includes("Counting snowdrops"));
    assert.match(await status(), /^Results 1 to \d+ for “snowdrop”$/);
    assert.match(await page.locator(".search-results mark").first().innerText(), /^snowdrops?$/i);
    assert.match(await page.title(), /^snowdrop – /);
    await page.getByRole("link", { name: "Counting snowdrops" }).click();
    assert.match(await page.title(), /snowdrops/i);
  });

  test("is asked by the form of any page, in the page's site and language", async () => {
    for (const [pageId, searchPage] of [[7, english], [1, english], [101, german], [201, 383], [301, 384]]) {
      await site.open(page, pageId);
      const field = page.locator(".masthead input[type=search]");
      await field.fill("Lindhaven");
      await Promise.all([page.waitForURL(/\/torvex_search\/search\.asp/), field.press("Enter")]);
      assert.equal(new URL(page.url()).searchParams.get("pageId"), String(searchPage));
      assert.equal(await page.locator("#search-words").inputValue(), "Lindhaven");
    }
  });

  test("opens documents as they are", async () => {
    await search("map");
    const link = page.locator(".search-results li:has(.search-type) a").first();
    const href = await link.getAttribute("href");
    assert.match(href, /^\/documents\/bg\//);
    assert.equal((await page.request.get(site.address + href)).status(), 200);
  });

  test("leads from page to page and back", async () => {
    await search("garden");
    const first = await links();
    assert.equal(first.length, 6);
    await page.getByRole("link", { name: "More results" }).click();
    assert.match(await status(), /^Results 7 to /);
    const second = await links();
    assert.ok(second.every((link) => !first.includes(link)));
    await page.getByRole("link", { name: "Previous results" }).click();
    assert.deepEqual(await links(), first);
    assert.equal(await page.getByRole("link", { name: "Previous results" }).count(), 0);
    await page.goBack();
    assert.deepEqual(await links(), second);
  });

  test("says that nothing was found, and asks for words", async () => {
    await search("xyzzyplugh");
    assert.match(await status(), /^Nothing was found for “xyzzyplugh”/);
    assert.deepEqual(await titles(), []);
    await search("");
    assert.match(await status(), /^A word or two will do/);
    await search("a");
    assert.match(await status(), /^There is no word in this/);
  });

  test("suggests what was probably meant", async () => {
    await search("snowdrobs");
    await page.locator(".search-suggestion a").click();
    assert.ok((await titles()).includes("Counting snowdrops"));
  });

  test("shows words as words", async () => {
    const alerts = [];
    page.on("dialog", (dialog) => { alerts.push(dialog.message()); return dialog.dismiss(); });
    for (const words of ['<script>alert(1)</script>', '"><img src=x onerror=alert(1)>', "') OR (#filename=*", '"unended']) {
      await search(words);
      assert.equal(await page.locator("#search-words").inputValue(), words);
    }
    assert.deepEqual(alerts, []);
  });

  test("finds nothing that a visitor may not see", async () => {
    await search("volunteers board");
    const anonymous = await titles();
    assert.ok(!anonymous.includes("Volunteers’ board"), anonymous.join());
    await site.open(page, 44);
    await logIn(page, "rowan", "spade");
    await search("volunteers board");
    assert.ok((await titles()).includes("Volunteers’ board"));
  });

  test("speaks German", async () => {
    await search("Palme", german);
    assert.match(await status(), /^Treffer 1 bis \d+ für „Palme“/);
    assert.ok((await titles()).some((title) => /Palme/.test(title)));
  });

  test("completes titles by the keyboard", async () => {
    await search("");
    const field = page.locator("#search-words");
    await field.pressSequentially("coun");
    const option = page.getByRole("option", { name: "Counting snowdrops" });
    await option.waitFor();
    assert.equal(await field.getAttribute("aria-expanded"), "true");
    await field.press("ArrowDown");
    assert.equal(await field.getAttribute("aria-activedescendant"), await option.getAttribute("id"));
    assert.equal(await option.getAttribute("aria-selected"), "true");
    await field.press("Escape");
    assert.equal(await field.getAttribute("aria-expanded"), "false");
    assert.equal(await field.inputValue(), "coun");
    await field.press("t");
    await option.waitFor();
    await field.press("ArrowUp");
    await Promise.all([page.waitForNavigation(), field.press("Enter")]);
    assert.equal(await page.locator("#search-words").inputValue(), "Counting snowdrops");
    assert.equal((await titles())[0], "Counting snowdrops");
  });

  test("offers no title that a visitor may not see", async () => {
    const answer = await page.request.get(`${site.address}/torvex_search/suggest?pageId=${english}&q=volunteers`);
    assert.deepEqual(await answer.json(), { suggestions: [] });
  });

  test("works without a script", async () => {
    await begin({ javaScriptEnabled: false });
    await search("");
    await page.locator("#search-words").fill("garden");
    await page.getByRole("main").getByRole("button", { name: "Search" }).click();
    assert.match(await status(), /^Results 1 to 6/);
    await page.getByRole("link", { name: "More results" }).click();
    assert.match(await status(), /^Results 7 to /);
    await page.getByRole("link", { name: "Previous results" }).click();
    assert.match(await status(), /^Results 1 to 6/);
  });

  test("fits a phone", async () => {
    await begin({ viewport: { width: 360, height: 740 } });
    await search("garden");
    assert.equal(await sidewaysScroll(page), 0);
  });

  for (const width of [1440, 360]) {
    for (const colorScheme of ["light", "dark"]) {
      test(`can be used by all at ${width} pixels, ${colorScheme}`, async () => {
        await begin({ viewport: { width, height: 900 }, colorScheme, bypassCSP: true });
        for (const words of ["garden", "snowdrobs", ""]) {
          await search(words);
          assert.deepEqual(await findingsOfAxe(page), [], words);
        }
        await page.locator("#search-words").pressSequentially("pa");
        await page.getByRole("option").first().waitFor();
        assert.deepEqual(await findingsOfAxe(page), []);
      });
    }
  }
});
