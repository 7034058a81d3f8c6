/** The media library of a site: folders, a grid or a list, files dropped from the desktop, and what is done with them. */

import { html, nothing, type PropertyValues, type TemplateResult } from "lit";
import { customElement, property, state } from "lit/decorators.js";
import { isCancelled } from "../api";
import { TvxElement, Watch } from "../kit/element";
import { faultNotice } from "../kit/fault-notice";
import { icon } from "../kit/icon";
import { openMenu } from "../kit/tvx-menu";
import "../kit/tvx-table";
import { L, plural, t } from "../labels";
import { go, setQuery } from "../shell/address";
import { kept } from "../shell/workplace";
import { loadFiles, loadFolders, type MediaRights, mediaRights } from "./data";
import { fileDialog, newFolderDialog, removeFilesDialog, removeFolderDialog, renameFolderDialog } from "./dialogs";
import { columnsOf, factsOf, nameOf, pictureOf } from "./file-faces";
import { folderGroupsDialog } from "./folder-groups";
import { foldersChanged, onFoldersChanged } from "./folders-changed";
import { baseName, filtered, type MediaFile, type MediaKind, type Order, sorted } from "./model/files";
import { type Folder, filesBelow, namedOr, trailOf } from "./model/folders";
import { moveFilesDialog } from "./move-dialog";
import { titlesDialog } from "./titles-dialog";
import "./tvx-uploads";
import { add, arrived } from "./uploads";
import "../pages/lists.css";
import "./media.css";

const keyOf = (file: MediaFile): string => file.path;

@customElement("tvx-media")
export class TvxMedia extends TvxElement {
  @property() kind: MediaKind = "images";
  @property() site = "";
  @property() folder = "";
  /** A file that is opened at once, by its path. */
  @property() file = "";
  @state() private folders: readonly Folder[] = [];
  @state() private files: readonly MediaFile[] | undefined;
  @state() private rights: MediaRights = { view: true, edit: false };
  @state() private more = false;
  @state() private words = "";
  @state() private list = kept.get("mediaList") === "yes";
  @state() private order: Order = "title";
  @state() private selected: ReadonlySet<string> = new Set();
  @state() private at = "";
  @state() private over = false;
  @state() private fault: unknown;
  private asked: AbortController | undefined;
  private forget: (() => void) | undefined;
  private seen = 0;
  protected readonly news = new Watch(this, arrived, (files) => this.cameIn(files));

  override connectedCallback(): void {
    super.connectedCallback();
    this.forget = onFoldersChanged(() => void this.load());
  }

  override disconnectedCallback(): void {
    super.disconnectedCallback();
    this.forget?.();
    this.asked?.abort();
  }

  protected override willUpdate(properties: PropertyValues<this>): void {
    if (!["kind", "site", "folder"].some((name) => properties.has(name as keyof TvxMedia))) return;
    if (properties.has("folder") || properties.has("kind")) {
      this.files = undefined;
      this.selected = new Set();
      this.words = "";
    }
    if (this.site) void this.load();
  }

  private async load(): Promise<void> {
    this.asked?.abort();
    const asked = new AbortController();
    this.asked = asked;
    try {
      const [folders, listing, rights] = await Promise.all([
        loadFolders(this.site, this.kind),
        this.read(asked.signal),
        mediaRights(this.site, this.kind),
      ]);
      if (asked.signal.aborted) return;
      this.folders = folders;
      this.take(listing.files);
      this.more = listing.more;
      this.rights = rights;
      this.fault = undefined;
      if (this.file) this.openAsked();
    } catch (error) {
      if (!isCancelled(error)) this.fault = error;
    }
  }

  /** With words all folders are searched, else this one is shown. */
  private read(signal: AbortSignal) {
    return loadFiles(this.site, this.kind, this.words ? "" : this.folder, this.words, 0, signal);
  }

  private take(files: readonly MediaFile[]): void {
    this.files = this.words ? files : files.filter((file) => file.folder === this.folder);
    const there = new Set(this.files.map(keyOf));
    this.selected = new Set([...this.selected].filter((key) => there.has(key)));
  }

