#include "delivery/OnlineState.h"

#include "delivery/FolderTrail.h"
#include "delivery/PageRecord.h"
#include "platform/Text.h"
#include "platform/db/Connection.h"
#include "records/PageIdentity.h"

namespace torvex {

namespace {

constexpr std::string_view selectNode =
    "select nodeId, type, online, onlineFrom, onlineTo from TORVEX_PAGES_LIVE where nodeId = ?";
constexpr std::string_view selectFirstChild =
    "select nodeId, type, online, onlineFrom, onlineTo from TORVEX_PAGES_LIVE "
    "where parent = ? order by orderId, nodeId";

}  // namespace

bool isNodeOnline(db::Connection& connection, std::string_view nodeId, std::string_view today) {
    if (nodeId.size() < PageIdentity::rootLength) return false;
    FolderTrail trail;
    auto rows = connection.query(selectNode, {nodeId});
    while (rows.next()) {
        if (!text::equals(text::trim(rows.view("type")), "F")) {
            return isOnlineOn(today, rows.number("online"), rows.view("onlineFrom"), rows.view("onlineTo"));
        }
        const std::string folder = rows.text("nodeId");
        if (!trail.leadsOn(folder)) break;
        rows = connection.query(selectFirstChild, {folder});
    }
    return false;
}

}  // namespace torvex
