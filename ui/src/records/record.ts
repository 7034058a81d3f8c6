/** What the screens of single records share: opened under a lock, worked on, and never saved over what others did. */

import { html, nothing, type PropertyValues, type TemplateResult } from "lit";
import { property, state } from "lit/decorators.js";
import { TvxElement } from "../kit/element";
import { faultNotice } from "../kit/fault-notice";
import { type IconName, icon } from "../kit/icon";
import { ask } from "../kit/tvx-dialog";
import { toast } from "../kit/tvx-toast";
import { L, type Label, t } from "../labels";
import { failed } from "../pages/actions";
import { word } from "../pages/words";
import { beforeLeaving, setQuery } from "../shell/address";
import { type Hold, hold, isChanged, letGo } from "./lock";
import "../pages/lists.css";

export interface RecordWords {
  readonly icon: IconName;
  readonly isGone: Label;
  /** Somebody else has changed it meanwhile. */
  readonly isOthers: Label;
}

/** Tells "tvx-done" when something about the record has been saved. */
export abstract class RecordElement<T extends object> extends TvxElement {
  @property({ type: Number }) recordId = 0;
  /** As it was read: what a save expects to find again. */
  @state() protected record: T | undefined;
  @state() private held: Hold | undefined;
  @state() private fault: unknown;
  @state() private stale = false;
  @state() private busy = false;
  private forget: (() => void) | undefined;

  /** What `lockItem` calls it. */
  protected abstract readonly item: string;
  /** Where the list is. */
  protected abstract readonly address: string;
  protected abstract readonly words: RecordWords;
  protected abstract read(recordId: number): Promise<T>;
  /** Begins to work on what was read, with what one has changed oneself on top of it or without. */
  protected abstract take(record: T, keepMine: boolean): void;
  protected abstract get differs(): boolean;
  /** The sentence to be told, or "" when its author thought better of it. */
  protected abstract store(record: T): Promise<string>;
  protected abstract heading(record: T): string;
  /** What can be done to it besides saving. */
  protected abstract buttons(record: T): TemplateResult;
  protected abstract sheet(record: T): TemplateResult;

  /** What stands on the button that saves. */
  protected get saveWord(): string {
    return t(L.save);
  }

  /** What the address calls its number. */
  protected get key(): string {
    return this.item;
  }

  override connectedCallback(): void {
    super.connectedCallback();
    this.forget = beforeLeaving(() => this.mayLeave());
  }

  override disconnectedCallback(): void {
    super.disconnectedCallback();
    this.forget?.();
    this.free(this.recordId);
  }

  private free(recordId: number): void {
    if (this.held?.state === "held") void letGo(this.item, recordId);
    this.held = undefined;
  }

  protected override willUpdate(changed: PropertyValues<this>): void {
    if (!changed.has("recordId")) return;
    this.free(changed.get("recordId") ?? 0);
    this.record = undefined;
    void this.load();
  }

  /** The lock comes first: what is read under it is what will be saved over. */
  protected async load(keepMine = false): Promise<void> {
    const { item, recordId } = this;
    try {
      const held = await hold(item, recordId);
      const record = await this.read(recordId);
      if (recordId !== this.recordId || !this.isConnected) {
        if (held.state === "held") void letGo(item, recordId);
        return;
      }
      this.held = held;
      this.take(record, keepMine);
      this.record = record;
      this.fault = undefined;
      this.stale = false;
    } catch (error) {
      this.fault = error;
    }
  }

  /** Somebody else has it open, or it is gone. */
  protected get isFixed(): boolean {
    return this.held?.state !== "held";
  }

  private get isChanged(): boolean {
    return !this.isFixed && this.differs;
  }

  private mayLeave(): boolean | Promise<boolean> {
    return !this.isChanged || ask(t(L.leaveUnsaved), t(L.leaveUnsavedAsk), t(L.leaveIt), "danger");
  }

  private leave({ push }: { push: boolean }): void {
    setQuery({ [this.key]: "", tab: "" }, { push });
  }

