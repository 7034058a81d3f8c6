#include "modules/forum/ForumPlace.h"

#include "platform/db/Connection.h"
#include "platform/text/Text.h"

namespace torvex {

namespace {

constexpr std::string_view selectPlace =
    "select forum_site, forum_lang from TORVEX_FORUM_DESIGN where forum_id = ?";

}  // namespace

std::optional<ForumPlace> placeOfForum(db::Connection& connection, int forumId) {
    db::Rows rows = connection.query(selectPlace, {forumId});
    if (!rows.next()) return std::nullopt;
    return ForumPlace{text::lowerTrim(rows.text("forum_site")), text::lowerTrim(rows.text("forum_lang"))};
}

}  // namespace torvex
