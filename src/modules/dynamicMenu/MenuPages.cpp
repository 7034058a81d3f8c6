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

// The pages whose children are read: the root, and what may be in the menu and is shown wherever the visitor is,
// or leads to her. A child's node is longer than its parent's, so that rows which contradict each other lead
// to no circle.
constexpr std::string_view opening =
    "with recursive opened (nodeId) as ("
    "select nodeId from TORVEX_PAGES_DESIGN where nodeId = ? "
    "union all select c.nodeId from opened o inner join {pages} c on c.parent = o.nodeId "
    "where length(c.nodeId) < ? "
    "and (length(c.nodeId) < ? or lower(c.nodeId) = substr(?, 1, length(c.nodeId))) "
    "and coalesce(c.dynMenu, '') <> '0' and c.nodeId not like '%99%' "
    "and length(c.nodeId) > length(o.nodeId))";
constexpr std::string_view fromOpened =
    " from opened o inner join {pages} c on c.parent = o.nodeId and length(c.nodeId) > length(o.nodeId)";

// From the folders among their children to these folders' first children, and on while they are folders.
constexpr std::string_view leading =
    ", ways (nodeId, type) as ("
    "select c.nodeId, c.type from opened o inner join {pages} f on f.parent = o.nodeId "
    "inner join {pages} c on c.parent = f.nodeId "
    "and c.orderId = (select min(d.orderId) from {pages} d where d.parent = f.nodeId) "
    "where upper(trim(f.type)) = 'F' and length(f.nodeId) > length(o.nodeId) "
    "and length(c.nodeId) > length(f.nodeId) "
    "union all select c.nodeId, c.type from ways w inner join {pages} c on c.parent = w.nodeId "
    "and c.orderId = (select min(d.orderId) from {pages} d where d.parent = w.nodeId) "
    "where upper(trim(w.type)) = 'F' and length(c.nodeId) > length(w.nodeId))";
constexpr std::string_view fromWays = " from ways w inner join {pages} c on c.nodeId = w.nodeId";

constexpr std::string_view select =
    " select c.pageId, c.nodeId, c.parent, c.orderId, c.title, c.type, c.dynMenu, {online} as online, "
    "c.onlineFrom, c.onlineTo";
// A row for each group of a page, one without a group for a page that has none.
constexpr std::string_view selectGroup = ", g.groupId";
constexpr std::string_view fromGroups = " left outer join TORVEX_PAGES_GROUPS_LIVE g on g.pageId = c.pageId";

std::string joined(Twin twin, std::initializer_list<std::string_view> parts) {
    std::string statement;
    for (const auto part : parts) statement.append(part);
    const bool live = twin == Twin::Live;
    statement = text::replaceAll(statement, "{pages}", live ? "TORVEX_PAGES_LIVE" : "TORVEX_PAGES_DESIGN");
    return text::replaceAll(statement, "{online}", live ? "c.online" : "1");
}

const std::string designChildren = joined(Twin::Design, {opening, select, fromOpened});
const std::string childrenWithoutGroups = joined(Twin::Live, {opening, select, fromOpened});
const std::string childrenWithGroups =
    joined(Twin::Live, {opening, select, selectGroup, fromOpened, fromGroups});
const std::string waysWithoutGroups = joined(Twin::Live, {opening, leading, select, fromWays});
const std::string waysWithGroups =
    joined(Twin::Live, {opening, leading, select, selectGroup, fromWays, fromGroups});

const std::string& childrenFor(const MenuPlace& place) {
    if (place.twin == Twin::Design) return designChildren;
    return place.withGroups ? childrenWithGroups : childrenWithoutGroups;
}

/// Only "0" takes a page out of menus; the column holds a text.
bool isTakenOut(std::string_view dynMenu) {
    return text::isNumeric(dynMenu) && text::toNumber(dynMenu) == 0;
}

bool comesBefore(const MenuPage& one, const MenuPage& other) {
    return one.order != other.order ? one.order < other.order : text::compare(one.nodeId, other.nodeId) < 0;
}

bool isSame(const MenuPage& one, const MenuPage& other) {
    return one.pageId == other.pageId;
}

}  // namespace

MenuPages::MenuPages(db::Connection& connection, const MenuPlace& place)
    : connection_(connection), place_(place), currentNode_(text::lower(place.currentNode)) {
    children_ = read(childrenFor(place));
    if (place.twin == Twin::Live && hasClosedFolders())
        ways_ = read(place.withGroups ? waysWithGroups : waysWithoutGroups);
    std::sort(groups_.begin(), groups_.end());
}

const std::vector<MenuPage>& MenuPages::childrenOf(std::string_view nodeId) const {
    static const std::vector<MenuPage> none;
    const auto found = children_.find(text::lower(nodeId));
    return found == children_.end() ? none : found->second;
}

const MenuPage* MenuPages::firstChildOf(const MenuPage& folder) const {
    if (const auto& children = childrenOf(folder.nodeId); !children.empty()) return &children.front();
    const auto found = ways_.find(text::lower(folder.nodeId));
    return found == ways_.end() ? nullptr : &found->second.front();
}

bool MenuPages::hasClosedFolders() const {
    const auto isClosed = [&](const MenuPage& page) {
        return page.isFolder && childrenOf(page.nodeId).empty();
    };
    return std::ranges::any_of(
        children_, [&](const auto& family) { return std::ranges::any_of(family.second, isClosed); });
}

MenuPages::Families MenuPages::read(const std::string& statement) {
    Families families;
    auto rows =
        connection_.query(statement, {place_.rootNode, place_.maxLength, place_.minLength, currentNode_});
    while (rows.next()) {
        if (place_.withGroups && !rows.isNull("groupId"))
            groups_.push_back({rows.number("pageId"), rows.number("groupId")});
        families[text::lowerTrim(rows.view("parent"))].push_back(readPage(rows));
    }
    for (auto& [parent, pages] : families) {
        std::sort(pages.begin(), pages.end(), comesBefore);
        pages.erase(std::unique(pages.begin(), pages.end(), isSame), pages.end());
    }
    return families;
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
