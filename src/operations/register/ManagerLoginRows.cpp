#include "accounts/AdminEntries.h"
#include "authoring/cManager.h"
#include "operations/register/Binding.h"
#include "operations/register/ManagerRows.h"
#include "operations/register/RightsLabels.h"
#include "operations/register/SecondFactorLabels.h"

namespace torvex::operations {

std::vector<Row<cManager>> managerLoginRows() {
    return {
        writes("login", &cManager::login, {argument("username", ""), argument("password", "")},
               "Logs an author in; without arguments verifies the session's login again.", visitor())
            .codes(
                {code(0, "The session has the login."),
                 refusal(1, "The name or the password is wrong, or the login isn't valid today.",
                         label::wrongPassword),
                 refusal(2, "Logging in isn't allowed from this address.", label::otherAddress),
                 refusal(3, "A session at another address has this login.", label::heldElsewhere),
                 refusal(4, "The login has a second factor: `desk.proveSecond` goes on.", label::codeNeeded)})
            .testsPassword({"username", 0, 1}),
        writes("logout", &cManager::logout, {}, "Frees the session's login and ends the session.", visitor()),
        writes("endLogin", &cManager::endLogin, {argument("loginId")},
               "Ends the session of another login, which notices by `getLoginState`.",
               editAccess(adminEntry::loginsOnline)),
        reads("getLoginState", &cManager::getLoginState, {argument("loginId", 0)},
              "Whether a login is online; for 0, whether the session still owns its login.", anyLogin()),
        reads("getLoginId", &cManager::getLoginId, {argument("username", "")},
              "The number of a login; without a name the session's.", anyLogin())
            .codes({code(-1, "There is no such login.")}),
        reads("getLoginName", &cManager::getLoginName, {argument("loginId")},
              "The full name of a login, or a word in brackets for one that is gone.", anyLogin()),
        writes(
            "saveLogin", &cManager::saveLogin,
            {argument("advId"), argument("loginId"), argument("username"), argument("password"),
             argument("name"), argument("job"), argument("email", ""), argument("emailNotification", -1),
             argument("validFrom", "-1"), argument("validTo", "-1")},
            "Changes a login, or adds one for 0, and gives its number. What is empty stays as it is, and so "
            "does a bound of \"-1\"; an empty bound is taken away.",
            editAccess(adminEntry::logins))
            .codes({notLoggedIn(), refusal(-1, "There is no such login.", label::loginGone),
                    refusal(-2, "Another login has the username.", label::nameTaken),
                    refusal(-3, "A new login needs a username.", label::nameMissing),
                    refusal(-4, "A new login needs a password.", label::passwordMissing),
                    refusal(-5, "A new login needs a name.", label::fullNameMissing)}),
        writes("deleteLogin", &cManager::deleteLogin, {argument("loginId"), argument("advId", 0)},
               "Removes a login with its roles and settings.", editAccess(adminEntry::logins))
            .codes({code("", "It is removed."), notLoggedIn(),
                    refusal(-1, "There is no such login.", label::loginGone),
                    refusal(-2, "It is the system administrator's.", label::saStays),
                    refusal(-3, "Another login has it open.", label::openElsewhere),
                    refusal(-4, "Nobody but sa would be left to give rights.", label::lastAdministrator),
                    failed()}),
        reads("getLoginDetails", &cManager::getLoginDetails, {argument("loginId")},
              "Reads a login into the properties.", viewAccess(adminEntry::logins)),
        reads("getLoginList", &cManager::getLoginList, {argument("sortId", 1)},
              "The logins, by name for 1, else by username.", viewAccess(adminEntry::logins))
            .lists({{"loginId", Number}, {"username", Text}, {"name", Text}}),
        reads("getLoginRoles", &cManager::getLoginRoles, {argument("loginId")},
              "The roles, with 1 where the login has them.", viewAccess(adminEntry::logins))
            .lists({{"roleId", Number}, {"roleName", Text}, {"held", Number}}),
        // Lines in any login's name: only for what runs beside the server.
        writes("addAuditTrail", &cManager::addAuditTrail,
               {argument("pageIdent"), argument("advIdent"), argument("action"), argument("description"),
                argument("loginId", 0)},
               "Adds a line to the audit trail; a login of 0 is the session's, -99 nobody.", nobody()),
    };
}

}  // namespace torvex::operations
