// Applications and feeds: they are added, tried, changed, and stay as long as a page shows them.
import assert from "node:assert/strict";
import { describe, test } from "node:test";
import { servedAuthors } from "./door.mjs";
import { assertAccessible, workAs } from "./workplace.mjs";

const statements = [
  "insert into TORVEX_ROLES (roleId, roleName, roleDesc, lock) values (9, 'Applications', '', '')",
  "insert into TORVEX_ROLES_LOGINS (roleId, loginId) values (9, 2)",
  "insert into TORVEX_ADVANCED_RIGHTS (roleId, advId, site, lang, viewAccess, editAccess) values (9, 40, '', '', 1, 1)",
];

describe("feeds and applications", () => {
  const site = servedAuthors(statements);
  const add = (work) => work.dialog.getByRole("button", { name: "Add" }).click();
  const save = (page) => page.getByRole("button", { name: "Save" });

  test("an HTML feed is added, refused where it leads nowhere, tried, changed and removed", async () => {
    const work = await workAs(site, "iris");
    const { page, dialog } = work;
    await work.go("/torvex/htmlFeeds.asp");
    await page.getByRole("link", { name: "Notices" }).waitFor();
    await assertAccessible(page, "the feeds");
    await page.getByRole("button", { name: "New HTML feed" }).click();
    await dialog.getByLabel("Name").fill("Weather");
    await add(work);
    await dialog.getByText("An address or a file is missing.").waitFor();
    await dialog.getByLabel("Address").fill("ftp://weather.example/");
    await add(work);
    await dialog.getByText(/^An address begins with http/).waitFor();
    await dialog.getByLabel("Address").fill("");
    await dialog.getByLabel("File").fill("004/notices.html");
    await add(work);
    await page.getByRole("heading", { name: "Weather", level: 1 }).waitFor();
    await page.getByRole("button", { name: "Try it" }).click();
    await page.getByText(/^It took [\d.]+ s\./).waitFor();
    assert.match(await page.locator(".feed-answer").innerText(), /</, "its source is shown, not run");
    await assertAccessible(page, "a feed that was tried");
    await page.getByLabel("File").fill("004/none.html");
    assert.equal(await page.getByRole("button", { name: "Try it" }).getAttribute("aria-disabled"), "true");
    await page.getByLabel("Description").fill("Of the day");
    await save(page).click();
    await work.says("Weather is saved.");
    assert.deepEqual(site.query("select feedSite, feedLang, feedDescription, feedFile, lock from TORVEX_FEEDS_HTML where feedName = 'Weather'").map((row) => Object.values(row).slice(0, 4).join("|")), ["bg|en|Of the day|004/none.html"]);
    await page.getByRole("button", { name: "Delete" }).click();
    await dialog.getByText("Weather goes for good.").waitFor();
    await dialog.getByRole("button", { name: "Remove for good" }).click();
    await work.says("Weather is removed.");
    assert.deepEqual(site.query("select feedId from TORVEX_FEEDS_HTML where feedName = 'Weather'"), []);
    assert.deepEqual(work.faults, []);
    await work.close();
  });

  test("a feed that a page shows names the page and stays; what somebody changed meanwhile isn't overwritten", async () => {
    const work = await workAs(site, "iris");
    const { page, dialog } = work;
    await work.go("/torvex/htmlFeeds.asp?htmlFeed=1");
    await page.getByRole("heading", { name: "Notices", level: 1 }).waitFor();
    await page.getByRole("button", { name: "Delete" }).click();
    await dialog.getByText(/^Notices stays as long as/).waitFor();
    await dialog.getByRole("link").first().waitFor();
    assert.equal(await dialog.getByRole("button", { name: "Remove for good" }).count(), 0);
    await dialog.getByText("Close").click();
    site.sql("update TORVEX_FEEDS_HTML set feedParameters = 'theirs=1' where feedId = 1");
    await page.getByLabel("Description").fill("Mine");
    await save(page).click();
    await page.getByText("Somebody has changed it meanwhile.").waitFor();
    await page.getByRole("button", { name: "Go on with mine" }).click();
    await page.getByText("Somebody has changed it meanwhile.").waitFor({ state: "detached" });
    assert.equal(await page.getByLabel("Parameters").inputValue(), "theirs=1");
    assert.equal(await page.getByLabel("Description").inputValue(), "Mine");
    await save(page).click();
    await work.says("Notices is saved.");
    for (const elsewhere of [2, 999]) {
      await work.go(`/torvex/htmlFeeds.asp?htmlFeed=${elsewhere}`);
      await page.getByText("It isn't there any more.").waitFor();
    }
    await work.close();
  });

  test("an XML feed has two sources, on a phone too", async () => {
    const work = await workAs(site, "iris", { width: 360, height: 740, dark: true });
    const { page } = work;
    site.sql("insert into TORVEX_FEEDS_XML (feedId, feedSite, feedLang, feedName, feedDescription, feedURL_XML, feedFile_XML, feedURL_XSL, feedFile_XSL, feedParameters, feedPreserveWhiteSpace, lock) values (9, 'bg', 'en', 'Seeds', '', '', '002/none.xml', '', '002/none.xsl', '', 1, '')");
    await work.go("/torvex/xmlFeeds.asp?xmlFeed=9");
    await page.getByRole("heading", { name: "Seeds", level: 1 }).waitFor();
    const blanks = page.getByRole("checkbox", { name: "Keep blanks and line ends of the document" });
    assert.equal(await blanks.isChecked(), true);
    await blanks.uncheck();
    await page.getByLabel("Address of the XSL stylesheet").fill("https://seeds.example/list.xsl");
    await save(page).click();
    await work.says("Seeds is saved.");
    assert.deepEqual(site.query("select feedURL_XSL, feedPreserveWhiteSpace from TORVEX_FEEDS_XML where feedId = 9").map((row) => Object.values(row).join("|")), ["https://seeds.example/list.xsl|0"]);
    await assertAccessible(page, "an XML feed");
    await work.close();
  });

  test("an application is added with its addresses, which can be tried, and stays where pages stand for it", async () => {
    const work = await workAs(site, "iris");
    const { page, dialog } = work;
    await work.go("/torvex/applications.asp");
    await page.getByRole("button", { name: "New application" }).click();
    await dialog.getByLabel("Name").fill("Seed shop");
    await dialog.getByLabel("Address for visitors").fill("/shop.asp");
    await add(work);
    await page.getByRole("heading", { name: "Seed shop", level: 1 }).waitFor();
    assert.equal(await page.getByRole("link", { name: "Open in a tab" }).getAttribute("href"), "/shop.asp");
    await page.getByLabel("Address for authors").fill("javascript:alert(1)");
    assert.equal(await page.getByRole("link", { name: "Open in a tab" }).count(), 1, "only addresses can be opened");
    await page.getByLabel("Address for authors").fill("/torvex/shop.asp");
    await save(page).click();
    await work.says("Seed shop is saved.");
    await assertAccessible(page, "an application");
    await page.getByRole("button", { name: "Delete" }).click();
    await dialog.getByRole("button", { name: "Remove for good" }).click();
    await work.says("Seed shop is removed.");
    const used = site.query("select a.app_id, a.app_name from TORVEX_APPLICATIONS a inner join TORVEX_PAGES_LIVE p on p.application = a.app_id order by a.app_id")[0];
    await page.getByRole("link", { name: used.app_name, exact: true }).click();
    await page.getByRole("heading", { name: used.app_name, level: 1 }).waitFor();
    await page.getByRole("button", { name: "Delete" }).click();
    await dialog.getByText(/stays as long as/).waitFor();
    assert.deepEqual(work.faults, []);
    await work.close();
  });
});
