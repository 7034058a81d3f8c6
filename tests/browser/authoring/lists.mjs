// How lists of 50,000 records scroll and are filtered, printed with the goals: bench/lists.sh fills them and runs this
// with its folder. A filter is timed from the key that ends a word to the painted list; a frame's work is what the
// document's thread did for it, which must fit into a sixtieth of a second.
import { givePasswords, logInAs, useInterface } from "./door.mjs";
import { siteOf } from "../support.mjs";
import { median, threadOf, timeOf } from "./watch.mjs";

const install = process.argv[2];
const turns = Number(process.env.TURNS ?? 5);
const frames = 180;

givePasswords(install);
useInterface(install);
const site = await siteOf(install);

const lists = [
  { name: "logins", path: "/torvex/logins.asp" },
  { name: "visitors' accounts", path: "/torvex/users.asp" },
  { name: "documents", path: "/torvex/documents.asp", prepare: (page) => page.getByRole("button", { name: "List", exact: true }).click() },
  { name: "templates", path: "/torvex/templates.asp" },
];

const rowsSeen = () => document.querySelector("main tr[data-at]") !== null;

// Eight rows a frame, as a flung wheel does.
const scroll = (page) => page.evaluate((frames) => new Promise((resolve) => {
  const box = document.querySelector("main .table-scroll");
  const times = [];
  let before = 0;
  const step = (now) => {
    if (before) times.push(now - before);
    before = now;
    box.scrollTop += 256;
    if (times.length < frames) requestAnimationFrame(step);
    else resolve(times);
  };
  requestAnimationFrame(step);
}), frames);

const isOnlyRow = (word) =>
  `() => { const rows = document.querySelectorAll("main tr[data-at]"); return rows.length === 1 && rows[0].textContent.includes("${word}"); }`;

async function filterTime(page, word, isFound) {
  const field = page.getByRole("main").getByRole("searchbox").first();
  await field.fill("");
  await page.waitForTimeout(1000);
  await field.pressSequentially(word.slice(0, -1));
  await page.waitForTimeout(1000);
  return timeOf(page, { act: () => page.keyboard.press(word.at(-1)), seen: isFound });
}

async function measure(page, { name, path, prepare }) {
  await page.goto(`${site.address}${path}`);
  await prepare?.(page);
  await page.waitForFunction(rowsSeen);
  await page.waitForTimeout(1500);
  const thread = await threadOf(page);
  const [work, late] = [[], []];
  for (let i = 0; i < turns; ++i) {
    await page.evaluate(() => { document.querySelector("main .table-scroll").scrollTop = 0; });
    const before = await thread();
    const times = await scroll(page);
    work.push(((await thread()).all - before.all) / frames);
    late.push(times.filter((time) => time > 1.5 * 1000 / 60).length);
  }
  const filtered = [];
  for (let i = 0; i < turns; ++i) {
    const number = 41_230 + i;
    filtered.push(await filterTime(page, `x${number}`, isOnlyRow(`x${number}`)));
  }
  console.log(`${name}: a frame's work ${median(work).toFixed(1)} ms (goal 16.7), ${median(late)} of ${frames} frames late; filtered in ${Math.round(median(filtered))} ms (goal 200)`);
}

const context = await site.browser.newContext({ viewport: { width: 1440, height: 900 }, locale: "en" });
try {
  const page = await context.newPage();
  page.setDefaultTimeout(60_000);
  await logInAs(page, site, "sa");
  for (const list of lists) {
    if (new RegExp(process.env.ONLY ?? ".").test(list.name)) await measure(page, list);
  }
} finally {
  await site.stop();
}
