/** A role: what it gives to pages, what it opens, and who has it. */

import { html, type TemplateResult } from "lit";
import { customElement, property, state } from "lit/decorators.js";
import { live } from "lit/directives/live.js";
import { icon } from "../kit/icon";
import "../kit/tvx-tabs";
import { toast } from "../kit/tvx-toast";
import { L, plural, t } from "../labels";
import { failed } from "../pages/actions";
import { textField } from "../records/fields";
import { isChanged } from "../records/lock";
import { RecordElement, type RecordWords } from "../records/record";
import { demandFactor } from "../second-factor/data";
import { setQuery } from "../shell/address";
import { assign } from "./assign";
import {
  type Places,
  placesOf,
  type Role,
  type RoleChange,
  type RoleLogin,
  removeRole,
  roleLoginsOf,
  roleOf,
  saveRole,
  weigh,
  weighEnd,
} from "./data";
import { impactDialog } from "./impact-dialog";
import { entryMatrix, pageMatrix } from "./matrices";
import {
  changedEntries,
  changedGrants,
  type EditGrant,
  type EntryGrant,
  type Hit,
  type Where,
  withEntries,
  withGrants,
} from "./model/grants";
import { whyDialog } from "./tvx-why";
import "./rights.css";

const TABS = ["pages", "administration", "logins"] as const;

interface PlacedRole extends Role {
  readonly places: Places;
}

@customElement("tvx-role")
export class TvxRole extends RecordElement<PlacedRole> {
  @property() tab = "";
  @state() private name = "";
  @state() private description = "";
  @state() private grants: ReadonlyMap<string, EditGrant> = new Map();
  @state() private entries: ReadonlyMap<string, EntryGrant> = new Map();
  @state() private where: Where = { site: "", lang: "" };
  protected readonly item = "role";
  protected readonly address = "/torvex/roles.asp";
  protected readonly words: RecordWords = { icon: "shield", isGone: L.roleIsGone, isOthers: L.roleChanged };

  protected async read(roleId: number): Promise<PlacedRole> {
    const [role, places] = await Promise.all([roleOf(roleId), this.record?.places ?? placesOf()]);
    return { ...role, places };
  }

  /** What is kept of one's own is what one has changed, on top of what is there now. */
  protected take(role: Role, keepMine: boolean): void {
    const { record: was, change: mine } = this;
    this.name = keepMine && was && mine.name !== was.name ? mine.name : role.name;
    this.description = keepMine && was && mine.description !== was.description ? mine.description : role.description;
    this.grants = keepMine ? withGrants(role.grants, mine.grants) : role.grants;
    this.entries = keepMine ? withEntries(role.entries, mine.entries) : role.entries;
  }

  private get change(): RoleChange {
    const { record: role } = this;
    const grants = role ? changedGrants(role.grants, this.grants) : [];
    const entries = role ? changedEntries(role.entries, this.entries) : [];
    return { name: this.name, description: this.description, grants, entries };
  }

  protected get differs(): boolean {
    const { record: role, change } = this;
    if (!role) return false;
    const isNamed = change.name !== role.name || change.description !== role.description;
    return isNamed || change.grants.length > 0 || change.entries.length > 0;
  }

  /** Whom it hits is confirmed before. */
  protected async store(role: PlacedRole): Promise<string> {
    const { change } = this;
    const hits = await weigh(role.roleId, change.grants, change.entries);
    const save = (): Promise<unknown> => saveRole(role, change);
    if (hits.length === 0) await save();
    else if (!(await this.confirmed(t(L.saveRoleOf, { name: role.name }), hits, role.places, save))) return "";
    return t(L.recordSaved, { name: change.name });
  }

  /** That the role has changed elsewhere is told behind the dialog, all else in it. */
  private async confirmed(
    title: string,
    hits: readonly Hit[],
    places: Places,
    save: () => Promise<unknown>,
  ): Promise<boolean> {
    let changed: unknown;
    const run = (): Promise<unknown> =>
      save().catch((error) => {
        if (!isChanged(error)) throw error;
        changed = error;
      });
    const goesOn = await impactDialog(title, t(L.save), hits, places, run);
    if (changed) throw changed;
    return goesOn;
  }

  private async removeIt(role: PlacedRole): Promise<void> {
    const { roleId, name, places } = role;
    try {
      const hits = await weighEnd(role);
      const run = (): Promise<unknown> => removeRole(roleId);
      if (await impactDialog(t(L.removeRoleOf, { name }), t(L.delete), hits, places, run, true))
        this.removed(t(L.roleRemoved, { name }));
    } catch (error) {
      failed(error);
    }
  }

  /** Counts at once, as who has the role does. */
  private async demand({ roleId, name }: Role, isDemanded: boolean): Promise<void> {
    try {
      await demandFactor(roleId, isDemanded);
      toast(t(isDemanded ? L.roleDemands : L.roleDemandsNot, { name }));
    } catch (error) {
      failed(error);
    }
    await this.renew(async (id) => ({ demandsFactor: (await roleOf(id)).demandsFactor }));
  }

  private assign({ roleId, name: role }: Role, { loginId, name }: RoleLogin, has: boolean): void {
    const member = { loginId, name, roleId, role };
    void assign(member, has, () => this.renew(async (id) => ({ logins: await roleLoginsOf(id) })));
  }

  protected heading({ name, roleId }: Role): string {
    return name || `[${roleId}]`;
  }

  protected buttons(role: PlacedRole): TemplateResult {
    return html`<button class="button" @click=${() => this.removeIt(role)}>${icon("trash-2")}${t(L.delete)}</button>`;
  }

  protected sheet(role: PlacedRole): TemplateResult {
    return html`<div class="role-names">
        ${textField({ id: "role-name", label: t(L.name), value: this.name, longest: 50, fixed: this.isFixed, change: (text) => (this.name = text) })}
        ${textField({ id: "role-text", label: t(L.description), value: this.description, longest: 500, fixed: this.isFixed, change: (text) => (this.description = text) })}
      </div>
      <div><label class="check"><input type="checkbox" aria-describedby="role-factor-hint" .checked=${live(role.demandsFactor)} ?disabled=${this.isFixed}
          @change=${(event: Event) => this.demand(role, (event.target as HTMLInputElement).checked)} /><span>${t(L.roleDemandsFactor)}</span></label>
        <p class="note" id="role-factor-hint">${t(L.roleDemandsFactorHint)}</p></div>
      ${this.tabs(role)}
      <div id="role-panel" role="tabpanel" aria-labelledby="role-tab-${this.shown}" tabindex="0">${this.panel(role)}</div>`;
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

  private panel(role: PlacedRole): TemplateResult {
    const { places } = role;
    if (this.shown === "logins") return this.members(role);
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

  private members(role: PlacedRole): TemplateResult {
    const there = role.logins.filter(({ held }) => held === 1).length;
    return html`<p class="note">${there ? plural(there, L.roleHeldByOne, L.roleHeldByMany) : t(L.roleHeldByNobody)}</p>
      <ul class="member-list" role="list">${role.logins.map(
        (
          login,
        ) => html`<li><label class="check"><input type="checkbox" .checked=${live(login.held === 1)} ?disabled=${!role.places.mayAssign}
            @change=${(event: Event) => this.assign(role, login, (event.target as HTMLInputElement).checked)} />
            <span>${login.name} <span class="soft">${login.username}</span></span></label>
          <button class="button small" aria-label=${t(L.whyOf, { name: login.name })} @click=${() => whyDialog(login.loginId, login.name)}>${icon("circle-help")}<span class="wide">${t(L.whyShort)}</span></button></li>`,
      )}</ul>`;
  }
}
