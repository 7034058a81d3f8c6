/** Words out of a table: what it would change is shown first. */

import { html, nothing, type TemplateResult } from "lit";
import { dialog } from "../kit/tvx-dialog";
import { toast } from "../kit/tvx-toast";
import { L, type Label, number, t } from "../labels";
import { word } from "../pages/words";
import { type CsvFile, csvFields } from "./csv-file";
import { saveWords, type Words, wordsOf } from "./data";
import { readCsv } from "./model/csv";
import { type BadLine, type Import, importOf, tablesOf } from "./model/words";

const WHY: Readonly<Record<BadLine["why"], Label>> = {
  cells: L.importBadCells,
  unknown: L.importBadNumber,
  quote: L.importBadQuote,
};
/** More bad lines than these aren't read by anybody. */
const TOLD = 20;

function planView({ added, changed, same, bad }: Import): TemplateResult {
  return html`<div role="status"><ul class="import-plan">
      <li>${t(L.importNew, { count: number(added) })}</li><li>${t(L.importChanged, { count: number(changed) })}</li><li>${t(L.importSame, { count: number(same) })}</li>
      ${bad.length ? html`<li class="import-bad">${t(L.importBad, { count: number(bad.length) })}<ul>${bad.slice(0, TOLD).map(({ line, why }) => html`<li>${t(L.importLine, { line, reason: word(WHY[why]) })}</li>`)}</ul></li>` : nothing}
    </ul></div>${added + changed === 0 ? html`<p class="notice warn">${t(L.importNothing)}</p>` : nothing}`;
}

/** Whether words were taken. */
export async function importWords(langId: string): Promise<boolean> {
  let words: Words | undefined;
  let plan: Import | undefined;
  const answer = await dialog({
    title: t(L.readCsv),
    wide: true,
    body: (self) =>
      html`<div class="stack"><p class="note">${t(L.importWords)}</p>
        ${csvFields(self, async ({ text }: CsvFile) => {
          plan = undefined;
          words = await wordsOf(langId);
          plan = importOf(words.words, readCsv(text));
        })}
        ${plan ? planView(plan) : nothing}</div>`,
    actions: () => [
      { name: "cancel", label: t(L.cancel) },
      {
        name: "go",
        label: t(L.importTake),
        kind: "primary",
        disabled: plan && plan.changes.size > 0 ? "" : t(L.importNothing),
        run: async () => {
          if (!words || !plan) return false;
          await saveWords(words, tablesOf(plan.changes));
          return true;
        },
      },
    ],
  });
  if (answer !== "go" || !plan) return false;
  toast(t(L.wordsTaken, { count: number(plan.changes.size) }));
  return true;
}
