/** Which visitors may reach a folder. */

import { html } from "lit";
import { Batch, call } from "../api";
import { dialog, type TvxDialog } from "../kit/tvx-dialog";
import { toast } from "../kit/tvx-toast";
import { L, t } from "../labels";
import { toggleGroup } from "../pages/model/setup";
import type { MediaKind } from "./model/files";

const nameOf = (id: number, name: string): string =>
  id === 0 ? t(L.folderInherited) : id === 1 ? t(L.groupEverybody) : name;

export async function folderGroupsDialog(site: string, kind: MediaKind, folder: string, name: string): Promise<void> {
  const rows = await call("cManager.getFolderGroups", { folderType: kind, site, folder });
  const before = rows.filter((row) => Number(row.flag) === 1).map((row) => Number(row.groupId));
  let chosen = before;
  const ordered = [...rows].sort((a, b) => Math.min(Number(a.groupId), 2) - Math.min(Number(b.groupId), 2));
  const body = (box: TvxDialog) =>
    html`<div class="stack" role="group" aria-label=${t(L.folderReaders)}>${ordered.map(
      (row) =>
        html`<label class="check"><input type="checkbox" .checked=${chosen.includes(Number(row.groupId))} @change=${(
          event: Event,
        ) => {
          chosen = toggleGroup(chosen, Number(row.groupId), (event.target as HTMLInputElement).checked);
          box.requestUpdate();
        }} /><span>${nameOf(Number(row.groupId), row.name)}</span></label>`,
    )}</div>`;
  await dialog({
    title: t(L.folderReadersOf, { name }),
    body,
    actions: () => [
      { name: "cancel", label: t(L.cancel) },
      { name: "go", label: t(L.save), kind: "primary", run: () => save(site, kind, folder, before, chosen) },
    ],
  });
}

async function save(
  site: string,
  kind: MediaKind,
  folder: string,
  before: readonly number[],
  after: readonly number[],
): Promise<void> {
  const batch = new Batch();
  const set = (groupId: number, accessFlag: boolean) =>
    batch.do("cManager.setFolderGroup", { folderType: kind, site, folder, groupId, accessFlag });
  for (const id of before.filter((each) => !after.includes(each))) set(id, false);
  for (const id of after.filter((each) => !before.includes(each))) set(id, true);
  await batch.run();
  toast(t(L.fileSaved));
}
