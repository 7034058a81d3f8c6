/** The meta data of a site: a sheet of pages by tags, edited in place, and the tags themselves. */

import { html, nothing, type PropertyValues, type TemplateResult } from "lit";
import { customElement, property, state } from "lit/decorators.js";
import { live } from "lit/directives/live.js";
import { TvxElement, Watch } from "../kit/element";
import { faultNotice, faultText } from "../kit/fault-notice";
import { icon } from "../kit/icon";
import { dialog } from "../kit/tvx-dialog";
import { toast } from "../kit/tvx-toast";
import "../kit/tvx-tabs";
import { L, t } from "../labels";
import { failed } from "../pages/actions";
import { titleOr } from "../pages/words";
import { addDialog } from "../records/add-dialog";
import { textField } from "../records/fields";
import { pageAddress, setQuery } from "../shell/address";
import { mayChangeIn, pagesChanged, workplace } from "../shell/workplace";
import {
  addTag,
  describeTag,
  linesOf,
  META,
  type MetaTag,
  type MetaTags,
  OthersCell,
  PAGES,
  removeTag,
  saveCell,
  tagsOf,
} from "./meta-data";
import { aboveOf, cellOf, type MetaCell, type MetaPage, pagesFrom, withCell } from "./model/meta-sheet";
import "../pages/lists.css";
import "../rights/rights.css";
import "./design.css";

const TABS = ["pages", "tags"] as const;

/** A value as it was typed, and what keeps it from being saved. */
interface Unsaved {
  readonly value: string;
  readonly inherited: boolean;
  readonly fault: string;
}

@customElement("tvx-metadata")
export class TvxMetadata extends TvxElement {
  @property({ attribute: false }) params = new URLSearchParams();
  @state() private tags: MetaTags | undefined;
  @state() private pages: readonly MetaPage[] = [];
  @state() private hasMore = false;
  @state() private unsaved: ReadonlyMap<string, Unsaved> = new Map();
  @state() private fault: unknown;
  private loaded = "";
  private readonly workplace = new Watch(this, workplace);

  private get order(): number {
    return Number(this.params.get("first") ?? 0);
  }

  /** Another website, or another order: everything anew. */
  protected override willUpdate(changed: PropertyValues<this>): void {
    super.willUpdate(changed);
    const { site, lang } = this.workplace.value;
    const wanted = `${site}.${lang} ${this.order}`;
    if (!site || wanted === this.loaded) return;
    this.loaded = wanted;
    void this.load();
  }

  private readonly load = async (): Promise<void> => {
    const { site, lang } = workplace.value;
    const wanted = this.loaded;
    try {
      const [tags, lines] = await Promise.all([tagsOf(site), linesOf(site, lang, this.order, 0)]);
      if (wanted !== this.loaded) return;
      this.tags = tags;
      this.pages = pagesFrom(lines);
      this.hasMore = this.pages.length === PAGES;
      this.unsaved = new Map();
      this.fault = undefined;
    } catch (error) {
      this.fault = error;
    }
  };

  private async more(): Promise<void> {
    const { site, lang } = workplace.value;
    try {
      const more = pagesFrom(await linesOf(site, lang, this.order, this.pages.length));
      const known = new Set(this.pages.map(({ pageId }) => pageId));
      this.pages = [...this.pages, ...more.filter(({ pageId }) => !known.has(pageId))];
      this.hasMore = more.length === PAGES;
    } catch (error) {
      failed(error);
    }
  }

  private get mayTags(): boolean {
    return mayChangeIn(META, this.workplace.value.site, "");
  }

  private get shown(): (typeof TABS)[number] {
    return TABS.find((tab) => tab === this.params.get("tab")) ?? "pages";
  }

  protected override render(): TemplateResult {
    const tabs = [
      { id: "pages", label: t(L.pages) },
      { id: "tags", label: t(L.tags) },
    ];
    return html`<section class="list-screen" aria-busy=${this.tags || this.fault ? nothing : "true"}>
      <header class="list-head"><h1 class="grow">${t(L.metaTags)}</h1>
        ${this.shown === "tags" && this.mayTags ? html`<button class="button primary" @click=${this.add}>${icon("plus")}${t(L.newTag)}</button>` : nothing}</header>
      <tvx-tabs name="meta" panel="meta-panel" .label=${t(L.metaTags)} .tabs=${tabs} .chosen=${this.shown}
        @tvx-choose=${(event: CustomEvent<string>) => setQuery({ tab: event.detail })}></tvx-tabs>
      ${faultNotice(this.fault, this.load)}
      <div id="meta-panel" role="tabpanel" aria-labelledby="meta-tab-${this.shown}" class="meta-panel">${this.tags ? (this.shown === "tags" ? this.tagList(this.tags) : this.sheet(this.tags)) : nothing}</div>
    </section>`;
  }

