// cManager: a page's way from its author to its approval.

#include "accounts/Actor.h"
#include "authoring/PageStatus.h"
#include "authoring/StatusCodes.h"
#include "authoring/cManager.h"
#include "platform/Errors.h"
#include "platform/HostContext.h"
#include "platform/text/Text.h"
#include "records/PageIdentity.h"

namespace torvex {

namespace {

constexpr std::string_view locked = "-1";
constexpr std::string_view wrongState = "-2";

// What is written beside the statuses.
constexpr std::string_view checkedOut =
    "lockedBy = ?, lockingDate = ?, deletedBy = null, deletingDate = null, emailNotification = 0";
constexpr std::string_view judged = "approvedBy = ?, approvingDate = ?, emailNotification = ?";
constexpr std::string_view marked =
    "lockedBy = null, lockingDate = null, deletedBy = ?, deletingDate = ?, emailNotification = ?";
constexpr std::string_view unmarked = "deletedBy = null, deletingDate = null, emailNotification = ?";

PageChange takeOut(const PageStatus& page, const Actor& actor) {
    if (page.isApproved()) return PageChange::refuse(wrongState);
    if (page.isLockedByOther(actor.loginId)) return PageChange::refuse(locked);
    if (page.isLocked()) return PageChange(page);
    PageStatus taken = page;
    taken.approveStatus = 0;
    taken.lockStatus = 1;
    taken.lockedBy = actor.loginId;
    taken.lockingDate = actor.now;
    taken.deleteStatus = 0;
    return {taken, checkedOut, {actor.loginId, actor.now}};
}

PageChange giveBack(const PageStatus& page, const Actor& actor, const WorkflowRules& rules) {
    if (page.isApproved()) return PageChange::refuse(status::failed);
    if (page.isLockedByOther(actor.loginId)) return PageChange::refuse(locked);
    PageStatus kept = page;
    kept.deleteStatus = 0;
    return release(kept, actor, rules, page.isModified());
}

PageChange judge(const PageStatus& page, const Actor& actor, const WorkflowRules& rules, int state) {
    const bool approves = state == 1;
    if (approves && !page.isModified() && page.deleteStatus == 0) return PageChange::refuse(wrongState);
    if (page.isLocked()) return PageChange::refuse(locked);
    PageStatus wanted = page;
    wanted.lockStatus = 0;
    wanted.approveStatus = state;
    const bool awaitsMail = page.isModified() || page.isMarked() || approves;
    return {wanted, judged, {actor.loginId, actor.now, notificationFlag(rules, awaitsMail)}};
}

PageChange markOrUnmark(const PageStatus& page, const Actor& actor, const WorkflowRules& rules, bool marks) {
    if (page.isApproved()) return PageChange::refuse(wrongState);
    if (page.isLockedByOther(actor.loginId)) return PageChange::refuse(locked);
    PageStatus wanted = page;
    wanted.lockStatus = 0;
    wanted.approveStatus = 0;
    wanted.deleteStatus = marks ? 1 : 0;
    const int notified = notificationFlag(rules, marks || page.isModified());
    if (!marks) return {wanted, unmarked, {notified}};
    return {wanted, marked, {actor.loginId, actor.now, notified}};
}

template <typename Decide>
PageOutcome change(db::Connection& connection, PageId pageId, Decide decide) {
    return changePage(connection, pageId, status::failed, decide);
}

}  // namespace

std::string cManager::checkOut(const std::string& pageIdent) try {
    if (!author_.isLoggedIn()) return std::string(status::notLoggedIn);
    const Actor actor = this->actor();
    const auto outcome = change(connection(), pageIdFrom(connection(), pageIdent),
                                [&](const PageStatus& page) { return takeOut(page, actor); });
    if (outcome.isRefused()) return std::string(outcome.code);
    page_.approveStatus = 0;
    page_.lockStatus = 1;
    page_.lockedBy = author_.fullname;
    page_.lockingDate = outcome.after.lockingDate;
    page_.deleteStatus = 0;
    page_.deletedBy.clear();
    page_.deletingDate = noDate;
    addPageLine(outcome.after.pageId, "check out");
    return outcome.after.text();
} catch (...) {
    raiseFrom("checkOut !");
}

std::string cManager::checkIn(const std::string& pageIdent) try {
    if (!author_.isLoggedIn()) return std::string(status::notLoggedIn);
    const Actor actor = this->actor();
    const WorkflowRules rules = workflowRules(host_.application);
    const auto outcome = change(connection(), pageIdFrom(connection(), pageIdent),
                                [&](const PageStatus& page) { return giveBack(page, actor, rules); });
    if (outcome.isRefused()) return std::string(outcome.code);
    const bool approves = outcome.after.isApproved();
    if (approves) {
        page_.approveStatus = 1;
        // The number, not the name: callers know it so.
        page_.approvedBy = std::to_string(author_.loginId);
        page_.approvingDate = actor.now;
    }
    page_.deleteStatus = 0;
    page_.lockStatus = 0;
    page_.lockedBy.clear();
    page_.lockingDate = noDate;
    addPageLine(outcome.after.pageId, approves ? "check in - approve" : "check in");
    return outcome.after.text();
} catch (...) {
    raiseFrom("checkIn !");
}

std::string cManager::approvePage(const std::string& pageIdent, int state) try {
    if (!author_.isLoggedIn()) return std::string(status::notLoggedIn);
    return approve(pageIdFrom(connection(), pageIdent), state);
} catch (...) {
    raiseFrom("approvePage !");
}

std::string cManager::approve(PageId pageId, int state) {
    const Actor actor = this->actor();
    const WorkflowRules rules = workflowRules(host_.application);
    const auto outcome = change(connection(), pageId,
                                [&](const PageStatus& page) { return judge(page, actor, rules, state); });
    if (outcome.isRefused()) return std::string(outcome.code);
    page_.lockStatus = 0;
    page_.approveStatus = state;
    addPageLine(outcome.after.pageId, state == 1 ? "approve" : "unapprove");
    return outcome.after.text();
}

std::string cManager::deletePage(const std::string& pageIdent, int state) try {
    if (!author_.isLoggedIn()) return std::string(status::notLoggedIn);
    const bool marks = state != 0;
    const Actor actor = this->actor();
    const WorkflowRules rules = workflowRules(host_.application);
    const auto outcome =
        change(connection(), pageIdFrom(connection(), pageIdent),
               [&](const PageStatus& page) { return markOrUnmark(page, actor, rules, marks); });
    if (outcome.isRefused()) return std::string(outcome.code);
    page_.deletedBy = marks ? author_.fullname : std::string();
    page_.deletingDate = marks ? actor.now : noDate;
    if (marks) {
        page_.lockStatus = 0;
        page_.lockedBy.clear();
        page_.lockingDate = noDate;
        page_.deleteStatus = 1;
        page_.approveStatus = 0;
    }
    addPageLine(outcome.after.pageId, marks ? "delete" : "undelete", marks ? "Marked for deletion" : "");
    return outcome.after.text();
} catch (...) {
    raiseFrom("deletePage !");
}

}  // namespace torvex
