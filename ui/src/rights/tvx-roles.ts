/** The roles, and one of them where the address names it. */

import { html, nothing, type TemplateResult } from "lit";
import { customElement, property, state } from "lit/decorators.js";
import { TvxElement } from "../kit/element";
import { icon } from "../kit/icon";
import { dialog } from "../kit/tvx-dialog";
import "../kit/tvx-table";
import type { TableColumn } from "../kit/tvx-table";
import { L, t } from "../labels";
import { setQuery } from "../shell/address";
import { addRole, mayChange, ROLES, type RoleLine, rolesOf } from "./data";
import { filterField, matches, textField } from "./fields";
import "./tvx-role";
import "../pages/lists.css";
import "./rights.css";

@customElement("tvx-roles")
export class TvxRoles extends TvxElement {
  @property({ attribute: false }) params = new URLSearchParams();
  @state() private rows: readonly RoleLine[] | undefined;
  @state() private fault = "";
  @state() private mayAdd = false;

  override connectedCallback(): void {
    super.connectedCallback();
    void this.load();
  }

  private async load(): Promise<void> {
    try {
      const [rows, mayAdd] = await Promise.all([rolesOf(), mayChange(ROLES)]);
      this.rows = rows;
      this.mayAdd = mayAdd;
      this.fault = "";
    } catch (error) {
      this.fault = error instanceof Error ? error.message : String(error);
    }
  }

  private async add(): Promise<void> {
    let name = "";
    let description = "";
    let made = "";
    await dialog({
      title: t(L.newRole),
      body: () => html`<div class="stack">
        ${textField({ id: "role-new-name", label: t(L.name), value: name, longest: 50, change: (text) => (name = text) })}
        ${textField({ id: "role-new-text", label: t(L.description), value: description, longest: 500, change: (text) => (description = text) })}</div>`,
      actions: () => [
        { name: "cancel", label: t(L.cancel) },
        {
          name: "go",
          label: t(L.addIt),
          kind: "primary",
          run: async () => {
            made = String(await addRole(name, description));
          },
        },
      ],
    });
    if (!made) return;
    void this.load();
    setQuery({ role: made }, { push: true });
  }

  private get columns(): TableColumn<RoleLine>[] {
    return [
      {
        id: "name",
        label: t(L.role),
        cell: (row) => html`<a href="/torvex/roles.asp?role=${row.roleId}">${row.roleName || `[${row.roleId}]`}</a>`,
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

  protected override render(): TemplateResult {
    const role = Number(this.params.get("role"));
    if (role > 0)
      return html`<tvx-role .recordId=${role} .tab=${this.params.get("tab") ?? ""} @tvx-done=${() => void this.load()}></tvx-role>`;
    const words = this.params.get("words") ?? "";
    const rows = this.rows?.filter((row) => matches(words, row.roleName, row.roleDesc));
    return html`<section class="list-screen">
      <header class="list-head"><h1>${t(L.roles)}</h1><span class="grow"></span>${filterField(words)}
        ${this.mayAdd ? html`<button class="button primary" @click=${() => this.add()}>${icon("plus")}${t(L.newRole)}</button>` : nothing}</header>
      ${this.fault ? html`<p class="notice danger" role="alert">${icon("circle-alert")}<span>${this.fault}</span><button class="button small" @click=${() => this.load()}>${t(L.tryAgain)}</button></p>` : nothing}
      ${this.rows && rows?.length === 0 ? html`<div class="empty">${icon("shield")}<p>${words ? t(L.nothingFound) : t(L.rolesEmpty)}</p></div>` : nothing}
      ${
        rows?.length
          ? html`<tvx-table class="card" .label=${t(L.roles)} .columns=${this.columns} .rows=${rows} .keyOf=${(row: RoleLine) => String(row.roleId)} .nameOf=${(row: RoleLine) => row.roleName}
            @tvx-open=${(event: CustomEvent<RoleLine>) => setQuery({ role: String(event.detail.roleId) }, { push: true })}></tvx-table>`
          : nothing
      }
    </section>`;
  }
}
