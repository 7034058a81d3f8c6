// The settings of the installation and one's own: what they mean, what is usual, a password, and the tokens of programs.
import assert from "node:assert/strict";
import { describe, test } from "node:test";
import { servedAuthors } from "./door.mjs";
import { assertAccessible, workAs } from "./workplace.mjs";

const statements = [
  "insert into TORVEX_ROLES (roleId, roleName, roleDesc, lock) values (9, 'Operators', '', '')",
  "insert into TORVEX_ROLES_LOGINS (roleId, loginId) values (9, 2)",
  "insert into TORVEX_ADVANCED_RIGHTS (roleId, advId, site, lang, viewAccess, editAccess) values (9, 61, '', '', 1, 1), (9, 21, '', '', 1, 1)",
  "update TORVEX_LOGINS set kind = 'program' where loginId = 5",
];

describe("settings", () => {
  const site = servedAuthors(statements);
  const valueOf = (parameter, login = 0) => site.query(`select value from TORVEX_SETUP where parameter = '${parameter}' and loginId = ${login}`)[0]?.value;

  test("a setting says what it means, is marked when it isn't usual, and goes back to it", async () => {
    const work = await workAs(site, "iris");
    const { page } = work;
    await work.go("/torvex/settings.asp");
    const results = page.getByLabel("Results of the site search on a page");
    await results.waitFor();
    await assertAccessible(page, "the settings");
    await results.fill("many");
    assert.equal(await results.getAttribute("aria-invalid"), "true");
    await page.getByRole("button", { name: "Save" }).and(page.locator("[aria-disabled=true]")).waitFor();
    await results.fill("35");
    await page.getByLabel("A page is approved as soon as it is checked in").check();
    await page.getByText("Usual: 20", { exact: true }).waitFor();
    await page.getByRole("button", { name: "Save" }).click();
    await work.says("The settings are saved.");
    assert.equal(valueOf("torvex_search_resultsPerPage"), "35");
    assert.equal(valueOf("torvex_autoApprove"), "1");

    await page.getByLabel("Only what isn't usual").check();
    await page.getByRole("button", { name: "Take what is usual" }).first().waitFor();
    await page.getByRole("searchbox", { name: "Filter", exact: true }).fill("search_results");
    await page.getByRole("button", { name: "Take what is usual" }).click();
    await page.getByRole("button", { name: "Save" }).click();
    await page.getByText("Nothing found").or(page.locator(".empty")).first().waitFor();
    assert.equal(valueOf("torvex_search_resultsPerPage"), "20");
    assert.deepEqual(work.faults, []);
    await work.close();
  });

  test("visitors' second factors are one of three choices", async () => {
    const work = await workAs(site, "iris");
    const { page } = work;
    await work.go("/torvex/settings.asp?words=secondFactor");
    const choice = page.getByLabel(/^Second factor of visitors/);
    await choice.waitFor();
    assert.deepEqual(await choice.locator("option").allTextContents(), ["Off", "Offered", "Demanded"]);
    await choice.selectOption({ label: "Offered" });
    await page.getByRole("button", { name: "Save" }).click();
    await work.says("The settings are saved.");
    assert.equal(valueOf("torvex_extranet_secondFactor"), "offered");
    assert.deepEqual(work.faults, []);
    await work.close();
  });

  test("addresses are tried with the filter that is being written", async () => {
    const work = await workAs(site, "iris");
    const { page } = work;
    await work.go("/torvex/settings.asp?words=access_IP");
    await page.getByLabel(/^Addresses from which authors may log in/).fill("10.0.0.0/8");
    await page.getByLabel(/compared as whole addresses/).check();
    const tried = page.getByLabel("Try an address with these two");
    await tried.fill("10.1.2.3");
    await page.getByRole("button", { name: "Try", exact: true }).click();
    await page.getByText("10.1.2.3 is let in.").waitFor();
    await tried.fill("192.0.2.1");
    await page.getByRole("button", { name: "Try", exact: true }).click();
    await page.getByText("192.0.2.1 is kept out.").waitFor();
    assert.equal(valueOf("torvex_access_IP_filter") ?? "", "", "nothing was saved");
    await work.close();
  });

  test("settings that were changed elsewhere aren't overwritten", async () => {
    const work = await workAs(site, "iris");
    const { page } = work;
    await work.go("/torvex/settings.asp");
    await page.getByLabel("The editor offers headings").uncheck();
    site.sql("update TORVEX_SETUP set value = '300' where parameter = 'torvex_search_maxResults' and loginId = 0");
    await page.getByRole("button", { name: "Save" }).click();
    await page.getByText("Somebody has changed this meanwhile.").waitFor();
    assert.equal(valueOf("torvex_editor_headings"), "1");
    await page.getByRole("button", { name: "Go on with mine" }).click();
    await page.getByText("Somebody has changed this meanwhile.").waitFor({ state: "detached" });
    assert.equal(await page.getByLabel("The most results of the site search").inputValue(), "300");
    await page.getByRole("button", { name: "Save" }).click();
    await work.says("The settings are saved.");
    assert.equal(valueOf("torvex_editor_headings"), "0");
    await work.close();
  });

  test("a language of one's own, another look, another password", async () => {
    const work = await workAs(site, "heide");
    const { page } = work;
    await work.go("/torvex/mySettings.asp");
    const language = page.getByLabel("The language of the interface after logging in");
    await language.waitFor();
    await assertAccessible(page, "my settings");
    await page.getByRole("button", { name: "Dark" }).click();
    await page.locator("html[data-appearance=dark]").waitFor();
    assert.equal(await page.getByText("Nothing uses this any more.").count(), 0);
    await page.getByLabel("Your password now").fill("wrong");
    const next = page.getByLabel("New password", { exact: true });
    await next.fill("QWERTY");
    await page.getByLabel("The new password again").fill("QWERTY");
    await page.getByText(/^This password is one of the 100,000 commonest/).waitFor();
    assert.equal(await next.getAttribute("aria-invalid"), "true");
    await page.getByRole("button", { name: "Change the password" }).and(page.locator("[aria-disabled=true]")).waitFor();
    await assertAccessible(page, "a common password");
    await next.fill("heath and fen");
    await page.getByText(/^This password is one of the 100,000 commonest/).waitFor({ state: "detached" });
    await page.getByLabel("The new password again").fill("heath");
    await page.getByText("The two aren't the same.").waitFor();
    await page.getByLabel("The new password again").fill("heath and fen");
    await page.getByRole("button", { name: "Change the password" }).click();
    await page.getByText("The password that you have now is another one.").first().waitFor();
    await page.getByLabel("Your password now").fill("calluna");
    await page.getByRole("button", { name: "Change the password" }).click();
    await work.says("Your password is changed.");
    await language.selectOption("de");
    await page.getByRole("heading", { name: "Meine Einstellungen" }).waitFor();
    assert.equal(valueOf("torvex_interface_language", 4), "de");
    assert.equal(await page.getByText("Zugriffstoken von Programmen").count(), 0, "she may not keep tokens");
    assert.deepEqual(work.faults, []);
    await work.close();
  });

  test("a program gets a token, which is shown once, and loses it", async () => {
    const work = await workAs(site, "iris", { width: 360, height: 740 });
    const { page } = work;
    await work.go("/torvex/mySettings.asp");
    await page.getByRole("button", { name: "New token" }).click();
    await work.dialog.getByLabel("Name").fill("Menu of the day");
    await work.dialog.getByRole("button", { name: "Add" }).click();
    await work.dialog.getByText("It is shown this once.").waitFor();
    assert.match(await work.dialog.locator("code").innerText(), /^tvx_/);
    await assertAccessible(page, "a token");
    await work.dialog.getByRole("button", { name: "I have noted it" }).click();
    await page.getByRole("listitem").filter({ hasText: "Menu of the day" }).getByRole("button", { name: "Revoke" }).click();
    await work.dialog.getByRole("button", { name: "Revoke" }).click();
    await page.getByText("This program has no token.").waitFor();
    assert.deepEqual(site.query("select name from TORVEX_API_TOKENS"), []);
    await assertAccessible(page, "my settings");
    await work.close();
  });
});
