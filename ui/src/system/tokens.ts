/** The tokens by which programs call: listed, made, shown once, revoked. */

import { html, nothing, type TemplateResult } from "lit";
import { customElement, state } from "lit/decorators.js";
import { call } from "../api";
import { copyButton } from "../kit/copy-button";
import { TvxElement } from "../kit/element";
import { faultNotice } from "../kit/fault-notice";
import { icon } from "../kit/icon";
import { ask, dialog } from "../kit/tvx-dialog";
import { toast } from "../kit/tvx-toast";
import { L, t } from "../labels";
import { failed } from "../pages/actions";
import { fromDateField } from "../pages/model/setup";
import { dayText, whenText } from "../pages/words";
import { addDialog } from "../records/add-dialog";
import { textField } from "../records/fields";
import { LOGINS, type LoginLine, loginsOf } from "../rights/data";

interface Token {
  readonly tokenId: number;
  readonly name: string;
  readonly operations: string;
  readonly addresses: string;
  readonly lastDay: string;
  readonly lastUse: string | null;
}

/** Shown this once: nobody can be told it again. */
const shownOnce = (name: string, token: string): Promise<string> =>
  dialog({
    title: name,
    stays: true,
    body: () =>
      html`<p>${t(L.tokenOnce)}</p><p class="new-password"><code class="token">${token}</code> ${copyButton(token)}</p>`,
    actions: () => [{ name: "close", label: t(L.passwordNoted), kind: "primary" }],
  });

@customElement("tvx-tokens")
export class TvxTokens extends TvxElement {
  @state() private programs: readonly LoginLine[] | undefined;
  @state() private tokens: readonly Token[] = [];
  @state() private loginId = 0;
  @state() private fault: unknown;

  override connectedCallback(): void {
    super.connectedCallback();
    void this.load();
  }

  private readonly load = async (): Promise<void> => {
    try {
      this.programs = (await loginsOf()).filter(({ isProgram }) => isProgram === 1);
      this.loginId ||= this.programs[0]?.loginId ?? 0;
      this.tokens = this.loginId ? ((await call("desk.getTokens", { loginId: this.loginId })) as Token[]) : [];
      this.fault = undefined;
    } catch (error) {
      this.fault = error;
    }
  };

  private async make(): Promise<void> {
    const wish = { name: "", operations: "reads", addresses: "", lastDay: "" };
    const field = (id: keyof typeof wish, label: string, longest: number, hint = ""): TemplateResult =>
      textField({
        id: `token-${id}`,
        label,
        value: wish[id],
        longest,
        change: (text) => (wish[id] = text),
        ...(hint ? { hint } : {}),
      });
    const token = await addDialog(
      t(L.tokenNew),
      () => html`${field("name", t(L.name), 50)}${field("operations", t(L.tokenOperations), 2000, t(L.tokenOperationsHint))}
        ${field("addresses", t(L.tokenAddresses), 500, t(L.tokenAddressesHint))}
        ${textField({ id: "token-lastDay", label: t(L.tokenLastDay), value: "", longest: 10, type: "date", change: (text) => (wish.lastDay = fromDateField(text)) })}`,
      () => call("desk.makeToken", { loginId: this.loginId, ...wish, advId: LOGINS }),
    );
    if (!token) return;
    await shownOnce(wish.name, token);
    void this.load();
  }

  private async revoke({ tokenId, name }: Token): Promise<void> {
    if (!(await ask(t(L.tokenRevokeOf, { name }), t(L.tokenRevokeAsk), t(L.tokenRevoke), "danger"))) return;
    try {
      await call("desk.revokeToken", { tokenId, advId: LOGINS });
      toast(t(L.tokenRevoked, { name }));
    } catch (error) {
      failed(error);
    }
    void this.load();
  }

  protected override render() {
    if (this.fault) return faultNotice(this.fault, this.load);
    if (!this.programs) return html`<div class="skeleton"></div>`;
    if (this.programs.length === 0) return html`<p class="soft">${t(L.tokensNoProgram)}</p>`;
    return html`<div class="inline token-tools"><div class="field"><label for="token-program">${t(L.tokenFor)}</label>
        <select id="token-program" class="select" @change=${(event: Event) => {
          this.loginId = Number((event.target as HTMLSelectElement).value);
          void this.load();
        }}>${this.programs.map(({ loginId, name, username }) => html`<option value=${loginId} ?selected=${loginId === this.loginId}>${name || username}</option>`)}</select></div>
        <button type="button" class="button" @click=${this.make}>${icon("plus")}${t(L.tokenNew)}</button></div>
      ${this.tokens.length === 0 ? html`<p class="soft">${t(L.tokensNone)}</p>` : html`<ul class="token-list" role="list">${this.tokens.map((token) => this.token(token))}</ul>`}`;
  }

  private token(token: Token): TemplateResult {
    const { name, operations, addresses, lastDay, lastUse } = token;
    return html`<li><div class="grow"><strong>${name}</strong> <code>${operations}</code>
        <p class="note">${addresses ? html`${addresses} · ` : nothing}${lastDay ? html`${t(L.tokenLastDay)}: ${dayText(lastDay)} · ` : nothing}${t(L.tokenLastUse)}: ${whenText(lastUse) || t(L.neverYet)}</p></div>
      <button type="button" class="button small" @click=${() => this.revoke(token)}>${icon("trash-2")}${t(L.tokenRevoke)}</button></li>`;
  }
}
