// What can be done to a body as a whole.
import { call, isProblem, type Problem } from "../api";
import { type MenuEntry, rule, toast } from "../kit";
import { L, t } from "../labels";
import { type Doing, failed, nextMove, tellRefusal } from "../pages/actions";
import { currentPage } from "../shell/workplace";
import { stateOf } from "./drafts";
import { BodySession, loadBody, tellChange } from "./session";
import { type Copied, putOnShelf, sameWebsite, shelf, takeOffShelf } from "./shelf";
import type { TvxPageFrame } from "./tvx-page-frame";
import type { BodyPlace } from "./view/places";

type NextStep = (problem: Problem) => ReturnType<typeof nextMove>;

/** Tells what refused it, with the next step, and what the page is by now. */
function refused(frame: TvxPageFrame, error: unknown, step: NextStep): void {
  if (isProblem(error)) tellRefusal(error, step(error));
  else failed(error);
  tellChange(frame.page);
}

async function changedBy(
  frame: TvxPageFrame,
  work: () => Promise<unknown>,
  again: () => unknown,
  step: NextStep = (problem) => nextMove(problem, doingOn(frame), again),
): Promise<boolean> {
  try {
    await work();
  } catch (error) {
    refused(frame, error, step);
    return false;
  }
  tellChange(frame.page);
  frame.reload();
  return true;
}

async function openSource(frame: TvxPageFrame, { bodyId }: BodyPlace): Promise<void> {
  if (frame.editing?.bodyId === bodyId) return frame.editing.source();
  if (!(await frame.leave())) return;
  const source = await loadBody(frame.page, bodyId);
  const { sourceDialog } = await import("./source-dialog");
  await sourceDialog(frame, new BodySession(frame.page, bodyId, source, await stateOf(source)), source);
}

const kindNumber = { text: 1, html: 2, xml: 3 };

async function clear(frame: TvxPageFrame, place: BodyPlace): Promise<void> {
  if (!(await frame.leave())) return;
  const { bodyId, kind, feedId } = place;
  const pageIdent = String(frame.pageId);
  const source = kind === "text" ? await loadBody(frame.page, bodyId) : "";
  const work = () => call("cManager.clearBody", { pageIdent, bodyId });
  if (!(await changedBy(frame, work, () => clear(frame, place)))) return;
  const back = async () => {
    if (kind === "text") await call("cManager.saveBody", { pageIdent, bodyId, bodyContent: source });
    else await call("cManager.saveBodySetup", { pageIdent, bodyId, bodyType: kindNumber[kind], feedId });
  };
  const undo = (): Promise<boolean> => changedBy(frame, back, undo);
  toast(t(L.bodyCleared, { number: bodyId }), { undo });
}

function copy(frame: TvxPageFrame, { bodyId }: BodyPlace): void {
  putOnShelf({ ...frame.page, bodyId, title: currentPage.value?.title ?? frame.nodeId });
  toast(t(L.onTheShelf, { number: bodyId }));
}

async function paste(frame: TvxPageFrame, place: BodyPlace, from: Copied): Promise<void> {
  if (!(await frame.leave())) return;
  const { bodyId } = place;
  const work = () =>
    call("cManager.pasteBody", {
      pageIdentFrom: String(from.pageId),
      pageIdentTo: String(frame.pageId),
      bodyIdFrom: from.bodyId,
      bodyIdTo: bodyId,
      modeFrom: "D",
    });
  const again = () => paste(frame, place, from);
  const step: NextStep = (problem) =>
    problem.kind === "source-gone"
      ? { label: t(L.takeOffShelf), run: () => takeOffShelf(from) }
      : nextMove(problem, doingOn(frame), again);
  if (await changedBy(frame, work, again, step))
    toast(t(sameWebsite(from.nodeId, frame.nodeId) ? L.pastedHere : L.pastedWithoutFeeds));
}

/** The page of a frame, as the steps after a refusal want it. */
export function doingOn({ page }: TvxPageFrame): Doing {
  const known = currentPage.value;
  return known?.pageId === page.pageId ? { ...page, rights: known.rights } : page;
}

export function bodyMenu(frame: TvxPageFrame, place: BodyPlace): MenuEntry[] {
  const copyEntry: MenuEntry = { label: t(L.copyToShelf), icon: "copy", run: () => copy(frame, place) };
  if (!frame.editable) return [copyEntry];
  const text: MenuEntry[] =
    place.kind === "text"
      ? [
          { label: t(L.edit), icon: "pencil", run: () => void frame.edit(place.bodyId, "start", place) },
          {
            label: t(L.source),
            icon: "code",
            key: "Ctrl+Shift+H",
            run: () => void openSource(frame, place).catch(failed),
          },
        ]
      : [];
  const pastes = shelf.value
    .filter(({ pageId, bodyId }) => pageId !== frame.pageId || bodyId !== place.bodyId)
    .map(
      (from): MenuEntry => ({
        label: t(L.pasteHere, { title: from.title, number: from.bodyId }),
        icon: "clipboard-paste",
        run: () => void paste(frame, place, from),
      }),
    );
  return [
    ...text,
    {
      label: t(L.bodySetup),
      icon: "settings",
      run: () => void import("./setup-dialog").then(({ setupDialog }) => setupDialog(frame, place)),
    },
    rule,
    copyEntry,
    ...pastes,
    rule,
    { label: t(L.clearBody), icon: "trash-2", danger: true, run: () => void clear(frame, place) },
  ];
}
