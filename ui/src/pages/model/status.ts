/** What a page's status columns say, and what its reader may do with it. */

import { type EditFlags, editFlagsOf, type PageWord, parametersOf, wordOf } from "../../formats/status";

export type EditStatus = "N" | "M" | "P";
export type PageKind = "P" | "A" | "F";
export type PageState = PageWord;
export type EditRights = Readonly<EditFlags>;

export interface PageStatus {
  readonly kind: PageKind;
  readonly edit: EditStatus;
  readonly held: boolean;
  readonly heldByOther: boolean;
  readonly marked: boolean;
  readonly approved: boolean;
}

export const NO_RIGHTS: EditRights = editFlagsOf("");

/** Reads what `getPageParameters` gives, as "PM1000"; nothing for a page that isn't there. */
export function readStatus(parameters: string): PageStatus | undefined {
  const read = parametersOf(parameters);
  if (!read) return undefined;
  const { type, edit, locked, heldByOther, marked, approved } = read;
  return { kind: type as PageKind, edit: edit as EditStatus, held: locked, heldByOther, marked, approved };
}

/** Reads what `getLoginEditRights` gives. */
export const readRights = (flags: string): EditRights => editFlagsOf(flags);

export const stateOf = (status: PageStatus): PageState => wordOf(status);
