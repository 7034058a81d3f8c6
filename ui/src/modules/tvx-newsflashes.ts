/** The newsflashes of a website, what feeds them, and the two publishings that bring them to visitors. */

import { html, type TemplateResult } from "lit";
import { customElement } from "lit/decorators.js";
import { live } from "lit/directives/live.js";
import { icon } from "../kit/icon";
import { dialog } from "../kit/tvx-dialog";
import { toast } from "../kit/tvx-toast";
import { L, t } from "../labels";
import { failed } from "../pages/actions";
import { mayChangeIn } from "../shell/workplace";
import { BOARD, indented, publishBoard } from "./board-data";
import type { Group } from "./form";
import { itemOrders, pictureGroup } from "./item-fields";
import {
  drawnNewsflash,
  type Feed,
  NEWSFLASH,
  type Newsflash,
  type Newsflashes,
  type NewsflashValues,
  newNewsflash,
  newsflashesOf,
  publishNewsflashes,
  saveNewsflash,
  setFeeds,
  storedNewsflash,
  valuesOf,
} from "./newsflash-data";
import {
  editButton,
  emptyNote,
  markButton,
  moduleList,
  previewButton,
  previewDialog,
  recordState,
  wordButton,
} from "./parts";
import { ModuleScreen, type Place } from "./screen";
import { saveMark } from "./stored";
import { templateChoices } from "./templates";

const groupsOf =
  ({ templates }: Newsflashes) =>
  (): readonly Group<NewsflashValues>[] => [
    {
      fields: [
        { name: "title", label: t(L.title), kind: "text" },
        { name: "number", label: t(L.numberPart), kind: "number", least: 1, hint: t(L.newsflashNumberHint) },
        { name: "templateId", label: t(L.partTemplate), kind: "choice", choices: templateChoices(templates) },
      ],
    },
    {
      heading: t(L.boardItems),
      fields: [
        {
          name: "mode",
          label: t(L.newsflashShows),
          kind: "choice",
          choices: [
            ["M", t(L.newsflashMarked)],
            ["A", t(L.newsflashAll)],
          ],
        },
        { name: "itemOrder", label: t(L.mediaOrder), kind: "choice", choices: itemOrders() },
        { name: "numberOfItems", label: t(L.newsflashMost), kind: "number" },
        { name: "itemLength", label: t(L.newsflashLength), kind: "number", least: -1, hint: t(L.newsflashLengthHint) },
      ],
    },
    pictureGroup(),
  ];

const waits = ({ inDesign, isLive }: Feed): boolean => inDesign !== isLive;

@customElement("tvx-newsflashes")
export class TvxNewsflashes extends ModuleScreen<Newsflashes> {
  protected readonly entry = NEWSFLASH;

  protected read(place: Place): Promise<Newsflashes> {
    return newsflashesOf(place);
  }

  protected heading(): string {
    return t(L.newsflashes);
  }

  private async add(data: Newsflashes): Promise<void> {
    const { place } = this;
    await this.fill(
      {
        id: "newsflash",
        title: t(L.newNewsflash),
        values: newNewsflash(data),
        groups: groupsOf(data),
        save: (given, work) => saveNewsflash(place, 0, given, work),
      },
      ({ title }) => title,
    );
  }

  private async edit(data: Newsflashes, newsflash: Newsflash): Promise<void> {
    await this.fill(
      {
        id: "newsflash",
        title: newsflash.title,
        values: valuesOf(newsflash),
        groups: groupsOf(data),
        ...storedNewsflash(this.place, newsflash.nf_Id),
      },
      ({ title }) => title,
    );
  }

  private mark(newsflash: Newsflash): void {
    const stored = storedNewsflash(this.place, newsflash.nf_Id);
    void this.flipMark(newsflash.title, newsflash.deleted === 1, (marked) => saveMark(stored, marked));
  }

  private async preview(newsflash: Newsflash): Promise<void> {
    try {
      await previewDialog(newsflash.title, await drawnNewsflash(this.place, newsflash.id));
    } catch (error) {
      failed(error);
    }
  }

