import { pagesChanged } from "../shell/workplace";

/** Tells whoever shows a page that it is another by now. */
export const changed = (...pages: readonly { readonly pageId: number; readonly nodeId: string }[]): void =>
  pagesChanged({ pageIds: pages.map(({ pageId }) => pageId), nodeIds: pages.map(({ nodeId }) => nodeId) });

/** For moves and removals: nodes of others change with them. */
export const allChanged = (): void => pagesChanged("all");
