/** Setting a second factor up, its codes, and switching it off. */

import { html, type TemplateResult } from "lit";
import { copyButton } from "../kit/copy-button";
import { icon } from "../kit/icon";
import { dialog } from "../kit/tvx-dialog";
import { toast } from "../kit/tvx-toast";
import { L, t } from "../labels";
import { textField } from "../records/fields";
import { saveFile } from "../system/save-file";
import { codeField } from "./code-field";
import { begin, confirm, drop, renewCodes, secretIn } from "./data";
import "./second-factor.css";

/** Asks for a code, and gives what it opens; nothing when that is called off. */
async function codesFor(
  title: string,
  go: string,
  body: (change: (text: string) => unknown) => TemplateResult,
  open: (code: string) => Promise<string[]>,
): Promise<string[]> {
  let typed = "";
  let codes: string[] = [];
  const change = (text: string) => (typed = text);
  await dialog({
    title,
    body: () => html`<div class="stack">${body(change)}</div>`,
    actions: () => [
      { name: "cancel", label: t(L.cancel) },
      {
        name: "go",
        label: go,
        kind: "primary",
        run: async () => {
          codes = await open(typed);
        },
      },
    ],
  });
  return codes;
}

/** Shown this once: nobody can be told them again. */
const showCodes = (codes: readonly string[]): Promise<string> => {
  const text = `${codes.join("\n")}\n`;
  return dialog({
    title: t(L.factorCodes),
    stays: true,
    body: () => html`<p>${t(L.factorCodesHint)}</p>
      <ul class="factor-codes" role="list">${codes.map((code) => html`<li><code>${code}</code></li>`)}</ul>
      <p class="inline">${copyButton(text)}
        <button type="button" class="button" @click=${() => saveFile("torvex-recovery-codes.txt", text, "text/plain;charset=utf-8")}>${icon("download")}${t(L.factorDownload)}</button>
        <button type="button" class="button" @click=${() => window.print()}>${icon("printer")}${t(L.printIt)}</button></p>`,
    actions: () => [{ name: "close", label: t(L.factorCodesKept), kind: "primary" }],
  });
};

/** Whether it is set up by now. */
export async function setUp(): Promise<boolean> {
  const [{ picture }, address] = await Promise.all([import("./picture"), begin()]);
  const codes = await codesFor(
    t(L.factorSetUpTitle),
    t(L.factorSwitchOn),
    (change) => html`<p id="factor-scan">${t(L.factorScan)}</p>${picture(address)}
      <p class="note">${t(L.factorSecret)}: <code class="factor-secret">${secretIn(address)}</code></p>
      ${codeField({ id: "factor-code", change, describedBy: "factor-scan", isFirst: true })}`,
    confirm,
  );
  if (codes.length === 0) return false;
  toast(t(L.factorIsOn));
  await showCodes(codes);
  return true;
}

export async function newCodes(): Promise<void> {
  const codes = await codesFor(
    t(L.factorNewCodes),
    t(L.factorMakeCodes),
    (change) => codeField({ id: "factor-code", change, hint: t(L.factorNewCodesHint), isFirst: true }),
    renewCodes,
  );
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
