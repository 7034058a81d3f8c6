import { call } from "../api";
import { isProblem } from "../api/problem";
import { toast } from "../kit/tvx-toast";
import { L, t } from "../labels";
import { go, pageAddress, settled } from "./address";
import { asked, type Notice, takenOver } from "./presence";
import { currentPage, pagesChanged } from "./workplace";

const told = new Set<string>();

/** Each once, however often it is repeated. */
function isNew({ loginId, pageId, since }: Notice, kind: string): boolean {
  const key = `${kind}.${loginId}.${pageId}.${since}`;
  if (told.has(key)) return false;
  told.add(key);
  return true;
}

/** Saves what is being typed, then lets go of the page. */
async function giveAway({ pageId }: Notice): Promise<void> {
  if (currentPage.value?.pageId === pageId && !(await settled())) return;
  try {
    await call("cManager.checkIn", { pageIdent: String(pageId) });
    pagesChanged({ pageIds: [pageId] });
  } catch (error) {
    toast(isProblem(error) ? error.message : String(error), { kind: "danger" });
  }
}

export function startNotices(): void {
  asked.watch((notice) => {
    if (!notice || !isNew(notice, "asked")) return;
    const { name, text } = notice;
    toast(t(L.asksForPage, { name, title: text }), {
      kind: "warn",
      stays: true,
      action: { label: t(L.checkIn), run: () => giveAway(notice) },
    });
  });
  takenOver.watch((notice) => {
    if (!notice || !isNew(notice, "takenOver")) return;
    const open = { label: t(L.open), run: () => go(pageAddress(notice.pageId)) };
    toast(t(L.pageTakenOver, { name: notice.name }), {
      kind: "danger",
      ...(currentPage.value?.pageId === notice.pageId ? {} : { action: open }),
    });
  });
}
