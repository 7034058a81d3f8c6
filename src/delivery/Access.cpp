#include "delivery/Access.h"

#include <optional>

#include "accounts/VisitorFactor.h"
#include "delivery/FolderTrail.h"
#include "delivery/PageRecord.h"
#include "delivery/Users.h"
#include "platform/ApplicationValues.h"
#include "platform/DateTime.h"
#include "platform/Errors.h"
#include "platform/HostContext.h"
#include "platform/Keys.h"
#include "platform/Session.h"
#include "platform/db/Connection.h"
#include "records/DateWindow.h"
#include "records/PageIdentity.h"
#include "records/PageKind.h"

namespace torvex {

namespace {

constexpr std::string_view selectGroups =
    "select groupId from TORVEX_PAGES_GROUPS_LIVE where pageId = ? order by groupId";

constexpr std::string_view selectUserOfPage =
    "select a.validFrom, a.validTo from TORVEX_USERS a "
    "inner join TORVEX_GROUPS_USERS b on a.userId = b.userId "
    "inner join TORVEX_PAGES_GROUPS_LIVE c on b.groupId = c.groupId "
    "where a.username = ? and a.password = ? and c.pageId = ?";

constexpr std::string_view selectGroupsOfUser =
    "select b.groupId, a.validFrom, a.validTo from TORVEX_USERS a "
    "inner join TORVEX_GROUPS_USERS b on a.userId = b.userId where a.username = ? and a.password = ?";

constexpr std::string_view selectPage = "select pageId, nodeId, type from TORVEX_PAGES_LIVE where pageId = ?";
constexpr std::string_view selectFirstChild =
    "select pageId, nodeId, type from TORVEX_PAGES_LIVE where parent = ? order by orderId, nodeId";

constexpr std::string_view selectFirstGroup =
    "select a.groupId from TORVEX_PAGES_GROUPS_LIVE a inner join TORVEX_USERGROUPS b on a.groupId = "
    "b.groupId "
    "where a.pageId = ? order by a.groupId";
constexpr std::string_view selectLoginPage = "select loginPage from TORVEX_PAGES_LIVE where pageId = ?";

/// Follows folders to their first child, asking the groups of every page on the way.
bool mayPass(db::Connection& connection, PageId pageId, const Visitor& visitor, bool extranet,
             std::string_view today) {
    auto rows = connection.query(selectPage, {pageId});
    FolderTrail trail;
    while (rows.next()) {
        const std::string node = rows.text("nodeId");
        if (extranet && groupVerdict(connection, rows.number("pageId"), node, visitor, today) < 0)
            return false;
        if (!isFolder(rows.view("type"))) return true;
        if (!trail.leadsOn(node)) return false;
        rows = connection.query(selectFirstChild, {node});
    }
    return false;
}

Visitor userNamed(db::Connection& connection, const std::string& username) {
    return {username, asLevel("getUserPassword !", [&] { return passwordOf(connection, username); })};
}

}  // namespace

bool hasExtranet(const HostContext& host) {
    return host.application.isTrue(applicationKey::isExtranet);
}

Visitor visitorOf(const HostContext& host) {
    if (!countsAsLoggedIn(host)) return {};
    return {host.session.text(sessionKey::visitorName), host.session.text(sessionKey::visitorPassword)};
}

std::set<double> groupsOfVisitor(db::Connection& connection, const Visitor& visitor, std::string_view today) {
    std::set<double> groups;
    auto rows = connection.query(selectGroupsOfUser, {visitor.username, visitor.password});
    while (rows.next()) {
        if (isWithin(today, rows.text("validFrom"), rows.text("validTo")))
            groups.insert(rows.number("groupId"));
    }
    return groups;
}

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

bool mayEnter(HostContext& host, db::Connection& connection, const PageIdentity& page,
              const std::string& username) {
    if (!page.isValid()) return false;
    const Visitor visitor = username.empty() ? visitorOf(host) : userNamed(connection, username);
    return mayPass(connection, page.pageId, visitor, hasExtranet(host), host.clock.today());
}

bool isSecured(db::Connection& connection, const PageIdentity& page) {
    if (!page.isValid()) return false;
    const auto deciding = decidingGroup(connection, page.pageId, page.nodeId);
    return deciding && deciding->isReal();
}

PageId loginPageOf(db::Connection& connection, PageIdentity page) {
    while (page.isValid()) {
        auto groups = connection.query(selectFirstGroup, {page.pageId});
        if (!groups.next() || groups.number("groupId") != inheritedGroup) break;
        page.nodeId = parentOf(page.nodeId);
        page.pageId = pageIdOf(connection, page.nodeId);
    }
    auto rows = connection.query(selectLoginPage, {page.pageId});
    return rows.next() ? rows.number("loginPage", -1) : 0;
}

}  // namespace torvex
