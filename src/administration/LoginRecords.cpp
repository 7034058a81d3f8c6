// cManager: the register of authors' logins.

#include "accounts/Actor.h"
#include "accounts/Administrators.h"
#include "accounts/LoginRecord.h"
#include "administration/RecordRemoval.h"
#include "authoring/OwnedRows.h"
#include "authoring/StatusCodes.h"
#include "authoring/cManager.h"
#include "platform/Errors.h"
#include "platform/db/Grid.h"
#include "platform/db/OwnTransaction.h"
#include "records/ItemLocks.h"

namespace torvex {

namespace {

/// Why a login stays, beside the codes that all records share.
constexpr std::string_view isTheAdministrator = "-2";

constexpr std::string_view selectByName =
    "select loginId, username, name from TORVEX_LOGINS order by name, loginId";
constexpr std::string_view selectByUsername =
    "select loginId, username, name from TORVEX_LOGINS order by username, loginId";
constexpr std::string_view selectUsername = "select username from TORVEX_LOGINS where loginId = ?";
/// A login may hold a role twice.
constexpr std::string_view selectRoles =
    "select roleId, roleName, case when roleId in (select roleId from TORVEX_ROLES_LOGINS where loginId = ?) "
    "then 1 else 0 end as held from TORVEX_ROLES order by roleName, roleId";

SavedLogin save(HostContext& host, int loginId, const LoginChange& change) {
    const auto outcome = db::inOwnTransaction(host, [&](db::Connection& own) {
        const SavedLogin saved = loginId == 0 ? addLogin(own, change) : changeLogin(own, loginId, change);
        return db::Outcome<SavedLogin>{saved.code.empty(), saved};
    });
    return outcome.value;
}

}  // namespace

std::string cManager::saveLogin(int advId, int loginId, const std::string& username,
                                const std::string& password, const std::string& name, const std::string& job,
                                const std::string& email, int emailNotification, const std::string& validFrom,
                                const std::string& validTo) try {
    if (!author_.isLoggedIn()) return std::string(status::notLoggedIn);
    const LoginChange change =
        loginChange(username, password, name, job, email, emailNotification, validFrom, validTo);
    const SavedLogin saved = save(host_, loginId, change);
    if (!saved.code.empty()) return std::string(saved.code);
    if (loginId == 0) {
        recordChange("saveLogin", advId, "new", "New login \"" + change.name + '"');
    } else {
        const std::string known = change.name.empty() ? getLoginName(loginId) : change.name;
        recordChange("saveLogin", advId, "save", "Login \"" + known + "\" has been updated");
    }
    return std::to_string(saved.loginId);
} catch (...) {
    raiseFrom("saveLogin !");
}

std::string cManager::deleteLogin(int loginId, int advId) {
    if (!author_.isLoggedIn()) return std::string(status::notLoggedIn);
    return removeRecord("deleteLogin", loginId, advId,
                        [&](db::Connection& transaction) -> db::Outcome<std::string> {
                            auto rows = transaction.query(selectUsername, {loginId});
                            if (!rows.next()) return db::refuse(record::notThere);
                            if (isAdministrator(rows.text("username"))) return db::refuse(isTheAdministrator);
                            if (!takeItem(transaction, "login", std::to_string(loginId), lockSeeker())) {
                                return db::refuse(record::locked);
                            }
                            const std::string name = getLoginName(loginId);
                            const Actor actor = actorOf(host_);
                            const bool before = someoneAdministers(transaction, actor.now);
                            removeRowsOfLogin(transaction, loginId);
                            if (tookLastAdministrator(transaction, actor, before)) {
                                return db::refuse(record::lastAdministrator);
                            }
                            return db::commit("Login \"" + name + '"');
                        });
}

void cManager::getLoginDetails(int loginId) try { login_ = readLogin(connection(), loginId); } catch (...) {
    raiseFrom("getLoginDetails !");
}

Value cManager::getLoginList(int sortId) try {
    const Value list = db::gridOf(connection().query(sortId == 1 ? selectByName : selectByUsername), 1);
    // Callers know an empty list by the empty text.
    return list.isEmpty() ? Value(std::string()) : list;
} catch (...) {
    raiseFrom("getLoginList !");
}

Value cManager::getLoginRoles(int loginId) try {
    return db::gridOf(connection().query(selectRoles, {loginId}), 1);
} catch (...) {
    raiseFrom("getLoginRoles !");
}

}  // namespace torvex
