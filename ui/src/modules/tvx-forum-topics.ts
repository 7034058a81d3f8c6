/** The topics of a forum, the liveliest first. */

import { html, type TemplateResult } from "lit";
import { customElement } from "lit/decorators.js";
import { icon } from "../kit/icon";
import { L, plural, t } from "../labels";
import { dayText } from "../pages/words";
import { FORUM, forumsOf, type Topic, topicsOf } from "./forum-data";
import { hasMore } from "./model";
import { emptyNote, moduleList, moreButton, noteOf } from "./parts";
import { ModuleScreen, type Place } from "./screen";

interface Topics {
  readonly name: string;
  readonly topics: readonly Topic[];
  readonly more: boolean;
}

@customElement("tvx-forum-topics")
export class TvxForumTopics extends ModuleScreen<Topics> {
  protected readonly entry = FORUM;

  protected override get subject(): string {
    return this.params.get("forumId") ?? "";
  }

  protected async read(place: Place): Promise<Topics> {
    const forumId = this.number("forumId");
    const [forums, topics] = await Promise.all([forumsOf(place), topicsOf(forumId, 0)]);
    const name = forums.find((one) => one.forum_id === forumId)?.forum_name ?? t(L.forumTopics);
    return { name, topics, more: hasMore(topics) };
  }

  private async more(data: Topics): Promise<void> {
    await this.goOn(data, async () => {
      const next = await topicsOf(this.number("forumId"), data.topics.length);
      return { ...data, topics: [...data.topics, ...next], more: hasMore(next) };
    });
  }

  protected override get listAddress(): string {
    return "/torvex/torvex_forum/forums.asp";
  }

  protected heading(data: Topics | undefined): string {
    return data?.name ?? t(L.forumTopics);
  }

  protected content(data: Topics): TemplateResult {
    if (data.topics.length === 0) return emptyNote("users", t(L.topicsEmpty));
    return html`${moduleList(
      data.topics,
      ({ topic_id }) => topic_id,
      (topic) => this.row(topic),
    )}
      ${data.more ? moreButton(() => this.more(data)) : ""}`;
  }

  private row(topic: Topic): TemplateResult {
    const address = `/torvex/torvex_forum/reactions.asp?forumId=${this.number("forumId")}&topicId=${topic.topic_id}`;
    const told = [
      topic.topic_author ?? "",
      dayText(topic.lastDay),
      plural(topic.reactions, L.oneReaction, L.manyReactions),
    ];
    if (topic.hidden) told.push(plural(topic.hidden, L.oneHidden, L.manyHidden));
    return html`<li class="card module-row ${topic.topic_online === 1 ? "" : "post off"}">
      <div class="module-name"><a href=${address}><strong>${topic.topic_title}</strong></a>
        ${noteOf(...told)}</div>
      ${topic.topic_online === 1 ? "" : html`<span class="mark off">${icon("eye-off")}<span class="word">${t(L.postIsOff)}</span></span>`}</li>`;
  }
}