  private openAsked(): void {
    const file = this.files?.find((each) => each.path === this.file);
    this.file = "";
    setQuery({ file: "" });
    if (file) void this.open(file);
  }

  /** What was uploaded into this folder stands in it at once. */
  private cameIn(files: readonly MediaFile[]): void {
    const fresh = files.slice(this.seen).filter((file) => file.kind === this.kind && file.folder === this.folder);
    this.seen = files.length;
    if (!fresh.length) return;
    const paths = new Set(fresh.map(keyOf));
    this.files = [...(this.files ?? []).filter((file) => !paths.has(file.path)), ...fresh];
    foldersChangedSoon();
  }

  private get shown(): readonly MediaFile[] {
    return sorted(filtered(this.files ?? [], this.words), this.order, false);
  }

  private get chosen(): readonly MediaFile[] {
    return this.shown.filter((file) => this.selected.has(keyOf(file)));
  }

  private show(folder: string): void {
    void go(`/torvex/${this.kind}.asp${folder ? `?folder=${folder}` : ""}`);
  }

  private async open(file: MediaFile): Promise<void> {
    if (await fileDialog(this.site, file, this.rights.edit)) await this.load();
  }

  private async titles(files: readonly MediaFile[]): Promise<void> {
    if (await titlesDialog(this.site, files)) await this.load();
  }

  private async moveFiles(files: readonly MediaFile[]): Promise<void> {
    if (!(await moveFilesDialog(this.site, files))) return;
    this.selected = new Set();
    await this.load();
  }

  private async removeFiles(files: readonly MediaFile[]): Promise<void> {
    if (await removeFilesDialog(this.site, files)) {
      this.selected = new Set();
      foldersChanged();
    }
  }

  // Dropping and choosing files

  private readonly dragOver = (event: DragEvent): void => {
    if (!this.rights.edit || !event.dataTransfer?.types.includes("Files")) return;
    event.preventDefault();
    this.over = true;
  };

  private readonly dropped = (event: DragEvent): void => {
    this.over = false;
    if (!this.rights.edit || !event.dataTransfer?.files.length) return;
    event.preventDefault();
    this.send(event.dataTransfer.files);
  };

  private readonly pasted = (event: ClipboardEvent): void => {
    if (this.rights.edit && event.clipboardData?.files.length) this.send(event.clipboardData.files);
  };

  private send(files: FileList): void {
    add([...files], { site: this.site, kind: this.kind, folder: this.folder });
  }

  private choose(): void {
    this.querySelector<HTMLInputElement>("input[type=file]")?.click();
  }

  // Keys of the grid

  private readonly gridKey = (event: KeyboardEvent): void => {
    const files = this.shown;
    const place = files.findIndex((file) => keyOf(file) === this.at);
    const file = files[Math.max(0, place)];
    const across = this.across;
    const moves: Record<string, number> = {
      ArrowRight: place + 1,
      ArrowLeft: place - 1,
      ArrowDown: place + across,
      ArrowUp: place - across,
      Home: 0,
      End: files.length - 1,
    };
    const to = moves[event.key];
    if (to !== undefined) this.focusOn(Math.max(0, Math.min(files.length - 1, to)), event.shiftKey);
    else if (!file) return;
    else if (event.key === "Enter") void this.open(file);
    else if (event.key === " ") this.flip(file);
    else if (event.key === "a" && (event.ctrlKey || event.metaKey)) this.selected = new Set(files.map(keyOf));
    else if (!this.change(event.key, file)) return;
    event.preventDefault();
  };

  /** Names or removes the files that are selected, or the one that has the keyboard; false for other keys. */
  private change(key: string, file: MediaFile): boolean {
    if (!this.rights.edit || (key !== "F2" && key !== "Delete")) return false;
    const files = this.chosen.length ? this.chosen : [file];
    void (key === "F2" ? this.titles(files) : this.removeFiles(files));
    return true;
  }

