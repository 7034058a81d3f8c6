/** What records of the modules are: between their design and what visitors have. */

import type { PageWord } from "../formats/status";
import { daysBefore } from "../labels/moments";

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

/** The day from which something of today is history, so many days on; "" for never. */
export const historyFrom = (days: number, now = new Date()): string => (days > 0 ? daysBefore(-days, now) : "");

// ---- Lists ----

/** What a list gives at once. */
export const AT_ONCE = 500;

/** Whether there may be more behind what has been read. */
export const hasMore = (rows: readonly unknown[]): boolean => rows.length > 0 && rows.length % AT_ONCE === 0;
