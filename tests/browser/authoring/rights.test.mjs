// Logins, roles and what they give: a right is taken, whom it hits is told before, and why others still have it.
import assert from "node:assert/strict";
import { describe, test } from "node:test";
import { servedAuthors } from "./door.mjs";
import { assertAccessible, workAs } from "./workplace.mjs";

const statements = [
  "insert into TORVEX_ROLES (roleId, roleName, roleDesc, lock) values (9, 'Team leads', 'Logins and roles', '')",
  "insert into TORVEX_ROLES_LOGINS (roleId, loginId) values (9, 2)",
  "insert into TORVEX_ADVANCED_RIGHTS (roleId, advId, site, lang, viewAccess, editAccess) values (9, 21, '', '', 1, 1), (9, 22, '', '', 1, 1)",
  "update TORVEX_EDIT_RIGHTS set publish = 1 where roleId = 3",
];

describe("rights", () => {
  const site = servedAuthors(statements);
  const rightsOf = (role) =>
    site.query(`select site, lang, onOff, move, publish, approve, edit, scope from TORVEX_EDIT_RIGHTS where roleId = ${role} order by site, lang`).map((row) => Object.values(row).join("|"));
  const rolesOf = (login) => site.query(`select roleId from TORVEX_ROLES_LOGINS where loginId = ${login} order by roleId`).map(({ roleId }) => roleId);
  const titleOf = (nodeId) => site.query(`select title from TORVEX_PAGES_DESIGN where nodeId = '${nodeId}'`)[0].title;

  const openRole = async (work, id, name) => {
    await work.go(`/torvex/roles.asp?role=${id}`);
    await work.page.getByRole("heading", { name, level: 1 }).waitFor();
    await work.page.getByRole("checkbox").first().waitFor();
  };
  const publishBox = (page) => page.getByRole("checkbox", { name: /^Publish in .*garden.* · English/i });

  test("publishing is taken from the programme team: whom it hits is told, and why Clover still may in German", async () => {
    const work = await workAs(site, "iris");
    const { page } = work;
    await work.go("/torvex/roles.asp");
    await page.getByRole("heading", { name: "Roles and rights", level: 1 }).waitFor();
    await page.getByRole("searchbox", { name: "Filter", exact: true }).fill("programme");
    await page.getByRole("link", { name: "Programme" }).click();
    await publishBox(page).waitFor();
    await assertAccessible(page, "a role");
    assert.equal(await publishBox(page).isChecked(), true);
    await publishBox(page).uncheck();
    await page.getByRole("button", { name: "Save" }).click();
    await work.dialog.getByText(/Takes from 2 logins: publishing in/).waitFor();
    await work.dialog.getByText(/Reed Amsel/).waitFor();
    await work.dialog.getByText(/Clover Dunn/).waitFor();
    assert.deepEqual(rightsOf(3), ["bg|en|0|1|1|0|1|bg.en.03"], "nothing is saved before it is confirmed");
    await assertAccessible(page, "whom it hits");
    await work.dialog.getByRole("button", { name: "Save" }).click();
    await work.says("Programme is saved.");
    assert.deepEqual(rightsOf(3), ["bg|en|0|1|0|0|1|bg.en.03"]);

    await work.go("/torvex/logins.asp?login=6");
    const why = page.locator("tvx-why");
    await why.getByLabel("May she").selectOption("publish");
    const german = titleOf("bg.de.03");
    await why.getByRole("combobox", { name: "Page" }).fill(german);
    await why.getByRole("option", { name: german }).first().click();
    await why.getByText("Yes.").waitFor();
    await why.getByText(/German desk gives publishing/).waitFor();
    const english = titleOf("bg.en.03");
    await why.getByRole("combobox", { name: "Page" }).fill(english);
    await why.getByRole("option", { name: english }).first().click();
    await why.getByText("No.").waitFor();
    await why.getByText(/^Programme: .*editing.*, but not publishing\.$/).waitFor();
    await why.getByText(/^German desk: publishing, but only in .*\.$/).waitFor();
    await why.getByText(/^It would need: publishing for .* in one of the roles\.$/).waitFor();
    await assertAccessible(page, "a login");
    assert.deepEqual(work.faults, []);
    await work.close();
  });

  test("where a role's rights reach is chosen in the tree, and a page that is gone can be left out", async () => {
    site.sql("update TORVEX_EDIT_RIGHTS set scope = 'bg.en.03,bg.en.77' where roleId = 3");
    const work = await workAs(site, "iris");
    const { page } = work;
    await openRole(work, 3, "Programme");
    await page.getByRole("button", { name: /^Reach of the rights in .*: 2 branches$/ }).click();
    await work.dialog.getByText("The page bg.en.77 isn't there any more.").waitFor();
    await work.dialog.getByRole("button", { name: "Delete" }).click();
    await work.dialog.getByText("bg.en.77").waitFor({ state: "detached" });
    const chosen = work.dialog.getByRole("treeitem", { selected: true });
    await chosen.waitFor();
    await assertAccessible(page, "the scope");
    const other = titleOf("bg.en.02");
    await work.dialog.getByRole("treeitem", { name: other, exact: true }).click();
    await work.dialog.getByRole("treeitem", { name: other, exact: true, selected: true }).waitFor();
    await work.dialog.getByRole("button", { name: "Take these" }).click();
    await page.getByRole("button", { name: /: 2 branches$/ }).waitFor();
    await page.getByRole("button", { name: "Save" }).click();
    await work.dialog.getByText(/Gives 2 logins: editing in/).waitFor();
    await work.dialog.getByRole("button", { name: "Save" }).click();
    await work.says("Programme is saved.");
    assert.deepEqual(rightsOf(3), ["bg|en|0|1|0|0|1|bg.en.02,bg.en.03"]);
    await work.close();
  });

  test("a role that was changed elsewhere isn't overwritten", async () => {
    const work = await workAs(site, "iris");
    const { page } = work;
    await openRole(work, 3, "Programme");
    site.sql("update TORVEX_EDIT_RIGHTS set approve = 1 where roleId = 3");
    await page.getByRole("textbox", { name: "Description" }).fill("All that is on");
    await page.getByRole("button", { name: "Save" }).click();
    await page.getByText("Somebody has changed this role meanwhile.").waitFor();
    assert.notEqual(site.query("select roleDesc from TORVEX_ROLES where roleId = 3")[0].roleDesc, "All that is on");
    await page.getByRole("button", { name: "Go on with mine" }).click();
    await page.getByText("Somebody has changed this role meanwhile.").waitFor({ state: "detached" });
    assert.equal(await page.getByRole("textbox", { name: "Description" }).inputValue(), "All that is on");
    await page.getByRole("button", { name: "Show theirs" }).waitFor({ state: "detached" });
    await work.close();
  });

  test("a role that somebody else has open can be read", async () => {
    site.sql("update TORVEX_LOGINS set sessionId = 'elsewhere' where loginId = 4");
    site.sql("update TORVEX_ROLES set lock = 'elsewhere' where roleId = 3");
    const work = await workAs(site, "iris");
    const { page } = work;
    await openRole(work, 3, "Programme");
    await page.getByText("Heide Lorenz has this open; you can read it.").waitFor();
    assert.equal(await page.getByRole("checkbox").first().isDisabled(), true);
    assert.equal(await page.getByRole("button", { name: "Save" }).count(), 0);
    site.sql("update TORVEX_ROLES set lock = '' where roleId = 3");
    await work.close();
  });

  test("nobody gives away the last right to give rights, nor more than she has", async () => {
    const work = await workAs(site, "iris");
    const { page } = work;
    await openRole(work, 9, "Team leads");
    await page.getByRole("tab", { name: "Administration" }).last().click();
    await page.getByRole("checkbox", { name: /^Roles.*: change$/ }).uncheck();
    await page.getByRole("button", { name: "Save" }).click();
    await work.dialog.getByText(/You take from yourself/).waitFor();
    await work.dialog.getByRole("button", { name: "Save" }).click();
    await work.dialog.getByText("Nobody but the system administrator would be left to give rights.").waitFor();
    await work.dialog.getByRole("button", { name: "Cancel" }).click();
    assert.deepEqual(rolesOf(2), [1, 9]);
    await work.go("/torvex/roles.asp?role=3&tab=administration");
    await page.getByRole("checkbox", { name: /^Settings: change$/ }).check();
    await page.getByRole("button", { name: "Save" }).click();
    await work.dialog.getByRole("button", { name: "Save" }).click();
    await work.dialog.getByText("You can't give more than you may do yourself.").waitFor();
    await assertAccessible(page, "a refusal");
    await work.close();
  });

  test("who goes away from a role with something unsaved is asked, and may stay", async () => {
    const work = await workAs(site, "iris");
    const { page } = work;
    await openRole(work, 3, "Programme");
    const text = page.getByRole("textbox", { name: "Description" });
    await text.fill("Half a sentence");
    const toTheList = () => page.evaluate(() => {
      const link = document.createElement("a");
      link.href = "/torvex/roles.asp";
      document.body.append(link);
      link.click();
      link.remove();
    });
    for (const leave of [() => page.getByRole("link", { name: "Back" }).click(), toTheList]) {
      await leave();
      await work.dialog.getByRole("button", { name: "Cancel" }).click();
      await work.dialog.waitFor({ state: "detached" });
      assert.equal(await text.inputValue(), "Half a sentence");
    }
    await toTheList();
    await work.dialog.getByRole("button", { name: "Leave" }).click();
    await page.getByRole("searchbox", { name: "Filter", exact: true }).waitFor();
    await work.close();
  });

  test("who doesn't give up a role of her own after all still sees that she has it", async () => {
    const work = await workAs(site, "iris");
    const { page } = work;
    await openRole(work, 9, "Team leads");
    await page.getByRole("tab", { name: "Logins" }).click();
    const own = page.getByRole("checkbox", { name: /^Iris/ });
    await own.click();
    await work.dialog.getByRole("button", { name: "Cancel" }).click();
    await page.waitForFunction((box) => box.checked, await own.elementHandle());
    assert.deepEqual(rolesOf(2), [1, 9]);
    await work.close();
  });

  test("a login is added with a password that is shown once, gets a role with Undo, and is removed", async () => {
    const work = await workAs(site, "iris");
    const { page } = work;
    await work.go("/torvex/logins.asp");
    await page.getByRole("link", { name: "Reed Amsel" }).waitFor();
    await assertAccessible(page, "the logins");
    await page.getByRole("button", { name: "New login" }).click();
    await work.dialog.getByLabel("Full name").fill("Hazel Wood");
    await work.dialog.getByLabel("User name").fill("hazel");
    await work.dialog.getByRole("button", { name: "Add" }).click();
    await work.dialog.getByText("This is shown once.").waitFor();
    assert.match(await work.dialog.locator("code").innerText(), /^[a-z2-9]{4}(-[a-z2-9]{4}){3}$/);
    await assertAccessible(page, "a password");
    await work.dialog.getByRole("button", { name: "I have noted it" }).click();
    await page.getByRole("heading", { name: "Hazel Wood" }).waitFor();
    const hazel = site.query("select loginId from TORVEX_LOGINS where username = 'hazel'")[0].loginId;
    await page.getByRole("checkbox", { name: "Programme" }).check();
    await work.says("Hazel Wood has the role Programme now.");
    assert.deepEqual(rolesOf(hazel), [3]);
    await page.getByRole("button", { name: /^Undo/ }).first().click();
    await work.says("Hazel Wood no longer has the role Programme.");
    assert.deepEqual(rolesOf(hazel), []);
    await page.getByRole("button", { name: "Delete" }).click();
    await work.dialog.getByRole("button", { name: "Delete" }).click();
    await work.says("The login of Hazel Wood is removed.");
    assert.deepEqual(work.faults, []);
    await work.close();
  });

  test("on a phone everything can be read and nothing is wider than the window", async () => {
    const work = await workAs(site, "iris", { width: 360, height: 740 });
    const { page } = work;
    await work.go("/torvex/roles.asp");
    await page.getByRole("link", { name: "Programme" }).waitFor();
    await assertAccessible(page, "roles");
    await openRole(work, 3, "Programme");
    await assertAccessible(page, "a role");
    await work.go("/torvex/roles.asp?role=3&tab=administration");
    await page.getByRole("checkbox").first().waitFor();
    await assertAccessible(page, "the administration");
    await work.go("/torvex/logins.asp?login=6");
    await page.getByRole("heading", { name: "Clover Dunn" }).waitFor();
    await assertAccessible(page, "a login");
    await work.close();
  });

  test("on a phone what saves stays under the thumb, and covers nothing that has the keyboard", async () => {
    const work = await workAs(site, "iris", { width: 360, height: 740 });
    const { page } = work;
    await work.go("/torvex/roles.asp?role=9&tab=administration");
    const boxes = page.locator(".entries input");
    await boxes.first().check();
    const save = page.getByRole("button", { name: "Save" });
    await save.waitFor();
    const isFree = (element) => {
      const { left, top, width, height } = element.getBoundingClientRect();
      return element.contains(document.elementFromPoint(left + width / 2, top + height / 2));
    };
    for (let i = 1; i < 30; ++i) {
      await page.keyboard.press("Tab");
      assert.ok(await page.evaluate(`(${isFree})(document.activeElement)`), `box ${i} is covered`);
      assert.ok(await save.evaluate(isFree), `what saves is out of sight at box ${i}`);
    }
    await assertAccessible(page, "a role that is changed");
    await boxes.first().uncheck();
    await save.waitFor({ state: "detached" });
    await work.close();
  });

  test("who may not look at roles is told so", async () => {
    const work = await workAs(site, "clover");
    await work.go("/torvex/roles.asp");
    const notice = work.page.getByRole("main").getByRole("alert");
    await notice.getByRole("link", { name: "To the dashboard" }).waitFor();
    assert.equal(await notice.getByRole("button").count(), 0);
    await work.close();
  });
});
