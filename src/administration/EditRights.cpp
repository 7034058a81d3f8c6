// cManager: what a login may do to pages. Every role of a login gives rights of its own, by site and
// language, to the whole tree or to the nodes of its scope; the login has them all.

#include <algorithm>
#include <array>

#include "accounts/Actor.h"
#include "accounts/EditScope.h"
#include "authoring/cManager.h"
#include "platform/Errors.h"
#include "platform/text/Text.h"
#include "records/PageIdentity.h"

namespace torvex {

namespace {

/// The rights, as their columns are called, in the order in which flags stand in a text.
constexpr std::array<std::string_view, 5> tasks{"onOff", "move", "publish", "approve", "edit"};

/// A scope that is written out as this word is none.
constexpr std::string_view everywhere = "ALL";

constexpr std::string_view noRights = "00000";
constexpr std::string_view allRights = "11111";

constexpr std::string_view selectRights =
    "select onOff, move, publish, approve, edit, scope from TORVEX_ROLES_LOGINS a "
    "inner join TORVEX_EDIT_RIGHTS b on a.roleId = b.roleId "
    "where a.loginId = ? and b.site = ? and b.lang = ?";

/// Whether a role's scope lets its rights reach a node.
bool reaches(std::string_view scope, std::string_view nodeId) {
    return scope.empty() || text::equals(scope, everywhere) || scopeCovers(scope, nodeId);
}

/// The place of a task among the flags; -1 for any other word.
int placeOf(std::string_view task) {
    const auto found = std::find_if(tasks.begin(), tasks.end(),
                                    [task](std::string_view word) { return text::equals(word, task); });
    return found == tasks.end() ? -1 : static_cast<int>(found - tasks.begin());
}

}  // namespace

bool cManager::checkEditRights(const std::string& action, const std::string& site, const std::string& lang,
                               const std::string& pageIdent, const std::string& username) try {
    const std::string_view given = text::trim(username);
    const std::string login = given.empty() ? author_.username : text::lower(given);
    if (isAdministrator(login)) return true;
    std::string nodeId;
    if (!text::trim(pageIdent).empty()) {
        nodeId = nodeIdFrom(connection(), pageIdent);
        if (text::length(nodeId) < PageIdentity::rootLength) return false;
    }
    const auto flags = getLoginEditRights(text::lowerTrim(site), text::lowerTrim(lang), nodeId, login);
    const int place = placeOf(text::trim(action));
    return place >= 0 && flags[static_cast<std::size_t>(place)] == '1';
} catch (...) {
    raiseFrom("checkEditRights !");
}

std::string cManager::getLoginEditRights(const std::string& site, const std::string& lang,
                                         const std::string& pageIdent, const std::string& username) try {
    if (isAdministrator(username.empty() ? author_.username : username)) return std::string(allRights);
    std::string nodeId = site + "." + lang;
    if (!text::trim(pageIdent).empty()) {
        nodeId = nodeIdFrom(connection(), pageIdent);
        if (text::length(nodeId) < PageIdentity::rootLength) return std::string(noRights);
    }
    std::string flags(noRights);
    auto rows = connection().query(selectRights, {getLoginId(username), site, lang});
    while (rows.next()) {
        if (!reaches(text::trim(rows.view("scope")), nodeId)) continue;
        for (std::size_t i = 0; i < tasks.size(); ++i) {
            if (rows.number(tasks[i]) == 1) flags[i] = '1';
        }
    }
    return flags;
} catch (...) {
    raiseFrom("getLoginEditRights !");
}

std::string cManager::getLoginScope(const std::string& site, const std::string& lang, const std::string& task,
                                    const std::string& username) try {
    const std::string siteCode(text::trim(site));
    const std::string langCode(text::trim(lang));
    const std::string root = siteCode + "." + langCode;
    if (!isSite(siteCode) || !isLang(langCode)) return {};
    const int place = placeOf(text::trim(task));
    if (place < 0) return {};
    const std::string_view given = text::trim(username);
    const std::string login(given.empty() ? std::string_view(author_.username) : given);
    if (isAdministrator(login)) return root;
    std::string scope;
    auto rows = connection().query(selectRights, {getLoginId(login), siteCode, langCode});
    while (rows.next()) {
        if (rows.number(tasks[static_cast<std::size_t>(place)]) != 1) continue;
        const std::string_view roleScope = text::trim(rows.view("scope"));
        if (roleScope.empty()) return root;
        scope.append(scope.empty() ? "" : ",").append(roleScope);
    }
    return text::equals(scope, everywhere) ? root : scope;
} catch (...) {
    raiseFrom("getLoginScope !");
}

bool cManager::isMemberOfScope(const std::string& nodeId, const std::string& scope) try {
    return scopeCovers(scope, nodeId);
} catch (...) {
    raiseFrom("isMemberOfScope !");
}

}  // namespace torvex
