/** A topic and its reactions, the newest first: read, switched on and off with what belongs to them, written otherwise, removed. */

import { html, type TemplateResult } from "lit";
import { customElement, state } from "lit/decorators.js";
import { icon } from "../kit/icon";
import { ask } from "../kit/tvx-dialog";
import { L, plural, t } from "../labels";
import { dayText } from "../pages/words";
import { go } from "../shell/address";
import { type Contribution, FORUM, removePosts, setPosts, storedPost, textsOf, threadOf } from "./forum-data";
import { answered, hiddenWith, isBelow, shownWith } from "./model";
import { editButton, emptyNote, moduleList, moreButton, noteOf, removeButton, wordButton } from "./parts";
import { ModuleScreen } from "./screen";

/** Threads may be thousands long; nobody reads that far at once. */
const DRAWN_AT_ONCE = 100;

@customElement("tvx-forum-thread")
export class TvxForumThread extends ModuleScreen<readonly Contribution[]> {
  protected readonly entry = FORUM;
  @state() private drawn = DRAWN_AT_ONCE;

  protected override get subject(): string {
    return `${this.forumId}.${this.topicId}`;
  }

  private get forumId(): number {
    return this.number("forumId");
  }

  private get topicId(): number {
    return this.number("topicId");
  }

  protected override get listAddress(): string {
    return `/torvex/torvex_forum/topics.asp?forumId=${this.forumId}`;
  }

  protected read(): Promise<readonly Contribution[]> {
    return threadOf(this.forumId, this.topicId);
  }

  protected heading(posts: readonly Contribution[] | undefined): string {
    return posts?.find((post) => post.reaction_id === 0)?.reaction_title ?? t(L.forumTopics);
  }

  /** The way back is to what was there before, not to all that belongs to it. */
  private switchOff(posts: readonly Contribution[], post: Contribution): void {
    const { forumId, topicId } = this;
    const place = post.reaction_reference;
    const places = post.reaction_id === 0 ? [""] : hiddenWith(posts, place);
    void this.act(
      () => setPosts(forumId, topicId, [place], false),
      (count) => plural(Number(count), L.oneIsOff, L.manyAreOff),
      { run: () => setPosts(forumId, topicId, places, true), said: t(L.asBefore) },
    );
  }

  private switchOn(posts: readonly Contribution[], post: Contribution): void {
    const { forumId, topicId } = this;
    const place = post.reaction_reference;
    const topicWasOff = posts.some((one) => one.reaction_id === 0 && one.reaction_online !== 1);
    const places = post.reaction_id === 0 ? [] : shownWith(posts, place);
    const takeBack = async (): Promise<void> => {
      if (places.length) await setPosts(forumId, topicId, places, false);
      if (topicWasOff) await setPosts(forumId, topicId, [""], false);
    };
    void this.act(
      () => setPosts(forumId, topicId, [place], true),
      (count) => plural(Number(count), L.oneIsOn, L.manyAreOn),
      { run: takeBack, said: t(L.asBefore) },
    );
  }

  private async edit(post: Contribution): Promise<void> {
    const { forumId, topicId } = this;
    await this.fill(
      {
        id: "post",
        title: t(L.editPost),
        values: textsOf(post),
        groups: () => [
          {
            fields: [
              { name: "title", label: t(L.title), kind: "text", longest: 120 },
              { name: "text", label: t(L.kindText), kind: "area", longest: 8000 },
            ],
          },
        ],
        ...storedPost(forumId, topicId, post.reaction_id),
      },
      ({ title }) => title,
    );
  }

  private async removeIt(posts: readonly Contribution[], post: Contribution): Promise<void> {
    const { forumId, topicId } = this;
    const place = post.reaction_reference;
    const isTopic = post.reaction_id === 0;
    const below = posts.filter((one) => one.reaction_id !== 0 && isBelow(one.reaction_reference, place)).length;
    const words = below ? plural(below, L.removesWithOne, L.removesWithMany) : t(L.removesAlone);
    const title = post.reaction_title ?? "";
    if (!(await ask(t(L.removeNamed, { name: title }), words, t(L.delete), "danger"))) return;
    await this.act(
      () => removePosts(forumId, topicId, place),
      (count) => plural(Number(count), L.oneIsGone, L.manyAreGone),
    );
    if (isTopic) void go(this.listAddress, { replace: true });
  }

  protected content(posts: readonly Contribution[]): TemplateResult {
    const topic = posts.find((post) => post.reaction_id === 0);
    if (!topic) return emptyNote("users", t(L.moduleRecordGone));
    const reactions = posts.filter((post) => post.reaction_id !== 0);
    const titles = new Map(reactions.map((post) => [post.reaction_reference, post.reaction_title ?? ""]));
    return html`${this.post(posts, topic, "")}
      ${reactions.length ? html`<p class="note">${t(L.newestFirst)}</p>` : emptyNote("users", t(L.reactionsEmpty))}
      ${moduleList(
        reactions.slice(0, this.drawn),
        ({ reaction_id }) => reaction_id,
        (post) => {
          const above = titles.get(answered(post.reaction_reference));
          return html`<li>${this.post(posts, post, above ? t(L.answerTo, { title: above }) : "")}</li>`;
        },
      )}
      ${reactions.length > this.drawn ? moreButton(() => this.drawMore()) : ""}`;
  }

  private drawMore(): void {
    this.drawn += DRAWN_AT_ONCE;
  }

  private post(posts: readonly Contribution[], post: Contribution, answers: string): TemplateResult {
    const isOn = post.reaction_online === 1;
    const title = post.reaction_title ?? "";
    const told = [post.reaction_author ?? "", dayText(post.reaction_date), answers, post.reaction_email ?? ""];
    return html`<article class="card post ${isOn ? "" : "off"}">
      ${post.reaction_id === 0 ? "" : html`<h2>${title}</h2>`}
      ${noteOf(...told)}
      ${isOn ? "" : html`<p class="note">${icon("eye-off")} ${t(L.postIsOff)}</p>`}
      ${post.reaction_text ? html`<p class="post-text">${post.reaction_text}</p>` : ""}
      ${
        this.mayEdit
          ? html`<div class="module-buttons">${
              isOn
                ? wordButton("power-off", t(L.switchOff), t(L.switchOffNamed, { name: title }), () =>
                    this.switchOff(posts, post),
                  )
                : wordButton("power", t(L.switchOn), t(L.switchOnNamed, { name: title }), () =>
                    this.switchOn(posts, post),
                  )
            }
          ${editButton(title, () => this.edit(post))}
          ${removeButton(title, () => this.removeIt(posts, post))}</div>`
          : ""
      }</article>`;
  }
}
