/** The templates, base templates or stylesheets of a website, and one of them where the address names it. */

import { html, type PropertyValues, type TemplateResult } from "lit";
import { customElement, property } from "lit/decorators.js";
import { Watch } from "../kit/element";
import type { TableColumn } from "../kit/tvx-table";
import { L, t } from "../labels";
import { addDialog } from "../records/add-dialog";
import { textField } from "../records/fields";
import { mayChange } from "../records/lock";
import { type ListWords, RecordList } from "../records/record-list";
import { workplace } from "../shell/workplace";
import { ASSETS, type AssetKind, type AssetLine, addAsset, assetsOf } from "./data";
import "./tvx-asset";
import "./design.css";

@customElement("tvx-assets")
export class TvxAssets extends RecordList<AssetLine> {
  @property({ attribute: false }) assets: AssetKind = ASSETS[0]!;
  private where = "";
  private readonly workplace = new Watch(this, workplace);

  protected get address(): string {
    return this.assets.address;
  }

  protected get key(): string {
    return this.assets.item;
  }

  protected get entry(): number {
    return this.assets.entry;
  }

  protected get words(): ListWords {
    const { icon, title, add, isEmpty } = this.assets;
    return { icon, title, add, isEmpty };
  }

  protected override willUpdate(changed: PropertyValues<this>): void {
    const { site, lang } = this.workplace.value;
    const where = `${site}.${lang} ${this.assets.kind}`;
    if (this.where && where !== this.where) void this.load();
    this.where = where;
    super.willUpdate(changed);
  }

  protected read(): Promise<AssetLine[]> {
    const { site, lang } = workplace.value;
    return assetsOf(this.assets, site, lang);
  }

  protected override askToAdd(): Promise<boolean> {
    const { site, lang } = workplace.value;
    return mayChange(this.entry, site, lang);
  }

  protected add(): Promise<string> {
    let name = "";
    let filename = "";
    const fields = (): TemplateResult =>
      html`${textField({ id: "asset-new-name", label: t(L.name), value: name, longest: 50, change: (text) => (name = text) })}
        ${textField({ id: "asset-new-file", label: t(L.filename), value: filename, longest: 100, hint: t(L.newFileHint, { ending: this.assets.ending }), change: (text) => (filename = text) })}`;
    const add = (): Promise<unknown> => addAsset(this.assets, name, filename);
    return addDialog(t(this.assets.add as typeof L.newTemplate), fields, add);
  }

  protected one(id: number): TemplateResult {
    return html`<tvx-asset .assets=${this.assets} .recordId=${id} @tvx-done=${this.load}></tvx-asset>`;
  }

  protected idOf({ id }: AssetLine): number {
    return id;
  }

  protected nameOf({ name }: AssetLine): string {
    return name;
  }

  protected textsOf({ name, description }: AssetLine): string[] {
    return [name, description];
  }

  protected get columns(): TableColumn<AssetLine>[] {
    return [
      {
        id: "name",
        label: t(L.name),
        cell: (row) =>
          html`${this.link(row, row.name || `[${row.id}]`)}${row.isSystem ? html` <span class="design-mark">${t(L.ofSystem)}</span>` : ""}`,
        by: (row) => row.name,
      },
      { id: "text", label: t(L.description), cell: (row) => row.description, by: (row) => row.description, wide: true },
    ];
  }
}
