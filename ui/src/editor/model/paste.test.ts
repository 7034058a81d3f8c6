import assert from "node:assert/strict";
import { test } from "node:test";
import { cleanHtml, ownAddresses, pasted, pastedText, wordsOf } from "./paste";

test("structure stays, looks go", () => {
  const html =
    '<h2 style="color:red" class="x">Plan</h2><p class=MsoNormal style="margin:0">We <b style="x">meet</b> <i>here</i><o:p></o:p></p><ul><li><font size=2>one</font></li></ul>';
  assert.equal(cleanHtml(html), "<h2>Plan</h2><p>We <strong>meet</strong> <em>here</em></p><ul><li>one</li></ul>");
});

test("what programs say with styles becomes elements", () => {
  assert.equal(
    cleanHtml(
      '<b style="font-weight:normal"><span style="font-weight:700">bold</span> <span style="font-style:italic;color:#000">slanted</span></b>',
    ),
    "<strong>bold</strong> <em>slanted</em>",
  );
});

test("scripts, styles and handlers don't come along", () => {
  assert.equal(
    cleanHtml(
      '<p onclick="go()">a<script>go()</script><style>p{}</style><a href="javascript:go()">b</a><img src="javascript:x" onerror=go()></p>',
    ),
    "<p>ab</p>",
  );
  assert.equal(
    cleanHtml('<a href=" javascript:go()">b</a><a href="https://example.org/">c</a>'),
    'b<a href="https://example.org/">c</a>',
  );
});

test("pictures get an alternative text, tables keep their spans", () => {
  assert.equal(
    cleanHtml(
      '<img src="/images/bg/a.jpg" style="x"><table border=1><tr><td colspan=2 bgcolor=red>a</td></tr></table>',
    ),
    '<img src="/images/bg/a.jpg" alt=""><table><tbody><tr><td colspan="2">a</td></tr></tbody></table>',
  );
});

test("divisions of words are paragraphs, empty ones nothing", () => {
  assert.equal(cleanHtml("<div><div>one</div><div><br></div><div>two</div></div>"), "<p>one</p><p>two</p>");
});

test("only what was chosen counts", () => {
  assert.equal(
    cleanHtml("<html><body>\r\n<!--StartFragment--><em>word</em><!--EndFragment-->\r\n</body></html>"),
    "<em>word</em>",
  );
});

test("one paragraph joins the line that it is pasted into, several stay paragraphs", () => {
  assert.equal(pasted("<p>a <b>b</b></p>").openStart, 1);
  assert.equal(pasted("<p>a</p><p>b</p>").openStart, 0);
  assert.equal(pastedText("one\ntwo").content.childCount, 1);
  assert.equal(pastedText("one\n\ntwo & <three>").content.childCount, 2);
});

test("a place for words gets the words", () => {
  assert.equal(wordsOf(pasted("<h2>Plan</h2><p>We\n <b>meet</b></p>")), "Plan We meet");
});

test("the site's own pictures are named without its address", () => {
  assert.equal(
    ownAddresses('<img src="http://127.0.0.1:8080/images/bg/a.jpg">', "http://127.0.0.1:8080"),
    '<img src="/images/bg/a.jpg">',
  );
});
