/** States, kinds and moments in words. */

import type { IconName } from "../kit/icon";
import { L, type Label, locale, t } from "../labels";
import { dates, numbers } from "../labels/formats";
import type { PageState } from "./model/status";

/** The text of a label that is chosen from several. */
export const word = (label: Label): string => (t as (label: Label) => string)(label);

export const titleOr = (title: string): string => title || `[${t(L.untitled)}]`;

const STATES: Readonly<Record<PageState, Label>> = {
  new: L.stateNew,
  changed: L.stateChanged,
  approved: L.stateApproved,
  marked: L.stateMarked,
  live: L.stateLive,
};

const KINDS: Readonly<Record<string, Label>> = {
  P: L.page,
  A: L.kindApplication,
  F: L.folder,
  S: L.kindSystem,
};

export const stateWord = (state: PageState): string => word(STATES[state]);
export const kindWord = (kind: string): string => word(KINDS[kind] ?? L.page);

export const STATE_ICONS: Readonly<Record<PageState, IconName>> = {
  new: "circle",
  changed: "pen-line",
  approved: "clipboard-check",
  marked: "trash-2",
  live: "circle-check",
};

export const KIND_ICONS: Readonly<Record<string, IconName>> = {
  P: "file-text",
  A: "app-window",
  F: "folder",
  S: "shield",
};

const SAME_DAY: Intl.DateTimeFormatOptions = { hour: "2-digit", minute: "2-digit" };
const THIS_YEAR: Intl.DateTimeFormatOptions = { day: "numeric", month: "short", hour: "2-digit", minute: "2-digit" };
const ANY_YEAR: Intl.DateTimeFormatOptions = { day: "numeric", month: "short", year: "numeric" };

/** A moment, as short as it can be told today: the hour, the day, or the day with its year. */
export function whenText(moment: string | null | undefined, now = new Date()): string {
  if (!moment) return "";
  const date = new Date(moment);
  if (Number.isNaN(date.getTime()) || date.getFullYear() <= 1900) return "";
  const style =
    date.toDateString() === now.toDateString()
      ? SAME_DAY
      : date.getFullYear() === now.getFullYear()
        ? THIS_YEAR
        : ANY_YEAR;
  return dates(locale(), style).format(date);
}

export function momentText(moment: string | null | undefined): string {
  const date = moment ? new Date(moment) : undefined;
  if (!date || Number.isNaN(date.getTime()) || date.getFullYear() <= 1900) return "";
  return dates(locale(), { dateStyle: "medium", timeStyle: "short" }).format(date);
}

/** "20260503" as people write a day. */
export function dayText(digits: string): string {
  if (!/^\d{8}$/.test(digits)) return "";
  const date = new Date(Number(digits.slice(0, 4)), Number(digits.slice(4, 6)) - 1, Number(digits.slice(6)));
  return dates(locale(), { day: "numeric", month: "long", year: "numeric" }).format(date);
}

/** "42 minutes": how long somebody hasn't moved. */
export function spanText(seconds: number): string {
  const [value, unit] =
    seconds < 60
      ? [seconds, "second"]
      : seconds < 3600
        ? [Math.floor(seconds / 60), "minute"]
        : [Math.floor(seconds / 3600), "hour"];
  return numbers(locale(), { style: "unit", unit, unitDisplay: "long" }).format(value);
}
