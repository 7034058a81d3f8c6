import { patiently } from "../api/patience";
import { numbers } from "./formats";
import type { Places } from "./labels.gen";
import { core } from "./names/core";
import { design } from "./names/design";
import { editor } from "./names/editor";
import { modules } from "./names/modules";
import { pages } from "./names/pages";
import { passwords } from "./names/passwords";
import { rest } from "./names/rest";
import { rights } from "./names/rights";
import { running } from "./names/running";
import { screens } from "./names/screens";
import { secondFactor } from "./names/second-factor";
import { templateTags } from "./names/template-tags";
import { visitorsFactor } from "./names/visitors-factor";

/** The words of the interface by name: their numbers in the vocabulary. */
export const L = {
  ...core,
  ...design,
  ...editor,
  ...modules,
  ...pages,
  ...passwords,
  ...rest,
  ...rights,
  ...running,
  ...screens,
  ...secondFactor,
  ...templateTags,
  ...visitorsFactor,
} as const;

export type Label = (typeof L)[keyof typeof L];
type PlacesOf<N> = N extends keyof Places
  ? [places: Record<Places[N], string | number>]
  : [places?: Record<string, string | number>];

let words: Record<string, string> = {};
let language = "en";
let plurals = new Intl.PluralRules(language);
const listeners = new Set<() => void>();

/** The text of a label, with its places filled: `t(L.heldBy, { name })`. */
export function t<N extends Label>(label: N, ...[places]: PlacesOf<N>): string {
  const text = words[label] ?? "";
  return places ? filled(text, places) : text;
}

const filled = (text: string, places: Record<string, string | number>) =>
  text.replace(/\{(\w+)\}/g, (whole, name: string) => (name in places ? String(places[name]) : whole));

/** One of two labels, as the language counts: `plural(n, L.onePage, L.manyPages)`. Both may have the place {count}. */
export function plural(count: number, one: Label, other: Label, places: Record<string, string | number> = {}): string {
  const label = plurals.select(count) === "one" ? one : other;
  return filled(words[label] ?? "", { count: number(count), ...places });
}

export const interfaceLanguage = () => language;

/** How dates and numbers are written: English ones with the day ahead, and hours to 24. */
export const locale = () => (language === "en" ? "en-GB" : language);

export const number = (value: number, options?: Intl.NumberFormatOptions) => numbers(locale(), options).format(value);

/** Calls back when the words are another language's. */
export function onWords(listener: () => void): () => void {
  listeners.add(listener);
  return () => listeners.delete(listener);
}

/** Takes words as they are. */
export function setWords(lang: string, texts: Record<string, string>): void {
  words = texts;
  language = lang;
  plurals = new Intl.PluralRules(lang);
  if (typeof document !== "undefined") document.documentElement.lang = lang;
  for (const listener of listeners) listener();
}

const areTexts = (given: unknown): given is Record<string, string> =>
  typeof given === "object" && given !== null && Object.values(given).every((text) => typeof text === "string");

/** All words of a language as the server has them; nothing is shown in them yet. */
export async function fetchWords(lang: string): Promise<Record<string, string>> {
  const address = `/torvex/api/labels?lang=${encodeURIComponent(lang)}`;
  const response = await patiently(() => fetch(address, { credentials: "same-origin" }));
  if (!response.ok) throw new Error(`labels: ${response.status}`);
  const texts: unknown = await response.json();
  if (!areTexts(texts) || Object.keys(texts).length === 0) throw new Error("labels: no words");
  return texts;
}
