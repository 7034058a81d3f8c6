/** A login: who it is, which roles it has, and what it may do by them. */

import { html, nothing, type PropertyValues, type TemplateResult } from "lit";
import { customElement, property, state } from "lit/decorators.js";
import { TvxElement } from "../kit/element";
import { icon } from "../kit/icon";
import { ask } from "../kit/tvx-dialog";
import { toast } from "../kit/tvx-toast";
import { L, t } from "../labels";
import { failed } from "../pages/actions";
import { beforeLeaving, setQuery } from "../shell/address";
import { workplace } from "../shell/workplace";
import {
  DETAILS,
  type Detail,
  type Details,
  type HeldRole,
  type Hold,
  hold,
  isChanged,
  type LoginRecord,
  letGo,
  loginOf,
  removeLogin,
  saveLogin,
  setLoginRole,
} from "./data";
import { textField } from "./fields";
import { newPasswordDialog } from "./login-dialogs";
import "./tvx-why";
import { fromDateField, toDateField } from "./words";
import "../pages/lists.css";
import "./rights.css";

@customElement("tvx-login")
export class TvxLogin extends TvxElement {
  @property({ type: Number }) loginId = 0;
  @state() private login: LoginRecord | undefined;
  @state() private held: Hold | undefined;
  @state() private details: Details | undefined;
  @state() private fault = "";
  @state() private stale = false;
  @state() private busy = false;
  private forget: (() => void) | undefined;

  override connectedCallback(): void {
    super.connectedCallback();
    this.forget = beforeLeaving(() => this.mayLeave());
  }

  override disconnectedCallback(): void {
    super.disconnectedCallback();
    this.forget?.();
    this.free(this.loginId);
  }

  private free(loginId: number): void {
    if (this.held?.state === "held") void letGo("login", loginId);
    this.held = undefined;
  }

  protected override willUpdate(changed: PropertyValues<this>): void {
    if (!changed.has("loginId")) return;
    const before = changed.get("loginId");
    if (before) this.free(before);
    void this.load();
  }

  private async load(keepMine = false): Promise<void> {
    const { loginId } = this;
    try {
      const held = await hold("login", loginId);
      const login = await loginOf(loginId);
      if (loginId !== this.loginId || !this.isConnected) return void (held.state === "held" && letGo("login", loginId));
      this.held = held;
      this.details = keepMine ? this.withMine(login.details) : login.details;
      this.login = login;
      this.fault = "";
      this.stale = false;
    } catch (error) {
      this.fault = error instanceof Error ? error.message : String(error);
    }
  }

  /** What one has changed oneself, on top of what is there now. */
  private withMine(now: Details): Details {
    const { login, details } = this;
    if (!login || !details) return now;
    const own = DETAILS.filter((part) => details[part] !== login.details[part]).map((part) => [part, details[part]]);
    return { ...now, ...Object.fromEntries(own) };
  }

  private get isFixed(): boolean {
    return this.held?.state !== "held";
  }

  private get isSa(): boolean {
    return this.login?.details.adminUsername.toLowerCase() === "sa";
  }

  private get isChanged(): boolean {
    const { login, details } = this;
    return !!login && !!details && !this.isFixed && DETAILS.some((part) => details[part] !== login.details[part]);
  }

  private mayLeave(): boolean | Promise<boolean> {
    return !this.isChanged || ask(t(L.leaveUnsaved), t(L.leaveUnsavedAsk), t(L.leaveIt), "danger");
  }

  private async back(event: Event): Promise<void> {
    event.preventDefault();
    event.stopPropagation();
    if (await this.mayLeave()) setQuery({ login: "" }, { push: true });
  }

  private async save(): Promise<void> {
    const { login, details } = this;
    if (!login || !details || !this.isChanged || this.busy) return;
    this.busy = true;
    try {
      await saveLogin(login, details);
      toast(t(L.loginSaved, { name: details.adminFullname }));
      this.tell("tvx-done");
      await this.load();
    } catch (error) {
      if (isChanged(error)) this.stale = true;
      else failed(error);
    } finally {
      this.busy = false;
    }
  }

  private async newPassword(): Promise<void> {
    if (!this.login || !(await newPasswordDialog(this.login))) return;
    await this.load(true);
  }

  private async removeIt(): Promise<void> {
    const { login } = this;
    if (!login) return;
    const name = login.details.adminFullname;
    if (!(await ask(t(L.removeLoginOf, { name }), t(L.removeLoginAsk, { name }), t(L.delete), "danger"))) return;
    try {
      await removeLogin(login.loginId);
      this.held = undefined;
      toast(t(L.loginRemoved, { name }));
      this.tell("tvx-done");
      setQuery({ login: "" });
    } catch (error) {
      failed(error);
    }
  }

