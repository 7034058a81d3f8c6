/** The children of a page in their order. */

import { call } from "../api";
import { type SitemapNode, sitemapOf } from "../formats/sitemap";

export type Child = SitemapNode;

/** Below an empty node stands the first page of a website. */
export async function childrenOf(
  nodeId: string,
  site = nodeId.slice(0, 2),
  lang = nodeId.slice(3, 5),
  signal?: AbortSignal,
): Promise<Child[]> {
  return sitemapOf(
    await call("cManager.getSitemap", { site, lang, startNode: nodeId, flag: 1 }, signal ? { signal } : {}),
  );
}
