// What an author waits for on a large site, printed with the goals: bench/authors.sh grows the site and runs this with
// its folder. Each figure is the median of several turns: in milliseconds from the key or click to the painted answer, on
// this machine and on a line of 50 ms, and beside it what processors worked for it: the document's thread and the server.
import { mkdtempSync, rmSync } from "node:fs";
import { cpus, loadavg, tmpdir } from "node:os";
import { join } from "node:path";
import { chromium } from "playwright-core";
import { givePasswords, logInAs, useInterface } from "./door.mjs";
import { browserOptions, siteOf } from "../support.mjs";
import { choose, dropPicture } from "./support.mjs";
import { devtoolsOf, heapOf, median, openById, threadOf, timeOf } from "./watch.mjs";

const install = process.argv[2];
const turns = Number(process.env.TURNS ?? 5);
const only = process.env.ONLY ? new RegExp(process.env.ONLY) : /./;
const lineOf = 50;
const longBody = 8;
const firstGrown = 1_000_000;

const half = Array.from({ length: 235 }, (_, i) =>
  `<h2>Section ${i}</h2>\n<p>Paragraph ${i} with <strong>bold</strong> words and <a href="page(7)">a link</a>, ${"the garden by the river has been open to everyone since 1887, ".repeat(5)}caf&eacute;.\n  A second line.</p>\n`).join("");

givePasswords(install);
useInterface(install);
const site = await siteOf(install);
site.sql(`update TORVEX_BODIES_DESIGN set bodyText = '${half}${half}' where pageId = ${longBody} and bodyId = 3;`);
const rows = [];

function row(what, goal, cells) {
  rows.push({ what, ...cells, goal });
  console.log(`${what}: ${Object.entries(cells).map(([name, value]) => `${name} ${value}`).join(", ")} (goal ${goal})`);
}

// How authors sit before it.
const desk = { viewport: { width: 1440, height: 900 }, reducedMotion: "reduce", locale: "en" };

async function workAt(name, path) {
  const context = await site.browser.newContext(desk);
  const page = await context.newPage();
  page.setDefaultTimeout(120_000);
  await logInAs(page, site, name);
  await page.goto(`${site.address}${path}`);
  await page.locator("[role=treeitem]").first().waitFor();
  return { page, context };
}

// Calls of a session are counted: who asks for too much in a second waits, and that isn't to be measured.
const rest = (page, milliseconds = 1500) => page.waitForTimeout(milliseconds);

async function line(page, latency) {
  const devtools = await devtoolsOf(page);
  if (latency === 0) return devtools.send("Network.disable");
  await devtools.send("Network.enable");
  return devtools.send("Network.emulateNetworkConditions", { offline: false, latency, downloadThroughput: -1, uploadThroughput: -1 });
}

// Processor time of what was timed last: of the document's thread, and of the server.
let worked = 0;

async function timed(page, options) {
  const thread = await threadOf(page);
  const [before, served] = [await thread(), site.processor()];
  const time = await timeOf(page, options);
  worked = (await thread()).all - before.all + site.processor() - served;
  return time;
}

/** `turn` does it once and gives the milliseconds. What fails is told, and the others are measured all the same. */
async function measured(page, what, goal, turn) {
  if (!only.test(what)) return;
  try {
    await measure(page, what, goal, turn);
  } catch (error) {
    process.exitCode = 1;
    row(what, `${goal} ms`, { here: `not measured: ${String(error).split("\n")[0]} (${page.url()})` });
    await line(page, 0);
  }
}

async function measure(page, what, goal, turn) {
  const [here, work, there] = [[], [], []];
  for (let i = 0; i <= turns; ++i) {
    await rest(page);
    const time = await turn(i);
    // The first turn fetches what is kept from then on.
    if (i === 0) continue;
    here.push(time);
    work.push(worked);
  }
  await line(page, lineOf);
  for (let i = 0; i < turns; ++i) {
    await rest(page);
    there.push(await turn(turns + 1 + i));
  }
  await line(page, 0);
  const [a, b, c] = [here, there, work].map((times) => `${Math.round(median(times))} ms`);
  row(what, `${goal} ms`, { here: `${a} (least ${Math.round(Math.min(...here))})`, "on a line of 50 ms": b, "processor time": c });
}

// ---- The first load.

