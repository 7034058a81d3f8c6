/** A move waits for those who work in the website: who they are, how long they haven't moved, and what can be done. */

import { html, nothing, type TemplateResult } from "lit";
import { call } from "../api";
import { icon } from "../kit/icon";
import { type DialogAction, dialog, type TvxDialog } from "../kit/tvx-dialog";
import { L, plural, t } from "../labels";
import { workplace } from "../shell/workplace";
import { spanText } from "./words";
import "./dialogs.css";

interface Online {
  readonly loginId: number;
  readonly name: string;
  readonly pageId: number;
  readonly idleSeconds: number;
}

/** From so long without a key on somebody counts as gone. */
const GONE_AFTER = 300;
const ASK_EVERY = 2000;

class InTheWay {
  private people: readonly Online[] = [];
  private box: TvxDialog | undefined;
  private asked = false;
  private waiting = false;
  private timer: ReturnType<typeof setInterval> | undefined;

  constructor(
    private readonly site: string,
    private readonly lang: string,
  ) {}

  async open(): Promise<boolean> {
    await this.load();
    this.timer = setInterval(() => void this.load(), ASK_EVERY);
    const answer = await dialog({
      title: t(L.inTheWayTitle),
      body: (box) => {
        this.box = box;
        return this.body();
      },
      actions: () => this.actions(),
    });
    clearInterval(this.timer);
    return answer === "go";
  }

  private async load(): Promise<void> {
    const me = workplace.value.login?.loginId ?? 0;
    const all = (await call("desk.getOnline", { site: this.site, lang: this.lang }).catch(() => [])) as Online[];
    this.people = all.filter((each) => each.loginId !== me);
    if (this.waiting && this.people.length === 0) this.box?.close("go");
    this.box?.requestUpdate();
  }

  private get gone(): readonly Online[] {
    return this.people.filter((each) => each.idleSeconds >= GONE_AFTER);
  }

  private body(): TemplateResult {
    return html`
      <p>${t(L.inTheWayWhy)}</p>
      <ul class="pick-list" aria-label=${t(L.inTheWayTitle)}>
        ${this.people.map(
          (each) =>
            html`<li>${icon("user")}<span class="cut">${each.name}</span><span class="soft note">${
              each.idleSeconds < 60 ? t(L.isWorking) : t(L.idleFor, { time: spanText(each.idleSeconds) })
            }</span></li>`,
        )}
        ${this.people.length === 0 ? html`<li class="soft">${t(L.nobodyLeft)}</li>` : nothing}
      </ul>
      ${this.asked ? html`<p class="notice done" role="status">${icon("check")}<span>${t(L.allAsked)}</span></p>` : nothing}
      ${this.waiting ? html`<p class="notice" role="status">${icon("clock")}<span>${t(L.movesWhenLeft)}</span></p>` : nothing}
    `;
  }

  private actions(): DialogAction[] {
    const free: DialogAction[] = this.gone.length
      ? [{ name: "free", label: plural(this.gone.length, L.freeGoneOne, L.freeGoneMany), run: () => this.free() }]
      : [];
    const last: DialogAction =
      this.people.length === 0
        ? { name: "go", label: t(L.moveNow), kind: "primary" }
        : {
            name: "wait",
            label: t(L.moveWhenLeft),
            kind: "primary",
            disabled: this.waiting ? t(L.movesWhenLeft) : "",
            run: () => this.wait(),
          };
    return [
      { name: "cancel", label: t(L.notNow) },
      ...(this.people.length && !this.asked ? [{ name: "ask", label: t(L.askThem), run: () => this.ask() }] : []),
      ...free,
      last,
    ];
  }

  private async ask(): Promise<boolean> {
    for (const each of this.people)
      if (each.pageId > 0) await call("desk.ask", { pageIdent: String(each.pageId) }).catch(() => undefined);
    this.asked = true;
    return false;
  }

  private async free(): Promise<boolean> {
    await call("desk.freeIdle", { site: this.site, lang: this.lang });
    await this.load();
    return false;
  }

  private wait(): boolean {
    this.waiting = true;
    return false;
  }
}

/** True when the move may be tried again. */
export const inTheWay = (site: string, lang: string): Promise<boolean> => new InTheWay(site, lang).open();
