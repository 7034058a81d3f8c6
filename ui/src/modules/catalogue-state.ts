/** The search catalogue of the server: how much it holds, what waits, and its renewal, which goes on whoever looks. */

import { html, nothing, type TemplateResult } from "lit";
import { customElement, property, state } from "lit/decorators.js";
import { type AnswerOf, call } from "../api";
import { isProblem } from "../api/problem";
import { TvxElement } from "../kit/element";
import { faultNotice } from "../kit/fault-notice";
import { icon } from "../kit/icon";
import { toast } from "../kit/tvx-toast";
import { L, locale, plural, t } from "../labels";
import { when } from "../labels/moments";
import { sizeText } from "../media/model/files";
import { failed } from "../pages/actions";

type Catalogue = AnswerOf<"desk.getCatalogue">[number];
type Task = "compare" | "anew" | "stop";

/** Between two looks: while something is at work, and else. */
const SOON = 1000;
const LATER = 15_000;

const isAtWork = ({ asked, task }: Catalogue): boolean => Boolean(asked || task);

@customElement("tvx-catalogue-state")
export class TvxCatalogueState extends TvxElement {
  @property({ type: Boolean }) mayChange = false;
  @state() private catalogue: Catalogue | undefined;
  @state() private fault: unknown;
  private timer: ReturnType<typeof setTimeout> | undefined;
  /** What was last asked here, or is seen at work, and isn't over yet. */
  private awaited: Task | undefined;
  private looks = 0;

  override connectedCallback(): void {
    super.connectedCallback();
    void this.look();
  }

  override disconnectedCallback(): void {
    super.disconnectedCallback();
    clearTimeout(this.timer);
    ++this.looks;
  }

  /** Looks now, and again later on: one look at a time. */
  private readonly look = async (): Promise<void> => {
    clearTimeout(this.timer);
    const looking = ++this.looks;
    try {
      const [catalogue] = await call("desk.getCatalogue", {});
      if (looking !== this.looks) return;
      this.take(catalogue);
      this.fault = undefined;
    } catch (error) {
      if (looking !== this.looks) return;
      this.fault = error;
    }
    const isBusy = this.catalogue !== undefined && isAtWork(this.catalogue);
    this.timer = setTimeout(this.look, isBusy && !this.fault ? SOON : LATER);
  };

  private take(catalogue: Catalogue | undefined): void {
    this.catalogue = catalogue;
    if (!catalogue) return;
    if (isAtWork(catalogue)) this.awaited ??= "compare";
    else if (this.awaited) {
      toast(t(this.awaited === "stop" ? L.catalogueStopped : L.catalogueUpToDate));
      this.awaited = undefined;
    }
  }

  private async ask(task: Task): Promise<void> {
    try {
      await call("registers.renewCatalogue", { task });
      this.awaited = task;
    } catch (error) {
      if (isProblem(error) && error.status === 409) toast(error.message, { kind: "warn" });
      else failed(error);
    }
    await this.look();
  }

  private told({ asked, task, total, done }: Catalogue): string {
    if (asked === "stop") return t(L.catalogueStopping);
    if (asked) return t(L.catalogueAsked);
    if (!task) return t(L.catalogueRests);
    return total > 0 ? t(L.catalogueTaking, { done, all: total }) : t(L.catalogueComparing);
  }

  private progress({ asked, task, total, done }: Catalogue, told: string): TemplateResult | typeof nothing {
    if (!asked && !task) return nothing;
    return total > 0
      ? html`<progress class="bar" max=${total} value=${done} aria-label=${told}></progress>`
      : html`<progress class="bar" aria-label=${told}></progress>`;
  }

  private job(task: Task, label: string, hint: string): TemplateResult {
    return html`<li class="card module-row"><p class="module-name">${hint}</p>
      <div class="module-buttons"><button type="button" class="button" @click=${() => this.ask(task)}>${icon("refresh-cw")}${label}</button></div></li>`;
  }

  private jobs(catalogue: Catalogue): TemplateResult | typeof nothing {
    if (!this.mayChange || !catalogue.isKept || isAtWork(catalogue)) return nothing;
    return html`<ul class="module-list" role="list">
      ${this.job("compare", t(L.compareNow), t(L.compareNowHint))}${this.job("anew", t(L.makeAnew), t(L.makeAnewHint))}</ul>`;
  }

  private shown(catalogue: Catalogue): TemplateResult {
    const { entries, bytes, queued, compared, failure } = catalogue;
    const told = this.told(catalogue);
    const size = sizeText(bytes, locale());
    const waits = queued === 0 ? t(L.catalogueNothingWaits) : plural(queued, L.catalogueOneWaits, L.catalogueManyWait);
    const mayStop = this.mayChange && isAtWork(catalogue) && catalogue.asked !== "stop";
    return html`<div class="card module-row catalogue-state"><div class="module-name">
        <p><strong>${plural(entries, L.catalogueOne, L.catalogueMany, { size })}</strong></p>
        <p class="soft">${waits} ${compared ? t(L.catalogueCompared, { moment: when(compared) }) : t(L.catalogueNotCompared)}</p>
        ${catalogue.isKept ? html`<p role="status">${told}</p>${this.progress(catalogue, told)}` : html`<p class="rights-mark warn">${t(L.catalogueNotKept)}</p>`}
        ${failure ? html`<p role="alert">${t(L.catalogueInTheWay, { what: failure })}</p>` : nothing}</div>
      ${mayStop ? html`<div class="module-buttons"><button type="button" class="button" @click=${() => this.ask("stop")}>${t(L.stop)}</button></div>` : nothing}</div>
      ${this.jobs(catalogue)}`;
  }

  protected override render(): TemplateResult {
    return html`${faultNotice(this.fault, this.look)}${this.catalogue ? this.shown(this.catalogue) : html`<div class="skeleton card"></div>`}`;
  }
}
