// What is asked before many pages change, or a place: branches, selections, people in the way, readers of folders.
import assert from "node:assert/strict";
import { describe, test } from "node:test";
import { aBrowser, grid, openShell, openVisit, opened, record, refusal, treeOf, visit } from "./fake.mjs";

const sitemap = treeOf(record(2, "bg.en.01", "Visit", "1PM000"), record(3, "bg.en.02", "Plants", "0PM000"), record(4, "bg.en.03", "Walks", "0PM000"));

const aPage = {
  "cManager/getNodeId": () => "bg.en.01",
  "cManager/getPageId": ({ nodeId }) => ({ "bg.en": 1, "bg.en.01": 2, "bg.en.02": 3, "bg.en.03": 4 })[nodeId],
  "cManager/getPage": () => true,
  "cManager/get": () => visit,
  "cManager/getPageParameters": () => "PM0000",
  "cManager/isPage": () => true,
  "cManager/getSitemap": sitemap,
  "cManager/getLoginScope": () => "bg.en",
  "desk/compare": () => grid(["part", "bodyId", "design", "live", "name"], []),
};

const callsOf = (sent, name) => [
  ...sent.filter((one) => one.name === name.replace(".", "/")).map(({ args }) => args),
  ...sent.flatMap(({ args }) => args.calls ?? []).filter((call) => `${call.on}.${call.do}` === name).map((call) => call.with),
];

async function openPage(browser, api) {
  const shell = await openVisit(browser, { ...aPage, ...api });
  return { ...shell, says: (text) => shell.page.getByRole("log").getByText(text).first().waitFor() };
}

describe("publishing a branch", () => {
  const chromium = aBrowser();
  const names = ["pageId", "nodeId", "title", "state", "holder", "goes", "reason"];
  const before = [
    [2, "bg.en.01", "Visit", "approved", "", true, ""],
    [5, "bg.en.01.01", "Old prices", "marked", "", true, ""],
    [6, "bg.en.01.02", "Opening hours", "changed", "", false, "notApproved"],
    [7, "bg.en.01.03", "Map", "changed", "Basil Crane", false, "held"],
    [8, "bg.en.01.04", "Imprint", "live", "", false, "unchanged"],
  ];
  const after = [
    [2, "bg.en.01", "Visit", "live", "", false, "unchanged"],
    [6, "bg.en.01.02", "Opening hours", "live", "", false, "unchanged"],
    [7, "bg.en.01.03", "Map", "changed", "Basil Crane", false, "held"],
    [8, "bg.en.01.04", "Imprint", "live", "", false, "unchanged"],
  ];

  const branch = () => {
    let rows = before;
    return {
      "desk/getBranch": () => grid(names, rows),
      "cManager/approvePages": () => "",
      "cManager/publishPageCascading": () => {
        rows = after;
        return "0";
      },
    };
  };

  test("lists what goes, what goes for good, and what stays and why", async () => {
    const { choose, dialog, errors, context } = await openPage(chromium.browser, branch());
    await choose("Publish the branch...");
    const goes = dialog.getByRole("list", { name: "2 pages go" });
    await goes.getByRole("listitem").filter({ hasText: "Visit" }).waitFor();
    await goes.getByRole("listitem").filter({ hasText: "Old prices" }).getByText("Its removal is published: it goes with all below it.").waitFor();
    const stays = dialog.getByRole("list", { name: "2 pages stay as they are" });
    await stays.getByRole("listitem").filter({ hasText: "Opening hours" }).getByText("not approved").waitFor();
    await stays.getByRole("listitem").filter({ hasText: "Map" }).getByText("held by Basil Crane").waitFor();
    await dialog.getByText("1 page is as on the website already.").waitFor();
    assert.deepEqual(errors, []);
    await context.close();
  });

  test("approves what is changed first, where that is wished, and says how many went", async () => {
    const { choose, dialog, says, sent, context } = await openPage(chromium.browser, branch());
    await choose("Publish the branch...");
    await dialog.getByLabel("Approve 1 changed page first").check();
    await dialog.getByRole("button", { name: "Publish 3 pages" }).click();
    await says("3 pages are published.");
    await dialog.waitFor({ state: "detached" });
    assert.deepEqual(callsOf(sent, "cManager.approvePages"), [{ pageList: "6" }]);
    assert.deepEqual(callsOf(sent, "cManager.publishPageCascading"), [{ pageIdent: "2" }]);
    await context.close();
  });

  test("leaves open what stayed against expectation", async () => {
    const api = { ...branch(), "cManager/publishPageCascading": () => "0" };
    const { choose, dialog, says, context } = await openPage(chromium.browser, api);
    await choose("Publish the branch...");
    await dialog.getByRole("button", { name: "Publish 2 pages" }).click();
    await says("0 pages are published.");
    await dialog.getByRole("list", { name: "2 pages go" }).waitFor();
    await context.close();
  });
});

