import { call } from "../api";
import { connection } from "../api/connection";
import { isProblem } from "../api/problem";
import * as local from "./draft-store";
import { tab } from "./tabs";
import { keeping } from "./tvx-foot";
import { workplace } from "./workplace";

/** Whose body a text is. */
export interface DraftPlace {
  pageId: number;
  bodyId: number;
  site: string;
  lang: string;
  nodeId: string;
  title: string;
}

/** A text that isn't saved. */
export interface Draft extends DraftPlace {
  html: string;
  base: string;
  moment: string;
  /** Where it was found: in this browser, or at the server. */
  where: "here" | "server";
}

const hereAfter = 250;
const thereAfter = 2000;
const triesAgainAfter = 5000;

const me = () => workplace.value.login?.loginId ?? 0;

/** Whether the server will never take it, so that trying again is of no use. */
const isFinal = (error: unknown) => isProblem(error) && !error.offline && error.status < 500 && error.status !== 429;

/**
 * Keeps what is typed into a body: within 250 ms in this browser, and after a pause of 2 s at the server. Its user calls
 * `typed` with each change and `drop` when the text is saved or given up.
 */
export class DraftKeeper {
  private hereTimer: ReturnType<typeof setTimeout> | undefined;
  private thereTimer: ReturnType<typeof setTimeout> | undefined;
  private read: (() => string) | undefined;
  private sending: Promise<unknown> = Promise.resolve();
  private dropped = false;
  private waits = false;
  private sent: string | undefined;
  /** What the server has taken: what another tab made of it since isn't to be followed by it once more. */
  private taken: string | undefined;
  private readonly onHide = () => this.hide();

  constructor(
    private readonly place: DraftPlace,
    private readonly base: string,
    /** What was kept of this body when it was opened: saving it settles these as well. */
    private readonly before: Promise<local.LocalDraft[]> = Promise.resolve([]),
  ) {
    window.addEventListener("pagehide", this.onHide);
    document.addEventListener("visibilitychange", this.onHide);
  }

  get key(): string {
    return `${me()}.${this.place.pageId}.${this.place.bodyId}.${tab}`;
  }

  /** Takes note of a change; the text itself is read when it is kept. */
  typed(read: () => string): void {
    this.dropped = false;
    this.read = read;
    this.hereTimer ??= setTimeout(() => void this.keepHere(), hereAfter);
    clearTimeout(this.thereTimer);
    this.thereTimer = setTimeout(() => void this.keepThere(), thereAfter);
  }

  /** Keeps it at both places now. */
  async flush(): Promise<void> {
    await this.keepHere();
    clearTimeout(this.thereTimer);
    await this.keepThere();
  }

  /** It is saved, or isn't wanted: forgets it everywhere. */
  async drop(): Promise<void> {
    this.dropped = true;
    this.read = undefined;
    this.taken = undefined;
    this.clear();
    await this.sending.catch(() => {});
    const { pageId, bodyId } = this.place;
    const before = await this.before.catch(() => []);
    await Promise.all([
      local.remove(this.key).catch(() => {}),
      ...before.map((draft) => local.removeAsItWas(draft).catch(() => {})),
      dropThere(pageId, bodyId),
    ]);
  }

  /** Another tab goes on with it: what is kept here is its now. */
  async handOver(): Promise<void> {
    await this.keepHere();
    this.clear();
    this.read = undefined;
    await this.sending.catch(() => {});
  }

  /** No more is typed here; what is kept stays kept. */
  close(): void {
    if (this.read && !this.dropped) void this.flush();
    window.removeEventListener("pagehide", this.onHide);
    document.removeEventListener("visibilitychange", this.onHide);
  }

  private clear(): void {
    clearTimeout(this.hereTimer);
    clearTimeout(this.thereTimer);
    this.hereTimer = undefined;
  }

