// One body between its first key and its saving.
import { Batch, call, type Expect, isProblem, type Problem } from "../api";
import { connection } from "../api/connection";
import { Store } from "../kit/store";
import { DraftKeeper, keptOf } from "../shell/drafts";
import { doing } from "../shell/presence";
import { keeping } from "../shell/tvx-foot";
import { currentPage, pagesChanged } from "../shell/workplace";
import { stateOf } from "./drafts";

/** What is edited, in whichever way. */
export interface Edited {
  /** Another one after each change. */
  readonly version: unknown;
  /** As it stands now, made quickly. */
  readonly draft: string;
  /** As it is to be stored. */
  readonly text: string;
}

export interface PageName {
  pageId: number;
  nodeId: string;
}

export type Trouble =
  | { kind: "refused"; text: string; problem: Problem }
  /** Somebody else has saved another text since. */
  | { kind: "changed"; theirs: string }
  | { kind: "failed"; text: string };

const body = (page: PageName, bodyId: number) => ({
  pageIdent: String(page.pageId),
  bodyId,
  bodyType: 1,
  feedId: 0,
  mode: "D",
});

export const loadBody = (page: PageName, bodyId: number): Promise<string> =>
  call("cManager.getBody", body(page, bodyId));

let telling = false;

/** Says that a page is another by what the frame has done itself, and shows already. */
export function tellChange({ pageId, nodeId }: PageName): void {
  telling = true;
  pagesChanged({ pageIds: [pageId], nodeIds: [nodeId] });
  telling = false;
}

export const isOwnChange = () => telling;

const typingFor = 5000;
const waitsForSaving = 1000;
let typingTimer: ReturnType<typeof setTimeout> | undefined;

function typing(): void {
  doing.value = "typing";
  clearTimeout(typingTimer);
  typingTimer = setTimeout(() => {
    doing.value = "looking";
  }, typingFor);
}

export class BodySession {
  readonly trouble = new Store<Trouble | null>(null);
  /** Whether something was typed that isn't saved. */
  readonly unsaved = new Store(false);
  private savedVersion: unknown;
  private taken: Promise<boolean> | null = null;
  private saving: Promise<boolean> | null = null;
  private waits = false;
  private closed = false;
  private keeper: DraftKeeper;
  private edited!: Edited;

  constructor(
    readonly page: PageName,
    readonly bodyId: number,
    /** The stored text that this starts from, */
    public source: string,
    /** and the name of its state. */
    private base: string,
    private readonly saved: () => void = () => {},
  ) {
    this.keeper = this.newKeeper(keptOf(page.pageId, bodyId));
  }

  /** A draft names the state that it started from: each has a keeper of its own. */
  private newKeeper(before?: ReturnType<typeof keptOf>): DraftKeeper {
    const { pageId, nodeId } = this.page;
    const [site = "", lang = ""] = nodeId.split(".");
    const title = currentPage.value?.title ?? nodeId;
    return new DraftKeeper({ pageId, bodyId: this.bodyId, site, lang, nodeId, title }, this.base, before);
  }

  /** Says what is edited. A draft that was taken up counts as changed from the start. */
  edit(edited: Edited, fromDraft = false): void {
    this.edited = edited;
    this.savedVersion = fromDraft ? null : edited.version;
    this.unsaved.value = fromDraft;
    if (!fromDraft) return;
    this.keeper.typed(() => edited.draft);
    void this.take();
  }

  get dirty(): boolean {
    return this.edited.version !== this.savedVersion;
  }

  changed(): void {
    this.unsaved.value = true;
    if (keeping.value.state === "saved") keeping.value = { state: "", at: null };
    typing();
    this.keeper.typed(() => this.edited.draft);
    void this.take();
  }

  keepNow(): void {
    if (this.dirty) void this.keeper.flush();
  }

  /** The first key takes the page. */
  private take(): Promise<boolean> {
    this.taken ??= connection.untilOnline().then(() => this.checkOut());
    return this.taken;
  }

