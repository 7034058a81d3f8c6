#include "replication/Tables.h"

namespace torvex {

std::span<const OwnedTable> replicationTables() {
    static constexpr OwnedTable tables[] = {{.name = "TORVEX_SERVERS"}, {.name = "TORVEX_SERVERS_MISSED"}};
    return tables;
}

}  // namespace torvex
