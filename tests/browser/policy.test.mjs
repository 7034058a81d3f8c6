import assert from "node:assert/strict";
import { before, describe, test } from "node:test";
import { servedDemo, setting } from "./support.mjs";

// What the policies of a context's pages forbade or would have forbidden.
async function watched(site) {
  const context = await site.browser.newContext();
  const violations = [];
  await context.exposeBinding("tellViolation", (source, text) => violations.push(`${source.page.url()}: ${text}`));
  await context.addInitScript(() => {
    document.addEventListener("securitypolicyviolation", (event) => {
      window.tellViolation(`${event.effectiveDirective} ${event.blockedURI} ${event.sample}`);
    });
  });
  return { context, violations };
}

// The mode of the policies and the one of the site.
const modes = [["report-only", 0], ["on", 0], ["report-only", 1], ["on", 1]];

for (const [mode, frames] of modes) {
  describe(`pages under a policy that is ${mode}${frames ? ", in frames mode" : ""}`, () => {
    const site = servedDemo([setting("tvx_contentPolicy", mode), setting("torvex_frames", frames)]);
    let context;
    let violations;
    let page;
    const content = () => (frames ? page.frameLocator("#page") : page);
    const open = (pageId) => page.goto(`${site.address}/${frames ? "frameset" : "tvx"}.asp?pageId=${pageId}`);

    before(async () => {
      ({ context, violations } = await watched(site));
      page = await context.newPage();
    });

    test("say so", async () => {
      const { headers } = await fetch(`${site.address}/tvx.asp?pageId=1`);
      const name = mode === "on" ? "content-security-policy" : "content-security-policy-report-only";
      assert.match(headers.get(name), /script-src 'self'/);
    });

    test("break none of its rules", async () => {
      const rows = site.query("select pageId from TORVEX_PAGES_LIVE where type <> 'F' order by pageId");
      assert.ok(rows.length > 20);
      for (const row of rows) {
        await open(row.pageId ?? row.pageid);
        for (const link of (await content().locator("a[onmouseover]").all()).slice(0, 3)) await link.dispatchEvent("mouseover");
      }
      assert.deepEqual(violations, []);
    });

    test("open documents in windows of their own", async () => {
      await open(7);
      const link = content().locator("a[href^='javascript:top.popup']").first();
      const asked = (request) => new URL(request.url()).pathname.startsWith("/documents/");
      await Promise.all([context.waitForEvent("page"), context.waitForEvent("request", asked), link.click()]);
      assert.deepEqual(violations, []);
    });

    if (frames) test("let links call the frame set", async () => {
      await open(8);
      for (const link of ["a.breadcrumb", "a[rel=next]", ".foot a[href^='javascript:top.page']"]) {
        const present = await content().locator("h1").innerText();
        await content().locator(link).last().click();
        await content().locator("h1", { hasNotText: present }).waitFor();
      }
      assert.deepEqual(violations, []);
    });

    test(mode === "on" ? "run no script that was put into them" : "run whatever is in them, and tell of it", async () => {
      await site.open(page, 4);
      await page.evaluate(() => {
        const script = document.createElement("script");
        script.textContent = "window.wasRun = true";
        document.body.append(script);
      });
      assert.equal(await page.evaluate(() => window.wasRun ?? false), mode !== "on");
      await page.waitForFunction(() => true);
      assert.match(violations.join("\n"), /script-src-elem inline/);
    });
  });
}

describe("a site's own policy", () => {
  const site = servedDemo([
    "insert into TORVEX_SETUP (parameter, value, dataType, loginId) values ('tvx_contentPolicy_ri', 'on', 'C', 0)",
    setting("tvx_contentPolicy", "off"),
  ]);
  const policy = async (pageId, name) => (await fetch(`${site.address}/tvx.asp?pageId=${pageId}`)).headers.get(name);

  test("goes before the one of all", async () => {
    assert.match(await policy(201, "content-security-policy"), /script-src 'self'/);
    assert.equal(await policy(1, "content-security-policy"), null);
    assert.equal(await policy(1, "content-security-policy-report-only"), null);
  });
});
