/** Setting a second factor up, its codes, and switching it off. */

import { html, nothing, type TemplateResult } from "lit";
import { icon } from "../kit/icon";
import { dialog } from "../kit/tvx-dialog";
import { toast } from "../kit/tvx-toast";
import { L, t } from "../labels";
import { textField } from "../records/fields";
import { saveFile } from "../system/save-file";
import { begin, confirm, drop, renewCodes, secretIn } from "./data";
import "./second-factor.css";

async function copied(text: string): Promise<void> {
  try {
    await navigator.clipboard.writeText(text);
    toast(t(L.copiedIt));
  } catch {
    // Without leave for the clipboard they are still there to be read and marked.
  }
}

const codeField = (change: (text: string) => unknown, hint = ""): TemplateResult =>
  html`<div class="field"><label for="factor-code">${t(L.factorCode)}</label>
    <input id="factor-code" class="input" inputmode="numeric" autocomplete="one-time-code" maxlength="50" autofocus
      aria-describedby=${hint ? "factor-code-hint" : "factor-scan"} @input=${(event: Event) => change((event.target as HTMLInputElement).value)}
      @keydown=${(event: KeyboardEvent) => event.key === "Enter" && (event.target as HTMLElement).closest("dialog")?.querySelector<HTMLElement>(".primary")?.click()} />
    ${hint ? html`<p class="note" id="factor-code-hint">${hint}</p>` : nothing}</div>`;

/** Shown this once: nobody can be told them again. */
const showCodes = (codes: readonly string[]): Promise<string> => {
  const text = `${codes.join("\n")}\n`;
  return dialog({
    title: t(L.factorCodes),
    stays: true,
    body: () => html`<p>${t(L.factorCodesHint)}</p>
      <ul class="factor-codes" role="list">${codes.map((code) => html`<li><code>${code}</code></li>`)}</ul>
      <p class="inline"><button type="button" class="button" @click=${() => copied(text)}>${icon("copy")}${t(L.copy)}</button>
        <button type="button" class="button" @click=${() => saveFile("torvex-recovery-codes.txt", text, "text/plain;charset=utf-8")}>${icon("download")}${t(L.factorDownload)}</button>
        <button type="button" class="button" @click=${() => window.print()}>${icon("printer")}${t(L.printIt)}</button></p>`,
    actions: () => [{ name: "close", label: t(L.factorCodesKept), kind: "primary" }],
  });
};

/** Whether it is set up by now. */
export async function setUp(): Promise<boolean> {
  const [{ picture }, address] = await Promise.all([import("./picture"), begin()]);
  let typed = "";
  let codes: string[] = [];
  await dialog({
    title: t(L.factorSetUpTitle),
    body: () => html`<div class="stack"><p id="factor-scan">${t(L.factorScan)}</p>${picture(address)}
      <p class="note">${t(L.factorSecret)}: <code class="factor-secret">${secretIn(address)}</code></p>
      ${codeField((text) => (typed = text))}</div>`,
    actions: () => [
      { name: "cancel", label: t(L.cancel) },
      {
        name: "go",
        label: t(L.factorSwitchOn),
        kind: "primary",
        run: async () => {
          codes = await confirm(typed);
        },
      },
    ],
  });
  if (codes.length === 0) return false;
  toast(t(L.factorIsOn));
  await showCodes(codes);
  return true;
}

export async function newCodes(): Promise<void> {
  let typed = "";
  let codes: string[] = [];
  await dialog({
    title: t(L.factorNewCodes),
    body: () => html`<div class="stack">${codeField((text) => (typed = text), t(L.factorNewCodesHint))}</div>`,
    actions: () => [
      { name: "cancel", label: t(L.cancel) },
      {
        name: "go",
        label: t(L.factorMakeCodes),
        kind: "primary",
        run: async () => {
          codes = await renewCodes(typed);
        },
      },
    ],
  });
  if (codes.length > 0) await showCodes(codes);
}

export async function switchOff(): Promise<void> {
  let proof = "";
  const answer = await dialog({
    title: t(L.factorSwitchOffTitle),
    body: () =>
      html`<div class="stack">${textField({ id: "factor-proof", label: t(L.factorProof), value: "", longest: 100, type: "password", change: (text) => (proof = text) })}</div>`,
    actions: () => [
      { name: "cancel", label: t(L.cancel) },
      { name: "go", label: t(L.factorSwitchOff), kind: "danger", run: () => drop(proof) },
    ],
  });
  if (answer === "go") toast(t(L.factorIsOff));
}
