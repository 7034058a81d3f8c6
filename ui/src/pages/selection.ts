/** Work with several pages at once: approving and publishing, one by one, with progress, Stop and a reason for each that stays. */

import { html, type TemplateResult } from "lit";
import { isProblem } from "../api";
import { dialog, type TvxDialog } from "../kit/tvx-dialog";
import { toast } from "../kit/tvx-toast";
import { L, plural, t } from "../labels";
import type { BatchCall } from "./model/workflow";
import { allChanged } from "./pages-changed";
import { runCalls } from "./run";
import { titleOr } from "./words";
import "./dialogs.css";

export interface Chosen {
  readonly pageId: number;
  readonly nodeId: string;
  readonly title: string;
}

interface Stayed {
  readonly page: Chosen;
  readonly why: string;
}

const CALLS: Readonly<Record<"approve" | "publish", (pageIdent: string) => BatchCall>> = {
  approve: (pageIdent) => ({ on: "cManager", do: "approvePage", with: { pageIdent, state: 1 } }),
  publish: (pageIdent) => ({ on: "cManager", do: "publishPage", with: { pageIdent } }),
};

/** Parents go before their children. */
export const inNodeOrder = <Page extends Chosen>(pages: readonly Page[]): Page[] =>
  [...pages].sort((a, b) => a.nodeId.length - b.nodeId.length || a.nodeId.localeCompare(b.nodeId));

class Run {
  private done = 0;
  private stopped = false;
  private readonly stayed: Stayed[] = [];
  private box: TvxDialog | undefined;

  constructor(
    private readonly job: "approve" | "publish",
    private readonly pages: readonly Chosen[],
  ) {}

  async open(): Promise<void> {
    const closed = dialog({
      title: t(this.job === "approve" ? L.approve : L.publish),
      stays: true,
      body: (box) => {
        this.box = box;
        return this.body();
      },
      actions: () => [
        { name: "close", label: t(this.running ? L.stop : L.close), kind: "primary", run: () => this.stop() },
      ],
    });
    await this.all();
    if (this.stayed.length === 0) this.box?.close();
    else this.box?.requestUpdate();
    await closed;
  }

  private get running(): boolean {
    return !this.stopped && this.done < this.pages.length;
  }

  private stop(): boolean {
    if (!this.running) return true;
    this.stopped = true;
    return false;
  }

  private async all(): Promise<void> {
    for (const page of inNodeOrder(this.pages)) {
      if (this.stopped) break;
      await this.one(page);
      this.done += 1;
      this.box?.requestUpdate();
    }
    allChanged();
    toast(plural(this.done - this.stayed.length, L.workDoneOne, L.workDoneMany));
  }

  private async one(page: Chosen): Promise<void> {
    try {
      const { problem } = await runCalls([CALLS[this.job](String(page.pageId))]);
      if (problem) this.stayed.push({ page, why: problem.message });
    } catch (error) {
      this.stayed.push({ page, why: isProblem(error) ? error.message : String(error) });
    }
  }

  private body(): TemplateResult {
    const all = this.pages.length;
    return html`<div class="stack"><progress class="bar" max=${all} value=${this.done} aria-label=${t(L.progressOf, { done: this.done, all })}></progress>
        <p role="status">${t(L.progressOf, { done: this.done, all })}</p></div>
      ${
        this.stayed.length
          ? html`<section class="stack"><h3 class="dialog-part">${plural(this.stayed.length, L.workStayedOne, L.workStayedMany)}</h3>
            <ul class="pick-list">${this.stayed.map(({ page, why }) => html`<li><span class="cut">${titleOr(page.title)}</span><span class="soft note">${why}</span></li>`)}</ul></section>`
          : ""
      }`;
  }
}

export const workOn = (job: "approve" | "publish", pages: readonly Chosen[]): Promise<void> =>
  new Run(job, pages).open();

/** The bar over a list when something is selected. */
export function selectionBar(pages: readonly Chosen[], done: () => void): TemplateResult {
  const run = (job: "approve" | "publish") => () => void workOn(job, pages).then(done);
  return html`<div class="selection-bar" role="group" aria-label=${plural(pages.length, L.selectedOne, L.selectedMany)}>
    <span role="status">${plural(pages.length, L.selectedOne, L.selectedMany)}</span>
    <button class="button small" @click=${run("approve")}>${t(L.approve)}</button>
    <button class="button small" @click=${run("publish")}>${t(L.publish)}</button>
    <button class="button quiet small" @click=${done}>${t(L.cancel)}</button></div>`;
}
