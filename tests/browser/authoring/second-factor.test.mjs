// The second factor: set up by a picture, asked for at the door, gone by a recovery code; and demanded by a role.
import assert from "node:assert/strict";
import { describe, test } from "node:test";
import { codeAt, stepNow } from "../telephone.mjs";
import { passDoor, passwords, servedAuthors } from "./door.mjs";
import { assertAccessible, workAs } from "./workplace.mjs";

describe("the second factor", () => {
  const site = servedAuthors([
    "insert into TORVEX_ROLES (roleId, roleName, roleDesc, lock) values (9, 'Careful ones', '', '')",
    "insert into TORVEX_ROLES_LOGINS (roleId, loginId) values (9, 5)",
  ]);
  const factors = () => site.query("select loginId from TORVEX_SECOND_FACTORS order by loginId").map(({ loginId }) => loginId);

  // The code of a step counts once; that of the next one counts already.
  async function setUp(dialog) {
    await dialog.getByRole("img", { name: "Picture for the application" }).waitFor();
    const secret = await dialog.locator(".factor-secret").textContent();
    const step = stepNow();
    await dialog.getByLabel("Code", { exact: true }).fill(codeAt(secret, step));
    await dialog.getByRole("button", { name: "Switch on" }).click();
    await dialog.getByRole("heading", { name: "Recovery codes" }).waitFor();
    const codes = await dialog.locator(".factor-codes code").allTextContents();
    return { secret, step, codes };
  }

  test("is set up in one's settings, asked for at the door and in the interface, and a recovery code lets in once", async () => {
    const work = await workAs(site, "iris");
    const { page } = work;
    await work.go("/torvex/mysettings.asp");
    await page.getByRole("button", { name: "Set up" }).click();
    await work.dialog.getByRole("img", { name: "Picture for the application" }).waitFor();
    await assertAccessible(page, "setting up");
    await work.dialog.getByLabel("Code", { exact: true }).fill("000000x");
    await work.dialog.getByRole("button", { name: "Switch on" }).click();
    await work.dialog.getByText("The code is wrong, or was used before.").waitFor();
    assert.deepEqual(factors(), []);
    const { secret, step, codes } = await setUp(work.dialog);
    assert.equal(new Set(codes).size, 10);
    assert.deepEqual(factors(), [2]);
    await assertAccessible(page, "recovery codes");
    await work.dialog.getByRole("button", { name: "I have kept them" }).click();
    await page.getByText("Recovery codes left: 10.").waitFor();
    await assertAccessible(page, "the card");

    await page.goto(`${site.address}/torvex/logout`);
    await passDoor(page, site, "iris", "/torvex/mysettings.asp");
    await page.locator("#code").waitFor();
    await assertAccessible(page, "the door's second form");
    await page.locator("#code").fill(codeAt(secret, step));
    await page.locator("button[type=submit]").click();
    await page.getByText("The code is wrong, or was used before.").waitFor();
    await page.locator("#code").fill(codeAt(secret, Math.max(step + 1, stepNow())));
    await page.locator("button[type=submit]").click();
    await page.getByText("Recovery codes left: 10.").waitFor();

    site.sql("update TORVEX_LOGINS set sessionId = '' where loginId = 2");
    await page.reload();
    await passDoor(page, site, "iris", "/torvex/mysettings.asp");
    await page.locator("#code").fill(codes[0].toLowerCase());
    await page.locator("button[type=submit]").click();
    await page.getByText("Recovery codes left: 9.").waitFor();

    site.sql("update TORVEX_LOGINS set sessionId = 'gone' where loginId = 2");
    // A search by which the page learns that it has lost its login.
    await page.keyboard.press("Control+k");
    await page.keyboard.type("autumn");
    const again = page.getByRole("dialog", { name: "Log in again" });
    await again.waitFor();
    await again.getByLabel("Password").fill(passwords.iris);
    await again.getByRole("button", { name: "Log in" }).click();
    await again.getByLabel("Code", { exact: true }).fill("000000x");
    await assertAccessible(page, "logging in again");
    await again.getByRole("button", { name: "Log in" }).click();
    await again.getByText("The code is wrong, or was used before.").waitFor();
    await again.getByLabel("Code", { exact: true }).fill(codes[1]);
    await again.getByRole("button", { name: "Log in" }).click();
    await again.waitFor({ state: "detached" });

    await page.reload();
    await page.getByText("Recovery codes left: 8.").waitFor();
    await page.getByRole("button", { name: "Switch off" }).click();
    await work.dialog.getByLabel("Your password or a code").fill(passwords.iris);
    await work.dialog.getByRole("button", { name: "Switch off" }).click();
    await page.getByRole("button", { name: "Set up" }).waitFor();
    assert.deepEqual(factors(), []);
    assert.deepEqual(work.faults, []);
    await work.close();
  });

  test("is demanded by a role: nothing else is open before it is set up, and it is reset by who keeps the logins", async () => {
    const work = await workAs(site, "sa");
    await work.go("/torvex/roles.asp?role=9");
    const demands = work.page.getByRole("checkbox", { name: "Demands a second factor" });
    await demands.check();
    await work.says("The role Careful ones demands a second factor.");

    const hers = await workAs(site, "reed");
    await hers.go("/torvex/");
    await hers.page.getByText("Nothing else is open to you until it is set up.").waitFor();
    assert.equal(await hers.page.locator("tvx-shell").count(), 0);
    await assertAccessible(hers.page, "setting up first");
    await hers.page.getByRole("button", { name: "Set up" }).click();
    await setUp(hers.dialog);
    await hers.dialog.getByRole("button", { name: "I have kept them" }).click();
    await hers.page.locator("tvx-shell").waitFor();
    await hers.go("/torvex/mysettings.asp");
    await hers.page.getByText("A role of yours demands it.").waitFor();
    assert.equal(await hers.page.getByRole("button", { name: "Switch off" }).count(), 0);
    await hers.close();

    await work.go("/torvex/logins.asp?login=5");
    await work.page.getByRole("button", { name: "Reset second factor" }).click();
    await work.dialog.getByRole("button", { name: "Reset second factor" }).click();
    await work.says("is reset.");
    assert.deepEqual(factors(), []);
    assert.deepEqual(work.faults, []);
    await work.close();
  });
});
