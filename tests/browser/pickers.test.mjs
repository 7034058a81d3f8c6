// The trees of pages, images and documents, each in a window whose opener plays the editor that they insert into.
import assert from "node:assert/strict";
import { afterEach, beforeEach, describe, test } from "node:test";
import { servedDemo } from "./support.mjs";

const editor = `<!DOCTYPE html><script>
  var site = 'bg', lang = 'en', calls = [];
  function insertLink() { calls.push(['link'].concat(Array.from(arguments))); }
  function insertImage() { calls.push(['image'].concat(Array.from(arguments))); }
  function choose() { window.open('/test/picker.html'); }
</script><button onclick="choose()">Choose</button>`;

const picker = `<!DOCTYPE html><script>
  var localDir = '/torvex/images/', insertDocumentFolders = location.hash !== '#files';
</script>
<iframe name="tree" src="/test/tree.html" width="400" height="600"></iframe>
<iframe id="preview" width="400" height="600"></iframe>`;

const rows = [
  "insert into TORVEX_IMAGES_FOLDERS (fld_site, fld_id, fld_name, fld_level, fld_parent) values"
    + " ('bg', '701', 'Beds & borders', 1, ''), ('bg', '701002', 'New folder', 2, '701')",
  "insert into TORVEX_IMAGES (img_site, img_fldId, img_title, img_filename, img_size, img_width, img_height) values"
    + " ('bg', '701002', 'Rose <1> \"two\" it''s', '701/002/rose.gif', 900, 40, 30)",
  "insert into TORVEX_DOCUMENTS_FOLDERS (fld_site, fld_id, fld_name, fld_level, fld_parent) values"
    + " ('bg', '701', 'Plans', 1, ''), ('bg', '701002', 'Old plans', 2, '701')",
  "insert into TORVEX_DOCUMENTS (doc_site, doc_fldId, doc_title, doc_filename, doc_size, doc_type) values"
    + " ('bg', '701002', 'Site plan', '701/002/plan.txt', 12, 'txt')",
];

