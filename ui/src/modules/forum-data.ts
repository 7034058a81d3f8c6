/** Forums and what was written in them, as they come from the server and go there. */

import { type AnswerOf, type Batch, call } from "../api";
import { AT_ONCE } from "./model";
import type { Place } from "./screen";
import { behind, foundAmong, foundInPieces, type Stored } from "./stored";

export const FORUM = 243;

export type Forum = AnswerOf<"registers.getForums">[number];
export type Topic = AnswerOf<"registers.getTopics">[number];
export type Contribution = AnswerOf<"registers.getReactions">[number];

export const forumsOf = (place: Place): Promise<readonly Forum[]> => call("registers.getForums", place);

export type Waiting = AnswerOf<"Forum.getWaiting">[number];

/** What waits for a moderator, the oldest first. */
export const waitingOf = (place: Place): Promise<readonly Waiting[]> => call("Forum.getWaiting", place);

/** What a form writes of a forum. */
export const valuesOf = (forum: Forum) => ({
  name: forum.forum_name ?? "",
  description: forum.forum_desc ?? "",
  hotPeriod: forum.forum_hotPeriod,
  reactionsOnline: forum.forum_reactionsOnline,
  archiveAfter: forum.forum_archiveAfter,
  archiveVisible: forum.forum_archiveVisible,
  sendEmail: forum.forum_sendEmail,
  emailFrom: forum.forum_emailFrom ?? "",
  emailTo: forum.forum_emailTo ?? "",
  emailSubject: forum.forum_emailSubject ?? "",
  pageSize: forum.forum_pageSize,
  askName: forum.forum_askName,
  askEmail: forum.forum_askEmail,
  words: forum.forum_words ?? "",
  marked: forum.forum_deleted,
});
export type ForumValues = ReturnType<typeof valuesOf>;

export const newForum: ForumValues = {
  name: "",
  description: "",
  hotPeriod: 7,
  reactionsOnline: 0,
  archiveAfter: 0,
  archiveVisible: 1,
  sendEmail: 0,
  emailFrom: "",
  emailTo: "",
  emailSubject: "",
  pageSize: 20,
  askName: 2,
  askEmail: 0,
  words: "",
  marked: 0,
};

export const saveForum = (place: Place, forumId: number, values: ForumValues, work: Batch): Promise<unknown> => {
  const given = {
    forumId,
    ...place,
    ...values,
    reactionsOnline: values.reactionsOnline === 1,
    archiveVisible: values.archiveVisible === 1,
    sendEmail: values.sendEmail === 1,
    marked: values.marked === 1,
  };
  return behind(work, work.do("registers.saveForum", given));
};

export const storedForum = (place: Place, forumId: number): Stored<ForumValues> => ({
  now: () =>
    foundAmong(
      (work, asBefore) => work.do("registers.getForums", { ...place }, asBefore),
      (one) => one.forum_id === forumId,
      valuesOf,
    ),
  save: (values, work) => saveForum(place, forumId, values, work),
});

export const publishForum = (place: Place, forumId: number): Promise<unknown> =>
  call("Forum.publish", { forumId, ...place });

export const topicsOf = (forumId: number, from: number): Promise<readonly Topic[]> =>
  call("registers.getTopics", { forumId, from });

/** The whole thread: a switch tells beforehand what goes with it. */
export async function threadOf(forumId: number, topicId: number): Promise<readonly Contribution[]> {
  const posts: Contribution[] = [];
  for (let from = 0; ; from += AT_ONCE) {
    const some = await call("registers.getReactions", { forumId, topicId, from });
    posts.push(...some);
    if (some.length < AT_ONCE) return posts;
  }
}

export const setPosts = (forumId: number, topicId: number, places: readonly string[], on: boolean): Promise<string> =>
  call("registers.setReactions", { forumId, topicId, references: places.join(","), on });

export const removePosts = (forumId: number, topicId: number, place: string): Promise<string> =>
  call("registers.deleteReactions", { forumId, topicId, references: place });

/** What a form writes of a topic or a reaction. */
export const textsOf = ({ reaction_title, reaction_text }: Contribution) => ({
  title: reaction_title ?? "",
  text: reaction_text ?? "",
});
export type PostTexts = ReturnType<typeof textsOf>;

export const storedPost = (forumId: number, topicId: number, reactionId: number): Stored<PostTexts> => ({
  now: () =>
    foundInPieces(
      (from) => (work, asBefore) => work.do("registers.getReactions", { forumId, topicId, from }, asBefore),
      (one) => one.reaction_id === reactionId,
      textsOf,
    ),
  save: ({ title, text }, work) =>
    behind(work, work.do("registers.saveReaction", { forumId, topicId, reactionId, title, text })),
});
