// Pictures to choose from: the library's, by folder and words, or a new one.
import { html, nothing } from "lit";
import { customElement, property, state } from "lit/decorators.js";
import { ref } from "lit/directives/ref.js";
import { call } from "../api";
import { dialog, icon, TvxElement } from "../kit";
import { L, t } from "../labels";
import { loadFolders, PAGE } from "../media/data";
import type { Folder } from "../media/model/folders";
import { sizeOf, sizesOf } from "./model/choosing";
import {
  addressOf,
  altDialog,
  imageTag,
  keepAlt,
  type Picture,
  recentPaths,
  recentPictures,
  rememberPicture,
  upload,
} from "./pictures";

/** In place of a folder: what was chosen lately. */
const RECENT = "recent";
/** Beyond as many, words or a folder are to narrow them. */
const MOST = 5000;

@customElement("tvx-image-picker")
export class TvxImagePicker extends TvxElement {
  @property() site = "";
  @state() private folders: Folder[] = [];
  @state() private pictures: Picture[] = [];
  @state() private size = "";
  @state() private at = 0;
  @state() private busy = false;
  @state() private fault = "";
  private folder = "";
  private words = "";
  private run = 0;
  private timer: ReturnType<typeof setTimeout> | undefined;

  override connectedCallback(): void {
    super.connectedCallback();
    this.folder = localStorage.getItem(`torvex.pictures.${this.site}`) ?? "";
    document.addEventListener("paste", this.pasted);
    void this.load();
  }

  override disconnectedCallback(): void {
    super.disconnectedCallback();
    document.removeEventListener("paste", this.pasted);
    this.run += 1;
  }

  protected override firstUpdated(): void {
    this.querySelector<HTMLElement>("#picture-words")?.focus();
  }

  get chosen(): Picture | undefined {
    return this.shown[this.at];
  }

  private get shown(): Picture[] {
    const fits = this.size ? this.pictures.filter((picture) => sizeOf(picture) === this.size) : this.pictures;
    return fits.slice(0, PAGE);
  }

  private async read(from: number): Promise<Picture[]> {
    const { site, folder, words } = this;
    if (folder !== RECENT)
      return (await call("registers.getMedia", {
        site,
        folderType: "images",
        folder,
        words,
        from,
      })) as unknown as Picture[];
    const wanted = words.trim().toLowerCase();
    const found = await recentPictures(site);
    return found.filter(({ title, path }) => `${title} ${path}`.toLowerCase().includes(wanted));
  }

  private async load(): Promise<void> {
    this.run += 1;
    const { run } = this;
    this.busy = true;
    try {
      if (!this.folders.length) this.folders = await loadFolders(this.site, "images");
      const found = await this.read(0);
      // What other words were asked for since comes behind this.
      if (run !== this.run) return;
      this.pictures = found;
      if (!sizesOf(found).includes(this.size)) this.size = "";
      this.at = 0;
      this.fault = "";
      this.busy = false;
      await this.readOn(found.length, run);
    } catch (error) {
      if (run !== this.run) return;
      this.fault = error instanceof Error ? error.message : String(error);
    }
    this.busy = false;
  }

  /** The rest follows what can be chosen already, for a size may occur there alone. */
  private async readOn(first: number, run: number): Promise<void> {
    for (let from = first; from > 0 && from % PAGE === 0 && from < MOST; ) {
      const part = await this.read(from);
      if (run !== this.run || part.length === 0) return;
      this.pictures = [...this.pictures, ...part];
      from += part.length;
    }
  }

  private find(event: Event): void {
    this.words = (event.target as HTMLInputElement).value;
    clearTimeout(this.timer);
    this.timer = setTimeout(() => void this.load(), 200);
  }

  private enter(event: Event): void {
    this.folder = (event.target as HTMLSelectElement).value;
    if (this.folder !== RECENT) localStorage.setItem(`torvex.pictures.${this.site}`, this.folder);
    void this.load();
  }

  private narrow(event: Event): void {
    this.size = (event.target as HTMLSelectElement).value;
    this.at = 0;
  }

  private picked(event: Event): void {
    const [file] = (event.target as HTMLInputElement).files ?? [];
    if (file) void this.add(file);
  }

  /** A picture out of the clipboard is a new one; words go where they are pasted. */
  private readonly pasted = (event: ClipboardEvent): void => {
    const file = [...(event.clipboardData?.files ?? [])].find(({ type }) => type.startsWith("image/"));
    if (!file) return;
    event.preventDefault();
    void this.add(file);
  };

  private async add(file: File): Promise<void> {
    this.busy = true;
    const stored = await upload(file, this.site);
    this.busy = false;
    if (!stored) return;
    this.pictures = [stored, ...this.pictures];
    this.size = "";
    this.at = 0;
  }

