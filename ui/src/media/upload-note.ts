import { html, nothing } from "lit";
import { customElement } from "lit/decorators.js";
import { TvxElement, Watch } from "../kit/element";
import { icon } from "../kit/icon";
import { Store } from "../kit/store";
import { L, plural, t } from "../labels";

/** What the foot says of uploads; who uploads keeps it true. */
export const uploadNote = new Store<{ open: number; percent: number; asks: number }>({
  open: 0,
  percent: 100,
  asks: 0,
});

@customElement("tvx-upload-note")
export class TvxUploadNote extends TvxElement {
  private readonly note = new Watch(this, uploadNote);

  protected override render() {
    const { open, percent, asks } = this.note.value;
    if (open === 0) return nothing;
    const text = plural(open, L.uploadsOne, L.uploadsMany, { percent });
    return html`<a class="note" href="/torvex/images.asp" title=${asks ? t(L.uploadAsks) : nothing}>${icon(asks ? "triangle-alert" : "upload")} ${text}</a>`;
  }
}
