#include "authoring/PageStatus.h"

#include "accounts/Actor.h"
#include "platform/ApplicationValues.h"
#include "platform/Keys.h"
#include "platform/text/Text.h"

namespace torvex {

namespace {

constexpr std::string_view selectStatus =
    "select editStatus, lockStatus, lockedBy, lockingDate, deleteStatus, approveStatus "
    "from TORVEX_PAGES_DESIGN where pageId = ?";

// The statement of a change: the columns that the operation adds stand between these two parts.
constexpr std::string_view updateStatus =
    "update TORVEX_PAGES_DESIGN set editStatus = ?, lockStatus = ?, deleteStatus = ?, approveStatus = ?, ";
constexpr std::string_view whereUnchanged =
    " where pageId = ? and coalesce(editStatus, '') = ? and coalesce(lockStatus, 0) = ? "
    "and coalesce(lockedBy, 0) = ? and coalesce(deleteStatus, 0) = ? and coalesce(approveStatus, 0) = ?";

constexpr std::string_view released = "lockedBy = null, lockingDate = null, emailNotification = ?";
constexpr std::string_view releasedApproved =
    "lockedBy = null, lockingDate = null, emailNotification = ?, approvedBy = ?, approvingDate = ?";

/// Every attempt that fails is another author's success, so that this many in a row are no accident.
constexpr int mostAttempts = 100;

DateTime momentOf(const db::Rows& rows, std::string_view column) {
    const Value moment = rows.value(column);
    return moment.isDate() ? moment.date() : noDate;
}

/// False when a status has changed since it was read.
bool write(db::Connection& connection, const PageStatus& read, const PageChange& change) {
    const PageStatus& wanted = change.after;
    std::vector<db::Parameter> values{wanted.editStatus, wanted.lockStatus, wanted.deleteStatus,
                                      wanted.approveStatus};
    values.insert(values.end(), change.values.begin(), change.values.end());
    const std::initializer_list<db::Parameter> unchanged{
        read.pageId, read.editStatus, read.lockStatus, read.lockedBy, read.deleteStatus, read.approveStatus};
    values.insert(values.end(), unchanged);
    std::string statement(updateStatus);
    statement.append(change.companions).append(whereUnchanged);
    return connection.execute(statement, values) > 0;
}

}  // namespace

bool PageStatus::isModified() const {
    return text::equals(editStatus, "M");
}

std::string PageStatus::text() const {
    return editStatus + std::to_string(lockStatus) + std::to_string(deleteStatus) +
           std::to_string(approveStatus);
}

std::optional<PageStatus> readPageStatus(db::Connection& connection, PageId pageId) {
    if (pageId <= 0) return std::nullopt;
    auto rows = connection.query(selectStatus, {pageId});
    if (!rows.next()) return std::nullopt;
    PageStatus page;
    page.pageId = pageId;
    page.editStatus = rows.text("editStatus");
    page.lockStatus = static_cast<int>(rows.number("lockStatus"));
    page.lockedBy = rows.number("lockedBy");
    page.lockingDate = momentOf(rows, "lockingDate");
    page.deleteStatus = static_cast<int>(rows.number("deleteStatus"));
    page.approveStatus = static_cast<int>(rows.number("approveStatus"));
    return page;
}

PageChange PageChange::refuse(std::string_view code) {
    PageChange refusal{PageStatus()};
    refusal.code = code;
    return refusal;
}

PageOutcome changePage(db::Connection& connection, PageId pageId, std::string_view missing,
                       const std::function<PageChange(const PageStatus&)>& decide) {
    for (int attempt = 0; attempt < mostAttempts; ++attempt) {
        const auto page = readPageStatus(connection, pageId);
        if (!page) return {missing, {}};
        const PageChange change = decide(*page);
        if (!change.code.empty()) return {change.code, *page};
        if (change.companions.empty() || write(connection, *page, change)) return {{}, change.after};
    }
    throw db::DatabaseError("the page is changed by others all the time");
}

WorkflowRules workflowRules(const ApplicationValues& application) {
    return {application.isTrue(applicationKey::autoApprove),
            application.number(applicationKey::emailNotification) > 0};
}

int notificationFlag(const WorkflowRules& rules, bool awaitsMail) {
    return awaitsMail && rules.sendsMail ? 1 : 0;
}

PageChange release(const PageStatus& page, const Actor& actor, const WorkflowRules& rules, bool awaitsMail) {
    const bool approves = page.isModified() && rules.releaseApproves;
    const int notified = notificationFlag(rules, awaitsMail);
    PageStatus free = page;
    free.approveStatus = approves ? 1 : 0;
    free.lockStatus = 0;
    if (!approves) return {free, released, {notified}};
    return {free, releasedApproved, {notified, actor.loginId, actor.now}};
}

}  // namespace torvex
