import { html, nothing, type PropertyValues } from "lit";
import { customElement, property, state } from "lit/decorators.js";
import { callOf, type PageCall } from "../formats/page-calls";
import { icon, openMenu, styles, TvxElement, toast } from "../kit";
import { L, t } from "../labels";
import { beforeLeaving, go, pageAddress } from "../shell/address";
import { dropDraft } from "../shell/drafts";
import { runKey } from "../shell/keys";
import { clock } from "../shell/tvx-foot";
import { onPagesChanged } from "../shell/workplace";
import { bodyMenu } from "./body-menu";
import { type Draft, newestDrafts } from "./drafts";
import type { Editing } from "./editing";
import { OtherTabs } from "./other-tabs";
import { isOwnChange, type PageName } from "./session";
import { styleFrame } from "./view/frame-styles";
import { type BodyPlace, bodyPlaces, boxOf } from "./view/places";
import "./tvx-page-frame.css";

/** Where a click was, in the frame. */
interface Point {
  left: number;
  top: number;
}

/** A page as visitors see it, in a frame, with its bodies to be edited in their places. */
@customElement("tvx-page-frame")
export class TvxPageFrame extends TvxElement {
  @property({ type: Number }) pageId = 0;
  @property() nodeId = "";
  @property() mode: "D" | "L" = "D";
  @property({ type: Boolean }) editable = false;
  @property({ type: Number }) width = 0;
  @state() private places: BodyPlace[] = [];
  @state() private drafts: Draft[] = [];
  @state() private loading = true;
  @state() editing: Editing | null = null;
  private scrolledTo = 0;
  private wanted: number | null = null;
  private frameRequest = 0;
  private readonly forget: (() => void)[] = [];
  readonly tabs = new OtherTabs(this);

  override connectedCallback(): void {
    super.connectedCallback();
    const hide = () => this.editing?.session.keepNow();
    window.addEventListener("pagehide", hide);
    document.addEventListener("visibilitychange", hide);
    window.addEventListener("message", this.message);
    this.tabs.start();
    this.forget.push(
      () => this.tabs.stop(),
      // What couldn't be saved is kept as a draft: nobody has to stay for it.
      beforeLeaving(async () => {
        if (!(await this.save())) this.editing?.session.keepNow();
        return true;
      }),
      onPagesChanged((change) => this.changedElsewhere(change)),
      () => window.removeEventListener("pagehide", hide),
      () => document.removeEventListener("visibilitychange", hide),
      () => window.removeEventListener("message", this.message),
    );
  }

  override disconnectedCallback(): void {
    super.disconnectedCallback();
    for (const forget of this.forget.splice(0)) forget();
    this.editing?.session.keepNow();
    this.stopEditing();
  }

  protected override willUpdate(changed: PropertyValues<this>): void {
    if (changed.has("pageId") || changed.has("mode")) {
      this.editing?.session.keepNow();
      this.stopEditing();
      this.loading = true;
      this.scrolledTo = 0;
      this.places = [];
      this.drafts = [];
    }
    if (changed.has("editable") && !this.editable && this.editing) void this.leave();
  }

  protected override updated(): void {
    this.arrange();
  }

  private get frame(): HTMLIFrameElement | null {
    return this.querySelector("iframe");
  }

  /** Its document, as far as the shell may work in it. */
  get document(): Document | null {
    return this.mode === "D" ? (this.frame?.contentDocument ?? null) : null;
  }

  get page(): PageName {
    return { pageId: this.pageId, nodeId: this.nodeId };
  }

  private get address(): string {
    return this.mode === "D"
      ? `/torvex/view.asp?pageId=${this.pageId}&mode=D&edit=1`
      : `/torvex/view.asp?pageId=${this.pageId}&mode=L`;
  }

  private changedElsewhere(change: { pageIds: number[] } | "all"): void {
    if (isOwnChange() || this.editing || (change !== "all" && !change.pageIds.includes(this.pageId))) return;
    this.reload();
  }

  /** Shows the page anew, at the same height. */
  reload(): void {
    const view = this.document?.defaultView;
    this.scrolledTo = view?.scrollY ?? 0;
    this.stopEditing();
    view?.location.reload();
  }

  private async loaded(): Promise<void> {
    this.loading = false;
    const doc = this.document;
    if (!doc) return;
    styleFrame(doc);
    this.places = bodyPlaces(doc);
    this.listen(doc);
    doc.defaultView?.scrollTo({ top: this.scrolledTo, behavior: "instant" });
    this.tell("tvx-frame-loaded");
    this.tabs.look();
    if (this.wanted !== null) void this.edit(this.wanted);
    if (this.editable) await this.findDrafts();
  }

