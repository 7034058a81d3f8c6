/**
 * The calls of a session run one after another at the server. Those that change something are sent alone and in their
 * order; those that only read go beside each other. What runs in the background waits until nobody else does.
 */
export type Lane = "read" | "write" | "background";

interface Waiting {
  lane: Lane;
  start: () => Promise<void>;
  cancelled: () => boolean;
}

const readsAtOnce = 4;

export class Queue {
  private readonly waiting: Waiting[] = [];
  private readonly behind: Waiting[] = [];
  private readonly running: Record<Lane, number> = { read: 0, write: 0, background: 0 };

  run<T>(lane: Lane, work: () => Promise<T>, signal?: AbortSignal): Promise<T> {
    return new Promise<T>((resolve, reject) => {
      const cancel = () => reject(new DOMException("cancelled", "AbortError"));
      if (signal?.aborted) return cancel();
      signal?.addEventListener("abort", cancel, { once: true });
      const entry: Waiting = {
        lane,
        cancelled: () => signal?.aborted ?? false,
        start: () => work().then(resolve, reject),
      };
      (lane === "background" ? this.behind : this.waiting).push(entry);
      this.next();
    });
  }

  private next(): void {
    while (this.waiting.length > 0 && this.mayStart(this.waiting[0]!)) this.start(this.waiting.shift()!);
    while (this.waiting.length === 0 && this.running.background === 0 && this.behind.length > 0)
      this.start(this.behind.shift()!);
  }

  private mayStart({ lane, cancelled }: Waiting): boolean {
    if (cancelled()) return true;
    if (this.running.write > 0) return false;
    return lane === "write" ? this.running.read === 0 : this.running.read < readsAtOnce;
  }

  private start({ lane, start, cancelled }: Waiting): void {
    if (cancelled()) return;
    ++this.running[lane];
    start().finally(() => {
      --this.running[lane];
      this.next();
    });
  }
}
