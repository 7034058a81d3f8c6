import assert from "node:assert/strict";
import { mkdirSync } from "node:fs";
import { dirname, join } from "node:path";
import { after, before, describe, test } from "node:test";
import { fileURLToPath } from "node:url";
import { faultsOf } from "../support.mjs";
import { holdElsewhere, passwords, servedAuthors, watched } from "./door.mjs";

const root = join(dirname(fileURLToPath(import.meta.url)), "../../..");
const pictures = join(root, "build/pictures/door");

const sizes = [[360, 740], [768, 1024], [1440, 900]];

describe("the door", () => {
  let install;
  const site = servedAuthors([], (folder) => { install = folder; });
  let context;
  let violations;
  let page;

  const open = (query = "") => page.goto(`${site.address}/torvex/login${query}`);
  const type = async (name, password) => {
    await page.getByLabel(/User.name/).fill(name);
    await page.locator("#password").fill(password);
  };
  const send = () => Promise.all([page.waitForNavigation(), page.getByRole("button", { name: /Log.in/ }).click()]);

  before(async () => {
    mkdirSync(pictures, { recursive: true });
    ({ context, violations } = await watched(site, { locale: "en-GB" }));
    page = await context.newPage();
  });
  after(async () => { await context.close(); });

  test("leads in who has the right password, and to where she wanted to go", async () => {
    const { context: other, violations: found } = await watched(site, { locale: "en-GB" });
    const tab = await other.newPage();
    await tab.goto(`${site.address}/torvex/page.asp?pageId=5`);
    assert.match(tab.url(), /\/torvex\/login\?to=/);
    assert.match(await tab.locator("main").innerText(), /you come back to where you wanted to go/);
    await tab.getByLabel(/User.name/).fill("Basil");
    await tab.locator("#password").fill(passwords.basil);
    await Promise.all([tab.waitForURL(/page\.asp\?pageId=5/), tab.getByRole("button", { name: /Log.in/ }).click()]);
    await tab.goto(`${site.address}/torvex/logout`);
    assert.match(await tab.getByRole("status").first().innerText(), /You are logged out/);
    assert.deepEqual(found.filter((one) => one.includes("/torvex/log")), []);
    await other.close();
  });

  test("works without a script", async () => {
    const { context: plain } = await watched(site, { javaScriptEnabled: false, locale: "de-DE" });
    const tab = await plain.newPage();
    await tab.goto(`${site.address}/torvex/login`);
    await tab.getByLabel("Benutzername").fill("heide");
    await tab.getByLabel("Passwort", { exact: true }).fill("falsch");
    await tab.getByRole("button", { name: "Anmelden" }).click();
    assert.match(await tab.getByRole("alert").innerText(), /Name oder Passwort ist falsch/);
    await tab.getByLabel("Passwort", { exact: true }).fill(passwords.heide);
    await tab.getByRole("button", { name: "Anmelden" }).click();
    assert.equal(new URL(tab.url()).pathname, "/torvex/");
    await tab.goto(`${site.address}/torvex/logout`);
    await plain.close();
  });

  test("shows the password on demand, by mouse and key, and tells of the caps lock", async () => {
    await open();
    await type("basil", "secret");
    const show = page.getByRole("button", { name: /Show.the.password/ });
    assert.equal(await show.getAttribute("aria-pressed"), "false");
    await show.click();
    assert.equal(await page.locator("#password").getAttribute("type"), "text");
    assert.equal(await show.getAttribute("aria-pressed"), "true");
    await show.focus();
    await page.keyboard.press("Space");
    assert.equal(await page.locator("#password").getAttribute("type"), "password");
    await page.locator("#password").dispatchEvent("keydown", { key: "A", modifierCapsLock: true });
    assert.match(await page.locator("#caps").innerText(), /Caps lock is on/);
  });

  test("speaks the language that is chosen", async () => {
    await open();
    await page.getByRole("link", { name: "Deutsch" }).click();
    assert.equal(await page.locator("html").getAttribute("lang"), "de");
    await page.getByRole("link", { name: "English" }).click();
    assert.equal(await page.locator("html").getAttribute("lang"), "en");
  });

  test("asks before it ends a session at another place", async () => {
    const { context: other, violations: found } = await watched(site, { locale: "en-GB" });
    const tab = await other.newPage();
    const tryIt = async () => {
      await tab.getByLabel(/User.name/).fill("heide");
      await tab.locator("#password").fill(passwords.heide);
      await tab.getByRole("button", { name: /Log.in/ }).click();
      await tab.getByRole("alert").waitFor();
    };
    holdElsewhere(install, "heide");
    await tab.goto(`${site.address}/torvex/login?to=%2Ftorvex%2Ferror.asp%3Ferror%3Din`);
    await tryIt();
    assert.match(await tab.getByRole("alert").innerText(), /from 10\.0\.0\.7 since 2026-01-02 9:12\. End that session/);
    assert.doesNotMatch(await tab.content(), new RegExp(passwords.heide));
    await tab.getByRole("link", { name: /Not.now/ }).click();
    await tryIt();
    await Promise.all([tab.waitForURL(/error\.asp/), tab.getByRole("button", { name: /End.that.session/ }).click()]);
    assert.equal(new URL(tab.url()).search, "?error=in");
    assert.deepEqual(found, []);
    await other.close();
  });

  test("counts down when there were too many tries", async () => {
    const { context: other } = await watched(site, { locale: "en-GB" });
    const tab = await other.newPage();
    await tab.goto(`${site.address}/torvex/login`);
    for (let i = 0; i < 7; ++i) {
      if (await tab.locator("button[type=submit]").isDisabled()) break;
      await tab.getByLabel(/User.name/).fill("nobody");
      await tab.locator("#password").fill(`wrong${i}`);
      await Promise.all([tab.waitForNavigation(), tab.locator("button[type=submit]").click()]);
    }
    assert.match(await tab.locator("#refusal").innerText(), /You can try again in \d+ seconds/);
    assert.equal(await tab.locator("button[type=submit]").isDisabled(), true);
    await tab.locator("button[type=submit]:enabled").waitFor({ timeout: 20_000 });
    assert.match(await tab.locator("#refusal").innerText(), /You can try again now/);
    await other.close();
  });

  for (const scheme of ["light", "dark"]) {
    for (const [width, height] of sizes) {
      test(`has no faults in ${scheme} at ${width} pixels`, async () => {
        await page.emulateMedia({ colorScheme: scheme });
        await page.setViewportSize({ width, height });
        const faults = [];
        const look = async (name) => {
          faults.push(...await faultsOf(page, name));
          await page.screenshot({ path: join(pictures, `${name}-${width}-${scheme}.png`) });
        };
        await open();
        await look("login");
        await type("basil", "wrong");
        await send();
        await look("refused");
        holdElsewhere(install, "iris");
        await open();
        await type("iris", passwords.iris);
        await send();
        await look("held");
        await open("?lang=de&to=%2Ftorvex%2Fsites.asp");
        await look("german");
        await page.goto(`${site.address}/torvex/error.asp?error=template_not_found&pageId=5`);
        await look("error");
        assert.deepEqual(faults, []);
      });
    }
  }

  test("breaks no rule of its policy", () => assert.deepEqual(violations, []));
});
