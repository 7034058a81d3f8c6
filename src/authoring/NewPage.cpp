// cManager: a new page.

#include "accounts/Actor.h"
#include "authoring/FreePlaces.h"
#include "authoring/PageBuffer.h"
#include "authoring/RunReport.h"
#include "authoring/SetupChecks.h"
#include "authoring/SetupRow.h"
#include "authoring/SiblingOrder.h"
#include "authoring/StatusCodes.h"
#include "authoring/cManager.h"
#include "platform/Errors.h"
#include "platform/HostContext.h"
#include "platform/db/OwnTransaction.h"
#include "platform/text/Text.h"
#include "records/PageIdentity.h"
#include "records/PageKind.h"
#include "records/PageRows.h"
#include "records/SystemBranch.h"
#include "search/designs/PageIndex.h"

namespace torvex {

namespace {

constexpr std::string_view operationName = "saveNewPageSetup";

constexpr std::string_view pageExists = "-3";
constexpr std::string_view noFreeNumber = "-5";
constexpr std::string_view systemBranchExists = "-6";

// Writing it holds the row until the transaction ends: the parent can't go, and the places below it are given
// away one after the other.
constexpr std::string_view holdParent = "update TORVEX_PAGES_DESIGN set parent = parent where nodeId = ?";

/// "" for none: a number that no page has counts as none. One below 0 doesn't: in a list of pages the minus
/// divides, so that who tested the caller's right may have looked at the page behind it.
std::string parentNode(db::Connection& connection, std::string_view parentIdent) {
    const std::string ident = text::lowerTrim(parentIdent);
    const bool isNumber = text::isNumeric(ident) && !ident.starts_with('-');
    return isNumber ? nodeIdFrom(connection, text::toNumber(ident)) : ident;
}

std::string freeNode(db::Connection& connection, const std::string& parent) {
    return asLevel("getNewChild !", [&] {
        const PageIdentity page = identify(connection, parent);
        return page.isValid() ? newChildOf(connection, page.nodeId) : std::string();
    });
}

bool isTaken(db::Connection& connection, const std::string& nodeId) {
    return asLevel("isPage !",
                   [&] { return isPage(connection, pageIdFrom(connection, nodeId), Twin::Design); });
}

/// Chooses the node. "" or a code.
std::string_view findNode(db::Connection& connection, PageBuffer& page, const SetupPlace& place) {
    const bool isBranch = kindOf(page.type) == PageKind::SystemBranch;
    if (place.parent.empty()) {
        page.nodeId = place.site + "." + place.lang;
    } else if (isBranch) {
        page.nodeId = systemBranch::below(place.parent);
    } else {
        page.nodeId = freeNode(connection, place.parent);
        if (page.nodeId.empty()) return noFreeNumber;
    }
    if (!isTaken(connection, page.nodeId)) return {};
    return isBranch ? systemBranchExists : pageExists;
}

/// False when all places are taken.
bool takeOrder(db::Connection& connection, PageBuffer& page, const SetupPlace& place,
               std::string_view insertIdent) {
    if (kindOf(page.type) == PageKind::SystemBranch) {
        page.type = letterOf(PageKind::Folder);
        page.orderId = systemBranch::number;
        return true;
    }
    if (place.parent.empty()) {
        page.orderId = 1;
        return true;
    }
    page.orderId = makeRoom(connection, place.parent, insertIdent);
    // The page's own digits count here, those of its number among them.
    return page.orderId <= systemBranch::highestBelow(page.nodeId);
}

/// Part of a transaction; a refusal is a code.
db::Outcome<std::string_view> create(HostContext& host, db::Connection& connection, PageBuffer& page,
                                     const SetupPlace& place, std::string_view insertIdent,
                                     const Actor& editor) {
    if (!place.parent.empty() && connection.execute(holdParent, {place.parent}) == 0)
        return db::refuse(setupCode::parentMissing);
    page.orderId = 0;
    if (!takeOrder(connection, page, place, insertIdent)) return db::refuse(status::failed);
    if (pageIdOf(connection, page.nodeId) > 0) return db::refuse(status::failed);
    insertSetup(connection, page, editor);
    page.pageId = pageIdOf(connection, page.nodeId);
    replaceGroups(connection, page.pageId, page.groups);
    renewDesignIndex(host, connection, page.pageId);
    return db::commit(std::string_view());
}

}  // namespace

std::string cManager::saveNewPageSetup(const std::string& site, const std::string& lang,
                                       const std::string& parentIdent, const std::string& insertIdent) try {
    if (!author_.isLoggedIn()) return std::string(status::notLoggedIn);
    const std::string parent = parentNode(connection(), parentIdent);
    if (!websiteExists(connection(), site, lang)) return std::string(status::failed);
    const SetupPlace place{.site = text::lower(site),
                           .lang = text::lower(lang),
                           .parent = parent,
                           .itself = {},
                           .isRoot = parent.empty(),
                           .types = kindsOfNewPages};
    normaliseTitleAndType(page_);
    std::string_view code = checkSetup(connection(), page_, place);
    if (code.empty()) code = findNode(connection(), page_, place);
    if (!code.empty()) return std::string(code);
    const auto outcome = db::tryInOwnTransaction(
        host_, runOn(operationName, page_.nodeId), status::failed,
        [&](db::Connection& own) { return create(host_, own, page_, place, insertIdent, actor()); });
    if (!outcome.isCommitted) return std::string(outcome.value);
    followUp(host_, operationName, page_.nodeId,
             [&] { addPageLine(page_.pageId, "new", "New page (node " + page_.nodeId + ")"); });
    return page_.nodeId;
} catch (...) {
    raiseFrom("saveNewPageSetup !");
}

}  // namespace torvex
