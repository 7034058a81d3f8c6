// The register of operations as types: what each takes, gives and refuses by.
const simple = {
  text: "string",
  "text format": "string | number",
  integer: "number",
  number: "number",
  boolean: "boolean",
  date: "string | null",
  empty: "null",
  grid: "Row[]",
};

const quoted = (text) => JSON.stringify(String(text));
const typeOf = (type) => simple[type] ?? "unknown";

function argumentsOf(operation) {
  const all = operation.arguments.filter((argument) => !argument.withheld);
  if (!all.length) return "Record<string, never>";
  return `{ ${all.map(({ name, type, ...rest }) => `${name}${"default" in rest || rest.filled ? "?" : ""}: ${typeOf(type)}`).join("; ")} }`;
}

function resultOf({ result }) {
  if (result.type !== "grid" || !result.columns) return typeOf(result.type);
  return `{ ${result.columns.map(({ name, type }) => `${quoted(name)}: ${typeOf(type)}`).join("; ")} }[]`;
}

const codesOf = (operation, refusal) =>
  (operation.codes ?? []).filter((code) => code.refusal === refusal).map(({ code }) => code);

function answerOf(operation) {
  const type = resultOf(operation);
  const codes = codesOf(operation, false).map((code) => (type === "string" ? quoted(code) : `${code}`));
  return codes.length && (type === "string" || type === "number") ? `Answer<${type}, ${codes.join(" | ")}>` : type;
}

const refusalsOf = (operation) => codesOf(operation, true).map(quoted).join(" | ") || "never";

function operationSource(of, operation) {
  return (
    `  /** ${operation.summary.replaceAll("*/", "")} */\n  ${quoted(`${of.name}.${operation.name}`)}: {\n` +
    `    with: ${argumentsOf(operation)};\n    answer: ${answerOf(operation)};\n    refusals: ${refusalsOf(operation)};\n  };`
  );
}

function propertiesSource(of) {
  const lines = of.properties.map(
    ({ name, type, settable }) => `    ${settable ? "" : "readonly "}${name}: ${typeOf(type)};`,
  );
  return lines.length ? `  ${of.name}: {\n${lines.join("\n")}\n  };` : `  ${of.name}: Record<string, never>;`;
}

export function registerSource({ classes }) {
  const operations = classes.flatMap((of) => of.operations.map((operation) => operationSource(of, operation)));
  const reads = classes.flatMap((of) =>
    of.operations.filter(({ effect }) => effect === "reads").map(({ name }) => `${of.name}.${name}`),
  );
  return `// Made of docs/operations.json.
import type { Answer, Row } from "./answer";

export type AnyRows = Row[];

export interface Operations {
${operations.join("\n")}
}

export interface Properties {
${classes.map(propertiesSource).join("\n")}
}

/** Operations that change nothing: they may run beside each other. */
export const reads: ReadonlySet<string> = new Set(
  ${quoted(reads.join(" "))}.split(" "),
);
`;
}
