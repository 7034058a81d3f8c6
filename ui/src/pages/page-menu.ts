/** All that can be done to a page besides the next step. */

import { type MenuEntry, rule } from "../kit/tvx-menu";
import { L, t } from "../labels";
import { actions } from "../shell/registry";
import { stepAtOnce, takeBack } from "./actions";
import { type PageFacts, pageStateOf } from "./data";
import { mayTakeBack, nextStep } from "./model/next-step";

/** Saves what was typed, then does it, unless that failed. */
type After = (run: () => unknown) => () => void;

export function pageMenu(page: PageFacts, saved: () => Promise<boolean>): MenuEntry[] {
  const after: After = (run) => () => void saved().then((is) => (is ? run() : undefined));
  const steps = stepEntries(page, after);
  return [...steps, ...(steps.length ? [rule] : []), ...registered(page, after)];
}

/** Less than the main button would do: a step on its own. */
function stepEntries(page: PageFacts, after: After): MenuEntry[] {
  const { steps } = nextStep(page.status, page.rights);
  const entries: MenuEntry[] = [];
  if (steps.length > 1 && steps[0] === "checkIn")
    entries.push({ label: t(L.checkIn), icon: "check", run: after(() => stepAtOnce(page, ["checkIn"])) });
  if (steps.includes("approve") && steps.includes("publish")) {
    const approving = steps.filter((step) => step !== "publish");
    entries.push({
      label: t(L.approveOnly),
      icon: "clipboard-check",
      run: after(() => stepAtOnce(page, approving)),
    });
  }
  if (mayTakeBack(page.status, page.rights))
    entries.push({ label: t(L.takeBackApproval), icon: "undo-2", run: () => void takeBack(page) });
  return entries;
}

/** What the main button does already, and what this page's state leaves no room for. */
function hidden(page: PageFacts): ReadonlySet<string> {
  return new Set([
    "page.publish",
    page.status.marked ? "page.mark" : "page.unmark",
    ...(page.live ? [] : ["page.reset"]),
  ]);
}

function registered(page: PageFacts, after: After): MenuEntry[] {
  const state = pageStateOf(page);
  const left = hidden(page);
  return actions.value
    .filter((action) => !left.has(action.id) && action.when(state))
    .map((action) => ({
      label: action.label(state),
      disabled: action.disabled?.(state) ?? "",
      danger: action.danger ?? false,
      ...(action.icon ? { icon: action.icon } : {}),
      ...(action.key ? { key: shownKey(action.key) } : {}),
      run: after(() => action.run(state)),
    }));
}

const ARROWS: Readonly<Record<string, string>> = { ArrowUp: "↑", ArrowDown: "↓" };
const shownKey = (key: string): string => key.replace(/Arrow(?:Up|Down)/, (arrow) => ARROWS[arrow] ?? arrow);
