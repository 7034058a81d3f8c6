#include "records/PageGroups.h"

#include "platform/Errors.h"
#include "platform/db/Connection.h"

namespace torvex {

namespace {

constexpr std::string_view selectNamesLive =
    "select b.name from TORVEX_PAGES_GROUPS_LIVE a inner join TORVEX_USERGROUPS b on a.groupId = b.groupId "
    "where a.pageId = ? order by b.name";
constexpr std::string_view selectNamesDesign =
    "select b.name from TORVEX_PAGES_GROUPS_DESIGN a inner join TORVEX_USERGROUPS b on a.groupId = b.groupId "
    "where a.pageId = ? order by b.name";

}  // namespace

std::string pageGroupNames(db::Connection& connection, PageId pageId, Twin twin) try {
    std::string names;
    auto rows = connection.query(twin == Twin::Design ? selectNamesDesign : selectNamesLive, {pageId});
    while (rows.next()) {
        if (rows.isNull("name")) continue;
        names.append(names.empty() ? "" : ", ").append(rows.view("name"));
    }
    return names;
} catch (...) {
    raiseFrom("getPageGroupNames !");
}

}  // namespace torvex
