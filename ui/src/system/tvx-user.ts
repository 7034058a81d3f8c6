/** The account of a visitor: names, days, a new password, and the groups that it is in. */

import { html, nothing, type TemplateResult } from "lit";
import { customElement, state } from "lit/decorators.js";
import { live } from "lit/directives/live.js";
import { icon } from "../kit/icon";
import { toast } from "../kit/tvx-toast";
import { L, t } from "../labels";
import { failed } from "../pages/actions";
import { fromDateField, toDateField } from "../pages/model/setup";
import { whenText } from "../pages/words";
import { textField } from "../records/fields";
import { changedParts, withOwn } from "../records/model/own-parts";
import { Judgement, refuseCommon } from "../records/passwords";
import { RecordElement, type RecordWords } from "../records/record";
import { resetFactorButton, resetFactorOf } from "../records/reset-factor";
import {
  removeUser,
  resetUserFactor,
  saveUser,
  setUserGroup,
  type User,
  type UserFields,
  type UserGroup,
  type UserRecord,
  userFactorOf,
  userGroupsOf,
  userOf,
} from "./data";
import "../rights/rights.css";
import "./system.css";

const PARTS = ["username", "firstname", "lastname", "validFrom", "validTo"] as const;

const fieldsOf = (user: User): UserFields => ({
  username: user.username,
  firstname: user.firstname,
  lastname: user.lastname,
  validFrom: user.validFrom,
  validTo: user.validTo,
});

@customElement("tvx-user")
export class TvxUser extends RecordElement<UserRecord> {
  @state() private mine: UserFields = { username: "", firstname: "", lastname: "", validFrom: "", validTo: "" };
  @state() private password = "";
  private readonly judgement = new Judgement(() => this.requestUpdate());
  protected readonly item = "user";
  protected readonly address = "/torvex/users.asp";
  protected readonly words: RecordWords = { icon: "user", isGone: L.recordIsGone, isOthers: L.recordChanged };

  protected read(userId: number): Promise<UserRecord> {
    return userOf(userId);
  }

  protected take({ user }: UserRecord, keepMine: boolean): void {
    const { record: was, mine } = this;
    const now = fieldsOf(user);
    this.mine = keepMine && was ? withOwn(PARTS, now, mine, was.user) : now;
    if (!keepMine) this.type("");
  }

  private type(password: string): void {
    this.password = password;
    this.judgement.typed(password);
  }

  protected get differs(): boolean {
    const { record: was, mine } = this;
    return was !== undefined && (this.password !== "" || changedParts(PARTS, mine, was.user).length > 0);
  }

  protected async store(record: UserRecord): Promise<string> {
    await refuseCommon(this.password);
    await saveUser(record, this.mine, this.password);
    return t(L.recordSaved, { name: this.mine.username });
  }

  protected heading({ user }: UserRecord): string {
    return user.username;
  }

  private removeIt({ userId, username: name }: User): Promise<void> {
    const says = t(L.removeUserAsk, { name });
    const said = t(L.recordRemoved, { name });
    return this.askToRemove(t(L.removeRecordOf, { name }), says, () => removeUser(userId), said);
  }

  private async put(user: User, { groupId, name: group }: UserGroup, has: boolean, undo = true): Promise<void> {
    try {
      await setUserGroup(user.userId, groupId, has);
      const said = t(has ? L.inGroupNow : L.notInGroup, { name: user.username, group });
      toast(said, undo ? { undo: () => this.put(user, { groupId, name: group, member: 0 }, !has, false) } : {});
    } catch (error) {
      failed(error);
    }
    await this.renew(async (id) => ({ groups: await userGroupsOf(id) }));
  }

  private async reset({ userId, username }: User): Promise<void> {
    if (await resetFactorOf(username, () => resetUserFactor(userId)))
      await this.renew(async (id) => ({ factor: await userFactorOf(id) }));
  }

  protected buttons({ user, factor }: UserRecord): TemplateResult {
    return html`${factor ? resetFactorButton(() => this.reset(user)) : nothing}
      <button class="button" @click=${() => this.removeIt(user)}>${icon("trash-2")}${t(L.delete)}</button>`;
  }

  private factorLine({ factor }: UserRecord): TemplateResult {
    const says = factor
      ? `${t(L.userFactorSince, { date: whenText(factor.since) })} ${t(L.factorCodesLeft, { count: factor.codesLeft })}`
      : t(L.userFactorNone);
    return html`<p class="note user-factor">${says}</p>`;
  }

  protected sheet(record: UserRecord): TemplateResult {
    const { user, groups } = record;
    const set = (part: keyof UserFields, text: string): void => {
      this.mine = { ...this.mine, [part]: text };
    };
    const field = (part: keyof UserFields, label: string): TemplateResult =>
      textField({
        id: `user-${part}`,
        label,
        value: this.mine[part],
        longest: 50,
        fixed: this.isFixed,
        change: (text) => set(part, text),
      });
    const day = (part: "validFrom" | "validTo", label: string): TemplateResult =>
      textField({
        id: `user-${part}`,
        label,
        value: toDateField(this.mine[part]),
        longest: 10,
        type: "date",
        fixed: this.isFixed,
        change: (text) => set(part, fromDateField(text)),
      });
    return html`<div class="login-form">${field("username", t(L.userName))}
        ${textField({
          id: "user-password",
          label: t(L.newPassword),
          value: this.password,
          longest: 100,
          type: "password",
          fixed: this.isFixed,
          hint: t(L.keepPassword),
          wrong: this.judgement.wrong,
          change: (text) => this.type(text),
        })}
        ${field("firstname", t(L.firstName))}${field("lastname", t(L.lastName))}${day("validFrom", t(L.validFrom))}${day("validTo", t(L.validTo))}</div>
      ${this.factorLine(record)}
      <h2>${t(L.groups)}</h2>
      ${
        groups.length === 0
          ? html`<p class="soft">${t(L.noGroupsYet)}</p>`
          : html`<ul class="member-list" role="list">${groups.map(
              (
                group,
              ) => html`<li><label class="check"><input type="checkbox" .checked=${live(group.member === 1)} ?disabled=${this.isFixed}
        @change=${(event: Event) => this.put(user, group, (event.target as HTMLInputElement).checked)} /><span>${group.name}</span></label></li>`,
            )}</ul>`
      }`;
  }
}
