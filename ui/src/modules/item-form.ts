/** The form of an item of the message board. */

import { html, type TemplateResult } from "lit";
import { icon } from "../kit/icon";
import { L, t } from "../labels";
import { type Category, type ItemValues, indented } from "./board-data";
import type { Change, Group } from "./form";
import { pickPage } from "./pick-page";
import type { Place } from "./screen";

/** The words of the picture are the item's own. */
async function insertPicture(site: string, change: Change<ItemValues>): Promise<void> {
  const { choosePicture } = await import("../editor/image-dialog");
  const picture = await choosePicture(site);
  if (picture) change({ image: picture.path });
}

async function linkToPage(place: Place, change: Change<ItemValues>): Promise<void> {
  const page = await pickPage(t(L.linkToPage), place, t(L.insert));
  if (page) change({ link: String(page.pageId) });
}

/** Puts a tag around what is selected in the text. */
function wrap(tag: string, change: Change<ItemValues>): void {
  const field = document.querySelector<HTMLTextAreaElement>("#item-text");
  if (!field) return;
  const { selectionStart: from, selectionEnd: to } = field;
  field.setRangeText(`<${tag}>${field.value.slice(from, to)}</${tag}>`, from, to, "end");
  change({ text: field.value });
  field.focus();
}

const tools = (change: Change<ItemValues>): TemplateResult =>
  html`<div class="inline">${(
    [
      ["b", t(L.bold)],
      ["i", t(L.italic)],
      ["u", t(L.underlined)],
    ] as const
  ).map(
    ([tag, label]) =>
      html`<button type="button" class="button small" @click=${() => wrap(tag, change)}>${label}</button>`,
  )}</div>`;

export const itemGroups =
  (place: Place, categories: readonly Category[]) =>
  (_values: ItemValues, change: Change<ItemValues>): readonly Group<ItemValues>[] => [
    {
      fields: [
        { name: "title", label: t(L.title), kind: "text", longest: 250 },
        {
          name: "category",
          label: t(L.boardCategory),
          kind: "choice",
          choices: categories.map((one) => [one.msgB_Id, indented(one)] as const),
        },
        {
          name: "text",
          label: t(L.kindText),
          kind: "area",
          longest: 20_000,
          hint: t(L.boardTextHint),
          below: tools(change),
        },
      ],
    },
    {
      heading: t(L.boardDays),
      fields: [
        { name: "date", label: t(L.date), kind: "day" },
        { name: "onlineDate", label: t(L.boardFirstDay), kind: "day" },
        { name: "archiveDate", label: t(L.boardArchiveDay), kind: "day", hint: t(L.boardArchiveHint) },
      ],
    },
    {
      heading: t(L.boardPictureAndLink),
      fields: [
        {
          name: "image",
          label: t(L.picture),
          kind: "text",
          longest: 500,
          below: html`<button type="button" class="button small" @click=${() => insertPicture(place.site, change)}>${icon("image")}${t(L.boardChoosePicture)}</button>`,
        },
        {
          name: "link",
          label: t(L.link),
          kind: "text",
          longest: 500,
          hint: t(L.boardLinkHint),
          below: html`<button type="button" class="button small" @click=${() => linkToPage(place, change)}>${icon("link")}${t(L.linkToPage)}</button>`,
        },
        { name: "linkText", label: t(L.wordsOfLink), kind: "text" },
      ],
    },
    {
      heading: t(L.state),
      fields: [
        { name: "online", label: t(L.switchedOn), kind: "check", hint: t(L.withNextPublishing) },
        { name: "newsflash", label: t(L.boardInNewsflashes), kind: "check", hint: t(L.withNextPublishing) },
      ],
    },
  ];