// The tree has its pages and the dashboard its cards: all of them can be used, while lists may still fill.
const isReady = () => document.querySelector("[role=treeitem]") !== null && document.querySelector("main .card") !== null;

async function load(page, path) {
  await page.addInitScript((seen) => {
    const isSeen = new Function(`return (${seen})()`);
    window.ready = new Promise((resolve) => {
      const look = () => {
        if (!isSeen()) return;
        observer.disconnect();
        requestAnimationFrame(() => {
          const channel = new MessageChannel();
          channel.port1.onmessage = () => resolve(performance.now());
          channel.port2.postMessage(null);
        });
      };
      const observer = new MutationObserver(look);
      observer.observe(document, { subtree: true, childList: true, attributes: true });
    });
  }, String(isReady));
  await page.goto(`${site.address}${path}`);
  return page.evaluate(() => window.ready);
}

// The browser makes ready what a new window of its own has: some 400 scripts, none of them ours.
async function newTab(context) {
  const page = await context.newPage();
  await rest(page, 4000);
  return page;
}

/** Milliseconds until an author can work, and those that the document's thread works for it. */
async function start(page) {
  const thread = await threadOf(page);
  const time = await load(page, "/torvex/");
  return { time, work: (await thread()).all };
}

// The interface and its words; what the website's size makes of the tree and the lists is no part of it.
async function bytesOver(page) {
  const devtools = await devtoolsOf(page);
  await devtools.send("Network.enable");
  let sum = 0;
  const parts = new Set();
  devtools.on("Network.requestWillBeSent", ({ requestId, request }) => {
    if (!/\/torvex\/api\/(?!labels)/.test(request.url)) parts.add(requestId);
  });
  devtools.on("Network.loadingFinished", ({ requestId, encodedDataLength }) => { if (parts.has(requestId)) sum += encodedDataLength; });
  return () => sum / 1024;
}

/** In a private window, which has nothing from before. */
async function firstStart() {
  const context = await site.browser.newContext(desk);
  const door = await context.newPage();
  await logInAs(door, site, "iris");
  await door.close();
  const page = await newTab(context);
  const bytes = await bytesOver(page);
  const begun = await start(page);
  await context.close();
  return { ...begun, bytes: bytes() };
}

// An author's own browser keeps what it has fetched, and what it has compiled of that: the latter behind the second start.
const earlierStarts = 3;

/** In the window of a browser that has a profile, in which the interface was begun before. */
async function laterStarts() {
  const profile = mkdtempSync(join(tmpdir(), "torvex-profile-"));
  const context = await chromium.launchPersistentContext(profile, { ...browserOptions, ...desk });
  try {
    const door = await context.newPage();
    await logInAs(door, site, "iris");
    await door.close();
    const starts = [];
    for (let i = 0; i < earlierStarts + turns; ++i) {
      const page = await newTab(context);
      starts.push(await start(page));
      await rest(page, 3000);
      await page.close();
    }
    return starts.slice(earlierStarts);
  } finally {
    await context.close();
    rmSync(profile, { recursive: true });
  }
}

async function firstLoads() {
  if (!only.test("load")) return;
  const cold = [];
  for (let i = 0; i < turns; ++i) cold.push(await firstStart());
  const warm = await laterStarts();
  const of = (starts) => {
    const times = starts.map(({ time }) => time);
    return {
      here: `${Math.round(median(times))} ms (least ${Math.round(Math.min(...times))})`,
      "processor time": `${Math.round(median(starts.map(({ work }) => work)))} ms`,
    };
  };
  row("first load, over the line", "250 KiB, wished 120", { here: `${median(cold.map(({ bytes }) => bytes)).toFixed(0)} KiB` });
  row("at work from a cold cache", "1000 ms", of(cold));
  row("at work from a warm cache", "300 ms", of(warm));
}

// ---- An author's day.

const frameShows = () => !document.querySelector("tvx-page-view .skeleton") && document.querySelector(".frame-stage")?.getAttribute("aria-busy") === "false";
const isTyping = () => document.querySelector("iframe")?.contentDocument?.querySelector("[contenteditable=true]") != null;
const isTold = () => document.querySelector("tvx-toasts .toast") !== null;

async function show(page, pageId) {
  await page.goto(`${site.address}/torvex/page.asp?pageId=${pageId}`);
  await page.waitForFunction(frameShows);
  await rest(page);
}