  private async back(event: Event): Promise<void> {
    event.preventDefault();
    event.stopPropagation();
    if (await this.mayLeave()) this.leave({ push: true });
  }

  private async save(): Promise<void> {
    const { record } = this;
    if (!record || this.busy || !this.isChanged) return;
    this.busy = true;
    try {
      const said = await this.store(record);
      if (!said) return;
      toast(said);
      this.tell("tvx-done");
      await this.load();
    } catch (error) {
      if (isChanged(error)) this.showStale();
      else failed(error);
    } finally {
      this.busy = false;
    }
  }

  /** Who saves from below sees why it wasn't saved. */
  private showStale(): void {
    this.stale = true;
    void this.updateComplete.then(() => this.querySelector("[role=alert]")?.scrollIntoView({ block: "center" }));
  }

  /** Reads anew what is saved by itself; what is worked on stays. */
  protected async renew(read: (recordId: number) => Promise<Partial<T>>): Promise<void> {
    const { recordId } = this;
    try {
      const now = await read(recordId);
      if (this.record && recordId === this.recordId) this.record = { ...this.record, ...now };
    } catch (error) {
      failed(error);
    }
    this.tell("tvx-done");
  }

  /** Removes it when its author says so again. */
  protected async askToRemove(
    title: string,
    says: string,
    remove: () => Promise<unknown>,
    said: string,
  ): Promise<void> {
    if (!(await ask(title, says, t(L.delete), "danger"))) return;
    try {
      await remove();
      this.removed(said);
    } catch (error) {
      failed(error);
    }
  }

  /** It is no more: there is nothing left to let go. */
  protected removed(said: string): void {
    this.held = undefined;
    toast(said);
    this.tell("tvx-done");
    this.leave({ push: false });
  }

  protected override render(): TemplateResult {
    const { record, held } = this;
    if (!record)
      return html`<section class="list-screen" aria-busy=${this.fault ? nothing : "true"}>${this.waiting()}</section>`;
    if (held?.state === "gone")
      return html`<section class="list-screen"><div class="empty">${icon(this.words.icon)}<p>${word(this.words.isGone)}</p>${this.backLink()}</div></section>`;
    return html`<section class="list-screen" @keydown=${this.pressed}>
      <header class="list-head record-head">${this.backLink()}<h1 class="grow">${this.heading(record)}</h1>${this.isFixed ? nothing : html`${this.buttons(record)}${this.saveButton()}`}</header>
      ${this.notices()}
      ${this.sheet(record)}
      ${this.isChanged ? html`<div class="save-bar">${this.saveButton()}</div>` : nothing}
    </section>`;
  }

  private waiting() {
    return this.fault ? faultNotice(this.fault, () => this.load()) : html`<h1 class="skeleton"> </h1>`;
  }

  private backLink(): TemplateResult {
    return html`<a class="button quiet icon-only" href=${this.address} aria-label=${t(L.back)} @click=${this.back}>${icon("arrow-left")}</a>`;
  }

  private saveButton(): TemplateResult {
    return html`<button class="button primary" aria-disabled=${this.isChanged ? nothing : "true"} aria-busy=${this.busy ? "true" : nothing} @click=${this.save}>${icon("save")}${this.saveWord}</button>`;
  }

  private notices() {
    if (this.stale)
      return html`<p class="notice warn" role="alert">${icon("triangle-alert")}<span class="grow">${word(this.words.isOthers)}</span>
        <button class="button small" @click=${() => this.load()}>${t(L.loadTheirs)}</button><button class="button small" @click=${() => this.load(true)}>${t(L.goOnWithMine)}</button></p>`;
    if (this.held?.state === "other")
      return html`<p class="notice warn">${icon("lock")}<span>${t(L.openAt, { name: this.held.name || "?" })}</span></p>`;
    return nothing;
  }

  private pressed(event: KeyboardEvent): void {
    if (!event.ctrlKey || !["s", "Enter"].includes(event.key)) return;
    event.preventDefault();
    void this.save();
  }
}