  private async checkOut(): Promise<boolean> {
    try {
      await call("cManager.checkOut", { pageIdent: String(this.page.pageId) });
      this.told();
      return true;
    } catch (error) {
      this.fail(error);
      // Later it may be free, or there may be a line again.
      this.taken = null;
      if (isProblem(error) && error.offline) void this.take();
      return false;
    }
  }

  private told(): void {
    tellChange(this.page);
  }

  private fail(error: unknown): void {
    if (isProblem(error) && error.status === 409)
      this.trouble.value = { kind: "refused", text: error.message, problem: error };
    else if (!(isProblem(error) && error.offline))
      this.trouble.value = { kind: "failed", text: error instanceof Error ? error.message : String(error) };
  }

  /** Saves what was typed, if anything was; false when that couldn't be done. The text is kept either way. */
  async save(): Promise<boolean> {
    while (this.saving) await this.saving;
    if (!this.dirty) return true;
    this.saving = this.store().finally(() => {
      this.saving = null;
    });
    return this.saving;
  }

  private get expected(): Expect {
    return this.base ? { sha256: this.base } : { is: this.source };
  }

  private async store(): Promise<boolean> {
    const { version, text } = this.edited;
    if (text === this.source) return this.stored(version, text);
    const work = new Batch();
    work.do("cManager.getBody", body(this.page, this.bodyId), { expect: this.expected });
    work.do("cManager.saveBody", { pageIdent: String(this.page.pageId), bodyId: this.bodyId, bodyContent: text });
    const now = work.do("cManager.getBody", body(this.page, this.bodyId));
    try {
      await work.run();
    } catch (error) {
      if (isProblem(error) && error.offline) void this.saveWhenOnline();
      return this.notStored(error, text);
    }
    await this.stored(version, String(now.value));
    this.told();
    return true;
  }

  /** Who wanted it saved while there was no line needn't ask again. */
  private async saveWhenOnline(): Promise<void> {
    if (this.waits) return;
    this.waits = true;
    await connection.untilOnline();
    this.waits = false;
    if (!this.closed) await this.save();
  }

  private async notStored(error: unknown, text: string): Promise<boolean> {
    if (!isProblem(error) || !error.changed) {
      this.fail(error);
      return false;
    }
    const theirs = await loadBody(this.page, this.bodyId);
    // It got there, and only the answer was lost.
    if (theirs === text) return this.stored(this.edited.version, theirs);
    this.trouble.value = { kind: "changed", theirs };
    return false;
  }

  private async stored(version: unknown, source: string): Promise<boolean> {
    this.savedVersion = version;
    this.source = source;
    this.base = await stateOf(source);
    this.trouble.value = null;
    this.unsaved.value = this.dirty;
    const { keeper } = this;
    this.keeper = this.newKeeper();
    await keeper.drop();
    keeper.close();
    if (this.dirty) this.keeper.typed(() => this.edited.draft);
    else keeping.value = { state: "saved", at: new Date() };
    this.saved();
    return true;
  }

  /** Mine is to stand: from now on it starts from theirs. */
  async keepMine(theirs: string): Promise<boolean> {
    this.source = theirs;
    this.base = await stateOf(theirs);
    this.trouble.value = null;
    return this.save();
  }

  /** Theirs is to stand. */
  async takeTheirs(theirs: string): Promise<void> {
    await this.stored(this.edited.version, theirs);
  }

  forget(): Promise<void> {
    return this.keeper.drop();
  }

  /** Another tab goes on with it: waits for what is on its way, and leaves the text among the drafts. */
  async handOver(): Promise<void> {
    const patience = new Promise((resolve) => setTimeout(resolve, waitsForSaving));
    await Promise.race([this.saving, patience]);
    await Promise.race([this.dirty ? this.keeper.handOver() : null, patience]);
  }

  close(): void {
    this.closed = true;
    this.keeper.close();
    clearTimeout(typingTimer);
    if (doing.value === "typing") doing.value = "looking";
  }
}
