/** The folders of a site's media, beside the centre. */

import { html, type TemplateResult } from "lit";
import { customElement, state } from "lit/decorators.js";
import { TvxElement, Watch } from "../kit/element";
import { icon } from "../kit/icon";
import "../kit/tvx-tree";
import type { TreeRow } from "../kit/tvx-tree";
import { L, t } from "../labels";
import { go, place } from "../shell/address";
import { workplace } from "../shell/workplace";
import { loadFolders } from "./data";
import { onFoldersChanged } from "./folders-changed";
import type { MediaKind } from "./model/files";
import { type Folder, inTreeOrder, namedOr, trailOf } from "./model/folders";
import "./media.css";

const KINDS: readonly MediaKind[] = ["images", "documents"];

@customElement("tvx-media-side")
export class TvxMediaSide extends TvxElement {
  @state() private folders = new Map<MediaKind, readonly Folder[]>();
  @state() private open = new Set<string>(["images", "documents"]);
  private site = "";
  private forget: (() => void) | undefined;
  private readonly where = new Watch(this, workplace, () => this.moved());
  private readonly place = new Watch(this, place, () => this.openTrail());

  override connectedCallback(): void {
    super.connectedCallback();
    this.forget = onFoldersChanged(() => void this.load());
    this.moved();
  }

  override disconnectedCallback(): void {
    super.disconnectedCallback();
    this.forget?.();
  }

  private moved(): void {
    if (this.where.value.site === this.site) return;
    this.site = this.where.value.site;
    void this.load();
  }

  private async load(): Promise<void> {
    for (const kind of KINDS) {
      const folders = await loadFolders(this.site, kind).catch(() => [] as Folder[]);
      this.folders = new Map(this.folders).set(kind, folders);
    }
    this.openTrail();
  }

  private get chosen(): string {
    const { path, params } = this.place.value;
    const kind = KINDS.find((each) => path.toLowerCase() === `/torvex/${each}.asp`);
    return kind ? [kind, params.get("folder")].filter(Boolean).join(" ") : "";
  }

  private openTrail(): void {
    const [kind, folder = ""] = this.chosen.split(" ");
    const trail = trailOf(this.folders.get(kind as MediaKind) ?? [], folder).slice(0, -1);
    if (trail.length) this.open = new Set([...this.open, ...trail.map((each) => `${kind} ${each.id}`)]);
  }

  private rows(): TreeRow[] {
    return KINDS.flatMap((kind, at) => {
      const folders = this.folders.get(kind) ?? [];
      const row: TreeRow = {
        id: kind,
        name: t(kind === "images" ? L.images : L.documents),
        level: 1,
        setSize: KINDS.length,
        position: at + 1,
        expandable: folders.length > 0,
        expanded: this.open.has(kind),
        content: html`${icon(kind === "images" ? "images" : "file-text")}<span class="cut">${t(kind === "images" ? L.images : L.documents)}</span>`,
      };
      return this.open.has(kind) ? [row, ...this.below(kind, folders)] : [row];
    });
  }

  private below(kind: MediaKind, folders: readonly Folder[]): TreeRow[] {
    const open = new Set(
      [...this.open].filter((each) => each.startsWith(`${kind} `)).map((each) => each.slice(kind.length + 1)),
    );
    return inTreeOrder(folders, open).map((folder) => {
      const siblings = folders.filter((each) => each.parent === folder.parent);
      const name = namedOr(folder, t(L.newFolder));
      return {
        id: `${kind} ${folder.id}`,
        name,
        level: folder.level + 1,
        setSize: siblings.length,
        position: siblings.indexOf(folder) + 1,
        expandable: folders.some((each) => each.parent === folder.id),
        expanded: open.has(folder.id),
        content: html`${icon("folder")}<span class="cut">${name}</span>${folder.files ? html`<span class="media-count">${folder.files}</span>` : ""}`,
      };
    });
  }

  private toggle(id: string): void {
    const open = new Set(this.open);
    if (!open.delete(id)) open.add(id);
    this.open = open;
  }

  private show(id: string): void {
    const [kind, folder = ""] = id.split(" ");
    void go(`/torvex/${kind}.asp${folder ? `?folder=${folder}` : ""}`);
  }

  protected override render(): TemplateResult {
    return html`<tvx-tree .rows=${this.rows()} .current=${this.chosen} .label=${t(L.mediaPlace)}
      @tvx-toggle=${(event: CustomEvent<string>) => this.toggle(event.detail)} @tvx-open=${(event: CustomEvent<string>) => this.show(event.detail)}></tvx-tree>`;
  }
}
