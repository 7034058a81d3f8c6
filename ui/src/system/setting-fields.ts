/** A setting with what it means, what is usual, and when a change counts. */

import { html, nothing, type TemplateResult } from "lit";
import { live } from "lit/directives/live.js";
import { icon } from "../kit/icon";
import { L, type Label, t } from "../labels";
import { word } from "../pages/words";
import type { Setting } from "./data";

const TAKES: Partial<Record<Setting["takes"], Label>> = {
  session: L.settingSession,
  file: L.settingFile,
  unused: L.settingUnused,
};

const valueText = ({ dataType }: Setting, value: string): string => {
  if (dataType === "B") return t(value === "1" ? L.yes : L.no);
  return value || t(L.settingNothing);
};

export interface SettingField {
  readonly setting: Setting;
  readonly value: string;
  readonly fixed: boolean;
  readonly change: (value: string) => void;
  /** It is told when the field is left, not with each key. */
  readonly late?: boolean;
  /** Choices in place of a field for any text. */
  readonly choices?: readonly (readonly [string, string])[];
}

/** Whether a number is one that can be kept. */
export const isKept = ({ dataType }: Setting, value: string): boolean =>
  dataType !== "N" || (/^-?\d{1,5}$/.test(value.trim()) && Math.abs(Number(value)) <= 32_767);

/** Of what can't be left empty an empty text is no usual value: it is a choice that was made. */
export const isUsual = (setting: Setting, value: string): boolean =>
  setting.usual === null || value === setting.usual || !isKept(setting, setting.usual);

function field({ setting, value, fixed, change, choices, late }: SettingField, id: string): TemplateResult {
  const describedBy = `${id}-note`;
  const changed = (event: Event) => change((event.target as HTMLInputElement).value);
  if (setting.dataType === "B")
    return html`<label class="check"><input id=${id} type="checkbox" ?disabled=${fixed} .checked=${live(value === "1")} aria-describedby=${describedBy}
      @change=${(event: Event) => change((event.target as HTMLInputElement).checked ? "1" : "0")} /><span>${setting.meaning || setting.parameter}</span></label>`;
  const control = choices
    ? html`<select id=${id} class="select" ?disabled=${fixed} aria-describedby=${describedBy} @change=${changed}>
        ${choices.some(([one]) => one === value) ? nothing : html`<option value=${value} selected>${value}</option>`}
        ${choices.map(([one, text]) => html`<option value=${one} ?selected=${one === value}>${text}</option>`)}</select>`
    : html`<input id=${id} class="input" ?readonly=${fixed} autocomplete="off" maxlength=${setting.dataType === "N" ? 6 : 2000} inputmode=${setting.dataType === "N" ? "numeric" : "text"}
        aria-invalid=${isKept(setting, value) || value === setting.content ? nothing : "true"} aria-describedby=${describedBy} .value=${live(value)} @input=${late ? nothing : changed} @change=${late ? changed : nothing} />`;
  return html`<div class="field"><label for=${id}>${setting.meaning || setting.parameter}</label>${control}</div>`;
}

export function settingField(options: SettingField): TemplateResult {
  const { setting, value, fixed, change } = options;
  const id = `setting-${setting.parameter}`;
  const differs = !isUsual(setting, value);
  const takes = TAKES[setting.takes];
  return html`<div class="setting">${field(options, id)}
    <p class="note setting-note" id="${id}-note"><code>${setting.parameter}</code>
      ${differs ? html`<span class="rights-mark warn">${t(L.settingDiffers)}</span> <span>${t(L.settingUsual, { value: valueText(setting, setting.usual ?? "") })}</span>` : nothing}
      ${takes ? html`<span>${word(takes)}</span>` : nothing}</p>
    ${differs && !fixed ? html`<button type="button" class="button small quiet" @click=${() => change(setting.usual ?? "")}>${icon("undo-2")}${t(L.settingBack)}</button>` : nothing}</div>`;
}
