/** Takes a table out of a file, once what it would change has been shown. */

import { html, nothing, type TemplateResult } from "lit";
import { dialog } from "../kit/tvx-dialog";
import { L, number, t } from "../labels";
import { csvFields } from "./csv-file";

/** More bad lines than these aren't read by anybody. */
const TOLD = 20;

interface Import<Plan> {
  readonly says: string;
  readonly planOf: (text: string) => Promise<Plan>;
  readonly view: (plan: Plan) => TemplateResult;
  readonly mayTake: (plan: Plan) => boolean;
  readonly take: (plan: Plan) => Promise<unknown>;
}

export interface BadLine {
  readonly line: number;
  readonly reason: string;
}

/** What would come, be changed and stay as it is, and the lines that can't be read. */
export const planView = (adds: string, changed: number, same: number, bad: readonly BadLine[]): TemplateResult =>
  html`<div role="status"><ul class="import-plan">
      <li>${adds}</li><li>${t(L.importChanged, { count: number(changed) })}</li><li>${t(L.importSame, { count: number(same) })}</li>
      ${bad.length ? html`<li class="import-bad">${t(L.importBad, { count: number(bad.length) })}<ul>${bad.slice(0, TOLD).map(({ line, reason }) => html`<li>${t(L.importLine, { line, reason })}</li>`)}</ul></li>` : nothing}
    </ul></div>`;

/** What was taken, if anything was. */
export async function importDialog<Plan>({
  says,
  planOf,
  view,
  mayTake,
  take,
}: Import<Plan>): Promise<Plan | undefined> {
  let plan: Plan | undefined;
  const answer = await dialog({
    title: t(L.readCsv),
    wide: true,
    body: (self) =>
      html`<div class="stack"><p class="note">${says}</p>
        ${csvFields(self, async (text) => {
          plan = undefined;
          plan = await planOf(text);
        })}
        ${plan ? view(plan) : nothing}</div>`,
    actions: () => [
      { name: "cancel", label: t(L.cancel) },
      {
        name: "go",
        label: t(L.importTake),
        kind: "primary",
        disabled: plan && mayTake(plan) ? "" : t(L.importNothing),
        run: async () => {
          if (plan) await take(plan);
        },
      },
    ],
  });
  return answer === "go" ? plan : undefined;
}
