// A setup, a new page or a step in the tree that is refused: its sentence where it belongs, the next step, and all that was typed.
import assert from "node:assert/strict";
import { describe, test } from "node:test";
import { findingsOfAxe } from "../support.mjs";
import { aBrowser, grid, openVisit, record, treeOf, visit } from "./fake.mjs";
import { refused } from "./refusals.mjs";

const setup = {
  pgType: "P", pgBaseTemplateId: 1, pgStylesheetId: 1, pgAppId: -1, pgAppParamPublic: "", pgAppParamAdmin: "", pgAppSystemFolder: -1,
  pgNavigation: "M", pgPrevious: 1, pgNext: 3, pgUp: 1, pgBreadcrumb: "1", pgDynMenu: "1", pgGroups: "5", pgLoginPage: 3,
};

const api = (more = {}, own = {}) => ({
  "cManager/getNodeId": ({ pageId }) => (Number(pageId) === 1 ? "bg.en" : "bg.en.01"),
  "cManager/getPageId": ({ nodeId }) => (nodeId === "bg.en" ? 1 : 2),
  "cManager/getSitemap": treeOf(record(2, "bg.en.01", "Visit", "1PM000"), record(3, "bg.en.02", "Plants")),
  "cManager/getPage": () => true,
  "cManager/get": () => ({ ...visit, ...setup, ...own }),
  "cManager/getPageParameters": () => "PM0000",
  "cManager/getPageTitle": () => "Home",
  "cManager/isPage": () => true,
  "cManager/getPageGroups": () => grid(["groupId", "name", "mark"], [[0, "inherited", 0], [5, "Friends", 1]]),
  "cManager/getMetaData": () => grid(["metaData_id", "metaData_name", "metaData_value", "metaData_inherited"], []),
  "cManager/getSystemFolders": () => grid(["pageId", "title"], [[9, "Orders"]]),
  "template/getTemplateList": () => grid(["tpl_id", "tpl_name", "tpl_description"], [[1, "page.html", ""]]),
  "BaseTemplate/getBaseTemplateList": () => grid(["btpl_id", "btpl_name", "btpl_description"], [[1, "base.html", ""]]),
  "StyleSheet/getStylesheetList": () => grid(["ss_id", "ss_name", "ss_description"], [[1, "site.css", ""]]),
  "application/getApplicationList": () => grid(["app_id", "app_name", "app_description"], [[4, "Shop", ""]]),
  "desk/ask": () => "0",
  ...more,
});

// The sheet of the page "Visit" with another title typed; `answer` is what saving gives from then on.
async function openSheet(browser, own = {}) {
  let answer = "0";
  const shell = await openVisit(browser, api({ "cManager/savePageSetup": () => answer }, own));
  await shell.page.getByRole("tab", { name: "Setup", exact: true }).click();
  const sheet = shell.page.getByRole("form", { name: "Setup of the page" });
  const title = sheet.getByLabel("Title", { exact: true });
  await title.fill("Visiting");
  const save = (code) => {
    answer = refused("cManager.savePageSetup", code);
    return sheet.getByRole("button", { name: "Save", exact: true }).click();
  };
  const stays = async () => assert.equal(await title.inputValue(), "Visiting");
  return { ...shell, sheet, save, stays, sentence: () => answer.problem.detail, accept: () => { answer = "0"; } };
}

const atFields = [
  [{}, {
    "-21": "pgTitle", "-22": "pgType", "-23": "pgTemplateId", "-25": "pgBaseTemplateId", "-26": "pgStylesheetId", "-27": "pgPrevious", "-28": "pgNext", "-29": "pgUp",
    "-30": "pgLoginPage", "-32": "pgOnlineFrom", "-33": "pgOnlineTo", "-34": "pgTemplateId",
  }],
  [{ pgType: "A", pgAppId: 4, pgNavigation: "", pgGroups: "0" }, { "-24": "pgAppId", "-35": "pgAppSystemFolder" }],
];

