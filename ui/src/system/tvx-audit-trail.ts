/** The audit trail: who did what to what, by days, narrowed by what the address says. */

import { html, nothing, type PropertyValues, type TemplateResult } from "lit";
import { customElement, property, state } from "lit/decorators.js";
import { live } from "lit/directives/live.js";
import { repeat } from "lit/directives/repeat.js";
import { call } from "../api";
import { TvxElement } from "../kit/element";
import { faultNotice } from "../kit/fault-notice";
import { icon } from "../kit/icon";
import { L, locale, t } from "../labels";
import { dates } from "../labels/formats";
import { momentOf } from "../labels/moments";
import { actionIcon, actionWord } from "../pages/action-words";
import { fromDateField, toDateField } from "../pages/model/setup";
import { dayText } from "../pages/words";
import { pageAddress, setQuery } from "../shell/address";
import {
  behind,
  byDays,
  filtersOf,
  type TrailChoice,
  type TrailDay,
  type TrailLine,
  WISHES,
  type Wish,
  type Wishes,
  wishesIn,
  wishesNothing,
} from "./model/trail";
import "../pages/lists.css";
import "./system.css";

/** What one answer holds. */
const AT_ONCE = 200;

@customElement("tvx-audit-trail")
export class TvxAuditTrail extends TvxElement {
  @property({ attribute: false }) params = new URLSearchParams();
  @state() private lines: readonly TrailLine[] | undefined;
  @state() private choices: readonly TrailChoice[] = [];
  @state() private hasMore = false;
  @state() private busy = false;
  @state() private fault: unknown;
  private filters: string | undefined;
  private csv = "";
  private run = 0;

  override connectedCallback(): void {
    super.connectedCallback();
    void this.readChoices();
  }

  protected override willUpdate(changed: PropertyValues<this>): void {
    if (changed.has("params") && filtersOf(this.wishes) !== this.filters) void this.load();
  }

  private get wishes(): Wishes {
    return wishesIn(this.params);
  }

  private async readChoices(): Promise<void> {
    try {
      this.choices = (await call("desk.getTrailChoices", {})) as TrailChoice[];
    } catch {
      // The list says what is wrong, and can be read without them.
    }
  }

  /** A branch is named by its node: the number of a page is looked up. */
  private async asked(): Promise<string> {
    const { wishes } = this;
    const number = wishes.page.trim();
    if (!wishes.below || !/^\d+$/.test(number)) return filtersOf(wishes);
    return filtersOf({ ...wishes, page: (await call("cManager.getNodeId", { pageId: Number(number) })) || "?" });
  }

  private readonly load = async (): Promise<void> => {
    const run = ++this.run;
    this.filters = filtersOf(this.wishes);
    this.busy = true;
    try {
      const filters = await this.asked();
      const lines = (await call("desk.getTrail", { filters })) as TrailLine[];
      if (run !== this.run) return;
      this.csv = filters;
      this.lines = lines;
      this.hasMore = lines.length === AT_ONCE;
      this.fault = undefined;
    } catch (error) {
      if (run === this.run) this.fault = error;
    }
    if (run === this.run) this.busy = false;
  };

  private async more(): Promise<void> {
    const { run, lines = [] } = this;
    const next = behind(this.csv, lines);
    this.busy = true;
    try {
      const further = (await call("desk.getTrail", { ...next })) as TrailLine[];
      if (run !== this.run) return;
      this.lines = [...lines, ...further];
      this.hasMore = further.length === AT_ONCE;
    } catch (error) {
      this.fault = error;
    }
    this.busy = false;
  }

  private set(wish: Wish, value: string): void {
    setQuery({ [wish]: value });
  }

  private select(wish: Wish, label: string, none: string, options: readonly (readonly [string, string])[]) {
    const chosen = this.wishes[wish];
    return html`<div class="field"><label for="trail-${wish}">${label}</label>
      <select id="trail-${wish}" class="select" @change=${(event: Event) => this.set(wish, (event.target as HTMLSelectElement).value)}>
        <option value="" ?selected=${chosen === ""}>${none}</option>
        ${options.map(([value, text]) => html`<option value=${value} ?selected=${value === chosen}>${text}</option>`)}</select></div>`;
  }

  private dayField(wish: "from" | "to", label: string): TemplateResult {
    return html`<div class="field"><label for="trail-${wish}">${label}</label>
      <input id="trail-${wish}" class="input" type="date" .value=${live(toDateField(this.wishes[wish]))}
        @change=${(event: Event) => this.set(wish, fromDateField((event.target as HTMLInputElement).value))} /></div>`;
  }

