import assert from "node:assert/strict";
import { writeFileSync } from "node:fs";
import { join } from "node:path";
import { after, before, describe, test } from "node:test";
import { logInAs, servedAuthors } from "./door.mjs";

// A page that anybody with edit rights could write: it tries to reach whoever looks at it.
const attack = `<p id="text">Attack</p>
<script>
  document.title = "ran";
  try { document.getElementById("text").textContent = parent.document.title; } catch (e) { document.getElementById("text").textContent = "kept out"; }
</script>
<img src="/none.gif" alt="" onerror="document.body.dataset.ran = 'yes'">
<iframe src="/tvx.asp?pageId=1"></iframe>
<a id="inner" href="page(7)">a page</a> <a id="outer" href="https://elsewhere.example/a?b=1">elsewhere</a>`;

// In place of the interface: a document of this server with the view in a frame, which notes what it is sent.
const harness = `<!DOCTYPE html><html lang="en"><title>the interface</title>
<iframe id="view" name="view" width="900" height="600"></iframe>
<script src="/harness.js"></script>`;
const harnessScript = `window.sent = [];
addEventListener("message", (event) => window.sent.push({ origin: event.origin, data: event.data }));`;

const pageId = 5;

describe("the view of a page", () => {
  const quoted = attack.replaceAll("'", "''");
  const site = servedAuthors([
    `update TORVEX_BODIES_DESIGN set bodyText = '${quoted}' where pageId = ${pageId} and bodyId = 3`,
  ], (install) => {
    writeFileSync(join(install, "wwwroot/harness.html"), harness);
    writeFileSync(join(install, "wwwroot/harness.js"), harnessScript);
  });
  let context;
  let page;
  const show = async (query) => {
    await page.goto(`${site.address}/harness.html`);
    await page.evaluate((address) => new Promise((resolve) => {
      const frame = document.getElementById("view");
      frame.addEventListener("load", resolve, { once: true });
      frame.src = address;
    }), `/torvex/view.asp?${query}`);
    return page.frame({ name: "view" });
  };

  before(async () => {
    context = await site.browser.newContext({ locale: "en-GB" });
    page = await context.newPage();
    await logInAs(page, site, "basil");
  });
  after(async () => { await context.close(); });

  test("to be edited runs nothing, but whoever shows it can work in it", async () => {
    const frame = await show(`pageId=${pageId}&mode=D&edit=1`);
    assert.equal(await page.evaluate(() => document.getElementById("view").contentDocument.getElementById("text").textContent), "Attack");
    assert.equal(await frame.evaluate(() => document.body.dataset.ran), undefined);
    assert.equal(await frame.locator("script").count(), 0);
    assert.notEqual(await frame.title(), "ran");
    await frame.locator("#inner").click();
    assert.equal(await frame.locator("#text").innerText(), "Attack");
  });

  test("to be edited has a box in place of each frame", async () => {
    const frame = await show(`pageId=${pageId}&mode=D&edit=1`);
    assert.equal(await frame.locator("iframe").count(), 0);
    assert.equal(await frame.locator(".torvexFrame").innerText(), "A frame with /tvx.asp?pageId=1 stands here. Visitors see it.");
  });

  test("to be tried runs in an origin of its own and reaches nobody", async () => {
    const frame = await show(`pageId=${pageId}&mode=D`);
    assert.equal(await frame.locator("#text").innerText(), "kept out");
    assert.equal(await frame.evaluate(() => document.body.dataset.ran), "yes");
    assert.equal(await frame.evaluate(() => window.origin), "null");
    assert.equal(await frame.evaluate(() => { try { return document.cookie; } catch (e) { return e.name; } }), "SecurityError");
    assert.equal(await frame.evaluate(() => fetch("/torvex/api/session").then((r) => r.text(), () => "refused")), "refused");
  });

  test("to be tried gets public files", async () => {
    const frame = await show(`pageId=${pageId}&mode=D`);
    const status = await frame.evaluate(() => fetch("/torvex/client.js").then((answer) => answer.status));
    assert.equal(status, 200);
  });

  test("to be tried hands its links to the interface as data", async () => {
    const frame = await show(`pageId=${pageId}&mode=D`);
    await frame.locator("#inner").click();
    await frame.locator("#outer").click();
    await page.waitForFunction(() => window.sent.length === 2);
    const sent = await page.evaluate(() => window.sent);
    assert.deepEqual(sent, [
      { origin: "null", data: { torvex: "link", name: "page", values: ["7"] } },
      { origin: "null", data: { torvex: "link", name: "viewLink", values: ["https://elsewhere.example/a?b=1"] } },
    ]);
  });

  test("leads to a notice when there is no page, and the interface knows which", async () => {
    const frame = await show("pageId=99999&mode=D&edit=1");
    assert.equal(await frame.locator("body").getAttribute("data-error"), "page_not_found");
    assert.match(await frame.locator("main").innerText(), /There is no such page/);
  });

  test("stands in an interface that makes no HTML of texts, but where its libraries do", async () => {
    await page.goto(`${site.address}/torvex/`);
    await page.getByRole("banner").waitFor();
    const tried = await page.evaluate(() => ["innerHTML", "another policy"].map((what) => {
      try {
        if (what === "innerHTML") document.createElement("div").innerHTML = "<b>x</b>";
        else window.trustedTypes.createPolicy("another", { createHTML: (text) => text });
        return "made";
      } catch (error) {
        return error.name;
      }
    }));
    assert.deepEqual(tried, ["TypeError", "TypeError"]);
  });

  test("is nobody's who isn't logged in", async () => {
    const other = await site.browser.newContext();
    const answer = await other.request.get(`${site.address}/torvex/view.asp?pageId=${pageId}&mode=D`, { headers: { "Sec-Fetch-Dest": "iframe" } });
    assert.equal(answer.status(), 401);
    assert.doesNotMatch(await answer.text(), /Attack/);
    await other.close();
  });

  test("of a form without the secret asks before it saves", async () => {
    await page.goto(`${site.address}/harness.html`);
    await Promise.all([page.waitForNavigation(), page.evaluate((id) => {
      const form = document.createElement("form");
      Object.assign(form, { method: "post", action: "/torvex/view.asp" });
      for (const [name, value] of Object.entries({ html: "<p>saved</p>", pageId: id, bodyId: 3, job: "save", mode: "D" })) {
        form.append(Object.assign(document.createElement("input"), { type: "hidden", name, value }));
      }
      document.body.append(form);
      form.submit();
    }, pageId)]);
    assert.match(await page.locator("main").innerText(), /Save this text\?/);
    const stored = () => site.query(`select bodyText from TORVEX_BODIES_DESIGN where pageId = ${pageId} and bodyId = 3`)[0];
    assert.match(JSON.stringify(stored()), /Attack/);
    await Promise.all([page.waitForURL(/edit=1/), page.getByRole("button", { name: "Save" }).click()]);
    assert.match(JSON.stringify(stored()), /<p>saved<\/p>/);
  });
});

