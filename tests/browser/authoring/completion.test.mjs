// Tags are offered while a template is written: chosen by keys or by hand, they stand in the template and are saved.
import assert from "node:assert/strict";
import { readFileSync } from "node:fs";
import { join } from "node:path";
import { describe, test } from "node:test";
import { servedAuthors } from "./door.mjs";
import { assertAccessible, workAs } from "./workplace.mjs";

const statements = [
  "insert into TORVEX_ROLES (roleId, roleName, roleDesc, lock) values (9, 'Newsflashes', '', '')",
  "insert into TORVEX_ROLES_LOGINS (roleId, loginId) values (9, 2)",
  "insert into TORVEX_ADVANCED_RIGHTS (roleId, advId, site, lang, viewAccess, editAccess) values (9, 242, '', '', 1, 0)",
];

describe("completion", () => {
  let install;
  const site = servedAuthors(statements, (folder) => {
    install = folder;
  });

  async function openCode(path, name, window) {
    const work = await workAs(site, "iris", window);
    const { page } = work;
    await work.go(path);
    await page.getByRole("heading", { name, level: 1 }).waitFor();
    const code = page.locator("tvx-code-field .cm-content[aria-autocomplete=list]");
    await code.waitFor();
    await code.click();
    await page.keyboard.press("Control+End");
    const list = page.getByRole("listbox", { name: "Tags of templates" });
    return {
      ...work,
      code,
      list,
      option: (text) => list.getByRole("option").filter({ hasText: text }),
      // Until this is the only one that is offered, and can be chosen.
      only: (name) =>
        page.waitForFunction((wanted) => {
          const names = document.querySelectorAll(".cm-tooltip-autocomplete:not(.cm-tooltip-autocomplete-disabled) .cm-completionLabel");
          return names.length === 1 && names[0].textContent === wanted;
        }, name),
    };
  }

  test("tags are chosen by keys and by hand, with what they stand for, and are saved", async () => {
    const [{ id: number, title }] = site.query("select id, title from TORVEX_NEWSFLASH_DESIGN where site = 'bg' and lang = 'en' and deleted = 0 order by id desc limit 1");
    const work = await openCode("/torvex/templates.asp?contentTemplate=2", "Standard page");
    const { page, code, list, option, only } = work;
    await page.keyboard.type("\n<torvex_br");
    await only("torvex_breadcrumb");
    const active = await code.getAttribute("aria-activedescendant");
    assert.equal(await code.getAttribute("aria-controls"), await list.getAttribute("id"));
    assert.match(await page.locator(`[id="${active}"]`).innerText(), /^torvex_breadcrumb\s+The way to the page from the top$/);
    await assertAccessible(page, "the offered tags");
    await page.keyboard.press("Enter");
    await list.waitFor({ state: "detached" });

    await page.keyboard.type("<p>");
    assert.equal(await list.count(), 0, "HTML is left alone");
    await page.keyboard.press("Control+Space");
    await option("torvex_dynMenu").waitFor();
    await page.keyboard.press("Escape");
    await list.waitFor({ state: "detached" });
    await page.keyboard.type("<!--!newsf");
    await option(title).click();
    await list.waitFor({ state: "detached" });

    await page.keyboard.type("\n<torvex_us");
    await only("torvex_userLoggedIn_start … end");
    await page.keyboard.press("Enter");
    await list.waitFor({ state: "detached" });
    await page.keyboard.type("hello");
    await page.keyboard.press("Control+s");
    await work.says("Standard page is saved.");
    const saved = readFileSync(join(install, "contentTemplates/bg/en/page.html"), "utf8").replaceAll("\r\n", "\n");
    assert.ok(
      saved.trimEnd().endsWith(`<!--!torvex_breadcrumb!--><p><!--!torvex_newsflash_${number}!-->\n<!--!torvex_userLoggedIn_start!-->hello<!--!torvex_userLoggedIn_end!--></p>`),
      saved.slice(-300),
    );
    assert.deepEqual(work.faults, []);
    await work.close();
  });

  test("a base template's tags are its own, on a phone too, and a stylesheet offers properties", async () => {
    const phone = { width: 360, height: 740, dark: true };
    let work = await openCode("/torvex/baseTemplates.asp?baseTemplate=1", /./, phone);
    await work.page.keyboard.type("<torvex_h");
    await work.only("torvex_head");
    await assertAccessible(work.page, "the offered tags on a phone");
    assert.deepEqual(work.faults, []);
    await work.close();

    work = await openCode("/torvex/stylesheets.asp?stylesheet=1", /./, phone);
    await work.page.keyboard.type("\n.new { letter-sp");
    const property = work.page.getByRole("option").filter({ hasText: "letter-spacing" });
    await property.waitFor();
    await work.page.keyboard.press("Enter");
    await property.waitFor({ state: "detached" });
    assert.match(await work.code.innerText(), /\.new \{ letter-spacing/);
    assert.deepEqual(work.faults, []);
    await work.close();
  });
});
