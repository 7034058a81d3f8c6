/** The templates, base templates or stylesheets of a website, and one of them where the address names it. */

import { html, type TemplateResult } from "lit";
import { customElement, property } from "lit/decorators.js";
import { L, t } from "../labels";
import { word } from "../pages/words";
import { addDialog } from "../records/add-dialog";
import { textField } from "../records/fields";
import { workplace } from "../shell/workplace";
import { ASSETS, type AssetKind, addAsset, assetsOf, type DesignKind, type DesignLine, type Place } from "./data";
import { DesignList } from "./design-list";
import "./tvx-asset";

@customElement("tvx-assets")
export class TvxAssets extends DesignList {
  @property({ attribute: false }) assets: AssetKind = ASSETS[0]!;

  protected get kind(): DesignKind {
    return this.assets;
  }

  protected get place(): Place {
    return workplace.value;
  }

  protected read(): Promise<DesignLine[]> {
    return assetsOf(this.assets, this.place);
  }

  protected add(): Promise<string> {
    let name = "";
    let filename = "";
    const fields = (): TemplateResult =>
      html`${textField({ id: "asset-new-name", label: t(L.name), value: name, longest: 50, change: (text) => (name = text) })}
        ${textField({ id: "asset-new-file", label: t(L.filename), value: filename, longest: 100, hint: t(L.newFileHint, { ending: this.assets.ending }), change: (text) => (filename = text) })}`;
    return addDialog(word(this.assets.add), fields, () => addAsset(this.assets, name, filename));
  }

  protected one(id: number): TemplateResult {
    return html`<tvx-asset .assets=${this.assets} .recordId=${id} @tvx-done=${this.load}></tvx-asset>`;
  }
}
