/** Which tags a place of a template can take, and what is written there for each. No DOM. */

import { TAG_NAMES, type TagName } from "./tag-names";
import { openBlocks } from "./template-tags";

export type Side = "base" | "content";

/** What is typed where the cursor stands. */
export interface TypedTag {
  /** Where that begins which is replaced, and where it ends. */
  readonly from: number;
  readonly to: number;
  /** Where the name begins. */
  readonly nameFrom: number;
  readonly name: string;
  /** `<!--!` stands before it. */
  readonly isOpened: boolean;
  /** `!-->` stands behind it. */
  readonly isClosed: boolean;
}

export interface TagChoice {
  readonly label: string;
  /** As it is shown, where that isn't the label. */
  readonly shown?: string;
  /** What is known of it by its name; nothing of a block that is the template's own. */
  readonly of?: TagName;
  readonly number?: number;
  readonly first: string;
  /** What stands behind the cursor. */
  readonly last: string;
}

const OPENING = "<!--!";
const CLOSING = "!-->";
/** The longest name with its opening is far shorter. */
const REACH = 200;

/** Whether a tag begins before the cursor. One that is asked for may stand anywhere. */
export function typedAt(source: string, at: number, isAsked: boolean): TypedTag | undefined {
  const before = source.slice(Math.max(0, at - REACH), at);
  const [opened, name = ""] = /<!--!([\w()]*)$/.exec(before) ?? /<([\w(]*)$/.exec(before) ?? [];
  if (opened !== undefined) {
    const behind = /^([\w()]*)!-->/.exec(source.slice(at, at + REACH));
    const isOpened = opened.startsWith(OPENING);
    const isClosed = isOpened && !!behind;
    const to = isClosed ? at + behind[0].length : at;
    return { from: at - opened.length, to, nameFrom: at - name.length, name, isOpened, isClosed };
  }
  const [begun] = /<!-{0,2}$/.exec(before) ?? [];
  if (!begun && !isAsked) return undefined;
  return { from: at - (begun?.length ?? 0), to: at, nameFrom: at, name: "", isOpened: false, isClosed: false };
}

/** The first number that no tag of that name has. */
function freeNumber(source: string, name: string, joint: string): number {
  const used = new Set(
    [...source.matchAll(new RegExp(`<!--!${name}${joint}(\\d{1,4})(?:_start)?!-->`, "gi"))].map(([, n]) => Number(n)),
  );
  let number = 1;
  while (used.has(number)) ++number;
  return number;
}

const tagOf = (name: string): string => `${OPENING}${name}${CLOSING}`;

function choicesOf(of: TagName, name: string, isClosed: boolean, number?: number): TagChoice[] {
  const choices: TagChoice[] = [];
  if (of.form !== "block") choices.push({ label: name, of, number, first: tagOf(name), last: "" });
  if (of.form !== "tag")
    choices.push({
      label: `${name}_start`,
      shown: `${name}_start … end`,
      of,
      number,
      first: tagOf(`${name}_start`),
      // Where a tag is only given another name, its block has an end already.
      last: isClosed ? "" : tagOf(`${name}_end`),
    });
  return choices;
}

/** Numbers that are known are offered for tags that must have one, else the first that is free. */
function numbersOf(source: string, { name, joint = "_" }: TagName, known: readonly number[]): readonly number[] {
  return name === "torvex_newsflash" && known.length ? known : [freeNumber(source, name, joint)];
}

/** Typed behind a plain "<", a name is told by how it or what follows its family begins: most often HTML is meant. */
const mayBeMeant = (label: string, typed: string): boolean => {
  const [name, start] = [label.toLowerCase(), typed.toLowerCase()];
  return name.startsWith(start) || name.slice(name.indexOf("_") + 1).startsWith(start);
};

/** Ends of blocks that are open come first, then the tags in the order of their list. */
export function choicesAt(
  source: string,
  typed: TypedTag,
  side: Side,
  newsflashes: readonly number[] = [],
): TagChoice[] {
  const ends = openBlocks(source, typed.from).map((name): TagChoice => {
    const of = TAG_NAMES.find((one) => one.name.toLowerCase() === name.toLowerCase());
    return { label: `${name}_end`, of, first: tagOf(`${name}_end`), last: "" };
  });
  const others = TAG_NAMES.filter(({ only }) => !only || only === side).flatMap((of) => {
    const plain = of.number === "must" ? [] : choicesOf(of, of.name, typed.isClosed);
    if (!of.number) return plain;
    const numbered = numbersOf(source, of, newsflashes).flatMap((number) =>
      choicesOf(of, `${of.name}${of.joint ?? "_"}${number}`, typed.isClosed, number),
    );
    return [...plain, ...numbered];
  });
  const all = [...ends, ...others];
  return typed.isOpened || !typed.name ? all : all.filter(({ label }) => mayBeMeant(label, typed.name));
}
