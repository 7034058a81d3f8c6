// Who runs a site keeps its groups, its visitors' accounts and its servers in the browser.
import assert from "node:assert/strict";
import { describe, test } from "node:test";
import { servedAuthors } from "./door.mjs";
import { assertAccessible, workAs } from "./workplace.mjs";

const statements = [
  "insert into TORVEX_ROLES (roleId, roleName, roleDesc, lock) values (9, 'Operators', '', '')",
  "insert into TORVEX_ROLES_LOGINS (roleId, loginId) values (9, 2)",
  "insert into TORVEX_ADVANCED_RIGHTS (roleId, advId, site, lang, viewAccess, editAccess) values (9, 31, '', '', 1, 1), (9, 32, '', '', 1, 1), (9, 62, '', '', 1, 1)",
  "insert into TORVEX_USERGROUPS (groupId, name, description, entryPage, exitPage) values (90, 'Helpers', '', -1, -1)",
  "insert into TORVEX_USER_FACTORS (userId, secret, since, lastStep) values (2, 'MZXW6YTB', '2026-06-01 10:00:00', 1)",
  "insert into TORVEX_USER_RECOVERY_CODES (userId, codeHash) values (2, 'one'), (2, 'another')",
  "insert into TORVEX_SERVERS (serverId, serverName, serverDescription, serverIP) values (3, 'web3', 'Third', '10.0.0.3')",
  "insert into TORVEX_SERVERS_MISSED (serverName, path, task, reason, moment) values ('web3', 'wwwroot/images/rose.gif', 'write', 'No space left on device', '2026-06-01 10:00:00')",
];

