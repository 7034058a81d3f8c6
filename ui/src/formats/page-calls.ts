/** What a link of the edit view asks of its frame. */
export type PageCall =
  | { kind: "page"; page: string }
  | { kind: "viewLink"; address: string }
  | { kind: "popup"; address: string; title: string }
  | { kind: "editBody"; nodeId: string; bodyId: number }
  | { kind: "setupBody"; nodeId: string; bodyId: number; type: string; feed: string }
  | { kind: "copyBody"; nodeId: string; bodyId: number };

/** The arguments of a call: texts in quotes, or numbers. */
function argumentsOf(list: string): string[] {
  const found = list.matchAll(/\s*(?:'((?:[^'\\]|\\.)*)'|"((?:[^"\\]|\\.)*)"|([^,'"]+))\s*(?:,|$)/g);
  return [...found].map(([, single, double, bare]) => (single ?? double ?? bare ?? "").replace(/\\(.)/g, "$1").trim());
}

function callAt(script: string, name: string): string[] | null {
  const at = script.indexOf(`${name}(`);
  if (at < 0) return null;
  const from = at + name.length + 1;
  let quote = "";
  for (let i = from; i < script.length; ++i) {
    const letter = script[i]!;
    if (letter === "\\") ++i;
    else if (quote) quote = letter === quote ? "" : quote;
    else if (letter === "'" || letter === '"') quote = letter;
    else if (letter === ")") return argumentsOf(script.slice(from, i));
  }
  return null;
}

const valueSet = (script: string, name: string) =>
  new RegExp(`${name.replaceAll(".", "\\.")}\\s*=\\s*['"]?([^'";]*)`).exec(script)?.[1]?.trim() ?? "";

/** Reads the script of a link as data; null when it asks for nothing that is known. */
export function pageCallOf(script: string): PageCall | null {
  const page = callAt(script, "top.page");
  if (page) return { kind: "page", page: page[0] ?? "" };
  const view = callAt(script, "top.viewLink");
  if (view) return { kind: "viewLink", address: view[0] ?? "" };
  const popup = callAt(script, "top.popup");
  if (popup) return { kind: "popup", address: popup[0] ?? "", title: popup[1] ?? "" };
  const edit = callAt(script, "top.link.editBody");
  if (edit) return { kind: "editBody", nodeId: edit[0] ?? "", bodyId: Number(edit[1]) };
  const setup = callAt(script, "top.link.setupBody");
  if (setup)
    return {
      kind: "setupBody",
      nodeId: setup[0] ?? "",
      bodyId: Number(setup[1]),
      type: setup[2] ?? "",
      feed: setup[3] ?? "",
    };
  if (!script.includes("top.link.copyBody(")) return null;
  return {
    kind: "copyBody",
    nodeId: valueSet(script, "top.content.nodeId"),
    bodyId: Number(valueSet(script, "top.content.bodyId")),
  };
}
