/** The fields of a form, one below the other or side by side. */

import { html, nothing, type TemplateResult } from "lit";
import { live } from "lit/directives/live.js";
import { icon } from "../kit/icon";
import { L, t } from "../labels";
import { word } from "../pages/words";
import { textField } from "../records/fields";
import type { FormField, Texts } from "./forms";

/** An address that can be opened from here, and nothing that would run in this document. */
const isOpenable = (address: string): boolean => /^(https?:\/\/|\/(?!\/))/i.test(address);

const tryLink = (address: string): TemplateResult =>
  html`<a class="note" href=${address} target="_blank" rel="noopener noreferrer">${icon("external-link")} ${t(L.tryAddress)}</a>`;

export function formFields(
  id: string,
  fields: readonly FormField[],
  texts: Texts,
  fixed: boolean,
  change: (part: string, text: string) => void,
): TemplateResult[] {
  return fields.map(({ part, label, longest, hint, kind }) => {
    const value = texts[part] ?? "";
    if (kind === "flag")
      return html`<div class="field"><label class="check"><input type="checkbox" .checked=${live(value === "1")} ?disabled=${fixed}
        @change=${(event: Event) => change(part, (event.target as HTMLInputElement).checked ? "1" : "")} /><span>${word(label)}</span></label></div>`;
    return html`<div>${textField({
      id: `${id}-${part}`,
      label: word(label),
      value,
      longest,
      fixed,
      ...(hint ? { hint: word(hint) } : {}),
      change: (text) => change(part, text),
    })}${kind === "address" && isOpenable(value) ? tryLink(value) : nothing}</div>`;
  });
}
