// Where the bodies of a page stand in the document that shows it for editing.

import { callOf, type PageCall } from "../../formats/page-calls";
import type { Place } from "../model/body";

export type BodyKind = "text" | "html" | "xml";

/** A place of a body; a template may show one body at several. */
export interface BodyPlace {
  bodyId: number;
  nodeId: string;
  kind: BodyKind;
  feedId: number;
  place: Place;
  /** The cell that the server put the content into. */
  cell: HTMLElement;
}

const kinds: BodyKind[] = ["text", "html", "xml"];
/** Elements that hold words and no blocks. */
const wordHolders =
  "h1, h2, h3, h4, h5, h6, p, a, span, em, strong, b, i, small, label, button, summary, dt, legend, caption";

function placeOf(frame: HTMLTableElement): BodyPlace | null {
  const header = frame.querySelector(":scope > tbody > tr > th.bodyheader");
  const cell = frame.querySelector<HTMLElement>(":scope > tbody > tr > td.bodycontent");
  const setup = [...(header?.querySelectorAll("a[href]") ?? [])]
    .map((link) => callOf(link.getAttribute("href") ?? ""))
    .find((call): call is PageCall & { kind: "setupBody" } => call?.kind === "setupBody");
  if (!cell || !setup) return null;
  const inWords = frame.parentElement?.closest(wordHolders) !== null;
  return {
    bodyId: setup.bodyId,
    nodeId: setup.nodeId,
    kind: kinds[setup.bodyType - 1] ?? "text",
    feedId: setup.feedId,
    place: inWords ? "words" : "blocks",
    cell,
  };
}

/** All places of bodies, in the order of the page. Frames inside a body's own text are none. */
export function bodyPlaces(doc: Document): BodyPlace[] {
  return [...doc.querySelectorAll<HTMLTableElement>("table.bodyborder")]
    .filter((frame) => frame.parentElement?.closest("td.bodycontent") === null)
    .flatMap((frame) => placeOf(frame) ?? []);
}

/** Around all that a body shows, as its cell has no box of its own. */
export function boxOf(cell: HTMLElement): DOMRect {
  const holder = cell.querySelector(":scope > tvx-body");
  if (holder) return holder.getBoundingClientRect();
  const range = cell.ownerDocument.createRange();
  range.selectNodeContents(cell);
  return range.getBoundingClientRect();
}

/** The content of a cell in an element that can take the focus. */
export function holderIn(place: BodyPlace): HTMLElement {
  const known = place.cell.querySelector<HTMLElement>(":scope > tvx-body");
  if (known) return known;
  const holder = place.cell.ownerDocument.createElement("tvx-body");
  if (place.place === "words") holder.setAttribute("data-words", "");
  holder.append(...place.cell.childNodes);
  place.cell.append(holder);
  return holder;
}
