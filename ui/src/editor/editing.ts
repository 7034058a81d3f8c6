import { html, nothing, type TemplateResult } from "lit";
import type { Command } from "prosemirror-state";
import type { Problem } from "../api";
import { icon, openMenu, toast } from "../kit";
import { L, t } from "../labels";
import { nextMove } from "../pages/actions";

import { doingOn } from "./body-menu";
import { type Draft, stateOf } from "./drafts";
import { attributeOf, withAttribute } from "./model/tags";
import { insertPicture } from "./pictures";
import { BodySession, loadBody, type Trouble } from "./session";
import { loadGroups } from "./settings";
import { type SlashItem, SlashMenu } from "./slash";
import { toolbar } from "./tools";
import type { TvxPageFrame } from "./tvx-page-frame";
import { BodyEditor, NotExact } from "./view/body-editor";
import * as commands from "./view/commands";
import type { BodyPlace } from "./view/places";

/** How long the tools wait after the selection has moved; after something was typed, and while more is typed at most. */
const toolsAfter = 80;
const toolsAfterTyping = 200;
const toolsWait = 600;

/** Its refusals say themselves that the text is kept. */
const SAYS_KEPT: readonly string[] = ["cManager.saveBody"];

/** A body of a page that is being edited, with the tools around it. */
export class Editing {
  private editor!: BodyEditor;
  readonly slash = new SlashMenu();
  private drawing: ReturnType<typeof setTimeout> | undefined;
  private waitsSince = 0;

  private constructor(
    private readonly frame: TvxPageFrame,
    readonly place: BodyPlace,
    readonly session: BodySession,
  ) {
    session.trouble.watch(() => frame.requestUpdate());
    session.unsaved.watch((unsaved) =>
      frame.dispatchEvent(new CustomEvent("tvx-unsaved", { detail: unsaved, bubbles: true })),
    );
  }

  /** Opens a body where it stands; as source when it can't be edited there without a change to what isn't touched. */
  static async start(frame: TvxPageFrame, place: BodyPlace, draft: Draft | null): Promise<Editing | null> {
    const [source] = await Promise.all([loadBody(frame.page, place.bodyId), loadGroups()]);
    const base = draft?.base ?? (await stateOf(source));
    const session = new BodySession(frame.page, place.bodyId, source, base, () =>
      frame.tabs.tell("saved", place.bodyId),
    );
    const editing = new Editing(frame, place, session);
    try {
      editing.open(source, draft?.html ?? null);
    } catch (error) {
      if (!(error instanceof NotExact)) throw error;
      const { sourceDialog } = await import("./source-dialog");
      void sourceDialog(frame, session, draft?.html ?? source, t(L.opensAsSource));
      return null;
    }
    return editing;
  }

  private open(source: string, draft: string | null): void {
    const others = this.frame.placesOf(this.bodyId).filter((place) => place !== this.place);
    const events = {
      changed: () => this.session.changed(),
      moved: (typed: boolean) => this.moved(typed),
      key: (event: KeyboardEvent) => this.key(event),
      files: (files: File[], at: number) => void this.files(files, at),
      island: (at: number, raw: string) => void this.island(at, raw),
    };
    this.editor = new BodyEditor(this.place, others, source, events, draft);
    this.editor.holder.setAttribute("aria-label", t(L.bodyHere, { number: this.bodyId }));
    const { editor } = this;
    this.session.edit(
      {
        get version() {
          return editor.state.doc;
        },
        get draft() {
          return editor.draft;
        },
        get text() {
          return editor.text;
        },
      },
      draft !== null,
    );
  }

  get bodyId(): number {
    return this.place.bodyId;
  }

  get state() {
    return this.editor.state;
  }

  get document(): Document {
    return this.editor.holder.ownerDocument;
  }

  get onlyWords(): boolean {
    return this.place.place === "words";
  }

  run(command: Command): void {
    this.editor.run(command);
  }

  focus(at?: { left: number; top: number } | "start"): void {
    this.editor.focus(at);
  }

  holds(target: EventTarget | null): boolean {
    return this.editor.holder.contains(target as Node);
  }

  save(): Promise<boolean> {
    return this.session.save();
  }

  close(): void {
    clearTimeout(this.drawing);
    this.session.close();
    this.editor.close();
  }

  /** Lets another tab go on with it. */
  async handOver(): Promise<void> {
    this.editor.setEditable(false);
    await this.session.handOver();
  }

  async dropDraft(): Promise<void> {
    await this.session.forget();
    this.editor.replace(this.session.source);
  }

  private moved(typed: boolean): void {
    const wasOpen = this.slash.open;
    this.slash.follow(this.state, this.onlyWords);
    if (this.slash.open || wasOpen) this.drawTools();
    else this.drawSoon(typed);
  }

