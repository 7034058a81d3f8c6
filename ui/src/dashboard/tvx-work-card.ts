import { html, nothing } from "lit";
import { customElement, property, state } from "lit/decorators.js";
import { isProblem } from "../api/problem";
import { TvxElement, Watch } from "../kit/element";
import { type IconName, icon } from "../kit/icon";
import { stateMark } from "../kit/marks";
import { Store } from "../kit/store";
import "../kit/tvx-table";
import { initials } from "../kit/initials";
import type { TableColumn } from "../kit/tvx-table";
import { toast } from "../kit/tvx-toast";
import { L, plural, t } from "../labels";
import { full, when } from "../labels/moments";
import { go, pageAddress } from "../shell/address";
import { onPagesChanged, pagesChanged, websiteName } from "../shell/workplace";
import { keyOf, noRun, type Run, type WorkRow } from "./work";

export interface CardAction {
  label: string;
  icon: IconName;
  /** Gives the rows that are done. */
  run: (rows: WorkRow[], run: Store<Run>, stop: AbortSignal) => Promise<WorkRow[]>;
  done: (count: number) => string;
}

const face = (name: string) =>
  name ? html`<span class="face" role="img" aria-label=${name} title=${name}>${initials(name)}</span>` : nothing;

/** A list of pages that something is to be done with. */
@customElement("tvx-work-card")
export class TvxWorkCard extends TvxElement {
  @property({ attribute: false }) heading = "";
  @property({ attribute: false }) icon: IconName = "file-text";
  @property({ attribute: false }) empty = "";
  @property({ attribute: false }) fetch!: () => Promise<WorkRow[]>;
  @property({ attribute: false }) action?: CardAction;
  /** Stands in place of who changed a page, and since when. */
  @property({ attribute: false }) instead?: TableColumn<WorkRow>;
  @state() private rows: WorkRow[] | null = null;
  @state() private fault = "";
  @state() private selected: ReadonlySet<string> = new Set();
  private readonly run = new Store<Run>(noRun);
  private readonly watch = new Watch(this, this.run);
  private stop = new AbortController();
  private forget?: () => void;

  override connectedCallback(): void {
    super.connectedCallback();
    this.forget = onPagesChanged(() => void this.load());
    void this.load();
  }

  override disconnectedCallback(): void {
    super.disconnectedCallback();
    this.forget?.();
    this.stop.abort();
  }

  async load(): Promise<void> {
    if (this.run.value.running) return;
    try {
      this.rows = await this.fetch();
      this.fault = "";
      this.selected = new Set([...this.selected].filter((key) => this.rows!.some((row) => keyOf(row) === key)));
    } catch (error) {
      this.fault = isProblem(error) ? error.message : String(error);
    }
  }

  private async act(action: CardAction): Promise<void> {
    const chosen = (this.rows ?? []).filter((row) => this.selected.has(keyOf(row)));
    this.stop = new AbortController();
    try {
      const done = await action.run(chosen, this.run, this.stop.signal);
      if (done.length > 0) {
        toast(action.done(done.length));
        pagesChanged({ pageIds: done.map(({ pageId }) => pageId), nodeIds: done.map(({ nodeId }) => nodeId) });
      }
      await this.load();
    } catch (error) {
      this.run.patch({ running: false });
      toast(isProblem(error) ? error.message : String(error), { kind: "danger" });
    }
  }

  private titleCell(row: WorkRow, hasMany: boolean) {
    const reason = this.watch.value.reasons.get(keyOf(row));
    const other =
      row.liveTitle && row.liveTitle !== row.title ? html` <span class="note">${row.liveTitle}</span>` : nothing;
    const website = hasMany ? html` <span class="note">${websiteName(row.siteId, row.lang)}</span>` : nothing;
    return html`<a class="plain" href=${pageAddress(row.pageId)} tabindex="-1">${row.title || t(L.pageNumber, { id: row.pageId })}</a>${other}${website}
      ${reason ? html`<span class="reason">${icon("triangle-alert")}${reason}</span>` : nothing}`;
  }

  private get hasMany(): boolean {
    return new Set(this.rows?.map(({ siteId, lang }) => `${siteId}.${lang}`)).size > 1;
  }

  private get columns(): TableColumn<WorkRow>[] {
    const { hasMany } = this;
    return [
      {
        id: "title",
        label: t(L.title),
        cell: (row) => this.titleCell(row, hasMany),
        by: (row) => row.title.toLowerCase(),
      },
      {
        id: "state",
        label: t(L.state),
        cell: (row) => stateMark(row.state, { word: true }),
        by: (row) => row.state,
        width: "132px",
      },
      ...(this.instead ? [this.instead] : this.who),
    ];
  }

  private get who(): TableColumn<WorkRow>[] {
    return [
      {
        id: "editor",
        label: t(L.who),
        cell: (row) => face(row.editor),
        by: (row) => row.editor,
        width: "64px",
        wide: true,
      },
      {
        id: "since",
        label: t(L.since),
        cell: (row) => html`<span title=${full(row.since)}>${when(row.since)}</span>`,
        by: (row) => row.since ?? "",
        width: "92px",
        numeric: true,
      },
    ];
  }

  protected override render() {
    const count = this.rows?.length ?? 0;
    return html`
      <section class="card work" aria-label=${this.heading}>
        <header class="work-head">${icon(this.icon)}<h2>${this.heading}</h2>${count > 0 ? html`<span class="count">${count}</span>` : nothing}<span class="grow"></span>${this.buttons()}</header>
        ${this.content()}
      </section>
    `;
  }

  private buttons() {
    const { running, done, all } = this.watch.value;
    if (running)
      return html`<span class="note" role="status">${t(L.doneOf, { done, all })}</span><button class="button small" @click=${() => this.stop.abort()}>${t(L.stopNow)}</button>`;
    const { action } = this;
    if (!action || this.selected.size === 0) return nothing;
    return html`<span class="note">${plural(this.selected.size, L.oneSelected, L.manySelected)}</span>
      <button class="button small primary" @click=${() => this.act(action)}>${icon(action.icon)}${action.label}</button>`;
  }

  private content() {
    if (this.fault)
      return html`<div class="empty" role="alert"><p>${this.fault}</p><button class="button small" @click=${() => this.load()}>${t(L.tryAgain)}</button></div>`;
    if (!this.rows) return html`<div class="work-wait" aria-busy="true"></div>`;
    if (this.rows.length === 0) return html`<p class="work-none">${this.empty}</p>`;
    return html`<tvx-table .label=${this.heading} .columns=${this.columns} .rows=${this.rows} .keyOf=${keyOf} .selectable=${this.action !== undefined} .selected=${this.selected}
      @tvx-select=${(event: CustomEvent) => (this.selected = event.detail)} @tvx-open=${(event: CustomEvent<WorkRow>) => go(pageAddress(event.detail.pageId))}></tvx-table>`;
  }
}