async function edit(page, pageId) {
  await show(page, pageId);
  await page.keyboard.press("e");
  await page.waitForFunction(isTyping);
}

async function finding(page) {
  const words = ["walks", "palms", "orchid", "snow", "shop", "volunteers", "garden", "press", "notices", "gardens", "hours"];
  const ask = async (word) => {
    await page.keyboard.press("Control+k");
    await page.locator("tvx-palette input").waitFor();
    await page.keyboard.type(word);
    await rest(page, 1000);
  };
  // Titles that are known here stand at once: this is when the server's have come.
  await measured(page, "find a page by a word of its title: the list", 150, async (i) => {
    const word = words[i % words.length];
    await ask(word.slice(0, -1));
    await page.evaluate(() => { performance.clearResourceTimings(); });
    const time = await timed(page, {
      act: () => page.keyboard.press(word.at(-1)),
      seen: () => performance.getEntriesByName(`${location.origin}/torvex/api/desk/find`).length > 0 && document.querySelector("tvx-palette .palette-entry") !== null,
    });
    await page.keyboard.press("Escape");
    return time;
  });
  await measured(page, "find a page by a word of its title: the page", 600, async (i) => {
    await ask(`word${40_000 + i}`);
    await page.locator("tvx-palette .palette-entry").filter({ hasText: new RegExp(`\\s${40_000 + i}`) }).first().waitFor();
    return timed(page, {
      act: () => page.keyboard.press("Enter"),
      seen: () => !document.querySelector("tvx-palette") && !document.querySelector("tvx-page-view .skeleton") && document.querySelector(".frame-stage")?.getAttribute("aria-busy") === "false",
    });
  });
}

// bg.en.40 is as wide as a branch can be.
async function branches(page) {
  const wide = '[role=treeitem][data-id="bg.en.40"]';
  await measured(page, "open a branch of 98 pages", 100, async (i) => {
    if (i === 0) await page.locator(wide).click();
    await page.locator(wide).evaluate((element) => element.focus());
    if ((await page.locator(wide).getAttribute("aria-expanded")) === "true") {
      await page.keyboard.press("ArrowLeft");
      await page.locator(`${wide}[aria-expanded=false]`).waitFor();
    }
    return timed(page, { act: () => page.keyboard.press("ArrowRight"), seen: () => document.querySelector('[data-id^="bg.en.40."]') !== null });
  });
}

async function correcting(page) {
  let next = firstGrown + 50_010;
  const type = async () => {
    await edit(page, (next += 10));
    await page.keyboard.type("eleven ");
    await page.waitForFunction(() => document.querySelector("tvx-page-frame").unsaved);
    await rest(page, 500);
  };
  const save = () => timed(page, { act: () => page.keyboard.press("Control+s"), seen: () => !document.querySelector("tvx-page-frame").unsaved });
  await measured(page, "save a corrected word", 300, async () => {
    await type();
    return save();
  });
  await measured(page, "put it online: from the confirmation (4 clicks)", 1000, async () => {
    await type();
    await save();
    await page.getByRole("main").locator(".button.primary").first().click();
    await page.getByRole("dialog").getByRole("button", { name: /^Publish/ }).waitFor();
    await rest(page);
    return timed(page, { event: "click", act: () => page.getByRole("dialog").getByRole("button", { name: /^Publish/ }).click(), seen: isTold });
  });
}

async function approving(page) {
  await measured(page, "approve what waits (2 clicks)", 500, async () => {
    await page.goto(`${site.address}/torvex/`);
    const card = page.getByRole("region", { name: "To approve" });
    await card.getByRole("checkbox").nth(1).waitFor();
    await rest(page, 4000);
    await card.getByRole("checkbox").nth(1).click();
    return timed(page, { event: "click", act: () => card.getByRole("button", { name: "Approve" }).click(), seen: isTold });
  });
  let next = firstGrown + 60_010;
  await measured(page, "see who changed what on a page (1 click)", 300, async () => {
    await show(page, (next += 10));
    await page.getByRole("tab", { name: "Setup", exact: true }).click();
    await rest(page, 500);
    return timed(page, {
      event: "click",
      act: () => page.getByRole("tab", { name: "History", exact: true }).click(),
      seen: () => document.querySelector("tvx-page-history .history li, tvx-page-history .empty") !== null,
    });
  });
}

