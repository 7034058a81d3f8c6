/** Lists that are read part by part. */

import type { ReactiveControllerHost } from "lit";

/** What was read so far, for the element that shows it. An answer to what is no longer wished is dropped. */
export class Parts<Row> {
  rows: readonly Row[] | undefined;
  hasMore = false;
  busy = false;
  fault: unknown;
  private run = 0;

  /** `read` gives the rows from a place on, at most `atOnce` of them. */
  constructor(
    private readonly host: ReactiveControllerHost,
    private readonly read: (start: number) => Promise<readonly Row[]>,
    private readonly atOnce: number,
  ) {}

  /** From the beginning: at first, and whenever something else is wished. */
  readonly load = (): Promise<void> => this.take(0);

  readonly more = async (): Promise<void> => {
    if (!this.busy) await this.take(this.rows?.length ?? 0);
  };

  private async take(start: number): Promise<void> {
    const run = ++this.run;
    this.busy = true;
    this.host.requestUpdate();
    try {
      const rows = await this.read(start);
      if (run !== this.run) return;
      this.rows = start > 0 ? [...(this.rows ?? []), ...rows] : rows;
      this.hasMore = rows.length === this.atOnce;
      this.fault = undefined;
    } catch (error) {
      if (run !== this.run) return;
      this.fault = error;
    }
    this.busy = false;
    this.host.requestUpdate();
  }
}
