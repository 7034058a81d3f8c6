/** The sheet of a page's setup, in the right panel: one batch saves it, and a refusal stands at its field. */

import { html, nothing, type PropertyValues, type TemplateResult } from "lit";
import { customElement, property, state } from "lit/decorators.js";
import type { Problem } from "../api";
import { TvxElement } from "../kit/element";
import { faultNotice, faultText } from "../kit/fault-notice";
import { icon } from "../kit/icon";
import { ask } from "../kit/tvx-dialog";
import { type Toast, toast } from "../kit/tvx-toast";
import { L, plural, t } from "../labels";
import { beforeLeaving } from "../shell/address";
import { onPagesChanged, type PageState } from "../shell/workplace";
import { nextMove } from "./actions";
import { loadPage, type PageFacts } from "./data";
import {
  changedFields,
  changedMeta,
  faultsOf,
  fieldOfCode,
  groupsText,
  lostBodies,
  type MetaValue,
  type SetupField,
  type SetupValues,
  saveWord,
  setupBatch,
} from "./model/setup";
import { changed } from "./pages-changed";
import { runCalls } from "./run";
import { filledBodies, loadSheet, placesOf, type Sheet } from "./setup-data";
import { type FieldNames, fieldLabel, sections } from "./setup-sections";
import "./setup-panel.css";

@customElement("tvx-page-setup")
export class TvxPageSetup extends TvxElement {
  @property({ attribute: false }) page: PageState | null = null;
  @state() private sheet: Sheet | undefined;
  @state() private facts: PageFacts | undefined;
  @state() private values: SetupValues | undefined;
  @state() private meta: readonly MetaValue[] = [];
  @state() private wrong = new Map<FieldNames, string>();
  @state() private fault: unknown;
  @state() private saving = false;
  @state() private elsewhere = false;
  @state() private move: Toast["action"];
  private forget: (() => void)[] = [];

  override connectedCallback(): void {
    super.connectedCallback();
    this.forget = [
      onPagesChanged((change) => {
        if (change === "all" || change.pageIds.includes(this.page?.pageId ?? -1)) void this.reload();
      }),
      beforeLeaving(() => this.mayLeave()),
    ];
  }

  override disconnectedCallback(): void {
    super.disconnectedCallback();
    for (const forget of this.forget) forget();
  }

  protected override willUpdate(properties: PropertyValues<this>): void {
    if (!properties.has("page")) return;
    const before = properties.get("page");
    if (this.page && before?.pageId !== this.page.pageId) void this.load();
  }

  private async load(): Promise<void> {
    if (!this.page) return;
    const { pageId, nodeId } = this.page;
    if (this.sheet?.pageIdent !== String(pageId)) this.sheet = undefined;
    try {
      const [sheet, facts] = await Promise.all([loadSheet(pageId, nodeId), loadPage(nodeId)]);
      if (this.page.pageId !== pageId) return;
      this.sheet = sheet;
      this.facts = facts;
      this.values = { ...sheet.values };
      this.meta = sheet.meta;
      this.wrong = new Map();
      this.fault = undefined;
      this.elsewhere = false;
    } catch (error) {
      this.fault = error;
    }
  }

  /** What somebody else saved is taken over, unless there is something here that isn't saved. */
  private async reload(): Promise<void> {
    if (this.saving) return;
    if (!this.isDirty) await this.load();
    else if (this.page) this.facts = await loadPage(this.page.nodeId).catch(() => this.facts);
  }

  private get isDirty(): boolean {
    if (!this.sheet || !this.values) return false;
    return (
      changedFields(this.sheet.values, this.values).length > 0 || changedMeta(this.sheet.meta, this.meta).length > 0
    );
  }

  private async mayLeave(): Promise<boolean> {
    if (!this.isDirty) return true;
    return ask(t(L.setupUnsaved), t(L.setupUnsavedHint), t(L.setupDiscard), "danger");
  }

