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

// By the form of the door, which works without scripts too: a page of the interface may not work yet.
export async function logInAs(page, site, name) {
  await page.goto(`${site.address}/torvex/login?lang=en&to=${encodeURIComponent("/torvex/error.asp?error=in")}`);
  await page.locator("#username").fill(name);
  await page.locator("#password").fill(passwords[name]);
  await Promise.all([page.waitForURL(/error\.asp/), page.locator("button[type=submit]").click()]);
}
