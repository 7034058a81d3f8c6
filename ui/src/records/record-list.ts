/** What lists of records share: all of them, narrowed by words, or the one that the address names. */

import { html, nothing, type TemplateResult } from "lit";
import { property, state } from "lit/decorators.js";
import { TvxElement } from "../kit/element";
import { faultNotice } from "../kit/fault-notice";
import { type IconName, icon } from "../kit/icon";
import "../kit/tvx-table";
import type { TableColumn } from "../kit/tvx-table";
import { L, type Label, t } from "../labels";
import { word } from "../pages/words";
import { setQuery } from "../shell/address";
import { filterField, matches } from "./fields";
import { mayChange } from "./lock";
import "../pages/lists.css";

export interface ListWords {
  readonly icon: IconName;
  readonly title: Label;
  readonly add: Label;
  /** There is no record at all. */
  readonly isEmpty: Label;
}

export abstract class RecordList<Row extends object> extends TvxElement {
  @property({ attribute: false }) params = new URLSearchParams();
  @state() private rows: readonly Row[] | undefined;
  @state() private fault: unknown;
  @state() private mayAdd = false;

  /** Where the list is, and what the address calls the number of a record. */
  protected abstract readonly address: string;
  protected abstract readonly key: string;
  /** The entry of the administration whose right to change lets one add. */
  protected abstract readonly entry: number;
  protected abstract readonly words: ListWords;
  protected abstract read(): Promise<Row[]>;
  /** The number of the record that was added, or "". */
  protected abstract add(): Promise<string>;
  /** An entry of a website's asks for its site and language. */
  protected askToAdd(): Promise<boolean> {
    return mayChange(this.entry);
  }
  protected abstract one(recordId: number): TemplateResult;
  protected abstract idOf(row: Row): number;
  protected abstract nameOf(row: Row): string;
  /** Where the words of the filter are looked for. */
  protected abstract textsOf(row: Row): string[];
  protected abstract get columns(): TableColumn<Row>[];

  override connectedCallback(): void {
    super.connectedCallback();
    void this.load();
  }

  protected readonly load = async (): Promise<void> => {
    try {
      const [rows, mayAdd] = await Promise.all([this.read(), this.askToAdd()]);
      this.rows = rows;
      this.mayAdd = mayAdd;
      this.fault = undefined;
    } catch (error) {
      this.fault = error;
    }
  };

  private open(recordId: string): void {
    setQuery({ [this.key]: recordId }, { push: true });
  }

  private async addOne(): Promise<void> {
    const made = await this.add();
    if (!made) return;
    void this.load();
    this.open(made);
  }

  protected link(row: Row, text: string): TemplateResult {
    return html`<a href="${this.address}?${this.key}=${this.idOf(row)}">${text}</a>`;
  }

  protected override render(): TemplateResult {
    const chosen = Number(this.params.get(this.key));
    if (chosen > 0) return this.one(chosen);
    const words = this.params.get("words") ?? "";
    return html`<section class="list-screen" aria-busy=${this.rows || this.fault ? nothing : "true"}>
      <header class="list-head"><h1>${word(this.words.title)}</h1><span class="grow"></span>${filterField(words)}
        ${this.mayAdd ? html`<button class="button primary" @click=${this.addOne}>${icon("plus")}${word(this.words.add)}</button>` : nothing}</header>
      ${faultNotice(this.fault, this.load)}
      ${this.rows ? this.found(this.rows, words) : nothing}
    </section>`;
  }

  private found(all: readonly Row[], words: string): TemplateResult {
    const rows = all.filter((row) => matches(words, ...this.textsOf(row)));
    if (rows.length === 0)
      return html`<div class="empty">${icon(this.words.icon)}<p>${words ? t(L.nothingFound) : word(this.words.isEmpty)}</p></div>`;
    return html`<tvx-table class="card" .label=${word(this.words.title)} .columns=${this.columns} .rows=${rows} .keyOf=${(row: Row) => String(this.idOf(row))} .nameOf=${(row: Row) => this.nameOf(row)}
      @tvx-open=${(event: CustomEvent<Row>) => this.open(String(this.idOf(event.detail)))}></tvx-table>`;
  }
}
