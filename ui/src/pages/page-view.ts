/** A page in the centre: its title and state, how it is looked at, and the next step. */

import { html, nothing, type PropertyValues, type TemplateResult } from "lit";
import { customElement, property, state } from "lit/decorators.js";
import { isCancelled } from "../api";
import { TvxElement } from "../kit/element";
import { faultNotice } from "../kit/fault-notice";
import { type IconName, icon } from "../kit/icon";
import { openMenu } from "../kit/tvx-menu";
import { L, type Label, t } from "../labels";
import { todayAsDigits } from "../labels/moments";
import { go, pageAddress, setQuery } from "../shell/address";
import { shell } from "../shell/tvx-shell";
import { currentPage, onPagesChanged } from "../shell/workplace";
import { askFor, failed, release, stepAtOnce, takeBack } from "./actions";
import { markPage } from "./commands";
import { loadPage, type PageFacts, pageStateOf } from "./data";
import { mayTakeBack, type NextStep, nextStep, onceSaved } from "./model/next-step";
import { pageMenu } from "./page-menu";
import { KIND_ICONS, kindWord, STATE_ICONS, stateWord, titleOr, whenText, word } from "./words";
import "./compare-view";
import "./chips.css";
import "./page-view.css";

export type Look = "design" | "live" | "compare";

/** What the editor's frame offers once it is there. */
interface Frame extends HTMLElement {
  save?: () => Promise<boolean>;
  edit?: (bodyId?: number) => void;
}

const WIDTHS: readonly { width: number; label: Label; icon: IconName }[] = [
  { width: 390, label: L.widthPhone, icon: "smartphone" },
  { width: 820, label: L.widthTablet, icon: "tablet" },
  { width: 0, label: L.widthFull, icon: "monitor" },
];

@customElement("tvx-page-view")
export class TvxPageView extends TvxElement {
  /** Its number or node. */
  @property() pageIdent = "";
  @property() look: Look = "design";
  /** "1" begins to type in the first text, once the page is there. */
  @property() begin = "";
  @state() private page: PageFacts | undefined;
  @state() private missing = false;
  @state() private fault: unknown;
  @state() private loading = false;
  @state() private busy = false;
  @state() private width = 0;
  /** Whether the frame holds text that isn't saved yet. */
  @state() private unsaved = false;
  private asked: AbortController | undefined;
  private forgetChanges: (() => void) | undefined;

  override connectedCallback(): void {
    super.connectedCallback();
    this.forgetChanges = onPagesChanged((change) => {
      if (change === "all" || (this.page && change.pageIds.includes(this.page.pageId))) void this.load();
    });
    document.addEventListener("keydown", this.key);
  }

  override disconnectedCallback(): void {
    super.disconnectedCallback();
    this.forgetChanges?.();
    this.asked?.abort();
    document.removeEventListener("keydown", this.key);
    currentPage.value = null;
  }

  protected override willUpdate(changed: PropertyValues<this>): void {
    if (changed.has("pageIdent") && this.pageIdent !== "") {
      if (String(this.page?.pageId) !== this.pageIdent) this.page = undefined;
      void this.load();
    }
  }

  /** What the panels beside it show. */
  get facts(): PageFacts | undefined {
    return this.page;
  }

  async load(): Promise<void> {
    this.asked?.abort();
    const asked = new AbortController();
    this.asked = asked;
    this.loading = true;
    try {
      const page = await loadPage(this.pageIdent, asked.signal);
      if (asked.signal.aborted) return;
      this.missing = page === undefined;
      // What is being typed stays on the screen, even when its page is gone.
      if (page || !this.unsaved) this.page = page;
      this.fault = undefined;
      currentPage.value = this.page ? pageStateOf(this.page) : null;
      if (page && this.begin === "1") this.beginToType();
    } catch (error) {
      if (isCancelled(error)) return;
      this.fault = error;
    } finally {
      if (this.asked === asked) this.loading = false;
    }
  }

  private get frame(): Frame | null {
    return this.querySelector<Frame>("tvx-page-frame");
  }

  /** Nothing of the workflow runs before what was typed is saved. */
  private async saved(): Promise<boolean> {
    return (await this.frame?.save?.()) ?? true;
  }

  private readonly key = (event: KeyboardEvent): void => {
    const target = event.target as HTMLElement;
    if (document.querySelector("dialog[open]")) return;
    if (event.key === "Enter" && event.ctrlKey) {
      event.preventDefault();
      void this.goOn();
    } else if (
      event.key === "e" &&
      target.matches("body, tvx-page-view *, main") &&
      !isTyping(target) &&
      !hasModifier(event)
    ) {
      event.preventDefault();
      this.edit();
    }
  };

  edit(bodyId?: number): void {
    if (!this.page || !this.mayEdit(this.page)) return;
    this.choose("design");
    void this.updateComplete.then(() => this.frame?.edit?.(bodyId));
  }

  private beginToType(): void {
    this.begin = "";
    setQuery({ edit: "" });
    this.edit();
  }

