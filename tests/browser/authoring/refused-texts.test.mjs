// What keeps a text from being saved, cleared, pasted or set up: its sentence, the next step, and the text that stays.
import assert from "node:assert/strict";
import { describe, test } from "node:test";
import { aBrowser, grid, openShell, viewWith, visit } from "./fake.mjs";
import { refused } from "./refusals.mjs";
import { edited } from "./support.mjs";

const feeds = ["feedId", "feedName", "feedDescription"];

// The page "Visit" with two texts, of which saving keeps the first.
function page(more = {}) {
  const stored = { 1: "<p>Welcome</p>", 2: "<p>Hours</p>" };
  return {
    "cManager/getNodeId": () => "bg.en.01",
    "cManager/getPageId": () => 2,
    "cManager/getPage": () => true,
    "cManager/get": () => visit,
    "cManager/getPageParameters": () => "PM0000",
    "cManager/isPage": () => true,
    "cManager/getBody": ({ bodyId }) => stored[bodyId],
    "cManager/checkOut": () => "0",
    "cManager/saveBody": ({ bodyId, bodyContent }) => {
      stored[bodyId] = bodyContent;
      return "0";
    },
    "cManager/getHTMLfeedList": () => grid(feeds, [[7, "Weather", "Of today"]]),
    "cManager/getBodyHTML": () => "<p>Rain</p>",
    "cManager/approvePage": () => "M000",
    "desk/getSettings": () => grid(["name"], []),
    "desk/saveDraft": () => "0",
    "desk/ask": () => "0",
    ...more,
  };
}

const callsOf = (sent, name) => sent.flatMap(({ args }) => args.calls ?? []).filter((call) => `${call.on}.${call.do}` === name);

async function open(browser, api) {
  const shell = await openShell(browser, { path: "/torvex/page.asp?pageId=2", view: viewWith({ 1: "<p>Welcome</p>", 2: "<p>Hours</p>" }), api: page(api) });
  const body = async (bodyId, entry) => {
    await shell.page.getByRole("button", { name: `Body ${bodyId}`, exact: true }).click();
    await shell.page.getByRole("menuitem", { name: entry, exact: true }).click();
  };
  const trouble = (text) => shell.page.getByRole("main").getByRole("alert").filter({ hasText: text });
  const toast = (text) => shell.page.getByRole("log").locator(".toast", { hasText: text });
  return { ...shell, body, trouble, toast };
}

async function type({ page: window, body }) {
  await body(1, "Edit");
  await window.getByRole("toolbar", { name: "Tools for text" }).waitFor();
  await window.keyboard.type("New. ");
  await edited(window).getByText("New. Welcome").waitFor();
}

const isStillThere = ({ page: window }) => edited(window).getByText("New. Welcome").waitFor();

describe("a text that isn't saved", () => {
  const chromium = aBrowser();

  test("since somebody has the page: she can be asked for it", async () => {
    const answer = refused("cManager.saveBody", "-1");
    const shell = await open(chromium.browser, { "cManager/saveBody": () => answer });
    await type(shell);
    await shell.page.keyboard.press("Control+s");
    const notice = shell.trouble(answer.problem.detail);
    await notice.getByRole("button", { name: "Ask for it" }).click();
    await shell.toast("Basil Crane").waitFor();
    assert.deepEqual(callsOf(shell.sent, "desk.ask").map((call) => call.with), [{ pageIdent: "2" }]);
    await notice.getByRole("button", { name: "Save again" }).waitFor();
    await isStillThere(shell);
    assert.deepEqual(shell.errors, []);
    await shell.context.close();
  });

  test("since the page was approved: it is saved when that is taken back", async () => {
    const answer = refused("cManager.saveBody", "-2");
    let approved = true;
    const saved = [];
    const shell = await open(chromium.browser, {
      "cManager/saveBody": ({ bodyContent }) => (approved ? answer : saved.push(bodyContent) && "0"),
      "cManager/getBody": ({ bodyId }) => (bodyId === 1 ? (saved.at(-1) ?? "<p>Welcome</p>") : "<p>Hours</p>"),
      "cManager/approvePage": ({ state }) => {
        approved = state !== 0;
        return "M000";
      },
    });
    await type(shell);
    await shell.page.keyboard.press("Control+s");
    const notice = shell.trouble(answer.problem.detail);
    await notice.getByRole("button", { name: "Take back the approval" }).click();
    await notice.waitFor({ state: "detached" });
    assert.deepEqual(saved, ["<p>New. Welcome</p>"]);
    await isStillThere(shell);
    await shell.context.close();
  });

  test("since the page is gone: it can be read as source, and the screen keeps it", async () => {
    const answer = refused("cManager.saveBody", "-3");
    const shell = await open(chromium.browser, { "cManager/saveBody": () => answer });
    await type(shell);
    await shell.page.keyboard.press("Control+s");
    const notice = shell.trouble(answer.problem.detail);
    await notice.getByRole("button", { name: "To the dashboard" }).waitFor();
    shell.calls["cManager/isPage"] = () => false;
    shell.calls["cManager/getPage"] = () => false;
    shell.calls["cManager/get"] = () => ({ ...visit, pgExists: false });
    await shell.page.evaluate(() => document.querySelector("tvx-page-view").load());
    await isStillThere(shell);
    await notice.getByRole("button", { name: "Source" }).click();
    await shell.page.getByRole("dialog").getByText("<p>New. Welcome</p>").waitFor();
    await shell.context.close();
  });

  for (const [code, step] of [["-1", "Ask for it"], ["-2", "Take back the approval"]])
    test(`when the first key can't take the page (${code}): "${step}"`, async () => {
      const answer = refused("cManager.checkOut", code);
      const shell = await open(chromium.browser, { "cManager/checkOut": () => answer });
      await type(shell);
      const notice = shell.trouble(answer.problem.detail);
      await notice.getByRole("button", { name: step }).waitFor();
      await notice.getByText("Your text is kept.").waitFor();
      await isStillThere(shell);
      await shell.context.close();
    });
});

