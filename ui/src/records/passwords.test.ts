import assert from "node:assert/strict";
import { test } from "node:test";
import { setWords } from "../labels";
import { Judgement } from "./passwords";

setWords("en", { 5890: "It is common." });

/** A judgement whose questions are answered by hand. */
function judged() {
  const asked: { password: string; answer: (isCommon: boolean) => void; fail: () => void }[] = [];
  let told = 0;
  const asks: (() => void)[] = [];
  const judgement = new Judgement(
    () => ++told,
    (password) =>
      new Promise((answer, fail) => {
        asked.push({ password, answer, fail: () => fail(new Error("no line")) });
        asks.shift()?.();
      }),
    0,
  );
  const nextQuestion = () => new Promise<void>((resolve) => asks.push(resolve));
  const settled = () => new Promise((resolve) => setImmediate(resolve));
  return { judgement, asked, nextQuestion, settled, told: () => told };
}

test("a common password is told once it is known", async () => {
  const { judgement, asked, nextQuestion, settled, told } = judged();
  judgement.typed("qwerty");
  assert.equal(judgement.wrong, "");
  await nextQuestion();
  asked[0]!.answer(true);
  await settled();
  assert.equal(judgement.wrong, "It is common.");
  assert.equal(told(), 1);
});

test("only what is typed last is asked for, and the next letter takes the sentence away", async () => {
  const { judgement, asked, nextQuestion, settled } = judged();
  judgement.typed("qwert");
  judgement.typed("qwerty");
  await nextQuestion();
  assert.deepEqual(
    asked.map(({ password }) => password),
    ["qwerty"],
  );
  asked[0]!.answer(true);
  await settled();
  judgement.typed("qwerty and fern");
  assert.equal(judgement.wrong, "");
});

test("an answer that comes late says nothing of another password", async () => {
  const { judgement, asked, nextQuestion, settled, told } = judged();
  judgement.typed("qwerty");
  await nextQuestion();
  judgement.typed("");
  asked[0]!.answer(true);
  await settled();
  assert.equal(judgement.wrong, "");
  assert.equal(told(), 0);
});

test("a password that nobody can judge now is no common one", async () => {
  const { judgement, asked, nextQuestion, settled } = judged();
  judgement.typed("qwerty");
  await nextQuestion();
  asked[0]!.fail();
  await settled();
  assert.equal(judgement.wrong, "");
});
