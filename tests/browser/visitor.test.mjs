import assert from "node:assert/strict";
import { beforeEach, afterEach, describe, test } from "node:test";
import { logIn, servedDemo } from "./support.mjs";

describe("a visitor of the demo", () => {
  const site = servedDemo();
  let context;
  let page;
  const open = (pageId) => site.open(page, pageId);

  beforeEach(async () => {
    context = await site.browser.newContext({ viewport: { width: 1280, height: 900 } });
    page = await context.newPage();
  });
  afterEach(async () => { await context.close(); });

  test("begins at the home page", async () => {
    await page.goto(site.address);
    assert.equal(new URL(page.url()).pathname, "/tvx.asp");
    assert.match(await page.title(), /Lindhaven Botanic Garden/);
    assert.equal(await page.locator("h1").count(), 1);
  });

  test("follows links through folders, trails and neighbours", async () => {
    await page.goto(site.address);
    await page.getByRole("link", { name: "Visit", exact: true }).click();
    assert.equal(await page.locator("h1").innerText(), "Opening hours and tickets");
    await page.getByRole("link", { name: "Next page" }).click();
    assert.equal(await page.locator("h1").innerText(), "Getting here");
    await page.locator(".trail").getByRole("link", { name: "Home" }).click();
    assert.match(await page.title(), /five hectares/);
  });

  test("finds no dead link on any page that the home page leads to", async () => {
    const seen = new Set();
    const waiting = [`${site.address}/tvx.asp?pageId=1`];
    while (waiting.length > 0) {
      const address = waiting.pop();
      if (seen.has(address)) continue;
      seen.add(address);
      const answer = await page.request.get(address);
      assert.equal(answer.status(), 200, address);
      const html = await answer.text();
      assert.doesNotMatch(html, /href="(page|file)\(|torvex_body_/, address);
      for (const [, link] of html.matchAll(/(?:href|src)="(\/[^"#]*)"/g)) {
        const target = new URL(link.replaceAll("&amp;", "&"), site.address);
        const isPage = target.pathname === "/tvx.asp";
        if (isPage) waiting.push(target.href);
        else if (!target.pathname.endsWith(".asp")) {
          assert.equal((await page.request.get(target.href)).status(), 200, `${target.href} on ${address}`);
        }
      }
    }
    assert.ok(seen.size > 30, `only ${seen.size} pages`);
  });

  test("opens a page from the map", async () => {
    await open(7);
    await page.locator('area[alt="Alpine garden"]').evaluate((area) => area.click());
    await page.waitForURL(/pageId=9/);
    assert.equal(await page.locator("h1").innerText(), "Alpine garden");
  });

  test("opens a document in a window of its own", async () => {
    await open(7);
    await page.evaluate(() => { window.open = (...call) => { window.opened = call; }; });
    await page.getByRole("link", { name: "list of the old trees" }).click();
    await page.waitForFunction(() => window.opened);  // a link that runs a script runs it a moment later
    assert.deepEqual(await page.evaluate(() => window.opened), ["/documents/bg/old-trees.csv", "_blank", "noopener"]);
  });

  test("sees the feeds", async () => {
    await open(46);
    assert.match(await page.locator("article").innerText(), /the latch sticks/);
    await open(240);
    assert.equal(await page.locator("tbody tr").count(), 6);
    assert.equal(await page.locator("tbody tr").first().locator("i").innerText(), "Androsace helvetica");
    await open(316);
    assert.match(await page.locator("article").innerText(), /Die Klinke klemmt/);
    await open(317);
    assert.equal(await page.locator("caption").innerText(), "Samenliste 2026");
    assert.equal(await page.locator("tbody tr").count(), 6);
  });

  for (const width of [360, 1440]) {
    test(`sees every picture of the folders ${width} pixels wide`, async () => {
      await page.setViewportSize({ width, height: 900 });
      for (const pageId of [312, 313, 314, 315, 318, 319]) {
        await open(pageId);
        for (const image of await page.locator("article img").all()) {
          await image.scrollIntoViewIfNeeded();
          await image.evaluate((element) => element.decode());
          const box = await image.boundingBox();
          assert.ok(box.x >= 0 && box.x + box.width <= width, `page ${pageId}: from ${box.x}, ${box.width} wide`);
        }
      }
    });
  }

  test("opens a picture for the press, and a document by its title", async () => {
    await open(314);
    await page.getByRole("link", { name: "Palm House, from the gallery" }).click();
    assert.match(page.url(), /\/images\/bg\/002\/001\/palm-house\.jpg$/);
    await open(312);
    const riddles = await page.getByRole("link", { name: "twelve riddles" }).getAttribute("href");
    assert.equal(riddles, "/documents/bg/002/001/riddles.pdf");
    const answer = await page.request.get(site.address + riddles);
    assert.equal(answer.headers()["content-type"], "application/pdf");
  });

  test("reads a clear page where there is none", async () => {
    const answer = await open(4711);
    assert.equal(answer.status(), 404);
    assert.equal(await page.locator("h1").innerText(), "Page not found");
    await page.getByRole("link", { name: "To the home page" }).click();
    assert.match(await page.title(), /Lindhaven/);
  });

  test("is sent to the login page and back to the page applied for", async () => {
    await open(42);
    assert.equal(await page.locator("h1").innerText(), "Log in");
    await logIn(page, "rowan", "spade");
    assert.equal(new URL(page.url()).search, "?pageId=42");
    assert.equal(await page.locator("h1").innerText(), "Volunteers’ board");
  });

  test("enters by the page of the group, and leaves by its exit page", async () => {
    await open(44);
    await logIn(page, "Flora", "ORCHID");
    assert.equal(await page.locator("h1").innerText(), "Friends’ corner");
    await page.getByRole("link", { name: "Log out" }).click();
    assert.equal(await page.locator("h1").innerText(), "Goodbye");
    await open(41);
    assert.equal(await page.locator("h1").innerText(), "Log in");
  });

  test("has no cookie while it only reads", async () => {
    for (const pageId of [4, 7, 44]) await open(pageId);
    assert.deepEqual(await context.cookies(), []);
  });

  test("gets a new cookie at the login", async () => {
    await open(42);  // the page applied for is kept until then
    const before = (await context.cookies()).find((cookie) => cookie.name === "torvex_session").value;
    await logIn(page, "rowan", "spade");
    const now = (await context.cookies()).find((cookie) => cookie.name === "torvex_session");
    assert.notEqual(now.value, before);
    assert.ok(now.httpOnly);
    assert.equal(now.sameSite, "Lax");
  });

  test("sees guarded pictures and documents only as a member", async () => {
    const picture = `${site.address}/images/bg/001/new-pond.svg`;
    const letter = `${site.address}/documents/bg/001/friends-letter.txt`;
    const blank = await context.request.get(picture);
    assert.equal(blank.headers()["content-type"], "image/gif");
    const refused = await context.request.get(letter, { maxRedirects: 0 });
    assert.notEqual(refused.status(), 200);
    assert.doesNotMatch(await refused.text(), /plant swap/);
    await open(44);
    await logIn(page, "flora", "orchid");
    assert.match((await context.request.get(picture)).headers()["content-type"], /svg/);
    assert.match(await (await context.request.get(letter)).text(), /plant swap/);
    const part = await context.request.get(letter, { headers: { Range: "bytes=0-8" } });
    assert.equal(part.status(), 206);
    assert.equal(await part.text(), "Lindhaven");
  });

  test("is told after a wrong password, once, and is stopped after the fifth", async () => {
    await open(44);
    for (let i = 1; i <= 4; ++i) {
      await logIn(page, "hazel", `wrong${i}`);
      assert.equal(await page.getByRole("alert").count(), 1, `failure ${i}`);
    }
    await open(44);
    assert.equal(await page.getByRole("alert").count(), 0);
    await logIn(page, "hazel", "wrong5");
    assert.equal(await page.locator("h1").innerText(), "You may not see this page");
  });
});