  private get whyNot(): string {
    const facts = this.facts;
    if (!facts) return "";
    if (!facts.rights.edit) return t(L.noRightEdit);
    return facts.status.heldByOther ? t(L.isHeldFirst, { name: facts.holder }) : "";
  }

  private set(field: SetupField, value: string | number): void {
    if (!this.values) return;
    this.values = { ...this.values, [field]: value };
    if (this.wrong.delete(field)) this.wrong = new Map(this.wrong);
  }

  private setMeta(value: MetaValue): void {
    this.meta = this.meta.map((each) => (each.id === value.id ? value : each));
  }

  private revert(): void {
    if (!this.sheet) return;
    this.values = { ...this.sheet.values };
    this.meta = this.sheet.meta;
    this.wrong = new Map();
    this.fault = undefined;
  }

  private readonly submitted = (event: Event): void => {
    event.preventDefault();
    void this.save();
  };

  private readonly key = (event: KeyboardEvent): void => {
    if (event.key !== "s" || !event.ctrlKey) return;
    event.preventDefault();
    event.stopPropagation();
    void this.save();
  };

  async save(): Promise<void> {
    const { sheet, values } = this;
    if (!sheet || !values || this.saving || this.whyNot) return;
    const faults = faultsOf(values);
    if (faults.length) {
      const texts = {
        titleTooLong: L.titleTooLong,
        noDate: L.noDate,
        order: L.endsBefore,
        noApplication: L.chooseApplication,
      } as const;
      return this.show(new Map(faults.map(({ field, kind }) => [field, t(texts[kind])])));
    }
    this.saving = true;
    this.move = undefined;
    this.elsewhere = false;
    try {
      if (await this.mayLoseBodies(values)) await this.send(sheet, values);
    } catch (error) {
      this.fault = error;
    } finally {
      this.saving = false;
    }
  }

  /** Asks before texts go that the new template has no place for. */
  private async mayLoseBodies(values: SetupValues): Promise<boolean> {
    const before = this.sheet?.values;
    if (!before || (before.pgType === values.pgType && before.pgTemplateId === values.pgTemplateId)) return true;
    if (before.pgType !== "P") return true;
    const places = values.pgTemplateId > 0 ? await placesOf(values.pgTemplateId) : -1;
    const lost = lostBodies(values.pgType, places, await filledBodies(this.sheet?.pageIdent ?? ""));
    if (lost.length === 0) return true;
    const numbers = new Intl.ListFormat(document.documentElement.lang || "en").format(lost.map(String));
    return ask(
      t(L.bodiesLostTitle),
      plural(lost.length, L.bodiesLostOne, L.bodiesLostMany, { numbers }),
      t(L.saveAnyway),
      "danger",
    );
  }

  private async send(sheet: Sheet, values: SetupValues): Promise<void> {
    const meta = changedMeta(sheet.meta, this.meta);
    const end = await runCalls(setupBatch({ pageIdent: sheet.pageIdent, loaded: sheet.loaded, values, meta }));
    if (end.problem) return this.refused(end.problem);
    toast(t(L.setupSaved));
    await this.load();
    if (this.page) changed(this.page);
  }

  private refused(problem: Problem): void {
    if (problem.changed) {
      this.elsewhere = true;
      this.show(new Map(), t(L.setupElsewhere));
      return;
    }
    const field = fieldOfCode(problem.code);
    if (field) this.show(new Map([[field, problem.message]]));
    else this.show(new Map(), problem.message, this.facts && nextMove(problem, this.facts, () => this.save()));
    if (problem.kind === "locked-by-other" && this.page) changed(this.page);
  }

  private show(wrong: Map<FieldNames, string>, fault?: string, move?: Toast["action"]): void {
    this.wrong = wrong;
    this.fault = fault;
    this.move = move;
    void this.updateComplete.then(() => {
      for (const field of wrong.keys())
        this.querySelector(`#setup-${field}`)?.closest("details")?.setAttribute("open", "");
      this.querySelector<HTMLElement>(".setup-summary")?.focus();
    });
  }

