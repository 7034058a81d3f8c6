/** Files on their way to the server: by a protocol that goes on where the line broke. It outlives the screen. */

import * as tus from "tus-js-client";
import { connection } from "../api/connection";
import { Store } from "../kit/store";
import { fileOf } from "./data";
import type { MediaFile, MediaKind } from "./model/files";
import { freeName, proposedTitle } from "./model/files";
import { faultOf, next, progressOf, type UploadItem, type UploadState } from "./model/queue";

export interface Target {
  readonly site: string;
  readonly kind: MediaKind;
  readonly folder: string;
}

interface Running {
  readonly file: File;
  readonly target: Target;
  name: string;
  replace: boolean;
  upload?: tus.Upload;
}

const ADDRESS = "/torvex/api/uploads";
/** Pieces this small keep what a broken line has to send again small. */
const PIECE = 4 * 1024 * 1024;
const AGAIN = [0, 1000, 3000, 5000, 10000];

export const uploads = new Store<readonly UploadItem[]>([]);
/** Files that have arrived, in the order in which they did. */
export const arrived = new Store<readonly MediaFile[]>([]);

const running = new Map<number, Running>();
let last = 0;

function patch(id: number, fields: Partial<UploadItem>): void {
  uploads.value = uploads.value.map((item) => (item.id === id ? { ...item, ...fields } : item));
}

/** `replace`: files of these names are to go, which was asked before. */
export function add(files: Iterable<File>, target: Target, replace = false): void {
  const items: UploadItem[] = [];
  for (const file of files) {
    const id = ++last;
    running.set(id, { file, target, name: file.name, replace });
    items.push({ id, name: file.name, size: file.size, sent: 0, state: "waiting", reason: "", path: "" });
  }
  uploads.value = [...uploads.value, ...items];
  startWaiting();
}

function startWaiting(): void {
  for (const item of next(uploads.value)) start(item.id);
}

function settle(id: number, state: UploadState, fields: Partial<UploadItem> = {}): void {
  patch(id, { state, ...fields });
  startWaiting();
}

function metadataOf({ file, target, name, replace }: Running): Record<string, string> {
  return {
    site: target.site,
    folder: target.folder,
    folderType: target.kind,
    filename: name,
    title: proposedTitle(name),
    filetype: file.type,
    ...(replace ? { replace: "" } : {}),
  };
}

function start(id: number): void {
  const job = running.get(id);
  if (!job) return;
  patch(id, { state: "running", reason: "" });
  const upload = new tus.Upload(job.file, {
    endpoint: ADDRESS,
    chunkSize: PIECE,
    retryDelays: AGAIN,
    storeFingerprintForResuming: false,
    metadata: metadataOf(job),
    onBeforeRequest: (request) => request.setHeader("X-Torvex-Token", connection.token),
    onShouldRetry: (error) => isLine(error),
    onProgress: (sent) => patch(id, { sent }),
    onAfterResponse: (_, response) => takeRow(id, job.target.kind, response.getBody()),
    onSuccess: () => {
      running.delete(id);
      settle(id, "done", { sent: job.file.size });
    },
    onError: (error) => failed(id, error as tus.DetailedError),
  });
  job.upload = upload;
  upload.start();
}

/** The last piece is answered with the file as the register has it. */
function takeRow(id: number, kind: MediaKind, body: string): void {
  if (!body.startsWith("{")) return;
  const { result } = JSON.parse(body) as { result?: Record<string, unknown> };
  if (!result) return;
  const file = fileOf(kind, result);
  patch(id, { path: file.path });
  arrived.value = [...arrived.value, file];
}

function answerOf(error: tus.DetailedError | Error): [number, string, string] {
  const response = "originalResponse" in error ? error.originalResponse : null;
  if (!response) return [0, "", ""];
  try {
    const fields = JSON.parse(response.getBody()) as { code?: string | number; detail?: string };
    return [response.getStatus(), String(fields.code ?? ""), fields.detail ?? ""];
  } catch {
    return [response.getStatus(), "", ""];
  }
}

function isLine(error: tus.DetailedError | Error): boolean {
  const [status, code] = answerOf(error);
  return faultOf(status, code) === "line";
}

function failed(id: number, error: tus.DetailedError): void {
  const [status, code, detail] = answerOf(error);
  const states = { taken: "taken", refused: "refused", line: "failed" } as const;
  settle(id, states[faultOf(status, code)], { reason: detail });
}

/** Holds it; what has arrived stays there. */
export function pause(id: number): void {
  void running.get(id)?.upload?.abort();
  settle(id, "paused");
}

/** Goes on where it stopped. */
export function resume(id: number): void {
  const job = running.get(id);
  if (!job) return;
  if (!job.upload?.url) {
    settle(id, "waiting");
    return;
  }
  patch(id, { state: "running", reason: "" });
  job.upload.start();
}

export function skip(id: number): void {
  void running
    .get(id)
    ?.upload?.abort(true)
    .catch(() => undefined);
  running.delete(id);
  settle(id, "skipped");
}

/** The name is taken: in its place, or beside it under another one. */
export function replaceTaken(id: number): void {
  const job = running.get(id);
  if (!job) return;
  job.replace = true;
  settle(id, "waiting", { sent: 0 });
}

export function keepBoth(id: number, taken: ReadonlySet<string>): void {
  const job = running.get(id);
  if (!job) return;
  job.name = freeName(job.name, taken);
  settle(id, "waiting", { name: job.name, sent: 0 });
}

/** Takes what has ended off the list. */
export function clearEnded(): void {
  uploads.value = uploads.value.filter(({ state }) => !["done", "skipped", "refused"].includes(state));
  arrived.value = [];
}

export const progress = () => progressOf(uploads.value);
export const targetOf = (id: number): Target | undefined => running.get(id)?.target;
