/** Questions about folders and files. */

import { html, nothing, type TemplateResult } from "lit";
import { icon } from "../kit/icon";
import { dialog, type TvxDialog } from "../kit/tvx-dialog";
import { toast } from "../kit/tvx-toast";
import { interfaceLanguage, L, plural, t } from "../labels";
import { pageAddress } from "../shell/address";
import { addFolder, addressOf, removeFile, removeFolder, renameFolder, saveFile, type Use, usesOf } from "./data";
import { foldersChanged } from "./folders-changed";
import { baseName, type MediaFile, type MediaKind, sizeText } from "./model/files";
import { moveFilesDialog } from "./move-dialog";
import { add } from "./uploads";
import "../pages/dialogs.css";

/** One line of text, and what is done with it. */
async function nameDialog(
  title: string,
  value: string,
  action: string,
  run: (name: string) => Promise<unknown>,
): Promise<boolean> {
  let name = value;
  const answer = await dialog({
    title,
    body: (box) => html`<div class="field"><label for="media-name">${t(L.folderName)}</label>
      <input id="media-name" class="input" autofocus autocomplete="off" maxlength="50" .value=${name}
        @input=${(event: Event) => {
          name = (event.target as HTMLInputElement).value;
        }} @keydown=${(event: KeyboardEvent) => {
          if (event.key === "Enter" && !event.isComposing)
            box.querySelector<HTMLButtonElement>(".dialog-foot .primary")?.click();
        }} /></div>`,
    actions: (box) => [
      { name: "cancel", label: t(L.cancel) },
      {
        name: "go",
        label: action,
        kind: "primary",
        run: async () => {
          if (name.trim() === "") {
            box.fault = t(L.nameNeeded);
            return false;
          }
          await run(name.trim());
          foldersChanged();
          return true;
        },
      },
    ],
  });
  return answer === "go";
}

export const newFolderDialog = (site: string, kind: MediaKind, parent: string): Promise<boolean> =>
  nameDialog(t(L.newFolder), "", t(L.newPageCreate), (name) => addFolder(site, kind, parent, name));

export const renameFolderDialog = (site: string, kind: MediaKind, folder: string, name: string): Promise<boolean> =>
  nameDialog(t(L.renameFolder), name, t(L.save), (changed) => renameFolder(site, kind, folder, changed));

export async function removeFolderDialog(
  site: string,
  kind: MediaKind,
  folder: string,
  name: string,
  files: number,
): Promise<boolean> {
  const answer = await dialog({
    title: t(L.removeFolderOf, { name }),
    body: () =>
      html`<p class="notice danger">${icon("trash-2")}<span>${files ? plural(files, L.folderHoldsOne, L.folderHoldsMany) : t(L.folderHoldsNothing)}</span></p>`,
    actions: () => [
      { name: "cancel", label: t(L.cancel) },
      { name: "go", label: t(L.removeForGood), kind: "danger", run: () => removeFolder(site, kind, folder) },
    ],
  });
  if (answer === "go") foldersChanged();
  return answer === "go";
}

/** Pages that use files, one line for each page, however often it does. */
function useList(uses: readonly Use[]): TemplateResult {
  const pages = [...new Map(uses.map((use) => [use.pageId, use])).values()];
  return html`<ul class="pick-list" aria-label=${t(L.usedBy)} tabindex="0">${pages.map(
    (
      use,
    ) => html`<li>${icon("file-text")}<a class="cut" href=${pageAddress(use.pageId)} target="_blank" rel="noopener">${use.title}</a>
      <span class="soft note">${uses.some((each) => each.pageId === use.pageId && each.twin === "L") ? t(L.viewLive) : t(L.viewDesign)}</span></li>`,
  )}</ul>`;
}

export async function removeFilesDialog(site: string, files: readonly MediaFile[]): Promise<boolean> {
  let uses: Use[] | undefined;
  let untold = false;
  let box: TvxDialog | undefined;
  void Promise.all(files.map((file) => usesOf(site, file)))
    .then((found) => {
      uses = found.flat();
    })
    .catch(() => {
      untold = true;
    })
    .then(() => box?.requestUpdate());
  const first = files[0];
  const title =
    files.length === 1 && first
      ? t(L.removeFileOf, { name: first.title || baseName(first.path) })
      : plural(files.length, L.removeFilesOne, L.removeFilesMany);
  const answer = await dialog({
    title,
    body: (opened) => {
      box = opened;
      if (untold) return html`<p class="notice warn">${icon("triangle-alert")}<span>${t(L.usesUnknown)}</span></p>`;
      if (!uses) return html`<p class="soft" aria-busy="true">...</p>`;
      if (uses.length === 0) return html`<p>${t(L.notUsed)}</p>`;
      const pages = new Set(uses.map((use) => use.pageId)).size;
      return html`<p class="notice warn">${icon("triangle-alert")}<span>${plural(pages, L.usedByOne, L.usedByMany)}</span></p>${useList(uses)}`;
    },
    actions: () => [
      { name: "cancel", label: t(L.cancel) },
      {
        name: "go",
        label: t(L.removeForGood),
        kind: "danger",
        run: async () => {
          for (const file of files) await removeFile(site, file);
          toast(plural(files.length, L.fileRemovedOne, L.filesRemovedMany));
        },
      },
    ],
  });
  return answer === "go";
}

