#include "delivery/Neighbours.h"

#include "platform/db/Connection.h"
#include "records/PageKind.h"
#include "records/SystemBranch.h"

namespace torvex {

namespace {

constexpr std::string_view selectTypeLive = "select type from TORVEX_PAGES_LIVE where pageId = ?";
constexpr std::string_view selectTypeDesign = "select type from TORVEX_PAGES_DESIGN where pageId = ?";

constexpr std::string_view selectBeforeLive =
    "select pageId, type from TORVEX_PAGES_LIVE "
    "where parent = ? and orderId < ? and online = 1 order by orderId desc, nodeId desc limit 1";
constexpr std::string_view selectBeforeDesign =
    "select pageId, type from TORVEX_PAGES_DESIGN "
    "where parent = ? and orderId < ? order by orderId desc, nodeId desc limit 1";

constexpr std::string_view selectBehindLive =
    "select pageId, type from TORVEX_PAGES_LIVE "
    "where parent = ? and orderId > ? and nodeId < ? and online = 1 order by orderId, nodeId limit 1";
constexpr std::string_view selectBehindDesign =
    "select pageId, type from TORVEX_PAGES_DESIGN "
    "where parent = ? and orderId > ? and nodeId < ? order by orderId, nodeId limit 1";

bool isFolder(db::Connection& connection, PageId pageId, Twin twin) {
    if (!(pageId > 0)) return false;
    auto rows = connection.query(twin == Twin::Design ? selectTypeDesign : selectTypeLive, {pageId});
    return rows.next() && torvex::isFolder(rows.view("type"));
}

PageId firstPageId(db::Rows rows) {
    return rows.next() ? rows.number("pageId", -1) : -1;
}

}  // namespace

PageIdentity pageAbove(db::Connection& connection, std::string_view nodeId, Twin twin) {
    constexpr std::size_t firstLevel = PageIdentity::rootLength + PageIdentity::levelLength;
    while (nodeId.size() >= firstLevel) {
        nodeId = parentOf(nodeId);
        const PageId ancestor = pageIdOf(connection, nodeId);
        if (!isFolder(connection, ancestor, twin)) return {ancestor, std::string(nodeId)};
    }
    return {};
}

PageId pageBefore(db::Connection& connection, std::string_view parent, double orderId, Twin twin) {
    return firstPageId(
        connection.query(twin == Twin::Design ? selectBeforeDesign : selectBeforeLive, {parent, orderId}));
}

PageId pageBehind(db::Connection& connection, std::string_view parent, double orderId, Twin twin) {
    return firstPageId(connection.query(twin == Twin::Design ? selectBehindDesign : selectBehindLive,
                                        {parent, orderId, systemBranch::below(parent)}));
}

}  // namespace torvex
