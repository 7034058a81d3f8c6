/** Words out of a table: what it would change is shown first. */

import { html, nothing, type TemplateResult } from "lit";
import { toast } from "../kit/tvx-toast";
import { L, type Label, number, t } from "../labels";
import { word } from "../pages/words";
import { saveWords, type Words, wordsOf } from "./data";
import { importDialog, planView } from "./import-dialog";
import { readCsv } from "./model/csv";
import { type BadLine, type Import, importOf, tablesOf } from "./model/words";

const WHY: Readonly<Record<BadLine["why"], Label>> = {
  cells: L.importBadCells,
  unknown: L.importBadNumber,
  quote: L.importBadQuote,
};

interface Plan extends Import {
  /** What it would change. */
  readonly was: Words;
}

async function planOf(langId: string, text: string): Promise<Plan> {
  const was = await wordsOf(langId);
  return { was, ...importOf(was.words, readCsv(text)) };
}

function view({ added, changed, same, bad }: Plan): TemplateResult {
  const told = bad.map(({ line, why }) => ({ line, reason: word(WHY[why]) }));
  return html`${planView(t(L.importNew, { count: number(added) }), changed, same, told)}
    ${added + changed === 0 ? html`<p class="notice warn">${t(L.importNothing)}</p>` : nothing}`;
}

/** Whether words were taken. */
export async function importWords(langId: string): Promise<boolean> {
  const taken = await importDialog({
    says: t(L.importWords),
    planOf: (text) => planOf(langId, text),
    view,
    mayTake: ({ changes }) => changes.size > 0,
    take: ({ was, changes }) => saveWords(was, tablesOf(changes)),
  });
  if (taken) toast(t(L.wordsTaken, { count: number(taken.changes.size) }));
  return taken !== undefined;
}
