/** The settings of the installation, in groups, each with what it means. */

import { html, nothing, type TemplateResult } from "lit";
import { customElement, property, state } from "lit/decorators.js";
import { live } from "lit/directives/live.js";
import { call } from "../api";
import { TvxElement } from "../kit/element";
import { faultNotice } from "../kit/fault-notice";
import { icon } from "../kit/icon";
import { ask } from "../kit/tvx-dialog";
import { toast } from "../kit/tvx-toast";
import { L, type Label, t } from "../labels";
import { failed } from "../pages/actions";
import { word } from "../pages/words";
import { filterField, matches } from "../records/fields";
import { type Hold, hold, isChanged, letGo } from "../records/lock";
import { beforeLeaving, setQuery } from "../shell/address";
import { type Setting, type Settings, saveSettings, settingsOf } from "./data";
import { isKept, isUsual, settingField } from "./setting-fields";
import "../pages/lists.css";
import "../rights/rights.css";
import "./system.css";

const SECTIONS: readonly (readonly [string, Label])[] = [
  ["website", L.website],
  ["visitors", L.visitorsPlace],
  ["authors", L.settingsAuthors],
  ["editor", L.settingsEditor],
  ["modules", L.modulesPlace],
  ["server", L.systemPlace],
  ["other", L.settingsOther],
];
const CHOICES: ReadonlyMap<string, readonly (readonly [string, Label])[]> = new Map([
  [
    "torvex_extranet_secondFactor",
    [
      ["off", L.visitorFactorsOff],
      ["offered", L.visitorFactorsOffered],
      ["demanded", L.visitorFactorsDemanded],
    ],
  ],
]);
const FILTER = "torvex_access_IP_filter";
const EXACT = "torvex_access_IP_filter_exact";

@customElement("tvx-settings")
export class TvxSettings extends TvxElement {
  @property({ attribute: false }) params = new URLSearchParams();
  @state() private all: Settings | undefined;
  @state() private held: Hold | undefined;
  @state() private changes: ReadonlyMap<string, string> = new Map();
  @state() private stale = false;
  @state() private busy = false;
  @state() private fault: unknown;
  @state() private tried = "";
  private address = "";
  private forget: (() => void) | undefined;

  override connectedCallback(): void {
    super.connectedCallback();
    this.forget = beforeLeaving(
      () => this.changes.size === 0 || ask(t(L.leaveUnsaved), t(L.leaveUnsavedAsk), t(L.leaveIt), "danger"),
    );
    void this.load();
  }

  override disconnectedCallback(): void {
    super.disconnectedCallback();
    this.forget?.();
    if (this.held?.state === "held") void letGo("config", 0);
  }

  private readonly load = async (keepMine = false): Promise<void> => {
    try {
      const held = await hold("config", 0);
      this.all = await settingsOf(0);
      this.held = held;
      if (!keepMine) this.changes = new Map();
      this.stale = false;
      this.fault = undefined;
    } catch (error) {
      this.fault = error;
    }
  };

  private current(setting: Setting): string {
    return this.changes.get(setting.parameter) ?? setting.content;
  }

  private change(setting: Setting, value: string): void {
    const changes = new Map(this.changes);
    if (value === setting.content) changes.delete(setting.parameter);
    else changes.set(setting.parameter, value);
    this.changes = changes;
  }

  private get canSave(): boolean {
    const { all, changes } = this;
    if (!all || changes.size === 0 || this.held?.state !== "held") return false;
    return all.settings.every((setting) => !changes.has(setting.parameter) || isKept(setting, this.current(setting)));
  }

  private async save(): Promise<void> {
    const { all } = this;
    if (!all || !this.canSave || this.busy) return;
    this.busy = true;
    try {
      await saveSettings(all, this.changes);
      toast(t(L.settingsSaved));
      await this.load();
    } catch (error) {
      if (isChanged(error)) this.stale = true;
      else failed(error);
    } finally {
      this.busy = false;
    }
  }

