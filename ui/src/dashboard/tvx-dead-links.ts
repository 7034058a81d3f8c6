import { html, nothing } from "lit";
import { customElement, state } from "lit/decorators.js";
import { call } from "../api";
import { TvxElement, Watch } from "../kit/element";
import { icon } from "../kit/icon";
import "../kit/tvx-table";
import type { TableColumn } from "../kit/tvx-table";
import { L, t } from "../labels";
import { go, pageAddress } from "../shell/address";
import { onPagesChanged, workplace } from "../shell/workplace";

interface DeadLink {
  pageId: number;
  nodeId: string;
  title: string;
  bodyId: number;
  target: string;
  reason: "gone" | "notLive" | "offline" | "noFile" | "unchosen";
  /** Of a page; of one that is gone the last that is known, or nothing. */
  targetTitle?: string;
}

/** Where a link leads, and why that is nowhere. */
function targetWord({ target, reason, targetTitle: title }: DeadLink): string {
  switch (reason) {
    case "unchosen":
      return t(L.linkUnchosen);
    case "noFile":
      return t(L.linkNoFile, { path: target });
    case "gone":
      return title ? t(L.linkGoneTitled, { title, id: target }) : t(L.linkGone, { id: target });
    default:
      return t(reason === "offline" ? L.linkOffline : L.linkNotLive, {
        title: title || t(L.pageNumber, { id: target }),
      });
  }
}

/** Links of this website that lead nowhere. */
@customElement("tvx-dead-links")
export class TvxDeadLinks extends TvxElement {
  @state() private rows: DeadLink[] = [];
  private readonly workplace = new Watch(this, workplace, () => void this.load());
  private website = "";
  private forget?: () => void;

  override connectedCallback(): void {
    super.connectedCallback();
    this.forget = onPagesChanged(() => void this.load(true));
    void this.load();
  }

  override disconnectedCallback(): void {
    super.disconnectedCallback();
    this.forget?.();
  }

  private async load(again = false): Promise<void> {
    const { site, lang } = this.workplace.value;
    const website = `${site}.${lang}`;
    if (!site || (website === this.website && !again)) return;
    this.website = website;
    this.rows = (await call("desk.getDeadLinks", { site, lang }, { background: true }).catch(() => [])) as DeadLink[];
  }

  private readonly keyOf = ({ pageId, bodyId, target }: DeadLink) => `${pageId}.${bodyId}.${target}`;

  protected override render() {
    if (this.rows.length === 0) return nothing;
    const columns: TableColumn<DeadLink>[] = [
      {
        id: "title",
        label: t(L.page),
        cell: ({ pageId, title }) => html`<a class="plain" href=${pageAddress(pageId)} tabindex="-1">${title}</a>`,
        by: ({ title }) => title.toLowerCase(),
      },
      {
        id: "target",
        label: t(L.leadsTo),
        cell: (link) => html`<span title=${targetWord(link)}>${targetWord(link)}</span>`,
        by: targetWord,
        width: "60%",
      },
    ];
    return html`
      <section class="card work" aria-label=${t(L.deadLinks)}>
        <header class="work-head">${icon("link-2-off")}<h2>${t(L.deadLinks)}</h2><span class="count">${this.rows.length}</span></header>
        <tvx-table .label=${t(L.deadLinks)} .columns=${columns} .rows=${this.rows} .keyOf=${this.keyOf} @tvx-open=${(event: CustomEvent<DeadLink>) => go(pageAddress(event.detail.pageId))}></tvx-table>
      </section>
    `;
  }
}
