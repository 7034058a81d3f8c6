#include "modules/newsflash/Tables.h"

namespace torvex {

namespace {

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

std::span<const OwnedTable> newsflashTables() {
    static constexpr OwnedTable tables[] = {
        {.name = "TORVEX_NEWSFLASH_DESIGN", .site = "site", .lang = "lang"},
        // Behind both twins of the newsflash, and behind the message board's categories.
        {.name = "TORVEX_NEWSFLASH_LIVE", .site = "site", .lang = "lang", .orphans = newsflashOrphans},
        {.name = "TORVEX_NEWSFLASH_CATEGORIES_DESIGN"},
        {.name = "TORVEX_NEWSFLASH_CATEGORIES_LIVE"},
    };
    return tables;
}

}  // namespace torvex