class FileSheet {
  private title: string;
  private alt: string;
  private decoration: boolean;
  private uses: Use[] | undefined;
  private untold = false;
  private box: TvxDialog | undefined;

  constructor(
    private readonly site: string,
    private readonly file: MediaFile,
    private readonly mayEdit: boolean,
  ) {
    this.title = file.title;
    this.alt = file.alt;
    this.decoration = file.asked && file.alt === "";
  }

  async open(): Promise<boolean> {
    void usesOf(this.site, this.file)
      .then((uses) => {
        this.uses = uses;
      })
      .catch(() => {
        this.untold = true;
      })
      .then(() => this.box?.requestUpdate());
    const { file } = this;
    const answer = await dialog({
      title: file.title || baseName(file.path),
      wide: file.kind === "images",
      body: (box) => {
        this.box = box;
        return this.body();
      },
      actions: () =>
        this.mayEdit
          ? [
              { name: "remove", label: t(L.remove), kind: "quiet" },
              { name: "move", label: t(L.moveTo), kind: "quiet" },
              { name: "cancel", label: t(L.close) },
              { name: "save", label: t(L.save), kind: "primary", run: () => this.save() },
            ]
          : [{ name: "close", label: t(L.close), kind: "primary" }],
    });
    if (answer === "remove") return removeFilesDialog(this.site, [file]);
    if (answer === "move") return moveFilesDialog(this.site, [file]);
    return answer === "save" || answer === "replaced";
  }

  private body(): TemplateResult {
    const { file } = this;
    const address = addressOf(this.site, file);
    return html`<div class="media-sheet">
      ${file.kind === "images" ? html`<a class="media-large" href=${address} target="_blank" rel="noopener"><img src=${address} alt=${file.alt || file.title} /></a>` : nothing}
      <div class="stack">
        ${this.fields()}
        <p class="note">${baseName(file.path)} · ${file.width ? `${file.width} × ${file.height} · ` : ""}${sizeText(file.size, interfaceLanguage())}</p>
        <p class="inline"><a href=${address} target="_blank" rel="noopener">${t(L.openIt)}</a>${this.mayEdit ? this.replaceButton() : nothing}</p>
        <h3 class="dialog-part">${t(L.usedBy)}</h3>
        ${this.useLines()}
      </div></div>`;
  }

  private useLines(): TemplateResult {
    if (this.untold) return html`<p class="soft">${t(L.usesUnknown)}</p>`;
    if (!this.uses) return html`<p class="soft" aria-busy="true">...</p>`;
    return this.uses.length ? useList(this.uses) : html`<p class="soft">${t(L.notUsed)}</p>`;
  }

  private fields(): TemplateResult {
    return html`<div class="field"><label for="file-title">${t(L.title)}</label><input id="file-title" class="input" maxlength="50" ?readonly=${!this.mayEdit} .value=${this.title} @input=${(
      event: Event,
    ) => {
      this.title = (event.target as HTMLInputElement).value;
    }} /></div>
      ${
        this.file.kind === "images"
          ? html`<div class="field"><label for="file-alt">${t(L.mediaAlt)}</label><textarea id="file-alt" class="area" ?readonly=${!this.mayEdit} ?disabled=${this.decoration} .value=${this.alt} aria-describedby="file-alt-hint" @input=${(
              event: Event,
            ) => {
              this.alt = (event.target as HTMLTextAreaElement).value;
            }}></textarea><p class="note" id="file-alt-hint">${t(L.mediaAltHint)}</p>
            <label class="check"><input type="checkbox" ?disabled=${!this.mayEdit} .checked=${this.decoration} @change=${(
              event: Event,
            ) => {
              this.decoration = (event.target as HTMLInputElement).checked;
              this.box?.requestUpdate();
            }} /><span>${t(L.isDecoration)}</span></label></div>`
          : nothing
      }`;
  }

  private replaceButton(): TemplateResult {
    const end = this.file.path.slice(this.file.path.lastIndexOf("."));
    return html`<label class="button small">${t(L.replaceMore)}<input class="unseen" type="file" accept=${end} @change=${(event: Event) => this.replace(event)} /></label>`;
  }

  /** Another content under the same name: all pages show it. */
  private replace(event: Event): void {
    const chosen = (event.target as HTMLInputElement).files?.[0];
    if (!chosen) return;
    const named = new File([chosen], baseName(this.file.path), { type: chosen.type });
    add([named], { site: this.site, kind: this.file.kind, folder: this.file.folder }, true);
    this.box?.close("replaced");
  }

  private async save(): Promise<boolean> {
    const alt = this.decoration ? "" : this.alt.trim();
    const decided = this.decoration || alt !== "" || this.file.asked;
    await saveFile(this.site, this.file, this.title.trim(), this.file.kind === "images" && decided ? alt : undefined);
    toast(t(L.fileSaved));
    return true;
  }
}

/** A file's sheet; true when something about it has changed. */
export const fileDialog = (site: string, file: MediaFile, mayEdit: boolean): Promise<boolean> =>
  new FileSheet(site, file, mayEdit).open();
