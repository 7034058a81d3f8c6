// "A script publishes the day's menu; its token can do no more."
import assert from "node:assert/strict";
import { describe, test } from "node:test";
import { servedAuthors } from "./door.mjs";
import { assertAccessible, workAs } from "./workplace.mjs";

const statements = [
  "insert into TORVEX_ROLES (roleId, roleName, roleDesc, lock) values (9, 'Operators', '', '')",
  "insert into TORVEX_ROLES_LOGINS (roleId, loginId) values (9, 2)",
  "insert into TORVEX_ADVANCED_RIGHTS (roleId, advId, site, lang, viewAccess, editAccess) values (9, 61, '', '', 1, 1), (9, 21, '', '', 1, 1)",
  "insert into TORVEX_LOGINS (loginId, username, password, name, sessionId) values (20, 'robot', '1234', 'Menu robot', '')",
  "insert into TORVEX_ROLES_LOGINS (roleId, loginId) select roleId, 20 from TORVEX_ROLES_LOGINS where loginId = 2",
];
const allowed = "cManager.checkOut, cManager.saveBody, cManager.checkIn, cManager.approvePage, cManager.publishPage";
const menuPage = 11;
const menu = "<p>Pea soup with mint</p>";

describe("a program's login", () => {
  const site = servedAuthors(statements);
  const kindOf = () => site.query("select kind from TORVEX_LOGINS where loginId = 20")[0].kind ?? "";

  // What its token is answered.
  const ask = (token, name, args) => fetch(`${site.address}/torvex/api/${name}`, {
    method: "POST",
    headers: { Authorization: `Bearer ${token}`, "Content-Type": "application/json" },
    body: JSON.stringify(args),
  });
  const publish = (token) => {
    const step = (operation, more = {}) => ({ on: "cManager", do: operation, with: { pageIdent: String(menuPage), ...more } });
    return ask(token, "batch", { calls: [step("checkOut"), step("saveBody", { bodyId: 2, bodyContent: menu }), step("checkIn"), step("approvePage", { state: 1 }), step("publishPage")] });
  };

  test("is made of a person's, publishes the day's menu with a token, and can do no more", async () => {
    const work = await workAs(site, "iris");
    const { page, dialog } = work;
    await work.go("/torvex/logins.asp?login=20");
    const switched = page.getByRole("checkbox", { name: "A program works with this login" });
    await switched.click();
    await dialog.getByRole("button", { name: "Cancel" }).click();
    await page.waitForFunction((box) => !box.checked, await switched.elementHandle());
    assert.equal(kindOf(), "");
    await switched.click();
    await assertAccessible(page, "the question");
    await dialog.getByRole("button", { name: "Give it to a program" }).click();
    await work.says("A program works with Menu robot now.");
    await page.waitForFunction((box) => box.checked, await switched.elementHandle());
    assert.equal(kindOf(), "program");
    await assertAccessible(page, "a program's login");

    await work.go("/torvex/mySettings.asp");
    await page.getByRole("button", { name: "New token" }).click();
    await dialog.getByLabel("Name").fill("Menu of the day");
    await dialog.getByLabel("Operations").fill(allowed);
    await dialog.getByRole("button", { name: "Add" }).click();
    await dialog.getByText("It is shown this once.").waitFor();
    const token = await dialog.locator("code").innerText();
    await dialog.getByRole("button", { name: "I have noted it" }).click();

    const published = await publish(token);
    assert.equal(published.status, 200, await published.text());
    assert.match(await site.live(menuPage), /Pea soup with mint/);
    for (const [name, args] of [["cManager/deletePage", { pageIdent: String(menuPage), state: 1 }], ["cManager/getPage", { pageIdent: String(menuPage) }], ["registers/getLogins", {}]])
      assert.equal((await ask(token, name, args)).status, 403, name);
    assert.match(await site.live(menuPage), /Pea soup with mint/);

    await work.go("/torvex/mySettings.asp");
    await page.getByRole("listitem").filter({ hasText: "Menu of the day" }).getByRole("button", { name: "Revoke" }).click();
    await dialog.getByRole("button", { name: "Revoke" }).click();
    await page.getByText("This program has no token.").waitFor();
    assert.equal((await publish(token)).status, 401);

    await work.go("/torvex/logins.asp?login=20");
    await switched.click();
    await work.says("A person works with Menu robot again.");
    assert.equal(kindOf(), "");
    assert.deepEqual(work.faults, []);
    await work.close();
  });
});
