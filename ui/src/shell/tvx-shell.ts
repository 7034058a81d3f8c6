import { html, nothing } from "lit";
import { customElement, state } from "lit/decorators.js";
import { connection } from "../api/connection";
import { TvxElement, Watch } from "../kit/element";
import { icon } from "../kit/icon";
import { styles } from "../kit/styles";
import "../kit/tvx-split";
import "../kit/tvx-tabs";
import { L, t } from "../labels";
import { place } from "./address";
import "./tvx-bar";
import "./tvx-foot";
import { entryAt } from "./entries.gen";
import { forgetFailure, loadFailed, readyOr } from "./loader";
import { panels, type Screen, screenAt, screens, sides } from "./registry";
import "./tvx-shell.css";
import { currentPage, kept, maySee, sought, workplace } from "./workplace";

const regions = [".bar", ".left", "#centre", ".right", ".foot"];
const leftSizes = { wished: 280, least: 220, most: 560 };
const rightSizes = { wished: 360, least: 280, most: 640 };

/** The frame of the interface: bar, left side, centre, right side and foot. */
@customElement("tvx-shell")
export class TvxShell extends TvxElement {
  @state() private leftSize = Number(kept.get("left")) || leftSizes.wished;
  @state() private rightSize = Number(kept.get("right")) || rightSizes.wished;
  @state() leftOpen = kept.get("leftClosed") !== "yes";
  @state() rightOpen = kept.get("rightClosed") !== "yes";
  /** On phones a side lies over the centre. */
  @state() private over: "" | "left" | "right" = "";
  @state() private side = kept.get("side") || "pages";
  @state() private panel = kept.get("panel");
  private readonly place = new Watch(this, place, () => {
    this.over = "";
  });
  private readonly page = new Watch(this, currentPage);
  private readonly panels = new Watch(this, panels);
  private readonly sides = new Watch(this, sides);
  private readonly workplace = new Watch(this, workplace);
  protected readonly sought = new Watch(this, sought, (nodeId) => nodeId && this.showSide("pages"));

  constructor() {
    super();
    screens.watch(() => this.requestUpdate());
    connection.watch(() => this.requestUpdate());
  }

  /** F6 and Shift+F6. */
  goRound(back: boolean): void {
    const places = regions
      .map((selector) => this.querySelector<HTMLElement>(selector))
      .filter((region) => region?.checkVisibility());
    const now = places.findIndex((region) => region!.contains(document.activeElement));
    const next = places[(now + (back ? -1 : 1) + places.length) % places.length];
    (next?.querySelector<HTMLElement>("[tabindex='0'], button, input, a[href], iframe") ?? next)?.focus();
  }

  toggle(side: "left" | "right"): void {
    if (this.narrow) {
      this.over = this.over === side ? "" : side;
      return;
    }
    if (side === "left") this.leftOpen = !this.leftOpen;
    else this.rightOpen = !this.rightOpen;
    kept.set("leftClosed", this.leftOpen ? "" : "yes");
    kept.set("rightClosed", this.rightOpen ? "" : "yes");
  }

  showSide(id: string): void {
    this.side = id;
    kept.set("side", id);
    if (this.narrow) this.over = "left";
    else if (!this.leftOpen) this.toggle("left");
  }

  showPanel(id: string): void {
    this.panel = id;
    kept.set("panel", id);
    if (this.narrow) this.over = "right";
    else if (!this.rightOpen) this.toggle("right");
  }

  private get narrow(): boolean {
    return matchMedia("(max-width: 900px)").matches;
  }

  private get shownPanels() {
    return this.panels.value.filter((panel) => panel.when(this.place.value, this.page.value));
  }

  private size(side: "left" | "right", size: number): void {
    if (side === "left") this.leftSize = size;
    else this.rightSize = size;
    kept.set(side, String(size));
  }

  /** Both sides as they were before anybody moved their edges. */
  firstWidths(): void {
    this.size("left", leftSizes.wished);
    this.size("right", rightSizes.wished);
  }

