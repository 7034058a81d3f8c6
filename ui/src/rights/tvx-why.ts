/** "Why may she do this?": a question, and the answer as a sentence with its reasons. */

import { html, nothing, type TemplateResult } from "lit";
import { customElement, property, state } from "lit/decorators.js";
import { call } from "../api";
import type { Found } from "../formats/found";
import { TvxElement } from "../kit/element";
import { icon } from "../kit/icon";
import "../kit/tvx-combobox";
import type { Option } from "../kit/tvx-combobox";
import { dialog } from "../kit/tvx-dialog";
import { L, t } from "../labels";
import { currentPage } from "../shell/workplace";
import { type Places, placesOf, type Website } from "./data";
import { type Access, TASKS, type Task } from "./model/grants";
import { type Reason, type Why, type WhyRow, whyOf } from "./model/why";
import { accessWord, doingWord, placeText, taskWord, websiteText } from "./words";
import "./rights.css";

/** Longer than a website's name is the node of a page. */
const isNode = (place: string): boolean => place.length > 5;

@customElement("tvx-why")
export class TvxWhy extends TvxElement {
  @property({ type: Number }) loginId = 0;
  @property({ attribute: false }) name = "";
  @state() private about: "page" | "entry" = "page";
  @state() private task: Task = "edit";
  @state() private page = "";
  @state() private pageTitle = "";
  @state() private access: Access = "view";
  @state() private entry = 0;
  @state() private website = "";
  @state() private places: Places | undefined;
  @state() private answer: Why | undefined;
  @state() private fault = "";
  private asked = 0;

  override connectedCallback(): void {
    super.connectedCallback();
    const page = currentPage.value;
    if (page) {
      this.page = String(page.pageId);
      this.pageTitle = page.title;
    }
    void placesOf().then((places) => {
      this.places = places;
      this.website = places.websites[0] ? `${places.websites[0].site}.${places.websites[0].lang}` : "";
      this.entry = places.entries.find(({ advView }) => advView === 1)?.advId ?? 0;
      void this.ask();
    }, this.failed);
  }

  private readonly failed = (error: unknown): void => {
    this.fault = error instanceof Error ? error.message : String(error);
  };

  private async ask(): Promise<void> {
    const asked = ++this.asked;
    if (this.about === "page" ? this.page === "" : this.entry === 0) return;
    try {
      const [site = "", lang = ""] = this.website.split(".");
      const { loginId } = this;
      const rows =
        this.about === "page"
          ? await call("desk.why", { loginId, action: this.task, pageIdent: this.page })
          : await call("desk.whyEntry", { loginId, flag: this.access, advId: this.entry, site, lang });
      if (asked !== this.asked) return;
      this.answer = whyOf(rows as WhyRow[]);
      this.fault = "";
    } catch (error) {
      if (asked === this.asked) this.failed(error);
    }
  }

  private get websites(): readonly Website[] {
    return this.places?.websites ?? [];
  }

  private set(change: () => unknown): void {
    change();
    this.answer = undefined;
    void this.ask();
  }

  private readonly search = async (words: string, signal: AbortSignal): Promise<Option[]> => {
    if (words.trim() === "") return [];
    const found = (await call("desk.find", { words, kinds: "page" }, { signal })) as unknown as Found[];
    return found.map((page) => ({
      id: String(page.pageId),
      label: page.title,
      note: websiteText(this.websites, `${page.siteId}.${page.lang}`),
      icon: "file-text",
    }));
  };

  protected override render(): TemplateResult {
    const choice = (about: "page" | "entry", label: string) =>
      html`<button role="radio" aria-checked=${String(this.about === about)} @click=${() => this.set(() => (this.about = about))}>${label}</button>`;
    return html`<div class="why">
      <div class="choice" role="radiogroup" aria-label=${t(L.whyAbout)}>${choice("page", t(L.page))}${choice("entry", t(L.administration))}</div>
      ${this.about === "page" ? this.pageQuestion() : this.entryQuestion()}
      ${this.fault ? html`<p class="notice danger" role="alert">${icon("circle-alert")}<span>${this.fault}</span></p>` : nothing}
      <div class="why-answer" role="status">${this.answer ? this.told(this.answer) : html`<p class="soft">${t(L.whyChoose)}</p>`}</div>
    </div>`;
  }

  private pageQuestion(): TemplateResult {
    return html`<div class="why-question">
      <div class="field"><label for="why-task">${t(L.whyTask)}</label><select id="why-task" class="select"
        @change=${(event: Event) => this.set(() => (this.task = (event.target as HTMLSelectElement).value as Task))}>${TASKS.map(
          (task) => html`<option value=${task} .selected=${task === this.task}>${taskWord(task)}</option>`,
        )}</select></div>
      <tvx-combobox .label=${t(L.page)} .placeholder=${t(L.whyPageHint)} .text=${this.pageTitle} .search=${this.search}
        @tvx-choose=${({ detail }: CustomEvent<Option>) =>
          this.set(() => {
            this.page = detail.id;
            this.pageTitle = detail.label;
          })}></tvx-combobox></div>`;
  }

