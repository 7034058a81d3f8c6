#include "accounts/DesignRights.h"

#include <algorithm>
#include <string>
#include <utility>
#include <vector>

#include "accounts/Actor.h"
#include "platform/db/Connection.h"

namespace torvex {

namespace {

constexpr std::string_view selectEditRight =
    "select b.roleId from TORVEX_ROLES_LOGINS a inner join TORVEX_EDIT_RIGHTS b on b.roleId = a.roleId "
    "where a.loginId = ? and b.site = ? and b.lang = ? "
    "and (b.onOff = 1 or b.move = 1 or b.publish = 1 or b.approve = 1 or b.edit = 1)";

constexpr std::string_view selectEntry =
    "select b.advId from TORVEX_ROLES_LOGINS a "
    "inner join TORVEX_ADVANCED_RIGHTS b on b.roleId = a.roleId "
    "inner join TORVEX_ADVANCED c on c.advId = b.advId "
    "where a.loginId = ? and (b.site = '' or b.site = ?) and c.advLevel >= 1 "
    "and ((b.viewAccess = 1 and c.advView = 1) or (b.editAccess = 1 and c.advEdit = 1))";

constexpr std::string_view selectTrees =
    "select distinct site, lang from TORVEX_PAGES_DESIGN where parent = ''";

bool isGiven(db::Connection& connection, int loginId, std::string_view site, std::string_view lang) {
    return connection.query(selectEditRight, {loginId, site, lang}).next() ||
           connection.query(selectEntry, {loginId, site}).next();
}

std::vector<std::pair<std::string, std::string>> allTrees(db::Connection& connection) {
    std::vector<std::pair<std::string, std::string>> trees;
    auto rows = connection.query(selectTrees);
    while (rows.next()) trees.emplace_back(rows.text("site"), rows.text("lang"));
    return trees;
}

}  // namespace

bool mayReadDesign(db::Connection& connection, const Actor& actor, std::string_view site,
                   std::string_view lang) {
    if (actor.isAdministrator()) return true;
    // Rows for all sites are no reason where there is none.
    return !site.empty() && !lang.empty() && isGiven(connection, actor.loginId, site, lang);
}

bool mayReadEachDesign(db::Connection& connection, const Actor& actor) {
    if (actor.isAdministrator()) return true;
    const auto trees = allTrees(connection);
    return std::ranges::all_of(
        trees, [&](const auto& tree) { return isGiven(connection, actor.loginId, tree.first, tree.second); });
}

}  // namespace torvex
