/** A new page: title, kind, place, and whether it begins with nothing or as a copy; then its first text. */

import { html, nothing, type TemplateResult } from "lit";
import { call, isProblem } from "../api";
import { icon } from "../kit/icon";
import { type DialogAction, dialog, type TvxDialog } from "../kit/tvx-dialog";
import { toast } from "../kit/tvx-toast";
import { L, type Label, t } from "../labels";
import { go, pageAddress } from "../shell/address";
import { nextMoveIn } from "./actions";
import { type Child, childrenOf } from "./children";
import type { NewPlace } from "./commands";
import { copyCall, isRoot, isSystem, reorder } from "./model/places";
import { fieldOfCode, newPageBatch, newPageValues, TITLE_LENGTH } from "./model/setup";
import type { PageKind } from "./model/status";
import { allChanged } from "./pages-changed";
import "./page-picker";
import { titleFrom } from "./model/workflow";
import { runAll, runCalls } from "./run";
import { KIND_ICONS, kindWord, titleOr, word } from "./words";
import "./dialogs.css";

type Kind = PageKind | "S";

interface Application {
  readonly app_id: number;
  readonly app_name: string;
}

class NewPageQuestion {
  private title = "";
  private kind: Kind = "P";
  private appId = -1;
  private before: string;
  private source: Child | undefined;
  private copying = false;
  private siblings: readonly Child[] = [];
  private parentTitle = "";
  private applications: readonly Application[] = [];
  private wrong: { field: string; text: string } | undefined;
  private box: TvxDialog | undefined;

  constructor(private readonly place: NewPlace) {
    this.before = place.before ?? "";
  }

  async open(): Promise<void> {
    void this.load();
    await dialog({
      title: t(L.newPageTitle),
      body: (box) => {
        this.box = box;
        return this.body();
      },
      nextStep: (problem, box) => nextMoveIn(box, problem, { pageId: 0, nodeId: this.place.parent }),
      actions: () => this.actions(),
    });
  }

  private async load(): Promise<void> {
    const { parent, site, lang } = this.place;
    const [siblings, title, applications] = await Promise.all([
      childrenOf(parent, site, lang),
      parent ? call("cManager.getPageTitle", { pageIdent: parent, mode: "D" }) : "",
      call("application.getApplicationList", { listType: 0 }).catch((): Application[] => []),
    ]);
    this.siblings = siblings;
    this.parentTitle = titleFrom(title);
    this.applications = applications;
    this.box?.requestUpdate();
  }

  private get hasSystemBranch(): boolean {
    return this.siblings.some((each) => each.nodeId.endsWith(".99"));
  }

  private get kinds(): readonly Kind[] {
    const mayHaveSystem = isRoot(this.place.parent) && !this.hasSystemBranch && !isSystem(this.place.parent);
    return mayHaveSystem ? ["P", "F", "A", "S"] : ["P", "F", "A"];
  }

  private body(): TemplateResult {
    return html`
      ${this.titleField()}
      <div class="field"><span class="label">${t(L.partKind)}</span>
        <div class="choice" role="radiogroup" aria-label=${t(L.partKind)}>${this.kinds.map((kind) => this.kindButton(kind))}</div>
        ${this.kindHint()}</div>
      ${this.kind === "A" ? this.applicationField() : nothing}
      ${this.kind === "S" ? nothing : this.placeField()}
      ${this.kind === "P" ? this.beginning() : nothing}
    `;
  }

  private note(field: string): TemplateResult | typeof nothing {
    return this.wrong?.field === field
      ? html`<p class="note wrong" id="new-${field}-wrong">${this.wrong.text}</p>`
      : nothing;
  }

  private titleField(): TemplateResult {
    const wrong = this.wrong?.field === "pgTitle";
    return html`<div class="field"><label for="new-title">${t(L.title)}</label>
      <input id="new-title" class="input" autofocus autocomplete="off" maxlength=${TITLE_LENGTH} .value=${this.title} aria-invalid=${wrong ? "true" : nothing}
        aria-describedby=${wrong ? "new-pgTitle-wrong" : nothing} @input=${this.typed} @keydown=${this.enter} />${this.note("pgTitle")}</div>`;
  }

  private readonly typed = (event: Event): void => {
    this.title = (event.target as HTMLInputElement).value;
    this.wrong = undefined;
    this.box?.requestUpdate();
  };

  private readonly enter = (event: KeyboardEvent): void => {
    if (event.key !== "Enter" || event.isComposing || event.ctrlKey) return;
    event.preventDefault();
    this.box?.querySelector<HTMLButtonElement>(".dialog-foot .primary")?.click();
  };

  private kindButton(kind: Kind): TemplateResult {
    return html`<button type="button" role="radio" aria-checked=${kind === this.kind} @click=${() => {
      this.kind = kind;
      this.wrong = undefined;
      this.box?.requestUpdate();
    }}>${icon(KIND_ICONS[kind] ?? "file-text")}${kindWord(kind)}</button>`;
  }

  private kindHint(): TemplateResult | typeof nothing {
    const hints: Partial<Record<Kind, Label>> = { F: L.newFolderHint, A: L.newApplicationHint, S: L.newSystemHint };
    const hint = hints[this.kind];
    return hint === undefined ? nothing : html`<p class="note">${word(hint)}</p>`;
  }

  private applicationField(): TemplateResult {
    return html`<div class="field"><label for="new-application">${t(L.partApplication)}</label>
      <select id="new-application" class="select" aria-invalid=${this.wrong?.field === "pgAppId" ? "true" : nothing} @change=${(
        event: Event,
      ) => {
        this.appId = Number((event.target as HTMLSelectElement).value);
        this.wrong = undefined;
        this.box?.requestUpdate();
      }}>
        <option value="-1"></option>
        ${this.applications.map((each) => html`<option value=${each.app_id} ?selected=${each.app_id === this.appId}>${each.app_name}</option>`)}
      </select>${this.note("pgAppId")}</div>`;
  }

