/** All that the sheet of a page's setup shows: the page's own values, what it inherits, and what there is to choose. */

import { Batch, call } from "../api";
import { isRoot, parentOf } from "./model/places";
import { type MetaValue, SETUP_FIELDS, type SetupValues } from "./model/setup";
import type { PageKind } from "./model/status";
import { titleFrom } from "./model/workflow";

export interface Choice {
  readonly id: number;
  readonly name: string;
  readonly note: string;
}

export interface Group {
  readonly id: number;
  readonly name: string;
}

/** From whom a look comes, where the page has none of its own. */
export interface Inherited {
  readonly name: string;
  readonly from: string;
}

export interface Sheet {
  readonly pageIdent: string;
  readonly nodeId: string;
  readonly loaded: Readonly<Record<string, unknown>>;
  readonly values: SetupValues;
  readonly groups: readonly Group[];
  readonly chosenGroups: readonly number[];
  readonly meta: readonly MetaValue[];
  readonly templates: readonly Choice[];
  readonly bases: readonly Choice[];
  readonly stylesheets: readonly Choice[];
  readonly applications: readonly Choice[];
  readonly folders: readonly Choice[];
  readonly inherited: { readonly template: Inherited; readonly base: Inherited; readonly stylesheet: Inherited };
  readonly titles: ReadonlyMap<number, string>;
}

const NOTHING: Inherited = { name: "", from: "" };

type Listed = Readonly<Record<string, unknown>>;

const choices = (rows: readonly Listed[], id: string, name: string, note = ""): Choice[] =>
  rows.map((row) => ({
    id: Number(row[id]),
    name: String(row[name] ?? ""),
    note: note ? String(row[note] ?? "") : "",
  }));

export async function loadSheet(pageId: number, nodeId: string): Promise<Sheet> {
  const site = nodeId.slice(0, 2);
  const lang = nodeId.slice(3, 5);
  const pageIdent = String(pageId);
  const batch = new Batch();
  batch.do("cManager.getPage", { pageIdent, mode: "D" });
  const own = batch.get("cManager", ...SETUP_FIELDS);
  const groups = batch.do("cManager.getPageGroups", { pageIdent, mode: "D" });
  const meta = batch.do("cManager.getMetaData", { pageIdent, mode: "D" });
  const folders = batch.do("cManager.getSystemFolders", { site, lang });
  const templates = batch.do("template.getTemplateList", { site, lang, listType: 0 });
  const bases = batch.do("BaseTemplate.getBaseTemplateList", { site, lang });
  const stylesheets = batch.do("StyleSheet.getStylesheetList", { site, lang });
  const applications = batch.do("application.getApplicationList", { listType: 0 });
  await batch.run();
  const [inherited, titles] = await Promise.all([inheritedBy(nodeId), titlesOf(own.value)]);
  const marked = groups.value.filter((row) => Number(row.mark) === 1).map((row) => Number(row.groupId));
  return {
    pageIdent,
    nodeId,
    loaded: { ...own.value },
    values: valuesOf(own.value, marked),
    groups: groups.value.map((row) => ({ id: Number(row.groupId), name: row.name })),
    chosenGroups: marked,
    meta: meta.value.map(metaOf),
    templates: choices(templates.value, "tpl_id", "tpl_name", "tpl_description"),
    bases: choices(bases.value, "btpl_id", "btpl_name", "btpl_description"),
    stylesheets: choices(stylesheets.value, "ss_id", "ss_name", "ss_description"),
    applications: choices(applications.value, "app_id", "app_name", "app_description"),
    folders: choices(folders.value, "pageId", "title"),
    inherited,
    titles,
  };
}

const metaOf = (row: Listed): MetaValue => ({
  id: Number(row["metaData_id"]),
  name: String(row["metaData_name"] ?? ""),
  value: String(row["metaData_value"] ?? ""),
  inherited: Number(row["metaData_inherited"]) === 1,
});

