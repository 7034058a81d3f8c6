/** A value that others watch. */
export class Store<T> {
  private readonly listeners = new Set<(value: T) => void>();

  constructor(private now: T) {}

  get value(): T {
    return this.now;
  }

  set value(value: T) {
    if (Object.is(value, this.now)) return;
    this.now = value;
    for (const listener of [...this.listeners]) listener(value);
  }

  /** Changes some fields of it. */
  patch(fields: Partial<T>): void {
    this.value = { ...this.now, ...fields };
  }

  watch(listener: (value: T) => void): () => void {
    this.listeners.add(listener);
    return () => this.listeners.delete(listener);
  }
}
