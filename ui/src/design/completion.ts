/** Tags of templates are offered where they are typed: a name, what it stands for, and what is written for it. */

import {
  autocompletion,
  type Completion,
  type CompletionContext,
  type CompletionResult,
  pickedCompletion,
} from "@codemirror/autocomplete";
import { EditorState, type Extension } from "@codemirror/state";
import { EditorView } from "@codemirror/view";
import { L, t } from "../labels";
import { choicesAt, type Side, type TagChoice, type TypedTag, typedAt } from "./model/tag-choices";

/** Titles of newsflashes by their numbers. */
export type Newsflashes = ReadonlyMap<number, string>;

const looks = EditorView.theme({
  ".cm-tooltip.cm-tooltip-autocomplete": {
    border: "1px solid var(--line)",
    borderRadius: "var(--radius)",
    backgroundColor: "var(--card)",
    color: "var(--ink)",
    overflow: "hidden",
  },
  ".cm-tooltip.cm-tooltip-autocomplete > ul": {
    maxWidth: "min(560px, 92vw)",
    minWidth: "0",
    maxHeight: "min(18em, 45vh)",
    fontFamily: "var(--code)",
  },
  ".cm-tooltip.cm-tooltip-autocomplete > ul > li": { padding: "4px 8px", whiteSpace: "normal", lineHeight: "1.4" },
  ".cm-tooltip-autocomplete ul li[aria-selected]": { backgroundColor: "var(--info-quiet)", color: "var(--ink)" },
  ".cm-completionDetail": {
    display: "block",
    margin: "0",
    font: "var(--note)",
    fontStyle: "normal",
    color: "var(--soft)",
  },
  "li[aria-selected] .cm-completionDetail": { color: "var(--ink)" },
});

function helpOf({ of, number }: TagChoice, newsflashes: Newsflashes): string {
  const title = of?.name === "torvex_newsflash" && number ? newsflashes.get(number) : "";
  return title || (of ? t(of.help) : "");
}

function write(view: EditorView, { from, to }: TypedTag, { first, last }: TagChoice, completion: Completion): void {
  view.dispatch({
    changes: { from, to, insert: first + last },
    selection: { anchor: from + first.length },
    scrollIntoView: true,
    userEvent: "input.complete",
    annotations: pickedCompletion.of(completion),
  });
}

/** What is seen can be chosen at once: no line ends in what opens the list. */
const common = { icons: false, interactionDelay: 0 };

/** Properties and values of stylesheets, as the language knows them. */
export const styleCompletion = (): Extension => [autocompletion(common), looks];

export function tagCompletion(side: Side, newsflashes: () => Newsflashes): Extension {
  const source = ({ state, pos, explicit }: CompletionContext): CompletionResult | null => {
    const text = state.doc.toString();
    const typed = typedAt(text, pos, explicit);
    if (!typed) return null;
    const known = newsflashes();
    const choices = choicesAt(text, typed, side, [...known.keys()]);
    return {
      from: typed.nameFrom,
      // What is typed behind a plain "<" is looked at anew with each letter.
      filter: typed.isOpened,
      options: choices.map((choice, at) => ({
        label: choice.label,
        ...(choice.shown ? { displayLabel: choice.shown } : {}),
        detail: helpOf(choice, known),
        sortText: String(at).padStart(4, "0"),
        apply: (view: EditorView, completion: Completion) => {
          const now = typedAt(view.state.doc.toString(), view.state.selection.main.head, true);
          if (now) write(view, now, choice, completion);
        },
      })),
    };
  };
  return [
    autocompletion({ ...common, override: [source] }),
    EditorState.phrases.of({ Completions: t(L.tagsOfTemplates) }),
    looks,
  ];
}
