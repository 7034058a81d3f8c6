#include "installation/OwnedTable.h"

namespace torvex {

std::span<const OwnedTable> installationTables() {
    static constexpr OwnedTable tables[] = {
        // The installation's own settings have the login 0.
        {.name = "TORVEX_SETUP", .login = "loginId"},
        {.name = "TORVEX_SCHEMA_CONTENT"},
        {.name = "TORVEX_TABLE_CHANGES"},
        {.name = "TORVEX_SCHEMA_AUDIT"},
        {.name = "TORVEX_SCHEMA_HITS"},
    };
    return tables;
}

}  // namespace torvex
