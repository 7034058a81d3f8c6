// cManager: pages go live, or are removed.

#include <functional>

#include "accounts/Actor.h"
#include "authoring/LiveCopy.h"
#include "authoring/PageIdentList.h"
#include "authoring/Removal.h"
#include "authoring/RunReport.h"
#include "authoring/StatusCodes.h"
#include "authoring/cManager.h"
#include "platform/Errors.h"
#include "platform/db/OwnTransaction.h"
#include "platform/text/Text.h"
#include "records/PageIdentity.h"
#include "replication/SharedFiles.h"
#include "search/SnapshotFiles.h"
#include "search/SnapshotRenewal.h"

namespace torvex {

namespace {

constexpr std::string_view operationName = "publishPage";

// Why a page isn't published.
constexpr std::string_view checkedOut = "-1";
constexpr std::string_view notApproved = "-2";
constexpr std::string_view noSuchPage = "-3";
constexpr std::string_view parentNotLive = "-4";

// How it is live where that isn't what its column says.
constexpr std::string_view outsideItsDates = "2";
constexpr std::string_view liveFolder = "3";
constexpr std::string_view liveSystemPage = "4";

/// "" for a page whose state lets it be published, or removed if it is marked.
std::string_view refusalOf(const std::optional<DesignPage>& page) {
    if (!page) return noSuchPage;
    if (page->approveStatus == 0) return notApproved;
    if (page->lockStatus == 1) return checkedOut;
    return {};
}

/// To the live row of the page, which is there by now. How it is live from here on.
std::string copyAll(db::Connection& connection, const DesignPage& page, const Actor& publisher) {
    const bool goesOffline = !page.isFolder() && page.isSystem();
    if (goesOffline) setLiveOffline(connection, page.pageId);
    copyPage(connection, page.pageId, publisher);
    markPublished(connection, page.pageId);
    copyContent(connection, page.pageId);
    if (page.isFolder()) return std::string(liveFolder);
    if (goesOffline) return std::string(liveSystemPage);
    if (!page.isWithinDates(date8(publisher.now))) return std::string(outsideItsDates);
    return std::to_string(liveOnline(connection, page.pageId));
}

/// What became of a page.
struct Publication {
    std::string result;
    std::string removedNode;  ///< "" for a page that wasn't removed
};

db::Outcome<Publication> refuse(std::string_view code) {
    return db::refuse(Publication{std::string(code), {}});
}

using NoteRemoval = std::function<void()>;

db::Outcome<Publication> publishOrRemove(db::Connection& connection, PageId pageId, const Actor& publisher,
                                         const NoteRemoval& noteRemoval) {
    const auto page = takeDesignPage(connection, pageId);
    if (const std::string_view refusal = refusalOf(page); !refusal.empty()) return refuse(refusal);
    if (page->deleteStatus == 1) {
        noteRemoval();
        removeBranch(connection, page->nodeId);
        return db::commit(Publication{std::string(status::done), page->nodeId});
    }
    if (!isLive(connection, page->pageId)) {
        if (!hasLiveParent(connection, page->nodeId)) return refuse(parentNotLive);
        addLivePageOnline(connection, page->pageId);
    }
    return db::commit(Publication{copyAll(connection, *page, publisher), {}});
}

/// All of it, or nothing.
db::Outcome<Publication> run(HostContext& host, PageId pageId, const Actor& publisher,
                             const NoteRemoval& noteRemoval) {
    const Publication failed{std::string(status::failed), {}};
    return db::tryInOwnTransaction(
        host, runOn(operationName, text::fromNumber(pageId)), failed,
        [&](db::Connection& own) { return publishOrRemove(own, pageId, publisher, noteRemoval); });
}

bool isRefused(std::string_view result) {
    return result.starts_with('-');
}

}  // namespace

std::string cManager::publishPage(const std::string& pageIdent) try {
    if (!author_.isLoggedIn()) return std::string(status::notLoggedIn);
    return publish(identify(connection(), pageIdent));
} catch (...) {
    raiseFrom("publishPage !");
}

std::string cManager::publish(const PageIdentity& page) {
    if (page.pageId <= 0 || page.nodeId.empty()) return std::string(noSuchPage);
    const std::string ident = text::fromNumber(page.pageId);
    const auto outcome = run(host_, page.pageId, actor(), [&] {
        // While the page's title can still be read, and whatever becomes of the transaction.
        addPageLine(page.pageId, removal::action, removal::description);
    });
    const auto& [result, removedNode] = outcome.value;
    if (!outcome.isCommitted) return result;
    if (!removedNode.empty()) {
        followUp(host_, operationName, ident, [&, &node = removedNode] {
            SharedFiles files(host_);
            files.deleteFile(snapshotFilesFrom(host_, node));
            files.replicate();
        });
        return result;
    }
    followUp(host_, operationName, ident, [&] { addPageLine(page.pageId, "publish"); });
    renewSnapshots(host_, connection_, {page.pageId});
    return result;
}

std::string cManager::publishPages(const std::string& pageList) try {
    PageIdentList list(pageList);
    if (!author_.isLoggedIn()) return list.text();
    // A child may stand before its parent.
    list.passes([&](const std::string& entry) {
        return asLevel("publishPage !", [&] { return !isRefused(publish(identify(connection(), entry))); });
    });
    return list.text();
} catch (...) {
    raiseFrom("publishPages !");
}

}  // namespace torvex
