/** The logins, and one of them where the address names it. */

import { html, nothing, type TemplateResult } from "lit";
import { customElement } from "lit/decorators.js";
import type { TableColumn } from "../kit/tvx-table";
import { L, t } from "../labels";
import { todayAsDigits } from "../labels/moments";
import { whenText } from "../pages/words";
import { type ListWords, RecordList } from "../records/record-list";
import { LOGINS, type LoginLine, loginsOf } from "./data";
import { newLoginDialog } from "./login-dialogs";
import "./tvx-login";
import { isValidOn } from "./words";
import "./rights.css";

@customElement("tvx-logins")
export class TvxLogins extends RecordList<LoginLine> {
  protected readonly address = "/torvex/logins.asp";
  protected readonly key = "login";
  protected readonly entry = LOGINS;
  protected readonly words: ListWords = { icon: "users", title: L.logins, add: L.newLogin, isEmpty: L.nothingFound };

  protected read(): Promise<LoginLine[]> {
    return loginsOf();
  }

  protected add(): Promise<string> {
    return newLoginDialog();
  }

  protected one(loginId: number): TemplateResult {
    return html`<tvx-login .recordId=${loginId} @tvx-done=${this.load}></tvx-login>`;
  }

  protected idOf({ loginId }: LoginLine): number {
    return loginId;
  }

  protected nameOf({ name }: LoginLine): string {
    return name;
  }

  protected textsOf({ name, username, job }: LoginLine): string[] {
    return [name, username, job];
  }

  private marks(row: LoginLine): TemplateResult {
    return html`${row.isOnline ? html`<span class="rights-mark done">${t(L.onlineNow)}</span>` : nothing}
      ${row.isProgram ? html`<span class="rights-mark">${t(L.isProgram)}</span>` : nothing}
      ${isValidOn(row, todayAsDigits()) ? nothing : html`<span class="rights-mark warn">${t(L.notValidNow)}</span>`}`;
  }

  protected get columns(): TableColumn<LoginLine>[] {
    return [
      {
        id: "name",
        label: t(L.name),
        cell: (row) => html`${this.link(row, row.name || row.username)} ${this.marks(row)}`,
        by: (row) => row.name,
      },
      { id: "user", label: t(L.userName), cell: (row) => row.username, by: (row) => row.username, wide: true },
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
}
