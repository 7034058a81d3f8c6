/** Asks for what a new record is to hold, and adds it. */

import { html, type TemplateResult } from "lit";
import { dialog, type TvxDialog } from "../kit/tvx-dialog";
import { L, t } from "../labels";

/** What `add` gave, or "" when nothing was added. */
export async function addDialog(
  title: string,
  fields: (dialog: TvxDialog) => TemplateResult,
  add: () => Promise<unknown>,
): Promise<string> {
  let made = "";
  await dialog({
    title,
    body: (box) => html`<div class="stack">${fields(box)}</div>`,
    actions: () => [
      { name: "cancel", label: t(L.cancel) },
      {
        name: "go",
        label: t(L.addIt),
        kind: "primary",
        run: async () => {
          made = String(await add());
        },
      },
    ],
  });
  return made;
}
