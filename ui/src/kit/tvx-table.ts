import { html, nothing, type TemplateResult } from "lit";
import { customElement, property, state } from "lit/decorators.js";
import { repeat } from "lit/directives/repeat.js";
import { L, t } from "../labels";
import { TvxElement } from "./element";
import { icon } from "./icon";
import { whenIdle } from "./idle";
import { styles } from "./styles";
import { VirtualRows, type Window } from "./virtual";
import "./tvx-table.css";

export interface TableColumn<T> {
  id: string;
  label: string;
  /** What stands in the cell. */
  cell: (row: T) => TemplateResult | string | number | typeof nothing;
  /** By what it is sorted; without it, it can't be. */
  by?: (row: T) => string | number;
  /** Left out on narrow screens. */
  wide?: boolean;
  numeric?: boolean;
  width?: string;
}

/** So many rows are drawn at once, some more than are in sight; the others follow when the browser has time. */
const first = 30;

// biome-ignore lint/suspicious/noExplicitAny: an element's class can't be generic in its document.
type Any = any;

/**
 * A list with columns. Tells "tvx-open" (row) by click or Enter and "tvx-select" (a new set of keys). Arrows move, Space
 * selects, Shift extends, Ctrl+A takes all.
 */
@customElement("tvx-table")
export class TvxTable<T = Any> extends TvxElement {
  @property({ attribute: false }) columns: TableColumn<T>[] = [];
  @property({ attribute: false }) rows: T[] = [];
  @property({ attribute: false }) keyOf: (row: T) => string = (row) => String((row as Any).id);
  @property({ attribute: false }) label = "";
  @property({ type: Boolean }) selectable = false;
  @property({ attribute: false }) selected: ReadonlySet<string> = new Set();
  /** What the row is called where its box is read out. */
  @property({ attribute: false }) nameOf: (row: T) => string = (row) => String((row as Any).title ?? this.keyOf(row));
  @property({ attribute: false }) opens = true;
  @state() private sorted = { id: "", down: false };
  @state() private at = 0;
  @state() private whole = false;
  private from = 0;
  private readonly virtual = new VirtualRows(
    this,
    () => this.querySelector<HTMLElement>(".table-scroll"),
    () => this.rowHeight,
  );

  private get rowHeight(): number {
    return Number.parseInt(getComputedStyle(this).getPropertyValue("--row"), 10) || 32;
  }

  private get ordered(): T[] {
    const by = this.columns.find(({ id }) => id === this.sorted.id)?.by;
    if (!by) return this.rows;
    const sign = this.sorted.down ? -1 : 1;
    const compare = (a: string | number, b: string | number) =>
      typeof a === "number" && typeof b === "number" ? a - b : String(a).localeCompare(String(b));
    return [...this.rows].sort((a, b) => sign * compare(by(a), by(b)));
  }

  protected override updated(): void {
    if (!this.whole && this.rows.length > first)
      whenIdle(() => {
        this.whole = true;
      });
  }

  private sortBy({ id }: TableColumn<T>): void {
    this.sorted = { id, down: this.sorted.id === id && !this.sorted.down };
  }

  private select(keys: Iterable<string>): void {
    this.tell("tvx-select", new Set(keys));
  }

  private flip(row: T): void {
    const keys = new Set(this.selected);
    const key = this.keyOf(row);
    if (!keys.delete(key)) keys.add(key);
    this.select(keys);
  }

  private extend(rows: T[], to: number): void {
    const [low, high] = [Math.min(this.from, to), Math.max(this.from, to)];
    this.select([...this.selected, ...rows.slice(low, high + 1).map(this.keyOf)]);
  }

  private async focusOn(to: number, count: number): Promise<void> {
    this.whole = true;
    this.at = Math.max(0, Math.min(count - 1, to));
    this.virtual.show(this.at);
    await this.updateComplete;
    this.querySelector<HTMLElement>(`tr[data-at="${this.at}"]`)?.focus();
  }

