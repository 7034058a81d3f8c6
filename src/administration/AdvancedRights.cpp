// cManager: what a login may open and change in the administration. A right of an entry is given by role, for
// all sites and languages or for one; there is no denying, the first row that gives it counts.

#include "accounts/Actor.h"
#include "authoring/cManager.h"
#include "platform/Errors.h"
#include "platform/text/Text.h"

namespace torvex {

namespace {

constexpr std::string_view selectEntry =
    "select advLevel, advView, advEdit from TORVEX_ADVANCED where advId = ?";

constexpr std::string_view selectAccess =
    "select b.viewAccess, b.editAccess from TORVEX_ROLES_LOGINS a "
    "inner join TORVEX_ADVANCED_RIGHTS b on b.roleId = a.roleId "
    "where a.loginId = ? and b.advId = ? and (b.site = '' or b.site = ?) and (b.lang = '' or b.lang = ?)";

/// What an entry offers, or a row gives, as far as the flag asks for it.
bool hasAsked(std::string_view flag, bool view, bool edit) {
    if (flag.empty()) return view || edit;
    return (view && text::equals(flag, "view")) || (edit && text::equals(flag, "edit"));
}

}  // namespace

bool cManager::checkAdvRights(const std::string& flag, int advId, const std::string& site,
                              const std::string& lang, const std::string& username) try {
    if (isAdministrator(author_.username)) return true;
    const std::string_view asked = text::trim(flag);
    const int login = getLoginId(username);
    auto entry = connection().query(selectEntry, {advId});
    if (!entry.next()) return false;
    if (!hasAsked(asked, entry.number("advView") == 1, entry.number("advEdit") == 1)) return false;
    // An entry that isn't by site, or not by language, is opened only by rows for all of them.
    const bool bySite = entry.number("advLevel") >= 1;
    const bool byLanguage = entry.number("advLevel") >= 2;
    const std::string_view wantedSite = bySite ? text::trim(site) : std::string_view();
    const std::string_view wantedLang = byLanguage ? text::trim(lang) : std::string_view();
    auto rows = connection().query(selectAccess, {login, advId, wantedSite, wantedLang});
    while (rows.next()) {
        if (hasAsked(asked, rows.number("viewAccess") == 1, rows.number("editAccess") == 1)) return true;
    }
    return false;
} catch (...) {
    raiseFrom("checkAdvRights  !");
}

}  // namespace torvex
