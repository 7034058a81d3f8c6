#include "modules/forum/Forum.h"

#include <fmt/format.h>

#include "accounts/Actor.h"
#include "accounts/ActorLine.h"
#include "modules/forum/ForumPublishing.h"
#include "modules/forum/ForumScript.h"
#include "modules/forum/Moderation.h"
#include "modules/forum/ReactionTree.h"
#include "platform/Errors.h"
#include "platform/HostContext.h"
#include "platform/Keys.h"
#include "platform/OperatorLog.h"
#include "platform/Session.h"
#include "platform/db/Grid.h"
#include "platform/db/OwnTransaction.h"
#include "platform/text/Text.h"
#include "records/PageIdentity.h"

namespace torvex {

namespace {

constexpr std::string_view selectForums =
    "select forum_id, forum_name from TORVEX_FORUM_DESIGN where forum_site = ? and forum_lang = ? "
    "order by forum_name";
constexpr std::string_view selectForumsWithMarks =
    "select forum_id, forum_name, forum_deleted from TORVEX_FORUM_DESIGN "
    "where forum_site = ? and forum_lang = ? order by forum_name";

/// What operations answer that change something.
namespace forumStatus {
constexpr auto done = "";
constexpr auto gone = "-2";
constexpr auto failed = "-99";
}  // namespace forumStatus

std::string describe(int forumId, int topicId, const std::string& references) {
    const std::string topic = fmt::format("Topic {} of forum {}", topicId, forumId);
    return references.empty()
               ? topic
               : fmt::format("Reactions {} in topic {} of forum {}", references, topicId, forumId);
}

}  // namespace

Value Forum::getForumList(const std::string& site, const std::string& lang, const std::string& mode) try {
    const bool tellsMarks = text::equals(text::trim(mode), "D");
    const std::string ofSite = text::lowerTrim(site);
    const std::string ofLang = text::lowerTrim(lang);
    return db::gridOf(connection().query(tellsMarks ? selectForumsWithMarks : selectForums, {ofSite, ofLang}),
                      1);
} catch (...) {
    raiseFrom("getForumList !");
}

std::string Forum::getReactionTree(int forumId, int topicId, int reactionId, const std::string& mode) try {
    return drawReactionTree(host_, connection(),
                            {.forumId = forumId,
                             .topicId = topicId,
                             .shownReaction = reactionId,
                             .twin = text::equals(mode, "L") ? Twin::Live : Twin::Design});
} catch (...) {
    raiseFrom("getReactionTree !");
}

std::string Forum::getScript() try {
    return moderationScript(connection(), host_.session.text(sessionKey::interfaceLanguage));
} catch (...) {
    raiseFrom("getScript !");
}

std::string Forum::publish(int forumId, const std::string& site, const std::string& lang) {
    const std::string what = forumId != 0 ? "publish of forum " + std::to_string(forumId)
                                          : "publish of the forums of " + site + "." + lang;
    const auto outcome = db::tryInOwnTransaction(host_, what, std::string(forumStatus::failed),
                                                 [&](db::Connection& own) -> db::Outcome<std::string> {
                                                     if (forumId == 0) {
                                                         publishForums(own, site, lang);
                                                     } else if (!publishForum(own, forumId)) {
                                                         return db::refuse(std::string(forumStatus::gone));
                                                     }
                                                     return db::commit(std::string(forumStatus::done));
                                                 });
    return outcome.value;
}

Value Forum::getWaiting(const std::string& site, const std::string& lang) try {
    return waitingPosts(connection(), text::lowerTrim(site), text::lowerTrim(lang));
} catch (...) {
    raiseFrom("getWaiting !");
}

std::string Forum::setOnOff(int forumId, int topicId, const std::string& references, bool on, int advId) {
    const std::string status =
        changePosts("setOnOff", on ? showPosts : hidePosts, forumId, topicId, references);
    if (status.empty()) {
        recordChange(advId, "save",
                     describe(forumId, topicId, references) + (on ? " switched on" : " switched off"));
    }
    return status;
}

std::string Forum::deleteReactions(int forumId, int topicId, const std::string& references, int advId) {
    const std::string status = changePosts("deleteReactions", removePosts, forumId, topicId, references);
    if (status.empty()) recordChange(advId, "delete", describe(forumId, topicId, references) + " removed");
    return status;
}

std::string Forum::changePosts(const std::string& operation, Change change, int forumId, int topicId,
                               const std::string& references) {
    const auto outcome = db::tryInOwnTransaction(
        host_, operation + " of " + describe(forumId, topicId, references), std::string(forumStatus::failed),
        [&](db::Connection& own) -> db::Outcome<std::string> {
            if (!change(own, {forumId, topicId}, references))
                return db::refuse(std::string(forumStatus::gone));
            return db::commit(std::string(forumStatus::done));
        });
    return outcome.value;
}

void Forum::recordChange(int advId, std::string_view action, const std::string& description) {
    if (advId <= 0) return;
    const Actor actor = actorOf(host_);
    followUp(host_.log, description, [&] { writeActorLine(host_, actor, advId, action, description); });
}

}  // namespace torvex
