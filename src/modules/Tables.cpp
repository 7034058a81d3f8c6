#include "modules/Tables.h"

namespace torvex {

namespace {

constexpr std::string_view forumOrphans[] = {
    "delete from TORVEX_FORUM_REACTIONS where reaction_forumId not in "
    "(select forum_Id from TORVEX_FORUM_LIVE)",
    "delete from TORVEX_FORUM_TOPICS where topic_forumId not in (select forum_Id from TORVEX_FORUM_LIVE)",
};

/// A category of a newsflash is one of the message board's.
constexpr std::string_view newsflashOrphans[] = {
    "delete from TORVEX_NEWSFLASH_CATEGORIES_DESIGN where nf_id not in "
    "(select nf_id from TORVEX_NEWSFLASH_DESIGN)",
    "delete from TORVEX_NEWSFLASH_CATEGORIES_LIVE where nf_id not in "
    "(select nf_id from TORVEX_NEWSFLASH_LIVE)",
    "delete from TORVEX_NEWSFLASH_CATEGORIES_DESIGN where msgB_id not in "
    "(select msgB_id from TORVEX_MSGB_CATEGORIES_DESIGN)",
    "delete from TORVEX_NEWSFLASH_CATEGORIES_LIVE where msgB_id not in "
    "(select msgB_id from TORVEX_MSGB_CATEGORIES_LIVE)",
};

}  // namespace

std::span<const OwnedTable> moduleTables() {
    static constexpr OwnedTable tables[] = {
        {.name = "TORVEX_MSGB_CATEGORIES_DESIGN", .site = "msgB_site", .lang = "msgB_lang"},
        {.name = "TORVEX_MSGB_CATEGORIES_LIVE", .site = "msgB_site", .lang = "msgB_lang"},
        {.name = "TORVEX_MSGB_ITEMS_DESIGN", .site = "msgB_site", .lang = "msgB_lang"},
        {.name = "TORVEX_MSGB_ITEMS_LIVE", .site = "msgB_site", .lang = "msgB_lang"},
        {.name = "TORVEX_NEWSFLASH_DESIGN", .site = "site", .lang = "lang"},
        // Behind both twins of the newsflash, and behind the message board's categories.
        {.name = "TORVEX_NEWSFLASH_LIVE", .site = "site", .lang = "lang", .orphans = newsflashOrphans},
        {.name = "TORVEX_NEWSFLASH_CATEGORIES_DESIGN"},
        {.name = "TORVEX_NEWSFLASH_CATEGORIES_LIVE"},
        {.name = "TORVEX_FORUM_DESIGN", .site = "forum_site", .lang = "forum_lang"},
        {.name = "TORVEX_FORUM_LIVE", .site = "forum_site", .lang = "forum_lang", .orphans = forumOrphans},
        {.name = "TORVEX_FORUM_TOPICS"},
        {.name = "TORVEX_FORUM_REACTIONS"},
        // These belong to the page that shows them.
        {.name = "TORVEX_DYNMENU_DESIGN", .page = "pageId", .turn = PageTurn::DynamicMenu},
        {.name = "TORVEX_DYNMENU_LIVE", .page = "pageId", .turn = PageTurn::DynamicMenu},
        {.name = "TORVEX_MAILFORM", .page = "pageId", .turn = PageTurn::MailForm},
        {.name = "TORVEX_MAILFORM_OPTIONS", .page = "pageId", .turn = PageTurn::MailForm},
    };
    return tables;
}

}  // namespace torvex
