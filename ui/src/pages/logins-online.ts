/** Who is logged in, where, and since when she hasn't moved. */

import { html, nothing, type TemplateResult } from "lit";
import { customElement, state } from "lit/decorators.js";
import { call } from "../api";
import { TvxElement } from "../kit/element";
import { faultNotice } from "../kit/fault-notice";
import { icon } from "../kit/icon";
import { ask } from "../kit/tvx-dialog";
import "../kit/tvx-table";
import type { TableColumn } from "../kit/tvx-table";
import { toast } from "../kit/tvx-toast";
import { L, t } from "../labels";
import { go, pageAddress } from "../shell/address";
import { websiteName, workplace } from "../shell/workplace";
import { failed } from "./actions";
import { spanText, whenText } from "./words";
import "./lists.css";

interface Online {
  readonly loginId: number;
  readonly name: string;
  readonly siteId: string;
  readonly lang: string;
  readonly pageId: number;
  readonly since: string | null;
  readonly idleSeconds: number;
}

const EVERY = 10_000;

const whereText = ({ siteId, lang }: Online): string => websiteName(siteId, lang);

@customElement("tvx-logins-online")
export class TvxLoginsOnline extends TvxElement {
  @state() private rows: readonly Online[] | undefined;
  @state() private fault: unknown;
  private timer: ReturnType<typeof setInterval> | undefined;

  override connectedCallback(): void {
    super.connectedCallback();
    void this.load();
    this.timer = setInterval(() => {
      if (!document.hidden) void this.load();
    }, EVERY);
  }

  override disconnectedCallback(): void {
    super.disconnectedCallback();
    clearInterval(this.timer);
  }

  private async load(): Promise<void> {
    try {
      this.rows = (await call(
        "desk.getOnline",
        { site: "", lang: "" },
        { background: this.rows !== undefined },
      )) as Online[];
      this.fault = undefined;
    } catch (error) {
      this.fault = error;
    }
  }

  private async end(row: Online): Promise<void> {
    const { name } = row;
    if (!(await ask(t(L.endLoginOf, { name }), t(L.endLoginAsk, { name }), t(L.endLogin), "danger"))) return;
    try {
      await call("cManager.endLogin", { loginId: row.loginId });
      toast(t(L.sessionEndedOf, { name }));
      await this.load();
    } catch (error) {
      failed(error);
    }
  }

  private get columns(): TableColumn<Online>[] {
    const me = workplace.value.login?.loginId;
    return [
      {
        id: "name",
        label: t(L.whoColumn),
        cell: (row) =>
          html`${row.name}${row.loginId === me ? html` <span class="note">(${t(L.thatsYou)})</span>` : nothing}<span class="note cut narrow">${whereText(row)}</span>`,
        by: (row) => row.name,
      },
      {
        id: "where",
        label: t(L.searchWhere),
        cell: (row) =>
          row.pageId > 0
            ? html`<a href=${pageAddress(row.pageId)}>${whereText(row) || row.pageId}</a>`
            : whereText(row),
        by: (row) => whereText(row),
        wide: true,
      },
      {
        id: "since",
        label: t(L.sinceColumn),
        cell: (row) => whenText(row.since),
        by: (row) => row.since ?? "",
        wide: true,
      },
      {
        id: "idle",
        label: t(L.idleColumn),
        cell: (row) => (row.idleSeconds < 60 ? t(L.justNow) : t(L.agoText, { time: spanText(row.idleSeconds) })),
        by: (row) => row.idleSeconds,
        width: "120px",
      },
      {
        id: "end",
        label: "",
        cell: (row) =>
          row.loginId === me
            ? nothing
            : html`<button class="button small" aria-label=${t(L.endLoginOf, { name: row.name })} @click=${() => this.end(row)}>${icon("log-out")}<span class="wide">${t(L.endLogin)}</span></button>`,
        width: "164px",
      },
    ];
  }

  protected override render(): TemplateResult {
    return html`<section class="list-screen" aria-busy=${this.rows || this.fault ? nothing : "true"}>
      <header class="list-head"><h1>${t(L.loginsOnline)}</h1></header>
      ${faultNotice(this.fault, () => this.load())}
      ${this.rows && this.rows.length === 0 ? html`<div class="empty">${icon("users")}<p>${t(L.onlineEmpty)}</p></div>` : nothing}
      ${
        this.rows?.length
          ? html`<tvx-table class="card" .label=${t(L.loginsOnline)} .columns=${this.columns} .rows=${this.rows} .keyOf=${(row: Online) => String(row.loginId)} .nameOf=${(row: Online) => row.name}
            @tvx-open=${(event: CustomEvent<Online>) => (event.detail.pageId > 0 ? void go(pageAddress(event.detail.pageId)) : undefined)}></tvx-table>`
          : nothing
      }
    </section>`;
  }
}
