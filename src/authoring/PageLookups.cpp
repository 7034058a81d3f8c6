// cManager: what authors ask about one page without reading its record.

#include "authoring/PageLookups.h"

#include "authoring/cManager.h"
#include "delivery/ApplicationAddress.h"
#include "platform/Errors.h"
#include "platform/text/Text.h"
#include "records/PageGroups.h"
#include "records/PageIdentity.h"
#include "records/PageKind.h"
#include "records/PageRows.h"

namespace torvex {

namespace {

constexpr std::string_view selectStatuses =
    "select type, editStatus, lockStatus, lockedBy, deleteStatus, approveStatus from TORVEX_PAGES_DESIGN "
    "where nodeId = ?";

constexpr std::string_view selectAllGroups = "select groupId, name from TORVEX_USERGROUPS order by name";
constexpr std::string_view selectGroupsLive =
    "select groupId from TORVEX_PAGES_GROUPS_LIVE where pageId = ? order by groupId";
constexpr std::string_view selectGroupsDesign =
    "select groupId from TORVEX_PAGES_GROUPS_DESIGN where pageId = ? order by groupId";

constexpr std::string_view selectLoginPageLive = "select loginPage from TORVEX_PAGES_LIVE where nodeId = ?";
constexpr std::string_view selectLoginPageDesign =
    "select loginPage from TORVEX_PAGES_DESIGN where nodeId = ?";

constexpr std::string_view sumOfPage = "select sum(hits) as hits from TORVEX_LOGGING where nodeId = ?";
constexpr std::string_view sumOfBranch =
    "select sum(hits) as hits from TORVEX_LOGGING where nodeId >= ? and nodeId < ?";

/// The names of the two system groups, which tell here what a page's groups mean.
constexpr std::string_view everybody = "everybody";
constexpr std::string_view inherited = "inherited";

/// "*3*7*"; "" for a page that has none.
std::string groupMarks(db::Connection& connection, PageId pageId, Twin twin) {
    if (pageId <= 0) return {};
    std::string marks;
    auto rows = connection.query(twin == Twin::Design ? selectGroupsDesign : selectGroupsLive, {pageId});
    while (rows.next()) marks.append(marks.empty() ? "*" : "").append(rows.text("groupId")).append("*");
    return marks;
}

std::string flag(const db::Rows& rows, std::string_view column) {
    return text::fromNumber(rows.number(column));
}

}  // namespace

std::string cManager::getPageParameters(const std::string& pageIdent) try {
    const std::string nodeId = nodeIdFrom(connection(), pageIdent);
    if (nodeId.size() < PageIdentity::rootLength) return {};
    auto rows = connection().query(selectStatuses, {nodeId});
    if (!rows.next()) return {};
    const bool held = rows.number("lockStatus") == 1 && rows.number("lockedBy") != author_.loginId;
    return rows.text("type") + rows.text("editStatus") + flag(rows, "lockStatus") +
           flag(rows, "deleteStatus") + flag(rows, "approveStatus") + (held ? "1" : "0");
} catch (...) {
    raiseFrom("getPageParameters !");
}

Value cManager::getPageGroups(const std::string& pageIdent, const std::string& mode) try {
    constexpr std::size_t columns = 4;
    const std::string marks = groupMarks(connection(), pageIdFrom(connection(), pageIdent), twinOf(mode));
    ResultGrid grid(columns);
    auto rows = connection().query(selectAllGroups);
    while (rows.next()) {
        const int mark = text::contains(marks, "*" + rows.text("groupId") + "*") ? 1 : 0;
        grid.add({rows.value("groupId"), rows.value("name"), mark});
    }
    return gridOrEmpty(std::move(grid));
} catch (...) {
    raiseFrom("getPageGroups !");
}

PageId guardingPage(db::Connection& connection, PageIdentity page, Twin twin) {
    constexpr PageId none = -1;
    if (!page.isValid()) return none;
    std::string groups = pageGroupNames(connection, page.pageId, twin);
    while (text::contains(groups, inherited) && !text::contains(groups, everybody)) {
        if (page.nodeId.size() <= PageIdentity::rootLength) return none;
        page.nodeId = parentOf(page.nodeId);
        page.pageId = pageIdOf(connection, page.nodeId);
        groups = pageGroupNames(connection, page.pageId, twin);
    }
    // A page without groups is open to everybody.
    if (groups.empty() || text::contains(groups, everybody)) return none;
    auto rows =
        connection.query(twin == Twin::Design ? selectLoginPageDesign : selectLoginPageLive, {page.nodeId});
    return rows.next() ? rows.number("loginPage", none) : none;
}

PageId cManager::getLoginPage(const std::string& pageIdent, const std::string& mode) try {
    return guardingPage(connection(), identify(connection(), pageIdent), twinOf(mode));
} catch (...) {
    raiseFrom("getLoginPage !");
}

double viewsOf(db::Connection& connection, std::string_view nodeId) {
    if (nodeId.size() < PageIdentity::rootLength) return 0;
    const std::string type = asLevel(
        "getPageType !", [&] { return typeOfPage(connection, pageIdFrom(connection, nodeId), Twin::Live); });
    auto rows = isFolder(type) ? connection.query(sumOfBranch, {nodeId, endOfPrefix(nodeId)})
                               : connection.query(sumOfPage, {nodeId});
    return rows.next() ? rows.number("hits") : 0;
}

double cManager::getNumberOfViews(const std::string& pageIdent) try {
    return viewsOf(connection(), nodeIdFrom(connection(), pageIdent));
} catch (...) {
    raiseFrom("getNumberOfViews !");
}

std::string cManager::urlencode(const std::string& queryString) {
    return encodedQuery(queryString);
}

}  // namespace torvex