describe("a move that somebody is in the way of", () => {
  const chromium = aBrowser();
  const names = ["loginId", "name", "siteId", "lang", "pageId", "since", "idleSeconds"];
  const heide = [4, "Heide Lorenz", "bg", "en", 3, "2026-06-15T10:00:00", 20];
  const basil = [3, "Basil Crane", "bg", "en", 0, "2026-06-15T09:00:00", 900];
  const me = [2, "Iris Falk", "bg", "en", 2, "2026-06-15T10:00:00", 0];

  const website = () => {
    const state = { people: [me, heide, basil] };
    const api = {
      "desk/getOnline": () => grid(names, state.people),
      "desk/ask": () => "0",
      "desk/freeIdle": () => {
        state.people = state.people.filter((one) => one !== basil);
        return 1;
      },
      "cManager/movePage": () => (state.people.length > 1 ? refusal("cManager.movePage", "-1", "Somebody works there.") : "bg.en.02.01"),
    };
    return { state, api };
  };

  const moveBelowPlants = async ({ choose, page }) => {
    await choose("Move to...");
    const dialog = page.getByRole("dialog", { name: /Move "Visit"/ });
    await dialog.getByRole("treeitem", { name: "Plants" }).click();
    await dialog.getByRole("button", { name: "Move here" }).click();
    const inTheWay = page.getByRole("dialog", { name: "Somebody works in this website" });
    await inTheWay.waitFor();
    return inTheWay;
  };

  test("names them and how long they haven't moved, not its own author", async () => {
    const { api } = website();
    const shell = await openPage(chromium.browser, api);
    const dialog = await moveBelowPlants(shell);
    await dialog.getByRole("listitem").filter({ hasText: "Heide Lorenz" }).getByText("is working").waitFor();
    await dialog.getByRole("listitem").filter({ hasText: "Basil Crane" }).getByText("no key for 15 minutes").waitFor();
    assert.equal(await dialog.getByText("Iris Falk").count(), 0);
    await shell.context.close();
  });

  test("asks those who are on a page", async () => {
    const { api } = website();
    const shell = await openPage(chromium.browser, api);
    const dialog = await moveBelowPlants(shell);
    await dialog.getByRole("button", { name: "Ask them" }).click();
    await dialog.getByText("They have been asked.").waitFor();
    assert.deepEqual(callsOf(shell.sent, "desk.ask"), [{ pageIdent: "3" }]);
    await shell.context.close();
  });

  test("frees who is gone, and happens by itself when the last has left", async () => {
    const { state, api } = website();
    const shell = await openPage(chromium.browser, api);
    const dialog = await moveBelowPlants(shell);
    await dialog.getByRole("button", { name: "Free 1 who is gone" }).click();
    await dialog.getByText("Basil Crane").waitFor({ state: "detached" });
    await dialog.getByRole("button", { name: "Move when they have left" }).click();
    await dialog.getByText("The page moves as soon as they have left. Keep this open.").waitFor();
    state.people = [me];
    await shell.says("Moved.");
    assert.equal(callsOf(shell.sent, "cManager.movePage").length, 2);
    assert.deepEqual(callsOf(shell.sent, "desk.freeIdle"), [{ site: "bg", lang: "en" }]);
    await shell.context.close();
  });
});

