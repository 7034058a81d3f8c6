#include "search/Tables.h"

namespace torvex {

std::span<const OwnedTable> searchTables() {
    static constexpr OwnedTable tables[] = {
        {.name = "TORVEX_SEARCH", .page = "search_pageId", .turn = PageTurn::Search},
        {.name = "TORVEX_SEARCH_LOG", .page = "search_pageId", .turn = PageTurn::Search},
        // As with hits, what is left without a page is history.
        {.name = "TORVEX_SEARCH_DAYS", .page = "search_pageId", .turn = PageTurn::Search},
        // Files of what goes have to leave the catalogue.
        {.name = "TORVEX_SEARCH_QUEUE"},
        {.name = "TORVEX_PAGE_WORDS", .page = "pageId", .turn = PageTurn::Search},
        {.name = "TORVEX_LINKS", .page = "pageId", .turn = PageTurn::Bodies},
        // What is missing stays so when those that link to it go.
        {.name = "TORVEX_MISSING_PAGES"},
        {.name = "TORVEX_MISSING_IMAGES"},
    };
    return tables;
}

}  // namespace torvex
