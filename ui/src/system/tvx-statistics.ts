/** How often a website, or one of its pages, is looked at. */

import { html, nothing, type PropertyValues, type TemplateResult } from "lit";
import { customElement, property, state } from "lit/decorators.js";
import { live } from "lit/directives/live.js";
import { call } from "../api";
import { TvxElement, Watch } from "../kit/element";
import { faultNotice } from "../kit/fault-notice";
import { icon } from "../kit/icon";
import "../kit/tvx-table";
import type { TableColumn } from "../kit/tvx-table";
import { L, type Label, locale, number, plural, t } from "../labels";
import { dates } from "../labels/formats";
import { daysBefore } from "../labels/moments";
import { fromDateField, toDateField } from "../pages/model/setup";
import { dayText, titleOr, word } from "../pages/words";
import { go, pageAddress, setQuery } from "../shell/address";
import { websiteName, workplace } from "../shell/workplace";
import { chart } from "./chart";
import { csvText } from "./model/csv";
import { type By, type Hits, type Point, periodsOf, pointsOf, type What, yearBefore } from "./model/series";
import { saveFile } from "./save-file";
import "./stat-words";
import { wordsKind } from "./stat-words";
import "../pages/lists.css";
import "./system.css";

interface PageLine {
  readonly pageId: number;
  readonly nodeId: string;
  readonly title: string;
  readonly views: number;
  readonly visitors: number;
  readonly earlier: number;
}

const KINDS = { best: L.statBest, rising: L.statRising, unread: L.statUnread } as const;
type Kind = keyof typeof KINDS;
const STEPS: Readonly<Record<By, Label>> = { day: L.dayColumn, month: L.monthColumn, year: L.yearColumn };
/** Stretches of time that are often asked for, in days, and how they are then counted. */
const STRETCHES: readonly (readonly [number, By])[] = [
  [30, "day"],
  [90, "day"],
  [365, "month"],
];
const isOf = <T extends string>(all: Readonly<Record<T, unknown>>, name: string | null): name is T =>
  name !== null && Object.hasOwn(all, name);

@customElement("tvx-statistics")
export class TvxStatistics extends TvxElement {
  @property({ attribute: false }) params = new URLSearchParams();
  @state() private points: readonly Point[] | undefined;
  @state() private lines: readonly PageLine[] | undefined;
  @state() private pageTitle = "";
  @state() private busy = false;
  @state() private fault: unknown;
  private shown = "";
  private listed = "";
  private named = "";
  private readonly where = new Watch(this, workplace, () => this.requestUpdate());

  protected override willUpdate(_changed: PropertyValues<this>): void {
    const { site, lang } = this.where.value;
    if (!site) return;
    const { from, to, by } = this.time;
    const wanted = [this.scope, from, to, by].join();
    if (wanted !== this.shown) void this.load(wanted);
    const list = [site, lang, from, to, this.kind].join();
    if (list !== this.listed && !this.page) void this.readPages(list);
    if (this.page !== this.named) void this.readTitle(this.page);
  }

  private get page(): string {
    const page = this.params.get("pageId") ?? "";
    return /^\d+$/.test(page) ? page : "";
  }

  private get scope(): string {
    const { site, lang } = this.where.value;
    return this.page || `${site}.${lang}`;
  }

  private get time(): { from: string; to: string; by: By } {
    const by = this.params.get("by");
    return {
      from: this.params.get("from") || daysBefore(29),
      to: this.params.get("to") || daysBefore(0),
      by: isOf(STEPS, by) ? by : "day",
    };
  }

  private get what(): What {
    return this.params.get("what") === "visitors" ? "visitors" : "views";
  }

  private get kind(): Kind {
    const kind = this.params.get("pages");
    return isOf(KINDS, kind) ? kind : "best";
  }

  private async load(wanted: string): Promise<void> {
    this.shown = wanted;
    this.busy = true;
    const { scope } = this;
    const { from, to, by } = this.time;
    try {
      const [rows, before, publishings] = await Promise.all([
        call("desk.getHits", { scope, from, to, by }),
        call("desk.getHits", { scope, from: yearBefore(from), to: yearBefore(to), by }),
        call("desk.getPublishings", { scope, from, to }),
      ]);
      if (wanted !== this.shown) return;
      this.points = pointsOf(periodsOf(from, to, by), rows as Hits[], before as Hits[], publishings);
      this.fault = undefined;
    } catch (error) {
      if (wanted === this.shown) this.fault = error;
    }
    if (wanted === this.shown) this.busy = false;
  }

  private async readPages(list: string): Promise<void> {
    this.listed = list;
    const { site, lang } = this.where.value;
    const { from, to } = this.time;
    try {
      const lines = (await call("desk.getPageHits", { site, lang, from, to, kind: this.kind })) as PageLine[];
      if (list === this.listed) this.lines = lines;
    } catch (error) {
      if (list === this.listed) this.fault = error;
    }
  }

