import { html, nothing, type PropertyValues, type TemplateResult } from "lit";
import { customElement, property } from "lit/decorators.js";
import { repeat } from "lit/directives/repeat.js";
import { TvxElement } from "./element";
import { icon } from "./icon";
import { styles } from "./styles";
import { VirtualRows } from "./virtual";
import "./tvx-tree.css";

export interface TreeRow {
  id: string;
  /** What is read out, and found by typing. */
  name: string;
  /** From 1. */
  level: number;
  setSize: number;
  position: number;
  expandable: boolean;
  expanded: boolean;
  /** Its children are on their way. */
  loading?: boolean;
  content: TemplateResult;
  dimmed?: boolean;
}

export type DropPlace = "before" | "into" | "after";
export interface Drop {
  from: string;
  to: string;
  place: DropPlace;
}

const dragType = "text/x-torvex-node";

/**
 * A tree as a flat list of rows. Its user keeps the rows; the element tells "tvx-toggle" (id), "tvx-open" (id),
 * "tvx-focus" (id), "tvx-select" (id), "tvx-menu" ({id, anchor}), "tvx-drop" (Drop) and lets other keys through.
 */
@customElement("tvx-tree")
export class TvxTree extends TvxElement {
  @property({ attribute: false }) rows: TreeRow[] = [];
  /** The one that the centre shows. */
  @property() current = "";
  /** The one that has the keyboard. */
  @property() focused = "";
  @property({ attribute: false }) selected: ReadonlySet<string> = new Set();
  @property({ attribute: false }) label = "";
  /** Which places of a row take the dragged one; without it nothing can be dragged. */
  @property({ attribute: false }) takes?: (from: string, to: string, place: DropPlace) => boolean;
  private typed = "";
  private typedAt = 0;
  private dragged = "";
  private wantsFocus = false;
  private readonly virtual: VirtualRows = new VirtualRows(
    this,
    () => this as HTMLElement,
    () => this.rowHeight,
  );

  private get rowHeight(): number {
    return Number.parseInt(getComputedStyle(this).getPropertyValue("--row"), 10) || 32;
  }

  private indexOf(id: string): number {
    return this.rows.findIndex((row) => row.id === id);
  }

  /** Gives a row the keyboard and shows it. */
  focusRow(id: string): void {
    this.focused = id;
    this.wantsFocus = true;
    this.virtual.show(this.indexOf(id));
    this.requestUpdate();
  }

  /** Shows a row without taking the keyboard. */
  reveal(id: string): void {
    const index = this.indexOf(id);
    if (index < 0) return;
    this.virtual.show(index);
    requestAnimationFrame(() => this.rowElement(id)?.scrollIntoView({ block: "nearest" }));
  }

  private rowElement(id: string): HTMLElement | null {
    return this.querySelector(`[data-id="${CSS.escape(id)}"]`);
  }

  protected override updated(_changed: PropertyValues): void {
    if (!this.wantsFocus) return;
    const row = this.rowElement(this.focused);
    if (!row) return;
    this.wantsFocus = false;
    row.focus();
    row.scrollIntoView({ block: "nearest" });
  }

  private move(to: number): void {
    const row = this.rows[Math.max(0, Math.min(this.rows.length - 1, to))];
    if (!row) return;
    this.focusRow(row.id);
    this.tell("tvx-focus", row.id);
  }

  private parentOf(at: number): number {
    const { level } = this.rows[at]!;
    for (let i = at - 1; i >= 0; --i) if (this.rows[i]!.level < level) return i;
    return at;
  }

  private outward(row: TreeRow, at: number): void {
    if (!row.expandable) return;
    if (!row.expanded) this.tell("tvx-toggle", row.id);
    else this.move(at + 1);
  }

  private inward(row: TreeRow, at: number): void {
    if (row.expandable && row.expanded) this.tell("tvx-toggle", row.id);
    else this.move(this.parentOf(at));
  }

  private find(letter: string, at: number): void {
    const now = performance.now();
    this.typed = (now - this.typedAt < 700 ? this.typed : "") + letter.toLowerCase();
    this.typedAt = now;
    const from = this.typed.length > 1 ? at : at + 1;
    const order = [...this.rows.keys()].map((i) => (i + from) % this.rows.length);
    const found = order.find((i) => this.rows[i]!.name.toLowerCase().startsWith(this.typed));
    if (found !== undefined) this.move(found);
  }

  private key(event: KeyboardEvent): void {
    const at = this.indexOf(this.focused);
    const row = this.rows[at];
    if (!row || event.ctrlKey || event.altKey || event.metaKey) return;
    if (!this.walked(event, row, at)) return;
    event.preventDefault();
    event.stopPropagation();
  }

