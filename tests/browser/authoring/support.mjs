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

// Chooses an entry of the menu of the page that is shown.
export async function choose(page, entry) {
  await page.getByRole("button", { name: "More for this page" }).click();
  await page.getByRole("menuitem").filter({ has: page.getByText(entry, { exact: true }) }).click();
}

// The browser tells the editor of a moved cursor a moment later: waits until the editor has the keyboard and is where
// the cursor is.
export const followed = (page) => page.waitForFunction(() => {
  const { view } = document.querySelector("tvx-page-frame").editing?.editor ?? {};
  return view?.hasFocus() && view.dom.ownerDocument.hasFocus() && view.domObserver.currentSelection.eq(view.domSelectionRange());
});

const isAtEnd = (page) => page.evaluate(() => {
  const { $head } = document.querySelector("tvx-page-frame").editing.state.selection;
  const lasts = Array.from({ length: $head.depth }, (_, depth) => $head.index(depth) === $head.node(depth).childCount - 1);
  return lasts.every(Boolean) && $head.parentOffset === $head.parent.content.size;
});

// Keys that move the cursor of the editor.
export async function move(page, ...keys) {
  for (const key of keys) {
    await page.keyboard.press(key);
    await followed(page);
  }
}

// To the end of the body, where a rule or a picture may stand last.
export async function toEnd(page) {
  await followed(page);
  for (let tries = 0; tries < 5; ++tries) {
    await move(page, "Control+End");
    if (await isAtEnd(page)) return;
  }
}

// Chooses a word of the body that is being edited.
export async function chooseWord(page, word) {
  await edited(page).locator(".ProseMirror").getByText(word).dblclick();
  await page.waitForFunction((wanted) => {
    const { doc, selection } = document.querySelector("tvx-page-frame").editing.state;
    return doc.textBetween(selection.from, selection.to).trim() === wanted;
  }, word);
  await followed(page);
}

// Clicks into words of the edited page and goes to the end of their body.
export async function clickInto(page, words) {
  await edited(page).getByText(words).first().click();
  await edited(page).locator("[contenteditable=true]").first().waitFor();
  await followed(page);
  await toEnd(page);
}

// Of one pixel, so that its way over the line counts for nothing.
const pixel = "iVBORw0KGgoAAAANSUhEUgAAAAEAAAABCAYAAAAfFcSJAAAADUlEQVR42mNk+M9QDwADhgGAWjR9awAAAABJRU5ErkJggg==";

// The frame with the edited page.
export const viewOf = (page) => page.frames().find((one) => one.url().includes("/torvex/view.asp"));

// Drops a picture into the body that is being edited.
export const dropPicture = (page, name) => viewOf(page).evaluate(({ pixel, name }) => {
  const bytes = Uint8Array.from(atob(pixel), (letter) => letter.charCodeAt(0));
  const data = new DataTransfer();
  data.items.add(new File([bytes], name, { type: "image/png" }));
  const place = document.querySelector(".ProseMirror p") ?? document.querySelector(".ProseMirror");
  const { left, top } = place.getBoundingClientRect();
  place.dispatchEvent(new DragEvent("drop", { dataTransfer: data, bubbles: true, cancelable: true, clientX: left + 4, clientY: top + 8 }));
}, { pixel, name });

// What was typed is kept in this browser: it outlives the tab.
export const keptHere = (page, text) => page.waitForFunction(async (wanted) => {
  // Opening a database that isn't there would make an empty one.
  if (!(await indexedDB.databases()).some(({ name }) => name === "torvex")) return false;
  const done = (request) => new Promise((resolve, reject) => Object.assign(request, { onsuccess: () => resolve(request.result), onerror: () => reject(request.error) }));
  const database = await done(indexedDB.open("torvex"));
  const drafts = await done(database.transaction("drafts").objectStore("drafts").getAll());
  database.close();
  return drafts.some(({ html }) => html.includes(wanted));
}, text);

// Asks until there is an answer.
export async function until(ask, seconds = 15) {
  for (const end = Date.now() + seconds * 1000; Date.now() < end; ) {
    const answer = await ask();
    if (answer) return answer;
    await new Promise((resolve) => setTimeout(resolve, 50));
  }
  throw new Error(`waited in vain: ${ask}`);
}

// Waits until the database has a row for the statement.
export const untilRow = (site, statement) => until(() => site.query(statement)[0]);

// What axe finds in the interface: the page in the frame is its author's.
export const findings = (page) => findingsOfAxe(page, { exclude: [["iframe"]] });
