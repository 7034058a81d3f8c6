import { html, nothing } from "lit";
import { customElement, state } from "lit/decorators.js";
import { call } from "../api";
import { isCancelled } from "../api/problem";
import type { Found } from "../formats/found";
import { TvxElement } from "../kit/element";
import { icon } from "../kit/icon";
import { stateMark } from "../kit/marks";
import { L, t } from "../labels";
import { shownKey } from "../labels/keys";
import { type Entry, entriesNow, foundEntries, grouped, merged } from "./entries";
import "./tvx-palette.css";

const asksAfter = 40;

/** One field for all that can be found and done. */
@customElement("tvx-palette")
export class TvxPalette extends TvxElement {
  @state() private words = "";
  @state() private entries: Entry[] = [];
  @state() private active = 0;
  @state() private busy = false;
  private timer: ReturnType<typeof setTimeout> | undefined;
  private asked?: AbortController;
  private readonly opener = document.activeElement as HTMLElement | null;

  private get box(): HTMLDialogElement {
    return this.querySelector("dialog")!;
  }

  protected override firstUpdated(): void {
    this.box.showModal();
    this.querySelector("input")!.focus();
    this.entries = entriesNow("");
  }

  close(): void {
    this.box.close();
  }

  private ended(): void {
    this.asked?.abort();
    this.remove();
    if (document.activeElement === document.body) this.opener?.focus();
  }

  private typed(event: Event): void {
    this.words = (event.target as HTMLInputElement).value;
    this.active = 0;
    this.entries = entriesNow(this.words);
    this.asked?.abort();
    clearTimeout(this.timer);
    this.busy = this.words.trim() !== "";
    if (this.busy) this.timer = setTimeout(() => void this.find(), asksAfter);
  }

  private async find(): Promise<void> {
    this.asked = new AbortController();
    const { signal } = this.asked;
    try {
      const found = (await call("desk.find", { words: this.words }, { signal })) as Found[];
      if (signal.aborted) return;
      this.entries = merged(entriesNow(this.words), foundEntries(found));
    } catch (error) {
      if (isCancelled(error)) return;
      // What is here already can be chosen all the same.
    }
    this.busy = false;
  }

  private run(run: (() => unknown) | undefined): void {
    if (!run) return;
    this.close();
    void run();
  }

  private key(event: KeyboardEvent): void {
    const count = this.entries.length;
    const moves: Record<string, number> = {
      ArrowDown: this.active + 1,
      ArrowUp: this.active - 1,
      PageDown: this.active + 8,
      PageUp: this.active - 8,
    };
    const to = moves[event.key];
    if (to !== undefined && count > 0) this.go((to + count) % count);
    else if (event.key === "Enter" && event.shiftKey) this.run(this.entries[this.active]?.show);
    else if (event.key === "Enter") this.run(this.entries[this.active]?.run);
    else return;
    event.preventDefault();
  }

  private go(to: number): void {
    this.active = to;
    void this.updateComplete.then(() => this.querySelector(`#palette-${to}`)?.scrollIntoView({ block: "nearest" }));
  }

  private outside(event: MouseEvent): void {
    if (event.target === this.box) this.close();
  }

  protected override render() {
    const some = this.entries.length > 0;
    return html`
      <dialog aria-label=${t(L.searchEverything)} @close=${this.ended} @click=${this.outside}>
        <div class="palette">
          <div class="palette-field">${icon("search")}
            <input role="combobox" aria-label=${t(L.searchEverything)} aria-expanded="true" aria-autocomplete="list" aria-controls="palette-list" autocomplete="off" spellcheck="false"
              aria-activedescendant=${some ? `palette-${this.active}` : nothing} placeholder=${t(L.searchEverything)} @input=${this.typed} @keydown=${this.key} />
            <kbd>Esc</kbd></div>
          <div class="palette-list" id="palette-list" role="listbox" aria-label=${t(L.results)} tabindex="-1">${this.groups()}</div>
          <p class="palette-none" role="status">${some ? nothing : this.busy ? t(L.searching) : t(L.nothingFound)}</p>
          <footer class="palette-foot note"><span><kbd>↑</kbd> <kbd>↓</kbd> ${t(L.toChoose)}</span><span><kbd>Enter</kbd> ${t(L.toOpen)}</span>${
            this.entries[this.active]?.show
              ? html`<span><kbd>${shownKey("Shift+Enter")}</kbd> ${t(L.showInTree)}</span>`
              : nothing
          }<a href="/torvex/search?words=${encodeURIComponent(this.words)}" @click=${this.close}>${t(L.allResults)}</a></footer>
        </div>
      </dialog>
    `;
  }

  private groups() {
    let at = 0;
    return grouped(this.entries).map(
      ([name, entries]) =>
        html`<div role="group" aria-label=${name}><div class="palette-group" aria-hidden="true">${name}</div>${entries.map((entry) => this.entry(entry, at++))}</div>`,
    );
  }

  private entry(entry: Entry, at: number) {
    return html`<div role="option" id="palette-${at}" class="palette-entry" aria-selected=${String(at === this.active)} @click=${() => this.run(entry.run)} @pointermove=${() => (this.active = at)}>
      ${icon(entry.icon)}<span class="cut">${entry.label}</span>${entry.note ? html`<span class="note cut grow">${entry.note}</span>` : html`<span class="grow"></span>`}
      ${entry.state ? stateMark(entry.state) : nothing}${entry.key ? html`<kbd>${shownKey(entry.key)}</kbd>` : nothing}</div>`;
  }
}

export function openPalette(): void {
  const open = document.querySelector<TvxPalette>("tvx-palette");
  if (open) open.close();
  else document.body.append(new TvxPalette());
}
