#include "modules/mail/Tables.h"

namespace torvex {

std::span<const OwnedTable> mailTables() {
    static constexpr OwnedTable tables[] = {{.name = "TORVEX_MAIL_QUEUE"}};
    return tables;
}

}  // namespace torvex
