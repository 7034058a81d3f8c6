#include "modules/dynamicMenu/Tables.h"

namespace torvex {

std::span<const OwnedTable> dynamicMenuTables() {
    static constexpr OwnedTable tables[] = {
        {.name = "TORVEX_DYNMENU_DESIGN", .page = "pageId", .turn = PageTurn::DynamicMenu},
        {.name = "TORVEX_DYNMENU_LIVE", .page = "pageId", .turn = PageTurn::DynamicMenu},
    };
    return tables;
}

}  // namespace torvex
