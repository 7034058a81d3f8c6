/** What the board and newsflashes ask alike about how their items are shown. */

import { L, t } from "../labels";
import type { Choice, Group } from "./form";

export const itemOrders = (): readonly Choice[] => [
  [1, t(L.orderLatest)],
  [2, t(L.orderOldest)],
  [3, t(L.orderTitle)],
  [4, t(L.orderTitleBack)],
  [5, t(L.orderNewest)],
  [6, t(L.orderFirst)],
];

const imagePlaces = (): readonly Choice[] => [
  [1, t(L.imageLeft)],
  [2, t(L.imageRight)],
  [3, t(L.imageAlternating)],
  [4, t(L.imageNone)],
  [5, t(L.imageTop)],
  [6, t(L.imageBottom)],
];

interface PictureValues {
  readonly imageAlignment: number;
  readonly imageWidth: number;
  readonly imageHeight: number;
}

export const pictureGroup = (): Group<PictureValues> => ({
  heading: t(L.pictures),
  fields: [
    { name: "imageAlignment", label: t(L.imagePlace), kind: "choice", choices: imagePlaces() },
    { name: "imageWidth", label: t(L.imageWidth), kind: "number", hint: t(L.zeroIsNoLimit) },
    { name: "imageHeight", label: t(L.imageHeight), kind: "number", hint: t(L.zeroIsNoLimit) },
  ],
});
