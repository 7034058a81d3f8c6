/** Whom a change of rights hits, before it is made. */

import { html, nothing, type TemplateResult } from "lit";
import { icon } from "../kit/icon";
import { dialog } from "../kit/tvx-dialog";
import { L, number, plural, t } from "../labels";
import { workplace } from "../shell/workplace";
import type { Places } from "./data";
import { type Hit, takesFrom } from "./model/grants";
import { accessWord, doingWord, websiteText } from "./words";
import "../pages/dialogs.css";
import "./rights.css";

/** "publishing in Garden · English", "changing Roles". */
function whatText(hit: Hit, places: Places): string {
  if (hit.task)
    return t(L.taskInWebsite, { task: doingWord(hit.task), website: websiteText(places.websites, hit.website ?? "") });
  const entry = places.entries.find(({ advId }) => advId === hit.entry);
  return t(L.accessToEntry, { access: accessWord(hit.access ?? "view"), entry: entry?.title ?? String(hit.entry) });
}

/** "Takes publishing in Garden · English from 4 logins". */
export function hitText(hit: Hit, places: Places): string {
  const what = whatText(hit, places);
  const { length } = hit.people;
  return hit.taken
    ? plural(length, L.takesFromOne, L.takesFromMany, { what })
    : plural(length, L.givesToOne, L.givesToMany, { what });
}

function people(hit: Hit): TemplateResult {
  return html`<ul class="hit-people">${hit.people.map(
    ({ name, pages }) =>
      html`<li>${name}${pages ? html` <span class="soft">${plural(pages, L.onePageOf, L.manyPagesOf, { pages: number(pages) })}</span>` : nothing}</li>`,
  )}</ul>`;
}

export const hitList = (hits: readonly Hit[], places: Places): TemplateResult =>
  html`<ul class="hits">${hits.map(
    (hit) =>
      html`<li class=${hit.taken ? "taken" : "given"}>${icon(hit.taken ? "triangle-alert" : "plus")}<div><strong>${hitText(hit, places)}</strong>${people(hit)}</div></li>`,
  )}</ul>`;

/** Asks whether a change that hits somebody is to be made; what she takes from herself stands first. */
export async function impactDialog(
  title: string,
  action: string,
  hits: readonly Hit[],
  places: Places,
  run: () => Promise<unknown>,
  danger = false,
): Promise<boolean> {
  const own = takesFrom(hits, workplace.value.login?.loginId ?? 0);
  const answer = await dialog({
    title,
    wide: true,
    body: () =>
      html`${
        own.length
          ? html`<p class="notice danger">${icon("circle-alert")}<span>${t(L.takesFromYourself, { what: own.map((hit) => whatText(hit, places)).join(", ") })}</span></p>`
          : nothing
      }${hits.length ? hitList(hits, places) : html`<p>${t(L.hitsNobody)}</p>`}`,
    actions: () => [
      { name: "cancel", label: t(L.cancel) },
      { name: "go", label: action, kind: own.length || danger ? "danger" : "primary", run },
    ],
  });
  return answer === "go";
}
