import assert from "node:assert/strict";
import { describe, test } from "node:test";
import { servedAuthors } from "./door.mjs";
import { workAs } from "./workplace.mjs";

const [visit, garden, whatsOn, stories] = [3, 7, 11, 15];
// Pages that link to the section Stories and to its pages, beside the four links that the demo has.
const linksTo = { 4: [15, 16, 17], 5: [15, 16, 17], 9: [15] };
const linking = ["Opening hours and tickets", "Getting here", "Alpine garden", "Palm House", "What’s on", "Data and methods", "Daten und Methoden"];

describe("a morning in the tree", () => {
  const site = servedAuthors();
  const rowOf = (pageId) => site.query(`select * from TORVEX_PAGES_DESIGN where pageId = ${pageId}`)[0];
  const tree = (page, name) => page.getByRole("tree", { name: /Pages/ }).getByRole("treeitem", { name }).first();

  function writeLinks() {
    for (const [pageId, targets] of Object.entries(linksTo)) {
      const links = targets.map((target) => `<a href="page(${target})">there</a>`).join(" ");
      site.call("cManager.saveBody", `pageIdent=${pageId}`, "bodyId=2", `bodyContent=<p>See ${links}</p>`, "--login", "sa");
    }
  }

  test("a page between two others, with dates; a branch moved by keys; an old section removed, with its eleven links told", async () => {
    writeLinks();
    const work = await workAs(site, "iris", { width: 1440, height: 900 });
    const { page, dialog } = work;

    await work.openPage(whatsOn);
    await work.choose("New page below...");
    await dialog.getByLabel("Title", { exact: true }).fill("Seed swap");
    await dialog.getByLabel(/^Below/).selectOption({ label: 'Before "A hundred and fifty years"' });
    await dialog.getByRole("button", { name: "Create" }).click();
    await page.locator("tvx-page-view h1", { hasText: "Seed swap" }).waitFor();
    const swap = site.query("select pageId from TORVEX_PAGES_DESIGN where title = 'Seed swap'")[0].pageId;
    assert.deepEqual([12, swap, 13].map((pageId) => rowOf(pageId).orderId), [1, 2, 3]);

    await page.getByRole("tab", { name: "Setup", exact: true }).click();
    await page.getByLabel("First day").fill("2027-02-06");
    await page.getByLabel("Last day").fill("2027-03-28");
    await page.getByRole("button", { name: "Save", exact: true }).click();
    await work.says("The setup is saved.");
    assert.deepEqual([rowOf(swap).onlineFrom, rowOf(swap).onlineTo], ["20270206", "20270328"]);

    // The branch goes one place up with all that is in it, then another one into a third.
    await tree(page, /^What’s on/).press("Alt+ArrowUp");
    await work.says("Moved up.");
    assert.deepEqual([whatsOn, garden].map((pageId) => rowOf(pageId).orderId), [2, 3]);
    assert.equal(rowOf(swap).parent, rowOf(whatsOn).nodeId);
    await tree(page, /^Visit/).press("ArrowRight");
    await tree(page, /^Plan your visit/).press("Control+x");
    await tree(page, /^The garden/).press("Control+v");
    await work.says("Moved.");
    assert.equal(rowOf(visit).parent, rowOf(garden).nodeId);
    assert.ok(rowOf(4).nodeId.startsWith(rowOf(visit).nodeId));

    await tree(page, /^Stories/).press("Delete");
    await work.says("Marked for removal.");
    await tree(page, /^Stories, marked/).click();
    await page.locator("tvx-page-view h1", { hasText: "Stories" }).waitFor();
    await page.getByRole("button", { name: "Remove from the website..." }).click();
    await dialog.getByText("3 pages go for good, with their texts and statistics.").waitFor();
    const told = dialog.getByRole("list", { name: "Links that will lead nowhere" }).getByRole("listitem");
    await told.first().waitFor();
    assert.equal(await told.count(), 11);
    const words = (await told.allInnerTexts()).join("\n");
    for (const title of linking) assert.ok(words.includes(title), `${title} in:\n${words}`);
    await dialog.getByRole("button", { name: "Remove for good" }).click();
    await work.says("Removed.");
    assert.equal(rowOf(stories), undefined);
    assert.equal(rowOf(16), undefined);
    assert.doesNotMatch(await site.live(1), /Stories/);
    assert.deepEqual(work.faults, []);
    await work.close();
  });
});
