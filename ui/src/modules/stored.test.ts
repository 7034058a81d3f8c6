import assert from "node:assert/strict";
import { test } from "node:test";
import { Batch } from "../api";
import { Problem } from "../api/problem";
import { type Stored, saveOver } from "./stored";

interface Texts {
  readonly name: string;
}

/** A record whose list is changed by others as often as told before a save gets through; `names` are those that it has then. */
function record(names: readonly string[], changes: number) {
  const state = { saved: [] as string[], reads: 0, saves: 0 };
  const stored: Stored<Texts> = {
    now: async () => {
      const name = names[Math.min(state.reads++, names.length - 1)];
      return name === undefined ? undefined : { values: { name }, asBefore: () => new Batch() };
    },
    save: async ({ name }) => {
      if (++state.saves <= changes) throw new Problem({ status: 412 });
      state.saved.push(name);
    },
  };
  return { state, stored };
}

/** Only what was begun with is saved over. */
const over = (was: string) => (now: Texts) => (now.name === was ? { name: "mine" } : undefined);

test("a save goes on when only what stands beside the record was changed meanwhile", async () => {
  const { state, stored } = record(["as read"], 2);
  assert.equal(await saveOver(stored, over("as read")), true);
  assert.deepEqual(state, { saved: ["mine"], reads: 3, saves: 3 });
});

test("a record that was changed between reading and saving isn't saved over", async () => {
  const { state, stored } = record(["as read", "theirs"], 1);
  assert.equal(await saveOver(stored, over("as read")), false);
  assert.deepEqual(state, { saved: [], reads: 2, saves: 1 });
});

test("a record that is gone isn't saved, and a refusal is told at once", async () => {
  const gone = record([], 0);
  await assert.rejects(saveOver(gone.stored, over("as read")), { status: 409 });
  assert.equal(gone.state.saves, 0);
  const refused = record(["as read"], 0);
  const save = async () => {
    throw new Problem({ status: 409, detail: "A title is missing." });
  };
  await assert.rejects(saveOver({ ...refused.stored, save }, over("as read")), { message: "A title is missing." });
  assert.equal(refused.state.reads, 1);
});

test("who never gets through is told", async () => {
  const { state, stored } = record(["as read"], 100);
  await assert.rejects(saveOver(stored, over("as read")), { status: 412 });
  assert.equal(state.saves, 5);
});
