import { html, nothing } from "lit";
import { customElement } from "lit/decorators.js";
import { TvxElement, Watch } from "../kit/element";
import { type IconName, icon } from "../kit/icon";
import { L, t } from "../labels";
import { go, place } from "./address";
import { commands, panels } from "./registry";
import { shell } from "./tvx-shell";
import "./tvx-phone-nav.css";
import { currentPage } from "./workplace";

/** On phones: what a thumb reaches. */
@customElement("tvx-phone-nav")
export class TvxPhoneNav extends TvxElement {
  private readonly place = new Watch(this, place);
  private readonly page = new Watch(this, currentPage);
  private readonly commands = new Watch(this, commands);

  private one(name: IconName, label: string, run: () => unknown, current = false) {
    return html`<button aria-current=${current ? "page" : nothing} @click=${run}>${icon(name)}<span>${label}</span></button>`;
  }

  protected override render() {
    const create = this.commands.value.find(({ id, when }) => id === "pages.new" && (when?.() ?? true));
    const hasDetails = panels.value.some((panel) => panel.when(this.place.value, this.page.value));
    return html`<nav aria-label=${t(L.shortcuts)}>
      ${this.one("layout-dashboard", t(L.dashboard), () => go("/torvex/"), this.place.value.path === "/torvex/")}
      ${this.one("list-tree", t(L.pages), () => shell()?.showSide("pages"))}
      ${create ? this.one("file-plus", t(L.new), () => create.run()) : nothing}
      ${hasDetails ? this.one("panel-right", t(L.details), () => shell()?.toggle("right")) : nothing}
    </nav>`;
  }
}
