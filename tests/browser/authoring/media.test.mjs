// The media library: folders, many files at once, names in one table, what uses a file.
import assert from "node:assert/strict";
import { describe, test } from "node:test";
import { deflateSync } from "node:zlib";
import { servedAuthors } from "./door.mjs";
import { until } from "./support.mjs";
import { assertAccessible, workAs } from "./workplace.mjs";

const crcTable = Array.from({ length: 256 }, (_, n) => {
  let c = n;
  for (let k = 0; k < 8; ++k) c = c & 1 ? 0xedb88320 ^ (c >>> 1) : c >>> 1;
  return c >>> 0;
});

function chunk(type, data) {
  const body = Buffer.concat([Buffer.from(type), data]);
  let crc = 0xffffffff;
  for (const byte of body) crc = crcTable[(crc ^ byte) & 255] ^ (crc >>> 8);
  const head = Buffer.alloc(4);
  head.writeUInt32BE(data.length);
  const foot = Buffer.alloc(4);
  foot.writeUInt32BE((crc ^ 0xffffffff) >>> 0);
  return Buffer.concat([head, body, foot]);
}

// A picture of one colour.
function png(size, shade) {
  const header = Buffer.alloc(13);
  header.writeUInt32BE(size, 0);
  header.writeUInt32BE(size, 4);
  header.set([8, 0, 0, 0, 0], 8);
  const rows = Buffer.alloc((size + 1) * size, shade);
  for (let y = 0; y < size; ++y) rows[y * (size + 1)] = 0;
  return Buffer.concat([Buffer.from([137, 80, 78, 71, 13, 10, 26, 10]), chunk("IHDR", header), chunk("IDAT", deflateSync(rows)), chunk("IEND", Buffer.alloc(0))]);
}

const photo = (name, shade = 90) => ({ name, mimeType: "image/png", buffer: png(48, shade) });