  private key(event: KeyboardEvent): void {
    const columns = getComputedStyle(event.currentTarget as HTMLElement).gridTemplateColumns.split(" ").length;
    const moves: Record<string, number> = { ArrowRight: 1, ArrowLeft: -1, ArrowDown: columns, ArrowUp: -columns };
    const move = moves[event.key];
    if (!move) return;
    event.preventDefault();
    this.at = Math.max(0, Math.min(this.shown.length - 1, this.at + move));
    void this.updateComplete.then(() =>
      this.querySelectorAll<HTMLElement>(".picker-images > button")[this.at]?.focus(),
    );
  }

  protected override render() {
    return html`<div class="inline">
        <div class="field grow"><label for="picture-words">${t(L.findPicture)}</label><input id="picture-words" class="input" type="search" autofocus @input=${this.find} /></div>
        <div class="field"><label for="picture-folder">${t(L.folder)}</label><select id="picture-folder" class="select" @change=${this.enter}>
          <option value="">${t(L.all)}</option>${recentPaths(this.site).length ? html`<option value=${RECENT}>${t(L.recentPictures)}</option>` : nothing}${this.folders.map(({ id, name, level }) => html`<option value=${id} ?selected=${id === this.folder}>${"\u2003".repeat(Math.max(0, level - 1))}${name}</option>`)}</select></div>
        <div class="field"><label for="picture-size">${t(L.bySize)}</label><select id="picture-size" class="select" @change=${this.narrow}>
          <option value="" ?selected=${this.size === ""}>${t(L.anySize)}</option>${sizesOf(this.pictures).map((size) => html`<option value=${size} ?selected=${size === this.size}>${size}</option>`)}</select></div>
        <label class="button picker-upload">${icon("upload")}${t(L.newPicture)}<input class="unseen" type="file" accept="image/*" @change=${this.picked} /></label>
      </div>
      <p class="note">${t(L.pasteHint)}</p>
      ${this.fault ? html`<p class="notice danger" role="alert">${icon("circle-alert")}<span>${this.fault}</span></p>` : nothing}
      <div class="picker-images" role="listbox" aria-label=${t(L.pictures)} aria-busy=${this.busy} @keydown=${this.key}>
        ${this.shown.map((picture, i) => this.one(picture, i))}
        ${this.shown.length || this.busy ? nothing : html`<p class="note">${t(L.nothingFound)}</p>`}
      </div>`;
  }

  private one(picture: Picture, i: number) {
    const { path, title } = picture;
    const size = sizeOf(picture);
    return html`<button type="button" role="option" aria-selected=${i === this.at} tabindex=${i === this.at ? 0 : -1} @focus=${() => {
      this.at = i;
    }} @click=${() => {
      this.at = i;
    }} @dblclick=${() => this.tell("tvx-chosen")}>
      <img src=${addressOf(this.site, path)} alt="" loading="lazy"><span class="cut">${title || path}${size ? html` <span class="note">${size}</span>` : nothing}</span></button>`;
  }
}

/** A picture of the library, or nothing. */
export async function choosePicture(site: string): Promise<Picture | undefined> {
  let picker: TvxImagePicker | null = null;
  const answer = await dialog({
    title: t(L.picture),
    wide: true,
    body: (box) =>
      html`<tvx-image-picker .site=${site} @tvx-chosen=${() => box.close("take")} @keydown=${(event: KeyboardEvent) => {
        if (event.key === "Enter" && (event.target as Element).matches(".picker-images > button")) {
          event.preventDefault();
          box.close("take");
        }
      }} ${ref((element) => {
        picker = (element as TvxImagePicker | undefined) ?? picker;
      })}></tvx-image-picker>`,
    actions: () => [
      { name: "cancel", label: t(L.cancel) },
      { name: "take", label: t(L.insert), kind: "primary", run: () => picker?.chosen !== undefined },
    ],
  });
  const picture = (picker as TvxImagePicker | null)?.chosen;
  if (answer !== "take" || !picture) return undefined;
  rememberPicture(site, picture);
  return picture;
}

/** Answers the tag of a picture, or null. */
export async function imageDialog(site: string): Promise<string | null> {
  const picture = await choosePicture(site);
  if (!picture) return null;
  const alt = picture.alt ?? (await askedAlt(site, picture));
  return imageTag(site, picture, alt);
}

/** Asked once: the library keeps the answer. */
async function askedAlt(site: string, picture: Picture): Promise<string> {
  const alt = await altDialog(addressOf(site, picture.path), "");
  if (alt !== null) await keepAlt(site, picture, alt);
  return alt ?? "";
}
