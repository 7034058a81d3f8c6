// The way in for tests: authors with passwords that are known, and the door.
import { execFileSync } from "node:child_process";
import { dirname, join } from "node:path";
import { fileURLToPath } from "node:url";

const root = join(dirname(fileURLToPath(import.meta.url)), "../../..");
const program = process.env.TORVEX_PROGRAM ?? join(root, "build/release/torvex");

export const passwords = { iris: "blue-flag", basil: "thyme-and-salt", heide: "calluna" };
const loginIds = { iris: 2, basil: 3, heide: 4 };

// What init gives the team is random. For `prepare` of a served demo.
export function givePasswords(install) {
  for (const [name, password] of Object.entries(passwords)) {
    execFileSync(program, ["call", "cManager.saveLogin", "advId=0", `loginId=${loginIds[name]}`, "username=", `password=${password}`,
      "name=", "job=", "--install", install, "--login", "sa"]);
  }
}

// Changes a row behind the server's back.
export const change = (install, statement) => execFileSync(program, ["sql", "--install", install, statement]);

// Somebody else's machine has the login.
export const holdElsewhere = (install, name) =>
  change(install, `update TORVEX_LOGINS set sessionId = 'elsewhere', ipAddress = '10.0.0.7', date = '20260102', time = '09:12' where username = '${name}'`);

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

// By the form of the door, which works without scripts too: a page of the interface may not work yet.
export async function logInAs(page, site, name) {
  await page.goto(`${site.address}/torvex/login?lang=en&to=${encodeURIComponent("/torvex/error.asp?error=in")}`);
  await page.locator("#username").fill(name);
  await page.locator("#password").fill(passwords[name]);
  await Promise.all([page.waitForURL(/error\.asp/), page.locator("button[type=submit]").click()]);
}
