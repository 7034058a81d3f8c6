/** The form of an item of the message board. */

import { html, type TemplateResult } from "lit";
import { icon } from "../kit/icon";
import { L, t } from "../labels";
import type { Category, ItemValues } from "./board-data";
import type { Group } from "./form";

type Change = (part: Partial<ItemValues>) => void;

/** The path of a picture as the board has it, out of the tag that the chooser gives. */
async function choosePicture(site: string, change: Change): Promise<void> {
  const { imageDialog } = await import("../editor/image-dialog");
  const tag = await imageDialog(site);
  const path = tag && /\ssrc="([^"]*)"/.exec(tag)?.[1]?.split(`/${site}/`)[1];
  if (path) change({ image: decodeURIComponent(path.replaceAll("&amp;", "&")) });
}

/** Puts a tag around what is selected in the text. */
function wrap(tag: string, change: Change): void {
  const field = document.querySelector<HTMLTextAreaElement>("#item-text");
  if (!field) return;
  const { selectionStart: from, selectionEnd: to } = field;
  field.setRangeText(`<${tag}>${field.value.slice(from, to)}</${tag}>`, from, to, "end");
  change({ text: field.value });
  field.focus();
}

const tools = (change: Change): TemplateResult =>
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

/** Paths of categories tell how deep they stand. */
export const indented = ({ msgB_catId, msgB_catTitle }: Category): string =>
  `${"\u00a0\u00a0".repeat((msgB_catId.length + 1) / 3 - 1)}${msgB_catTitle}`;

export const itemGroups =
  (site: string, categories: readonly Category[]) =>
  (_values: ItemValues, change: Change): readonly Group<ItemValues>[] => [
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
          below: html`<button type="button" class="button small" @click=${() => choosePicture(site, change)}>${icon("image")}${t(L.boardChoosePicture)}</button>`,
        },
        { name: "link", label: t(L.link), kind: "text", longest: 500, hint: t(L.boardLinkHint) },
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
