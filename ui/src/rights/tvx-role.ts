/** A role: what it gives to pages, what it opens, and who has it. */

import { html, nothing, type PropertyValues, type TemplateResult } from "lit";
import { customElement, property, state } from "lit/decorators.js";
import { TvxElement } from "../kit/element";
import { icon } from "../kit/icon";
import "../kit/tvx-tabs";
import { ask } from "../kit/tvx-dialog";
import { toast } from "../kit/tvx-toast";
import { L, plural, t } from "../labels";
import { failed } from "../pages/actions";
import { beforeLeaving, setQuery } from "../shell/address";
import { workplace } from "../shell/workplace";
import {
  type Hold,
  hold,
  isChanged,
  letGo,
  type Places,
  placesOf,
  type Role,
  removeRole,
  roleOf,
  saveRole,
  setLoginRole,
  weigh,
  weighEnd,
} from "./data";
import { textField } from "./fields";
import { impactDialog } from "./impact-dialog";
import { entryMatrix, pageMatrix } from "./matrices";
import {
  changedEntries,
  changedGrants,
  type EditGrant,
  type EntryGrant,
  type Where,
  withEntries,
  withGrants,
} from "./model/grants";
import { whyDialog } from "./tvx-why";
import "../pages/lists.css";
import "./rights.css";

const TABS = ["pages", "administration", "logins"] as const;

