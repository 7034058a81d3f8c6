/** A group of visitors: its name, and where they come to. */

import { html, type TemplateResult } from "lit";
import { customElement, state } from "lit/decorators.js";
import { icon } from "../kit/icon";
import { L, t } from "../labels";
import { textField } from "../records/fields";
import { changedParts, withOwn } from "../records/model/own-parts";
import { RecordElement, type RecordWords } from "../records/record";
import { type Group, type GroupFields, type GroupRecord, groupOf, removeGroup, saveGroup } from "./data";
import "../rights/rights.css";
import "./system.css";

const PARTS = ["name", "description", "entryPage", "exitPage"] as const;
const pageText = (page: number): string => (page > 0 ? String(page) : "");

const fieldsOf = ({ name, description, entryPage, exitPage }: Group): GroupFields => ({
  name,
  description: description ?? "",
  entryPage: pageText(entryPage),
  exitPage: pageText(exitPage),
});

@customElement("tvx-group")
export class TvxGroup extends RecordElement<GroupRecord> {
  @state() private mine: GroupFields = { name: "", description: "", entryPage: "", exitPage: "" };
  protected readonly item = "group";
  protected readonly address = "/torvex/groups.asp";
  protected readonly words: RecordWords = { icon: "users", isGone: L.recordIsGone, isOthers: L.recordChanged };

  protected read(groupId: number): Promise<GroupRecord> {
    return groupOf(groupId);
  }

  protected take({ group }: GroupRecord, keepMine: boolean): void {
    const { record: was, mine } = this;
    const now = fieldsOf(group);
    this.mine = keepMine && was ? withOwn(PARTS, now, mine, fieldsOf(was.group)) : now;
  }

  protected get differs(): boolean {
    const { record: was, mine } = this;
    return was !== undefined && changedParts(PARTS, mine, fieldsOf(was.group)).length > 0;
  }

  protected async store(record: GroupRecord): Promise<string> {
    await saveGroup(record, this.mine);
    return t(L.recordSaved, { name: this.mine.name });
  }

  protected heading({ group }: GroupRecord): string {
    return group.name;
  }

  private removeIt({ groupId, name, users, pages, folders }: Group): Promise<void> {
    const says = t(L.removeGroupAsk, { users, pages, folders });
    const said = t(L.recordRemoved, { name });
    return this.askToRemove(t(L.removeRecordOf, { name }), says, () => removeGroup(groupId), said);
  }

  protected buttons({ group }: GroupRecord): TemplateResult {
    return html`<button class="button" @click=${() => this.removeIt(group)}>${icon("trash-2")}${t(L.delete)}</button>`;
  }

  protected sheet({ group }: GroupRecord): TemplateResult {
    const field = (part: (typeof PARTS)[number], label: string, longest: number, hint = ""): TemplateResult =>
      textField({
        id: `group-${part}`,
        label,
        value: this.mine[part],
        longest,
        fixed: this.isFixed,
        change: (text) => {
          this.mine = { ...this.mine, [part]: text };
        },
        ...(hint ? { hint } : {}),
      });
    const hintOf = (title: string): string => title || t(L.pageIdentHint);
    return html`<div class="login-form">${field("name", t(L.name), 50)}${field("description", t(L.description), 500)}
        ${field("entryPage", t(L.entryPage), 200, hintOf(group.entryTitle))}${field("exitPage", t(L.exitPage), 200, hintOf(group.exitTitle))}</div>
      <p><a class="button" href="/torvex/users.asp?of=${group.groupId}">${icon("users")}${t(L.showMembers)}</a> <span class="note">${t(L.users)}: ${group.users} · ${t(L.pages)}: ${group.pages} · ${t(L.foldersColumn)}: ${group.folders}</span></p>`;
  }
}
