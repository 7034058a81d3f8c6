/** Templates, stylesheets, applications and feeds, as they come from the server and go there. */

import { Batch, call } from "../api";
import type { Step } from "../api/batch";
import type { IconName } from "../kit/icon";
import { L, type Label } from "../labels";
import { maySee, workplace } from "../shell/workplace";

/** Site and language; "" where records are of none. */
export interface Place {
  readonly site: string;
  readonly lang: string;
}

/** What a list needs of one of the registers. */
export interface DesignKind {
  /** As `lockItem` and the address call one of its records. */
  readonly item: string;
  readonly address: string;
  readonly entry: number;
  readonly icon: IconName;
  readonly title: Label;
  readonly add: Label;
  readonly isEmpty: Label;
}

export interface DesignLine {
  readonly id: number;
  readonly name: string;
  readonly description: string;
  readonly isSystem: boolean;
}

/** What a screen needs of one of the registers whose records name a file. */
export interface AssetKind extends DesignKind {
  /** As the uses of pages name it. */
  readonly kind: "template" | "baseTemplate" | "stylesheet";
  readonly item: "contentTemplate" | "baseTemplate" | "stylesheet";
  /** How a new one begins. */
  readonly begins: string;
  readonly ending: string;
  /** Of the register's class. */
  readonly on: string;
  readonly of: string;
  readonly prefix: string;
}

export const ASSETS: readonly AssetKind[] = [
  {
    kind: "template",
    item: "contentTemplate",
    address: "/torvex/templates.asp",
    entry: 221,
    icon: "file-code",
    title: L.templates,
    add: L.newTemplate,
    isEmpty: L.templatesEmpty,
    begins: "<!--!torvex_body_1!-->\n",
    ending: ".html",
    on: "template",
    of: "Template",
    prefix: "tpl",
  },
  {
    kind: "baseTemplate",
    item: "baseTemplate",
    address: "/torvex/baseTemplates.asp",
    entry: 222,
    icon: "file-code",
    title: L.baseTemplates,
    add: L.newBaseTemplate,
    isEmpty: L.baseTemplatesEmpty,
    begins: "",
    ending: ".html",
    on: "BaseTemplate",
    of: "BaseTemplate",
    prefix: "btpl",
  },
  {
    kind: "stylesheet",
    item: "stylesheet",
    address: "/torvex/stylesheets.asp",
    entry: 223,
    icon: "palette",
    title: L.stylesheets,
    add: L.newStylesheet,
    isEmpty: L.stylesheetsEmpty,
    begins: "",
    ending: ".css",
    on: "StyleSheet",
    of: "Stylesheet",
    prefix: "ss",
  },
];

const idName = ({ kind }: AssetKind): string => `${kind}Id`;

export async function assetsOf(assets: AssetKind, { site, lang }: Place): Promise<DesignLine[]> {
  const { kind, on, of, prefix } = assets;
  const args = { site, lang, ...(kind === "template" ? { listType: 2 } : {}) };
  const lines = (await call(named(`${on}.get${of}List`), args as never)) as Record<string, unknown>[];
  return lines.map((line) => ({
    id: Number(line[`${prefix}_id`]),
    name: String(line[`${prefix}_name`]),
    description: String(line[`${prefix}_description`]),
    isSystem: line[`${prefix}_system`] === 1,
  }));
}

export interface AssetTexts {
  readonly name: string;
  readonly description: string;
  readonly filename: string;
  readonly source: string;
  readonly isSystem: boolean;
}

/** As it was read: what a save expects to find again. */
export interface Asset extends AssetTexts {
  readonly id: number;
  readonly exists: boolean;
  readonly site: string;
  readonly lang: string;
  readonly expected: Readonly<Record<string, unknown>>;
  readonly uses: readonly Use[];
  readonly livePages: number;
}

/** A page that uses something, in its design ("D") or for visitors ("L"). */
export interface Use {
  readonly pageId: number;
  readonly nodeId: string;
  readonly title: string;
  readonly bodyId: number;
  readonly twin: string;
}

const PARTS = ["Exists", "Site", "Lang", "Name", "Description", "Filename", "Source"] as const;

/** The registers are alike but for their names, which the types of their operations can't follow. */
const named = (name: string): never => name as never;

/** Reads an entry and gives its properties, or goes on only where they are still so. */
function readAsset(work: Batch, assets: AssetKind, id: number, expected?: Asset["expected"]): Step<unknown> {
  const { on, of, prefix } = assets;
  work.do(named(`${on}.get${of}`), { [idName(assets)]: id } as never);
  if (expected) work.expect(named(on), expected as never);
  const names = [...PARTS, ...(assets.kind === "template" ? ["System"] : [])].map((part) => `${prefix}${part}`);
  return work.get(named(on), ...(names as never[]));
}

export async function assetOf(assets: AssetKind, id: number): Promise<Asset> {
  const work = new Batch();
  const properties = readAsset(work, assets, id);
  const uses = work.do("desk.getUses", { kind: assets.kind, id: String(id) });
  const livePages = work.do("registers.countLivePages", { kind: assets.kind, id });
  await work.run();
  const read = properties.raw as Readonly<Record<string, unknown>>;
  const part = (name: string): string => String(read[`${assets.prefix}${name}`] ?? "");
  return {
    id,
    exists: read[`${assets.prefix}Exists`] === true,
    site: part("Site"),
    lang: part("Lang"),
    name: part("Name"),
    description: part("Description"),
    filename: part("Filename"),
    source: part("Source"),
    isSystem: part("System") === "1",
    expected: read,
    uses: uses.value,
    livePages: livePages.value,
  };
}

function writeAsset(
  work: Batch,
  assets: AssetKind,
  id: number,
  { site, lang }: Place,
  { name, description, filename, source, isSystem }: AssetTexts,
): Step<unknown> {
  const args = { [idName(assets)]: id, site, lang, name, description, file: filename, source };
  const all = assets.kind === "template" ? { ...args, system: isSystem } : args;
  return work.do(`registers.save${assets.of}`, all as never);
}

/** Saves it unless it has been changed since it was read. */
export async function saveAsset(assets: AssetKind, was: Asset, texts: AssetTexts): Promise<void> {
  const work = new Batch();
  readAsset(work, assets, was.id, was.expected);
  writeAsset(work, assets, was.id, was, texts);
  await work.run();
}

/** The number of the new one. */
export async function addAsset(assets: AssetKind, name: string, filename: string): Promise<unknown> {
  const texts = { name, description: "", filename, source: assets.begins, isSystem: false };
  const work = new Batch();
  const added = writeAsset(work, assets, 0, workplace.value, texts);
  await work.run();
  return added.value;
}

export const removeAsset = (assets: AssetKind, id: number): Promise<unknown> =>
  call(named(`${assets.on}.del${assets.of}`), { [idName(assets)]: id } as never);

const NEWSFLASHES = 242;

/** The titles of this website's newsflashes by their numbers, once they are known: whoever may not see them does without. */
export function newsflashTitles(): () => ReadonlyMap<number, string> {
  const { site, lang } = workplace.value;
  let titles: ReadonlyMap<number, string> = new Map();
  if (site && maySee(NEWSFLASHES, site, lang))
    void call("newsflash.getNewsflashList", { site, lang, mode: "D" })
      .then((lines) => {
        titles = new Map(lines.filter(({ deleted }) => !deleted).map(({ id, title }) => [id, title ?? ""]));
      })
      .catch(() => {});
  return () => titles;
}
