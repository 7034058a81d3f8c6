import type { TemplateResult } from "lit";
import type { IconName } from "../kit/icon";
import { Store } from "../kit/store";
import type { Place } from "./address";
import type { PageState } from "./workplace";

/** Things that put themselves in, in the order of their numbers. */
class Registry<T extends { order?: number }> extends Store<readonly T[]> {
  constructor() {
    super([]);
  }

  register(...things: T[]): void {
    this.value = [...this.value, ...things].sort((a, b) => (a.order ?? 100) - (b.order ?? 100));
  }
}

interface Loaded {
  /** Fetches what it needs, once, before it is drawn. */
  load?: () => Promise<unknown>;
}

/** What the centre shows at an address. */
export interface Screen extends Loaded {
  order?: number;
  /** A path, in small letters, or a pattern of one. */
  path: string | RegExp;
  /** The entry of the administration menu that it belongs to, where that isn't the one with its address. */
  entry?: number;
  title: (place: Place) => string;
  render: (place: Place) => TemplateResult;
}

/** A tab of the right side. */
export interface Panel extends Loaded {
  id: string;
  order?: number;
  label: () => string;
  icon?: IconName;
  when: (place: Place, page: PageState | null) => boolean;
  count?: (page: PageState | null) => number;
  render: (place: Place, page: PageState | null) => TemplateResult;
}

/** A tab of the left side. */
export interface Side extends Loaded {
  id: string;
  order?: number;
  label: () => string;
  icon: IconName;
  when?: () => boolean;
  render: () => TemplateResult;
}

/** Something that can be done to a page: in the tree's menu, the page's menu and Ctrl+K. */
export interface PageAction {
  id: string;
  order?: number;
  label: (page: PageState) => string;
  icon?: IconName;
  /** As it is shown, and pressed in the tree: "F2", "Del", "Alt+ArrowUp". */
  key?: string;
  danger?: boolean;
  /** Whether this login can ever do it here; else it isn't shown. */
  when: (page: PageState) => boolean;
  /** Why it can't be done to this page now; empty when it can. */
  disabled?: (page: PageState) => string;
  run: (page: PageState) => unknown;
}

/** Something that can be done anywhere: in Ctrl+K, and by its key. */
export interface Command {
  id: string;
  order?: number;
  label: () => string;
  icon?: IconName;
  /** "Ctrl+Shift+H". */
  key?: string;
  when?: () => boolean;
  run: () => unknown;
}

/** A note in the foot: what is being sent, say. */
export interface FootNote {
  id: string;
  order?: number;
  render: () => TemplateResult;
}

export const screens = new Registry<Screen>();
export const panels = new Registry<Panel>();
export const sides = new Registry<Side>();
export const actions = new Registry<PageAction>();
export const commands = new Registry<Command>();
export const footNotes = new Registry<FootNote>();

export function screenAt({ path }: Pick<Place, "path">): Screen | undefined {
  const small = path.toLowerCase();
  return screens.value.find((screen) =>
    typeof screen.path === "string" ? screen.path === small : screen.path.test(small),
  );
}

export type MovePlace = "before" | "after" | "into";

/** What moves and copies pages without asking: for dragging, Ctrl+X, Ctrl+C and Ctrl+V, Alt+Up and Alt+Down. */
export interface Moves {
  move: (fromNode: string, toNode: string, place: MovePlace) => Promise<unknown>;
  copy: (fromNode: string, toNode: string, place: MovePlace) => Promise<unknown>;
  step: (node: string, direction: "up" | "down") => Promise<unknown>;
  /** Why a place takes no page; empty when it does. */
  refuses: (fromNode: string, toNode: string, place: MovePlace) => string;
}

export const moves = new Store<Moves | null>(null);
