#include "accounts/Tables.h"

namespace torvex {

std::span<const OwnedTable> accountTables() {
    static constexpr std::string_view doors[] = {"entryPage", "exitPage"};
    static constexpr OwnedTable tables[] = {
        {.name = "TORVEX_LOGINS", .login = "loginId"},
        {.name = "TORVEX_API_TOKENS", .login = "loginId"},
        {.name = "TORVEX_SECOND_FACTORS", .login = "loginId"},
        {.name = "TORVEX_RECOVERY_CODES", .login = "loginId"},
        {.name = "TORVEX_ROLES"},
        {.name = "TORVEX_ROLES_LOGINS", .login = "loginId"},
        {.name = "TORVEX_EDIT_RIGHTS", .site = "site", .lang = "lang"},
        {.name = "TORVEX_ADVANCED"},
        {.name = "TORVEX_ADVANCED_RIGHTS", .site = "site", .lang = "lang"},
        {.name = "TORVEX_USERS"},
        {.name = "TORVEX_USER_FACTORS"},
        {.name = "TORVEX_USER_RECOVERY_CODES"},
        {.name = "TORVEX_USERGROUPS", .pagePointers = doors},
        {.name = "TORVEX_GROUPS_USERS"},
    };
    return tables;
}

}  // namespace torvex
