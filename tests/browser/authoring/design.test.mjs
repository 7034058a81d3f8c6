// Templates and stylesheets: one is made, changed with what that changes for visitors, mended, and removed when nothing uses it.
import assert from "node:assert/strict";
import { existsSync, readFileSync } from "node:fs";
import { join } from "node:path";
import { describe, test } from "node:test";
import { servedAuthors } from "./door.mjs";
import { assertAccessible, workAs } from "./workplace.mjs";

describe("design", () => {
  let install;
  const site = servedAuthors([], (folder) => {
    install = folder;
  });
  const template = (name) => join(install, "contentTemplates/bg/en", name);
  const code = (page) => page.locator("tvx-code-field .cm-content");
  // As an editor for code gets a text from the clipboard.
  const paste = (page, text) => code(page).evaluate((content, pasted) => {
    const data = new DataTransfer();
    data.setData("text/plain", pasted);
    content.dispatchEvent(new ClipboardEvent("paste", { clipboardData: data, bubbles: true, cancelable: true }));
  }, text);
  const write = async (page, text) => {
    await code(page).click();
    await page.keyboard.press("Control+A");
    await page.waitForFunction(() => getSelection().toString().length > 1 || document.querySelector(".cm-content").textContent === "");
    await paste(page, text);
  };
  const save = (page) => page.getByRole("button", { name: /^Save/ });
  const openTemplate = async (work, id, name) => {
    await work.go(`/torvex/templates.asp?contentTemplate=${id}`);
    await work.page.getByRole("heading", { name, level: 1 }).waitFor();
    await code(work.page).waitFor();
  };

  test("a template is made, what is wrong with its tags is told, and it is removed", async () => {
    const work = await workAs(site, "iris");
    const { page, dialog } = work;
    await work.go("/torvex/templates.asp");
    await page.getByRole("link", { name: "Standard page" }).waitFor();
    await assertAccessible(page, "the templates");
    await page.getByRole("button", { name: "New template" }).click();
    await dialog.getByLabel("Name", { exact: true }).fill("Standard page");
    await dialog.getByLabel("Filename").fill("notice.html");
    await dialog.getByRole("button", { name: "Add" }).click();
    await dialog.getByText("Another one has this name.").waitFor();
    await dialog.getByLabel("Name", { exact: true }).fill("Notice");
    await dialog.getByLabel("Filename").fill("../notice.html");
    await dialog.getByRole("button", { name: "Add" }).click();
    await dialog.getByText(/^No file can have this name\./).waitFor();
    await dialog.getByLabel("Filename").fill("page.html");
    await dialog.getByRole("button", { name: "Add" }).click();
    await dialog.getByText(/^Another entry has this file/).waitFor();
    await dialog.getByLabel("Filename").fill("notice.html");
    await dialog.getByRole("button", { name: "Add" }).click();
    await page.getByRole("heading", { name: "Notice", level: 1 }).waitFor();
    assert.equal(readFileSync(template("notice.html"), "utf8"), "<!--!torvex_body_1!-->\n");

    await write(page, "<!--!box_start!-->\n<!--!torvex_body_1!-->\n<!--!torvex_body_3!-->\n");
    await page.getByText("The block box isn't closed.").waitFor();
    await page.getByText("Body 2 is left out.").waitFor();
    await page.locator(".template-tag").first().waitFor();
    await assertAccessible(page, "a template");
    await page.getByRole("button", { name: "Line 3" }).click();
    await page.keyboard.press("End");
    await paste(page, "\n<!--!torvex_body_2!--><!--!box_end!-->");
    await page.getByText("Body 2 is left out.").waitFor({ state: "detached" });
    await page.getByText("The block box isn't closed.").waitFor({ state: "detached" });
    await page.keyboard.press("Control+s");
    await work.says("Notice is saved.");
    assert.match(readFileSync(template("notice.html"), "utf8"), /torvex_body_3!-->\n<!--!torvex_body_2/);

    await page.getByRole("button", { name: "Delete" }).click();
    await dialog.getByText("Notice and its file notice.html go for good.").waitFor();
    await dialog.getByRole("button", { name: "Remove for good" }).click();
    await work.says("Notice is removed.");
    assert.equal(existsSync(template("notice.html")), false);
    assert.deepEqual(work.faults, []);
    await work.close();
  });

  test("a template in use says how many pages change, shows one, changes it for visitors, and stays", async () => {
    const work = await workAs(site, "iris");
    const { page, dialog } = work;
    await openTemplate(work, 2, "Standard page");
    await page.getByRole("button", { name: /^Save: \d+ live pages change$/ }).waitFor();
    const shown = page.frameLocator("iframe.asset-preview");
    await shown.locator("body").waitFor();
    const pageId = await page.getByLabel("Preview").inputValue();
    const before = readFileSync(template("page.html"), "utf8");
    await write(page, before.replace("<h1>", "<em>fresh paint</em><h1>"));
    await save(page).click();
    await work.says("Standard page is saved.");
    await shown.getByText("fresh paint").first().waitFor();
    assert.match(await (await fetch(`${site.address}/tvx.asp?pageId=${pageId}`)).text(), /fresh paint/);
    await page.getByRole("button", { name: "Delete" }).click();
    await dialog.getByText(/^Standard page stays as long as \d+ pages use it\.$/).waitFor();
    assert.equal(await dialog.getByRole("button", { name: "Remove for good" }).count(), 0);
    await assertAccessible(page, "what uses it");
    assert.deepEqual(work.faults, []);
    await work.close();
  });

  test("a template that somebody changed meanwhile isn't overwritten, and one that she has open is read", async () => {
    const work = await workAs(site, "iris");
    const { page } = work;
    await openTemplate(work, 3, "Picture page");
    site.sql("update TORVEX_TEMPLATES set tpl_description = 'Theirs' where tpl_id = 3");
    const text = page.getByRole("textbox", { name: "Name", exact: true });
    await text.fill("Pictures");
    await save(page).click();
    await page.getByText("Somebody has changed it meanwhile.").waitFor();
    await page.getByRole("button", { name: "Go on with mine" }).click();
    await page.getByText("Somebody has changed it meanwhile.").waitFor({ state: "detached" });
    assert.equal(await text.inputValue(), "Pictures");
    assert.equal(await page.getByRole("textbox", { name: "Description" }).inputValue(), "Theirs");
    await save(page).click();
    await work.says("Pictures is saved.");

    site.sql("update TORVEX_LOGINS set sessionId = 'elsewhere' where loginId = 4");
    site.sql("update TORVEX_TEMPLATES set lock = 'elsewhere' where tpl_id = 4");
    await openTemplate(work, 4, "Service page");
    await page.getByText("Heide Lorenz has this open; you can read it.").waitFor();
    assert.equal(await save(page).count(), 0);
    assert.equal(await code(page).getAttribute("aria-readonly"), "true");
    await work.close();
  });

  test("stylesheets and base templates are kept so, too, on a phone as well", async () => {
    const work = await workAs(site, "iris", { width: 360, height: 740, dark: true });
    const { page } = work;
    await work.go("/torvex/stylesheets.asp");
    await page.getByRole("link", { name: "Evening" }).click();
    await page.getByRole("heading", { name: "Evening", level: 1 }).waitFor();
    await code(page).waitFor();
    await assertAccessible(page, "a stylesheet");
    await code(page).click();
    await page.keyboard.press("Control+Home");
    await paste(page, "/* dusk */\n");
    await save(page).click();
    await work.says("Evening is saved.");
    assert.match(readFileSync(join(install, "wwwroot/stylesheets/bg/en/evening.css"), "utf8"), /^\/\* dusk \*\//);
    await work.go("/torvex/baseTemplates.asp");
    await page.getByRole("link", { name: "Sheet" }).click();
    await page.getByRole("heading", { name: "Sheet", level: 1 }).waitFor();
    await code(page).waitFor();
    await assertAccessible(page, "a base template");
    assert.deepEqual(work.faults, []);
    await work.close();
  });
});
