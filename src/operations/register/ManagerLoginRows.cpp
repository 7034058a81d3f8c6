#include "accounts/AdminEntries.h"
#include "authoring/cManager.h"
#include "operations/register/Binding.h"
#include "operations/register/ManagerRows.h"

namespace torvex::operations {

std::vector<Row<cManager>> managerLoginRows() {
    return {
        writes("login", &cManager::login, {argument("username", ""), argument("password", "")},
               "Logs an author in: 0 done, 1 unknown name, wrong password or outside the dates, 2 the "
               "address is refused, 3 held by a session at another address. Without arguments verifies the "
               "session's login again.",
               visitor())
            .testsPassword({"username", 0, 1}),
        writes("logout", &cManager::logout, {}, "Frees the session's login and ends the session.", visitor()),
        writes("endLogin", &cManager::endLogin, {argument("loginId")},
               "Ends the session of another login, which notices by `getLoginState`.",
               editAccess(adminEntry::loginsOnline)),
        reads("getLoginState", &cManager::getLoginState, {argument("loginId", 0)},
              "Whether a login is online; for 0, whether the session still owns its login.", anyLogin()),
        reads("getLoginId", &cManager::getLoginId, {argument("username", "")},
              "The number of a login, -1 if there is none; without a name the session's.", anyLogin()),
        reads("getLoginName", &cManager::getLoginName, {argument("loginId")},
              "The full name of a login, or a word in brackets for one that is gone.", anyLogin()),
        // Lines in any login's name: only for what runs beside the server.
        writes("addAuditTrail", &cManager::addAuditTrail,
               {argument("pageIdent"), argument("advIdent"), argument("action"), argument("description"),
                argument("loginId", 0)},
               "Adds a line to the audit trail; a login of 0 is the session's, -99 nobody.", nobody()),
    };
}

}  // namespace torvex::operations
