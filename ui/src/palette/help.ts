import { html } from "lit";
import { dialog } from "../kit/tvx-dialog";
import { L, type Label, t } from "../labels";
import { shownKey } from "../labels/keys";
import "./help.css";
import { actions, commands } from "../shell/registry";

const inLists: [string, Label][] = [
  ["↑ ↓ ← →", L.keysMove],
  ["Space", L.keysSelect],
  ["Shift+↑ ↓", L.keysExtend],
  ["Enter", L.keysOpen],
  ["Ctrl+X, Ctrl+V", L.keysCut],
  ["Alt+↑ ↓", L.keysOrder],
];

const row = (key: string, label: string) => html`<div><dt><kbd>${shownKey(key)}</kbd></dt><dd>${label}</dd></div>`;

/** All keys, in one place. */
export async function openHelp(): Promise<void> {
  const everywhere = commands.value.filter(({ key, when }) => key && (when?.() ?? true));
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
        <section><h3>${t(L.keysEverywhere)}</h3><dl>${everywhere.map(({ key, label }) => row(key!, label()))}${row("Esc", t(L.back))}${row("Ctrl+Enter", t(L.keysMain))}</dl></section>
        <section><h3>${t(L.keysInLists)}</h3><dl>${inLists.map(([key, label]) => row(key, t(label as typeof L.keysMove)))}${ofPages.map(({ key, label }) => row(key!, label(blank)))}</dl></section>
      </div>
    `,
  });
}
