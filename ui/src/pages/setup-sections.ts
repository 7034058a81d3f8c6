/** The fields of a page's setup, in the order in which authors need them. */

import { html, nothing, type TemplateResult } from "lit";
import { call } from "../api";
import "../kit/tvx-combobox";
import type { Option } from "../kit/tvx-combobox";
import { L, type Label, t } from "../labels";
import { isRoot } from "./model/places";
import {
  fromDateField,
  type MetaValue,
  type SetupField,
  type SetupValues,
  TITLE_LENGTH,
  toDateField,
  toggleGroup,
} from "./model/setup";
import type { Choice, Inherited, Sheet } from "./setup-data";
import { kindWord, titleOr, word } from "./words";

export type FieldNames = SetupField;

export interface SheetView {
  readonly sheet: Sheet;
  readonly values: SetupValues;
  readonly meta: readonly MetaValue[];
  readonly wrong: ReadonlyMap<FieldNames, string>;
  readonly set: (field: SetupField, value: string | number) => void;
  readonly setMeta: (value: MetaValue) => void;
  readonly setGroups: (chosen: readonly number[]) => void;
}

const LABELS: Readonly<Record<SetupField, Label>> = {
  pgTitle: L.partTitle,
  pgType: L.partKind,
  pgBaseTemplateId: L.partBase,
  pgTemplateId: L.partTemplate,
  pgStylesheetId: L.partStylesheet,
  pgAppId: L.partApplication,
  pgAppParamPublic: L.partParamsPublic,
  pgAppParamAdmin: L.partParamsAdmin,
  pgAppSystemFolder: L.partSystemFolder,
  pgNavigation: L.partNavigation,
  pgPrevious: L.partPrevious,
  pgNext: L.partNext,
  pgUp: L.partUp,
  pgOnlineFrom: L.partFrom,
  pgOnlineTo: L.partTo,
  pgBreadcrumb: L.partTrail,
  pgDynMenu: L.partMenu,
  pgGroups: L.partGroups,
  pgLoginPage: L.partLogin,
};

export const fieldLabel = (field: SetupField): string => word(LABELS[field]);

export const sections = (view: SheetView): TemplateResult => html`
  ${basics(view)}
  ${view.values.pgType === "A" ? application(view) : nothing}
  ${section(t(L.sectionLook), look(view), true)}
  ${section(t(L.sectionDates), dates(view), true)}
  ${section(t(L.sectionMenu), menus(view), false)}
  ${view.values.pgType === "P" ? section(t(L.sectionNeighbours), neighbours(view), false) : nothing}
  ${section(t(L.sectionVisitors), visitors(view), false)}
  ${view.meta.length ? section(t(L.sectionMeta), meta(view), false) : nothing}
`;

const section = (label: string, body: TemplateResult, open: boolean): TemplateResult =>
  html`<details class="setup-section" ?open=${open}><summary>${label}</summary><div class="setup-body">${body}</div></details>`;

const note = (view: SheetView, field: SetupField): TemplateResult | typeof nothing =>
  view.wrong.has(field) ? html`<p class="note wrong" id="setup-${field}-wrong">${view.wrong.get(field)}</p>` : nothing;

const invalid = (view: SheetView, field: SetupField): string | typeof nothing =>
  view.wrong.has(field) ? "true" : nothing;
const described = (view: SheetView, field: SetupField): string | typeof nothing =>
  view.wrong.has(field) ? `setup-${field}-wrong` : nothing;

const value = (event: Event): string => (event.target as HTMLInputElement | HTMLSelectElement).value;

function text(
  view: SheetView,
  field: "pgTitle" | "pgAppParamPublic" | "pgAppParamAdmin",
  longest: number,
  hint = "",
): TemplateResult {
  return html`<div class="field"><label for="setup-${field}">${fieldLabel(field)}</label>
    <input id="setup-${field}" class="input" autocomplete="off" maxlength=${longest} .value=${view.values[field]} aria-invalid=${invalid(view, field)}
      aria-describedby=${described(view, field)} @input=${(event: Event) => view.set(field, value(event))} />
    ${hint ? html`<p class="note">${hint}</p>` : nothing}${note(view, field)}</div>`;
}

