// registers: what visitors have written in the forums, as moderators see it and change it.

#include <optional>

#include "authoring/StatusCodes.h"
#include "desk/FirstRow.h"
#include "desk/ModuleFields.h"
#include "desk/ModuleStatus.h"
#include "desk/registers.h"
#include "modules/forum/Moderation.h"
#include "modules/forum/PlainText.h"
#include "modules/forum/PostForm.h"
#include "platform/Errors.h"
#include "platform/db/Grid.h"
#include "platform/db/OwnTransaction.h"
#include "platform/text/Text.h"

namespace torvex {

namespace {

constexpr std::string_view selectTopics =
    "select topic_id, topic_title, topic_author, topic_dateCreation, "
    "coalesce(topic_lastDate, topic_dateCreation, '') as lastDay, topic_online, "
    "(select count(*) from TORVEX_FORUM_REACTIONS where reaction_forumId = topic_forumId "
    "and reaction_topicId = topic_id) as reactions, "
    "(select count(*) from TORVEX_FORUM_REACTIONS where reaction_forumId = topic_forumId "
    "and reaction_topicId = topic_id and coalesce(reaction_online, 0) <> 1) as hidden "
    "from TORVEX_FORUM_TOPICS where topic_forumId = ? "
    "order by coalesce(topic_lastDate, topic_dateCreation, '') desc, topic_id desc limit ? offset ?";
constexpr std::string_view selectPosts =
    "select reaction_id, reaction_reference, reaction_title, reaction_author, reaction_email, "
    "reaction_date, reaction_online, reaction_text from TORVEX_FORUM_REACTIONS "
    "where reaction_forumId = ? and reaction_topicId = ? "
    "union all "
    "select 0, '', topic_title, topic_author, topic_email, topic_dateCreation, topic_online, topic_text "
    "from TORVEX_FORUM_TOPICS where topic_forumId = ? and topic_id = ? "
    "order by 6 desc, 1 desc limit ? offset ?";
constexpr std::string_view updateTopic =
    "update TORVEX_FORUM_TOPICS set topic_title = ?, topic_text = ? where topic_forumId = ? and topic_id = ?";
constexpr std::string_view updateReaction =
    "update TORVEX_FORUM_REACTIONS set reaction_title = ?, reaction_text = ? "
    "where reaction_forumId = ? and reaction_topicId = ? and reaction_id = ?";

using Outcome = db::Outcome<std::string>;

struct PostTexts {
    std::string title;
    std::string text;
};
using Change = std::optional<int> (*)(db::Connection&, const TopicKey&, std::string_view);

std::string describe(const TopicKey& topic, const std::string& what) {
    const std::string there =
        "opic " + std::to_string(topic.topicId) + " of forum " + std::to_string(topic.forumId);
    return what.empty() ? 'T' + there : what + " in t" + there;
}

std::string named(const std::string& references) {
    const std::string_view given = text::trim(references);
    return given.empty() ? std::string() : "Reactions " + std::string(given);
}

/// The number of contributions that have changed.
Outcome changeAll(db::Connection& own, Change change, const TopicKey& topic, std::string_view references) {
    const auto changed = change(own, topic, references);
    if (!changed) return db::refuse(moduleStatus::gone);
    return db::commit(std::to_string(*changed));
}

Outcome writePost(db::Connection& own, const TopicKey& topic, int reactionId, const PostTexts& post) {
    if (post.title.empty()) return db::refuse(moduleStatus::nameMissing);
    const auto written =
        reactionId == 0
            ? own.execute(updateTopic, {post.title, post.text, topic.forumId, topic.topicId})
            : own.execute(updateReaction, {post.title, post.text, topic.forumId, topic.topicId, reactionId});
    if (written == 0) return db::refuse(moduleStatus::gone);
    return db::commit(status::done);
}

}  // namespace

Value registers::getTopics(int forumId, double from) try {
    return db::gridOf(connection().query(selectTopics, {forumId, listedAtOnce, firstRow(from).value_or(0)}));
} catch (...) {
    raiseFrom("getTopics !");
}

Value registers::getReactions(int forumId, int topicId, double from) try {
    return db::gridOf(connection().query(
        selectPosts, {forumId, topicId, forumId, topicId, listedAtOnce, firstRow(from).value_or(0)}));
} catch (...) {
    raiseFrom("getReactions !");
}

std::string registers::saveReaction(int forumId, int topicId, int reactionId, const std::string& title,
                                    const std::string& text, int advId) {
    if (!isLoggedIn()) return std::string(status::notLoggedIn);
    const TopicKey topic{forumId, topicId};
    const PostTexts post{cleanField(cleanLine(title), postLimits::title),
                         cleanField(cleanText(text), postLimits::text)};
    const std::string what = describe(topic, reactionId == 0 ? "" : "Reaction " + std::to_string(reactionId));
    const auto outcome =
        db::tryInOwnTransaction(host_, "saveReaction (" + what + ")", status::failed,
                                [&](auto& own) { return writePost(own, topic, reactionId, post); });
    if (outcome.isCommitted) recordChange("saveReaction", advId, "save", what + " has been updated");
    return outcome.value;
}

std::string registers::setReactions(int forumId, int topicId, const std::string& references, bool on,
                                    int advId) {
    if (!isLoggedIn()) return std::string(status::notLoggedIn);
    const TopicKey topic{forumId, topicId};
    const std::string what = describe(topic, named(references));
    const auto outcome = db::tryInOwnTransaction(
        host_, "setReactions (" + what + ")", status::failed,
        [&](auto& own) { return changeAll(own, on ? showPosts : hidePosts, topic, references); });
    if (outcome.isCommitted)
        recordChange("setReactions", advId, "save", what + (on ? " switched on" : " switched off"));
    return outcome.value;
}

std::string registers::deleteReactions(int forumId, int topicId, const std::string& references, int advId) {
    if (!isLoggedIn()) return std::string(status::notLoggedIn);
    const TopicKey topic{forumId, topicId};
    const std::string what = describe(topic, named(references));
    const auto outcome =
        db::tryInOwnTransaction(host_, "deleteReactions (" + what + ")", status::failed,
                                [&](auto& own) { return changeAll(own, removePosts, topic, references); });
    if (outcome.isCommitted) recordChange("deleteReactions", advId, "delete", what + " removed");
    return outcome.value;
}

}  // namespace torvex
