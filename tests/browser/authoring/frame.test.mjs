import assert from "node:assert/strict";
import { describe, test } from "node:test";
import { findingsOfAxe } from "../support.mjs";
import { aBrowser, grid, openShell, opened, record, refusal } from "./fake.mjs";
import { until } from "./support.mjs";

const workNames = ["pageId", "siteId", "lang", "nodeId", "title", "liveTitle", "pageType", "state", "editor", "since", "holder", "holderSince"];
const workRow = (pageId, title, state = "changed") =>
  [pageId, "bg", "en", `bg.en.0${pageId}`, title, title, "P", state, "Reed Amsel", "2026-06-15T10:00:00", "", null];
const row = (page, name) => page.getByRole("treeitem", { name });

describe("the page tree", () => {
  const chromium = aBrowser();
  const branch = record(7, "bg.en.01.01", "Getting here", "0PM100") + record(8, "bg.en.01.02", "Opening times", "0PP010");
  const api = {
    "cManager/getSitemap": ({ flag }) => (flag ? branch
      : record(1, "bg.en", "Home", "1PP000") + record(2, "bg.en.01", "Visit", "1FP000", "[*idem*]#1F003") + record(3, "bg.en.02", "Plants &amp; more", "0PN000", "[*null*]# ")),
  };

  test("is walked by arrows, and a branch is fetched when it is opened", async () => {
    const { page, sent, context } = await openShell(chromium.browser, { api });
    await row(page, "Home").focus();
    await page.keyboard.press("ArrowDown");
    await page.keyboard.press("ArrowRight");
    await row(page, /Getting here/).waitFor();
    assert.equal(sent.filter(({ name, args }) => name === "cManager/getSitemap" && args.startNode === "bg.en.01").length, 1);
    assert.equal(await row(page, "Visit").getAttribute("aria-expanded"), "true");
    await page.keyboard.press("ArrowRight");
    const here = row(page, /Getting here/);
    assert.ok(await here.evaluate((node) => node === document.activeElement));
    assert.deepEqual(await here.evaluate((node) => ["aria-level", "aria-setsize", "aria-posinset"].map((name) => node.getAttribute(name))), ["3", "2", "1"]);
    await page.keyboard.press("ArrowLeft");
    assert.ok(await row(page, "Visit").evaluate((node) => node === document.activeElement));
    await page.keyboard.press("ArrowLeft");
    assert.equal(await row(page, "Visit").getAttribute("aria-expanded"), "false");
    await page.keyboard.press("End");
    assert.ok(await row(page, /Plants/).evaluate((node) => node === document.activeElement));
    await page.keyboard.press("h");
    assert.ok(await row(page, "Home").evaluate((node) => node === document.activeElement));
    await context.close();
  });

  test("says how each page stands", async () => {
    const { page, context } = await openShell(chromium.browser, { api });
    await row(page, "Visit").focus();
    await page.keyboard.press("ArrowRight");
    await row(page, "Getting here, changed, checked out by you").waitFor();
    await row(page, "Opening times, marked").waitFor();
    await row(page, "Plants & more, new").waitFor();
    await context.close();
  });

  test("is filtered by words, with what stands above", async () => {
    const { page, context } = await openShell(chromium.browser, { api });
    await page.getByRole("searchbox", { name: "Filter pages" }).fill("plants");
    await row(page, "Visit").waitFor({ state: "detached" });
    assert.equal(await page.getByRole("treeitem").count(), 2);
    await page.keyboard.press("ArrowDown");
    assert.ok(await row(page, "Home").evaluate((node) => node === document.activeElement));
    await context.close();
  });

  test("draws what is in sight of a thousand pages", async () => {
    const rows = Array.from({ length: 1000 }, (_, i) => record(100 + i, `bg.en.${i.toString(36).padStart(2, "0")}`, `Page ${i}`)).join("");
    const { page, context } = await openShell(chromium.browser, { api: { "cManager/getSitemap": () => record(1, "bg.en", "Home", "1PP000") + rows } });
    await row(page, "Home").focus();
    const drawn = await page.getByRole("treeitem").count();
    assert.ok(drawn < 120, `${drawn} rows are drawn`);
    await page.keyboard.press("End");
    await row(page, "Page 999").waitFor();
    assert.ok(await row(page, "Page 999").evaluate((node) => node === document.activeElement));
    assert.equal(await row(page, "Page 999").getAttribute("aria-setsize"), "1000");
    await context.close();
  });

  test("waits while pages are being moved, and opens by itself", async () => {
    let asked = 0;
    const closed = { "cManager/getSitemap": () => (++asked === 1 ? refusal("cManager.getSitemap", "-1", "Pages are being moved.") : record(1, "bg.en", "Home")) };
    const { page, context } = await openShell(chromium.browser, { api: closed });
    await page.getByText("Pages are being moved here. This opens by itself.").waitFor();
    await row(page, "Home").waitFor();
    await context.close();
  });

  test("shows what is opened elsewhere", async () => {
    const { page, context } = await openShell(chromium.browser, { path: "/torvex/page.asp?pageId=8", api: { ...api, "cManager/getNodeId": () => "bg.en.01.02" } });
    await row(page, /Opening times/).waitFor();
    assert.equal(await row(page, /Opening times/).getAttribute("aria-current"), "page");
    await context.close();
  });

  test("has a menu at each page: by mouse and by key, and Esc gives the keyboard back", async () => {
    const { page, context } = await openShell(chromium.browser, { api });
    await row(page, /Plants/).click({ button: "right" });
    await page.getByRole("menuitem", { name: /^Open/ }).waitFor();
    await page.keyboard.press("ArrowDown");
    await page.keyboard.press("Escape");
    await page.getByRole("menu").waitFor({ state: "detached" });
    await row(page, "Home").focus();
    await page.keyboard.press("Shift+F10");
    await page.getByRole("menuitem", { name: /^Open/ }).waitFor();
    await context.close();
  });
});

