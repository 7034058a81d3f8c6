#include "modules/forum/Topics.h"

#include <algorithm>
#include <cmath>

#include "modules/forum/ForumDates.h"
#include "platform/db/Connection.h"
#include "platform/db/TrimmedText.h"
#include "platform/text/Text.h"
#include "records/DateWindow.h"

namespace torvex {

namespace {

constexpr std::string_view countTopics =
    "select count(*) as n from TORVEX_FORUM_TOPICS where topic_forumId = ? and topic_online = 1 "
    "and coalesce(topic_lastDate, topic_dateCreation, '') >= ? "
    "and coalesce(topic_lastDate, topic_dateCreation, '') < ?";
constexpr std::string_view selectTopics =
    "select topic_id, topic_title, topic_author, topic_dateCreation, "
    "coalesce(topic_lastDate, topic_dateCreation, '') as lastDay, "
    "(select count(*) from TORVEX_FORUM_REACTIONS where reaction_forumId = topic_forumId "
    "and reaction_topicId = topic_id and reaction_online = 1) as reactions "
    "from TORVEX_FORUM_TOPICS where topic_forumId = ? and topic_online = 1 "
    "and coalesce(topic_lastDate, topic_dateCreation, '') >= ? "
    "and coalesce(topic_lastDate, topic_dateCreation, '') < ? "
    "order by coalesce(topic_lastDate, topic_dateCreation, '') desc, topic_id desc limit ? offset ?";
constexpr std::string_view selectTopic =
    "select topic_id, topic_title, topic_text, topic_author, topic_dateCreation, "
    "coalesce(topic_lastDate, topic_dateCreation, '') as lastDay "
    "from TORVEX_FORUM_TOPICS where topic_forumId = ? and topic_id = ? and topic_online = 1";
constexpr std::string_view countReactions =
    "select count(*) as n, coalesce(sum(length(reaction_text)), 0) as letters from TORVEX_FORUM_REACTIONS "
    "where reaction_forumId = ? and reaction_topicId = ? and reaction_online = 1";
constexpr std::string_view selectReactions =
    "select reaction_id, reaction_reference, reaction_title, reaction_text, reaction_author, reaction_date "
    "from TORVEX_FORUM_REACTIONS where reaction_forumId = ? and reaction_topicId = ? "
    "and reaction_online = 1 order by reaction_reference, reaction_id";
constexpr std::string_view selectTitles =
    "select reaction_id, reaction_reference, reaction_title, "
    "case when reaction_id = ? then reaction_text end as reaction_text, reaction_author, reaction_date "
    "from TORVEX_FORUM_REACTIONS where reaction_forumId = ? and reaction_topicId = ? "
    "and reaction_online = 1 order by reaction_reference, reaction_id";
constexpr std::string_view selectReaction =
    "select reaction_id, reaction_reference, reaction_title, reaction_text, reaction_author, reaction_date "
    "from TORVEX_FORUM_REACTIONS where reaction_forumId = ? and reaction_topicId = ? and reaction_id = ? "
    "and reaction_online = 1";

/// No day lies before it.
constexpr std::string_view firstDay = "";

/// The days of the last post of a topic of that age: from the first on, before the second.
struct Days {
    std::string from;
    std::string before;
};

bool hasAge(const ForumRecord& forum) {
    return forum.archiveAfter > 0;
}

Days daysOf(const ForumRecord& forum, TopicAge age, const DateTime& now) {
    if (!hasAge(forum)) {
        const std::string_view none = age == TopicAge::Archived ? firstDay : lastOfDays;
        return {std::string(firstDay), std::string(none)};
    }
    const std::string oldest = dayBefore(now, forum.archiveAfter);
    if (age == TopicAge::Current) return {oldest, std::string(lastOfDays)};
    return {std::string(firstDay), oldest};
}

double countOf(db::Rows rows) {
    rows.next();
    return rows.number("n");
}

Contribution topicFrom(const db::Rows& rows) {
    return {static_cast<int>(rows.number("topic_id")),
            {},
            trimmed(rows, "topic_title"),
            {},
            trimmed(rows, "topic_author"),
            trimmed(rows, "topic_dateCreation")};
}

Contribution reactionFrom(const db::Rows& rows) {
    return {static_cast<int>(rows.number("reaction_id")),
            trimmed(rows, "reaction_reference"),
            trimmed(rows, "reaction_title"),
            rows.text("reaction_text"),
            trimmed(rows, "reaction_author"),
            trimmed(rows, "reaction_date")};
}

int pageSizeOf(const ForumRecord& forum) {
    return forum.pageSize > 0 ? std::min(forum.pageSize, mostTopicsOnPage) : mostTopicsOnPage;
}

bool isLong(db::Connection& connection, int forumId, int topicId) {
    auto rows = connection.query(countReactions, {forumId, topicId});
    rows.next();
    return rows.number("n") > static_cast<double>(mostTextsOfTopic) ||
           rows.number("letters") > mostLettersOfTopic;
}

double countOfAge(db::Connection& connection, const ForumRecord& forum, const Days& days) {
    return countOf(connection.query(countTopics, {forum.id, days.from, days.before}));
}

}  // namespace

TopicPage topicsOf(db::Connection& connection, const ForumRecord& forum, TopicAge age, double page,
                   const DateTime& now) {
    const Days days = daysOf(forum, age, now);
    const int size = pageSizeOf(forum);
    TopicPage found;
    found.pages = std::max(1, static_cast<int>(std::ceil(countOfAge(connection, forum, days) / size)));
    found.page = static_cast<int>(std::clamp(std::floor(page), 1.0, static_cast<double>(found.pages)));
    auto rows =
        connection.query(selectTopics, {forum.id, days.from, days.before, size, (found.page - 1) * size});
    while (rows.next())
        found.topics.push_back({topicFrom(rows), rows.number("reactions"), trimmed(rows, "lastDay")});
    return found;
}

bool hasArchive(db::Connection& connection, const ForumRecord& forum, const DateTime& now) {
    return forum.isArchiveVisible && hasAge(forum) &&
           countOfAge(connection, forum, daysOf(forum, TopicAge::Archived, now)) > 0;
}

std::optional<Contribution> topicOf(db::Connection& connection, const ForumRecord& forum, int topicId,
                                    const DateTime& now) {
    auto rows = connection.query(selectTopic, {forum.id, topicId});
    if (!rows.next()) return std::nullopt;
    const bool isArchived =
        hasAge(forum) && text::compare(rows.text("lastDay"), dayBefore(now, forum.archiveAfter)) < 0;
    if (isArchived && !forum.isArchiveVisible) return std::nullopt;
    Contribution topic = topicFrom(rows);
    topic.text = rows.text("topic_text");
    return topic;
}

std::vector<Contribution> reactionsOf(db::Connection& connection, int forumId, int topicId, int shown) {
    auto rows = isLong(connection, forumId, topicId)
                    ? connection.query(selectTitles, {shown, forumId, topicId})
                    : connection.query(selectReactions, {forumId, topicId});
    std::vector<Contribution> reactions;
    while (rows.next()) reactions.push_back(reactionFrom(rows));
    return reactions;
}

std::optional<Contribution> reactionOf(db::Connection& connection, int forumId, int topicId, int reactionId) {
    auto rows = connection.query(selectReaction, {forumId, topicId, reactionId});
    if (!rows.next()) return std::nullopt;
    return reactionFrom(rows);
}

}  // namespace torvex
