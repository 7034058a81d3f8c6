#include "delivery/Access.h"

#include <optional>

#include "delivery/PageRecord.h"
#include "platform/db/Connection.h"
#include "records/DateWindow.h"
#include "records/PageIdentity.h"

namespace torvex {

namespace {

constexpr std::string_view selectGroups =
    "select groupId from TORVEX_PAGES_GROUPS_LIVE where pageId = ? order by groupId";

constexpr std::string_view selectUserOfPage =
    "select a.validFrom, a.validTo from TORVEX_USERS a "
    "inner join TORVEX_GROUPS_USERS b on a.userId = b.userId "
    "inner join TORVEX_PAGES_GROUPS_LIVE c on b.groupId = c.groupId "
    "where a.username = ? and a.password = ? and c.pageId = ?";

}  // namespace

std::optional<DecidingGroup> decidingGroup(db::Connection& connection, PageId pageId,
                                           std::string_view nodeId) {
    DecidingGroup at{pageId, inheritedGroup};
    while (nodeId.size() >= PageIdentity::rootLength) {
        auto rows = connection.query(selectGroups, {at.pageId});
        if (!rows.next()) return std::nullopt;
        at.group = rows.number("groupId");
        if (at.group != inheritedGroup) break;
        nodeId = parentOf(nodeId);
        at.pageId = pageIdOf(connection, nodeId);
    }
    return at;
}

int groupVerdict(db::Connection& connection, PageId pageId, std::string_view nodeId, const Visitor& visitor,
                 std::string_view today) {
    const auto deciding = decidingGroup(connection, pageId, nodeId);
    if (!deciding) return pageAccess::noGroups;
    if (!deciding->isReal()) return pageAccess::open;
    if (visitor.username.empty() || visitor.password.empty()) return pageAccess::needsLogin;
    auto user = connection.query(selectUserOfPage, {visitor.username, visitor.password, deciding->pageId});
    if (!user.next()) return pageAccess::refused;
    return isWithin(today, user.text("validFrom"), user.text("validTo")) ? pageAccess::member
                                                                         : pageAccess::refused;
}

}  // namespace torvex
