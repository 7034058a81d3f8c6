import { html, nothing } from "lit";
import { customElement, property } from "lit/decorators.js";
import { TvxElement, Watch } from "../kit/element";
import { icon } from "../kit/icon";
import { whenIdle } from "../kit/idle";
import { initials } from "../kit/initials";
import { type MenuEntry, openMenu, rule } from "../kit/tvx-menu";
import { toast } from "../kit/tvx-toast";
import { interfaceLanguage, L, plural, t } from "../labels";
import { shownKey } from "../labels/keys";
import { go } from "./address";
import { type Appearance, appearance } from "./appearance";
import { languages, readLanguages, useLanguage } from "./language";
import { counters } from "./presence";
import { commands } from "./registry";
import "./tvx-bar.css";
import { enter, websiteAt, workplace } from "./workplace";

const appearances: [Appearance, number][] = [
  ["system", L.appearanceSystem],
  ["light", L.appearanceLight],
  ["dark", L.appearanceDark],
];

export const logOut = () => location.assign("/torvex/logout");

/** The upper edge: where one works, what one looks for, what waits, who one is. */
@customElement("tvx-bar")
export class TvxBar extends TvxElement {
  @property({ attribute: false }) hasRight = false;
  private readonly workplace = new Watch(this, workplace);
  private readonly counters = new Watch(this, counters);
  private readonly appearance = new Watch(this, appearance);
  private readonly languages = new Watch(this, languages);

  override connectedCallback(): void {
    super.connectedCallback();
    whenIdle(readLanguages);
  }

  private websiteMenu(event: Event): void {
    const { websites, site, lang } = this.workplace.value;
    const entries = websites.map((one) => ({
      label: `${one.siteName} · ${one.langName}`,
      checked: one.site === site && one.lang === lang,
      run: () => {
        enter(one.site, one.lang);
        void go("/torvex/");
      },
    }));
    openMenu(event.currentTarget as HTMLElement, entries, t(L.website));
  }

  private myMenu(event: Event): void {
    const entries: MenuEntry[] = [
      { label: t(L.mySettings), icon: "settings", run: () => void go("/torvex/mySettings.asp") },
      rule,
      ...this.languages.value.map(([id, label]) => ({
        label,
        checked: id === interfaceLanguage(),
        run: () => useLanguage(id).catch(() => toast(t(L.languageKept), { kind: "warn" })),
      })),
      rule,
      ...appearances.map(([id, label]) => ({
        label: t(label as typeof L.appearanceLight),
        checked: id === this.appearance.value,
        run: () => {
          appearance.value = id;
        },
      })),
      rule,
      { label: t(L.logOut), icon: "log-out", run: logOut },
    ];
    openMenu(event.currentTarget as HTMLElement, entries, this.workplace.value.login?.name ?? "");
  }

  private run(id: string): void {
    void commands.value.find((command) => command.id === id)?.run();
  }

  protected override render() {
    const { login, site, lang } = this.workplace.value;
    const website = websiteAt(site, lang);
    const { waiting } = this.counters.value;
    return html`
      <button class="button quiet icon-only" aria-label=${t(L.showNavigation)} title=${t(L.showNavigation)} @click=${() => this.tell("tvx-side", "left")}>${icon("panel-left")}</button>
      <button class="button quiet website" aria-haspopup="menu" aria-expanded="false" @click=${this.websiteMenu}>
        ${icon("globe")}<span class="cut">${website ? html`${website.siteName}<span class="lang"> · ${website.langName}</span>` : t(L.noWebsite)}</span>${icon("chevron-down")}
      </button>
      <button class="search" aria-label=${t(L.searchEverything)} @click=${() => this.run("palette")}>
        ${icon("search")}<span class="cut">${t(L.searchEverything)}</span><kbd>${shownKey("Ctrl+K")}</kbd>
      </button>
      ${waiting > 0 ? html`<a class="button quiet waits" href="/torvex/" aria-label=${plural(waiting, L.oneWaits, L.manyWait)}>${icon("bell")}<span>${plural(waiting, L.oneWaits, L.manyWait)}</span></a>` : nothing}
      <span class="faces"><tvx-faces></tvx-faces></span>
      <button class="button quiet icon-only help" aria-label=${t(L.help)} title=${t(L.help)} @click=${() => this.run("help")}>${icon("circle-help")}</button>
      <button class="button quiet me" aria-haspopup="menu" aria-expanded="false" aria-label=${login ? t(L.me, { name: login.name }) : nothing} @click=${this.myMenu}>
        <span class="face" aria-hidden="true">${initials(login?.name ?? "")}</span><span class="cut name">${login?.name ?? ""}</span>${icon("chevron-down")}
      </button>
      ${this.hasRight ? html`<button class="button quiet icon-only" aria-label=${t(L.showDetails)} title=${t(L.showDetails)} @click=${() => this.tell("tvx-side", "right")}>${icon("panel-right")}</button>` : nothing}
    `;
  }
}
