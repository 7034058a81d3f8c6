/** Sites by languages: the register of either, with what each pair of them is. */

import { html, nothing, type TemplateResult } from "lit";
import { customElement, property, state } from "lit/decorators.js";
import { live } from "lit/directives/live.js";
import { TvxElement } from "../kit/element";
import { faultNotice } from "../kit/fault-notice";
import { icon } from "../kit/icon";
import { toast } from "../kit/tvx-toast";
import { L, type Label, plural, t } from "../labels";
import { failed } from "../pages/actions";
import { word } from "../pages/words";
import { renewWebsites } from "../shell/session";
import { Changed, keyOf, type Language, type Register, registerOf, type Site, saveTitle, type Website } from "./data";
import { changeLanguage, changeSite, endLanguage, endSite, newLanguage, newSite } from "./dialogs";
import "../pages/lists.css";
import "../rights/rights.css";
import "./websites.css";

export type Subject = "sites" | "languages" | "titles";

const HEADS: Readonly<Record<Subject, { title: Label; hint: Label }>> = {
  sites: { title: L.sites, hint: L.sitesHint },
  languages: { title: L.languages, hint: L.languagesHint },
  titles: { title: L.websiteTitle, hint: L.titlesHint },
};

/** A title as it was typed, and what keeps it from being saved. */
interface Unsaved {
  readonly title: string;
  readonly fault: string;
}

/** A row or a column: a site or a language. */
interface Axis {
  readonly code: string;
  readonly name: string;
  readonly note: string;
}

const ofSite = ({ code, name, description }: Site): Axis => ({ code, name, note: description });
const ofLanguage = ({ code, name, charset }: Language): Axis => ({ code, name, note: charset });

@customElement("tvx-websites")
export class TvxWebsites extends TvxElement {
  @property() subject: Subject = "sites";
  @state() private register: Register | undefined;
  @state() private fault: unknown;
  /** Titles that couldn't be saved, by their website. */
  @state() private unsaved: ReadonlyMap<string, Unsaved> = new Map();

  override connectedCallback(): void {
    super.connectedCallback();
    void this.load();
  }

  private readonly load = async (): Promise<void> => {
    try {
      this.register = await registerOf();
      this.fault = undefined;
    } catch (error) {
      this.fault = error;
    }
  };

  /** What a dialog has changed is seen here and in the choice of websites. */
  private async afterwards(changed: Promise<boolean>): Promise<void> {
    try {
      if (!(await changed)) return;
      await renewWebsites();
    } catch (error) {
      failed(error);
    }
    await this.load();
  }

  private add(register: Register): void {
    void this.afterwards(this.subject === "languages" ? newLanguage(register.charsets) : newSite());
  }

  private change(register: Register, code: string): void {
    const site = register.sites.find((one) => one.code === code);
    const language = register.languages.find((one) => one.code === code);
    if (this.subject === "sites" && site) void this.afterwards(changeSite(site));
    if (this.subject === "languages" && language) void this.afterwards(changeLanguage(language, register.charsets));
  }

  private end(register: Register, code: string): void {
    const site = register.sites.find((one) => one.code === code);
    const language = register.languages.find((one) => one.code === code);
    if (this.subject === "sites" && site) void this.afterwards(endSite(register, site));
    if (this.subject === "languages" && language) void this.afterwards(endLanguage(register, language));
  }

  private mayAdd({ maySites, mayLanguages }: Register): boolean {
    if (this.subject === "titles") return false;
    return this.subject === "sites" ? maySites : mayLanguages;
  }

  protected override render(): TemplateResult {
    const { register } = this;
    const { title, hint } = HEADS[this.subject];
    return html`<section class="list-screen" aria-busy=${register || this.fault ? nothing : "true"}>
      <header class="list-head"><h1 class="grow">${word(title)}</h1>
        ${register && this.mayAdd(register) ? html`<button class="button primary" @click=${() => this.add(register)}>${icon("plus")}${t(this.subject === "sites" ? L.newSite : L.newLanguage)}</button>` : nothing}</header>
      <p class="list-note soft">${word(hint)}</p>
      ${faultNotice(this.fault, this.load)}
      ${register ? this.matrix(register) : nothing}
    </section>`;
  }

