/** Where something of the design is used, and what can't be removed for it. */

import { html, type TemplateResult } from "lit";
import { icon } from "../kit/icon";
import { dialog } from "../kit/tvx-dialog";
import { L, plural, t } from "../labels";
import { titleOr } from "../pages/words";
import { pageAddress } from "../shell/address";
import type { Use } from "./data";

/** The server tells so many of them. */
const MOST = 500;

interface UsedPage extends Use {
  readonly isLive: boolean;
  readonly isDesign: boolean;
}

/** Each page once. */
export function pagesOf(uses: readonly Use[]): UsedPage[] {
  const pages = new Map<number, UsedPage>();
  for (const use of uses) {
    const { isLive = false, isDesign = false } = pages.get(use.pageId) ?? {};
    pages.set(use.pageId, { ...use, isLive: isLive || use.twin === "L", isDesign: isDesign || use.twin === "D" });
  }
  return [...pages.values()];
}

const whereText = ({ isLive, isDesign }: UsedPage): string =>
  isLive && isDesign ? t(L.usedInBoth) : t(isLive ? L.usedLive : L.usedInDesign);

export function useList(uses: readonly Use[]): TemplateResult {
  const pages = pagesOf(uses);
  if (pages.length === 0) return html`<p class="soft">${t(L.usedNowhere)}</p>`;
  return html`<ul class="use-list" role="list">${pages.map(
    (page) =>
      html`<li><a href=${pageAddress(page.pageId)}>${titleOr(page.title)}</a> <span class="note">${whereText(page)}</span></li>`,
  )}</ul>${uses.length >= MOST ? html`<p class="note">${t(L.usedMore)}</p>` : ""}`;
}

/** Asks before it is removed; what is used stays, and the pages that use it are told. */
export async function removalDialog(
  name: string,
  uses: readonly Use[],
  says: string,
  remove: () => Promise<unknown>,
): Promise<boolean> {
  const count = pagesOf(uses).length;
  const answer = await dialog({
    title: `${t(L.removeNamed, { name })}?`,
    body: () =>
      count
        ? html`<div class="stack"><p class="notice warn">${icon("triangle-alert")}<span>${plural(count, L.staysForOne, L.staysForMany, { name })}</span></p>${useList(uses)}</div>`
        : html`<p>${says}</p>`,
    actions: () =>
      count
        ? [{ name: "close", label: t(L.close), kind: "primary" }]
        : [
            { name: "cancel", label: t(L.cancel) },
            { name: "go", label: t(L.removeForGood), kind: "danger", run: remove },
          ],
  });
  return answer === "go";
}