  /** Not with each key: the tools follow when there is time, and what was typed lets them wait longer. */
  private drawSoon(typed: boolean): void {
    const [after, atMost] = typed ? [toolsAfterTyping, toolsWait] : [toolsAfter, toolsAfter];
    const now = performance.now();
    if (this.drawing === undefined) this.waitsSince = now;
    clearTimeout(this.drawing);
    this.drawing = setTimeout(() => this.drawTools(), Math.min(after, Math.max(0, this.waitsSince + atMost - now)));
  }

  private drawTools(): void {
    clearTimeout(this.drawing);
    this.drawing = undefined;
    this.frame.requestUpdate();
    this.frame.arrange();
  }

  private key(event: KeyboardEvent): boolean {
    const item = this.slash.key(event, this.state);
    if (item === "taken") {
      this.frame.requestUpdate();
      this.frame.arrange();
      return true;
    }
    if (item) {
      this.choose(item);
      return true;
    }
    return this.shortcut(event);
  }

  private shortcut(event: KeyboardEvent): boolean {
    if (event.altKey && event.key === "F10") {
      this.frame.querySelector<HTMLElement>(".edit-tools [tabindex='0']")?.focus();
      return true;
    }
    if (event.key === "Escape") {
      void this.frame.leave();
      return true;
    }
    if (!(event.ctrlKey || event.metaKey) || event.altKey) return false;
    const key = event.key.toLowerCase();
    if (key === "l" && !event.shiftKey) void this.link();
    else if (key === "h" && event.shiftKey) void this.source();
    else return false;
    event.preventDefault();
    return true;
  }

  /** Does what was chosen by "/", in place of what was typed for it. */
  choose(item: SlashItem): void {
    this.run((state, dispatch) => {
      dispatch?.(state.tr.delete(state.selection.from - this.slash.length, state.selection.from));
      return true;
    });
    this.slash.close();
    if (item.command) this.run(item.command);
    else if (item.id === "link") void this.link();
    else if (item.id === "image") void this.image();
    this.frame.requestUpdate();
  }

  async link(): Promise<void> {
    const { linkDialog } = await import("./link-dialog");
    const old = commands.linkHere(this.state);
    const chosen = this.state.selection.empty && !old;
    const answer = await linkDialog(this.frame.nodeId, old ? commands.addressOf(old) : "", chosen);
    if (answer === "remove") this.run(commands.removeLink);
    else if (answer) this.run(commands.setLink(answer.href, answer.text, answer.target));
    else this.focus();
  }

  async image(): Promise<void> {
    const { imageDialog } = await import("./image-dialog");
    const picture = await imageDialog(this.frame.nodeId.slice(0, 2));
    if (picture) this.run(commands.insertImage(picture));
    else this.focus();
  }

  private async files(files: File[], at: number): Promise<void> {
    const images = files.filter(({ type }) => type.startsWith("image/"));
    if (this.onlyWords || images.length < files.length)
      toast(t(this.onlyWords ? L.onlyWordsHere : L.onlyPicturesHere), { kind: "warn" });
    if (this.onlyWords) return;
    for (const file of images) {
      const open = await insertPicture(file, this.frame.nodeId.slice(0, 2));
      if (!open) continue;
      const { state } = this.editor;
      const place = Math.min(at, state.doc.content.size);
      const image = state.schema.nodes.image!.create({ open });
      this.editor.run((now, dispatch) => {
        dispatch?.(now.tr.replaceRangeWith(place, place, image));
        return true;
      });
    }
  }

  private async island(at: number, raw: string): Promise<void> {
    const { islandDialog } = await import("./source-dialog");
    const changed = await islandDialog(raw);
    if (changed === null || changed === raw) return this.focus();
    this.run((state, dispatch) => {
      const node = state.doc.nodeAt(at);
      if (!node) return false;
      dispatch?.(
        changed.trim()
          ? state.tr.setNodeMarkup(at, null, { ...node.attrs, raw: changed })
          : state.tr.delete(at, at + node.nodeSize),
      );
      return true;
    });
  }

  /** The whole text as source; what is changed there is shown here again, as far as that can be. */
  async source(): Promise<void> {
    const { textDialog } = await import("./source-dialog");
    const changed = await textDialog(this.editor.text);
    if (changed === null) return this.focus();
    if (!this.editor.replace(changed)) toast(t(L.opensAsSource), { kind: "warn" });
    this.focus();
  }

