// Sites, languages and titles of websites: what is added, changed and removed, and what is said when it can't be.
import assert from "node:assert/strict";
import { describe, test } from "node:test";
import { servedAuthors } from "./door.mjs";
import { assertAccessible, workAs } from "./workplace.mjs";

const statements = [
  "insert into TORVEX_ROLES (roleId, roleName, roleDesc, lock) values (9, 'Websites', '', '')",
  "insert into TORVEX_ROLES_LOGINS (roleId, loginId) values (9, 2)",
  "insert into TORVEX_ADVANCED_RIGHTS (roleId, advId, site, lang, viewAccess, editAccess) values (9, 11, '', '', 1, 1), (9, 12, '', '', 1, 1)",
  "insert into TORVEX_ROLES (roleId, roleName, roleDesc, lock) values (10, 'Readers', '', '')",
  "insert into TORVEX_ROLES_LOGINS (roleId, loginId) values (10, 5)",
  "insert into TORVEX_ADVANCED_RIGHTS (roleId, advId, site, lang, viewAccess, editAccess) values (10, 11, '', '', 1, 0), (10, 12, '', '', 1, 0), (10, 211, '', '', 1, 0)",
];

describe("websites", () => {
  const site = servedAuthors(statements);
  const namesOf = () => site.query("select site, name, description from TORVEX_SITES order by site").map((row) => Object.values(row).join("|"));
  const titleOf = () => site.query("select title from TORVEX_SITES_LANGUAGES where site = 'bg' and lang = 'de'")[0].title;
  const row = (page, name) => page.getByRole("row").filter({ has: page.getByRole("rowheader", { name }) });
  const press = (work, name) => work.dialog.getByRole("button", { name, exact: true }).click();

  test("a site is added, changed and removed; why one can't be is told in words", async () => {
    const work = await workAs(site, "iris");
    const { page, dialog } = work;
    await work.go("/torvex/sites.asp");
    await row(page, "Botanic Garden").getByText("Lindhaven Botanic Garden", { exact: true }).waitFor();
    await row(page, "Botanic Garden").getByText(/^\d+ pages$/).first().waitFor();
    await assertAccessible(page, "the sites");

    await page.getByRole("button", { name: "New site" }).click();
    await dialog.getByLabel("Code").fill("bg");
    await dialog.getByLabel("Name").fill("Greenhouse");
    await press(work, "Add");
    await dialog.getByText("Botanic Garden has this code already.").waitFor();
    await assertAccessible(page, "a refused site");
    await dialog.getByLabel("Code").fill("g");
    await dialog.getByLabel("Name").fill("Plant Institute");
    await press(work, "Add");
    await dialog.getByText("The site ri has this name already.").waitFor();
    await dialog.getByLabel("Name").fill("");
    await press(work, "Add");
    await dialog.getByText("A name is missing.").waitFor();
    await dialog.getByLabel("Name").fill("Greenhouse");
    await dialog.getByLabel("Code").fill("a/");
    await press(work, "Add");
    await dialog.getByText(/^The code must be two characters/).waitFor();
    assert.equal(namesOf().length, 2);
    await dialog.getByLabel("Code").fill("G");
    await press(work, "Add");
    await work.says("Greenhouse is added.");
    await row(page, "Greenhouse").waitFor();
    assert.equal(namesOf()[0], "0g|Greenhouse|");

    await page.getByRole("button", { name: "Change Greenhouse" }).click();
    await dialog.getByLabel("Description").fill("Under glass");
    site.sql("update TORVEX_SITES set description = 'Warm' where site = '0g'");
    await press(work, "Save");
    await dialog.getByText(/It is now: Greenhouse – Warm\./).waitFor();
    assert.equal(namesOf()[0], "0g|Greenhouse|Warm");
    await press(work, "Save");
    await work.says("Greenhouse is saved.");
    assert.equal(namesOf()[0], "0g|Greenhouse|Under glass");

    await page.getByRole("button", { name: "Delete Greenhouse" }).click();
    const remove = dialog.getByRole("button", { name: "Remove for good" });
    assert.equal(await remove.getAttribute("aria-disabled"), "true");
    await assertAccessible(page, "a removal");
    await dialog.getByLabel("Type Greenhouse to go on").fill("Greenhouse");
    await remove.click();
    await work.says("Greenhouse is removed.");
    await row(page, "Greenhouse").waitFor({ state: "detached" });
    assert.equal(namesOf().length, 2);
    await page.getByRole("button", { name: "Delete Botanic Garden" }).click();
    await dialog.getByText(/^Botanic Garden still has \d+ pages\./).waitFor();
    assert.equal(await remove.count(), 0);
    await dialog.getByText("Close").click();
    assert.deepEqual(work.faults, []);
    await work.close();
  });

  test("a site that somebody has open is read, not changed, and one in which somebody works isn't removed", async () => {
    site.sql("update TORVEX_LOGINS set sessionId = 'elsewhere', currentSite = 'xy.en' where loginId = 4");
    site.sql("insert into TORVEX_SITES (site, name, description, lock) values ('xy', 'Yard', '', 'elsewhere')");
    const work = await workAs(site, "iris");
    const { page, dialog } = work;
    await work.go("/torvex/sites.asp");
    await page.getByRole("button", { name: "Change Yard" }).click();
    await dialog.getByText("Heide Lorenz has this open; you can read it.").waitFor();
    assert.equal(await dialog.getByRole("button", { name: "Save" }).count(), 0);
    await dialog.getByText("Close").click();
    await page.getByRole("button", { name: "Delete Yard" }).click();
    await dialog.getByLabel("Type Yard to go on").fill("Yard");
    await dialog.getByRole("button", { name: "Remove for good" }).click();
    await dialog.getByText("Somebody works in it.").waitFor();
    site.sql("delete from TORVEX_SITES where site = 'xy'");
    await work.close();
  });

  test("a language is added to all sites with its character set, changed, and removed", async () => {
    const work = await workAs(site, "iris");
    const { page, dialog } = work;
    await work.go("/torvex/languages.asp");
    await row(page, "English").waitFor();
    await assertAccessible(page, "the languages");
    await page.getByRole("button", { name: "New language" }).click();
    await dialog.getByLabel("Code").fill("en");
    await dialog.getByLabel("Name").fill("Norsk");
    await press(work, "Add");
    await dialog.getByText("English has this code already.").waitFor();
    await dialog.getByLabel("Code").fill("no");
    await dialog.getByLabel("Name").fill("Deutsch");
    await press(work, "Add");
    await dialog.getByText("The language de has this name already.").waitFor();
    await dialog.getByLabel("Name").fill("Norsk");
    await press(work, "Add");
    await work.says("Norsk is added.");
    await row(page, "Norsk").getByText("0 pages").first().waitFor();
    await page.getByRole("button", { name: "Change Norsk" }).click();
    await dialog.getByLabel("Name").fill("English");
    await press(work, "Save");
    await dialog.getByText("The language en has this name already.").waitFor();
    await dialog.getByLabel("Name").fill("Norsk bokmål");
    await press(work, "Save");
    await work.says("Norsk bokmål is saved.");
    await page.getByRole("button", { name: "Delete Norsk bokmål" }).click();
    await dialog.getByLabel("Type Norsk bokmål to go on").fill("Norsk bokmål");
    await dialog.getByRole("button", { name: "Remove for good" }).click();
    await work.says("Norsk bokmål is removed.");
    assert.deepEqual(site.query("select lang from TORVEX_LANGUAGES order by lang").map(({ lang }) => lang), ["de", "en"]);
    await work.close();
  });

  test("a title is saved as its field is left, with Undo, where one may, and not over another's", async () => {
    const work = await workAs(site, "clover");
    const { page } = work;
    // She works in German.
    await page.addInitScript(() => localStorage.setItem("torvex.6.website", "bg.de"));
    await work.go("/torvex/websiteTitle.asp");
    const field = page.getByRole("textbox", { name: "Title of Botanic Garden · Deutsch" });
    await field.waitFor();
    await assertAccessible(page, "the titles");
    assert.equal(await page.getByRole("textbox", { name: /^Title of / }).count(), 2, "the German ones are hers");
    await field.fill("The garden");
    await field.press("Tab");
    await work.says(/is titled "The garden" now/);
    assert.equal(titleOf(), "The garden");
    await page.getByRole("button", { name: /^Undo/ }).first().click();
    await page.waitForFunction((input) => input.value === "Botanischer Garten Lindhaven", await field.elementHandle());
    assert.equal(titleOf(), "Botanischer Garten Lindhaven");

    site.sql("update TORVEX_SITES_LANGUAGES set title = 'Theirs' where site = 'bg' and lang = 'de'");
    await field.fill("Mine");
    await field.press("Tab");
    await page.getByText('Somebody has changed it meanwhile; it is "Theirs" now.').waitFor();
    await assertAccessible(page, "a title that somebody changed");
    assert.equal(titleOf(), "Theirs");
    assert.equal(await field.inputValue(), "Mine");
    await page.getByRole("button", { name: "Go on with mine" }).click();
    await work.says(/is titled "Mine" now/);
    assert.equal(titleOf(), "Mine");
    assert.deepEqual(work.faults, []);
    await work.close();
  });

  test("on a phone everything can be read, and who may not change sees no buttons for it", async () => {
    const work = await workAs(site, "reed", { width: 360, height: 740, dark: true });
    const { page } = work;
    for (const path of ["sites", "languages", "websiteTitle"]) {
      await work.go(`/torvex/${path}.asp`);
      await page.locator("tvx-websites").getByText("Lindhaven Plant Institute").first().waitFor();
      await assertAccessible(page, path);
      assert.equal(await page.locator("tvx-websites").getByRole("button").count(), 0);
      assert.equal(await page.locator("tvx-websites").getByRole("textbox").count(), 0);
    }
    await work.close();
  });
});