  // ---- The sheet ----

  private sheet({ tags }: MetaTags): TemplateResult {
    if (tags.length === 0) return this.nothingYet(t(L.tagsEmpty));
    if (this.pages.length === 0) return this.nothingYet(t(L.noPagesHere));
    return html`<p class="list-note soft">${t(L.metaHint)}</p>
      <div class="field preview-choice"><label for="meta-order">${t(L.metaOrder)}</label>
        <select id="meta-order" class="select" @change=${(event: Event) => setQuery({ first: (event.target as HTMLSelectElement).value })}>
          <option value="" .selected=${this.order === 0}>${t(L.metaByPlace)}</option>${tags.map(
            ({ id, name }) =>
              html`<option value=${id} .selected=${id === this.order}>${t(L.metaWithoutFirst, { tag: name })}</option>`,
          )}</select></div>
      <div class="matrix-scroll card" tabindex="0" role="group" aria-label=${t(L.metaTags)}><table class="matrix meta-sheet">
        <thead><tr><th scope="col">${t(L.page)}</th>${tags.map(({ name }) => html`<th scope="col">${name}</th>`)}</tr></thead>
        <tbody>${this.pages.map(
          (page) =>
            html`<tr><th scope="row"><a href=${pageAddress(page.pageId)}>${titleOr(page.title)}</a> <span class="note">${page.nodeId}</span></th>${tags.map((tag) => this.cell(page, tag))}</tr>`,
        )}</tbody></table></div>
      ${this.hasMore ? html`<div><button class="button" @click=${this.more}>${t(L.morePages)}</button></div>` : nothing}`;
  }

  private nothingYet(says: string): TemplateResult {
    return html`<div class="empty">${icon("info")}<p>${says}</p></div>`;
  }

  private cell(page: MetaPage, tag: MetaTag): TemplateResult {
    const key = `${page.pageId}.${tag.id}`;
    const unsaved = this.unsaved.get(key);
    const { value, inherited } = unsaved ?? cellOf(page, tag.id);
    const above = aboveOf(this.pages, page, tag.id);
    const names = { tag: tag.name, page: titleOr(page.title) };
    const keep = (wanted: { value: string; inherited: boolean }) => this.keep(page, tag, wanted);
    return html`<td data-label=${tag.name}><div class="meta-cell">
        <textarea class="area" rows="2" maxlength="1000" aria-label=${t(L.metaCell, names)} aria-invalid=${unsaved ? "true" : nothing} aria-describedby=${unsaved ? `fault-${key}` : nothing}
          placeholder=${inherited ? above || t(L.fromAbove) : ""} .value=${live(value)}
          @change=${(event: Event) => keep({ value: (event.target as HTMLTextAreaElement).value.trim(), inherited: false })}></textarea>
        ${
          page.nodeId.length > 5
            ? html`<button class="button quiet icon-only" aria-pressed=${String(inherited)} aria-label=${t(L.metaInherit, names)} title=${t(L.metaInherit, names)}
          @click=${() => keep({ value: "", inherited: !inherited })}>${icon("arrow-up")}</button>`
            : nothing
        }</div>
      ${
        unsaved
          ? html`<div role="alert" class="meta-fault"><p class="note wrong" id="fault-${key}">${unsaved.fault}</p>
          <button class="button small" @click=${() => this.forget(key)}>${t(L.loadTheirs)}</button><button class="button small" @click=${() => keep(unsaved)}>${t(L.goOnWithMine)}</button></div>`
          : nothing
      }</td>`;
  }

  private forget(key: string): void {
    const unsaved = new Map(this.unsaved);
    unsaved.delete(key);
    this.unsaved = unsaved;
  }

  private put(pageId: number, tag: number, cell: Pick<MetaCell, "value" | "inherited">): void {
    this.pages = withCell(this.pages, pageId, tag, { ...cell, above: "" });
  }