  /** The list walks and selects by itself. */
  private readonly listKey = (event: KeyboardEvent): void => {
    const row = event.target as HTMLElement;
    const file = row.matches("tr") ? this.shown.find((each) => keyOf(each) === row.dataset["key"]) : undefined;
    if (file && this.change(event.key, file)) event.preventDefault();
  };

  private get across(): number {
    const tiles = [...this.querySelectorAll<HTMLElement>(".media-tile")];
    const top = tiles[0]?.offsetTop;
    return Math.max(1, tiles.filter((tile) => tile.offsetTop === top).length);
  }

  private focusOn(place: number, extend: boolean): void {
    const file = this.shown[place];
    if (!file) return;
    this.at = keyOf(file);
    if (extend) this.selected = new Set([...this.selected, this.at]);
    void this.updateComplete.then(() => this.querySelector<HTMLElement>(".media-tile[tabindex='0']")?.focus());
  }

  private flip(file: MediaFile): void {
    const keys = new Set(this.selected);
    if (!keys.delete(keyOf(file))) keys.add(keyOf(file));
    this.selected = keys;
  }

  private clicked(event: MouseEvent, file: MediaFile): void {
    this.at = keyOf(file);
    if (event.ctrlKey || event.metaKey || event.shiftKey) this.flip(file);
    else void this.open(file);
  }

  // Drawing

  protected override render(): TemplateResult {
    if (!this.rights.view) return html`<div class="empty">${icon("lock")}<p>${t(L.noRight)}</p></div>`;
    return html`<section class="list-screen media ${this.over ? "is-over" : ""}" @dragover=${this.dragOver} @dragleave=${() => {
      this.over = false;
    }} @drop=${this.dropped} @paste=${this.pasted}>
      ${this.head()}${this.tools()}
      ${faultNotice(this.fault, () => this.load())}
      <tvx-uploads .taken=${new Set((this.files ?? []).map((file) => baseName(file.path).toLowerCase()))} @tvx-titles=${(event: CustomEvent<readonly MediaFile[]>) => this.titles(event.detail)}></tvx-uploads>
      ${this.chosen.length ? this.selection() : nothing}
      ${this.words ? nothing : this.tiles()}
      ${this.content()}
      ${this.over ? html`<div class="media-drop" aria-hidden="true">${icon("upload")}<span>${t(L.dropHere)}</span></div>` : nothing}
    </section>`;
  }

  private head(): TemplateResult {
    const trail = trailOf(this.folders, this.folder);
    const all = t(this.kind === "images" ? L.images : L.documents);
    const link = (folder: string, name: string, last: boolean): TemplateResult =>
      last
        ? html`<li aria-current="page"><h1>${name}</h1></li>`
        : html`<li><a href=${`/torvex/${this.kind}.asp${folder ? `?folder=${folder}` : ""}`}>${name}</a>${icon("chevron-right")}</li>`;
    return html`<header class="list-head"><nav aria-label=${t(L.mediaTrail)}><ol class="media-trail">
        ${link("", all, trail.length === 0)}${trail.map((folder, place) => link(folder.id, namedOr(folder, t(L.newFolder)), place === trail.length - 1))}</ol></nav>
      <span class="grow"></span>
      ${this.rights.edit ? this.headButtons() : nothing}</header>`;
  }

  private headButtons(): TemplateResult {
    const folder = this.folders.find((each) => each.id === this.folder);
    return html`
      <button class="button" @click=${() => newFolderDialog(this.site, this.kind, this.folder)}>${icon("folder")}${t(L.newFolder)}</button>
      ${folder ? html`<button class="button icon-only" aria-haspopup="menu" aria-label=${t(L.folderMore)} title=${t(L.folderMore)} @click=${(event: MouseEvent) => this.folderMenu(event, folder)}>${icon("ellipsis")}</button>` : nothing}
      <button class="button primary" @click=${() => this.choose()}>${icon("upload")}${t(L.upload)}</button>
      <input type="file" multiple hidden accept=${this.kind === "images" ? "image/*" : nothing} aria-label=${t(L.upload)} @change=${(
        event: Event,
      ) => {
        const input = event.target as HTMLInputElement;
        if (input.files) this.send(input.files);
        input.value = "";
      }} />`;
  }

