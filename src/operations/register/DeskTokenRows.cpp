#include "accounts/AdminEntries.h"
#include "operations/register/DeskRows.h"

namespace torvex::operations {

std::vector<Row<desk>> deskTokenRows() {
    return {
        writes("setProgram", &desk::setProgram,
               {argument("loginId"), argument("isProgram"), argument("advId", 0)},
               "Makes a login a program's, which nobody can log in with, or a person's again.",
               editAccess(adminEntry::logins))
            .codes({code("", "It is done."), notLoggedIn(),
                    refusal(-1, "There is no such login.", label::loginGone),
                    refusal(-2, "It is the system administrator's.", label::saStays), failed()}),
        writes("makeToken", &desk::makeToken,
               {argument("loginId"), argument("name"), argument("operations"), argument("addresses", ""),
                argument("lastDay", ""), argument("advId", 0)},
               "A token by which a program calls in the name of its login: the token, told this once. "
               "Operations are \"reads\", or names like cManager.publishPage divided by commas.",
               editAccess(adminEntry::logins))
            .codes({notLoggedIn(), refusal(-1, "There is no such login.", label::loginGone),
                    refusal(-2, "The login is a person's.", label::noProgram),
                    refusal(-3, "The name, the operations, the addresses or the last day can't be used.",
                            label::badLimits),
                    failed()}),
        reads("getTokens", &desk::getTokens, {argument("loginId")}, "The tokens of a login, by name.",
              viewAccess(adminEntry::logins))
            .lists({{"tokenId", Number},
                    {"name", Text},
                    {"operations", Text},
                    {"addresses", Text},
                    {"lastDay", Text},
                    {"lastUse", Date}}),
        writes("revokeToken", &desk::revokeToken, {argument("tokenId"), argument("advId", 0)},
               "Makes a token worthless.", editAccess(adminEntry::logins))
            .codes({code("", "It is gone."), notLoggedIn(),
                    refusal(-1, "There is no such token.", label::gone), failed()}),
    };
}

}  // namespace torvex::operations
