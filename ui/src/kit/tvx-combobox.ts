import { computePosition, flip, offset, size } from "@floating-ui/dom";
import { html, nothing } from "lit";
import { customElement, property, state } from "lit/decorators.js";
import { isCancelled } from "../api/problem";
import { L, t } from "../labels";
import { TvxElement } from "./element";
import { type IconName, icon } from "./icon";
import "./tvx-combobox.css";

export interface Option<T = unknown> {
  id: string;
  label: string;
  note?: string;
  icon?: IconName;
  /** Why it can't be chosen. */
  disabled?: string;
  value?: T;
}

let made = 0;

/** A field with a list of what fits to what is typed. Tells "tvx-choose" (the option) and "tvx-text" (what is typed). */
@customElement("tvx-combobox")
export class TvxCombobox extends TvxElement {
  @property() label = "";
  @property() text = "";
  @property() placeholder = "";
  /** The label is read out only. */
  @property({ type: Boolean }) plain = false;
  @property({ attribute: false }) search: (words: string, signal: AbortSignal) => Promise<Option[]> | Option[] =
    () => [];
  /** What is wrong with what was chosen. */
  @property() wrong = "";
  @state() private options: Option[] = [];
  @state() private open = false;
  @state() private active = -1;
  private readonly name = `combobox-${++made}`;
  private asked?: AbortController;

  private get input(): HTMLInputElement {
    return this.querySelector("input")!;
  }

  override focus(): void {
    this.input.focus();
  }

  private async ask(): Promise<void> {
    this.asked?.abort();
    this.asked = new AbortController();
    try {
      this.options = await this.search(this.input.value, this.asked.signal);
      this.active = this.options.findIndex(({ disabled }) => !disabled);
      this.show();
    } catch (error) {
      if (!isCancelled(error)) throw error;
    }
  }

  private show(): void {
    this.open = true;
    void this.updateComplete.then(() => this.place());
  }

  private async place(): Promise<void> {
    const list = this.querySelector<HTMLElement>(".options");
    if (!list) return;
    if (!list.matches(":popover-open")) list.showPopover();
    const { x, y } = await computePosition(this.input, list, {
      strategy: "fixed",
      placement: "bottom-start",
      middleware: [
        offset(4),
        flip(),
        size({
          apply: ({ rects, availableHeight }) => {
            Object.assign(list.style, {
              width: `${rects.reference.width}px`,
              maxHeight: `${Math.min(360, availableHeight - 8)}px`,
            });
          },
        }),
      ],
    });
    Object.assign(list.style, { left: `${x}px`, top: `${y}px` });
  }

  private close(): void {
    this.asked?.abort();
    this.open = false;
  }

  private choose(option: Option | undefined): void {
    if (!option || option.disabled) return;
    this.text = option.label;
    this.close();
    this.tell("tvx-choose", option);
  }

  private step(by: number): void {
    if (!this.open) return void this.ask();
    const count = this.options.length;
    if (count > 0) this.active = (this.active + by + count) % count;
    void this.updateComplete.then(() =>
      this.querySelector(`#${this.name}-${this.active}`)?.scrollIntoView({ block: "nearest" }),
    );
  }

  private key(event: KeyboardEvent): void {
    if (event.key === "ArrowDown") this.step(1);
    else if (event.key === "ArrowUp") this.step(-1);
    else if (event.key === "Enter" && this.open && this.active >= 0 && !event.ctrlKey)
      this.choose(this.options[this.active]);
    else if (event.key === "Escape" && this.open) this.close();
    else return;
    event.preventDefault();
    event.stopPropagation();
  }

  private typed(): void {
    this.text = this.input.value;
    this.tell("tvx-text", this.text);
    void this.ask();
  }

  protected override render() {
    const { name } = this;
    return html`
      <div class="field">
        <label class=${this.plain ? "unseen" : ""} for=${name}>${this.label}</label>
        <input id=${name} class="input" role="combobox" autocomplete="off" aria-autocomplete="list" aria-expanded=${String(this.open)} aria-controls="${name}-list"
          aria-invalid=${this.wrong ? "true" : nothing} aria-describedby=${this.wrong ? `${name}-wrong` : nothing} aria-activedescendant=${this.open && this.active >= 0 ? `${name}-${this.active}` : nothing} placeholder=${this.placeholder} .value=${this.text}
          @input=${this.typed} @keydown=${this.key} @click=${() => this.ask()} @blur=${this.close} />
        <div class="options" id="${name}-list" role="listbox" aria-label=${this.label} popover="manual" ?hidden=${!this.open}>
          ${this.options.map((option, place) => this.option(option, place))}
          ${this.open && this.options.length === 0 ? html`<div class="none" role="option" aria-disabled="true" aria-selected="false">${t(L.nothingFound)}</div>` : nothing}
        </div>
        ${this.wrong ? html`<p class="note wrong" id="${name}-wrong">${this.wrong}</p>` : nothing}
      </div>
    `;
  }

  private option(option: Option, place: number) {
    return html`<div role="option" id="${this.name}-${place}" class="option" aria-selected=${String(place === this.active)} aria-disabled=${option.disabled ? "true" : nothing}
      @pointerdown=${(event: Event) => event.preventDefault()} @click=${() => this.choose(option)}>
      ${option.icon ? icon(option.icon) : nothing}<span class="grow"><span class="cut">${option.label}</span>${option.note || option.disabled ? html`<span class="note">${option.disabled || option.note}</span>` : nothing}</span></div>`;
  }
}
