// desk: what a branch's publishing would do to each of its pages.

#include <set>

#include "accounts/Actor.h"
#include "accounts/EditRights.h"
#include "desk/PageState.h"
#include "desk/desk.h"
#include "platform/Errors.h"
#include "platform/text/Text.h"
#include "records/PageIdentity.h"

namespace torvex {

namespace {

/// In the order in which a branch is published.
constexpr std::string_view selectBranch =
    "select d.pageId, d.nodeId, d.title, d.editStatus, d.deleteStatus, d.approveStatus, d.lockStatus, "
    "h.name as holderName, case when l.pageId is null then 0 else 1 end as isLive, "
    "case when exists (select 1 from TORVEX_PAGES_LIVE p where p.nodeId = d.parent) then 1 else 0 end "
    "as isParentLive "
    "from TORVEX_PAGES_DESIGN d left outer join TORVEX_PAGES_LIVE l on l.pageId = d.pageId "
    "left outer join TORVEX_LOGINS h on h.loginId = d.lockedBy and d.lockStatus = 1 "
    "where d.nodeId >= ? and d.nodeId < ? order by d.nodeId";
constexpr std::size_t branchColumns = 7;

// Why a page stays as it is.
constexpr std::string_view goes;
constexpr std::string_view held = "held";
constexpr std::string_view notApproved = "notApproved";
constexpr std::string_view parentNotLive = "parentNotLive";
constexpr std::string_view unchanged = "unchanged";
constexpr std::string_view noRight = "noRight";

/// Follows the publishing of a branch page by page, without doing it.
class Forecast {
  public:
    explicit Forecast(bool mayPublish) : mayPublish_(mayPublish) {}

    std::string_view reasonToStay(const db::Rows& page) {
        const std::string node = text::lower(page.view("nodeId"));
        // Whatever lies below a page that is removed goes with it.
        if (!removed_.empty() && node.starts_with(removed_)) return goes;
        const std::string_view reason = reasonOf(page, node);
        if (reason != goes) return reason;
        if (page.number("deleteStatus") == 1) {
            removed_ = node + ".";
        } else {
            liveByThen_.insert(node);
        }
        return goes;
    }

  private:
    std::string_view reasonOf(const db::Rows& page, const std::string& node) const {
        const std::string_view state = stateOf(page);
        if (state == "live") return unchanged;
        if (page.number("lockStatus") == 1) return held;
        if (page.number("approveStatus") != 1) return notApproved;
        const bool isRemoved = page.number("deleteStatus") == 1;
        if (!isRemoved && page.number("isLive") != 1 && !hasLiveParent(page, node)) return parentNotLive;
        return mayPublish_ ? goes : noRight;
    }
    bool hasLiveParent(const db::Rows& page, const std::string& node) const {
        return node.size() <= PageIdentity::rootLength || page.number("isParentLive") == 1 ||
               liveByThen_.contains(parentOf(node));
    }

    bool mayPublish_;
    std::string removed_;
    std::set<std::string, std::less<>> liveByThen_;
};

}  // namespace

Value desk::getBranch(const std::string& pageIdent) try {
    const PageIdentity root = identify(connection(), pageIdent);
    if (!root.isValid()) return {};
    const Actor actor = actorOf(host_);
    Forecast forecast(actor.isLoggedIn() && mayEditPage(connection(), actor, EditTask::Publish, root.nodeId));
    ResultGrid grid(branchColumns);
    auto rows = connection().query(selectBranch, {root.nodeId, endOfPrefix(root.nodeId)});
    while (rows.next()) {
        const std::string_view reason = forecast.reasonToStay(rows);
        grid.add({rows.value("pageId"), rows.text("nodeId"), rows.text("title"), stateOf(rows),
                  rows.text("holderName"), reason == goes, reason});
    }
    return gridOrEmpty(std::move(grid));
} catch (...) {
    raiseFrom("getBranch !");
}

}  // namespace torvex
