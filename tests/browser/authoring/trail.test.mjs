// What was done and what is looked at: the audit trail with its filters, and the statistics with their table and file.
import assert from "node:assert/strict";
import { readFileSync } from "node:fs";
import { describe, test } from "node:test";
import { servedAuthors } from "./door.mjs";
import { assertAccessible, workAs } from "./workplace.mjs";

const digits = (daysAgo) => {
  const day = new Date(Date.now() - daysAgo * 86_400_000);
  return [day.getFullYear(), day.getMonth() + 1, day.getDate()].map((part) => String(part).padStart(2, "0")).join("");
};

const line = ({ login = 3, name = "Basil Thymian", page = 0, node = "", entry = 0, action, detail = "", day }) =>
  `insert into TORVEX_AUDIT_TRAIL (loginId, loginName, pageId, pageTitle, nodeId, advId, action, description, Date, time) values (${login}, '${name}', ${page}, '${page ? "Walks" : ""}', '${node}', ${entry}, '${action}', '${detail}', '${day}', '09:15:00')`;

const hits = (node, day, views, visitors) =>
  `insert into TORVEX_LOGGING (site, lang, nodeId, yyyymmdd, yyyy, mm, dd, hits, uniquehits) values ('bg', 'en', '${node}', '${day}', '${day.slice(0, 4)}', '${day.slice(4, 6)}', '${day.slice(6)}', ${views}, ${visitors})`;

const searched = (word, day, searches, without) =>
  `insert into TORVEX_SEARCH_DAYS (site, lang, search_pageId, search_word, yyyymmdd, searches, withoutResult) values ('bg', 'en', 20, '${word}', '${day}', ${searches}, ${without})`;

const statements = [
  searched("snowdrop", digits(2), 12, 0),
  searched("=dragon tree", digits(3), 4, 3),
  searched("mandrake", digits(40), 9, 9),
  "delete from TORVEX_AUDIT_TRAIL",
  line({ action: "publish", page: 77, node: "bg.en.03.01", day: "20250301" }),
  line({ action: "check in", page: 77, node: "bg.en.03.01", day: "20250301" }),
  line({ action: "publish", page: 78, node: "bg.en.04", day: "20250228", login: 5, name: "Reed Amsel" }),
  line({ action: "delete", entry: 21, detail: '=Login "Hazel" has been removed', day: "20250228", login: 2, name: "Iris Falk" }),
  "delete from TORVEX_LOGGING",
  hits("bg.en.03", digits(2), 40, 20),
  hits("bg.en.03", digits(40), 90, 30),
  hits("bg.en.02", digits(3), 7, 5),
  line({ action: "publish", page: 79, node: "bg.en.03", day: digits(2) }),
];

