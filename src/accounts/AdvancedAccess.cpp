#include "accounts/AdvancedAccess.h"

#include "platform/db/Connection.h"

namespace torvex {

namespace {

constexpr std::string_view selectOfLogin =
    "select b.advId, b.site, b.lang, b.viewAccess, b.editAccess from TORVEX_ROLES_LOGINS a "
    "inner join TORVEX_ADVANCED_RIGHTS b on b.roleId = a.roleId "
    "where a.loginId = ? and (b.site = '' or b.site = ?) and (b.lang = '' or b.lang = ?)";

constexpr std::string_view selectOfRole =
    "select advId, site, lang, viewAccess, editAccess from TORVEX_ADVANCED_RIGHTS "
    "where roleId = ? and (site = '' or site = ?) and (lang = '' or lang = ?)";

/// A row for one language only counts where languages do, and one for a site where sites do.
int lowestLevel(std::string_view site, std::string_view lang) {
    if (!lang.empty()) return 2;
    return site.empty() ? 0 : 1;
}

}  // namespace

AdvancedAccess::AdvancedAccess(db::Rows rows) {
    while (rows.next()) {
        rows_.push_back({static_cast<int>(rows.number("advId")),
                         lowestLevel(rows.view("site"), rows.view("lang")),
                         {rows.number("viewAccess") == 1, rows.number("editAccess") == 1}});
    }
}

AdvancedAccess AdvancedAccess::ofLogin(db::Connection& connection, int loginId, std::string_view site,
                                       std::string_view lang) {
    return AdvancedAccess(connection.query(selectOfLogin, {loginId, site, lang}));
}

AdvancedAccess AdvancedAccess::ofRole(db::Connection& connection, int roleId, std::string_view site,
                                      std::string_view lang) {
    return AdvancedAccess(connection.query(selectOfRole, {roleId, site, lang}));
}

AdvancedAccess::Given AdvancedAccess::of(int advId, int level) const {
    Given sum;
    for (const auto& row : rows_) {
        if (row.advId != advId || row.narrowest > level) continue;
        sum.view |= row.given.view;
        sum.edit |= row.given.edit;
    }
    return sum;
}

}  // namespace torvex
