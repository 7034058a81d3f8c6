import assert from "node:assert/strict";
import { test } from "node:test";
import { Parts } from "./parts";

const host = () => {
  const drawn = { times: 0 };
  const element = {
    requestUpdate: () => ++drawn.times,
    addController() {},
    removeController() {},
    updateComplete: Promise.resolve(true),
  };
  return { drawn, element };
};
const listOf = (all: readonly number[], atOnce = 2) => {
  const { element } = host();
  return new Parts<number>(element, async (start) => all.slice(start, start + atOnce), atOnce);
};

test("further parts stand behind the first, until one isn't full", async () => {
  const list = listOf([1, 2, 3]);
  await list.load();
  assert.deepEqual([list.rows, list.hasMore], [[1, 2], true]);
  await list.more();
  assert.deepEqual([list.rows, list.hasMore], [[1, 2, 3], false]);
});

test("from the beginning everything is read anew", async () => {
  const list = listOf([1, 2, 3]);
  await list.load();
  await list.more();
  await list.load();
  assert.deepEqual(list.rows, [1, 2]);
});

test("an answer to what is no longer wished is dropped", async () => {
  const answers: ((rows: number[]) => void)[] = [];
  const list = new Parts<number>(host().element, () => new Promise((resolve) => answers.push(resolve)), 2);
  const first = list.load();
  const second = list.load();
  answers[1]!([2]);
  await second;
  answers[0]!([1]);
  await first;
  assert.deepEqual([list.rows, list.busy], [[2], false]);
});

test("nothing more is asked for while an answer is waited for", async () => {
  const starts: number[] = [];
  let answer = (_rows: number[]): void => {};
  const read = (start: number): Promise<number[]> => {
    starts.push(start);
    return new Promise((resolve) => (answer = resolve));
  };
  const list = new Parts<number>(host().element, read, 1);
  const first = list.load();
  await list.more();
  assert.deepEqual([starts, list.busy], [[0], true]);
  answer([1]);
  await first;
  void list.more();
  assert.deepEqual(starts, [0, 1]);
});

test("a failure is told, and leaves what was read", async () => {
  const list = listOf([1, 2, 3]);
  await list.load();
  const failing = new Parts<number>(host().element, async () => Promise.reject(new Error("no line")), 2);
  failing.rows = list.rows;
  await failing.more();
  assert.equal((failing.fault as Error).message, "no line");
  assert.deepEqual([failing.rows, failing.busy], [[1, 2], false]);
});

test("whoever shows it is drawn before and behind each answer", async () => {
  const { drawn, element } = host();
  const list = new Parts<number>(element, async () => [1], 2);
  const reading = list.load();
  assert.equal(drawn.times, 1);
  await reading;
  assert.equal(drawn.times, 2);
});
