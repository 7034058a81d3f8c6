// Refusals as the register has them: their kinds, and the sentences in which they are told.
import assert from "node:assert/strict";
import { readFileSync } from "node:fs";
import { dirname, join } from "node:path";
import { fileURLToPath } from "node:url";
import { words } from "./fake.mjs";

const docs = join(dirname(fileURLToPath(import.meta.url)), "../../../docs/operations.json");
export const labels = words("en");
const { classes } = JSON.parse(readFileSync(docs, "utf8"));

// What the register has for a code: its kind, and the sentence.
function codeOf(operation, code) {
  const [className, name] = operation.split(".");
  const { operations } = classes.find((each) => each.name === className);
  const row = operations.find((each) => each.name === name).codes.find((each) => String(each.code) === code);
  assert.ok(row, `${operation} has no code ${code}`);
  return row;
}

export const holder = "Basil Crane";
const sentenceOf = (label) => labels[label].replace("{holder}", holder).replace("{name}", holder).replace("{title}", "Home").replace("{parent}", "Home");

export function refused(operation, code) {
  const { kind, label } = codeOf(operation, code);
  const detail = sentenceOf(label);
  return { status: 409, problem: { type: `/torvex/api/problems/${kind}`, title: "refused", status: 409, operation, code, detail, holder } };
}