  private placeField(): TemplateResult {
    const siblings = this.siblings.filter((each) => !each.nodeId.endsWith(".99") || isSystem(this.place.parent));
    return html`<div class="field"><label for="new-place">${t(L.newPageIn, { title: titleOr(this.parentTitle) })}</label>
      <select id="new-place" class="select" @change=${(event: Event) => {
        this.before = (event.target as HTMLSelectElement).value;
      }}>
        ${siblings.map((each) => html`<option value=${each.nodeId} ?selected=${each.nodeId === this.before}>${t(L.newPageBefore, { title: titleOr(each.title) })}</option>`)}
        <option value="" ?selected=${this.before === ""}>${t(L.newPageLast)}</option>
      </select></div>`;
  }

  private beginning(): TemplateResult {
    const choice = (
      copying: boolean,
      label: string,
    ): TemplateResult => html`<button type="button" role="radio" aria-checked=${copying === this.copying}
      @click=${() => {
        this.copying = copying;
        this.wrong = undefined;
        this.box?.requestUpdate();
      }}>${label}</button>`;
    return html`<div class="field"><span class="label">${t(L.newPageFrom)}</span>
      <div class="choice" role="radiogroup" aria-label=${t(L.newPageFrom)}>${choice(false, t(L.newPageEmpty))}${choice(true, t(L.newPageCopy))}</div></div>
      ${this.copying ? this.sourceField() : nothing}`;
  }

  private sourceField(): TemplateResult {
    return html`<div class="field"><span class="label">${t(L.newPageSource)}</span>
      <tvx-page-picker .site=${this.place.site} .language=${this.place.lang} .label=${t(L.newPageSource)} .shownFirst=${this.place.before ?? this.place.parent}
        .chosen=${this.source?.nodeId ?? ""} .refuses=${(page: Child) => (isRoot(page.nodeId) ? t(L.refusedRoot) : isSystem(page.nodeId) ? t(L.refusedSystem) : "")}
        @tvx-choose=${(event: CustomEvent<Child>) => {
          this.source = event.detail;
          if (this.title === "") this.title = event.detail.title;
          this.wrong = undefined;
          this.box?.requestUpdate();
        }}></tvx-page-picker>${this.note("source")}</div>`;
  }

  private actions(): DialogAction[] {
    return [
      { name: "cancel", label: t(L.cancel) },
      { name: "go", label: t(L.newPageCreate), kind: "primary", run: () => this.create() },
    ];
  }

  private refuse(field: string, text: string): false {
    this.wrong = { field, text };
    this.box?.requestUpdate();
    const ids: Record<string, string> = { pgTitle: "#new-title", pgAppId: "#new-application" };
    this.box?.querySelector<HTMLElement>(ids[field] ?? "tvx-page-picker [role=treeitem]")?.focus();
    return false;
  }

  private async create(): Promise<boolean> {
    if (this.title.trim() === "") return this.refuse("pgTitle", t(L.titleNeeded));
    if ([...this.title.trim()].length > TITLE_LENGTH) return this.refuse("pgTitle", t(L.titleTooLong));
    if (this.kind === "A" && this.appId <= 0) return this.refuse("pgAppId", t(L.chooseApplication));
    if (this.copying && this.kind === "P")
      return this.source ? this.copy(this.source) : this.refuse("source", t(L.chooseSource));
    const { site, lang, parent } = this.place;
    const values = newPageValues(this.title, this.kind, this.appId);
    const end = await runCalls(
      newPageBatch(site, lang, { parent, before: this.kind === "S" ? "" : this.before }, values),
    );
    if (end.problem) return this.refused(end.problem);
    await this.show(String(end.results.at(-1)));
    return true;
  }

  private refused(problem: unknown): boolean {
    if (!isProblem(problem)) throw problem;
    const field = fieldOfCode(problem.code);
    if (field === "pgTitle" || field === "pgAppId") return this.refuse(field, problem.message);
    throw problem;
  }

  /** A copy gets its title in the setup, since copying keeps the one that it had. */
  private async copy(source: Child): Promise<boolean> {
    const end = await runCalls([copyCall("D", String(source.pageId), this.place.parent, false)]);
    if (end.problem) throw end.problem;
    const node = String(end.results[0]);
    const pageId = await call("cManager.getPageId", { nodeId: node });
    if (this.before) await this.bringBefore(pageId);
    const end2 = await runCalls([
      { on: "cManager", do: "getPage", with: { pageIdent: node, mode: "D" } },
      { on: "cManager", set: "pgTitle", to: this.title.trim() },
      { on: "cManager", do: "savePageSetup", with: { pageIdent: node } },
    ]);
    if (end2.problem) toast(end2.problem.message, { kind: "warn" });
    await this.show(node);
    return true;
  }

  private async bringBefore(pageId: number): Promise<void> {
    const siblings = await childrenOf(this.place.parent, this.place.site, this.place.lang);
    const before = siblings.find((each) => each.nodeId === this.before)?.pageId;
    const calls = reorder(
      siblings.map((each) => each.pageId),
      pageId,
      before,
    );
    if (calls.length) await runAll(calls);
  }

  private async show(node: string): Promise<void> {
    const pageId = await call("cManager.getPageId", { nodeId: node });
    allChanged();
    toast(t(L.newPageDone));
    await go(`${pageAddress(pageId)}${this.kind === "P" ? "&edit=1" : ""}`);
  }
}

export const newPageDialog = (place: NewPlace): Promise<void> => new NewPageQuestion(place).open();
