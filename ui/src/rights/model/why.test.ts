import assert from "node:assert/strict";
import { test } from "node:test";
import { whyOf } from "./why";

const row = (state: string, more = {}) => ({ state, roleId: 0, role: "", places: "", rights: "", titles: "", ...more });

test("a yes has the role that gives it first", () => {
  const why = whyOf([
    row("yes", { places: "bg.en.03.01", rights: "edit", titles: "Walks" }),
    row("elsewhere", { roleId: 2, role: "German desk", places: "bg.de,ri.de" }),
    row("gives", { roleId: 3, role: "Programme", places: "bg.en.03", titles: "Events" }),
  ]);
  assert.equal(why.yes, true);
  assert.equal(why.title, "Walks");
  assert.deepEqual(
    why.reasons.map(({ role, places }) => [role, places]),
    [
      ["Programme", ["bg.en.03"]],
      ["German desk", ["bg.de", "ri.de"]],
    ],
  );
  assert.equal(why.needs, undefined);
  assert.equal(why.plain, "");
});

test("a no says what she would need", () => {
  const why = whyOf([row("no"), row("otherRights", { rights: "move,edit" }), row("needs", { places: "bg.en" })]);
  assert.equal(why.yes, false);
  assert.deepEqual(why.reasons[0]?.rights, ["move", "edit"]);
  assert.equal(why.needs, "bg.en");
});

test("what no role decides is told plainly", () => {
  assert.equal(whyOf([row("yes"), row("administrator")]).plain, "administrator");
  assert.equal(whyOf([row("no"), row("noPage")]).plain, "noPage");
});

test("what is given everywhere has a place", () => {
  assert.deepEqual(whyOf([row("yes"), row("gives")]).reasons[0]?.places, [""]);
});
