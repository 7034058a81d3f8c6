// registers: who has to have a second factor, and whoever has lost hers.

#include "accounts/Actor.h"
#include "accounts/Logins.h"
#include "accounts/RoleRights.h"
#include "accounts/SecondFactor.h"
#include "authoring/StatusCodes.h"
#include "desk/RecordLock.h"
#include "desk/RoleStatus.h"
#include "desk/registers.h"
#include "platform/Errors.h"
#include "platform/db/OwnTransaction.h"
#include "platform/text/Text.h"
#include "records/RegisterLock.h"

namespace torvex {

namespace {

constexpr std::string_view isTheAdministrators = "-2";
constexpr std::string_view hasNone = "-3";

constexpr std::string_view selectLogin = "select username from TORVEX_LOGINS where loginId = ?";
constexpr std::string_view updateRole = "update TORVEX_ROLES set secondFactor = ? where roleId = ?";

using Outcome = db::Outcome<std::string>;

std::optional<std::string> usernameOf(db::Connection& connection, int loginId) {
    auto rows = connection.query(selectLogin, {loginId});
    if (!rows.next()) return std::nullopt;
    return std::string(text::trim(rows.text("username")));
}

/// Whoever has the password of a login and could reset its factor would be in: the administrator's is hers alone.
Outcome reset(db::Connection& own, const Actor& actor, int loginId) {
    const auto username = usernameOf(own, loginId);
    if (!username) return db::refuse(roleStatus::gone);
    if (isAdministrator(*username) && !actor.isAdministrator()) return db::refuse(isTheAdministrators);
    if (!dropSecondFactor(own, ofLogin(loginId))) return db::refuse(hasNone);
    return db::commit(std::string());
}

Outcome demand(db::Connection& own, const Actor& actor, int roleId, bool isDemanded) {
    lockRegisters(own);
    if (!roleNameOf(own, roleId)) return db::refuse(roleStatus::gone);
    RecordLock lock(own, actor, "role", roleId);
    if (!lock.isHeld()) return db::refuse(roleStatus::openElsewhere);
    own.execute(updateRole, {isDemanded ? 1 : 0, roleId});
    lock.giveBack();
    return db::commit(status::done);
}

}  // namespace

std::string registers::resetSecondFactor(int loginId, int advId) {
    const Actor actor = actorOf(host_);
    if (!actor.isLoggedIn()) return std::string(status::notLoggedIn);
    const auto outcome =
        db::tryInOwnTransaction(host_, "resetSecondFactor of " + std::to_string(loginId), status::failed,
                                [&](auto& own) { return reset(own, actor, loginId); });
    if (outcome.isCommitted)
        recordChange("resetSecondFactor", advId, "delete",
                     "Second factor of login \"" + fullnameOf(connection(), loginId) + "\" has been reset");
    return outcome.value;
}

std::string registers::demandSecondFactor(int roleId, bool isDemanded, int advId) {
    const Actor actor = actorOf(host_);
    if (!actor.isLoggedIn()) return std::string(status::notLoggedIn);
    const auto outcome =
        db::tryInOwnTransaction(host_, "demandSecondFactor of " + std::to_string(roleId), status::failed,
                                [&](auto& own) { return demand(own, actor, roleId, isDemanded); });
    if (outcome.isCommitted)
        recordChange(
            "demandSecondFactor", advId, "save",
            "Role \"" + roleNameOf(connection(), roleId).value_or("") +
                (isDemanded ? "\" demands a second factor" : "\" no longer demands a second factor"));
    return outcome.value;
}

}  // namespace torvex
