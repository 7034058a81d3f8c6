import { html } from "lit";
import { customElement, property } from "lit/decorators.js";
import { TvxElement } from "./element";
import "./tvx-split.css";

const step = 16;

/** The edge between two regions: drawn by a pointer or by arrows, it tells the wished size of the region on its `side`. */
@customElement("tvx-split")
export class TvxSplit extends TvxElement {
  @property() side: "left" | "right" = "left";
  @property({ type: Number }) size = 280;
  @property({ type: Number }) least = 200;
  @property({ type: Number }) most = 560;
  @property() label = "";
  private from = 0;
  private begun = 0;

  private wish(size: number): void {
    const bounded = Math.round(Math.min(this.most, Math.max(this.least, size)));
    if (bounded !== this.size) this.tell("tvx-size", bounded);
  }

  private grab(event: PointerEvent): void {
    this.from = event.clientX;
    this.begun = this.size;
    (event.currentTarget as HTMLElement).setPointerCapture(event.pointerId);
  }

  private drag(event: PointerEvent): void {
    if (!(event.currentTarget as HTMLElement).hasPointerCapture(event.pointerId)) return;
    const moved = event.clientX - this.from;
    this.wish(this.begun + (this.side === "left" ? moved : -moved));
  }

  private key(event: KeyboardEvent): void {
    const outward = this.side === "left" ? "ArrowRight" : "ArrowLeft";
    const inward = this.side === "left" ? "ArrowLeft" : "ArrowRight";
    const sizes: Record<string, number> = {
      [outward]: this.size + step,
      [inward]: this.size - step,
      Home: this.least,
      End: this.most,
    };
    const size = sizes[event.key];
    if (size === undefined) return;
    event.preventDefault();
    this.wish(size);
  }

  protected override render() {
    return html`<div class="split" role="separator" tabindex="0" aria-orientation="vertical" aria-label=${this.label} aria-valuenow=${this.size}
      aria-valuemin=${this.least} aria-valuemax=${this.most} @pointerdown=${this.grab} @pointermove=${this.drag} @keydown=${this.key}></div>`;
  }
}
