/** Copy to... and Move to...: a tree where impossible targets say why, and what the copy is made of. */

import { html, nothing, type TemplateResult } from "lit";
import { call } from "../api";
import { icon } from "../kit/icon";
import { type DialogAction, dialog, type TvxDialog } from "../kit/tvx-dialog";
import { L, type Label, t } from "../labels";
import { workplace } from "../shell/workplace";
import type { Child } from "./children";
import { copyPlace, movePlace } from "./commands";
import { loadPage, type PageFacts } from "./data";
import { isSystem, landsIn, losesLooks, type Refusal, refusesCopy, refusesMove, type Side } from "./model/places";
import "./page-picker";
import { failed } from "./actions";
import type { TvxPagePicker } from "./page-picker";
import { titleOr, word } from "./words";
import "./dialogs.css";

const SENTENCES: Readonly<Record<Refusal, Label>> = {
  itself: L.refusedItself,
  root: L.refusedRoot,
  system: L.refusedSystem,
  otherWebsite: L.refusedWebsite,
  noRight: L.refusedRight,
  full: L.refusedFull,
  hasSystemBranch: L.refusedBranch,
  rootHasNoNeighbours: L.refusedNeighbours,
  isThere: L.refusedThere,
};

export const refusalText = (refusal: Refusal): string => word(SENTENCES[refusal]);

class PlaceQuestion {
  private site: string;
  private lang: string;
  private scope = "";
  private target: Child | undefined;
  private side: Side = "into";
  private branch = true;
  private live = false;
  private box: TvxDialog | undefined;

  constructor(
    private readonly job: "copy" | "move",
    private readonly page: PageFacts,
  ) {
    this.site = page.site;
    this.lang = page.lang;
  }

  async open(): Promise<void> {
    void this.loadScope();
    await dialog({
      title: t(this.job === "copy" ? L.copyTitle : L.moveTitle, { title: titleOr(this.page.title) }),
      body: (box) => {
        this.box = box;
        return this.body();
      },
      actions: () => this.actions(),
    });
  }

  private async loadScope(): Promise<void> {
    const task = this.job === "copy" ? "edit" : "move";
    this.scope = await call("cManager.getLoginScope", { site: this.site, lang: this.lang, task });
    this.box?.requestUpdate();
  }

  private get picker(): TvxPagePicker | null {
    return this.box?.querySelector("tvx-page-picker") ?? null;
  }

  private refusal(to: Child, side: Side): Refusal | undefined {
    const parent = landsIn(to.nodeId, side);
    const below = this.picker?.below(parent);
    const question = { from: this.page.nodeId, to: to.nodeId, side, scope: this.scope };
    const counted = below
      ? { ...question, children: below.filter((each) => !each.nodeId.endsWith(".99")).length }
      : question;
    if (this.job === "move") return refusesMove(counted);
    return refusesCopy({ ...counted, hasSystemBranch: below?.some((each) => each.nodeId.endsWith(".99")) ?? false });
  }

  /** A page is grey only when no side of it takes the page. */
  private readonly refuses = (to: Child): string => {
    if (this.scope === "") return "";
    const first = this.refusal(to, "into");
    if (!first) return "";
    return (["before", "after"] as const).some((side) => !this.refusal(to, side)) ? "" : refusalText(first);
  };

  private body(): TemplateResult {
    const other = losesLooks(this.page.nodeId, `${this.site}.${this.lang}`);
    return html`
      ${this.job === "copy" ? this.websites() : nothing}
      <div class="field"><span class="label" id="place-tree">${t(L.placeTree)}</span>
        <tvx-page-picker .site=${this.site} .language=${this.lang} .label=${t(L.placeTree)} .shownFirst=${this.site === this.page.site && this.lang === this.page.lang ? this.page.nodeId : ""}
          .chosen=${this.target?.nodeId ?? ""} .refuses=${this.refuses} @tvx-choose=${this.chose}></tvx-page-picker></div>
      ${this.target ? this.sides(this.target) : nothing}
      ${this.job === "copy" ? this.copyChoices() : nothing}
      ${this.job === "copy" && other ? html`<p class="notice warn">${icon("triangle-alert")}<span>${t(L.losesLooks)}</span></p>` : nothing}
    `;
  }

