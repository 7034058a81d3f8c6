#include "accounts/EditRights.h"

#include <algorithm>

#include "accounts/Actor.h"
#include "accounts/EditScope.h"
#include "platform/db/Connection.h"
#include "platform/text/Text.h"
#include "records/Existence.h"
#include "records/PageIdentity.h"

namespace torvex {

namespace {

constexpr std::array<std::string_view, editTasks.size()> words{"onOff", "move", "publish", "approve", "edit"};

constexpr std::string_view selectRights =
    "select onOff, move, publish, approve, edit, scope from TORVEX_ROLES_LOGINS a "
    "inner join TORVEX_EDIT_RIGHTS b on a.roleId = b.roleId "
    "where a.loginId = ? and b.site = ? and b.lang = ?";

std::string rootOf(std::string_view site, std::string_view lang) {
    return std::string(site).append(".").append(lang);
}

}  // namespace

std::string_view wordOf(EditTask task) {
    return words[static_cast<std::size_t>(task)];
}

std::optional<EditTask> editTaskOf(std::string_view word) {
    const auto found = std::find_if(editTasks.begin(), editTasks.end(),
                                    [word](EditTask task) { return text::equals(wordOf(task), word); });
    return found == editTasks.end() ? std::nullopt : std::optional(*found);
}

EditRights EditRights::all() {
    EditRights rights;
    rights.given_.fill(true);
    return rights;
}

std::string EditRights::text() const {
    std::string flags;
    for (const bool given : given_) flags += given ? '1' : '0';
    return flags;
}

EditRights editRightsOf(db::Connection& connection, int loginId, std::string_view site, std::string_view lang,
                        std::string_view nodeId) {
    EditRights rights;
    auto rows = connection.query(selectRights, {loginId, site, lang});
    while (rows.next()) {
        if (!scopeReaches(rows.view("scope"), nodeId)) continue;
        for (const EditTask task : editTasks) {
            if (rows.number(wordOf(task)) == 1) rights.give(task);
        }
    }
    return rights;
}

std::string editScopeOf(db::Connection& connection, int loginId, std::string_view site, std::string_view lang,
                        EditTask task) {
    std::string scope;
    auto rows = connection.query(selectRights, {loginId, site, lang});
    while (rows.next()) {
        if (rows.number(wordOf(task)) != 1) continue;
        const std::string_view roleScope = text::trim(rows.view("scope"));
        if (roleScope.empty()) return rootOf(site, lang);
        scope.append(scope.empty() ? "" : ",").append(roleScope);
    }
    return !scope.empty() && isWholeTree(scope) ? rootOf(site, lang) : scope;
}

bool mayEditPage(db::Connection& connection, const Actor& actor, EditTask task, std::string_view nodeId) {
    if (actor.isAdministrator()) return true;
    return editRightsOf(connection, actor.loginId, siteOf(nodeId), langOf(nodeId), nodeId).has(task);
}

bool mayEditTree(db::Connection& connection, const Actor& actor, EditTask task, std::string_view site,
                 std::string_view lang) {
    if (actor.isAdministrator()) return true;
    return editRightsOf(connection, actor.loginId, site, lang, rootOf(site, lang)).has(task);
}

bool mayEditSomewhere(db::Connection& connection, const Actor& actor, EditTask task, std::string_view site,
                      std::string_view lang) {
    if (!siteExists(connection, site) || !languageExists(connection, lang)) return false;
    return actor.isAdministrator() || !editScopeOf(connection, actor.loginId, site, lang, task).empty();
}

}  // namespace torvex