  protected override render() {
    const hasRight = this.shownPanels.length > 0;
    const wide = { "--left": `${this.leftSize}px`, "--right": `${this.rightSize}px` };
    return html`
      <div class="shell ${this.leftOpen ? "" : "no-left"} ${hasRight && this.rightOpen ? "" : "no-right"} ${this.over ? `over-${this.over}` : ""}" ${styles(wide)}>
        <a class="skip" href="#centre" @click=${this.skip}>${t(L.skipToContent)}</a>
        <tvx-bar class="bar" role="banner" .hasRight=${hasRight} @tvx-side=${(event: CustomEvent) => this.toggle(event.detail)}></tvx-bar>
        <nav class="left" aria-label=${t(L.navigation)}>${this.left()}
          <tvx-split side="left" .size=${this.leftSize} .least=${leftSizes.least} .most=${leftSizes.most} label=${t(L.widthLeft)}
          @tvx-size=${(event: CustomEvent) => this.size("left", event.detail)}></tvx-split></nav>
        <main class="centre" id="centre" tabindex="-1">${this.centre()}</main>
        <aside class="right" aria-label=${t(L.aboutThisPage)} ?hidden=${!hasRight}>${this.right()}
          <tvx-split side="right" .size=${this.rightSize} .least=${rightSizes.least} .most=${rightSizes.most} label=${t(L.widthRight)}
          @tvx-size=${(event: CustomEvent) => this.size("right", event.detail)}></tvx-split></aside>
        <footer class="foot"><tvx-foot></tvx-foot><tvx-phone-nav></tvx-phone-nav></footer>
        ${this.over ? html`<button class="veil" aria-label=${t(L.close)} @click=${() => (this.over = "")}></button>` : nothing}
      </div>
    `;
  }

  private skip(event: Event): void {
    event.preventDefault();
    this.querySelector<HTMLElement>("#centre")?.focus();
  }

  private left() {
    const all = this.sides.value.filter((side) => side.when?.() ?? true);
    const shown = all.find(({ id }) => id === this.side) ?? all[0];
    if (!shown) return nothing;
    return html`
      <tvx-tabs name="side" panel="side-panel" .label=${t(L.navigation)} .chosen=${shown.id} .tabs=${all.map(({ id, label }) => ({ id, label: label() }))}
        @tvx-choose=${(event: CustomEvent) => this.showSide(event.detail)}></tvx-tabs>
      <div class="side-panel" id="side-panel" role="tabpanel" aria-labelledby="side-tab-${shown.id}">${this.loaded(shown.load, () => shown.render())}</div>
    `;
  }

  private centre() {
    const screen = screenAt(this.place.value);
    if (!this.workplace.value.login) return nothing;
    if (!screen)
      return html`<div class="empty">${icon("file")}<h1>${t(L.noSuchPlace)}</h1><a href="/torvex/">${t(L.toTheDashboard)}</a></div>`;
    document.title = `${screen.title(this.place.value)} · Torvex`;
    if (!this.mayOpen(screen))
      return html`<div class="empty" role="alert">${icon("shield")}<h1>${t(L.notYours)}</h1><p>${t(L.notYoursWhy)}</p><a href="/torvex/">${t(L.toTheDashboard)}</a></div>`;
    return this.loaded(screen.load, () => screen.render(this.place.value));
  }

  /** What is read there is refused by the server besides. */
  private mayOpen({ entry }: Screen): boolean {
    const { site, lang } = this.workplace.value;
    const asked = entry ?? entryAt[this.place.value.path.toLowerCase()];
    return asked === undefined || maySee(asked, site, lang);
  }

  private right() {
    const all = this.shownPanels;
    const shown = all.find(({ id }) => id === this.panel) ?? all[0];
    if (!shown) return nothing;
    const page = this.page.value;
    return html`
      <tvx-tabs name="panel" panel="panel-panel" .label=${t(L.aboutThisPage)} .chosen=${shown.id}
        .tabs=${all.map(({ id, label, count }) => ({ id, label: label(), count: count?.(page) ?? 0 }))}
        @tvx-choose=${(event: CustomEvent) => this.showPanel(event.detail)}></tvx-tabs>
      <div class="panel-panel" id="panel-panel" role="tabpanel" aria-labelledby="panel-tab-${shown.id}">${this.loaded(shown.load, () => shown.render(this.place.value, page))}</div>
    `;
  }

  private loaded(load: (() => Promise<unknown>) | undefined, draw: () => unknown) {
    if (readyOr(load, () => this.requestUpdate())) return draw();
    if (!loadFailed(load)) return html`<div class="waiting" aria-busy="true"></div>`;
    const again = () => {
      forgetFailure(load);
      this.requestUpdate();
    };
    return html`<div class="empty" role="alert">${icon("cloud-off")}<p>${t(L.couldNotLoad)}</p><button class="button" @click=${again}>${t(L.tryAgain)}</button></div>`;
  }
}

export const shell = () => document.querySelector<TvxShell>("tvx-shell");
