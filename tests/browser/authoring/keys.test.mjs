// Keys of the tree and of the library: F2 names, Del removes, Ctrl+A takes all. All of them stand in one list.
import assert from "node:assert/strict";
import { describe, test } from "node:test";
import { findingsOfAxe } from "../support.mjs";
import { aBrowser, grid, openShell, opened, record, visit } from "./fake.mjs";

// A tree where "Visit" is called what was saved last.
function titled(parameters, save = () => "0") {
  const now = { title: "Visit" };
  let typed = "";
  const rows = () => record(2, "bg.en.01", now.title, "1PM000") + record(3, "bg.en.02", "Plants");
  return {
    now,
    "cManager/getSitemap": ({ flag }) => (flag ? rows() : record(1, "bg.en", "Home", "1PP000") + rows()),
    "cManager/getPage": () => true,
    "cManager/get": () => ({ ...visit, pgTitle: now.title }),
    "cManager/getPageParameters": () => parameters,
    "cManager/set": ({ pgTitle }) => {
      typed = pgTitle;
      return null;
    },
    "cManager/savePageSetup": () => {
      const answer = save(now);
      if (answer === "0") now.title = typed;
      return answer;
    },
  };
}

const refused = (code, kind, detail) =>
  ({ status: 409, problem: { type: `/torvex/api/problems/${kind}`, status: 409, operation: "cManager.savePageSetup", code, detail, title: "refused", holder: "Basil Crane" } });

async function pressF2(browser, api) {
  const shell = await openShell(browser, { api });
  const row = shell.page.getByRole("treeitem", { name: /^Visit/ });
  await row.focus();
  await shell.page.keyboard.press("F2");
  const dialog = shell.page.getByRole("dialog", { name: "Change the title" });
  const field = dialog.getByRole("textbox", { name: "Title" });
  await field.waitFor();
  return { ...shell, row, dialog, field };
}

const savings = (sent) => sent.flatMap(({ args }) => args.calls ?? []).filter((call) => call.do === "savePageSetup");

describe("F2 in the tree", () => {
  const chromium = aBrowser();

  test("asks for the title alone, saves it by Enter, and the tree shows it", async () => {
    const { page, sent, dialog, field, errors, context } = await pressF2(chromium.browser, titled("PM0000"));
    assert.equal(await field.inputValue(), "Visit");
    assert.ok(await field.evaluate((input) => input === document.activeElement && input.selectionEnd === 5 && input.selectionStart === 0));
    assert.deepEqual(await findingsOfAxe(page), []);
    await field.fill("Your visit");
    await page.keyboard.press("Enter");
    await dialog.waitFor({ state: "detached" });
    await page.getByRole("treeitem", { name: /^Your visit/ }).waitFor();
    const calls = sent.find(({ args }) => args.calls?.some((call) => call.do === "savePageSetup")).args.calls;
    assert.deepEqual(calls[1], { on: "cManager", get: ["pgTitle"], expect: { is: { pgTitle: "Visit" } } });
    assert.deepEqual(calls.filter((call) => call.set).map((call) => [call.set, call.to]), [["pgTitle", "Your visit"]]);
    assert.deepEqual(errors, []);
    await context.close();
  });

  test("saves nothing where nothing was changed", async () => {
    const { page, sent, dialog, context } = await pressF2(chromium.browser, titled("PM0000"));
    await page.keyboard.press("Enter");
    await dialog.waitFor({ state: "detached" });
    assert.deepEqual(savings(sent), []);
    await context.close();
  });

  test("tells a title that a neighbour has at its field", async () => {
    const api = titled("PM0000", () => refused("-21", "title-taken", "A neighbour has this title."));
    const { page, dialog, field, context } = await pressF2(chromium.browser, api);
    await field.fill("Plants");
    await page.keyboard.press("Enter");
    await dialog.getByText("A neighbour has this title.").waitFor();
    assert.equal(await field.getAttribute("aria-invalid"), "true");
    assert.deepEqual(await findingsOfAxe(page), []);
    await context.close();
  });

  test("offers to ask for a page that somebody took meanwhile", async () => {
    const api = titled("PM0000", () => refused("-1", "locked-by-other", "Basil Crane still has the page."));
    const { page, dialog, field, context } = await pressF2(chromium.browser, api);
    await field.fill("Your visit");
    await page.keyboard.press("Enter");
    await dialog.getByRole("alert").filter({ hasText: "Basil Crane still has the page." }).getByRole("button", { name: "Ask for it" }).waitFor();
    await context.close();
  });

  test("doesn't write over another title unknowingly, and does so when told again", async () => {
    const api = titled("PM0000");
    const { page, sent, dialog, field, context } = await pressF2(chromium.browser, api);
    api.now.title = "Visitors";
    await field.fill("Your visit");
    await page.keyboard.press("Enter");
    await dialog.getByText('The page is called "Visitors" by now.').waitFor();
    await field.press("Enter");
    await dialog.waitFor({ state: "detached" });
    const asked = sent.flatMap(({ args }) => args.calls ?? []).filter((call) => call.expect);
    assert.deepEqual(asked.map((call) => call.expect.is.pgTitle), ["Visit", "Visitors"]);
    await context.close();
  });

  test("says what saving takes back", async () => {
    const { dialog, context } = await pressF2(chromium.browser, titled("PM0010"));
    await dialog.getByRole("button", { name: "Save and withdraw the approval" }).waitFor();
    await context.close();
  });
});