  private key(event: KeyboardEvent, rows: T[]): void {
    if (!(event.target as HTMLElement).matches("tr")) return;
    const moves: Record<string, number> = {
      ArrowDown: this.at + 1,
      ArrowUp: this.at - 1,
      Home: 0,
      End: rows.length - 1,
    };
    const to = moves[event.key];
    const row = rows[this.at];
    if (to !== undefined) {
      void this.focusOn(to, rows.length);
      if (event.shiftKey && this.selectable) this.extend(rows, this.at);
      else this.from = this.at;
    } else if (event.key === "Enter" && row && !event.ctrlKey) this.tell("tvx-open", row);
    else if (event.key === " " && row && this.selectable) this.flip(row);
    else if (event.key === "a" && event.ctrlKey && this.selectable) this.select(rows.map(this.keyOf));
    else return;
    event.preventDefault();
  }

  private clicked(event: MouseEvent, row: T, at: number, rows: T[]): void {
    if ((event.target as Element).closest("a, button, input, label")) return;
    this.at = at;
    if (event.shiftKey && this.selectable) this.extend(rows, at);
    else if (event.ctrlKey && this.selectable) this.flip(row);
    else if (this.opens) this.tell("tvx-open", row);
    if (!event.shiftKey) this.from = at;
  }

  protected override render() {
    const rows = this.ordered;
    const { from, to, before, after } = this.begun(this.virtual.window(rows.length));
    const span = this.columns.length + (this.selectable ? 1 : 0);
    const gap = (height: number) =>
      height > 0
        ? html`<tr class="gap" aria-hidden="true"><td colspan=${span} ${styles({ height: `${height}px` })}></td></tr>`
        : nothing;
    return html`
      <div class="table-scroll" tabindex=${rows.length ? nothing : 0}>
        <table aria-label=${this.label} aria-rowcount=${rows.length + 1}>
          <thead><tr>${this.selectable ? this.allBox(rows) : nothing}${this.columns.map((column) => this.head(column))}</tr></thead>
          <tbody @keydown=${(event: KeyboardEvent) => this.key(event, rows)}>
            ${gap(before)}${repeat(rows.slice(from, to), this.keyOf, (row, i) => this.row(row, from + i, rows))}${gap(after)}
          </tbody>
        </table>
      </div>
    `;
  }

  private begun(window: Window): Window {
    const { from, to, after } = window;
    const left = to - from - first;
    if (this.whole || left <= 0) return window;
    return { ...window, to: from + first, after: after + left * this.rowHeight };
  }

  private allBox(rows: T[]) {
    const all = rows.length > 0 && rows.every((row) => this.selected.has(this.keyOf(row)));
    const some = !all && this.selected.size > 0;
    return html`<th class="box"><input type="checkbox" aria-label=${t(L.selectAll)} .checked=${all} .indeterminate=${some}
      @change=${() => this.select(all ? [] : rows.map(this.keyOf))} /></th>`;
  }

  private head(column: TableColumn<T>) {
    const is = this.sorted.id === column.id;
    const classes = `of-${column.id} ${column.wide ? "wide" : ""} ${column.numeric ? "numeric" : ""}`;
    const width = styles(column.width ? { "--width": column.width } : {});
    // A column of buttons needs no word above it, and a heading without one would be read out as nothing.
    if (!column.label) return html`<td class=${classes} ${width}></td>`;
    if (!column.by) return html`<th scope="col" class=${classes} ${width}>${column.label}</th>`;
    return html`<th scope="col" class=${classes} ${width} aria-sort=${is ? (this.sorted.down ? "descending" : "ascending") : nothing}>
      <button class="sort" @click=${() => this.sortBy(column)}>${column.label}${is ? icon(this.sorted.down ? "arrow-down" : "arrow-up") : nothing}</button></th>`;
  }

  private row(row: T, at: number, rows: T[]) {
    const key = this.keyOf(row);
    const is = this.selected.has(key);
    return html`
      <tr data-at=${at} data-key=${key} class=${is ? "selected" : ""} tabindex=${at === Math.min(this.at, rows.length - 1) ? 0 : -1} aria-rowindex=${at + 2}
        @click=${(event: MouseEvent) => this.clicked(event, row, at, rows)} @focus=${() => (this.at = at)}>
        ${this.selectable ? html`<td class="box"><input type="checkbox" tabindex="-1" aria-label=${t(L.selectNamed, { name: this.nameOf(row) })} .checked=${is} @change=${() => this.flip(row)} /></td>` : nothing}
        ${this.columns.map((column) => html`<td class="${column.wide ? "wide" : ""} ${column.numeric ? "numeric" : ""}">${column.cell(row)}</td>`)}
      </tr>
    `;
  }
}
