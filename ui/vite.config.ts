import { readdirSync, readFileSync, writeFileSync } from "node:fs";
import { join } from "node:path";
import { brotliCompressSync, constants, gzipSync } from "node:zlib";
import { defineConfig, type Plugin } from "vite";

/** What can be packed goes out packed: the server never does it itself. */
function packed(): Plugin {
  let folder = "";
  return {
    name: "packed",
    apply: "build",
    configResolved: (config) => {
      folder = config.build.outDir;
    },
    closeBundle: () => {
      for (const name of readdirSync(folder).filter((name) => /\.(js|css|svg|json)$/.test(name))) {
        const content = readFileSync(join(folder, name));
        const params = { [constants.BROTLI_PARAM_QUALITY]: 11, [constants.BROTLI_PARAM_SIZE_HINT]: content.length };
        writeFileSync(join(folder, `${name}.br`), brotliCompressSync(content, { params }));
        writeFileSync(join(folder, `${name}.gz`), gzipSync(content, { level: 9 }));
      }
    },
  };
}

/** Libraries that come late, by the chunk that they come with. */
const late: [RegExp, string][] = [
  [/node_modules\/(prosemirror-|orderedmap|rope-sequence|w3c-keyname)/, "editor"],
  // Of its own, so that it stands beneath the languages, which name it, and on top of the editor.
  [/node_modules\/@codemirror\/autocomplete/, "completion"],
  [/node_modules\/(@codemirror\/lang-|@lezer\/(html|css|javascript))/, "code-languages"],
  [/node_modules\/(@codemirror|@lezer|@marijn|crelt|style-mod)/, "code"],
  [/node_modules\/(parse5|entities)/, "editor"],
  [
    /node_modules\/(tus-js-client|js-base64|url-parse|requires-port|querystringify|proper-lockfile|retry|signal-exit|lodash\.throttle|combine-errors|custom-error-instance|lodash)/,
    "media",
  ],
  [/node_modules\/axe-core/, "checks"],
];

export default defineConfig({
  base: "/torvex/ui/",
  plugins: [packed()],
  build: {
    outDir: "dist",
    emptyOutDir: true,
    manifest: true,
    target: "es2022",
    assetsInlineLimit: 0,
    modulePreload: { polyfill: false },
    reportCompressedSize: false,
    rollupOptions: {
      input: "src/shell/main.ts",
      output: {
        entryFileNames: "[name]-[hash].js",
        chunkFileNames: "[name]-[hash].js",
        assetFileNames: "[name]-[hash][extname]",
        manualChunks: (id) => late.find(([pattern]) => pattern.test(id))?.[1],
      },
    },
  },
});
