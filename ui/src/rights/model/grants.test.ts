import assert from "node:assert/strict";
import { test } from "node:test";
import {
  changedEntries,
  changedGrants,
  chosenAbove,
  type EditRow,
  editGrants,
  entryGrants,
  fits,
  flagsOf,
  flippedNode,
  givenWider,
  hitsOf,
  nodesOf,
  takesFrom,
  withAccess,
  withEntries,
  withGrants,
  withScope,
  withTask,
} from "./grants";

const row = (site: string, lang: string, more: Partial<EditRow> = {}): EditRow => ({
  site,
  lang,
  onOff: 0,
  move: 0,
  publish: 0,
  approve: 0,
  edit: 0,
  scope: "",
  ...more,
});
const grants = editGrants([row("bg", "en", { edit: 1, publish: 1, scope: "bg.en.03" }), row("bg", "de")]);

test("flags stand in the order of the operation", () => {
  assert.equal(flagsOf(new Set(["edit", "move"])), "01001");
  assert.equal(flagsOf(grants.get("bg.en")!.tasks), "00101");
});

test("a row without rights is no grant", () => assert.deepEqual([...grants.keys()], ["bg.en"]));

test("a scope is its nodes, and none when it says all", () => {
  assert.deepEqual(nodesOf(" bg.en.03, bg.en.04 ,"), ["bg.en.03", "bg.en.04"]);
  assert.deepEqual(nodesOf("ALL"), []);
});

test("nothing has changed of what is put back", () => {
  const other = withTask(withTask(grants, "bg", "en", "move", true), "bg", "en", "move", false);
  assert.deepEqual(changedGrants(grants, other), []);
  assert.deepEqual(changedGrants(grants, withTask(grants, "bg", "de", "move", false)), []);
});

test("a task or a scope more is a change of its website alone", () => {
  assert.deepEqual(
    changedGrants(grants, withTask(grants, "bg", "en", "publish", false)).map(({ tasks }) => flagsOf(tasks)),
    ["00001"],
  );
  assert.deepEqual(
    changedGrants(grants, withScope(grants, "bg", "en", [])).map(({ scope }) => scope),
    [[]],
  );
  assert.deepEqual(
    changedGrants(grants, withTask(grants, "ri", "de", "edit", true)).map(({ site }) => site),
    ["ri"],
  );
});

test("a scope without any task is no change", () => {
  assert.deepEqual(changedGrants(grants, withScope(grants, "ri", "de", ["ri.de.01"])), []);
});

test("one's own changes lie on top of what others have changed meanwhile", () => {
  const mine = changedGrants(grants, withTask(grants, "bg", "en", "publish", false));
  const theirs = editGrants([row("bg", "en", { edit: 1, publish: 1, move: 1 }), row("ri", "en", { edit: 1 })]);
  const merged = withGrants(theirs, mine);
  assert.deepEqual(
    [...merged.values()].map(({ site, tasks }) => `${site} ${flagsOf(tasks)}`),
    ["bg 00001", "ri 00001"],
  );
});

test("a node that is chosen takes those below it along", () => {
  assert.deepEqual(flippedNode(["bg.en.03.01", "bg.en.04"], "bg.en.03"), ["bg.en.03", "bg.en.04"]);
  assert.deepEqual(flippedNode(["bg.en.03"], "bg.en.03"), []);
  assert.equal(chosenAbove(["bg.en.03"], "bg.en.03.01"), "bg.en.03");
  assert.equal(chosenAbove(["bg.en.03"], "bg.en.03"), "");
  assert.equal(chosenAbove(["bg.en.0"], "bg.en.03"), "");
});

const everywhere = { site: "", lang: "" };
const german = { site: "", lang: "de" };
const garden = { site: "bg", lang: "" };
const entries = entryGrants([
  { entry: 221, site: "", lang: "de", view: 1, edit: 0 },
  { entry: 111, site: "", lang: "", view: 1, edit: 1 },
  { entry: 112, site: "", lang: "", view: 0, edit: 0 },
]);

test("entries that give nothing are no grants", () => assert.equal(entries.size, 2));

test("a wider place gives what a narrower one needs no more", () => {
  assert.equal(givenWider(entries, 111, garden, "edit"), true);
  assert.equal(givenWider(entries, 221, { site: "bg", lang: "de" }, "view"), true);
  assert.equal(givenWider(entries, 221, { site: "bg", lang: "de" }, "edit"), false);
  assert.equal(givenWider(entries, 221, german, "view"), false, "not by itself");
  assert.equal(givenWider(entries, 221, everywhere, "view"), false);
});

test("changes of entries are told by their place", () => {
  const after = withAccess(withAccess(entries, 111, everywhere, "edit", false), 221, german, "view", true);
  assert.deepEqual(changedEntries(entries, after), [{ entry: 111, site: "", lang: "", view: true, edit: false }]);
});

test("so do changes of entries", () => {
  const mine = changedEntries(entries, withAccess(entries, 111, everywhere, "edit", false));
  const merged = withEntries(entryGrants([{ entry: 12, site: "", lang: "", view: 1, edit: 0 }]), mine);
  assert.deepEqual(
    [...merged.values()].map(({ entry, view, edit }) => [entry, view, edit]),
    [
      [12, true, false],
      [111, true, false],
    ],
  );
});

test("an entry can be given where its level reaches", () => {
  assert.deepEqual(
    [0, 1, 2].map((level) => fits(level, everywhere)),
    [true, true, true],
  );
  assert.deepEqual(
    [0, 1, 2].map((level) => fits(level, garden)),
    [false, true, true],
  );
  assert.deepEqual(
    [0, 1, 2].map((level) => fits(level, german)),
    [false, false, true],
  );
});

test("what is taken is told before what is given, with all whom it hits", () => {
  const grant = grants.get("bg.en")!;
  const hits = hitsOf(
    [
      {
        grant,
        hits: [
          { loginId: 5, name: "Reed", task: "move", now: 0, afterwards: 4 },
          { loginId: 5, name: "Reed", task: "publish", now: 212, afterwards: 0 },
          { loginId: 6, name: "Clover", task: "publish", now: 212, afterwards: 12 },
        ],
      },
    ],
    [
      {
        grant: { entry: 22, ...everywhere, view: true, edit: false },
        hits: [{ loginId: 5, name: "Reed", access: "edit", now: 1, afterwards: 0 }],
      },
    ],
  );
  assert.deepEqual(
    hits.map((hit) => [
      hit.taken,
      hit.task ?? hit.access,
      hit.people.map(({ name, pages }) => `${name} ${pages}`).join(),
    ]),
    [
      [true, "publish", "Reed 212,Clover 200"],
      [true, "edit", "Reed 0"],
      [false, "move", "Reed 4"],
    ],
  );
  assert.equal(takesFrom(hits, 5).length, 2);
  assert.equal(takesFrom(hits, 6).length, 1);
  assert.equal(takesFrom(hits, 7).length, 0);
});
