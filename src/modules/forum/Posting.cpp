#include "modules/forum/Posting.h"

#include <limits>
#include <optional>

#include "modules/forum/Places.h"
#include "platform/db/Connection.h"
#include "platform/text/Text.h"

namespace torvex {

namespace {

/// Changes nothing, but lets others wait who want to begin a topic here.
constexpr std::string_view holdForum =
    "update TORVEX_FORUM_LIVE set forum_pageSize = forum_pageSize where forum_id = ?";
constexpr std::string_view selectKeptTopic =
    "select topic_id, topic_online from TORVEX_FORUM_TOPICS where topic_forumId = ? and topic_post = ?";
constexpr std::string_view selectLastTopic =
    "select coalesce(max(topic_id), 0) as last from TORVEX_FORUM_TOPICS where topic_forumId = ?";
constexpr std::string_view insertTopic =
    "insert into TORVEX_FORUM_TOPICS (topic_id, topic_forumId, topic_title, topic_dateCreation, topic_text, "
    "topic_author, topic_email, topic_online, topic_lastDate, topic_post) "
    "values (?, ?, ?, ?, ?, ?, ?, ?, ?, ?)";

/// The same for who want to react to the topic.
constexpr std::string_view holdTopic =
    "update TORVEX_FORUM_TOPICS set topic_online = topic_online where topic_forumId = ? and topic_id = ? "
    "and topic_online = 1";
constexpr std::string_view selectKeptReaction =
    "select reaction_id, reaction_online from TORVEX_FORUM_REACTIONS "
    "where reaction_forumId = ? and reaction_topicId = ? and reaction_post = ?";
constexpr std::string_view selectAnswered =
    "select reaction_reference from TORVEX_FORUM_REACTIONS "
    "where reaction_forumId = ? and reaction_topicId = ? and reaction_id = ? and reaction_online = 1";
constexpr std::string_view selectLastReaction =
    "select coalesce(max(reaction_id), 0) as last, count(*) as n from TORVEX_FORUM_REACTIONS "
    "where reaction_forumId = ? and reaction_topicId = ?";
/// Of all below a place, the last one tells the last level that is taken: those below it are sorted with it.
constexpr std::string_view selectLastPlace =
    "select max(reaction_reference) as last from TORVEX_FORUM_REACTIONS "
    "where reaction_forumId = ? and reaction_topicId = ? and reaction_reference >= ? "
    "and reaction_reference < ?";
constexpr std::string_view insertReaction =
    "insert into TORVEX_FORUM_REACTIONS (reaction_id, reaction_forumId, reaction_topicId, "
    "reaction_reference, reaction_title, reaction_date, reaction_online, reaction_text, reaction_author, "
    "reaction_email, reaction_post) values (?, ?, ?, ?, ?, ?, ?, ?, ?, ?, ?)";
constexpr std::string_view noteLastDay =
    "update TORVEX_FORUM_TOPICS set topic_lastDate = ? where topic_forumId = ? and topic_id = ?";

constexpr int largestId = std::numeric_limits<short>::max();

using Result = std::variant<Posted, PostFault>;

/// The number of the next reaction of a topic; nothing when it is full.
std::optional<int> nextReaction(db::Connection& transaction, int forumId, int topicId) {
    auto rows = transaction.query(selectLastReaction, {forumId, topicId});
    rows.next();
    const int id = static_cast<int>(rows.number("last")) + 1;
    if (id > largestId || rows.number("n") >= mostReactionsOfTopic) return std::nullopt;
    return id;
}

int numberOf(db::Rows rows, std::string_view column) {
    return rows.next() ? static_cast<int>(rows.number(column)) : 0;
}

/// A forum that is published at this moment is there again when that is done.
bool isHeld(db::Connection& transaction, int forumId) {
    return transaction.execute(holdForum, {forumId}) > 0 || transaction.execute(holdForum, {forumId}) > 0;
}

std::optional<Posted> keptTopic(db::Connection& transaction, int forumId, std::string_view showing) {
    auto rows = transaction.query(selectKeptTopic, {forumId, showing});
    if (!rows.next()) return std::nullopt;
    return Posted{static_cast<int>(rows.number("topic_id")), 0, rows.number("topic_online") == 1, true};
}

std::optional<Posted> keptReaction(db::Connection& transaction, int forumId, int topicId,
                                   std::string_view showing) {
    auto rows = transaction.query(selectKeptReaction, {forumId, topicId, showing});
    if (!rows.next()) return std::nullopt;
    return Posted{topicId, static_cast<int>(rows.number("reaction_id")), rows.number("reaction_online") == 1,
                  true};
}

Result keepTopic(db::Connection& transaction, const ForumRecord& forum, const PostForm& form,
                 std::string_view showing, const DateTime& now) {
    if (!isHeld(transaction, forum.id)) return PostFault::ForumGone;
    if (const auto kept = keptTopic(transaction, forum.id, showing)) return *kept;
    const int id = numberOf(transaction.query(selectLastTopic, {forum.id}), "last") + 1;
    if (id > largestId) return PostFault::NoPlaceLeft;
    const bool isShown = !needsModerator(form, forum);
    const std::string today = date8(now);
    transaction.execute(insertTopic, {id, forum.id, form.title, today, form.text, form.author, form.email,
                                      isShown ? 1 : 0, today, showing});
    return Posted{id, 0, isShown, false};
}

/// Where the answer stands; a fault when what is answered is gone, or when there is no place.
std::variant<std::string, PostFault> placeFor(db::Connection& transaction, int forumId,
                                              const PostTarget& target) {
    std::string parent;
    if (target.reactionId != 0) {
        auto rows = transaction.query(selectAnswered, {forumId, target.topicId, target.reactionId});
        if (!rows.next()) return PostFault::ReactionGone;
        parent = forumPlace::parentFor(text::trim(rows.text("reaction_reference")));
    }
    // "/" follows ".", and "~" all digits and letters.
    const std::string from = parent.empty() ? "0" : parent + ".";
    const std::string before = parent.empty() ? "~" : parent + "/";
    std::string last;
    {
        auto rows = transaction.query(selectLastPlace, {forumId, target.topicId, from, before});
        if (rows.next()) last = rows.text("last");
    }
    auto place = forumPlace::next(parent, last);
    if (!place) return PostFault::NoPlaceLeft;
    return std::move(*place);
}

Result keepReaction(db::Connection& transaction, const ForumRecord& forum, const PostTarget& target,
                    const PostForm& form, std::string_view showing, const DateTime& now) {
    if (transaction.execute(holdTopic, {forum.id, target.topicId}) == 0) return PostFault::TopicGone;
    if (const auto kept = keptReaction(transaction, forum.id, target.topicId, showing)) return *kept;
    const auto place = placeFor(transaction, forum.id, target);
    if (const auto* fault = std::get_if<PostFault>(&place)) return *fault;
    const auto id = nextReaction(transaction, forum.id, target.topicId);
    if (!id) return PostFault::NoPlaceLeft;
    const bool isShown = !needsModerator(form, forum);
    const std::string today = date8(now);
    transaction.execute(insertReaction,
                        {*id, forum.id, target.topicId, std::get<std::string>(place), form.title, today,
                         isShown ? 1 : 0, form.text, form.author, form.email, showing});
    if (isShown) transaction.execute(noteLastDay, {today, forum.id, target.topicId});
    return Posted{target.topicId, *id, isShown, false};
}

}  // namespace

std::optional<Posted> keptPost(db::Connection& connection, int forumId, const PostTarget& target,
                               std::string_view showing) {
    return target.topicId == 0 ? keptTopic(connection, forumId, showing)
                               : keptReaction(connection, forumId, target.topicId, showing);
}

Result keepPost(db::Connection& transaction, const ForumRecord& forum, const PostTarget& target,
                const PostForm& form, std::string_view showing, const DateTime& now) {
    return target.topicId == 0 ? keepTopic(transaction, forum, form, showing, now)
                               : keepReaction(transaction, forum, target, form, showing, now);
}

}  // namespace torvex
