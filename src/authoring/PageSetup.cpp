// cManager: the setup of a page.

#include <algorithm>

#include "accounts/Actor.h"
#include "authoring/PageBuffer.h"
#include "authoring/RunReport.h"
#include "authoring/SetupChecks.h"
#include "authoring/SetupRow.h"
#include "authoring/StatusCodes.h"
#include "authoring/cManager.h"
#include "platform/ApplicationValues.h"
#include "platform/Errors.h"
#include "platform/HostContext.h"
#include "platform/Keys.h"
#include "platform/db/OwnTransaction.h"
#include "platform/files/FileSystem.h"
#include "platform/text/Text.h"
#include "records/PageIdentity.h"
#include "records/PageKind.h"
#include "records/SystemBranch.h"
#include "search/designs/PageIndex.h"
#include "templates/DesignPath.h"

namespace torvex {

namespace {

constexpr std::string_view operationName = "savePageSetup";

constexpr std::string_view lockedByOther = "-1";
constexpr std::string_view pageMissing = "-2";
constexpr std::string_view unknownWebsite = "-20";
constexpr std::string_view templateUnreadable = "-34";

constexpr int unreadable = -1;

constexpr std::string_view selectTemplateFile =
    "select tpl_filename, tpl_site, tpl_lang from TORVEX_TEMPLATES where tpl_id = ?";
constexpr std::string_view selectLock =
    "select lockStatus, lockedBy from TORVEX_PAGES_DESIGN where pageId = ?";
constexpr std::string_view deleteBodies = "delete from TORVEX_BODIES_DESIGN where pageId = ?";
constexpr std::string_view deleteSurplusBodies =
    "delete from TORVEX_BODIES_DESIGN where pageId = ? and bodyId > ?";
constexpr std::string_view deleteMetaData =
    "delete from TORVEX_PAGES_METADATA_DESIGN where metaData_pageId = ?";

/// "" when the login may write the row, or a code.
std::string_view testLock(db::Connection& connection, PageId pageId, int loginId) {
    auto rows = connection.query(selectLock, {pageId});
    if (!rows.next()) return pageMissing;
    const bool mine = rows.number("lockStatus") != 1 || rows.number("lockedBy") == loginId;
    return mine ? std::string_view() : lockedByOther;
}

int placesForBodies(HostContext& host, db::Connection& connection, int templateId) {
    auto rows = connection.query(selectTemplateFile, {templateId});
    if (!rows.next() || rows.view("tpl_filename").empty()) return unreadable;
    const std::string path =
        designPath(host.application, applicationKey::contentTemplatesPath, rows.text("tpl_site"),
                   rows.text("tpl_lang"), rows.text("tpl_filename"));
    const auto content = host.files.readText(path, TextFormat::SystemDefault);
    if (!content) return unreadable;
    int bodies = 0;
    while (text::contains(*content, "<!--!torvex_body_" + std::to_string(bodies + 1))) ++bodies;
    return bodies;
}

/// Takes away what the page's type and template have no place for. "" or a code.
std::string_view dropBodies(HostContext& host, db::Connection& connection, const PageBuffer& page) {
    if (!hasBodies(kindOf(page.type))) {
        connection.execute(deleteBodies, {page.pageId});
    } else if (page.templateId >= 1) {
        const int bodies = asLevel("getNumberOfBodies !",
                                   [&] { return placesForBodies(host, connection, page.templateId); });
        if (bodies == unreadable) return templateUnreadable;
        connection.execute(deleteSurplusBodies, {page.pageId, bodies});
    }
    return {};
}

/// Part of a transaction; a refusal is a code.
db::Outcome<std::string_view> save(HostContext& host, db::Connection& connection, const PageBuffer& page,
                                   const SetupPlace& place, const Actor& editor) {
    if (page.nodeId.size() > PageIdentity::rootLength && pageIdOf(connection, place.parent) <= 0)
        return db::refuse(setupCode::parentMissing);
    const auto refusal = testLock(connection, page.pageId, editor.loginId);
    if (!refusal.empty()) return db::refuse(refusal);
    if (!updateSetup(connection, page, editor)) {
        // Another author was faster. What is it now?
        const auto cause = testLock(connection, page.pageId, editor.loginId);
        return db::refuse(cause.empty() ? status::failed : cause);
    }
    replaceGroups(connection, page.pageId, page.groups);
    if (systemBranch::hasNumber(page.nodeId)) connection.execute(deleteMetaData, {page.pageId});
    const auto cause = dropBodies(host, connection, page);
    if (cause.empty()) renewDesignIndex(host, connection, page.pageId);
    return cause.empty() ? db::commit(cause) : db::refuse(cause);
}

}  // namespace

int cManager::getNumberOfBodies(int templateId) try {
    return placesForBodies(host_, connection(), templateId);
} catch (...) {
    raiseFrom("getNumberOfBodies !");
}

std::string cManager::savePageSetup(const std::string& pageIdent) try {
    if (!author_.isLoggedIn()) return std::string(status::notLoggedIn);
    const PageIdentity identity = identify(connection(), pageIdent);
    page_.pageId = std::max(identity.pageId, 0.0);
    page_.nodeId = identity.nodeId;
    const bool hasParent = page_.nodeId.size() > PageIdentity::rootLength;
    const SetupPlace place{.site = std::string(siteOf(page_.nodeId)),
                           .lang = std::string(langOf(page_.nodeId)),
                           .parent = hasParent ? std::string(parentOf(page_.nodeId)) : std::string(),
                           .itself = page_.pageId,
                           .isRoot = page_.nodeId.size() == PageIdentity::rootLength,
                           .types = kindsOfPages};
    normaliseTitleAndType(page_);
    if (!websiteExists(connection(), place.site, place.lang)) return std::string(unknownWebsite);
    const std::string_view code = checkSetup(connection(), page_, place);
    if (!code.empty()) return std::string(code);
    const std::string number = text::fromNumber(page_.pageId);
    const auto outcome =
        db::tryInOwnTransaction(host_, runOn(operationName, number), status::failed,
                                [&](db::Connection& own) { return save(host_, own, page_, place, actor()); });
    if (!outcome.isCommitted) return std::string(outcome.value);
    followUp(host_, operationName, number,
             [&] { addPageLine(page_.pageId, "save", "Page setup has been updated"); });
    return std::string(status::done);
} catch (...) {
    raiseFrom("savePageSetup !");
}

}  // namespace torvex
