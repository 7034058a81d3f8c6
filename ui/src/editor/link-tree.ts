// Pages to link to, as they stand in the tree of any website.
import { html, nothing } from "lit";
import { customElement, property, state } from "lit/decorators.js";
import { TvxElement, Watch } from "../kit/element";
import { L, t } from "../labels";
import type { Child } from "../pages/children";
import "../pages/page-picker";
import { workplace } from "../shell/workplace";
import type { LinkTarget } from "./link-target";

/** Tells "tvx-target" (LinkTarget). */
@customElement("tvx-link-tree")
export class TvxLinkTree extends TvxElement {
  /** The page in which the link stands: its website opens first. */
  @property() nodeId = "";
  @state() private website = "";
  @state() private chosen = "";
  private readonly workplace = new Watch(this, workplace);

  private get shown(): string {
    return this.website || this.nodeId.slice(0, 5);
  }

  private choose({ pageId, nodeId, title, live }: Child): void {
    this.chosen = nodeId;
    const [siteId = "", lang = ""] = nodeId.split(".");
    const isLive = live !== "none";
    this.tell<LinkTarget>("tvx-target", { kind: "page", pageId, siteId, lang, nodeId, title, path: "", isLive });
  }

  protected override render() {
    const { websites } = this.workplace.value;
    const [site = "", lang = ""] = this.shown.split(".");
    return html`
      ${
        websites.length > 1
          ? html`<div class="field"><label for="link-website">${t(L.website)}</label><select id="link-website" class="select" @change=${(
              event: Event,
            ) => {
              this.website = (event.target as HTMLSelectElement).value;
            }}>${websites.map(
              (one) =>
                html`<option value="${one.site}.${one.lang}" ?selected=${`${one.site}.${one.lang}` === this.shown}>${one.siteName} · ${one.langName}</option>`,
            )}</select></div>`
          : nothing
      }
      <tvx-page-picker .site=${site} .language=${lang} .label=${t(L.whereTo)} .chosen=${this.chosen} .shownFirst=${this.shown === this.nodeId.slice(0, 5) ? this.nodeId : ""}
        @tvx-choose=${(event: CustomEvent<Child>) => this.choose(event.detail)}></tvx-page-picker>`;
  }
}
