/** Visitors' accounts out of a table: what each line would do is found out first, and all of them are taken or none. */

import { toast } from "../kit/tvx-toast";
import { L, number, t } from "../labels";
import { importUsers } from "./data";
import { type BadLine, importDialog, planView } from "./import-dialog";
import { readCsv } from "./model/csv";
import { lineIn, type Piece, piecesOf, twice } from "./model/users";

interface Plan {
  readonly pieces: readonly Piece[];
  readonly adds: number;
  readonly changes: number;
  readonly same: number;
  readonly bad: readonly BadLine[];
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
    view: ({ adds, changes, same, bad }) => planView(t(L.importAdds, { count: number(adds) }), changes, same, bad),
    mayTake: ({ adds, changes, bad }) => bad.length === 0 && adds + changes > 0,
    take,
  });
  if (taken) toast(t(L.usersTaken, { added: number(taken.adds), changed: number(taken.changes) }));
  return taken !== undefined;
}
