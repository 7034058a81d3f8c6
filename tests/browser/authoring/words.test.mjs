// A third language of the interface is made wholly in the browser, by hand and by a translator's file, and is then complete.
import assert from "node:assert/strict";
import { readFileSync } from "node:fs";
import { describe, test } from "node:test";
import { servedAuthors } from "./door.mjs";
import { assertAccessible, workAs } from "./workplace.mjs";

const statements = [
  "insert into TORVEX_ROLES (roleId, roleName, roleDesc, lock) values (9, 'Operators', '', '')",
  "insert into TORVEX_ROLES_LOGINS (roleId, loginId) values (9, 2)",
  "insert into TORVEX_ADVANCED_RIGHTS (roleId, advId, site, lang, viewAccess, editAccess) values (9, 51, '', '', 1, 1), (9, 52, '', '', 1, 1)",
];

describe("languages of the interface", () => {
  const site = servedAuthors(statements);
  const rowOf = (code) => site.query(`select lang_name, lang_enabled from TORVEX_INTERFACE_LANGUAGES where lang_id = '${code}'`)[0];
  const wordOf = (label, column) => site.query(`select lang_vocab${column} as word from TORVEX_INTERFACE_VOCAB where lang_label = ${label}`)[0]?.word;
  const file = (name, text, encoding = "utf8") => ({ name, mimeType: "text/csv", buffer: Buffer.isBuffer(text) ? text : Buffer.from(text, encoding) });

  test("French is added, translated by a file, generated, switched on, and speaks on every screen", async () => {
    const work = await workAs(site, "iris");
    const { page } = work;
    await work.go("/torvex/interfaceLanguages.asp");
    await page.getByRole("listitem").filter({ hasText: "Deutsch" }).first().waitFor();
    await assertAccessible(page, "the languages");
    await page.getByRole("button", { name: "New language" }).click();
    await work.dialog.getByLabel("Code of two letters").fill("en");
    await work.dialog.getByLabel("Name").fill("Français");
    await work.dialog.getByRole("button", { name: "Add" }).click();
    await work.dialog.getByText("There is a language with this code.").waitFor();
    await work.dialog.getByLabel("Code of two letters").fill("fr");
    await work.dialog.getByRole("button", { name: "Add" }).click();
    await page.getByRole("button", { name: "Switch on: Français" }).click();
    await page.getByText("Generate it first").first().waitFor();
    assert.deepEqual(rowOf("fr"), { lang_name: "Français", lang_enabled: 0 });

    await page.getByRole("link", { name: "Words: Français" }).click();
    await page.getByText(/^[\d,]+ words are missing$/).waitFor();
    assert.ok((await page.locator("tvx-table tbody tr").count()) < 150, "only what is in sight is drawn");
    const [download] = await Promise.all([page.waitForEvent("download"), page.getByRole("link", { name: "Save as CSV" }).click()]);
    const table = readFileSync(await download.path(), "utf8");
    assert.match(table, /^label,english,text\r\n1,OK,\r\n/);
    // The translator writes each English word with a sign of hers before it.
    const whole = table.replace(/^(\d+),("(?:[^"]|"")*"|[^,\r\n]*),\r$/gm, (line, label, english) => (english === "" ? line : english.startsWith('"') ? `${label},${english},"·${english.slice(1)}\r` : `${label},${english},·${english.replace(/^'/, "")}\r`));
    await page.getByRole("button", { name: "Read a CSV" }).click();
    await work.dialog.getByLabel("File").setInputFiles(file("fr.csv", whole));
    await work.dialog.getByText(/^New: [\d,]+$/).waitFor();
    assert.equal(await work.dialog.getByText(/^Lines that can't be taken/).count(), 0);
    await assertAccessible(page, "a dry run");
    assert.equal(wordOf(5, 3) ?? "", "", "nothing is taken before it is confirmed");
    await work.dialog.getByRole("button", { name: "Take them" }).click();
    await page.getByText("0 words are missing", { exact: true }).waitFor();
    assert.equal(wordOf(5, 3), "·Save");

    await work.go("/torvex/interfaceLanguages.asp");
    await page.getByRole("button", { name: "Generate: Français" }).click();
    await work.says("Français is generated.");
    await page.getByRole("button", { name: "Switch on: Français" }).click();
    await work.says("Français is switched on.");
    assert.equal(rowOf("fr").lang_enabled, 1);
    await page.getByRole("button", { name: /^Iris/ }).click();
    await page.getByRole("menuitemradio", { name: "Français" }).or(page.getByRole("menuitem", { name: "Français" })).click();
    // The choice is kept when its words have come.
    await page.getByRole("heading", { name: "·Interface languages", exact: true }).waitFor();
    for (const [address, heading] of [["interfaceLanguages.asp", "·Interface languages"], ["vocabulary.asp", "·Vocabulary"], ["auditTrail.asp", "·Audit trail"], ["mySettings.asp", "·My settings"]]) {
      await work.go(`/torvex/${address}`);
      await page.getByRole("heading", { name: heading, exact: true }).waitFor();
    }
    const visitor = await site.browser.newContext();
    const door = await visitor.newPage();
    await door.goto(`${site.address}/torvex/login?lang=fr`);
    await door.getByRole("button", { name: "·Log in" }).waitFor();
    await visitor.close();
    assert.deepEqual(work.faults, []);
    await work.close();
  });

  test("words are written one by one by Enter, places are watched, and nobody's word is overwritten", async () => {
    const work = await workAs(site, "iris");
    const { page } = work;
    await work.go("/torvex/vocabulary.asp?lang=de&words=check out");
    const field = page.getByRole("textbox", { name: "17: Check out" });
    await field.fill("Zur Bearbeitung nehmen");
    await field.press("Enter");
    await work.says("Word 17 is saved.");
    assert.equal(wordOf(17, 2), "Zur Bearbeitung nehmen");
    site.sql("update TORVEX_INTERFACE_VOCAB set lang_vocab2 = 'Holen' where lang_label = 17");
    await field.fill("Nehmen");
    await field.press("Enter");
    await page.getByText("Somebody has changed this meanwhile.").first().waitFor();
    await page.waitForFunction(() => document.querySelector(".word-field").value === "Holen");
    assert.equal(wordOf(17, 2), "Holen");
    site.sql("update TORVEX_INTERFACE_VOCAB set lang_vocab2 = '' where lang_label = 17");
    await work.go("/torvex/vocabulary.asp?lang=de&missing=1");
    await page.getByText("1 word is missing").waitFor();
    await page.getByRole("textbox", { name: "17: Check out" }).waitFor();
    await work.close();
  });

  test("a file in another encoding, with lines that are no use, is shown line by line and taken as far as it goes", async () => {
    const work = await workAs(site, "iris", { width: 360, height: 740 });
    const { page } = work;
    await work.go("/torvex/vocabulary.asp?lang=de&words=Cancel");
    await page.getByRole("textbox", { name: "2: Cancel" }).waitFor();
    await assertAccessible(page, "the words");
    const latin = Buffer.from('2;Zur\u00fcck, "bitte"\r\n1;"OK;\r\nja"\r\nkein;Wort\r\n99999;Nichts\r\n', "latin1");
    await page.getByRole("button", { name: "Read a CSV" }).click();
    await work.dialog.getByLabel("File").setInputFiles(file("de.csv", latin));
    await work.dialog.getByText("The file isn't in this encoding.").waitFor();
    await work.dialog.getByLabel("Encoding").selectOption("windows-1252");
    await work.dialog.getByText("Changed: 2").waitFor();
    await work.dialog.getByText("Line 4: It isn't a number and a word.").waitFor();
    await work.dialog.getByText("Line 5: No word has this number.").waitFor();
    await assertAccessible(page, "a dry run");
    await work.dialog.getByRole("button", { name: "Take them" }).click();
    await work.says("Words saved: 2");
    assert.equal(wordOf(2, 2), 'Zurück, "bitte"');
    assert.equal(wordOf(1, 2), "OK;\r\nja");

    const long = Array.from({ length: 100_000 }, (_, at) => `${at},Wort ${at}`).join("\n");
    await page.getByRole("button", { name: "Read a CSV" }).click();
    await work.dialog.getByLabel("File").setInputFiles(file("long.csv", long));
    await work.dialog.getByText(/^Lines that can't be taken: \d/).waitFor();
    await work.dialog.getByRole("button", { name: "Cancel" }).click();
    assert.equal(wordOf(2, 2), 'Zurück, "bitte"');
    assert.deepEqual(work.faults, []);
    await work.close();
  });

  test("a language goes with its words, but not the one that somebody works in", async () => {
    const work = await workAs(site, "iris");
    const { page } = work;
    await work.go("/torvex/interfaceLanguages.asp");
    await page.getByRole("button", { name: "Delete: Français" }).click();
    await work.dialog.getByRole("button", { name: "Delete" }).click();
    await work.says("Français is removed.");
    assert.equal(rowOf("fr"), undefined);
    await page.getByRole("button", { name: "Delete: Français" }).waitFor({ state: "detached" });
    await work.close();
  });

  test("who may not look at words is told so", async () => {
    const work = await workAs(site, "clover");
    await work.go("/torvex/vocabulary.asp");
    await work.page.getByRole("main").getByRole("alert").getByRole("link", { name: "To the dashboard" }).waitFor();
    await work.close();
  });
});
