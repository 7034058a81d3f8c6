/** Which part of a website a role's rights reach, chosen in its tree. */

import { html, nothing, type TemplateResult } from "lit";
import { customElement, property, state } from "lit/decorators.js";
import { icon } from "../kit/icon";
import { dialog } from "../kit/tvx-dialog";
import "../kit/tvx-tree";
import type { TreeRow } from "../kit/tvx-tree";
import { L, t } from "../labels";
import { BranchTree } from "../pages/branch-tree";
import type { Child } from "../pages/children";
import { titleOr } from "../pages/words";
import { goneOf } from "./data";
import { chosenAbove, flippedNode } from "./model/grants";
import "../pages/page-picker.css";
import "./rights.css";

/** A website's tree with boxes. Tells "tvx-choose" (the nodes). */
@customElement("tvx-scope-tree")
export class TvxScopeTree extends BranchTree {
  @property({ attribute: false }) scope: readonly string[] = [];
  @property({ type: Boolean }) fixed = false;
  @state() private gone: readonly string[] = [];

  protected get shownAtFirst(): readonly string[] {
    return this.scope;
  }

  protected override async begin(): Promise<void> {
    await super.begin();
    try {
      this.gone = await goneOf(this.scope);
    } catch (error) {
      this.fault = error instanceof Error ? error.message : String(error);
    }
  }

  private flip(node: string): void {
    if (this.fixed || chosenAbove(this.scope, node)) return;
    this.tell("tvx-choose", flippedNode(this.scope, node));
  }

  protected content(child: Child): TemplateResult {
    const isChosen = this.scope.includes(child.nodeId);
    const isBelow = chosenAbove(this.scope, child.nodeId) !== "";
    const mark = isChosen
      ? icon("square-check", t(L.scopeChosen))
      : isBelow
        ? icon("check", t(L.scopeBelow))
        : icon("square-dashed");
    return html`<span class="scope-mark ${isChosen || isBelow ? "is" : ""}">${mark}</span><span class="cut">${titleOr(child.title)}</span>`;
  }

  protected override render(): TemplateResult {
    const rows = this.rows();
    return html`${this.fault ? html`<p class="notice danger" role="alert">${icon("circle-alert")}<span>${this.fault}</span></p>` : nothing}
      ${this.gone.map((node) => this.lost(node))}
      ${rows.length ? this.tree(rows) : this.fault ? nothing : html`<p class="soft" aria-busy="true">${t(L.loadingTree)}</p>`}`;
  }

  private tree(rows: TreeRow[]): TemplateResult {
    return html`<div class="picker-box"><tvx-tree .rows=${rows} .selected=${new Set(this.scope)} .label=${t(L.scopeTree)}
      @tvx-toggle=${(event: CustomEvent<string>) => this.toggle(event.detail)}
      @tvx-open=${(event: CustomEvent<string>) => this.flip(event.detail)}
      @tvx-select=${(event: CustomEvent<string>) => this.flip(event.detail)}></tvx-tree></div>`;
  }

  private lost(node: string): TemplateResult {
    const remove = (): void => {
      this.gone = this.gone.filter((each) => each !== node);
      this.tell(
        "tvx-choose",
        this.scope.filter((each) => each !== node),
      );
    };
    return html`<p class="notice warn">${icon("triangle-alert")}<span class="grow">${t(L.scopePageGone, { node })}</span>
      ${this.fixed ? nothing : html`<button class="button small" @click=${remove}>${t(L.delete)}</button>`}</p>`;
  }
}

/** The chosen nodes, none for the whole website; undefined when nothing is to change. */
export async function scopeDialog(
  title: string,
  site: string,
  lang: string,
  scope: readonly string[],
  fixed: boolean,
): Promise<readonly string[] | undefined> {
  let chosen = scope;
  const answer = await dialog({
    title,
    body: (box) => {
      const choose = (nodes: readonly string[]): void => {
        chosen = nodes;
        box.requestUpdate();
      };
      return html`<p class="note">${t(L.scopeHint)}</p>
      <p class="scope-says" role="status">${chosen.length ? t(L.scopeSome) : t(L.scopeWhole)}
        ${chosen.length && !fixed ? html`<button class="button small" @click=${() => choose([])}>${t(L.scopeWholeAgain)}</button>` : nothing}</p>
      <tvx-scope-tree .site=${site} .language=${lang} .scope=${chosen} ?fixed=${fixed} @tvx-choose=${(event: CustomEvent<string[]>) => choose(event.detail)}></tvx-scope-tree>`;
    },
    ...(fixed
      ? {}
      : {
          actions: () => [
            { name: "cancel", label: t(L.cancel) },
            { name: "go", label: t(L.scopeTake), kind: "primary" as const },
          ],
        }),
  });
  return answer === "go" ? chosen : undefined;
}