  private form(): TemplateResult {
    const { wishes, choices } = this;
    const of = (kind: TrailChoice["kind"]) => choices.filter((choice) => choice.kind === kind);
    return html`<div class="trail-form">
      ${this.select(
        "who",
        t(L.whoColumn),
        t(L.trailAnybody),
        of("login").map(({ id, name }) => [String(id), name || `[${id}]`] as const),
      )}
      ${this.select(
        "did",
        t(L.trailDid),
        t(L.trailAnything),
        of("action").map(({ name }) => [name, actionWord(name)] as const),
      )}
      ${this.select(
        "entry",
        t(L.entryColumn),
        t(L.everywhere),
        of("entry").map(({ id, name }) => [String(id), name || String(id)] as const),
      )}
      ${this.dayField("from", t(L.from))}${this.dayField("to", t(L.to))}
      <div class="field"><label for="trail-page">${t(L.trailPage)}</label>
        <input id="trail-page" class="input" autocomplete="off" maxlength="200" .value=${live(wishes.page)}
          @change=${(event: Event) => this.set("page", (event.target as HTMLInputElement).value.trim())} /></div>
      <label class="check"><input type="checkbox" .checked=${live(wishes.below !== "")}
        @change=${(event: Event) => this.set("below", (event.target as HTMLInputElement).checked ? "1" : "")} /><span>${t(L.trailBelow)}</span></label>
    </div>`;
  }

  private clear(): void {
    setQuery(Object.fromEntries(WISHES.map((wish) => [wish, ""])));
  }

  protected override render(): TemplateResult {
    const { lines } = this;
    return html`<section class="list-screen" aria-busy=${this.busy ? "true" : nothing}>
      <header class="list-head"><h1>${t(L.auditTrail)}</h1><span class="grow"></span>
        ${wishesNothing(this.wishes) ? nothing : html`<button class="button" @click=${this.clear}>${icon("x")}${t(L.clearFilters)}</button>`}
        <a class="button" href="/torvex/api/export/audit.csv?filters=${encodeURIComponent(this.csv)}" download>${t(L.sitemapCsv)}</a></header>
      ${this.form()}
      ${faultNotice(this.fault, this.load)}
      ${lines ? this.found(lines) : html`<div class="skeleton"></div>`}
    </section>`;
  }

  private found(lines: readonly TrailLine[]): TemplateResult {
    if (lines.length === 0) return html`<div class="empty">${icon("history")}<p>${t(L.trailNothing)}</p></div>`;
    return html`${repeat(
      byDays(lines),
      ({ day }) => day,
      (day) => this.day(day),
    )}
      ${this.hasMore ? html`<p><button class="button" aria-disabled=${this.busy ? "true" : nothing} @click=${() => this.busy || this.more()}>${t(L.showMore)}</button></p>` : nothing}`;
  }

  private day({ day, lines }: TrailDay): TemplateResult {
    const head = dayText(day.replaceAll("-", "")) || t(L.none);
    return html`<section class="trail-day"><h2>${head}</h2>
      <table class="trail card" aria-label=${head}><thead class="unseen"><tr><th scope="col">${t(L.time)}</th><th scope="col">${t(L.whoColumn)}</th><th scope="col">${t(L.trailDid)}</th><th scope="col">${t(L.details)}</th></tr></thead>
      <tbody>${repeat(
        lines,
        ({ line }) => line,
        (line) => this.line(line),
      )}</tbody></table></section>`;
  }

  private line(line: TrailLine): TemplateResult {
    const moment = momentOf(line.moment);
    const time = moment ? dates(locale(), { timeStyle: "medium" }).format(moment) : "";
    return html`<tr><td class="trail-time">${time}</td><td>${line.name || t(L.nobody)}</td>
      <td class="trail-did">${icon(actionIcon(line.action))}<span>${line.entry > 0 && line.action === "delete" ? t(L.didRemove) : actionWord(line.action)}</span></td>
      <td class="trail-what">${this.what(line)}${line.detail ? html`<span>${line.detail}</span>` : nothing}</td></tr>`;
  }

  private what({ pageId, title, nodeId, entry }: TrailLine) {
    if (pageId > 0)
      return html`<span><a href=${pageAddress(pageId)}>${title || `[${pageId}]`}</a> <span class="note">${nodeId}</span></span>`;
    const name = this.choices.find((choice) => choice.kind === "entry" && choice.id === entry)?.name;
    return name ? html`<span class="soft">${name}</span>` : nothing;
  }
}
