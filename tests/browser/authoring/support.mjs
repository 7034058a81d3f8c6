// Authors at work in the served demo.
import { findingsOfAxe } from "../support.mjs";
import { passDoor } from "./door.mjs";

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
  await passDoor(page, site, name, path, lang);
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

// What axe finds in the interface: the page in the frame is its author's.
export const findings = (page) => findingsOfAxe(page, { exclude: [["iframe"]] });
