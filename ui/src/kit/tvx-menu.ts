import { computePosition, flip, offset, shift } from "@floating-ui/dom";
import { html, nothing } from "lit";
import { customElement, property } from "lit/decorators.js";
import { shownKey } from "../labels/keys";
import { TvxElement } from "./element";
import { type IconName, icon } from "./icon";
import "./tvx-menu.css";

export interface MenuItem {
  label: string;
  icon?: IconName;
  /** The key that does the same, as it is shown. */
  key?: string;
  /** Why it can't be done here; empty when it can. */
  disabled?: string;
  checked?: boolean;
  danger?: boolean;
  run: () => void;
}

/** A rule between items. */
export const rule = "-" as const;
export type MenuEntry = MenuItem | typeof rule;

/** A list of things to do, at the control that opened it. Opened by `openMenu(anchor, items, label)`. */
@customElement("tvx-menu")
export class TvxMenu extends TvxElement {
  @property({ attribute: false }) entries: MenuEntry[] = [];
  @property({ attribute: false }) anchor!: HTMLElement;
  @property({ attribute: false }) label = "";
  private typed = "";
  private typedAt = 0;

  protected override async firstUpdated(): Promise<void> {
    this.setAttribute("popover", "auto");
    this.addEventListener("toggle", (event) => {
      if ((event as ToggleEvent).newState === "closed") this.ended();
    });
    this.showPopover();
    this.anchor.setAttribute("aria-expanded", "true");
    await this.place();
    this.focusOn(0);
  }

  private async place(): Promise<void> {
    const { x, y } = await computePosition(this.anchor, this, {
      strategy: "fixed",
      placement: "bottom-start",
      middleware: [offset(4), flip(), shift({ padding: 8 })],
    });
    this.style.left = `${x}px`;
    this.style.top = `${y}px`;
  }

  private ended(): void {
    this.anchor.setAttribute("aria-expanded", "false");
    const inside = this.contains(document.activeElement) || document.activeElement === document.body;
    this.remove();
    if (inside && this.anchor.isConnected) this.anchor.focus();
  }

  private get buttons(): HTMLButtonElement[] {
    return [...this.querySelectorAll<HTMLButtonElement>("button")];
  }

  private focusOn(place: number): void {
    const { buttons } = this;
    buttons.at(place % buttons.length)?.focus();
  }

  private run(item: MenuItem): void {
    if (item.disabled) return;
    this.hidePopover();
    item.run();
  }

  private key(event: KeyboardEvent): void {
    const at = this.buttons.indexOf(document.activeElement as HTMLButtonElement);
    const moves: Record<string, number> = { ArrowDown: at + 1, ArrowUp: at - 1, Home: 0, End: -1 };
    const to = moves[event.key];
    if (to !== undefined) this.focusOn(to);
    else if (event.key === "Tab") this.hidePopover();
    else if (event.key.length === 1 && !event.ctrlKey && !event.altKey && event.key !== " ") this.find(event.key);
    else return;
    event.preventDefault();
  }

  private find(letter: string): void {
    const now = performance.now();
    this.typed = now - this.typedAt < 600 ? this.typed + letter : letter;
    this.typedAt = now;
    this.buttons
      .find((button) => button.textContent?.trim().toLowerCase().startsWith(this.typed.toLowerCase()))
      ?.focus();
  }

  protected override render() {
    return html`<div role="menu" aria-label=${this.label || nothing} @keydown=${this.key}>${this.entries.map((entry) => (entry === rule ? html`<hr role="separator" />` : this.item(entry)))}</div>`;
  }

  private item(item: MenuItem) {
    const isCheck = item.checked !== undefined;
    return html`
      <button role=${isCheck ? "menuitemradio" : "menuitem"} aria-checked=${isCheck ? String(item.checked) : nothing} tabindex="-1"
        class=${item.danger ? "danger" : ""} aria-disabled=${item.disabled ? "true" : nothing} @click=${() => this.run(item)}>
        ${isCheck ? (item.checked ? icon("check") : html`<span class="icon"></span>`) : item.icon ? icon(item.icon) : html`<span class="icon"></span>`}
        <span class="grow"><span>${item.label}</span>${item.disabled ? html`<span class="note">${item.disabled}</span>` : nothing}</span>
        ${item.key ? html`<kbd>${shownKey(item.key)}</kbd>` : nothing}
      </button>
    `;
  }
}

export function openMenu(anchor: HTMLElement, entries: MenuEntry[], label = ""): TvxMenu {
  const menu = new TvxMenu();
  menu.anchor = anchor;
  menu.entries = entries;
  menu.label = label;
  // Inside a dialog only what is in the dialog can be reached; elsewhere it belongs to the region of its control.
  (anchor.closest("dialog, nav, main, aside, footer, [role=banner]") ?? document.body).append(menu);
  return menu;
}