  private folderMenu(event: MouseEvent, folder: Folder): void {
    const name = namedOr(folder, t(L.newFolder));
    const { site, kind } = this;
    openMenu(
      event.currentTarget as HTMLElement,
      [
        { label: t(L.renameFolder), icon: "pencil", run: () => void renameFolderDialog(site, kind, folder.id, name) },
        { label: t(L.folderReaders), icon: "users", run: () => void folderGroupsDialog(site, kind, folder.id, name) },
        {
          label: t(L.removeFolder),
          icon: "trash-2",
          danger: true,
          run: () =>
            void removeFolderDialog(site, kind, folder.id, name, filesBelow(this.folders, folder.id)).then((gone) =>
              gone ? this.show(folder.parent) : undefined,
            ),
        },
      ],
      t(L.folderMore),
    );
  }

  private tools(): TemplateResult {
    const button = (list: boolean, name: "images" | "list-tree", label: string): TemplateResult =>
      html`<button type="button" aria-pressed=${list === this.list} aria-label=${label} title=${label} @click=${() => {
        this.list = list;
        kept.set("mediaList", list ? "yes" : "");
      }}>${icon(name)}</button>`;
    return html`<div class="inline media-tools" role="search">
      <input class="input media-words" type="search" aria-label=${t(L.mediaSearch)} placeholder=${t(L.mediaSearch)} .value=${this.words} @input=${(
        event: Event,
      ) => {
        this.words = (event.target as HTMLInputElement).value;
        void this.load();
      }} />
      <span class="note" role="status">${this.files ? plural(this.shown.length, L.filesOne, L.filesMany) : ""}</span>
      <span class="grow"></span>
      ${
        this.list
          ? nothing
          : html`<label class="unseen" for="media-order">${t(L.mediaOrder)}</label><select id="media-order" class="select media-order" @change=${(
              event: Event,
            ) => {
              this.order = (event.target as HTMLSelectElement).value as Order;
            }}>${(["title", "name", "size", "type"] as const).map((order) => html`<option value=${order} ?selected=${order === this.order}>${t({ title: L.byTitle, name: L.byName, size: L.bySize, type: L.byType }[order] as typeof L.byTitle)}</option>`)}</select>`
      }
      <div class="choice" role="group" aria-label=${t(L.mediaView)}>${button(false, "images", t(L.asGrid))}${button(true, "list-tree", t(L.asList))}</div>
    </div>`;
  }

  private selection(): TemplateResult {
    const { chosen } = this;
    return html`<div class="selection-bar" role="group" aria-label=${plural(chosen.length, L.selectedOne, L.selectedMany)}><span role="status">${plural(chosen.length, L.selectedOne, L.selectedMany)}</span>
      ${
        this.rights.edit
          ? html`<button class="button small" @click=${() => this.titles(chosen)}>${t(L.editTitles)}</button>
            <button class="button small" @click=${() => this.moveFiles(chosen)}>${t(L.moveTo)}</button>
            <button class="button small" @click=${() => this.removeFiles(chosen)}>${t(L.remove)}</button>`
          : nothing
      }
      <button class="button quiet small" @click=${() => {
        this.selected = new Set();
      }}>${t(L.cancel)}</button></div>`;
  }

  private tiles(): TemplateResult | typeof nothing {
    const below = this.folders.filter((folder) => folder.parent === this.folder);
    if (below.length === 0) return nothing;
    const sortedFolders = [...below].sort((a, b) => a.name.localeCompare(b.name));
    return html`<ul class="folder-tiles" aria-label=${t(L.foldersHere)}>${sortedFolders.map(
      (
        folder,
      ) => html`<li><a class="folder-tile" href=${`/torvex/${this.kind}.asp?folder=${folder.id}`}>${icon("folder")}<span class="cut">${namedOr(folder, t(L.newFolder))}</span>
        <span class="note">${filesBelow(this.folders, folder.id)}</span></a></li>`,
    )}</ul>`;
  }

