import { html, nothing, svg, type TemplateResult } from "lit";
import type { LiveState } from "../formats/sitemap";
import type { PageWord } from "../formats/status";
import { L, t } from "../labels";
import { type IconName, icon } from "./icon";
import "./marks.css";

const words = {
  new: L.markNew,
  changed: L.markChanged,
  approved: L.markApproved,
  marked: L.markMarked,
  live: L.markLive,
} satisfies Record<PageWord, number>;

export const stateWord = (state: PageWord) => t(words[state]);

/** The shape of a state; with its word beside it, or as its tip. */
export function stateMark(state: PageWord, { word = false } = {}): TemplateResult | typeof nothing {
  if (state === "live" && !word) return nothing;
  const text = stateWord(state);
  return html`<span class="mark ${state}" title=${word ? nothing : text}><svg class="shape" aria-hidden="true" viewBox="0 0 12 12">${shapes[state]}</svg>${word ? html`<span class="word">${text}</span>` : nothing}</span>`;
}

// A ring is new, a wave is changed, a hook is approved, a cross is marked, a dot is live.
const shapes = {
  new: svg`<circle cx="6" cy="6" r="4"></circle>`,
  changed: svg`<path d="M1.5 7.5C3 3.5 5 3.5 6 6s3 2.5 4.5-1.5"></path>`,
  approved: svg`<path d="M2 6.5 5 9.5 10.5 3"></path>`,
  marked: svg`<path d="M2.5 2.5l7 7M9.5 2.5l-7 7"></path>`,
  live: svg`<circle class="full" cx="6" cy="6" r="3.5"></circle>`,
} satisfies Record<PageWord, unknown>;

const liveWords = { none: 0, on: 0, folder: 0, off: L.offLine, outOfDates: L.notInDates } satisfies Record<
  LiveState,
  number
>;
const liveIcons = { off: "power-off", outOfDates: "calendar-clock" } as const;

export const liveWord = (live: LiveState) => (liveWords[live] ? t(liveWords[live] as typeof L.offLine) : "");

/** The shape of a page that visitors have but don't see. */
export function liveMark(live: LiveState): TemplateResult | typeof nothing {
  if (live !== "off" && live !== "outOfDates") return nothing;
  return html`<span class="mark ${live}" title=${liveWord(live)}>${icon(liveIcons[live])}</span>`;
}

const kinds: Record<string, IconName> = {
  P: "file-text",
  A: "app-window",
  F: "folder",
  N: "square-dashed",
  S: "settings",
};

export const kindIcon = (type: string) => icon(kinds[type] ?? "file-text");
