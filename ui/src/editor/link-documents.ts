// Documents to link to, by their folders.
import { html } from "lit";
import { customElement, property, state } from "lit/decorators.js";
import { call } from "../api";
import { TvxElement } from "../kit/element";
import { L, t } from "../labels";
import type { LinkTarget } from "./link-target";

interface Folder {
  folder: string;
  name: string;
  level: number;
}

interface File {
  folder: string;
  path: string;
  title: string;
}

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
      const args = { site: this.site, folderType: "documents" };
      this.folders = (await call("registers.getFolders", args)) as unknown as Folder[];
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
      const args = { site: this.site, folderType: "documents", folder, words: "", from: 0 };
      const files = (await call("registers.getMedia", args)) as unknown as File[];
      this.tell<LinkTarget[]>("tvx-targets", files.filter((file) => file.folder === folder).map(this.targetOf));
    });
  }

  private readonly targetOf = ({ path, title }: File): LinkTarget => ({
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
        ${this.folders.map(({ folder, name, level }) => html`<option value=${folder}>${"\u2003".repeat(level)}${name}</option>`)}</select></div>
      ${this.fault ? html`<p class="notice danger" role="alert">${this.fault}</p>` : ""}`;
  }
}