describe("a script in a public page", () => {
  const site = servedAuthors([], (install) => {
    writeFileSync(join(install, "wwwroot/harness.html"), harness);
    writeFileSync(join(install, "wwwroot/harness.js"), harnessScript);
    writeFileSync(join(install, "wwwroot/worker.js"), "self.answersInPlaceOfTheServer = true;");
  });

  test("gets neither the interface's secret nor its place", async () => {
    const context = await site.browser.newContext({ locale: "en-GB" });
    const page = await context.newPage();
    await logInAs(page, site, "basil");
    await page.goto(`${site.address}/harness.html`);
    for (const address of ["/torvex/", "/torvex/page.asp?pageId=5", "/torvex/login"]) {
      const text = await page.evaluate((asked) => fetch(asked).then((answer) => answer.text()), address);
      assert.doesNotMatch(text, /torvex-token/, address);
    }
    const framed = await page.evaluate(() => new Promise((resolve) => {
      const frame = document.getElementById("view");
      frame.addEventListener("load", () => {
        try { resolve(frame.contentDocument.querySelector("meta[name=torvex-token]") ? "secret" : "nothing"); } catch (e) { resolve("nothing"); }
      });
      frame.src = "/torvex/";
    }));
    assert.equal(framed, "nothing");
    const worker = await page.evaluate(() => navigator.serviceWorker.register("/worker.js").then(() => "registered", () => "refused"));
    assert.equal(worker, "refused");
    await context.close();
  });
});
