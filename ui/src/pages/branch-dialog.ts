/** Publishing a branch: what goes, what stays and why, before anything does. */

import { html, nothing, type TemplateResult } from "lit";
import { call } from "../api";
import { icon } from "../kit/icon";
import { type DialogAction, dialog, type TvxDialog } from "../kit/tvx-dialog";
import { toast } from "../kit/tvx-toast";
import { L, plural, t } from "../labels";
import type { PageFacts } from "./data";
import type { PageState } from "./model/status";
import { allChanged } from "./pages-changed";
import { STATE_ICONS, stateWord, titleOr } from "./words";
import "./dialogs.css";

export interface BranchRow {
  readonly pageId: number;
  readonly nodeId: string;
  readonly title: string;
  readonly state: PageState;
  readonly holder: string;
  readonly goes: boolean;
  readonly reason: "" | "held" | "notApproved" | "parentNotLive" | "unchanged" | "noRight";
}

export const readBranch = async (pageIdent: string): Promise<BranchRow[]> =>
  (await call("desk.getBranch", { pageIdent })) as BranchRow[];

export function reasonText(row: BranchRow): string {
  switch (row.reason) {
    case "held":
      return t(L.reasonHeld, { name: row.holder });
    case "notApproved":
      return t(L.reasonNotApproved);
    case "parentNotLive":
      return t(L.reasonParentNotLive);
    case "noRight":
      return t(L.reasonNoRight);
    case "unchanged":
      return t(L.reasonUnchanged);
    default:
      return "";
  }
}

class BranchQuestion {
  private rows: readonly BranchRow[] | undefined;
  private approving = false;
  private box: TvxDialog | undefined;

  constructor(private readonly page: PageFacts) {}

  async open(): Promise<void> {
    void this.load();
    await dialog({
      title: t(L.branchTitle, { title: titleOr(this.page.title) }),
      body: (box) => {
        this.box = box;
        return this.body();
      },
      actions: () => this.actions(),
    });
  }

  private async load(): Promise<void> {
    try {
      this.rows = await readBranch(String(this.page.pageId));
    } catch (error) {
      if (this.box) this.box.fault = error instanceof Error ? error.message : String(error);
    }
    this.box?.requestUpdate();
  }

  private get going(): readonly BranchRow[] {
    return this.rows?.filter((row) => row.goes) ?? [];
  }

  private get unapproved(): readonly BranchRow[] {
    return (
      this.rows?.filter((row) => row.reason === "notApproved" && (row.state === "changed" || row.state === "marked")) ??
      []
    );
  }

  private get count(): number {
    return this.going.length + (this.approving ? this.unapproved.length : 0);
  }

  private body(): TemplateResult {
    if (!this.rows) return html`<p class="soft" aria-busy="true">...</p>`;
    const staying = this.rows.filter((row) => !row.goes && row.reason !== "unchanged");
    const unchanged = this.rows.filter((row) => row.reason === "unchanged").length;
    return html`
      ${this.going.length ? this.list(plural(this.going.length, L.branchGoesOne, L.branchGoesMany), this.going) : html`<p>${t(L.branchNothing)}</p>`}
      ${staying.length ? this.list(plural(staying.length, L.branchStaysOne, L.branchStaysMany), staying) : nothing}
      ${unchanged ? html`<p class="soft">${plural(unchanged, L.branchUnchangedOne, L.branchUnchangedMany)}</p>` : nothing}
      ${this.unapproved.length && this.page.rights.approve ? this.approveBox() : nothing}
    `;
  }

  private approveBox(): TemplateResult {
    return html`<label class="check"><input type="checkbox" .checked=${this.approving} @change=${(event: Event) => {
      this.approving = (event.target as HTMLInputElement).checked;
      this.box?.requestUpdate();
    }} /><span>${plural(this.unapproved.length, L.approveFirstOne, L.approveFirstMany)}</span></label>`;
  }

  private list(label: string, rows: readonly BranchRow[]): TemplateResult {
    return html`<section class="stack"><h3 class="dialog-part">${label}</h3>
      <ul class="pick-list" aria-label=${label} tabindex="0">${rows.map(
        (row) =>
          html`<li>${icon(STATE_ICONS[row.state] ?? "file", stateWord(row.state))}<span class="cut">${titleOr(row.title)}</span>
            <span class="soft note">${row.goes && row.state === "marked" ? t(L.branchMark) : reasonText(row)}</span></li>`,
      )}</ul></section>`;
  }

  private actions(): DialogAction[] {
    const { count } = this;
    return [
      { name: "cancel", label: t(L.notNow) },
      {
        name: "go",
        label: count ? plural(count, L.publishOne, L.publishMany) : t(L.publish),
        kind: "primary",
        disabled: count === 0 ? t(L.branchNothing) : "",
        run: () => this.go(),
      },
    ];
  }

  private async go(): Promise<boolean> {
    const pageIdent = String(this.page.pageId);
    const before = this.rows ?? [];
    if (this.approving)
      await call("cManager.approvePages", { pageList: this.unapproved.map((row) => row.pageId).join(",") });
    await call("cManager.publishPageCascading", { pageIdent });
    allChanged();
    const after = await readBranch(pageIdent).catch(() => [] as BranchRow[]);
    const wanted = before.filter((row) => row.goes || (this.approving && this.unapproved.includes(row)));
    const stayed = wanted.filter((row) => after.some((now) => now.pageId === row.pageId && now.state !== "live"));
    toast(plural(wanted.length - stayed.length, L.branchDoneOne, L.branchDoneMany));
    if (stayed.length === 0) return true;
    this.rows = after;
    this.approving = false;
    return false;
  }
}

export const branchDialog = (page: PageFacts): Promise<void> => new BranchQuestion(page).open();
