import assert from "node:assert/strict";
import { execFileSync } from "node:child_process";
import { readFileSync, writeFileSync } from "node:fs";
import { join } from "node:path";
import { before, describe, test } from "node:test";
import { freePort, logIn, sendLogin, servedDemo, setting } from "./support.mjs";

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
    const port = freePort();
    const secure = `https://127.0.0.1:${port}`;
    const site = servedDemo([setting("torvex_frames", frames)], withCertificate(port));
    let page;
    const content = () => (frames ? page.frameLocator("#page") : page);

    before(async () => {
      page = await (await site.browser.newContext({ ignoreHTTPSErrors: true })).newPage();
    });

    test("is reached from http", async () => {
      await site.open(page, 4);
      assert.ok(page.url().startsWith(secure), page.url());
      await content().locator("h1").waitFor();
    });

    test("is spoken with by HTTP/2, its styles and pictures too", async () => {
      const protocols = await page.evaluate(() =>
        [...performance.getEntriesByType("navigation"), ...performance.getEntriesByType("resource")]
          .map((entry) => entry.nextHopProtocol));
      assert.ok(protocols.length > 1, `${protocols}`);
      assert.deepEqual([...new Set(protocols)], ["h2"]);
    });

    test("stays there from page to page", async () => {
      await content().getByRole("link", { name: "The garden" }).first().click();
      await content().locator("h1", { hasText: "The garden" }).waitFor();
      assert.ok(page.url().startsWith(secure), page.url());
    });

    test("logs in there, with a cookie of this host alone", async () => {
      await page.goto(`${secure}/${frames ? "frameset" : "tvx"}.asp?pageId=41`);
      await sendLogin(content(), "flora", "orchid");
      await content().locator("h1", { hasText: "Friends’ corner" }).waitFor();
      assert.ok(page.url().startsWith(secure), page.url());
      const cookies = await page.context().cookies();
      assert.deepEqual(cookies.map(({ name, secure: isSecure, httpOnly }) => [name, isSecure, httpOnly]),
        [["__Host-torvex_session", true, true]]);
    });
  });
}

describe("an extranet behind https, of a site on http", () => {
  const port = freePort();
  const secure = `https://127.0.0.1:${port}`;
  const site = servedDemo([setting("tvx_extranet_ssl", 1)], withCertificate(port, "https_only = false"));
  let page;

  before(async () => {
    page = await (await site.browser.newContext({ ignoreHTTPSErrors: true })).newPage();
  });

  test("serves open pages over http", async () => {
    await site.open(page, 4);
    assert.ok(page.url().startsWith(site.address));
  });

  test("logs in over https and shows a secured page there", async () => {
    await site.open(page, 41);
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
