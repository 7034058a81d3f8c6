#include "accounts/AdminEntries.h"
#include "authoring/cManager.h"
#include "operations/register/Binding.h"
#include "operations/register/ManagerRows.h"

namespace torvex::operations {

namespace {

StatusCode noPageOrFailed() {
    return refusal(-99, "There is no such page, or it failed; nothing was changed.", label::failed);
}

}  // namespace

std::vector<Row<cManager>> managerWorkflowRows() {
    return {
        writes("checkOut", &cManager::checkOut, {argument("pageIdent")},
               "Takes a page for editing: its edit, lock, delete and approve status.",
               editRight("edit", "pageIdent"))
            .codes({notLoggedIn(), refusal(-1, "Another login has the page.", label::lockedByOther),
                    refusal(-2, "The page is approved.", label::approved), noPageOrFailed()}),
        writes("checkIn", &cManager::checkIn, {argument("pageIdent")},
               "Gives a page back: its four statuses.", editRight("edit", "pageIdent"))
            .codes({notLoggedIn(), refusal(-1, "Another login has the page.", label::stillHeld),
                    refusal(-99,
                            "The page is approved, there is no such page, or it failed; nothing was changed.",
                            label::isApproved)}),
        writes("approvePage", &cManager::approvePage, {argument("pageIdent"), argument("state")},
               "Approves a page with state 1, else takes the approval back: its four statuses.",
               editRight("approve", "pageIdent"))
            .codes(
                {notLoggedIn(), refusal(-1, "The page is checked out.", label::stillHeld),
                 refusal(-2,
                         "There is nothing to approve: the page is neither changed nor marked for deletion.",
                         label::nothingToApprove),
                 noPageOrFailed()}),
        writes("approvePages", &cManager::approvePages, {argument("pageList")},
               "Approves the pages of a list: those with which it failed, divided by commas.",
               editRight("approve", "pageList")),
        writes("deletePage", &cManager::deletePage, {argument("pageIdent"), argument("state")},
               "Marks a page for deletion, or with state 0 takes the mark back: its four statuses.",
               editRight("edit", "pageIdent"))
            .codes({notLoggedIn(), refusal(-1, "Another login has the page.", label::stillHeld),
                    refusal(-2, "The page is approved.", label::approvedNotMarked), noPageOrFailed()}),
        // The list of locked pages is an entry of a site and language, but the pages given here may lie in
        // any. What is done to each is a check-in, which needs the right to edit it.
        writes("unlockPages", &cManager::unlockPages, {argument("pageList")},
               "Lets pages go whose holder asks or has left: those that stay locked, divided by commas.",
               editRight("edit", "pageList")),
        reads("getLockList", &cManager::getLockList, {argument("site"), argument("lang")},
              "The pages of a site and language that are checked out, by title.",
              viewAccess(adminEntry::locks, "site", "lang"))
            .lists({{"pageId", Number},
                    {"nodeId", Text},
                    {"title", Text},
                    {"name", Text},
                    {"lockingDate", Date}}),
        // Which right a lock needs depends on the item: each kind of record has its own entry, and some one
        // of a site and language that only the record knows. Pages test the right to edit the record and lock
        // it then; from the network anybody who is logged in could keep all others from their work.
        writes("lockItem", &cManager::lockItem, {argument("item"), argument("itemId")},
               "Takes an administrative record for this session.", nobody())
            .codes({refusal(false, "Another login holds the record, or there is no such record.")}),
        // Only ever lets go what the caller's own session holds.
        writes("unlockItem", &cManager::unlockItem, {argument("item"), argument("itemId")},
               "Lets an administrative record go if this session holds it.", anyLogin()),
    };
}

}  // namespace torvex::operations
