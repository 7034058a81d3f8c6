// Pages at work: setup, the workflow, new pages, copying and moving, and the lists of them.
import assert from "node:assert/strict";
import { describe, test } from "node:test";
import { servedAuthors } from "./door.mjs";
import { assertAccessible, workAs } from "./workplace.mjs";

const paperGardens = 12;

// The number of a page of the English garden by its title in the design.
const pageOf = (site, title) =>
  JSON.parse(site.call("cManager.getPageList", "site=bg", "lang=en", "mode=D", "--login", "sa", "--json")).results[0].rows.find((row) => row[2] === title)?.[0];

describe("the workflow of a page", () => {
  const site = servedAuthors();

  test("a changed setup goes live in three clicks, and visitors see it", async () => {
    const work = await workAs(site, "iris");
    const { page } = work;
    await work.openPage(paperGardens);
    await page.getByLabel("Title", { exact: true }).fill("Gardens of paper");
    await page.getByRole("button", { name: "Save", exact: true }).click();
    await work.says("The setup is saved.");
    await work.heading.getByText("changed", { exact: true }).waitFor();
    await page.getByRole("button", { name: "Publish", exact: true }).click();
    await work.dialog.getByText("→").waitFor();
    assert.match(await work.dialog.innerText(), /Visitors will see\s+Title\s+Paper gardens → Gardens of paper/);
    await assertAccessible(page, "publishing");
    await work.dialog.getByRole("button", { name: "Publish", exact: true }).click();
    await work.says("Published.");
    await work.heading.getByText("as on the website").waitFor();
    const visitor = await site.browser.newPage();
    await site.open(visitor, paperGardens);
    assert.match(await visitor.content(), /Gardens of paper/);
    assert.deepEqual(work.faults, []);
    await visitor.close();
    await work.close();
  });

  test("a title that a neighbour has is told at its field, in a summary that has the focus", async () => {
    const work = await workAs(site, "iris");
    const { page } = work;
    await work.openPage(paperGardens);
    const title = page.getByLabel("Title", { exact: true });
    await title.fill("Notices");
    await page.keyboard.press("Control+s");
    const summary = page.locator(".setup-summary");
    await summary.waitFor();
    assert.match(await summary.innerText(), /Title: A neighbour has this title\./);
    assert.equal(await summary.evaluate((element) => element === document.activeElement), true);
    assert.equal(await title.getAttribute("aria-invalid"), "true");
    await assertAccessible(page, "a refused setup");
    await summary.getByRole("link").click();
    assert.equal(await title.evaluate((element) => element === document.activeElement), true);
    await page.getByRole("button", { name: "Discard", exact: true }).click();
    assert.notEqual(await title.inputValue(), "Notices");
    await work.close();
  });

  test("a setup that somebody saved meanwhile isn't overwritten, and what was typed is kept on top", async () => {
    const work = await workAs(site, "iris");
    const { page } = work;
    const notices = pageOf(site, "Notices");
    await work.openPage(notices);
    await page.getByLabel("Last day").fill("2031-05-03");
    const other = await workAs(site, "basil");
    await other.openPage(notices);
    await other.page.getByLabel("First day").fill("2024-01-02");
    await other.page.getByRole("button", { name: "Save", exact: true }).click();
    await other.says("The setup is saved.");
    await other.close();
    await page.getByRole("button", { name: "Save", exact: true }).click();
    await page.getByText("Somebody has saved this setup since you opened it.").waitFor();
    await page.getByRole("button", { name: "Put mine on top" }).click();
    await page.waitForFunction(() => document.querySelector("#setup-pgOnlineFrom").value === "2024-01-02");
    assert.equal(await page.getByLabel("Last day").inputValue(), "2031-05-03");
    await page.getByRole("button", { name: "Save", exact: true }).click();
    await work.says("The setup is saved.");
    const [saved] = site.query(`select onlineFrom, onlineTo from TORVEX_PAGES_DESIGN where pageId = ${notices}`);
    assert.deepEqual(Object.values(saved), ["20240102", "20310503"]);
    await work.close();
  });

  test("on and off happen at once and are taken back by Undo", async () => {
    const work = await workAs(site, "iris");
    const notices = pageOf(site, "Notices");
    await work.openPage(notices);
    const online = () => Object.values(site.query(`select online from TORVEX_PAGES_LIVE where pageId = ${notices}`)[0])[0];
    await work.choose("Switch off");
    await work.says("Visitors don't see it now.");
    assert.equal(online(), 0);
    await work.page.getByRole("button", { name: "Undo" }).click();
    await work.says("Visitors see it now.");
    assert.equal(online(), 1);
    await work.close();
  });

  test("Ctrl+K offers to switch a page to what it isn't already", async () => {
    const work = await workAs(site, "iris");
    const notices = pageOf(site, "Notices");
    const offered = async () => {
      await work.openPage(notices);
      await work.page.keyboard.press("Control+k");
      await work.page.keyboard.type("switch");
      const options = work.page.getByRole("option", { name: /^Switch o/ });
      await options.first().waitFor();
      return options.evaluateAll((all) => all.map((one) => one.querySelector(".cut").textContent).sort());
    };
    assert.deepEqual(await offered(), ["Switch off", "Switch off with all below"]);
    site.sql(`update TORVEX_PAGES_LIVE set online = 0 where pageId = ${notices}`);
    assert.deepEqual(await offered(), ["Switch on", "Switch on with all below"]);
    site.sql(`update TORVEX_PAGES_LIVE set online = 1 where pageId = ${notices}`);
    assert.deepEqual(work.faults, []);
    await work.close();
  });

  test("a page is reset to what visitors see, after what is lost was told", async () => {
    const work = await workAs(site, "iris");
    await work.openPage(pageOf(site, "Notices"));
    await work.choose("Back to the live page...");
    await work.dialog.getByText("Last day").waitFor();
    await assertAccessible(work.page, "resetting");
    await work.dialog.getByRole("button", { name: "Discard the changes" }).click();
    await work.says("The page is as visitors see it.");
    await work.heading.getByText("as on the website").waitFor();
    await work.close();
  });
});

