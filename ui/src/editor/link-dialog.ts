// Where a link is to lead: words find pages and documents, an address is taken as it is; or tree and folders are walked.
import { html, nothing, type TemplateResult } from "lit";
import { customElement, property, state } from "lit/decorators.js";
import { ref } from "lit/directives/ref.js";
import { call, isCancelled } from "../api";
import { callOf, fileLink, pageLink } from "../formats/page-calls";
import { dialog, icon, TvxElement } from "../kit";
import { L, t } from "../labels";
import "./link-documents";
import type { LinkTarget } from "./link-target";
import "./link-tree";

export interface ChosenLink {
  href: string;
  /** The words of the link, where nothing was chosen for it. */
  text: string;
  target: string;
}

type Way = "words" | "tree" | "documents";

const isAddress = /^(?:(?:https?|ftp):\/\/|mailto:|tel:|#|\/)\S+$/i;
const looksLikeHost = /^[\w-]+(?:\.[\w-]+)+(?:[/?#]\S*)?$/;

/** An address as a link holds it, or "" for words. */
export function addressIn(text: string): string {
  const words = text.trim();
  if (isAddress.test(words)) return words;
  if (/^[^\s@]+@[^\s@]+\.[^\s@]+$/.test(words)) return `mailto:${words}`;
  return looksLikeHost.test(words) && /\.[a-z]{2,}(?:[/?#]|$)/i.test(words) ? `https://${words}` : "";
}

@customElement("tvx-link-picker")
export class TvxLinkPicker extends TvxElement {
  @property() nodeId = "";
  @property() now = "";
  @property({ type: Boolean }) asksText = false;
  @state() private found: LinkTarget[] = [];
  @state() private at = 0;
  @state() private words = "";
  @state() private fault = "";
  @state() private way: Way = "words";
  private asked: AbortController | undefined;
  private timer: ReturnType<typeof setTimeout> | undefined;

  override connectedCallback(): void {
    super.connectedCallback();
    const call = callOf(this.now);
    this.words = call?.kind === "link" ? call.address : "";
  }

  protected override firstUpdated(): void {
    this.querySelector<HTMLElement>("#link-target")?.focus();
  }

  private get site(): string {
    return this.nodeId.slice(0, 2);
  }

  private typed(event: Event): void {
    this.words = (event.target as HTMLInputElement).value;
    this.at = 0;
    clearTimeout(this.timer);
    this.timer = setTimeout(() => void this.find(), 150);
  }

  private async find(): Promise<void> {
    this.asked?.abort();
    const asked = new AbortController();
    this.asked = asked;
    if (this.words.trim().length < 2 || addressIn(this.words)) {
      this.found = [];
      return;
    }
    try {
      const query = { words: this.words, kinds: "page,document", site: "", lang: "", filters: "", from: 0 };
      this.found = ((await call("desk.find", query, { signal: asked.signal })) as unknown as LinkTarget[]).slice(0, 40);
      this.fault = "";
    } catch (error) {
      if (!isCancelled(error)) this.fault = error instanceof Error ? error.message : String(error);
    }
  }

  private walk(way: Way): void {
    this.way = way;
    this.found = [];
    this.at = 0;
    // What words are still looked for must not stand among what the tree or a folder has.
    clearTimeout(this.timer);
    this.asked?.abort();
    if (way === "words") void this.find();
  }

  get chosen(): ChosenLink | null {
    const text = this.querySelector<HTMLInputElement>("#link-words")?.value.trim() ?? "";
    const address = this.way === "words" ? addressIn(this.words) : "";
    const apart = this.querySelector<HTMLInputElement>("#link-apart")?.checked ?? false;
    if (address) return { href: address, text: text || this.words.trim(), target: apart ? "_blank" : "" };
    const one = this.found[this.at];
    if (!one) return null;
    const href = one.kind === "page" ? pageLink(one.pageId) : fileLink(one.path, one.siteId, this.site);
    const elsewhere = one.kind === "page" && (one.siteId !== this.site || one.lang !== this.nodeId.slice(3, 5));
    return { href, text: text || one.title, target: apart || elsewhere ? "_blank" : "" };
  }

  private key(event: KeyboardEvent): void {
    if (this.way === "tree" || (event.target as Element).matches("select")) return;
    const moves: Record<string, number> = { ArrowDown: 1, ArrowUp: -1 };
    const move = moves[event.key];
    if (move && this.found.length) {
      event.preventDefault();
      this.at = (this.at + move + this.found.length) % this.found.length;
      void this.updateComplete.then(() =>
        this.querySelector("[aria-selected=true]")?.scrollIntoView({ block: "nearest" }),
      );
    } else if (event.key === "Enter" && !event.ctrlKey && this.chosen && !(event.target as Element).matches("button")) {
      event.preventDefault();
      this.tell("tvx-chosen");
    }
  }

  protected override render() {
    return html`<div class="stack" @keydown=${this.key}>
      ${this.now ? html`<p class="note">${t(L.leadsNow, { address: this.now })}</p>` : nothing}
      <div class="choice" role="group" aria-label=${t(L.whereTo)}>${this.wayButton("words", t(L.byWords))}${this.wayButton("tree", t(L.inTheTree))}${this.wayButton("documents", t(L.documents))}</div>
      ${this.place()}
      ${this.fault ? html`<p class="note wrong">${this.fault}</p>` : nothing}
      <ul id="link-found" class="picker-results" role="listbox" tabindex=${this.way === "documents" ? 0 : nothing} aria-activedescendant=${this.way === "documents" && this.found.length ? `link-found-${this.at}` : nothing} aria-label=${t(L.whereTo)} ?hidden=${this.found.length === 0}>${this.found.map((one, i) => this.one(one, i))}</ul>
      ${this.asksText ? html`<div class="field"><label for="link-words">${t(L.wordsOfLink)}</label><input id="link-words" class="input" autocomplete="off" /></div>` : nothing}
    </div>`;
  }

  private wayButton(way: Way, label: string): TemplateResult {
    return html`<button type="button" aria-pressed=${way === this.way} @click=${() => this.walk(way)}>${label}</button>`;
  }

  private place(): TemplateResult {
    if (this.way === "tree")
      return html`<tvx-link-tree .nodeId=${this.nodeId} @tvx-target=${(event: CustomEvent<LinkTarget>) => {
        this.found = [event.detail];
      }}></tvx-link-tree>`;
    if (this.way === "documents")
      return html`<tvx-link-documents .site=${this.site} @tvx-targets=${(event: CustomEvent<LinkTarget[]>) => {
        this.found = event.detail;
        this.at = 0;
      }}></tvx-link-documents>`;
    return this.field();
  }

  private field(): TemplateResult {
    const address = addressIn(this.words);
    return html`<div class="field"><label for="link-target">${t(L.whereTo)}</label>
        <input id="link-target" class="input" autofocus autocomplete="off" role="combobox" aria-expanded=${this.found.length > 0} aria-controls="link-found" aria-activedescendant=${this.found.length ? `link-found-${this.at}` : nothing}
          placeholder=${t(L.whereToHint)} .value=${this.words} @input=${this.typed} /></div>
      ${!this.found.length && this.words.trim().length > 1 && !address ? html`<p class="note">${t(L.nothingFound)}</p>` : nothing}
      ${address && /^https?:/i.test(address) ? html`<label class="inline"><input id="link-apart" type="checkbox" checked /> ${t(L.inNewTab)}</label>` : nothing}`;
  }

  private one(one: LinkTarget, i: number): TemplateResult {
    const place =
      one.kind === "page"
        ? [one.siteId === this.site ? "" : one.siteId, one.path].filter(Boolean).join(" · ")
        : `${one.siteId}/${one.path}`;
    return html`<li role="option" id="link-found-${i}" aria-selected=${i === this.at} @click=${() => {
      this.at = i;
    }} @dblclick=${() => this.tell("tvx-chosen")}>
      ${icon(one.kind === "page" ? "file-text" : "file")}<span class="grow"><span>${one.title}</span><br><span class="note">${place}</span></span>
      ${one.kind === "page" && !one.isLive ? html`<span class="chip">${t(L.notLiveYet)}</span>` : nothing}</li>`;
  }
}

/** Answers where to, "remove", or null. */
export async function linkDialog(
  nodeId: string,
  now: string,
  asksText: boolean,
): Promise<ChosenLink | "remove" | null> {
  let picker: TvxLinkPicker | undefined;
  const answer = await dialog({
    title: t(L.link),
    body: (
      box,
    ) => html`<tvx-link-picker .nodeId=${nodeId} .now=${now} .asksText=${asksText} @tvx-chosen=${() => box.close("take")}
      ${ref((element) => {
        picker = (element as TvxLinkPicker | undefined) ?? picker;
      })}></tvx-link-picker>`,
    actions: () => [
      ...(now ? [{ name: "remove", label: t(L.removeLink), kind: "danger" as const }] : []),
      { name: "take", label: t(L.insert), kind: "primary", run: () => picker?.chosen != null },
    ],
  });
  if (answer === "remove") return "remove";
  return answer === "take" ? (picker?.chosen ?? null) : null;
}
