/** The queue of uploads: which run, which wait, what each has become, how far all of them are. */

export type UploadState = "waiting" | "running" | "paused" | "taken" | "failed" | "refused" | "done" | "skipped";

export interface UploadItem {
  readonly id: number;
  readonly name: string;
  readonly size: number;
  readonly sent: number;
  readonly state: UploadState;
  /** What the server said, where it refused. */
  readonly reason: string;
  /** The file's path below the site's directory, when it is there. */
  readonly path: string;
}

export const SIDE_BY_SIDE = 2;

const FINAL: ReadonlySet<UploadState> = new Set(["done", "skipped", "refused"]);

export const isFinal = (item: UploadItem): boolean => FINAL.has(item.state);

/** Which of those that wait may begin now. */
export function next(items: readonly UploadItem[]): UploadItem[] {
  const running = items.filter((item) => item.state === "running").length;
  return items.filter((item) => item.state === "waiting").slice(0, Math.max(0, SIDE_BY_SIDE - running));
}

export interface Progress {
  readonly percent: number;
  readonly done: number;
  readonly total: number;
  readonly open: number;
}

export function progressOf(items: readonly UploadItem[]): Progress {
  const counted = items.filter((item) => item.state !== "skipped" && item.state !== "refused");
  const total = counted.reduce((sum, item) => sum + item.size, 0);
  const sent = counted.reduce((sum, item) => sum + (item.state === "done" ? item.size : item.sent), 0);
  return {
    percent: total === 0 ? (counted.length ? 0 : 100) : Math.floor((100 * sent) / total),
    done: items.filter((item) => item.state === "done").length,
    total: items.length,
    open: items.filter((item) => !isFinal(item)).length,
  };
}

export type Fault = "taken" | "refused" | "line";

/** What an answer of the server means for an upload: another name is needed, it never will go, or it may go on. */
export function faultOf(status: number, code: string): Fault {
  if (status === 409 && code === "exists") return "taken";
  return [400, 401, 403, 413, 415, 422].includes(status) ? "refused" : "line";
}
