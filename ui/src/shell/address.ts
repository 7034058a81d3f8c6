import { Store } from "../kit/store";

/** Where the author is: the address of the document without its origin. */
export interface Place {
  path: string;
  params: URLSearchParams;
}

const read = (): Place =>
  typeof location === "undefined"
    ? { path: "/torvex/", params: new URLSearchParams() }
    : { path: location.pathname, params: new URLSearchParams(location.search) };

export const place = new Store<Place>(read());

type Guard = () => boolean | Promise<boolean>;
const guards = new Set<Guard>();

/** Asks before the centre shows another place; false keeps what is there. Gives back what takes the guard away. */
export function beforeLeaving(guard: Guard): () => void {
  guards.add(guard);
  return () => guards.delete(guard);
}

/** Lets what is being typed come to rest: saved, or kept by its author's wish. False when it must not be left. */
export async function settled(): Promise<boolean> {
  for (const guard of [...guards]) if (!(await guard())) return false;
  return true;
}

/** Addresses that are documents of their own. */
const others = /^\/torvex\/(api\/|ui\/|images\/|view\.asp|login$|logout$|error\.asp)|\/[^/]+\.(?!asp$)[a-z0-9]+$/i;

export const isOurs = (url: URL) =>
  url.origin === location.origin && /^\/torvex\//i.test(url.pathname) && !others.test(url.pathname);

/** What an address can name: a page, or a record of the administration. */
const named = [
  "pageId",
  "login",
  "role",
  "group",
  "user",
  "server",
  "contentTemplate",
  "baseTemplate",
  "stylesheet",
  "application",
  "htmlFeed",
  "xmlFeed",
];

const isSamePlace = (url: URL) =>
  url.pathname === location.pathname &&
  named.every((name) => url.searchParams.get(name) === place.value.params.get(name));

/** Goes to another place of the interface, without loading a document. */
export async function go(address: string, { replace = false } = {}): Promise<boolean> {
  const url = new URL(address, location.href);
  if (!isOurs(url)) {
    location.assign(url);
    return true;
  }
  if (!isSamePlace(url) && !(await settled())) return false;
  history[replace ? "replaceState" : "pushState"]({}, "", url);
  place.value = read();
  return true;
}

/** Changes the query of the present place: filters and open tabs live there. An empty value takes a name out. */
export function setQuery(values: Record<string, string>, { push = false } = {}): void {
  const url = new URL(location.href);
  for (const [name, value] of Object.entries(values)) {
    if (value === "") url.searchParams.delete(name);
    else url.searchParams.set(name, value);
  }
  history[push ? "pushState" : "replaceState"]({}, "", url);
  place.value = read();
}

export const pageAddress = (pageId: number | string) => `/torvex/page.asp?pageId=${pageId}`;

async function back(): Promise<void> {
  const before = place.value;
  if (await settled()) place.value = read();
  else history.pushState({}, "", `${before.path}${before.params.size ? `?${before.params}` : ""}`);
}

function followed(event: MouseEvent): void {
  if (event.defaultPrevented || event.button !== 0 || event.ctrlKey || event.metaKey || event.shiftKey || event.altKey)
    return;
  const link = (event.composedPath() as Element[]).find((node) => node instanceof HTMLAnchorElement) as
    | HTMLAnchorElement
    | undefined;
  if (!link || link.target || link.hasAttribute("download") || !isOurs(new URL(link.href))) return;
  event.preventDefault();
  void go(link.href);
}

export function startAddresses(): void {
  window.addEventListener("popstate", () => void back());
  document.addEventListener("click", followed);
}
