// What was typed on a page and isn't saved.
import { sha256 } from "../api";
import { type Draft, draftsOf } from "../shell/drafts";

export type { Draft };

const time = (draft: Draft) => new Date(draft.moment).getTime();

/** The newest of each body. */
export async function newestDrafts(pageId: number): Promise<Draft[]> {
  const newest = new Map<number, Draft>();
  for (const draft of (await draftsOf(pageId)).sort((a, b) => time(a) - time(b))) newest.set(draft.bodyId, draft);
  return [...newest.values()];
}

/** How a state of a text is named; "" where the browser can't tell it. */
export const stateOf = (text: string): Promise<string> => (crypto.subtle ? sha256(text) : Promise.resolve(""));