describe("the trees to pick from", () => {
  const site = servedDemo(rows);
  let context;
  let page;
  let popup;
  let tree;
  let faults;

  const answer = (tvMode, mode = "L") => site.call("--login", "sa", "cManager.treeView", "site=bg", "lang=en",
    `mode=${mode}`, `tvMode=${tvMode}`);

  async function show(tvMode, mode) {
    const body = answer(tvMode, mode);
    const html = (text) => (route) => route.fulfill({ contentType: "text/html; charset=utf-8", body: text });
    await context.route("**/test/editor.html", html(editor));
    await context.route("**/test/picker.html", html(picker));
    await context.route("**/test/tree.html", html(body));
    await context.route("**/torvex/view.asp*", html("a preview"));
    await page.goto(`${site.address}/test/editor.html`);
    [popup] = await Promise.all([page.waitForEvent("popup"), page.getByText("Choose").click()]);
    popup.on("pageerror", (error) => faults.push(String(error)));
    tree = popup.frameLocator("iframe[name=tree]");
    await tree.locator("#tree > div").waitFor();
  }
  const row = (title) => tree.locator("#tree div[id^=entry]", { has: tree.getByText(title, { exact: true }) });
  const sign = (title) => row(title).locator("img[src*=dots]").last();
  const icon = (title) => row(title).locator("a.icon");
  const isShown = (title) => tree.getByText(title, { exact: true }).isVisible();
  const calls = () => page.evaluate(() => calls);
  const previewed = () => popup.locator("#preview").getAttribute("src");

  beforeEach(async () => {
    faults = [];
    context = await site.browser.newContext();
    context.on("weberror", (error) => faults.push(String(error.error())));
    page = await context.newPage();
  });
  afterEach(async () => {
    await context.close();
    assert.deepEqual(faults, []);
  });

  test("pages: websites open by their titles, pages insert themselves", async () => {
    await show("pages");
    await tree.getByText("Botanic Garden", { exact: true }).click();
    await row("Botanic Garden").locator("..").getByText("English", { exact: true }).click();
    const root = tree.locator("[id^=entry]:has(img[src*=tv_icon_page])").first();
    await root.locator("a.folder").click();
    const [link] = await calls();
    assert.deepEqual(link.toSpliced?.(4, 1) ?? [...link.slice(0, 4), ...link.slice(5)],
      ["link", "page(1)", "bg.en", "P", "_self", "pages"]);
    assert.doesNotMatch(link[4], /\u00a0|&nbsp;|^$/);
  });

  test("pages: another website is linked in a window of its own", async () => {
    await show("pages");
    const other = tree.locator("#tree > div > div > div > a.folder").nth(1);
    await other.click();
    await tree.locator("[id^=entry]:visible a.folder", { hasText: /^English$/ }).last().click();
    await tree.locator("[id^=entry]:visible:has(img[src*=tv_icon_page]) a.folder").first().click();
    const [link] = await calls();
    assert.match(link[2], /^ri\.en/);
    assert.equal(link[5], "_blank");
  });

  test("pages: the preview shows the page in the tree's mode", async () => {
    await show("pages", "D");
    await tree.getByText("Botanic Garden", { exact: true }).click();
    await tree.locator("[id^=entry]:visible a.folder", { hasText: /^English$/ }).first().click();
    await tree.locator("[id^=entry]:visible:has(img[src*=tv_icon_page]) a.icon").first().click();
    assert.equal(await previewed(), "/torvex/view.asp?pageId=1&mode=D");
  });

  test("images: folders open and close, and keep what was open in them", async () => {
    await show("images");
    assert.equal(await isShown("New folder"), false);
    await sign("Beds & borders").click();
    assert.equal(await isShown("New folder"), true);
    await sign("New folder").click();
    const title = "Rose <1> \"two\" it's";
    assert.equal(await isShown(title), true);
    await sign("Beds & borders").click();
    assert.equal(await isShown(title), false);
    assert.equal(await row("Beds & borders").getAttribute("aria-expanded"), "false");
    await sign("Beds & borders").click();
    assert.equal(await isShown(title), true);
  });

  test("images: one is previewed and inserted with its size", async () => {
    await show("pictures");
    await tree.getByText("Beds & borders").click();
    await tree.getByText("New folder").click();
    const title = "Rose <1> \"two\" it's";
    await icon(title).click();
    assert.equal(await previewed(), "/images/bg/701/002/rose.gif");
    await tree.getByText(title).click();
    assert.deepEqual(await calls(), [["image", "/images/bg/701/002/rose.gif", title, 40, 30]]);
  });

  test("documents: one is previewed and inserted by its notation", async () => {
    await show("other");
    await sign("Plans").click();
    await sign("Old plans").click();
    await icon("Site plan").click();
    assert.equal(await previewed(), "/documents/bg/701/002/plan.txt");
    await tree.getByText("Site plan").click();
    assert.deepEqual(await calls(), [["link", "file(bg/701/002/plan.txt)", "", "txt", "Site plan", "_blank", "other"]]);
  });

  test("documents: a folder is inserted by its path", async () => {
    await show("other");
    await sign("Plans").click();
    await tree.getByText("Old plans").click();
    assert.deepEqual(await calls(), [["link", "701/002", "", "folder", "Old plans", "", "other"]]);
  });

  test("documents: where folders can't be inserted their titles open them", async () => {
    await show("other");
    await popup.evaluate(() => { window.insertDocumentFolders = false; });
    await tree.getByText("Plans", { exact: true }).click();
    assert.equal(await isShown("Old plans"), true);
    assert.deepEqual(await calls(), []);
  });

  test("an unknown kind is an empty page", async () => {
    const html = answer("nothing");
    assert.match(html, /initializeDocument/);
    await page.setContent(html);
    assert.equal(await page.locator("#tree > *").count(), 0);
  });
});
