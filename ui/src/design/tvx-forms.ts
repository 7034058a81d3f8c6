/** The applications, or the feeds of a website, and one of them where the address names it. */

import { html, type TemplateResult } from "lit";
import { customElement, property } from "lit/decorators.js";
import { word } from "../pages/words";
import { addDialog } from "../records/add-dialog";
import type { DesignKind, DesignLine, Place } from "./data";
import { DesignList } from "./design-list";
import { formFields } from "./form-fields";
import { addForm, FORMS, type FormKind, placeOf, type Texts } from "./forms";
import "./tvx-form";

@customElement("tvx-forms")
export class TvxForms extends DesignList {
  @property({ attribute: false }) form: FormKind = FORMS[0]!;

  protected get kind(): DesignKind {
    return this.form;
  }

  protected get place(): Place {
    return placeOf(this.form);
  }

  protected read(): Promise<DesignLine[]> {
    return this.form.list(this.place);
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
}
