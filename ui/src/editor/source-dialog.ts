// Text as it is stored, in an editor for code.
import { defaultKeymap, history, historyKeymap, indentWithTab } from "@codemirror/commands";
import { html as htmlLanguage } from "@codemirror/lang-html";
import { bracketMatching, defaultHighlightStyle, HighlightStyle, syntaxHighlighting } from "@codemirror/language";
import { search, searchKeymap } from "@codemirror/search";
import { EditorState, type Extension } from "@codemirror/state";
import { EditorView, keymap, lineNumbers } from "@codemirror/view";
import { tags } from "@lezer/highlight";
import { html } from "lit";
import { createRef, ref } from "lit/directives/ref.js";
import { type DialogOptions, dialog, icon } from "../kit";
import { L, t } from "../labels";
import { nextMoveIn } from "../pages/actions";
import { doingOn } from "./body-menu";
import type { BodySession } from "./session";
import type { TvxPageFrame } from "./tvx-page-frame";

const colors = HighlightStyle.define([
  { tag: tags.tagName, color: "var(--info)" },
  { tag: tags.attributeName, color: "var(--warn)" },
  { tag: tags.attributeValue, color: "var(--accent)" },
  { tag: tags.string, color: "var(--accent)" },
  { tag: tags.comment, color: "var(--soft)", fontStyle: "italic" },
]);

const looks = EditorView.theme({
  "&": { color: "var(--ink)", backgroundColor: "var(--card)" },
  ".cm-content": { fontFamily: "var(--code)", caretColor: "var(--ink)" },
  ".cm-gutters": { backgroundColor: "var(--sunken)", color: "var(--soft)", border: "0" },
  ".cm-selectionBackground, &.cm-focused > .cm-scroller > .cm-selectionLayer .cm-selectionBackground": {
    backgroundColor: "var(--info-quiet)",
  },
  ".cm-cursor": { borderLeftColor: "var(--ink)" },
  "&.cm-focused": { outline: "2px solid var(--focus)", outlineOffset: "2px" },
});

/** The styles of the code editor carry the number that the document's policy asks for. */
const nonce = () => document.querySelector<HTMLMetaElement>('meta[name="torvex-nonce"]')?.content ?? "";

/** Line ends stay as they are: those of the text are kept apart from what the editor shows. */
export class Lines {
  private readonly ends: string[];
  readonly shown: string;
  private readonly common: string;

  constructor(readonly text: string) {
    this.ends = text.match(/\r\n|\r|\n/g) ?? [];
    this.shown = text.replace(/\r\n?/g, "\n");
    const count = (end: string) => this.ends.filter((one) => one === end).length;
    this.common = ["\n", "\r\n", "\r"].sort((a, b) => count(b) - count(a))[0]!;
  }

  /** A changed text with the line ends of the lines that weren't changed. */
  restored(changed: string): string {
    if (changed === this.shown) return this.text;
    const before = this.shown.split("\n");
    const after = changed.split("\n");
    let head = 0;
    while (head < before.length - 1 && head < after.length - 1 && before[head] === after[head]) ++head;
    let tail = 0;
    while (tail < Math.min(before.length, after.length) - head - 1 && before.at(-1 - tail) === after.at(-1 - tail))
      ++tail;
    return after
      .map((line, i) => {
        if (i === after.length - 1) return line;
        const fromEnd = after.length - 1 - i;
        const end = i < head ? this.ends[i] : fromEnd <= tail ? this.ends[this.ends.length - fromEnd] : this.common;
        return line + (end ?? this.common);
      })
      .join("");
  }
}

function extensions(changed: () => void): Extension[] {
  return [
    lineNumbers(),
    history(),
    search({ top: true }),
    bracketMatching(),
    htmlLanguage({ selfClosingTags: true }),
    syntaxHighlighting(colors),
    syntaxHighlighting(defaultHighlightStyle, { fallback: true }),
    keymap.of([...searchKeymap, ...historyKeymap, ...defaultKeymap, indentWithTab]),
    EditorView.lineWrapping,
    EditorView.cspNonce.of(nonce()),
    EditorView.contentAttributes.of({ "aria-label": t(L.source) }),
    EditorView.updateListener.of((update) => {
      if (update.docChanged) changed();
    }),
    looks,
  ];
}

