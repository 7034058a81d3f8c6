/** The two sheets of a role: websites by tasks, and the administration. */

import { html, nothing, type TemplateResult } from "lit";
import { icon } from "../kit/icon";
import { L, plural, t } from "../labels";
import type { AdminEntry, Places, Website } from "./data";
import {
  type Access,
  type EditGrant,
  type EntryGrant,
  entryGrantAt,
  fits,
  givenWider,
  TASKS,
  type Task,
  type Where,
  websiteKey,
  withAccess,
  withScope,
  withTask,
} from "./model/grants";
import { scopeDialog } from "./scope-dialog";
import { accessWord, taskWord, whereText } from "./words";

interface PageMatrix {
  websites: readonly Website[];
  grants: ReadonlyMap<string, EditGrant>;
  fixed: boolean;
  change: (grants: Map<string, EditGrant>) => unknown;
}

const box = (label: string, checked: boolean, fixed: boolean, change: (has: boolean) => unknown): TemplateResult =>
  html`<input type="checkbox" aria-label=${label} .checked=${checked} ?disabled=${fixed}
    @change=${(event: Event) => change((event.target as HTMLInputElement).checked)} />`;

/** Rights in websites where the register of pages has none any more are drawn as well. */
function allWebsites({ websites, grants }: PageMatrix): Website[] {
  const known = new Set(websites.map(websiteKey));
  const others = [...grants.values()]
    .filter((grant) => !known.has(websiteKey(grant)))
    .map(({ site, lang }) => ({ site, lang, siteName: site, langName: lang }));
  return [...websites, ...others];
}

export const pageMatrix = (
  sheet: PageMatrix,
): TemplateResult => html`<div class="matrix-scroll card" tabindex="0" role="group" aria-label=${t(L.pages)}>
  <table class="matrix">
    <thead><tr><th scope="col">${t(L.website)}</th>${TASKS.map((task) => html`<th scope="col" class="narrow">${taskWord(task)}</th>`)}<th scope="col">${t(L.scopeColumn)}</th></tr></thead>
    <tbody>${allWebsites(sheet).map((website) => websiteRow(sheet, website))}</tbody>
  </table></div>`;

function websiteRow(sheet: PageMatrix, website: Website): TemplateResult {
  const { site, lang, siteName, langName } = website;
  const name = `${siteName} · ${langName}`;
  const grant = sheet.grants.get(websiteKey(website));
  const set = (task: Task) => (has: boolean) => sheet.change(withTask(sheet.grants, site, lang, task, has));
  return html`<tr><th scope="row">${name}</th>${TASKS.map(
    (task) =>
      html`<td class="narrow" data-label=${taskWord(task)}>${box(t(L.taskInWebsite, { task: taskWord(task), website: name }), grant?.tasks.has(task) ?? false, sheet.fixed, set(task))}</td>`,
  )}<td data-label=${t(L.scopeColumn)}>${grant?.tasks.size ? scopeButton(sheet, grant, name) : html`<span class="soft">–</span>`}</td></tr>`;
}

function scopeButton(sheet: PageMatrix, grant: EditGrant, name: string): TemplateResult {
  const { site, lang, scope } = grant;
  const says = scope.length ? plural(scope.length, L.scopeOne, L.scopeMany) : t(L.scopeWhole);
  const choose = async (): Promise<void> => {
    const chosen = await scopeDialog(t(L.scopeOf, { website: name }), site, lang, scope, sheet.fixed);
    if (chosen) sheet.change(withScope(sheet.grants, site, lang, chosen));
  };
  return html`<button class="button small" aria-label=${t(L.scopeSays, { website: name, scope: says })} @click=${choose}>${icon("list-tree")}${says}</button>`;
}

// ---- The administration ----

interface EntryMatrix {
  places: Places;
  grants: ReadonlyMap<string, EntryGrant>;
  where: Where;
  fixed: boolean;
  choose: (where: Where) => unknown;
  change: (grants: Map<string, EntryGrant>) => unknown;
}

/** Everywhere, each site, each language, each website; and where the role has rights besides. */
function wheres({ places: { websites }, grants }: EntryMatrix): Where[] {
  const keys = new Set([
    "|",
    ...websites.map(({ site }) => `${site}|`),
    ...websites.map(({ lang }) => `|${lang}`),
    ...websites.map(({ site, lang }) => `${site}|${lang}`),
    ...[...grants.values()].map(({ site, lang }) => `${site}|${lang}`),
  ]);
  return [...keys].map((key) => {
    const [site = "", lang = ""] = key.split("|");
    return { site, lang };
  });
}

export function entryMatrix(sheet: EntryMatrix): TemplateResult {
  const { places, where, grants } = sheet;
  const count = ({ site, lang }: Where): number =>
    [...grants.values()].filter((one) => one.site === site && one.lang === lang && (one.view || one.edit)).length;
  const all = wheres(sheet);
  const shown = places.entries.filter(({ advLevel }) => fits(advLevel, where));
  return html`<div class="field where-field"><label for="entry-where">${t(L.entryWhere)}</label>
    <select id="entry-where" class="select" @change=${(event: Event) => sheet.choose(all[(event.target as HTMLSelectElement).selectedIndex] ?? where)}>${all.map(
      (one) =>
        html`<option .selected=${one.site === where.site && one.lang === where.lang}>${whereText(places.websites, one)}${count(one) ? ` (${count(one)})` : ""}</option>`,
    )}</select></div>
    <div class="matrix-scroll card" tabindex="0" role="group" aria-label=${t(L.administration)}><table class="matrix entries">
      <thead><tr><th scope="col">${t(L.entryColumn)}</th><th scope="col" class="narrow">${accessWord("view")}</th><th scope="col" class="narrow">${accessWord("edit")}</th></tr></thead>
      <tbody>${shown.map((entry) => entryRow(sheet, entry))}</tbody></table></div>`;
}

function entryRow(sheet: EntryMatrix, entry: AdminEntry): TemplateResult {
  const depth = entry.advReference.split(".").length;
  const offered = entry.advView === 1 || entry.advEdit === 1;
  if (!offered)
    return html`<tr class="branch"><th scope="colgroup" colspan="3" class="depth-${depth}">${entry.title}</th></tr>`;
  return html`<tr><th scope="row" class="depth-${depth}">${entry.title}</th>${(["view", "edit"] as const).map((access) => accessCell(sheet, entry, access))}</tr>`;
}

function accessCell(sheet: EntryMatrix, entry: AdminEntry, access: Access): TemplateResult {
  const { grants, where } = sheet;
  const isOffered = (access === "view" ? entry.advView : entry.advEdit) === 1;
  if (!isOffered) return html`<td class="narrow"></td>`;
  const label = t(L.accessToEntry, { access: accessWord(access), entry: entry.title });
  const wider = givenWider(grants, entry.advId, where, access);
  const set = (has: boolean) => sheet.change(withAccess(grants, entry.advId, where, access, has));
  return html`<td class="narrow" data-label=${accessWord(access)}>${box(label, entryGrantAt(grants, entry.advId, where)[access], sheet.fixed, set)}
    ${wider ? html`<span class="note" title=${t(L.givenWiderHint)}>${t(L.givenWider)}</span>` : nothing}</td>`;
}
