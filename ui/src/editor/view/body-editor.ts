// A body that is being edited in its place on the page.
import { dropCursor } from "prosemirror-dropcursor";
import { gapCursor } from "prosemirror-gapcursor";
import { history } from "prosemirror-history";
import { InputRule, inputRules, undoInputRule } from "prosemirror-inputrules";
import { keymap } from "prosemirror-keymap";
import type { Node, Slice } from "prosemirror-model";
import { type Command, EditorState, NodeSelection, Plugin, TextSelection, type Transaction } from "prosemirror-state";
import { EditorView } from "prosemirror-view";
import { bodyText, openBody } from "../model/body";
import { ownAddresses, pasted, pastedText, wordsOf } from "../model/paste";
import { elementAttrs } from "../model/schema";
import { write } from "../model/write";
import { keys, wordKeys } from "./keys";
import { type BodyPlace, holderIn } from "./places";
import { picture, viewsFor } from "./render";

export interface EditorEvents {
  /** Something was typed: the first time before anything is sent. */
  changed(): void;
  /** The selection is another, or the text when it was typed; tools follow it. */
  moved(typed: boolean): void;
  /** A key that the editor has no use for; true when somebody had. */
  key(event: KeyboardEvent): boolean;
  files(files: File[], at: number): void;
  island(at: number, raw: string): void;
}

/** What the library's view knows and doesn't offer. */
interface Internals {
  domObserver: { flush(): void };
  input: { shiftKey: boolean };
}

/** Not all of the body can be shown without changing it. */
export class NotExact extends Error {}

function lineRules(): Plugin {
  const heading = new InputRule(/^(#{1,4})\s$/, (state, match, start, end) => {
    const tag = `h${match[1]!.length}`;
    const line = state.doc.resolve(start);
    if (line.parent.type.name !== "paragraph" || line.depth === 0) return null;
    return state.tr
      .delete(start, end)
      .setNodeMarkup(line.before(), null, elementAttrs(tag, { before: line.parent.attrs.before }));
  });
  return inputRules({ rules: [heading] });
}

export class BodyEditor {
  readonly view: EditorView;
  readonly holder: HTMLElement;
  private readonly mirrors: HTMLElement[];
  private readonly opened: Node;
  private mirrorTimer: ReturnType<typeof setTimeout> | undefined;
  private copied: { html: string; slice: Slice } | null = null;

  constructor(
    readonly place: BodyPlace,
    others: BodyPlace[],
    readonly source: string,
    private readonly events: EditorEvents,
    from: string | null = null,
  ) {
    const { doc, exact } = openBody(source, place.place);
    const start = from === null ? { doc, exact } : openBody(from, place.place);
    if (!exact || !start.exact) throw new NotExact();
    this.opened = doc;
    this.holder = holderIn(place);
    this.mirrors = others.map(holderIn);
    this.holder.replaceChildren();
    const { ownerDocument } = this.holder;
    this.view = new EditorView(
      { mount: this.holder },
      {
        state: EditorState.create({ doc: start.doc, plugins: this.plugins() }),
        ...viewsFor(
          ownerDocument,
          Object.keys(doc.type.schema.nodes).filter((name) => name !== "doc" && name !== "text"),
        ),
        dispatchTransaction: (tr) => this.apply(tr),
        handleDoubleClickOn: (_, __, node, at) => this.openIsland(node, at),
        // Ahead of the library, which would parse what comes from elsewhere in the shell's document.
        handleDOMEvents: {
          keydown: () => this.catchUp(),
          paste: (_, event) => this.paste(event),
          drop: (_, event) => this.drop(event),
          copy: (_, event) => this.copy(event, false),
          cut: (_, event) => this.copy(event, true),
          click: (_, event) => void event.preventDefault(),
        },
        attributes: { role: "textbox", "aria-multiline": String(place.place === "blocks"), spellcheck: "true" },
      },
    );
    if (from !== null) this.mirror();
  }

  private plugins(): Plugin[] {
    const words = this.place.place === "words";
    const islands: Command = (state) => {
      const { selection } = state;
      return selection instanceof NodeSelection && this.openIsland(selection.node, selection.from);
    };
    return [
      new Plugin({ props: { handleKeyDown: (_, event) => this.events.key(event) } }),
      keymap({ Enter: islands, Backspace: undoInputRule }),
      keymap(words ? wordKeys : keys),
      ...(words ? [] : [lineRules()]),
      history(),
      dropCursor({ color: "#0b57d0", width: 2 }),
      gapCursor(),
    ];
  }

  private apply(tr: Transaction): void {
    this.view.updateState(this.view.state.apply(tr));
    if (tr.docChanged) {
      this.events.changed();
      if (this.mirrors.length) {
        clearTimeout(this.mirrorTimer);
        this.mirrorTimer = setTimeout(() => this.mirror(), 120);
      }
    }
    this.events.moved(tr.docChanged);
  }

  private mirror(): void {
    for (const holder of this.mirrors) holder.replaceChildren(picture(holder.ownerDocument, this.view.state.doc));
  }

  private openIsland(node: Node, at: number): boolean {
    if (node.type.name !== "island" && node.type.name !== "inlineIsland") return false;
    this.events.island(at, node.attrs.raw);
    return true;
  }