function basics(view: SheetView): TemplateResult {
  return html`<div class="setup-body">
    ${text(view, "pgTitle", TITLE_LENGTH)}
    <div class="field"><label for="setup-pgType">${fieldLabel("pgType")}</label>
      <select id="setup-pgType" class="select" aria-invalid=${invalid(view, "pgType")} aria-describedby=${described(view, "pgType")} @change=${(event: Event) => view.set("pgType", value(event))}>
        ${(["P", "F", "A"] as const).map((kind) => html`<option value=${kind} ?selected=${kind === view.values.pgType}>${kindWord(kind)}</option>`)}
      </select>${note(view, "pgType")}</div>
  </div>`;
}

type Chosen = "pgTemplateId" | "pgBaseTemplateId" | "pgStylesheetId" | "pgAppId" | "pgAppSystemFolder";

function select(
  view: SheetView,
  field: Chosen,
  options: readonly Choice[],
  none: { value: number; label: string } | undefined,
): TemplateResult {
  const chosen = view.values[field];
  const known = options.some((each) => each.id === chosen) || chosen === none?.value;
  return html`<div class="field"><label for="setup-${field}">${fieldLabel(field)}</label>
    <select id="setup-${field}" class="select" aria-invalid=${invalid(view, field)} aria-describedby=${described(view, field)}
      @change=${(event: Event) => view.set(field, Number(value(event)))}>
      ${none ? html`<option value=${none.value} ?selected=${chosen === none.value}>${none.label}</option>` : nothing}
      ${known ? nothing : html`<option value=${chosen} selected>${chosen}</option>`}
      ${options.map((each) => html`<option value=${each.id} ?selected=${each.id === chosen} title=${each.note}>${each.name}</option>`)}
    </select>${note(view, field)}</div>`;
}

function inheritedLabel(inherited: Inherited): string {
  return inherited.name
    ? t(L.inheritedFrom, { title: titleOr(inherited.from), name: inherited.name })
    : t(L.inheritedNothing);
}

function look(view: SheetView): TemplateResult {
  const { sheet } = view;
  const none = (inherited: Inherited) =>
    isRoot(sheet.nodeId) ? { value: 0, label: "" } : { value: 0, label: inheritedLabel(inherited) };
  return html`
    ${select(view, "pgTemplateId", sheet.templates, none(sheet.inherited.template))}
    ${select(view, "pgBaseTemplateId", sheet.bases, none(sheet.inherited.base))}
    ${select(view, "pgStylesheetId", sheet.stylesheets, none(sheet.inherited.stylesheet))}
  `;
}

function application(view: SheetView): TemplateResult {
  const { sheet } = view;
  return html`<div class="setup-body">
    ${select(view, "pgAppId", sheet.applications, { value: -1, label: "" })}
    ${text(view, "pgAppParamPublic", 250, t(L.appParamsHint))}
    ${text(view, "pgAppParamAdmin", 250)}
    ${select(view, "pgAppSystemFolder", sheet.folders, { value: -1, label: t(L.noFolder) })}
  </div>`;
}

function dates(view: SheetView): TemplateResult {
  const day = (
    field: "pgOnlineFrom" | "pgOnlineTo",
  ): TemplateResult => html`<div class="field"><label for="setup-${field}">${fieldLabel(field)}</label>
    <input id="setup-${field}" class="input" type="date" .value=${toDateField(view.values[field])} aria-invalid=${invalid(view, field)} aria-describedby=${described(view, field)}
      @change=${(event: Event) => view.set(field, fromDateField(value(event)))} />${note(view, field)}</div>`;
  return html`<div class="setup-two">${day("pgOnlineFrom")}${day("pgOnlineTo")}</div><p class="note">${t(L.datesHint)}</p>`;
}

function tick(view: SheetView, field: "pgBreadcrumb" | "pgDynMenu", fixed = false): TemplateResult {
  return html`<label class="check"><input id="setup-${field}" type="checkbox" .checked=${view.values[field] === "1"} ?disabled=${fixed}
    @change=${(event: Event) => view.set(field, (event.target as HTMLInputElement).checked ? "1" : "0")} /><span>${fieldLabel(field)}</span></label>`;
}

