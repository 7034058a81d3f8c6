// Makes the pictures of the guides in docs/: a demo is laid out, every screen is brought to the state that its guide
// speaks of, and the part that matters is taken. `npm run guide` makes all of them, `npm run guide -- publish why` some.
import { execFileSync } from "node:child_process";
import { existsSync, mkdirSync, mkdtempSync, readFileSync, rmSync, writeFileSync } from "node:fs";
import { tmpdir } from "node:os";
import { dirname, join } from "node:path";
import { fileURLToPath } from "node:url";
import { siteOf } from "../support.mjs";
import { givePasswords, useInterface } from "./door.mjs";
import { choose, clickInto, edited, followed } from "./support.mjs";
import { workAs } from "./workplace.mjs";

const root = join(dirname(fileURLToPath(import.meta.url)), "../../..");
const program = process.env.TORVEX_PROGRAM ?? join(root, "build/release/torvex");
const folder = join(root, "docs/pictures");
const [width, height] = [1280, 800];
const mostBytes = 150 * 1024;

// Iris shows the administration, too. Dates are those of one day, so that the pictures are the same on all days.
const administers = [
  "insert into TORVEX_ROLES (roleId, roleName, roleDesc, lock) values (9, 'Administrators', 'The whole installation', '')",
  "insert into TORVEX_ROLES_LOGINS (roleId, loginId) values (9, 2)",
  `insert into TORVEX_ADVANCED_RIGHTS (roleId, advId, site, lang, viewAccess, editAccess)
    select 9, advId, '', '', advView, advEdit from TORVEX_ADVANCED where advView = 1 and advLevel = 0 and advId not in (23, 31, 32, 63)`,
];
const oneDay = ["editingDate", "lockingDate", "approvingDate", "deletingDate"]
  .map((moment) => `update TORVEX_PAGES_DESIGN set ${moment} = '2026-06-15T09:12:00' where ${moment} > '2026-06'`);

// A month of visits that is the same for everybody.
const visited = [["bg.en", 184], ["bg.en.01.01.01", 96], ["bg.en.03", 88], ["bg.en.02", 71], ["bg.en.02.01", 64], ["bg.en.03.01", 57]];
const usual = [74, 81, 96, 92, 104, 139, 153];
const visits = visited.flatMap(([node, readers]) => Array.from({ length: 30 }, (_, i) => {
  const day = String(i + 1).padStart(2, "0");
  const views = Math.round((readers * usual[i % 7] * (90 + ((i * 11) % 21))) / 10000);
  return `('bg', 'en', '${node}', '202606${day}', '2026', '06', '${day}', ${views}, ${Math.round(views * 0.66)})`;
}));
const counted = [
  "delete from TORVEX_LOGGING",
  `insert into TORVEX_LOGGING (site, lang, nodeId, yyyymmdd, yyyy, mm, dd, hits, uniquehits) values ${visits.join(", ")}`,
];

const byBasil = (operation, ...args) => [`cManager.${operation}`, ...args, "--login", "basil"];
const byReed = (operation, ...args) => [`cManager.${operation}`, ...args, "--login", "reed"];
const body = (page, words) => [`pageIdent=${page}`, "bodyId=2", `bodyContent=<p>${words}</p>`];
const done = [
  byBasil("saveBody", ...body(9, "Six hundred tonnes of rock, and eight gardeners who know every crack in it.")),
  byBasil("checkIn", "pageIdent=9"),
  byReed("saveBody", ...body(11, "Exhibitions, walks and workshops, and a few evenings that need a coat and a lamp.")),
  byReed("checkIn", "pageIdent=11"),
  byBasil("approvePage", "pageIdent=9", "state=1"),
  byBasil("deletePage", "pageIdent=14", "state=1"),
  byBasil("checkOut", "pageIdent=16"),
];

const main = (page) => page.getByRole("main");
const button = (place, name) => place.getByRole("button", { name, exact: true }).first();
const shown = (page) => edited(page).locator("body").waitFor();
const textTools = (page) => page.getByRole("toolbar", { name: "Tools for text" });

async function openPage({ page, openPage: open, rest }, id) {
  await open(id);
  await shown(page);
  await rest();
}