@customElement("tvx-role")
export class TvxRole extends TvxElement {
  @property({ type: Number }) roleId = 0;
  @property() tab = "";
  @state() private record: Role | undefined;
  @state() private places: Places | undefined;
  @state() private held: Hold | undefined;
  @state() private name = "";
  @state() private description = "";
  @state() private grants: ReadonlyMap<string, EditGrant> = new Map();
  @state() private entries: ReadonlyMap<string, EntryGrant> = new Map();
  @state() private where: Where = { site: "", lang: "" };
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
    this.free(this.roleId);
  }

  private free(roleId: number): void {
    if (this.held?.state === "held") void letGo("role", roleId);
    this.held = undefined;
  }

  protected override willUpdate(changed: PropertyValues<this>): void {
    if (!changed.has("roleId")) return;
    const before = changed.get("roleId");
    if (before) this.free(before);
    void this.load();
  }

  /** The lock comes first: what is read under it is what will be saved over. */
  private async load(keepMine = false): Promise<void> {
    const { roleId } = this;
    try {
      const held = await hold("role", roleId);
      const [role, places] = await Promise.all([roleOf(roleId), this.places ?? placesOf()]);
      if (roleId !== this.roleId || !this.isConnected) return void (held.state === "held" && letGo("role", roleId));
      this.held = held;
      this.places = places;
      this.take(role, keepMine);
      this.fault = "";
      this.stale = false;
    } catch (error) {
      this.fault = error instanceof Error ? error.message : String(error);
    }
  }

  /** What is kept of one's own is what one has changed, on top of what is there now. */
  private take(role: Role, keepMine: boolean): void {
    const { record: was, change: mine } = this;
    this.record = role;
    this.name = keepMine && was && mine.name !== was.name ? mine.name : role.name;
    this.description = keepMine && was && mine.description !== was.description ? mine.description : role.description;
    this.grants = keepMine ? withGrants(role.grants, mine.grants) : role.grants;
    this.entries = keepMine ? withEntries(role.entries, mine.entries) : role.entries;
  }

  private get isFixed(): boolean {
    return this.held?.state !== "held";
  }

  private get change() {
    const { record: role } = this;
    const grants = role ? changedGrants(role.grants, this.grants) : [];
    const entries = role ? changedEntries(role.entries, this.entries) : [];
    return { name: this.name, description: this.description, grants, entries };
  }

  private get isChanged(): boolean {
    const { record: role, change } = this;
    if (!role || this.isFixed) return false;
    const isNamed = change.name !== role.name || change.description !== role.description;
    return isNamed || change.grants.length > 0 || change.entries.length > 0;
  }

  private mayLeave(): boolean | Promise<boolean> {
    return !this.isChanged || ask(t(L.leaveUnsaved), t(L.leaveUnsavedAsk), t(L.leaveIt), "danger");
  }

  private async back(event?: Event): Promise<void> {
    event?.preventDefault();
    event?.stopPropagation();
    if (await this.mayLeave()) setQuery({ role: "", tab: "" }, { push: true });
  }

  private async save(): Promise<void> {
    const { record: role, places, change } = this;
    if (!role || !places || this.busy || !this.isChanged) return;
    this.busy = true;
    try {
      const hits = await weigh(role.roleId, change.grants, change.entries);
      const run = (): Promise<unknown> => saveRole(role, change);
      if (hits.length === 0) await run();
      else if (
        !(await impactDialog(t(L.saveRoleOf, { name: role.name }), t(L.save), hits, places, () => this.told(run)))
      )
        return;
      if (this.stale) return;
      toast(t(L.roleSaved, { name: change.name }));
      this.tell("tvx-done");
      await this.load();
    } catch (error) {
      this.refused(error);
    } finally {
      this.busy = false;
    }
  }

  /** In the dialog: that the role has changed elsewhere is told behind it. */
  private async told(run: () => Promise<unknown>): Promise<void> {
    try {
      await run();
    } catch (error) {
      if (!isChanged(error)) throw error;
      this.stale = true;
    }
  }

  private refused(error: unknown): void {
    if (isChanged(error)) this.stale = true;
    else failed(error);
  }

  private async removeIt(): Promise<void> {
    const { record: role, places } = this;
    if (!role || !places) return;
    try {
      const hits = await weighEnd(role);
      const title = t(L.removeRoleOf, { name: role.name });
      if (!(await impactDialog(title, t(L.delete), hits, places, () => removeRole(role.roleId), true))) return;
      this.held = undefined;
      this.record = undefined;
      toast(t(L.roleRemoved, { name: role.name }));
      this.tell("tvx-done");
      setQuery({ role: "", tab: "" });
    } catch (error) {
      failed(error);
    }
  }

  private async assign(loginId: number, name: string, has: boolean, undo = true): Promise<void> {
    const { record: role } = this;
    if (!role) return;
    const isMine = loginId === workplace.value.login?.loginId && !has && undo;
    try {
      if (!isMine || (await ask(t(L.ownRole), t(L.ownRoleAsk, { role: role.name }), t(L.giveItUp), "danger"))) {
        await setLoginRole(loginId, role.roleId, has);
        toast(t(has ? L.hasRoleNow : L.hasRoleNoMore, { name, role: role.name }), {
          ...(undo ? { undo: () => this.assign(loginId, name, !has, false) } : {}),
        });
        this.tell("tvx-done");
      }
    } catch (error) {
      failed(error);
    }
    // The rights that are being worked on stay as they were read.
    const { logins } = await roleOf(role.roleId);
    if (this.record) this.record = { ...this.record, logins };
  }

  protected override render(): TemplateResult {
    const { record: role, places } = this;
    if (this.fault && !role)
      return html`<section class="list-screen"><p class="notice danger" role="alert">${icon("circle-alert")}<span>${this.fault}</span>
        <button class="button small" @click=${() => this.load()}>${t(L.tryAgain)}</button></p></section>`;
    if (!role || !places)
      return html`<section class="list-screen" aria-busy="true"><h1 class="skeleton"> </h1></section>`;
    if (this.held?.state === "gone")
      return html`<section class="list-screen"><div class="empty">${icon("shield")}<p>${t(L.roleIsGone)}</p>${this.backLink()}</div></section>`;
    return html`<section class="list-screen role-screen" @keydown=${this.key}>
      <header class="list-head">${this.backLink()}<h1 class="grow">${role.name || `[${role.roleId}]`}</h1>
        ${
          this.isFixed
            ? nothing
            : html`<button class="button" @click=${() => this.removeIt()}>${icon("trash-2")}${t(L.delete)}</button>
        <button class="button primary" aria-disabled=${this.isChanged ? nothing : "true"} aria-busy=${this.busy ? "true" : nothing} @click=${() => this.save()}>${icon("save")}${t(L.save)}</button>`
        }</header>
      ${this.notices()}
      <div class="role-names">
        ${textField({ id: "role-name", label: t(L.name), value: this.name, longest: 50, fixed: this.isFixed, change: (text) => (this.name = text) })}
        ${textField({ id: "role-text", label: t(L.description), value: this.description, longest: 500, fixed: this.isFixed, change: (text) => (this.description = text) })}
      </div>
      ${this.tabs(role)}
      <div id="role-panel" role="tabpanel" aria-labelledby="role-tab-${this.shown}" tabindex="0">${this.panel(role, places)}</div>
    </section>`;
  }

  private backLink(): TemplateResult {
    return html`<a class="button quiet icon-only" href="/torvex/roles.asp" aria-label=${t(L.back)} @click=${(event: Event) => this.back(event)}>${icon("arrow-left")}</a>`;
  }

  private notices() {
    if (this.stale)
      return html`<p class="notice warn" role="alert">${icon("triangle-alert")}<span class="grow">${t(L.roleChanged)}</span>
        <button class="button small" @click=${() => this.load()}>${t(L.loadTheirs)}</button><button class="button small" @click=${() => this.load(true)}>${t(L.goOnWithMine)}</button></p>`;
    if (this.held?.state === "other")
      return html`<p class="notice warn">${icon("lock")}<span>${t(L.openAt, { name: this.held.name || "?" })}</span></p>`;
    return nothing;
  }

  private get shown(): (typeof TABS)[number] {
    return TABS.find((tab) => tab === this.tab) ?? "pages";
  }

  private tabs(role: Role): TemplateResult {
    const count = role.logins.filter(({ held }) => held === 1).length;
    const tabs = [
      { id: "pages", label: t(L.pages) },
      { id: "administration", label: t(L.administration) },
      { id: "logins", label: t(L.logins), ...(count ? { count } : {}) },
    ];
    return html`<tvx-tabs name="role" panel="role-panel" .label=${t(L.rights)} .tabs=${tabs} .chosen=${this.shown}
      @tvx-choose=${(event: CustomEvent<string>) => setQuery({ tab: event.detail })}></tvx-tabs>`;
  }

  private panel(role: Role, places: Places): TemplateResult {
    if (this.shown === "logins") return this.members(role, places);
    if (this.shown === "pages")
      return pageMatrix({
        websites: places.websites,
        grants: this.grants,
        fixed: this.isFixed,
        change: (grants) => (this.grants = grants),
      });
    return entryMatrix({
      places,
      grants: this.entries,
      where: this.where,
      fixed: this.isFixed,
      choose: (where) => (this.where = where),
      change: (entries) => (this.entries = entries),
    });
  }

  private members(role: Role, { mayAssign }: Places): TemplateResult {
    const there = role.logins.filter(({ held }) => held === 1).length;
    return html`<p class="note">${there ? plural(there, L.roleHeldByOne, L.roleHeldByMany) : t(L.roleHeldByNobody)}</p>
      <ul class="member-list" role="list">${role.logins.map(
        (
          login,
        ) => html`<li><label class="check"><input type="checkbox" .checked=${login.held === 1} ?disabled=${!mayAssign}
            @change=${(event: Event) => this.assign(login.loginId, login.name, (event.target as HTMLInputElement).checked)} />
            <span>${login.name} <span class="soft">${login.username}</span></span></label>
          <button class="button small" aria-label=${t(L.whyOf, { name: login.name })} @click=${() => whyDialog(login.loginId, login.name)}>${icon("circle-help")}<span class="wide">${t(L.whyShort)}</span></button></li>`,
      )}</ul>`;
  }

  private key(event: KeyboardEvent): void {
    if (!event.ctrlKey || !["s", "Enter"].includes(event.key)) return;
    event.preventDefault();
    void this.save();
  }
}
