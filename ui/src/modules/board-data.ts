/** The message board's categories and items, as they come from the server and go there. */

import { type AnswerOf, type Batch, call } from "../api";
import { todayAsDigits } from "../labels/moments";
import { historyFrom } from "./model";
import type { Place } from "./screen";
import { behind, foundAmong, foundInPieces, type Stored } from "./stored";

export const BOARD = 241;

export type Category = AnswerOf<"registers.getCategories">[number];
export type Item = AnswerOf<"registers.getItems">[number];

/** How deep it stands: its path has two signs for each level. */
export const depthOf = ({ msgB_catId }: Category): number => (msgB_catId.length + 1) / 3 - 1;

export const indented = (category: Category): string =>
  `${"\u00a0\u00a0".repeat(depthOf(category))}${category.msgB_catTitle}`;

export const categoriesOf = (place: Place): Promise<readonly Category[]> => call("registers.getCategories", place);

export const categoryValues = (category: Category) => ({
  title: category.msgB_catTitle ?? "",
  description: category.msgB_catDesc ?? "",
  itemOrder: category.msgB_itemOrder,
  archiveAfter: category.msgB_archiveAfter,
  archiveVisible: category.msgB_archiveVisible,
  linkText: category.msgB_linkText ?? "",
  imageAlignment: category.msgB_imageAlignment,
  imageWidth: category.msgB_imageWidth,
  imageHeight: category.msgB_imageHeight,
  online: category.msgB_online ? 1 : 0,
  pageSize: category.msgB_pageSize,
});
export type CategoryValues = ReturnType<typeof categoryValues>;

export const newCategory: CategoryValues = {
  title: "",
  description: "",
  itemOrder: 1,
  archiveAfter: 0,
  archiveVisible: 0,
  linkText: "",
  imageAlignment: 1,
  imageWidth: 0,
  imageHeight: 0,
  online: 1,
  pageSize: 10,
};

export const saveCategory = (
  place: Place,
  category: number,
  parent: string,
  values: CategoryValues,
  work: Batch,
): Promise<string> => {
  const [archiveVisible, online] = [values.archiveVisible === 1, values.online === 1];
  const given = { category, ...place, parent, ...values, archiveVisible, online };
  return behind(work, work.do("registers.saveCategory", given));
};

export const storedCategory = (place: Place, category: number): Stored<CategoryValues> => ({
  now: () =>
    foundAmong(
      (work, asBefore) => work.do("registers.getCategories", { ...place }, asBefore),
      (one) => one.msgB_Id === category,
      categoryValues,
    ),
  save: (values, work) => saveCategory(place, category, "", values, work),
});

export const itemsOf = (place: Place, category: number, from = 0): Promise<readonly Item[]> =>
  call("registers.getItems", { ...place, category, from });

const NEVER = "99999999";

export const itemValues = (item: Item, category: number) => ({
  category,
  title: item.msgB_itemTitle ?? "",
  text: (item.msgB_itemDesc ?? "").replaceAll("\r\n", "\n"),
  link: item.msgB_itemLink ?? "",
  linkText: item.msgB_itemLinkText ?? "",
  image: item.msgB_itemImage ?? "",
  date: item.msgB_itemDate ?? "",
  onlineDate: item.msgB_onlineDate ?? "",
  archiveDate: item.msgB_archiveDate === NEVER ? "" : (item.msgB_archiveDate ?? ""),
  online: item.msgB_itemOnline ? 1 : 0,
  newsflash: item.msgB_itemNewsflash === 1 ? 1 : 0,
});
export type ItemValues = ReturnType<typeof itemValues>;

/** One of today, which becomes history as its category says. */
export const newItem = ({ msgB_Id, msgB_linkText, msgB_archiveAfter }: Category): ItemValues => ({
  category: msgB_Id,
  title: "",
  text: "",
  link: "",
  linkText: msgB_linkText ?? "",
  image: "",
  date: todayAsDigits(),
  onlineDate: todayAsDigits(),
  archiveDate: historyFrom(msgB_archiveAfter),
  online: 1,
  newsflash: 0,
});

export const saveItem = (place: Place, itemId: number, values: ItemValues, work: Batch): Promise<string> => {
  const given = { itemId, ...place, ...values, online: values.online === 1, newsflash: values.newsflash === 1 };
  return behind(work, work.do("registers.saveItem", given));
};

export const storedItem = (place: Place, category: number, itemId: number): Stored<ItemValues> => ({
  now: () =>
    foundInPieces(
      (from) => (work, asBefore) => work.do("registers.getItems", { ...place, category, from }, asBefore),
      (one) => one.msgB_itemId === itemId,
      (item) => itemValues(item, category),
    ),
  save: (values, work) => saveItem(place, itemId, values, work),
});

export const markRecord = (place: Place, kind: "category" | "item", id: number, marked: boolean): Promise<unknown> =>
  call("registers.markDeleted", { kind, id, ...place, marked });

/** A category with all below it and all items; an empty path is the whole board. */
export const publishBoard = (place: Place, catId: string): Promise<unknown> =>
  call("msgBoard.publish", { ...place, catId, includeSubcat: true, includeItems: true });

const block = (name: string, inner: string): string => `<!--!${name}_start!-->${inner}<!--!${name}_end!-->`;
const words =
  "<p><!--!msgB_YYYY!-->-<!--!msgB_MM!-->-<!--!msgB_DD!--></p><h3><!--!msgB_itemTitle!--></h3><p><!--!msgB_itemText!--></p>" +
  block("msgB_more", "<p><u><!--!msgB_more!--></u></p>");

/** A plain layout of a category's items. */
const LAYOUT = block(
  "torvex_application_3",
  block(
    "msgB_item",
    block("msgB_noImage", `${words}<hr>`) +
      block("msgB_default", `<p><img src="<!--!msgB_image!-->" alt=""></p>${words}<hr>`),
  ),
);

export const previewOf = (place: Place, catId: string): Promise<string> =>
  call("msgBoard.load", { ...place, mode: "D", catRoot: "", subCat: catId, archive: false, pageTo: 1, html: LAYOUT });
