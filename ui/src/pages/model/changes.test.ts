import assert from "node:assert/strict";
import { test } from "node:test";
import { imagesWithoutAlt, onlyMarkUp, pieces, wordCounts, wordsOf } from "./changes";

test("a comparison tells which words came and went, and puts both texts together again", () => {
  const live = "We meet at the palm house at ten.";
  const design = "We meet at the old palm house at eleven.";
  const found = pieces(live, design);
  assert.equal(
    found
      .filter((piece) => piece.kind !== "new")
      .map((piece) => piece.text)
      .join(""),
    live,
  );
  assert.equal(
    found
      .filter((piece) => piece.kind !== "gone")
      .map((piece) => piece.text)
      .join(""),
    design,
  );
  assert.deepEqual(wordCounts(live, design), { more: 2, fewer: 1 });
});

test("very long texts stand whole beside each other", () => {
  assert.deepEqual(
    pieces("a".repeat(40000), "b".repeat(40000)).map((piece) => piece.kind),
    ["gone", "new"],
  );
});

test("the words of a body have no mark-up, no scripts, and a line for each block", () => {
  const html =
    '<h2>Autumn</h2><p>Bring <b>boots</b> &amp; a&nbsp;coat<br>and 2 &lt; 3</p><script>x = "<p>"</script><!-- no -->';
  assert.equal(wordsOf(html), "Autumn\nBring boots & a coat\nand 2 < 3");
});

test("a change of mark-up alone is told as such", () => {
  const difference = { part: "body", bodyId: 1, design: "<p><b>ten</b></p>", live: "<p>ten</p>" };
  assert.equal(onlyMarkUp(difference), true);
  assert.equal(onlyMarkUp({ ...difference, design: "<p>eleven</p>" }), false);
});

test("pictures without an alternative text are counted, decoration isn't", () => {
  assert.equal(
    imagesWithoutAlt('<img src="a"><IMG SRC="b" ALT=""><img alt="A rose > a tulip" src="c"><img title=" alt=">'),
    1 + 1,
  );
  assert.equal(imagesWithoutAlt("<p>no picture</p>"), 0);
});
