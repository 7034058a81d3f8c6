/** The logins, and one of them where the address names it. */

import { html, nothing, type TemplateResult } from "lit";
import { customElement, property, state } from "lit/decorators.js";
import { TvxElement } from "../kit/element";
import { icon } from "../kit/icon";
import "../kit/tvx-table";
import type { TableColumn } from "../kit/tvx-table";
import { L, t } from "../labels";
import { whenText } from "../pages/words";
import { setQuery } from "../shell/address";
import { LOGINS, type LoginLine, loginsOf, mayChange } from "./data";
import { filterField, matches } from "./fields";
import { newLoginDialog } from "./login-dialogs";
import "./tvx-login";
import { isValidOn, today } from "./words";
import "../pages/lists.css";
import "./rights.css";

@customElement("tvx-logins")
export class TvxLogins extends TvxElement {
  @property({ attribute: false }) params = new URLSearchParams();
  @state() private rows: readonly LoginLine[] | undefined;
  @state() private fault = "";
  @state() private mayAdd = false;

  override connectedCallback(): void {
    super.connectedCallback();
    void this.load();
  }

  private async load(): Promise<void> {
    try {
      const [rows, mayAdd] = await Promise.all([loginsOf(), mayChange(LOGINS)]);
      this.rows = rows;
      this.mayAdd = mayAdd;
      this.fault = "";
    } catch (error) {
      this.fault = error instanceof Error ? error.message : String(error);
    }
  }

  private async add(): Promise<void> {
    const made = await newLoginDialog();
    if (!made) return;
    void this.load();
    setQuery({ login: made }, { push: true });
  }

  private marks(row: LoginLine): TemplateResult {
    return html`${row.isOnline ? html`<span class="rights-mark done">${t(L.onlineNow)}</span>` : nothing}
      ${row.isProgram ? html`<span class="rights-mark">${t(L.isProgram)}</span>` : nothing}
      ${isValidOn(row, today()) ? nothing : html`<span class="rights-mark warn">${t(L.notValidNow)}</span>`}`;
  }

  private get columns(): TableColumn<LoginLine>[] {
    return [
      {
        id: "name",
        label: t(L.name),
        cell: (row) =>
          html`<a href="/torvex/logins.asp?login=${row.loginId}">${row.name || row.username}</a> ${this.marks(row)}`,
        by: (row) => row.name,
      },
      { id: "user", label: t(L.userName), cell: (row) => row.username, by: (row) => row.username },
      { id: "job", label: t(L.job), cell: (row) => row.job, by: (row) => row.job, wide: true },
      {
        id: "last",
        label: t(L.lastLogin),
        cell: (row) => whenText(row.lastLogin) || t(L.neverYet),
        by: (row) => row.lastLogin ?? "",
        wide: true,
        width: "128px",
      },
      {
        id: "store",
        label: t(L.password),
        cell: (row) => (row.isProgram ? nothing : t(row.isStrong ? L.storeStrong : L.storeShort)),
        by: (row) => row.isStrong,
        wide: true,
        width: "128px",
      },
      {
        id: "roles",
        label: t(L.roles),
        cell: (row) => row.roles,
        by: (row) => row.roles,
        numeric: true,
        wide: true,
        width: "80px",
      },
    ];
  }

  protected override render(): TemplateResult {
    const login = Number(this.params.get("login"));
    if (login > 0) return html`<tvx-login .recordId=${login} @tvx-done=${() => void this.load()}></tvx-login>`;
    const words = this.params.get("words") ?? "";
    const rows = this.rows?.filter((row) => matches(words, row.name, row.username, row.job));
    return html`<section class="list-screen">
      <header class="list-head"><h1>${t(L.logins)}</h1><span class="grow"></span>${filterField(words)}
        ${this.mayAdd ? html`<button class="button primary" @click=${() => this.add()}>${icon("plus")}${t(L.newLogin)}</button>` : nothing}</header>
      ${this.fault ? html`<p class="notice danger" role="alert">${icon("circle-alert")}<span>${this.fault}</span><button class="button small" @click=${() => this.load()}>${t(L.tryAgain)}</button></p>` : nothing}
      ${this.rows && rows?.length === 0 ? html`<div class="empty">${icon("users")}<p>${t(L.nothingFound)}</p></div>` : nothing}
      ${
        rows?.length
          ? html`<tvx-table class="card" .label=${t(L.logins)} .columns=${this.columns} .rows=${rows} .keyOf=${(row: LoginLine) => String(row.loginId)} .nameOf=${(row: LoginLine) => row.name}
            @tvx-open=${(event: CustomEvent<LoginLine>) => setQuery({ login: String(event.detail.loginId) }, { push: true })}></tvx-table>`
          : nothing
      }
    </section>`;
  }
}
