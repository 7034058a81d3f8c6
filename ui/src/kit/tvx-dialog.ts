import { html, nothing, type TemplateResult } from "lit";
import { customElement, property, state } from "lit/decorators.js";
import { repeat } from "lit/directives/repeat.js";
import { isProblem, type Problem } from "../api/problem";
import { L, t } from "../labels";
import { TvxElement } from "./element";
import { icon } from "./icon";
import type { Toast } from "./tvx-toast";
import "./tvx-dialog.css";

export interface DialogAction {
  /** What the dialog answers when this button ends it. */
  name: string;
  label: string;
  kind?: "primary" | "danger" | "quiet";
  /** Why it can't be pressed; empty when it can. */
  disabled?: string;
  /** Runs before the dialog closes. It stays open when this gives false or fails; what failed is shown. */
  run?: () => unknown | Promise<unknown>;
}

export interface DialogOptions {
  title: string;
  body: (dialog: TvxDialog) => TemplateResult | string;
  /** The last one is the main one, which Ctrl+Enter presses; without any there is Close. */
  actions?: (dialog: TvxDialog) => DialogAction[];
  wide?: boolean;
  /** What can be done about a refusal of what a button runs: it stands beside the sentence. */
  nextStep?: (problem: Problem, dialog: TvxDialog) => Toast["action"];
  /** Esc and the cross don't close it. */
  stays?: boolean;
}

let opened = 0;

/** A window over the interface. Opened by `dialog(...)`, which answers the name of the button that ended it, or "". */
@customElement("tvx-dialog")
export class TvxDialog extends TvxElement {
  @property({ attribute: false }) options!: DialogOptions;
  @state() busy = "";
  @state() fault = "";
  @state() private next: Toast["action"];
  private answer = "";
  /** A dialog may open another one. */
  private readonly titleId = `dialog-title-${++opened}`;
  readonly closed: Promise<string>;
  private settle!: (answer: string) => void;
  private readonly opener = document.activeElement as HTMLElement | null;

  constructor() {
    super();
    this.closed = new Promise((resolve) => {
      this.settle = resolve;
    });
  }

  private get box(): HTMLDialogElement {
    return this.querySelector("dialog")!;
  }

  protected override firstUpdated(): void {
    this.box.showModal();
    const first = this.box.querySelector<HTMLElement>(
      "[autofocus], .dialog-body :is(input, select, textarea, button, a[href])",
    );
    (first ?? this.box.querySelector<HTMLElement>(".dialog-foot .button:last-child"))?.focus();
  }

  /** What can be scrolled has to be reached by keys. */
  protected override updated(): void {
    const body = this.querySelector<HTMLElement>(".dialog-body")!;
    requestAnimationFrame(() => {
      if (body.scrollHeight > body.clientHeight) body.tabIndex = 0;
      else body.removeAttribute("tabindex");
    });
  }

  close(answer = ""): void {
    this.answer = answer;
    this.box.close();
  }

  private ended(): void {
    this.remove();
    if (this.opener?.isConnected) this.opener.focus();
    this.settle(this.answer);
  }

  private async press(action: DialogAction): Promise<void> {
    if (this.busy || action.disabled) return;
    this.busy = action.name;
    this.fault = "";
    this.next = undefined;
    try {
      if ((await action.run?.()) !== false) this.close(action.name);
    } catch (error) {
      this.fault = error instanceof Error ? error.message : String(error);
      this.next = isProblem(error) ? this.options.nextStep?.(error, this) : undefined;
    } finally {
      this.busy = "";
    }
  }

  private get actions(): DialogAction[] {
    return this.options.actions?.(this) ?? [{ name: "close", label: t(L.close), kind: "primary" }];
  }

  private key(event: KeyboardEvent): void {
    if (event.key !== "Enter" || !event.ctrlKey) return;
    event.preventDefault();
    event.stopPropagation();
    const main = this.actions.at(-1);
    if (main) void this.press(main);
  }

  private cancelled(event: Event): void {
    if (this.options.stays || this.busy) event.preventDefault();
  }

  protected override render() {
    const { title, body, wide, stays } = this.options;
    return html`
      <dialog class=${wide ? "wide" : ""} aria-labelledby=${this.titleId} @close=${this.ended} @cancel=${this.cancelled} @keydown=${this.key}>
        <div class="dialog-head">
          <h2 id=${this.titleId}>${title}</h2>
          ${stays ? nothing : html`<button class="button quiet icon-only" aria-label=${t(L.close)} @click=${() => this.close()}>${icon("x")}</button>`}
        </div>
        <div class="dialog-body">${body(this)}</div>
        <div role="alert" class="dialog-fault">${this.fault ? html`<p class="notice danger">${icon("circle-alert")}<span class="grow">${this.fault}</span>${this.step()}</p>` : nothing}</div>
        <div class="dialog-foot">${repeat(
          this.actions,
          ({ name }) => name,
          (action) => this.button(action),
        )}</div>
      </dialog>
    `;
  }

  private step() {
    const { next } = this;
    return next ? html`<button type="button" class="button small" @click=${next.run}>${next.label}</button>` : nothing;
  }

  private button(action: DialogAction) {
    const why = action.disabled ?? "";
    return html`<button class="button ${action.kind ?? ""}" aria-disabled=${why || this.busy ? "true" : nothing} title=${why || nothing}
      aria-busy=${this.busy === action.name ? "true" : nothing} @click=${() => this.press(action)}>${action.label}</button>`;
  }
}

/** Opens a dialog and waits until it is closed. */
export function dialog(options: DialogOptions): Promise<string> {
  const element = new TvxDialog();
  element.options = options;
  document.body.append(element);
  return element.closed;
}

/** A question with one button that does it. */
export const ask = async (
  title: string,
  body: TemplateResult | string,
  action: string,
  kind: "primary" | "danger" = "primary",
) =>
  (await dialog({
    title,
    body: () => (typeof body === "string" ? html`<p>${body}</p>` : body),
    actions: () => [
      { name: "cancel", label: t(L.cancel) },
      { name: "yes", label: action, kind },
    ],
  })) === "yes";
