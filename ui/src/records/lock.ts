/** Who may change a record, and whether somebody has. Items are those of `lockItem`. */

import { call } from "../api";
import { Problem } from "../api/problem";

/** Who may change a record: this session, or why it can't. */
export interface Hold {
  readonly state: "held" | "other" | "noRight" | "gone";
  readonly name: string;
}

export async function hold(item: string, id: number): Promise<Hold> {
  const [line] = (await call("registers.open", { item, id: String(id) })) as Hold[];
  return line ?? { state: "gone", name: "" };
}

export const letGo = (item: string, id: number): Promise<unknown> =>
  call("cManager.unlockItem", { item, itemId: String(id) }).catch(() => {});

/** What `expect` asked for isn't there any more. */
export const isChanged = (error: unknown): boolean => error instanceof Problem && error.status === 412;

/** Whether this login may change what an entry of the administration holds. */
export const mayChange = (entry: number, site = "", lang = ""): Promise<boolean> =>
  call("cManager.checkAdvRights", { flag: "edit", advId: entry, site, lang });
