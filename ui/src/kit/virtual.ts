import { elementScroll, observeElementOffset, observeElementRect, Virtualizer } from "@tanstack/virtual-core";
import type { ReactiveController, ReactiveControllerHost } from "lit";

/** From so many rows on only those in sight are drawn. */
export const drawnAtOnce = 200;

export interface Window {
  from: number;
  to: number;
  before: number;
  after: number;
}

/** Which of many rows of one height are in sight. */
export class VirtualRows implements ReactiveController {
  private virtualizer?: Virtualizer<HTMLElement, HTMLElement>;
  private cleanUp?: () => void;
  private count = 0;

  constructor(
    private readonly host: ReactiveControllerHost,
    private readonly scroller: () => HTMLElement | null,
    private readonly rowHeight: () => number,
  ) {
    host.addController(this);
  }

  private options(count: number) {
    return {
      count,
      getScrollElement: this.scroller,
      estimateSize: this.rowHeight,
      overscan: 12,
      observeElementRect,
      observeElementOffset,
      scrollToFn: elementScroll,
      onChange: () => this.host.requestUpdate(),
    };
  }

  hostDisconnected(): void {
    this.cleanUp?.();
    this.virtualizer = undefined;
  }

  hostUpdated(): void {
    if (this.count <= drawnAtOnce) return;
    if (!this.virtualizer) {
      this.virtualizer = new Virtualizer(this.options(this.count));
      this.cleanUp = this.virtualizer._didMount();
    }
    this.virtualizer.setOptions(this.options(this.count));
    this.virtualizer._willUpdate();
  }

  /** What to draw of so many rows, with the heights of what is left out. */
  window(count: number): Window {
    this.count = count;
    if (count <= drawnAtOnce) return { from: 0, to: count, before: 0, after: 0 };
    this.virtualizer?.setOptions(this.options(count));
    const items = this.virtualizer?.getVirtualItems() ?? [];
    if (items.length === 0)
      return { from: 0, to: Math.min(count, 60), before: 0, after: Math.max(0, count - 60) * this.rowHeight() };
    const last = items.at(-1)!;
    return {
      from: items[0]!.index,
      to: last.index + 1,
      before: items[0]!.start,
      after: Math.max(0, this.virtualizer!.getTotalSize() - last.end),
    };
  }

  show(index: number): void {
    if (this.count > drawnAtOnce) this.virtualizer?.scrollToIndex(index, { align: "auto" });
  }
}
