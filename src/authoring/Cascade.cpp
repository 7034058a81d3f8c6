// cManager: a branch goes live as a whole.

#include <optional>
#include <vector>

#include "accounts/Actor.h"
#include "authoring/LiveCopy.h"
#include "authoring/Removal.h"
#include "authoring/RunReport.h"
#include "authoring/StatusCodes.h"
#include "authoring/cManager.h"
#include "platform/Errors.h"
#include "platform/db/OwnTransaction.h"
#include "platform/text/Text.h"
#include "records/AuditTrail.h"
#include "records/Labels.h"
#include "records/PageIdentity.h"
#include "replication/SharedFiles.h"
#include "search/SnapshotFiles.h"
#include "search/SnapshotRenewal.h"

namespace torvex {

namespace {

constexpr std::string_view operationName = "publishPageCascading";

/// Any order would do. In this one a new page goes live before those below it, and two authors who publish
/// branches that overlap take the pages in the same order.
constexpr std::string_view selectApproved =
    "select pageId from TORVEX_PAGES_DESIGN where approveStatus = 1 and nodeId >= ? and nodeId < ? "
    "order by nodeId";

std::vector<PageId> approvedPages(db::Connection& connection, std::string_view nodeId) {
    std::vector<PageId> pages;
    auto rows = connection.query(selectApproved, {nodeId, endOfPrefix(nodeId)});
    while (rows.next()) pages.push_back(rows.number("pageId"));
    return pages;
}

/// False for a page that isn't published now.
bool publish(db::Connection& connection, const DesignPage& page, const Actor& publisher) {
    if (!isLive(connection, page.pageId)) {
        if (!hasLiveParent(connection, page.nodeId)) return false;
        addLivePage(connection, page.pageId);
    }
    copyPage(connection, page.pageId, publisher);
    if (page.isSystem()) setLiveOffline(connection, page.pageId);
    markPublished(connection, page.pageId);
    copyContent(connection, page.pageId);
    return true;
}

/// One run over a branch, within its transaction.
class CascadeRun {
  public:
    CascadeRun(HostContext& host, const Actor& publisher)
        : host_(host), publisher_(publisher), files_(host) {}

    /// The pages that were approved, in their order.
    std::vector<PageId> handleBranch(db::Connection& connection, std::string_view root) {
        std::vector<PageId> pages = approvedPages(connection, root);
        for (const PageId pageId : pages) handle(connection, pageId);
        return pages;
    }

    /// What was done, as it is to be written once it is certain: some of the pages will be gone by then.
    std::vector<AuditLine> takeLines() { return std::move(lines_); }
    /// Has the other servers follow in what was removed.
    void replicate() { files_.replicate(); }

  private:
    /// A page that can't be published is passed over.
    void handle(db::Connection& connection, PageId pageId) {
        const auto page = takeDesignPage(connection, pageId);
        if (!page || page->approveStatus == 0 || page->lockStatus == 1) return;
        if (page->deleteStatus == 1) {
            remove(connection, *page);
        } else if (publish(connection, *page, publisher_)) {
            note(*page, "publish", "");
        }
    }

    void remove(db::Connection& connection, const DesignPage& page) {
        note(page, removal::action, removal::description);
        removeBranch(connection, page.nodeId);
        followUp(host_, operationName, page.nodeId,
                 [&] { files_.deleteFile(snapshotFilesFrom(host_, page.nodeId)); });
    }

    void note(const DesignPage& page, std::string_view action, std::string_view description) {
        AuditLine line;
        line.pageId = page.pageId;
        line.pageTitle = page.title;
        line.nodeId = page.nodeId;
        line.action = action;
        line.description = description;
        lines_.push_back(std::move(line));
    }

    HostContext& host_;
    const Actor& publisher_;
    SharedFiles files_;
    std::vector<AuditLine> lines_;
};

struct Cascade {
    std::vector<PageId> pages;  ///< all that were approved
    std::vector<AuditLine> lines;
};

/// All of it, or nothing.
std::optional<Cascade> runCascade(HostContext& host, const std::string& root, const Actor& publisher) {
    CascadeRun run(host, publisher);
    const auto outcome =
        db::tryInOwnTransaction(host, runOn(operationName, root), std::vector<PageId>(),
                                [&](db::Connection& own) { return db::commit(run.handleBranch(own, root)); });
    if (!outcome.isCommitted) return std::nullopt;
    followUp(host, operationName, root, [&] { run.replicate(); });
    return Cascade{outcome.value, run.takeLines()};
}

}  // namespace

std::string cManager::publishPageCascading(const std::string& pageIdent) try {
    if (!author_.isLoggedIn()) return std::string(status::notLoggedIn);
    const std::string root = nodeIdFrom(connection(), pageIdent);
    // What is shorter than a root would be the beginning of several trees.
    if (text::length(root) < PageIdentity::rootLength) return std::string(status::done);
    auto cascade = runCascade(host_, root, actor());
    if (!cascade) return std::string(status::failed);
    if (cascade->pages.empty()) return std::string(status::done);
    followUp(host_, operationName, root, [&] {
        for (AuditLine& line : cascade->lines) {
            line.loginId = author_.loginId;
            line.loginName = author_.fullname;
            if (line.pageTitle.empty()) line.pageTitle = bracketedWord(label::untitled);
        }
        writeAuditLines(host_, cascade->lines);
    });
    renewSnapshots(host_, connection_, cascade->pages);
    return std::string(status::done);
} catch (...) {
    raiseFrom("publishPageCascading !");
}

}  // namespace torvex
