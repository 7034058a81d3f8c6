#include "accounts/AdvancedRights.h"

#include "accounts/Actor.h"
#include "platform/Errors.h"
#include "platform/db/Connection.h"
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

bool hasAdvancedRight(db::Connection& connection, int loginId, std::string_view flag, int advId,
                      std::string_view site, std::string_view lang) {
    const std::string_view asked = text::trim(flag);
    auto entry = connection.query(selectEntry, {advId});
    if (!entry.next()) return false;
    if (!hasAsked(asked, entry.number("advView") == 1, entry.number("advEdit") == 1)) return false;
    const bool bySite = entry.number("advLevel") >= 1;
    const bool byLanguage = entry.number("advLevel") >= 2;
    const std::string_view wantedSite = bySite ? text::trim(site) : std::string_view();
    const std::string_view wantedLang = byLanguage ? text::trim(lang) : std::string_view();
    auto rows = connection.query(selectAccess, {loginId, advId, wantedSite, wantedLang});
    while (rows.next()) {
        if (hasAsked(asked, rows.number("viewAccess") == 1, rows.number("editAccess") == 1)) return true;
    }
    return false;
}

bool mayUseEntry(db::Connection& connection, const Actor& actor, std::string_view flag, int advId,
                 std::string_view site, std::string_view lang) try {
    return actor.isAdministrator() || hasAdvancedRight(connection, actor.loginId, flag, advId, site, lang);
} catch (...) {
    raiseFrom("checkAdvRights  !");
}

}  // namespace torvex