  /** Keeps what was typed, on top of what somebody else has saved meanwhile. */
  private async keepMine(): Promise<void> {
    const { sheet, values, meta } = this;
    if (!sheet || !values) return;
    const mine = changedFields(sheet.values, values);
    const mineMeta = changedMeta(sheet.meta, meta);
    await this.load();
    if (!this.values) return;
    this.values = { ...this.values, ...Object.fromEntries(mine.map((field) => [field, values[field]])) };
    for (const each of mineMeta) this.setMeta(each);
  }

  protected override render(): TemplateResult | typeof nothing {
    if (!this.sheet || !this.values)
      return this.fault
        ? faultNotice(this.fault, () => this.load())
        : html`<div class="setup-skeleton" aria-busy="true">${[1, 2, 3, 4].map(() => html`<div class="skeleton"></div>`)}</div>`;
    return html`<form class="setup" aria-label=${t(L.setupTitle)} @submit=${this.submitted} @keydown=${this.key} novalidate>
      <div class="setup-fields" tabindex=${this.whyNot ? 0 : nothing} role=${this.whyNot ? "region" : nothing} aria-label=${this.whyNot ? t(L.setupTitle) : nothing}>
        ${this.summary()}
        ${this.whyNot ? html`<p class="notice">${icon("lock")}<span>${this.whyNot}</span></p>` : nothing}
        <fieldset ?disabled=${this.whyNot !== ""}>${sections({
          sheet: this.sheet,
          values: this.values,
          meta: this.meta,
          wrong: this.wrong,
          set: (field, value) => this.set(field, value),
          setMeta: (value) => this.setMeta(value),
          setGroups: (chosen) => this.set("pgGroups", groupsText(chosen)),
        })}</fieldset>
      </div>
      ${this.foot()}
    </form>`;
  }

  private summary(): TemplateResult | typeof nothing {
    if (this.wrong.size === 0 && !this.fault) return nothing;
    return html`<div class="notice danger setup-summary" role="alert" tabindex="-1">${icon("circle-alert")}<div class="stack">
      ${this.fault ? html`<p>${faultText(this.fault)}</p>` : html`<p>${plural(this.wrong.size, L.setupWrongOne, L.setupWrongMany)}</p>`}
      ${
        this.wrong.size
          ? html`<ul>${[...this.wrong].map(
              ([field, text]) =>
                html`<li><a href="#setup-${field}" @click=${(event: Event) => {
                  event.preventDefault();
                  this.querySelector<HTMLElement>(`#setup-${field}`)?.focus();
                }}>${fieldLabel(field)}: ${text}</a></li>`,
            )}</ul>`
          : nothing
      }
      ${
        this.elsewhere
          ? html`<div class="inline"><button type="button" class="button small" @click=${() => this.keepMine()}>${t(L.keepMine)}</button>
            <button type="button" class="button small" @click=${() => this.load()}>${t(L.takeTheirs)}</button></div>`
          : nothing
      }
      ${this.move ? html`<div class="inline"><button type="button" class="button small" @click=${this.move.run}>${this.move.label}</button></div>` : nothing}
    </div></div>`;
  }

  private foot(): TemplateResult {
    const status = this.facts?.status;
    const word = saveWord(status?.approved ?? false, status?.marked ?? false);
    const labels = { save: L.save, saveWithdraws: L.saveWithdraws, saveUnmarks: L.saveUnmarks } as const;
    return html`<div class="setup-foot">
      <span class="note grow" role="status">${this.isDirty ? t(L.setupDirty) : ""}</span>
      ${this.isDirty ? html`<button type="button" class="button" @click=${() => this.revert()}>${t(L.setupDiscard)}</button>` : nothing}
      <button type="submit" class="button primary" ?disabled=${!this.isDirty || this.whyNot !== "" || this.saving} aria-busy=${this.saving}>${t(labels[word])}</button>
    </div>`;
  }
}

declare global {
  interface HTMLElementTagNameMap {
    "tvx-page-setup": TvxPageSetup;
  }
}
