/** Fields that the screens of records share. */

import { html, nothing, type TemplateResult } from "lit";
import { L, t } from "../labels";
import { setQuery } from "../shell/address";

interface TextField {
  id: string;
  label: string;
  value: string;
  longest: number;
  change: (text: string) => unknown;
  fixed?: boolean;
  type?: string;
  hint?: string;
  /** What is wrong with it. */
  wrong?: string;
}

export const textField = ({ id, label, value, longest, change, fixed, type, hint, wrong }: TextField): TemplateResult =>
  html`<div class="field"><label for=${id}>${label}</label>
    <input id=${id} class="input" type=${type ?? "text"} autocomplete="off" maxlength=${longest} ?readonly=${fixed ?? false} .value=${value}
      aria-invalid=${wrong ? "true" : nothing} aria-describedby=${[hint && `${id}-hint`, wrong && `${id}-wrong`].filter(Boolean).join(" ") || nothing} @input=${(event: Event) => change((event.target as HTMLInputElement).value)} />
    ${hint ? html`<p class="note" id="${id}-hint">${hint}</p>` : nothing}${wrong ? html`<p class="note wrong" id="${id}-wrong" role="status">${wrong}</p>` : nothing}</div>`;

/** Narrows a list; what was typed stands in the address. */
export const filterField = (words: string): TemplateResult =>
  html`<input class="input list-filter" type="search" aria-label=${t(L.filterList)} placeholder=${t(L.filterList)} .value=${words}
    @input=${(event: Event) => setQuery({ words: (event.target as HTMLInputElement).value })} />`;

/** Whether each word stands somewhere in the texts. */
export const matches = (words: string, ...texts: string[]): boolean => {
  const all = texts.join(" ").toLocaleLowerCase();
  return words
    .toLocaleLowerCase()
    .split(/\s+/)
    .every((word) => all.includes(word));
};
