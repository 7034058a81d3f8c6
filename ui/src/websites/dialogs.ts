/** Asks for what a site or a language is to be, and adds, changes or removes it. */

import { html, nothing, type TemplateResult } from "lit";
import { call } from "../api";
import { icon } from "../kit/icon";
import { dialog, type TvxDialog } from "../kit/tvx-dialog";
import { toast } from "../kit/tvx-toast";
import { L, plural, t } from "../labels";
import { textField } from "../records/fields";
import {
  addLanguage,
  addSite,
  Changed,
  type Charset,
  type Language,
  type Part,
  partsOf,
  type Register,
  removeLanguage,
  removeSite,
  type Site,
  saveLanguage,
  saveSite,
} from "./data";

const longestName = 50;

/** The buttons of a form, whose save may first have to learn what others did. */
async function formDialog(
  title: string,
  fields: () => TemplateResult,
  label: string,
  run: () => Promise<unknown>,
  fixed = "",
): Promise<boolean> {
  const answer = await dialog({
    title,
    body: () =>
      html`<div class="stack">${fixed ? html`<p class="notice warn">${icon("lock")}<span>${fixed}</span></p>` : nothing}${fields()}</div>`,
    actions: () =>
      fixed
        ? [{ name: "close", label: t(L.close), kind: "primary" }]
        : [
            { name: "cancel", label: t(L.cancel) },
            { name: "go", label, kind: "primary", run },
          ],
  });
  return answer === "go";
}

const codeField = (id: string, hint: string, change: (text: string) => unknown): TemplateResult =>
  textField({ id, label: t(L.code), value: "", longest: 2, hint, change });

const siteFields = (site: Site, change: (part: Partial<Site>) => void, fixed = false): TemplateResult =>
  html`${textField({ id: "site-name", label: t(L.name), value: site.name, longest: longestName, fixed, change: (name) => change({ name }) })}
    ${textField({ id: "site-text", label: t(L.description), value: site.description, longest: 500, fixed, change: (description) => change({ description }) })}`;

export async function newSite(): Promise<boolean> {
  let site: Site = { code: "", name: "", description: "" };
  const change = (part: Partial<Site>): void => {
    site = { ...site, ...part };
  };
  const fields = () =>
    html`${codeField("site-code", t(L.siteCodeHint), (code) => change({ code }))}${siteFields(site, change)}`;
  const isAdded = await formDialog(t(L.newSite), fields, t(L.addIt), () => addSite(site));
  if (isAdded) toast(t(L.recordAdded, { name: site.name.trim() }));
  return isAdded;
}

/** What one has typed stays when somebody else was quicker; saving once more puts it there. */
const over =
  <T extends object>(was: T, now: () => T, save: (was: T, now: T) => Promise<unknown>) =>
  async (): Promise<void> => {
    try {
      await save(was, now());
    } catch (error) {
      if (error instanceof Changed) Object.assign(was, error.theirs);
      throw error;
    }
  };

export async function changeSite(was: Site): Promise<boolean> {
  const [held] = await call("registers.open", { item: "site", id: was.code });
  let site = was;
  const change = (part: Partial<Site>): void => {
    site = { ...site, ...part };
  };
  const fixed =
    held?.state === "held" ? "" : held?.state === "other" ? t(L.openAt, { name: held.name || "?" }) : t(L.recordIsGone);
  const save = over({ ...was }, () => site, saveSite);
  const isSaved = await formDialog(
    t(L.changeNamed, { name: was.name }),
    () => siteFields(site, change, fixed !== ""),
    t(L.save),
    save,
    fixed,
  );
  if (isSaved) toast(t(L.recordSaved, { name: site.name.trim() }));
  else if (!fixed) void call("cManager.unlockItem", { item: "site", itemId: was.code }).catch(() => {});
  return isSaved;
}

const languageFields = (
  language: Language,
  charsets: readonly Charset[],
  change: (part: Partial<Language>) => void,
): TemplateResult =>
  html`${textField({ id: "lang-name", label: t(L.name), value: language.name, longest: longestName, change: (name) => change({ name }) })}
    <div class="field"><label for="lang-charset">${t(L.charset)}</label>
      <select id="lang-charset" class="select" @change=${(event: Event) => change({ charsetId: Number((event.target as HTMLSelectElement).value) })}>${charsets.map(
        ({ charset_id, charset_name, charset_label }) =>
          html`<option value=${charset_id} ?selected=${charset_id === language.charsetId}>${charset_name} (${charset_label})</option>`,
      )}</select></div>`;