async function making(page) {
  let turn = 0;
  await measured(page, "a new page below this one, ready to type (3 clicks)", 1000, async () => {
    await show(page, firstGrown + 70_001);
    await choose(page, "New page below...");
    await page.getByRole("dialog").getByLabel("Title", { exact: true }).fill(`Seed swap ${Date.now()}.${++turn}`);
    await rest(page, 1000);
    return timed(page, { event: "click", act: () => page.getByRole("dialog").getByRole("button", { name: /^Create/ }).click(), seen: isTyping });
  });
}

async function picturing(page) {
  let next = firstGrown + 80_010;
  const open = async () => {
    await edit(page, (next += 10));
    await rest(page, 500);
  };
  const question = () => document.querySelector("dialog[open]") !== null;
  await measured(page, "a picture dropped into the text: sent, and its question asked (1 drag)", 300, async () => {
    await open();
    return timed(page, { event: "drop", act: () => dropPicture(page, `dropped${Date.now()}.png`), seen: question });
  });
  await measured(page, "a picture dropped into the text: shown after the answer", 300, async () => {
    await open();
    await dropPicture(page, `shown${Date.now()}.png`);
    await page.getByLabel("Alternative text").fill("A red dot");
    return timed(page, {
      event: "click",
      act: () => page.getByRole("dialog").getByRole("button", { name: "Insert" }).click(),
      seen: () => document.querySelector("iframe").contentDocument.querySelector('.ProseMirror img[alt="A red dot"]')?.complete,
    });
  });
}

// ---- Typing, and a day of it.

async function typing(page) {
  if (!only.test("a key")) return;
  await show(page, longBody);
  await page.getByRole("button", { name: "Body 3", exact: true }).first().focus();
  await page.keyboard.press("Enter");
  await page.getByRole("menuitem", { name: "Edit", exact: true }).click();
  await page.waitForFunction(isTyping);
  const thread = await threadOf(page);
  for (const [place, key] of [["start", "Control+Home"], ["end", "Control+End"]]) {
    await page.keyboard.press(key);
    await page.keyboard.type("Now ");
    await rest(page, 3000);
    const spent = [];
    for (let i = 0; i < 2 * turns; ++i) {
      const before = await thread();
      for (const letter of "the garden is open ") {
        await page.keyboard.press(letter === " " ? "Space" : letter);
        await rest(page, 50);
      }
      const after = await thread();
      spent.push([after.all - before.all, after.script - before.script].map((time) => time / 19));
    }
    const [all, script] = [0, 1].map((i) => median(spent.map((one) => one[i])).toFixed(1));
    const least = Math.min(...spent.map(([time]) => time)).toFixed(1);
    row(`a key at the ${place} of a body of 200 KB`, "16 ms", { "processor time": `${all} ms (least ${least}; scripts ${script})` });
  }
  await page.keyboard.press("Control+s");
  await rest(page, 3000);
}

const opened = 500;

async function heaping() {
  if (!only.test("heap")) return;
  const { page, context } = await workAt("basil", `/torvex/page.asp?pageId=${longBody}`);
  const heap = await heapOf(page);
  // What is kept once, as the scripts of late parts, isn't growth.
  const warm = 20;
  let before;
  for (let i = 0; i < warm + opened; ++i) {
    if (i === warm) before = await heap();
    await openById(page, firstGrown + 1 + i * 37);
  }
  await rest(page, 3000);
  const after = await heap();
  const grown = (after.used - before.used) / 1024 / 1024;
  row(`heap after ${opened} pages, opened one after another`, "20 MB", { here: `${grown.toFixed(1)} MB (${after.nodes - before.nodes} nodes, ${after.jsEventListeners - before.jsEventListeners} listeners)` });
  await context.close();
}

const started = Date.now();
try {
  await firstLoads();
  const { page, context } = await workAt("iris", "/torvex/");
  for (const part of [finding, branches, typing, correcting, approving, making, picturing]) await part(page);
  await context.close();
  await heaping();
} finally {
  console.table(Object.fromEntries(rows.map(({ what, ...cells }) => [what, cells])));
  console.log(`${cpus().length} processors, on average ${loadavg().map((load) => load.toFixed(1)).join(", ")} at work for all programs; ${Math.round((Date.now() - started) / 1000)} s`);
  await site.stop();
}
