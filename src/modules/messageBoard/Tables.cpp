#include "modules/messageBoard/Tables.h"

namespace torvex {

std::span<const OwnedTable> messageBoardTables() {
    static constexpr OwnedTable tables[] = {
        {.name = "TORVEX_MSGB_CATEGORIES_DESIGN", .site = "msgB_site", .lang = "msgB_lang"},
        {.name = "TORVEX_MSGB_CATEGORIES_LIVE", .site = "msgB_site", .lang = "msgB_lang"},
        {.name = "TORVEX_MSGB_ITEMS_DESIGN", .site = "msgB_site", .lang = "msgB_lang"},
        {.name = "TORVEX_MSGB_ITEMS_LIVE", .site = "msgB_site", .lang = "msgB_lang"},
    };
    return tables;
}

}  // namespace torvex