  /** The alternative text of the picture that is chosen. */
  async describe(): Promise<void> {
    const { altDialog } = await import("./pictures");
    const { selection } = this.state;
    const open: string =
      "node" in selection ? ((selection as { node: { attrs: { open?: string } } }).node.attrs.open ?? "") : "";
    const alt = await altDialog(attributeOf(open, "src") ?? "", attributeOf(open, "alt") ?? "");
    if (alt !== null) this.run(commands.setChosen({ open: withAttribute(open, "alt", alt) }));
  }

  tools(): TemplateResult {
    return html`${toolbar(this)}${this.slash.render((item) => this.choose(item))}`;
  }

  menu(anchor: HTMLElement, entries: Parameters<typeof openMenu>[1], label: string): void {
    openMenu(anchor, entries, label);
  }

  /** Where the tools go, above what is chosen or above the body; what is given back puts them there. */
  measured(): (() => void) | undefined {
    const tools = this.frame.querySelector<HTMLElement>(".edit-tools");
    const box = this.frame.querySelector<HTMLElement>(".frame-layer");
    if (!tools || !box || !this.editor) return undefined;
    const { left, top } = this.toolsAt(tools, box);
    const moveSlash = this.slash.measured(this.frame, this.editor.view);
    return () => {
      tools.style.transform = `translate(${Math.round(left)}px, ${Math.round(top)}px)`;
      moveSlash?.();
    };
  }

  private toolsAt(tools: HTMLElement, box: HTMLElement): { left: number; top: number } {
    const { selection } = this.state;
    const { view } = this.editor;
    const body = this.editor.holder.getBoundingClientRect();
    const start = view.coordsAtPos(selection.from);
    const line = selection.empty
      ? { left: body.left, top: Math.max(body.top, 0), bottom: start.bottom }
      : { left: start.left, top: start.top, bottom: view.coordsAtPos(selection.to).bottom };
    const above = line.top - tools.offsetHeight - 10;
    const covers = above < 4;
    const top = covers
      ? Math.min(selection.empty ? 4 : line.bottom + 10, box.clientHeight - tools.offsetHeight - 4)
      : above;
    const hidden = selection.empty && covers && start.top < tools.offsetHeight + 12;
    const left = Math.max(8, Math.min(line.left, box.clientWidth - tools.offsetWidth - 8));
    return { left, top: hidden ? start.bottom + 10 : top };
  }

  notice(): TemplateResult | typeof nothing {
    const trouble = this.session.trouble.value;
    if (!trouble) return nothing;
    if (trouble.kind !== "changed") return this.refusedNotice(trouble);
    const { theirs } = trouble;
    return this.noticeOf(
      html`${t(L.changedBySomebody)}`,
      html`<button class="button small" @click=${() => this.settle(theirs)}>${t(L.yoursAndTheirs)}</button>`,
    );
  }

  private refusedNotice(trouble: Exclude<Trouble, { kind: "changed" }>): TemplateResult {
    const gone = trouble.kind === "refused" && trouble.problem.kind === "gone";
    const kept = trouble.kind === "refused" && SAYS_KEPT.includes(trouble.problem.operation) ? "" : t(L.textIsKeptHere);
    const button = (label: string, run: () => unknown) =>
      html`<button type="button" class="button small" @click=${run}>${label}</button>`;
    const move = trouble.kind === "refused" ? this.moveAfter(trouble.problem) : undefined;
    return this.noticeOf(
      html`${trouble.text} ${kept}`,
      html`${move ? button(move.label, move.run) : nothing}${
        gone ? button(t(L.source), () => this.source()) : button(t(L.saveAgain), () => this.save())
      }${button(t(L.dropIt), () => this.frame.discardEditing())}`,
    );
  }

  /** What was approved is saved as soon as that is taken back. */
  private moveAfter(problem: Problem): ReturnType<typeof nextMove> {
    const move = nextMove(problem, doingOn(this.frame), () => this.save());
    if (problem.kind !== "approved" || !move) return move;
    return {
      label: move.label,
      run: async () => {
        await move.run();
        await this.save();
      },
    };
  }

  private noticeOf(text: TemplateResult, buttons: TemplateResult): TemplateResult {
    return html`<div class="notice danger page-banner edit-trouble" role="alert">${icon("circle-alert")}<span class="grow">${text}</span><span class="inline">${buttons}</span></div>`;
  }

  private async settle(theirs: string): Promise<void> {
    const { compareDialog } = await import("./conflict-dialog");
    const answer = await compareDialog(
      t(L.yours),
      this.editor.text,
      t(L.theirs),
      theirs,
      t(L.saveYours),
      t(L.takeTheOther),
    );
    if (answer === "one") await this.session.keepMine(theirs);
    if (answer !== "other") return;
    this.editor.replace(theirs);
    await this.session.takeTheirs(theirs);
  }
}
