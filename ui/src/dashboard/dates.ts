import { L, t } from "../labels";
import { day, todayAsDigits } from "../labels/moments";
import type { WorkRow } from "./work";

const begins = ({ onlineFrom = "" }: WorkRow) => (onlineFrom > todayAsDigits() ? onlineFrom : "");

/** The day on which a page comes or goes next, for sorting. */
export const nextDay = (row: WorkRow): string => begins(row) || (row.onlineTo ?? "");

/** "on line from 3 May", or "off line after 9 May". */
export const nextDate = (row: WorkRow): string =>
  begins(row) ? t(L.goesOnline, { day: day(begins(row)) }) : t(L.goesOffline, { day: day(row.onlineTo ?? "") });