describe("several pages that are selected", () => {
  const chromium = aBrowser();

  const select = async (page, ...titles) => {
    for (const title of titles) await page.getByRole("checkbox", { name: new RegExp(title) }).check();
  };

  test("are published parents first, one by one, and those that stay say why", async () => {
    const publish = ({ pageIdent }) => (pageIdent === "3" ? refusal("cManager.publishPage", "-2", "It isn't approved.") : "1");
    const api = { "cManager/getSitemap": sitemap, "cManager/publishPage": publish };
    const { page, sent, errors, context } = await openShell(chromium.browser, { path: "/torvex/sitemap", api });
    await select(page, "Walks", "Plants", "Visit");
    await page.getByRole("group", { name: "3 selected" }).getByRole("button", { name: "Publish" }).click();
    const dialog = page.getByRole("dialog", { name: "Publish" });
    await dialog.getByRole("listitem").filter({ hasText: "Plants" }).getByText("It isn't approved.").waitFor();
    await page.getByRole("log").getByText("2 pages done.").waitFor();
    assert.deepEqual(callsOf(sent, "cManager.publishPage").map(({ pageIdent }) => pageIdent), ["2", "3", "4"]);
    await dialog.getByRole("button", { name: "Close" }).last().click();
    await dialog.waitFor({ state: "detached" });
    assert.deepEqual(errors, []);
    await context.close();
  });

  test("are approved, and the rest is left when it is stopped", async () => {
    const goOn = [];
    const approve = async () => {
      await new Promise((resolve) => goOn.push(resolve));
      return "M001";
    };
    const api = { "cManager/getSitemap": sitemap, "cManager/approvePage": approve };
    const { page, sent, context } = await openShell(chromium.browser, { path: "/torvex/sitemap", api });
    await select(page, "Visit", "Plants", "Walks");
    await page.getByRole("group", { name: "3 selected" }).getByRole("button", { name: "Approve" }).click();
    const dialog = page.getByRole("dialog", { name: "Approve" });
    await dialog.getByText("0 of 3").waitFor();
    await dialog.getByRole("button", { name: "Stop" }).click();
    goOn.shift()();
    await page.getByRole("log").getByText("1 page done.").waitFor();
    assert.equal(callsOf(sent, "cManager.approvePage").length, 1);
    await context.close();
  });
});

describe("a comparison", () => {
  const chromium = aBrowser();
  const rows = [
    ["title", 0, "Visiting", "Visit", ""],
    ["body", 1, "<p>We meet at <b>eleven</b> by the palm house.</p>", "<p>We meet at <b>ten</b> by the palm house.</p>", ""],
    ["body", 2, "<p class='lead'>The same words.</p>", "<p>The same words.</p>", ""],
  ];

  test("shows setup as a table, texts by their words with marks, and their source", async () => {
    const api = { ...aPage, "desk/compare": () => grid(["part", "bodyId", "design", "live", "name"], rows) };
    const { page, errors, context } = await openShell(chromium.browser, { path: "/torvex/page.asp?pageId=2&look=compare", api });
    const compare = page.getByRole("region", { name: "Compare" });
    const setup = compare.getByRole("row", { name: /Title/ });
    await setup.waitFor();
    assert.deepEqual((await setup.locator("del, ins").allInnerTexts()).map((text) => text.trim()), ["Visit", "Visiting"]);
    const first = compare.locator("section", { has: page.getByRole("heading", { name: /^Text 1/ }) });
    assert.deepEqual([await first.locator("del").allInnerTexts(), await first.locator("ins").allInnerTexts()], [["ten"], ["eleven"]]);
    const second = compare.locator("section", { has: page.getByRole("heading", { name: /^Text 2/ }) });
    assert.equal(await second.locator("del, ins").count(), 0);
    await compare.getByRole("button", { name: "Source" }).click();
    assert.match((await second.locator("ins").allInnerTexts()).join(""), /class='lead'/);
    assert.deepEqual(errors, []);
    await context.close();
  });
});

describe("who may reach a folder", () => {
  const chromium = aBrowser();

  test("is chosen among the groups; everybody and the rest exclude each other", async () => {
    const groups = [[0, "inherited", 0], [1, "everybody", 1], [5, "Friends", 0], [6, "Press", 0]];
    const media = {
      "registers/getFolders": () => grid(["folder", "name", "parent", "level", "files"], [["001", "Press", "", 1, 0]]),
      "registers/getMedia": () => grid(["folder", "path"], []),
      "cManager/checkAdvRights": () => true,
      "cManager/getFolderGroups": () => grid(["groupId", "name", "flag"], groups),
      "cManager/setFolderGroup": () => null,
    };
    const { page, sent, errors, context } = await openShell(chromium.browser, { path: "/torvex/images.asp?folder=001", entries: opened(111), api: media });
    await page.getByRole("button", { name: "More for this folder" }).click();
    await page.getByRole("menuitem", { name: "Who may reach it" }).click();
    const dialog = page.getByRole("dialog", { name: 'Who may reach "Press"' });
    await dialog.getByLabel("Friends").check();
    assert.equal(await dialog.getByRole("checkbox").nth(1).isChecked(), false);
    await dialog.getByRole("button", { name: "Save" }).click();
    await dialog.waitFor({ state: "detached" });
    assert.deepEqual(callsOf(sent, "cManager.setFolderGroup").map(({ groupId, accessFlag }) => [groupId, accessFlag]), [[1, false], [5, true]]);
    assert.deepEqual(errors, []);
    await context.close();
  });
});
