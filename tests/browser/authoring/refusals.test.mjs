// What a refusal says, and what its reader can do next.
import assert from "node:assert/strict";
import { describe, test } from "node:test";
import { aBrowser, grid, openShell, openVisit, opened, record, treeOf, visit } from "./fake.mjs";
import { holder, labels, refused } from "./refusals.mjs";

// A page by what `getPageParameters` says of it.
const pageIn = (parameters, more = {}) => ({
  "cManager/getNodeId": ({ pageId }) => (Number(pageId) === 1 ? "bg.en" : "bg.en.01"),
  "cManager/getPageId": ({ nodeId }) => (nodeId === "bg.en" ? 1 : 2),
  "cManager/getPage": () => true,
  "cManager/get": () => ({ ...visit, pgLockedBy: holder, pgLockingDate: "2026-06-15T10:00:00" }),
  "cManager/getPageParameters": () => parameters,
  "cManager/isPage": () => true,
  "cManager/getSitemap": ({ startNode }) => (startNode ? record(2, "bg.en.01", "Visit", "1PM000") : record(1, "bg.en", "Home", "1PP000") + record(2, "bg.en.01", "Visit", "1PM000")),
  "desk/compare": () => grid(["part", "bodyId", "design", "live", "name"], [["title", 0, "Visit", "Visits", ""]]),
  "desk/ask": () => "0",
  ...more,
});

const changedPage = "PM0000";
const heldByMe = "PM1000";
const approved = "PM0010";

async function open(browser, parameters, api) {
  const shell = await openVisit(browser, pageIn(parameters, api));
  return { ...shell, main: (name) => shell.page.getByRole("main").getByRole("button", { name, exact: true }).first() };
}

const inNotices = (page) => page.getByRole("log");

// What is done, what refuses it with which codes, and the next step that stands beside each sentence.
const fromTheMenu = [
  ["Mark for removal", changedPage, "cManager.deletePage", { "-1": "Ask for it", "-2": "Take back the approval", "-99": "Try again" }],
  ["Check in", heldByMe, "cManager.checkIn", { "-1": "Ask for it", "-99": "Take back the approval" }],
  ["Approve only", changedPage, "cManager.approvePage", { "-1": "Ask for it", "-2": "" }],
];

describe("a refusal of what the menu of a page offers", () => {
  const chromium = aBrowser();

  for (const [entry, parameters, operation, codes] of fromTheMenu)
    for (const [code, step] of Object.entries(codes))
      test(`${operation} ${code}: its sentence, and ${step ? `"${step}"` : "the page as it is now"}`, async () => {
        const answer = refused(operation, code);
        const { page, choose, errors, context } = await open(chromium.browser, parameters, { [operation.replace(".", "/")]: () => answer });
        await choose(entry);
        const notice = inNotices(page).locator(".toast", { hasText: answer.problem.detail });
        await notice.waitFor();
        if (step) await notice.getByRole("button", { name: step, exact: true }).waitFor();
        else assert.equal(await notice.getByRole("button").count(), 1);
        assert.deepEqual(errors, []);
        await context.close();
      });
});

describe("a refused publishing", () => {
  const chromium = aBrowser();
  const steps = { "-1": "Ask for it", "-2": "Approve", "-3": "To the dashboard", "-4": "Open the parent" };

  for (const [code, step] of Object.entries(steps))
    test(`${code}: its sentence in the dialog, and "${step}"`, async () => {
      const answer = refused("cManager.publishPage", code);
      const { page, main, dialog, context } = await open(chromium.browser, approved, { "cManager/publishPage": () => answer });
      await main("Publish").click();
      await dialog.getByRole("button", { name: "Publish", exact: true }).click();
      const notice = dialog.getByRole("alert").filter({ hasText: answer.problem.detail });
      await notice.getByRole("button", { name: step, exact: true }).click();
      await page.getByRole("dialog").waitFor({ state: "detached" });
      await context.close();
    });

  test("that leaves nothing to do offers no publishing any more", async () => {
    let parameters = approved;
    const api = {
      "cManager/getPageParameters": () => parameters,
      "cManager/publishPage": () => {
        parameters = "PM1001";
        return refused("cManager.publishPage", "-1");
      },
    };
    const { main, dialog, context } = await open(chromium.browser, approved, api);
    await main("Publish").click();
    const publish = dialog.getByRole("button", { name: "Publish", exact: true });
    await publish.click();
    await dialog.getByRole("alert").filter({ hasText: holder }).waitFor();
    await dialog.locator(".dialog-foot [aria-disabled=true]", { hasText: "Publish" }).waitFor();
    await context.close();
  });
});