  private async readTitle(page: string): Promise<void> {
    this.named = page;
    this.pageTitle = "";
    if (!page) return;
    try {
      const title = await call("cManager.getPageTitle", { pageIdent: page, mode: "D" });
      if (page === this.named) this.pageTitle = title;
    } catch {
      // The number names it, too.
    }
  }

  private readonly again = (): void => {
    this.shown = "";
    this.listed = "";
    this.fault = undefined;
    this.requestUpdate();
  };

  private nameOf = (period: string): string => {
    if (period.length === 8) return dayText(period);
    if (period.length === 4) return period;
    const month = new Date(Number(period.slice(0, 4)), Number(period.slice(4)) - 1, 1);
    return dates(locale(), { month: "long", year: "numeric" }).format(month);
  };

  private told = (point: Point): string => {
    const { what } = this;
    const said =
      what === "views"
        ? plural(point.views, L.viewsOne, L.viewsMany)
        : plural(point.visitors, L.visitorsOne, L.visitorsMany);
    return `${this.nameOf(point.period)}: ${said}`;
  };

  private get hasBefore(): boolean {
    return this.params.get("before") === "1";
  }

  private choice<T extends string>(
    name: string,
    label: string,
    chosen: T,
    options: readonly (readonly [T, string])[],
    usual: T,
  ): TemplateResult {
    return html`<div class="choice" role="group" aria-label=${label}>${options.map(
      ([value, text]) =>
        html`<button type="button" aria-pressed=${String(value === chosen)} @click=${() => setQuery({ [name]: value === usual ? "" : value })}>${text}</button>`,
    )}</div>`;
  }

  private day(name: "from" | "to", label: string): TemplateResult {
    return html`<div class="field"><label for="stat-${name}">${label}</label><input id="stat-${name}" class="input" type="date" required .value=${live(toDateField(this.time[name]))}
      @change=${(event: Event) => setQuery({ [name]: fromDateField((event.target as HTMLInputElement).value) })} /></div>`;
  }

  private tools(): TemplateResult {
    const steps = (Object.entries(STEPS) as [By, Label][]).map(([by, label]) => [by, word(label)] as const);
    return html`<div class="inline stat-tools sheet-tools">
      ${STRETCHES.map(
        ([days, by]) =>
          html`<button type="button" class="button" @click=${() => setQuery({ from: daysBefore(days - 1), to: daysBefore(0), by: by === "day" ? "" : by })}>${t(L.statLast, { days })}</button>`,
      )}
      ${this.day("from", t(L.from))}${this.day("to", t(L.to))}
      ${this.choice("by", t(L.statBy), this.time.by, steps, "day")}
      ${this.choice(
        "what",
        t(L.statShown),
        this.what,
        [
          ["views", t(L.viewsColumn)],
          ["visitors", t(L.visitorsColumn)],
        ] as const,
        "views",
      )}
      <label class="check"><input type="checkbox" .checked=${live(this.hasBefore)} @change=${(event: Event) => setQuery({ before: (event.target as HTMLInputElement).checked ? "1" : "" })} /><span>${t(L.statYearBefore)}</span></label>
    </div>`;
  }

  protected override render(): TemplateResult {
    const { site, lang } = this.where.value;
    const name = this.page ? titleOr(this.pageTitle) : websiteName(site, lang);
    return html`<section class="list-screen" aria-busy=${this.busy ? "true" : nothing}>
      <header class="list-head">${this.page ? html`<a class="button quiet icon-only" href="/torvex/statistics.asp" aria-label=${t(L.back)}>${icon("arrow-left")}</a>` : nothing}
        <h1>${t(L.statOf, { name })}</h1><span class="grow"></span>${this.page ? html`<a class="button" href=${pageAddress(this.page)}>${icon("file-text")}${t(L.page)}</a>` : nothing}</header>
      ${this.tools()}
      ${faultNotice(this.fault, this.again)}
      ${this.points ? this.numbers(this.points) : html`<div class="skeleton stat-wait"></div>`}
      ${this.page ? nothing : html`${this.pages()}${this.words()}`}
    </section>`;
  }

