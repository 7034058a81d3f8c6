/** What kept a screen from being shown, and what its reader can do about it. */

import { html, nothing, type TemplateResult } from "lit";
import { isProblem } from "../api/problem";
import { L, t } from "../labels";
import { icon } from "./icon";

export const faultText = (fault: unknown): string => (fault instanceof Error ? fault.message : String(fault));

/** Whoever has no right to something would be refused again: she is led to what is hers. */
const isRefused = (fault: unknown): boolean => isProblem(fault) && fault.status === 403;

/** Nothing without a fault; `where` are classes that give the notice its place. */
export function faultNotice(fault: unknown, again: () => unknown, where = ""): TemplateResult | typeof nothing {
  if (!fault) return nothing;
  return html`<div class="notice danger ${where}" role="alert">${icon("circle-alert")}<span class="grow">${faultText(fault)}</span>
    ${
      isRefused(fault)
        ? html`<a class="button small" href="/torvex/">${t(L.toTheDashboard)}</a>`
        : html`<button type="button" class="button small" @click=${() => again()}>${t(L.tryAgain)}</button>`
    }</div>`;
}