describe("the search over everything", () => {
  const chromium = aBrowser();
  const names = ["kind", "pageId", "siteId", "lang", "nodeId", "title", "path", "state", "isLive", "excerpt"];

  test("opens a page by Ctrl+K, a word and Enter", async () => {
    const find = () => grid(names, [["page", 44, "bg", "en", "bg.en.05", "Autumn walks", "What's on", "changed", true, ""]]);
    const { page, context } = await openShell(chromium.browser, { api: { "desk/find": find } });
    await page.keyboard.press("Control+k");
    await page.keyboard.type("autumn");
    await page.getByRole("option", { name: /Autumn walks/ }).waitFor();
    await page.keyboard.press("Enter");
    await page.waitForURL(/pageId=44/);
    await context.close();
  });

  test("shows whole titles on a phone, and their long paths below them", async () => {
    const path = "Plants › Trees and shrubs › Deciduous trees of the northern hemisphere";
    const find = () => grid(names, [["page", 44, "bg", "en", "bg.en.05", "Autumn walks in the garden", path, "changed", true, ""]]);
    const { page, context } = await openShell(chromium.browser, { viewport: { width: 360, height: 740 }, api: { "desk/find": find } });
    await page.keyboard.press("Control+k");
    await page.keyboard.type("autumn");
    const option = page.getByRole("option", { name: /Autumn walks/ });
    const title = option.getByText("Autumn walks in the garden", { exact: true });
    await title.waitFor();
    assert.ok(await title.evaluate((node) => node.scrollWidth <= node.clientWidth));
    const [above, below] = [await title.boundingBox(), await option.getByText(path).boundingBox()];
    assert.ok(below.y >= above.y + above.height - 1);
    await context.close();
  });

  test("never shows what an earlier word found", async () => {
    let answerSlow;
    const slow = async ({ words }) => {
      if (words === "slow") await new Promise((resolve) => { answerSlow = resolve; });
      return grid(names, [["page", words.length, "bg", "en", "", `Found by ${words}`, "", "", true, ""]]);
    };
    const { page, context } = await openShell(chromium.browser, { api: { "desk/find": slow } });
    await page.keyboard.press("Control+k");
    await page.keyboard.type("slow");
    await until(() => answerSlow);
    await page.keyboard.type("er");
    await page.getByText("Found by slower", { exact: true }).waitFor();
    answerSlow();
    await page.keyboard.type("s");
    await page.getByText("Found by slowers", { exact: true }).waitFor();
    assert.equal(await page.getByText("Found by slow", { exact: true }).count(), 0);
    await context.close();
  });

  const deep = {
    "desk/find": () => grid(names, [["page", 7, "bg", "en", "bg.en.01.01", "Getting here", "Visit", "live", true, ""], ["image", 0, "bg", "", "", "Getting off", "001/off.png", "", true, ""]]),
    "cManager/getSitemap": ({ flag }) => (flag ? record(7, "bg.en.01.01", "Getting here") : record(1, "bg.en", "Home", "1PP000") + record(2, "bg.en.01", "Visit", "1FP000", "[*idem*]#1F003")),
  };
  const hasTheKeyboard = (page, name) => page.waitForFunction((text) => document.activeElement?.matches(".tree-row") && document.activeElement.ariaLabel === text, name);

  test("shows where a hit stands in the tree by Shift+Enter, and opens nothing", async () => {
    const { page, errors, context } = await openShell(chromium.browser, { api: deep });
    await page.keyboard.press("Control+k");
    await page.keyboard.type("getting");
    const hit = page.getByRole("option", { name: /Getting here/ });
    await hit.waitFor();
    await page.getByText("Show in the tree").waitFor();
    await page.keyboard.press("Shift+Enter");
    await hasTheKeyboard(page, "Getting here");
    assert.equal(new URL(page.url()).pathname, "/torvex/");
    assert.deepEqual(errors, []);
    await context.close();
  });

  test("has a button for that at each page that was found, which brings the tree back and takes its filter away", async () => {
    const { page, context } = await openShell(chromium.browser, { path: "/torvex/search?words=getting", api: deep });
    await page.getByRole("searchbox", { name: "Filter pages" }).fill("nowhere");
    await page.getByRole("tab", { name: "Media" }).click();
    const buttons = page.getByRole("button", { name: /^Show in the tree/ });
    await buttons.first().waitFor();
    assert.equal(await buttons.count(), 1);
    assert.deepEqual(await findingsOfAxe(page), []);
    await buttons.first().click();
    await hasTheKeyboard(page, "Getting here");
    await context.close();
  });

  test("runs commands, and Esc closes it", async () => {
    const { page, context } = await openShell(chromium.browser, { path: "/torvex/search" });
    await page.keyboard.press("Control+k");
    await page.keyboard.type("dashboard");
    await page.keyboard.press("Enter");
    await page.getByRole("heading", { name: "Hello, Iris" }).waitFor();
    await page.keyboard.press("Control+k");
    await page.keyboard.press("Escape");
    await page.getByRole("combobox").waitFor({ state: "detached" });
    await context.close();
  });
});

