// Every screen in three widths and both appearances: nothing that axe finds, nothing wider than its window, no policy
// broken; and a picture of each in build/pictures/, all of them on one sheet for people to look at.
import assert from "node:assert/strict";
import { mkdirSync, writeFileSync } from "node:fs";
import { dirname, join } from "node:path";
import { before, describe, test } from "node:test";
import { fileURLToPath, pathToFileURL } from "node:url";
import { servedAuthors } from "./door.mjs";
import { author, clickInto, edited, findings } from "./support.mjs";

const folder = join(dirname(fileURLToPath(import.meta.url)), "../../../build/pictures");
const widths = [[1440, 900], [768, 1024], [360, 740]];
const schemes = ["light", "dark"];

const shownFrame = async (page) => edited(page).locator("body").waitFor();
const button = (page, name) => page.getByRole("button", { name }).first();
const side = (name) => async (page) => {
  const tab = page.getByRole("tab", { name });
  if (!(await tab.isVisible())) await button(page, "Navigation on or off").click();
  await tab.click();
};

// A name, an address, and what is done there before it is looked at.
const screens = [
  ["dashboard", "/torvex/", (page) => page.getByRole("heading", { name: /^Hello/ }).waitFor()],
  ["tree", "/torvex/", side("Pages")],
  ["administration", "/torvex/", side("Administration")],
  ["page", "/torvex/page.asp?pageId=11", shownFrame],
  ["compare", "/torvex/page.asp?pageId=11&look=compare", (page) => page.getByText(/words more|word more|no difference/i).first().waitFor({ timeout: 5000 }).catch(() => {})],
  ["publish", "/torvex/page.asp?pageId=11", async (page) => {
    await shownFrame(page);
    await page.getByRole("main").getByRole("button", { name: /^(Publish|Approve)/ }).first().click();
    await page.getByRole("dialog").waitFor();
  }],
  ["editing", "/torvex/page.asp?pageId=11", async (page) => {
    await shownFrame(page);
    await clickInto(page, "The garden in an hour");
  }],
  ["palette", "/torvex/", async (page) => {
    await page.getByRole("banner").waitFor();
    await page.keyboard.press("Control+k");
    await page.keyboard.type("garden");
    await page.getByRole("option").first().waitFor();
  }],
  ["keys", "/torvex/", async (page) => {
    await page.getByRole("heading", { name: /^Hello/ }).waitFor();
    await page.keyboard.press("?");
    await page.getByRole("dialog", { name: "Keys" }).waitFor();
  }],
  ["search", "/torvex/search?words=garden"],
  ["sitemap", "/torvex/sitemap"],
  ["held-pages", "/torvex/locks.asp"],
  ["logins-online", "/torvex/loginsOnline.asp"],
  ["images", "/torvex/images.asp"],
  ["documents", "/torvex/documents.asp"],
  ["roles", "/torvex/roles.asp", (page) => page.getByRole("link", { name: "Programme" }).waitFor()],
  ["role", "/torvex/roles.asp?role=3", (page) => page.getByRole("checkbox").first().waitFor()],
  ["role-administration", "/torvex/roles.asp?role=2&tab=administration", (page) => page.getByRole("checkbox").first().waitFor()],
  ["scope", "/torvex/roles.asp?role=3", async (page) => {
    await page.getByRole("button", { name: /^Reach of the rights in/ }).click();
    await page.getByRole("dialog").getByRole("treeitem", { selected: true }).waitFor();
  }],
  ["logins", "/torvex/logins.asp", (page) => page.getByRole("link", { name: "Clover Dunn" }).waitFor()],
  ["login", "/torvex/logins.asp?login=6", (page) => page.getByRole("checkbox", { name: "Programme" }).waitFor()],
];

// So that Iris may look at logins and roles.
const administers = [
  "insert into TORVEX_ROLES (roleId, roleName, roleDesc, lock) values (9, 'Team leads', 'Logins and roles', '')",
  "insert into TORVEX_ROLES_LOGINS (roleId, loginId) values (9, 2)",
  "insert into TORVEX_ADVANCED_RIGHTS (roleId, advId, site, lang, viewAccess, editAccess) values (9, 21, '', '', 1, 1), (9, 22, '', '', 1, 1)",
];

const settle = (page) => page.waitForLoadState("networkidle", { timeout: 3000 }).catch(() => {});

describe("each screen", () => {
  const site = servedAuthors(administers);
  const taken = [];

  before(async () => {
    mkdirSync(folder, { recursive: true });
    site.call("cManager.saveBody", "pageIdent=11", "bodyId=2", "bodyContent=<p>Exhibitions in the Orangery, and a few evenings that need a lamp.</p>", "--login", "basil");
    site.call("cManager.checkIn", "pageIdent=11", "--login", "basil");
    site.call("cManager.checkOut", "pageIdent=9", "--login", "heide");
  });

  for (const [width, height] of widths) {
    for (const colorScheme of schemes) {
      test(`is fit to be used and looked at, ${width} wide and ${colorScheme}`, async () => {
        const { page, faults, close } = await author(site, "iris", { viewport: { width, height }, colorScheme });
        const wrong = [];
        for (const [name, path, prepare = async () => {}] of screens) {
          await page.goto(site.address + path);
          await page.getByRole("banner").waitFor();
          await prepare(page).catch((error) => wrong.push(`${name}: ${error.message}`));
          await settle(page);
          const picture = `authoring-${name}-${width}-${colorScheme}.png`;
          await page.screenshot({ path: join(folder, picture) });
          taken.push([name, width, colorScheme, picture]);
          const tooWide = await page.evaluate(() => document.documentElement.scrollWidth - window.innerWidth);
          if (tooWide > 0) wrong.push(`${name}: ${tooWide} pixels too wide`);
          wrong.push(...(await findings(page)).map((finding) => `${name}: ${finding}`));
        }
        assert.deepEqual([...wrong, ...faults], []);
        await close();
      });
    }
  }

  test("stands on one sheet", () => writeSheet(site, taken));
});

async function writeSheet(site, taken) {
  const figures = taken.map(([name, width, scheme, picture]) =>
    `<figure><img src="${picture}" alt="" style="width:${width === 1440 ? 480 : width === 768 ? 256 : 160}px"><figcaption>${name}, ${width}, ${scheme}</figcaption></figure>`);
  const sheet = join(folder, "authoring.html");
  writeFileSync(sheet, `<!doctype html><meta charset="utf-8"><title>The interface for authors</title>
<style>body{font:14px system-ui;background:#888;display:flex;flex-wrap:wrap;gap:16px;align-items:flex-start}figure{margin:0;background:#fff;padding:6px}img{display:block}</style>
${figures.join("\n")}`);
  const page = await site.browser.newPage({ viewport: { width: 2080, height: 1000 } });
  await page.goto(pathToFileURL(sheet).href);
  await page.screenshot({ path: join(folder, "authoring.png"), fullPage: true });
  await page.close();
}
