// cManager: the design goes back to what is live.

#include "authoring/LiveCopy.h"
#include "authoring/RunReport.h"
#include "authoring/StatusCodes.h"
#include "authoring/cManager.h"
#include "platform/Errors.h"
#include "platform/db/OwnTransaction.h"
#include "platform/text/Text.h"
#include "records/PageIdentity.h"
#include "search/designs/PageIndex.h"

namespace torvex {

namespace {

constexpr std::string_view operationName = "resetPage";

// Why a page isn't reset.
constexpr std::string_view locked = "-1";
constexpr std::string_view approved = "-2";
constexpr std::string_view neverPublished = "-3";
constexpr std::string_view noDesign = "-4";

constexpr std::string_view selectLockedBy = "select lockedBy from TORVEX_PAGES_DESIGN where pageId = ?";

/// The node, the place among the siblings and the lock stay.
constexpr std::string_view updateDesign =
    "update TORVEX_PAGES_DESIGN set (site, lang, parent, type, title, template, stylesheet, baseTemplate, "
    "application, app_param_public, app_param_admin, app_system_folder, navigation, previous, next, up, "
    "onlineFrom, onlineTo, editor, editingDate, breadcrumb, dynMenu, loginPage) = "
    "(select site, lang, parent, type, title, template, stylesheet, baseTemplate, application, "
    "app_param_public, app_param_admin, app_system_folder, navigation, previous, next, up, onlineFrom, "
    "onlineTo, author, authoringDate, breadcrumb, dynMenu, loginPage from TORVEX_PAGES_LIVE where pageId = "
    "?), "
    "editStatus = 'P', deleteStatus = 0, approveStatus = 0, deletedBy = null, deletingDate = null, "
    "emailNotification = 0 where pageId = ?";
constexpr std::string_view selectStatus =
    "select type, editStatus, lockStatus, deleteStatus, approveStatus from TORVEX_PAGES_DESIGN where pageId "
    "= ?";

constexpr std::string_view contentStatements[] = {
    "delete from TORVEX_PAGES_GROUPS_DESIGN where pageId = ?",
    "insert into TORVEX_PAGES_GROUPS_DESIGN (pageId, groupId) "
    "select pageId, groupId from TORVEX_PAGES_GROUPS_LIVE where pageId = ?",
    "delete from TORVEX_BODIES_DESIGN where pageId = ?",
    "insert into TORVEX_BODIES_DESIGN (pageId, bodyId, bodyType, feedId, bodyText) "
    "select pageId, bodyId, bodyType, feedId, bodyText from TORVEX_BODIES_LIVE where pageId = ?",
    "delete from TORVEX_PAGES_METADATA_DESIGN where metaData_pageId = ?",
    "insert into TORVEX_PAGES_METADATA_DESIGN (metaData_pageId, metaData_id, metaData_inherited, "
    "metaData_value) select metaData_pageId, metaData_id, metaData_inherited, metaData_value "
    "from TORVEX_PAGES_METADATA_LIVE where metaData_pageId = ?",
};

bool isLockedByOther(db::Connection& connection, const DesignPage& page, int loginId) {
    if (page.lockStatus != 1) return false;
    auto rows = connection.query(selectLockedBy, {page.pageId});
    return rows.next() && rows.number("lockedBy") != loginId;
}

/// "" for a page that may be reset.
std::string_view refusalOf(db::Connection& connection, PageId pageId, int loginId) {
    const auto page = takeDesignPage(connection, pageId);
    if (!isLive(connection, pageId)) return neverPublished;
    if (!page) return noDesign;
    if (isLockedByOther(connection, *page, loginId)) return locked;
    if (page->approveStatus == 1) return approved;
    return {};
}

std::string statusText(db::Connection& connection, PageId pageId) {
    auto rows = connection.query(selectStatus, {pageId});
    if (!rows.next()) return {};
    std::string text;
    for (const auto* column : {"type", "editStatus", "lockStatus", "deleteStatus", "approveStatus"}) {
        text += rows.text(column);
    }
    return text;
}

/// All of it, or nothing. The page's statuses as they are then, or a refusal.
db::Outcome<std::string> run(HostContext& host, PageId pageId, int loginId) {
    const auto reset = [&](db::Connection& own) {
        const std::string_view refusal = refusalOf(own, pageId, loginId);
        if (!refusal.empty()) return db::refuse(std::string(refusal));
        own.execute(updateDesign, {pageId, pageId});
        std::string result = statusText(own, pageId);
        for (const std::string_view statement : contentStatements) own.execute(statement, {pageId});
        renewDesignIndex(host, own, pageId);
        return db::commit(std::move(result));
    };
    const std::string what = runOn(operationName, text::fromNumber(pageId));
    return db::tryInOwnTransaction(host, what, status::failed, reset);
}

}  // namespace

std::string cManager::resetPage(const std::string& pageIdent) try {
    if (!author_.isLoggedIn()) return std::string(status::notLoggedIn);
    const PageId pageId = pageIdFrom(connection(), pageIdent);
    if (pageId <= 0) return std::string(neverPublished);
    const auto reset = run(host_, pageId, author_.loginId);
    if (reset.isCommitted) {
        followUp(host_, operationName, text::fromNumber(pageId), [&] { addPageLine(pageId, "reset"); });
    }
    return reset.value;
} catch (...) {
    raiseFrom("resetPage !");
}

}  // namespace torvex
