/** The applications, or the feeds of a website, and one of them where the address names it. */

import { html, type PropertyValues, type TemplateResult } from "lit";
import { customElement, property } from "lit/decorators.js";
import { Watch } from "../kit/element";
import type { TableColumn } from "../kit/tvx-table";
import { L, t } from "../labels";
import { word } from "../pages/words";
import { addDialog } from "../records/add-dialog";
import { mayChange } from "../records/lock";
import { type ListWords, RecordList } from "../records/record-list";
import { workplace } from "../shell/workplace";
import { formFields } from "./form-fields";
import { addForm, FORMS, type FormKind, type FormLine, placeOf, type Texts } from "./forms";
import "./tvx-form";
import "./design.css";

@customElement("tvx-forms")
export class TvxForms extends RecordList<FormLine> {
  @property({ attribute: false }) form: FormKind = FORMS[0]!;
  private where = "";
  private readonly workplace = new Watch(this, workplace);

  protected get address(): string {
    return this.form.address;
  }

  protected get key(): string {
    return this.form.item;
  }

  protected get entry(): number {
    return this.form.entry;
  }

  protected get words(): ListWords {
    const { icon, title, add, isEmpty } = this.form;
    return { icon, title, add, isEmpty };
  }

  protected override willUpdate(changed: PropertyValues<this>): void {
    const { site, lang } = this.workplace.value;
    const where = `${site}.${lang}`;
    if (this.where && this.form.isOfWebsite && where !== this.where) void this.load();
    this.where = where;
    super.willUpdate(changed);
  }

  protected read(): Promise<FormLine[]> {
    const { site, lang } = placeOf(this.form);
    return this.form.list(site, lang);
  }

  protected override askToAdd(): Promise<boolean> {
    const { site, lang } = placeOf(this.form);
    return mayChange(this.entry, site, lang);
  }

  protected add(): Promise<string> {
    let texts: Texts = {};
    const first = this.form.fields.filter(({ isFirst }) => isFirst);
    const fields = (): TemplateResult =>
      html`${formFields("form-new", first, texts, false, (part, text) => {
        texts = { ...texts, [part]: text };
      })}`;
    return addDialog(word(this.form.add), fields, () => addForm(this.form, texts));
  }

  protected one(id: number): TemplateResult {
    return html`<tvx-form .form=${this.form} .recordId=${id} @tvx-done=${this.load}></tvx-form>`;
  }

  protected idOf({ id }: FormLine): number {
    return id;
  }

  protected nameOf({ name }: FormLine): string {
    return name;
  }

  protected textsOf({ name, description }: FormLine): string[] {
    return [name, description];
  }

  protected get columns(): TableColumn<FormLine>[] {
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
