import { html, nothing, svg } from "lit";
import { customElement, state } from "lit/decorators.js";
import { call } from "../api";
import { isProblem } from "../api/problem";
import { TvxElement, Watch } from "../kit/element";
import { icon } from "../kit/icon";
import { L, number, plural, t } from "../labels";
import { day, daysBefore } from "../labels/moments";
import { websiteName, workplace } from "../shell/workplace";
import "./tvx-visits.css";
import { type Day, type Hits, shownDays, type Visits, visitsOf } from "./visits";

const height = 56;
const step = 20;
const bar = 14;

/** Today is the last of them. */
const wantedDays = () => Array.from({ length: 2 * shownDays }, (_, i) => daysBefore(2 * shownDays - 1 - i));

/** How often the website was looked at lately, as a drawing and as a table. */
@customElement("tvx-visits")
export class TvxVisits extends TvxElement {
  @state() private visits: Visits | null = null;
  @state() private fault = "";
  private readonly workplace = new Watch(this, workplace, () => void this.load());
  private website = "";

  override connectedCallback(): void {
    super.connectedCallback();
    void this.load();
  }

  private async load(again = false): Promise<void> {
    const { site, lang } = this.workplace.value;
    const website = `${site}.${lang}`;
    if (!site || (website === this.website && !again)) return;
    this.website = website;
    const days = wantedDays();
    try {
      const args = { scope: website, from: days[0]!, to: days.at(-1)!, by: "day" };
      const rows = (await call("desk.getHits", args)) as Hits[];
      if (website !== this.website) return;
      this.visits = visitsOf(rows, days);
      this.fault = "";
    } catch (error) {
      this.fault = isProblem(error) ? error.message : String(error);
    }
  }

  protected override render() {
    const { site, lang } = this.workplace.value;
    const website = websiteName(site, lang);
    return html`
      <section class="card work visits" aria-label=${t(L.visits)}>
        <header class="work-head">${icon("chart-column")}<h2>${t(L.visits)}</h2><span class="note">${t(L.visitsOf, { website })}</span></header>
        ${this.content()}
      </section>
    `;
  }

  private content() {
    if (this.fault)
      return html`<div class="empty" role="alert"><p>${this.fault}</p><button class="button small" @click=${() => this.load(true)}>${t(L.tryAgain)}</button></div>`;
    if (!this.visits) return html`<div class="work-wait" aria-busy="true"></div>`;
    const { days, views, visitors, before } = this.visits;
    if (views + before === 0) return html`<p class="work-none">${t(L.noVisits)}</p>`;
    return html`
      <div class="visits-body">
        <p class="visits-sum"><strong>${plural(views, L.viewsOne, L.viewsMany)}</strong><span>${plural(visitors, L.visitorsOne, L.visitorsMany)}</span>
          <span class="note">${plural(before, L.visitsBeforeOne, L.visitsBeforeMany)}</span></p>
        ${this.drawing(days)}${this.table(days)}
      </div>`;
  }

  private drawing(days: readonly Day[]) {
    const most = Math.max(1, ...days.map(({ views }) => views));
    const bars = days.map(({ day: of, views }, at) => {
      const tall = views === 0 ? 1 : Math.max(2, Math.round((views / most) * height));
      return svg`<rect x=${at * step} y=${height - tall} width=${bar} height=${tall} rx="2"><title>${day(of)}: ${plural(views, L.viewsOne, L.viewsMany)}</title></rect>`;
    });
    return html`<div aria-hidden="true"><svg class="visits-bars" viewBox="0 0 ${days.length * step - (step - bar)} ${height}" preserveAspectRatio="none">${bars}</svg>
      <p class="visits-days note"><span>${day(days[0]?.day ?? "")}</span><span>${day(days.at(-1)?.day ?? "")}</span></p></div>`;
  }

  private table(days: readonly Day[]) {
    const row = ({ day: of, views, visitors }: Day) =>
      views + visitors > 0
        ? html`<tr><th scope="row">${day(of)}</th><td>${number(views)}</td><td>${number(visitors)}</td></tr>`
        : nothing;
    return html`<details><summary>${t(L.details)}</summary><table class="visits-table" aria-label=${t(L.visits)}>
      <thead><tr><th scope="col">${t(L.dayColumn)}</th><th scope="col">${t(L.viewsColumn)}</th><th scope="col">${t(L.visitorsColumn)}</th></tr></thead>
      <tbody>${[...days].reverse().map(row)}</tbody></table></details>`;
  }
}