describe("the media library", () => {
  const site = servedAuthors();
  const images = () => site.query("select img_title, img_filename from TORVEX_IMAGES where img_site = 'bg' order by img_filename").map((row) => Object.values(row));

  test("a folder is made, twelve photos arrive in it, and are named in one table by keyboard", async () => {
    const work = await workAs(site, "iris");
    const { page } = work;
    await work.go("/torvex/images.asp");
    await page.getByRole("button", { name: "New folder" }).click();
    await work.dialog.getByLabel("Name of the folder").fill("Autumn walk");
    await page.keyboard.press("Enter");
    await page.getByRole("link", { name: /Autumn walk/ }).first().click();
    await page.getByRole("heading", { name: "Autumn walk" }).waitFor();
    await page.locator("tvx-media input[type=file]").setInputFiles(Array.from({ length: 12 }, (_, n) => photo(`walk_${n + 1}.png`, n * 20)));
    await page.getByText("12 of 12 are there").waitFor();
    await assertAccessible(page, "uploads");
    await page.getByRole("button", { name: "Name 12 files" }).click();
    await page.keyboard.press("Control+a");
    await page.keyboard.type("Under the beeches");
    await page.keyboard.press("Tab");
    await page.keyboard.type("Walkers below tall beeches");
    await page.keyboard.press("Enter");
    await page.keyboard.type("A robin on a spade");
    await assertAccessible(page, "titles and texts");
    await page.keyboard.press("Control+Enter");
    await work.says("2 files are named.");
    assert.equal(images().filter(([, path]) => /walk_\d+\.png$/.test(path)).length, 12);
    assert.ok(images().some(([title]) => title === "Under the beeches"));
    assert.deepEqual(work.faults, []);
    await work.close();
  });

  test("a name that is taken is asked about: both stay, or the new one takes the place", async () => {
    const work = await workAs(site, "iris");
    const { page } = work;
    const folder = site.query("select fld_id from TORVEX_IMAGES_FOLDERS where fld_name = 'Autumn walk'").map((row) => Object.values(row)[0])[0];
    await work.go(`/torvex/images.asp?folder=${folder}`);
    await page.getByRole("heading", { name: "Autumn walk" }).waitFor();
    await page.locator("tvx-media input[type=file]").setInputFiles([photo("walk_1.png", 5), photo("walk_2.png", 6)]);
    await page.getByText("A file here has this name.").nth(1).waitFor();
    await assertAccessible(page, "names that are taken");
    await page.getByRole("button", { name: "Keep both: walk_1.png" }).click();
    await page.getByRole("button", { name: "Replace: walk_2.png" }).click();
    await page.getByText("2 of 2 are there").waitFor();
    const names = images().map(([, path]) => path.split("/").at(-1)).filter((name) => /^walk_[12]\b|^walk_1-2/.test(name));
    assert.deepEqual(names.sort(), ["walk_1-2.png", "walk_1.png", "walk_2.png"]);
    await work.close();
  });

  test("a file gets another content under its name, and keeps its title", async () => {
    const work = await workAs(site, "iris");
    const { page } = work;
    const [{ img_size: before, img_title: title, img_fldId: folder }] = site.query("select img_size, img_title, img_fldId from TORVEX_IMAGES where img_filename like '%walk_1.png'");
    await work.go(`/torvex/images.asp?folder=${folder}`);
    await page.locator(".media-tile", { hasText: title }).first().click();
    await work.dialog.getByLabel("Replace...").setInputFiles({ name: "other.png", mimeType: "image/png", buffer: png(96, 200) });
    await work.dialog.waitFor({ state: "detached" });
    await page.getByText("1 of 1 is there").waitFor();
    const [after] = site.query("select img_size, img_title from TORVEX_IMAGES where img_filename like '%walk_1.png'");
    assert.notEqual(after.img_size, before);
    assert.equal(after.img_title, title);
    await work.close();
  });

  test("files go into another folder, and pages that show them follow", async () => {
    const work = await workAs(site, "iris");
    const { page } = work;
    const [{ img_filename: from, img_title: title }] = site.query("select img_filename, img_title from TORVEX_IMAGES where img_filename like '%walk_2.png'");
    const [{ fld_id: to }] = site.query("select fld_id from TORVEX_IMAGES_FOLDERS where fld_site = 'bg' and fld_name = 'Press'");
    site.call("cManager.saveBody", "pageIdent=12", "bodyId=3", `bodyContent=<p><img src="/images/bg/${from}" alt=""></p>`, "--login", "basil");
    await work.go(`/torvex/images.asp?folder=${from.split("/").slice(0, -1).join("")}`);
    await page.locator(".media-tile", { hasText: title }).first().click({ modifiers: ["Control"] });
    await page.getByRole("button", { name: "Move to..." }).click();
    await work.dialog.getByRole("treeitem", { name: /Autumn walk/ }).getByText("here already").waitFor();
    await assertAccessible(page, "moving a file");
    await work.dialog.getByRole("treeitem", { name: /Press/ }).click();
    await work.dialog.getByRole("button", { name: "Move here" }).click();
    await work.says("1 file is moved.");
    const path = `${to.match(/.../g).join("/")}/walk_2.png`;
    assert.equal(site.query("select img_title from TORVEX_IMAGES where img_filename = '" + path + "'").length, 1);
    assert.match(site.query("select bodyText from TORVEX_BODIES_DESIGN where pageId = 12 and bodyId = 3")[0].bodyText, new RegExp(`src="/images/bg/${path}"`));
    assert.equal((await fetch(`${site.address}/images/bg/${path}`)).status, 200);
    assert.deepEqual(work.faults, []);
    await work.close();
  });

  test("the line breaks in the middle: the upload says so, and goes on where it stopped", async () => {
    const work = await workAs(site, "iris");
    const { page } = work;
    await work.go("/torvex/images.asp?folder=001");
    await page.locator("tvx-media h1").waitFor();
    let broken = true;
    let tries = 0;
    await page.route("**/torvex/api/uploads/**", (route) => {
      if (!broken || route.request().method() !== "PATCH") return route.fallback();
      ++tries;
      return route.abort();
    });
    await page.locator("tvx-media input[type=file]").setInputFiles([photo("pond.png")]);
    await page.locator(".upload.running").waitFor();
    await until(() => tries > 1);
    broken = false;
    await page.getByText("1 of 1 is there").waitFor({ timeout: 20000 });
    await work.close();
  });

  test("what is no picture is refused with a reason", async () => {
    const work = await workAs(site, "iris");
    const { page } = work;
    await work.go("/torvex/images.asp?folder=001");
    await page.locator("tvx-media h1").waitFor();
    await page.locator("tvx-media input[type=file]").setInputFiles([{ name: "archive.png", mimeType: "image/png", buffer: Buffer.from("PK\u0003\u0004 not a picture") }]);
    await page.locator(".upload.refused").waitFor();
    assert.notEqual((await page.locator(".upload.refused .upload-middle").innerText()).trim(), "");
    await work.close();
  });

  test("who uses a picture is told before it goes", async () => {
    const work = await workAs(site, "iris");
    const { page } = work;
    await work.go("/torvex/images.asp");
    await page.getByRole("option", { name: /Palm House/ }).click();
    await work.dialog.getByRole("list", { name: "Used by" }).waitFor();
    await assertAccessible(page, "a picture");
    await work.dialog.getByRole("button", { name: "Delete" }).click();
    await work.dialog.getByText(/pages? uses? it and will show/).waitFor();
    await work.dialog.getByRole("button", { name: "Cancel" }).click();
    await work.close();
  });

  for (const [width, dark] of [[1280, true], [360, false]])
    test(`folders, grid and list fit ${width} pixels and have nothing that axe finds`, async () => {
      const work = await workAs(site, "iris", { width, dark });
      for (const path of ["/torvex/images.asp", "/torvex/documents.asp", "/torvex/images.asp?folder=001"]) {
        await work.go(path);
        await work.page.locator(".media-grid:not([aria-busy]), .empty, .folder-tiles").first().waitFor();
        await assertAccessible(work.page, path);
      }
      await work.page.getByRole("button", { name: "List" }).click();
      await assertAccessible(work.page, "a list of files");
      assert.deepEqual(work.faults, []);
      await work.close();
    });
});
