import { html } from "lit";
import { customElement } from "lit/decorators.js";
import { TvxElement, Watch } from "../kit/element";
import { initials } from "../kit/initials";
import { L, t } from "../labels";
import { pageAddress } from "./address";
import { type Doing, type Here, here } from "./presence";
import "./tvx-faces.css";

const words = { looking: L.isLooking, typing: L.isTyping, away: L.isAway } satisfies Record<Doing, number>;

/** Who else is in this website. */
@customElement("tvx-faces")
export class TvxFaces extends TvxElement {
  private readonly here = new Watch(this, here);

  protected override render() {
    return html`${this.here.value.slice(0, 5).map((one) => this.face(one))}`;
  }

  private face({ name, pageId, doing }: Here) {
    const what = t(words[doing], { name });
    return html`<a class="face ${doing}" href=${pageId ? pageAddress(pageId) : "/torvex/"} title=${what} aria-label=${what}>${initials(name)}</a>`;
  }
}
