/** Newsflashes and what feeds them, as they come from the server and go there. */

import { type AnswerOf, Batch, call } from "../api";
import { maySee } from "../shell/workplace";
import { BOARD, type Category, categoriesOf } from "./board-data";
import type { Place } from "./screen";
import { behind, foundAmong, type Stored } from "./stored";
import { type ModuleTemplate, moduleTemplates } from "./templates";

export const NEWSFLASH = 242;

export type Newsflash = AnswerOf<"registers.getNewsflashes">[number];
export type Feed = AnswerOf<"registers.getNewsflashCategories">[number];

export interface Newsflashes {
  readonly newsflashes: readonly Newsflash[];
  readonly feeds: readonly Feed[];
  readonly templates: readonly ModuleTemplate[];
  /** None for whoever has no part in the board. */
  readonly categories: readonly Category[];
}

const listOf = (place: Place): Promise<readonly Newsflash[]> => call("registers.getNewsflashes", place);

export async function newsflashesOf(place: Place): Promise<Newsflashes> {
  const [newsflashes, feeds, templates, categories] = await Promise.all([
    listOf(place),
    call("registers.getNewsflashCategories", place),
    moduleTemplates(place),
    maySee(BOARD, place.site, place.lang) ? categoriesOf(place) : [],
  ]);
  return { newsflashes, feeds, templates, categories };
}

export const valuesOf = (newsflash: Newsflash) => ({
  number: newsflash.id,
  title: newsflash.title ?? "",
  mode: newsflash.mode ?? "",
  itemOrder: newsflash.itemOrder,
  numberOfItems: newsflash.numberOfItems,
  itemLength: newsflash.itemLength,
  templateId: newsflash.templateId,
  imageAlignment: newsflash.imageAlignment,
  imageWidth: newsflash.imageWidth,
  imageHeight: newsflash.imageHeight,
  marked: newsflash.deleted,
});
export type NewsflashValues = ReturnType<typeof valuesOf>;

/** The next number that is free, drawn as another one is. */
export const newNewsflash = ({ newsflashes, templates }: Newsflashes): NewsflashValues => ({
  number: Math.max(0, ...newsflashes.map(({ id }) => id)) + 1,
  title: "",
  mode: "M",
  itemOrder: 1,
  numberOfItems: 5,
  itemLength: 100,
  templateId: newsflashes[0]?.templateId ?? templates[0]?.tpl_id ?? 0,
  imageAlignment: 4,
  imageWidth: 0,
  imageHeight: 0,
  marked: 0,
});

export const saveNewsflash = (place: Place, nfId: number, values: NewsflashValues, work: Batch): Promise<unknown> => {
  const given = { nfId, ...place, ...values, marked: values.marked === 1 };
  return behind(work, work.do("registers.saveNewsflash", given));
};

export const storedNewsflash = (place: Place, nfId: number): Stored<NewsflashValues> => ({
  now: () =>
    foundAmong(
      (work, asBefore) => work.do("registers.getNewsflashes", { ...place }, asBefore),
      (one) => one.nf_Id === nfId,
      valuesOf,
    ),
  save: (values, work) => saveNewsflash(place, nfId, values, work),
});

/** Lets categories feed a newsflash, or feed it no longer. */
export async function setFeeds(
  place: Place,
  nfId: number,
  before: ReadonlySet<number>,
  wanted: ReadonlySet<number>,
): Promise<void> {
  const work = new Batch();
  for (const category of wanted)
    if (!before.has(category)) work.do("registers.addCategory", { nfId, ...place, category });
  for (const category of before)
    if (!wanted.has(category)) work.do("registers.removeCategory", { nfId, ...place, category });
  await work.run();
}

/** As its authors have it. */
export async function drawnNewsflash(place: Place, number: number): Promise<string> {
  const work = new Batch();
  work.do("newsflash.load", { ...place, newsflashId: number, mode: "D" });
  const drawn = work.get("newsflash", "nfContent");
  await work.run();
  return drawn.value.nfContent;
}

export const publishNewsflashes = (place: Place): Promise<unknown> => call("newsflash.publish", place);
