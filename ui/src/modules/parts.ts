/** Parts that the screens of the modules draw alike. */

import { html, type nothing, type TemplateResult } from "lit";
import { repeat } from "lit/directives/repeat.js";
import { type IconName, icon } from "../kit/icon";
import { stateMark } from "../kit/marks";
import { dialog } from "../kit/tvx-dialog";
import { L, t } from "../labels";
import { elementOf, markupOf } from "./markup";
import { stateOf, type Twins } from "./model";

export const recordState = (twins: Twins): TemplateResult | typeof nothing => stateMark(stateOf(twins), { word: true });

export const emptyNote = (name: IconName, text: string): TemplateResult =>
  html`<div class="empty">${icon(name)}<p>${text}</p></div>`;

/** A button with its word; the whole of it is told to those who don't see what it stands beside. */
export const wordButton = (name: IconName, label: string, whole: string, run: () => unknown): TemplateResult =>
  html`<button type="button" class="button" aria-label=${whole} @click=${run}>${icon(name)}${label}</button>`;

export const editButton = (name: string, run: () => unknown): TemplateResult =>
  wordButton("pencil", t(L.edit), t(L.editNamed, { name }), run);

export const removeButton = (name: string, run: () => unknown): TemplateResult =>
  wordButton("trash-2", t(L.delete), t(L.removeNamed, { name }), run);

export const previewButton = (name: string, run: () => unknown): TemplateResult =>
  wordButton("eye", t(L.preview), t(L.previewNamed, { name }), run);

export const publishButton = (name: string, run: () => unknown): TemplateResult =>
  wordButton("send", t(L.publish), t(L.publishNamed, { name }), run);

/** Marks a record for removal, or takes that back. */
export const markButton = (name: string, deleted: number, run: () => unknown): TemplateResult =>
  deleted
    ? wordButton("rotate-ccw", t(L.moduleUnmark), t(L.moduleUnmarkNamed, { name }), run)
    : removeButton(name, run);

/** A line of what is known of a record; what is empty is left out. */
export const noteOf = (...told: string[]): TemplateResult =>
  html`<p class="note">${told.filter(Boolean).join(" · ")}</p>`;

export const moduleList = <Row>(
  rows: readonly Row[],
  keyOf: (row: Row) => string | number,
  draw: (row: Row) => TemplateResult,
): TemplateResult => html`<ul class="module-list" role="list">${repeat(rows, keyOf, draw)}</ul>`;

/** The button behind a list that goes on. */
export const moreButton = (run: () => unknown): TemplateResult =>
  html`<button type="button" class="button" @click=${run}>${t(L.showMore)}</button>`;

/** What a template has drawn, without what could run or load in it. */
export const previewBox = (content: string): TemplateResult =>
  html`<div class="module-preview" tabindex="0" role="group" aria-label=${t(L.preview)}>${content.trim() ? elementOf(markupOf(content)) : html`<p class="soft">${t(L.previewEmpty)}</p>`}</div>`;

export const previewDialog = (title: string, content: string): Promise<string> =>
  dialog({ title, wide: true, body: () => previewBox(content) });
