import { html, nothing } from "lit";
import { customElement, property } from "lit/decorators.js";
import { TvxElement } from "./element";
import { type IconName, icon } from "./icon";
import "./tvx-tabs.css";

export interface Tab {
  id: string;
  label: string;
  icon?: IconName;
  count?: number;
}

/** A row of tabs; the panel below is its user's: `id` = `panel`, role "tabpanel", labelled by "NAME-tab-ID". */
@customElement("tvx-tabs")
export class TvxTabs extends TvxElement {
  @property({ attribute: false }) tabs: Tab[] = [];
  @property() chosen = "";
  @property() name = "";
  @property() label = "";
  @property() panel = "";

  private choose(id: string): void {
    if (id !== this.chosen) this.tell("tvx-choose", id);
  }

  private key(event: KeyboardEvent): void {
    const at = this.tabs.findIndex(({ id }) => id === this.chosen);
    const moves: Record<string, number> = {
      ArrowRight: at + 1,
      ArrowLeft: at - 1 + this.tabs.length,
      Home: 0,
      End: this.tabs.length - 1,
    };
    const to = moves[event.key];
    if (to === undefined) return;
    event.preventDefault();
    const tab = this.tabs[to % this.tabs.length]!;
    this.choose(tab.id);
    this.querySelector<HTMLElement>(`#${this.name}-tab-${tab.id}`)?.focus();
  }

  protected override render() {
    return html`<div role="tablist" aria-label=${this.label} @keydown=${this.key}>${this.tabs.map(
      ({ id, label, icon: name, count }) => html`
        <button role="tab" id="${this.name}-tab-${id}" aria-selected=${String(id === this.chosen)} tabindex=${id === this.chosen ? 0 : -1}
          aria-controls=${id === this.chosen && this.panel ? this.panel : nothing} @click=${() => this.choose(id)}>
          ${name ? icon(name) : nothing}<span>${label}</span>${count ? html`<span class="count">${count}</span>` : nothing}
        </button>`,
    )}</div>`;
  }
}
