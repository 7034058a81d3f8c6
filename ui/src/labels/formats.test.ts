import assert from "node:assert/strict";
import { test } from "node:test";
import { dates, numbers, spans } from "./formats";

test("a format is made once for a language and its options", () => {
  assert.equal(dates("en-GB", { dateStyle: "full" }), dates("en-GB", { dateStyle: "full" }));
  assert.equal(numbers("de"), numbers("de"));
});

test("another language, or other options, are another format", () => {
  const moment = new Date(2026, 4, 3);
  assert.equal(dates("en-GB", { month: "long" }).format(moment), "May");
  assert.equal(dates("de", { month: "long" }).format(moment), "Mai");
  assert.equal(dates("de", { month: "short" }).format(new Date(2026, 0, 3)), "Jan");
  assert.equal(numbers("en-GB").format(1200.5), "1,200.5");
  assert.equal(numbers("de").format(1200.5), "1.200,5");
  assert.equal(numbers("de", { maximumFractionDigits: 0 }).format(1200.4), "1.200");
  assert.equal(spans("de", { numeric: "auto" }).format(-1, "day"), "gestern");
  assert.equal(spans("de").format(-1, "day"), "vor 1 Tag");
});
