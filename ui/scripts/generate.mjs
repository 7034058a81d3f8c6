// Makes what the interface's sources are compiled with: the register's types, the words' numbers and places, the icons.
// Fails when a word in use lacks English or German.
import { existsSync, mkdirSync, readdirSync, readFileSync, writeFileSync } from "node:fs";
import { dirname, join } from "node:path";
import { fileURLToPath } from "node:url";
import { entriesSource } from "./entries.mjs";
import { registerSource } from "./register.mjs";
import { spriteOf } from "./sprite.mjs";
import { numbersOf, placesSource, wordsOf } from "./words.mjs";

const ui = join(dirname(fileURLToPath(import.meta.url)), "..");
const root = join(ui, "..");
const faults = [];

function write(name, content) {
  const path = join(ui, "src", name);
  mkdirSync(dirname(path), { recursive: true });
  if (!existsSync(path) || readFileSync(path, "utf8") !== content) writeFileSync(path, content);
}

const filesOf = (folder, ending) =>
  readdirSync(folder)
    .filter((name) => name.endsWith(ending))
    .sort()
    .map((name) => join(folder, name));
const texts = (folder, ending) => filesOf(folder, ending).map((path) => readFileSync(path, "utf8"));

write("api/register.gen.ts", registerSource(JSON.parse(readFileSync(join(root, "docs/operations.json"), "utf8"))));

write("shell/entries.gen.ts", entriesSource(readFileSync(join(root, "install/rows/06_advanced.sql"), "utf8")));

const words = wordsOf(texts(join(root, "install/rows"), ".sql"), faults);
const names = numbersOf(texts(join(ui, "src/labels/names"), ".ts"), faults);
write("labels/labels.gen.ts", placesSource(names, words, faults));

const lucide = join(ui, "node_modules/lucide-static/icons");
const wanted = texts(join(ui, "src/kit/icons"), ".json").flatMap((text) => JSON.parse(text));
const icons = spriteOf([...new Set(wanted)].sort(), (name) => join(lucide, `${name}.svg`), faults);
write("kit/icons.gen.svg", icons);
write(
  "kit/icons.gen.ts",
  `export type IconName =\n${[...new Set(wanted)]
    .sort()
    .map((name) => `  | "${name}"`)
    .join("\n")};\n`,
);

const menu = filesOf(join(root, "artwork/menu"), ".svg").map((path) => path.split("/").at(-1).replace(".svg", ""));
write(
  "kit/menu.gen.svg",
  spriteOf(menu, (name) => join(root, "artwork/menu", `${name}.svg`), faults),
);

for (const fault of faults) console.error(fault);
process.exit(faults.length ? 1 : 0);
