// The sheet of all pages: visits in it.
import assert from "node:assert/strict";
import { describe, test } from "node:test";
import { findingsOfAxe } from "../support.mjs";
import { aBrowser, grid, openShell, record, treeOf } from "./fake.mjs";

describe("visits in the sheet of all pages", () => {
  const chromium = aBrowser();
  const details = { pgOnlineFrom: "", pgOnlineTo: "", pgTemplateName: "Page", pgGroups: "" };
  const views = { 1: [[2025, 40], [2026, 1160]], 2: [[2026, 7]], 3: [] };
  const calls = {
    "cManager/getSitemap": treeOf(record(2, "bg.en.01", "Visit", "1PM000"), record(3, "bg.en.02", "Plants")),
    "cManager/getPage": () => true,
    "cManager/get": () => details,
    "desk/getHits": ({ scope }) => grid(["period", "views", "visitors"], views[scope].map(([year, count]) => [String(year), count, 1])),
  };
  const entries = [{ entry: 213, site: "bg", lang: "en", view: true, edit: false }];
  const openSheet = async (options) => {
    const shell = await openShell(chromium.browser, { path: "/torvex/sitemap", api: calls, ...options });
    await shell.page.getByRole("checkbox", { name: "With dates, templates and readers" }).check();
    await shell.page.getByRole("cell", { name: "Page", exact: true }).first().waitFor();
    return shell;
  };

  test("stand in a column that sorts, for whoever may see them", async () => {
    const { page, sent, errors, context } = await openSheet({ entries });
    const row = (name) => page.getByRole("row", { name: new RegExp(name) });
    await row("Home").getByRole("cell", { name: "1,200", exact: true }).waitFor();
    await row("Visit").getByRole("cell", { name: "7", exact: true }).waitFor();
    await row("Plants").getByRole("cell", { name: "0", exact: true }).waitFor();
    await page.getByRole("button", { name: "Visits, 30 days" }).click();
    await page.locator('th[aria-sort="ascending"]', { hasText: "Visits" }).waitFor();
    assert.deepEqual(await page.locator("tr[data-key]").evaluateAll((rows) => rows.map((each) => each.dataset.key)), ["3", "2", "1"]);
    const asked = sent.flatMap(({ args }) => args.calls ?? []).filter((call) => call.do === "getHits");
    assert.deepEqual(asked.map((call) => call.with.scope).sort(), ["1", "2", "3"]);
    assert.deepEqual(await findingsOfAxe(page), []);
    assert.deepEqual(errors, []);
    await context.close();
  });

  test("aren't asked for by whoever may not", async () => {
    const { page, sent, context } = await openSheet({});
    assert.equal(await page.getByText("Visits, 30 days").count(), 0);
    assert.equal(sent.flatMap(({ args }) => args.calls ?? []).filter((call) => call.do === "getHits").length, 0);
    await context.close();
  });
});