function valuesOf(own: Listed, groups: readonly number[]): SetupValues {
  const number = (name: string): number => Number(own[name] ?? 0);
  const text = (name: string): string => String(own[name] ?? "");
  return {
    pgTitle: titleFrom(text("pgTitle")),
    pgType: text("pgType") as PageKind,
    pgBaseTemplateId: Math.max(0, number("pgBaseTemplateId")),
    pgTemplateId: Math.max(0, number("pgTemplateId")),
    pgStylesheetId: Math.max(0, number("pgStylesheetId")),
    pgAppId: number("pgAppId"),
    pgAppParamPublic: text("pgAppParamPublic"),
    pgAppParamAdmin: text("pgAppParamAdmin"),
    pgAppSystemFolder: number("pgAppSystemFolder"),
    pgNavigation: text("pgNavigation"),
    pgPrevious: text("pgNavigation") === "M" ? number("pgPrevious") : -1,
    pgNext: text("pgNavigation") === "M" ? number("pgNext") : -1,
    pgUp: text("pgNavigation") === "M" ? number("pgUp") : -1,
    pgOnlineFrom: text("pgOnlineFrom"),
    pgOnlineTo: text("pgOnlineTo"),
    pgBreadcrumb: text("pgBreadcrumb"),
    pgDynMenu: text("pgDynMenu"),
    pgGroups: [...groups].sort((a, b) => a - b).join(","),
    pgLoginPage: number("pgLoginPage"),
  };
}

/** The nearest page above that has a look of its own, for each of the three. */
async function inheritedBy(nodeId: string): Promise<Sheet["inherited"]> {
  const above: string[] = [];
  for (let node = parentOf(nodeId); node !== ""; node = parentOf(node)) above.push(node);
  if (isRoot(nodeId) || above.length === 0) return { template: NOTHING, base: NOTHING, stylesheet: NOTHING };
  const batch = new Batch();
  const pages = above.map((pageIdent) => {
    batch.do("cManager.getPage", { pageIdent, mode: "D" });
    return batch.get(
      "cManager",
      "pgTitle",
      "pgTemplateId",
      "pgTemplateName",
      "pgBaseTemplateId",
      "pgBaseTemplateName",
      "pgStylesheetId",
      "pgStylesheetName",
    );
  });
  await batch.run();
  const first = (
    id: "pgTemplateId" | "pgBaseTemplateId" | "pgStylesheetId",
    name: "pgTemplateName" | "pgBaseTemplateName" | "pgStylesheetName",
  ): Inherited => {
    const found = pages.find((page) => page.value[id] > 0)?.value;
    return found ? { name: found[name], from: titleFrom(found.pgTitle) } : NOTHING;
  };
  return {
    template: first("pgTemplateId", "pgTemplateName"),
    base: first("pgBaseTemplateId", "pgBaseTemplateName"),
    stylesheet: first("pgStylesheetId", "pgStylesheetName"),
  };
}

/** Titles of the pages that a setup names. */
async function titlesOf(own: Listed): Promise<Map<number, string>> {
  const ids = ["pgPrevious", "pgNext", "pgUp", "pgLoginPage"].map((name) => Number(own[name])).filter((id) => id > 0);
  if (ids.length === 0) return new Map();
  const batch = new Batch();
  const titles = ids.map((id) => batch.do("cManager.getPageTitle", { pageIdent: String(id), mode: "D" }));
  await batch.run();
  return new Map(ids.map((id, at) => [id, titles[at]?.value ?? ""]));
}

/** Texts of a page, by number, that hold something. */
export async function filledBodies(pageIdent: string): Promise<number[]> {
  const rows = (await call("desk.getBodies", { pageIdent })) as { bodyId: number; kind: string; characters: number }[];
  return rows.filter((row) => row.kind !== "text" || row.characters > 0).map((row) => row.bodyId);
}

export const placesOf = (template: number): Promise<number> =>
  call("cManager.getNumberOfBodies", { Template: template });
