// Authors who are logged in, for tests of the interface's screens.
import assert from "node:assert/strict";
import { faultsOf } from "../support.mjs";
import { logInAs } from "./door.mjs";
import { choose } from "./support.mjs";

// What a page's own document reports is the page's affair: a body may hold scripts, and the edit view runs none.
const ofTheShell = (text) => /Content Security Policy/.test(text) && !/script-src 'none'|script-src-elem/.test(text);

// A page of the interface, at work: `faults` gathers what its scripts and its policy complain of.
export async function workAs(site, name, { width = 1280, height = 800, dark = false } = {}) {
  const context = await site.browser.newContext({ viewport: { width, height }, colorScheme: dark ? "dark" : "light", locale: "en" });
  const page = await context.newPage();
  page.setDefaultTimeout(20_000);
  const faults = [];
  page.on("pageerror", (error) => faults.push(String(error)));
  page.on("console", (message) => {
    if (message.type() === "error" && ofTheShell(message.text())) faults.push(message.text());
  });
  await logInAs(page, site, name);
  return {
    page,
    faults,
    go: (path) => page.goto(`${site.address}${path}`),
    openPage: async (pageId) => {
      await page.goto(`${site.address}/torvex/page.asp?pageId=${pageId}`);
      await page.locator("tvx-page-view h1:not(.skeleton)").waitFor();
    },
    choose: (entry) => choose(page, entry),
    dialog: page.getByRole("dialog"),
    heading: page.locator("tvx-page-view .page-head"),
    // Until nothing is being fetched.
    rest: () => page.waitForFunction(() => !document.querySelector("[aria-busy=true], .skeleton")),
    says: (text) => page.getByRole("log").getByText(text).first().waitFor(),
    close: () => context.close(),
  };
}

// axe over the interface alone: the page in the frame is its author's. Nothing may be wider than the window.
export async function assertAccessible(page, name) {
  assert.deepEqual(await faultsOf(page, name), []);
}
