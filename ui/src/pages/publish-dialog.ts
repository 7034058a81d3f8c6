/** The question before publishing: what changes for visitors, what keeps it from them, and how far it goes. */

import { html, nothing, type TemplateResult } from "lit";
import { call, isProblem } from "../api";
import { icon } from "../kit/icon";
import { type DialogAction, dialog, type TvxDialog } from "../kit/tvx-dialog";
import { type Toast, toast } from "../kit/tvx-toast";
import { L, plural, t } from "../labels";
import { todayAsDigits } from "../labels/moments";
import { nextMove, outcomeText, runSteps, subjectOf, tellOutcome } from "./actions";
import { whyNot } from "./commands";
import { loadPage, type PageFacts } from "./data";
import { type Difference, differenceRow } from "./differences";
import { imagesWithoutAlt } from "./model/changes";
import { type NextStep, nextStep } from "./model/next-step";
import { parentOf } from "./model/places";
import { type BatchCall, publishOutcome, stepAt, workflowBatch } from "./model/workflow";
import { changed } from "./pages-changed";
import { refusalNotice } from "./refusal-notice";
import { type BatchEnd, runCalls } from "./run";
import { dayText, titleOr } from "./words";
import "./dialogs.css";

interface ParentInWay {
  readonly page: PageFacts;
  readonly next: NextStep;
  /** Whether it can go with the page. */
  readonly goes: boolean;
}

class PublishQuestion {
  private differences: readonly Difference[] | undefined;
  /** Who may only approve or publish isn't told the differences. */
  private untold = false;
  private parent: ParentInWay | undefined;
  private deadLinks = 0;
  private readonly ended = new AbortController();
  private both = true;
  private stopped = "";
  /** What can be done about what stopped it. */
  private move: Toast["action"];
  private box: TvxDialog | undefined;

  constructor(
    private page: PageFacts,
    private next: NextStep,
  ) {}

  async open(): Promise<"done" | "compare" | ""> {
    void this.load();
    const answer = await dialog({
      title: t(this.next.goal === "approve" ? L.approveTitle : L.publishTitle, { title: titleOr(this.page.title) }),
      body: (box) => {
        this.box = box;
        return this.body();
      },
      actions: () => this.actions(),
    });
    this.ended.abort();
    return answer === "go" ? "done" : answer === "compare" ? "compare" : "";
  }

  private async load(): Promise<void> {
    const pageIdent = String(this.page.pageId);
    const [differences, parent] = await Promise.all([
      this.page.live
        ? (call("desk.compare", { pageIdent }) as Promise<Difference[]>).catch(() => undefined)
        : undefined,
      this.loadParent().catch(() => undefined),
    ]);
    this.differences = differences;
    this.untold = differences === undefined;
    this.parent = parent;
    this.box?.requestUpdate();
    // They are looked for in the whole website: nothing here waits for that.
    this.deadLinks = await this.countDeadLinks().catch(() => 0);
    this.box?.requestUpdate();
  }

  private async countDeadLinks(): Promise<number> {
    const { site, lang, pageId } = this.page;
    const rows = (await call("desk.getDeadLinks", { site, lang }, { background: true, signal: this.ended.signal })) as {
      pageId: number;
    }[];
    return rows.filter((row) => row.pageId === pageId).length;
  }

  private async loadParent(): Promise<ParentInWay | undefined> {
    const node = parentOf(this.page.nodeId);
    if (this.page.live || !node || !this.next.steps.includes("publish")) return undefined;
    const page = await loadPage(node);
    if (!page || page.live) return undefined;
    const next = nextStep(page.status, page.rights);
    const grandparent = parentOf(node);
    const reachable = !grandparent || (await call("cManager.isPage", { pageIdent: grandparent, mode: "L" }));
    return { page, next, goes: reachable && next.goal === "publish" };
  }

  private body(): TemplateResult {
    return html`
      ${refusalNotice(this.stopped, this.move, () => this.box?.close())}
      ${this.changes()}
      ${this.next.steps.includes("saveSetup") ? this.note(t(L.setupFirst)) : nothing}
      ${this.next.steps.includes("publish") ? this.obstacles() : nothing}
      ${this.checks()}
    `;
  }

  /** What a reader would stumble over; none of it forbids. */
  private checks(): TemplateResult {
    const bodies = this.differences?.filter((row) => row.part === "body") ?? [];
    const silent = bodies.reduce((sum, row) => sum + imagesWithoutAlt(row.design), 0);
    return html`
      ${this.deadLinks ? this.note(plural(this.deadLinks, L.deadLinksOne, L.deadLinksMany), true) : nothing}
      ${silent ? this.note(plural(silent, L.altMissingOne, L.altMissingMany), true) : nothing}
    `;
  }

  private changes(): TemplateResult {
    if (!this.page.live) return html`<p>${t(L.firstTime)}</p>`;
    if (this.untold) return html`<p>${t(L.publishPlain)}</p>`;
    if (!this.differences) return html`<p class="soft" aria-busy="true">${t(L.visitorsWillSee)} ...</p>`;
    if (this.differences.length === 0) return html`<p>${t(L.noDifference)}</p>`;
    return html`<section class="stack">
      <h3 class="dialog-part">${t(L.visitorsWillSee)}</h3>
      <dl class="changes">${this.differences.map(differenceRow)}</dl>
    </section>`;
  }

