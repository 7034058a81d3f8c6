/** The second factor of one's own login: whether it is on, set up, codes on paper, switched off. */

import { html, nothing, type TemplateResult } from "lit";
import { customElement, state } from "lit/decorators.js";
import { TvxElement } from "../kit/element";
import { faultNotice } from "../kit/fault-notice";
import { icon } from "../kit/icon";
import { L, t } from "../labels";
import { failed } from "../pages/actions";
import { whenText } from "../pages/words";
import { type FactorState, stateOf } from "./data";
import { newCodes, setUp, switchOff } from "./dialogs";

@customElement("tvx-second-factor")
export class TvxSecondFactor extends TvxElement {
  @state() private now: FactorState | undefined;
  @state() private fault: unknown;

  override connectedCallback(): void {
    super.connectedCallback();
    void this.load();
  }

  private readonly load = async (): Promise<void> => {
    try {
      this.now = await stateOf();
      this.fault = undefined;
    } catch (error) {
      this.fault = error;
    }
  };

  private async done(work: () => Promise<unknown>): Promise<void> {
    try {
      await work();
    } catch (error) {
      failed(error);
    }
    await this.load();
    if (this.now?.isOn === 1) this.dispatchEvent(new CustomEvent("tvx-enrolled"));
  }

  protected override render(): TemplateResult {
    const { now } = this;
    if (this.fault) return html`${faultNotice(this.fault, this.load)}`;
    if (!now) return html`<div class="skeleton"></div>`;
    return html`<p>${t(L.factorWhy)}</p>${now.isOn === 1 ? this.on(now) : this.off(now)}`;
  }

  private off({ isDemanded }: FactorState): TemplateResult {
    return html`<p class="note" role="status">${t(L.factorOff)} ${isDemanded ? t(L.factorDemanded) : ""}</p>
      <p class="inline"><button type="button" class="button" @click=${() => this.done(setUp)}>${icon("shield")}${t(L.factorSetUp)}</button></p>`;
  }

  private on({ since, codesLeft, isDemanded }: FactorState): TemplateResult {
    return html`<p class="note" role="status">${t(L.factorOn, { date: whenText(since) })} ${t(L.factorCodesLeft, { count: codesLeft })} ${isDemanded ? t(L.factorDemanded) : ""}</p>
      <p class="inline"><button type="button" class="button" @click=${() => this.done(newCodes)}>${icon("refresh-cw")}${t(L.factorNewCodes)}</button>
        ${isDemanded ? nothing : html`<button type="button" class="button" @click=${() => this.done(switchOff)}>${icon("x")}${t(L.factorSwitchOff)}</button>`}</p>`;
  }
}
