import { html } from "lit";
import { dialog } from "../kit/tvx-dialog";
import { L, type Label, t } from "../labels";
import { shownKey } from "../labels/keys";
import "./help.css";
import { actions, commands } from "../shell/registry";

const everywhere: [string, Label][] = [
  ["Esc", L.back],
  ["Ctrl+S", L.save],
  ["Ctrl+Enter", L.keysMain],
  ["Shift+Enter", L.keysFoundInTree],
];
const inTexts: [string, Label][] = [
  ["Ctrl+L", L.link],
  ["Ctrl+Shift+H", L.source],
  ["Ctrl+Space", L.keysTags],
];
const inLists: [string, Label][] = [
  ["↑ ↓ ← →", L.keysMove],
  ["Space", L.keysSelect],
  ["Shift+↑ ↓", L.keysExtend],
  ["Enter", L.keysOpen],
  ["Ctrl+X, Ctrl+V", L.keysCut],
];

const row = (key: string, label: string) => html`<div><dt><kbd>${shownKey(key)}</kbd></dt><dd>${label}</dd></div>`;
const rows = (keys: readonly [string, Label][]) => keys.map(([key, label]) => row(key, t(label as typeof L.keysMove)));

/** All keys, in one place. */
export async function openHelp(): Promise<void> {
  const told = new Set([...everywhere, ...inTexts].map(([key]) => key));
  const ofCommands = commands.value.filter(({ key, when }) => key && !told.has(key) && (when?.() ?? true));
  const ofPages = actions.value.filter(({ key }) => key);
  const blank = {
    pageId: 0,
    nodeId: "",
    site: "",
    lang: "",
    title: "",
    type: "P",
    state: "live",
    holder: "",
    heldByMe: false,
    heldByOther: false,
    rights: { onOff: true, move: true, publish: true, approve: true, edit: true },
  } as const;
  await dialog({
    title: t(L.keys),
    wide: true,
    body: () => html`
      <div class="keys">
        <div>
          <section><h3>${t(L.keysEverywhere)}</h3><dl>${ofCommands.map(({ key, label }) => row(key!, label()))}${rows(everywhere)}</dl></section>
          <section><h3>${t(L.keysInTexts)}</h3><dl>${rows(inTexts)}</dl></section>
        </div>
        <section><h3>${t(L.keysInLists)}</h3><dl>${rows(inLists)}${ofPages.map(({ key, label }) => row(key!, label(blank)))}</dl></section>
      </div>
    `,
  });
}
