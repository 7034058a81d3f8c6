/** The sheet of a page's setup: its fields, what differs, and the one batch that saves it. */

import type { PageKind } from "./status";
import { type BatchCall, titleAsGiven } from "./workflow";

export interface SetupValues {
  pgTitle: string;
  pgType: PageKind;
  pgBaseTemplateId: number;
  pgTemplateId: number;
  pgStylesheetId: number;
  pgAppId: number;
  pgAppParamPublic: string;
  pgAppParamAdmin: string;
  pgAppSystemFolder: number;
  pgNavigation: string;
  pgPrevious: number;
  pgNext: number;
  pgUp: number;
  pgOnlineFrom: string;
  pgOnlineTo: string;
  pgBreadcrumb: string;
  pgDynMenu: string;
  pgGroups: string;
  pgLoginPage: number;
}

export type SetupField = keyof SetupValues;

export const SETUP_FIELDS: readonly SetupField[] = [
  "pgTitle",
  "pgType",
  "pgBaseTemplateId",
  "pgTemplateId",
  "pgStylesheetId",
  "pgAppId",
  "pgAppParamPublic",
  "pgAppParamAdmin",
  "pgAppSystemFolder",
  "pgNavigation",
  "pgPrevious",
  "pgNext",
  "pgUp",
  "pgOnlineFrom",
  "pgOnlineTo",
  "pgBreadcrumb",
  "pgDynMenu",
  "pgGroups",
  "pgLoginPage",
];

export interface MetaValue {
  readonly id: number;
  readonly name: string;
  readonly value: string;
  readonly inherited: boolean;
}

const FIELD_OF_CODE: Readonly<Record<string, SetupField>> = {
  "-21": "pgTitle",
  "-22": "pgType",
  "-23": "pgTemplateId",
  "-24": "pgAppId",
  "-25": "pgBaseTemplateId",
  "-26": "pgStylesheetId",
  "-27": "pgPrevious",
  "-28": "pgNext",
  "-29": "pgUp",
  "-30": "pgLoginPage",
  "-32": "pgOnlineFrom",
  "-33": "pgOnlineTo",
  "-34": "pgTemplateId",
  "-35": "pgAppSystemFolder",
};

/** The field at which a refusal of saving stands; none when it concerns the page as a whole. */
export function fieldOfCode(code: string): SetupField | undefined {
  return FIELD_OF_CODE[code];
}

export const TITLE_LENGTH = 50;

export interface Fault {
  readonly field: SetupField;
  readonly kind: "titleTooLong" | "noDate" | "order" | "noApplication";
}

/** What can be told before asking the server. */
export function faultsOf(values: SetupValues): Fault[] {
  const faults: Fault[] = [];
  if ([...values.pgTitle.trim()].length > TITLE_LENGTH) faults.push({ field: "pgTitle", kind: "titleTooLong" });
  if (values.pgType === "A" && values.pgAppId <= 0) faults.push({ field: "pgAppId", kind: "noApplication" });
  for (const field of ["pgOnlineFrom", "pgOnlineTo"] as const)
    if (values[field] !== "" && !isDay(values[field])) faults.push({ field, kind: "noDate" });
  if (faults.length === 0 && endsBeforeItBegins(values)) faults.push({ field: "pgOnlineTo", kind: "order" });
  return faults;
}

function endsBeforeItBegins(values: SetupValues): boolean {
  return values.pgOnlineFrom !== "" && values.pgOnlineTo !== "" && values.pgOnlineTo < values.pgOnlineFrom;
}

export function isDay(digits: string): boolean {
  const found = /^(\d{4})(\d{2})(\d{2})$/.exec(digits);
  if (!found) return false;
  const [year, month, day] = found.slice(1).map(Number) as [number, number, number];
  const date = new Date(Date.UTC(year, month - 1, day));
  return date.getUTCFullYear() === year && date.getUTCMonth() === month - 1 && date.getUTCDate() === day;
}

/** "20260503" as a date field wants it, and back. */
export function toDateField(digits: string): string {
  return isDay(digits) ? `${digits.slice(0, 4)}-${digits.slice(4, 6)}-${digits.slice(6)}` : "";
}

export function fromDateField(text: string): string {
  return text.replaceAll("-", "");
}

export function changedFields(before: SetupValues, after: SetupValues): SetupField[] {
  return SETUP_FIELDS.filter((field) => before[field] !== after[field]);
}

export function changedMeta(before: readonly MetaValue[], after: readonly MetaValue[]): MetaValue[] {
  return after.filter((value) => {
    const old = before.find((each) => each.id === value.id);
    return !old || old.value !== value.value || old.inherited !== value.inherited;
  });
}

