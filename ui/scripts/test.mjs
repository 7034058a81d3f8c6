// Runs the tests beside the sources: compiles each and hands them to Node's own runner.
import { spawnSync } from "node:child_process";
import { readdirSync, rmSync } from "node:fs";
import { dirname, join, relative } from "node:path";
import { fileURLToPath } from "node:url";
import { build } from "esbuild";

const ui = join(dirname(fileURLToPath(import.meta.url)), "..");
const out = join(ui, "node_modules/.cache/tests");

const testsBelow = (folder) =>
  readdirSync(folder, { withFileTypes: true }).flatMap((entry) => {
    const path = join(folder, entry.name);
    if (entry.isDirectory()) return testsBelow(path);
    return entry.name.endsWith(".test.ts") ? [path] : [];
  });

const wanted = process.argv.slice(2);
const sources = testsBelow(join(ui, "src")).filter(
  (path) => !wanted.length || wanted.some((name) => path.includes(name)),
);
rmSync(out, { recursive: true, force: true });
await build({
  entryPoints: sources,
  outdir: out,
  outbase: join(ui, "src"),
  outExtension: { ".js": ".mjs" },
  bundle: true,
  platform: "node",
  format: "esm",
  target: "node18",
  sourcemap: "inline",
  packages: "external",
  loader: { ".css": "empty", ".svg": "empty" },
  define: { __root: JSON.stringify(join(ui, "..")) },
  logLevel: "error",
});
const built = sources.map((path) => join(out, relative(join(ui, "src"), path).replace(/\.ts$/, ".mjs")));
process.exit(
  spawnSync(process.execPath, ["--test", "--enable-source-maps", ...built], { stdio: "inherit" }).status ?? 1,
);