  /**
   * The browser tells of a moved cursor a moment later, behind the next key of whoever types fast: what depends on the
   * cursor asks where it is.
   */
  private catchUp(): void {
    if (!this.view.composing) (this.view as unknown as Internals).domObserver.flush();
  }

  /** The clipboard gets what is stored, not how it is shown. */
  private copy(event: ClipboardEvent, cut: boolean): boolean {
    this.catchUp();
    const { selection } = this.view.state;
    if (selection.empty || !event.clipboardData) return false;
    const slice = selection.content();
    const html = this.htmlOf(slice);
    event.preventDefault();
    event.clipboardData.clearData();
    event.clipboardData.setData("text/html", html);
    event.clipboardData.setData("text/plain", slice.content.textBetween(0, slice.content.size, "\n\n", "\n"));
    this.copied = { html, slice };
    if (cut) this.view.dispatch(this.view.state.tr.deleteSelection().scrollIntoView());
    return true;
  }

  private htmlOf(slice: Slice): string {
    const { schema } = this.view.state;
    const inline = slice.content.firstChild?.isInline ?? false;
    const holder = inline ? schema.nodes.run!.create(null, slice.content) : null;
    return holder ? write(holder) : slice.content.content.map((node) => write(node)).join("");
  }

  private paste(event: ClipboardEvent): boolean {
    const data = event.clipboardData;
    if (!data) return false;
    this.catchUp();
    event.preventDefault();
    const files = [...data.files];
    const html = data.getData("text/html");
    if (files.length && !html) {
      this.events.files(files, this.view.state.selection.from);
      return true;
    }
    const plain = (this.view as unknown as Internals).input.shiftKey;
    const slice = html && !plain ? this.pastedHtml(html) : pastedText(data.getData("text/plain"));
    this.insert(slice);
    return true;
  }

  private pastedHtml(html: string): Slice {
    if (this.copied && html.includes(this.copied.html)) return this.copied.slice;
    return pasted(ownAddresses(html, location.origin));
  }

  private insert(slice: Slice): void {
    const { state } = this.view;
    const words = this.place.place === "words" || state.selection.$from.parent.type.spec.code === true;
    const tr = words ? state.tr.insertText(wordsOf(slice)) : state.tr.replaceSelection(slice);
    this.view.dispatch(tr.scrollIntoView().setMeta("paste", true).setMeta("uiEvent", "paste"));
  }

  private drop(event: DragEvent): boolean {
    const files = [...(event.dataTransfer?.files ?? [])];
    const at =
      this.view.posAtCoords({ left: event.clientX, top: event.clientY })?.pos ?? this.view.state.selection.from;
    if (this.view.dragging) return false;
    event.preventDefault();
    if (files.length) {
      this.events.files(files, at);
      return true;
    }
    const html = event.dataTransfer?.getData("text/html");
    const { state } = this.view;
    const clean = html ? this.pastedHtml(html) : pastedText(event.dataTransfer?.getData("text/plain") ?? "");
    this.view.dispatch(
      this.place.place === "words" ? state.tr.insertText(wordsOf(clean), at) : state.tr.replace(at, at, clean),
    );
    return true;
  }

  get dirty(): boolean {
    return this.view.state.doc !== this.opened && !this.view.state.doc.eq(this.opened);
  }

  /** The text as it would be stored; cheap, for drafts. */
  get draft(): string {
    return this.dirty ? write(this.view.state.doc) : this.source;
  }

  /** The text as it is stored: read once more, so that it says what is shown. */
  get text(): string {
    return this.dirty ? bodyText(this.view.state.doc, this.opened) : this.source;
  }

  run(command: Command): boolean {
    this.catchUp();
    const done = command(this.view.state, this.view.dispatch, this.view);
    this.view.focus();
    return done;
  }

  get state(): EditorState {
    return this.view.state;
  }

  focus(at?: { left: number; top: number } | "start"): void {
    const { state } = this.view;
    const found = typeof at === "object" ? this.view.posAtCoords(at)?.pos : undefined;
    const place = state.doc.resolve(
      Math.min(found ?? (at === "start" ? 0 : state.selection.from), state.doc.content.size),
    );
    this.view.dispatch(state.tr.setSelection(TextSelection.near(place)));
    this.view.focus();
  }

  /** The text as a whole, put in place of what is there; it can be undone. Not when it can't be edited as it looks. */
  replace(text: string): boolean {
    const { doc, exact } = openBody(text, this.place.place);
    if (!exact) return false;
    const { state } = this.view;
    this.view.dispatch(
      state.tr
        .replaceWith(0, state.doc.content.size, doc.content)
        .setDocAttribute("tail", doc.attrs.tail)
        .setDocAttribute("lead", doc.attrs.lead),
    );
    return true;
  }

  setEditable(editable: boolean): void {
    this.view.setProps({ editable: () => editable });
  }

  /** Ends editing; the page shows what it has become. */
  close(): void {
    clearTimeout(this.mirrorTimer);
    const { doc } = this.view.state;
    const changed = this.dirty;
    this.view.destroy();
    for (const holder of [this.holder, ...(changed ? this.mirrors : [])]) {
      holder.replaceChildren(picture(holder.ownerDocument, doc));
      for (const name of [
        "role",
        "aria-multiline",
        "aria-label",
        "spellcheck",
        "contenteditable",
        "class",
        "translate",
      ])
        holder.removeAttribute(name);
    }
  }
}
