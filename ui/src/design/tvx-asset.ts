/** A template or stylesheet: its text, what is wrong with its tags, the pages that it gives their look, and one of them. */

import { html, nothing, type TemplateResult } from "lit";
import { customElement, property, state } from "lit/decorators.js";
import { live } from "lit/directives/live.js";
import { icon } from "../kit/icon";
import { L, type Label, plural, t } from "../labels";
import { titleOr } from "../pages/words";
import { textField } from "../records/fields";
import { mayChange } from "../records/lock";
import { changedParts, withOwn } from "../records/model/own-parts";
import { RecordElement, type RecordWords } from "../records/record";
import type { TvxCodeField } from "./code-field";
import "./code-field";
import { ASSETS, type Asset, type AssetKind, type AssetTexts, assetOf, removeAsset, saveAsset } from "./data";
import type { Side } from "./model/tag-choices";
import { type Finding, findingsIn } from "./model/template-tags";
import { pagesOf, removalDialog, useList } from "./uses";
import "./design.css";

const FINDINGS: Readonly<Record<Finding["kind"], Label>> = {
  notClosed: L.blockNotClosed,
  notOpened: L.blockNotOpened,
  openedTwice: L.blockOpenedTwice,
  noEnd: L.tagNotEnded,
  bodyMissing: L.bodyLeftOut,
};

/** Stylesheets go to visitors as they are. */
const SIDES: Readonly<Record<AssetKind["kind"], Side | undefined>> = {
  template: "content",
  baseTemplate: "base",
  stylesheet: undefined,
};

const TEXTS = ["name", "description", "filename", "source", "isSystem"] as const;
const said = (label: Label, places: Record<string, string | number>): string =>
  (t as (label: Label, places: Record<string, string | number>) => string)(label, places);

@customElement("tvx-asset")
export class TvxAsset extends RecordElement<Asset> {
  @property({ attribute: false }) assets: AssetKind = ASSETS[0]!;
  @state() private texts: AssetTexts | undefined;
  @state() private shownPage = 0;
  /** Counts savings: the page beside it is drawn anew. */
  @state() private drawn = 0;
  @state() private mayRemove = false;

  protected get item(): string {
    return this.assets.item;
  }

  protected get address(): string {
    return this.assets.address;
  }

  protected get words(): RecordWords {
    return { icon: this.assets.icon, isGone: L.recordIsGone, isOthers: L.designChanged };
  }

  protected async read(id: number): Promise<Asset> {
    const [asset, mayRemove] = await Promise.all([assetOf(this.assets, id), mayChange(this.assets.entry)]);
    this.mayRemove = mayRemove;
    return asset;
  }

  protected take({ name, description, filename, source, isSystem }: Asset, keepMine: boolean): void {
    const { record: was, texts: mine } = this;
    const now = { name, description, filename, source, isSystem };
    this.texts = keepMine && was && mine ? withOwn(TEXTS, now, mine, was) : now;
  }

  protected get differs(): boolean {
    const { texts, record } = this;
    return !!texts && !!record && changedParts(TEXTS, texts, record).length > 0;
  }

  protected async store(asset: Asset): Promise<string> {
    const { texts } = this;
    if (!texts) return "";
    await saveAsset(this.assets, asset, texts);
    ++this.drawn;
    return t(L.recordSaved, { name: texts.name.trim() });
  }

  /** Another name or description is seen by authors alone. */
  private get isLookKept(): boolean {
    const { texts, record } = this;
    return this.differs && texts?.source === record?.source && texts?.filename === record?.filename;
  }

  protected override get saveWord(): string {
    const count = this.isLookKept ? 0 : (this.record?.livePages ?? 0);
    return count > 0 ? plural(count, L.saveChangesOne, L.saveChangesMany) : t(L.save);
  }

  protected heading({ name, id }: Asset): string {
    return name || `[${id}]`;
  }

  protected buttons(asset: Asset): TemplateResult {
    if (!this.mayRemove) return html``;
    return html`<button class="button" @click=${() => this.removeIt(asset)}>${icon("trash-2")}${t(L.delete)}</button>`;
  }