interface Code {
  readonly text: string;
  readonly version: unknown;
}

interface CodeOptions {
  title: string;
  note?: string;
  text: string;
  main: string;
  changed?: (code: Code) => void;
  /** Keeps the dialog open when it gives false. */
  run?: (code: Code) => Promise<boolean>;
  nextStep?: NonNullable<DialogOptions["nextStep"]>;
}

/** Answers the text, or null when it wasn't taken. */
async function codeDialog({ title, note, text, main, changed, run, nextStep }: CodeOptions): Promise<string | null> {
  const place = createRef<HTMLElement>();
  const lines = new Lines(text);
  const holder: { view?: EditorView } = {};
  const code: Code = {
    get text() {
      return holder.view ? lines.restored(holder.view.state.doc.toString()) : text;
    },
    get version() {
      return holder.view?.state.doc;
    },
  };
  const ended = dialog({
    title,
    wide: true,
    ...(nextStep ? { nextStep } : {}),
    body: () =>
      html`${note ? html`<p class="notice">${icon("info")}<span>${note}</span></p>` : ""}<div class="source-editor" ${ref(place)}></div>`,
    actions: () => [
      { name: "cancel", label: t(L.cancel) },
      { name: "take", label: main, kind: "primary", run: () => run?.(code) ?? true },
    ],
  });
  await new Promise((resolve) => requestAnimationFrame(resolve));
  const state = EditorState.create({ doc: lines.shown, extensions: extensions(() => changed?.(code)) });
  holder.view = new EditorView({ state, parent: place.value! });
  holder.view.focus();
  changed?.(code);
  const answer = (await ended) === "take" ? code.text : null;
  holder.view.destroy();
  return answer;
}

/** A part that can't be edited as it looks. */
export const islandDialog = (raw: string) =>
  codeDialog({ title: t(L.partAsSource), text: raw, main: t(L.takeOverText) });

/** The text of a body that is open on the page. */
export const textDialog = (text: string) => codeDialog({ title: t(L.source), text, main: t(L.takeOverText) });

/** A body whose text can't be edited on the page. */
export async function sourceDialog(frame: TvxPageFrame, session: BodySession, text: string, note = ""): Promise<void> {
  let started = false;
  const code: { now?: Code } = {};
  const changed = (now: Code) => {
    if (started) return session.changed();
    started = true;
    code.now = now;
    session.edit(
      {
        get version() {
          return now.version;
        },
        get draft() {
          return now.text;
        },
        get text() {
          return now.text;
        },
      },
      text !== session.source,
    );
  };
  const run = async () => {
    if (await session.save()) return true;
    const trouble = session.trouble.value;
    if (trouble?.kind === "refused") throw trouble.problem;
    if (trouble?.kind !== "changed") throw new Error(trouble?.text ?? t(L.textIsKeptHere));
    const { compareDialog } = await import("./conflict-dialog");
    const answer = await compareDialog(
      t(L.yours),
      code.now!.text,
      t(L.theirs),
      trouble.theirs,
      t(L.saveYours),
      t(L.takeTheOther),
    );
    if (answer === "one") return session.keepMine(trouble.theirs);
    if (answer === "other") await session.takeTheirs(trouble.theirs);
    return answer === "other";
  };
  const title = t(L.bodyAsSource, { number: session.bodyId });
  const nextStep: DialogOptions["nextStep"] = (problem, own) => nextMoveIn(own, problem, doingOn(frame));
  await codeDialog({ title, note, text, main: t(L.save), changed, run, nextStep });
  session.keepNow();
  session.close();
  frame.reload();
}
