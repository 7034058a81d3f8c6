import { locale } from ".";
import { dates, spans } from "./formats";

const units: [Intl.RelativeTimeFormatUnit, number][] = [
  ["minute", 60],
  ["hour", 3600],
  ["day", 86_400],
];

/** A moment as the API gives it, or null. */
export function momentOf(text: string | null | undefined): Date | null {
  if (!text) return null;
  const moment = new Date(text);
  return Number.isNaN(moment.getTime()) || moment.getFullYear() <= 1900 ? null : moment;
}

const isSameDay = (a: Date, b: Date) => a.toDateString() === b.toDateString();

/** "10:42" of today, "yesterday, 10:42", else the day. */
export function when(text: string | null | undefined, now = new Date()): string {
  const moment = momentOf(text);
  if (!moment) return "";
  const lang = locale();
  const time = dates(lang, { hour: "2-digit", minute: "2-digit" }).format(moment);
  if (isSameDay(moment, now)) return time;
  const yesterday = new Date(now.getTime() - 86_400_000);
  if (isSameDay(moment, yesterday)) return `${spans(lang, { numeric: "auto" }).format(-1, "day")}, ${time}`;
  const sameYear = moment.getFullYear() === now.getFullYear();
  return dates(lang, {
    day: "numeric",
    month: "short",
    ...(sameYear ? {} : { year: "numeric" }),
  }).format(moment);
}

/** "14 minutes ago", "in 3 days". */
export function ago(text: string | null | undefined, now = new Date()): string {
  const moment = momentOf(text);
  if (!moment) return "";
  const seconds = (moment.getTime() - now.getTime()) / 1000;
  const [unit, length] = [...units].reverse().find(([, size]) => Math.abs(seconds) >= size) ?? units[0]!;
  return spans(locale(), { numeric: "auto" }).format(Math.round(seconds / length), unit);
}

/** The whole of it, for a tip. */
export function full(text: string | null | undefined): string {
  const moment = momentOf(text);
  return moment ? dates(locale(), { dateStyle: "full", timeStyle: "short" }).format(moment) : "";
}

const digitsOf = (moment: Date) =>
  [moment.getFullYear(), moment.getMonth() + 1, moment.getDate()].map((part) => String(part).padStart(2, "0")).join("");

/** Days as pages name those between which they are on line: "20260503". */
export const todayAsDigits = (now = new Date()) => digitsOf(now);
export const daysBefore = (days: number, now = new Date()) =>
  digitsOf(new Date(now.getFullYear(), now.getMonth(), now.getDate() - days));

/** Such a day for people, "3 May", with its year when that is another. */
export function day(digits: string, now = new Date()): string {
  if (!/^\d{8}$/.test(digits)) return "";
  const date = new Date(Number(digits.slice(0, 4)), Number(digits.slice(4, 6)) - 1, Number(digits.slice(6)));
  const isThisYear = date.getFullYear() === now.getFullYear();
  return dates(locale(), {
    day: "numeric",
    month: "short",
    ...(isThisYear ? {} : { year: "numeric" }),
  }).format(date);
}