describe("the audit trail and the statistics", () => {
  const site = servedAuthors(statements);
  const titleOf = (nodeId) => site.query(`select title from TORVEX_PAGES_LIVE where nodeId = '${nodeId}'`)[0].title;
  const unread = () => site.query("select title from TORVEX_PAGES_LIVE where nodeId like 'bg.en.%' and nodeId not like '%.99%' and type = 'P' and online = 1 and nodeId not in ('bg.en.02', 'bg.en.03') order by nodeId limit 1")[0].title;
  const fileOf = async (page, press) => {
    const [download] = await Promise.all([page.waitForEvent("download"), press()]);
    return readFileSync(await download.path(), "utf8");
  };

  test("the trail is narrowed by person, action, branch and days, and saved as it is narrowed", async () => {
    const work = await workAs(site, "iris");
    const { page } = work;
    await work.go("/torvex/auditTrail.asp?to=20250401");
    const first = page.getByRole("heading", { name: "1 March 2025" });
    await first.waitFor();
    await page.getByRole("heading", { name: "28 February 2025" }).waitFor();
    await page.getByRole("cell", { name: "removed", exact: true }).waitFor();
    await assertAccessible(page, "the trail");

    await page.getByRole("combobox", { name: "What was done" }).selectOption("publish");
    await page.getByRole("cell", { name: "checked in" }).waitFor({ state: "detached" });
    await page.getByLabel("Page, by its number or node").fill("bg.en.03");
    await page.getByLabel("with all below it").check();
    await page.getByRole("cell", { name: "Reed Amsel" }).waitFor({ state: "detached" });
    await first.waitFor();
    assert.match(page.url(), /did=publish/);
    assert.match(page.url(), /below=1/);
    await page.waitForFunction(() => /branch/.test(decodeURIComponent(document.querySelector("a[download]").href)));
    const file = await fileOf(page, () => page.getByRole("link", { name: "Save as CSV" }).click());
    assert.deepEqual(file.trim().split("\r\n").slice(1), ["20250301,09:15:00,Basil Thymian,77,Walks,bg.en.03.01,0,publish,"]);

    await page.reload();
    await first.waitFor();
    assert.equal(await page.getByRole("combobox", { name: "What was done" }).inputValue(), "publish");
    await page.getByRole("combobox", { name: "Who" }).selectOption({ label: "Reed Amsel" });
    await page.getByText("Nothing fits these filters.").waitFor();
    await page.getByRole("button", { name: "Clear the filters" }).click();
    await first.waitFor();
    const all = await fileOf(page, () => page.getByRole("link", { name: "Save as CSV" }).click());
    assert.match(all, /,"'=Login ""Hazel"" has been removed"\r\n/, "no spreadsheet works it out");
    assert.deepEqual(work.faults, []);
    await work.close();
  });

  test("a long trail comes in parts, and no line twice", async () => {
    const values = Array.from({ length: 230 }, (_, at) => `(3, 'Basil Thymian', 'save', 'Number ${at}', '20240101', '10:00:00')`);
    site.sql(`insert into TORVEX_AUDIT_TRAIL (loginId, loginName, action, description, Date, time) values ${values.join(", ")}`);
    const work = await workAs(site, "iris");
    const { page } = work;
    await work.go("/torvex/auditTrail.asp?to=20240101");
    await page.getByText("Number 229", { exact: true }).waitFor();
    await page.getByRole("button", { name: "Show more" }).click();
    await page.getByText("Number 0", { exact: true }).waitFor();
    assert.equal(await page.locator(".trail tbody tr").count(), 230);
    await page.getByRole("button", { name: "Show more" }).waitFor({ state: "detached" });
    await work.close();
  });

  test("visits are drawn, told as a table, and saved; pages stand by their views", async () => {
    const work = await workAs(site, "iris");
    const { page } = work;
    await work.go("/torvex/statistics.asp");
    await page.getByText("47 views", { exact: true }).waitFor();
    await page.locator(".chart-published").waitFor({ state: "attached" });
    await page.getByRole("link", { name: titleOf("bg.en.03") }).waitFor();
    await assertAccessible(page, "the statistics");
    await page.getByText("As a table").click();
    const table = page.getByRole("table", { name: "As a table" });
    await table.getByRole("row", { name: /\b40\b.*\b20\b/ }).waitFor();
    const file = await fileOf(page, () => page.getByRole("button", { name: "Save as CSV" }).click());
    assert.equal(file.trim().split("\r\n").length, 31, "a line for each of 30 days and a head");
    assert.ok(file.includes(`\r\n${digits(2)},40,20,0,1\r\n`), file);

    await page.getByRole("button", { name: "Last 90 days" }).click();
    await page.getByText("137 views", { exact: true }).waitFor();
    await page.getByRole("button", { name: "Month" }).click();
    assert.match(page.url(), /by=month/);
    await page.getByRole("group", { name: "Pages of this time" }).getByRole("button", { name: "Unread" }).click();
    await page.getByRole("link", { name: unread(), exact: true }).waitFor();
    assert.equal(await page.locator("tvx-table").getByRole("link", { name: titleOf("bg.en.02"), exact: true }).count(), 0);

    await page.getByRole("group", { name: "Pages of this time" }).getByRole("button", { name: "Best" }).click();
    await page.locator("tvx-table").getByRole("link", { name: titleOf("bg.en.02"), exact: true }).click();
    await page.getByRole("heading", { name: `Statistics of ${titleOf("bg.en.02")}` }).waitFor();
    await page.getByText("7 views", { exact: true }).waitFor();
    assert.deepEqual(work.faults, []);
    await work.close();
  });

  test("words that were searched for are listed and saved, and so are those that nothing was found for", async () => {
    const work = await workAs(site, "iris");
    const { page } = work;
    await work.go("/torvex/statistics.asp");
    const words = page.locator("tvx-stat-words");
    await words.getByRole("row", { name: /snowdrop.*\b12\b.*\b0\b/ }).waitFor();
    await words.getByRole("row", { name: /dragon tree.*\b4\b.*\b3\b/ }).waitFor();
    assert.equal(await words.getByText("mandrake").count(), 0, "it was searched for earlier");
    await assertAccessible(page, "the words");
    const file = await fileOf(page, () => words.getByRole("link", { name: "Save as CSV" }).click());
    assert.equal(file, "word,searches,withoutResult\r\nsnowdrop,12,0\r\n'=dragon tree,4,3\r\n");

    await words.getByRole("group", { name: "Words searched for" }).getByRole("button", { name: "Nothing found" }).click();
    await words.getByText("snowdrop").waitFor({ state: "detached" });
    assert.match(page.url(), /words=empty/);
    await page.getByRole("button", { name: "Last 90 days" }).click();
    await words.getByRole("row", { name: /mandrake.*\b9\b.*\b9\b/ }).waitFor();
    await words.getByText("dragon tree").waitFor();
    assert.deepEqual(work.faults, []);
    await work.close();
  });

  test("on a phone both can be read", async () => {
    const work = await workAs(site, "iris", { width: 360, height: 740, dark: true });
    const { page } = work;
    await work.go("/torvex/auditTrail.asp?to=20250401");
    await page.getByRole("heading", { name: "1 March 2025" }).waitFor();
    await assertAccessible(page, "the trail");
    await work.go("/torvex/statistics.asp");
    await page.getByText("47 views", { exact: true }).waitFor();
    await page.getByRole("link", { name: titleOf("bg.en.03") }).waitFor();
    await assertAccessible(page, "the statistics");
    await work.close();
  });

  test("who may not look at them is told so", async () => {
    const work = await workAs(site, "clover");
    await work.go("/torvex/auditTrail.asp");
    await work.page.getByRole("main").getByRole("alert").getByRole("link", { name: "To the dashboard" }).waitFor();
    await work.close();
  });
});
