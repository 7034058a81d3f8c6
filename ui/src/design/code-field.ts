/** A text of a design file in an editor for code. */

import { css } from "@codemirror/lang-css";
import { html as htmlLanguage } from "@codemirror/lang-html";
import { Compartment, EditorState, type Extension } from "@codemirror/state";
import { Decoration, EditorView, MatchDecorator, ViewPlugin } from "@codemirror/view";
import { html } from "lit";
import { customElement, property } from "lit/decorators.js";
import { codeExtensions, Lines } from "../editor/code";
import { TvxElement } from "../kit/element";
import { newsflashTitles } from "./data";
import type { Side } from "./model/tag-choices";
import { TAG } from "./model/template-tags";

const tagMark = new MatchDecorator({ regexp: TAG, decoration: Decoration.mark({ class: "template-tag" }) });

/** Tags are comments to HTML: they are drawn as what they are. */
const templateTags = ViewPlugin.define(
  (view) => ({
    decorations: tagMark.createDeco(view),
    update(update) {
      this.decorations = tagMark.updateDeco(update, this.decorations);
    },
  }),
  { decorations: (plugin) => plugin.decorations },
);

const languageOf = (language: string): Extension =>
  language === "css" ? css() : [htmlLanguage({ selfClosingTags: true }), templateTags];

/** Tells "tvx-text" (the text, with the line ends that it came with) as it is changed. */
@customElement("tvx-code-field")
export class TvxCodeField extends TvxElement {
  /** What is edited; another one begins anew. */
  @property({ attribute: false }) text = "";
  @property() language: "html" | "css" = "html";
  @property({ type: Boolean }) fixed = false;
  /** The kind of template whose tags are offered; a stylesheet is of none. */
  @property({ attribute: false }) side: Side | undefined;
  private view: EditorView | undefined;
  private lines = new Lines("");
  private readonly writable = new Compartment();
  private readonly completion = new Compartment();

  protected override render() {
    return html`<div class="code-field"></div>`;
  }

  protected override firstUpdated(): void {
    this.lines = new Lines(this.text);
    const state = EditorState.create({
      doc: this.lines.shown,
      extensions: [
        codeExtensions(languageOf(this.language), () => this.tell("tvx-text", this.now)),
        // What can be scrolled has to be reached by keys, read-only too.
        EditorView.contentAttributes.of({ tabindex: "0" }),
        this.writable.of(EditorState.readOnly.of(this.fixed)),
        this.completion.of([]),
      ],
    });
    this.view = new EditorView({ state, parent: this.querySelector(".code-field")! });
    void this.offerWords(this.view);
  }

  /** What is offered comes after the text, which can be typed without it. */
  private async offerWords(view: EditorView): Promise<void> {
    const { styleCompletion, tagCompletion } = await import("./completion");
    if (view !== this.view) return;
    const offered = this.side ? tagCompletion(this.side, newsflashTitles()) : styleCompletion();
    view.dispatch({ effects: this.completion.reconfigure(offered) });
  }

  private get now(): string {
    return this.view ? this.lines.restored(this.view.state.doc.toString()) : this.text;
  }

  protected override updated(): void {
    const { view } = this;
    if (!view) return;
    if (view.state.readOnly !== this.fixed)
      view.dispatch({ effects: this.writable.reconfigure(EditorState.readOnly.of(this.fixed)) });
    if (this.text === this.now) return;
    this.lines = new Lines(this.text);
    view.dispatch({ changes: { from: 0, to: view.state.doc.length, insert: this.lines.shown } });
  }

  /** Puts the cursor at a line, from 1. */
  goTo(line: number): void {
    const { view } = this;
    if (!view) return;
    const { from } = view.state.doc.line(Math.min(line, view.state.doc.lines));
    view.dispatch({ selection: { anchor: from }, effects: EditorView.scrollIntoView(from, { y: "center" }) });
    view.focus();
  }

  override disconnectedCallback(): void {
    super.disconnectedCallback();
    this.view?.destroy();
    this.view = undefined;
  }
}
