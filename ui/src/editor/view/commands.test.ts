import assert from "node:assert/strict";
import { test } from "node:test";
import type { Node } from "prosemirror-model";
import { type Command, EditorState, TextSelection } from "prosemirror-state";
import { bodyText, openBody } from "../model/body";
import * as commands from "./commands";
import { keys } from "./keys";

/** The place of a mark "|" in the text, or what lies between two, is chosen; then the commands run. */
function after(text: string, ...steps: Command[]): string {
  const opened = openBody(text).doc;
  const marks: number[] = [];
  opened.descendants((node, at) => {
    for (let i = 0; node.isText && i < node.text!.length; ++i) if (node.text![i] === "|") marks.push(at + i);
  });
  let state = EditorState.create({ doc: opened });
  const { tr } = state;
  for (const at of [...marks].reverse()) tr.delete(at, at + 1);
  const [from = 1, to = from + 1] = marks;
  state = state.apply(tr);
  state = EditorState.create({
    doc: state.doc,
    selection: TextSelection.create(state.doc, from, marks.length > 1 ? to - 1 : from),
  });
  for (const step of steps)
    assert.ok(
      step(state, (change) => (state = state.apply(change))),
      `${step.name} does nothing`,
    );
  return bodyText(state.doc, opened as Node);
}

const type =
  (words: string): Command =>
  (state, dispatch) => {
    dispatch?.(state.tr.insertText(words));
    return true;
  };
const enter = keys.Enter!;

test("Enter breaks a paragraph into two of its kind", () => {
  assert.equal(
    after('<p class="a" id="x">moss|fern</p>\n<p>oak</p>', enter),
    '<p class="a" id="x">moss</p><p class="a">fern</p>\n<p>oak</p>',
  );
  assert.equal(after("<div>\n  <p>moss|fern</p>\n</div>", enter), "<div>\n  <p>moss</p>\n  <p>fern</p>\n</div>");
});

test("a paragraph follows a heading", () => {
  assert.equal(after("<h2>moss|</h2>", enter, type("fern")), "<h2>moss</h2><p>fern</p>");
});

test("words of the body become paragraphs when there are two of them", () => {
  assert.equal(after("moss|fern", enter), "<p>moss</p><p>fern</p>");
});

test("Enter in a list makes an entry, with plain words when the others have them", () => {
  assert.equal(after("<ul>\n  <li>moss|fern</li>\n</ul>", enter), "<ul>\n  <li>moss</li>\n  <li>fern</li>\n</ul>");
  assert.equal(
    after('<ul><li class="a">moss|</li></ul>', enter, type("fern")),
    '<ul><li class="a">moss</li><li class="a">fern</li></ul>',
  );
  assert.equal(
    after("<ul><li><p>moss|</p></li></ul>", enter, type("fern")),
    "<ul><li><p>moss</p></li><li><p>fern</p></li></ul>",
  );
});

test("Enter in an empty entry leaves the list", () => {
  assert.equal(after("<ul><li>moss|</li></ul>", enter, enter, type("fern")), "<ul><li>moss</li></ul><p>fern</p>");
});

test("Tab puts an entry below the one before it, Shift+Tab takes it out again", () => {
  assert.equal(
    after("<ul><li>moss</li><li>fern|</li></ul>", keys.Tab!),
    "<ul><li>moss<ul><li>fern</li></ul></li></ul>",
  );
  assert.equal(
    after("<ul><li>moss<ul><li>fern|</li></ul></li></ul>", keys["Shift-Tab"]!),
    "<ul><li>moss</li><li>fern</li></ul>",
  );
});

test("a list is made of paragraphs and back, and changes its kind", () => {
  assert.equal(after("<p>moss|</p>", commands.toggleList("ul")), "<ul><li>moss</li></ul>");
  assert.equal(after("<p>|moss</p><p>fern|</p>", commands.toggleList("ol")), "<ol><li>moss</li><li>fern</li></ol>");
  assert.equal(after("<ul><li>moss|</li></ul>", commands.toggleList("ul")), "<p>moss</p>");
  assert.equal(
    after('<ul class="a"><li>moss|</li></ul>', commands.toggleList("ol")),
    '<ol class="a"><li>moss</li></ol>',
  );
});

test("bold and its like are put on and taken off, in whichever element they stand", () => {
  assert.equal(after("<p>|moss| fern</p>", commands.toggleTag("strong")), "<p><strong>moss</strong> fern</p>");
  assert.equal(after('<p><b class="x">|moss|</b> fern</p>', commands.toggleTag("strong")), "<p>moss fern</p>");
  assert.equal(after("<p>moss |</p>", commands.toggleTag("em"), type("fern")), "<p>moss <em>fern</em></p>");
});

test("a line becomes a heading and keeps its attributes", () => {
  assert.equal(after('<p class="a">moss|</p>', commands.setLine("h2")), '<h2 class="a">moss</h2>');
  assert.equal(after("moss|", commands.setLine("h3")), "<h3>moss</h3>");
});

test("a link is made, led elsewhere with all its attributes, and taken away", () => {
  assert.equal(after("<p>|moss|</p>", commands.setLink("page(12)")), '<p><a href="page(12)">moss</a></p>');
  assert.equal(
    after("<p><a class=x HREF='page(3)' id=y>mo|ss</a> fern</p>", commands.setLink("page(12)")),
    '<p><a class=x href="page(12)" id=y>moss</a> fern</p>',
  );
  assert.equal(after("<p><a [href]>mo|ss</a></p>", commands.setLink("page(12)")), '<p><a href="page(12)">moss</a></p>');
  assert.equal(after("<p><a href=x>mo|ss</a> fern</p>", commands.removeLink), "<p>moss fern</p>");
  assert.equal(
    after("<p>moss |</p>", commands.setLink("https://example.org/", "there", "_blank")),
    '<p>moss <a href="https://example.org/" target="_blank">there</a></p>',
  );
});

test("looks are set and taken off", () => {
  assert.equal(
    after("<p>|moss|</p>", commands.setStyle("color", "#b3261e")),
    '<p><span style="color: #b3261e">moss</span></p>',
  );
  assert.equal(after("<p><b>|moss</b> <font color=red>fern|</font></p>", commands.clearLooks), "<p>moss fern</p>");
  assert.equal(after("<p>moss|</p>", commands.setLineClass("intro")), '<p class="intro">moss</p>');
});

test("a rule, a quotation and a break are put in", () => {
  assert.equal(after("<p>moss|</p>", commands.quote), "<blockquote><p>moss</p></blockquote>");
  assert.equal(after("<p>moss|fern</p>", commands.breakLine), "<p>moss<br>fern</p>");
});
