/** Forms of the modules' records: their fields by description, and a dialog that never saves over what others did. */

import { html, nothing, type TemplateResult } from "lit";
import { live } from "lit/directives/live.js";
import { Batch } from "../api";
import { icon } from "../kit/icon";
import { dialog, type TvxDialog } from "../kit/tvx-dialog";
import { L, t } from "../labels";
import { fromDateField, toDateField } from "../pages/model/setup";
import { type Stored, saveOver } from "./stored";
import "./modules.css";

export type Choice = readonly [value: string | number, label: string];

/** Words by the numbers that stand for them, the first of which is 0. */
export const numbered = (...words: string[]): readonly Choice[] => words.map((word, value) => [value, word]);

export interface Field<Values> {
  readonly name: keyof Values & string;
  readonly label: string;
  readonly kind: "text" | "area" | "number" | "check" | "choice" | "day";
  readonly hint?: string;
  readonly longest?: number;
  readonly least?: number;
  readonly most?: number;
  readonly choices?: readonly Choice[];
  /** What stands below the field: buttons that help to fill it. */
  readonly below?: TemplateResult;
}

/** Fields under a heading of their own; without one they stand first. */
export interface Group<Values> {
  readonly heading?: string;
  readonly fields: readonly Field<Values>[];
}

export type Change<Values> = (part: Partial<Values>) => void;

const asPart = <Values>(name: keyof Values, value: unknown): Partial<Values> =>
  ({ [name]: value }) as unknown as Partial<Values>;

function control<Values>(id: string, field: Field<Values>, values: Values, change: Change<Values>): TemplateResult {
  const { name, kind } = field;
  const value = values[name] as unknown;
  const described = field.hint ? `${id}-hint` : nothing;
  const typed = (event: Event) => (event.target as HTMLInputElement).value;
  switch (kind) {
    case "area":
      return html`<textarea id=${id} class="input" rows="8" maxlength=${field.longest ?? 8000} aria-describedby=${described} .value=${live(String(value ?? ""))}
        @input=${(event: Event) => change(asPart(name, typed(event)))}></textarea>`;
    case "choice":
      return html`<select id=${id} class="select" aria-describedby=${described} @change=${(event: Event) => {
        const chosen = field.choices?.find(([one]) => String(one) === typed(event))?.[0];
        change(asPart(name, chosen ?? ""));
      }}>${field.choices?.map(([one, label]) => html`<option value=${one} ?selected=${String(one) === String(value)}>${label}</option>`)}</select>`;
    case "day":
      return html`<input id=${id} class="input" type="date" aria-describedby=${described} .value=${live(toDateField(String(value ?? "")))}
        @input=${(event: Event) => change(asPart(name, fromDateField(typed(event))))} />`;
    case "number":
      return html`<input id=${id} class="input" type="number" min=${field.least ?? 0} max=${field.most ?? 32767} aria-describedby=${described} .value=${String(value ?? 0)}
        @input=${(event: Event) => /^-?\d+$/.test(typed(event)) && change(asPart(name, Number(typed(event))))}
        @change=${(event: Event) => {
          (event.target as HTMLInputElement).value = String(value ?? 0);
        }} />`;
    default:
      return html`<input id=${id} class="input" type="text" autocomplete="off" maxlength=${field.longest ?? 100} aria-describedby=${described} .value=${live(String(value ?? ""))}
        @input=${(event: Event) => change(asPart(name, typed(event)))} />`;
  }
}

function drawn<Values>(prefix: string, field: Field<Values>, values: Values, change: Change<Values>): TemplateResult {
  const id = `${prefix}-${field.name}`;
  const hint = field.hint ? html`<p class="note" id="${id}-hint">${field.hint}</p>` : nothing;
  if (field.kind === "check")
    return html`<div class="field"><label class="check"><input type="checkbox" aria-describedby=${field.hint ? `${id}-hint` : nothing} .checked=${live(Boolean(values[field.name]))}
      @change=${(event: Event) => change(asPart(field.name, (event.target as HTMLInputElement).checked ? 1 : 0))} /><span>${field.label}</span></label>${hint}</div>`;
  return html`<div class="field ${field.kind === "area" ? "whole" : ""}"><label for=${id}>${field.label}</label>${control(id, field, values, change)}${field.below ?? nothing}${hint}</div>`;
}

export interface RecordForm<Values> {
  readonly id: string;
  readonly title: string;
  readonly values: Values;
  readonly groups: (values: Values, change: Change<Values>) => readonly Group<Values>[];
  readonly save: Stored<Values>["save"];
  /** Where there was one before. */
  readonly now?: Stored<Values>["now"];
  /** What stands behind the fields. */
  readonly more?: (values: Values, box: TvxDialog) => TemplateResult;
}

/** One form on its way: what is typed, what it began with, and what others have made of that meanwhile. */
class FormQuestion<Values extends object> {
  private values: Values;
  private was: Values;
  private theirs: Values | undefined;
  private box: TvxDialog | undefined;

  constructor(private readonly form: RecordForm<Values>) {
    this.values = form.values;
    this.was = form.values;
  }

  async open(): Promise<Values | undefined> {
    const { form } = this;
    const answer = await dialog({
      title: form.title,
      wide: true,
      body: (box) => {
        this.box = box;
        return this.body(box);
      },
      actions: () => [
        { name: "cancel", label: t(L.cancel) },
        { name: "save", label: t(form.now ? L.save : L.addIt), kind: "primary", run: () => this.save() },
      ],
    });
    return answer === "save" ? this.values : undefined;
  }

  private readonly change: Change<Values> = (part) => {
    this.values = { ...this.values, ...part };
    this.box?.requestUpdate();
  };

  private async save(): Promise<boolean> {
    const { now, save } = this.form;
    if (now) return saveOver({ now, save }, (there) => this.unlessTheirs(there));
    await save(this.values, new Batch());
    return true;
  }

  /** What is typed, where it was begun with what is there. */
  private unlessTheirs(there: Values): Values | undefined {
    if (JSON.stringify(there) === JSON.stringify(this.was)) return this.values;
    this.theirs = there;
    this.box?.requestUpdate();
    return undefined;
  }

  private take(theirs: Values, values: Values): void {
    this.was = theirs;
    this.values = values;
    this.theirs = undefined;
    this.box?.requestUpdate();
  }

  private body(box: TvxDialog): TemplateResult {
    const { form, theirs } = this;
    return html`${
      theirs
        ? html`<div class="notice warn" role="alert">${icon("triangle-alert")}<span class="grow">${t(L.moduleRecordChanged)}</span>
          <button type="button" class="button small" @click=${() => this.take(theirs, theirs)}>${t(L.loadTheirs)}</button>
          <button type="button" class="button small" @click=${() => this.take(theirs, this.values)}>${t(L.goOnWithMine)}</button></div>`
        : nothing
    }${form.groups(this.values, this.change).map(
      ({
        heading,
        fields,
      }) => html`<fieldset class="module-fields">${heading ? html`<legend>${heading}</legend>` : nothing}
        ${fields.map((field) => drawn(form.id, field, this.values, this.change))}</fieldset>`,
    )}${form.more?.(this.values, box) ?? nothing}`;
  }
}

/** What was saved, or nothing. */
export const recordForm = <Values extends object>(form: RecordForm<Values>): Promise<Values | undefined> =>
  new FormQuestion(form).open();
