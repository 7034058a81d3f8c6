/** The search catalogue of the installation: what it reads is made anew, and what is gone is left out of it. */

import { html, nothing, type TemplateResult } from "lit";
import { customElement, state } from "lit/decorators.js";
import { call } from "../api";
import { icon } from "../kit/icon";
import { L, t } from "../labels";
import { mayChangeIn } from "../shell/workplace";
import "./catalogue-state";
import { ModuleScreen } from "./screen";
import { CATALOGUE, renewCopies } from "./search-data";

@customElement("tvx-catalogue")
export class TvxCatalogue extends ModuleScreen<boolean> {
  @state() private busy = "";
  protected readonly entry = CATALOGUE;

  /** Whether it may be changed: nothing else is shown here. */
  protected async read(): Promise<boolean> {
    return mayChangeIn(CATALOGUE, "", "");
  }

  protected heading(): string {
    return t(L.searchCatalogueTitle);
  }

  /** One at a time: both write what the other reads. */
  private async run(name: string, work: () => Promise<unknown>, said: string): Promise<void> {
    if (this.busy) return;
    this.busy = name;
    await this.act(work, said);
    this.busy = "";
  }

  private job(name: string, label: string, hint: string, work: () => Promise<unknown>, said: string): TemplateResult {
    return html`<li class="card module-row"><p class="module-name">${hint}</p>
      <div class="module-buttons"><button type="button" class="button" aria-busy=${this.busy === name ? "true" : nothing} aria-disabled=${this.busy ? "true" : nothing}
        @click=${() => this.run(name, work, said)}>${icon("refresh-cw")}${label}</button></div></li>`;
  }

  protected content(mayChange: boolean): TemplateResult {
    return html`<p class="list-note soft">${t(L.catalogueHint)}</p>
      <tvx-catalogue-state class="stack" ?mayChange=${mayChange}></tvx-catalogue-state>${
        mayChange
          ? html`<ul class="module-list" role="list">
          ${this.job("renew", t(L.renewCopies), t(L.renewCopiesHint), renewCopies, t(L.copiesRenewed))}
          ${this.job("clean", t(L.cleanUpSearch), t(L.cleanUpHint), () => call("search.CleanUpDB", {}), t(L.cleanedUp))}</ul>`
          : nothing
      }`;
  }
}
