/** A refusal inside a window or a panel, with what can be done about it. */

import { html, nothing, type TemplateResult } from "lit";
import { icon } from "../kit/icon";
import type { Toast } from "../kit/tvx-toast";

/** `end` closes what the refusal stands in, before the next step is done. */
export function refusalNotice(text: string, move: Toast["action"], end: () => void): TemplateResult | typeof nothing {
  if (!text) return nothing;
  const run = (): void => {
    end();
    void move?.run();
  };
  return html`<div class="notice warn" role="alert">${icon("triangle-alert")}<span class="grow">${text}</span>${
    move ? html`<button type="button" class="button small" @click=${run}>${move.label}</button>` : nothing
  }</div>`;
}
