// The administration menu: what it offers is what its author may open, and leads to a screen that does its work; what she
// may not open shows her nothing.
import assert from "node:assert/strict";
import { describe, test } from "node:test";
import { servedAuthors } from "./door.mjs";
import { workAs } from "./workplace.mjs";

describe("the administration menu", () => {
  const site = servedAuthors();
  const entries = () => site.query("select advId, advProgram from TORVEX_ADVANCED where advProgram <> '' order by advReference");
  // Which of them the gate lets the author look at here. Those that nobody gives are everybody's.
  const openOnes = async (page) => {
    const own = site.query("select advId from TORVEX_ADVANCED where advProgram <> '' and advView = 0 and advEdit = 0").map(({ advId }) => advId);
    const answers = await page.evaluate(async (ids) => {
      const ask = async (id) => (await (await fetch(`/torvex/api/cManager/checkAdvRights?flag=view&advId=${id}&site=bg&lang=en`)).json()).result;
      const open = [];
      for (const id of ids) if (await ask(id)) open.push(id);
      return open;
    }, entries().map(({ advId }) => advId).filter((advId) => !own.includes(advId)));
    return [...own, ...answers].sort((a, b) => a - b);
  };
  const menuOf = async (work) => {
    await work.go("/torvex/");
    await work.page.getByRole("tab", { name: "Administration" }).click();
    await work.page.locator("tvx-administration [role=treeitem]").first().waitFor();
    const ids = await work.page.locator("tvx-administration [role=treeitem]:not([aria-expanded])")
      .evaluateAll((items) => items.map((item) => Number(item.dataset.id)));
    return ids.sort((a, b) => a - b);
  };
  // What an entry's screen says when all has come: its heading, and what it complains of.
  const screenOf = async (work, { advProgram }) => {
    await work.go(advProgram);
    await work.page.locator("main").locator("h1:not(.skeleton), [role=alert]").first().waitFor();
    await work.rest();
    return {
      heading: (await work.page.locator("main h1").allTextContents()).join(" ").trim(),
      complaints: await work.page.locator("main [role=alert]").allTextContents(),
    };
  };
  const workOf = (name) => workAs(site, name, { height: 2000 });

  for (const name of ["sa", "iris", "basil", "heide", "reed", "clover"]) {
    test(`has no dead entry for ${name}, and none that she may not open`, async () => {
      const work = await workOf(name);
      const offered = await menuOf(work);
      assert.deepEqual(offered, await openOnes(work.page));
      for (const entry of entries().filter(({ advId }) => offered.includes(advId))) {
        const { heading, complaints } = await screenOf(work, entry);
        assert.notEqual(heading, "", entry.advProgram);
        assert.deepEqual(complaints, [], entry.advProgram);
      }
      assert.deepEqual(work.faults, []);
      await work.close();
    });
  }

  test("shows nothing of what lies behind it to who comes by an address", async () => {
    const work = await workOf("clover");
    const offered = await menuOf(work);
    for (const entry of entries().filter(({ advId }) => !offered.includes(advId))) {
      const { complaints } = await screenOf(work, entry);
      assert.equal(complaints.length, 1, entry.advProgram);
      assert.match(complaints[0], /^This isn’t open to you/, entry.advProgram);
      assert.equal(await work.page.locator("main [role=row], main input").count(), 0, entry.advProgram);
    }
    await work.close();
  });
});
