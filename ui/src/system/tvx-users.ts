/** The accounts of visitors: found by words and group, read out of a file, and one of them where the address names it. */

import { html, nothing, type PropertyValues, type TemplateResult } from "lit";
import { customElement, property, state } from "lit/decorators.js";
import { TvxElement } from "../kit/element";
import { faultNotice } from "../kit/fault-notice";
import { icon } from "../kit/icon";
import { Parts } from "../kit/parts";
import "../kit/tvx-table";
import type { TvxDialog } from "../kit/tvx-dialog";
import type { TableColumn } from "../kit/tvx-table";
import { L, t } from "../labels";
import { todayAsDigits } from "../labels/moments";
import { fromDateField } from "../pages/model/setup";
import { addDialog } from "../records/add-dialog";
import { filterField, textField } from "../records/fields";
import { mayChange } from "../records/lock";
import { Judgement, refuseCommon } from "../records/passwords";
import { isValidOn } from "../rights/words";
import { setQuery } from "../shell/address";
import { addUser, type Group, groupsOf, USERS, type User, type UserFields, usersOf } from "./data";
import { importUsersDialog } from "./import-users";
import "./tvx-user";
import "../pages/lists.css";
import "../rights/rights.css";
import "./system.css";

/** What one answer holds. */
const AT_ONCE = 500;

const fullName = ({ firstname, lastname }: Pick<User, "firstname" | "lastname">): string =>
  [lastname, firstname].filter(Boolean).join(", ");

@customElement("tvx-users")
export class TvxUsers extends TvxElement {
  @property({ attribute: false }) params = new URLSearchParams();
  @state() private groups: readonly Group[] = [];
  @state() private mayAdd = false;
  private readonly users = new Parts<User>(this, (from) => usersOf(this.words, this.group, from), AT_ONCE);
  private shown: string | undefined;

  override connectedCallback(): void {
    super.connectedCallback();
    void this.begin();
  }

  protected override willUpdate(_changed: PropertyValues<this>): void {
    if (this.wish !== this.shown) void this.load();
  }

  private get words(): string {
    return this.params.get("words") ?? "";
  }

  private get group(): number {
    return Number(this.params.get("of")) || 0;
  }

  private get wish(): string {
    return `${this.group} ${this.words}`;
  }

  private async begin(): Promise<void> {
    this.mayAdd = await mayChange(USERS).catch(() => false);
    // Whoever may look at users needn't be one who may look at groups.
    this.groups = await groupsOf().catch(() => []);
  }

  private readonly load = (): Promise<void> => {
    this.shown = this.wish;
    return this.users.load();
  };

  private open(userId: string): void {
    setQuery({ user: userId }, { push: true });
  }

  private async add(): Promise<void> {
    let fields: UserFields = { username: "", firstname: "", lastname: "", validFrom: "", validTo: "" };
    let password = "";
    const field = (part: keyof UserFields, label: string, type = "text"): TemplateResult =>
      textField({
        id: `user-new-${part}`,
        label,
        value: "",
        longest: 50,
        type,
        change: (text) => (fields = { ...fields, [part]: type === "date" ? fromDateField(text) : text }),
      });
    let box: TvxDialog | undefined;
    const judgement = new Judgement(() => box?.requestUpdate());
    const passwordField = (): TemplateResult =>
      textField({
        id: "user-new-password",
        label: t(L.password),
        value: "",
        longest: 100,
        type: "password",
        wrong: judgement.wrong,
        change: (text) => {
          password = text;
          judgement.typed(text);
          box?.requestUpdate();
        },
      });
    const fieldsIn = (dialog: TvxDialog): TemplateResult => {
      box = dialog;
      return html`${field("username", t(L.userName))}${passwordField()}
        ${field("firstname", t(L.firstName))}${field("lastname", t(L.lastName))}${field("validFrom", t(L.validFrom), "date")}${field("validTo", t(L.validTo), "date")}`;
    };
    const made = await addDialog(t(L.newUser), fieldsIn, async () => {
      await refuseCommon(password);
      return addUser(fields, password);
    });
    if (!made) return;
    void this.load();
    this.open(made);
  }

  private async read(): Promise<void> {
    if (await importUsersDialog()) await this.load();
  }

  private get columns(): TableColumn<User>[] {
    return [
      {
        id: "user",
        label: t(L.userName),
        cell: (row) =>
          html`<a href="/torvex/users.asp?user=${row.userId}">${row.username || `[${row.userId}]`}</a> ${isValidOn({ validFrom: row.validFrom ?? "", validTo: row.validTo ?? "" }, todayAsDigits()) ? nothing : html`<span class="rights-mark warn">${t(L.notValidNow)}</span>`}`,
        by: (row) => row.username,
      },
      { id: "name", label: t(L.name), cell: (row) => fullName(row), by: (row) => fullName(row), wide: true },
      {
        id: "groups",
        label: t(L.groups),
        cell: (row) => row.userGroups,
        by: (row) => row.userGroups,
        numeric: true,
        width: "96px",
      },
    ];
  }

  protected override render(): TemplateResult {
    const chosen = Number(this.params.get("user"));
    if (chosen > 0) return html`<tvx-user .recordId=${chosen} @tvx-done=${this.load}></tvx-user>`;
    return html`<section class="list-screen" aria-busy=${this.users.busy ? "true" : nothing}>
      <header class="list-head"><h1>${t(L.users)}</h1><span class="grow"></span>${filterField(this.words)}
        ${
          this.groups.length
            ? html`<select class="select word-language" aria-label=${t(L.groups)} @change=${(event: Event) => setQuery({ of: (event.target as HTMLSelectElement).value })}><option value="" ?selected=${this.group === 0}>${t(L.anyGroup)}</option>
          ${this.groups.map(({ groupId, name }) => html`<option value=${groupId} ?selected=${groupId === this.group}>${name}</option>`)}</select>`
            : nothing
        }
        <a class="button" href="/torvex/api/export/users.csv" download>${t(L.sitemapCsv)}</a>
        ${this.mayAdd ? html`<button class="button" @click=${this.read}>${icon("upload")}${t(L.readCsv)}</button><button class="button primary" @click=${this.add}>${icon("plus")}${t(L.newUser)}</button>` : nothing}</header>
      ${faultNotice(this.users.fault, this.load)}
      ${this.users.rows ? this.found(this.users.rows) : nothing}
    </section>`;
  }

  private found(rows: readonly User[]): TemplateResult {
    if (rows.length === 0)
      return html`<div class="empty">${icon("user")}<p>${this.words || this.group ? t(L.nothingFound) : t(L.usersEmpty)}</p></div>`;
    return html`<tvx-table class="card" .label=${t(L.users)} .columns=${this.columns} .rows=${[...rows]} .keyOf=${(row: User) => String(row.userId)} .nameOf=${(row: User) => row.username}
        @tvx-open=${(event: CustomEvent<User>) => this.open(String(event.detail.userId))}></tvx-table>
      ${this.users.hasMore ? html`<p><button class="button" @click=${this.users.more}>${t(L.showMore)}</button></p>` : nothing}`;
  }
}