  private numbers(points: readonly Point[]): TemplateResult {
    const sum = (of: (point: Point) => number) => points.reduce((all, point) => all + of(point), 0);
    const views = sum((point) => point.views);
    const visitors = sum((point) => point.visitors);
    const before = sum((point) => (this.what === "views" ? point.viewsBefore : point.visitorsBefore));
    return html`<div class="card stat-card"><p class="stat-sum"><strong>${plural(views, L.viewsOne, L.viewsMany)}</strong> <span>${plural(visitors, L.visitorsOne, L.visitorsMany)}</span>
        ${this.hasBefore ? html`<span class="stat-before">${t(L.statYearBefore)}: ${number(before)}</span>` : nothing}</p>
      ${
        views + visitors + (this.hasBefore ? before : 0) === 0
          ? html`<p class="soft">${t(L.statNone)}</p>`
          : chart({
              points,
              value: (point) => point[this.what],
              ...(this.hasBefore
                ? { before: (point: Point) => (this.what === "views" ? point.viewsBefore : point.visitorsBefore) }
                : {}),
              nameOf: this.nameOf,
              tell: this.told,
              tellPublished: ({ published }) => plural(published, L.statPublishedOne, L.statPublishedMany),
            })
      }
      <div class="inline"><button type="button" class="button small" @click=${() => this.save(points)}>${t(L.sitemapCsv)}</button></div>
      ${this.table(points)}</div>`;
  }

  private table(points: readonly Point[]): TemplateResult {
    const row = (point: Point) =>
      html`<tr><th scope="row">${this.nameOf(point.period)}</th><td>${number(point.views)}</td><td>${number(point.visitors)}</td><td>${number(point.viewsBefore)}</td><td>${point.published || ""}</td></tr>`;
    return html`<details><summary>${t(L.statAsTable)}</summary><div class="stat-scroll" tabindex="0" role="region" aria-label=${t(L.statAsTable)}><table class="stat-table" aria-label=${t(L.statAsTable)}>
      <thead><tr><th scope="col">${word(STEPS[this.time.by])}</th><th scope="col">${t(L.viewsColumn)}</th><th scope="col">${t(L.visitorsColumn)}</th><th scope="col">${t(L.statYearBefore)}</th><th scope="col">${t(L.publishings)}</th></tr></thead>
      <tbody>${[...points].reverse().map(row)}</tbody></table></div></details>`;
  }

  private save(points: readonly Point[]): void {
    const head = [
      word(STEPS[this.time.by]),
      t(L.viewsColumn),
      t(L.visitorsColumn),
      `${t(L.viewsColumn)}, ${t(L.statYearBefore)}`,
      t(L.publishings),
    ];
    const rows = points.map((point) => [point.period, point.views, point.visitors, point.viewsBefore, point.published]);
    saveFile(`statistics-${this.scope}.csv`, csvText([head, ...rows]));
  }

  private get columns(): TableColumn<PageLine>[] {
    const amount = (id: "views" | "visitors" | "earlier", label: string, wide: boolean): TableColumn<PageLine> => ({
      id,
      label,
      cell: (row) => number(row[id]),
      by: (row) => row[id],
      numeric: true,
      wide,
      width: "120px",
    });
    const columns: TableColumn<PageLine>[] = [
      {
        id: "title",
        label: t(L.page),
        cell: (row) => html`<a href="/torvex/statistics.asp?pageId=${row.pageId}">${titleOr(row.title)}</a>`,
        by: (row) => row.title,
      },
      {
        id: "node",
        label: t(L.nodePart),
        cell: (row) => html`<span class="soft">${row.nodeId}</span>`,
        by: (row) => row.nodeId,
        wide: true,
        width: "140px",
      },
    ];
    if (this.kind === "unread") return columns;
    return [
      ...columns,
      amount("views", t(L.viewsColumn), false),
      amount("visitors", t(L.visitorsColumn), true),
      amount("earlier", t(L.statEarlier), true),
    ];
  }

  private words(): TemplateResult {
    const { site, lang } = this.where.value;
    const { from, to } = this.time;
    return html`<tvx-stat-words .site=${site} .language=${lang} .from=${from} .to=${to} .kind=${wordsKind(this.params.get("words"))}></tvx-stat-words>`;
  }

  private pages(): TemplateResult {
    const { site, lang } = this.where.value;
    const { from, to } = this.time;
    const kinds = (Object.entries(KINDS) as [Kind, Label][]).map(([kind, label]) => [kind, word(label)] as const);
    return html`<div class="inline"><h2>${t(L.statPages)}</h2>${this.choice("pages", t(L.statPages), this.kind, kinds, "best")}<span class="grow"></span>
        <a class="button small" href="/torvex/api/export/statistics.csv?site=${site}&lang=${lang}&from=${from}&to=${to}" download>${t(L.sitemapCsv)}</a></div>
      ${
        this.lines?.length === 0
          ? html`<p class="soft">${t(L.noPageFits)}</p>`
          : html`<tvx-table class="card" .label=${t(L.statPages)} .columns=${this.columns} .rows=${this.lines ?? []} .keyOf=${(row: PageLine) => String(row.pageId)} .nameOf=${(row: PageLine) => titleOr(row.title)}
      @tvx-open=${(event: CustomEvent<PageLine>) => void go(`/torvex/statistics.asp?pageId=${event.detail.pageId}`)}></tvx-table>`
      }`;
  }
}
