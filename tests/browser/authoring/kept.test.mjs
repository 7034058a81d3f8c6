import assert from "node:assert/strict";
import { describe, test } from "node:test";
import { passwords, servedAuthors } from "./door.mjs";
import { author, clickInto, edited, openPage, toEnd, untilRow } from "./support.mjs";

const words = "The garden in an hour";
const bodyOf = (site, pageId, bodyId) =>
  site.call("cManager.getBody", `pageIdent=${pageId}`, `bodyId=${bodyId}`, "bodyType=1", "feedId=0", "mode=D", "--login", "sa");

async function typesIn(site, text, name = "basil", pageName = /What.s on/) {
  const one = await author(site, name);
  await openPage(one.page, pageName);
  await clickInto(one.page, words);
  await one.page.keyboard.type(text);
  return one;
}

// The first key takes the page.
const untilTaken = (site) => untilRow(site, "select pageId from TORVEX_PAGES_DESIGN where pageId = 11 and lockStatus = 1");

async function logInAgain(page, name) {
  const dialog = page.getByRole("dialog", { name: "Log in again" });
  await dialog.waitFor({ timeout: 20_000 });
  await page.getByLabel("Password").fill(passwords[name]);
  await dialog.getByRole("button", { name: "Log in" }).click();
  await dialog.waitFor({ state: "detached" });
}

const save = async (page) => {
  await edited(page).locator("[contenteditable=true]").first().press("Control+s");
  await page.getByRole("status").filter({ hasText: "Saved" }).waitFor({ timeout: 15_000 });
};

describe("what an author types is never lost", () => {
  const site = servedAuthors();

  test("when the server is killed while she types", async () => {
    const { page, faults, close } = await typesIn(site, " eins");
    await site.kill();
    await page.keyboard.type(" zwei");
    await page.getByRole("status").filter({ hasText: "Not connected" }).waitFor({ timeout: 20_000 });
    await page.keyboard.type(" drei");
    await site.serve();
    await logInAgain(page, "basil");
    await edited(page).locator("[contenteditable=true]").first().focus();
    await toEnd(page);
    await page.keyboard.type(" vier");
    await save(page);
    assert.match(bodyOf(site, 11, 3), /eins zwei drei vier/);
    assert.deepEqual(faults, []);
    await close();
  });

  test("when her session is ended while she types", async () => {
    const { page, faults, close } = await typesIn(site, " fünf");
    await untilTaken(site);
    site.sql("update TORVEX_LOGINS set sessionId = 'gone' where username = 'basil'");
    await page.keyboard.type(" sechs");
    await edited(page).locator("[contenteditable=true]").first().press("Control+s");
    await logInAgain(page, "basil");
    await page.getByRole("status").filter({ hasText: "Saved" }).waitFor({ timeout: 15_000 });
    assert.match(bodyOf(site, 11, 3), /fünf sechs/);
    assert.deepEqual(faults, []);
    await close();
  });

  test("when the line is gone for long", async () => {
    const { page, context, faults, close } = await typesIn(site, " sieben");
    await context.setOffline(true);
    await page.keyboard.type(" acht");
    await page.getByRole("status").filter({ hasText: "Not connected" }).waitFor();
    await page.keyboard.type(" neun");
    await context.setOffline(false);
    await page.getByText("Not connected").waitFor({ state: "detached", timeout: 20_000 });
    await save(page);
    assert.match(bodyOf(site, 11, 3), /sieben acht neun/);
    assert.deepEqual(faults, []);
    await close();
  });

  test("when another author saved meanwhile", async () => {
    const { page, close } = await typesIn(site, " zehn");
    await untilTaken(site);
    site.sql("update TORVEX_BODIES_DESIGN set bodyText = '<p>Theirs</p>' where pageId = 11 and bodyId = 3");
    await edited(page).locator("[contenteditable=true]").first().press("Control+s");
    await page.getByText("Somebody else has saved another text here meanwhile").waitFor();
    assert.match(bodyOf(site, 11, 3), /Theirs/);
    assert.match(await edited(page).locator("body").innerText(), /zehn/);
    await close();
  });
});
