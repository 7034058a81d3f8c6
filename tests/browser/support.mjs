// A demo installation that is served for the tests of one file, and a browser to look at it.
import { execFileSync, spawn } from "node:child_process";
import { mkdtempSync, readFileSync, readdirSync, rmSync } from "node:fs";
import { createRequire } from "node:module";
import { tmpdir } from "node:os";
import { dirname, join } from "node:path";
import { after, before } from "node:test";
import { fileURLToPath } from "node:url";
import { chromium } from "playwright-core";

const root = join(dirname(fileURLToPath(import.meta.url)), "../..");
const program = process.env.TORVEX_PROGRAM ?? join(root, "build/release/torvex");

const axe = readFileSync(createRequire(import.meta.url).resolve("axe-core/axe.min.js"), "utf8");

export const browserOptions = {
  executablePath: process.env.CHROMIUM ?? "/usr/bin/chromium",
  args: ["--no-sandbox", "--disable-gpu", "--disable-quic", "--no-first-run", "--disable-background-networking",
    "--disable-component-update", "--disable-sync"],
};

// Below the ports that the system gives to connections.
export const freePort = () => 20000 + Math.floor(Math.random() * 12000);

// What init gives the demo's visitors is random; here they have these.
const passwords = { flora: "orchid", rowan: "spade", linde: "orchidee", hazel: "acorn" };
const setPasswords = `update TORVEX_USERS set password = case username ${Object.entries(passwords)
  .map(([name, password]) => `when '${name}' then '${password}'`).join(" ")} end`;

// A statement that changes a setting of the whole installation.
export const setting = (name, value) =>
  `update TORVEX_SETUP set value = '${value}' where parameter = '${name}' and loginId = 0`;

// The demo, served for the tests of the suite around the call. `statements` change its database, `prepare` its folder,
// before it is served.
export function servedDemo(statements = [], prepare = () => {}) {
  const site = {};
  before(async () => { Object.assign(site, await startSite(statements, prepare)); });
  after(async () => { await site.stop?.(); });
  return site;
}

// The server of an installation: it can be killed, and served again at the same address.
function serverOf(install) {
  const port = freePort();
  const address = `http://127.0.0.1:${port}`;
  let server;
  return {
    address,
    serve: async () => {
      server = spawn(program, ["serve", "--install", install, "--listen", `127.0.0.1:${port}`], { stdio: "ignore" });
      await untilServed(`${address}/error.asp`, server);
    },
    end: (signal) => new Promise((resolve) => {
      server.once("exit", resolve);
      server.kill(signal);
    }),
    // The server's processor time so far, in milliseconds.
    processor: () => readdirSync(`/proc/${server.pid}/task`)
      .reduce((sum, task) => sum + Number(readFileSync(`/proc/${server.pid}/task/${task}/schedstat`, "utf8").split(" ")[0]), 0) / 1e6,
  };
}

async function startSite(statements, prepare) {
  const folder = mkdtempSync(join(tmpdir(), "torvex-browser-"));
  const install = join(folder, "site");
  execFileSync(program, ["init", install, "--demo"]);
  const sql = (statement) => execFileSync(program, ["sql", "--install", install, statement]);
  for (const statement of [setPasswords, ...statements]) sql(statement);
  prepare(install);
  const site = await siteOf(install);
  return {
    ...site,
    stop: async () => {
      await site.stop();
      rmSync(folder, { recursive: true });
    },
  };
}

// An installation, served, with a browser.
export async function siteOf(install) {
  const { address, serve, end, processor } = serverOf(install);
  await serve();
  const browser = await chromium.launch(browserOptions);
  return {
    address,
    browser,
    serve,
    processor,
    kill: () => end("SIGKILL"),
    open: (page, pageId) => page.goto(`${address}/tvx.asp?pageId=${pageId}`),
    call: (...request) => execFileSync(program, ["call", "--install", install, ...request], { encoding: "utf8", maxBuffer: 1e8 }),
    query: (statement) => execFileSync(program, ["sql", "--json", "--install", install, statement], { encoding: "utf8" })
      .trim().split("\n").filter(Boolean).map((row) => JSON.parse(row)),
    sql: (statement) => execFileSync(program, ["sql", "--install", install], { input: statement }),
    // What visitors get of a page.
    live: async (pageId) => (await fetch(`${address}/tvx.asp?pageId=${pageId}`)).text(),
    async stop() {
      await browser.close();
      await end("SIGTERM");
    },
  };
}

// A server that ends while it is waited for has said why, or has found its port taken.
export async function untilServed(address, server) {
  for (let i = 0; i < 1200 && (server?.exitCode ?? null) === null; ++i) {
    try {
      await fetch(address, { redirect: "manual" });
      return;
    } catch {
      await new Promise((resolve) => setTimeout(resolve, 50));
    }
  }
  throw new Error(`nothing answers at ${address}${server && server.exitCode !== null ? `: the server has ended with ${server.exitCode}` : ""}`);
}

// `place` is a page, or the frame of one.
export async function sendLogin(place, name, password) {
  await place.getByLabel("Name").fill(name);
  await place.getByLabel("Password").fill(password);
  await place.getByRole("button", { name: "Log in" }).click();
}

export async function logIn(page, name, password) {
  await Promise.all([page.waitForNavigation(), sendLogin(page, name, password)]);
}

// What fades from one colour to another has neither yet. What turns for ever isn't waited for.
const settled = (page) => page.evaluate(() => Promise.all(document.getAnimations()
  .filter((animation) => animation.playState === "running" && Number.isFinite(animation.effect?.getComputedTiming().endTime))
  .map((animation) => animation.finished.catch(() => {}))));

// What is wrong with the page as it shows, or with parts of it (a context of axe), for who can't see it, or hear, or use
// a mouse: a line for each finding.
export async function findingsOfAxe(page, parts = "html") {
  await settled(page);
  await page.evaluate(axe);
  const { violations } = await page.evaluate((selector) => window.axe.run(selector, {
    runOnly: ["wcag2a", "wcag2aa", "wcag21a", "wcag21aa", "wcag22aa", "best-practice"],
  }), parts);
  return violations.flatMap(({ id, nodes }) => nodes.map(({ html, failureSummary }) => `${id}: ${html.slice(0, 120)} (${failureSummary})`));
}

// How many pixels the page is wider than its window.
export const sidewaysScroll = (page) => page.evaluate(() => document.documentElement.scrollWidth - window.innerWidth);

// What both have to say of a page, each line with the page's name ahead.
export async function faultsOf(page, name) {
  const tooWide = await sidewaysScroll(page);
  const faults = [...(tooWide > 0 ? [`${tooWide} pixels too wide`] : []), ...await findingsOfAxe(page)];
  return faults.map((fault) => `${name}: ${fault}`);
}
