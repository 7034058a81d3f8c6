// cManager: what authors write into the bodies of a page, and what kind of body it is.

#include <optional>

#include "accounts/Actor.h"
#include "authoring/PageStatus.h"
#include "authoring/RunReport.h"
#include "authoring/StatusCodes.h"
#include "authoring/cManager.h"
#include "delivery/PageBodies.h"
#include "platform/ApplicationValues.h"
#include "platform/Errors.h"
#include "platform/HostContext.h"
#include "platform/Keys.h"
#include "platform/Session.h"
#include "platform/db/OwnTransaction.h"
#include "platform/text/Text.h"
#include "records/PageIdentity.h"
#include "records/PageRows.h"
#include "search/designs/PageIndex.h"

namespace torvex {

namespace {

// Why a body stays as it is. The operations number the same reasons differently, and callers know them so.
namespace saveBodyCode {
constexpr std::string_view locked = "-1";
constexpr std::string_view approved = "-2";
constexpr std::string_view noPage = "-3";
}  // namespace saveBodyCode
namespace saveBodySetupCode {
constexpr std::string_view locked = "-1";
constexpr std::string_view noPage = "-2";
}  // namespace saveBodySetupCode
namespace clearBodyCode {
constexpr std::string_view noPage = "-1";
constexpr std::string_view locked = "-2";
}  // namespace clearBodyCode
namespace pasteBodyCode {
constexpr std::string_view locked = "-1";
constexpr std::string_view noSource = "-2";
constexpr std::string_view noTarget = "-3";
}  // namespace pasteBodyCode

constexpr std::string_view updateText =
    "update TORVEX_BODIES_DESIGN set bodyText = ? where pageId = ? and bodyId = ?";
constexpr std::string_view updateSetup =
    "update TORVEX_BODIES_DESIGN set bodyType = ?, feedId = ? where pageId = ? and bodyId = ?";
constexpr std::string_view updateBody =
    "update TORVEX_BODIES_DESIGN set bodyType = ?, feedId = ?, bodyText = ? where pageId = ? and bodyId = ?";
constexpr std::string_view insertBody =
    "insert into TORVEX_BODIES_DESIGN (pageId, bodyId, bodyType, feedId, bodyText) values (?, ?, ?, ?, ?)";
constexpr std::string_view deleteBody = "delete from TORVEX_BODIES_DESIGN where pageId = ? and bodyId = ?";

constexpr std::string_view selectBodyLive =
    "select bodyType, feedId, bodyText from TORVEX_BODIES_LIVE where pageId = ? and bodyId = ?";
constexpr std::string_view selectBodyDesign =
    "select bodyType, feedId, bodyText from TORVEX_BODIES_DESIGN where pageId = ? and bodyId = ?";

// What is written beside the statuses.
constexpr std::string_view edited = "editor = ?, editingDate = ?";
constexpr std::string_view editedAndUnmarked =
    "editor = ?, editingDate = ?, deletedBy = null, deletingDate = null";

/// A new text leaves marks alone; whether the page is approved was tested before.
PageChange withNewText(const PageStatus& page, const Actor& editor) {
    PageStatus modified = page;
    modified.editStatus = "M";
    return {modified, edited, {editor.loginId, editor.now}};
}

/// Any other change takes an approval and a mark for deletion back.
PageChange withNewBody(const PageStatus& page, const Actor& editor) {
    PageStatus modified = page;
    modified.editStatus = "M";
    modified.deleteStatus = 0;
    modified.approveStatus = 0;
    return {modified, editedAndUnmarked, {editor.loginId, editor.now}};
}

/// Changes the page and its body, both or neither: "0" or a code.
template <typename Work>
std::string inOneStep(HostContext& host, std::string_view operation, PageId pageId, Work work) {
    const std::string run = runOn(operation, text::fromNumber(pageId));
    return std::string(db::tryInOwnTransaction(host, run, status::failed, work).value);
}

/// Editors return addresses of images with the host in front; a body stores them without, so that it shows
/// under any name of the site.
std::string withOwnImages(const HostContext& host, const std::string& content) {
    const std::string dns = host.session.text(sessionKey::hostName);
    if (dns.empty()) return content;
    const std::string images = "/" + host.application.text(applicationKey::imagesName);
    std::string stored = content;
    for (const std::string_view scheme : {"http://", "https://"}) {
        const std::string absolute = std::string(scheme) + dns + images;
        if (text::contains(stored, absolute)) stored = text::replaceAll(stored, absolute, images);
    }
    return stored;
}

void storeText(db::Connection& connection, PageId pageId, int bodyId, std::string_view text) {
    if (connection.execute(updateText, {text, pageId, bodyId}) > 0) return;
    connection.execute(insertBody, {pageId, bodyId, bodyType::storedText, 0, text});
}

void storeSetup(db::Connection& connection, PageId pageId, const PageBody& body) {
    if (connection.execute(updateSetup, {body.type, body.feedId, pageId, body.id}) > 0) return;
    connection.execute(insertBody, {pageId, body.id, body.type, body.feedId, std::string_view()});
}

void storeBody(db::Connection& connection, PageId pageId, const PageBody& body) {
    const std::string_view text = body.text;
    if (connection.execute(updateBody, {body.type, body.feedId, text, pageId, body.id}) > 0) return;
    connection.execute(insertBody, {pageId, body.id, body.type, body.feedId, text});
}

std::optional<PageBody> readBody(db::Connection& connection, PageId pageId, int bodyId, Twin twin) {
    auto rows = connection.query(twin == Twin::Design ? selectBodyDesign : selectBodyLive, {pageId, bodyId});
    if (!rows.next()) return std::nullopt;
    return PageBody{bodyId, static_cast<int>(rows.number("bodyType", bodyType::storedText)),
                    static_cast<int>(rows.number("feedId")), rows.text("bodyText")};
}

/// The feeds of a site are its own, so that elsewhere only a stored text has a meaning.
void leaveFeed(PageBody& body) {
    if (body.type != bodyType::storedText) body.text.clear();
    body.type = bodyType::storedText;
    body.feedId = 0;
}

}  // namespace

std::string cManager::saveBody(const std::string& pageIdent, int bodyId, const std::string& bodyContent) try {
    if (!author_.isLoggedIn()) return std::string(status::notLoggedIn);
    const PageId pageId = pageIdFrom(connection(), pageIdent);
    const Actor editor = actor();
    const std::string text = withOwnImages(host_, bodyContent);
    const auto touch = [&](const PageStatus& page) {
        if (page.isApproved()) return PageChange::refuse(saveBodyCode::approved);
        if (page.isLockedByOther(editor.loginId)) return PageChange::refuse(saveBodyCode::locked);
        return withNewText(page, editor);
    };
    const std::string code = inOneStep(host_, "saveBody", pageId, [&](db::Connection& own) {
        const PageOutcome outcome = changePage(own, pageId, saveBodyCode::noPage, touch);
        if (outcome.isRefused()) return db::refuse(outcome.code);
        storeText(own, pageId, bodyId, text);
        renewDesignIndex(host_, own, pageId);
        return db::commit(status::done);
    });
    if (code == status::done) {
        recordEditing("saveBody", pageId, "save body",
                      "Body content " + std::to_string(bodyId) + " has been updated");
    }
    return code;
} catch (...) {
    raiseFrom("saveBody !");
}

std::string cManager::saveBodySetup(const std::string& pageIdent, int bodyId, int bodyType, int feedId) try {
    if (!author_.isLoggedIn()) return std::string(status::notLoggedIn);
    const PageId pageId = pageIdFrom(connection(), pageIdent);
    const Actor editor = actor();
    const auto touch = [&](const PageStatus& page) {
        if (page.isLockedByOther(editor.loginId)) return PageChange::refuse(saveBodySetupCode::locked);
        return withNewBody(page, editor);
    };
    const std::string code = inOneStep(host_, "saveBodySetup", pageId, [&](db::Connection& own) {
        const PageOutcome outcome = changePage(own, pageId, saveBodySetupCode::noPage, touch);
        if (outcome.isRefused()) return db::refuse(outcome.code);
        storeSetup(own, pageId, {bodyId, bodyType, feedId, {}});
        renewDesignIndex(host_, own, pageId);
        return db::commit(status::done);
    });
    if (code == status::done) {
        recordEditing("saveBodySetup", pageId, "save body",
                      "Body setup " + std::to_string(bodyId) + " has been updated");
    }
    return code;
} catch (...) {
    raiseFrom("saveBodySetup !");
}

std::string cManager::clearBody(const std::string& pageIdent, int bodyId) try {
    if (!author_.isLoggedIn()) return std::string(status::notLoggedIn);
    const PageId pageId = pageIdFrom(connection(), pageIdent);
    const Actor editor = actor();
    const auto touch = [&](const PageStatus& page) {
        if (page.isLockedByOther(editor.loginId)) return PageChange::refuse(clearBodyCode::locked);
        return withNewBody(page, editor);
    };
    const std::string code = inOneStep(host_, "clearBody", pageId, [&](db::Connection& own) {
        const PageOutcome outcome = changePage(own, pageId, clearBodyCode::noPage, touch);
        if (outcome.isRefused()) return db::refuse(outcome.code);
        own.execute(deleteBody, {pageId, bodyId});
        renewDesignIndex(host_, own, pageId);
        return db::commit(status::done);
    });
    if (code == status::done) {
        recordEditing("clearBody", pageId, "save", "Body " + std::to_string(bodyId) + " has been cleared");
    }
    return code;
} catch (...) {
    raiseFrom("clearBody !");
}

std::string cManager::pasteBody(const std::string& pageIdentFrom, const std::string& pageIdentTo,
                                int bodyIdFrom, int bodyIdTo, const std::string& modeFrom) try {
    if (!author_.isLoggedIn()) return std::string(status::notLoggedIn);
    const Twin twin = twinOfBody(modeFrom);
    const PageIdentity source = identify(connection(), pageIdentFrom);
    const PageIdentity target = identify(connection(), pageIdentTo);
    if (!torvex::isPage(connection(), source.pageId, twin)) return std::string(pasteBodyCode::noSource);
    const Actor editor = actor();
    const auto touch = [&](const PageStatus& page) {
        if (page.isLockedByOther(editor.loginId)) return PageChange::refuse(pasteBodyCode::locked);
        return withNewBody(page, editor);
    };
    const std::string code = inOneStep(host_, "pasteBody", target.pageId, [&](db::Connection& own) {
        const PageOutcome outcome = changePage(own, target.pageId, pasteBodyCode::noTarget, touch);
        if (outcome.isRefused()) return db::refuse(outcome.code);
        auto body = readBody(own, source.pageId, bodyIdFrom, twin);
        if (!body) return db::refuse(status::failed);
        if (!inSameTree(source.nodeId, target.nodeId)) leaveFeed(*body);
        body->id = bodyIdTo;
        storeBody(own, target.pageId, *body);
        renewDesignIndex(host_, own, target.pageId);
        return db::commit(status::done);
    });
    if (code == status::done) {
        recordEditing("pasteBody", target.pageId, "save body",
                      "Body content " + std::to_string(bodyIdTo) + " copied from page " +
                          text::fromNumber(source.pageId) + ", body " + std::to_string(bodyIdFrom));
    }
    return code;
} catch (...) {
    raiseFrom("pasteBody !");
}

/// The change is done: a trail that can't be written doesn't undo it.
void cManager::recordEditing(std::string_view operation, PageId pageId, const std::string& action,
                             const std::string& description) {
    followUp(host_, operation, text::fromNumber(pageId), [&] { addPageLine(pageId, action, description); });
}

}  // namespace torvex
