import { html, nothing, type TemplateResult } from "lit";
import type { IconName } from "./icons.gen";
import sprite from "./icons.gen.svg?url";

export type { IconName };

/** A picture beside a word; with a label of its own when no word stands there. */
export function icon(name: IconName, label = ""): TemplateResult {
  return html`<svg class="icon" role=${label ? "img" : nothing} aria-hidden=${label ? nothing : "true"} aria-label=${label || nothing}><use href="${sprite}#${name}"></use></svg>`;
}
