/** The groups of visitors, and one of them where the address names it. */

import { html, type TemplateResult } from "lit";
import { customElement } from "lit/decorators.js";
import type { TableColumn } from "../kit/tvx-table";
import { L, t } from "../labels";
import { addDialog } from "../records/add-dialog";
import { textField } from "../records/fields";
import { type ListWords, RecordList } from "../records/record-list";
import { addGroup, GROUPS, type Group, groupsOf } from "./data";
import "./tvx-group";
import "../rights/rights.css";
import "./system.css";

@customElement("tvx-groups")
export class TvxGroups extends RecordList<Group> {
  protected readonly address = "/torvex/groups.asp";
  protected readonly key = "group";
  protected readonly entry = GROUPS;
  protected readonly words: ListWords = { icon: "users", title: L.groups, add: L.newGroup, isEmpty: L.groupsEmpty };

  protected read(): Promise<Group[]> {
    return groupsOf();
  }

  protected add(): Promise<string> {
    let name = "";
    let text = "";
    return addDialog(
      t(L.newGroup),
      () => html`${textField({ id: "group-new-name", label: t(L.name), value: name, longest: 50, change: (value) => (name = value) })}
        ${textField({ id: "group-new-text", label: t(L.description), value: text, longest: 500, change: (value) => (text = value) })}`,
      () => addGroup(name, text),
    );
  }

  protected one(groupId: number): TemplateResult {
    return html`<tvx-group .recordId=${groupId} @tvx-done=${this.load}></tvx-group>`;
  }

  protected idOf({ groupId }: Group): number {
    return groupId;
  }

  protected nameOf({ name }: Group): string {
    return name;
  }

  protected textsOf({ name, description }: Group): string[] {
    return [name, description ?? ""];
  }

  protected get columns(): TableColumn<Group>[] {
    const count = (id: "users" | "pages" | "folders", label: string, wide: boolean): TableColumn<Group> => ({
      id,
      label,
      cell: (row) => row[id],
      by: (row) => row[id],
      numeric: true,
      wide,
      width: "96px",
    });
    return [
      {
        id: "name",
        label: t(L.name),
        cell: (row) => this.link(row, row.name || `[${row.groupId}]`),
        by: (row) => row.name,
      },
      {
        id: "text",
        label: t(L.description),
        cell: (row) => row.description ?? "",
        by: (row) => row.description ?? "",
        wide: true,
      },
      count("users", t(L.users), false),
      count("pages", t(L.pages), true),
      count("folders", t(L.foldersColumn), true),
    ];
  }
}