  /** Saved as it is left; what was typed stays where it couldn't be. */
  private async keep(page: MetaPage, tag: MetaTag, wanted: { value: string; inherited: boolean }): Promise<void> {
    const key = `${page.pageId}.${tag.id}`;
    const known = this.pages.find(({ pageId }) => pageId === page.pageId) ?? page;
    const was = cellOf(known, tag.id);
    if (wanted.value === was.value && wanted.inherited === was.inherited) {
      this.forget(key);
      return;
    }
    try {
      await saveCell(page, tag.id, was, wanted);
      this.put(page.pageId, tag.id, wanted);
      this.forget(key);
      toast(t(L.metaSaved, { tag: tag.name, page: titleOr(page.title) }));
      pagesChanged({ pageIds: [page.pageId] });
    } catch (error) {
      if (error instanceof OthersCell) this.put(page.pageId, tag.id, error.theirs);
      const { value, inherited } = wanted;
      this.unsaved = new Map(this.unsaved).set(key, { value, inherited, fault: faultText(error) });
    }
  }

  // ---- Tags ----

  private tagList({ tags }: MetaTags): TemplateResult {
    if (tags.length === 0) return this.nothingYet(t(L.tagsEmpty));
    return html`<div class="matrix-scroll card" tabindex="0" role="group" aria-label=${t(L.tags)}><table class="matrix">
      <thead><tr><th scope="col">${t(L.name)}</th><th scope="col">${t(L.description)}</th>${this.mayTags ? html`<td></td>` : nothing}</tr></thead>
      <tbody>${tags.map((tag) => this.tagRow(tag))}</tbody></table></div>`;
  }

  private tagRow(tag: MetaTag): TemplateResult {
    const change = t(L.changeNamed, { name: tag.name });
    const end = t(L.removeNamed, { name: tag.name });
    return html`<tr><th scope="row">${tag.name}</th><td data-label=${t(L.description)}>${tag.description}</td>${
      this.mayTags
        ? html`<td><span class="tag-tools"><button class="button quiet icon-only" aria-label=${change} title=${change} @click=${() => this.change(tag)}>${icon("pencil")}</button>
          <button class="button quiet icon-only" aria-label=${end} title=${end} @click=${() => this.end(tag)}>${icon("trash-2")}</button></span></td>`
        : nothing
    }</tr>`;
  }

  private async add(): Promise<void> {
    const { site } = workplace.value;
    let name = "";
    let description = "";
    const fields = (): TemplateResult =>
      html`${textField({ id: "tag-name", label: t(L.name), value: name, longest: 50, change: (text) => (name = text) })}
        ${textField({ id: "tag-text", label: t(L.description), value: description, longest: 250, change: (text) => (description = text) })}`;
    const made = await addDialog(t(L.newTag), fields, async () => {
      await addTag(site, name, description);
      return name.trim();
    });
    if (!made) return;
    toast(t(L.recordAdded, { name: made }));
    await this.load();
  }

  /** Its name is what pages and searches know it by, and stays. */
  private async change({ name, description }: MetaTag): Promise<void> {
    const { tags } = this;
    const { site } = workplace.value;
    if (!tags) return;
    let text = description;
    const answer = await dialog({
      title: t(L.changeNamed, { name }),
      body: () =>
        textField({
          id: "tag-text",
          label: t(L.description),
          value: text,
          longest: 250,
          change: (typed) => (text = typed),
        }),
      actions: () => [
        { name: "cancel", label: t(L.cancel) },
        { name: "go", label: t(L.save), kind: "primary", run: () => describeTag(site, tags, name, text) },
      ],
    });
    if (answer === "go") toast(t(L.recordSaved, { name }));
    await this.load();
  }

  private async end({ id, name }: MetaTag): Promise<void> {
    const { site } = workplace.value;
    const answer = await dialog({
      title: `${t(L.removeNamed, { name })}?`,
      body: () => html`<p>${t(L.removeTagWhat, { name })}</p>`,
      actions: () => [
        { name: "cancel", label: t(L.cancel) },
        { name: "go", label: t(L.removeForGood), kind: "danger", run: () => removeTag(site, id) },
      ],
    });
    if (answer !== "go") return;
    toast(t(L.removedNamed, { name }));
    await this.load();
  }
}
