/** The languages of the interface: added, given words, generated, switched on. */

import { html, nothing, type TemplateResult } from "lit";
import { customElement, state } from "lit/decorators.js";
import { call } from "../api";
import { TvxElement } from "../kit/element";
import { faultNotice } from "../kit/fault-notice";
import { icon } from "../kit/icon";
import { ask } from "../kit/tvx-dialog";
import { toast } from "../kit/tvx-toast";
import { L, t } from "../labels";
import { failed } from "../pages/actions";
import { addDialog } from "../records/add-dialog";
import { textField } from "../records/fields";
import { mayChange } from "../records/lock";
import { readLanguages } from "../shell/language";
import { addInterface, type InterfaceLanguage, interfacesOf } from "./data";
import "../pages/lists.css";
import "../rights/rights.css";
import "./system.css";

const ENTRY = 51;

@customElement("tvx-interfaces")
export class TvxInterfaces extends TvxElement {
  @state() private rows: readonly InterfaceLanguage[] | undefined;
  @state() private mayChange = false;
  @state() private fault: unknown;
  /** The one that is being generated. */
  @state() private busy = "";

  override connectedCallback(): void {
    super.connectedCallback();
    void this.load();
  }

  private readonly load = async (): Promise<void> => {
    try {
      const [rows, may] = await Promise.all([interfacesOf(), mayChange(ENTRY)]);
      this.rows = rows;
      this.mayChange = may;
      this.fault = undefined;
    } catch (error) {
      this.fault = error;
    }
    void readLanguages();
  };

  private async add(): Promise<void> {
    let code = "";
    let name = "";
    const made = await addDialog(
      t(L.newInterface),
      () => html`${textField({ id: "interface-code", label: t(L.interfaceCode), value: code, longest: 2, change: (text) => (code = text) })}
        ${textField({ id: "interface-name", label: t(L.name), value: name, longest: 50, change: (text) => (name = text) })}`,
      () => addInterface(code, name),
    );
    if (made) await this.load();
  }

  private async generate({ lang_ID: langId, lang_name: name }: InterfaceLanguage): Promise<void> {
    if (this.busy) return;
    this.busy = langId;
    try {
      await call("cManager.createInterface", { langId });
      toast(t(L.generated, { name }));
    } catch (error) {
      failed(error);
    } finally {
      this.busy = "";
    }
  }

  private async turn(row: InterfaceLanguage, on: boolean): Promise<void> {
    const { lang_ID: langId, lang_name: name } = row;
    try {
      await call("cManager.setInterfaceOnOff", { langId, state: on ? 1 : 0 });
      toast(t(on ? L.isOnNow : L.isOffNowNamed, { name }), { undo: () => this.turn(row, !on) });
    } catch (error) {
      failed(error);
    }
    await this.load();
  }

  private async removeIt({ lang_ID: langId, lang_name: name }: InterfaceLanguage): Promise<void> {
    if (!(await ask(t(L.removeRecordOf, { name }), t(L.removeInterfaceAsk), t(L.delete), "danger"))) return;
    try {
      await call("cManager.deleteInterface", { langId });
      toast(t(L.recordRemoved, { name }));
    } catch (error) {
      failed(error);
    }
    await this.load();
  }

  private line(row: InterfaceLanguage): TemplateResult {
    return html`<li><span class="grow"><strong>${row.lang_name}</strong> <span class="soft">${row.lang_ID}</span> ${row.lang_default ? html`<span class="rights-mark">${t(L.isDefault)}</span>` : nothing}
      ${row.lang_enabled ? html`<span class="rights-mark done">${t(L.didOnline)}</span>` : html`<span class="rights-mark warn">${t(L.didOffline)}</span>`}</span>${this.buttons(row)}</li>`;
  }

  private buttons(row: InterfaceLanguage): TemplateResult {
    const { lang_ID: id, lang_name: name } = row;
    const on = row.lang_enabled === 1;
    return html`<span class="row-buttons"><a class="button small" href="/torvex/vocabulary.asp?lang=${id}" aria-label="${t(L.wordsOf)}: ${name}">${icon("languages")}${t(L.wordsOf)}</a>
      ${
        this.mayChange
          ? html`<button type="button" class="button small" aria-label="${t(L.generateIt)}: ${name}" aria-busy=${this.busy === id ? "true" : nothing} @click=${() => this.generate(row)}>${icon("refresh-cw")}${t(L.generateIt)}</button>
        ${
          row.lang_default
            ? nothing
            : html`<button type="button" class="button small" aria-label="${t(on ? L.switchOff : L.switchOn)}: ${name}" @click=${() => this.turn(row, !on)}>${icon(on ? "power-off" : "power")}${t(on ? L.switchOff : L.switchOn)}</button>
          <button type="button" class="button small" aria-label="${t(L.delete)}: ${name}" @click=${() => this.removeIt(row)}>${icon("trash-2")}${t(L.delete)}</button>`
        }`
          : nothing
      }</span>`;
  }

  protected override render(): TemplateResult {
    return html`<section class="list-screen" aria-busy=${this.rows || this.fault ? nothing : "true"}>
      <header class="list-head"><h1>${t(L.interfaceLanguages)}</h1><span class="grow"></span>
        ${this.mayChange ? html`<button class="button primary" @click=${this.add}>${icon("plus")}${t(L.newInterface)}</button>` : nothing}</header>
      <p class="note list-note">${t(L.generateHint)}</p>
      ${faultNotice(this.fault, this.load)}
      ${this.rows ? html`<ul class="card languages" role="list">${this.rows.map((row) => this.line(row))}</ul>` : nothing}
    </section>`;
  }
}
