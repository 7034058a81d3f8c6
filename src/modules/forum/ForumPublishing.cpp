#include "modules/forum/ForumPublishing.h"

#include <fmt/format.h>
#include <optional>
#include <string>

#include "platform/db/Connection.h"

namespace torvex {

namespace {

constexpr std::string_view selectMark = "select forum_deleted from TORVEX_FORUM_DESIGN where forum_id = ?";

constexpr std::string_view removeOne[] = {
    "delete from TORVEX_FORUM_REACTIONS where reaction_forumId = ?",
    "delete from TORVEX_FORUM_TOPICS where topic_forumId = ?",
    "delete from TORVEX_FORUM_LIVE where forum_id = ?",
    "delete from TORVEX_FORUM_DESIGN where forum_id = ?",
};

constexpr std::string_view removeMarked[] = {
    "delete from TORVEX_FORUM_REACTIONS where reaction_forumId in (select forum_id from TORVEX_FORUM_DESIGN "
    "where forum_site = ? and forum_lang = ? and forum_deleted = 1)",
    "delete from TORVEX_FORUM_TOPICS where topic_forumId in (select forum_id from TORVEX_FORUM_DESIGN "
    "where forum_site = ? and forum_lang = ? and forum_deleted = 1)",
    "delete from TORVEX_FORUM_DESIGN where forum_site = ? and forum_lang = ? and forum_deleted = 1",
};

constexpr std::string_view publishedColumns =
    "forum_id, forum_site, forum_lang, forum_reference, forum_name, forum_desc, forum_hotPeriod, "
    "forum_reactionsOnline, forum_archiveAfter, forum_archiveVisible, forum_sendEmail, forum_emailFrom, "
    "forum_emailSubject, forum_pageSize, forum_askName, forum_askEmail, forum_emailTo, forum_words";

/// Puts the design of some forums in the place of what visitors see of them.
void renewLive(db::Connection& transaction, const std::string& which, db::Parameters values) {
    transaction.execute("update TORVEX_FORUM_DESIGN set forum_modified = 0 where " + which, values);
    transaction.execute("delete from TORVEX_FORUM_LIVE where " + which, values);
    transaction.execute(fmt::format("insert into TORVEX_FORUM_LIVE ({0}) select {0} from TORVEX_FORUM_DESIGN "
                                    "where {1}",
                                    publishedColumns, which),
                        values);
}

/// Nothing when there is no such forum.
std::optional<bool> isMarked(db::Connection& transaction, int forumId) {
    db::Rows rows = transaction.query(selectMark, {forumId});
    if (!rows.next()) return std::nullopt;
    return rows.number("forum_deleted") == 1;
}

}  // namespace

bool publishForum(db::Connection& transaction, int forumId) {
    const auto marked = isMarked(transaction, forumId);
    if (!marked) return false;
    if (*marked) {
        for (const std::string_view statement : removeOne) transaction.execute(statement, {forumId});
    } else {
        renewLive(transaction, "forum_id = ?", {forumId});
    }
    return true;
}

void publishForums(db::Connection& transaction, std::string_view site, std::string_view lang) {
    for (const std::string_view statement : removeMarked) transaction.execute(statement, {site, lang});
    renewLive(transaction, "forum_site = ? and forum_lang = ?", {site, lang});
}

}  // namespace torvex
