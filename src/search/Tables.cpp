#include "search/Tables.h"

namespace torvex {

std::span<const OwnedTable> searchTables() {
    static constexpr OwnedTable tables[] = {
        {.name = "TORVEX_SEARCH", .page = "search_pageId", .turn = PageTurn::Search},
        {.name = "TORVEX_SEARCH_LOG", .page = "search_pageId", .turn = PageTurn::Search},
        // Files of what goes have to leave the catalogue.
        {.name = "TORVEX_SEARCH_QUEUE"},
    };
    return tables;
}

}  // namespace torvex