  private listen(doc: Document): void {
    const view = doc.defaultView!;
    doc.addEventListener("click", (event) => this.clicked(event));
    doc.addEventListener("auxclick", (event) => event.preventDefault());
    doc.addEventListener("submit", (event) => event.preventDefault());
    doc.addEventListener("keydown", (event) => this.key(event));
    for (const type of ["dragover", "drop"]) doc.addEventListener(type, (event) => event.preventDefault());
    for (const type of ["pointerdown", "keydown", "pointermove"])
      doc.addEventListener(type, () => document.dispatchEvent(new Event("pointermove")), { passive: true });
    const arrange = () => this.arrange();
    doc.addEventListener("scroll", arrange, { passive: true, capture: true });
    view.addEventListener("resize", arrange);
    doc.addEventListener("load", arrange, { capture: true });
    new (view as Window & typeof globalThis).ResizeObserver(arrange).observe(doc.documentElement);
  }

  private async findDrafts(): Promise<void> {
    const found = await newestDrafts(this.pageId);
    const open = this.editing?.bodyId;
    this.drafts = found.filter(
      ({ bodyId }) =>
        bodyId !== open &&
        !this.tabs.has(bodyId) &&
        this.places.some((place) => place.bodyId === bodyId && place.kind === "text"),
    );
  }

  private placeAt(target: EventTarget | null): BodyPlace | undefined {
    // Beside the words of a heading the click is the heading's: the cell has no box of its own.
    const around = this.places.filter(({ cell }) => cell.closest("table")?.parentElement === target);
    return (
      this.places.find(({ cell }) => cell.contains(target as Node)) ?? (around.length === 1 ? around[0] : undefined)
    );
  }

  private clicked(event: MouseEvent): void {
    const target = event.target as Element;
    const link = target.closest("a[href], area[href]");
    const place = this.placeAt(target);
    if (link) event.preventDefault();
    if (this.editing?.holds(target)) {
      if (link && (event.ctrlKey || event.metaKey)) this.follow(link.getAttribute("href") ?? "", true);
      return;
    }
    if (link) {
      this.follow(link.getAttribute("href") ?? "", event.ctrlKey || event.metaKey);
      return;
    }
    if (target.closest("button, input[type=submit], label, summary") && !place) return;
    if (place?.kind === "text" && this.editable)
      void this.edit(place.bodyId, { left: event.clientX, top: event.clientY }, place);
    else if (this.editing) void this.leave();
  }

  private follow(href: string, apart: boolean): void {
    if (href.startsWith("#")) {
      const name = decodeURIComponent(href.slice(1));
      this.document?.getElementById(name)?.scrollIntoView();
      return;
    }
    const call = callOf(href);
    if (call) void this.act(call, apart);
  }

  private async act(call: PageCall, apart = false): Promise<void> {
    switch (call.kind) {
      case "page":
        if (apart) window.open(pageAddress(call.page), "_blank", "noopener");
        else void go(pageAddress(call.page));
        return;
      case "link":
        return this.leadOutside(call.address);
      case "file":
        return this.leadOutside(call.path);
      case "editBody":
        return void this.edit(call.bodyId);
      case "setupBody": {
        const place = this.places.find(({ bodyId }) => bodyId === call.bodyId);
        if (place) (await import("./setup-dialog")).setupDialog(this, place);
      }
    }
  }

  private leadOutside(address: string): void {
    const url = new URL(address, location.href);
    if (!/^(?:https?|ftp|mailto|tel):$/.test(url.protocol)) return;
    const open = () => window.open(url, "_blank", "noopener");
    if (sessionStorage.getItem("torvex.outside") || url.origin === location.origin) return void open();
    toast(t(L.leadsOutside, { address: url.host || url.href }), {
      kind: "warn",
      action: {
        label: t(L.openAddress),
        run: () => {
          sessionStorage.setItem("torvex.outside", "1");
          open();
        },
      },
    });
  }

  /** Links of a page whose scripts run come as messages; nothing else of it is taken. */
  private readonly message = (event: MessageEvent): void => {
    if (event.source !== this.frame?.contentWindow || event.origin !== "null") return;
    const { torvex, name, values } = (event.data ?? {}) as { torvex?: unknown; name?: unknown; values?: unknown };
    if (torvex !== "link" || !Array.isArray(values) || typeof values[0] !== "string") return;
    const [first, second = ""] = values.map(String) as [string, string?];
    if (name === "page") void this.act({ kind: "page", page: first });
    else if (name === "viewLink") void this.act({ kind: "link", address: first });
    else if (name === "popup") void this.act({ kind: "file", path: first, title: second });
  };

