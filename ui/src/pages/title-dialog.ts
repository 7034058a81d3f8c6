/** A page's title on its own, from the tree: the rest of its setup stays as it is. */

import { html, nothing, type TemplateResult } from "lit";
import type { Problem } from "../api";
import { type DialogAction, dialog, type TvxDialog } from "../kit/tvx-dialog";
import { type Toast, toast } from "../kit/tvx-toast";
import { L, t } from "../labels";
import { nextMove } from "./actions";
import type { PageFacts } from "./data";
import { fieldOfCode, saveWord, TITLE_LENGTH, titleBatch } from "./model/setup";
import { titleFrom } from "./model/workflow";
import { changed } from "./pages-changed";
import { refusalNotice } from "./refusal-notice";
import { runCalls } from "./run";
import { titleOr } from "./words";
import "./dialogs.css";

class TitleQuestion {
  private title: string;
  /** What the page was called when that was last seen. */
  private seen: string;
  private wrong = "";
  private stopped = "";
  private move: Toast["action"];
  private box: TvxDialog | undefined;

  constructor(
    private readonly page: PageFacts,
    typed = page.title,
  ) {
    this.title = typed;
    this.seen = page.title;
  }

  async open(): Promise<void> {
    await dialog({
      title: t(L.changeTitle),
      body: (box) => {
        this.box = box;
        return this.body();
      },
      actions: () => this.actions(),
    });
  }

  private body(): TemplateResult {
    const { wrong } = this;
    return html`
      ${refusalNotice(this.stopped, this.move, () => this.box?.close())}
      <div class="field"><label for="page-title">${t(L.title)}</label>
        <input id="page-title" class="input" autofocus autocomplete="off" .value=${this.title} aria-invalid=${wrong ? "true" : nothing}
          aria-describedby=${wrong ? "page-title-wrong" : nothing} @focus=${this.selectAll} @input=${this.typed} @keydown=${this.enter} />
        ${wrong ? html`<p class="note wrong" id="page-title-wrong">${wrong}</p>` : nothing}</div>
    `;
  }

  private readonly selectAll = (event: Event): void => (event.target as HTMLInputElement).select();

  private readonly typed = (event: Event): void => {
    this.title = (event.target as HTMLInputElement).value;
    this.wrong = "";
    this.box?.requestUpdate();
  };

  private readonly enter = (event: KeyboardEvent): void => {
    if (event.key !== "Enter" || event.isComposing || event.ctrlKey) return;
    event.preventDefault();
    this.box?.querySelector<HTMLButtonElement>(".dialog-foot .primary")?.click();
  };

  private actions(): DialogAction[] {
    const { approved, marked } = this.page.status;
    const labels = { save: L.save, saveWithdraws: L.saveWithdraws, saveUnmarks: L.saveUnmarks } as const;
    return [
      { name: "cancel", label: t(L.cancel) },
      { name: "go", label: t(labels[saveWord(approved, marked)]), kind: "primary", run: () => this.save() },
    ];
  }

  private async save(): Promise<boolean> {
    if (this.title.trim() === this.seen) return true;
    if ([...this.title.trim()].length > TITLE_LENGTH) return this.refuse(t(L.titleTooLong));
    const end = await runCalls(titleBatch(String(this.page.pageId), this.seen, this.title));
    if (end.problem) return this.refused(end.problem);
    toast(t(L.titleSaved));
    changed(this.page);
    return true;
  }

  private refused(problem: Problem): false {
    if (fieldOfCode(problem.code) === "pgTitle") return this.refuse(problem.message);
    this.stopped = problem.changed ? this.renamed(problem) : problem.message;
    this.move = nextMove(problem, this.page, () => new TitleQuestion(this.page, this.title).open());
    this.box?.requestUpdate();
    return false;
  }

  /** Saving once more puts mine on top of what somebody else has called it. */
  private renamed({ fields }: Problem): string {
    const now = (fields["now"] ?? {}) as { pgTitle?: unknown };
    this.seen = titleFrom(String(now.pgTitle ?? ""));
    return t(L.titleIsNow, { title: titleOr(this.seen) });
  }

  private refuse(text: string): false {
    this.wrong = text;
    this.box?.requestUpdate();
    this.box?.querySelector<HTMLElement>("#page-title")?.focus();
    return false;
  }
}

export const titleDialog = (page: PageFacts): Promise<void> => new TitleQuestion(page).open();
