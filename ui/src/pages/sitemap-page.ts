/** The tree as a sheet: states, dates, looks and readers of all pages, to print, to save, to work with. */

import { html, nothing, type TemplateResult } from "lit";
import { customElement, state } from "lit/decorators.js";
import { Batch, call } from "../api";
import { TvxElement, Watch } from "../kit/element";
import { faultNotice } from "../kit/fault-notice";
import { icon } from "../kit/icon";
import { liveWord } from "../kit/marks";
import { styles } from "../kit/styles";
import "../kit/tvx-table";
import { sitemapOf } from "../formats/sitemap";
import type { TableColumn } from "../kit/tvx-table";
import { L, number, plural, t } from "../labels";
import { daysBefore } from "../labels/moments";
import { go, pageAddress } from "../shell/address";
import { maySee, onPagesChanged, workplace } from "../shell/workplace";
import type { Child } from "./children";
import type { PageState } from "./model/status";
import { selectionBar } from "./selection";
import { dayText, KIND_ICONS, kindWord, STATE_ICONS, stateWord, titleOr } from "./words";
import "./chips.css";
import "./lists.css";

interface Row extends Child {
  readonly level: number;
  readonly order: number;
}

interface Details {
  readonly from: string;
  readonly to: string;
  readonly template: string;
  readonly groups: string;
  /** -1 where nobody is told. */
  readonly visits: number;
}

/** How many pages are read before somebody asks for more. */
const AT_ONCE = 1000;
const BRANCHES = 20;
const DETAILS = 25;
/** The entry of the menu that lets see how often pages are looked at, and over how many days that is told. */
const STATISTICS = 213;
const DAYS = 30;

const STATES: readonly PageState[] = ["new", "changed", "approved", "marked"];

/** Whether visitors have it, or what keeps it from them. */
const siteWord = ({ live }: Row): string => (live === "none" ? t(L.liveNo) : liveWord(live) || t(L.liveYes));

@customElement("tvx-sitemap")
export class TvxSitemap extends TvxElement {
  @state() private rows: readonly Row[] = [];
  @state() private busy = false;
  @state() private fault: unknown;
  @state() private only: PageState | "" = "";
  @state() private detailed = false;
  @state() private details = new Map<number, Details>();
  @state() private selected: ReadonlySet<string> = new Set();
  private open: string[] = [];
  private limit = AT_ONCE;
  private website = "";
  private run = 0;
  private forget: (() => void) | undefined;
  private readonly where = new Watch(this, workplace, () => this.moved());

  override connectedCallback(): void {
    super.connectedCallback();
    this.forget = onPagesChanged(() => void this.begin());
    this.moved();
  }

  override disconnectedCallback(): void {
    super.disconnectedCallback();
    this.run += 1;
    this.forget?.();
  }

  private moved(): void {
    const { site, lang } = this.where.value;
    if (!site || `${site}.${lang}` === this.website) return;
    this.website = `${site}.${lang}`;
    this.limit = AT_ONCE;
    void this.begin();
  }

  private async begin(): Promise<void> {
    this.run += 1;
    const { site, lang } = this.where.value;
    this.open = [];
    this.details = new Map();
    this.fault = undefined;
    try {
      const text = await call("cManager.getSitemap", { site, lang });
      const children = sitemapOf(text);
      const known = new Set(children.map((each) => each.nodeId.slice(0, -3)));
      this.rows = children.map((child, order) => rowOf(child, order));
      this.open = children.filter((each) => each.hasChildren && !known.has(each.nodeId)).map((each) => each.nodeId);
      await this.further(this.run);
    } catch (error) {
      this.fault = error;
      this.busy = false;
    }
  }

