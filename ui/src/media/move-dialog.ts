/** Files go into another folder; the pages that use them follow. */

import { html, nothing, type TemplateResult } from "lit";
import { isProblem } from "../api";
import { icon } from "../kit/icon";
import { dialog, type TvxDialog } from "../kit/tvx-dialog";
import { toast } from "../kit/tvx-toast";
import "../kit/tvx-tree";
import type { TreeRow } from "../kit/tvx-tree";
import { L, plural, t } from "../labels";
import { loadFolders, moveFile } from "./data";
import { foldersChanged } from "./folders-changed";
import { baseName, type MediaFile } from "./model/files";
import { type Folder, inTreeOrder, namedOr, trailOf } from "./model/folders";
import "../pages/dialogs.css";
import "../pages/page-picker.css";

interface Stayed {
  readonly file: MediaFile;
  readonly why: string;
}

/** The top of a site's media, where no folder is. */
const TOP = "top";

class Move {
  private folders: readonly Folder[] = [];
  private open = new Set<string>([TOP]);
  private chosen = "";
  private stayed: readonly Stayed[] = [];
  private moved = 0;
  private box: TvxDialog | undefined;

  constructor(
    private readonly site: string,
    private files: readonly MediaFile[],
  ) {}

  async run(): Promise<boolean> {
    void this.load();
    await dialog({
      title: this.title,
      body: (box) => {
        this.box = box;
        return this.body();
      },
      actions: () => [
        { name: "cancel", label: t(this.moved ? L.close : L.cancel) },
        {
          name: "go",
          label: t(L.moveHere),
          kind: "primary",
          disabled: this.chosen && !this.refuses(this.chosen) ? "" : t(L.intoFolder),
          run: () => this.go(),
        },
      ],
    });
    if (this.moved) foldersChanged();
    return this.moved > 0;
  }

  private get title(): string {
    const [first] = this.files;
    if (this.files.length === 1 && first) return t(L.moveFileOf, { name: first.title || baseName(first.path) });
    return plural(this.files.length, L.moveFilesOne, L.moveFilesMany);
  }

  private get kind() {
    return this.files[0]?.kind ?? "images";
  }

  private async load(): Promise<void> {
    try {
      this.folders = await loadFolders(this.site, this.kind);
      for (const { id } of trailOf(this.folders, this.files[0]?.folder ?? "")) this.open.add(id);
    } catch (error) {
      if (this.box) this.box.fault = isProblem(error) ? error.message : String(error);
    }
    this.box?.requestUpdate();
  }

  /** Why the files can't go there; empty when they can. */
  private refuses(id: string): string {
    const folder = id === TOP ? "" : id;
    return this.files.every((file) => file.folder === folder) ? t(L.liesHere) : "";
  }

  private row(id: string, name: string, level: number, siblings: readonly string[], expandable: boolean): TreeRow {
    const why = this.refuses(id);
    const note = why
      ? html`<span class="note picker-why">${why}</span>`
      : id === this.chosen
        ? html`<span class="picker-chosen">${icon("check")}</span>`
        : nothing;
    return {
      id,
      name,
      level,
      setSize: siblings.length,
      position: siblings.indexOf(id) + 1,
      expandable,
      expanded: this.open.has(id),
      dimmed: why !== "",
      content: html`${icon(id === TOP ? "images" : "folder")}<span class="cut">${name}</span>${note}`,
    };
  }

  private rows(): TreeRow[] {
    const all = t(this.kind === "images" ? L.images : L.documents);
    const top = this.row(TOP, all, 1, [TOP], this.folders.length > 0);
    if (!this.open.has(TOP)) return [top];
    const below = inTreeOrder(this.folders, this.open).map((folder) =>
      this.row(
        folder.id,
        namedOr(folder, t(L.newFolder)),
        folder.level + 1,
        this.folders.filter(({ parent }) => parent === folder.parent).map(({ id }) => id),
        this.folders.some(({ parent }) => parent === folder.id),
      ),
    );
    return [top, ...below];
  }

  private toggle(id: string): void {
    if (!this.open.delete(id)) this.open.add(id);
    this.box?.requestUpdate();
  }

  private choose(id: string): void {
    if (this.refuses(id)) return;
    this.chosen = id;
    this.box?.requestUpdate();
  }

  private body(): TemplateResult {
    return html`<p class="soft">${t(L.filesFollow)}</p>
      <div class="picker-box"><tvx-tree .rows=${this.rows()} .current=${this.chosen} .selected=${new Set([this.chosen])} .label=${t(L.intoFolder)}
        @tvx-toggle=${(event: CustomEvent<string>) => this.toggle(event.detail)}
        @tvx-open=${(event: CustomEvent<string>) => this.choose(event.detail)}
        @tvx-select=${(event: CustomEvent<string>) => this.choose(event.detail)}></tvx-tree></div>
      ${this.stayed.length ? this.reasons() : nothing}`;
  }

  private reasons(): TemplateResult {
    return html`<section class="stack" role="alert"><h3 class="dialog-part">${plural(this.stayed.length, L.fileStayedOne, L.fileStayedMany)}</h3>
      <ul class="pick-list">${this.stayed.map(({ file, why }) => html`<li><span class="cut">${file.title || baseName(file.path)}</span><span class="soft note">${why}</span></li>`)}</ul></section>`;
  }

  /** One by one: what can't go stays selected for another folder, with the reason. */
  private async go(): Promise<boolean> {
    const folder = this.chosen === TOP ? "" : this.chosen;
    const stayed: Stayed[] = [];
    for (const file of this.files) {
      try {
        await moveFile(this.site, file, folder);
      } catch (error) {
        if (!isProblem(error)) throw error;
        stayed.push({ file, why: error.message });
      }
    }
    const moved = this.files.length - stayed.length;
    this.moved += moved;
    if (moved) toast(plural(moved, L.fileMovedOne, L.fileMovedMany));
    this.stayed = stayed;
    this.files = stayed.map(({ file }) => file);
    return stayed.length === 0;
  }
}

/** True when some of the files are elsewhere now. */
export const moveFilesDialog = (site: string, files: readonly MediaFile[]): Promise<boolean> =>
  new Move(site, files).run();
