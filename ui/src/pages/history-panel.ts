/** What was done to a page, by person and hour. */

import { html, type PropertyValues, type TemplateResult } from "lit";
import { customElement, property, state } from "lit/decorators.js";
import { call } from "../api";
import { TvxElement } from "../kit/element";
import { icon } from "../kit/icon";
import { L, t } from "../labels";
import { onPagesChanged, type PageState } from "../shell/workplace";
import { actionIcon, actionWord } from "./action-words";
import { type AuditLine, counted, gather, type HistoryEntry } from "./model/history";
import { momentText, whenText } from "./words";
import "./side-panels.css";

@customElement("tvx-page-history")
export class TvxPageHistory extends TvxElement {
  @property({ attribute: false }) page: PageState | null = null;
  @state() private entries: readonly HistoryEntry[] | undefined;
  @state() private fault = "";
  @state() private shown = 20;
  private forget: (() => void) | undefined;

  override connectedCallback(): void {
    super.connectedCallback();
    this.forget = onPagesChanged((change) => {
      if (change === "all" || change.pageIds.includes(this.page?.pageId ?? -1)) void this.load();
    });
  }

  override disconnectedCallback(): void {
    super.disconnectedCallback();
    this.forget?.();
  }

  protected override willUpdate(properties: PropertyValues<this>): void {
    const before = properties.get("page");
    if (!properties.has("page") || before?.pageId === this.page?.pageId) return;
    this.entries = undefined;
    this.shown = 20;
    void this.load();
  }

  private async load(): Promise<void> {
    if (!this.page) return;
    const { pageId } = this.page;
    try {
      const lines = (await call("desk.getHistory", { pageIdent: String(pageId) })) as AuditLine[];
      if (this.page?.pageId !== pageId) return;
      this.entries = gather(lines);
      this.fault = "";
    } catch (error) {
      this.fault = error instanceof Error ? error.message : String(error);
    }
  }

  protected override render(): TemplateResult {
    if (this.fault)
      return html`<div class="side-body"><p class="notice">${icon("info")}<span>${this.fault}</span></p></div>`;
    if (!this.entries)
      return html`<div class="setup-skeleton" aria-busy="true"><div class="skeleton"></div><div class="skeleton"></div></div>`;
    if (this.entries.length === 0) return html`<div class="empty">${icon("history")}<p>${t(L.historyEmpty)}</p></div>`;
    return html`<div class="side-body">
      <ol class="history" aria-label=${t(L.historyPanel)}>${this.entries.slice(0, this.shown).map((entry) => this.entry(entry))}</ol>
      ${
        this.entries.length > this.shown
          ? html`<button class="button" @click=${() => {
              this.shown += 50;
            }}>${t(L.showMore)}</button>`
          : html``
      }
    </div>`;
  }

  private entry(entry: HistoryEntry): TemplateResult {
    return html`<li><p class="history-who"><strong>${entry.name}</strong> <time class="note" datetime=${entry.moment} title=${momentText(entry.moment)}>${whenText(entry.moment)}</time></p>
      <ul>${counted(entry.lines).map(
        ({ action, detail, count }) =>
          html`<li title=${detail}>${icon(actionIcon(action))}<span>${actionWord(action)}${count > 1 ? html` <span class="note">× ${count}</span>` : ""}</span></li>`,
      )}</ul></li>`;
  }
}
