import { html, nothing } from "lit";
import { customElement, state } from "lit/decorators.js";
import { L, t } from "../labels";
import { TvxElement } from "./element";
import { icon } from "./icon";
import "./tvx-toast.css";

export interface Toast {
  text: string;
  kind?: "done" | "warn" | "danger";
  /** Takes back what was done: for ten seconds. */
  undo?: () => unknown;
  /** Until it is closed. */
  stays?: boolean;
  /** Another next step, with its word. */
  action?: { label: string; run: () => unknown };
}

interface Shown extends Toast {
  id: number;
  timer: ReturnType<typeof setTimeout> | undefined;
}

const shownFor = 10_000;
const icons = { done: "circle-check", warn: "triangle-alert", danger: "circle-alert" } as const;

/** What was done, for a while, in a corner. Said by `toast(...)`. */
@customElement("tvx-toasts")
export class TvxToasts extends TvxElement {
  @state() private shown: Shown[] = [];
  private last = 0;

  override connectedCallback(): void {
    super.connectedCallback();
    this.setAttribute("popover", "manual");
  }

  add(toast: Toast): () => void {
    const id = ++this.last;
    this.shown = [...this.shown.slice(-2), { ...toast, id, timer: undefined }];
    this.keepFor(id);
    // The newest layer lies above open dialogs.
    if (this.matches(":popover-open")) this.hidePopover();
    this.showPopover();
    return () => this.drop(id);
  }

  private keepFor(id: number): void {
    const toast = this.shown.find((one) => one.id === id);
    if (!toast || toast.stays || toast.kind === "danger") return;
    clearTimeout(toast.timer);
    toast.timer = setTimeout(() => this.drop(id), shownFor);
  }

  private hold(id: number): void {
    clearTimeout(this.shown.find((one) => one.id === id)?.timer);
  }

  private drop(id: number): void {
    this.shown = this.shown.filter((one) => one.id !== id);
    if (this.shown.length === 0 && this.matches(":popover-open")) this.hidePopover();
  }

  private press(id: number, run: () => unknown): void {
    this.drop(id);
    run();
  }

  protected override render() {
    return html`<div role="log" aria-live="polite" aria-label=${t(L.notices)}>${this.shown.map((toast) => this.one(toast))}</div>`;
  }

  private one(toast: Shown) {
    const { id, kind = "done", text, undo, action } = toast;
    return html`
      <div class="toast ${kind}" @pointerenter=${() => this.hold(id)} @pointerleave=${() => this.keepFor(id)} @focusin=${() => this.hold(id)} @focusout=${() => this.keepFor(id)}>
        ${icon(icons[kind])}<span class="grow">${text}</span>
        ${undo ? html`<button class="button small" @click=${() => this.press(id, undo)}>${t(L.undo)}</button>` : nothing}
        ${action ? html`<button class="button small" @click=${() => this.press(id, action.run)}>${action.label}</button>` : nothing}
        <button class="button quiet small icon-only" aria-label=${t(L.close)} @click=${() => this.drop(id)}>${icon("x")}</button>
      </div>
    `;
  }
}

/** Says what was done; gives back what takes it away. */
export function toast(text: string, more: Omit<Toast, "text"> = {}): () => void {
  let corner = document.querySelector<TvxToasts>("tvx-toasts");
  if (!corner) {
    corner = new TvxToasts();
    document.body.append(corner);
  }
  return corner.add({ text, ...more });
}
