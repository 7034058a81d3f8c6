#include "authoring/BranchCopy.h"

#include <vector>

#include "platform/db/Connection.h"
#include "platform/text/Text.h"
#include "records/TwinTables.h"

namespace torvex {

namespace {

// "_TWIN" stands for the tables that are copied from. Branches are asked for by ranges of nodes, which an
// index serves. A node that was put together is made the type of the column again: compared as plain text it
// would use no index on PostgreSQL.

/// Nobody may change, publish or remove any of them until the copy is made.
constexpr std::string_view holdBranch =
    "update TORVEX_PAGES_DESIGN set approveStatus = approveStatus where nodeId >= ? and nodeId < ?";
constexpr std::string_view selectMarked =
    "select nodeId from TORVEX_PAGES_DESIGN where nodeId >= ? and nodeId < ? and deleteStatus <> 0 "
    "order by nodeId";

constexpr std::string_view insertFromDesign =
    "insert into TORVEX_PAGES_DESIGN (nodeId, orderId, type, title, template, stylesheet, baseTemplate, "
    "application, app_param_public, app_param_admin, app_system_folder, navigation, previous, next, up, "
    "onlineFrom, onlineTo, breadcrumb, dynMenu, loginPage, editStatus) "
    "select ? || substr(nodeId, cast(? as integer)), orderId, type, title, template, stylesheet, "
    "baseTemplate, application, app_param_public, app_param_admin, app_system_folder, navigation, previous, "
    "next, up, onlineFrom, onlineTo, breadcrumb, dynMenu, loginPage, editStatus "
    "from TORVEX_PAGES_DESIGN where nodeId >= ? and nodeId < ? order by nodeId";
constexpr std::string_view insertFromLive =
    "insert into TORVEX_PAGES_DESIGN (nodeId, orderId, type, title, template, stylesheet, baseTemplate, "
    "application, app_param_public, app_param_admin, app_system_folder, navigation, previous, next, up, "
    "onlineFrom, onlineTo, breadcrumb, dynMenu, loginPage, editStatus) "
    "select ? || substr(nodeId, cast(? as integer)), orderId, type, title, template, stylesheet, "
    "baseTemplate, application, app_param_public, app_param_admin, app_system_folder, navigation, previous, "
    "next, up, onlineFrom, onlineTo, breadcrumb, dynMenu, loginPage, 'P' "
    "from TORVEX_PAGES_LIVE where nodeId >= ? and nodeId < ? order by nodeId";

/// What was published is modified from now on; what is new stays new.
constexpr std::string_view beginCopies =
    "update TORVEX_PAGES_DESIGN set site = ?, lang = ?, parent = substr(nodeId, 1, length(nodeId) - 3), "
    "editStatus = case when editStatus = 'P' then 'M' else editStatus end, "
    "emailNotification = case when editStatus in ('P', 'M') then ? else 0 end, "
    "lockStatus = 0, deleteStatus = 0, approveStatus = 0, editor = ?, editingDate = ? "
    "where nodeId >= ? and nodeId < ?";
constexpr std::string_view placeFirst =
    "update TORVEX_PAGES_DESIGN set orderId = ?, title = ? where nodeId = ?";
constexpr std::string_view leaveOldTree =
    "update TORVEX_PAGES_DESIGN set baseTemplate = 0, template = 0, stylesheet = 0, "
    "app_system_folder = case when app_system_folder > 0 then -1 else app_system_folder end, "
    "navigation = 'A', previous = -1, next = -1, up = -1, loginPage = -1 where nodeId >= ? and nodeId < ?";

constexpr std::string_view insertBodies =
    "insert into TORVEX_BODIES_DESIGN (pageId, bodyId, bodyType, feedId, bodyText) "
    "select n.pageId, b.bodyId, b.bodyType, b.feedId, case when b.bodyType = 1 then b.bodyText else '' end "
    "from TORVEX_PAGES_DESIGN n "
    "inner join TORVEX_PAGES_TWIN o on o.nodeId = cast(? || substr(n.nodeId, cast(? as integer)) as citext) "
    "inner join TORVEX_BODIES_TWIN b on b.pageId = o.pageId "
    "where n.nodeId >= ? and n.nodeId < ? and n.type = 'P'";
constexpr std::string_view leaveFeeds =
    "update TORVEX_BODIES_DESIGN set bodyType = 1, feedId = 0 where pageId in "
    "(select pageId from TORVEX_PAGES_DESIGN where nodeId >= ? and nodeId < ?)";
constexpr std::string_view insertMetadata =
    "insert into TORVEX_PAGES_METADATA_DESIGN (metaData_pageId, metaData_id, metaData_inherited, "
    "metaData_value) select n.pageId, m.metaData_id, m.metaData_inherited, m.metaData_value "
    "from TORVEX_PAGES_DESIGN n "
    "inner join TORVEX_PAGES_TWIN o on o.nodeId = cast(? || substr(n.nodeId, cast(? as integer)) as citext) "
    "inner join TORVEX_PAGES_METADATA_TWIN m on m.metaData_pageId = o.pageId "
    "where n.nodeId >= ? and n.nodeId < ?";
constexpr std::string_view insertGroups =
    "insert into TORVEX_PAGES_GROUPS_DESIGN (pageId, groupId) select n.pageId, g.groupId "
    "from TORVEX_PAGES_DESIGN n "
    "inner join TORVEX_PAGES_TWIN o on o.nodeId = cast(? || substr(n.nodeId, cast(? as integer)) as citext) "
    "inner join TORVEX_PAGES_GROUPS_TWIN g on g.pageId = o.pageId "
    "where n.nodeId >= ? and n.nodeId < ?";

/// The nodes from one on that come before another.
struct Stretch {
    std::string from;
    std::string end;
};

/// Where what lies below a node begins in its text, counted from 1.
int behind(std::string_view nodeId) {
    return static_cast<int>(text::length(nodeId)) + 1;
}

/// Only the node itself comes before what lies below it.
Stretch stretchOf(const std::string& node, Extent extent) {
    return {node, extent == Extent::Page ? node + "." : endOfPrefix(node)};
}

std::vector<std::string> markedNodes(db::Connection& connection, const Stretch& branch) {
    std::vector<std::string> nodes;
    auto rows = connection.query(selectMarked, {branch.from, branch.end});
    while (rows.next()) nodes.push_back(rows.text("nodeId"));
    return nodes;
}

/// The branch without the marked pages and what lies below them.
std::vector<Stretch> withoutMarked(db::Connection& connection, const Stretch& branch) {
    std::vector<Stretch> stretches;
    std::string from = branch.from;
    for (const std::string& marked : markedNodes(connection, branch)) {
        if (text::compare(marked, from) < 0) continue;
        if (marked != from) stretches.push_back({from, marked});
        from = endOfPrefix(marked);
    }
    if (text::compare(from, branch.end) < 0) stretches.push_back({from, branch.end});
    return stretches;
}

void copyRows(db::Connection& connection, const CopyOrder& order) {
    const Stretch branch = stretchOf(order.source, order.extent);
    const bool fromDesign = order.from == Twin::Design;
    const auto stretches = fromDesign ? withoutMarked(connection, branch) : std::vector<Stretch>{branch};
    for (const auto& [from, end] : stretches) {
        connection.execute(fromDesign ? insertFromDesign : insertFromLive,
                           {order.place.nodeId, behind(order.source), from, end});
    }
}

void begin(db::Connection& connection, const CopyOrder& order, const Stretch& copies) {
    connection.execute(beginCopies, {siteOf(copies.from), langOf(copies.from), order.notified,
                                     order.editor.loginId, order.editor.now, copies.from, copies.end});
    connection.execute(placeFirst, {order.place.orderId, order.title, copies.from});
}

void copyContent(db::Connection& connection, const CopyOrder& order, const Stretch& copies) {
    for (const std::string_view statement : {insertBodies, insertMetadata, insertGroups}) {
        connection.execute(onTwin(statement, order.from),
                           {order.source, behind(order.place.nodeId), copies.from, copies.end});
    }
}

}  // namespace

PageId copyBranch(db::Connection& connection, const CopyOrder& order) {
    const Stretch source = stretchOf(order.source, order.extent);
    const Stretch copies = stretchOf(order.place.nodeId, order.extent);
    connection.execute(holdBranch, {source.from, source.end});
    copyRows(connection, order);
    begin(connection, order, copies);
    copyContent(connection, order, copies);
    if (!inSameTree(order.source, order.place.nodeId)) {
        connection.execute(leaveOldTree, {copies.from, copies.end});
        connection.execute(leaveFeeds, {copies.from, copies.end});
    }
    return pageIdOf(connection, order.place.nodeId);
}

}  // namespace torvex