  private matrix(register: Register): TemplateResult {
    const byLanguage = this.subject === "languages";
    const [rows, columns] = byLanguage
      ? [register.languages.map(ofLanguage), register.sites.map(ofSite)]
      : [register.sites.map(ofSite), register.languages.map(ofLanguage)];
    const mayChange = this.mayAdd(register);
    return html`<div class="matrix-scroll card" tabindex="0" role="group" aria-label=${word(HEADS[this.subject].title)}>
      <table class="matrix websites">
        <thead><tr><th scope="col">${t(byLanguage ? L.language : L.site)}</th>${columns.map(
          ({ code, name }) => html`<th scope="col">${name} <span class="soft">${code}</span></th>`,
        )}${mayChange ? html`<td></td>` : nothing}</tr></thead>
        <tbody>${rows.map(
          (
            row,
          ) => html`<tr><th scope="row"><span class="website-name">${row.name}</span> <span class="soft">${row.code}</span>
            ${row.note ? html`<p class="note">${row.note}</p>` : nothing}</th>
            ${columns.map((column) => (byLanguage ? this.cell(register, column, row, column.name) : this.cell(register, row, column, column.name)))}
            ${mayChange ? this.tools(register, row) : nothing}</tr>`,
        )}</tbody>
      </table></div>`;
  }

  private tools(register: Register, { code, name }: Axis): TemplateResult {
    const change = t(L.changeNamed, { name });
    const end = t(L.removeNamed, { name });
    return html`<td class="website-tools"><span class="website-buttons">
      <button class="button quiet icon-only" aria-label=${change} title=${change} @click=${() => this.change(register, code)}>${icon("pencil")}</button>
      <button class="button quiet icon-only" aria-label=${end} title=${end} @click=${() => this.end(register, code)}>${icon("trash-2")}</button></span></td>`;
  }

  private cell(register: Register, site: Axis, lang: Axis, label: string): TemplateResult {
    const website = register.websites.get(keyOf(site.code, lang.code));
    if (!website) return html`<td data-label=${label}></td>`;
    const pages =
      website.pages === undefined
        ? nothing
        : html`<span class="note">${plural(website.pages, L.onePageThere, L.manyPagesThere)}</span>`;
    const title =
      this.subject === "titles" && website.mayTitle
        ? this.titleField(site, lang, website)
        : html`<span class=${website.title ? "" : "soft"}>${website.title || t(L.noTitleYet)}</span>`;
    return html`<td data-label=${label}><div class="website-cell">${title}${pages}</div></td>`;
  }

  private titleField(site: Axis, lang: Axis, { title }: Website): TemplateResult {
    const key = keyOf(site.code, lang.code);
    const website = `${site.name} · ${lang.name}`;
    const unsaved = this.unsaved.get(key);
    const keep = (wanted: string) => this.keep(site, lang, website, wanted.trim());
    return html`<input class="input" maxlength="255" autocomplete="off" aria-label=${t(L.titleOf, { website })} aria-invalid=${unsaved ? "true" : nothing}
        aria-describedby=${unsaved ? `fault-${key}` : nothing} .value=${live(unsaved?.title ?? title)}
        @change=${(event: Event) => keep((event.target as HTMLInputElement).value)} />
      ${
        unsaved
          ? html`<div role="alert" class="website-fault"><p class="note wrong" id="fault-${key}">${unsaved.fault}</p>
          <button class="button small" @click=${() => this.forget(key)}>${t(L.loadTheirs)}</button><button class="button small" @click=${() => keep(unsaved.title)}>${t(L.goOnWithMine)}</button></div>`
          : nothing
      }`;
  }

  private forget(key: string): void {
    const unsaved = new Map(this.unsaved);
    unsaved.delete(key);
    this.unsaved = unsaved;
  }

  private put(key: string, title: string): void {
    const { register } = this;
    const website = register?.websites.get(key);
    if (register && website)
      this.register = { ...register, websites: new Map(register.websites).set(key, { ...website, title }) };
  }

  /** Saved as it is left; what was typed stays where it couldn't be. */
  private async keep(site: Axis, lang: Axis, website: string, title: string): Promise<void> {
    const key = keyOf(site.code, lang.code);
    const was = this.register?.websites.get(key)?.title ?? "";
    if (title === was) {
      this.forget(key);
      return;
    }
    try {
      await saveTitle(site.code, lang.code, was, title);
      this.put(key, title);
      this.forget(key);
      const undo = async (): Promise<void> => {
        await saveTitle(site.code, lang.code, title, was).catch(failed);
        await this.load();
      };
      toast(t(L.titleKept, { website, title }), { undo });
      await renewWebsites();
    } catch (error) {
      if (error instanceof Changed) this.put(key, String(error.theirs));
      const fault = error instanceof Error ? error.message : String(error);
      this.unsaved = new Map(this.unsaved).set(key, { title, fault });
    }
  }
}
