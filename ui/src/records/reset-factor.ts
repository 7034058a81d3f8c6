/** Taking the second factor from somebody who has lost it. */

import { html, type TemplateResult } from "lit";
import { icon } from "../kit/icon";
import { ask } from "../kit/tvx-dialog";
import { toast } from "../kit/tvx-toast";
import { L, t } from "../labels";
import { failed } from "../pages/actions";

/** After asking; false when she is let keep it. Whatever came of it is told. */
export async function resetFactorOf(name: string, reset: () => Promise<unknown>): Promise<boolean> {
  if (!(await ask(t(L.factorResetOf, { name }), t(L.factorResetAsk, { name }), t(L.factorReset), "danger")))
    return false;
  try {
    await reset();
    toast(t(L.factorIsReset, { name }));
  } catch (error) {
    failed(error);
  }
  return true;
}

export const resetFactorButton = (reset: () => unknown): TemplateResult =>
  html`<button class="button" @click=${reset}>${icon("shield")}${t(L.factorReset)}</button>`;