  /** Ticks, which are saved together. */
  private async feed(data: Newsflashes, { nf_Id: nfId, title }: Newsflash): Promise<void> {
    const before = new Set(data.feeds.filter((one) => one.nf_Id === nfId && one.inDesign).map((one) => one.msgB_Id));
    const wanted = new Set(before);
    const flip = (category: number): void => {
      if (!wanted.delete(category)) wanted.add(category);
    };
    const answer = await dialog({
      title: t(L.newsflashFeeds, { name: title }),
      body: () => html`<p class="note">${t(L.newsflashFeedsHint)}</p>
        <ul class="module-list" role="list">${data.categories.map(
          (
            category,
          ) => html`<li><label class="check"><input type="checkbox" .checked=${live(wanted.has(category.msgB_Id))} @change=${() => flip(category.msgB_Id)} />
            <span>${indented(category)}</span></label></li>`,
        )}</ul>`,
      actions: () => [
        { name: "cancel", label: t(L.cancel) },
        { name: "save", label: t(L.save), kind: "primary", run: () => setFeeds(this.place, nfId, before, wanted) },
      ],
    });
    if (answer !== "save") return;
    toast(t(L.recordSaved, { name: title }));
    await this.load();
  }

  private async publish({ newsflashes }: Newsflashes): Promise<void> {
    const { place } = this;
    const going = newsflashes.filter(({ deleted }) => deleted).map(({ title }) => title);
    await this.askAndPublish(going, () => publishNewsflashes(place));
  }

  protected override tools(data: Newsflashes): TemplateResult {
    if (!this.mayEdit) return html``;
    return html`<button type="button" class="button" @click=${() => this.publish(data)}>${icon("send")}${t(L.publishNewsflashes)}</button>
      <button type="button" class="button primary" @click=${() => this.add(data)}>${icon("plus")}${t(L.newNewsflash)}</button>`;
  }

  protected content(data: Newsflashes): TemplateResult {
    if (data.newsflashes.length === 0) return emptyNote("bell", t(L.newsflashesEmpty));
    return html`${this.boardNotice(data)}${moduleList(
      data.newsflashes,
      ({ nf_Id }) => nf_Id,
      (newsflash) => this.row(data, newsflash),
    )}`;
  }

  /** What feeds newsflashes goes live with the board. */
  private boardNotice({ feeds }: Newsflashes): TemplateResult {
    const { site, lang } = this.place;
    if (!feeds.some(waits)) return html`<p class="note">${t(L.newsflashFeedsHint)}</p>`;
    return html`<p class="notice">${icon("info")}<span class="grow">${t(L.newsflashFeedsWait)}</span>
      ${
        mayChangeIn(BOARD, site, lang)
          ? html`<button type="button" class="button small" @click=${() => this.act(() => publishBoard(this.place, ""), t(L.published))}>${t(L.publishTheBoard)}</button>`
          : ""
      }</p>`;
  }

  private row(data: Newsflashes, newsflash: Newsflash): TemplateResult {
    const { id, title: name, deleted } = newsflash;
    const fed = data.feeds
      .filter((one) => one.nf_Id === newsflash.nf_Id && one.inDesign)
      .map((one) => one.msgB_catTitle)
      .join(", ");
    return html`<li class="card module-row">
      <div class="module-name"><strong>${name}</strong><p class="note">${t(L.numberPart)} ${id} · ${fed ? t(L.newsflashFedBy, { names: fed }) : t(L.newsflashFedByNone)}</p></div>
      ${recordState(newsflash)}
      <div class="module-buttons">${previewButton(name, () => this.preview(newsflash))}${
        this.mayEdit
          ? html`${editButton(name, () => this.edit(data, newsflash))}
            ${data.categories.length ? wordButton("list-tree", t(L.newsflashCategories), t(L.categoriesOfNamed, { name }), () => this.feed(data, newsflash)) : ""}
            ${markButton(name, deleted, () => this.mark(newsflash))}`
          : ""
      }</div></li>`;
  }
}
