// Meta data: a sheet of pages by tags that is edited in place, and the tags of a site.
import assert from "node:assert/strict";
import { describe, test } from "node:test";
import { servedAuthors } from "./door.mjs";
import { assertAccessible, workAs } from "./workplace.mjs";

describe("meta data", () => {
  const site = servedAuthors();
  const idOf = (name) => site.query(`select metaData_id from TORVEX_METADATA where metaData_site = 'bg' and metaData_name = '${name}'`)[0].metaData_id;
  const rowOf = (pageId, tag) => site.query(`select metaData_value, metaData_inherited from TORVEX_PAGES_METADATA_DESIGN where metaData_pageId = ${pageId} and metaData_id = ${tag}`).map((row) => Object.values(row).join("|"));
  const pageAt = (nodeId) => site.query(`select pageId, title, editStatus from TORVEX_PAGES_DESIGN where nodeId = '${nodeId}'`)[0];
  const cell = (page, tag, title) => page.getByRole("textbox", { name: `${tag} of ${title}`, exact: true });

  test("a value is typed into the sheet, is inherited, and the page counts as changed", async () => {
    const tag = idOf("description");
    const { pageId, title } = pageAt("bg.en.03");
    site.sql(`delete from TORVEX_PAGES_METADATA_DESIGN where metaData_pageId = ${pageId}`);
    site.sql(`update TORVEX_PAGES_DESIGN set editStatus = 'P' where pageId = ${pageId}`);
    const work = await workAs(site, "iris");
    const { page } = work;
    await work.go("/torvex/metadata.asp");
    await cell(page, "description", title).waitFor();
    await assertAccessible(page, "the sheet");
    await cell(page, "description", title).fill("What happens in the garden");
    await cell(page, "description", title).press("Tab");
    await work.says(`description of ${title} is saved.`);
    assert.deepEqual(rowOf(pageId, tag), ["What happens in the garden|0"]);
    assert.equal(pageAt("bg.en.03").editStatus, "M");

    const inherit = page.getByRole("button", { name: `Take description of ${title} from the page above`, exact: true });
    await inherit.click();
    await page.waitForFunction((button) => button.getAttribute("aria-pressed") === "true", await inherit.elementHandle());
    assert.deepEqual(rowOf(pageId, tag), ["|1"]);
    await inherit.click();
    await page.waitForFunction((button) => button.getAttribute("aria-pressed") === "false", await inherit.elementHandle());
    assert.deepEqual(rowOf(pageId, tag), []);
    assert.deepEqual(work.faults, []);
    await work.close();
  });

  test("pages without a description come first; a value that somebody changed, and a page that she has, stay", async () => {
    const tag = idOf("description");
    const { pageId, title } = pageAt("bg.en.03");
    site.sql(`delete from TORVEX_PAGES_METADATA_DESIGN where metaData_pageId = ${pageId}`);
    const work = await workAs(site, "iris");
    const { page } = work;
    await work.go("/torvex/metadata.asp");
    await page.getByLabel("Order").selectOption({ label: "Without description first" });
    const without = site.query(`select nodeId from TORVEX_PAGES_DESIGN where site = 'bg' and lang = 'en' and nodeId not like '%.99%' and pageId not in (select metaData_pageId from TORVEX_PAGES_METADATA_DESIGN where metaData_id = ${tag}) order by nodeId`)[0].nodeId;
    await page.locator(".meta-sheet tbody tr").first().getByText(without, { exact: true }).waitFor();
    await cell(page, "description", title).waitFor();
    site.sql(`insert into TORVEX_PAGES_METADATA_DESIGN (metaData_pageId, metaData_id, metaData_value, metaData_inherited) values (${pageId}, ${tag}, 'Theirs', 0)`);
    await cell(page, "description", title).fill("Mine");
    await cell(page, "description", title).press("Tab");
    await page.getByText('Somebody has changed it meanwhile; it is "Theirs" now.').waitFor();
    await assertAccessible(page, "a value that somebody changed");
    assert.deepEqual(rowOf(pageId, tag), ["Theirs|0"]);
    site.sql("update TORVEX_LOGINS set sessionId = 'elsewhere' where loginId = 4");
    site.sql(`update TORVEX_PAGES_DESIGN set lockStatus = 1, lockedBy = 4 where pageId = ${pageId}`);
    await page.getByRole("button", { name: "Go on with mine" }).click();
    await page.getByText(/Heide Lorenz/).waitFor();
    assert.deepEqual(rowOf(pageId, tag), ["Theirs|0"]);
    site.sql(`update TORVEX_PAGES_DESIGN set lockStatus = 0, lockedBy = null where pageId = ${pageId}`);
    await page.getByRole("button", { name: "Go on with mine" }).click();
    await work.says(`description of ${title} is saved.`);
    assert.deepEqual(rowOf(pageId, tag), ["Mine|0"]);
    await work.close();
  });

  test("a tag is added, described and removed", async () => {
    const work = await workAs(site, "iris");
    const { page, dialog } = work;
    await work.go("/torvex/metadata.asp?tab=tags");
    await page.getByRole("button", { name: "New tag" }).click();
    await dialog.getByLabel("Name").fill("Description");
    await dialog.getByRole("button", { name: "Add" }).click();
    await dialog.getByText("The site has a tag of this name already.").waitFor();
    await dialog.getByLabel("Name").fill("robots");
    await dialog.getByLabel("Description").fill("What search engines may do");
    await dialog.getByRole("button", { name: "Add" }).click();
    await work.says("robots is added.");
    await page.getByRole("button", { name: "Change robots" }).click();
    await dialog.getByLabel("Description").fill("For search engines");
    await dialog.getByRole("button", { name: "Save" }).click();
    await work.says("robots is saved.");
    await page.getByText("For search engines").waitFor();
    await assertAccessible(page, "the tags");
    await page.getByRole("button", { name: "Delete robots" }).click();
    await dialog.getByRole("button", { name: "Remove for good" }).click();
    await work.says("robots is removed.");
    assert.deepEqual(site.query("select metaData_id from TORVEX_METADATA where metaData_name = 'robots'"), []);
    assert.deepEqual(work.faults, []);
    await work.close();
  });

  test("on a phone the sheet is read and typed into page by page", async () => {
    const work = await workAs(site, "iris", { width: 360, height: 740, dark: true });
    await work.go("/torvex/metadata.asp");
    await cell(work.page, "description", pageAt("bg.en.03").title).waitFor();
    await assertAccessible(work.page, "the sheet");
    await work.close();
  });
});