  private async tryFilter(): Promise<void> {
    const value = (parameter: string) => {
      const setting = this.all?.settings.find((one) => one.parameter === parameter);
      return setting ? this.current(setting) : "";
    };
    const address = this.address.trim();
    try {
      const isIn = await call("desk.tryAccessFilter", { filter: value(FILTER), exact: value(EXACT) === "1", address });
      this.tried = isIn ? t(L.filterLetsIn, { address }) : t(L.filterKeepsOut, { address });
    } catch (error) {
      failed(error);
    }
  }

  private pressed(event: KeyboardEvent): void {
    if (!event.ctrlKey || !["s", "Enter"].includes(event.key)) return;
    event.preventDefault();
    void this.save();
  }

  protected override render(): TemplateResult {
    const words = this.params.get("words") ?? "";
    const only = this.params.get("only") === "1";
    return html`<section class="list-screen" aria-busy=${this.all || this.fault ? nothing : "true"} @keydown=${this.pressed}>
      <header class="list-head"><h1>${t(L.settings)}</h1><span class="grow"></span>${filterField(words)}
        <label class="check"><input type="checkbox" .checked=${live(only)} @change=${(event: Event) => setQuery({ only: (event.target as HTMLInputElement).checked ? "1" : "" })} /><span>${t(L.onlyDiffering)}</span></label>
        <button class="button primary" aria-disabled=${this.canSave ? nothing : "true"} aria-busy=${this.busy ? "true" : nothing} @click=${this.save}>${icon("save")}${t(L.save)}</button></header>
      <p class="note list-note">${t(L.settingsAtOnce)}</p>
      ${faultNotice(this.fault, () => this.load())}${this.notices()}
      ${this.all ? this.sections(this.all.settings, words, only) : nothing}
    </section>`;
  }

  private notices() {
    if (this.stale)
      return html`<p class="notice warn" role="alert">${icon("triangle-alert")}<span class="grow">${t(L.recordChanged)}</span>
        <button class="button small" @click=${() => this.load()}>${t(L.loadTheirs)}</button><button class="button small" @click=${() => this.load(true)}>${t(L.goOnWithMine)}</button></p>`;
    if (this.held?.state === "other")
      return html`<p class="notice warn">${icon("lock")}<span>${t(L.openAt, { name: this.held.name || "?" })}</span></p>`;
    return nothing;
  }

  private sections(settings: readonly Setting[], words: string, only: boolean) {
    const shown = settings.filter(
      (setting) =>
        matches(words, setting.parameter, setting.meaning) &&
        (!only || !isUsual(setting, this.current(setting)) || setting.section === "other"),
    );
    if (shown.length === 0) return html`<div class="empty">${icon("settings")}<p>${t(L.nothingFound)}</p></div>`;
    return SECTIONS.map(([section, label]) => {
      const own = shown.filter((setting) => setting.section === section);
      if (own.length === 0) return nothing;
      return html`<section class="card settings"><h2>${word(label)}</h2>${own.map((setting) => html`${this.setting(setting)}${setting.parameter === EXACT ? this.trial() : nothing}`)}</section>`;
    });
  }

  private setting(setting: Setting): TemplateResult {
    const choices = CHOICES.get(setting.parameter);
    return settingField({
      setting,
      ...(choices ? { choices: choices.map(([value, label]) => [value, word(label)] as const) } : {}),
      value: this.current(setting),
      fixed: this.held?.state !== "held" || setting.takes === "file",
      change: (value) => this.change(setting, value),
    });
  }

  private trial(): TemplateResult {
    return html`<div class="setting"><div class="field"><label for="try-address">${t(L.filterTry)}</label>
      <div class="inline"><input id="try-address" class="input setting-try" autocomplete="off" placeholder="10.0.0.7" maxlength="50" @input=${(
        event: Event,
      ) => {
        this.address = (event.target as HTMLInputElement).value;
        this.tried = "";
      }} /><button type="button" class="button" @click=${() => this.address.trim() && this.tryFilter()}>${t(L.tryIt)}</button><span role="status">${this.tried}</span></div></div></div>`;
  }
}
