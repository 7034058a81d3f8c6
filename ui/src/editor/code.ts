/** What editors for code share: looks, keys, and line ends that stay as they are. */
import { defaultKeymap, history, historyKeymap, indentWithTab } from "@codemirror/commands";
import { bracketMatching, defaultHighlightStyle, HighlightStyle, syntaxHighlighting } from "@codemirror/language";
import { search, searchKeymap } from "@codemirror/search";
import type { Extension } from "@codemirror/state";
import { EditorView, keymap, lineNumbers } from "@codemirror/view";
import { tags } from "@lezer/highlight";
import { L, t } from "../labels";

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

/** `language` says how the text is coloured; `changed` is told of each change. */
export function codeExtensions(language: Extension, changed: () => void): Extension[] {
  return [
    lineNumbers(),
    history(),
    search({ top: true }),
    bracketMatching(),
    language,
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