  private draft(): local.LocalDraft | null {
    if (!this.read || this.dropped) return null;
    return {
      ...this.place,
      key: this.key,
      loginId: me(),
      tab,
      html: this.read(),
      base: this.base,
      moment: new Date().toISOString(),
      sent: this.sent,
    };
  }

  private async keepHere(): Promise<void> {
    clearTimeout(this.hereTimer);
    this.hereTimer = undefined;
    const draft = this.draft();
    if (!draft) return;
    await local.put(draft).catch(() => local.putNow(draft));
    if (this.dropped) await local.remove(draft.key);
  }

  private hide(): void {
    const draft = document.hidden || !document.hasFocus() ? this.draft() : null;
    if (draft) local.putNow(draft);
  }

  private async keepThere(): Promise<void> {
    const draft = this.draft();
    if (!draft) return;
    if (connection.state !== "online") return this.tryAgain();
    const { pageId, bodyId, html, base } = draft;
    if (html === this.taken) return;
    this.sent = html;
    const sent = call("desk.saveDraft", { pageIdent: String(pageId), bodyId, html, base }, { background: true });
    this.sending = sent;
    try {
      await sent;
      this.taken = html;
      if (!this.dropped) keeping.value = { state: "kept", at: new Date() };
    } catch (error) {
      if (!isFinal(error)) this.tryAgain();
    }
  }

  private tryAgain(): void {
    clearTimeout(this.thereTimer);
    if (connection.state === "online") this.thereTimer = setTimeout(() => void this.keepThere(), triesAgainAfter);
    else void this.keepWhenOnline();
  }

  /** Once, however much is typed until then. */
  private async keepWhenOnline(): Promise<void> {
    if (this.waits) return;
    this.waits = true;
    await connection.untilOnline();
    this.waits = false;
    await this.keepThere();
  }
}

interface ServerDraft {
  pageId: number;
  siteId: string;
  lang: string;
  nodeId: string;
  title: string;
  bodyId: number;
  html: string;
  base: string;
  moment: string;
}

async function fromServer(pageIdent: string): Promise<Draft[]> {
  const rows = (await call("desk.getDrafts", { pageIdent })) as ServerDraft[];
  return rows.map(({ siteId, ...row }) => ({ ...row, site: siteId, where: "server" as const }));
}

async function fromHere(pageId: number): Promise<(Draft & local.LocalDraft)[]> {
  const drafts = await local.all(me());
  return drafts
    .filter((draft) => !pageId || draft.pageId === pageId)
    .map((draft) => ({ ...draft, where: "here" as const }));
}

const place = ({ pageId, bodyId }: Draft, html: string) => `${pageId}.${bodyId}.${html}`;

/**
 * What isn't saved of a page, or of all pages; the same text at both places counts once. What was sent from here and
 * went on here is older, whatever the clock of the server says.
 */
export async function draftsOf(pageId = 0): Promise<Draft[]> {
  const [here, there] = await Promise.all([
    fromHere(pageId).catch(() => []),
    fromServer(pageId ? String(pageId) : "").catch(() => []),
  ]);
  const known = new Set(here.flatMap((draft) => [place(draft, draft.html), place(draft, draft.sent ?? draft.html)]));
  return [...here, ...there.filter((draft) => !known.has(place(draft, draft.html)))];
}

/** What this browser keeps of a body. */
export async function keptOf(pageId: number, bodyId: number): Promise<local.LocalDraft[]> {
  const mine = await local.all(me()).catch(() => []);
  return mine.filter((draft) => draft.pageId === pageId && draft.bodyId === bodyId);
}

async function dropThere(pageId: number, bodyId: number): Promise<void> {
  await call("desk.dropDraft", { pageIdent: String(pageId), bodyId }, { background: true }).catch(() => {});
}

/** Forgets what isn't saved of a body, at both places. */
export async function dropDraft(pageId: number, bodyId: number): Promise<void> {
  const kept = await keptOf(pageId, bodyId);
  await Promise.all([...kept.map(({ key }) => local.remove(key)), dropThere(pageId, bodyId)]);
}
