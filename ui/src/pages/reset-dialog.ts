/** Back to the live page: what will be lost is told first. */

import { html, type TemplateResult } from "lit";
import { call, isProblem } from "../api";
import { dialog, type TvxDialog } from "../kit/tvx-dialog";
import { toast } from "../kit/tvx-toast";
import { L, t } from "../labels";
import { refused } from "./actions";
import type { PageFacts } from "./data";
import { type Difference, differenceRow } from "./differences";
import { changed } from "./pages-changed";
import { titleOr } from "./words";
import "./dialogs.css";

export async function resetDialog(page: PageFacts): Promise<void> {
  const pageIdent = String(page.pageId);
  let rows: Difference[] | undefined;
  let box: TvxDialog | undefined;
  void (call("desk.compare", { pageIdent }) as Promise<Difference[]>)
    .catch(() => [] as Difference[])
    .then((found) => {
      rows = found;
      box?.requestUpdate();
    });
  const body = (): TemplateResult => {
    if (!rows) return html`<p class="soft" aria-busy="true">...</p>`;
    if (rows.length === 0) return html`<p>${t(L.noDifference)}</p>`;
    return html`<p>${t(L.resetWhat, { title: titleOr(page.title) })}</p><dl class="changes">${rows.map((row) => differenceRow({ ...row, design: row.live, live: row.design }))}</dl>`;
  };
  const run = async (): Promise<void> => {
    try {
      await call("cManager.resetPage", { pageIdent });
      toast(t(L.resetDone));
    } catch (error) {
      if (!isProblem(error)) throw error;
      refused(error, page, () => resetDialog(page));
    }
    changed(page);
  };
  await dialog({
    title: t(L.resetTitle),
    body: (opened) => {
      box = opened;
      return body();
    },
    actions: () => [
      { name: "cancel", label: t(L.notNow) },
      { name: "go", label: t(L.resetButton), kind: "danger", run },
    ],
  });
}
