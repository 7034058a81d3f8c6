/** What the screens of the modules share: they show the website that one works in, and what is changed can be taken back. */

import { html, nothing, type PropertyValues, type TemplateResult } from "lit";
import { property, state } from "lit/decorators.js";
import { isProblem } from "../api/problem";
import { TvxElement, Watch } from "../kit/element";
import { faultNotice } from "../kit/fault-notice";
import { icon } from "../kit/icon";
import { ask } from "../kit/tvx-dialog";
import { toast } from "../kit/tvx-toast";
import { L, t } from "../labels";
import { failed } from "../pages/actions";
import { mayChangeIn, workplace } from "../shell/workplace";
import { type RecordForm, recordForm } from "./form";
import "../pages/lists.css";
import "./modules.css";

export interface Place {
  readonly site: string;
  readonly lang: string;
}

export abstract class ModuleScreen<Data> extends TvxElement {
  @property({ attribute: false }) params = new URLSearchParams();
  @state() protected data: Data | undefined;
  @state() private fault: unknown;
  private shown = "";
  private readonly where = new Watch(this, workplace);

  /** The entry of the administration. */
  protected abstract readonly entry: number;
  protected abstract read(place: Place): Promise<Data>;
  protected abstract heading(data: Data | undefined): TemplateResult | string;
  protected abstract content(data: Data): TemplateResult;
  /** Where the list is that leads here. */
  protected get listAddress(): string {
    return "";
  }
  protected tools(_data: Data): TemplateResult | typeof nothing {
    return nothing;
  }
  /** What of the address says what is read. */
  protected get subject(): string {
    return "";
  }

  protected get place(): Place {
    const { site, lang } = this.where.value;
    return { site, lang };
  }

  protected get mayEdit(): boolean {
    return mayChangeIn(this.entry, this.place.site, this.place.lang);
  }

  protected number(name: string): number {
    return Number(this.params.get(name) ?? 0) || 0;
  }

  protected override willUpdate(_changed: PropertyValues<this>): void {
    const { site, lang } = this.place;
    const wanted = `${site}.${lang} ${this.subject}`;
    if (!site || wanted === this.shown) return;
    // What is shown of the same website stays until the new is there.
    if (!this.shown.startsWith(`${site}.${lang} `)) this.data = undefined;
    this.shown = wanted;
    void this.load();
  }

  protected readonly load = async (): Promise<void> => {
    const wanted = this.shown;
    try {
      const data = await this.read(this.place);
      if (wanted !== this.shown) return;
      this.data = data;
      this.fault = undefined;
    } catch (error) {
      if (wanted === this.shown) this.fault = error;
    }
  };

  /** Shows more than before, unless something else is shown by then. */
  protected async goOn(before: Data, read: () => Promise<Data>): Promise<void> {
    try {
      const more = await read();
      if (this.data === before) this.data = more;
    } catch (error) {
      failed(error);
    }
  }

  /** Does something at once, says so with its way back, and shows what has come of it. */
  protected async act(
    run: () => Promise<unknown>,
    said: string | ((answer: unknown) => string),
    undo?: { readonly run: () => Promise<unknown>; readonly said: string },
  ): Promise<void> {
    try {
      const answer = await run();
      const text = typeof said === "string" ? said : said(answer);
      toast(text, undo ? { undo: () => this.act(undo.run, undo.said) } : {});
    } catch (error) {
      if (isProblem(error) && error.status === 409) toast(error.message, { kind: "warn" });
      else failed(error);
    }
    await this.load();
  }

  /** What was saved, after it was said and shown; nothing when its author thought better of it. */
  protected async fill<Values extends object>(
    form: RecordForm<Values>,
    nameOf: (values: Values) => string,
  ): Promise<Values | undefined> {
    const values = await recordForm(form);
    if (!values) return undefined;
    toast(t(form.now ? L.recordSaved : L.recordAdded, { name: nameOf(values) }));
    await this.load();
    return values;
  }

  protected async flipMark(
    name: string,
    isMarked: boolean,
    setMark: (marked: boolean) => Promise<unknown>,
  ): Promise<void> {
    const set = (marked: boolean) => ({
      run: () => setMark(marked),
      said: t(marked ? L.moduleMarked : L.moduleUnmarked, { name }),
    });
    const { run, said } = set(!isMarked);
    await this.act(run, said, set(isMarked));
  }

  /** What goes for good is told before. */
  protected async askAndPublish(going: readonly string[], run: () => Promise<unknown>): Promise<void> {
    const words = t(L.publishRemoves, { names: going.join(", ") });
    if (going.length && !(await ask(t(L.publish), words, t(L.publish), "danger"))) return;
    await this.act(run, t(L.published));
  }

  private back(): TemplateResult | typeof nothing {
    if (!this.listAddress) return nothing;
    return html`<a class="button quiet icon-only" href=${this.listAddress} aria-label=${t(L.back)}>${icon("arrow-left")}</a>`;
  }

  protected override render(): TemplateResult {
    const { data } = this;
    return html`<section class="list-screen module-screen" aria-busy=${data || this.fault ? nothing : "true"}>
      <header class="list-head">${this.back()}<h1 class="grow">${this.heading(data)}</h1>${data === undefined ? nothing : this.tools(data)}</header>
      ${faultNotice(this.fault, this.load)}
      ${data === undefined ? nothing : this.content(data)}
    </section>`;
  }
}
