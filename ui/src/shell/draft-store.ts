/** Texts that aren't saved yet, in this browser: they outlive the tab, the browser and the line. */
export interface LocalDraft {
  /** login, page, body and tab: two tabs never write over each other. */
  key: string;
  loginId: number;
  pageId: number;
  bodyId: number;
  tab: string;
  html: string;
  /** SHA-256 of the text that it began from. */
  base: string;
  site: string;
  lang: string;
  nodeId: string;
  title: string;
  moment: string;
  /** What was last sent to the server of it. */
  sent?: string;
}

const name = "torvex";
const table = "drafts";
const spare = "torvex.draft.";

let opened: Promise<IDBDatabase> | undefined;

function open(): Promise<IDBDatabase> {
  opened ??= new Promise((resolve, reject) => {
    const request = indexedDB.open(name, 1);
    request.onupgradeneeded = () => request.result.createObjectStore(table, { keyPath: "key" });
    request.onsuccess = () => resolve(request.result);
    request.onerror = () => reject(request.error);
  });
  return opened;
}

async function run<T>(mode: IDBTransactionMode, work: (store: IDBObjectStore) => IDBRequest<T>): Promise<T> {
  const db = await open();
  return new Promise((resolve, reject) => {
    // Strict: the plug may be pulled.
    const transaction = db.transaction(table, mode, { durability: "strict" });
    const request = work(transaction.objectStore(table));
    transaction.oncomplete = () => resolve(request.result);
    transaction.onerror = () => reject(transaction.error);
    transaction.onabort = () => reject(transaction.error);
  });
}

export async function put(draft: LocalDraft): Promise<void> {
  await run("readwrite", (store) => store.put(draft));
  localStorage.removeItem(spare + draft.key);
}

/** At once, for when the document is going: nothing else is finished then. */
export function putNow(draft: LocalDraft): void {
  try {
    localStorage.setItem(spare + draft.key, JSON.stringify(draft));
  } catch {
    // Too long for this place; the database has what was kept before.
  }
}

function spares(): LocalDraft[] {
  return Object.keys(localStorage)
    .filter((key) => key.startsWith(spare))
    .map((key) => JSON.parse(localStorage.getItem(key)!) as LocalDraft);
}

/** All of one login, the newest first; of one key the newest alone. */
export async function all(loginId: number): Promise<LocalDraft[]> {
  const kept = await run<LocalDraft[]>("readonly", (store) => store.getAll());
  const newest = new Map<string, LocalDraft>();
  for (const draft of [...kept, ...spares()]) {
    const other = newest.get(draft.key);
    if (draft.loginId === loginId && (!other || other.moment < draft.moment)) newest.set(draft.key, draft);
  }
  return [...newest.values()].sort((a, b) => (a.moment < b.moment ? 1 : -1));
}

export async function remove(key: string): Promise<void> {
  localStorage.removeItem(spare + key);
  await run("readwrite", (store) => store.delete(key));
}

/** Not when it has gone on since, at either place. */
export async function removeAsItWas({ key, moment }: LocalDraft): Promise<void> {
  const kept = await run<LocalDraft | undefined>("readonly", (store) => store.get(key));
  const now = [kept, ...spares().filter((spare) => spare.key === key)];
  if (now.every((draft) => !draft || draft.moment <= moment)) await remove(key);
}
