-- What visitors write besides a title, and how a forum asks for it. Topics are shown unless they say otherwise:
-- those that are there already have been read by everybody.

alter table TORVEX_FORUM_TOPICS add column topic_text {text};
alter table TORVEX_FORUM_TOPICS add column topic_author {text};
alter table TORVEX_FORUM_TOPICS add column topic_email {text};
alter table TORVEX_FORUM_TOPICS add column topic_online {flag} default 1;
alter table TORVEX_FORUM_TOPICS add column topic_lastDate {text};
alter table TORVEX_FORUM_TOPICS add column topic_post {text};

alter table TORVEX_FORUM_REACTIONS add column reaction_text {text};
alter table TORVEX_FORUM_REACTIONS add column reaction_author {text};
alter table TORVEX_FORUM_REACTIONS add column reaction_email {text};
alter table TORVEX_FORUM_REACTIONS add column reaction_post {text};

-- A form that is sent twice has one post.
create unique index idx_torvex_forum_topics_forumid_post on TORVEX_FORUM_TOPICS (topic_forumId, topic_post);
create unique index idx_torvex_forum_reactions_forumid_topicid_post on TORVEX_FORUM_REACTIONS (reaction_forumId, reaction_topicId, reaction_post);
create index idx_torvex_forum_topics_forumid_last on TORVEX_FORUM_TOPICS (topic_forumId, coalesce(topic_lastDate, topic_dateCreation, ''), topic_id);

-- 0 not asked for, 1 may be given, 2 must be given. The words send a post to the moderators, divided by commas.
alter table TORVEX_FORUM_DESIGN add column forum_askName {number} default 2;
alter table TORVEX_FORUM_DESIGN add column forum_askEmail {number} default 0;
alter table TORVEX_FORUM_DESIGN add column forum_emailTo {text};
alter table TORVEX_FORUM_DESIGN add column forum_words {text};

alter table TORVEX_FORUM_LIVE add column forum_askName {number} default 2;
alter table TORVEX_FORUM_LIVE add column forum_askEmail {number} default 0;
alter table TORVEX_FORUM_LIVE add column forum_emailTo {text};
alter table TORVEX_FORUM_LIVE add column forum_words {text};

-- Notices that wait to be sent. A line is gone when it is sent; one that was given up stays for a while, so that
-- people can look why.
create table TORVEX_MAIL_QUEUE (
  mail_id {identity},
  mail_to {text},
  mail_from {text},
  mail_subject {text},
  mail_text {text},
  mail_created {date},
  mail_next {date},
  mail_tries {number} default 0,
  mail_failed {flag} default 0,
  mail_error {text}
);

create index idx_torvex_mail_queue_failed_next on TORVEX_MAIL_QUEUE (mail_failed, mail_next);
