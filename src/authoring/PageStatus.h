#pragma once

#include <functional>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "authoring/PageBuffer.h"
#include "platform/DateTime.h"
#include "platform/db/Connection.h"
#include "records/PageId.h"

namespace torvex {
class ApplicationValues;
struct Actor;

/// Where a page stands between its author and the public: the statuses of its design row, as they were read.
struct PageStatus {
    PageId pageId = 0;
    std::string editStatus;  ///< "N" new, "M" modified, "P" published
    int lockStatus = 0;      ///< 1 checked out
    double lockedBy = 0;     ///< the login that holds it; 0 nobody
    DateTime lockingDate = noDate;
    int deleteStatus = 0;   ///< 1 marked for deletion
    int approveStatus = 0;  ///< 1 approved for publishing

    bool isModified() const;
    bool isLocked() const { return lockStatus == 1; }
    bool isLockedByOther(int loginId) const { return isLocked() && lockedBy != loginId; }
    bool isMarked() const { return deleteStatus == 1; }
    bool isApproved() const { return approveStatus == 1; }

    /// Edit, lock, delete and approve status, one after the other: what operations answer.
    std::string text() const;
};

/// Nothing when there is no such page.
std::optional<PageStatus> readPageStatus(db::Connection& connection, PageId pageId);

/// What an operation wants done with a page that it found in some state: a refusal, nothing, or a change.
struct PageChange {
    /// The page stays as it is.
    explicit PageChange(const PageStatus& page) : after(page) {}
    /// It gets the statuses `wanted`, and further columns, named in the form "lockedBy = ?, editor = ?",
    /// their values. Texts are viewed: they must live until the change is made.
    PageChange(const PageStatus& wanted, std::string_view columns, std::vector<db::Parameter> columnValues)
        : after(wanted), companions(columns), values(std::move(columnValues)) {}

    static PageChange refuse(std::string_view code);

    std::string_view code;  ///< of a refusal; nothing is written
    PageStatus after;
    std::string_view companions;  ///< "" for a page that stays as it is
    std::vector<db::Parameter> values;
};

/// What became of it.
struct PageOutcome {
    std::string_view code;  ///< "" unless it was refused
    PageStatus after;

    bool isRefused() const { return !code.empty(); }
};

/// Reads the page, asks `decide` what to do and does it, as one step: the change is written only if no status
/// has changed since it was read; otherwise it is read and decided again. So two authors never both pass a
/// test that the first one's change makes fail. All changes of the statuses go through here. Works alone and
/// within a transaction, where on PostgreSQL it should come first: it takes the row.
///
/// A page that isn't there is refused with the code `missing`. Throws `DatabaseError`, also in the end when
/// others keep changing the page.
PageOutcome changePage(db::Connection& connection, PageId pageId, std::string_view missing,
                       const std::function<PageChange(const PageStatus&)>& decide);

/// What the installation's settings say of the workflow.
struct WorkflowRules {
    bool releaseApproves = false;  ///< a modified page is approved by being let go
    bool sendsMail = false;
};
WorkflowRules workflowRules(const ApplicationValues& application);

/// For the column `emailNotification`: 1 when a change awaits a mail to the approvers, and mails are wanted
/// at all.
int notificationFlag(const WorkflowRules& rules, bool awaitsMail);

/// The page let go by whoever holds it; where that is the rule, a modified one is approved by it.
PageChange release(const PageStatus& page, const Actor& actor, const WorkflowRules& rules, bool awaitsMail);

}  // namespace torvex
