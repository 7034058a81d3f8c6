/** The message board: the tree of its categories, and the items of the one that is chosen. */

import { html, type TemplateResult } from "lit";
import { customElement } from "lit/decorators.js";
import { icon } from "../kit/icon";
import { L, t } from "../labels";
import { failed } from "../pages/actions";
import { dayText } from "../pages/words";
import { go } from "../shell/address";
import {
  BOARD,
  type Category,
  type CategoryValues,
  categoriesOf,
  categoryValues,
  depthOf,
  type Item,
  itemsOf,
  itemValues,
  markRecord,
  newCategory,
  newItem,
  previewOf,
  publishBoard,
  saveCategory,
  saveItem,
  storedCategory,
  storedItem,
} from "./board-data";
import type { Group } from "./form";
import { itemOrders, pictureGroup } from "./item-fields";
import { itemGroups } from "./item-form";
import { hasMore } from "./model";
import {
  editButton,
  emptyNote,
  markButton,
  moduleList,
  moreButton,
  noteOf,
  previewButton,
  previewDialog,
  publishButton,
  recordState,
  wordButton,
} from "./parts";
import { ModuleScreen, type Place } from "./screen";

const ADDRESS = "/torvex/torvex_msgBoard/categories.asp";

const groups = (): readonly Group<CategoryValues>[] => [
  {
    fields: [
      { name: "title", label: t(L.title), kind: "text" },
      { name: "description", label: t(L.description), kind: "text", longest: 500 },
      { name: "online", label: t(L.switchedOn), kind: "check", hint: t(L.withNextPublishing) },
    ],
  },
  {
    heading: t(L.boardItems),
    fields: [
      { name: "itemOrder", label: t(L.mediaOrder), kind: "choice", choices: itemOrders() },
      { name: "pageSize", label: t(L.boardPageSize), kind: "number", hint: t(L.zeroIsAll) },
      { name: "archiveAfter", label: t(L.boardArchiveAfter), kind: "number", hint: t(L.zeroIsNever) },
      { name: "archiveVisible", label: t(L.archiveVisible), kind: "check" },
      { name: "linkText", label: t(L.wordsOfLink), kind: "text" },
    ],
  },
  pictureGroup(),
];

/** 0 off, 1 on, 2 on with the next publishing. */
const switchWord = (online: number): string => (online === 1 ? "" : t(online ? L.onSoon : L.switchedOff));

const twinsOf = (one: { isLive: number; msgB_modified: number; msgB_deleted: number }) => ({
  isLive: one.isLive,
  modified: one.msgB_modified,
  deleted: one.msgB_deleted,
});

interface Board {
  readonly categories: readonly Category[];
  readonly chosen: Category | undefined;
  readonly items: readonly Item[];
  readonly more: boolean;
}

@customElement("tvx-board")
export class TvxBoard extends ModuleScreen<Board> {
  protected readonly entry = BOARD;

  protected override get subject(): string {
    return this.params.get("category") ?? "";
  }

  protected async read(place: Place): Promise<Board> {
    const categories = await categoriesOf(place);
    const chosen = categories.find((one) => one.msgB_Id === this.number("category")) ?? categories[0];
    const items = chosen ? await itemsOf(place, chosen.msgB_Id) : [];
    return { categories, chosen, items, more: hasMore(items) };
  }

  protected heading(): string {
    return t(L.messageBoard);
  }

  // ---- Categories ----

  private async addCategory(parent: string): Promise<void> {
    const { place } = this;
    let made = "";
    const values = await this.fill(
      {
        id: "category",
        title: t(L.newCategory),
        values: newCategory,
        groups,
        save: async (given, work) => {
          made = await saveCategory(place, 0, parent, given, work);
        },
      },
      ({ title }) => title,
    );
    if (values) void go(`${ADDRESS}?category=${made}`);
  }

  private async editCategory(category: Category): Promise<void> {
    const { place } = this;
    await this.fill(
      {
        id: "category",
        title: category.msgB_catTitle,
        values: categoryValues(category),
        groups,
        ...storedCategory(place, category.msgB_Id),
      },
      ({ title }) => title,
    );
  }

  private mark(kind: "category" | "item", id: number, name: string, isMarked: boolean): void {
    const { place } = this;
    void this.flipMark(name, isMarked, (marked) => markRecord(place, kind, id, marked));
  }

  /** What goes is told as far as it is known here. */
  private async publish(board: Board, path: string): Promise<void> {
    const { place } = this;
    const going = board.categories
      .filter((one) => one.msgB_deleted && one.msgB_catId.startsWith(path))
      .map((one) => one.msgB_catTitle);
    if (board.chosen?.msgB_catId.startsWith(path))
      going.push(...board.items.filter((one) => one.msgB_deleted).map((one) => one.msgB_itemTitle));
    await this.askAndPublish(going, () => publishBoard(place, path));
  }

  private async preview({ msgB_catId, msgB_catTitle }: Category): Promise<void> {
    try {
      await previewDialog(msgB_catTitle, await previewOf(this.place, msgB_catId));
    } catch (error) {
      failed(error);
    }
  }