describe("a session that is lost", () => {
  const chromium = aBrowser();

  test("is taken up again over the screen, and what was asked is done then", async () => {
    const shell = await openShell(chromium.browser, { api: { "cManager/getSitemap": ({ flag }) => (flag ? record(7, "bg.en.01.01", "Getting here") : record(1, "bg.en", "Home", "1PP000") + record(2, "bg.en.01", "Visit", "1PP000")) } });
    const { page, context } = shell;
    await page.getByRole("searchbox", { name: "Filter pages" }).fill("i");
    // What the first screen asks for is answered by then: the next question is that of the key.
    await page.waitForLoadState("networkidle");
    shell.loggedIn = false;
    await row(page, "Visit").focus();
    await page.keyboard.press("ArrowRight");
    const dialog = page.getByRole("dialog", { name: "Log in again" });
    await dialog.waitFor();
    await page.keyboard.press("Escape");
    assert.ok(await dialog.isVisible());
    await page.getByLabel("Password").fill("wrong");
    await dialog.getByRole("button", { name: "Log in" }).click();
    await dialog.getByText("Name or password is wrong").waitFor();
    await page.getByLabel("Password").fill("blue-flag");
    await page.keyboard.press("Enter");
    await dialog.waitFor({ state: "detached" });
    await row(page, "Getting here").waitFor();
    assert.equal(await page.getByRole("searchbox", { name: "Filter pages" }).inputValue(), "i");
    assert.equal(shell.tokens.at(-1), "third");
    await context.close();
  });
});