  private websites(): TemplateResult {
    const { websites } = workplace.value;
    return html`<div class="field"><label for="place-website">${t(L.website)}</label>
      <select id="place-website" class="select" @change=${this.otherWebsite}>
        ${websites.map((each) => html`<option value="${each.site}.${each.lang}" ?selected=${each.site === this.site && each.lang === this.lang}>${each.siteName} · ${each.langName}</option>`)}
      </select></div>`;
  }

  private readonly otherWebsite = (event: Event): void => {
    const [site = "", lang = ""] = (event.target as HTMLSelectElement).value.split(".");
    this.site = site;
    this.lang = lang;
    this.scope = "";
    this.target = undefined;
    void this.loadScope();
    this.box?.requestUpdate();
  };

  private readonly chose = (event: CustomEvent<Child>): void => {
    this.target = event.detail;
    if (this.refusal(event.detail, this.side))
      this.side = (["into", "before", "after"] as const).find((side) => !this.refusal(event.detail, side)) ?? "into";
    this.box?.requestUpdate();
  };

  private sides(target: Child): TemplateResult {
    const labels: readonly { side: Side; label: Label }[] = [
      { side: "into", label: L.sideInto },
      { side: "before", label: L.sideBefore },
      { side: "after", label: L.sideAfter },
    ];
    return html`<div class="field"><span class="label">${t(L.placeSide)}</span>
      <div class="choice place-sides" role="radiogroup" aria-label=${t(L.placeSide)}>${labels.map(({ side, label }) => {
        const why = this.refusal(target, side);
        return html`<button type="button" role="radio" aria-checked=${side === this.side} ?disabled=${why !== undefined} title=${why ? refusalText(why) : nothing}
          @click=${() => {
            this.side = side;
            this.box?.requestUpdate();
          }}>${word(label)}</button>`;
      })}</div></div>`;
  }

  private copyChoices(): TemplateResult {
    const box = (
      checked: boolean,
      label: string,
      set: (on: boolean) => void,
    ): TemplateResult => html`<label class="check">
      <input type="checkbox" .checked=${checked} @change=${(event: Event) => {
        set((event.target as HTMLInputElement).checked);
        this.box?.requestUpdate();
      }} /><span>${label}</span></label>`;
    return html`<div class="stack">
      ${box(this.branch, t(L.withBranch), (on) => {
        this.branch = on;
      })}
      ${
        this.page.live && !isSystem(this.page.nodeId)
          ? box(this.live, t(L.fromLive), (on) => {
              this.live = on;
            })
          : nothing
      }
      ${this.branch && !this.live ? html`<p class="note">${t(L.marksStay)}</p>` : nothing}
    </div>`;
  }

  private actions(): DialogAction[] {
    const refusal = this.target && this.refusal(this.target, this.side);
    const disabled = this.target ? (refusal ? refusalText(refusal) : "") : t(L.chooseTarget);
    return [
      { name: "cancel", label: t(L.cancel) },
      {
        name: "go",
        label: t(this.job === "copy" ? L.copyHere : L.moveHere),
        kind: "primary",
        disabled,
        run: () => this.go(),
      },
    ];
  }

  private async go(): Promise<boolean> {
    if (!this.target) return false;
    const { nodeId } = this.page;
    if (this.job === "move") return movePlace(nodeId, this.target.nodeId, this.side, null);
    return (await copyPlace(nodeId, this.target.nodeId, this.side, this.branch, this.live ? "L" : "D")) !== "";
  }
}

export async function placeDialog(job: "copy" | "move", nodeId: string): Promise<void> {
  try {
    const page = await loadPage(nodeId);
    if (page) await new PlaceQuestion(job, page).open();
  } catch (error) {
    failed(error);
  }
}
