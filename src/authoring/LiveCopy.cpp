#include "authoring/LiveCopy.h"

#include "accounts/Actor.h"
#include "platform/db/Connection.h"
#include "platform/text/Text.h"
#include "records/DateWindow.h"
#include "records/PageIdentity.h"
#include "records/PageKind.h"
#include "records/SystemBranch.h"
#include "search/designs/PageIndex.h"

namespace torvex {

namespace {

/// Changes nothing, but on PostgreSQL makes this transaction the one that may.
constexpr std::string_view takeRow =
    "update TORVEX_PAGES_DESIGN set approveStatus = approveStatus where pageId = ?";
constexpr std::string_view selectDesign =
    "select nodeId, type, title, onlineFrom, onlineTo, lockStatus, deleteStatus, approveStatus "
    "from TORVEX_PAGES_DESIGN where pageId = ?";

constexpr std::string_view selectLive = "select online from TORVEX_PAGES_LIVE where pageId = ?";
constexpr std::string_view selectLiveNode = "select pageId from TORVEX_PAGES_LIVE where nodeId = ?";

constexpr std::string_view insertOnline =
    "insert into TORVEX_PAGES_LIVE (pageId, nodeId, orderId, site, lang, parent, online) "
    "select pageId, nodeId, orderId, site, lang, parent, 1 from TORVEX_PAGES_DESIGN where pageId = ?";
constexpr std::string_view insertLive =
    "insert into TORVEX_PAGES_LIVE (pageId, nodeId, orderId, site, lang, parent) "
    "select pageId, nodeId, orderId, site, lang, parent from TORVEX_PAGES_DESIGN where pageId = ?";
constexpr std::string_view updateLive =
    "update TORVEX_PAGES_LIVE set (type, title, template, stylesheet, baseTemplate, application, navigation, "
    "previous, next, up, onlineFrom, onlineTo, app_param_public, app_param_admin, app_system_folder, author, "
    "authoringDate, breadcrumb, dynMenu, loginPage) = "
    "(select type, title, template, stylesheet, baseTemplate, application, navigation, previous, next, up, "
    "onlineFrom, onlineTo, app_param_public, app_param_admin, app_system_folder, editor, editingDate, "
    "breadcrumb, dynMenu, loginPage from TORVEX_PAGES_DESIGN where pageId = ?), "
    "publisher = ?, publishingDate = ? where pageId = ?";
constexpr std::string_view updateOffline = "update TORVEX_PAGES_LIVE set online = 0 where pageId = ?";

constexpr std::string_view updatePublished =
    "update TORVEX_PAGES_DESIGN set editStatus = 'P', lockStatus = 0, deleteStatus = 0, approveStatus = 0, "
    "deletedBy = null, deletingDate = null, lockedBy = null, lockingDate = null, emailNotification = 0 "
    "where pageId = ?";

constexpr std::string_view deleteGroups = "delete from TORVEX_PAGES_GROUPS_LIVE where pageId = ?";
constexpr std::string_view insertGroups =
    "insert into TORVEX_PAGES_GROUPS_LIVE (pageId, groupId) "
    "select pageId, groupId from TORVEX_PAGES_GROUPS_DESIGN where pageId = ?";
constexpr std::string_view deleteBodies = "delete from TORVEX_BODIES_LIVE where pageId = ?";
constexpr std::string_view insertBodies =
    "insert into TORVEX_BODIES_LIVE (pageId, bodyId, bodyType, feedId, bodyText) "
    "select pageId, bodyId, bodyType, feedId, bodyText from TORVEX_BODIES_DESIGN where pageId = ? "
    "order by bodyId";
constexpr std::string_view deleteMetadata =
    "delete from TORVEX_PAGES_METADATA_LIVE where metaData_pageId = ?";
/// One that is inherited and has no value of its own says nothing.
constexpr std::string_view insertMetadata =
    "insert into TORVEX_PAGES_METADATA_LIVE (metaData_pageId, metaData_id, metaData_inherited, "
    "metaData_value) select metaData_pageId, metaData_id, metaData_inherited, metaData_value "
    "from TORVEX_PAGES_METADATA_DESIGN where metaData_pageId = ? "
    "and not (trim(coalesce(metaData_value, '')) = '' and coalesce(metaData_inherited, 0) = 1) "
    "order by metaData_pageId, metaData_id";

}  // namespace

bool DesignPage::isFolder() const {
    return torvex::isFolder(type);
}

bool DesignPage::isSystem() const {
    return systemBranch::hasDigits(nodeId);
}

bool DesignPage::isWithinDates(std::string_view day) const {
    return isWithin(day, onlineFrom, onlineTo);
}

std::optional<DesignPage> takeDesignPage(db::Connection& connection, PageId pageId) {
    if (connection.execute(takeRow, {pageId}) == 0) return std::nullopt;
    auto rows = connection.query(selectDesign, {pageId});
    if (!rows.next()) return std::nullopt;
    DesignPage page;
    page.pageId = pageId;
    page.nodeId = rows.text("nodeId");
    page.type = rows.text("type");
    page.title = rows.text("title");
    page.onlineFrom = rows.text("onlineFrom");
    page.onlineTo = rows.text("onlineTo");
    page.lockStatus = static_cast<int>(rows.number("lockStatus"));
    page.deleteStatus = static_cast<int>(rows.number("deleteStatus"));
    page.approveStatus = static_cast<int>(rows.number("approveStatus"));
    return page;
}

bool isLive(db::Connection& connection, PageId pageId) {
    return connection.query(selectLive, {pageId}).next();
}

bool hasLiveParent(db::Connection& connection, std::string_view nodeId) {
    if (nodeId.size() <= PageIdentity::rootLength) return true;
    return connection.query(selectLiveNode, {parentOf(nodeId)}).next();
}

void addLivePageOnline(db::Connection& connection, PageId pageId) {
    connection.execute(insertOnline, {pageId});
}

void addLivePage(db::Connection& connection, PageId pageId) {
    connection.execute(insertLive, {pageId});
}

void copyPage(db::Connection& connection, PageId pageId, const Actor& publisher) {
    connection.execute(updateLive, {pageId, publisher.loginId, publisher.now, pageId});
}

int liveOnline(db::Connection& connection, PageId pageId) {
    auto rows = connection.query(selectLive, {pageId});
    return rows.next() ? static_cast<int>(rows.number("online")) : 0;
}

void setLiveOffline(db::Connection& connection, PageId pageId) {
    connection.execute(updateOffline, {pageId});
}

void markPublished(db::Connection& connection, PageId pageId) {
    connection.execute(updatePublished, {pageId});
}

void copyContent(db::Connection& connection, PageId pageId) {
    for (const auto statement :
         {deleteGroups, insertGroups, deleteBodies, insertBodies, deleteMetadata, insertMetadata}) {
        connection.execute(statement, {pageId});
    }
    publishLinks(connection, pageId);
}

}  // namespace torvex
