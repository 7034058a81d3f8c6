#include "modules/dynamicMenu/MenuPages.h"

#include <algorithm>
#include <initializer_list>

#include "platform/db/Connection.h"
#include "platform/text/Text.h"
#include "records/DateWindow.h"
#include "records/PageKind.h"
#include "records/SystemBranch.h"

namespace torvex {

namespace {

// What is below a root. A page's children are read when the page may be in the menu, and the menu shows their
// level everywhere or the visitor is below the page. A child's node is longer than its parent's, so that rows
// which contradict each other lead to no circle.
constexpr std::string_view branchOf =
    "with recursive branch (pageId, nodeId, dynMenu) as ("
    "select pageId, nodeId, dynMenu from {0} where parent = ? and length(nodeId) > ? "
    "union all select c.pageId, c.nodeId, c.dynMenu from branch b inner join {0} c on c.parent = b.nodeId "
    "where length(b.nodeId) < ? "
    "and (length(b.nodeId) < ? or lower(b.nodeId) = substr(?, 1, length(b.nodeId))) "
    "and coalesce(b.dynMenu, '') <> '0' and b.nodeId not like '%99%' "
    "and length(c.nodeId) > length(b.nodeId))";

constexpr std::string_view selectBranchLive =
    " select p.pageId, p.nodeId, p.parent, p.orderId, p.title, p.type, p.dynMenu, p.online, p.onlineFrom, "
    "p.onlineTo from branch b inner join {0} p on p.pageId = b.pageId";
constexpr std::string_view selectBranchDesign =
    " select p.pageId, p.nodeId, p.parent, p.orderId, p.title, p.type, p.dynMenu, 1 as online, "
    "p.onlineFrom, p.onlineTo from branch b inner join {0} p on p.pageId = b.pageId";
constexpr std::string_view selectBranchGroups =
    " select b.pageId, g.groupId from branch b inner join TORVEX_PAGES_GROUPS_LIVE g on g.pageId = b.pageId";

// From the folders among these to their first children, and on while these are folders.
constexpr std::string_view waysBehind =
    ", ways (pageId, nodeId, type) as ("
    "select c.pageId, c.nodeId, c.type from branch b inner join {0} f on f.pageId = b.pageId "
    "inner join {0} c on c.parent = b.nodeId "
    "and c.orderId = (select min(d.orderId) from {0} d where d.parent = b.nodeId) "
    "where upper(trim(f.type)) = 'F' and length(c.nodeId) > length(b.nodeId) "
    "union all select c.pageId, c.nodeId, c.type from ways w inner join {0} c on c.parent = w.nodeId "
    "and c.orderId = (select min(d.orderId) from {0} d where d.parent = w.nodeId) "
    "where upper(trim(w.type)) = 'F' and length(c.nodeId) > length(w.nodeId))";
constexpr std::string_view selectWays =
    " select p.pageId, p.nodeId, p.parent, p.orderId, p.title, p.type, p.dynMenu, p.online, p.onlineFrom, "
    "p.onlineTo from ways w inner join {0} p on p.pageId = w.pageId";
constexpr std::string_view selectWaysGroups =
    " select w.pageId, g.groupId from ways w inner join TORVEX_PAGES_GROUPS_LIVE g on g.pageId = w.pageId";

std::string joined(std::initializer_list<std::string_view> parts, std::string_view table) {
    std::string statement;
    for (const auto part : parts) statement.append(text::replaceAll(part, "{0}", table));
    return statement;
}

constexpr std::string_view live = "TORVEX_PAGES_LIVE";
constexpr std::string_view design = "TORVEX_PAGES_DESIGN";

const std::string branchLive = joined({branchOf, selectBranchLive}, live);
const std::string branchDesign = joined({branchOf, selectBranchDesign}, design);
const std::string branchGroups = joined({branchOf, selectBranchGroups}, live);
const std::string waysLive = joined({branchOf, waysBehind, selectWays}, live);
const std::string waysGroups = joined({branchOf, waysBehind, selectWaysGroups}, live);

/// Only "0" takes a page out of menus; the column holds a text.
bool isTakenOut(std::string_view dynMenu) {
    return text::isNumeric(dynMenu) && text::toNumber(dynMenu) == 0;
}

bool comesBefore(const MenuPage& one, const MenuPage& other) {
    return one.order != other.order ? one.order < other.order : text::compare(one.nodeId, other.nodeId) < 0;
}

}  // namespace

MenuPages::MenuPages(db::Connection& connection, const MenuPlace& place)
    : connection_(connection), place_(place), currentNode_(text::lower(place.currentNode)) {
    branch_ = read(place.twin == Twin::Design ? branchDesign : branchLive);
    if (place.twin == Twin::Live && hasClosedFolders()) ways_ = read(waysLive);
}

const std::vector<MenuPage>& MenuPages::childrenOf(std::string_view nodeId) const {
    static const std::vector<MenuPage> none;
    const auto found = branch_.find(text::lower(nodeId));
    return found == branch_.end() ? none : found->second;
}

const MenuPage* MenuPages::firstChildOf(const MenuPage& folder) const {
    if (const auto& children = childrenOf(folder.nodeId); !children.empty()) return &children.front();
    const auto found = ways_.find(text::lower(folder.nodeId));
    return found == ways_.end() ? nullptr : &found->second.front();
}

std::vector<PageGroup> MenuPages::groups() const {
    std::vector<PageGroup> groups;
    readGroups(branchGroups, groups);
    if (!ways_.empty()) readGroups(waysGroups, groups);
    return groups;
}

bool MenuPages::hasClosedFolders() const {
    const auto isClosed = [&](const MenuPage& page) {
        return page.isFolder && childrenOf(page.nodeId).empty();
    };
    return std::ranges::any_of(
        branch_, [&](const auto& family) { return std::ranges::any_of(family.second, isClosed); });
}

db::Rows MenuPages::query(const std::string& statement) const {
    return connection_.query(statement, {place_.rootNode, static_cast<int>(place_.rootNode.size()),
                                         place_.maxLength, place_.minLength, currentNode_});
}

MenuPages::Families MenuPages::read(const std::string& statement) const {
    Families families;
    auto rows = query(statement);
    while (rows.next()) families[text::lowerTrim(rows.view("parent"))].push_back(readPage(rows));
    for (auto& [parent, pages] : families) std::sort(pages.begin(), pages.end(), comesBefore);
    return families;
}

void MenuPages::readGroups(const std::string& statement, std::vector<PageGroup>& groups) const {
    auto rows = query(statement);
    while (rows.next()) groups.push_back({rows.number("pageId"), rows.number("groupId")});
}

MenuPage MenuPages::readPage(const db::Rows& rows) const {
    MenuPage page;
    page.pageId = rows.number("pageId");
    page.nodeId = text::trim(rows.view("nodeId"));
    page.order = rows.number("orderId");
    page.title = rows.text("title");
    page.isFolder = isFolder(rows.view("type"));
    page.isInMenu = !isTakenOut(rows.view("dynMenu")) && !systemBranch::hasDigits(page.nodeId);
    page.isOnline =
        isOnlineOn(place_.today, rows.number("online"), rows.view("onlineFrom"), rows.view("onlineTo"));
    return page;
}

}  // namespace torvex
