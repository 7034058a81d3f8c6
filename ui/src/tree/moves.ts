import { call } from "../api";
import { refusesMove } from "../pages/model/places";
import { type MovePlace, moves } from "../shell/registry";
import { workplace } from "../shell/workplace";
import { tree } from "./tree-data";

let scope = "";
let website = "";

/** Where this login may move pages, in the website where it works. */
async function learnScope(): Promise<void> {
  const { site, lang, rights } = workplace.value;
  if (website === `${site}.${lang}`) return;
  website = `${site}.${lang}`;
  scope = "";
  if (!rights.move) return;
  scope = String(await call("cManager.getLoginScope", { site, lang, task: "move" }).catch(() => ""));
}

function refuses(from: string, to: string, side: MovePlace): string {
  const parent = side === "into" ? to : to.slice(0, -3);
  const children = tree.value.model.isUnknown(parent) ? {} : { children: tree.value.model.childrenOf(parent).length };
  return refusesMove({ from, to, side, scope, ...children }) ?? "";
}

/** Lets the tree move pages by dragging and by its keys. */
export async function startMoves(): Promise<void> {
  workplace.watch(() => void learnScope());
  await learnScope();
  const { movePlace, copyPlace, stepPlace } = await import("../pages/commands");
  const { refusalText } = await import("../pages/place-dialog");
  const why = (from: string, to: string, side: MovePlace) => {
    const refusal = refuses(from, to, side);
    return refusal ? refusalText(refusal as Parameters<typeof refusalText>[0]) : "";
  };
  moves.value = { move: movePlace, copy: copyPlace, step: stepPlace, refuses: why };
}