  private walked(event: KeyboardEvent, row: TreeRow, at: number): boolean {
    switch (event.key) {
      case "ArrowDown":
      case "ArrowUp":
        this.move(at + (event.key === "ArrowDown" ? 1 : -1));
        if (event.shiftKey) this.tell("tvx-select", this.focused);
        return true;
      case "ArrowRight":
        this.outward(row, at);
        return true;
      case "ArrowLeft":
        this.inward(row, at);
        return true;
      case "Home":
      case "End":
        this.move(event.key === "Home" ? 0 : this.rows.length - 1);
        return true;
      case "Enter":
        return this.tell("tvx-open", row.id) || true;
      case " ":
        return this.tell("tvx-select", row.id) || true;
      default:
        if (event.key.length !== 1) return false;
        this.find(event.key, at);
        return true;
    }
  }

  private clicked(event: MouseEvent, row: TreeRow): void {
    this.focused = row.id;
    this.tell("tvx-focus", row.id);
    if ((event.target as Element).closest(".twist") || (!row.name && row.expandable)) this.tell("tvx-toggle", row.id);
    else this.tell(event.ctrlKey || event.shiftKey ? "tvx-select" : "tvx-open", row.id);
  }

  private took(id: string): void {
    if (this.focused === id) return;
    this.focused = id;
    this.tell("tvx-focus", id);
  }

  private contextMenu(event: MouseEvent, row: TreeRow): void {
    event.preventDefault();
    this.focused = row.id;
    this.tell("tvx-menu", { id: row.id, anchor: event.currentTarget as HTMLElement });
  }

  private placeAt(event: DragEvent, element: HTMLElement): DropPlace {
    const { top, height } = element.getBoundingClientRect();
    const part = (event.clientY - top) / height;
    return part < 0.28 ? "before" : part > 0.72 ? "after" : "into";
  }

  private dragStart(event: DragEvent, row: TreeRow): void {
    this.dragged = row.id;
    event.dataTransfer?.setData(dragType, row.id);
    event.dataTransfer?.setData("text/plain", row.name);
  }

  private dragOver(event: DragEvent, row: TreeRow): void {
    const element = event.currentTarget as HTMLElement;
    const place = this.placeAt(event, element);
    this.undrop();
    if (!this.dragged || !this.takes?.(this.dragged, row.id, place)) return;
    event.preventDefault();
    element.dataset.drop = place;
  }

  private undrop(): void {
    for (const element of this.querySelectorAll<HTMLElement>("[data-drop]")) delete element.dataset.drop;
  }

  private dropped(event: DragEvent, row: TreeRow): void {
    const place = (event.currentTarget as HTMLElement).dataset.drop as DropPlace | undefined;
    this.undrop();
    if (!place) return;
    event.preventDefault();
    this.tell<Drop>("tvx-drop", { from: this.dragged, to: row.id, place });
    this.dragged = "";
  }

  protected override render() {
    const { from, to, before, after } = this.virtual.window(this.rows.length);
    const rows = this.rows.slice(from, to);
    const reachable = this.indexOf(this.focused) < 0 ? this.rows[0]?.id : this.focused;
    return html`
      <div role="tree" aria-label=${this.label} aria-multiselectable="true" @keydown=${this.key} @dragend=${this.undrop} ${styles({ "padding-top": `${before}px`, "padding-bottom": `${after}px` })}>
        ${repeat(
          rows,
          ({ id }) => id,
          (row) => this.row(row, row.id === reachable),
        )}
      </div>
    `;
  }

  private row(row: TreeRow, reachable: boolean) {
    const { id, name, level, setSize, position, expandable, expanded, content, dimmed, loading } = row;
    return html`
      <div role="treeitem" class="tree-row ${dimmed ? "dimmed" : ""}" data-id=${id} aria-level=${level} aria-setsize=${setSize} aria-posinset=${position} aria-label=${name}
        aria-expanded=${expandable ? String(expanded) : nothing} aria-selected=${String(this.selected.has(id))} aria-current=${id === this.current ? "page" : nothing}
        aria-busy=${loading ? "true" : nothing} tabindex=${reachable ? 0 : -1} ${styles({ "--level": `${level - 1}` })} draggable=${this.takes ? "true" : nothing}
        @focus=${() => this.took(id)} @click=${(event: MouseEvent) => this.clicked(event, row)} @contextmenu=${(event: MouseEvent) => this.contextMenu(event, row)}
        @dragstart=${(event: DragEvent) => this.dragStart(event, row)} @dragover=${(event: DragEvent) => this.dragOver(event, row)}
        @dragleave=${this.undrop} @drop=${(event: DragEvent) => this.dropped(event, row)}>
        <span class="twist">${expandable ? icon(loading ? "loader-circle" : "chevron-right") : nothing}</span>
        ${content}
      </div>
    `;
  }
}
