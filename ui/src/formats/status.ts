/** Where a page stands, as one word. */
export type PageWord = "new" | "changed" | "approved" | "marked" | "live";

export interface Statuses {
  /** "N" never changed since it was made, "M" changed, "P" as visitors have it. */
  edit: string;
  locked: boolean;
  marked: boolean;
  approved: boolean;
}

/** The four of a workflow step's answer: "M100". Null for anything else, such as a code. */
export function statusesOf(text: string): Statuses | null {
  const parts = /^([NMP])([01])([01])([01])$/.exec(text);
  if (!parts) return null;
  const [, edit, locked, marked, approved] = parts;
  return { edit: edit!, locked: locked === "1", marked: marked === "1", approved: approved === "1" };
}

export interface PageParameters extends Statuses {
  /** "P" page, "A" application, "F" folder, "N" without a setup yet, "S" system branch. */
  type: string;
  heldByOther: boolean;
}

/** "PM1000": type, the four statuses and whether another login holds it. Null when there is no such page. */
export function parametersOf(text: string): PageParameters | null {
  const statuses = statusesOf(text.slice(1, 5));
  if (!statuses || text.length !== 6) return null;
  return { type: text[0]!, ...statuses, heldByOther: text[5] === "1" };
}

/** The word for statuses: a mark counts more than an approval, an approval more than a change. */
export function wordOf({ edit, marked, approved }: Omit<Statuses, "locked">): PageWord {
  if (marked) return "marked";
  if (approved) return "approved";
  if (edit === "M") return "changed";
  return edit === "N" ? "new" : "live";
}

export interface EditFlags {
  onOff: boolean;
  move: boolean;
  publish: boolean;
  approve: boolean;
  edit: boolean;
}

/** "11011": switching on and off, moving, publishing, approving, editing. */
export function editFlagsOf(text: string): EditFlags {
  const has = (place: number) => text[place] === "1";
  return { onOff: has(0), move: has(1), publish: has(2), approve: has(3), edit: has(4) };
}

/** Pages as a list that operations take, and what they leave of it. */
export const pageList = (pages: readonly (string | number)[]) => pages.join(",");
export const pagesIn = (list: string) => list.split(",").filter((page) => page !== "");
