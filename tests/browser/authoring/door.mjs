// The way in for tests: a demo with authors whose passwords are known, and the door.
import { execFileSync } from "node:child_process";
import { readdirSync, readFileSync, writeFileSync } from "node:fs";
import { dirname, join } from "node:path";
import { fileURLToPath } from "node:url";
import { servedDemo } from "../support.mjs";

const root = join(dirname(fileURLToPath(import.meta.url)), "../../..");
const program = process.env.TORVEX_PROGRAM ?? join(root, "build/release/torvex");

export const passwords = { sa: "white-rose", iris: "blue-flag", basil: "thyme-and-salt", heide: "calluna", reed: "phragmites", clover: "four-leaves" };
const loginIds = { sa: 1, iris: 2, basil: 3, heide: 4, reed: 5, clover: 6 };

// What init gives the team is random.
export function givePasswords(install) {
  for (const [name, password] of Object.entries(passwords)) {
    execFileSync(program, ["call", "cManager.saveLogin", "advId=0", `loginId=${loginIds[name]}`, "username=", `password=${password}`,
      "name=", "job=", "--install", install, "--login", "sa"]);
  }
}

// TORVEX_INTERFACE is the folder of a built interface that is to be served in place of the program's own, with the words
// of this checkout.
export function useInterface(install) {
  const folder = process.env.TORVEX_INTERFACE;
  if (!folder) return;
  const rows = join(root, "install/rows");
  const words = readdirSync(rows).filter((each) => each.startsWith("08_words_")).map((each) => readFileSync(join(rows, each), "utf8"));
  const labels = words.join("\n").match(/(?<=^ {2}\()\d+(?=,)/gm);
  const renewed = [`delete from TORVEX_INTERFACE_VOCAB where lang_label in (${labels})`, ...words];
  for (const input of renewed) execFileSync(program, ["sql", "--install", install], { input });
  const file = join(install, "torvex.toml");
  writeFileSync(file, readFileSync(file, "utf8").replace(/^\[authoring\]$/m, `[authoring]\ninterface = ${JSON.stringify(folder)}`));
}

// The served demo for the tests of the suite around the call, where authors can log in.
export const servedAuthors = (statements = [], prepare = () => {}) =>
  servedDemo(statements, (install) => {
    givePasswords(install);
    useInterface(install);
    prepare(install);
  });

// Somebody else's machine has the login.
export const holdElsewhere = (install, name) =>
  execFileSync(program, ["sql", "--install", install, `update TORVEX_LOGINS set sessionId = 'elsewhere', ipAddress = '10.0.0.7', date = '20260102', time = '09:12' where username = '${name}'`]);

// A context, and whatever the policies of its documents forbade or would have forbidden: a test fails with any. What a
// page of the site may not run while it is edited is none of these.
export async function watched(site, options = {}) {
  const context = await site.browser.newContext({ locale: "en-GB", ...options });
  const violations = [];
  await context.exposeBinding("tellViolation", (source, text) => {
    if (!new URL(source.frame.url()).pathname.endsWith("/view.asp")) violations.push(`${source.frame.url()}: ${text}`);
  });
  await context.addInitScript(() => {
    document.addEventListener("securitypolicyviolation", (event) => {
      window.tellViolation(`${event.disposition} ${event.effectiveDirective} ${event.blockedURI} ${event.sourceFile ?? ""} ${event.sample}`);
    });
  });
  return { context, violations };
}

// By the form of the door to an address of the interface.
export async function passDoor(page, site, name, to, lang = "en") {
  await page.goto(`${site.address}/torvex/login?lang=${lang}&to=${encodeURIComponent(to)}`);
  await page.locator("#username").fill(name);
  await page.locator("#password").fill(passwords[name]);
  await page.locator("button[type=submit]").click();
}

// To a document without scripts: a page of the interface may not work yet.
export async function logInAs(page, site, name) {
  await passDoor(page, site, name, "/torvex/error.asp?error=in");
  await page.waitForURL(/error\.asp/);
}