  private key(event: KeyboardEvent): void {
    if (event.defaultPrevented) return;
    if (event.key === "Escape" && this.editing) {
      event.preventDefault();
      void this.leave();
    } else if (event.key === "s" && (event.ctrlKey || event.metaKey) && !event.altKey) {
      event.preventDefault();
      void this.save();
    } else if (event.key === "e" && !this.editing && !event.ctrlKey && !event.metaKey && !event.altKey) {
      event.preventDefault();
      void this.edit();
    } else this.passOn(event);
  }

  /** Keys of the interface are pressed in the frame as well. */
  private passOn(event: KeyboardEvent): void {
    if (event.key === "Enter" && event.ctrlKey) {
      const copy = new KeyboardEvent("keydown", { key: event.key, ctrlKey: true, bubbles: true, cancelable: true });
      if (!this.dispatchEvent(copy)) event.preventDefault();
      return;
    }
    if (event.ctrlKey || event.metaKey || event.altKey || event.key.length > 1 || !this.editing) runKey(event);
  }

  /** Starts typing: in a body, or in the first one. */
  async edit(bodyId?: number, at: Point | "start" = "start", place?: BodyPlace): Promise<void> {
    if (!this.editable) return;
    if (this.loading || !this.document) {
      this.wanted = bodyId ?? 1;
      return;
    }
    this.wanted = null;
    const texts = this.places.filter(({ kind }) => kind === "text");
    const chosen =
      place ??
      texts.find((one) => one.bodyId === bodyId) ??
      (bodyId === undefined ? (texts.find(({ place }) => place === "blocks") ?? texts[0]) : undefined);
    if (!chosen) return;
    if (this.editing?.bodyId === chosen.bodyId) return this.editing.focus(at);
    if (this.editing && !(await this.leave())) return;
    const handed = this.tabs.has(chosen.bodyId);
    if (handed) {
      await this.tabs.take(chosen.bodyId);
      await this.findDrafts();
    }
    const draft = this.drafts.find((one) => one.bodyId === chosen.bodyId);
    await this.open(chosen, at, draft ?? null, handed);
  }

  get openBody(): number | undefined {
    return this.editing?.bodyId;
  }

  async yieldBody(): Promise<void> {
    const { editing } = this;
    await editing?.handOver();
    if (this.editing === editing) this.stopEditing();
  }

  othersChanged(): void {
    this.requestUpdate();
    if (this.editable) void this.findDrafts();
  }

  private async open(place: BodyPlace, at: Point | "start", draft: Draft | null, handed: boolean): Promise<void> {
    const { Editing } = await import("./editing");
    this.drafts = this.drafts.filter((one) => one !== draft);
    this.editing = await Editing.start(this, place, draft);
    this.editing?.focus(at);
    if (this.editing) this.tabs.tell("opened", place.bodyId);
    if (draft && !handed)
      toast(t(L.draftTakenUp, { time: clock(new Date(draft.moment)) }), { undo: () => this.editing?.dropDraft() });
  }

  /** The places of one body. */
  placesOf(bodyId: number): BodyPlace[] {
    return this.places.filter((place) => place.bodyId === bodyId);
  }

  /** Whether something was typed that isn't saved; `tvx-unsaved` tells when that changes. */
  get unsaved(): boolean {
    return this.editing?.session.unsaved.value ?? false;
  }

  /** Saves what is being typed; false when that couldn't be done. */
  async save(): Promise<boolean> {
    return (await this.editing?.save()) ?? true;
  }

  /** Saves, and ends the typing; what couldn't be saved stays open. */
  async leave(): Promise<boolean> {
    const { editing } = this;
    if (!editing) return true;
    if (!(await editing.save())) return false;
    if (this.editing === editing) this.stopEditing();
    return true;
  }

  stopEditing(): void {
    if (this.unsaved) this.tell("tvx-unsaved", false);
    this.editing?.close();
    if (this.editing) this.tabs.tell("closed", this.editing.bodyId);
    this.editing = null;
  }

  /** Gives up what was typed since it was saved. */
  async discardEditing(): Promise<void> {
    await this.editing?.session.forget();
    this.reload();
  }

  /** Puts the handles where their bodies are, with the next picture. */
  arrange(): void {
    cancelAnimationFrame(this.frameRequest);
    this.frameRequest = requestAnimationFrame(() => this.place());
  }