describe("a body that isn't cleared", () => {
  const chromium = aBrowser();

  for (const [code, step] of [["-1", "To the dashboard"], ["-2", "Ask for it"]])
    test(`${code}: its sentence, and "${step}"`, async () => {
      const answer = refused("cManager.clearBody", code);
      const shell = await open(chromium.browser, { "cManager/clearBody": () => answer });
      await shell.body(2, "Empty this body");
      await shell.toast(answer.problem.detail).getByRole("button", { name: step }).waitFor();
      await edited(shell.page).getByText("Hours").waitFor();
      await shell.context.close();
    });

  test("by a failure is tried again", async () => {
    let tries = 0;
    const shell = await open(chromium.browser, { "cManager/clearBody": () => (++tries === 1 ? refused("cManager.clearBody", "-99") : "0") });
    await shell.body(2, "Empty this body");
    await shell.toast(refused("cManager.clearBody", "-99").problem.detail).getByRole("button", { name: "Try again" }).click();
    await shell.page.getByRole("log").getByRole("button", { name: "Undo" }).waitFor();
    assert.equal(tries, 2);
    await shell.context.close();
  });
});

describe("a body that isn't pasted", () => {
  const chromium = aBrowser();
  const paste = 'Paste here: Visit, body 1';

  for (const [code, step] of [["-1", "Ask for it"], ["-3", "To the dashboard"]])
    test(`${code}: its sentence, and "${step}"`, async () => {
      const answer = refused("cManager.pasteBody", code);
      const shell = await open(chromium.browser, { "cManager/pasteBody": () => answer });
      await shell.body(1, "Copy to the shelf");
      await shell.body(2, paste);
      await shell.toast(answer.problem.detail).getByRole("button", { name: step }).waitFor();
      await edited(shell.page).getByText("Hours").waitFor();
      await shell.context.close();
    });

  test("since what was copied is gone: it comes off the shelf", async () => {
    const answer = refused("cManager.pasteBody", "-2");
    const shell = await open(chromium.browser, { "cManager/pasteBody": () => answer });
    await shell.body(1, "Copy to the shelf");
    await shell.body(2, paste);
    await shell.toast(answer.problem.detail).getByRole("button", { name: "Take it off the shelf" }).click();
    await shell.page.getByRole("button", { name: "Body 2", exact: true }).click();
    await shell.page.getByRole("menuitem", { name: "Empty this body" }).waitFor();
    assert.equal(await shell.page.getByRole("menuitem", { name: paste }).count(), 0);
    await shell.context.close();
  });
});

describe("a setup of a body that isn't saved", () => {
  const chromium = aBrowser();

  for (const [code, step] of [["-1", "Ask for it"], ["-2", "To the dashboard"]])
    test(`${code}: its sentence, "${step}", and what was chosen stays`, async () => {
      const answer = refused("cManager.saveBodySetup", code);
      const shell = await open(chromium.browser, { "cManager/saveBodySetup": () => answer });
      await shell.body(2, "Text or feed...");
      const dialog = shell.page.getByRole("dialog");
      await dialog.getByLabel("HTML feed").check();
      await dialog.getByRole("combobox").selectOption({ label: "Weather" });
      await dialog.getByRole("button", { name: "Save", exact: true }).click();
      const notice = dialog.getByRole("alert").filter({ hasText: answer.problem.detail });
      await notice.waitFor();
      assert.equal(await dialog.getByLabel("HTML feed").isChecked(), true);
      await notice.getByRole("button", { name: step }).click();
      if (code === "-1") await shell.toast("Basil Crane").waitFor();
      else await dialog.waitFor({ state: "detached" });
      assert.equal(await dialog.count(), code === "-1" ? 1 : 0);
      await shell.context.close();
    });
});
