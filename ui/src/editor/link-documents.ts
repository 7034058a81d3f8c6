// Documents to link to, by their folders.
import { html } from "lit";
import { customElement, property, state } from "lit/decorators.js";
import { TvxElement } from "../kit/element";
import { L, t } from "../labels";
import { loadFiles, loadFolders } from "../media/data";
import type { MediaFile } from "../media/model/files";
import type { Folder } from "../media/model/folders";
import type { LinkTarget } from "./link-target";

/** Tells "tvx-targets" (LinkTarget[]): the documents of the folder. */
@customElement("tvx-link-documents")
export class TvxLinkDocuments extends TvxElement {
  @property() site = "";
  @state() private folders: Folder[] = [];
  @state() private fault = "";

  override connectedCallback(): void {
    super.connectedCallback();
    void this.begin();
  }

  private async begin(): Promise<void> {
    await this.attempt(async () => {
      this.folders = await loadFolders(this.site, "documents");
    });
    await this.enter("");
  }

  private async attempt(work: () => Promise<void>): Promise<void> {
    try {
      await work();
      this.fault = "";
    } catch (error) {
      this.fault = error instanceof Error ? error.message : String(error);
    }
  }

  private enter(folder: string): Promise<void> {
    return this.attempt(async () => {
      const { files } = await loadFiles(this.site, "documents", folder);
      this.tell<LinkTarget[]>("tvx-targets", files.filter((file) => file.folder === folder).map(this.targetOf));
    });
  }

  private readonly targetOf = ({ path, title }: MediaFile): LinkTarget => ({
    kind: "document",
    pageId: 0,
    siteId: this.site,
    lang: "",
    nodeId: "",
    title: title || path,
    path,
    isLive: true,
  });

  protected override render() {
    return html`<div class="field"><label for="link-folder">${t(L.folder)}</label>
      <select id="link-folder" class="select" @change=${(event: Event) => this.enter((event.target as HTMLSelectElement).value)}>
        <option value="">${t(L.documents)}</option>
        ${this.folders.map(({ id, name, level }) => html`<option value=${id}>${"\u2003".repeat(level)}${name}</option>`)}</select></div>
      ${this.fault ? html`<p class="notice danger" role="alert">${this.fault}</p>` : ""}`;
  }
}
