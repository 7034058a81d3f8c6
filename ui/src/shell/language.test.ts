import assert from "node:assert/strict";
import { beforeEach, test } from "node:test";
import { interfaceLanguage, L, t } from "../labels";
import { startWords, useLanguage } from "./language";

type Answer = {
  readonly ok: boolean;
  readonly status: number;
  readonly headers?: Headers;
  readonly json: () => Promise<unknown>;
};

const stored = new Map<string, string>();
const page = { lang: "en", dataset: {} as Record<string, string> };
const texts = (lang: string) => ({
  [L.save]: lang === "de" ? "Speichern" : lang === "en" ? "Save" : `save in ${lang}`,
});
const words = (lang: string): Answer => ({ ok: true, status: 200, json: async () => texts(lang) });
/** What the server answers, by language. */
let answers: Record<string, () => Promise<Answer>> = {};

Object.assign(globalThis, {
  document: { documentElement: page },
  localStorage: {
    getItem: (key: string) => stored.get(key) ?? null,
    setItem: (key: string, value: string) => void stored.set(key, value),
  },
  fetch: async (address: string) => {
    const lang = new URL(address, "http://site.test").searchParams.get("lang") ?? "";
    return (answers[lang] ?? (async () => words(lang)))();
  },
});

beforeEach(async () => {
  answers = {};
  stored.clear();
  page.lang = "en";
  page.dataset = {};
  await startWords();
});

const isEnglish = () => {
  assert.equal(interfaceLanguage(), "en");
  assert.equal(t(L.save), "Save");
  assert.equal(page.lang, "en");
  assert.equal(stored.size, 0);
};

test("a language is shown and remembered once its words are there", async () => {
  await useLanguage("de");
  assert.equal(t(L.save), "Speichern");
  assert.equal(page.lang, "de");
  assert.equal(stored.get("torvex.language"), "de en");
});

const failures: Record<string, () => Promise<Answer>> = {
  "no line": async () => Promise.reject(new TypeError("fetch failed")),
  "a refusal": async () => ({ ok: false, status: 403, json: async () => ({}) }),
  "half an answer": async () => ({ ok: true, status: 200, json: async () => JSON.parse('{"5": "Speich') }),
  "no object": async () => ({ ok: true, status: 200, json: async () => null }),
  "no words": async () => ({ ok: true, status: 200, json: async () => ({}) }),
  "other things than texts": async () => ({ ok: true, status: 200, json: async () => ({ 5: { of: "x" } }) }),
};
for (const [name, failure] of Object.entries(failures)) {
  test(`a language whose words fail to come changes nothing: ${name}`, async () => {
    answers = { de: failure };
    let kept = false;
    await assert.rejects(useLanguage("de", async () => (kept = true)));
    isEnglish();
    assert.equal(kept, false);
  });
}

test("a server that is busy is asked again for words", async () => {
  const busy = { ok: false, status: 429, headers: new Headers({ "Retry-After": "0.01" }), json: async () => ({}) };
  let asked = 0;
  answers = { de: async () => (++asked < 3 ? busy : words("de")) };
  await useLanguage("de");
  assert.equal(t(L.save), "Speichern");
  assert.equal(asked, 3);
});

test("a choice that can't be stored isn't shown", async () => {
  await assert.rejects(useLanguage("de", async () => Promise.reject(new Error("locked"))));
  isEnglish();
});

test("of two choices the later one counts, though its words come first", async () => {
  let come = (_: Answer) => {};
  answers = { de: () => new Promise<Answer>((resolve) => (come = resolve)) };
  const slow = useLanguage("de");
  await useLanguage("fr");
  come(words("de"));
  await slow;
  assert.equal(t(L.save), "save in fr");
  assert.equal(stored.get("torvex.language"), "fr en");
});

test("a remembered language whose words don't come gives way to the document's, for this time", async () => {
  await useLanguage("de");
  page.lang = "en";
  answers = { de: failures["a refusal"]! };
  await startWords();
  assert.equal(t(L.save), "Save");
  answers = {};
  page.lang = "en";
  await startWords();
  assert.equal(t(L.save), "Speichern");
});

test("without any words there is no interface", async () => {
  answers = { en: failures["no line"]!, de: failures["no line"]! };
  await assert.rejects(startWords());
});
