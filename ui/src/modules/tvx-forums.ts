/** The forums of a website: what they are, and the way into what was written in them. */

import { html, type TemplateResult } from "lit";
import { customElement } from "lit/decorators.js";
import type { Batch } from "../api";
import { icon } from "../kit/icon";
import { L, plural, t } from "../labels";
import { dayText } from "../pages/words";
import { type Group, numbered } from "./form";
import {
  FORUM,
  type Forum,
  type ForumValues,
  forumsOf,
  newForum,
  publishForum,
  saveForum,
  storedForum,
  valuesOf,
  type Waiting,
  waitingOf,
} from "./forum-data";
import { stateOf } from "./model";
import { editButton, emptyNote, markButton, moduleList, noteOf, publishButton, recordState } from "./parts";
import { ModuleScreen, type Place } from "./screen";
import { saveMark } from "./stored";

const asked = () => numbered(t(L.forumNotAsked), t(L.forumMayBeGiven), t(L.forumMustBeGiven));

const groups = (): readonly Group<ForumValues>[] => [
  {
    fields: [
      { name: "name", label: t(L.name), kind: "text" },
      { name: "description", label: t(L.description), kind: "text", longest: 500 },
      { name: "hotPeriod", label: t(L.forumHotPeriod), kind: "number", hint: t(L.forumHotPeriodHint) },
      { name: "pageSize", label: t(L.forumPageSize), kind: "number", most: 100, hint: t(L.zeroIsAll) },
      { name: "archiveAfter", label: t(L.forumArchiveAfter), kind: "number", hint: t(L.zeroIsNever) },
      { name: "archiveVisible", label: t(L.archiveVisible), kind: "check" },
    ],
  },
  {
    heading: t(L.forumPosts),
    fields: [
      { name: "reactionsOnline", label: t(L.forumAtOnce), kind: "check", hint: t(L.forumAtOnceHint) },
      { name: "words", label: t(L.forumWords), kind: "text", longest: 2000, hint: t(L.forumWordsHint) },
      { name: "askName", label: t(L.forumAskName), kind: "choice", choices: asked() },
      { name: "askEmail", label: t(L.forumAskEmail), kind: "choice", choices: asked() },
    ],
  },
  {
    heading: t(L.forumMail),
    fields: [
      { name: "sendEmail", label: t(L.forumSendMail), kind: "check" },
      { name: "emailFrom", label: t(L.forumMailFrom), kind: "text", longest: 254 },
      { name: "emailTo", label: t(L.forumMailTo), kind: "text", longest: 1000, hint: t(L.forumMailToHint) },
      { name: "emailSubject", label: t(L.forumMailSubject), kind: "text" },
    ],
  },
];

interface Forums {
  readonly forums: readonly Forum[];
  readonly waiting: readonly Waiting[];
}

/** More than that isn't looked through in a list. */
const MOST_WAITING = 100;

@customElement("tvx-forums")
export class TvxForums extends ModuleScreen<Forums> {
  protected readonly entry = FORUM;

  protected async read(place: Place): Promise<Forums> {
    const [forums, waiting] = await Promise.all([forumsOf(place), waitingOf(place)]);
    return { forums, waiting };
  }

  protected heading(): string {
    return t(L.forums);
  }

  private async add(): Promise<void> {
    const { place } = this;
    const save = (given: ForumValues, work: Batch) => saveForum(place, 0, given, work);
    await this.fill({ id: "forum", title: t(L.newForum), values: newForum, groups, save }, ({ name }) => name);
  }

  private async edit(forum: Forum): Promise<void> {
    const stored = storedForum(this.place, forum.forum_id);
    await this.fill(
      { id: "forum", title: forum.forum_name, values: valuesOf(forum), groups, ...stored },
      ({ name }) => name,
    );
  }

  private mark(forum: Forum): void {
    const stored = storedForum(this.place, forum.forum_id);
    void this.flipMark(forum.forum_name, forum.forum_deleted === 1, (marked) => saveMark(stored, marked));
  }

  private async publish(forums: readonly Forum[], forumId: number): Promise<void> {
    const { place } = this;
    const going = forums
      .filter((one) => one.forum_deleted && (forumId === 0 || one.forum_id === forumId))
      .map((one) => `${one.forum_name} (${plural(one.topics, L.oneTopic, L.manyTopics)})`);
    await this.askAndPublish(going, () => publishForum(place, forumId));
  }

  protected override tools({ forums }: Forums): TemplateResult {
    if (!this.mayEdit) return html``;
    return html`<button type="button" class="button" @click=${() => this.publish(forums, 0)}>${icon("send")}${t(L.publishAll)}</button>
      <button type="button" class="button primary" @click=${() => this.add()}>${icon("plus")}${t(L.newForum)}</button>`;
  }

  protected content({ forums, waiting }: Forums): TemplateResult {
    if (forums.length === 0) return emptyNote("users", t(L.forumsEmpty));
    return html`${moduleList(
      forums,
      ({ forum_id }) => forum_id,
      (forum) => this.row(forums, forum),
    )}${waiting.length ? this.waiting(waiting) : ""}`;
  }

  private waiting(waiting: readonly Waiting[]): TemplateResult {
    return html`<h2>${t(L.waitingPosts)}</h2><ul class="module-list" role="list">${waiting.slice(0, MOST_WAITING).map(
      (post) => html`<li class="card module-row post off"><div class="module-name">
        <a href="/torvex/torvex_forum/reactions.asp?forumId=${post.forum_id}&topicId=${post.topic_id}"><strong>${post.title}</strong></a>
        ${noteOf(post.author ?? "", dayText(post.day), post.forum_name)}
        ${post.text ? html`<p class="cut">${post.text}</p>` : ""}</div></li>`,
    )}</ul>`;
  }

  private row(forums: readonly Forum[], forum: Forum): TemplateResult {
    const { forum_id: id, forum_name: name, topics, hidden } = forum;
    const twins = { isLive: forum.isLive, modified: forum.forum_modified, deleted: forum.forum_deleted };
    return html`<li class="card module-row">
      <div class="module-name"><a href="/torvex/torvex_forum/topics.asp?forumId=${id}"><strong>${name}</strong></a>
        <p class="note">${plural(topics, L.oneTopic, L.manyTopics)}${hidden ? html` · ${plural(hidden, L.oneHidden, L.manyHidden)}` : ""}</p></div>
      ${recordState(twins)}
      ${
        this.mayEdit
          ? html`<div class="module-buttons">${editButton(name, () => this.edit(forum))}
          ${markButton(name, forum.forum_deleted, () => this.mark(forum))}
          ${stateOf(twins) === "live" ? "" : publishButton(name, () => this.publish(forums, id))}</div>`
          : ""
      }</li>`;
  }
}