describe("new pages, places and removal", () => {
  const site = servedAuthors();
  const idOf = (title) => pageOf(site, title);
  const whatsOn = () => idOf("What’s on");

  test("a page between two others is made from the keyboard alone, ready to type", async () => {
    const work = await workAs(site, "iris");
    const { page } = work;
    await work.openPage(whatsOn());
    await page.getByRole("button", { name: "More for this page" }).press("Enter");
    await page.keyboard.type("new");
    await page.keyboard.press("Enter");
    await work.dialog.getByLabel("Title", { exact: true }).waitFor();
    await page.keyboard.type("Seed swap");
    await assertAccessible(page, "a new page");
    await work.dialog.getByLabel(/^Below/).selectOption({ index: 1 });
    await page.keyboard.press("Control+Enter");
    await work.says("The page is there.");
    await page.locator("tvx-page-view h1", { hasText: "Seed swap" }).waitFor();
    const [row] = site.query("select orderId, editStatus from TORVEX_PAGES_DESIGN where title = 'Seed swap'");
    assert.deepEqual(Object.values(row), [2, "N"]);
    assert.deepEqual(work.faults, []);
    await work.close();
  });

  test("a new page needs a title that its neighbours haven't", async () => {
    const work = await workAs(site, "iris");
    await work.openPage(whatsOn());
    await work.choose("New page below...");
    await work.dialog.getByRole("button", { name: "Create" }).click();
    await work.dialog.getByText("Give it a title.").waitFor();
    await work.dialog.getByLabel("Title", { exact: true }).fill("Seed swap");
    await work.dialog.getByRole("button", { name: "Create" }).click();
    await work.dialog.getByText("A neighbour has this title.").first().waitFor();
    await work.close();
  });

  test("publishing a page that was never saved saves its setup first, and says so", async () => {
    const work = await workAs(site, "iris");
    await work.openPage(idOf("Seed swap"));
    await work.page.getByRole("button", { name: "Publish", exact: true }).click();
    await work.dialog.getByText("Its setup was never saved; that is done first, unchanged.").waitFor();
    await work.dialog.getByRole("button", { name: "Publish", exact: true }).click();
    await work.says("Published.");
    await work.close();
  });

  test("a page below one that isn't live takes its parent along", async () => {
    const work = await workAs(site, "iris");
    const { page } = work;
    await work.openPage(whatsOn());
    for (const title of ["Autumn", "Mushrooms"]) {
      await work.choose("New page below...");
      await work.dialog.getByLabel("Title", { exact: true }).fill(title);
      await work.dialog.getByRole("button", { name: "Create" }).click();
      await page.locator("tvx-page-view h1", { hasText: title }).waitFor();
    }
    await page.getByRole("button", { name: "Publish", exact: true }).click();
    await work.dialog.getByText('Its parent "Autumn" isn\'t live yet.').waitFor();
    await assertAccessible(page, "a parent that isn't live");
    await work.dialog.getByRole("button", { name: "Publish 2" }).click();
    await work.heading.getByText("as on the website").waitFor();
    assert.equal(site.query("select title from TORVEX_PAGES_LIVE where title in ('Autumn', 'Mushrooms')").length, 2);
    await work.close();
  });

  test("a page is moved in a dialog where impossible targets say why", async () => {
    const work = await workAs(site, "iris");
    await work.openPage(idOf("Mushrooms"));
    await work.choose("Move to...");
    const tree = work.dialog.getByRole("tree", { name: "Where to" });
    await tree.getByRole("treeitem", { name: "Mushrooms" }).getByText("It can't go below itself.").waitFor();
    await assertAccessible(work.page, "moving");
    await tree.getByRole("treeitem", { name: "Volunteering" }).click();
    await work.dialog.getByRole("radio", { name: "below it" }).waitFor();
    await work.dialog.getByRole("button", { name: "Move here" }).click();
    await work.says("Moved.");
    const [row] = site.query("select b.title from TORVEX_PAGES_DESIGN a inner join TORVEX_PAGES_DESIGN b on a.parent = b.nodeId where a.title = 'Mushrooms'");
    assert.deepEqual(Object.values(row), ["Volunteering"]);
    await work.close();
  });

  test("a copy goes to another website and is told what it loses", async () => {
    const work = await workAs(site, "iris");
    await work.openPage(idOf("Autumn"));
    await work.choose("Copy to...");
    await work.dialog.getByLabel("Website").selectOption("bg.de");
    await work.dialog.getByText(/^Another website: looks/).waitFor();
    await work.dialog.getByRole("treeitem").first().click();
    await work.dialog.getByRole("button", { name: "Copy here" }).click();
    await work.says("Copied.");
    assert.equal(site.query("select nodeId from TORVEX_PAGES_DESIGN where title = 'Autumn' and lang = 'de'").length, 1);
    await work.close();
  });

  test("up and down change places and are taken back by Undo", async () => {
    const work = await workAs(site, "iris");
    const place = () => Object.values(site.query("select orderId from TORVEX_PAGES_DESIGN where title = 'Seed swap'")[0])[0];
    const before = place();
    await work.openPage(idOf("Seed swap"));
    await work.choose("Up one place");
    await work.says("Moved up.");
    assert.equal(place(), before - 1);
    await work.page.getByRole("button", { name: "Undo" }).click();
    await work.says("Moved down.");
    assert.equal(place(), before);
    await work.close();
  });

  test("a mark is set at once, and its publishing removes the page for good", async () => {
    const work = await workAs(site, "iris");
    const pageId = idOf("Seed swap");
    await work.openPage(pageId);
    await work.choose("Mark for removal");
    await work.says("Marked for removal.");
    await work.page.getByRole("button", { name: "Remove from the website..." }).click();
    await work.dialog.getByText("1 page goes for good.").waitFor();
    await assertAccessible(work.page, "removal");
    await work.dialog.getByRole("button", { name: "Remove for good" }).click();
    await work.says("Removed.");
    await work.page.locator("tvx-page-view h1", { hasText: "What’s on" }).waitFor();
    assert.equal(idOf("Seed swap"), undefined);
    await work.close();
  });
});