describe("a line that is gone", () => {
  const chromium = aBrowser();

  test("is said in the foot until it is back", async () => {
    const { page, context } = await openShell(chromium.browser);
    await row(page, "Home").waitFor();
    // An answer that is still under way would tell that the line is there.
    await page.waitForLoadState("networkidle");
    await context.setOffline(true);
    await page.getByRole("status").filter({ hasText: "Not connected; your text is kept here" }).waitFor();
    await context.setOffline(false);
    await page.getByText("Not connected").waitFor({ state: "detached" });
    await context.close();
  });
});

describe("the dashboard", () => {
  const chromium = aBrowser();
  const lists = { approve: [workRow(2, "Walks"), workRow(3, "Bonsai", "new")], publish: [workRow(4, "Night"), workRow(5, "Day"), workRow(6, "Dusk")] };
  const work = ({ kind }) => grid(workNames, lists[kind] ?? []);
  const card = (page, name) => page.getByRole("region", { name });

  test("approves what is selected; what stays tells why", async () => {
    const api = {
      "desk/getWork": work,
      "cManager/approvePages": () => "3",
      "cManager/approvePage": () => refusal("cManager.approvePage", "-2", "There is nothing to approve."),
    };
    const { page, sent, context } = await openShell(chromium.browser, { api });
    const toApprove = card(page, "To approve");
    await toApprove.getByRole("checkbox", { name: "Select all" }).check();
    await toApprove.getByRole("button", { name: "Approve" }).click();
    await toApprove.getByText("There is nothing to approve.").waitFor();
    await page.getByText("1 page approved.").waitFor();
    assert.deepEqual(sent.find(({ name }) => name === "cManager/approvePages").args, { pageList: "2,3" });
    await context.close();
  });

  test("draws all of a long list, though not at once, and End goes to its last page", async () => {
    const many = Array.from({ length: 80 }, (_, i) => workRow(100 + i, `Bed ${i}`));
    const { page, context } = await openShell(chromium.browser, { api: { "desk/getWork": ({ kind }) => grid(workNames, kind === "approve" ? many : []) } });
    const rows = card(page, "To approve").locator("tr[data-key]");
    await rows.nth(79).waitFor();
    assert.equal(await rows.count(), 80);
    assert.equal(await card(page, "To approve").locator("tr.gap").count(), 0);
    await rows.first().focus();
    await page.keyboard.press("End");
    await page.locator("tr:focus").filter({ hasText: "Bed 79" }).waitFor();
    await context.close();
  });

  test("publishes one by one, parents first, and stops when it is told to", async () => {
    const begun = [];
    const goOn = [];
    const publish = async ({ pageIdent }) => {
      begun.push(pageIdent);
      await new Promise((resolve) => goOn.push(resolve));
      return "1";
    };
    const { page, context } = await openShell(chromium.browser, { api: { "desk/getWork": work, "cManager/publishPage": publish } });
    const toPublish = card(page, "To publish");
    await toPublish.getByRole("checkbox", { name: "Select all" }).check();
    await toPublish.getByRole("button", { name: "Publish" }).click();
    await toPublish.getByText("0 of 3").waitFor();
    goOn.shift()();
    await toPublish.getByText("1 of 3").waitFor();
    await toPublish.getByRole("button", { name: "Stop" }).click();
    goOn.shift()();
    await page.getByText("2 pages published.").waitFor();
    assert.deepEqual(begun, ["4", "5"]);
    await context.close();
  });

  test("says where a dead link leads, as far as that is known", async () => {
    const names = ["pageId", "nodeId", "title", "bodyId", "target", "reason", "targetTitle"];
    const links = [
      [2, "bg.en.01", "Visit", 1, "99999", "gone", ""],
      [2, "bg.en.01", "Visit", 2, "4711", "gone", "Old prices"],
      [3, "bg.en.02", "Plants", 1, "12", "offline", "Night walks"],
      [3, "bg.en.02", "Plants", 1, "13", "notLive", "Seed swap"],
      [3, "bg.en.02", "Plants", 1, "bg/001/map.pdf", "noFile", ""],
      [3, "bg.en.02", "Plants", 1, "", "unchosen", ""],
    ];
    const { page, context } = await openShell(chromium.browser, { api: { "desk/getDeadLinks": () => grid(names, links) } });
    const dead = card(page, "Links that lead nowhere");
    for (const text of ["page 99999, which is gone", '"Old prices" (page 4711), which is gone', '"Night walks", which is off line',
      '"Seed swap", which isn\'t live yet', "the file bg/001/map.pdf, which is gone", "nowhere: its target is still to be chosen"])
      await dead.getByText(text, { exact: true }).waitFor();
    await context.close();
  });

  test("says when a page comes or goes", async () => {
    const next = new Date().getFullYear() + 1;
    const names = [...workNames, "onlineFrom", "onlineTo"];
    const dates = [[...workRow(2, "Walks"), `${next}0503`, ""], [...workRow(3, "Bonsai"), "20200101", `${next}0509`]];
    const { page, context } = await openShell(chromium.browser, { api: { "desk/getWork": ({ kind }) => grid(names, kind === "dates" ? dates : []) } });
    const soon = card(page, "On or off line within 14 days");
    await soon.getByRole("row", { name: /Walks/ }).getByText(`on line from 3 May ${next}`).waitFor();
    await soon.getByRole("row", { name: /Bonsai/ }).getByText(`off line after 9 May ${next}`).waitFor();
    await context.close();
  });

  test("shows visits to whoever may see them, drawn and as a table", async () => {
    const today = new Date();
    const daysAgo = (days) => {
      const day = new Date(today.getFullYear(), today.getMonth(), today.getDate() - days);
      return `${day.getFullYear()}${String(day.getMonth() + 1).padStart(2, "0")}${String(day.getDate()).padStart(2, "0")}`;
    };
    const hits = () => grid(["period", "views", "visitors"], [[daysAgo(20), 5, 2], [daysAgo(3), 40, 12], [daysAgo(0), 2, 1]]);
    const entries = [{ entry: 213, site: "bg", lang: "en", view: true, edit: false }];
    const { page, sent, errors, context } = await openShell(chromium.browser, { api: { "desk/getHits": hits }, entries });
    const visits = card(page, "Visits");
    await visits.getByText("42 views").waitFor();
    await visits.getByText("13 visitors").waitFor();
    await visits.getByText("5 views in the 14 days before").waitFor();
    await visits.getByText("Details").click();
    assert.equal(await visits.getByRole("row").count(), 3);
    assert.equal(sent.find(({ name }) => name === "desk/getHits").args.scope, "bg.en");
    assert.deepEqual(errors, []);
    await context.close();
    const other = await openShell(chromium.browser);
    await card(other.page, "Changed lately").waitFor();
    assert.equal(await card(other.page, "Visits").count(), 0);
    await other.context.close();
  });

  test("says that nothing waits", async () => {
    const { page, context } = await openShell(chromium.browser);
    await card(page, "To approve").getByText("Nothing waits for you.").waitFor();
    await context.close();
  });
});

