#include "modules/forum/Tables.h"

namespace torvex {

namespace {

constexpr std::string_view forumOrphans[] = {
    "delete from TORVEX_FORUM_REACTIONS where reaction_forumId not in "
    "(select forum_Id from TORVEX_FORUM_LIVE)",
    "delete from TORVEX_FORUM_TOPICS where topic_forumId not in (select forum_Id from TORVEX_FORUM_LIVE)",
};

}  // namespace

std::span<const OwnedTable> forumTables() {
    static constexpr OwnedTable tables[] = {
        {.name = "TORVEX_FORUM_DESIGN", .site = "forum_site", .lang = "forum_lang"},
        {.name = "TORVEX_FORUM_LIVE", .site = "forum_site", .lang = "forum_lang", .orphans = forumOrphans},
        {.name = "TORVEX_FORUM_TOPICS"},
        {.name = "TORVEX_FORUM_REACTIONS"},
    };
    return tables;
}

}  // namespace torvex
