#include "records/Tables.h"

namespace torvex {

std::span<const OwnedTable> recordTables() {
    static constexpr std::string_view neighbours[] = {"previous", "next", "up", "loginPage"};
    // A site or a language goes only when the design has no pages in it any more; live pages that have lost
    // their design are left.
    static constexpr OwnedTable tables[] = {
        {.name = "TORVEX_PAGES_DESIGN",
         .node = "nodeId",
         .turn = PageTurn::Pages,
         .pagePointers = neighbours},
        {.name = "TORVEX_PAGES_LIVE", .node = "nodeId", .turn = PageTurn::Pages, .pagePointers = neighbours},
        {.name = "TORVEX_PAGES_GROUPS_DESIGN", .page = "pageId", .turn = PageTurn::Groups},
        {.name = "TORVEX_PAGES_GROUPS_LIVE", .page = "pageId", .turn = PageTurn::Groups},
        {.name = "TORVEX_BODIES_DESIGN", .page = "pageId", .turn = PageTurn::Bodies},
        {.name = "TORVEX_BODIES_LIVE", .page = "pageId", .turn = PageTurn::Bodies},
        {.name = "TORVEX_DRAFTS", .login = "loginId", .page = "pageId", .turn = PageTurn::Bodies},
        {.name = "TORVEX_PAGES_METADATA_DESIGN", .page = "metaData_pageId", .turn = PageTurn::MetaData},
        {.name = "TORVEX_PAGES_METADATA_LIVE", .page = "metaData_pageId", .turn = PageTurn::MetaData},
        {.name = "TORVEX_METADATA", .site = "metaData_site"},
        {.name = "TORVEX_SITES", .site = "site"},
        {.name = "TORVEX_LANGUAGES", .lang = "lang"},
        {.name = "TORVEX_SITES_LANGUAGES", .site = "site", .lang = "lang"},
        {.name = "TORVEX_CHARSETS"},
        {.name = "TORVEX_INTERFACE_LANGUAGES"},
        {.name = "TORVEX_INTERFACE_VOCAB"},
        // The trail is what is left of logins and pages that are gone.
        {.name = "TORVEX_AUDIT_TRAIL"},
    };
    return tables;
}

}  // namespace torvex
