// cManager: a branch goes to another parent.

#include "accounts/Website.h"
#include "authoring/BranchMove.h"
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
#include "records/SystemBranch.h"
#include "search/MovedSnapshots.h"
#include "search/designs/PageIndex.h"

namespace torvex {

namespace {

constexpr std::string_view operationName = "movePage";

// Why a branch stays where it is.
constexpr std::string_view otherAtWork = "-1";
constexpr std::string_view wrongTarget = "-2";
constexpr std::string_view noTitle = "-3";
constexpr std::string_view noPlace = "-4";

bool mayMove(const PageIdentity& page) {
    return page.pageId > 0 && !page.nodeId.empty() && !systemBranch::hasDigits(page.nodeId);
}

std::string websiteOf(std::string_view nodeId) {
    return std::string(siteOf(nodeId)).append(".").append(langOf(nodeId));
}

/// The pages are held in the order of their nodes, so that two who move towards each other don't wait for
/// each other for ever.
bool hold(db::Connection& connection, const PageIdentity& source, const PageIdentity& target) {
    const bool targetFirst = text::compare(target.nodeId, source.nodeId) < 0;
    const bool held = holdPage(connection, targetFirst ? target : source) &&
                      holdPage(connection, targetFirst ? source : target);
    if (held) holdBranch(connection, source.nodeId);
    return held;
}

using Outcome = db::Outcome<std::string>;

std::string runOn(const MoveOrder& order) {
    return torvex::runOn(operationName, text::fromNumber(order.source.pageId));
}

/// The new node, or a code.
Outcome move(HostContext& host, db::Connection& connection, const PageIdentity& target, std::string_view word,
             MoveOrder& order) {
    if (!hold(connection, order.source, target)) return db::refuse(status::failed);
    auto title = freeTitle(connection, target.nodeId, order.title, word);
    if (!title) return db::refuse(noTitle);
    auto place = placeForChild(connection, target.nodeId);
    if (!place) return db::refuse(noPlace);
    order.title = std::move(*title);
    order.place = std::move(*place);
    moveBranch(connection, order);
    // Of the branch only this page may have another title, and all stay in their tree.
    renewDesignIndex(host, connection, order.source.pageId);
    return db::commit(order.place.nodeId);
}

/// The same as a whole, while the others are kept out, with the files that follow.
Outcome moveAlone(HostContext& host, db::Connection& connection, const PageIdentity& target,
                  std::string_view word, MoveOrder& order) try {
    const std::string& from = order.source.nodeId;
    const WebsiteLock lock(connection, order.loginId, websiteOf(from));
    if (!lock.isHeld()) return db::refuse(otherAtWork);
    Outcome outcome = db::tryInOwnTransaction(host, runOn(order), status::failed, [&](db::Connection& own) {
        return move(host, own, target, word, order);
    });
    if (outcome.isCommitted)
        followUp(host.log, runOn(order), [&] { moveSnapshots(host, connection, from, outcome.value); });
    return outcome;
} catch (const std::exception& error) {
    warnOf(host.log, runOn(order), error);
    return db::refuse(status::failed);
}

}  // namespace

std::string cManager::movePage(const std::string& pageIdentFrom, const std::string& pageIdentTo) try {
    if (!author_.isLoggedIn()) return std::string(status::notLoggedIn);
    const PageIdentity source = identify(connection(), pageIdentFrom);
    const PageIdentity target = identify(connection(), pageIdentTo);
    if (!mayMove(source) || !mayMove(target)) return std::string(status::failed);
    if (text::startsWith(target.nodeId, source.nodeId) || !inSameTree(source.nodeId, target.nodeId))
        return std::string(wrongTarget);

    const std::string ident = text::fromNumber(source.pageId);
    const std::string word = getVocab(host_.session.text(sessionKey::interfaceLanguage), label::copyOf);
    MoveOrder order{author_.loginId, source, {}, movedTitle(source.pageId)};
    const Outcome outcome = moveAlone(host_, connection(), target, word, order);
    if (outcome.isCommitted) {
        followUp(host_, operationName, ident, [&] {
            addPageLine(source.pageId, "move",
                        "Moved from node " + source.nodeId + " to node " + outcome.value);
        });
    }
    return outcome.value;
} catch (...) {
    raiseFrom("movePage !");
}

/// The live title; a page that was never published has only the other one.
std::string cManager::movedTitle(PageId pageId) {
    std::string title = pageTitle(pageId, Twin::Live);
    return title.empty() ? pageTitle(pageId, Twin::Design) : title;
}

}  // namespace torvex
