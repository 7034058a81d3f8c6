import assert from "node:assert/strict";
import { test } from "node:test";
import type { Node } from "prosemirror-model";
import { EditorState, type Transaction } from "prosemirror-state";
import { bodyText, openBody, reads } from "./body";
import { corpus, type Sample } from "./corpus";
import { elementAttrs, schema } from "./schema";
import { write } from "./write";

const samples = corpus(1000);
const shows = ({ text }: Sample) => /[^\s]/.test(text.replaceAll("&nbsp;", ""));

interface Place {
  at: number;
  inIsland: boolean;
}

function placeOf(doc: Node, word: string): Place | null {
  let found: Place | null = null;
  doc.descendants((node, at) => {
    if (found) return false;
    if (node.isText && node.text!.includes(word)) found = { at: at + node.text!.indexOf(word), inIsland: false };
    else if (node.attrs.raw?.includes(word)) found = { at, inIsland: true };
    return !found;
  });
  return found;
}

function withWord(doc: Node, place: Place, word: string, other: string): Node {
  const { tr } = EditorState.create({ doc });
  if (!place.inIsland) return tr.insertText(other, place.at, place.at + word.length).doc;
  const island = doc.nodeAt(place.at)!;
  return tr.setNodeMarkup(place.at, null, { ...island.attrs, raw: island.attrs.raw.replace(word, () => other) }).doc;
}

/** Some of a sample's words, its first and its last among them. */
const someWords = ({ words }: Sample) =>
  words.filter((_, i) => i % Math.ceil(words.length / 3) === 0 || i === words.length - 1);

test("a thousand texts come back as they were, or say that they would not", () => {
  const asSource = samples.filter((sample) => {
    const { doc, exact } = openBody(sample.text);
    if (exact && shows(sample)) assert.equal(write(doc), sample.text, sample.name);
    return !exact;
  });
  assert.ok(asSource.length < 80, `${asSource.length} would be opened as source`);
});

test("when a word is changed in one of a thousand texts, all else comes back byte for byte", (t) => {
  const counts = { words: 0, inText: 0, inIslands: 0, asSource: 0 };
  for (const sample of samples) {
    const { doc, exact } = openBody(sample.text);
    for (const word of someWords(sample)) {
      ++counts.words;
      if (!exact) {
        ++counts.asSource;
        continue;
      }
      const place = placeOf(doc, word);
      assert.ok(place, `${sample.name}: ${word} is lost`);
      ++counts[place.inIsland ? "inIslands" : "inText"];
      const changed = bodyText(withWord(doc, place, word, `${word}x`));
      assert.equal(changed, sample.text.replace(word, `${word}x`), sample.name);
    }
  }
  t.diagnostic(JSON.stringify(counts));
  assert.ok(counts.inText > counts.words / 2);
});

type Change = (tr: Transaction, at: number) => Transaction;

const changes: Record<string, Change> = {
  "made bold": (tr, at) => tr.addMark(at, at + 3, schema.marks.tag!.create(elementAttrs("strong"))),
  "followed by a new paragraph": (tr, at) => {
    const end = tr.doc.resolve(at).after();
    return tr.doc.resolve(at).parent.type.name === "run"
      ? tr
      : tr.insert(end, schema.nodes.paragraph!.create(null, schema.text("new")));
  },
  "cut out": (tr, at) => tr.delete(at, at + 2),
  "cut apart": (tr, at) => (tr.doc.resolve(at).parent.type.name === "paragraph" ? tr.split(at + 1) : tr),
};

for (const [name, change] of Object.entries(changes)) {
  test(`what a word ${name} is written as reads as what is shown`, () => {
    for (const sample of samples) {
      const { doc, exact } = openBody(sample.text);
      const word = sample.words.find((each) => exact && placeOf(doc, each)?.inIsland === false);
      if (!word) continue;
      const changed = change(EditorState.create({ doc }).tr, placeOf(doc, word)!.at).doc;
      const text = bodyText(changed);
      assert.ok(reads(text, changed), `${sample.name}: ${JSON.stringify(sample.text)} became ${JSON.stringify(text)}`);
    }
  });
}