  private async removeIt({ id, name, uses, filename }: Asset): Promise<void> {
    const says = t(L.removeAssetWhat, { name, file: filename });
    if (await removalDialog(name, uses, says, () => removeAsset(this.assets, id)))
      this.removed(t(L.removedNamed, { name }));
  }

  private set(part: Partial<AssetTexts>): void {
    if (this.texts) this.texts = { ...this.texts, ...part };
  }

  protected sheet(asset: Asset): TemplateResult {
    const texts = this.texts ?? asset;
    return html`${this.form(texts)}${this.findings(texts.source)}
      <tvx-code-field class="card" .text=${texts.source} .language=${this.assets.kind === "stylesheet" ? "css" : "html"} .side=${SIDES[this.assets.kind]} .fixed=${this.isFixed}
        @tvx-text=${(event: CustomEvent<string>) => this.set({ source: event.detail })}></tvx-code-field>
      ${this.pages(asset)}`;
  }

  private form(texts: AssetTexts): TemplateResult {
    const fixed = this.isFixed;
    return html`<div class="design-form">
      ${textField({ id: "asset-name", label: t(L.name), value: texts.name, longest: 50, fixed, change: (name) => this.set({ name }) })}
      ${textField({ id: "asset-file", label: t(L.filename), value: texts.filename, longest: 100, fixed, hint: t(L.fileHint), change: (filename) => this.set({ filename }) })}
      ${textField({ id: "asset-text", label: t(L.description), value: texts.description, longest: 500, fixed, change: (description) => this.set({ description }) })}
      ${
        this.assets.kind === "template"
          ? html`<div class="field"><label class="check"><input type="checkbox" .checked=${live(texts.isSystem)} ?disabled=${fixed} aria-describedby="asset-system-hint"
            @change=${(event: Event) => this.set({ isSystem: (event.target as HTMLInputElement).checked })} /><span>${t(L.isSystemTemplate)}</span></label>
            <p class="note" id="asset-system-hint">${t(L.isSystemHint)}</p></div>`
          : nothing
      }</div>`;
  }

  private findings(source: string): TemplateResult | typeof nothing {
    const found = this.assets.kind === "stylesheet" ? [] : findingsIn(source);
    if (found.length === 0) return nothing;
    return html`<div class="notice warn" role="status">${icon("triangle-alert")}<ul class="finding-list" role="list">${found
      .slice(0, 20)
      .map(
        ({ kind, name, line }) =>
          html`<li><button class="button small" @click=${() => this.querySelector<TvxCodeField>("tvx-code-field")?.goTo(line)}>${t(L.lineNumber, { number: line })}</button> ${said(FINDINGS[kind], { name })}</li>`,
      )}</ul></div>`;
  }

  private pages(asset: Asset): TemplateResult {
    const pages = pagesOf(asset.uses);
    const shown =
      pages.find(({ pageId }) => pageId === this.shownPage) ?? pages.find(({ isLive }) => isLive) ?? pages[0];
    return html`<h2>${t(L.whereUsed)}</h2>
      <p class="note">${asset.livePages ? plural(asset.livePages, L.livePagesOne, L.livePagesMany) : t(L.livePagesNone)}</p>
      ${useList(asset.uses)}
      ${
        shown
          ? html`<div class="field preview-choice"><label for="asset-page">${t(L.previewOf)}</label>
          <select id="asset-page" class="select" @change=${(event: Event) => (this.shownPage = Number((event.target as HTMLSelectElement).value))}>${pages.map(
            ({ pageId, title }) =>
              html`<option value=${pageId} .selected=${pageId === shown.pageId}>${titleOr(title)}</option>`,
          )}</select></div>
          <iframe class="card asset-preview" title=${t(L.pagePreview)} src="/torvex/view.asp?pageId=${shown.pageId}&mode=${shown.isLive ? "L" : "D"}&drawn=${this.drawn}"></iframe>`
          : nothing
      }`;
  }
}
