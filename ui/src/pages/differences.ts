/** Rows of a comparison as people read them: short texts side by side, bodies by their words. */

import { html, type TemplateResult } from "lit";
import { L, type Label, plural, t } from "../labels";
import { type Difference, onlyMarkUp, wordCounts, wordsOf } from "./model/changes";
import { word } from "./words";

export type { Difference };

const PARTS: Readonly<Record<string, Label>> = {
  title: L.partTitle,
  type: L.partKind,
  template: L.partTemplate,
  basetemplate: L.partBase,
  stylesheet: L.partStylesheet,
  application: L.partApplication,
  appparampublic: L.partParamsPublic,
  appparamadmin: L.partParamsAdmin,
  appsystemfolder: L.partSystemFolder,
  navigation: L.partNavigation,
  previous: L.partPrevious,
  next: L.partNext,
  up: L.partUp,
  onlinefrom: L.partFrom,
  onlineto: L.partTo,
  breadcrumb: L.partTrail,
  dynmenu: L.partMenu,
  groups: L.partGroups,
  loginpage: L.partLogin,
};

export function partName(difference: Difference): string {
  if (difference.part === "metaData") return difference.name ?? difference.part;
  if (difference.part === "bodyKind") return t(L.bodyKindOf, { number: difference.bodyId });
  if (difference.part === "body") return t(L.bodyNumber, { number: difference.bodyId });
  const label = PARTS[difference.part.toLowerCase()];
  return label === undefined ? difference.part : word(label);
}

export function bodyCounts(difference: Difference): string {
  if (onlyMarkUp(difference)) return t(L.onlyMarkUp);
  const { more, fewer } = wordCounts(wordsOf(difference.live), wordsOf(difference.design));
  const told = [];
  if (more) told.push(plural(more, L.wordsMoreOne, L.wordsMoreMany));
  if (fewer) told.push(plural(fewer, L.wordsFewerOne, L.wordsFewerMany));
  return told.join(", ");
}

const shown = (text: string): TemplateResult => (text === "" ? html`<span class="soft">–</span>` : html`${text}`);

export function differenceRow(difference: Difference): TemplateResult {
  const value =
    difference.part === "body"
      ? html`${bodyCounts(difference)}`
      : html`<del>${shown(difference.live)}</del> <span aria-hidden="true">→</span> <ins>${shown(difference.design)}</ins>`;
  return html`<div><dt>${partName(difference)}</dt><dd>${value}</dd></div>`;
}