  /** Reads branches that weren't read yet, some at a time, down to the last page or to the limit. */
  private async further(run: number): Promise<void> {
    this.busy = true;
    const { site, lang } = this.where.value;
    while (this.open.length && this.rows.length < this.limit && run === this.run) {
      const nodes = this.open.splice(0, BRANCHES);
      const batch = new Batch();
      const answers = nodes.map((startNode) => batch.do("cManager.getSitemap", { site, lang, startNode, flag: 1 }));
      await batch.run();
      if (run !== this.run) return;
      for (const [at, node] of nodes.entries()) this.put(node, sitemapOf(answers[at]?.value ?? ""));
    }
    this.busy = false;
    if (this.detailed) await this.readDetails();
  }

  private put(parent: string, children: readonly Child[]): void {
    const at = this.rows.findIndex((row) => row.nodeId === parent);
    const rows = [...this.rows];
    rows.splice(at + 1, 0, ...children.map((child) => rowOf(child, 0)));
    this.rows = rows.map((row, order) => ({ ...row, order }));
    this.open.push(...children.filter((each) => each.hasChildren).map((each) => each.nodeId));
  }

  private async readDetails(): Promise<void> {
    const { run } = this;
    const missing = this.shown.filter((row) => !this.details.has(row.pageId));
    for (let from = 0; from < missing.length && run === this.run; from += DETAILS) {
      const batch = new Batch();
      const part = missing.slice(from, from + DETAILS).map((row) => {
        batch.do("cManager.getPage", { pageIdent: row.nodeId, mode: "D" });
        return {
          id: row.pageId,
          page: batch.get("cManager", "pgOnlineFrom", "pgOnlineTo", "pgTemplateName", "pgGroups"),
          hits: this.counted ? batch.do("desk.getHits", lately(row.pageId)) : undefined,
        };
      });
      await batch.run({ background: true });
      const details = new Map(this.details);
      for (const { id, page, hits } of part)
        details.set(id, {
          from: page.value.pgOnlineFrom,
          to: page.value.pgOnlineTo,
          template: page.value.pgTemplateName,
          groups: page.value.pgGroups,
          visits: hits ? viewsIn(hits.value) : -1,
        });
      this.details = details;
    }
  }

  private get shown(): readonly Row[] {
    return this.only ? this.rows.filter((row) => row.state === this.only) : this.rows;
  }

  private get columns(): TableColumn<Row>[] {
    const columns: TableColumn<Row>[] = [
      {
        id: "title",
        label: t(L.page),
        cell: (row) =>
          html`<span class="sheet-title"><span class="sheet-step" ${styles({ width: `${this.only ? 0 : row.level * 20}px` })}></span>${icon(KIND_ICONS[row.type] ?? "file", kindWord(row.type))}<a href=${pageAddress(row.pageId)}>${titleOr(row.title)}</a></span>`,
        by: (row) => row.order,
      },
      {
        id: "state",
        label: t(L.searchState),
        cell: (row) =>
          html`<span class="chip ${row.state}">${icon(STATE_ICONS[row.state])}<span class="chip-word">${stateWord(row.state)}</span></span>`,
        by: (row) => row.state,
        width: "172px",
      },
      {
        id: "live",
        label: t(L.liveColumn),
        cell: siteWord,
        by: siteWord,
        wide: true,
        width: "112px",
      },
      {
        id: "node",
        label: t(L.nodePart),
        cell: (row) => html`<span class="soft">${row.nodeId}</span>`,
        by: (row) => row.nodeId,
        wide: true,
        width: "124px",
      },
    ];
    if (!this.detailed) return columns;
    const of = (row: Row): Details | undefined => this.details.get(row.pageId);
    return [
      ...columns,
      {
        id: "dates",
        label: t(L.sectionDates),
        cell: (row) =>
          [of(row)?.from, of(row)?.to]
            .map((day) => dayText(day ?? ""))
            .join(" – ")
            .replace(/^ – $/, ""),
        by: (row) => of(row)?.from ?? "",
        wide: true,
      },
      {
        id: "look",
        label: t(L.partTemplate),
        cell: (row) => of(row)?.template ?? "",
        by: (row) => of(row)?.template ?? "",
        wide: true,
      },
      {
        id: "groups",
        label: t(L.partGroups),
        cell: (row) => of(row)?.groups ?? "",
        by: (row) => of(row)?.groups ?? "",
        wide: true,
      },
      ...(this.counted ? [this.visitsColumn(of)] : []),
    ];
  }

