#include "modules/forum/Moderation.h"

#include <algorithm>
#include <string>

#include "platform/db/Connection.h"
#include "platform/db/Grid.h"

namespace torvex {

namespace {

constexpr std::string_view selectWaiting =
    "select forum_id, topic_id, 0 as reaction_id, '' as reaction_reference, topic_title as title, "
    "topic_author as author, topic_dateCreation as day, topic_text as text, forum_name "
    "from TORVEX_FORUM_TOPICS inner join TORVEX_FORUM_LIVE on forum_id = topic_forumId "
    "where forum_site = ? and forum_lang = ? and topic_online = 0 "
    "union all "
    "select forum_id, reaction_topicId, reaction_id, reaction_reference, reaction_title, reaction_author, "
    "reaction_date, reaction_text, forum_name "
    "from TORVEX_FORUM_REACTIONS inner join TORVEX_FORUM_LIVE on forum_id = reaction_forumId "
    "where forum_site = ? and forum_lang = ? and reaction_online = 0 "
    "order by 7, 1, 2, 3";

/// Whoever posts there waits until this is done.
constexpr std::string_view holdTopic =
    "update TORVEX_FORUM_TOPICS set topic_title = topic_title where topic_forumId = ? and topic_id = ?";
constexpr std::string_view selectPlace =
    "select reaction_id from TORVEX_FORUM_REACTIONS "
    "where reaction_forumId = ? and reaction_topicId = ? and reaction_reference = ?";
constexpr std::string_view showTopic =
    "update TORVEX_FORUM_TOPICS set topic_online = 1 where topic_forumId = ? and topic_id = ?";
constexpr std::string_view hideTopic =
    "update TORVEX_FORUM_TOPICS set topic_online = 0 where topic_forumId = ? and topic_id = ?";
constexpr std::string_view showReaction =
    "update TORVEX_FORUM_REACTIONS set reaction_online = 1 "
    "where reaction_forumId = ? and reaction_topicId = ? and reaction_reference = ?";
constexpr std::string_view hideBranch =
    "update TORVEX_FORUM_REACTIONS set reaction_online = 0 "
    "where reaction_forumId = ? and reaction_topicId = ? "
    "and (reaction_reference = ? or (reaction_reference >= ? and reaction_reference < ?))";
constexpr std::string_view removeBranch =
    "delete from TORVEX_FORUM_REACTIONS where reaction_forumId = ? and reaction_topicId = ? "
    "and (reaction_reference = ? or (reaction_reference >= ? and reaction_reference < ?))";
constexpr std::string_view removeReactions =
    "delete from TORVEX_FORUM_REACTIONS where reaction_forumId = ? and reaction_topicId = ?";
constexpr std::string_view removeTopic =
    "delete from TORVEX_FORUM_TOPICS where topic_forumId = ? and topic_id = ?";
constexpr std::string_view noteLastDay =
    "update TORVEX_FORUM_TOPICS set topic_lastDate = (select max(reaction_date) from TORVEX_FORUM_REACTIONS "
    "where reaction_forumId = topic_forumId and reaction_topicId = topic_id and reaction_online = 1) "
    "where topic_forumId = ? and topic_id = ?";

bool isThere(db::Connection& transaction, int forumId, int topicId, std::string_view place) {
    if (transaction.execute(holdTopic, {forumId, topicId}) == 0) return false;
    return place.empty() || transaction.query(selectPlace, {forumId, topicId, place}).next();
}

void changeBranch(db::Connection& transaction, std::string_view statement, int forumId, int topicId,
                  std::string_view place) {
    // "/" follows "." and comes before every digit and letter.
    const std::string from = std::string(place) + ".";
    const std::string before = std::string(place) + "/";
    transaction.execute(statement, {forumId, topicId, place, from, before});
    transaction.execute(noteLastDay, {forumId, topicId});
}

}  // namespace

Value waitingPosts(db::Connection& connection, std::string_view site, std::string_view lang) {
    return db::gridOf(connection.query(selectWaiting, {site, lang, site, lang}));
}

bool showPost(db::Connection& transaction, int forumId, int topicId, std::string_view place) {
    if (!isThere(transaction, forumId, topicId, place)) return false;
    transaction.execute(showTopic, {forumId, topicId});
    for (std::size_t end = 0; end < place.size();) {
        end = std::min(place.find('.', end + 1), place.size());
        transaction.execute(showReaction, {forumId, topicId, place.substr(0, end)});
    }
    transaction.execute(noteLastDay, {forumId, topicId});
    return true;
}

bool hidePost(db::Connection& transaction, int forumId, int topicId, std::string_view place) {
    if (!isThere(transaction, forumId, topicId, place)) return false;
    if (place.empty()) {
        transaction.execute(hideTopic, {forumId, topicId});
    } else {
        changeBranch(transaction, hideBranch, forumId, topicId, place);
    }
    return true;
}

bool removePost(db::Connection& transaction, int forumId, int topicId, std::string_view place) {
    if (!isThere(transaction, forumId, topicId, place)) return false;
    if (place.empty()) {
        transaction.execute(removeReactions, {forumId, topicId});
        transaction.execute(removeTopic, {forumId, topicId});
    } else {
        changeBranch(transaction, removeBranch, forumId, topicId, place);
    }
    return true;
}

}  // namespace torvex
