// Visitors' second factors, from the login to the way out: without script, in the site's design and language.
import assert from "node:assert/strict";
import { after, describe, test } from "node:test";
import { faultsOf, logIn, servedDemo, setting } from "./support.mjs";
import { codeAt, stepNow } from "./telephone.mjs";

const login = { en: 44, de: 144 };
const friends = 41;

const place = (page) => new URL(page.url()).pathname + new URL(page.url()).search;
const press = (page, name) => Promise.all([page.waitForNavigation(), page.getByRole("button", { name }).click()]);
const follow = (page, name) => Promise.all([page.waitForNavigation(), page.getByRole("link", { name }).click()]);
const secretOf = (page) => page.locator(".factor-secret").textContent();
const codesOf = (page) => page.locator(".factor-codes code").allTextContents();

const assertWhole = async (page, name) => assert.deepEqual(await faultsOf(page, name), []);

describe("a second factor that a website demands of its visitors", () => {
  const site = servedDemo([setting("torvex_extranet_secondFactor", "demanded")]);
  let context;
  let page;
  let secret;
  let step;
  let paper;

  const begin = async (options = {}) => {
    await context?.close();
    context = await site.browser.newContext({ javaScriptEnabled: false, viewport: { width: 360, height: 740 }, ...options });
    page = await context.newPage();
  };
  const openLogin = () => site.open(page, login.en);
  const isShut = async () => {
    await site.open(page, friends);
    return place(page) === `/tvx.asp?pageId=${login.en}`;
  };
  after(() => context?.close());

  test("is set up on the way to the page that was applied for", async () => {
    await begin();
    assert.ok(await isShut());
    await logIn(page, "rowan", "spade");
    assert.match(place(page), /^\/torvex_secondFactor\/\?pageId=391&from=44$/);
    assert.equal(await page.locator("h1").innerText(), "Second factor");
    await page.getByRole("img", { name: "Picture for the application" }).waitFor();
    const set = await secretOf(page);
    await page.getByLabel("Code").fill("000000x");
    await press(page, "Switch on");
    await page.getByRole("alert").getByText("The code is wrong").waitFor();
    assert.equal(await secretOf(page), set);
    secret = set;
    step = stepNow();
    await page.getByLabel("Code").fill(codeAt(secret, step));
    await press(page, "Switch on");
    paper = await codesOf(page);
    assert.equal(new Set(paper).size, 10);
    await follow(page, "Go on");
    assert.equal(place(page), `/tvx.asp?pageId=${friends}`);
  });

  test("keeps guarded pages shut until its code is shown", async () => {
    await begin();
    await openLogin();
    await logIn(page, "rowan", "spade");
    await page.getByText("Enter the code that your telephone shows now.").waitFor();
    assert.equal(await page.locator(".factor-secret").count(), 0);
    assert.ok(await isShut());
    await logIn(page, "rowan", "spade");
    await page.getByLabel("Code").fill(codeAt(secret, step));
    await press(page, "Log in");
    await page.getByRole("alert").getByText("was used before").waitFor();
    assert.ok(await isShut());
    await logIn(page, "rowan", "spade");
    await page.getByLabel("Code").fill(paper[0].toLowerCase());
    await press(page, "Log in");
    assert.equal(place(page), `/tvx.asp?pageId=${friends}`);
  });

  test("is kept where it stands, and can't be dropped", async () => {
    await page.goto(`${site.address}/torvex_secondFactor/?pageId=391&from=44`);
    await page.getByText("Recovery codes left: 9.").waitFor();
    assert.equal(await page.getByLabel("Your password or a code").count(), 0);
    await page.getByText("This website asks for a second factor, so it stays.").waitFor();
    await page.getByLabel("Code").fill(paper[1]);
    await press(page, "Make new ones");
    await page.getByRole("alert").getByText("The code is wrong").waitFor();
  });

  test("is told in German, on wide screens and narrow ones, light and dark", async () => {
    for (const colorScheme of ["light", "dark"]) for (const width of [360, 1440]) {
      await begin({ javaScriptEnabled: true, colorScheme, viewport: { width, height: 900 } });
      await site.open(page, login.de);
      await page.getByLabel("Name").fill("linde");
      await page.getByLabel("Kennwort").fill("orchidee");
      await press(page, "Anmelden");
      assert.equal(await page.locator("h1").innerText(), "Zweiter Faktor");
      await page.getByRole("button", { name: "Einschalten" }).waitFor();
      await assertWhole(page, `setting up, ${colorScheme}, ${width}`);
    }
  });

  test("stands in a page of the server's own where a site has none", async () => {
    site.sql("update TORVEX_PAGES_LIVE set online = 0 where pageId = 391");
    await begin({ javaScriptEnabled: true, colorScheme: "dark" });
    await openLogin();
    await logIn(page, "rowan", "spade");
    assert.equal(place(page), "/torvex_secondFactor/?pageId=44&from=44");
    await page.getByText("Enter the code that your telephone shows now.").waitFor();
    await assertWhole(page, "a page of the server's own");
    await page.getByLabel("Code").fill(paper[2]);
    await press(page, "Log in");
    assert.equal(place(page), `/tvx.asp?pageId=${friends}`);
    await page.goto(`${site.address}/torvex_secondFactor/?pageId=44&from=44`);
    await assertWhole(page, "keeping it on a page of the server's own");
  });
});
