import assert from "node:assert/strict";
import { readdirSync, readFileSync, statSync } from "node:fs";
import { join } from "node:path";
import { test } from "node:test";
import { TAG_NAMES } from "./tag-names";

declare const __root: string;

const filesBelow = (path: string): string[] =>
  statSync(path).isDirectory() ? readdirSync(path).flatMap((name) => filesBelow(join(path, name))) : [path];

/** Where the server fills templates of websites. */
const sources = [
  "src/delivery/PageAssembly.cpp",
  "src/delivery/BodyPlaces.cpp",
  "src/modules",
  "src/search",
  "src/templates/HTMLTemplate.cpp",
  "src/pages/visitors",
]
  .flatMap((path) => filesBelow(join(__root, path)))
  .filter((path) => /\.(cpp|h)$/.test(path));

const FAMILY =
  /^(?:(?:torvex|search|msgB|dynMenu|forum|topic|reaction|form|fault|answered)_\w+|nf[A-Z]\w*|dynMenu|IE|NS|spacer?|[UL]Case\(\w+\))$/;

/** Of the same families, but columns, fields of forms and of sessions, styles, parameters and folders. */
const NO_TAGS = new RegExp(
  `^(?:${[
    "torvex_(?:search_\\w+|msgBoard|username|password|pageId|login(?:Location|Target|TargetEnforced)|logoutTarget)",
    "forum_(?:archiveAfter|archiveVisible|ask\\w+|author|bgcolor|deleted|email\\w*|faults|homepage|hotPeriod|id|lang|last|pageSize)",
    "forum_(?:reactionDate|reactionTitle|reactionsOnline|sendEmail|site|text|thread|title|token|topicDate|topicTitle|words)",
    "topic_(?:dateCreation|forumId|id|last|online|isLive)",
    "reaction_(?:date|online|reference|email|topicId|forumId)",
    "search_(?:catalogLocation|catalogName|derivation|documentScopes|documentTypes|include\\w+|match|maxResults|no|pageScopes|pageTo)",
    "search_(?:properties|resultsPerPage|security|serverName|sortOrder|webshare|wordLength)",
    "msgB_(?:Id|id|lang|site|pageSize|archiveVisible|imageAlignment|itemDate|itemDesc|itemId|itemImage|itemLinkText|itemNewsflash|itemOnline|itemOrder|linkText|deleted)",
  ].join("|")})$`,
);

/** Names as the sources have them: their families end in "_i", or in what a number is put behind. */
function namesIn(source: string): string[] {
  const literals = [...source.matchAll(/"([\w()]+?)(?:!-->)?"/g)].map(([, name = ""]) => name);
  const bodies = [...source.matchAll(/"<!--!(torvex_\w+_)"/g)].map(([, name = ""]) => name);
  const days = [...source.matchAll(/\.day\("(\w+)"/g)].flatMap(([, name]) =>
    ["day", "month", "year", "iso"].map((part) => `${name}_${part}`),
  );
  return [...literals, ...bodies, ...days].map((name) => name.replace(/_i?$/, ""));
}

const asked = new Set(
  sources
    .flatMap((path) => namesIn(readFileSync(path, "utf8")))
    .filter((name) => FAMILY.test(name) && !NO_TAGS.test(name)),
);
const offered = new Set(TAG_NAMES.map(({ name }) => name));

test("what is offered is what the server fills", () => {
  assert.ok(asked.size > 150, "the sources are read");
  assert.deepEqual(
    [...asked].filter((name) => !offered.has(name)),
    [],
    "filled, but not offered",
  );
  assert.deepEqual(
    [...offered].filter((name) => !asked.has(name)),
    [],
    "offered, but not filled",
  );
});

test("no name stands twice for the same kind of template and the same form", () => {
  const forms = TAG_NAMES.flatMap(({ name, form, only }) =>
    (only ? [only] : ["base", "content"]).flatMap((side) =>
      (form === "both" ? ["tag", "block"] : [form]).map((one) => `${side} ${one} ${name.toLowerCase()}`),
    ),
  );
  assert.deepEqual(forms, [...new Set(forms)]);
});

/** What a tag of a template is called in the list, with its form. */
function inList(tag: string, side: "base" | "content"): boolean {
  const [, block = ""] = /^(.+)_(?:start|end)$/.exec(tag) ?? [];
  const name = block || tag;
  const fits = (one: (typeof TAG_NAMES)[number]): boolean => {
    if (one.only && one.only !== side) return false;
    if (one.form !== "both" && (one.form === "block") !== !!block) return false;
    const behind = name.startsWith(one.name) ? name.slice(one.name.length) : "no";
    if (behind === "") return one.number !== "must";
    return !!one.number && new RegExp(`^${one.joint ?? "_"}\\d+$`).test(behind);
  };
  return TAG_NAMES.some(fits);
}

test("every tag of the templates that come with the system stands in the list, with its form", () => {
  let seen = 0;
  const missing = [
    ["base", "install/demo/baseTemplates"],
    ["base", "install/starter/baseTemplates"],
    ["content", "install/demo/contentTemplates"],
    ["content", "install/demo/shared/contentTemplates"],
    ["content", "install/starter/contentTemplates"],
  ].flatMap(([side, folder]) =>
    filesBelow(join(__root, folder as string)).flatMap((path) =>
      [...readFileSync(path, "utf8").matchAll(/<!--!(.*?)!-->/g)]
        .map(([, tag = ""]) => tag)
        .filter((tag) => {
          ++seen;
          return !inList(tag, side as "base" | "content");
        })
        .map((tag) => `${path}: ${tag}`),
    ),
  );
  assert.ok(seen > 200);
  assert.deepEqual(missing, []);
});