  /** All is measured before anything moves: each move would have the page laid out anew for what is measured next. */
  private place(): void {
    const handles = this.placedHandles();
    for (const { handle, box } of handles) handle.hidden = box.bottom < 0;
    const width = this.frame?.clientWidth ?? 0;
    const lefts = handles.map(({ handle, box }) => Math.min(box.right + 6, width - handle.offsetWidth - 6));
    const moveTools = this.editing?.measured();
    handles.forEach(({ handle, box }, i) => {
      handle.style.transform = `translate(${Math.round(lefts[i]!)}px, ${Math.round(Math.max(box.top, 4))}px)`;
    });
    moveTools?.();
  }

  private placedHandles(): { handle: HTMLElement; box: DOMRect }[] {
    const handles = this.querySelectorAll<HTMLElement>(".body-handle");
    return this.places.flatMap(({ cell }, i) => {
      const handle = handles[i];
      return handle && cell.isConnected ? [{ handle, box: boxOf(cell) }] : [];
    });
  }

  /** A handle that gets the focus brings its body along. */
  private bringIntoView(cell: HTMLElement): void {
    const { top } = boxOf(cell);
    const height = this.frame?.clientHeight ?? 0;
    if (top < 0 || top > height - 40)
      this.document?.defaultView?.scrollBy({ top: top - height / 3, behavior: "instant" });
    this.place();
  }

  private async takeUp(draft: Draft): Promise<void> {
    await this.edit(draft.bodyId);
  }

  private async compareDraft(draft: Draft): Promise<void> {
    const { compareDialog } = await import("./conflict-dialog");
    const { loadBody } = await import("./session");
    const answer = await compareDialog(
      t(L.yourDraft),
      draft.html,
      t(L.storedText),
      await loadBody(this.page, draft.bodyId),
      t(L.keepDraft),
      t(L.dropIt),
    );
    if (answer === "one") await this.takeUp(draft);
    else if (answer === "other") await this.discard(draft);
  }

  private async discard(draft: Draft): Promise<void> {
    this.drafts = this.drafts.filter((one) => one !== draft);
    await dropDraft(this.pageId, draft.bodyId);
  }

  protected override render() {
    const { width } = this;
    return html`<div class="frame-column">
      ${this.drafts.map((draft) => this.draftNotice(draft))}
      ${this.editing?.notice() ?? nothing}
      ${this.tabs.open.map((bodyId) => this.otherTabNotice(bodyId))}
      <div class="frame-stage" aria-busy=${this.loading}>
        <div class="frame-box" ${styles({ "max-width": width ? `${width}px` : "none" })}>
          ${this.pageId ? html`<iframe src=${this.address} title=${t(L.pagePreview)} @load=${this.loaded}></iframe>` : nothing}
          ${this.mode === "D" ? html`<div class="frame-layer" role="group" aria-label=${t(L.bodiesOfPage)}>${this.places.map((place) => this.handle(place))}${this.editing?.tools() ?? nothing}</div>` : nothing}
        </div>
      </div>
    </div>`;
  }

  private handle(place: BodyPlace) {
    const { bodyId, kind } = place;
    const name = kind === "text" ? t(L.bodyHere, { number: bodyId }) : t(L.feedNumber, { number: bodyId });
    const open = (event: Event) => openMenu(event.currentTarget as HTMLElement, bodyMenu(this, place), name);
    const show = () => this.bringIntoView(place.cell);
    return html`<button type="button" class="body-handle ${this.editing?.bodyId === bodyId ? "is-open" : ""}" aria-haspopup="menu" aria-label=${name} title=${name} @focus=${show} @click=${open}>${bodyId}${icon("ellipsis-vertical")}</button>`;
  }

  private otherTabNotice(bodyId: number) {
    const goOn = () => void this.edit(bodyId);
    return html`<div class="notice page-banner other-tab" role="status">${icon("info")}
      <span class="grow">${t(L.openInOtherTab, { number: bodyId })}</span>
      ${this.editable ? html`<span class="inline"><button class="button small" @click=${goOn}>${t(L.goOnHere)}</button></span>` : nothing}</div>`;
  }

  private draftNotice(draft: Draft) {
    return html`<div class="notice warn page-banner draft-notice" role="status">${icon("file-clock")}
      <span class="grow">${t(L.unsavedText, { time: clock(new Date(draft.moment)), number: draft.bodyId })}</span>
      <span class="inline">
        <button class="button small" @click=${() => this.takeUp(draft)}>${t(L.keepDraft)}</button>
        <button class="button small" @click=${() => this.compareDraft(draft)}>${t(L.compareDraft)}</button>
        <button class="button small" @click=${() => this.discard(draft)}>${t(L.dropIt)}</button>
      </span></div>`;
  }
}

declare global {
  interface HTMLElementTagNameMap {
    "tvx-page-frame": TvxPageFrame;
  }
}