describe("screens of pages", () => {
  const site = servedAuthors();
  const screens = [
    ["a page", "/torvex/page.asp?pageId=12", "tvx-page-view h1"],
    ["a comparison", "/torvex/page.asp?pageId=12&look=compare", "tvx-compare .empty"],
    ["held pages", "/torvex/locks.asp", "tvx-held-pages h1"],
    ["logins online", "/torvex/loginsOnline.asp", "tvx-logins-online h1"],
    ["search", "/torvex/search?words=garden", "tvx-search-page h1"],
    ["sitemap", "/torvex/sitemap", "tvx-sitemap tr[data-key]"],
  ];

  for (const [width, dark] of [[1280, false], [1280, true], [360, false], [360, true]])
    test(`they fit ${width} pixels and have nothing that axe finds, ${dark ? "dark" : "light"}`, async () => {
      const work = await workAs(site, "iris", { width, dark });
      for (const [name, path, there] of screens) {
        await work.go(path);
        await work.page.locator(there).first().waitFor({ state: "attached" });
        await work.rest();
        await assertAccessible(work.page, name);
      }
      for (const panel of ["Setup", "Status", "History"]) {
        if (width < 900) break;
        await work.openPage(paperGardens);
        await work.page.getByRole("tab", { name: panel, exact: true }).click();
        await work.rest();
        await assertAccessible(work.page, panel);
      }
      assert.deepEqual(work.faults, []);
      await work.close();
    });

  test("a page that another holds names her, offers no step, and is free again once she has left", async () => {
    const work = await workAs(site, "iris");
    await work.openPage(paperGardens);
    await work.page.getByRole("button", { name: "Edit", exact: true }).waitFor();
    site.call("cManager.checkOut", `pageIdent=${paperGardens}`, "--login", "basil");
    await work.page.reload();
    await work.page.getByText(/Basil Crane has this page since/).waitFor();
    assert.equal(await work.page.getByRole("button", { name: "Edit", exact: true }).count(), 0);
    await assertAccessible(work.page, "a page that another holds");
    site.call("cManager.endLogin", "loginId=3", "--login", "sa");
    await work.go("/torvex/locks.asp");
    await work.page.getByRole("link", { name: "Paper gardens" }).waitFor();
    await work.page.getByRole("checkbox", { name: /Paper gardens/ }).check();
    await work.page.getByRole("button", { name: "Release 1 page" }).click();
    await work.says("1 page is free.");
    await work.close();
  });
});
