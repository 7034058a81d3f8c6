// Text as it is stored, in an editor for code.
import { html as htmlLanguage } from "@codemirror/lang-html";
import { EditorState } from "@codemirror/state";
import { EditorView } from "@codemirror/view";
import { html } from "lit";
import { createRef, ref } from "lit/directives/ref.js";
import { type DialogOptions, dialog, icon } from "../kit";
import { L, t } from "../labels";
import { nextMoveIn } from "../pages/actions";
import { doingOn } from "./body-menu";
import { codeExtensions, Lines } from "./code";
import type { BodySession } from "./session";
import type { TvxPageFrame } from "./tvx-page-frame";

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
  const state = EditorState.create({
    doc: lines.shown,
    extensions: codeExtensions(htmlLanguage({ selfClosingTags: true }), () => changed?.(code)),
  });
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
