/** Visitors' accounts out of a table: what each line would do is found out first, and all of them are taken or none. */

import { html, nothing, type TemplateResult } from "lit";
import { icon } from "../kit/icon";
import { toast } from "../kit/tvx-toast";
import { L, number, t } from "../labels";
import { commonOf } from "../records/passwords";
import { importUsers } from "./data";
import { type BadLine, importDialog, planView } from "./import-dialog";
import { readCsv } from "./model/csv";
import { lineIn, type Piece, passwordsIn, piecesOf, twice } from "./model/users";

interface Plan {
  readonly pieces: readonly Piece[];
  readonly adds: number;
  readonly changes: number;
  readonly same: number;
  readonly bad: readonly BadLine[];
  /** The lines whose passwords would be guessed at once. */
  readonly common: readonly number[];
}

/** More lines than these aren't read by anybody. */
const TOLD = 20;

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
  const passwords = passwordsIn(table);
  const common = (await commonOf([...passwords.keys()])).flatMap((password) => passwords.get(password) ?? []);
  return {
    pieces,
    adds: counts.adds,
    changes: counts.changes,
    same: counts.same,
    bad: told,
    common: common.sort((a, b) => a - b),
  };
}

/** They are taken all the same: who reads them in may know what they guard. */
function commonNote({ common }: Plan): TemplateResult | typeof nothing {
  if (common.length === 0) return nothing;
  const lines = common.slice(0, TOLD).join(", ") + (common.length > TOLD ? ", …" : "");
  return html`<p class="notice warn" role="status">${icon("triangle-alert")}<span>${t(L.importCommon, { lines })}</span></p>`;
}

async function take({ pieces }: Plan): Promise<void> {
  for (const { table } of pieces) {
    const wrong = (await importUsers(table, false)).find(({ outcome }) => outcome === "bad");
    if (wrong) throw new Error(wrong.detail);
  }
}

/** Whether accounts were taken. */
export async function importUsersDialog(): Promise<boolean> {
  const taken = await importDialog({
    says: t(L.importColumns),
    planOf,
    view: (plan) =>
      html`${planView(t(L.importAdds, { count: number(plan.adds) }), plan.changes, plan.same, plan.bad)}${commonNote(plan)}`,
    mayTake: ({ adds, changes, bad }) => bad.length === 0 && adds + changes > 0,
    take,
  });
  if (taken) toast(t(L.usersTaken, { added: number(taken.adds), changed: number(taken.changes) }));
  return taken !== undefined;
}
