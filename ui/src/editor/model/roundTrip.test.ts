import assert from "node:assert/strict";
import { readdirSync, readFileSync } from "node:fs";
import { join } from "node:path";
import { test } from "node:test";
import type { Node } from "prosemirror-model";
import { EditorState } from "prosemirror-state";
import { bodyText, openBody } from "./body";
import { schema } from "./schema";
import { write } from "./write";

declare const __root: string;

const rows = join(__root, "install/demo/rows");
const bodies = readdirSync(rows)
  .filter((name) => name.includes("bodies"))
  .flatMap((name) => [
    ...readFileSync(join(rows, name), "utf8").matchAll(/^\((\d+), (\d+), 1, 0, '((?:[^']|'')*)'\)/gm),
  ])
  .map(([, page, body, text]) => ({ name: `page ${page}, body ${body}`, text: text!.replaceAll("''", "'") }));

const kinds = (doc: Node) => {
  const found: string[] = [];
  doc.descendants((node) => void found.push(node.type.name));
  return found;
};

/** Where a text stands in a document. */
function find(doc: Node, text: string): number {
  let at = -1;
  doc.descendants((node, start) => {
    if (at < 0 && node.isText && node.text!.includes(text)) at = start + node.text!.indexOf(text);
  });
  return at;
}

const edited = (text: string, change: (state: EditorState) => Node) => {
  const { doc } = openBody(text);
  return bodyText(change(EditorState.create({ doc })), doc);
};

test("each body of the demo can be edited as it looks, and comes back as it was", () => {
  assert.ok(bodies.length > 150, `only ${bodies.length} bodies were found`);
  for (const { name, text } of bodies) {
    const { doc, exact } = openBody(text);
    assert.equal(write(doc), text, name);
    assert.ok(exact, name);
  }
});

test("each body of the demo comes back but for the word that was changed", () => {
  for (const { name, text } of bodies) {
    const word = /(?<=[>\s])[a-zäöü]{4,}(?=[\s.,<])/i.exec(
      text.replace(/<[^>]*>/g, (tag) => "<".padEnd(tag.length, "<")),
    )?.[0];
    if (!word || text.indexOf(word) !== text.lastIndexOf(word)) continue;
    assert.equal(
      edited(text, (state) => {
        const at = find(state.doc, word);
        return state.tr.insertText("changed", at, at + word.length).doc;
      }),
      text.replace(word, "changed"),
      name,
    );
  }
});

test("scripts, pictures made of lines, comments and template markers are islands", () => {
  const text =
    '<p>a <!--!now!--> b</p><script>if (1 < 2) go("<p>")</script><!-- note -->\n<p><svg><path d="M0 0"/></svg></p>';
  const { doc, exact } = openBody(text);
  assert.ok(exact);
  assert.deepEqual(
    kinds(doc).filter((kind) => /island/i.test(kind)),
    ["inlineIsland", "island", "island", "inlineIsland"],
  );
  assert.equal(write(doc), text);
});

test("known elements keep attributes that nobody knows", () => {
  const text = `<P ALIGN=center data-x='{"a":1}' onclick=go()>moss <FONT color=red FACE="Old Face">fern</FONT></P>`;
  assert.equal(
    edited(text, (state) => state.tr.insertText("!", find(state.doc, "fern") + 4).doc),
    text.replace("fern", "fern!"),
  );
});

test("table parts that the source leaves out stay out", () => {
  const text = "<table border=1><tr><td>moss<td>fern\r\n<tr><td>oak</table>";
  assert.ok(kinds(openBody(text).doc).includes("tablePart"));
  assert.equal(
    edited(text, (state) => state.tr.insertText("x", find(state.doc, "oak") + 3).doc),
    text.replace("oak", "oakx"),
  );
});

test("crossed elements in a line are one island, the words around them are words", () => {
  const text = "<p>moss <b>one<i>two</b>three</i> fern</p>";
  const { doc } = openBody(text);
  assert.deepEqual(kinds(doc), ["paragraph", "text", "inlineIsland", "text"]);
});

test("each line end stays what it was, new paragraphs take their neighbour's", () => {
  const text = "<p>a</p>\r\n<p>b\r\nc</p>\n<p>d</p>\r";
  const after = edited(text, (state) => {
    const second = state.doc.child(1);
    const at = state.doc.child(0).nodeSize + second.nodeSize;
    return state.tr.insert(at, schema.nodes.paragraph!.create({ before: second.attrs.before }, schema.text("new"))).doc;
  });
  assert.equal(after, "<p>a</p>\r\n<p>b\r\nc</p>\r\n<p>new</p>\n<p>d</p>\r");
});

test("a tag that was left open is closed when the text would read otherwise", () => {
  const after = edited(
    "<p>moss <b>fern",
    (state) => state.tr.insert(state.doc.content.size - 1, schema.text(" oak")).doc,
  );
  assert.equal(after, "<p>moss <b>fern</b> oak</p>");
});

test("closing tags in one part leaves the others as they were", () => {
  const after = edited(
    "<ul><li>one<li>two</ul><p>moss <b>fern",
    (state) => state.tr.insert(state.doc.content.size - 1, schema.text(" oak")).doc,
  );
  assert.equal(after, "<ul><li>one<li>two</ul><p>moss <b>fern</b> oak</p>");
});

test("an empty body gets a paragraph as soon as something is written, and stays empty until then", () => {
  assert.equal(
    edited("", (state) => state.doc),
    "",
  );
  assert.equal(
    edited("", (state) => state.tr.insertText("moss", 1).doc),
    "<p>moss</p>",
  );
});

test("a body that is one thing nobody knows opens as source", () => {
  assert.equal(openBody("<script>go()</script>").exact, false);
  assert.equal(openBody("<b>one<p>two</b>three</p>").exact, false);
});

test("a place for words takes words, and no blocks", () => {
  assert.ok(openBody("Five <em>hectares</em> &amp; more", "words").exact);
  assert.equal(openBody("<p>Five</p>", "words").exact, false);
  assert.equal(
    edited("Five", (state) => state.doc),
    "Five",
  );
});

test("characters keep the way they were written in, new ones are written safely", () => {
  const text = "<p>caf&eacute; & th&#233; &copy 1 > 0</p>";
  assert.equal(
    edited(text, (state) => state.tr.insertText("<&\u00a0>", find(state.doc, "1") + 1).doc),
    text.replace("1", "1&lt;&amp;&nbsp;&gt;"),
  );
});
