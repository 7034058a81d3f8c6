import assert from "node:assert/strict";
import { execFileSync } from "node:child_process";
import { readFileSync, writeFileSync } from "node:fs";
import { join } from "node:path";
import { after, before, describe, test } from "node:test";
import { freePort, logIn, startSite } from "./support.mjs";

describe("an extranet behind https", () => {
  let site;
  let page;
  let secure;

  before(async () => {
    const port = freePort();
    site = await startSite(
      ["update TORVEX_SETUP set value = '1' where parameter = 'tvx_extranet_ssl' and loginId = 0"],
      (install) => {
        execFileSync("openssl", ["req", "-x509", "-newkey", "ec", "-pkeyopt", "ec_paramgen_curve:prime256v1", "-nodes",
          "-days", "1", "-subj", "/CN=127.0.0.1", "-keyout", join(install, "key.pem"), "-out", join(install, "cert.pem")],
          { stdio: "ignore" });
        const file = join(install, "torvex.toml");
        const settings = readFileSync(file, "utf8").replace("[tls]",
          `[tls]\ncertificate = "cert.pem"\nkey = "key.pem"\nport = ${port}`);
        writeFileSync(file, settings);
      });
    secure = `https://127.0.0.1:${port}`;
    const context = await site.browser.newContext({ ignoreHTTPSErrors: true });
    page = await context.newPage();
  });
  after(async () => { await site?.stop(); });

  test("serves open pages over http", async () => {
    await page.goto(`${site.address}/tvx.asp?pageId=4`);
    assert.ok(page.url().startsWith(site.address));
  });

  test("logs in over https and shows a secured page there", async () => {
    await page.goto(`${site.address}/tvx.asp?pageId=41`);
    assert.equal(await page.locator("form.login").getAttribute("action"), `${secure}/tvxLogin.asp`);
    await logIn(page, "flora", "orchid");
    assert.equal(await page.locator("h1").innerText(), "Friends’ corner");
    assert.ok(page.url().startsWith(secure), page.url());
  });

  test("sends guarded documents over https alone", async () => {
    const open = await page.request.get(`${secure}/documents/bg/001/friends-letter.txt`);
    assert.match(await open.text(), /plant swap/);
  });

  test("leads back to http for open pages", async () => {
    await page.goto(`${secure}/tvx.asp?pageId=4`);
    assert.ok(page.url().startsWith(site.address), page.url());
  });
});
