/** The roles, and one of them where the address names it. */

import { html, type TemplateResult } from "lit";
import { customElement } from "lit/decorators.js";
import type { TableColumn } from "../kit/tvx-table";
import { L, t } from "../labels";
import { addDialog } from "../records/add-dialog";
import { textField } from "../records/fields";
import { type ListWords, RecordList } from "../records/record-list";
import { addRole, ROLES, type RoleLine, rolesOf } from "./data";
import "./tvx-role";
import "./rights.css";

@customElement("tvx-roles")
export class TvxRoles extends RecordList<RoleLine> {
  protected readonly address = "/torvex/roles.asp";
  protected readonly key = "role";
  protected readonly entry = ROLES;
  protected readonly words: ListWords = {
    icon: "shield",
    title: L.rolesAndRights,
    add: L.newRole,
    isEmpty: L.rolesEmpty,
  };

  protected read(): Promise<RoleLine[]> {
    return rolesOf();
  }

  protected add(): Promise<string> {
    let name = "";
    let description = "";
    const fields = (): TemplateResult =>
      html`${textField({ id: "role-new-name", label: t(L.name), value: name, longest: 50, change: (text) => (name = text) })}
        ${textField({ id: "role-new-text", label: t(L.description), value: description, longest: 500, change: (text) => (description = text) })}`;
    return addDialog(t(L.newRole), fields, () => addRole(name, description));
  }

  protected one(roleId: number): TemplateResult {
    return html`<tvx-role .recordId=${roleId} .tab=${this.params.get("tab") ?? ""} @tvx-done=${this.load}></tvx-role>`;
  }

  protected idOf({ roleId }: RoleLine): number {
    return roleId;
  }

  protected nameOf({ roleName }: RoleLine): string {
    return roleName;
  }

  protected textsOf({ roleName, roleDesc }: RoleLine): string[] {
    return [roleName, roleDesc];
  }

  protected get columns(): TableColumn<RoleLine>[] {
    return [
      {
        id: "name",
        label: t(L.role),
        cell: (row) => this.link(row, row.roleName || `[${row.roleId}]`),
        by: (row) => row.roleName,
      },
      { id: "text", label: t(L.description), cell: (row) => row.roleDesc, by: (row) => row.roleDesc, wide: true },
      {
        id: "logins",
        label: t(L.logins),
        cell: (row) => row.logins,
        by: (row) => row.logins,
        numeric: true,
        width: "104px",
      },
    ];
  }
}