  private mayEdit(page: PageFacts): boolean {
    return page.rights.edit && !page.status.heldByOther && !page.status.approved && page.status.kind === "P";
  }

  private choose(look: Look): void {
    if (look === this.look) return;
    this.look = look;
    setQuery({ look: look === "design" ? "" : look });
  }

  /** The main button. */
  async goOn(): Promise<void> {
    if (!this.page || this.busy) return;
    this.busy = true;
    try {
      if (!(await this.saved())) return;
      const before = this.page.parameters;
      await this.load();
      if (this.page && this.page.parameters !== before && this.page.status.heldByOther) return;
      await this.run(nextStep(this.page.status, this.page.rights));
    } catch (error) {
      failed(error);
    } finally {
      this.busy = false;
    }
  }

  private async run(next: NextStep): Promise<void> {
    const page = this.page;
    if (!page) return;
    switch (next.goal) {
      case "edit":
        return page.status.kind === "P" ? this.edit() : shell()?.showPanel("setup");
      case "checkIn":
        return stepAtOnce(page, next.steps);
      case "approve":
      case "publish": {
        const { publishDialog } = await import("./publish-dialog");
        if ((await publishDialog(page, next)) === "compare") this.choose("compare");
        return;
      }
      case "remove": {
        const { removalDialog } = await import("./removal-dialog");
        await removalDialog(page, next);
        return;
      }
      case "none":
        return;
    }
  }

  protected override render(): TemplateResult | typeof nothing {
    if (this.missing && !this.unsaved) return this.gone();
    if (!this.page) return this.fault ? this.trouble() : this.skeleton();
    return html`${this.head(this.page)}${this.trouble()}${this.banner(this.page)}
      <div class="page-centre ${this.loading ? "is-loading" : ""}" data-width=${this.width || nothing}>${this.centre(this.page)}</div>`;
  }

  private skeleton(): TemplateResult {
    return html`<div class="page-head" aria-busy="true"><h1 class="skeleton">${t(L.pageView)}</h1></div><div class="page-centre skeleton"></div>`;
  }

  private gone(): TemplateResult {
    return html`<div class="empty"><span>${icon("file")}</span><h1>${t(L.pageGone)}</h1><p>${t(L.pageGoneHint)}</p></div>`;
  }

  private trouble() {
    return faultNotice(this.fault, () => this.load(), "page-banner");
  }

  private head(page: PageFacts): TemplateResult {
    return html`<header class="page-head">
      <div class="page-name">
        <span class="page-kind" title=${kindWord(page.status.kind)}>${icon(KIND_ICONS[page.status.kind] ?? "file-text", kindWord(page.status.kind))}</span>
        <h1 class="cut" title=${titleOr(page.title)}>${titleOr(page.title)}</h1>
        ${this.chip(page)}
      </div>
      <div class="page-looks">${this.looks(page)}${this.widths()}${this.tabLink(page)}</div>
      <div class="page-steps">${this.who(page)}${this.main(page)}</div>
    </header>`;
  }

  private chip(page: PageFacts): TemplateResult {
    const off = page.live && !page.live.online && page.status.kind !== "F" ? this.offChip(page) : nothing;
    return html`<span class="chips" role="group" aria-label=${t(L.stateOfPage)}>
      <span class="chip ${page.state}">${icon(STATE_ICONS[page.state])}${stateWord(page.state)}</span>
      ${page.live ? off : html`<span class="chip quiet">${t(L.notLive)}</span>`}
    </span>`;
  }

  private offChip(page: PageFacts): TemplateResult {
    const { onlineFrom = "", onlineTo = "" } = page.live ?? {};
    const today = todayAsDigits();
    const out = onlineFrom > today || (onlineTo !== "" && onlineTo < today);
    return html`<span class="chip out">${icon(out ? "calendar-clock" : "power-off")}${t(out ? L.outOfDates : L.switchedOff)}</span>`;
  }

  private looks(page: PageFacts): TemplateResult {
    const looks: readonly { look: Look; label: Label }[] = [
      { look: "design", label: L.viewDesign },
      { look: "live", label: L.viewLive },
      { look: "compare", label: L.viewCompare },
    ];
    return html`<div class="choice" role="group" aria-label=${t(L.viewChoice)}>
      ${looks.map(
        ({ look, label }) =>
          html`<button type="button" aria-pressed=${look === this.look} ?disabled=${look !== "design" && !page.live}
            title=${look !== "design" && !page.live ? t(L.notLive) : nothing} @click=${() => this.choose(look)}>${word(label)}</button>`,
      )}
    </div>`;
  }

  private widths(): TemplateResult | typeof nothing {
    if (this.look === "compare") return nothing;
    return html`<div class="choice page-widths" role="group" aria-label=${t(L.widthChoice)}>
      ${WIDTHS.map(
        (each) =>
          html`<button type="button" aria-pressed=${each.width === this.width} aria-label=${word(each.label)} title=${word(each.label)}
            @click=${() => {
              this.width = each.width;
            }}>${icon(each.icon)}</button>`,
      )}
    </div>`;
  }

