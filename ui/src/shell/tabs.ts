// What the tabs of one author tell each other. They tell it without its text: that stands in the drafts of the browser.
import { workplace } from "./workplace";

/** This tab among those of the browser. */
export const tab = Math.random().toString(36).slice(2, 10);

export interface TabMessage {
  /**
   * `who` has a body of this page open? One of it was `opened`, `closed` or `saved`; this tab `asks` for one; it was
   * `handed` over.
   */
  kind: "who" | "opened" | "closed" | "saved" | "asks" | "handed";
  loginId: number;
  pageId: number;
  bodyId: number;
}

let channel: BroadcastChannel | undefined;

function opened(): BroadcastChannel | undefined {
  if (typeof BroadcastChannel === "function") channel ??= new BroadcastChannel("torvex.tabs");
  return channel;
}

const me = () => workplace.value.login?.loginId ?? 0;

export function tellTabs(kind: TabMessage["kind"], pageId: number, bodyId = 0): void {
  opened()?.postMessage({ kind, loginId: me(), pageId, bodyId } satisfies TabMessage);
}

/** Hears what other tabs of this login say. Gives back what ends it. */
export function hearTabs(listener: (message: TabMessage) => void): () => void {
  const heard = ({ data }: MessageEvent<TabMessage>) => {
    if (data.loginId === me()) listener(data);
  };
  const one = opened();
  one?.addEventListener("message", heard);
  return () => one?.removeEventListener("message", heard);
}
