/** An application or a feed: what it holds, what it gives, and the pages that use it. */

import { html, nothing, type TemplateResult } from "lit";
import { customElement, property, state } from "lit/decorators.js";
import { icon } from "../kit/icon";
import { L, number, t } from "../labels";
import { mayChange } from "../records/lock";
import { changedParts, withOwn } from "../records/model/own-parts";
import { RecordElement, type RecordWords } from "../records/record";
import { formFields } from "./form-fields";
import { FORMS, type FormData, type FormKind, formOf, saveForm, type Texts } from "./forms";
import { removalDialog, useList } from "./uses";
import "./design.css";

/** What a feed gave, or why nothing came. */
interface Tried {
  readonly text: string;
  readonly seconds: number;
  readonly isFault: boolean;
}

@customElement("tvx-form")
export class TvxForm extends RecordElement<FormData> {
  @property({ attribute: false }) form: FormKind = FORMS[0]!;
  @state() private texts: Texts = {};
  @state() private tried: Tried | undefined;
  @state() private trying = false;
  @state() private mayRemove = false;

  protected get item(): string {
    return this.form.item;
  }

  protected get address(): string {
    return this.form.address;
  }

  protected get words(): RecordWords {
    return { icon: this.form.icon, isGone: L.recordIsGone, isOthers: L.designChanged };
  }

  protected async read(id: number): Promise<FormData> {
    const [form, mayRemove] = await Promise.all([formOf(this.form, id), mayChange(this.form.entry)]);
    this.mayRemove = mayRemove;
    return form;
  }

  protected take({ texts }: FormData, keepMine: boolean): void {
    const { record: was, texts: mine } = this;
    this.texts = keepMine && was ? withOwn(Object.keys(mine), texts, mine, was.texts) : texts;
    this.tried = undefined;
  }

  protected get differs(): boolean {
    const { record: was, texts: mine } = this;
    return was !== undefined && changedParts(Object.keys(mine), mine, was.texts).length > 0;
  }

  protected async store(form: FormData): Promise<string> {
    await saveForm(this.form, form, this.texts);
    return t(L.recordSaved, { name: (this.texts.name ?? "").trim() });
  }

  protected heading({ id, texts }: FormData): string {
    return texts.name || `[${id}]`;
  }

  protected buttons(form: FormData): TemplateResult {
    if (!this.mayRemove || !form.isThere) return html``;
    return html`<button class="button" @click=${() => this.removeIt(form)}>${icon("trash-2")}${t(L.delete)}</button>`;
  }

  private async removeIt({ id, uses, texts }: FormData): Promise<void> {
    const name = texts.name ?? "";
    const says = t(L.removeRecordWhat, { name });
    if (await removalDialog(name, uses, says, () => this.form.remove(id))) this.removed(t(L.removedNamed, { name }));
  }

  private async tryIt(id: number): Promise<void> {
    const { tries } = this.form;
    if (!tries || this.trying || this.differs) return;
    this.trying = true;
    const begun = performance.now();
    const took = (): number => (performance.now() - begun) / 1000;
    try {
      const text = await tries(id);
      this.tried = { text, seconds: took(), isFault: false };
    } catch (error) {
      this.tried = { text: error instanceof Error ? error.message : String(error), seconds: took(), isFault: true };
    }
    this.trying = false;
  }

  protected sheet(form: FormData): TemplateResult {
    if (!form.isThere) return html`<div class="empty">${icon(this.form.icon)}<p>${t(L.recordIsGone)}</p></div>`;
    const change = (part: string, text: string): void => {
      this.texts = { ...this.texts, [part]: text };
    };
    return html`<div class="design-form">${formFields("form", this.form.fields, this.texts, this.isFixed, change)}</div>
      ${this.form.tries ? this.trial(form) : nothing}
      <h2>${t(L.whereUsed)}</h2>${useList(form.uses)}`;
  }

  private trial({ id }: FormData): TemplateResult {
    const { tried } = this;
    const waits = this.differs ? t(L.saveBeforeTrying) : "";
    return html`<h2>${t(L.whatItGives)}</h2>
      <div><button class="button" aria-disabled=${waits ? "true" : nothing} aria-busy=${this.trying ? "true" : nothing} title=${waits || nothing} @click=${() => this.tryIt(id)}>${icon("refresh-cw")}${t(L.tryFeed)}</button></div>
      <div role="status">${tried ? this.answer(tried) : nothing}</div>`;
  }

  private answer({ text, seconds, isFault }: Tried): TemplateResult {
    const took = t(L.tookSeconds, { seconds: number(seconds, { maximumFractionDigits: 2 }) });
    if (isFault) return html`<p class="notice danger">${icon("circle-alert")}<span>${text} ${took}</span></p>`;
    return html`<p class="note">${took} ${text ? "" : t(L.gaveNothing)}</p>
      ${text ? html`<pre class="card feed-answer" tabindex="0" aria-label=${t(L.whatItGives)}>${text}</pre>` : nothing}`;
  }
}
