import { html, nothing } from "lit";
import { customElement } from "lit/decorators.js";
import { connection } from "../api/connection";
import { Store } from "../kit";
import { TvxElement, Watch } from "../kit/element";
import { icon } from "../kit/icon";
import { L, locale, t } from "../labels";
import { dates } from "../labels/formats";
import { place } from "./address";
import { here } from "./presence";
import { footNotes } from "./registry";
import "./tvx-foot.css";

/** What became of what was typed. */
export interface Keeping {
  state: "" | "kept" | "saved";
  at: Date | null;
}

export const keeping = new Store<Keeping>({ state: "", at: null });

export const clock = (at: Date | null) =>
  at ? dates(locale(), { hour: "numeric", minute: "2-digit" }).format(at) : "";

/** The lower edge: what became of what was typed, who is here, what is being sent. */
@customElement("tvx-foot")
export class TvxFoot extends TvxElement {
  private readonly keeping = new Watch(this, keeping);
  private readonly here = new Watch(this, here);
  private readonly notes = new Watch(this, footNotes);
  private readonly place = new Watch(this, place);

  override connectedCallback(): void {
    super.connectedCallback();
    connection.watch(() => this.requestUpdate());
  }

  protected override render() {
    const page = Number(this.place.value.params.get("pageId")) || -1;
    const others = this.here.value.filter((one) => one.pageId === page && one.doing !== "away");
    return html`
      <span role="status" class="kept">${this.state()}</span>
      <span class="cut">${others.map(({ name, doing }) => html`<span>${doing === "typing" ? t(L.isTyping, { name }) : t(L.isLooking, { name })}</span> `)}</span>
      <span class="notes">${this.notes.value.map((note) => note.render())}</span>
    `;
  }

  private state() {
    if (connection.state === "offline") return html`<span class="warn">${icon("wifi-off")}${t(L.notConnected)}</span>`;
    const { state, at } = this.keeping.value;
    if (state === "kept") return t(L.draftKept, { time: clock(at) });
    if (state === "saved") return t(L.saved);
    return nothing;
  }
}
