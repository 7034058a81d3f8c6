// The administration of the modules: what visitors wrote is moderated on a phone, and definitions are kept until they are published.
import assert from "node:assert/strict";
import { describe, test } from "node:test";
import { servedAuthors } from "./door.mjs";
import { assertAccessible, workAs } from "./workplace.mjs";

const statements = [
  "insert into TORVEX_ROLES (roleId, roleName, roleDesc, lock) values (9, 'Modules', '', '')",
  "insert into TORVEX_ROLES_LOGINS (roleId, loginId) values (9, 2)",
  "insert into TORVEX_ADVANCED_RIGHTS (roleId, advId, site, lang, viewAccess, editAccess) values (9, 241, '', '', 1, 1), (9, 242, '', '', 1, 1), (9, 243, '', '', 1, 1), (9, 244, '', '', 1, 1), (9, 245, '', '', 1, 1)",
];

describe("modules", () => {
  const site = servedAuthors(statements);
  const valuesOf = (statement) => site.query(statement).map((row) => Object.values(row).join("|"));
  const press = (work, name) => work.dialog.getByRole("button", { name, exact: true }).click();
  const row = (page, name) => page.getByRole("listitem").filter({ has: page.getByText(name, { exact: true }) });

  // Somebody else is done in the moment in which a save is on its way to the server.
  async function changeBefore(page, operation, statement) {
    let isChanged = false;
    await page.route("**/torvex/api/batch", async (route) => {
      if (!isChanged && route.request().postData().includes(operation)) {
        isChanged = true;
        site.sql(statement);
      }
      await route.continue();
    });
    return () => isChanged;
  }

  test("on the tram a rude reaction is switched off with its thread, and comes back", async () => {
    const offInThread = () => valuesOf("select reaction_reference from TORVEX_FORUM_REACTIONS where reaction_forumId = 1 and reaction_topicId = 1 and reaction_online = 0 order by reaction_reference");
    site.sql("update TORVEX_FORUM_REACTIONS set reaction_online = 0 where reaction_forumId = 1 and reaction_topicId = 1 and reaction_reference = '01.02'");
    const work = await workAs(site, "iris", { width: 360, height: 740 });
    const { page } = work;
    await work.go("/torvex/torvex_forum/forums.asp");
    await page.getByRole("heading", { name: "What nobody sees yet" }).waitFor();
    await page.getByRole("listitem").filter({ hasText: "Lia" }).getByRole("link", { name: "Photo" }).waitFor();
    await page.getByRole("link", { name: "Garden talk", exact: true }).click();
    await page.getByRole("link", { name: "Snowdrops in November?" }).click();
    const rude = page.getByRole("article").filter({ has: page.getByRole("heading", { name: "It is one", exact: true }) });
    await rude.waitFor();
    await assertAccessible(page, "a thread on a phone");
    const titles = await page.getByRole("article").getByRole("heading").allTextContents();
    assert.equal(titles.at(-1), "It is one", "the oldest reaction stands last");
    const off = rude.getByRole("button", { name: "Switch off It is one" });
    const size = await off.boundingBox();
    assert.ok(size.height >= 44 && size.width >= 80, `a thumb finds it: ${JSON.stringify(size)}`);

    await off.click();
    await work.says("4 contributions are off now.");
    await rude.getByRole("button", { name: "Switch on It is one" }).waitFor();
    assert.deepEqual(offInThread(), ["01", "01.01", "01.01.01", "01.01.01.01", "01.02"]);
    await page.getByRole("button", { name: "Undo" }).click();
    await work.says("It is as before.");
    await off.waitFor();
    assert.deepEqual(offInThread(), ["01.02"], "what was off before stays so");

    await off.click();
    await rude.getByRole("button", { name: "Switch on It is one" }).waitFor();
    await page.getByRole("button", { name: "Switch on Twelve?" }).click();
    await work.says("3 contributions are on now.");
    assert.deepEqual(offInThread(), ["01.01.01.01", "01.02"], "what it answers is seen again");
    assert.deepEqual(work.faults, []);
    await work.close();
  });

  test("a contribution is changed and removed, and told what goes with it", async () => {
    const work = await workAs(site, "iris", { dark: true });
    const { page, dialog } = work;
    await work.go("/torvex/torvex_forum/reactions.asp?forumId=1&topicId=2");
    await page.getByRole("heading", { name: "Please don’t feed" }).waitFor();
    await page.getByRole("button", { name: "Edit Please don’t feed" }).click();
    await dialog.getByLabel("Title").fill("Looking is free");
    await assertAccessible(page, "a contribution's form");
    await press(work, "Save");
    await work.says("Looking is free is saved.");
    await page.getByRole("heading", { name: "Looking is free" }).waitFor();
    await page.getByRole("button", { name: "Delete Two of them now" }).click();
    await dialog.getByText("1 answer goes with it. It can't be taken back.").waitFor();
    await press(work, "Delete");
    await work.says("2 contributions are gone.");
    await page.getByRole("heading", { name: "A question of beds" }).waitFor({ state: "detached" });
    assert.deepEqual(valuesOf("select reaction_title from TORVEX_FORUM_REACTIONS where reaction_forumId = 1 and reaction_topicId = 2"), ["Looking is free"]);
    assert.deepEqual(work.faults, []);
    await work.close();
  });

  test("a forum is made, published, changed elsewhere meanwhile, and removed with the next publishing", async () => {
    const work = await workAs(site, "iris");
    const { page, dialog } = work;
    const live = () => valuesOf("select forum_name, forum_hotPeriod from TORVEX_FORUM_LIVE where forum_site = 'bg' and forum_lang = 'en' and forum_name like 'Bees%'");
    await work.go("/torvex/torvex_forum/forums.asp");
    await row(page, "Garden talk").first().waitFor();
    await assertAccessible(page, "the forums");
    await page.getByRole("button", { name: "New forum" }).click();
    await press(work, "Add");
    await dialog.getByText("A title is missing.").waitFor();
    await dialog.getByLabel("Name", { exact: true }).fill("Bees");
    await press(work, "Add");
    await row(page, "Bees").getByText("new", { exact: true }).waitFor();
    assert.deepEqual(live(), []);
    await page.getByRole("button", { name: "Publish Bees" }).click();
    await work.says("Published.");
    await page.getByRole("button", { name: "Publish Bees" }).waitFor({ state: "detached" });
    assert.deepEqual(live(), ["Bees|7"]);

    await page.getByRole("button", { name: "Edit Bees" }).click();
    site.sql("update TORVEX_FORUM_DESIGN set forum_hotPeriod = 14 where forum_name = 'Bees'");
    await dialog.getByLabel("Name", { exact: true }).fill("Bees and wasps");
    await press(work, "Save");
    await dialog.getByText("Somebody has changed this meanwhile.").waitFor();
    assert.equal(valuesOf("select forum_name from TORVEX_FORUM_DESIGN where forum_hotPeriod = 14").join(), "Bees");
    await press(work, "Show theirs");
    assert.equal(await dialog.getByLabel("New for so many days").inputValue(), "14");
    await dialog.getByLabel("Name", { exact: true }).fill("Bees and wasps");
    await press(work, "Save");
    await work.says("Bees and wasps is saved.");
    await row(page, "Bees and wasps").getByText("changed", { exact: true }).waitFor();

    await page.getByRole("button", { name: "Delete Bees and wasps" }).click();
    await work.says("Bees and wasps goes with the next publishing.");
    await page.getByRole("button", { name: "Undo" }).last().click();
    await work.says("Bees and wasps stays.");
    await page.getByRole("button", { name: "Delete Bees and wasps" }).click();
    await page.getByRole("button", { name: "Keep Bees and wasps" }).waitFor();
    await page.getByRole("button", { name: "Publish Bees and wasps" }).click();
    await dialog.getByText("This goes for good: Bees and wasps (0 topics).").waitFor();
    await press(work, "Publish");
    await row(page, "Bees and wasps").waitFor({ state: "detached" });
    assert.deepEqual(live(), []);
    assert.deepEqual(work.faults, []);
    await work.close();
  });

  test("what somebody changes while a save is on its way isn't overwritten, and what stands beside it doesn't matter", async () => {
    const work = await workAs(site, "iris");
    const { page, dialog } = work;
    const names = () => valuesOf("select title, itemLength from TORVEX_NEWSFLASH_DESIGN where site = 'bg' and lang = 'en' order by id");
    const [first, second] = site.query("select nf_Id, title from TORVEX_NEWSFLASH_DESIGN where site = 'bg' and lang = 'en' order by id");
    const lengthen = ({ nf_Id: id }) => `update TORVEX_NEWSFLASH_DESIGN set itemLength = 77 where nf_Id = ${id}`;
    await work.go("/torvex/torvex_newsflash/newsflashes.asp");
    await page.getByRole("button", { name: `Edit ${first.title}`, exact: true }).click();
    await dialog.getByLabel("Title").fill("Mine");
    const isTheirs = await changeBefore(page, "saveNewsflash", lengthen(first));
    await press(work, "Save");
    await dialog.getByText("Somebody has changed this meanwhile.").waitFor();
    assert.ok(isTheirs());
    assert.equal(names()[0], `${first.title}|77`);
    await assertAccessible(page, "a newsflash that somebody else has changed");
    await press(work, "Go on with mine");
    await dialog.getByText("Somebody has changed this meanwhile.").waitFor({ state: "detached" });
    await page.unroute("**/torvex/api/batch");
    const isBeside = await changeBefore(page, "saveNewsflash", lengthen(second));
    await press(work, "Save");
    await work.says("Mine is saved.");
    assert.ok(isBeside());
    assert.equal(names()[0].split("|")[0], "Mine");
    assert.equal(names()[1], `${second.title}|77`, "another one's change stays, and isn't asked about");
    await page.unroute("**/torvex/api/batch");

    // A mark takes the rest along as it is by then.
    await changeBefore(page, "saveNewsflash", `update TORVEX_NEWSFLASH_DESIGN set itemLength = 55 where nf_Id = ${first.nf_Id}`);
    await page.getByRole("button", { name: "Delete Mine" }).click();
    await work.says("Mine goes with the next publishing.");
    assert.equal(names()[0], "Mine|55");
    await page.unroute("**/torvex/api/batch");
    await page.getByRole("button", { name: "Keep Mine" }).click();
    await work.says("Mine stays.");
    site.sql(`update TORVEX_NEWSFLASH_DESIGN set title = '${first.title}' where nf_Id = ${first.nf_Id}`);

    const [item] = site.query("select i.msgB_itemId as id, i.msgB_itemTitle as title from TORVEX_MSGB_ITEMS_DESIGN i where i.msgB_Id = 2 order by i.msgB_itemDate desc limit 1");
    await work.go(`/torvex/torvex_msgBoard/categories.asp?category=2`);
    await page.getByRole("button", { name: `Edit ${item.title}`, exact: true }).click();
    await dialog.getByLabel("Title").fill("My item");
    await changeBefore(page, "saveItem", `update TORVEX_MSGB_ITEMS_DESIGN set msgB_itemTitle = 'Their item' where msgB_itemId = ${item.id}`);
    await press(work, "Save");
    await dialog.getByText("Somebody has changed this meanwhile.").waitFor();
    assert.deepEqual(valuesOf(`select msgB_itemTitle from TORVEX_MSGB_ITEMS_DESIGN where msgB_itemId = ${item.id}`), ["Their item"]);
    await press(work, "Show theirs");
    assert.equal(await dialog.getByLabel("Title").inputValue(), "Their item");
    await press(work, "Cancel");
    assert.deepEqual(work.faults, []);
    await work.close();
  });

  test("an item is written, looked at, published, and goes with the next publishing", async () => {
    const work = await workAs(site, "iris");
    const { page, dialog } = work;
    const item = (columns, twin = "LIVE") => valuesOf(`select ${columns} from TORVEX_MSGB_ITEMS_${twin} where msgB_itemTitle = 'Seed swap'`);
    await work.go("/torvex/torvex_msgBoard/categories.asp");
    await page.getByRole("heading", { name: "Garden news", level: 2 }).waitFor();
    await assertAccessible(page, "the board");
    await page.getByRole("button", { name: "New category below Garden news" }).click();
    await dialog.getByLabel("Title").fill("Swaps");
    await press(work, "Add");
    await page.getByRole("heading", { name: "Swaps", level: 2 }).waitFor();
    await page.getByText("No items here yet.").waitFor();
    await page.getByRole("button", { name: "New item" }).click();
    await dialog.getByLabel("Title").fill("Seed swap");
    await dialog.getByLabel("Text").fill("Bring seeds\nand <stories>");
    await dialog.getByLabel("Text").selectText();
    await dialog.getByRole("button", { name: "Bold" }).click();
    await dialog.getByRole("button", { name: "Link to a page" }).click();
    await dialog.last().getByRole("treeitem").nth(1).click();
    await dialog.last().getByRole("button", { name: "Insert" }).click();
    assert.match(await dialog.getByLabel("Link", { exact: true }).inputValue(), /^\d+$/);
    await dialog.getByRole("button", { name: "Choose a picture" }).click();
    await dialog.last().locator(".picker-images > button").first().click();
    await dialog.last().getByRole("button", { name: "Insert" }).click();
    await page.waitForFunction(() => /\.(svg|jpg|png)$/.test(document.querySelector("#item-image")?.value ?? ""));
    await dialog.getByLabel("In the archive from").fill("2099-05-03");
    await dialog.getByLabel("In newsflashes").check();
    await assertAccessible(page, "an item's form");
    await press(work, "Add");
    await row(page, "Seed swap").getByText("new", { exact: true }).waitFor();
    assert.deepEqual(item("msgB_itemDesc, msgB_archiveDate, msgB_itemOnline, msgB_itemNewsflash", "DESIGN"), ["<b>Bring seeds\r\nand <stories></b>|20990503|2|1"]);

    await page.getByRole("button", { name: "Preview of Swaps" }).click();
    await dialog.getByRole("heading", { name: "Seed swap" }).waitFor();
    assert.equal(await dialog.locator("b").innerText(), "Bring seeds\nand <stories>");
    await assertAccessible(page, "the preview");
    await dialog.getByRole("button", { name: "Close" }).last().click();
    assert.deepEqual(item("msgB_itemId"), []);
    await page.getByRole("button", { name: "Publish Swaps" }).click();
    await work.says("Published.");
    await row(page, "Seed swap").getByText("live", { exact: true }).waitFor();
    assert.deepEqual(item("msgB_itemOnline, msgB_itemNewsflash"), ["1|1"]);

    await page.getByRole("button", { name: "Edit Seed swap" }).click();
    await dialog.getByLabel("In newsflashes").uncheck();
    await press(work, "Save");
    await row(page, "Seed swap").getByText(/leaves newsflashes with the next publishing/).waitFor();
    await page.getByRole("button", { name: "Delete Seed swap" }).click();
    await work.says("Seed swap goes with the next publishing.");
    await page.getByRole("button", { name: "Undo" }).last().click();
    await work.says("Seed swap stays.");
    await page.getByRole("button", { name: "Delete Swaps" }).click();
    await page.getByRole("button", { name: "Keep Swaps" }).waitFor();
    await page.getByRole("button", { name: "Publish Swaps" }).click();
    await dialog.getByText("This goes for good: Swaps.").waitFor();
    await press(work, "Publish");
    await page.getByRole("link", { name: /^Swaps/ }).waitFor({ state: "detached" });
    assert.deepEqual([...item("msgB_itemId"), ...item("msgB_itemId", "DESIGN")], []);
    assert.deepEqual(work.faults, []);
    await work.close();
  });

  test("a newsflash is fed by a category from the board's publishing on", async () => {
    const work = await workAs(site, "iris");
    const { page, dialog } = work;
    const fed = (twin) => valuesOf(`select c.msgB_catTitle from TORVEX_NEWSFLASH_${twin} n inner join TORVEX_NEWSFLASH_CATEGORIES_${twin} f on f.nf_Id = n.nf_Id inner join TORVEX_MSGB_CATEGORIES_DESIGN c on c.msgB_Id = f.msgB_Id where n.title = 'From the beds'`);
    await work.go("/torvex/torvex_newsflash/newsflashes.asp");
    await row(page, "Latest news").waitFor();
    await assertAccessible(page, "the newsflashes");
    await page.getByRole("button", { name: "New newsflash" }).click();
    await dialog.getByLabel("Title").fill("From the beds");
    await dialog.getByLabel("Number", { exact: true }).fill("1");
    await press(work, "Add");
    await dialog.getByText("Another newsflash has this number.").waitFor();
    await dialog.getByLabel("Number", { exact: true }).fill("9");
    await dialog.getByLabel("Shows").selectOption({ label: "all items that are switched on" });
    await press(work, "Add");
    await row(page, "From the beds").getByText("new", { exact: true }).waitFor();
    await page.getByRole("button", { name: "Categories of From the beds" }).click();
    await dialog.getByLabel("In flower now").check();
    await assertAccessible(page, "what feeds a newsflash");
    await press(work, "Save");
    await row(page, "From the beds").getByText(/fed by In flower now/).waitFor();
    await page.getByText("Categories wait for the board's publishing.").waitFor();
    await page.getByRole("button", { name: "Preview of From the beds" }).click();
    const [{ latest }] = site.query("select msgB_itemTitle as latest from TORVEX_MSGB_ITEMS_DESIGN where msgB_Id = 2 and msgB_itemOnline = 1 order by msgB_itemDate desc limit 1");
    await dialog.getByRole("group", { name: "Preview" }).getByText(latest).first().waitFor();
    await dialog.getByRole("button", { name: "Close" }).last().click();

    await page.getByRole("button", { name: "Publish newsflashes" }).click();
    await row(page, "From the beds").getByText("live", { exact: true }).waitFor();
    assert.deepEqual([fed("DESIGN"), fed("LIVE")], [["In flower now"], []]);
    await page.getByRole("button", { name: "Publish the board" }).click();
    await page.getByText("Categories wait for the board's publishing.").waitFor({ state: "detached" });
    assert.deepEqual(fed("LIVE"), ["In flower now"]);
    assert.deepEqual(work.faults, []);
    await work.close();
  });

  test("a page gets a menu of its own, which is drawn for the pages below it", async () => {
    const work = await workAs(site, "iris");
    const { page, dialog } = work;
    const menus = (twin) => valuesOf(`select p.nodeId, m.minLevels, m.maxLevels, m.deleted from TORVEX_DYNMENU_${twin} m inner join TORVEX_PAGES_DESIGN p on p.pageId = m.pageId where m.site = 'bg' and m.lang = 'en' order by p.nodeId`);
    const before = menus("LIVE");
    const [{ title }] = site.query("select title from TORVEX_PAGES_DESIGN where nodeId = 'bg.en.02'");
    await work.go("/torvex/torvex_dynMenu/menus.asp");
    await page.getByRole("button", { name: /^Edit Menu of / }).waitFor();
    await assertAccessible(page, "the menus");
    await page.getByRole("button", { name: "New menu" }).click();
    await dialog.getByRole("treeitem", { name: title, exact: true }).click();
    await dialog.getByRole("status").getByText(title).waitFor();
    await assertAccessible(page, "the choice of a page");
    await press(work, "Add");
    await dialog.getByLabel("Deepest level").fill("3");
    await press(work, "Add");
    await page.getByRole("button", { name: `Edit Menu of ${title}` }).waitFor();
    assert.deepEqual(menus("LIVE"), before);
    await page.getByRole("button", { name: `Preview of Menu of ${title}` }).click();
    await dialog.getByText(`It stands at ${title}.`).waitFor();
    await dialog.getByRole("group", { name: "Preview" }).getByText("Palm House").waitFor();
    await assertAccessible(page, "a menu, drawn");
    await dialog.getByRole("button", { name: "Close" }).last().click();
    await page.getByRole("button", { name: "Publish all" }).click();
    await work.says("Published.");
    assert.ok(menus("LIVE").includes("bg.en.02|1|3|0"));
    await page.getByRole("button", { name: `Delete Menu of ${title}` }).click();
    await page.getByRole("button", { name: `Keep Menu of ${title}` }).waitFor();
    await page.getByRole("button", { name: "Publish all" }).click();
    await dialog.getByText(`This goes for good: Menu of ${title}.`).waitFor();
    await press(work, "Publish");
    await page.getByRole("button", { name: `Keep Menu of ${title}` }).waitFor({ state: "detached" });
    assert.deepEqual(menus("LIVE"), before);
    assert.deepEqual(work.faults, []);
    await work.close();
  });

  test("what a search page decides is changed, and what was searched is seen", async () => {
    const work = await workAs(site, "iris", { width: 360, height: 740 });
    const { page, dialog } = work;
    const [{ search_pageId: id, title }] = site.query("select s.search_pageId, p.title from TORVEX_SEARCH s inner join TORVEX_PAGES_DESIGN p on p.pageId = s.search_pageId where p.site = 'bg' and p.lang = 'en'");
    site.sql(`insert into TORVEX_SEARCH_LOG (search_pageId, search_word, search_count) values (${id}, 'snowdrop', 17)`);
    await work.go("/torvex/torvex_search/search.asp");
    await page.getByRole("button", { name: `Edit ${title}` }).click();
    await dialog.getByLabel("Words to be found").selectOption({ label: "each of them" });
    await dialog.getByLabel("Results at most").fill("42");
    await assertAccessible(page, "the form of a search page");
    await dialog.getByLabel("It stands").selectOption({ label: "on another server" });
    await press(work, "Save");
    await dialog.getByText("A catalogue elsewhere needs its server and its share.").waitFor();
    await dialog.getByLabel("It stands").selectOption({ label: "here" });
    await press(work, "Save");
    await work.says(`${title} is saved.`);
    assert.deepEqual(valuesOf(`select search_match, search_maxResults, search_catalogLocation from TORVEX_SEARCH where search_pageId = ${id}`), ["2|42|0"]);
    await page.getByRole("button", { name: `What was searched from ${title}` }).click();
    await dialog.getByRole("row", { name: "snowdrop 17" }).waitFor();
    await assertAccessible(page, "what was searched");
    await dialog.getByRole("button", { name: "Close" }).last().click();
    assert.deepEqual(work.faults, []);
    await work.close();
  });

  test("the catalogue is renewed and cleaned up by whoever may, and by nobody else", async () => {
    site.sql("insert into TORVEX_ADVANCED_RIGHTS (roleId, advId, site, lang, viewAccess, editAccess) values (9, 64, '', '', 1, 0)");
    let work = await workAs(site, "iris");
    await work.go("/torvex/torvex_search/catalogue.asp");
    await work.page.getByText(/^The search reads copies/).waitFor();
    assert.equal(await work.page.getByRole("main").getByRole("button").count(), 0);
    await work.close();
    site.sql("update TORVEX_ADVANCED_RIGHTS set editAccess = 1 where advId = 64");
    site.sql("insert into TORVEX_SEARCH_LOG (search_pageId, search_word, search_count) values (99999, 'gone', 1)");
    work = await workAs(site, "iris");
    await work.go("/torvex/torvex_search/catalogue.asp");
    await work.page.getByRole("button", { name: "Clean up" }).click();
    await work.says("It is cleaned up.");
    assert.deepEqual(valuesOf("select search_word from TORVEX_SEARCH_LOG where search_pageId = 99999"), []);
    await assertAccessible(work.page, "the catalogue");
    await work.page.getByRole("button", { name: "Renew the copies" }).click();
    await work.says("All copies are renewed.");
    assert.deepEqual(work.faults, []);
    await work.close();
  });

  test("the catalogue tells what it holds, and is compared and made anew while nobody waits", async () => {
    const work = await workAs(site, "iris");
    const { page } = work;
    const rests = page.getByText("Nothing is at work.");
    await work.go("/torvex/torvex_search/catalogue.asp");
    await page.getByText(/^\d[\d,]* entries, /).waitFor();
    await rests.waitFor();
    await page.getByRole("button", { name: "Compare now" }).click();
    await work.says("The search catalogue is up to date.");
    await page.getByText(/Compared with all files: /).waitFor();
    await page.getByRole("button", { name: "Make anew" }).click();
    // Whether the work is still going on or done by then: the server, not this page, does it.
    await page.reload();
    await rests.waitFor();
    await page.getByRole("button", { name: "Make anew" }).waitFor();
    await assertAccessible(page, "the catalogue at rest");
    const noted = site.query("select description from TORVEX_AUDIT_TRAIL where advId = 64 and action = 'renew' order by auditId");
    assert.deepEqual(noted.map(({ description }) => description), ["The search catalogue is to be compared with all files", "The search catalogue is to be made anew"]);
    assert.deepEqual(work.faults, []);
    await work.close();
  });
});