describe("a setup that is refused", () => {
  const chromium = aBrowser();

  for (const [own, codes] of atFields)
    test(`says so at its field, to which the summary leads (${Object.keys(codes)})`, async () => {
      const { page, sheet, save, stays, sentence, errors, context } = await openSheet(chromium.browser, own);
      for (const [code, field] of Object.entries(codes)) {
        await save(code);
        const wrong = sheet.locator(`#setup-${field}[aria-invalid=true], #setup-${field} [aria-invalid=true]`);
        await wrong.waitFor();
        const said = await sheet.locator(`#${await wrong.getAttribute("aria-describedby")}`).innerText();
        assert.equal(said, sentence(), code);
        await sheet.getByRole("alert").getByRole("link", { name: sentence() }).click();
        assert.ok(await wrong.evaluate((element) => element === document.activeElement), `${code} leads to ${field}`);
        await stays();
      }
      assert.deepEqual(await findingsOfAxe(page), []);
      assert.deepEqual(errors, []);
      await context.close();
    });

  test("as a whole names the next step above the sheet", async () => {
    const { page, sheet, save, stays, sentence, accept, sent, context } = await openSheet(chromium.browser);
    const steps = { "-1": "Ask for it", "-2": "To the dashboard", "-4": "To the dashboard", "-20": "To the dashboard", "-99": "Try again" };
    for (const [code, step] of Object.entries(steps)) {
      await save(code);
      await sheet.getByRole("alert").filter({ hasText: sentence() }).getByRole("button", { name: step }).waitFor();
      await stays();
    }
    accept();
    await sheet.getByRole("button", { name: "Try again" }).click();
    await page.getByRole("log").getByText("The setup is saved.").waitFor();
    const titles = sent.flatMap(({ args }) => args.calls ?? []).filter((call) => call.set === "pgTitle").map((call) => call.to);
    assert.deepEqual([...new Set(titles)], ["Visiting"]);
    await context.close();
  });
});

describe("a new page that is refused", () => {
  const chromium = aBrowser();
  const inTheWindow = { "-3": "", "-4": "To the dashboard", "-22": "", "-23": "", "-25": "", "-26": "", "-27": "", "-30": "", "-32": "", "-33": "", "-35": "", "-99": "" };

  test("says so in its window, where the title stays", async () => {
    let answer;
    const { choose, dialog, errors, context } = await openVisit(chromium.browser, api({ "cManager/saveNewPageSetup": () => answer }));
    await choose("New page below...");
    const title = dialog.getByLabel("Title", { exact: true });
    await title.fill("Routes");
    for (const [code, step] of Object.entries(inTheWindow)) {
      answer = refused("cManager.saveNewPageSetup", code);
      // Some have the same sentence: each is waited for.
      answer.problem.detail += ` (${code})`;
      await dialog.getByRole("button", { name: "Create", exact: true }).click();
      const notice = dialog.getByRole("alert").filter({ hasText: answer.problem.detail });
      await notice.waitFor();
      assert.deepEqual(await notice.getByRole("button").allInnerTexts(), step ? [step] : [], code);
      assert.equal(await title.inputValue(), "Routes");
    }
    answer = refused("cManager.saveNewPageSetup", "-21");
    await dialog.getByRole("button", { name: "Create", exact: true }).click();
    await dialog.locator("#new-title[aria-invalid=true]").waitFor();
    await dialog.getByText(answer.problem.detail).waitFor();
    await dialog.getByRole("radio", { name: "Application" }).click();
    await dialog.getByLabel("Application", { exact: true }).selectOption({ label: "Shop" });
    answer = refused("cManager.saveNewPageSetup", "-24");
    await dialog.getByRole("button", { name: "Create", exact: true }).click();
    await dialog.locator("#new-application[aria-invalid=true]").waitFor();
    await dialog.getByText(answer.problem.detail).waitFor();
    assert.equal(await title.inputValue(), "Routes");
    assert.deepEqual(errors, []);
    await context.close();
  });

  test("since the page above is gone leads away from it", async () => {
    const answer = refused("cManager.saveNewPageSetup", "-4");
    const { page, choose, dialog, context } = await openVisit(chromium.browser, api({ "cManager/saveNewPageSetup": () => answer }));
    await choose("New page below...");
    await dialog.getByLabel("Title", { exact: true }).fill("Routes");
    await dialog.getByRole("button", { name: "Create", exact: true }).click();
    await dialog.getByRole("button", { name: "To the dashboard" }).click();
    await page.waitForURL("**/torvex/");
    await dialog.waitFor({ state: "detached" });
    await context.close();
  });
});

describe("a step in the tree that is refused", () => {
  const chromium = aBrowser();

  for (const code of ["-1", "-99"])
    test(`${code}: its sentence, and another try`, async () => {
      let tries = 0;
      const answer = refused("cManager.moveNode", code);
      const { page, sent, context } = await openVisit(chromium.browser, api({ "cManager/moveNode": () => (++tries === 1 ? answer : "") }));
      const plants = page.getByRole("treeitem", { name: /Plants/ });
      await plants.focus();
      await page.keyboard.press("Alt+ArrowUp");
      await page.getByRole("log").locator(".toast", { hasText: answer.problem.detail }).getByRole("button", { name: "Try again" }).click();
      await page.getByRole("log").getByRole("button", { name: "Undo" }).waitFor();
      const calls = sent.flatMap(({ args }) => args.calls ?? []).filter((call) => call.do === "moveNode");
      assert.deepEqual(calls.map((call) => call.with), Array(2).fill({ nodeIdentFrom: "3", nodeIdentTo: "2", direction: "up" }));
      await context.close();
    });
});
