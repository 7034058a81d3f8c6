// Pictures that are chosen for a text: by their size, once more, or out of the clipboard.
import assert from "node:assert/strict";
import { describe, test } from "node:test";
import { findingsOfAxe } from "../support.mjs";
import { aBrowser, grid, openShell, viewWith } from "./fake.mjs";

const facts = {
  pgExists: true, pgPageId: 2, pgNodeId: "bg.en.01", pgTitle: "Visit", pgEditor: "Iris Falk", pgEditingDate: null, pgLockedBy: "", pgLockingDate: null,
  pgApprovedBy: "", pgDeletedBy: "", pgOnlineFrom: "", pgOnlineTo: "", pgTemplateId: 1, pgOnline: 1, pgPublisher: "", pgPublishingDate: null,
};
const pixel = "iVBORw0KGgoAAAANSUhEUgAAAAEAAAABCAYAAAAfFcSJAAAADUlEQVR42mNk+M9QDwADhgGAWjR9awAAAABJRU5ErkJggg==";
const names = ["folder", "path", "title", "type", "size", "width", "height", "alt"];
const picture = (name, width, height) => ["001", `001/${name}.png`, `The ${name}`, "image/png", 100, width, height, `Words of the ${name}`];
const pictures = [picture("gate", 600, 400), picture("pond", 600, 400), picture("rose", 80, 80)];

const api = {
  "cManager/getNodeId": () => "bg.en.01",
  "cManager/getPageId": () => 2,
  "cManager/getPage": () => true,
  "cManager/get": () => facts,
  "cManager/getPageParameters": () => "PM0000",
  "cManager/isPage": () => true,
  "cManager/getBody": () => "<p>Welcome</p>",
  "cManager/checkOut": () => "0",
  "desk/getSettings": () => grid(["name"], []),
  "registers/getFolders": () => grid(["folder", "name", "parent", "level", "files"], [["001", "Summer", "", 1, 3]]),
  "registers/getMedia": ({ words }) => grid(names, pictures.filter(([, path, title]) => `${path} ${title}`.includes(words ?? ""))),
  "desk/saveDraft": () => "0",
};

async function openPicker(page) {
  await page.getByRole("button", { name: "Body 1", exact: true }).click();
  await page.getByRole("menuitem", { name: "Edit", exact: true }).click();
  await page.getByRole("toolbar", { name: "Tools for text" }).waitFor();
  return again(page);
}

async function again(page) {
  await page.getByRole("button", { name: "Picture", exact: true }).click();
  const dialog = page.getByRole("dialog", { name: "Picture", exact: true });
  await dialog.getByRole("listbox").and(page.locator("[aria-busy=false]")).waitFor();
  return dialog;
}

const shown = (dialog) => dialog.getByRole("option").locator("img").evaluateAll((images) => images.map((image) => image.getAttribute("src").split("/").at(-1)));
const open = (browser, more = {}) =>
  openShell(browser, { path: "/torvex/page.asp?pageId=2", view: viewWith({ 1: "<p>Welcome</p>" }), api: { ...api, ...more } });

describe("a picture for a text", () => {
  const chromium = aBrowser();

  test("is found by its size", async () => {
    const { page, errors, context } = await open(chromium.browser);
    const dialog = await openPicker(page);
    const size = dialog.getByRole("combobox", { name: "By size" });
    assert.deepEqual(await size.locator("option").allTextContents(), ["Any size", "600 × 400", "80 × 80"]);
    await size.selectOption("80 × 80");
    await dialog.getByRole("option", { name: /gate/ }).waitFor({ state: "detached" });
    assert.deepEqual(await shown(dialog), ["rose.png"]);
    assert.deepEqual(await findingsOfAxe(page), []);
    await dialog.getByRole("button", { name: "Insert" }).click();
    await page.frameLocator("iframe").locator('img[alt="Words of the rose"]').waitFor();
    assert.deepEqual(errors, []);
    await context.close();
  });

  test("is found by a size that only the last of many has", async () => {
    const many = [...Array.from({ length: 500 }, (_, i) => picture(`bud${i}`, 600, 400)), picture("seed", 31, 17)];
    const { page, context } = await open(chromium.browser, { "registers/getMedia": ({ from }) => grid(names, many.slice(from, from + 500)) });
    const dialog = await openPicker(page);
    const size = dialog.getByRole("combobox", { name: "By size" });
    await size.locator("option", { hasText: "31 × 17" }).waitFor({ state: "attached" });
    assert.equal(await dialog.getByRole("option", { name: /seed/ }).count(), 0);
    await size.selectOption("31 × 17");
    await dialog.getByRole("option", { name: /bud/ }).first().waitFor({ state: "detached" });
    assert.deepEqual(await shown(dialog), ["seed.png"]);
    await context.close();
  });

  test("that was used lately is offered first of all, as the library has it now", async () => {
    const { page, context } = await open(chromium.browser);
    let dialog = await openPicker(page);
    assert.equal(await dialog.getByText("Recently used").count(), 0);
    await dialog.getByRole("option", { name: /pond/ }).click();
    await dialog.getByRole("button", { name: "Insert" }).click();
    await dialog.waitFor({ state: "detached" });
    dialog = await again(page);
    await dialog.getByRole("combobox", { name: "Folder" }).selectOption({ label: "Recently used" });
    await dialog.getByRole("option", { name: /gate/ }).waitFor({ state: "detached" });
    assert.deepEqual(await shown(dialog), ["pond.png"]);
    await context.close();
  });

  test("is pasted out of the clipboard and stands first, chosen", async () => {
    const { page, context } = await open(chromium.browser);
    const sent = [];
    await page.route("**/torvex/api/uploads**", async (route) => {
      const request = route.request();
      sent.push([request.method(), request.headers()["upload-metadata"] ?? ""]);
      if (request.method() === "POST") return route.fulfill({ status: 201, headers: { location: "/torvex/api/uploads/1", "tus-resumable": "1.0.0" } });
      const stored = { path: "001/clip.png", title: "clip", width: 1, height: 1, alt: null };
      return route.fulfill({ status: 200, contentType: "application/json", headers: { "upload-offset": String(request.postDataBuffer().length), "tus-resumable": "1.0.0" }, body: JSON.stringify({ result: stored }) });
    });
    const dialog = await openPicker(page);
    await page.evaluate((text) => {
      const bytes = Uint8Array.from(atob(text), (letter) => letter.charCodeAt(0));
      const clipboardData = new DataTransfer();
      clipboardData.items.add(new File([bytes], "clip.png", { type: "image/png" }));
      document.activeElement.dispatchEvent(new ClipboardEvent("paste", { clipboardData, bubbles: true, cancelable: true }));
    }, pixel);
    const first = dialog.getByRole("option", { name: /clip/ });
    await first.waitFor();
    assert.equal(await first.getAttribute("aria-selected"), "true");
    assert.equal((await shown(dialog))[0], "clip.png");
    const metadata = Object.fromEntries(sent[0][1].split(",").map((pair) => pair.split(" ")));
    assert.equal(Buffer.from(metadata.folder, "base64").toString(), "001");
    await context.close();
  });
});