  private entryQuestion(): TemplateResult {
    const entries = this.places?.entries.filter(({ advView, advEdit }) => advView === 1 || advEdit === 1) ?? [];
    const level = entries.find(({ advId }) => advId === this.entry)?.advLevel ?? 0;
    return html`<div class="why-question">
      <div class="field"><label for="why-access">${t(L.whyTask)}</label><select id="why-access" class="select"
        @change=${(event: Event) => this.set(() => (this.access = (event.target as HTMLSelectElement).value as Access))}>${(
          ["view", "edit"] as const
        ).map(
          (access) => html`<option value=${access} .selected=${access === this.access}>${accessWord(access)}</option>`,
        )}</select></div>
      <div class="field"><label for="why-entry">${t(L.entryColumn)}</label><select id="why-entry" class="select"
        @change=${(event: Event) => this.set(() => (this.entry = Number((event.target as HTMLSelectElement).value)))}>${entries.map(
          ({ advId, title }) => html`<option value=${advId} .selected=${advId === this.entry}>${title}</option>`,
        )}</select></div>
      ${
        level > 0
          ? html`<div class="field"><label for="why-website">${t(L.website)}</label><select id="why-website" class="select"
        @change=${(event: Event) => this.set(() => (this.website = (event.target as HTMLSelectElement).value))}>${this.websites.map(
          ({ site, lang, siteName, langName }) =>
            html`<option value="${site}.${lang}" .selected=${`${site}.${lang}` === this.website}>${siteName} · ${langName}</option>`,
        )}</select></div>`
          : nothing
      }</div>`;
  }

  private told(why: Why): TemplateResult {
    const gives = why.reasons.filter(({ state }) => state === "gives");
    const others = why.reasons.filter(({ state }) => state !== "gives");
    return html`<p class="why-verdict ${why.yes ? "yes" : "no"}">${icon(why.yes ? "circle-check" : "x")}<strong>${why.yes ? t(L.whyYes) : t(L.whyNo)}</strong></p>
      <ul class="why-reasons">${why.plain ? html`<li>${this.plainText(why.plain)}</li>` : nothing}
        ${gives.map((reason) => html`<li class="gives">${icon("check")}<span>${this.reasonText(reason, why)}</span></li>`)}
        ${others.map((reason) => html`<li>${icon("x")}<span>${this.reasonText(reason, why)}</span></li>`)}
        ${why.reasons.length === 0 && !why.plain ? html`<li>${t(L.whyNoRole, { name: this.name })}</li>` : nothing}</ul>
      ${why.needs !== undefined ? html`<p>${this.needText(why)}</p>` : nothing}`;
  }

  private plainText(state: string): string {
    if (state === "administrator") return t(L.whyAdministrator, { name: this.name });
    if (state === "noPage") return t(L.whyNoPage);
    return state === "notOffered" ? t(L.whyNotOffered) : t(L.whyNoLogin);
  }

  private whatText(why: Why): string {
    return this.about === "page" ? doingWord(why.what as Task) : accessWord(why.what as Access);
  }

  private whereOf(reason: Reason): string {
    if (this.about === "page" && reason.titles) return reason.titles;
    return reason.places.map((place) => (isNode(place) ? place : placeText(this.websites, place))).join(", ");
  }

  private reasonText(reason: Reason, why: Why): string {
    const role = reason.role || `[${reason.roleId}]`;
    const what = this.whatText(why);
    const where = this.whereOf(reason);
    switch (reason.state) {
      case "gives":
        return isNode(reason.places[0] ?? "")
          ? t(L.roleGivesBelow, { role, what, where })
          : t(L.roleGives, { role, what, where: placeText(this.websites, reason.places[0] ?? "") });
      case "outside":
        return t(L.roleGivesOutside, { role, what, where });
      case "elsewhere":
        return t(L.roleGivesElsewhere, { role, what, where });
      case "otherRights":
        return t(L.roleGivesOther, {
          role,
          what,
          rights: reason.rights.map((right) => this.rightWord(right)).join(", "),
        });
      default:
        return t(L.roleGivesNothing, { role });
    }
  }

  private rightWord(right: string): string {
    if (this.about === "entry") return accessWord(right as Access);
    return doingWord(right as Task);
  }

  private needText(why: Why): string {
    const where = placeText(this.websites, why.needs ?? "");
    return t(L.whyNeeds, { what: this.whatText(why), where });
  }
}

export const whyDialog = (loginId: number, name: string): Promise<string> =>
  dialog({
    title: t(L.whyOf, { name }),
    wide: true,
    body: () => html`<tvx-why .loginId=${loginId} .name=${name}></tvx-why>`,
  });
