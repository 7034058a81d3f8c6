import assert from "node:assert/strict";
import { test } from "node:test";
import { type Lane, Queue } from "./queue";

/** Works that end when they are told to. */
function works() {
  const queue = new Queue();
  const begun: string[] = [];
  const ends = new Map<string, () => void>();
  const run = (name: string, lane: Lane, signal?: AbortSignal) =>
    queue.run(
      lane,
      () =>
        new Promise<string>((resolve) => {
          begun.push(name);
          ends.set(name, () => resolve(name));
        }),
      signal,
    );
  const end = async (name: string) => {
    ends.get(name)!();
    await new Promise((resolve) => setTimeout(resolve));
  };
  return { run, begun, end };
}

test("reads run beside each other", () => {
  const { run, begun } = works();
  run("a", "read");
  run("b", "read");
  assert.deepEqual(begun, ["a", "b"]);
});

test("what changes something runs alone and in its order", async () => {
  const { run, begun, end } = works();
  run("read", "read");
  run("first", "write");
  run("second", "write");
  run("after", "read");
  assert.deepEqual(begun, ["read"]);
  await end("read");
  assert.deepEqual(begun, ["read", "first"]);
  await end("first");
  assert.deepEqual(begun, ["read", "first", "second"]);
  await end("second");
  assert.deepEqual(begun, ["read", "first", "second", "after"]);
});

test("the background waits until nobody else does, and never holds anybody up", async () => {
  const { run, begun, end } = works();
  run("first", "write");
  run("second", "write");
  run("draft", "background");
  run("pulse", "background");
  await end("first");
  assert.deepEqual(begun, ["first", "second", "draft"]);
  run("third", "write");
  await end("second");
  assert.deepEqual(begun, ["first", "second", "draft", "third"]);
  await end("draft");
  assert.deepEqual(begun.at(-1), "pulse");
});

test("a call that is cancelled while it waits is never sent", async () => {
  const { run, begun, end } = works();
  const control = new AbortController();
  run("first", "write");
  const cancelled = run("second", "write", control.signal);
  run("third", "write");
  control.abort();
  await assert.rejects(cancelled, { name: "AbortError" });
  await end("first");
  assert.deepEqual(begun, ["first", "third"]);
});

test("one that fails doesn't stop those behind it", async () => {
  const queue = new Queue();
  await assert.rejects(
    queue.run("write", () => Promise.reject(new Error("no"))),
    /no/,
  );
  assert.equal(await queue.run("write", () => Promise.resolve(1)), 1);
});