  private content(): TemplateResult | typeof nothing {
    const files = this.shown;
    if (!this.files)
      return html`<div class="media-grid" aria-busy="true">${[1, 2, 3, 4, 5, 6].map(() => html`<div class="skeleton media-wait"></div>`)}</div>`;
    if (files.length === 0) return this.empty();
    const more = this.more ? html`<p class="note">${t(L.mediaMore)}</p>` : nothing;
    return this.list ? html`${this.table(files)}${more}` : html`${this.grid(files)}${more}`;
  }

  private empty(): TemplateResult | typeof nothing {
    if (this.words) return html`<div class="empty">${icon("search")}<p>${t(L.searchNothing)}</p></div>`;
    if (!this.folder)
      return this.folders.length
        ? nothing
        : html`<div class="empty">${icon("folder")}<p>${t(L.noFolders)}</p>${this.rights.edit ? html`<button class="button" @click=${() => newFolderDialog(this.site, this.kind, "")}>${t(L.newFolder)}</button>` : nothing}</div>`;
    return html`<div class="empty">${icon(this.kind === "images" ? "images" : "file-text")}<p>${t(L.folderEmpty)}</p>
      ${this.rights.edit ? html`<p class="note">${t(L.dropHere)}</p><button class="button" @click=${() => this.choose()}>${t(L.upload)}</button>` : nothing}</div>`;
  }

  private grid(files: readonly MediaFile[]): TemplateResult {
    const reachable = files.some((file) => keyOf(file) === this.at) ? this.at : keyOf(files[0] as MediaFile);
    return html`<div class="media-grid" role="listbox" aria-multiselectable="true" aria-label=${t(this.kind === "images" ? L.images : L.documents)} @keydown=${this.gridKey}>
      ${files.map(
        (
          file,
        ) => html`<div class="media-tile" role="option" aria-selected=${this.selected.has(keyOf(file))} aria-label=${nameOf(file)} tabindex=${keyOf(file) === reachable ? 0 : -1}
          @click=${(event: MouseEvent) => this.clicked(event, file)} @focus=${() => {
            this.at = keyOf(file);
          }}>
          <span class="media-picture">${pictureOf(this.site, file)}</span>
          <span class="media-name cut">${file.title || baseName(file.path)}</span>
          <span class="note cut">${factsOf(file)}</span>
          ${file.kind === "images" && !file.asked ? html`<span class="media-flag" title=${t(L.noAltYet)}>${icon("triangle-alert")}</span>` : nothing}
          <span class="media-tick" @click=${(event: Event) => {
            event.stopPropagation();
            this.flip(file);
          }}>${icon(this.selected.has(keyOf(file)) ? "square-check" : "square-dashed")}</span>
        </div>`,
      )}</div>`;
  }

  private table(files: readonly MediaFile[]): TemplateResult {
    return html`<tvx-table class="card" .label=${t(this.kind === "images" ? L.images : L.documents)} .columns=${columnsOf(this.site, this.kind)} .rows=${files} .keyOf=${keyOf} .nameOf=${(file: MediaFile) => file.title} selectable .selected=${this.selected}
      @keydown=${this.listKey} @tvx-select=${(event: CustomEvent<ReadonlySet<string>>) => {
        this.selected = event.detail;
      }} @tvx-open=${(event: CustomEvent<MediaFile>) => void this.open(event.detail)}></tvx-table>`;
  }
}

let soon: ReturnType<typeof setTimeout> | undefined;

/** Many files arrive at once: counts of folders are read when the last has. */
function foldersChangedSoon(): void {
  clearTimeout(soon);
  soon = setTimeout(foldersChanged, 800);
}
