// cManager: steps of the workflow for lists of pages, and the pages that are checked out.

#include "accounts/Actor.h"
#include "accounts/Logins.h"
#include "authoring/PageIdentList.h"
#include "authoring/PageStatus.h"
#include "authoring/cManager.h"
#include "platform/Errors.h"
#include "platform/HostContext.h"
#include "platform/text/Text.h"
#include "records/Labels.h"
#include "records/PageIdentity.h"

namespace torvex {

namespace {

// Why a page of a list isn't unlocked.
constexpr std::string_view nothingToDo = "0";
constexpr std::string_view held = "-1";

constexpr std::string_view selectLocked =
    "select a.pageId, a.nodeId, a.title, b.name, a.lockingDate "
    "from TORVEX_PAGES_DESIGN a left outer join TORVEX_LOGINS b on a.lockedBy = b.loginId "
    "where a.site = ? and a.lang = ? and a.lockStatus = 1 order by a.title, a.nodeId";
constexpr std::size_t lockColumns = 6;

}  // namespace

std::string cManager::approvePages(const std::string& pageList) try {
    PageIdentList list(pageList);
    if (!author_.isLoggedIn()) return list.text();
    list.passes([&](const std::string& entry) {
        const std::string answer =
            asLevel("approvePage !", [&] { return approve(pageIdFrom(connection(), entry), 1); });
        // A refusal is a number; a success is a status text, which begins with a letter.
        return !text::isNumeric(answer);
    });
    return list.text();
} catch (...) {
    raiseFrom("approvePages !");
}

std::string cManager::unlockPages(const std::string& pageList) try {
    const Actor actor = this->actor();
    const WorkflowRules rules = workflowRules(host_.application);
    const auto unlock = [&](const PageStatus& page) {
        if (!page.isLocked()) return PageChange::refuse(nothingToDo);
        const bool isHolderOnline =
            page.lockedBy > 0 && isOnline(connection(), static_cast<int>(page.lockedBy));
        if (page.isLockedByOther(actor.loginId) && isHolderOnline) return PageChange::refuse(held);
        return release(page, actor, rules, page.isModified() || page.isMarked());
    };
    PageIdentList list(pageList);
    list.pass([&](const std::string& entry) {
        const PageId pageId = pageIdFrom(connection(), entry);
        const PageOutcome outcome = changePage(connection(), pageId, nothingToDo, unlock);
        if (!outcome.isRefused()) addPageLine(pageId, "unlock");
        return outcome.code != held;
    });
    return list.text();
} catch (...) {
    raiseFrom("unlockPages !");
}

Value cManager::getLockList(const std::string& site, const std::string& lang) try {
    ResultGrid grid(lockColumns);
    auto rows = connection().query(selectLocked, {text::trim(site), text::trim(lang)});
    while (rows.next()) {
        const std::string title = rows.text("title");
        grid.add({rows.value("pageId"), rows.value("nodeId"),
                  title.empty() ? bracketedWord(label::untitled) : title, rows.value("name"),
                  rows.value("lockingDate")});
    }
    return gridOrEmpty(std::move(grid));
} catch (...) {
    raiseFrom("getLockList !");
}

}  // namespace torvex
