#include "replication/Tables.h"

namespace torvex {

std::span<const OwnedTable> replicationTables() {
    static constexpr OwnedTable tables[] = {{.name = "TORVEX_SERVERS"}};
    return tables;
}

}  // namespace torvex
