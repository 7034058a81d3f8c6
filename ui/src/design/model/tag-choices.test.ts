import assert from "node:assert/strict";
import { test } from "node:test";
import { choicesAt, type Side, type TypedTag, typedAt } from "./tag-choices";

/** A text with "|" where the cursor is. */
function at(marked: string, isAsked = false): { source: string; typed: TypedTag | undefined } {
  const place = marked.indexOf("|");
  const source = marked.slice(0, place) + marked.slice(place + 1);
  return { source, typed: typedAt(source, place, isAsked) };
}

function offered(marked: string, side: Side = "content", newsflashes: number[] = []) {
  const { source, typed } = at(marked, true);
  return choicesAt(source, typed as TypedTag, side, newsflashes);
}
const labels = (marked: string, side: Side = "content", newsflashes: number[] = []) =>
  offered(marked, side, newsflashes).map(({ label }) => label);

/** The text with a choice made, and "|" where the cursor is then. */
function chosen(marked: string, label: string): string {
  const { source, typed } = at(marked, true);
  const choice = offered(marked).find((one) => one.label === label);
  assert.ok(typed && choice, label);
  return `${source.slice(0, typed.from)}${choice.first}|${choice.last}${source.slice(typed.to)}`;
}

test("a tag begins with its sign, or with a part of that", () => {
  for (const begun of ["<|", "<p><!|", "<!-|", "<!--|", "<!--!|", "<tor|", "<!--!torvex_h|", 'href="<!--!torvex_ne|"'])
    assert.ok(at(begun).typed, begun);
  for (const other of ["|", "torvex|", "<p>|", "<p |", "<!doc|", "<!--!torvex_up!-->|", "a < |"])
    assert.equal(at(other).typed, undefined, other);
  assert.ok(at("<p>torvex|", true).typed, "where it is asked for, it may stand anywhere");
});

test("a choice takes the place of what is typed of it", () => {
  assert.equal(chosen("<p><tor|</p>", "torvex_breadcrumb"), "<p><!--!torvex_breadcrumb!-->|</p>");
  assert.equal(chosen("<!--|", "torvex_breadcrumb"), "<!--!torvex_breadcrumb!-->|");
  assert.equal(chosen("<!--!bread|\n", "torvex_breadcrumb"), "<!--!torvex_breadcrumb!-->|\n");
  assert.equal(chosen("a|b", "torvex_breadcrumb"), "a<!--!torvex_breadcrumb!-->|b");
  assert.equal(chosen("<!--!torvex_|up!--><p>", "torvex_next"), "<!--!torvex_next!-->|<p>");
});

test("a block comes with its end, unless it has one", () => {
  assert.equal(
    chosen("<|", "torvex_userLoggedIn_start"),
    "<!--!torvex_userLoggedIn_start!-->|<!--!torvex_userLoggedIn_end!-->",
  );
  assert.equal(chosen("<!--!torvex_ad|!-->x", "torvex_admin_start"), "<!--!torvex_admin_start!-->|x");
});

test("the ends of blocks that are open come first, the last one ahead", () => {
  const source = "<!--!a_start!--><!--!torvex_head_start!--><!--!b_start!--><!--!b_end!-->";
  assert.deepEqual(labels(`${source}<|`).slice(0, 2), ["torvex_head_end", "a_end"]);
  assert.deepEqual(labels(`${source}<|<!--!torvex_head_end!-->`).slice(0, 1), ["a_end"]);
  assert.ok(!labels(`<|${source}`)[0]?.endsWith("_end"), "what begins behind the cursor isn't open there");
  assert.equal(chosen("<!--!a_start!--><|", "a_end"), "<!--!a_start!--><!--!a_end!-->|");
});

test("numbers go on where they are free", () => {
  const bodies = labels("<!--!torvex_body_1!--><!--!TORVEX_BODY_2_START!--><!--!torvex_body_4!--><|");
  assert.ok(bodies.includes("torvex_body_3") && bodies.includes("torvex_body_3_start"));
  assert.ok(!bodies.includes("torvex_body") && !bodies.includes("torvex_body_1"));
  const areas = labels("<!--!torvex_content!--><!--!torvex_content_1!--><|", "base");
  assert.ok(areas.includes("torvex_content") && areas.includes("torvex_content_2"));
  assert.ok(labels("<!--!dynMenu_level1_start!--><|").includes("dynMenu_level2_start"));
});

test("newsflashes are offered by the numbers that the website has", () => {
  const numbers = (known: number[]) =>
    labels("<!--!torvex_newsflash_1!--><|", "base", known).filter((label) => label.startsWith("torvex_newsflash"));
  assert.deepEqual(numbers([1, 7]), ["torvex_newsflash_1", "torvex_newsflash_7"]);
  assert.deepEqual(numbers([]), ["torvex_newsflash_2"]);
});

test("base templates and templates have each their own", () => {
  const [base, content] = [labels("<!--!|", "base"), labels("<!--!|", "content")];
  assert.ok(base.includes("torvex_head") && !base.includes("torvex_head_start"));
  assert.ok(content.includes("torvex_head_start") && !content.includes("torvex_head"));
  assert.ok(content.includes("nfTitle") && !base.includes("nfTitle"));
  assert.ok(base.includes("search_result_start") && content.includes("search_result_start"));
});

test("behind a plain sign only what begins so is offered, as HTML may be meant", () => {
  assert.deepEqual(labels("<bread|"), ["torvex_breadcrumb", "msgB_breadcrumb"]);
  assert.deepEqual(labels("<TORVEX_BR|"), ["torvex_breadcrumb"]);
  assert.deepEqual(labels("<div|"), []);
});
