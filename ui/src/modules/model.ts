/** What records of the modules are: between their design and what visitors have. */

import type { PageWord } from "../formats/status";

export interface Twins {
  readonly isLive: number;
  readonly modified: number;
  readonly deleted: number;
}

export function stateOf({ isLive, modified, deleted }: Twins): PageWord {
  if (deleted) return "marked";
  if (!isLive) return "new";
  return modified ? "changed" : "live";
}

// ---- Threads ----

export interface Post {
  readonly reaction_id: number;
  readonly reaction_reference: string;
  readonly reaction_online: number;
}

/** Whether `place` stands somewhere below another one; everything stands below the topic, whose place is "". */
export const isBelow = (place: string, above: string): boolean =>
  place !== above && (above === "" || place.startsWith(`${above}.`));

/** The place of what a reaction answers; "" for the topic. */
export const answered = (place: string): string => place.slice(0, -3);

/** The reactions that switching one off hides with it, by their places. */
export const hiddenWith = (posts: readonly Post[], place: string): string[] =>
  posts
    .filter((post) => post.reaction_online === 1 && post.reaction_id !== 0)
    .map((post) => post.reaction_reference)
    .filter((other) => other === place || isBelow(other, place));

/** The reactions that switching one on shows with it, the topmost first. */
export const shownWith = (posts: readonly Post[], place: string): string[] =>
  posts
    .filter((post) => post.reaction_online !== 1 && post.reaction_id !== 0)
    .map((post) => post.reaction_reference)
    .filter((other) => other === place || isBelow(place, other))
    .sort();

// ---- Days ----

/** "20260503" as a field takes it; "" for a day without end. */
export const toField = (digits: string): string =>
  /^\d{8}$/.test(digits) && digits !== "99999999" ? digits.replace(/(\d{4})(\d\d)(\d\d)/, "$1-$2-$3") : "";

export const fromField = (text: string): string => text.replaceAll("-", "");

/** So many days behind a day; "" for none. */
export function daysBehind(digits: string, days: number): string {
  const field = toField(digits);
  if (!field || days <= 0) return "";
  const date = new Date(`${field}T12:00:00Z`);
  date.setUTCDate(date.getUTCDate() + days);
  return fromField(date.toISOString().slice(0, 10));
}