describe("a refused reset", () => {
  const chromium = aBrowser();
  const steps = { "-1": "Ask for it", "-2": "Take back the approval", "-3": "Mark for removal", "-4": "To the dashboard" };

  for (const [code, step] of Object.entries(steps))
    test(`${code}: its sentence, and "${step}"`, async () => {
      const answer = refused("cManager.resetPage", code);
      const { page, choose, dialog, context } = await open(chromium.browser, changedPage, { "cManager/resetPage": () => answer });
      await choose("Back to the live page...");
      await dialog.getByRole("button", { name: "Discard the changes" }).click();
      await inNotices(page).locator(".toast", { hasText: answer.problem.detail }).getByRole("button", { name: step, exact: true }).waitFor();
      await context.close();
    });
});

describe("the next step beside a refusal", () => {
  const chromium = aBrowser();

  test("asks the one who holds the page", async () => {
    const { page, choose, sent, context } = await open(chromium.browser, changedPage, { "cManager/deletePage": () => refused("cManager.deletePage", "-1") });
    await choose("Mark for removal");
    await inNotices(page).getByRole("button", { name: "Ask for it" }).click();
    await inNotices(page).getByText(labels[4530].replace("{name}", holder)).waitFor();
    const asked = sent.flatMap(({ args }) => args.calls ?? []).filter((call) => call.on === "desk" && call.do === "ask");
    assert.deepEqual(asked.map((call) => call.with), [{ pageIdent: "2" }]);
    await context.close();
  });

  test("takes back an approval", async () => {
    const { page, choose, sent, context } = await open(chromium.browser, changedPage, {
      "cManager/deletePage": () => refused("cManager.deletePage", "-2"),
      "cManager/approvePage": () => "M000",
    });
    await choose("Mark for removal");
    await inNotices(page).getByRole("button", { name: "Take back the approval" }).click();
    await inNotices(page).getByText("The approval is taken back.").waitFor();
    const calls = sent.flatMap(({ args }) => args.calls ?? []).filter((call) => call.do === "approvePage");
    assert.deepEqual(calls.map((call) => call.with), [{ pageIdent: "2", state: 0 }]);
    await context.close();
  });

  test("tries again what failed", async () => {
    let tries = 0;
    const { page, choose, context } = await open(chromium.browser, changedPage, {
      "cManager/deletePage": () => (++tries === 1 ? refused("cManager.deletePage", "-99") : "M010"),
    });
    await choose("Mark for removal");
    await inNotices(page).getByRole("button", { name: "Try again" }).click();
    await inNotices(page).getByText("Marked for removal.").waitFor();
    assert.equal(tries, 2);
    await context.close();
  });
});

describe("a refused place", () => {
  const chromium = aBrowser();
  const places = {
    "cManager/getLoginScope": () => "bg.en",
    "cManager/getSitemap": treeOf(record(2, "bg.en.01", "Visit", "1PM000"), record(3, "bg.en.02", "Plants")),
  };
  const ways = [
    ["cManager.movePage", "Move to...", "Move here", ["-2", "-3", "-4"]],
    ["cManager.pastePage", "Copy to...", "Copy here", ["-1", "-2", "-3", "-4"]],
  ];

  for (const [operation, entry, button, codes] of ways)
    for (const code of codes)
      test(`${operation} ${code}: its sentence, and the dialog stays for another place`, async () => {
        const answer = refused(operation, code);
        const { page, choose, dialog, context } = await open(chromium.browser, changedPage, { ...places, [operation.replace(".", "/")]: () => answer });
        await choose(entry);
        await dialog.getByRole("treeitem", { name: "Plants" }).click();
        await dialog.getByRole("button", { name: button }).click();
        await page.getByText(answer.problem.detail).first().waitFor();
        await dialog.getByRole("tree").waitFor();
        await context.close();
      });
});

describe("a screen that couldn't be read", () => {
  const chromium = aBrowser();
  const problem = (status, detail) => ({ status, problem: { status, operation: "cManager.getLockList", title: "refused", detail } });
  const openHeld = (getLockList) => openShell(chromium.browser, { path: "/torvex/locks.asp", entries: opened(212), api: { "cManager/getLockList": getLockList } });

  test("is read again by whoever wishes it", async () => {
    let answer = problem(500, "That didn't work. Reference 4711");
    const { page, context } = await openHeld(() => answer);
    const notice = page.getByRole("main").getByRole("alert").filter({ hasText: "Reference 4711" });
    await notice.waitFor();
    answer = grid(["pageId"], []);
    await notice.getByRole("button", { name: "Try again" }).click();
    await notice.waitFor({ state: "detached" });
    await context.close();
  });

  test("leads whoever has no right to it to the dashboard instead", async () => {
    const { page, sent, context } = await openHeld(() => problem(403, "You have no right to this."));
    const notice = page.getByRole("main").getByRole("alert").filter({ hasText: "You have no right to this." });
    await notice.waitFor();
    assert.equal(await notice.getByRole("button").count(), 0);
    await notice.getByRole("link", { name: "To the dashboard" }).click();
    await page.getByRole("main").getByRole("heading", { level: 1 }).waitFor();
    assert.equal(new URL(page.url()).pathname, "/torvex/");
    assert.equal(sent.filter(({ name }) => name === "cManager/getLockList").length, 1);
    await context.close();
  });
});
