/** Pages that are checked out in a website, and their release. */

import { html, nothing, type TemplateResult } from "lit";
import { customElement, state } from "lit/decorators.js";
import { call } from "../api";
import { TvxElement, Watch } from "../kit/element";
import { faultNotice } from "../kit/fault-notice";
import { icon } from "../kit/icon";
import "../kit/tvx-table";
import type { TableColumn } from "../kit/tvx-table";
import { toast } from "../kit/tvx-toast";
import { L, plural, t } from "../labels";
import { go, pageAddress } from "../shell/address";
import { onPagesChanged, workplace } from "../shell/workplace";
import { failed } from "./actions";
import { allChanged } from "./pages-changed";
import { titleOr, whenText } from "./words";
import "./lists.css";

interface Held {
  readonly pageId: number;
  readonly nodeId: string;
  readonly title: string;
  readonly name: string;
  readonly lockingDate: string | null;
}

@customElement("tvx-held-pages")
export class TvxHeldPages extends TvxElement {
  @state() private rows: readonly Held[] | undefined;
  @state() private selected: ReadonlySet<string> = new Set();
  @state() private fault: unknown;
  private website = "";
  private forget: (() => void) | undefined;
  private readonly where = new Watch(this, workplace, () => this.moved());

  override connectedCallback(): void {
    super.connectedCallback();
    this.forget = onPagesChanged(() => void this.load());
    this.moved();
  }

  override disconnectedCallback(): void {
    super.disconnectedCallback();
    this.forget?.();
  }

  private moved(): void {
    const { site, lang } = this.where.value;
    if (`${site}.${lang}` === this.website) return;
    this.website = `${site}.${lang}`;
    this.rows = undefined;
    void this.load();
  }

  private async load(): Promise<void> {
    const { site, lang } = this.where.value;
    try {
      this.rows = (await call("cManager.getLockList", { site, lang })) as Held[];
      this.fault = undefined;
      const there = new Set(this.rows.map((row) => String(row.pageId)));
      this.selected = new Set([...this.selected].filter((key) => there.has(key)));
    } catch (error) {
      this.fault = error;
    }
  }

  private async release(): Promise<void> {
    const wanted = [...this.selected];
    try {
      const left = await call("cManager.unlockPages", { pageList: wanted.join(",") });
      const stayed = left === "" ? 0 : left.split(",").length;
      const freed = wanted.length - stayed;
      if (freed) toast(plural(freed, L.releasedOne, L.releasedMany));
      if (stayed) toast(plural(stayed, L.stillHeldOne, L.stillHeldMany), { kind: "warn" });
      allChanged();
    } catch (error) {
      failed(error);
    }
  }

  private get columns(): TableColumn<Held>[] {
    return [
      {
        id: "title",
        label: t(L.page),
        cell: (row) => html`<a href=${pageAddress(row.pageId)}>${titleOr(row.title)}</a>`,
        by: (row) => row.title,
      },
      { id: "name", label: t(L.holderColumn), cell: (row) => row.name, by: (row) => row.name },
      {
        id: "since",
        label: t(L.sinceColumn),
        cell: (row) => whenText(row.lockingDate),
        by: (row) => row.lockingDate ?? "",
      },
      {
        id: "node",
        label: t(L.nodePart),
        cell: (row) => html`<span class="soft">${row.nodeId}</span>`,
        by: (row) => row.nodeId,
        wide: true,
      },
    ];
  }

  protected override render(): TemplateResult {
    const { size } = this.selected;
    return html`<section class="list-screen" aria-busy=${this.rows || this.fault ? nothing : "true"}>
      <header class="list-head"><h1>${t(L.heldPages)}</h1><span class="grow"></span>
        <button class="button primary" ?disabled=${size === 0} @click=${() => this.release()}>${size ? plural(size, L.release1, L.releaseMany) : t(L.release)}</button></header>
      <p class="note list-note">${t(L.heldHint)}</p>
      ${faultNotice(this.fault, () => this.load())}
      ${this.rows && this.rows.length === 0 ? html`<div class="empty">${icon("lock")}<p>${t(L.heldEmpty)}</p></div>` : nothing}
      ${
        this.rows?.length
          ? html`<tvx-table class="card" .label=${t(L.heldPages)} .columns=${this.columns} .rows=${this.rows} .keyOf=${(row: Held) => String(row.pageId)} selectable .selected=${this.selected}
            @tvx-select=${(event: CustomEvent<ReadonlySet<string>>) => {
              this.selected = event.detail;
            }} @tvx-open=${(event: CustomEvent<Held>) => void go(pageAddress(event.detail.pageId))}></tvx-table>`
          : nothing
      }
    </section>`;
  }
}
