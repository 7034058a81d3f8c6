/** What is one's own: language, looks, password, and the tokens of programs for whoever may keep them. */

import { html, nothing, type TemplateResult } from "lit";
import { customElement, state } from "lit/decorators.js";
import { connection } from "../api/connection";
import { post } from "../api/request";
import { TvxElement, Watch } from "../kit/element";
import { faultNotice } from "../kit/fault-notice";
import { icon } from "../kit/icon";
import { toast } from "../kit/tvx-toast";
import { interfaceLanguage, L, t } from "../labels";
import { failed } from "../pages/actions";
import { textField } from "../records/fields";
import { isChanged, mayChange } from "../records/lock";
import { Judgement } from "../records/passwords";
import { LOGINS } from "../rights/data";
import { type Appearance, appearance } from "../shell/appearance";
import { useLanguage } from "../shell/language";
import { shell } from "../shell/tvx-shell";
import { workplace } from "../shell/workplace";
import { type InterfaceLanguage, interfacesOf, type Setting, type Settings, saveSettings, settingsOf } from "./data";
import { isKept, settingField } from "./setting-fields";
import "../second-factor/tvx-second-factor";
import "./tokens";
import "../pages/lists.css";
import "../rights/rights.css";
import "./system.css";

const LANGUAGE = "torvex_interface_language";

@customElement("tvx-my-settings")
export class TvxMySettings extends TvxElement {
  @state() private all: Settings | undefined;
  @state() private languages: readonly InterfaceLanguage[] = [];
  @state() private mayKeepTokens = false;
  @state() private fault: unknown;
  @state() private password = { now: "", next: "", again: "" };
  @state() private busy = false;
  private readonly judgement = new Judgement(() => this.requestUpdate());
  private readonly looks = new Watch(this, appearance);

  override connectedCallback(): void {
    super.connectedCallback();
    void this.load();
  }

  private get loginId(): number {
    return workplace.value.login?.loginId ?? 0;
  }

  private readonly load = async (): Promise<void> => {
    try {
      const [all, languages, mayKeep] = await Promise.all([
        settingsOf(this.loginId),
        interfacesOf(),
        mayChange(LOGINS),
      ]);
      this.all = all;
      this.languages = languages.filter(({ lang_enabled }) => lang_enabled === 1);
      this.mayKeepTokens = mayKeep;
      this.fault = undefined;
    } catch (error) {
      this.fault = error;
    }
  };

  /** Each at once: nobody else works on them. */
  private async change(setting: Setting, value: string): Promise<void> {
    const { all } = this;
    if (!all || value === setting.content || !isKept(setting, value)) return;
    try {
      const keep = () => saveSettings(all, new Map([[setting.parameter, value]]));
      if (setting.parameter === LANGUAGE) await useLanguage(value, keep);
      else await keep();
      toast(t(L.settingsSaved));
    } catch (error) {
      if (!isChanged(error)) failed(error);
    }
    await this.load();
  }

  private get canChange(): boolean {
    const { now, next, again } = this.password;
    return now !== "" && next !== "" && next === again && !this.judgement.wrong;
  }

  private async changePassword(): Promise<void> {
    const { now, next } = this.password;
    if (this.busy || !this.canChange) return;
    this.busy = true;
    try {
      const username = workplace.value.login?.username ?? "";
      const response = await post("desk/changePassword", { username, password: now, newPassword: next });
      connection.token = response.headers.get("X-Torvex-Token") ?? connection.token;
      this.password = { now: "", next: "", again: "" };
      toast(t(L.passwordChanged));
    } catch (error) {
      failed(error);
    } finally {
      this.busy = false;
    }
  }

  protected override render(): TemplateResult {
    return html`<section class="list-screen" aria-busy=${this.all || this.fault ? nothing : "true"}>
      <header class="list-head"><h1>${t(L.mySettings)}</h1></header>
      ${faultNotice(this.fault, this.load)}
      ${this.all ? html`${this.kept(this.all.settings)}${this.here()}${this.passwordForm()}` : nothing}
      ${this.all ? html`<section class="card settings"><h2>${t(L.factor)}</h2><div class="whole"><tvx-second-factor></tvx-second-factor></div></section>` : nothing}
      ${this.mayKeepTokens ? html`<section class="card settings"><h2>${t(L.tokens)}</h2><div class="whole"><tvx-tokens></tvx-tokens></div></section>` : nothing}
    </section>`;
  }

  private choicesOf({ parameter }: Setting): readonly (readonly [string, string])[] | undefined {
    return parameter === LANGUAGE
      ? this.languages.map(({ lang_ID, lang_name }) => [lang_ID, lang_name] as const)
      : undefined;
  }

  private kept(settings: readonly Setting[]): TemplateResult {
    const own = settings.filter(({ section, takes }) => section === "login" && takes !== "unused");
    return html`<section class="card settings"><h2>${t(L.settings)}</h2>${own.map((setting) => {
      const choices = this.choicesOf(setting);
      return settingField({
        setting,
        value: setting.content,
        fixed: false,
        change: (value) => void this.change(setting, value),
        late: true,
        ...(choices ? { choices } : {}),
      });
    })}</section>`;
  }

  /** What this browser keeps. */
  private here(): TemplateResult {
    const looks: readonly (readonly [Appearance, string])[] = [
      ["system", t(L.appearanceSystem)],
      ["light", t(L.appearanceLight)],
      ["dark", t(L.appearanceDark)],
    ];
    return html`<section class="card settings"><h2>${t(L.myAppearance)}</h2>
      <div class="choice setting-choice" role="group" aria-label=${t(L.myAppearance)}>${looks.map(
        ([look, text]) =>
          html`<button type="button" aria-pressed=${String(look === this.looks.value)} @click=${() => {
            appearance.value = look;
          }}>${text}</button>`,
      )}</div>
      <div class="setting"><button type="button" class="button" @click=${() => shell()?.firstWidths()}>${icon("panel-left")}${t(L.myPanelsReset)}</button></div></section>`;
  }

  private passwordForm(): TemplateResult {
    const { next, again } = this.password;
    const differs = again !== "" && next !== again;
    const field = (part: "now" | "next" | "again", label: string, hint = ""): TemplateResult =>
      textField({
        id: `password-${part}`,
        label,
        value: this.password[part],
        longest: 100,
        type: "password",
        change: (text) => {
          this.password = { ...this.password, [part]: text };
          if (part === "next") this.judgement.typed(text);
        },
        ...(hint ? { hint } : {}),
        ...(part === "next" ? { wrong: this.judgement.wrong } : {}),
      });
    return html`<form class="card settings" lang=${interfaceLanguage()} @submit=${(event: Event) => {
      event.preventDefault();
      void this.changePassword();
    }}><h2>${t(L.password)}</h2>
      ${field("now", t(L.oldPassword))}${field("next", t(L.newPassword), t(L.passwordHint))}${field("again", t(L.passwordAgain))}
      <div class="whole inline"><button class="button" aria-disabled=${this.canChange ? nothing : "true"} aria-busy=${this.busy ? "true" : nothing}>${t(L.changePassword)}</button>
        <span role="status" class="soft">${differs ? t(L.passwordsDiffer) : ""}</span></div></form>`;
  }
}
