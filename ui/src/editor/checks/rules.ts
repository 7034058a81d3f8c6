// What can be said of a page without knowing what it is about. Nothing here forbids anything.

import { callOf } from "../../formats/page-calls";
import { L } from "../../labels";
import { type Color, colorOf, needed, over, ratio } from "./contrast";

export interface Finding {
  label: (typeof findingLabels)[number];
  /** Where, when it has a place. */
  element: Element | null;
  detail: string;
}

export const findingLabels = [
  L.deadLink,
  L.openLink,
  L.emptyLink,
  L.noAlt,
  L.headingSkips,
  L.noHeading,
  L.tableWithoutHeads,
  L.lowContrast,
  L.noDescription,
  L.noTitle,
  L.feedFails,
  L.heavyPicture,
] as const;

const words = (element: Element) => (element.textContent ?? "").replace(/\s+/g, " ").trim();
const short = (text: string) => (text.length > 60 ? `${text.slice(0, 59)}…` : text);
const isShown = (element: Element) => element.checkVisibility?.({ visibilityProperty: true }) ?? true;
const inHandles = (element: Element) => element.closest("th.bodyheader") !== null;

function* links(doc: Document): Generator<Finding> {
  for (const link of doc.querySelectorAll("a, area")) {
    if (inHandles(link)) continue;
    if (link.classList.contains("badLink")) yield { label: L.deadLink, element: link, detail: short(words(link)) };
    else if (link.hasAttribute("[href]") || link.hasAttribute("{href}"))
      yield { label: L.openLink, element: link, detail: short(words(link)) };
    const leads = link.hasAttribute("href") && callOf(link.getAttribute("href") ?? "");
    const named =
      words(link) ||
      link.getAttribute("aria-label") ||
      link.getAttribute("title") ||
      link.querySelector("img[alt]:not([alt='']), svg title") ||
      link.getAttribute("alt");
    if (leads && !named) yield { label: L.emptyLink, element: link, detail: link.getAttribute("href") ?? "" };
  }
}

function* pictures(doc: Document): Generator<Finding> {
  for (const image of doc.querySelectorAll("img:not([alt])")) {
    if (!inHandles(image)) yield { label: L.noAlt, element: image, detail: short(image.getAttribute("src") ?? "") };
  }
}

function* headings(doc: Document): Generator<Finding> {
  const all = [...doc.querySelectorAll("h1, h2, h3, h4, h5, h6")].filter(
    (heading) => words(heading) && isShown(heading),
  );
  if (!all.some(({ tagName }) => tagName === "H1")) yield { label: L.noHeading, element: null, detail: "" };
  let before = 0;
  for (const heading of all) {
    const level = Number(heading.tagName[1]);
    if (before && level > before + 1)
      yield { label: L.headingSkips, element: heading, detail: `h${before} → h${level}: ${short(words(heading))}` };
    before = level;
  }
}

function* tables(doc: Document): Generator<Finding> {
  for (const table of doc.querySelectorAll("table:not(.bodyborder)")) {
    const data = table.querySelectorAll("td").length > 3 && table.getAttribute("role") !== "presentation";
    if (data && !table.querySelector("th"))
      yield { label: L.tableWithoutHeads, element: table, detail: short(words(table)) };
  }
}

function behind(element: Element): Color | null {
  const view = element.ownerDocument.defaultView!;
  const layers: Color[] = [];
  for (let at: Element | null = element; at; at = at.parentElement) {
    const style = view.getComputedStyle(at);
    if (style.backgroundImage !== "none" || Number(style.opacity) < 1) return null;
    const color = colorOf(style.backgroundColor);
    if (!color) return null;
    layers.push(color);
    if (color[3] === 1) break;
  }
  return layers.reverse().reduce<Color>((below, layer) => over(layer, below), [255, 255, 255, 1]);
}

function* contrast(doc: Document): Generator<Finding> {
  const view = doc.defaultView!;
  const walker = doc.createTreeWalker(doc.body, NodeFilter.SHOW_TEXT);
  const seen = new Set<Element>();
  for (let node = walker.nextNode(); node; node = walker.nextNode()) {
    const element = node.parentElement;
    if (!element || seen.has(element) || !node.textContent?.trim() || inHandles(element) || !isShown(element)) continue;
    seen.add(element);
    const style = view.getComputedStyle(element);
    const color = colorOf(style.color);
    const ground = behind(element);
    if (!color || !ground) continue;
    const has = ratio(over(color, ground), ground);
    const needs = needed(Number.parseFloat(style.fontSize), Number(style.fontWeight));
    if (has < needs - 0.005)
      yield { label: L.lowContrast, element, detail: `${has.toFixed(1)} : 1 (${needs} : 1) ${short(words(element))}` };
  }
}

function* head(doc: Document): Generator<Finding> {
  if (!doc.title.trim()) yield { label: L.noTitle, element: null, detail: "" };
  const description = doc.querySelector<HTMLMetaElement>("meta[name=description i]")?.content ?? "";
  if (!description.trim()) yield { label: L.noDescription, element: null, detail: "" };
}

function* feeds(doc: Document): Generator<Finding> {
  for (const fault of doc.querySelectorAll("td.bodycontent font[color='#fc5a5a']"))
    yield { label: L.feedFails, element: fault, detail: short(words(fault)) };
}

const heavy = 500 * 1024;

function* weights(doc: Document): Generator<Finding> {
  const entries = doc.defaultView!.performance.getEntriesByType("resource") as PerformanceResourceTiming[];
  const sizes = new Map(entries.map((entry) => [entry.name, entry.encodedBodySize]));
  for (const image of doc.querySelectorAll("img")) {
    const size = sizes.get(image.currentSrc) ?? 0;
    if (size > heavy)
      yield {
        label: L.heavyPicture,
        element: image,
        detail: `${Math.round(size / 1024)} KiB ${short(image.getAttribute("src") ?? "")}`,
      };
  }
}

const most = 200;

/** All that is found in a page that is shown for editing. */
export function check(doc: Document): Finding[] {
  const found: Finding[] = [];
  for (const rule of [links, pictures, headings, tables, feeds, head, weights, contrast]) {
    for (const finding of rule(doc)) if (found.length < most) found.push(finding);
  }
  return found;
}
