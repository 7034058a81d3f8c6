// cManager: what a login may do to pages.

#include "accounts/EditRights.h"

#include "accounts/Actor.h"
#include "accounts/EditScope.h"
#include "authoring/cManager.h"
#include "platform/Errors.h"
#include "platform/text/Text.h"
#include "records/PageIdentity.h"

namespace torvex {

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
    const auto rights = editRights(text::lowerTrim(site), text::lowerTrim(lang), nodeId, login);
    const auto task = editTaskOf(text::trim(action));
    return task && rights.has(*task);
} catch (...) {
    raiseFrom("checkEditRights !");
}

std::string cManager::getLoginEditRights(const std::string& site, const std::string& lang,
                                         const std::string& pageIdent, const std::string& username) {
    return editRights(site, lang, pageIdent, username).text();
}

/// Serves both operations; its failure is raised as "getLoginEditRights" in both.
EditRights cManager::editRights(const std::string& site, const std::string& lang,
                                const std::string& pageIdent, const std::string& username) try {
    if (isAdministrator(username.empty() ? author_.username : username)) return EditRights::all();
    std::string nodeId = site + "." + lang;
    if (!text::trim(pageIdent).empty()) {
        nodeId = nodeIdFrom(connection(), pageIdent);
        if (text::length(nodeId) < PageIdentity::rootLength) return {};
    }
    return editRightsOf(connection(), getLoginId(username), site, lang, nodeId);
} catch (...) {
    raiseFrom("getLoginEditRights !");
}

std::string cManager::getLoginScope(const std::string& site, const std::string& lang, const std::string& task,
                                    const std::string& username) try {
    const std::string siteCode(text::trim(site));
    const std::string langCode(text::trim(lang));
    if (!isSite(siteCode) || !isLang(langCode)) return {};
    const auto wanted = editTaskOf(text::trim(task));
    if (!wanted) return {};
    const std::string_view given = text::trim(username);
    const std::string login(given.empty() ? std::string_view(author_.username) : given);
    if (isAdministrator(login)) return siteCode + "." + langCode;
    return editScopeOf(connection(), getLoginId(login), siteCode, langCode, *wanted);
} catch (...) {
    raiseFrom("getLoginScope !");
}

bool cManager::isMemberOfScope(const std::string& nodeId, const std::string& scope) try {
    return scopeCovers(scope, nodeId);
} catch (...) {
    raiseFrom("isMemberOfScope !");
}

}  // namespace torvex