describe("the list of logins", () => {
  const chromium = aBrowser();

  test("shows whole names on a phone, with where they are, and can end a session", async () => {
    const names = ["loginId", "name", "siteId", "lang", "pageId", "since", "idleSeconds"];
    const online = () => grid(names, [[4, "Heide Lorenz", "bg", "en", 0, "2026-06-15T10:00:00", 840]]);
    const { page, context } = await openShell(chromium.browser, { path: "/torvex/loginsOnline.asp", entries: opened(23), viewport: { width: 360, height: 740 }, api: { "desk/getOnline": online } });
    const cell = page.getByRole("cell", { name: /Heide Lorenz/ }).first();
    await cell.getByText("Botanic Garden · English").waitFor();
    await until(() => cell.evaluate((node) => {
      const name = new Range();
      name.selectNode([...node.childNodes].find((one) => one.nodeType === Node.TEXT_NODE && one.data === "Heide Lorenz"));
      return name.getBoundingClientRect().right <= node.getBoundingClientRect().right;
    }));
    const end = await page.getByRole("button", { name: "End the session of Heide Lorenz" }).boundingBox();
    assert.ok(end.x + end.width <= 360);
    await context.close();
  });
});

describe("the frame", () => {
  const chromium = aBrowser();

  test("speaks another language at once", async () => {
    const { page, context } = await openShell(chromium.browser);
    await page.getByRole("button", { name: /Iris Falk: settings/ }).click();
    await page.getByRole("menuitemradio", { name: "Deutsch" }).click();
    await page.getByRole("tab", { name: "Seiten" }).waitFor();
    assert.equal(await page.evaluate(() => document.documentElement.lang), "de");
    await context.close();
  });

  test("is dark or light as its author wishes", async () => {
    const { page, context } = await openShell(chromium.browser);
    const ground = () => page.evaluate(() => getComputedStyle(document.documentElement).backgroundColor);
    const light = await ground();
    await page.getByRole("button", { name: /Iris Falk: settings/ }).click();
    await page.getByRole("menuitemradio", { name: "Dark", exact: true }).click();
    assert.notEqual(await ground(), light);
    await page.reload();
    await page.getByRole("banner").waitFor();
    assert.notEqual(await ground(), light);
    await context.close();
  });

  test("is gone round by F6, and its sides are sized by keys", async () => {
    const { page, context } = await openShell(chromium.browser);
    await row(page, "Home").waitFor();
    const region = () => page.evaluate(() => document.activeElement.closest(".bar, .left, .centre, .right, .foot")?.className.split(" ")[0]);
    await page.keyboard.press("F6");
    const first = await region();
    await page.keyboard.press("F6");
    assert.notEqual(await region(), first);
    const edge = page.getByRole("separator", { name: "Width of the navigation" });
    await edge.focus();
    await page.keyboard.press("ArrowRight");
    assert.equal(await edge.getAttribute("aria-valuenow"), "296");
    await page.reload();
    await edge.waitFor();
    assert.equal(await edge.getAttribute("aria-valuenow"), "296");
    await context.close();
  });

  test("tells who asks for a page, once", async () => {
    const names = ["kind", "loginId", "name", "pageId", "doing", "since", "text", "number"];
    const pulse = () => grid(names, [["asked", 4, "Heide Lorenz", 2, "looking", "2026-06-15T10:00:00", "Visit", 0]]);
    const { page, sent, context } = await openShell(chromium.browser, { api: { "desk/pulse": pulse, "cManager/checkIn": () => "M000" } });
    await page.getByText('Heide Lorenz asks for "Visit", which you have checked out.').waitFor();
    await page.getByRole("button", { name: "Check in" }).last().click();
    const checkedIn = await until(() => sent.find(({ name }) => name === "cManager/checkIn"));
    assert.deepEqual(checkedIn.args, { pageIdent: "2" });
    await context.close();
  });

  for (const [width, height] of [[2560, 1440], [1440, 900], [768, 1024], [360, 740]]) {
    for (const colorScheme of ["light", "dark"]) {
      test(`has nothing that axe finds, nor breaks its policy, ${width} wide and ${colorScheme}`, async () => {
        const shell = await openShell(chromium.browser, { viewport: { width, height }, colorScheme, api: { "desk/getWork": () => grid(workNames, [workRow(2, "Walks"), workRow(3, "Old prices", "marked")]) } });
        const { page, context } = shell;
        await page.getByRole("heading", { name: "Hello, Iris" }).waitFor();
        await page.getByText("Walks").first().waitFor();
        assert.deepEqual(await findingsOfAxe(page), []);
        assert.ok((await page.evaluate(() => document.documentElement.scrollWidth - window.innerWidth)) <= 0);
        await page.keyboard.press("Control+k");
        await page.getByRole("combobox").waitFor();
        assert.deepEqual(await findingsOfAxe(page), []);
        await page.keyboard.press("Escape");
        await page.getByRole("combobox").waitFor({ state: "detached" });
        // Until a window is drawn without it, a field that is gone still has the keyboard.
        await page.waitForFunction(() => !document.activeElement.matches("input"));
        await page.keyboard.press("?");
        await page.getByRole("dialog", { name: "Keys" }).waitFor();
        assert.deepEqual(await findingsOfAxe(page), []);
        await page.keyboard.press("Escape");
        await page.getByRole("dialog", { name: "Keys" }).waitFor({ state: "detached" });
        await page.getByRole("button", { name: /Iris Falk: settings/ }).click();
        await page.getByRole("menu").waitFor();
        assert.deepEqual(await findingsOfAxe(page), []);
        assert.deepEqual(shell.violations, []);
        assert.deepEqual(shell.errors, []);
        await context.close();
      });
    }
  }
});
