/** Visitors' accounts out of a table: what each line would do is found out first, and all of them are taken or none. */

import { html, nothing, type TemplateResult } from "lit";
import { dialog } from "../kit/tvx-dialog";
import { toast } from "../kit/tvx-toast";
import { L, number, t } from "../labels";
import { type CsvFile, csvFields } from "./csv-file";
import { type ImportLine, importUsers } from "./data";
import { readCsv } from "./model/csv";
import { lineIn, type Piece, piecesOf, twice } from "./model/users";

const TOLD = 20;

interface Plan {
  readonly pieces: readonly Piece[];
  readonly adds: number;
  readonly changes: number;
  readonly same: number;
  readonly bad: readonly { readonly line: number; readonly reason: string }[];
}

async function planOf(text: string): Promise<Plan> {
  const table = readCsv(text);
  const pieces = piecesOf(table);
  // By lines: of those in one piece the server tells, too, who stands in it twice.
  const bad = new Map(twice(table).map(({ line, username }) => [line, `${username}: 2 ×`]));
  if (table.openQuote) bad.set(table.openQuote, t(L.importBadQuote));
  const counts = { adds: 0, changes: 0, same: 0, bad: 0 };
  for (const piece of pieces) {
    for (const { line, outcome, detail } of await importUsers(piece.table, true)) {
      counts[outcome] += 1;
      const at = lineIn(piece, line);
      if (outcome === "bad" && !bad.has(at)) bad.set(at, detail);
    }
  }
  const told = [...bad].map(([line, reason]) => ({ line, reason })).sort((a, b) => a.line - b.line);
  return { pieces, adds: counts.adds, changes: counts.changes, same: counts.same, bad: told };
}

function planView({ adds, changes, same, bad }: Plan): TemplateResult {
  return html`<div role="status"><ul class="import-plan">
      <li>${t(L.importAdds, { count: number(adds) })}</li><li>${t(L.importChanged, { count: number(changes) })}</li><li>${t(L.importSame, { count: number(same) })}</li>
      ${bad.length ? html`<li class="import-bad">${t(L.importBad, { count: number(bad.length) })}<ul>${bad.slice(0, TOLD).map(({ line, reason }) => html`<li>${t(L.importLine, { line, reason })}</li>`)}</ul></li>` : nothing}
    </ul></div>`;
}

/** Whether accounts were taken. */
export async function importUsersDialog(): Promise<boolean> {
  let plan: Plan | undefined;
  const answer = await dialog({
    title: t(L.readCsv),
    wide: true,
    body: (self) =>
      html`<div class="stack"><p class="note">${t(L.importColumns)}</p>
        ${csvFields(self, async ({ text }: CsvFile) => {
          plan = undefined;
          plan = await planOf(text);
        })}
        ${plan ? planView(plan) : nothing}</div>`,
    actions: () => [
      { name: "cancel", label: t(L.cancel) },
      {
        name: "go",
        label: t(L.importTake),
        kind: "primary",
        disabled: plan && plan.bad.length === 0 && plan.adds + plan.changes > 0 ? "" : t(L.importNothing),
        run: async () => {
          for (const { table } of plan?.pieces ?? []) {
            const wrong = (await importUsers(table, false)).find(({ outcome }: ImportLine) => outcome === "bad");
            if (wrong) throw new Error(wrong.detail);
          }
        },
      },
    ],
  });
  if (answer !== "go" || !plan) return false;
  toast(t(L.usersTaken, { added: number(plan.adds), changed: number(plan.changes) }));
  return true;
}
