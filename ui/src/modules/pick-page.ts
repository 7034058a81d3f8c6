/** A page of the website, chosen in its tree. */

import { html } from "lit";
import { dialog } from "../kit/tvx-dialog";
import { L, t } from "../labels";
import type { Child } from "../pages/children";
import "../pages/page-picker";
import { titleOr } from "../pages/words";
import type { Place } from "./screen";

export async function pickPage(title: string, { site, lang }: Place, label: string): Promise<Child | undefined> {
  let chosen: Child | undefined;
  const answer = await dialog({
    title,
    body: (box) => html`<tvx-page-picker .site=${site} .language=${lang} .label=${title} .chosen=${chosen?.nodeId ?? ""}
        @tvx-choose=${(event: CustomEvent<Child>) => {
          chosen = event.detail;
          box.requestUpdate();
        }}></tvx-page-picker>
      <p class="note" role="status">${chosen ? titleOr(chosen.title) : t(L.choosePage)}</p>`,
    actions: () => [
      { name: "cancel", label: t(L.cancel) },
      { name: "take", label, kind: "primary", disabled: chosen ? "" : t(L.choosePage) },
    ],
  });
  return answer === "take" ? chosen : undefined;
}