const setProperty = (property: string, to: unknown): BatchCall => ({ on: "cManager", set: property, to });

const readPage = (pageIdent: string): BatchCall => ({ on: "cManager", do: "getPage", with: { pageIdent, mode: "D" } });

/** What the page has now, as it must still be when the sheet is saved. */
export function expectSetup(loaded: Readonly<Record<string, unknown>>): BatchCall {
  return { on: "cManager", get: Object.keys(loaded), expect: { is: loaded } };
}

export interface SheetSave {
  readonly pageIdent: string;
  /** The properties as they were read, by name. */
  readonly loaded: Readonly<Record<string, unknown>>;
  readonly values: SetupValues;
  readonly meta: readonly MetaValue[];
}

/** Reads the page into the record, holds it against what the author saw, sets every field and saves. */
export function setupBatch(save: SheetSave): BatchCall[] {
  return [
    readPage(save.pageIdent),
    expectSetup(save.loaded),
    ...SETUP_FIELDS.map((field) => setProperty(field, save.values[field])),
    { on: "cManager", do: "savePageSetup", with: { pageIdent: save.pageIdent } },
    ...save.meta.map((each) => metaCall(save.pageIdent, each)),
  ];
}

/** Gives a page another title, if it still has the one that its author saw; all else stays as it is by now. */
export function titleBatch(pageIdent: string, seen: string, title: string): BatchCall[] {
  return [
    readPage(pageIdent),
    expectSetup({ pgTitle: titleAsGiven(seen) }),
    setProperty("pgTitle", title.trim()),
    { on: "cManager", do: "savePageSetup", with: { pageIdent } },
  ];
}

function metaCall(pageIdent: string, meta: MetaValue): BatchCall {
  return {
    on: "cManager",
    do: "saveMetaData",
    with: { pageIdent, metaIdent: String(meta.id), metaDataValue: meta.value, inherited: meta.inherited },
  };
}

/** Groups as the record takes them: numbers divided by commas. "Inherited" (0) and "everybody" (1) stand alone. */
export function groupsText(chosen: readonly number[]): string {
  const alone = chosen.find((id) => id === 0 || id === 1);
  return alone === undefined ? [...chosen].sort((a, b) => a - b).join(",") : String(alone);
}

export function toggleGroup(chosen: readonly number[], id: number, on: boolean): number[] {
  if (!on) return chosen.filter((each) => each !== id);
  if (id === 0 || id === 1) return [id];
  return [...chosen.filter((each) => each > 1 && each !== id), id];
}

/** Bodies that a setup would drop: those behind the last place of the template, or all of a page without bodies. */
export function lostBodies(kind: PageKind, places: number, filled: readonly number[]): number[] {
  if (kind !== "P") return [...filled];
  return places < 0 ? [] : filled.filter((body) => body > places);
}

export type SaveWord = "save" | "saveWithdraws" | "saveUnmarks";

/** What saving does besides: it withdraws an approval and takes a mark back. */
export function saveWord(approved: boolean, marked: boolean): SaveWord {
  if (marked) return "saveUnmarks";
  return approved ? "saveWithdraws" : "save";
}

export type Place = { readonly parent: string; readonly before: string };

/** A new page: its record, then its place. */
export function newPageBatch(site: string, lang: string, place: Place, values: SetupValues): BatchCall[] {
  return [
    ...SETUP_FIELDS.map((field) => setProperty(field, values[field])),
    {
      on: "cManager",
      do: "saveNewPageSetup",
      with: { site, lang, parentIdent: place.parent, insertIdent: place.before },
    },
  ];
}

/** What a page begins with: the looks of its parent, no dates, in the trail and in the menu, its parent's readers. */
export function newPageValues(title: string, kind: PageKind | "S", appId = -1): SetupValues {
  return {
    pgTitle: title.trim(),
    pgType: kind as PageKind,
    pgBaseTemplateId: 0,
    pgTemplateId: 0,
    pgStylesheetId: 0,
    pgAppId: appId,
    pgAppParamPublic: "",
    pgAppParamAdmin: "",
    pgAppSystemFolder: -1,
    pgNavigation: kind === "P" ? "A" : "",
    pgPrevious: -1,
    pgNext: -1,
    pgUp: -1,
    pgOnlineFrom: "",
    pgOnlineTo: "",
    pgBreadcrumb: "1",
    pgDynMenu: "1",
    pgGroups: "0",
    pgLoginPage: -1,
  };
}
