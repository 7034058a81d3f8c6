import assert from "node:assert/strict";
import { execFileSync, spawn } from "node:child_process";
import { mkdtempSync, rmSync } from "node:fs";
import { tmpdir } from "node:os";
import { dirname, join } from "node:path";
import { after, before, describe, test } from "node:test";
import { fileURLToPath } from "node:url";
import { chromium } from "playwright-core";
import { browserOptions, freePort, untilServed } from "../support.mjs";
import { useInterface, watched } from "./door.mjs";

const root = join(dirname(fileURLToPath(import.meta.url)), "../../..");
const program = process.env.TORVEX_PROGRAM ?? join(root, "build/release/torvex");

describe("a site that was just made", () => {
  let folder;
  let server;
  let browser;
  let address;

  before(async () => {
    folder = mkdtempSync(join(tmpdir(), "torvex-first-"));
    const install = join(folder, "site");
    execFileSync(program, ["init", install, "--title", "My site", "--admin-password", "word-of-sa"]);
    useInterface(install);
    const port = freePort();
    address = `http://127.0.0.1:${port}`;
    server = spawn(program, ["serve", "--install", install, "--listen", `127.0.0.1:${port}`], { stdio: "ignore" });
    browser = await chromium.launch(browserOptions);
    await untilServed(`${address}/error.asp`);
  });
  after(async () => {
    await browser?.close();
    const ended = new Promise((resolve) => server.once("exit", resolve));
    server.kill("SIGTERM");
    await ended;
    rmSync(folder, { recursive: true });
  });

  test("leads its author to her first page in three clicks", async () => {
    const { context, violations } = await watched({ browser }, { viewport: { width: 1440, height: 900 } });
    const page = await context.newPage();
    await page.goto(`${address}/`);
    let clicks = 0;
    const click = async (control) => {
      ++clicks;
      await control.click();
    };
    await click(page.getByRole("link", { name: "Write your first page" }));
    // Logging in comes once, and isn't counted.
    await page.locator("#username").fill("sa");
    await page.locator("#password").fill("word-of-sa");
    await page.keyboard.press("Enter");
    await click(page.getByRole("button", { name: /^New page/ }).first());
    const dialog = page.getByRole("dialog", { name: "New page" });
    await dialog.getByLabel("Title", { exact: true }).fill("My first page");
    await click(dialog.getByRole("button", { name: /^Create/ }));
    await page.waitForURL((url) => url.pathname === "/torvex/page.asp" && url.searchParams.get("pageId") !== "1");
    assert.equal(clicks, 3);
    assert.deepEqual(violations, []);
    await context.close();
  });
});
