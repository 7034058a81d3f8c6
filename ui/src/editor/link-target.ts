/** What a link can lead to, wherever it was found. */
export interface LinkTarget {
  kind: string;
  pageId: number;
  siteId: string;
  lang: string;
  nodeId: string;
  title: string;
  path: string;
  isLive: boolean;
}