  private async assign(role: HeldRole, has: boolean, undo = true): Promise<void> {
    const { login } = this;
    if (!login) return;
    const name = login.details.adminFullname;
    const isMine = login.loginId === workplace.value.login?.loginId && !has && undo;
    const goesOn =
      !isMine || (await ask(t(L.ownRole), t(L.ownRoleAsk, { role: role.roleName }), t(L.giveItUp), "danger"));
    try {
      if (goesOn) {
        await setLoginRole(login.loginId, role.roleId, has);
        toast(t(has ? L.hasRoleNow : L.hasRoleNoMore, { name, role: role.roleName }), {
          ...(undo ? { undo: () => this.assign(role, !has, false) } : {}),
        });
        this.tell("tvx-done");
      }
    } catch (error) {
      failed(error);
    }
    this.login = { ...login, roles: (await loginOf(login.loginId)).roles };
  }

  private set(part: Detail, text: string): void {
    if (this.details) this.details = { ...this.details, [part]: text };
  }

  protected override render(): TemplateResult {
    const { login, details } = this;
    if (this.fault && !login)
      return html`<section class="list-screen"><p class="notice danger" role="alert">${icon("circle-alert")}<span>${this.fault}</span>
        <button class="button small" @click=${() => this.load()}>${t(L.tryAgain)}</button></p></section>`;
    if (!login || !details)
      return html`<section class="list-screen" aria-busy="true"><h1 class="skeleton"> </h1></section>`;
    if (this.held?.state === "gone")
      return html`<section class="list-screen"><div class="empty">${icon("user")}<p>${t(L.loginIsGone)}</p>${this.backLink()}</div></section>`;
    return html`<section class="list-screen" @keydown=${this.key}>
      <header class="list-head">${this.backLink()}<h1 class="grow">${login.details.adminFullname || login.details.adminUsername}</h1>${this.isFixed ? nothing : this.buttons()}</header>
      ${this.notices()}
      ${this.form(details)}
      <h2>${t(L.roles)}</h2>${this.roles(login)}
      <h2>${t(L.whatMayShe)}</h2><div class="card why-card"><tvx-why .loginId=${login.loginId} .name=${login.details.adminFullname}></tvx-why></div>
    </section>`;
  }

  private backLink(): TemplateResult {
    return html`<a class="button quiet icon-only" href="/torvex/logins.asp" aria-label=${t(L.back)} @click=${(event: Event) => this.back(event)}>${icon("arrow-left")}</a>`;
  }

  private buttons(): TemplateResult {
    return html`<button class="button" @click=${() => this.newPassword()}>${icon("lock")}${t(L.newPassword)}</button>
      ${this.isSa ? nothing : html`<button class="button" @click=${() => this.removeIt()}>${icon("trash-2")}${t(L.delete)}</button>`}
      <button class="button primary" aria-disabled=${this.isChanged ? nothing : "true"} aria-busy=${this.busy ? "true" : nothing} @click=${() => this.save()}>${icon("save")}${t(L.save)}</button>`;
  }

  private notices() {
    if (this.stale)
      return html`<p class="notice warn" role="alert">${icon("triangle-alert")}<span class="grow">${t(L.loginChanged)}</span>
        <button class="button small" @click=${() => this.load()}>${t(L.loadTheirs)}</button><button class="button small" @click=${() => this.load(true)}>${t(L.goOnWithMine)}</button></p>`;
    if (this.held?.state === "other")
      return html`<p class="notice warn">${icon("lock")}<span>${t(L.openAt, { name: this.held.name || "?" })}</span></p>`;
    return nothing;
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

  private roles(login: LoginRecord): TemplateResult {
    if (this.isSa) return html`<p class="note">${t(L.saNeedsNoRole)}</p>`;
    return html`<ul class="member-list" role="list">${login.roles.map(
      (
        role,
      ) => html`<li><label class="check"><input type="checkbox" .checked=${role.held === 1} ?disabled=${this.isFixed}
        @change=${(event: Event) => this.assign(role, (event.target as HTMLInputElement).checked)} /><span>${role.roleName}</span></label></li>`,
    )}</ul>`;
  }

  private key(event: KeyboardEvent): void {
    if (!event.ctrlKey || !["s", "Enter"].includes(event.key)) return;
    event.preventDefault();
    void this.save();
  }
}
