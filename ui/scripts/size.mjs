// Holds the built interface to its budgets, in bytes as they go over the line.
import { readdirSync, readFileSync, statSync } from "node:fs";
import { dirname, join } from "node:path";
import { fileURLToPath } from "node:url";

const dist = join(dirname(fileURLToPath(import.meta.url)), "../dist");
const manifest = JSON.parse(readFileSync(join(dist, ".vite/manifest.json"), "utf8"));
const packed = (name) => statSync(join(dist, `${name}.gz`)).size;

function filesOf(key, seen = new Set()) {
  const chunk = manifest[key];
  if (!chunk || seen.has(chunk.file)) return seen;
  seen.add(chunk.file);
  for (const css of chunk.css ?? []) seen.add(css);
  for (const other of chunk.imports ?? []) filesOf(other, seen);
  return seen;
}

const first = filesOf("src/shell/main.ts");
const sum = (names) => [...names].reduce((total, name) => total + packed(name), 0);
const lateOf = (part) =>
  readdirSync(dist).filter((name) => name.startsWith(`${part}-`) && /\.(js|css)$/.test(name) && !first.has(name));
const styles = [...first].filter((name) => name.endsWith(".css"));

// What a screen, a dialog or a panel brings besides, when it is opened first: the heaviest of them.
const parts = new Set(["editor", "code", "completion", "media"].flatMap(lateOf));
const screens = Object.entries(manifest)
  .filter(([, { isDynamicEntry }]) => isDynamicEntry)
  .map(([key]) => [key, sum([...filesOf(key)].filter((name) => !first.has(name) && !parts.has(name)))])
  .sort(([, one], [, other]) => other - one);

// Name, size, what it must not exceed, what is wished.
const kib = 1024;
const rows = [
  ["first load", sum(first), 250 * kib, 120 * kib],
  ["its styles", sum(styles), 20 * kib],
  ["editor", sum(lateOf("editor")), 140 * kib],
  ["code", sum(lateOf("code")), 170 * kib],
  ["completion", sum(lateOf("completion")), 25 * kib],
  ["media", sum(lateOf("media")), 45 * kib],
  [`the heaviest screen, ${screens[0][0]}`, screens[0][1], 25 * kib],
];

let over = false;
for (const [name, size, limit, wish] of rows) {
  const wished = wish ? `, wished ${wish / kib}` : "";
  console.log(`${name}: ${(size / kib).toFixed(1)} KiB of ${limit / kib}${wished}`);
  over ||= size > limit;
}
process.exit(over ? 1 : 0);
