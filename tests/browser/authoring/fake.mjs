// The interface's frame with answers that a test chooses: no server, the built files of ui/dist.
import { existsSync, readFileSync, readdirSync } from "node:fs";
import { dirname, join } from "node:path";
import { after, before } from "node:test";
import { fileURLToPath } from "node:url";
import { isDeepStrictEqual } from "node:util";
import { chromium } from "playwright-core";
import { browserOptions } from "../support.mjs";
import { choose } from "./support.mjs";

const root = join(dirname(fileURLToPath(import.meta.url)), "../../..");
const dist = join(root, "ui/dist");
const origin = "http://127.0.0.1:1";
const types = { js: "text/javascript", css: "text/css", svg: "image/svg+xml" };

const policy = "default-src 'none'; script-src 'self'; style-src 'self' 'nonce-N'; img-src 'self' data: blob:; font-src 'self'; " +
  `connect-src 'self'; frame-src ${origin}/torvex/view.asp; form-action 'self'; base-uri 'none'; frame-ancestors 'none'; ` +
  "require-trusted-types-for 'script'; trusted-types lit-html ProseMirrorClipboard";

export function words(lang) {
  const place = lang === "de" ? 3 : 2;
  const row = /^\s*\((\d+),\s*'((?:[^']|'')*)',\s*'((?:[^']|'')*)'\)/gm;
  const folder = join(root, "install/rows");
  const files = readdirSync(folder).filter((name) => /^(05_vocabulary|08_words_)/.test(name)).map((name) => join(folder, name));
  const rows = files.flatMap((file) => [...readFileSync(file, "utf8").matchAll(row)]);
  return Object.fromEntries(rows.map((match) => [match[1], match[place].replaceAll("''", "'")]));
}

export const grid = (names, rows) => ({ columns: names.map((name) => ({ name, type: "text" })), rows });

// A record of a sitemap's text.
export const record = (pageId, nodeId, title, flags = "0PP000", live = "[*idem*]#0P001") =>
  `${pageId}#${nodeId}#${(nodeId.length - 5) / 3}#${title}#${flags}#0#${live}###`;

// `getSitemap` of a website with one level of pages below its first.
export const treeOf = (...children) => ({ startNode, flag }) => {
  const home = record(1, "bg.en", "Home", "1PP000");
  if (!flag) return home + children.join("");
  return startNode === "" ? home : startNode === "bg.en" ? children.join("") : "";
};

export const refusal = (operation, code, detail, status = 409) => ({ status, problem: { status, operation, code, detail, title: "refused" } });

const website = ["bg", "en", "Botanic Garden", "English", "Botanic Garden"];

const usual = {
  "cManager/getWebsites": () => grid(["site", "lang", "siteName", "langName", "title"], [website]),
  "cManager/getLoginEditRights": () => "11111",
  "cManager/getLoginScope": () => "bg.en",
  "cManager/getSitemap": () => record(1, "bg.en", "Home", "1PP000") + record(2, "bg.en.01", "Visit", "1PM000") + record(3, "bg.en.02", "Plants"),
  "cManager/getAdvancedMap": () => "0###",
  "cManager/set": () => null,
  "desk/pulse": () => grid(["kind"], []),
  "desk/leave": () => "0",
  "desk/getDrafts": () => grid(["pageId"], []),
  "desk/getWork": () => grid(["pageId"], []),
  "desk/getRecent": () => grid(["pageId"], []),
  "desk/getDeadLinks": () => grid(["pageId"], []),
  "desk/find": () => grid(["kind"], []),
};

const shellOf = (lang) => {
  const { file, css = [] } = JSON.parse(readFileSync(join(dist, ".vite/manifest.json"), "utf8"))["src/shell/main.ts"];
  return `<!doctype html><html lang="${lang}"><head><meta charset="utf-8"><meta name="viewport" content="width=device-width, initial-scale=1">` +
    `<meta name="torvex-token" content="first"><title>Torvex</title>${css.map((name) => `<link rel="stylesheet" href="/torvex/ui/${name}">`).join("")}` +
    `<script type="module" src="/torvex/ui/${file}"></script></head><body></body></html>`;
};

async function answerOf(calls, name, args) {
  const answer = calls[name];
  if (!answer) return { status: 404, problem: { status: 404, title: "no such operation", detail: name } };
  const given = await answer(args);
  return given?.problem ? given : { status: 200, result: given };
}

const changed = { type: "/torvex/api/problems/changed", title: "It isn't what was expected", status: 412 };

// A call of a batch by its name, and what it is given.
function asked({ on, do: operation, with: args, get, set, to }) {
  if (set) return [`${on}/set`, { [set]: to }];
  return operation ? [`${on}/${operation}`, args] : [`${on}/get`, get];
}

async function answerBatch(calls, { calls: wanted }) {
  const results = [];
  for (const one of wanted) {
    const { status, problem, result } = await answerOf(calls, ...asked(one));
    if (problem) return { status, body: { ...problem, results, call: results.length } };
    const now = one.get instanceof Array ? Object.fromEntries(one.get.map((property) => [property, result?.[property]])) : result;
    if (one.expect && "is" in one.expect && !isDeepStrictEqual(now, one.expect.is)) return { status: 412, body: { ...changed, now, results, call: results.length } };
    results.push({ result });
  }
  return { status: 200, body: { results } };
}

// A page as its edit view draws it: bodies by their numbers, texts unless their kind is named (2 and 3 are feeds).
export const viewWith = (bodies, kinds = {}) => `<!doctype html><html lang="en"><head><title>A page</title></head><body>${Object.entries(bodies).map(([bodyId, text]) =>
  `<table class="bodyborder"><tbody><tr><th class="bodyheader"><a href="javascript:top.link.setupBody('bg.en.01',${bodyId},${kinds[bodyId] ?? 1},0)">Setup</a></th></tr>` +
  `<tr><td class="bodycontent">${text}</td></tr></tbody></table>`).join("")}</body></html>`;

const json = (route, status, body, headers = {}) =>
  route.fulfill({ status, contentType: "application/json", body: JSON.stringify(body), headers });

const sessionOf = ({ loggedIn, entries }) => ({
  login: loggedIn ? { loginId: 2, username: "iris", name: "Iris Falk", isAdministrator: false } : null,
  rights: { all: false, pages: [{ site: "bg", lang: "en", may: ["onOff", "move", "publish", "approve", "edit"] }], entries },
});

async function serveCall(route, state, calls, name) {
  const request = route.request();
  const args = request.postDataJSON() ?? {};
  state.sent.push({ name, args });
  state.tokens.push(request.headers()["x-torvex-token"]);
  if (name === "cManager/login") {
    if (args.password !== "blue-flag") return json(route, 409, { status: 409, code: 1, detail: "Name or password is wrong, or this login isn't valid today." });
    state.loggedIn = true;
    return json(route, 200, { result: 0 }, { "X-Torvex-Token": "third" });
  }
  if (!state.loggedIn) return json(route, 401, { status: 401, title: "not logged in" });
  if (name === "batch") {
    const { status, body } = await answerBatch(calls, args);
    return json(route, status, body);
  }
  const { status, problem, result } = await answerOf(calls, name, args);
  return json(route, status, problem ?? { result }, problem?.headers);
}

function serve(route, state, calls, { lang, view }) {
  const { pathname, searchParams } = new URL(route.request().url());
  if (pathname.startsWith("/torvex/ui/")) return serveFile(route, pathname.slice("/torvex/ui/".length));
  if (pathname === "/torvex/login") return route.fulfill({ contentType: "text/html", body: '<meta name="torvex-token" content="second">' });
  if (pathname === "/torvex/view.asp" && view) return route.fulfill({ contentType: "text/html", body: view });
  if (!pathname.startsWith("/torvex/api/")) return route.fulfill({ contentType: "text/html", body: shellOf(lang), headers: { "content-security-policy": policy } });
  const name = pathname.slice("/torvex/api/".length);
  if (name === "labels") return json(route, 200, words(searchParams.get("lang")));
  if (name === "session") return json(route, 200, sessionOf(state));
  return serveCall(route, state, calls, name);
}

// Entries of the administration menu that the author may look at and change everywhere.
export const opened = (...entries) => entries.map((entry) => ({ entry, site: "", lang: "", view: true, edit: true }));

// A page with the shell at an address. `api` has answers by "class/operation", `entries` are those of the menu that the
// login may use, `view` is the page in the frame; `sent` collects what was asked.
export async function openShell(browser, { path = "/torvex/", api = {}, lang = "en", entries = [], view = "", ...options } = {}) {
  const context = await browser.newContext({ viewport: { width: 1440, height: 900 }, reducedMotion: "reduce", ...options });
  const page = await context.newPage();
  const state = { sent: [], tokens: [], loggedIn: true, entries, violations: [], errors: [] };
  const calls = { ...usual, ...api };
  page.on("pageerror", (error) => state.errors.push(error.message));
  await page.exposeBinding("tellViolation", (_, text) => state.violations.push(text));
  await page.addInitScript(() => document.addEventListener("securitypolicyviolation", (event) => {
    window.tellViolation(`${event.effectiveDirective} ${event.blockedURI} ${event.sample}`);
  }));
  await page.route(`${origin}/**`, (route) => serve(route, state, calls, { lang, view }));
  await page.goto(origin + path);
  await page.getByRole("banner").waitFor();
  return Object.assign(state, { page, context, calls });
}

// What `get` says of the page "Visit".
export const visit = {
  pgExists: true, pgPageId: 2, pgNodeId: "bg.en.01", pgTitle: "Visit", pgEditor: "Iris Falk", pgEditingDate: "2026-06-15T10:00:00",
  pgLockedBy: "", pgLockingDate: null, pgApprovedBy: "", pgDeletedBy: "", pgOnlineFrom: "", pgOnlineTo: "", pgTemplateId: 1,
  pgOnline: 1, pgPublisher: "Iris Falk", pgPublishingDate: "2026-06-15T10:00:00",
};

// The shell with that page.
export async function openVisit(browser, api) {
  const shell = await openShell(browser, { path: "/torvex/page.asp?pageId=2", api });
  await shell.page.locator("tvx-page-view h1:not(.skeleton)").waitFor();
  return { ...shell, choose: (entry) => choose(shell.page, entry), dialog: shell.page.getByRole("dialog") };
}

function serveFile(route, name) {
  const file = join(dist, name);
  if (!existsSync(file)) return route.fulfill({ status: 404, body: "" });
  return route.fulfill({ contentType: types[name.split(".").at(-1)], body: readFileSync(file) });
}

// A browser for the tests around the call.
export function aBrowser() {
  const holder = {};
  before(async () => {
    holder.browser = await chromium.launch(browserOptions);
  });
  after(() => holder.browser?.close());
  return holder;
}