  private note(text: string, warn = false): TemplateResult {
    return html`<p class="notice ${warn ? "warn" : ""}">${icon(warn ? "triangle-alert" : "info")}<span>${text}</span></p>`;
  }

  private obstacles(): TemplateResult {
    const today = todayAsDigits();
    const { onlineFrom, onlineTo, live } = this.page;
    return html`
      ${this.parent ? this.parentChoice(this.parent) : nothing}
      ${onlineFrom > today ? this.note(t(L.datesFuture, { day: dayText(onlineFrom) })) : nothing}
      ${onlineTo !== "" && onlineTo < today ? this.note(t(L.datesPast, { day: dayText(onlineTo) }), true) : nothing}
      ${live && !live.online && onlineFrom <= today && (onlineTo === "" || onlineTo >= today) ? this.note(t(L.isOffNow)) : nothing}
    `;
  }

  private parentChoice(parent: ParentInWay): TemplateResult {
    const title = titleOr(parent.page.title);
    if (!parent.goes) {
      const why = parent.page.status.heldByOther ? t(L.parentHeld, { name: parent.page.holder }) : t(L.parentNoRight);
      return html`${this.note(t(L.parentNotLive, { title }), true)}<p>${why}</p>`;
    }
    const radio = (both: boolean, label: string): TemplateResult => html`<label class="check">
      <input type="radio" name="parent" .checked=${this.both === both} @change=${() => this.choose(both)} /><span>${label}</span>
    </label>`;
    return html`<fieldset class="stack">
      <legend class="notice warn">${icon("triangle-alert")}<span>${t(L.parentNotLive, { title })}</span></legend>
      ${radio(true, t(L.publishBoth))}${radio(false, t(L.leaveWaiting))}
    </fieldset>`;
  }

  private choose(both: boolean): void {
    this.both = both;
    this.box?.requestUpdate();
  }

  private actions(): DialogAction[] {
    const compare: DialogAction[] = this.differences?.length
      ? [{ name: "compare", label: t(L.viewCompare), kind: "quiet" }]
      : [];
    return [
      ...compare,
      { name: "cancel", label: t(L.notNow) },
      { name: "go", label: this.goLabel, kind: "primary", disabled: this.hindrance, run: () => this.go() },
    ];
  }

  private get waits(): boolean {
    return this.parent !== undefined && !(this.parent.goes && this.both);
  }

  private get goLabel(): string {
    if (this.next.goal === "approve" || this.waits) return t(L.approveOnly);
    return this.parent ? t(L.publishTwo) : t(L.publish);
  }

  /** A refusal may have left nothing to do. */
  private get hindrance(): string {
    return this.next.steps.length ? "" : whyNot(this.page, this.next);
  }

  private async go(): Promise<boolean> {
    const end = await this.run();
    changed(this.page, ...(this.parent ? [this.parent.page] : []));
    if (!end.problem) {
      this.tell(String(end.results.at(-1)));
      return true;
    }
    await this.explain(end);
    return false;
  }

  private run(): Promise<BatchEnd> {
    if (this.waits)
      return runSteps(
        this.page,
        this.next.steps.filter((step) => step !== "publish"),
      );
    const own = workflowBatch(subjectOf(this.page), this.next.steps);
    const parent = this.parent ? workflowBatch(subjectOf(this.parent.page), this.parent.next.steps) : [];
    return runCalls([...parent, ...own] as BatchCall[]);
  }

  private tell(answer: string): void {
    if (this.next.goal === "approve" || this.waits) toast(t(L.approvedDone));
    else if (this.parent) toast(`${outcomeText(this.page, answer)} ${plural(2, L.branchDoneOne, L.branchDoneMany)}`);
    else if (publishOutcome(answer, this.page.status.marked)) tellOutcome(this.page, answer);
    else toast(t(L.published));
  }

  /** Says where it stopped, and goes on from the state that the page has now. */
  private async explain(end: BatchEnd): Promise<void> {
    const problem = end.problem;
    if (!isProblem(problem)) return;
    if (problem.changed) this.stopped = t(L.changedMeanwhile);
    else this.stopped = t(L.stoppedAt, { why: this.whyAt(end, problem.message) });
    this.move = nextMove(problem, this.page, () => publishDialog(this.page));
    const page = await loadPage(String(this.page.pageId));
    if (page) {
      this.page = page;
      this.next = nextStep(page.status, page.rights);
    }
    await this.load();
  }

  private whyAt(end: BatchEnd, sentence: string): string {
    const step = this.parent ? undefined : stepAt(subjectOf(this.page), this.next.steps, end.at);
    const names = { checkIn: L.checkIn, saveSetup: L.saveSetupStep, approve: L.approve, publish: L.publish } as const;
    return step ? `${t(names[step])}: ${sentence}` : sentence;
  }
}

/** Asks, and does it; "compare" when the reader wants to look at the differences first. */
export const publishDialog = (
  page: PageFacts,
  next = nextStep(page.status, page.rights),
): Promise<"done" | "compare" | ""> => new PublishQuestion(page, next).open();
