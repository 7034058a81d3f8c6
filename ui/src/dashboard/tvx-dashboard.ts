import { html, nothing } from "lit";
import { customElement, state } from "lit/decorators.js";
import { call } from "../api";
import { TvxElement, Watch } from "../kit/element";
import { icon } from "../kit/icon";
import { ask } from "../kit/tvx-dialog";
import { toast } from "../kit/tvx-toast";
import { L, plural, t } from "../labels";
import { full, when } from "../labels/moments";
import { pageAddress } from "../shell/address";
import { type Draft, draftsOf, dropDraft } from "../shell/drafts";
import { commands } from "../shell/registry";
import { maySee, workplace } from "../shell/workplace";
import "./tvx-dashboard.css";
import "./tvx-dead-links";
import "./tvx-visits";
import "./tvx-work-card";
import type { TableColumn } from "../kit/tvx-table";
import { nextDate, nextDay } from "./dates";
import type { CardAction } from "./tvx-work-card";
import { approveAll, releaseAll, runEach, type WorkRow, workOf } from "./work";

const approving = (): CardAction => ({
  label: t(L.approve),
  icon: "clipboard-check",
  run: (rows, run) => approveAll(rows, run),
  done: (count) => plural(count, L.oneApproved, L.manyApproved),
});

const publishing = (): CardAction => ({
  label: t(L.publish),
  icon: "rocket",
  run: (rows, run, stop) =>
    runEach(rows, ({ pageId }) => call("cManager.publishPage", { pageIdent: String(pageId) }), run, stop),
  done: (count) => plural(count, L.onePublished, L.manyPublished),
});

const releasing = (): CardAction => ({
  label: t(L.checkIn),
  icon: "check",
  run: (rows) => releaseAll(rows),
  done: (count) => plural(count, L.oneCheckedIn, L.manyCheckedIn),
});

/** The entry of the menu that lets see how often pages are looked at. */
const statistics = 213;

const datesColumn = (): TableColumn<WorkRow> => ({
  id: "dates",
  label: t(L.whenColumn),
  cell: (row) => nextDate(row),
  by: (row) => nextDay(row),
  width: "180px",
});

/** What waits for whoever is logged in. */
@customElement("tvx-dashboard")
export class TvxDashboard extends TvxElement {
  @state() private drafts: Draft[] = [];
  private readonly workplace = new Watch(this, workplace);
  private readonly commands = new Watch(this, commands);

  override connectedCallback(): void {
    super.connectedCallback();
    void this.loadDrafts();
  }

  private async loadDrafts(): Promise<void> {
    this.drafts = await draftsOf();
  }

  private has(right: "edit" | "approve" | "publish"): boolean {
    return this.workplace.value.websites.some(({ rights }) => rights[right]);
  }

  private async discard(draft: Draft): Promise<void> {
    if (!(await ask(t(L.discardDraft), t(L.discardQuestion, { title: draft.title }), t(L.discard), "danger"))) return;
    await dropDraft(draft.pageId, draft.bodyId);
    toast(t(L.draftDiscarded));
    await this.loadDrafts();
  }

  protected override render() {
    const { login, site, lang } = this.workplace.value;
    const create = this.commands.value.find(({ id, when: may }) => id === "pages.new" && (may?.() ?? true));
    return html`
      <div class="screen dashboard">
        <header class="screen-head">
          <h1>${t(L.hello, { name: login?.name.split(" ")[0] ?? "" })}</h1>
          ${create ? html`<button class="button primary" @click=${() => create.run()}>${icon("file-plus")}${create.label()}</button>` : nothing}
        </header>
        <div class="cards">
          ${this.unsaved()}
          ${this.has("approve") ? this.card("approve", t(L.toApprove), "clipboard-check", t(L.nothingWaits), approving()) : nothing}
          ${this.has("publish") ? this.card("publish", t(L.toPublish), "rocket", t(L.nothingWaits), publishing()) : nothing}
          ${this.card("mine", t(L.myPages), "pen-line", t(L.noPagesOfMine), releasing())}
          ${this.card("marked", t(L.markedPages), "trash-2", t(L.nothingMarked), this.has("approve") ? approving() : undefined)}
          <tvx-work-card class="dates" .heading=${t(L.onOrOffSoon)} .icon=${"calendar-clock"} .empty=${t(L.noDates)} .fetch=${() => workOf("dates")} .instead=${datesColumn()}></tvx-work-card>
          <tvx-dead-links></tvx-dead-links>
          ${maySee(statistics, site, lang) ? html`<tvx-visits></tvx-visits>` : nothing}
          ${this.recent()}
        </div>
      </div>
    `;
  }

  private card(
    kind: Parameters<typeof workOf>[0],
    heading: string,
    name: Parameters<typeof icon>[0],
    empty: string,
    action?: CardAction,
  ) {
    return html`<tvx-work-card class=${kind} .heading=${heading} .icon=${name} .empty=${empty} .fetch=${() => workOf(kind)} .action=${action}></tvx-work-card>`;
  }

  private recent() {
    const fetch = async () => (await call("desk.getRecent", { site: "", lang: "", number: 12 })) as WorkRow[];
    return html`<tvx-work-card class="recent" .heading=${t(L.changedLately)} .icon=${"history"} .empty=${t(L.nothingChanged)} .fetch=${fetch}></tvx-work-card>`;
  }

  private unsaved() {
    if (this.drafts.length === 0) return nothing;
    return html`
      <section class="card work drafts" aria-label=${t(L.unsavedDrafts)}>
        <header class="work-head">${icon("file-clock")}<h2>${t(L.unsavedDrafts)}</h2><span class="count">${this.drafts.length}</span></header>
        <ul role="list">${this.drafts.map((draft) => this.draft(draft))}</ul>
      </section>
    `;
  }

  private draft(draft: Draft) {
    const { pageId, bodyId, title, moment } = draft;
    return html`<li><a class="cut grow" href=${pageAddress(pageId)}>${title || t(L.pageNumber, { id: pageId })}</a><span class="note" title=${full(moment)}>${t(L.bodyFrom, { body: bodyId, time: when(moment) })}</span>
      <button class="button small quiet" @click=${() => this.discard(draft)}>${t(L.discard)}</button></li>`;
  }
}
