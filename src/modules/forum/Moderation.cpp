#include "modules/forum/Moderation.h"

#include <algorithm>
#include <string>
#include <vector>

#include "modules/forum/Places.h"
#include "platform/db/Connection.h"
#include "platform/db/Grid.h"
#include "platform/text/Text.h"

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
    "update TORVEX_FORUM_TOPICS set topic_online = 1 where topic_forumId = ? and topic_id = ? "
    "and coalesce(topic_online, 0) <> 1";
constexpr std::string_view hideTopic =
    "update TORVEX_FORUM_TOPICS set topic_online = 0 where topic_forumId = ? and topic_id = ? "
    "and coalesce(topic_online, 0) <> 0";
constexpr std::string_view showReaction =
    "update TORVEX_FORUM_REACTIONS set reaction_online = 1 "
    "where reaction_forumId = ? and reaction_topicId = ? and reaction_reference = ? "
    "and coalesce(reaction_online, 0) <> 1";
constexpr std::string_view hideBranch =
    "update TORVEX_FORUM_REACTIONS set reaction_online = 0 "
    "where reaction_forumId = ? and reaction_topicId = ? and coalesce(reaction_online, 0) <> 0 "
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

bool isThere(db::Connection& transaction, const TopicKey& topic, std::string_view place) {
    return place.empty() || transaction.query(selectPlace, {topic.forumId, topic.topicId, place}).next();
}

/// How many rows the statement has changed of a reaction and all below it.
int changeBranch(db::Connection& transaction, std::string_view statement, const TopicKey& topic,
                 std::string_view place) {
    // "/" follows "." and comes before every digit and letter.
    const std::string from = std::string(place) + ".";
    const std::string before = std::string(place) + "/";
    return static_cast<int>(
        transaction.execute(statement, {topic.forumId, topic.topicId, place, from, before}));
}

int changeTopic(db::Connection& transaction, std::string_view statement, const TopicKey& topic) {
    return static_cast<int>(transaction.execute(statement, {topic.forumId, topic.topicId}));
}

int show(db::Connection& transaction, const TopicKey& topic, std::string_view place) {
    int changed = changeTopic(transaction, showTopic, topic);
    for (std::size_t end = 0; end < place.size();) {
        end = std::min(place.find('.', end + 1), place.size());
        changed += static_cast<int>(
            transaction.execute(showReaction, {topic.forumId, topic.topicId, place.substr(0, end)}));
    }
    return changed;
}

int hide(db::Connection& transaction, const TopicKey& topic, std::string_view place) {
    return place.empty() ? changeTopic(transaction, hideTopic, topic)
                         : changeBranch(transaction, hideBranch, topic, place);
}

int remove(db::Connection& transaction, const TopicKey& topic, std::string_view place) {
    if (!place.empty()) return changeBranch(transaction, removeBranch, topic, place);
    return changeTopic(transaction, removeReactions, topic) + changeTopic(transaction, removeTopic, topic);
}

/// Those of a list; without any, the topic itself.
std::vector<std::string> placesIn(std::string_view list) {
    std::vector<std::string> places;
    for (;;) {
        const std::size_t end = std::min(list.find(','), list.size());
        places.emplace_back(text::trim(list.substr(0, end)));
        if (end == list.size()) return places;
        list.remove_prefix(end + 1);
    }
}

/// What goes with another one of the list needn't be removed by itself.
std::vector<std::string> branchesIn(std::string_view list) {
    std::vector<std::string> places = placesIn(list);
    std::sort(places.begin(), places.end());
    std::vector<std::string> branches;
    for (std::string& place : places) {
        const bool goesAlong =
            !branches.empty() && (place == branches.back() || forumPlace::isBelow(place, branches.back()));
        if (!goesAlong) branches.push_back(std::move(place));
    }
    return branches;
}

using Change = int (*)(db::Connection& transaction, const TopicKey& topic, std::string_view place);

std::optional<int> changePosts(db::Connection& transaction, Change change, const TopicKey& topic,
                               const std::vector<std::string>& places) {
    if (transaction.execute(holdTopic, {topic.forumId, topic.topicId}) == 0) return std::nullopt;
    int changed = 0;
    for (const std::string& place : places) {
        if (!isThere(transaction, topic, place)) return std::nullopt;
        changed += change(transaction, topic, place);
    }
    transaction.execute(noteLastDay, {topic.forumId, topic.topicId});
    return changed;
}

}  // namespace

Value waitingPosts(db::Connection& connection, std::string_view site, std::string_view lang) {
    return db::gridOf(connection.query(selectWaiting, {site, lang, site, lang}));
}

std::optional<int> showPosts(db::Connection& transaction, const TopicKey& topic, std::string_view places) {
    return changePosts(transaction, show, topic, placesIn(places));
}

std::optional<int> hidePosts(db::Connection& transaction, const TopicKey& topic, std::string_view places) {
    return changePosts(transaction, hide, topic, placesIn(places));
}

std::optional<int> removePosts(db::Connection& transaction, const TopicKey& topic, std::string_view places) {
    return changePosts(transaction, remove, topic, branchesIn(places));
}

}  // namespace torvex
