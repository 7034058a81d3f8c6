import assert from "node:assert/strict";
import { execFileSync } from "node:child_process";
import { readFileSync, writeFileSync } from "node:fs";
import { join } from "node:path";
import { after, before, describe, test } from "node:test";
import { freePort, logIn, startSite } from "./support.mjs";

// With a certificate; `server` are further lines of [server].
const withCertificate = (port, server = "") => (install) => {
  execFileSync("openssl", ["req", "-x509", "-newkey", "ec", "-pkeyopt", "ec_paramgen_curve:prime256v1", "-nodes",
    "-days", "1", "-subj", "/CN=127.0.0.1", "-keyout", join(install, "key.pem"), "-out", join(install, "cert.pem")],
    { stdio: "ignore" });
  const file = join(install, "torvex.toml");
  const settings = readFileSync(file, "utf8")
    .replace("\n[tls]", `\n[tls]\ncertificate = "cert.pem"\nkey = "key.pem"\nport = ${port}`)
    .replace("\n[server]", `\n[server]\n${server}`);
  writeFileSync(file, settings);
};

for (const frames of [0, 1]) {
  describe(`a site on https${frames ? " in frames mode" : ""}`, () => {
    let site;
    let page;
    let secure;
    const content = () => (frames ? page.frameLocator("#page") : page);

    before(async () => {
      const port = freePort();
      site = await startSite(
        [`update TORVEX_SETUP set value = '${frames}' where parameter = 'torvex_frames' and loginId = 0`],
        withCertificate(port));
      secure = `https://127.0.0.1:${port}`;
      page = await (await site.browser.newContext({ ignoreHTTPSErrors: true })).newPage();
    });
    after(async () => { await site?.stop(); });

    test("is reached from http", async () => {
      await page.goto(`${site.address}/tvx.asp?pageId=4`);
      assert.ok(page.url().startsWith(secure), page.url());
      await content().locator("h1").waitFor();
    });

    test("stays there from page to page", async () => {
      await content().getByRole("link", { name: "The garden" }).first().click();
      await content().locator("h1", { hasText: "The garden" }).waitFor();
      assert.ok(page.url().startsWith(secure), page.url());
    });

    test("logs in there, with a cookie of this host alone", async () => {
      await page.goto(`${secure}/${frames ? "frameset" : "tvx"}.asp?pageId=41`);
      await content().getByLabel("Name").fill("flora");
      await content().getByLabel("Password").fill("orchid");
      await content().getByRole("button", { name: "Log in" }).click();
      await content().locator("h1", { hasText: "Friends’ corner" }).waitFor();
      assert.ok(page.url().startsWith(secure), page.url());
      const cookies = await page.context().cookies();
      assert.deepEqual(cookies.map(({ name, secure: isSecure, httpOnly }) => [name, isSecure, httpOnly]),
        [["__Host-torvex_session", true, true]]);
    });
  });
}

describe("an extranet behind https, of a site on http", () => {
  let site;
  let page;
  let secure;

  before(async () => {
    const port = freePort();
    site = await startSite(
      ["update TORVEX_SETUP set value = '1' where parameter = 'tvx_extranet_ssl' and loginId = 0"],
      withCertificate(port, "https_only = false"));
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
