import { html, nothing, type TemplateResult } from "lit";
import { pressPrimary } from "../kit/press-primary";
import { L, t } from "../labels";

interface CodeField {
  readonly id: string;
  readonly change: (text: string) => unknown;
  readonly hint?: string;
  /** What describes it in place of a hint of its own. */
  readonly describedBy?: string;
  readonly isFirst?: boolean;
}

/** Where a code of the second factor is typed, in a dialog. */
export const codeField = ({ id, change, hint, describedBy, isFirst = false }: CodeField): TemplateResult =>
  html`<div class="field"><label for=${id}>${t(L.factorCode)}</label>
    <input id=${id} class="input" inputmode="numeric" autocomplete="one-time-code" maxlength="50" ?autofocus=${isFirst}
      aria-describedby=${hint ? `${id}-hint` : (describedBy ?? nothing)} @input=${(event: Event) => change((event.target as HTMLInputElement).value)} @keydown=${pressPrimary} />
    ${hint ? html`<p class="note" id="${id}-hint">${hint}</p>` : nothing}</div>`;
