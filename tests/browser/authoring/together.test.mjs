import assert from "node:assert/strict";
import { describe, test } from "node:test";
import { passwords, servedAuthors } from "./door.mjs";
import { author, clickInto, edited, openPage, treeRow, untilRow } from "./support.mjs";

const words = "The garden in an hour";
const card = (page, name) => page.getByRole("region", { name });

describe("authors together", () => {
  const site = servedAuthors();

  test("one checks in; the other sees it wait, looks at what changed, approves and publishes it in two clicks", async () => {
    const reed = await author(site, "reed");
    await openPage(reed.page, /What.s on/);
    await clickInto(reed.page, words);
    await reed.page.keyboard.type(" Reeds Wort.");
    await reed.page.getByRole("main").getByRole("button", { name: "Check in" }).click();
    await reed.page.getByRole("main").getByRole("button", { name: "Edit" }).waitFor();

    const basil = await author(site, "basil");
    const toApprove = card(basil.page, "To approve");
    await toApprove.getByRole("link", { name: /What.s on/ }).waitFor();
    await toApprove.getByRole("row", { name: /What.s on/ }).click();
    await basil.page.getByRole("button", { name: "Compare" }).first().click();
    await basil.page.getByText("Reeds Wort.").first().waitFor();
    await basil.page.getByRole("main").getByRole("button", { name: /^(Publish|Approve)/ }).first().click();
    await basil.page.getByRole("dialog").getByRole("button", { name: /^Publish/ }).click();
    await basil.page.getByText("Published.").waitFor();
    assert.match(await site.live(11), /Reeds Wort\./);
    assert.deepEqual([...reed.faults, ...basil.faults], []);
    await reed.close();
    await basil.close();
  });

  test("whoever opens a page that another is in sees her name, can't type, and asks for it", async () => {
    const basil = await author(site, "basil");
    await openPage(basil.page, /What.s on/);
    await clickInto(basil.page, words);
    await basil.page.keyboard.type(" Basils Wort.");
    await untilRow(site, "select pageId from TORVEX_PAGES_DESIGN where pageId = 11 and lockStatus = 1");

    const iris = await author(site, "iris");
    await treeRow(iris.page, /What.s on/).first().click();
    const main = iris.page.getByRole("main");
    await main.getByText(/Basil Crane/).first().waitFor();
    await edited(iris.page).getByText(words).first().click();
    await iris.page.keyboard.type("nicht");
    assert.ok(!(await edited(iris.page).locator("body").innerText()).includes("nicht"));
    await main.getByRole("button", { name: "Ask for it" }).click();
    // Told with one of the next two pulses of every half minute.
    await basil.page.getByText(/Iris Falk asks for/).waitFor({ timeout: 75_000 });
    await basil.page.locator("tvx-toasts").getByRole("button", { name: "Check in" }).click();
    await untilRow(site, "select pageId from TORVEX_PAGES_DESIGN where pageId = 11 and lockStatus = 0");
    assert.deepEqual([...basil.faults, ...iris.faults], []);
    await basil.close();
    await iris.close();
  });

  test("logging in elsewhere ends the first window, which keeps the sentence", async () => {
    const first = await author(site, "heide", { lang: "de" });
    await openPage(first.page, "Programm");
    await clickInto(first.page, "für die man eine Jacke braucht");
    await first.page.keyboard.type(" Mein Satz.");
    const second = await author(site, "heide");
    await first.page.keyboard.press("Control+s");
    const dialog = first.page.getByRole("dialog", { name: "Erneut anmelden" });
    await dialog.waitFor({ timeout: 40_000 });
    await second.close();
    await first.page.getByLabel("Passwort").fill(passwords.heide);
    await dialog.getByRole("button", { name: "Anmelden" }).click();
    await dialog.waitFor({ state: "detached" });
    assert.match(await edited(first.page).locator("body").innerText(), /Mein Satz\./);
    assert.deepEqual(first.faults, []);
    await first.close();
  });

  test("whoever lost her session in two tabs gives her password in one, and goes on in both", async () => {
    const reed = await author(site, "reed");
    await openPage(reed.page, /What.s on/);
    const other = await reed.context.newPage();
    await other.goto(`${site.address}/torvex/search`);
    await other.getByRole("searchbox", { name: "Words" }).waitFor();
    await clickInto(reed.page, words);
    const elsewhere = await author(site, "reed");
    await reed.page.keyboard.type(" Reeds Satz.");
    const asks = (page) => page.getByRole("dialog", { name: "Log in again" });
    await asks(reed.page).waitFor();
    await other.getByRole("searchbox", { name: "Words" }).fill("garden");
    await asks(other).waitFor();
    await elsewhere.close();
    await reed.page.getByLabel("Password").fill(passwords.reed);
    await asks(reed.page).getByRole("button", { name: "Log in" }).click();
    await asks(reed.page).waitFor({ state: "detached" });
    await asks(other).waitFor({ state: "detached" });
    await other.getByRole("row", { name: /garden/i }).first().waitFor();
    await reed.page.keyboard.press("Control+s");
    await reed.page.locator("tvx-foot").getByText(/^Saved/).waitFor();
    assert.deepEqual(reed.faults, []);
    await reed.close();
  });
});
