// What was typed and isn't saved yet: at once in this browser, after a pause at the server.
import { call, sha256 } from "../api";
import { workplace } from "../shell/workplace";

export interface Draft {
  bodyId: number;
  html: string;
  /** The state of the text that it started from. */
  base: string;
  moment: Date;
}

interface KeptDraft extends Draft {
  key: string;
  owner: string;
  tab: string;
}

const storeName = "drafts";
let opening: Promise<IDBDatabase> | undefined;

function answerOf<T>(request: IDBRequest<T>): Promise<T> {
  return new Promise((resolve, reject) => {
    request.onsuccess = () => resolve(request.result);
    request.onerror = () => reject(request.error);
  });
}

function database(): Promise<IDBDatabase> {
  const request = indexedDB.open("torvex", 1);
  request.onupgradeneeded = () => request.result.createObjectStore(storeName, { keyPath: "key" });
  return answerOf(request);
}

async function store(mode: IDBTransactionMode): Promise<IDBObjectStore> {
  opening ??= database();
  return (await opening).transaction(storeName, mode).objectStore(storeName);
}

/** Each tab keeps its own: two of one author must not write over each other. */
function tabName(): string {
  const known = sessionStorage.getItem("torvex.tab");
  const name = known ?? crypto.getRandomValues(new Uint32Array(2)).join("-");
  sessionStorage.setItem("torvex.tab", name);
  return name;
}

const lockName = (tab: string) => `torvex-tab-${tab}`;

/** Holds a lock as long as this tab lives, by which others know that its drafts are in use. */
let held = false;
function holdTab(): void {
  if (held || !navigator.locks) return;
  held = true;
  void navigator.locks.request(lockName(tabName()), () => new Promise(() => {}));
}

async function livingTabs(): Promise<Set<string>> {
  const { held: locks = [] } = (await navigator.locks?.query()) ?? {};
  return new Set(locks.map(({ name }) => name ?? ""));
}

const owner = (pageId: number) => `${workplace.value.login?.loginId ?? 0}/${pageId}`;
const keyOf = (pageId: number, bodyId: number) => `${owner(pageId)}/${bodyId}/${tabName()}`;

async function keepHere(pageId: number, draft: Draft): Promise<void> {
  holdTab();
  const place = await store("readwrite");
  await answerOf(place.put({ ...draft, key: keyOf(pageId, draft.bodyId), owner: owner(pageId), tab: tabName() }));
}

async function draftsHere(pageId: number): Promise<KeptDraft[]> {
  const all = (await answerOf((await store("readonly")).getAll())) as KeptDraft[];
  const living = await livingTabs();
  const foreign = (draft: KeptDraft) => draft.tab === tabName() || !living.has(lockName(draft.tab));
  return all.filter((draft) => draft.owner === owner(pageId) && foreign(draft));
}

async function dropHere(pageId: number, bodyId: number): Promise<void> {
  const place = await store("readwrite");
  const all = (await answerOf(place.getAll())) as KeptDraft[];
  const living = await livingTabs();
  for (const draft of all) {
    const gone = draft.tab === tabName() || !living.has(lockName(draft.tab));
    if (draft.owner === owner(pageId) && draft.bodyId === bodyId && gone) place.delete(draft.key);
  }
}

async function draftsThere(pageId: number): Promise<Draft[]> {
  const rows = await call("desk.getDrafts", { pageIdent: String(pageId) }, { background: true });
  return (rows as { bodyId: number; html: string; base: string; moment: string }[]).map((row) => ({
    ...row,
    moment: new Date(row.moment),
  }));
}

const none = <T>(): T[] => [];

/** What this login has typed on a page and not saved, the newest of each body. */
export async function draftsOf(pageId: number): Promise<Draft[]> {
  const all = [...(await draftsHere(pageId).catch(none<KeptDraft>)), ...(await draftsThere(pageId).catch(none<Draft>))];
  const newest = new Map<number, Draft>();
  for (const draft of all.sort((a, b) => a.moment.getTime() - b.moment.getTime())) newest.set(draft.bodyId, draft);
  return [...newest.values()];
}

export async function dropDraft(pageId: number, bodyId: number): Promise<void> {
  await dropHere(pageId, bodyId).catch(() => {});
  await call("desk.dropDraft", { pageIdent: String(pageId), bodyId }, { background: true }).catch(() => {});
}

/** How a state of a text is named; "" where the browser can't tell it. */
export const stateOf = (text: string): Promise<string> => (crypto.subtle ? sha256(text) : Promise.resolve(""));

const hereAfter = 250;
const thereAfter = 2000;

/** Keeps the drafts of one body while it is typed into. */
export class DraftKeeper {
  private hereTimer: ReturnType<typeof setTimeout> | undefined;
  private thereTimer: ReturnType<typeof setTimeout> | undefined;
  private ended = false;

  constructor(
    private readonly pageId: number,
    private readonly bodyId: number,
    private readonly read: () => { html: string; base: string },
    private readonly kept: (at: Date) => void,
  ) {}

  changed(): void {
    this.ended = false;
    this.hereTimer ??= setTimeout(() => void this.here(), hereAfter);
    clearTimeout(this.thereTimer);
    this.thereTimer = setTimeout(() => void this.there(), thereAfter);
  }

  /** At once, before the document goes. */
  async here(): Promise<void> {
    clearTimeout(this.hereTimer);
    this.hereTimer = undefined;
    if (this.ended) return;
    const moment = new Date();
    try {
      await keepHere(this.pageId, { bodyId: this.bodyId, ...this.read(), moment });
      this.kept(moment);
    } catch {
      await this.there();
    }
  }

  private async there(): Promise<void> {
    clearTimeout(this.thereTimer);
    if (this.ended) return;
    try {
      const { html, base } = this.read();
      await call(
        "desk.saveDraft",
        { pageIdent: String(this.pageId), bodyId: this.bodyId, html, base },
        { background: true },
      );
      this.kept(new Date());
    } catch {
      // The browser has it; the next pause tries again.
    }
  }

  /** What was typed is saved. */
  async end(): Promise<void> {
    this.stop();
    await dropDraft(this.pageId, this.bodyId);
  }

  stop(): void {
    this.ended = true;
    clearTimeout(this.hereTimer);
    clearTimeout(this.thereTimer);
    this.hereTimer = undefined;
  }
}
