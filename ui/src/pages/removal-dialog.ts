/** Publishing a mark: all that goes with a page, told before it goes; a large branch asks for its title. */

import { html, nothing, type TemplateResult } from "lit";
import { call, isProblem } from "../api";
import { icon } from "../kit/icon";
import { type DialogAction, dialog, type TvxDialog } from "../kit/tvx-dialog";
import { toast } from "../kit/tvx-toast";
import { L, type Label, plural, t } from "../labels";
import { go, pageAddress } from "../shell/address";
import { runSteps } from "./actions";
import { loadPage, type PageFacts } from "./data";
import { type NextStep, nextStep } from "./model/next-step";
import { parentOf } from "./model/places";
import { allChanged } from "./pages-changed";
import { titleOr, word } from "./words";
import "./dialogs.css";

type Kind = "page" | "held" | "notApproved" | "link" | "login" | "entry" | "exit" | "menu";

interface ImpactRow {
  readonly kind: Kind;
  readonly pageId: number;
  readonly nodeId: string;
  readonly title: string;
  readonly bodyId: number;
  readonly detail: string;
}

/** From so many pages on the title is typed. */
const TYPED_ABOVE = 10;

const GROUPS: readonly { kind: Kind; label: Label }[] = [
  { kind: "held", label: L.removalHeld },
  { kind: "notApproved", label: L.removalNotApproved },
  { kind: "link", label: L.removalLinks },
  { kind: "login", label: L.removalLogins },
  { kind: "entry", label: L.removalEntries },
  { kind: "exit", label: L.removalExits },
  { kind: "menu", label: L.removalMenus },
];

class RemovalQuestion {
  private rows: readonly ImpactRow[] | undefined;
  private typed = "";
  private stopped = "";
  /** What goes along couldn't be learned: then nothing is said about it, and the title is typed. */
  private unknown = "";
  private box: TvxDialog | undefined;

  constructor(
    private page: PageFacts,
    private next: NextStep,
  ) {}

  async open(): Promise<void> {
    void this.load();
    const answer = await dialog({
      title: t(L.removalTitle, { title: titleOr(this.page.title) }),
      wide: true,
      body: (box) => {
        this.box = box;
        return this.body();
      },
      actions: () => this.actions(),
    });
    if (answer === "go") await this.leave();
  }

  private async load(): Promise<void> {
    try {
      this.rows = (await call("desk.getImpact", { pageIdent: String(this.page.pageId) })) as ImpactRow[];
      this.unknown = "";
    } catch (error) {
      this.unknown = error instanceof Error ? error.message : String(error);
      this.rows = [];
    }
    this.box?.requestUpdate();
  }

  private of(kind: Kind): readonly ImpactRow[] {
    return this.rows?.filter((row) => row.kind === kind) ?? [];
  }

  private get isLarge(): boolean {
    return this.unknown !== "" || this.of("page").length > TYPED_ABOVE;
  }

  private body(): TemplateResult {
    if (!this.rows) return html`<p class="soft" aria-busy="true">...</p>`;
    const pages = this.of("page");
    if (this.unknown) return html`${this.warning(t(L.impactUnknown, { why: this.unknown }))}${this.title()}`;
    return html`
      ${this.stopped ? this.warning(this.stopped) : nothing}
      <p class="notice danger">${icon("trash-2")}<span>${plural(Math.max(1, pages.length), L.removalWhatOne, L.removalWhatMany)}</span></p>
      ${pages.length > 1 ? this.details(t(L.pages), pages, false) : nothing}
      ${this.of("link").length ? nothing : html`<p class="soft">${t(L.removalNoLinks)}</p>`}
      ${GROUPS.map(({ kind, label }) => (this.of(kind).length ? this.details(word(label), this.of(kind), kind === "link" || kind === "held") : nothing))}
      ${this.isLarge ? this.title() : nothing}
    `;
  }

  private warning(text: string): TemplateResult {
    return html`<div class="notice warn" role="alert">${icon("triangle-alert")}<span>${text}</span></div>`;
  }

  private details(label: string, rows: readonly ImpactRow[], open: boolean): TemplateResult {
    return html`<details class="dialog-details" ?open=${open}><summary>${label} <span class="count">${rows.length}</span></summary>
      <ul class="pick-list" aria-label=${label} tabindex="0">${rows.map(
        (row) =>
          html`<li><span class="cut">${row.pageId > 0 ? titleOr(row.title) : t(L.notForYou)}</span><span class="soft note">${row.detail}</span></li>`,
      )}</ul></details>`;
  }

  private title(): TemplateResult {
    return html`<div class="field"><label for="removal-title">${t(L.typeTitle, { title: titleOr(this.page.title) })}</label>
      <input id="removal-title" class="input" autocomplete="off" .value=${this.typed} @input=${(event: Event) => {
        this.typed = (event.target as HTMLInputElement).value;
        this.box?.requestUpdate();
      }} /></div>`;
  }

  private get mayGo(): boolean {
    return this.rows !== undefined && (!this.isLarge || this.typed.trim() === titleOr(this.page.title).trim());
  }

  private actions(): DialogAction[] {
    const waits = this.mayGo ? "" : t(L.typeTitle, { title: titleOr(this.page.title) });
    return [
      { name: "cancel", label: t(L.notNow) },
      {
        name: "go",
        label: t(this.next.goal === "remove" ? L.removeForGood : L.approve),
        kind: "danger",
        disabled: waits,
        run: () => this.go(),
      },
    ];
  }

  private async go(): Promise<boolean> {
    const end = await runSteps(this.page, this.next.steps);
    allChanged();
    if (!end.problem) {
      toast(t(L.removedDone));
      return true;
    }
    const problem = end.problem;
    this.stopped =
      isProblem(problem) && problem.changed ? t(L.changedMeanwhile) : t(L.stoppedAt, { why: problem.message });
    const page = await loadPage(String(this.page.pageId));
    if (page) {
      this.page = page;
      this.next = nextStep(page.status, page.rights);
    }
    await this.load();
    return false;
  }

  /** What stood in the centre is gone: its parent comes into its place. */
  private async leave(): Promise<void> {
    const parent = parentOf(this.page.nodeId);
    const shown = new URLSearchParams(location.search).get("pageId");
    if (shown !== String(this.page.pageId)) return;
    const pageId = parent ? await call("cManager.getPageId", { nodeId: parent }) : 0;
    await go(pageId > 0 ? pageAddress(pageId) : "/torvex/", { replace: true });
  }
}

export const removalDialog = (page: PageFacts, next: NextStep): Promise<void> => new RemovalQuestion(page, next).open();