export async function newLanguage(charsets: readonly Charset[]): Promise<boolean> {
  const usual = charsets.find(({ charset_label }) => charset_label.toLowerCase() === "utf-8") ?? charsets[0];
  let language: Language = { code: "", name: "", charset: "", charsetId: usual?.charset_id ?? 0 };
  const change = (part: Partial<Language>): void => {
    language = { ...language, ...part };
  };
  const fields = () =>
    html`${codeField("lang-code", t(L.langCodeHint), (code) => change({ code }))}${languageFields(language, charsets, change)}`;
  const isAdded = await formDialog(t(L.newLanguage), fields, t(L.addIt), () => addLanguage(language));
  if (isAdded) toast(t(L.recordAdded, { name: language.name.trim() }));
  return isAdded;
}

/** A language isn't taken for the time of its form: its lock can be given back by saving alone. */
export async function changeLanguage(was: Language, charsets: readonly Charset[]): Promise<boolean> {
  let language = was;
  const change = (part: Partial<Language>): void => {
    language = { ...language, ...part };
  };
  const save = over({ ...was }, () => language, saveLanguage);
  const isSaved = await formDialog(
    t(L.changeNamed, { name: was.name }),
    () => languageFields(language, charsets, change),
    t(L.save),
    save,
  );
  if (isSaved) toast(t(L.recordSaved, { name: language.name.trim() }));
  return isSaved;
}

// ---- Removals ----

interface Removal {
  readonly name: string;
  readonly says: string;
  /** How many pages keep it. */
  readonly pages: number;
  readonly parts: () => Promise<Part[]>;
  readonly run: () => Promise<unknown>;
}

const partList = (parts: readonly Part[]): TemplateResult =>
  parts.length === 0
    ? html`<p class="soft">${t(L.sitesAreEmpty)}</p>`
    : html`<h3>${t(L.goWithIt)}</h3><ul>${parts.map(({ what, count }) => html`<li>${what}: ${count}</li>`)}</ul>`;

/** What goes is told, and its name is typed. */
async function removalDialog({ name, says, pages, parts, run }: Removal): Promise<boolean> {
  let found: readonly Part[] | undefined;
  let typed = "";
  const answer = await dialog({
    title: `${t(L.removeNamed, { name })}?`,
    body: (box: TvxDialog) => {
      if (pages > 0)
        return html`<p class="notice warn">${icon("triangle-alert")}<span>${plural(pages, L.hasPagesOne, L.hasPagesMany, { name })} ${t(L.pagesMustGo)}</span></p>`;
      if (!found) {
        found = [];
        void parts()
          .then((all) => {
            found = all;
          })
          .finally(() => box.requestUpdate());
      }
      return html`<div class="stack"><p class="notice danger">${icon("trash-2")}<span>${says}</span></p>${partList(found)}
        <div class="field"><label for="removal-name">${t(L.typeNameOf, { name })}</label>
          <input id="removal-name" class="input" autocomplete="off" @input=${(event: Event) => {
            typed = (event.target as HTMLInputElement).value;
            box.requestUpdate();
          }} /></div></div>`;
    },
    actions: () =>
      pages > 0
        ? [{ name: "close", label: t(L.close), kind: "primary" }]
        : [
            { name: "cancel", label: t(L.cancel) },
            {
              name: "go",
              label: t(L.removeForGood),
              kind: "danger",
              disabled: typed.trim() === name.trim() ? "" : t(L.typeNameOf, { name }),
              run,
            },
          ],
  });
  if (answer !== "go") return false;
  toast(t(L.removedNamed, { name }));
  return true;
}

const pagesIn = ({ websites }: Register, isIn: (site: string, lang: string) => boolean): number =>
  [...websites].reduce((sum, [key, { pages }]) => {
    const [site = "", lang = ""] = key.split(".");
    return isIn(site, lang) ? sum + (pages ?? 0) : sum;
  }, 0);

export const endSite = (register: Register, { code, name }: Site): Promise<boolean> =>
  removalDialog({
    name: name || code,
    says: t(L.removeSiteWhat, { name: name || code }),
    pages: pagesIn(register, (site) => site === code),
    parts: () =>
      partsOf(
        register.languages.map((language): [string, string] => [code, language.code]),
        code,
      ),
    run: () => removeSite(code),
  });

export const endLanguage = (register: Register, { code, name }: Language): Promise<boolean> =>
  removalDialog({
    name: name || code,
    says: t(L.removeLanguageWhat, { name: name || code }),
    pages: pagesIn(register, (_, lang) => lang === code),
    parts: () => partsOf(register.sites.map((site): [string, string] => [site.code, code])),
    run: () => removeLanguage(code),
  });
