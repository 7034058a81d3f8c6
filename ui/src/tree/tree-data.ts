import { call } from "../api";
import { isProblem } from "../api/problem";
import { sitemapOf } from "../formats/sitemap";
import { Store } from "../kit/store";
import { place } from "../shell/address";
import { type Change, onPagesChanged, websiteAt, workplace } from "../shell/workplace";
import { TreeModel } from "./model";

/** The tree of the website where one works, and what is being fetched of it. */
interface TreeState {
  model: TreeModel;
  site: string;
  lang: string;
  phase: "loading" | "ready" | "closed" | "failed";
  fault: string;
  loading: ReadonlySet<string>;
  /** Counts up with each change of the model. */
  turn: number;
}

const empty = (site = "", lang = ""): TreeState => ({
  model: new TreeModel(),
  site,
  lang,
  phase: "loading",
  fault: "",
  loading: new Set(),
  turn: 0,
});

export const tree = new Store<TreeState>(empty());

const asksAgainAfter = 2000;
let asking: AbortController | undefined;

const changed = () => tree.patch({ turn: tree.value.turn + 1 });
const isStill = (site: string, lang: string) => tree.value.site === site && tree.value.lang === lang;

async function ofNode(node: string): Promise<void> {
  const { site, lang, model } = tree.value;
  const text = await call("cManager.getSitemap", { site, lang, startNode: node, flag: 1 });
  if (isStill(site, lang)) model.takeBranch(node, sitemapOf(String(text)));
}

/** Others move pages here: the server asks again by itself until it may come in. */
function waitUntilOpen(site: string, lang: string): void {
  tree.patch({ phase: "closed" });
  workplace.patch({ closed: true });
  setTimeout(() => isStill(site, lang) && void load(), asksAgainAfter);
}

export async function load(): Promise<void> {
  const { site, lang, model } = tree.value;
  if (!site) return;
  asking?.abort();
  asking = new AbortController();
  const { signal } = asking;
  try {
    const nodes = sitemapOf(String(await call("cManager.getSitemap", { site, lang }, { signal })));
    if (!isStill(site, lang)) return;
    model.takeAll(nodes);
    workplace.patch({ closed: false });
    tree.patch({ phase: "ready", fault: "" });
    changed();
    await reopen();
  } catch (error) {
    if (!isStill(site, lang) || signal.aborted) return;
    if (isProblem(error) && error.code === "-1") return waitUntilOpen(site, lang);
    tree.patch({ phase: "failed", fault: isProblem(error) ? error.message : String(error) });
  }
}

/** Branches that were open stay so when the tree is fetched anew. */
async function reopen(): Promise<void> {
  const { model } = tree.value;
  const unknown = [...model.expanded].filter((nodeId) => model.isUnknown(nodeId));
  if (unknown.length === 0) return;
  await Promise.all(unknown.map(ofNode));
  changed();
}

function busy(nodeId: string, on: boolean): void {
  const loading = new Set(tree.value.loading);
  if (on) loading.add(nodeId);
  else loading.delete(nodeId);
  tree.patch({ loading });
}

/** Opens a branch, and fetches it first when it isn't known. */
export async function expand(nodeId: string): Promise<void> {
  const { model } = tree.value;
  model.expanded.add(nodeId);
  if (!model.isUnknown(nodeId)) return changed();
  busy(nodeId, true);
  try {
    await ofNode(nodeId);
  } finally {
    busy(nodeId, false);
    changed();
  }
}

export function collapse(nodeId: string): void {
  tree.value.model.expanded.delete(nodeId);
  changed();
}

/** Opens all that stands above a node, so that it shows. */
export async function reveal(nodeId: string): Promise<void> {
  const { model } = tree.value;
  for (const above of TreeModel.above(nodeId)) {
    if (model.node(above)) await expand(above);
  }
}

async function follow(change: Change): Promise<void> {
  const { model } = tree.value;
  if (change === "all") return load();
  const nodes = [...(change.nodeIds ?? []), ...change.pageIds.map((pageId) => model.page(pageId)?.nodeId ?? "")].filter(
    Boolean,
  );
  const branches = new Set(nodes.map((nodeId) => nodeId.slice(0, -3)));
  const own = [...branches].filter((nodeId) => model.node(nodeId));
  if (nodes.some((nodeId) => nodeId.length <= 5)) return load();
  await Promise.all(own.map(ofNode));
  changed();
}

function work(): void {
  const { site, lang } = workplace.value;
  if (site === tree.value.site && lang === tree.value.lang) return;
  tree.value = empty(site, lang);
  // A tree where one may do nothing isn't given out.
  if (websiteAt(site, lang)) void load();
  else tree.patch({ phase: "ready" });
}

let started = false;

/** Fetches the tree, and does so again where one works next. */
export function startTree(): void {
  if (started) return;
  started = true;
  workplace.watch(work);
  onPagesChanged((change) => void follow(change));
  work();
}

export const shownPage = () => Number(place.value.params.get("pageId")) || 0;
