import { LitElement, type ReactiveController, type ReactiveControllerHost } from "lit";
import { onWords } from "../labels";
import type { Store } from "./store";

/** What all elements of the interface are: in the document's own tree, drawn anew when the language changes. */
export class TvxElement extends LitElement {
  private forgetWords?: () => void;

  protected override createRenderRoot(): HTMLElement {
    return this;
  }

  override connectedCallback(): void {
    super.connectedCallback();
    this.forgetWords = onWords(() => this.requestUpdate());
  }

  override disconnectedCallback(): void {
    super.disconnectedCallback();
    this.forgetWords?.();
  }

  protected tell<T>(name: string, detail?: T): boolean {
    return this.dispatchEvent(new CustomEvent(name, { detail, bubbles: true, cancelable: true }));
  }
}

/** Draws an element anew whenever a store changes: `private login = new Watch(this, login)`. */
export class Watch<T> implements ReactiveController {
  private forget?: () => void;

  constructor(
    private readonly host: ReactiveControllerHost,
    private readonly store: Store<T>,
    private readonly changed: (value: T) => void = () => {},
  ) {
    host.addController(this);
  }

  get value(): T {
    return this.store.value;
  }

  hostConnected(): void {
    this.forget = this.store.watch((value) => {
      this.changed(value);
      this.host.requestUpdate();
    });
  }

  hostDisconnected(): void {
    this.forget?.();
  }
}
