/** A login: who it is, which roles it has, and what it may do by them. */

import { html, nothing, type TemplateResult } from "lit";
import { customElement, state } from "lit/decorators.js";
import { live } from "lit/directives/live.js";
import { icon } from "../kit/icon";
import { ask } from "../kit/tvx-dialog";
import { toast } from "../kit/tvx-toast";
import { L, t } from "../labels";
import { failed } from "../pages/actions";
import { fromDateField, toDateField } from "../pages/model/setup";
import { textField } from "../records/fields";
import { changedParts, withOwn } from "../records/model/own-parts";
import { RecordElement, type RecordWords } from "../records/record";
import { resetFactorButton, resetFactorOf } from "../records/reset-factor";
import { resetFactor } from "../second-factor/data";
import { assign } from "./assign";
import {
  DETAILS,
  type Detail,
  type Details,
  type HeldRole,
  type LoginRecord,
  loginOf,
  loginRolesOf,
  removeLogin,
  saveLogin,
  setProgram,
} from "./data";
import { newPasswordDialog } from "./login-dialogs";
import "./tvx-why";
import "./rights.css";

@customElement("tvx-login")
export class TvxLogin extends RecordElement<LoginRecord> {
  @state() private details: Details | undefined;
  protected readonly item = "login";
  protected readonly address = "/torvex/logins.asp";
  protected readonly words: RecordWords = { icon: "user", isGone: L.loginIsGone, isOthers: L.loginChanged };

  protected read(loginId: number): Promise<LoginRecord> {
    return loginOf(loginId);
  }

  protected take({ details }: LoginRecord, keepMine: boolean): void {
    const { record: was, details: mine } = this;
    this.details = keepMine && was && mine ? withOwn(DETAILS, details, mine, was.details) : details;
  }

  protected get differs(): boolean {
    const { record: was, details: mine } = this;
    return !!was && !!mine && changedParts(DETAILS, mine, was.details).length > 0;
  }

  private get isSa(): boolean {
    return this.record?.details.adminUsername.toLowerCase() === "sa";
  }

  protected async store(record: LoginRecord): Promise<string> {
    const { details } = this;
    if (!details) return "";
    await saveLogin(record, details);
    return t(L.recordSaved, { name: details.adminFullname });
  }

  private async newPassword(login: LoginRecord): Promise<void> {
    if (await newPasswordDialog(login)) await this.load(true);
  }

  private removeIt({ loginId, details }: LoginRecord): Promise<void> {
    const name = details.adminFullname;
    const says = t(L.removeLoginAsk, { name });
    const said = t(L.loginRemoved, { name });
    return this.askToRemove(t(L.removeLoginOf, { name }), says, () => removeLogin(loginId), said);
  }

  /** Counts at once, as roles do. */
  private async makeProgram({ loginId, details }: LoginRecord, isProgram: boolean): Promise<void> {
    const name = details.adminFullname;
    const agreed = !isProgram || (await ask(t(L.programAskTitle, { name }), t(L.programAsk, { name }), t(L.programDo)));
    try {
      if (agreed) {
        await setProgram(loginId, isProgram);
        toast(t(isProgram ? L.programDone : L.personDone, { name }));
      }
    } catch (error) {
      failed(error);
    }
    await this.renew(async (id) => ({ isProgram: (await loginOf(id)).isProgram }));
  }

  private async reset({ loginId, details }: LoginRecord): Promise<void> {
    if (await resetFactorOf(details.adminFullname, () => resetFactor(loginId)))
      await this.renew(async (id) => ({ hasFactor: (await loginOf(id)).hasFactor }));
  }

  private assign({ loginId, details }: LoginRecord, { roleId, roleName }: HeldRole, has: boolean): void {
    const member = { loginId, name: details.adminFullname, roleId, role: roleName };
    void assign(member, has, () => this.renew(async (id) => ({ roles: await loginRolesOf(id) })));
  }

  private set(part: Detail, text: string): void {
    if (this.details) this.details = { ...this.details, [part]: text };
  }

  protected heading({ details }: LoginRecord): string {
    return details.adminFullname || details.adminUsername;
  }

  protected buttons(login: LoginRecord): TemplateResult {
    return html`<button class="button" @click=${() => this.newPassword(login)}>${icon("lock")}${t(L.newPassword)}</button>
      ${login.hasFactor ? resetFactorButton(() => this.reset(login)) : nothing}
      ${this.isSa ? nothing : html`<button class="button" @click=${() => this.removeIt(login)}>${icon("trash-2")}${t(L.delete)}</button>`}`;
  }

  protected sheet(login: LoginRecord): TemplateResult {
    return html`${this.form(this.details ?? login.details)}${this.isSa ? nothing : this.program(login)}
      <h2>${t(L.roles)}</h2>${this.roles(login)}
      <h2>${t(L.whatMayShe)}</h2><div class="card why-card"><tvx-why .loginId=${login.loginId} .name=${login.details.adminFullname}></tvx-why></div>`;
  }

  private form(details: Details): TemplateResult {
    const field = (id: string, label: string, part: Detail, longest: number, fixed = false): TemplateResult =>
      textField({
        id,
        label,
        value: details[part],
        longest,
        fixed: this.isFixed || fixed,
        change: (text) => this.set(part, text),
      });
    const day = (id: string, label: string, part: Detail): TemplateResult =>
      textField({
        id,
        label,
        value: toDateField(details[part]),
        longest: 10,
        type: "date",
        fixed: this.isFixed || this.isSa,
        change: (text) => this.set(part, fromDateField(text)),
      });
    return html`<div class="login-form">
      ${field("login-name", t(L.fullName), "adminFullname", 30)}${field("login-user", t(L.userName), "adminUsername", 20, this.isSa)}
      ${field("login-job", t(L.job), "adminJob", 50)}${field("login-mail", t(L.email), "adminEmail", 50)}
      ${day("login-from", t(L.validFrom), "adminValidFrom")}${day("login-to", t(L.validTo), "adminValidTo")}</div>`;
  }

  private program(login: LoginRecord): TemplateResult {
    return html`<div><label class="check"><input type="checkbox" aria-describedby="login-program-hint" .checked=${live(login.isProgram)} ?disabled=${this.isFixed}
        @change=${(event: Event) => this.makeProgram(login, (event.target as HTMLInputElement).checked)} /><span>${t(L.programLogin)}</span></label>
      <p class="note" id="login-program-hint">${t(L.programHint)}</p></div>`;
  }

  private roles(login: LoginRecord): TemplateResult {
    if (this.isSa) return html`<p class="note">${t(L.saNeedsNoRole)}</p>`;
    return html`<ul class="member-list" role="list">${login.roles.map(
      (
        role,
      ) => html`<li><label class="check"><input type="checkbox" .checked=${live(role.held === 1)} ?disabled=${this.isFixed}
        @change=${(event: Event) => this.assign(login, role, (event.target as HTMLInputElement).checked)} /><span>${role.roleName}</span></label></li>`,
    )}</ul>`;
  }
}
