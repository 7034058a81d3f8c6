#include "delivery/Tables.h"

namespace torvex {

std::span<const OwnedTable> deliveryTables() {
    static constexpr OwnedTable tables[] = {
        // Hits go with their pages. Without pages a site or a language can have left some: they are history.
        {.name = "TORVEX_LOGGING", .node = "nodeId", .turn = PageTurn::Hits},
        {.name = "TORVEX_LOGGING_MONTHS", .node = "nodeId", .turn = PageTurn::Hits},
        // Feeds stay when their site or language goes: one of the same code finds them again.
        {.name = "TORVEX_FEEDS_HTML"},
        {.name = "TORVEX_FEEDS_XML"},
        {.name = "TORVEX_MIMETYPES"},
    };
    return tables;
}

}  // namespace torvex
