/** The orders of items, and where their pictures stand: the same for the board and for newsflashes. */

import { L, t } from "../labels";

type Choice = readonly [value: number, label: string];

export const itemOrders = (): readonly Choice[] => [
  [1, t(L.orderLatest)],
  [2, t(L.orderOldest)],
  [3, t(L.orderTitle)],
  [4, t(L.orderTitleBack)],
  [5, t(L.orderNewest)],
  [6, t(L.orderFirst)],
];

export const imagePlaces = (): readonly Choice[] => [
  [1, t(L.imageLeft)],
  [2, t(L.imageRight)],
  [3, t(L.imageAlternating)],
  [4, t(L.imageNone)],
  [5, t(L.imageTop)],
  [6, t(L.imageBottom)],
];