async function write(work) {
  await openPage(work, 12);
  await clickInto(work.page, "Ninety drawings, three centuries");
  await textTools(work.page).waitFor();
}

// What a picture shows: the whole window down to a line, or the element that is answered.
const top = (bottom) => ({ x: 0, y: 0, width, height: bottom });
const middle = (bottom) => ({ x: 280, y: 48, width: 640, height: bottom });
const wide = (bottom) => ({ x: 280, y: 48, width: 1000, height: bottom });

const pictures = {
  "editor-login": async ({ page, go }) => {
    await page.context().clearCookies();
    await go("/torvex/login?lang=en");
    await page.locator("#username").fill("iris");
    return page.locator("main");
  },
  "editor-dashboard": async ({ page, go, rest }) => {
    await go("/torvex/");
    await page.getByRole("region", { name: "To publish" }).getByRole("link").first().waitFor();
    await rest();
    return top(620);
  },
  "editor-page": async (work) => {
    await openPage(work, 11);
    return top(720);
  },
  "editor-search": async ({ page, go, rest, dialog }) => {
    await go("/torvex/");
    await page.getByRole("heading", { name: /^Hello/ }).waitFor();
    await rest();
    await page.keyboard.press("Control+k");
    await page.keyboard.type("palm");
    await dialog.getByRole("group", { name: "Media" }).waitFor();
    return dialog;
  },
  "editor-writing": async (work) => {
    await write(work);
    await work.page.keyboard.type(" Free on Sundays.");
    await followed(work.page);
    return main(work.page);
  },
  "editor-link": async (work) => {
    const { page, dialog } = work;
    await write(work);
    await page.keyboard.press("Control+l");
    await dialog.getByRole("combobox", { name: "Where to?" }).fill("Alpine");
    await dialog.getByRole("option", { name: /^Alpine garden/ }).waitFor();
    return dialog;
  },
  "editor-picture": async (work) => {
    const { page, dialog } = work;
    await write(work);
    await button(textTools(page), "Picture").click();
    await dialog.getByLabel("Find a picture").fill("drawing");
    await dialog.getByRole("option", { name: "Palm House (drawing)" }).waitFor();
    await dialog.getByRole("option", { name: "Map of the garden" }).waitFor({ state: "detached" });
    return dialog;
  },
  "editor-publish": async (work) => {
    await openPage(work, 11);
    await button(main(work.page), "Publish").click();
    await work.dialog.getByText(/words? (more|fewer)/).waitFor();
    return work.dialog;
  },
  "editor-compare": async ({ page, go, rest }) => {
    await go("/torvex/page.asp?pageId=11&look=compare");
    await page.getByText("and a lamp").waitFor();
    await rest();
    return middle(240);
  },
  "editor-removal": async (work) => {
    await openPage(work, 14);
    await button(main(work.page), "Remove from the website...").click();
    await work.dialog.getByText("1 page goes for good.").waitFor();
    return work.dialog;
  },
  "editor-held": async (work) => {
    await openPage(work, 16);
    await work.page.getByText(/Basil Crane has this page since/).waitFor();
    return middle(250);
  },
  "editor-media": async ({ page, go, rest }) => {
    await go("/torvex/images.asp");
    await page.getByRole("option", { name: /Palm House/ }).waitFor();
    await rest();
    await page.waitForFunction(() => [...document.querySelectorAll("tvx-media img")].every((image) => image.complete));
    return wide(400);
  },
  "admin-websites": async ({ page, go, rest }) => {
    await go("/torvex/sites.asp");
    await page.getByText("40 pages").waitFor();
    await rest();
    return wide(250);
  },
  "admin-role": async ({ page, go, rest }) => {
    await go("/torvex/roles.asp?role=3");
    await page.getByRole("checkbox").first().waitFor();
    await rest();
    return wide(370);
  },
  "admin-why": async ({ page, go, rest }) => {
    await go("/torvex/logins.asp?login=6");
    const why = page.locator("tvx-why");
    await why.getByLabel("May she").selectOption("publish");
    await why.getByRole("combobox", { name: "Page" }).fill("What’s on");
    await why.getByRole("option", { name: "What’s on" }).first().click();
    await why.getByText("No.").waitFor();
    await rest();
    return why;
  },
  "admin-template": async ({ page, go, rest }) => {
    await go("/torvex/templates.asp?contentTemplate=2");
    await page.getByRole("button", { name: /^Save: \d+ live pages change$/ }).waitFor();
    await page.getByRole("textbox", { name: "Source" }).getByText("torvex_content_end").waitFor();
    await rest();
    return wide(600);
  },
  "admin-words": async ({ page, go, rest }) => {
    await go("/torvex/vocabulary.asp?lang=de&words=publish");
    await page.getByRole("textbox", { name: "15: Publish" }).waitFor();
    await rest();
    return wide(400);
  },
  "admin-board": async ({ page, go, rest }) => {
    await go("/torvex/torvex_msgBoard/categories.asp");
    await page.getByRole("button", { name: "New item" }).waitFor();
    await rest();
    return wide(400);
  },
  "admin-statistics": async ({ page, go, rest }) => {
    await go("/torvex/statistics.asp?from=20260601&to=20260630");
    await page.getByRole("link", { name: "Home" }).waitFor();
    await rest();
    return wide(540);
  },
  "admin-settings": async ({ page, go, rest }) => {
    await go("/torvex/settings.asp");
    await page.getByLabel("The page that an address without a page leads to").waitFor();
    await rest();
    return wide(540);
  },
};