  // ---- Items ----

  private async addItem(board: Board, chosen: Category): Promise<void> {
    const { place } = this;
    await this.fill(
      {
        id: "item",
        title: t(L.newItem),
        values: newItem(chosen),
        groups: itemGroups(place, board.categories),
        save: (given, work) => saveItem(place, 0, given, work),
      },
      ({ title }) => title,
    );
  }

  private async editItem(board: Board, chosen: Category, item: Item): Promise<void> {
    const { place } = this;
    await this.fill(
      {
        id: "item",
        title: item.msgB_itemTitle,
        values: itemValues(item, chosen.msgB_Id),
        groups: itemGroups(place, board.categories),
        ...storedItem(place, chosen.msgB_Id, item.msgB_itemId),
      },
      ({ title }) => title,
    );
  }

  private async moreItems(board: Board, chosen: Category): Promise<void> {
    await this.goOn(board, async () => {
      const next = await itemsOf(this.place, chosen.msgB_Id, board.items.length);
      return { ...board, items: [...board.items, ...next], more: hasMore(next) };
    });
  }

  // ---- How it looks ----

  protected override tools(board: Board): TemplateResult {
    if (!this.mayEdit) return html``;
    return html`<button type="button" class="button" @click=${() => this.publish(board, "")}>${icon("send")}${t(L.publishAll)}</button>
      <button type="button" class="button primary" @click=${() => this.addCategory("")}>${icon("plus")}${t(L.newCategory)}</button>`;
  }

  protected content(board: Board): TemplateResult {
    const { categories, chosen } = board;
    if (!chosen) return emptyNote("file-text", t(L.boardEmpty));
    return html`<div class="board">
      <nav class="card board-tree" aria-label=${t(L.boardCategories)}>${categories.map((one) => this.branch(one, one === chosen))}</nav>
      <div class="board-items">${this.chosenHead(board, chosen)}${this.itemList(board, chosen)}</div></div>`;
  }

  private branch(category: Category, isChosen: boolean): TemplateResult {
    const waiting = category.msgB_modified || category.msgB_deleted || category.waiting;
    return html`<a href="${ADDRESS}?category=${category.msgB_Id}" aria-current=${isChosen ? "true" : "false"} class="depth-${Math.min(depthOf(category), 4)}">
      <span class="grow">${category.msgB_catTitle}</span>${waiting ? recordState({ ...twinsOf(category), modified: 1 }) : ""}<span class="note">${category.items}</span></a>`;
  }

  private chosenHead(board: Board, chosen: Category): TemplateResult {
    const { msgB_Id: id, msgB_catTitle: name, msgB_catId: path, msgB_deleted: deleted } = chosen;
    const off = switchWord(chosen.msgB_online);
    return html`<div class="card module-row"><div class="module-name"><h2>${name}</h2>${off ? html`<p class="note">${off}</p>` : ""}</div>${recordState(twinsOf(chosen))}
      <div class="module-buttons">${previewButton(name, () => this.preview(chosen))}${
        this.mayEdit
          ? html`${editButton(name, () => this.editCategory(chosen))}
            ${wordButton("plus", t(L.categoryBelow), t(L.categoryBelowNamed, { name }), () => this.addCategory(path))}
            ${markButton(name, deleted, () => this.mark("category", id, name, deleted === 1))}
            ${publishButton(name, () => this.publish(board, path))}`
          : ""
      }</div></div>`;
  }

  private itemList(board: Board, chosen: Category): TemplateResult {
    const add = this.mayEdit
      ? html`<div class="inline"><button type="button" class="button primary" @click=${() => this.addItem(board, chosen)}>${icon("plus")}${t(L.newItem)}</button></div>`
      : html``;
    if (board.items.length === 0) return html`${add}${emptyNote("file-text", t(L.boardNoItems))}`;
    return html`${add}${moduleList(
      board.items,
      ({ msgB_itemId }) => msgB_itemId,
      (item) => this.item(board, chosen, item),
    )}
      ${board.more ? moreButton(() => this.moreItems(board, chosen)) : ""}`;
  }

  private item(board: Board, chosen: Category, item: Item): TemplateResult {
    const { msgB_itemId: id, msgB_itemTitle: name, msgB_deleted: deleted } = item;
    const told = [dayText(item.msgB_itemDate), switchWord(item.msgB_itemOnline)];
    if (item.msgB_itemNewsflash === 1) told.push(t(L.boardInNewsflashes));
    if (item.msgB_itemNewsflash === 2) told.push(t(L.newsflashOffSoon));
    return html`<li class="card module-row"><div class="module-name"><strong>${name}</strong>${noteOf(...told)}</div>
      ${recordState(twinsOf(item))}
      ${
        this.mayEdit
          ? html`<div class="module-buttons">${editButton(name, () => this.editItem(board, chosen, item))}
          ${markButton(name, deleted, () => this.mark("item", id, name, deleted === 1))}</div>`
          : ""
      }</li>`;
  }
}
