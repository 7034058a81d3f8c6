/** What is known of the server: whether it answers, whether it knows us, which token it wants. */
export type ConnectionState = "online" | "offline" | "loggedOut";

type Listener = (state: ConnectionState) => void;

const tokenHere = () => document.querySelector<HTMLMetaElement>('meta[name="torvex-token"]')?.content ?? "";

class Connection {
  private now: ConnectionState = "online";
  private readonly listeners = new Set<Listener>();
  private waiters: (() => void)[] = [];
  private current = "";

  get state(): ConnectionState {
    return this.now;
  }

  set state(state: ConnectionState) {
    if (state === this.now) return;
    this.now = state;
    if (state === "online") this.release();
    for (const listener of this.listeners) listener(state);
  }

  get token(): string {
    if (!this.current && typeof document !== "undefined") this.current = tokenHere();
    return this.current;
  }

  set token(token: string) {
    this.current = token;
  }

  watch(listener: Listener): () => void {
    this.listeners.add(listener);
    return () => this.listeners.delete(listener);
  }

  /** Comes back when there is a server that knows us. */
  untilOnline(signal?: AbortSignal): Promise<void> {
    if (this.now === "online") return Promise.resolve();
    return new Promise((resolve, reject) => {
      this.waiters.push(resolve);
      signal?.addEventListener("abort", () => reject(new DOMException("cancelled", "AbortError")), { once: true });
    });
  }

  private release(): void {
    const waiters = this.waiters;
    this.waiters = [];
    for (const waiter of waiters) waiter();
  }
}

export const connection = new Connection();

/** The token of another document of ours. It isn't parsed: texts don't become documents here. */
export const tokenIn = (html: string) => /<meta name="torvex-token" content="([^"]*)"/.exec(html)?.[1] ?? "";
