#include "modules/mailForm/Tables.h"

namespace torvex {

std::span<const OwnedTable> mailFormTables() {
    static constexpr OwnedTable tables[] = {
        {.name = "TORVEX_MAILFORM", .page = "pageId", .turn = PageTurn::MailForm},
        {.name = "TORVEX_MAILFORM_OPTIONS", .page = "pageId", .turn = PageTurn::MailForm},
    };
    return tables;
}

}  // namespace torvex
