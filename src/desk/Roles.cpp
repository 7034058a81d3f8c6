// registers: roles, by name, and who has them.

#include "accounts/Actor.h"
#include "accounts/RoleRights.h"
#include "authoring/StatusCodes.h"
#include "desk/RecordFields.h"
#include "desk/RecordLock.h"
#include "desk/RoleStatus.h"
#include "desk/registers.h"
#include "platform/Errors.h"
#include "platform/db/Grid.h"
#include "platform/db/OwnTransaction.h"
#include "platform/text/Text.h"
#include "records/RegisterLock.h"

namespace torvex {

namespace {

constexpr std::string_view selectRoles =
    "select r.roleId, r.roleName, r.roleDesc, count(distinct l.loginId) as logins, "
    "coalesce(r.secondFactor, 0) as secondFactor from TORVEX_ROLES r "
    "left outer join TORVEX_ROLES_LOGINS a on a.roleId = r.roleId "
    "left outer join TORVEX_LOGINS l on l.loginId = a.loginId "
    "group by r.roleId, r.roleName, r.roleDesc, r.secondFactor order by r.roleName, r.roleId";
constexpr std::string_view selectLogins =
    "select loginId, username, name, case when loginId in "
    "(select loginId from TORVEX_ROLES_LOGINS where roleId = ?) then 1 else 0 end as held "
    "from TORVEX_LOGINS order by name, loginId";
constexpr std::string_view selectNamesake =
    "select roleId from TORVEX_ROLES where roleName = ? and roleId <> ?";
constexpr std::string_view insertRole =
    "insert into TORVEX_ROLES (roleName, roleDesc, lock) values (?, ?, '')";
constexpr std::string_view updateRole =
    "update TORVEX_ROLES set roleName = ?, roleDesc = ?, lock = '' where roleId = ?";

using Outcome = db::Outcome<std::string>;

struct RoleTexts {
    std::string name;
    std::string description;
};

/// "0" when there is none.
std::string namesakeOf(db::Connection& connection, const std::string& name, int roleId) {
    auto rows = connection.query(selectNamesake, {name, roleId});
    return rows.next() ? rows.text("roleId") : "0";
}

Outcome changeRole(db::Connection& own, const Actor& actor, int roleId, const RoleTexts& texts) {
    const RecordLock lock(own, actor, "role", roleId);
    if (!lock.isHeld()) return db::refuse(roleStatus::openElsewhere);
    own.execute(updateRole, {texts.name, texts.description, roleId});
    return db::commit(std::to_string(roleId));
}

Outcome addRole(db::Connection& own, const RoleTexts& texts) {
    own.execute(insertRole, {texts.name, texts.description});
    return db::commit(namesakeOf(own, texts.name, 0));
}

Outcome writeRole(db::Connection& own, const Actor& actor, int roleId, const RoleTexts& texts) {
    lockRegisters(own);
    if (roleId != 0 && !roleNameOf(own, roleId)) return db::refuse(roleStatus::gone);
    if (texts.name.empty()) return db::refuse(roleStatus::nameMissing);
    if (namesakeOf(own, texts.name, roleId) != "0") return db::refuse(roleStatus::nameTaken);
    return roleId == 0 ? addRole(own, texts) : changeRole(own, actor, roleId, texts);
}

}  // namespace

Value registers::getRoles() try { return db::gridOf(connection().query(selectRoles)); } catch (...) {
    raiseFrom("getRoles !");
}

Value registers::getRoleLogins(int roleId) try {
    return db::gridOf(connection().query(selectLogins, {roleId}));
} catch (...) {
    raiseFrom("getRoleLogins !");
}

std::string registers::saveRole(int roleId, const std::string& name, const std::string& description,
                                int advId) {
    const Actor actor = actorOf(host_);
    if (!actor.isLoggedIn()) return std::string(status::notLoggedIn);
    const RoleTexts texts{recordName(name), recordDescription(description)};
    const auto outcome =
        db::tryInOwnTransaction(host_, "saveRole of " + std::to_string(roleId), status::failed,
                                [&](auto& own) { return writeRole(own, actor, roleId, texts); });
    if (!outcome.isCommitted) return outcome.value;
    if (roleId == 0) {
        recordChange("saveRole", advId, "new", "New role \"" + texts.name + '"');
    } else {
        recordChange("saveRole", advId, "save", "Role \"" + texts.name + "\" has been updated");
    }
    return outcome.value;
}

}  // namespace torvex
