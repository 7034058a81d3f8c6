/** The files on their way: progress of each, what each asks, and what to do when all are there. */

import { html, nothing, type TemplateResult } from "lit";
import { customElement, property } from "lit/decorators.js";
import { TvxElement, Watch } from "../kit/element";
import { icon } from "../kit/icon";
import { interfaceLanguage, L, plural, t } from "../labels";
import { sizeText } from "./model/files";
import { progressOf, type UploadItem } from "./model/queue";
import { uploadNote } from "./upload-note";
import { arrived, clearEnded, keepBoth, pause, replaceTaken, resume, skip, uploads } from "./uploads";

uploads.watch((items) => {
  const { open, percent } = progressOf(items);
  uploadNote.value = {
    open,
    percent,
    asks: items.filter(({ state }) => state === "taken" || state === "failed").length,
  };
});

@customElement("tvx-uploads")
export class TvxUploads extends TvxElement {
  /** Names that the folder has. */
  @property({ attribute: false }) taken: ReadonlySet<string> = new Set();
  private readonly items = new Watch(this, uploads);

  protected override render(): TemplateResult | typeof nothing {
    const items = this.items.value;
    if (items.length === 0) return nothing;
    const progress = progressOf(items);
    return html`<section class="card uploads" aria-label=${t(L.uploadsTitle)}>
      <header class="inline"><h2 class="grow">${t(L.uploadsTitle)}</h2><span class="note" role="status">${plural(progress.total, L.uploadedOne, L.uploadedMany, { done: progress.done })}</span>
        ${progress.open === 0 ? this.ended() : nothing}</header>
      <ul tabindex="0" aria-label=${t(L.uploadsTitle)}>${items.map((item) => this.item(item))}</ul>
    </section>`;
  }

  private ended(): TemplateResult {
    const files = arrived.value;
    return html`${files.length ? html`<button class="button small primary" @click=${() => this.tell("tvx-titles", files)}>${plural(files.length, L.nameThemOne, L.nameThemMany)}</button>` : nothing}
      <button class="button small" @click=${() => clearEnded()}>${t(L.close)}</button>`;
  }

  private item(item: UploadItem): TemplateResult {
    const { id, name, state } = item;
    const percent = item.size ? Math.floor((100 * item.sent) / item.size) : 0;
    return html`<li class="upload ${state}">
      <span class="upload-name cut" title=${name}>${name}</span>
      <span class="upload-middle">${state === "running" || state === "paused" ? html`<progress class="bar" max="100" value=${percent} aria-label=${name}></progress>` : this.told(item)}</span>
      <span class="note upload-size">${state === "running" ? `${percent} %` : sizeText(item.size, interfaceLanguage())}</span>
      <span class="inline upload-buttons">${this.buttons(id, item)}</span></li>`;
  }

  private told(item: UploadItem): TemplateResult {
    switch (item.state) {
      case "done":
        return html`<span class="media-done">${icon("circle-check")}${t(L.uploadDone)}</span>`;
      case "taken":
        return html`<span class="media-warn">${icon("triangle-alert")}${t(L.uploadTaken)}</span>`;
      case "failed":
        return html`<span class="media-warn">${icon("wifi-off")}${item.reason || t(L.uploadBroken)}</span>`;
      case "refused":
        return html`<span class="media-fault">${icon("circle-alert")}${item.reason || t(L.uploadRefused)}</span>`;
      case "skipped":
        return html`<span class="soft">${t(L.uploadSkipped)}</span>`;
      default:
        return html`<span class="soft">${t(L.uploadWaits)}</span>`;
    }
  }

  private button(label: string, name: string, run: () => void): TemplateResult {
    return html`<button class="button small" aria-label="${label}: ${name}" @click=${run}>${label}</button>`;
  }

  private buttons(id: number, { name, state }: UploadItem): TemplateResult | typeof nothing {
    switch (state) {
      case "running":
        return html`${this.button(t(L.pauseIt), name, () => pause(id))}${this.button(t(L.stop), name, () => skip(id))}`;
      case "paused":
        return html`${this.button(t(L.goOn), name, () => resume(id))}${this.button(t(L.stop), name, () => skip(id))}`;
      case "failed":
        return html`${this.button(t(L.tryAgain), name, () => resume(id))}${this.button(t(L.skipIt), name, () => skip(id))}`;
      case "taken":
        return html`${this.button(t(L.keepBothFiles), name, () => keepBoth(id, this.taken))}${this.button(t(L.replaceIt), name, () => replaceTaken(id))}${this.button(t(L.skipIt), name, () => skip(id))}`;
      case "waiting":
        return this.button(t(L.skipIt), name, () => skip(id));
      default:
        return nothing;
    }
  }
}
