import assert from "node:assert/strict";
import { describe, test } from "node:test";
import { findingsOfAxe, servedDemo, sidewaysScroll } from "./support.mjs";

const wide = { width: 1280, height: 800 };
const narrow = { width: 360, height: 740 };

const roots = [
  { pageId: 1, menu: "Main menu", button: "Menu", close: "Close", section: "In this section" },
  { pageId: 101, menu: "Hauptmenü", button: "Menü", close: "Schließen", section: "In diesem Bereich" },
  { pageId: 201, menu: "Main menu", button: "Menu", close: "Close", section: "In this section" },
  { pageId: 301, menu: "Hauptmenü", button: "Menü", close: "Schließen", section: "In diesem Bereich" },
];

describe("the demo's menus", () => {
  const site = servedDemo();

  // With and without scripts: both must do.
  async function eachWay(viewport, look) {
    for (const javaScriptEnabled of [true, false]) {
      const context = await site.browser.newContext({ viewport, javaScriptEnabled });
      const page = await context.newPage();
      await look(page, javaScriptEnabled);
      await context.close();
    }
  }
  const main = (page, root = roots[0]) => page.getByRole("navigation", { name: root.menu });
  const section = (page, root = roots[0]) => page.getByRole("navigation", { name: root.section });
  const focused = (page) => page.locator(":focus");

  test("show the first level in a row and the second under the pointer", async () => {
    await eachWay(wide, async (page) => {
      for (const root of roots) {
        await site.open(page, root.pageId);
        const entries = main(page, root).locator(":scope > ul > li:visible");
        assert.ok(await entries.count() >= 3);
        assert.equal(await main(page, root).locator("li li:visible").count(), 0);
        const first = entries.first();
        await first.hover();
        await first.locator("li:visible").first().waitFor();
        await page.mouse.move(5, 500);
      }
    });
  });

  test("are drawn from the tree: drafts, pages off line or outside their dates and those of the system aren't in them", async () => {
    await eachWay(wide, async (page) => {
      await site.open(page, 11);
      const titles = await main(page).locator("a").allInnerTexts();
      for (const title of ["Visit", "The garden", "What’s on", "Stories", "Friends of the garden"]) {
        assert.ok((await main(page).locator("a").allTextContents()).includes(title), `${title} in ${titles}`);
      }
      for (const title of ["Garden shop", "Volunteering", "A hundred and fifty years", "Orchid week 2025", "System", "Service"]) {
        assert.ok(!(await main(page).locator("a").allTextContents()).includes(title), title);
      }
    });
  });

  test("lead through both levels by the keyboard", async () => {
    await eachWay(wide, async (page) => {
      await site.open(page, 1);
      await main(page).getByRole("link", { name: "The garden", exact: true }).focus();
      await page.keyboard.press("Tab");
      assert.equal(await focused(page).innerText(), "Palm House");
      assert.ok(await focused(page).isVisible());
      await page.keyboard.press("Tab");
      assert.equal(await focused(page).innerText(), "Alpine garden");
      await Promise.all([page.waitForNavigation(), page.keyboard.press("Enter")]);
      assert.equal(await page.locator("h1").innerText(), "Alpine garden");
    });
  });

  test("shut an open panel by Escape and open it again", async () => {
    const page = await site.browser.newPage({ viewport: wide });
    await site.open(page, 1);
    const garden = main(page).locator(":scope > ul > li", { has: page.getByRole("link", { name: "The garden", exact: true }) });
    await garden.locator("a").first().focus();
    await page.keyboard.press("Tab");
    await page.keyboard.press("Escape");
    assert.equal(await focused(page).innerText(), "The garden");
    await garden.locator("ul").waitFor({ state: "hidden" });
    for (const key of ["Shift+Tab", "Tab", "Tab"]) await page.keyboard.press(key);  // by way of the panel ahead
    assert.equal(await focused(page).innerText(), "The garden");
    await garden.locator("ul").waitFor({ state: "visible" });
    await page.close();
  });

  test("fold on a narrow screen, open by the keyboard and close again", async () => {
    await eachWay(narrow, async (page) => {
      for (const root of roots) {
        await site.open(page, root.pageId);
        await main(page, root).waitFor({ state: "hidden" });
        await page.getByRole("button", { name: root.button }).focus();
        await page.keyboard.press("Enter");
        await main(page, root).waitFor({ state: "visible" });
        await page.keyboard.press("Tab");
        assert.equal(await focused(page).innerText(), root.close);
        await page.keyboard.press("Tab");
        assert.ok(await focused(page).isVisible());
        assert.equal(await focused(page).evaluate((link) => link.closest("nav").id), "menu");
        assert.ok(await main(page, root).locator("li li:visible").count() > 0);
        await page.keyboard.press("Escape");
        await main(page, root).waitFor({ state: "hidden" });
        await page.getByRole("button", { name: root.button }).click();
        await page.getByRole("button", { name: root.close }).click();
        await main(page, root).waitFor({ state: "hidden" });
      }
    });
  });

  test("never scroll sideways, open or shut", async () => {
    for (const viewport of [wide, { width: 970, height: 600 }, { width: 800, height: 600 }, narrow]) {
      await eachWay(viewport, async (page) => {
        for (const pageId of [1, 4, 8, 41, 101, 104, 203, 303]) {
          await site.open(page, pageId);
          assert.ok(await sidewaysScroll(page) <= 0, `page ${pageId} at ${viewport.width}`);
          const button = page.locator(".masthead > .wrap > .fold");
          if (await button.isVisible()) await button.click();
          for (const entry of await page.locator(".menu > ul > li:visible").all()) {
            await entry.hover();
            assert.ok(await sidewaysScroll(page) <= 0, `page ${pageId} at ${viewport.width}, open`);
          }
        }
      });
    }
  });

  test("have no findings of axe while they are open, light or dark", async () => {
    const faults = [];
    for (const viewport of [wide, narrow]) {
      for (const colorScheme of ["light", "dark"]) {
        const page = await site.browser.newPage({ viewport, colorScheme });
        for (const pageId of [9, 104, 203, 303]) {
          await site.open(page, pageId);
          const button = page.locator(".masthead > .wrap > .fold");
          if (await button.isVisible()) await button.click();
          const entry = page.locator(".menu > ul > li:visible").first();
          await entry.hover();
          await entry.locator("li:visible").first().waitFor();
          const findings = await findingsOfAxe(page, ".masthead, .section");
          faults.push(...findings.map((finding) => `page ${pageId}, ${viewport.width} wide, ${colorScheme}: ${finding}`));
        }
        await page.close();
      }
    }
    assert.deepEqual(faults, []);
  });

  test("mark the visitor's way, and list the pages of her section", async () => {
    await eachWay(wide, async (page, withScript) => {
      await site.open(page, 9);
      assert.deepEqual(await main(page).locator(":scope > ul > li > a[aria-current]").allInnerTexts(), ["The garden"]);
      const here = section(page).locator("a:visible");
      assert.deepEqual((await here.allInnerTexts()).slice(0, 3), ["Palm House", "Alpine garden", "Night garden"]);
      const current = section(page).locator("a:visible[aria-current]");
      assert.deepEqual(await current.allInnerTexts(), ["Alpine garden"]);
      assert.equal(await current.getAttribute("aria-current"), withScript ? "page" : "true");
      await site.open(page, 5);
      assert.deepEqual((await section(page).locator("a:visible").allInnerTexts()).slice(0, 3),
        ["Plan your visit", "Opening hours and tickets", "Getting here"]);
      await site.open(page, 1);
      assert.equal(await section(page).count(), 0);
      await site.open(page, 208);
      assert.equal(await section(page, roots[2]).count(), 0);
    });
  });
});
