import { html, type TemplateResult } from "lit";
import { L, t } from "../labels";
import { icon } from "./icon";
import { toast } from "./tvx-toast";

async function copy(text: string): Promise<void> {
  try {
    await navigator.clipboard.writeText(text);
    toast(t(L.copiedIt));
  } catch {
    // Without leave for the clipboard it is still there to be read and marked.
  }
}

/** Copies a text that is shown beside it. */
export const copyButton = (text: string): TemplateResult =>
  html`<button type="button" class="button" @click=${() => copy(text)}>${icon("copy")}${t(L.copy)}</button>`;
