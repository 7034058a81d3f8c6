#include "modules/forum/Forum.h"

#include "modules/forum/ForumPublishing.h"
#include "modules/forum/ForumScript.h"
#include "modules/forum/ReactionTree.h"
#include "platform/Errors.h"
#include "platform/HostContext.h"
#include "platform/Keys.h"
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

/// What `publish` answers.
namespace forumStatus {
constexpr auto published = "";
constexpr auto noForum = "-2";
constexpr auto failed = "-99";
}  // namespace forumStatus

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
                                                         return db::refuse(std::string(forumStatus::noForum));
                                                     }
                                                     return db::commit(std::string(forumStatus::published));
                                                 });
    return outcome.value;
}

}  // namespace torvex