describe("groups, users and servers", () => {
  const site = servedAuthors(statements);
  const groupOf = (name) => site.query(`select groupId, description, entryPage from TORVEX_USERGROUPS where name = '${name}'`)[0];
  const userOf = (name) => site.query(`select userId, firstname, lastname, validTo from TORVEX_USERS where username = '${name}'`)[0];
  const groupsOf = (user) => site.query(`select g.name from TORVEX_GROUPS_USERS m inner join TORVEX_USERGROUPS g on g.groupId = m.groupId inner join TORVEX_USERS u on u.userId = m.userId where u.username = '${user}' order by g.name`).map(({ name }) => name);
  const file = (text) => ({ name: "users.csv", mimeType: "text/csv", buffer: Buffer.from(text) });

  test("a group is added, led to a page, and goes", async () => {
    const work = await workAs(site, "iris");
    const { page } = work;
    await work.go("/torvex/groups.asp");
    await page.getByRole("button", { name: "New group" }).click();
    await work.dialog.getByLabel("Name").fill("everybody");
    await work.dialog.getByRole("button", { name: "Add" }).click();
    await work.dialog.getByText("Another group has this name.").waitFor();
    await work.dialog.getByLabel("Name").fill("Beekeepers");
    await work.dialog.getByRole("button", { name: "Add" }).click();
    await page.getByRole("heading", { name: "Beekeepers" }).waitFor();
    await page.getByLabel("Page after logging in").fill("bg.en.77");
    await page.getByRole("button", { name: "Save" }).first().click();
    await page.getByText("No such page.").first().waitFor();
    await page.getByLabel("Page after logging in").fill("bg.en.03");
    await page.getByRole("textbox", { name: "Description" }).fill("They help");
    await page.getByRole("button", { name: "Save" }).first().click();
    await work.says("Beekeepers is saved.");
    assert.equal(groupOf("Beekeepers").description, "They help");
    assert.ok(groupOf("Beekeepers").entryPage > 0);
    await assertAccessible(page, "a group");

    site.sql("update TORVEX_USERGROUPS set description = 'Theirs' where name = 'Beekeepers'");
    await page.getByRole("textbox", { name: "Description" }).fill("Mine");
    await page.getByRole("button", { name: "Save" }).first().click();
    await page.getByText("Somebody has changed this meanwhile.").waitFor();
    assert.equal(groupOf("Beekeepers").description, "Theirs");
    await page.getByRole("button", { name: "Show theirs" }).click();
    await page.getByText("Somebody has changed this meanwhile.").waitFor({ state: "detached" });
    await page.getByRole("button", { name: "Delete" }).first().click();
    await work.dialog.getByText(/^0 users are in it\. It guards 0 pages and 0 folders/).waitFor();
    await work.dialog.getByRole("button", { name: "Delete" }).click();
    await work.says("Beekeepers is removed.");
    assert.equal(groupOf("Beekeepers"), undefined);
    assert.deepEqual(work.faults, []);
    await work.close();
  });

  test("a user is added, joins a group with Undo, and goes", async () => {
    const work = await workAs(site, "iris");
    const { page } = work;
    await work.go("/torvex/users.asp");
    await page.getByRole("button", { name: "New user" }).click();
    await work.dialog.getByLabel("User name").fill("fern");
    await work.dialog.getByRole("button", { name: "Add" }).click();
    await work.dialog.getByText("The password is missing.").waitFor();
    await work.dialog.getByLabel("Last name").fill("Farn");
    const common = /^This password is one of the 100,000 commonest/;
    await work.dialog.getByLabel("Password").fill("moss");
    await work.dialog.getByRole("status").filter({ hasText: common }).waitFor();
    await work.dialog.getByRole("button", { name: "Add" }).click();
    await work.dialog.getByRole("alert").filter({ hasText: common }).waitFor();
    assert.equal(userOf("fern"), undefined);
    await work.dialog.getByLabel("Password").fill("moss and bark");
    await work.dialog.getByRole("status").filter({ hasText: common }).waitFor({ state: "detached" });
    await work.dialog.getByRole("button", { name: "Add" }).click();
    await page.getByRole("heading", { name: "fern" }).waitFor();
    await page.getByRole("checkbox", { name: "Helpers" }).check();
    await work.says("fern is in Helpers now.");
    assert.deepEqual(groupsOf("fern"), ["Helpers"]);
    await page.getByRole("button", { name: /^Undo/ }).first().click();
    await work.says("fern is no longer in Helpers.");
    assert.deepEqual(groupsOf("fern"), []);
    await page.getByLabel("Valid to").fill("2020-01-31");
    await page.getByRole("button", { name: "Save" }).first().click();
    await work.says("fern is saved.");
    assert.equal(userOf("fern").validTo, "20200131");
    await assertAccessible(page, "a user");
    await work.go("/torvex/users.asp?words=fern");
    await page.getByText("not valid today").waitFor();
    await assertAccessible(page, "the users");
    await page.getByRole("link", { name: "fern" }).click();
    await page.getByRole("button", { name: "Delete" }).first().click();
    await work.dialog.getByRole("button", { name: "Delete" }).click();
    await work.says("fern is removed.");
    assert.equal(userOf("fern"), undefined);
    assert.deepEqual(work.faults, []);
    await work.close();
  });

  test("a user's lost second factor is reset", async () => {
    const work = await workAs(site, "iris");
    const { page } = work;
    await work.go("/torvex/users.asp?words=rowan");
    await page.getByRole("link", { name: "rowan" }).click();
    await page.getByText(/^Second factor since .+ Recovery codes left: 2\.$/).waitFor();
    await assertAccessible(page, "a user with a second factor");
    await page.getByRole("button", { name: "Reset second factor" }).click();
    await work.dialog.getByRole("button", { name: "Reset second factor" }).click();
    await work.says("The second factor of rowan is reset.");
    await page.getByText("No second factor.").waitFor();
    assert.equal(await page.getByRole("button", { name: "Reset second factor" }).count(), 0);
    assert.deepEqual(site.query("select userId from TORVEX_USER_FACTORS"), []);
    assert.deepEqual(work.faults, []);
    await work.close();
  });

  test("users come out of a file: what each line would do stands first, and a bad line keeps all out", async () => {
    const work = await workAs(site, "iris");
    const { page } = work;
    await work.go("/torvex/users.asp");
    await page.getByRole("button", { name: "Read a CSV" }).click();
    await work.dialog.getByLabel("File").setInputFiles(file('username;password;lastname;groups\nivy;wall;"Efeu; klein";Helpers\nmoss;;Moos;\nivy;x;;\nelm;tree;;Nobody'));
    await work.dialog.getByText(/^Lines that can't be taken: 3/).waitFor();
    await work.dialog.getByText("Line 3: a new user needs a password").waitFor();
    await work.dialog.getByText("Line 4: ivy: 2 ×").waitFor();
    assert.equal(await work.dialog.getByRole("button", { name: "Take them" }).getAttribute("aria-disabled"), "true");
    await assertAccessible(page, "a dry run");
    await work.dialog.getByLabel("File").setInputFiles(file('username;password;lastname;groups\nivy;wall;"Efeu; klein";Helpers\nmoss;bog;Moos;'));
    await work.dialog.getByText("Added: 2").waitFor();
    await work.dialog.getByText("Lines whose password is one of the 100,000 commonest: 2").waitFor();
    assert.equal(userOf("ivy"), undefined, "nothing is taken before it is confirmed");
    await work.dialog.getByRole("button", { name: "Take them" }).click();
    await work.says("Users: 2 added, 0 changed");
    assert.equal(userOf("ivy").lastname, "Efeu; klein");
    assert.deepEqual(groupsOf("ivy"), ["Helpers"]);
    await page.getByRole("link", { name: "ivy" }).waitFor();
    assert.deepEqual(work.faults, []);
    await work.close();
  });

  test("a server that has missed something is tested, renamed and brought up to date", async () => {
    const work = await workAs(site, "iris", { width: 360, height: 740 });
    const { page } = work;
    await work.go("/torvex/servers.asp");
    await page.getByText("1 file missed").waitFor();
    await assertAccessible(page, "the servers");
    await page.getByRole("link", { name: "web3" }).click();
    await page.getByText("wwwroot/images/rose.gif").waitFor();
    await page.getByText("No space left on device").waitFor();
    await page.getByRole("button", { name: "Brought up to date" }).click();
    await work.dialog.getByRole("button", { name: "Brought up to date" }).click();
    await work.says("web3 counts as up to date.");
    await page.getByText("has everything").waitFor();
    assert.deepEqual(site.query("select path from TORVEX_SERVERS_MISSED"), []);
    await page.getByRole("textbox", { name: "Name of the machine" }).fill("..");
    await page.getByRole("button", { name: "Save" }).last().click();
    await page.getByText("A server needs the name of its machine.").first().waitFor();
    await page.getByRole("textbox", { name: "Name of the machine" }).fill("web4");
    await page.getByRole("button", { name: "Save" }).last().click();
    await work.says("web4 is saved.");
    assert.deepEqual(site.query("select serverName from TORVEX_SERVERS"), [{ serverName: "web4" }]);
    await assertAccessible(page, "a server");
    assert.deepEqual(work.faults, []);
    await work.close();
  });

  test("a server that can't be reached says so", async () => {
    const work = await workAs(site, "iris");
    const { page } = work;
    await work.go("/torvex/servers.asp");
    await page.getByRole("button", { name: /^Test: web/ }).click();
    await page.getByRole("status").filter({ hasText: "can't be reached" }).waitFor();
    await work.close();
  });

  test("on a phone groups and users can be read, and who may not look is told so", async () => {
    const work = await workAs(site, "iris", { width: 360, height: 740, dark: true });
    await work.go("/torvex/groups.asp");
    await work.page.getByRole("link", { name: "Helpers" }).waitFor();
    await assertAccessible(work.page, "the groups");
    await work.go("/torvex/users.asp");
    await work.page.locator("tvx-users tvx-table a").first().waitFor();
    await assertAccessible(work.page, "the users");
    await work.close();
    const other = await workAs(site, "clover");
    await other.go("/torvex/users.asp");
    await other.page.getByRole("main").getByRole("alert").getByRole("link", { name: "To the dashboard" }).waitFor();
    await other.close();
  });
});
