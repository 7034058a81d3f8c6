// What a body is: text, or a feed, with what that feed gives now shown on the page.
import { html, nothing } from "lit";
import { call } from "../api";
import { dialog, icon, type TvxDialog, toast } from "../kit";
import { L, t } from "../labels";
import { nextMoveIn } from "../pages/actions";
import { doingOn } from "./body-menu";
import { tellChange } from "./session";
import type { TvxPageFrame } from "./tvx-page-frame";
import type { BodyKind, BodyPlace } from "./view/places";
import { shownOf } from "./view/render";

interface Feed {
  feedId: number;
  feedName: string;
  feedDescription: string;
}

const numbers: Record<BodyKind, number> = { text: 1, html: 2, xml: 3 };

class Setup {
  kind: BodyKind;
  feedId: number;
  feeds: Feed[] = [];
  sample = "";
  private asked = 0;

  constructor(
    private readonly frame: TvxPageFrame,
    private readonly place: BodyPlace,
    private readonly draw: () => void,
  ) {
    this.kind = place.kind;
    this.feedId = place.feedId;
  }

  async choose(kind: BodyKind): Promise<void> {
    this.kind = kind;
    this.feeds = [];
    this.draw();
    if (kind === "text") return;
    const [site, lang] = [this.frame.nodeId.slice(0, 2), this.frame.nodeId.slice(3, 5)];
    const feeds = await call(kind === "html" ? "cManager.getHTMLfeedList" : "cManager.getXMLfeedList", { site, lang });
    if (this.kind !== kind) return;
    this.feeds = feeds;
    if (!feeds.some(({ feedId }) => feedId === this.feedId)) this.feedId = feeds[0]?.feedId ?? 0;
    this.draw();
    await this.try();
  }

  /** Shows on the page what the feed gives. */
  async try(): Promise<void> {
    if (this.kind === "text" || !this.feedId) return;
    const asked = ++this.asked;
    this.sample = t(L.feedAsked);
    this.draw();
    const given = await call(this.kind === "html" ? "cManager.getBodyHTML" : "cManager.getBodyXML", {
      feedId: this.feedId,
    });
    if (asked !== this.asked) return;
    this.sample = given.trim() ? t(L.feedShown) : t(L.feedEmpty);
    for (const { cell } of this.frame.placesOf(this.place.bodyId))
      cell.replaceChildren(shownOf(cell.ownerDocument, given));
    this.draw();
  }

  async save(): Promise<void> {
    const { bodyId } = this.place;
    await call("cManager.saveBodySetup", {
      pageIdent: String(this.frame.pageId),
      bodyId,
      bodyType: numbers[this.kind],
      feedId: this.kind === "text" ? 0 : this.feedId,
    });
  }

  body() {
    const kinds: [BodyKind, string][] = [
      ["text", t(L.kindText)],
      ["html", t(L.kindHtml)],
      ["xml", t(L.kindXml)],
    ];
    const radio = ([kind, label]: [BodyKind, string]) =>
      html`<label class="inline"><input type="radio" name="body-kind" value=${kind} ?checked=${kind === this.kind} @change=${() => void this.choose(kind)} /> ${label}</label>`;
    return html`<div class="stack">
      <fieldset class="field body-kinds"><legend>${t(L.kindOfBody)}</legend>${kinds.map(radio)}</fieldset>
      ${this.kind === "text" ? nothing : this.feedChoice()}
    </div>`;
  }

  private feedChoice() {
    if (!this.feeds.length) return html`<p class="notice">${icon("info")}<span>${t(L.noFeeds)}</span></p>`;
    const change = (event: Event) => {
      this.feedId = Number((event.target as HTMLSelectElement).value);
      void this.try();
    };
    const now = this.feeds.find(({ feedId }) => feedId === this.feedId);
    return html`<div class="field"><label for="body-feed">${t(L.feed)}</label>
      <select id="body-feed" class="select" @change=${change}>${this.feeds.map(({ feedId, feedName }) => html`<option value=${feedId} ?selected=${feedId === this.feedId}>${feedName}</option>`)}</select>
      ${now?.feedDescription ? html`<p class="note">${now.feedDescription}</p>` : nothing}</div>
      <p class="note" role="status">${this.sample}</p>`;
  }
}

export async function setupDialog(frame: TvxPageFrame, place: BodyPlace): Promise<void> {
  if (!(await frame.leave())) return;
  let box: TvxDialog | undefined;
  const setup = new Setup(frame, place, () => box?.requestUpdate());
  const ended = dialog({
    title: t(L.setupOfBody, { number: place.bodyId }),
    body: (own) => {
      box = own;
      return setup.body();
    },
    nextStep: (problem, own) => nextMoveIn(own, problem, doingOn(frame)),
    actions: () => [
      { name: "cancel", label: t(L.cancel) },
      {
        name: "save",
        label: t(L.save),
        kind: "primary",
        disabled: setup.kind !== "text" && !setup.feedId ? t(L.noFeeds) : "",
        run: () => setup.save(),
      },
    ],
  });
  void setup.choose(setup.kind);
  if ((await ended) === "save") {
    tellChange(frame.page);
    toast(t(L.setupOfBodySaved, { number: place.bodyId }));
  }
  frame.reload();
}