const files = ["a", "b", "c"].map((name) => ["001", `001/${name}.png`, `Picture ${name}`, "image/png", 100, 20, 10, "Words"]);
const library = {
  "registers/getFolders": () => grid(["folder", "name", "parent", "level", "files"], [["001", "Summer", "", 1, 3]]),
  "registers/getMedia": () => grid(["folder", "path", "title", "type", "size", "width", "height", "alt"], files),
  "cManager/checkAdvRights": () => true,
  "desk/getUses": () => grid(["pageId"], []),
};

describe("keys of the library", () => {
  const chromium = aBrowser();

  for (const view of ["grid", "list"]) {
    const open = async () => {
      const shell = await openShell(chromium.browser, { path: "/torvex/images.asp?folder=001", entries: opened(111), api: library });
      const { page } = shell;
      await page.getByRole("option", { name: /Picture b/ }).waitFor();
      if (view === "list") await page.getByRole("button", { name: "List" }).click();
      const place = page.getByRole("main").getByRole(view === "grid" ? "option" : "row", { name: /Picture b/ });
      await place.focus();
      return { ...shell, place };
    };

    test(`F2 names the file that has the keyboard, in the ${view}`, async () => {
      const { page, context } = await open();
      await page.keyboard.press("F2");
      const titles = page.getByRole("dialog").getByRole("textbox", { name: /^Title/ });
      await titles.first().waitFor();
      assert.deepEqual(await titles.evaluateAll((fields) => fields.map((field) => field.value)), ["Picture b"]);
      await context.close();
    });

    test(`Ctrl+A takes all, and Del asks before they go, in the ${view}`, async () => {
      const { page, context } = await open();
      await page.keyboard.press("Control+a");
      await page.getByRole("group", { name: "3 selected" }).waitFor();
      await page.keyboard.press("Delete");
      await page.getByRole("dialog").getByText("3 files", { exact: false }).first().waitFor();
      assert.deepEqual(await findingsOfAxe(page), []);
      await context.close();
    });
  }
});

describe("the list of keys", () => {
  const chromium = aBrowser();

  test("has each key once, and those of texts and of the search", async () => {
    const { page, errors, context } = await openShell(chromium.browser);
    await page.getByRole("heading", { name: /^Hello/ }).waitFor();
    await page.keyboard.press("?");
    const keys = page.getByRole("dialog", { name: "Keys" });
    await keys.waitFor();
    const told = await keys.locator("kbd").allTextContents();
    assert.deepEqual(told, [...new Set(told)]);
    for (const key of ["Ctrl+S", "Ctrl+L", "Ctrl+Shift+H", "Ctrl+Space", "Shift+Enter", "Alt+↑", "Alt+↓"]) assert.ok(told.includes(key), key);
    assert.deepEqual(await findingsOfAxe(page), []);
    assert.deepEqual(errors, []);
    await context.close();
  });
});
