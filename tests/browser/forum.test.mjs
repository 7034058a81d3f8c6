import assert from "node:assert/strict";
import { beforeEach, describe, test } from "node:test";
import { findingsOfAxe, logIn, servedDemo, sidewaysScroll } from "./support.mjs";

const aMoment = 3200; // forms that are sent faster are taken for a program's

describe("the forum of the demo", () => {
  const site = servedDemo();
  let context;
  let page;

  const open = (name, query) => page.goto(`${site.address}/torvex_forum/${name}?${query}`);
  const call = (operation, ...values) => site.call(`Forum.${operation}`, ...values);
  const fill = async (values) => {
    for (const [label, value] of Object.entries(values)) await page.getByLabel(label).fill(value);
  };
  const send = async () => {
    await page.waitForTimeout(aMoment);
    await Promise.all([page.waitForNavigation(), page.getByRole("button", { name: "Send" }).click()]);
  };
  const post = async (title, text) => {
    await fill({ Title: title, Text: text, "Your name": "Ann" });
    await send();
  };

  const begin = async (options) => {
    await context?.close();
    context = await site.browser.newContext(options);
    page = await context.newPage();
  };
  // Everything of a visitor works without script.
  beforeEach(() => begin({ javaScriptEnabled: false }));

  test("is read from the list of forums down to an answer", async () => {
    await site.open(page, 351);
    assert.equal(await page.locator("h1").innerText(), "Forum");
    assert.deepEqual(await page.locator(".forum-list h2 a").allInnerTexts(), ["Ask the gardeners", "Garden talk"]);
    await page.getByRole("link", { name: "Garden talk" }).click();
    await page.getByRole("link", { name: "Snowdrops in November?" }).click();
    assert.match(await page.title(), /^Snowdrops in November\? \|/);
    assert.equal(await page.locator(".forum-post").count(), 7);
    const nested = page.locator("#reaction-3 h3").first();
    assert.match(await nested.innerText(), /^Twelve\?/);
    assert.equal(await page.locator("#reaction-1 #reaction-2 #reaction-3 #reaction-4").count(), 1);
    const link = page.locator("#reaction-5 .forum-text a");
    assert.equal(await link.getAttribute("rel"), "nofollow ugc noopener");
  });

  test("keeps old topics in its archive", async () => {
    await open("topics.asp", "pageId=351&forumId=1");
    assert.equal(await page.getByRole("link", { name: /Apples/ }).count(), 0);
    await page.getByRole("link", { name: "Older topics are in the archive" }).click();
    assert.equal(await page.getByRole("link", { name: /Apples of the old orchard/ }).count(), 1);
    await page.getByRole("link", { name: "Back to the current topics" }).click();
    assert.equal(await page.getByRole("link", { name: /Snowdrops/ }).count(), 1);
  });

  test("takes a topic, and an answer to it at once", async () => {
    await open("topics.asp", "pageId=351&forumId=1");
    await page.getByRole("link", { name: "Begin a topic" }).click();
    await post("A heron", "On the roof of the palm house.\n\n<b>Grey</b> & tall: https://birds.example/heron");
    assert.equal(await page.getByRole("status").innerText(), "Thank you. Your post is here for everybody to read.");
    assert.match(await page.locator("h1").innerText(), /^A heron/);
    assert.match(await page.locator(".forum-text").innerText(), /<b>Grey<\/b> & tall/);
    assert.equal(await page.locator(".forum-text b").count(), 0);
    await page.getByRole("link", { name: "Answer", exact: true }).click();
    await post("It is back", "Same roof, same place.");
    assert.equal(await page.locator("#reaction-1 h3").innerText().then((text) => text.replace(/\s*New$/, "")), "It is back");
    await page.getByRole("link", { name: "Answer: It is back" }).click();
    assert.match(await page.locator(".forum-answered").innerText(), /Same roof, same place/);
    await post("And fishing", "In the lily pond.");
    assert.equal(await page.locator("#reaction-1 #reaction-2").count(), 1);
    assert.equal(site.query("select topic_lastDate as day from TORVEX_FORUM_TOPICS where topic_title = 'A heron'").length, 1);
  });

  test("gives a refused post back with its words and says why", async () => {
    await open("reaction.asp", "pageId=351&forumId=1");
    await page.locator("#forum_title").fill("Too quick");
    await page.locator("#forum_text").fill("Words that took long.");
    await page.locator("#forum_author").fill("Ann");
    await Promise.all([page.waitForNavigation(), page.getByRole("button", { name: "Send" }).click()]);
    assert.match(await page.getByRole("alert").innerText(), /That was very quick/);
    assert.equal(await page.getByLabel("Text").inputValue(), "Words that took long.");
    await send();
    assert.match(await page.locator("h1").innerText(), /^Too quick/);
  });

  test("lets posts wait for a moderator, who shows them", async () => {
    await open("reactions.asp", "pageId=351&forumId=2&topicId=1");
    const before = await page.locator(".forum-post").count();
    await page.getByRole("link", { name: "Answer", exact: true }).click();
    await post("Wasps help", "They carry the caterpillars away.");
    assert.match(await page.getByRole("status").innerText(), /waits for a moderator/);
    assert.equal(await page.locator(".forum-post").count(), before);
    const waiting = call("getWaiting", "site=bg", "lang=en");
    assert.match(waiting, /Wasps help/);
    assert.match(waiting, /Orchid without flowers/);
    const [{ reaction_reference: place }] =
      site.query("select reaction_reference from TORVEX_FORUM_REACTIONS where reaction_title = 'Wasps help'");
    call("setOnOff", "forumId=2", "topicId=1", `references=${place}`, "on=true");
    await open("reactions.asp", "pageId=351&forumId=2&topicId=1");
    assert.equal(await page.locator(".forum-post").count(), before + 1);
    call("setOnOff", "forumId=2", "topicId=1", "references=01", "on=false");
    await page.reload();
    assert.equal(await page.locator(".forum-post").count(), 1);
    // Without a mail server the notice is told to operators and gone.
    for (let i = 0; i < 40 && site.query("select count(*) as n from TORVEX_MAIL_QUEUE")[0].n > 0; ++i) {
      await page.waitForTimeout(250);
    }
    assert.equal(site.query("select count(*) as n from TORVEX_MAIL_QUEUE")[0].n, 0);
  });

  test("sends a post with words of the list to the moderator", async () => {
    await open("reaction.asp", "pageId=351&forumId=1&topicId=2");
    await post("Play", "The best CASINO of them all.");
    assert.match(await page.getByRole("status").innerText(), /waits for a moderator/);
  });

  test("shows the volunteers' forum to volunteers alone", async () => {
    await site.open(page, 363);
    assert.equal(await page.locator("h1").innerText(), "Log in");
    for (const address of ["topics.asp", "reactions.asp", "reaction.asp"]) {
      const answer = await open(address, "pageId=351&forumId=3&topicId=1");
      assert.equal(answer.status(), 404);
      assert.doesNotMatch(await page.content(), /tool shed/);
    }
    await site.open(page, 363);
    await logIn(page, "rowan", "spade");
    assert.equal(await page.locator("h1").innerText(), "Volunteers’ talk");
    await page.getByRole("link", { name: "Who has the key of the tool shed?" }).click();
    assert.equal(await page.locator(".forum-post").count(), 1);
  });

  test("speaks German on the German site", async () => {
    await open("reaction.asp", "pageId=357&forumId=4&topicId=1");
    await page.getByLabel("Titel").fill("x");
    await page.locator("#forum_text").fill("y");
    await page.getByLabel("Ihr Name").fill("z");
    await Promise.all([page.waitForNavigation(), page.getByRole("button", { name: "Senden" }).click()]);
    assert.match(await page.getByRole("alert").innerText(), /Das ging sehr schnell/);
  });

  test("fits a phone, whatever was written", async () => {
    const word = "unendlich".repeat(150);
    site.query(`update TORVEX_FORUM_REACTIONS set reaction_title = '${word.slice(0, 120)}', reaction_text = '${word}',
      reaction_author = '${word.slice(0, 60)}' where reaction_forumId = 4 returning reaction_id`);
    await begin({ viewport: { width: 360, height: 740 } });
    for (const [name, query] of [["", "pageId=357"], ["topics.asp", "pageId=357&forumId=4"],
      ["reactions.asp", "pageId=357&forumId=4&topicId=1"], ["reaction.asp", "pageId=357&forumId=4&topicId=1&reactionId=1"]]) {
      await open(name, query);
      assert.equal(await sidewaysScroll(page), 0, `${name} scrolls sideways`);
    }
  });

  test("has nothing in the way of those who can't see it, light or dark, wide or narrow", async () => {
    for (const [colorScheme, width] of [["light", 1280], ["dark", 360]]) {
      await begin({ colorScheme, viewport: { width, height: 800 } });
      for (const [name, query] of [["", "pageId=351"], ["topics.asp", "pageId=351&forumId=1&archive=1"], ["topics.asp", "pageId=351&forumId=1"],
        ["reactions.asp", "pageId=351&forumId=1&topicId=3"], ["reaction.asp", "pageId=351&forumId=2&topicId=1&reactionId=1"],
        ["reactions.asp", "pageId=351&forumId=1&topicId=4711"]]) {
        await open(name, query);
        assert.deepEqual(await findingsOfAxe(page), [], `${name}?${query}, ${colorScheme}`);
      }
    }
  });

  test("is written in with the keyboard alone", async () => {
    const focused = () => page.evaluate("document.activeElement.id || document.activeElement.textContent.trim()");
    await begin({});
    await open("reaction.asp", "pageId=351&forumId=1&topicId=3");
    await page.locator("#forum_title").focus();
    await page.keyboard.type("By keyboard");
    const order = [];
    for (let i = 0; i < 4; ++i) {
      await page.keyboard.press("Tab");
      order.push(await focused());
      if (i < 2) await page.keyboard.type("Typed.");
    }
    assert.deepEqual(order, ["forum_text", "forum_author", "Send", "Back without sending"]);
    await page.waitForTimeout(aMoment);
    await page.keyboard.press("Shift+Tab");
    await Promise.all([page.waitForNavigation(), page.keyboard.press("Enter")]);
    assert.equal(await page.getByRole("heading", { name: /By keyboard/ }).count(), 1);
  });

  test("hands moderators a script that draws a topic and switches its reactions", async () => {
    const script = call("getScript");
    const [, head, root, folderRow, leafRow] = script.match(
      /^([^]*)<!--!total_start!-->([^]*)<!--!mainReaction_start!-->([^]*)<!--!mainReaction_end!-->[^]*<!--!reaction_start!-->([^]*)<!--!reaction_end!-->/);
    const filled = (text, values) => text.replace(/<!--!(\w+)!-->/g, (mark, name) => values[name] ?? "");
    const rowValues = (name, parent, reference, title, onOff) => ({ name, parent, reference, reactionTitle: title, value: "0",
      reactionDate: "01/06/2026", reactionTotal: "0", reactionOffline: "0", image: "", onOff, id1: "1", id2: "2" });
    const whole = [filled(head, { forumId: "1", topicId: "1", winHeight: "300", ua: "0" }),
      filled(root, { topicName: "Moss" }),
      filled(folderRow, rowValues("a", "foldersTree", "01", "First", "1")),
      filled(leafRow, rowValues("b", "a", "01.01", "Second", "1")),
      filled(leafRow, rowValues("c", "foldersTree", "02", "Third", "0"))].join("\n");
    await begin({ bypassCSP: true });
    await page.goto(`${site.address}/error.asp`);
    await page.setContent("<body><form name='forum' method='post'><input name='job'><input name='items'></form><div id='forum_tree'></div></body>");
    await page.addScriptTag({ content: whole });
    await page.evaluate(() => {
      window.calls = [];
      window.link = { rsGetObject: () => ({ forum_reactionOnOff: (...values) => { window.calls.push(values); return { return_value: "0" }; } }) };
      window.initializeDocument();
    });
    assert.equal(await page.locator("#forum_tree > div").count(), 4);
    const picture = (id) => page.evaluate((name) => document.getElementById(name).src.split("/").pop(), id);
    assert.deepEqual([await picture("01"), await picture("01.01"), await picture("02")], ["on.gif", "on.gif", "off.gif"]);
    await page.evaluate(() => window.setOnOff("01"));
    assert.deepEqual([await picture("01"), await picture("01.01"), await picture("02")], ["off.gif", "off.gif", "off.gif"]);
    await page.evaluate(() => window.setOnOff("01.01"));
    assert.deepEqual([await picture("01"), await picture("01.01"), await picture("02")], ["on.gif", "on.gif", "off.gif"]);
    assert.deepEqual(await page.evaluate(() => window.calls.map((values) => values.slice(2).join())), ["1,1,01,0", "1,1,01.01,1"]);
    await page.evaluate(() => window.delItem("02"));
    assert.equal(await picture("del02"), "del1.gif");
    assert.equal(await page.evaluate(() => window.deleted), "02");
    await page.evaluate(() => window.delItem("02"));
    assert.equal(await picture("del02"), "del0.gif");
  });
});
