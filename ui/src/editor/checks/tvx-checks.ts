import { html, nothing } from "lit";
import { customElement, state } from "lit/decorators.js";
import { icon, TvxElement } from "../../kit";
import { L, plural, t } from "../../labels";
import { onPagesChanged } from "../../shell/workplace";
import { check, type Finding } from "./rules";

/** What to look at before a page goes out: each entry leads to its place, none forbids. */
@customElement("tvx-checks")
export class TvxChecks extends TvxElement {
  @state() private found: Finding[] | null = null;
  private forget: (() => void)[] = [];

  override connectedCallback(): void {
    super.connectedCallback();
    const again = () => this.run();
    document.addEventListener("tvx-frame-loaded", again);
    this.forget = [
      () => document.removeEventListener("tvx-frame-loaded", again),
      onPagesChanged(() => setTimeout(again, 500)),
    ];
    this.run();
  }

  override disconnectedCallback(): void {
    super.disconnectedCallback();
    for (const forget of this.forget) forget();
  }

  run(): void {
    const doc = document.querySelector("tvx-page-frame")?.document;
    this.found = doc?.body && doc.readyState === "complete" ? check(doc) : null;
  }

  private show({ element }: Finding): void {
    if (!element?.isConnected) {
      this.run();
      return;
    }
    element.scrollIntoView({ block: "center" });
    const { style } = element as HTMLElement;
    const before = style.outline;
    style.outline = "3px solid #b3261e";
    setTimeout(() => {
      style.outline = before;
    }, 2500);
  }

  protected override render() {
    const { found } = this;
    if (!found) return html`<p class="note">${t(L.checksWait)}</p>`;
    return html`<div class="stack">
      <div class="inline"><span class="grow" role="status">${found.length ? plural(found.length, L.oneFinding, L.manyFindings) : t(L.noFindings)}</span>
        <button type="button" class="button small" @click=${() => this.run()}>${icon("refresh-cw")}${t(L.checkAgain)}</button></div>
      <ul class="checks-list" aria-label=${t(L.checks)}>${found.map((one) => this.one(one))}</ul>
    </div>`;
  }

  private one(finding: Finding) {
    return html`<li>${icon("triangle-alert")}<span class="grow"><span>${t(finding.label)}</span>${finding.detail ? html`<br><span class="note">${finding.detail}</span>` : nothing}</span>
      ${finding.element ? html`<button type="button" class="button small" aria-label=${`${t(L.showPlace)}: ${t(finding.label)}`} @click=${() => this.show(finding)}>${t(L.showPlace)}</button>` : nothing}</li>`;
  }
}

declare global {
  interface HTMLElementTagNameMap {
    "tvx-checks": TvxChecks;
  }
}