  private tabLink(page: PageFacts): TemplateResult {
    const address =
      this.look === "live" && page.live
        ? `/tvx.asp?pageId=${page.pageId}`
        : `/torvex/view.asp?pageId=${page.pageId}&mode=D`;
    return html`<a class="button quiet icon-only page-tab" href=${address} target="_blank" rel="noopener" aria-label=${t(L.openInTab)} title=${t(L.openInTab)}>${icon("external-link")}</a>`;
  }

  private who(page: PageFacts): TemplateResult | typeof nothing {
    if (!page.status.held || page.status.heldByOther) return nothing;
    return html`<span class="note page-who" title=${whenText(page.holderSince)}>${icon("lock")}${t(L.stateHeldByYou)}</span>`;
  }

  private main(page: PageFacts): TemplateResult {
    const next = nextStep(this.unsaved ? onceSaved(page.status) : page.status, page.rights);
    const label = this.mainLabel(next);
    return html`<div class="buttons">
      ${label ? html`<button type="button" class="button primary" ?disabled=${this.busy} aria-busy=${this.busy} @click=${() => this.goOn()}>${label}</button>` : nothing}
      <button type="button" class="button icon-only ${label ? "primary" : ""}" aria-haspopup="menu" aria-label=${t(L.moreActions)} title=${t(L.moreActions)}
        @click=${(event: MouseEvent) => this.menu(event, page)}>${icon(label ? "chevron-down" : "ellipsis")}</button>
    </div>`;
  }

  private mainLabel(next: NextStep): string {
    const labels: Record<NextStep["goal"], string> = {
      checkIn: t(L.checkIn),
      approve: t(L.approve),
      publish: t(L.publish),
      remove: t(L.removeMore),
      edit: t(L.edit),
      none: "",
    };
    return labels[next.goal];
  }

  private menu(event: MouseEvent, page: PageFacts): void {
    openMenu(
      event.currentTarget as HTMLElement,
      pageMenu(page, () => this.saved()),
      t(L.moreActions),
    );
  }

  private banner(page: PageFacts): TemplateResult | typeof nothing {
    const next = nextStep(page.status, page.rights);
    if (page.status.heldByOther) return this.heldBanner(page);
    if (page.status.marked) return this.markedBanner(page);
    if (page.status.approved) return this.approvedBanner(page, next);
    return nothing;
  }

  private bannerOf(kind: string, name: IconName, text: string, buttons: unknown): TemplateResult {
    return html`<div class="notice page-banner ${kind}" role="status">${icon(name)}<span class="grow">${text}</span>${buttons}</div>`;
  }

  private heldBanner(page: PageFacts): TemplateResult {
    const name = page.holder;
    return this.bannerOf(
      "",
      "lock",
      t(L.heldSince, { name, when: whenText(page.holderSince) }),
      html`<span class="inline"><button class="button small" @click=${() => askFor(page)}>${t(L.askForIt)}</button>
        ${page.rights.edit ? html`<button class="button small" title=${t(L.releaseHint, { name })} @click=${() => release(page)}>${t(L.release)}</button>` : nothing}</span>`,
    );
  }

  private markedBanner(page: PageFacts): TemplateResult {
    const keep = page.rights.edit && !page.status.approved;
    return this.bannerOf(
      "danger",
      "trash-2",
      t(L.markedBy, { name: page.markedBy }),
      keep ? html`<button class="button small" @click=${() => markPage(page, false)}>${t(L.unmark)}</button>` : nothing,
    );
  }

  private approvedBanner(page: PageFacts, next: NextStep): TemplateResult {
    const waits = next.stop === "waitsForPublishing" ? ` ${t(L.waitsForPublishing)}` : "";
    const by = page.approvedBy ? `${t(L.approvedByWhom, { name: page.approvedBy })} ` : "";
    return this.bannerOf(
      "done",
      "clipboard-check",
      `${by}${t(L.frozen)}${waits}`,
      mayTakeBack(page.status, page.rights)
        ? html`<button class="button small" @click=${() => takeBack(page)}>${t(L.takeBackApproval)}</button>`
        : nothing,
    );
  }

  private centre(page: PageFacts): TemplateResult {
    if (this.look === "compare") return html`<tvx-compare .page=${page}></tvx-compare>`;
    return html`<tvx-page-frame .pageId=${page.pageId} .nodeId=${page.nodeId} mode=${this.look === "live" ? "L" : "D"}
      .editable=${this.look === "design" && this.mayEdit(page)} .width=${this.width}
      @tvx-page-open=${this.opened} @tvx-unsaved=${this.typed}></tvx-page-frame>`;
  }

  private readonly typed = (event: CustomEvent<boolean>): void => {
    this.unsaved = event.detail;
  };

  private readonly opened = (event: CustomEvent<number>): void => void go(pageAddress(event.detail));
}

const isTyping = (target: HTMLElement): boolean =>
  target.isContentEditable || target.matches("input, select, textarea");
const hasModifier = (event: KeyboardEvent): boolean => event.ctrlKey || event.altKey || event.metaKey;

declare global {
  interface HTMLElementTagNameMap {
    "tvx-page-view": TvxPageView;
  }
}
