// cManager: copies of pages and of branches.

#include <fmt/format.h>

#include "authoring/BranchCopy.h"
#include "authoring/PageStatus.h"
#include "authoring/RunReport.h"
#include "authoring/StatusCodes.h"
#include "authoring/cManager.h"
#include "platform/Errors.h"
#include "platform/HostContext.h"
#include "platform/Keys.h"
#include "platform/Session.h"
#include "platform/db/OwnTransaction.h"
#include "platform/text/Text.h"
#include "records/Labels.h"
#include "records/PageRows.h"
#include "records/SystemBranch.h"
#include "search/designs/PageIndex.h"

namespace torvex {

namespace {

constexpr std::string_view operationName = "pastePage";

// Why a page isn't copied.
constexpr std::string_view hasSystemBranch = "-1";
constexpr std::string_view systemMismatch = "-2";
constexpr std::string_view noTitle = "-3";
constexpr std::string_view noPlace = "-4";

bool isSystemRoot(std::string_view nodeId) {
    return systemBranch::hasDigits(nodeId) && !systemBranch::hasDigits(parentOf(nodeId));
}

/// A system branch goes where there is none, its pages into one, others elsewhere.
bool fits(std::string_view source, std::string_view target) {
    const bool isSystemPage = systemBranch::hasDigits(source) && !isSystemRoot(source);
    return isSystemPage == systemBranch::hasDigits(target);
}

bool hasSystemBranchBelow(db::Connection& connection, std::string_view nodeId) {
    return asLevel("isPage !", [&] {
        return isPage(connection, pageIdFrom(connection, systemBranch::below(nodeId)), Twin::Design);
    });
}

using Outcome = db::Outcome<std::string>;

/// The node of the copy, or a code. Fills in where the copy stands, and its number.
Outcome paste(HostContext& host, db::Connection& connection, const PageIdentity& target,
              std::string_view word, CopyOrder& order, PageId& copy) {
    if (!holdPage(connection, target)) return db::refuse(status::failed);
    auto title = freeTitle(connection, target.nodeId, order.title, word);
    if (!title) return db::refuse(noTitle);
    auto place = isSystemRoot(order.source) ? placeForSystemBranch(connection, target.nodeId)
                                            : placeForChild(connection, target.nodeId);
    if (!place) return db::refuse(noPlace);
    order.title = std::move(*title);
    order.place = std::move(*place);
    copy = copyBranch(connection, order);
    renewDesignIndexOfBranch(host, connection, order.place.nodeId);
    return db::commit(order.place.nodeId);
}

std::string described(std::string_view doing, PageId pageId, std::string_view nodeId) {
    return fmt::format("{} page {} ({})", doing, text::fromNumber(pageId), nodeId);
}

}  // namespace

std::string cManager::pastePage(const std::string& modeFrom, const std::string& pageIdentFrom,
                                const std::string& pageIdentTo, int flag) try {
    if (!author_.isLoggedIn()) return std::string(status::notLoggedIn);
    const PageIdentity source = identify(connection(), pageIdentFrom);
    const PageIdentity target = identify(connection(), pageIdentTo);
    if (!source.isValid() || !target.isValid()) return std::string(status::failed);
    if (!fits(source.nodeId, target.nodeId)) return std::string(systemMismatch);
    if (isSystemRoot(source.nodeId) && hasSystemBranchBelow(connection(), target.nodeId))
        return std::string(hasSystemBranch);

    const Twin twin = twinOfBody(modeFrom);
    CopyOrder order{.source = source.nodeId,
                    .from = twin,
                    .extent = flag == 0 ? Extent::Page : Extent::Branch,
                    .place = {},
                    .title = pageTitle(source.pageId, twin),
                    .editor = actor(),
                    .notified = notificationFlag(workflowRules(host_.application), true)};
    const std::string word = getVocab(host_.session.text(sessionKey::interfaceLanguage), label::copyOf);
    PageId copy = -1;
    const Outcome outcome = db::tryInOwnTransaction(
        host_, runOn(operationName, source.nodeId), status::failed,
        [&](db::Connection& own) { return paste(host_, own, target, word, order, copy); });
    if (outcome.isCommitted && copy > 0)
        recordCopy(source, {copy, outcome.value}, order.extent == Extent::Branch ? "+" : "");
    return outcome.value;
} catch (...) {
    raiseFrom("pastePage !");
}

/// `mark` stands behind the action of a whole branch.
void cManager::recordCopy(const PageIdentity& source, const PageIdentity& copy, const std::string& mark) {
    followUp(host_, operationName, text::fromNumber(source.pageId), [&] {
        addPageLine(source.pageId, "copy" + mark, described("Copied to", copy.pageId, copy.nodeId));
    });
    followUp(host_, operationName, text::fromNumber(copy.pageId), [&] {
        addPageLine(copy.pageId, "paste" + mark, described("Copied from", source.pageId, source.nodeId));
    });
}

}  // namespace torvex
