/** How a page stands: design and live beside each other, who did what last, and what differs. */

import { html, nothing, type PropertyValues, type TemplateResult } from "lit";
import { customElement, property, state } from "lit/decorators.js";
import { call } from "../api";
import { TvxElement } from "../kit/element";
import { faultNotice } from "../kit/fault-notice";
import { type IconName, icon } from "../kit/icon";
import { L, number, plural, t } from "../labels";
import { onPagesChanged, type PageState } from "../shell/workplace";
import { loadPage, type PageFacts } from "./data";
import { bodyCounts, type Difference, partName } from "./differences";
import { dayText, kindWord, momentText, STATE_ICONS, stateWord } from "./words";
import "./side-panels.css";

@customElement("tvx-page-status")
export class TvxPageStatus extends TvxElement {
  @property({ attribute: false }) page: PageState | null = null;
  @state() private facts: PageFacts | undefined;
  @state() private differences: readonly Difference[] | undefined;
  @state() private views: number | undefined;
  @state() private fault: unknown;
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
    if (properties.has("page") && before?.pageId !== this.page?.pageId) void this.load();
  }

  private async load(): Promise<void> {
    if (!this.page) return;
    const { pageId, nodeId } = this.page;
    const pageIdent = String(pageId);
    try {
      const facts = await loadPage(nodeId);
      if (this.page?.pageId !== pageId) return;
      this.facts = facts;
      this.fault = undefined;
      const [differences, views] = await Promise.all([
        facts?.live && facts.rights.edit
          ? ((await call("desk.compare", { pageIdent }).catch(() => undefined)) as Difference[] | undefined)
          : undefined,
        facts?.live ? call("cManager.getNumberOfViews", { pageIdent }).catch(() => undefined) : undefined,
      ]);
      if (this.page?.pageId !== pageId) return;
      this.differences = differences;
      this.views = views;
    } catch (error) {
      this.fault = error;
    }
  }

  protected override render(): TemplateResult | typeof nothing {
    if (this.fault) return faultNotice(this.fault, () => this.load());
    if (!this.facts)
      return html`<div class="setup-skeleton" aria-busy="true"><div class="skeleton"></div><div class="skeleton"></div></div>`;
    const page = this.facts;
    return html`<div class="side-body">
      <section class="stack"><h2 class="side-part">${t(L.viewDesign)}</h2>${this.design(page)}</section>
      <section class="stack"><h2 class="side-part">${t(L.viewLive)}</h2>${this.live(page)}</section>
      ${this.what(page)}
      <section class="stack"><h2 class="side-part">${t(L.placePart)}</h2>
        <dl class="facts">${this.fact(t(L.partKind), kindWord(page.status.kind))}${this.fact(t(L.nodePart), page.nodeId)}${this.fact(t(L.numberPart), String(page.pageId))}</dl></section>
    </div>`;
  }

  private line(name: IconName, text: string, when: string): TemplateResult {
    return html`<p class="side-line">${icon(name)}<span><span>${text}</span>${when ? html`<span class="note">${when}</span>` : nothing}</span></p>`;
  }

  private fact(label: string, value: string): TemplateResult | typeof nothing {
    return value ? html`<div><dt>${label}</dt><dd>${value}</dd></div>` : nothing;
  }

  private design(page: PageFacts): TemplateResult {
    const { status } = page;
    const by = page.editor ? t(L.changedBy, { name: page.editor, when: momentText(page.editingDate) }) : "";
    return html`
      ${this.line(STATE_ICONS[page.state], stateWord(page.state), by)}
      ${status.held ? this.line("lock", status.heldByOther ? t(L.stateHeld, { name: page.holder }) : t(L.stateHeldByYou), momentText(page.holderSince)) : nothing}
      ${status.approved && page.approvedBy ? this.line("clipboard-check", t(L.approvedByWhom, { name: page.approvedBy }), "") : nothing}
    `;
  }

  private live(page: PageFacts): TemplateResult {
    if (!page.live) return this.line("square-dashed", t(L.notLive), "");
    const { live } = page;
    return html`
      ${this.line(live.online ? "eye" : "eye-off", t(live.online ? L.visitorsSeeIt : L.visitorsDontSeeIt), t(L.publishedBy, { name: live.publisher, when: momentText(live.publishingDate) }))}
      ${live.onlineFrom || live.onlineTo ? this.line("calendar-clock", this.span(live.onlineFrom, live.onlineTo), "") : nothing}
      ${this.views === undefined ? nothing : this.line("activity", plural(this.views, L.viewsOne, L.viewsMany, { number: number(this.views) }), "")}
      <p><a href=${`/tvx.asp?pageId=${page.pageId}`} target="_blank" rel="noopener">${t(L.openLive)}</a></p>
    `;
  }

  private span(from: string, to: string): string {
    if (from && to) return t(L.fromTo, { from: dayText(from), to: dayText(to) });
    return from ? t(L.fromOn, { day: dayText(from) }) : t(L.upTo, { day: dayText(to) });
  }

  private what(page: PageFacts): TemplateResult | typeof nothing {
    if (!this.differences || this.differences.length === 0) return nothing;
    return html`<section class="stack"><h2 class="side-part">${t(L.whatDiffers)}</h2>
      <ul class="side-list">${this.differences.map((row) => html`<li><span>${partName(row)}</span><span class="note">${row.part === "body" ? bodyCounts(row) : ""}</span></li>`)}</ul>
      <p><a href=${`/torvex/page.asp?pageId=${page.pageId}&look=compare`}>${t(L.viewCompare)}</a></p></section>`;
  }
}
