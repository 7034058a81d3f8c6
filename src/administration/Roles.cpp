// cManager: roles, and the entries of the administration menu.

#include <array>

#include "accounts/Actor.h"
#include "accounts/Administrators.h"
#include "accounts/AdvancedAccess.h"
#include "accounts/RoleRights.h"
#include "administration/MenuEntries.h"
#include "administration/RecordRemoval.h"
#include "authoring/StatusCodes.h"
#include "authoring/cManager.h"
#include "platform/Errors.h"
#include "platform/HostContext.h"
#include "platform/Keys.h"
#include "platform/Session.h"
#include "platform/db/OwnTransaction.h"
#include "platform/text/Text.h"
#include "records/ItemLocks.h"

namespace torvex {

namespace {

constexpr std::string_view selectEntries =
    "select * from TORVEX_ADVANCED order by advLevel desc, advReference";
constexpr std::string_view selectTitle = "select advTitle from TORVEX_ADVANCED where advId = ?";
constexpr std::string_view selectRights =
    "select * from TORVEX_EDIT_RIGHTS where roleId = ? and site = ? and lang = ?";
constexpr std::string_view selectScope =
    "select scope from TORVEX_EDIT_RIGHTS where roleId = ? and site = ? and lang = ?";
constexpr std::string_view selectRoleId = "select roleId from TORVEX_ROLES where roleName = ?";
constexpr std::string_view selectRoleDescription = "select roleDesc from TORVEX_ROLES where roleId = ?";

constexpr std::array<std::string_view, 4> roleRows{
    "delete from TORVEX_ROLES_LOGINS where roleId = ?", "delete from TORVEX_EDIT_RIGHTS where roleId = ?",
    "delete from TORVEX_ADVANCED_RIGHTS where roleId = ?", "delete from TORVEX_ROLES where roleId = ?"};

// The last one is always empty: callers count on the number of columns.
constexpr std::size_t listColumns = 10;

constexpr int noSuchRight = -1;

int stateOf(bool offered, bool given) {
    if (!offered) return noSuchRight;
    return given ? 1 : 0;
}

std::string interfaceLanguage(HostContext& host) {
    return host.session.text(sessionKey::interfaceLanguage);
}

std::string firstText(db::Rows rows, std::string_view column) {
    return rows.next() ? rows.text(column) : std::string();
}

}  // namespace

Value cManager::getAdvList() try {
    ResultGrid list(listColumns);
    std::vector<double> labels;
    auto rows = connection().query(selectEntries);
    while (rows.next()) {
        labels.push_back(titleLabel(rows.text("advTitle")));
        list.add({rows.value("advId"),
                  rows.value("advLevel"),
                  rows.value("advReference"),
                  {},
                  rows.value("advIcon"),
                  rows.value("advProgram"),
                  rows.value("advEdit"),
                  rows.value("advView"),
                  rows.value("advAudit")});
    }
    const auto titles = titlesOf(connection(), interfaceLanguage(host_), labels);
    for (std::size_t row = 0; row < labels.size(); ++row) list.set(3, row, titles.at(labels[row]));
    return gridOrEmpty(std::move(list));
} catch (...) {
    raiseFrom("getAdvList !");
}

std::string cManager::getAdvTitle(int advId) try {
    auto rows = connection().query(selectTitle, {advId});
    if (!rows.next()) return {};
    return getVocab(interfaceLanguage(host_), titleLabel(rows.text("advTitle")));
} catch (...) {
    raiseFrom("getAdvTitle !");
}

Value cManager::getRoleAdvancedRights(int roleId, const std::string& site, const std::string& lang,
                                      int order) try {
    const auto entries = menuEntries(connection(), interfaceLanguage(host_), menuOrder(order));
    const auto access = AdvancedAccess::ofRole(connection(), roleId, site, lang);
    ResultGrid list(listColumns);
    for (const auto& entry : entries) {
        const auto given = access.of(entry.advId, entry.level);
        list.add({entry.advId, entry.level, entry.reference, entry.title, entry.icon, entry.program,
                  entry.hasChildren ? 1 : 0, stateOf(entry.offersView, given.view),
                  stateOf(entry.offersEdit, given.edit)});
    }
    return gridOrEmpty(std::move(list));
} catch (...) {
    raiseFrom("getRoleAdvancedRights !");
}

std::string cManager::getRoleEditRights(int roleId, const std::string& site, const std::string& lang) try {
    auto rows = connection().query(selectRights, {roleId, site, lang});
    if (!rows.next()) return "00000";
    std::string flags;
    for (const auto* task : {"onOff", "move", "publish", "approve", "edit"}) {
        flags += rows.number(task) == 1 ? '1' : '0';
    }
    return flags;
} catch (...) {
    raiseFrom("getRoleEditRights !");
}

std::string cManager::getRoleScope(const std::string& site, const std::string& lang, int roleId) try {
    return firstText(connection().query(selectScope, {roleId, site, lang}), "scope");
} catch (...) {
    raiseFrom("getRoleScope !");
}

int cManager::getRoleId(const std::string& roleName) try {
    auto rows = connection().query(selectRoleId, {roleName});
    return rows.next() ? static_cast<int>(rows.number("roleId")) : 0;
} catch (...) {
    raiseFrom("getRoleId !");
}

std::string cManager::getRoleName(int roleId) try {
    return roleNameOf(connection(), roleId).value_or("");
} catch (...) {
    raiseFrom("getRoleName !");
}

std::string cManager::getRoleDescription(int roleId) try {
    return firstText(connection().query(selectRoleDescription, {roleId}), "roleDesc");
} catch (...) {
    raiseFrom("getRoleDescription !");
}

std::string cManager::deleteRole(int roleId, int advId) {
    if (!author_.isLoggedIn()) return std::string(status::notLoggedIn);
    std::string role;
    // The line of the trail is written whatever entry called.
    std::string code =
        removeRecord("deleteRole", roleId, 0, [&](db::Connection& transaction) -> db::Outcome<std::string> {
            if (!takeItem(transaction, "role", std::to_string(roleId), lockSeeker())) {
                return db::refuse(record::locked);
            }
            role = "Role \"" + roleNameOf(transaction, roleId).value_or("") + '"';
            const Actor actor = actorOf(host_);
            const bool before = someoneAdministers(transaction, actor.now);
            deleteRows(transaction, roleRows, roleId);
            if (tookLastAdministrator(transaction, actor, before)) {
                return db::refuse(record::lastAdministrator);
            }
            return db::commit(role);
        });
    if (code.empty()) recordRemoval("deleteRole", advId, role);
    return code;
}

}  // namespace torvex
