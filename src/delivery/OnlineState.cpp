#include "delivery/OnlineState.h"

#include "delivery/FolderTrail.h"
#include "platform/db/Connection.h"
#include "records/DateWindow.h"
#include "records/PageIdentity.h"
#include "records/PageKind.h"

namespace torvex {

namespace {

constexpr std::string_view selectNode =
    "select type, nodeId, online, onlineFrom, onlineTo from TORVEX_PAGES_LIVE where nodeId = ?";
constexpr std::string_view selectFirstChild =
    "select type, nodeId, online, onlineFrom, onlineTo from TORVEX_PAGES_LIVE "
    "where parent = ? order by orderId, nodeId";

/// Whether the page shows that `rows` give, or the first page below the folder that they give.
bool doesFirstShow(db::Connection& connection, db::Rows rows, FolderTrail& trail, std::string_view today) {
    while (rows.next()) {
        if (!isFolder(rows.view("type"))) {
            return isOnlineOn(today, rows.number("online"), rows.view("onlineFrom"), rows.view("onlineTo"));
        }
        const std::string folder = rows.text("nodeId");
        if (!trail.leadsOn(folder)) break;
        rows = connection.query(selectFirstChild, {folder});
    }
    return false;
}

}  // namespace

bool isNodeOnline(db::Connection& connection, std::string_view nodeId, std::string_view today) {
    if (nodeId.size() < PageIdentity::rootLength) return false;
    FolderTrail trail;
    return doesFirstShow(connection, connection.query(selectNode, {nodeId}), trail, today);
}

bool isPageOnline(db::Connection& connection, PageId pageId, std::string_view today) {
    return isNodeOnline(connection, nodeIdFrom(connection, pageId), today);
}

bool isFolderOnline(db::Connection& connection, const std::string& nodeId, std::string_view today) {
    FolderTrail trail;
    trail.leadsOn(nodeId);
    return doesFirstShow(connection, connection.query(selectFirstChild, {nodeId}), trail, today);
}

}  // namespace torvex
