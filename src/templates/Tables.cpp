#include "templates/Tables.h"

namespace torvex {

std::span<const OwnedTable> templateTables() {
    static constexpr OwnedTable tables[] = {
        {.name = "TORVEX_TEMPLATES", .site = "tpl_site", .lang = "tpl_lang"},
        {.name = "TORVEX_BASETEMPLATES", .site = "btpl_site", .lang = "btpl_lang"},
        {.name = "TORVEX_STYLESHEETS", .site = "ss_site", .lang = "ss_lang"},
        {.name = "TORVEX_APPLICATIONS"},
    };
    return tables;
}

}  // namespace torvex