/** Only a folder may stay out of the trail. */
function menus(view: SheetView): TemplateResult {
  return html`${tick(view, "pgBreadcrumb", view.values.pgType !== "F")}${tick(view, "pgDynMenu")}`;
}

async function pagesFor(view: SheetView, words: string, signal: AbortSignal): Promise<Option[]> {
  const none: Option = { id: "-1", label: t(L.noPage) };
  if (words.trim() === "") return [none];
  const [site, lang] = [view.sheet.nodeId.slice(0, 2), view.sheet.nodeId.slice(3, 5)];
  const rows = (await call("desk.find", { words, kinds: "page", site, lang }, { signal })) as {
    pageId: number;
    title: string;
    path: string;
  }[];
  return [none, ...rows.map((row) => ({ id: String(row.pageId), label: titleOr(row.title), note: row.path }))];
}

function pageField(view: SheetView, field: "pgPrevious" | "pgNext" | "pgUp" | "pgLoginPage"): TemplateResult {
  const id = view.values[field];
  const title = id > 0 ? (view.sheet.titles.get(id) ?? String(id)) : "";
  return html`<div class="field"><tvx-combobox id="setup-${field}" .label=${fieldLabel(field)} .text=${title} .placeholder=${t(L.noPage)} .wrong=${view.wrong.get(field) ?? ""}
    .search=${(words: string, signal: AbortSignal) => pagesFor(view, words, signal)}
    @tvx-choose=${(event: CustomEvent<Option>) => view.set(field, Number(event.detail.id))}></tvx-combobox></div>`;
}

function neighbours(view: SheetView): TemplateResult {
  const manual = view.values.pgNavigation === "M";
  const radio = (
    kind: "A" | "M",
    label: string,
  ): TemplateResult => html`<label class="check"><input type="radio" name="setup-navigation" .checked=${(kind === "M") === manual}
    @change=${() => view.set("pgNavigation", kind)} /><span>${label}</span></label>`;
  return html`<div role="radiogroup" class="stack" id="setup-pgNavigation" aria-label=${fieldLabel("pgNavigation")}>${radio("A", t(L.neighboursByTree))}${radio("M", t(L.neighboursByHand))}</div>
    ${manual ? html`${pageField(view, "pgPrevious")}${pageField(view, "pgNext")}${pageField(view, "pgUp")}` : nothing}`;
}

function groupName(id: number, name: string): string {
  if (id === 0) return t(L.groupInherited);
  return id === 1 ? t(L.groupEverybody) : name;
}

function visitors(view: SheetView): TemplateResult {
  const chosen = view.values.pgGroups === "" ? [] : view.values.pgGroups.split(",").map(Number);
  const ordered = [...view.sheet.groups].sort((a, b) => Math.min(a.id, 2) - Math.min(b.id, 2));
  return html`<div role="group" class="stack" id="setup-pgGroups" tabindex="-1" aria-label=${fieldLabel("pgGroups")}>
      ${ordered.map(
        (group) => html`<label class="check"><input type="checkbox" .checked=${chosen.includes(group.id)}
          @change=${(event: Event) => view.setGroups(toggleGroup(chosen, group.id, (event.target as HTMLInputElement).checked))} /><span>${groupName(group.id, group.name)}</span></label>`,
      )}</div>
    ${chosen.some((id) => id > 1) ? pageField(view, "pgLoginPage") : nothing}`;
}

function meta(view: SheetView): TemplateResult {
  return html`${view.meta.map(
    (each) => html`<div class="field"><label for="setup-meta-${each.id}">${each.name}</label>
      <textarea id="setup-meta-${each.id}" class="area setup-meta" rows="2" .value=${each.value} ?disabled=${each.inherited}
        @input=${(event: Event) => view.setMeta({ ...each, value: (event.target as HTMLTextAreaElement).value })}></textarea>
      <label class="check"><input type="checkbox" .checked=${each.inherited} @change=${(event: Event) => view.setMeta({ ...each, inherited: (event.target as HTMLInputElement).checked })} /><span>${t(L.metaInherited, { name: each.name })}</span></label></div>`,
  )}`;
}
