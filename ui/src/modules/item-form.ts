/** The form of an item of the message board. */

import { html, type TemplateResult } from "lit";
import type { TvxImagePicker } from "../editor/image-dialog";
import { icon } from "../kit/icon";
import { dialog, type TvxDialog } from "../kit/tvx-dialog";
import { L, t } from "../labels";
import { type Category, type ItemValues, indented } from "./board-data";
import type { Change, Group } from "./form";
import { pickPage } from "./pick-page";
import type { Place } from "./screen";

/** A picture of the site's library; its words are the item's own. */
async function choosePicture(site: string, change: Change<ItemValues>): Promise<void> {
  const { rememberPicture } = await import("../editor/pictures");
  await import("../editor/image-dialog");
  let box: TvxDialog | undefined;
  const chosen = () => box?.querySelector<TvxImagePicker>("tvx-image-picker")?.chosen;
  let picture: ReturnType<typeof chosen>;
  await dialog({
    title: t(L.picture),
    wide: true,
    body: (made) => {
      box = made;
      return html`<tvx-image-picker .site=${site}></tvx-image-picker>`;
    },
    actions: () => [
      { name: "cancel", label: t(L.cancel) },
      {
        name: "take",
        label: t(L.insert),
        kind: "primary",
        run: () => {
          picture = chosen();
          return picture !== undefined;
        },
      },
    ],
  });
  if (!picture) return;
  rememberPicture(site, picture);
  change({ image: picture.path });
}

async function choosePage(place: Place, change: Change<ItemValues>): Promise<void> {
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
          below: html`<button type="button" class="button small" @click=${() => choosePicture(place.site, change)}>${icon("image")}${t(L.boardChoosePicture)}</button>`,
        },
        {
          name: "link",
          label: t(L.link),
          kind: "text",
          longest: 500,
          hint: t(L.boardLinkHint),
          below: html`<button type="button" class="button small" @click=${() => choosePage(place, change)}>${icon("link")}${t(L.linkToPage)}</button>`,
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
