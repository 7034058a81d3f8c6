import assert from "node:assert/strict";
import { test } from "node:test";
import { type Drawn, markupOf } from "./markup";

const told = ({ tag, attributes, children }: Drawn): string =>
  `${tag}${Object.keys(attributes).length ? JSON.stringify(attributes) : ""}(${children
    .map((child) => (typeof child === "string" ? child : told(child)))
    .join("|")})`;
const inner = (text: string) => told(markupOf(text)).slice(4, -1);

test("texts and known elements are kept, with their signs", () => {
  assert.equal(inner("A &amp; B<br>&#233;&nbsp;<b>c</b> &what;"), "A & B|br()|é\u00a0|b(c)| &what;");
});

test("what runs, loads or styles isn't drawn", () => {
  assert.equal(inner("a<script>alert('<b>')</script><style>b{}</style><iframe src='/x'>b</iframe>c"), "a|b|c");
  assert.equal(inner('<b onclick="x()" style="y">z</b><!-- <i>w</i> -->'), "b(z)");
  assert.equal(inner('<a href="javascript:alert(1)">go</a>'), "a(go)");
  assert.equal(inner('<SCRIPT src=x></SCRIPT ><img src=x onerror="y">'), 'img{"alt":""}()');
});

test("pictures of this server are shown, others aren't", () => {
  assert.equal(
    inner('<img src="/images/bg/a.jpg" alt="A &quot;B&quot;">'),
    'img{"src":"/images/bg/a.jpg","alt":"A \\"B\\""}()',
  );
  assert.equal(inner("<img src='//else.example/a.jpg'>"), 'img{"alt":""}()');
  assert.equal(inner("<img src=https://else.example/a.jpg>"), 'img{"alt":""}()');
});

test("elements that aren't closed, or were never open, break nothing", () => {
  assert.equal(inner("<ul><li>a<li>b</ul></div>c"), "ul(li(a|li(b)))|c");
  assert.equal(inner('a < b <b title="x > y">c</b>'), "a < b |b(c)");
});
