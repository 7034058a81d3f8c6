import assert from "node:assert/strict";
import { describe, test } from "node:test";
import { passwords, servedAuthors } from "./door.mjs";
import { author, clickInto, edited, keptHere, openPage, toEnd, untilRow } from "./support.mjs";

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

  test("when she goes to and fro between two tabs", async () => {
    const { page, context, faults, close } = await typesIn(site, " Eins");
    const second = await context.newPage();
    await second.goto(`${site.address}/torvex/page.asp?pageId=11`);
    const elsewhere = (one) => one.getByText("is open in another tab of yours");
    await elsewhere(second).waitFor();
    // The tab that she clicks into has the newest text, the other one lets go of it and says where it is.
    await clickInto(second, words);
    await edited(second).getByText("Eins").waitFor();
    await second.keyboard.type(" Zwei");
    await elsewhere(page).waitFor();
    assert.equal(await edited(page).locator("[contenteditable=true]").count(), 0);
    await page.getByRole("button", { name: "Go on here" }).click();
    await edited(page).getByText("Eins Zwei").waitFor();
    await toEnd(page);
    await page.keyboard.type(" Drei");
    await elsewhere(second).waitFor();
    await save(page);
    // What one saves the other shows; nothing is left that could be taken for a newer text.
    await edited(second).getByText("Eins Zwei Drei").waitFor();
    await clickInto(second, words);
    await second.keyboard.type(" Vier");
    await save(second);
    assert.match(bodyOf(site, 11, 3), /Eins Zwei Drei Vier/);
    assert.equal(await page.getByText("isn't saved").count() + await second.getByText("isn't saved").count(), 0);
    assert.equal(await page.getByText("Somebody else has saved").count(), 0);
    assert.deepEqual(faults, []);
    await close();
  });

  test("when the other tab doesn't answer any more", async () => {
    const { page, context, close } = await typesIn(site, " Fünf");
    const second = await context.newPage();
    await second.goto(`${site.address}/torvex/page.asp?pageId=11`);
    await second.getByText("is open in another tab of yours").waitFor();
    await keptHere(page, "Fünf");
    // It still works, so what it had to send shall be there before: it would come after the other's saving.
    await untilRow(site, "select html from TORVEX_DRAFTS where html like '%Fünf%'");
    await page.evaluate(() => document.querySelector("tvx-page-frame").tabs.stop());
    await second.getByRole("button", { name: "Go on here" }).click();
    await edited(second).getByText("Fünf").waitFor();
    await toEnd(second);
    await second.keyboard.type(" Sechs");
    await save(second);
    assert.match(bodyOf(site, 11, 3), /Fünf Sechs/);
    await close();
  });

  test("when the line is gone for an hour, and her session with it", async () => {
    const one = await author(site, "basil");
    const { page, context, faults, close } = one;
    await page.clock.install();
    await openPage(page, /What.s on/);
    await clickInto(page, words);
    await page.keyboard.type(" Neun");
    await untilTaken(site);
    let asked = 0;
    page.on("request", (request) => { asked += request.url().endsWith("/api/session") ? 1 : 0; });
    await context.setOffline(true);
    const foot = page.getByRole("status").filter({ hasText: "Not connected; your text is kept here" });
    for (let minutes = 0; minutes < 60; minutes += 10) {
      await page.keyboard.type(` nach${minutes}`);
      await page.clock.runFor("10:00");
      await foot.waitFor();
    }
    assert.ok(asked > 55 && asked < 75, `asked ${asked} times in an hour`);
    assert.doesNotMatch(bodyOf(site, 11, 3), /nach/);
    site.sql("update TORVEX_LOGINS set sessionId = '' where username = 'basil'");
    await context.setOffline(false);
    await page.clock.runFor(60_000);
    await page.clock.resume();
    await logInAgain(page, "basil");
    // No key is needed: all that she typed is at the server.
    await untilRow(site, "select html from TORVEX_DRAFTS where html like '%Neun nach0 nach10 nach20 nach30 nach40 nach50%'");
    await edited(page).locator("[contenteditable=true]").first().focus();
    await toEnd(page);
    await page.keyboard.type(" zehn");
    await save(page);
    assert.match(bodyOf(site, 11, 3), /Neun nach0 nach10 nach20 nach30 nach40 nach50 zehn/);
    assert.deepEqual(faults, []);
    await close();
  });

  test("when she saves without a line: that is done when it is back", async () => {
    const { page, context, faults, close } = await typesIn(site, " elf");
    await context.setOffline(true);
    await page.keyboard.press("Control+s");
    await page.getByRole("status").filter({ hasText: "Not connected" }).waitFor();
    await page.keyboard.type(" zwölf");
    await keptHere(page, "elf zwölf");
    await context.setOffline(false);
    await page.getByRole("status").filter({ hasText: "Saved" }).waitFor();
    assert.match(bodyOf(site, 11, 3), /elf zwölf/);
    assert.deepEqual(faults, []);
    await close();
  });

  test("when the clock of the server is ahead of hers", async () => {
    const { page, context, close } = await typesIn(site, " früher");
    await untilRow(site, "select html from TORVEX_DRAFTS where html like '%früher%'");
    await page.keyboard.type(" später");
    await keptHere(page, "früher später");
    await page.close();
    site.sql("update TORVEX_DRAFTS set moment = '20991231235959' where html like '%früher%' and html not like '%später%'");
    const again = await context.newPage();
    await again.goto(`${site.address}/torvex/page.asp?pageId=11`);
    await again.locator(".draft-notice").getByRole("button", { name: "Keep it" }).click();
    await edited(again).getByText("früher später").waitFor();
    await save(again);
    assert.match(bodyOf(site, 11, 3), /früher später/);
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
