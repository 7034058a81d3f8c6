import { call } from "../api";
import { connection } from "../api/connection";
import { whenIdle } from "../kit/idle";
import { Store } from "../kit/store";
import { place } from "./address";
import { workplace } from "./workplace";

export type Doing = "looking" | "typing" | "away";

/** Somebody else who is here. */
export interface Here {
  loginId: number;
  name: string;
  pageId: number;
  doing: Doing;
  since: string;
}

export interface Notice extends Here {
  text: string;
}

export const here = new Store<Here[]>([]);
/** Somebody asks for the page that this login holds. */
export const asked = new Store<Notice | null>(null);
/** The page that this login held is held by somebody else now. */
export const takenOver = new Store<Notice | null>(null);
export const counters = new Store<{ waiting: number }>({ waiting: 0 });
/** Typing is told by the editor. */
export const doing = new Store<Doing>("looking");

const every = 30_000;
const restsAfter = 10 * 60_000;
const restsHiddenAfter = 5 * 60_000;

let lastInput = Date.now();
let left = false;
let timer: ReturnType<typeof setTimeout> | undefined;

interface PulseRow extends Notice {
  kind: "here" | "asked" | "takenOver" | "count";
  number: number;
}

function take(rows: PulseRow[]): void {
  here.value = rows.filter(({ kind }) => kind === "here");
  asked.value = rows.find(({ kind }) => kind === "asked") ?? null;
  takenOver.value = rows.find(({ kind }) => kind === "takenOver") ?? null;
  const waiting = rows.filter(({ kind }) => kind === "count").reduce((sum, row) => sum + row.number, 0);
  if (waiting !== counters.value.waiting) counters.value = { waiting };
}

const pageHere = () => Number(place.value.params.get("pageId")) || 0;

/** Tells where I am and learns who else is. */
export async function pulse(): Promise<void> {
  clearTimeout(timer);
  timer = setTimeout(() => void pulse(), every);
  const { login, site, lang } = workplace.value;
  if (!login || !site || left || connection.state !== "online") return;
  const now = document.hidden ? "away" : doing.value;
  try {
    take(
      (await call(
        "desk.pulse",
        { site, lang, pageId: pageHere(), doing: now },
        { background: true, noLogin: true },
      )) as PulseRow[],
    );
  } catch {
    // The next one will tell.
  }
}

function rest(): void {
  const idle = Date.now() - lastInput;
  if (left || idle < (document.hidden ? restsHiddenAfter : restsAfter)) return;
  left = true;
  void call("desk.leave", {}, { background: true, noLogin: true }).catch(() => {});
}

function woken(): void {
  lastInput = Date.now();
  if (!left) return;
  left = false;
  void pulse();
}

function leaveForGood(): void {
  if (!workplace.value.login || left) return;
  // A beacon has no headers of ours: the token needs a request that outlives the document.
  void fetch("/torvex/api/desk/leave", {
    method: "POST",
    keepalive: true,
    headers: { "Content-Type": "application/json", "X-Torvex-Token": connection.token },
    body: "{}",
  }).catch(() => {});
}

export function startPresence(): void {
  for (const type of ["keydown", "pointerdown", "pointermove"])
    document.addEventListener(type, woken, { passive: true });
  document.addEventListener("visibilitychange", () => void pulse());
  window.addEventListener("pagehide", leaveForGood);
  window.addEventListener("pageshow", woken);
  setInterval(rest, every);
  place.watch(() => void pulse());
  workplace.watch(() => {
    if (!timer) void pulse();
  });
  whenIdle(pulse);
}