// Whether anybody could see that two pictures differ: edges are drawn a shade lighter or darker from time to time.
async function isSeen(browser, before, after) {
  const page = await browser.newPage();
  const seen = await page.evaluate(async (pictures) => {
    const [one, other] = await Promise.all(pictures.map(async (text) => {
      const bitmap = await createImageBitmap(new Blob([Uint8Array.from(atob(text), (letter) => letter.charCodeAt(0))]));
      const pen = new OffscreenCanvas(bitmap.width, bitmap.height).getContext("2d");
      pen.drawImage(bitmap, 0, 0);
      return pen.getImageData(0, 0, bitmap.width, bitmap.height);
    }));
    const isOfOneSize = one.width === other.width && one.height === other.height;
    return !isOfOneSize || one.data.some((shade, i) => Math.abs(shade - other.data[i]) > 24);
  }, [before, after].map((picture) => picture.toString("base64")));
  await page.close();
  return seen;
}

// A picture that shows what the last one showed stays as it is.
async function keep(browser, name, picture) {
  const path = join(folder, `${name}.png`);
  const isNew = !existsSync(path) || (await isSeen(browser, readFileSync(path), picture));
  if (isNew) writeFileSync(path, picture);
  console.log(`${name}: ${Math.ceil(picture.length / 1024)} KB${isNew ? "" : ", as before"}`);
  if (picture.length > mostBytes) throw new Error(`larger than ${mostBytes} bytes: take a smaller part`);
}

async function take(site, name) {
  const work = await workAs(site, "iris", { width, height });
  const part = await pictures[name](work);
  const still = { animations: "disabled", scale: "css" };
  const picture = "screenshot" in part ? await part.screenshot(still) : await work.page.screenshot({ ...still, clip: part });
  await keep(site.browser, name, picture);
  if (work.faults.length) throw new Error(work.faults.join("; "));
  site.sql("delete from TORVEX_DRAFTS");
  await work.close();
}

function layOut(install) {
  const run = (...args) => execFileSync(program, [...args, "--install", install]);
  execFileSync(program, ["init", install, "--demo"]);
  givePasswords(install);
  useInterface(install);
  for (const call of done) run("call", ...call);
  for (const statement of [...administers, ...oneDay, ...counted]) run("sql", statement);
}

// The others are made all the same.
function failed(name, error) {
  console.error(`${name}: ${error.message}`);
  process.exitCode = 1;
}

async function makeAll(names) {
  const place = mkdtempSync(join(tmpdir(), "torvex-guide-"));
  const install = join(place, "site");
  mkdirSync(folder, { recursive: true });
  layOut(install);
  const site = await siteOf(install);
  try {
    for (const name of names) await take(site, name).catch((error) => failed(name, error));
  } finally {
    await site.stop();
    rmSync(place, { recursive: true });
  }
}

const wanted = process.argv.slice(2);
await makeAll(Object.keys(pictures).filter((name) => !wanted.length || wanted.some((part) => name.includes(part))));