  private get counted(): boolean {
    const { site, lang } = this.where.value;
    return maySee(STATISTICS, site, lang);
  }

  private visitsColumn(of: (row: Row) => Details | undefined): TableColumn<Row> {
    const visits = (row: Row): number => of(row)?.visits ?? -1;
    return {
      id: "visits",
      label: t(L.visitsColumn, { days: DAYS }),
      cell: (row) => (visits(row) < 0 ? "" : number(visits(row))),
      by: visits,
      numeric: true,
      wide: true,
      width: "136px",
    };
  }

  private tools(): TemplateResult {
    const { site, lang } = this.where.value;
    return html`<div class="inline sheet-tools">
      <div class="choice" role="group" aria-label=${t(L.onlyState)}>
        ${(["", ...STATES] as const).map(
          (each) =>
            html`<button type="button" aria-pressed=${each === this.only} @click=${() => {
              this.only = each;
            }}>${each ? stateWord(each) : t(L.all)}</button>`,
        )}</div>
      <label class="check"><input type="checkbox" .checked=${this.detailed} @change=${(event: Event) => {
        this.detailed = (event.target as HTMLInputElement).checked;
        if (this.detailed) void this.readDetails();
      }} /><span>${t(L.sitemapDetails)}</span></label>
      <span class="grow"></span>
      <a class="button" href="/torvex/api/export/sitemap.csv?site=${site}&lang=${lang}" download>${t(L.sitemapCsv)}</a>
      <button class="button" @click=${() => window.print()}>${t(L.printIt)}</button>
    </div>`;
  }

  protected override render(): TemplateResult {
    const rows = this.shown;
    const chosen = rows.filter((row) => this.selected.has(String(row.pageId)));
    return html`<section class="list-screen" aria-busy=${this.busy ? "true" : nothing}>
      <header class="list-head"><h1>${t(L.sitemap)}</h1><span class="note" role="status">${plural(rows.length, L.pagesOne, L.pagesMany)}${this.busy ? " ..." : ""}</span></header>
      ${this.tools()}
      ${faultNotice(this.fault, () => this.begin())}
      ${
        chosen.length
          ? selectionBar(chosen, () => {
              this.selected = new Set();
            })
          : nothing
      }
      <tvx-table class="card" .label=${t(L.sitemap)} .columns=${this.columns} .rows=${rows} .keyOf=${(row: Row) => String(row.pageId)} .nameOf=${(row: Row) => titleOr(row.title)} selectable .selected=${this.selected}
        @tvx-select=${(event: CustomEvent<ReadonlySet<string>>) => {
          this.selected = event.detail;
        }} @tvx-open=${(event: CustomEvent<Row>) => void go(pageAddress(event.detail.pageId))}></tvx-table>
      ${
        this.open.length && !this.busy
          ? html`<p><button class="button" @click=${() => {
              this.limit += AT_ONCE;
              void this.further(this.run);
            }}>${t(L.sitemapMore)}</button></p>`
          : nothing
      }
    </section>`;
  }
}

const rowOf = (child: Child, order: number): Row => ({
  ...child,
  order,
  level: Math.max(0, (child.nodeId.length - 5) / 3),
});

const lately = (pageId: number) => ({
  scope: String(pageId),
  from: daysBefore(DAYS - 1),
  to: daysBefore(0),
  by: "year",
});

const viewsIn = (rows: readonly { readonly views: number }[]): number =>
  rows.reduce((sum, { views }) => sum + views, 0);
