// Bodies that were copied, to be put elsewhere.
import { Store } from "../kit/store";

export interface Copied {
  pageId: number;
  nodeId: string;
  bodyId: number;
  title: string;
}

const key = "torvex.shelf";
const most = 8;

function read(): Copied[] {
  try {
    return JSON.parse(localStorage.getItem(key) ?? "[]") as Copied[];
  } catch {
    return [];
  }
}

export const shelf = new Store<Copied[]>(typeof localStorage === "undefined" ? [] : read());

export function putOnShelf(copied: Copied): void {
  const others = shelf.value.filter(({ pageId, bodyId }) => pageId !== copied.pageId || bodyId !== copied.bodyId);
  shelf.value = [copied, ...others].slice(0, most);
  localStorage.setItem(key, JSON.stringify(shelf.value));
}

export function takeOffShelf(copied: Copied): void {
  shelf.value = shelf.value.filter((each) => each !== copied);
  localStorage.setItem(key, JSON.stringify(shelf.value));
}

/** Feeds belong to a website and a language. */
export const sameWebsite = (one: string, other: string) => one.slice(0, 5) === other.slice(0, 5);
