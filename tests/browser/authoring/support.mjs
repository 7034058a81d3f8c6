// The demo, served with the interface for authors; authors at work in it.
import { execFileSync, spawn } from "node:child_process";
import { existsSync, mkdtempSync, readFileSync, rmSync, writeFileSync } from "node:fs";
import { createRequire } from "node:module";
import { tmpdir } from "node:os";
import { dirname, join } from "node:path";
import { after, before } from "node:test";
import { fileURLToPath } from "node:url";
import { chromium } from "playwright-core";
import { freePort } from "../support.mjs";

const root = join(dirname(fileURLToPath(import.meta.url)), "../../..");
const program = process.env.TORVEX_PROGRAM ?? join(root, "build/release/torvex");
const dist = join(root, "ui/dist");
const axe = readFileSync(createRequire(import.meta.url).resolve("axe-core/axe.min.js"), "utf8");

export const passwords = { iris: "blue-flag", basil: "thyme-and-salt", heide: "calluna", reed: "phragmites", clover: "four-leaves" };
const loginIds = { iris: 2, basil: 3, heide: 4, reed: 5, clover: 6 };

const run = (...args) => execFileSync(program, args, { encoding: "utf8", maxBuffer: 1e8 });

// What init gives the team is random.
function givePasswords(install) {
  for (const [name, password] of Object.entries(passwords)) {
    run("call", "cManager.saveLogin", "advId=0", `loginId=${loginIds[name]}`, "username=", `password=${password}`, "name=", "job=",
      "--install", install, "--login", "sa");
  }
}

// A newer interface than the program's own, where one is built.
function useBuilt(install) {
  if (!existsSync(join(dist, ".vite/manifest.json"))) return;
  const file = join(install, "torvex.toml");
  writeFileSync(file, readFileSync(file, "utf8").replace('#interface = ""', `interface = "${dist}"`));
}

// The served demo for the tests of the suite around the call, with a server that can be killed and started anew.
export function servedAuthors({ statements = [], prepare = () => {} } = {}) {
  const site = {};
  before(async () => Object.assign(site, await start(statements, prepare)));
  after(() => site.stop?.());
  return site;
}

async function start(statements, prepare) {
  const folder = mkdtempSync(join(tmpdir(), "torvex-authors-"));
  const install = join(folder, "site");
  run("init", install, "--demo");
  givePasswords(install);
  useBuilt(install);
  for (const statement of statements) run("sql", "--install", install, statement);
  prepare(install);
  const port = freePort();
  const address = `http://127.0.0.1:${port}`;
  let server;
  const serve = async () => {
    server = spawn(program, ["serve", "--install", install, "--listen", `127.0.0.1:${port}`], { stdio: "ignore" });
    await untilServed(`${address}/torvex/login`);
  };
  const end = (signal) => new Promise((resolve) => {
    server.once("exit", resolve);
    server.kill(signal);
  });
  await serve();
  const browser = await chromium.launch({ executablePath: process.env.CHROMIUM ?? "/usr/bin/chromium", args: ["--no-sandbox", "--disable-gpu"] });
  return {
    address,
    install,
    browser,
    call: (...request) => run("call", "--install", install, ...request).trim(),
    query: (statement) => run("sql", "--json", "--install", install, statement).trim().split("\n").filter(Boolean).map((row) => JSON.parse(row)),
    sql: (statement) => run("sql", "--install", install, statement),
    /** What visitors get of a page. */
    live: async (pageId) => (await fetch(`${address}/tvx.asp?pageId=${pageId}`)).text(),
    kill: () => end("SIGKILL"),
    serve,
    async stop() {
      await browser.close();
      await end("SIGTERM");
      rmSync(folder, { recursive: true });
    },
  };
}

async function untilServed(address) {
  for (let i = 0; i < 300; ++i) {
    try {
      await fetch(address, { redirect: "manual" });
      return;
    } catch {
      await new Promise((resolve) => setTimeout(resolve, 50));
    }
  }
  throw new Error(`nothing answers at ${address}`);
}

// An author in a browser of her own, logged in: her page, her context, and what went wrong.
export async function author(site, name, { lang = "en", path = "/torvex/", ...options } = {}) {
  const context = await site.browser.newContext({ viewport: { width: 1440, height: 900 }, reducedMotion: "reduce", ...options });
  const faults = [];
  await context.exposeBinding("tellViolation", ({ frame }, text) => {
    // The policy of an edited page is there to be broken by the page's own scripts.
    if (frame.parentFrame() === null) faults.push(text);
  });
  await context.addInitScript(() => document.addEventListener("securitypolicyviolation", (event) => {
    if (event.disposition === "enforce") window.tellViolation(`${event.effectiveDirective} ${event.blockedURI} ${event.sample}`);
  }));
  const page = await context.newPage();
  page.on("pageerror", (error) => faults.push(error.message));
  await page.goto(`${site.address}/torvex/login?lang=${lang}&to=${encodeURIComponent(path)}`);
  await page.locator("#username").fill(name);
  await page.locator("#password").fill(passwords[name]);
  await page.locator("button[type=submit]").click();
  await page.getByRole("banner").waitFor();
  return { page, context, faults, close: () => context.close() };
}

/** The edited page inside the interface. */
export const edited = (page) => page.frameLocator("iframe").first();

export const treeRow = (page, name) => page.getByRole("treeitem", { name });

// Opens a page by its row in the tree and waits until it can be clicked into.
export async function openPage(page, name) {
  await treeRow(page, name).first().click();
  await edited(page).locator("body").waitFor();
  await page.getByRole("main").getByRole("button", { name: /^(Edit|Check in|Approve|Publish|Bearbeiten|Einchecken)/ }).first().waitFor();
}

// Clicks into words of the edited page and goes to the end of their block.
export async function clickInto(page, words) {
  await edited(page).getByText(words).first().click();
  await edited(page).locator("[contenteditable=true]").first().waitFor();
  await page.keyboard.press("Control+End");
}

export async function findings(page) {
  await page.evaluate(axe);
  const { violations } = await page.evaluate(() => window.axe.run({ exclude: [["iframe"]] }, {
    runOnly: ["wcag2a", "wcag2aa", "wcag21a", "wcag21aa", "wcag22aa", "best-practice"],
  }));
  return violations.flatMap(({ id, nodes }) => nodes.map(({ html, failureSummary }) => `${id}: ${html.slice(0, 160)} (${failureSummary})`));
}
