/** What the screens of a page know of it: its design, its live twin, and what its reader may do. */

import { Batch, call, isProblem } from "../api";
import { type PageState as PageInShell, workplace } from "../shell/workplace";
import {
  type EditRights,
  NO_RIGHTS,
  type PageState,
  type PageStatus,
  readRights,
  readStatus,
  stateOf,
} from "./model/status";
import { titleFrom } from "./model/workflow";

export interface LiveTwin {
  readonly title: string;
  readonly online: boolean;
  readonly publisher: string;
  readonly publishingDate: string | null;
  readonly onlineFrom: string;
  readonly onlineTo: string;
}

export interface PageFacts {
  readonly pageId: number;
  readonly nodeId: string;
  readonly site: string;
  readonly lang: string;
  readonly title: string;
  readonly parameters: string;
  readonly status: PageStatus;
  readonly state: PageState;
  readonly rights: EditRights;
  readonly editor: string;
  readonly editingDate: string | null;
  readonly holder: string;
  readonly holderSince: string | null;
  readonly approvedBy: string;
  readonly markedBy: string;
  readonly onlineFrom: string;
  readonly onlineTo: string;
  readonly templateId: number;
  readonly live: LiveTwin | undefined;
}

const DESIGN = [
  "pgExists",
  "pgPageId",
  "pgNodeId",
  "pgTitle",
  "pgEditor",
  "pgEditingDate",
  "pgLockedBy",
  "pgLockingDate",
  "pgApprovedBy",
  "pgDeletedBy",
  "pgOnlineFrom",
  "pgOnlineTo",
  "pgTemplateId",
] as const;

const LIVE = [
  "pgExists",
  "pgTitle",
  "pgOnline",
  "pgPublisher",
  "pgPublishingDate",
  "pgOnlineFrom",
  "pgOnlineTo",
] as const;

/** A page by its number or node; nothing where there is none. */
export async function loadPage(pageIdent: string, signal?: AbortSignal): Promise<PageFacts | undefined> {
  const { site, lang } = workplace.value;
  if (/^\d+$/.test(pageIdent)) {
    // A number doesn't tell where the page stands. Most are in the website where one works, and need no question more.
    const page = await loadIn(site, lang, pageIdent, signal).catch(unlessGivenUp);
    if (page?.site === site && page.lang === lang) return page;
  }
  const nodeId = /^\d+$/.test(pageIdent) ? await nodeOf(Number(pageIdent), signal) : pageIdent;
  return nodeId === "" ? undefined : loadIn(nodeId.slice(0, 2), nodeId.slice(3, 5), nodeId, signal);
}

function unlessGivenUp(error: unknown): undefined {
  if (!isProblem(error) || error.offline) throw error;
}

async function loadIn(
  site: string,
  lang: string,
  pageIdent: string,
  signal?: AbortSignal,
): Promise<PageFacts | undefined> {
  const batch = new Batch();
  batch.do("cManager.getPage", { pageIdent, mode: "D" });
  const design = batch.get("cManager", ...DESIGN);
  const parameters = batch.do("cManager.getPageParameters", { pageIdent });
  const rights = batch.do("cManager.getLoginEditRights", { site, lang, pageIdent });
  batch.do("cManager.getPage", { pageIdent, mode: "L" });
  const live = batch.get("cManager", ...LIVE);
  await batch.run(signal ? { signal } : {});
  const status = readStatus(parameters.value);
  if (!design.value.pgExists || !status) return undefined;
  const page = design.value;
  return {
    pageId: page.pgPageId,
    nodeId: page.pgNodeId,
    site: page.pgNodeId.slice(0, 2),
    lang: page.pgNodeId.slice(3, 5),
    title: titleFrom(page.pgTitle),
    parameters: parameters.value,
    status,
    state: stateOf(status),
    rights: readRights(rights.value),
    editor: page.pgEditor,
    editingDate: page.pgEditingDate,
    holder: page.pgLockedBy,
    holderSince: page.pgLockingDate,
    approvedBy: page.pgApprovedBy,
    markedBy: page.pgDeletedBy,
    onlineFrom: page.pgOnlineFrom,
    onlineTo: page.pgOnlineTo,
    templateId: page.pgTemplateId,
    live: live.value.pgExists
      ? {
          title: titleFrom(live.value.pgTitle),
          online: live.value.pgOnline === 1,
          publisher: live.value.pgPublisher,
          publishingDate: live.value.pgPublishingDate,
          onlineFrom: live.value.pgOnlineFrom,
          onlineTo: live.value.pgOnlineTo,
        }
      : undefined,
  };
}

/** A page as the tree, the panels and the commands know it. */
export const pageStateOf = (page: PageFacts): PageInShell => ({
  pageId: page.pageId,
  nodeId: page.nodeId,
  site: page.site,
  lang: page.lang,
  title: page.title,
  type: page.status.kind,
  state: page.state,
  holder: page.status.held ? page.holder : "",
  heldByMe: page.status.held && !page.status.heldByOther,
  heldByOther: page.status.heldByOther,
  rights: page.rights,
  on: page.live?.online ?? null,
});

async function nodeOf(pageId: number, signal?: AbortSignal): Promise<string> {
  return call("cManager.getNodeId", { pageId }, signal ? { signal } : {});
}

/** What a login may do for a page that it isn't looking at. */
export async function rightsFor(nodeId: string): Promise<EditRights> {
  if (nodeId.length < 5) return NO_RIGHTS;
  const flags = await call("cManager.getLoginEditRights", {
    site: nodeId.slice(0, 2),
    lang: nodeId.slice(3, 5),
    pageIdent: nodeId,
  });
  return readRights(flags);
}
