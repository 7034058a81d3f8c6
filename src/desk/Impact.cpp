// desk: what the removal of a branch would do, before it is done.

#include <fmt/format.h>

#include "accounts/Actor.h"
#include "desk/DesignReach.h"
#include "desk/PageState.h"
#include "desk/desk.h"
#include "platform/Errors.h"
#include "platform/HostContext.h"
#include "platform/text/Text.h"
#include "records/PageIdentity.h"

namespace torvex {

namespace {

constexpr std::size_t impactColumns = 6;

constexpr std::string_view selectBranch =
    "select d.pageId, d.nodeId, d.title, d.editStatus, d.deleteStatus, d.approveStatus, d.lockStatus, "
    "h.name as holderName from TORVEX_PAGES_DESIGN d "
    "left outer join TORVEX_LOGINS h on h.loginId = d.lockedBy and d.lockStatus = 1 "
    "where d.nodeId >= ? and d.nodeId < ? order by d.nodeId";

// Pages outside of the branch ("d") that have something to do with one in it ("b"). Both twins count, each page
// and body once. Neighbours count where they were set by hand.
constexpr std::string_view selectLinks =
    "select distinct d.pageId, d.nodeId, d.title, case when u.bodyId < 0 then 0 else u.bodyId end as bodyId, "
    "u.what, b.title as targetTitle, b.nodeId as targetNode from ("
    "select k.pageId, k.bodyId, '' as what, b.pageId as target from TORVEX_PAGES_DESIGN b "
    "inner join TORVEX_LINKS k on k.linkPage = b.pageId where b.nodeId >= ? and b.nodeId < ? "
    "union select k.pageId, k.bodyId, '', b.pageId from TORVEX_PAGES_DESIGN b "
    "inner join TORVEX_LINKS k on k.linkKind = 'page' and k.linkTarget = b.nodeId "
    "where b.nodeId >= ? and b.nodeId < ?";
constexpr std::string_view selectColumn =
    " union select p.pageId, 0, '{0}', b.pageId from TORVEX_PAGES_DESIGN b "
    "inner join TORVEX_PAGES_{1} p on p.{0} = b.pageId{2} where b.nodeId >= ? and b.nodeId < ?";
constexpr std::string_view selectOutside =
    ") u inner join TORVEX_PAGES_DESIGN d on d.pageId = u.pageId "
    "inner join TORVEX_PAGES_DESIGN b on b.pageId = u.target where not (d.nodeId >= ? and d.nodeId < ?) "
    "order by d.nodeId, bodyId, u.what, targetNode";
constexpr std::string_view selectLogins =
    "select distinct d.pageId, d.nodeId, d.title, 0 as bodyId, '' as what, b.title as targetTitle, "
    "b.nodeId as targetNode from ("
    "select p.pageId, p.loginPage from TORVEX_PAGES_DESIGN b "
    "inner join TORVEX_PAGES_DESIGN p on p.loginPage = b.pageId where b.nodeId >= ? and b.nodeId < ? "
    "union select p.pageId, p.loginPage from TORVEX_PAGES_DESIGN b "
    "inner join TORVEX_PAGES_LIVE p on p.loginPage = b.pageId where b.nodeId >= ? and b.nodeId < ?) u "
    "inner join TORVEX_PAGES_DESIGN d on d.pageId = u.pageId "
    "inner join TORVEX_PAGES_DESIGN b on b.pageId = u.loginPage where not (d.nodeId >= ? and d.nodeId < ?) "
    "order by d.nodeId, targetNode";

// Pages of the branch that something else needs.
constexpr std::string_view selectEntries =
    "select b.pageId, b.nodeId, b.title, g.name as detail from TORVEX_PAGES_DESIGN b "
    "inner join TORVEX_USERGROUPS g on g.entryPage = b.pageId "
    "where b.nodeId >= ? and b.nodeId < ? order by b.nodeId, g.name";
constexpr std::string_view selectExits =
    "select b.pageId, b.nodeId, b.title, g.name as detail from TORVEX_PAGES_DESIGN b "
    "inner join TORVEX_USERGROUPS g on g.exitPage = b.pageId "
    "where b.nodeId >= ? and b.nodeId < ? order by b.nodeId, g.name";
constexpr std::string_view selectMenus =
    "select distinct b.pageId, b.nodeId, b.title, '' as detail from TORVEX_PAGES_DESIGN b inner join ("
    "select pageId from TORVEX_DYNMENU_DESIGN union select pageId from TORVEX_DYNMENU_LIVE) m "
    "on m.pageId = b.pageId where b.nodeId >= ? and b.nodeId < ? order by b.nodeId";

/// The columns by which pages name others, and whether they were set by hand.
std::string linksStatement() {
    std::string statement(selectLinks);
    for (const std::string_view twin : {"DESIGN", "LIVE"}) {
        for (const std::string_view column : {"previous", "next", "up"}) {
            statement += fmt::format(fmt::runtime(selectColumn), column, twin, " and p.navigation = 'M'");
        }
        statement += fmt::format(fmt::runtime(selectColumn), "app_system_folder", twin, "");
    }
    return statement.append(selectOutside);
}
constexpr std::size_t rangesOfLinks = 11;
constexpr std::size_t rangesOfLogins = 3;

/// How a page of the branch stands.
struct Standing {
    PageId pageId;
    std::string nodeId;
    std::string title;
    std::string state;
    std::string holder;  ///< "" for one that nobody holds
    bool isHeld;
    bool isApproved;
};

/// The report in the making, on one branch.
class Impact {
  public:
    Impact(db::Connection& connection, const std::string& nodeId, const EditReach& readable)
        : connection_(connection), begin_(nodeId), end_(endOfPrefix(nodeId)), readable_(readable) {}

    void addBranch() {
        std::vector<Standing> pages;
        auto rows = connection_.query(selectBranch, range(1));
        while (rows.next()) {
            pages.push_back({rows.number("pageId"), rows.text("nodeId"), rows.text("title"),
                             std::string(stateOf(rows)), rows.text("holderName"),
                             rows.number("lockStatus") == 1, rows.number("approveStatus") == 1});
        }
        for (const Standing& page : pages) add("page", page, page.state);
        for (const Standing& page : pages) {
            if (page.isHeld) add("held", page, page.holder);
        }
        for (const Standing& page : pages) {
            if (!page.isApproved && page.state != "live") add("notApproved", page, page.state);
        }
    }
    void addLinks() {
        static const std::string statement = linksStatement();
        addOutside("link", connection_.query(statement, range(rangesOfLinks)));
        addOutside("login", connection_.query(selectLogins, range(rangesOfLogins)));
    }
    void addInside(std::string_view kind, std::string_view statement) {
        auto rows = connection_.query(statement, range(1));
        while (rows.next()) {
            grid_.add({kind, rows.value("pageId"), rows.text("nodeId"), rows.text("title"), 0,
                       rows.text("detail")});
        }
    }
    Value take() { return gridOrEmpty(std::move(grid_)); }

  private:
    std::vector<db::Parameter> range(std::size_t times) const {
        std::vector<db::Parameter> values;
        for (std::size_t i = 0; i < times; ++i) {
            values.insert(values.end(), {std::string_view(begin_), std::string_view(end_)});
        }
        return values;
    }
    void add(std::string_view kind, const Standing& page, const std::string& detail) {
        grid_.add({kind, page.pageId, page.nodeId, page.title, 0, detail});
    }
    /// That there is something is told of pages that the caller may not read, but not which.
    void addOutside(std::string_view kind, db::Rows rows) {
        while (rows.next()) {
            const std::string what = rows.text("what");
            const std::string detail = fmt::format("{}{}{} ({})", what, what.empty() ? "" : ": ",
                                                   rows.text("targetTitle"), rows.text("targetNode"));
            if (readable_.covers(rows.view("nodeId"))) {
                grid_.add({kind, rows.value("pageId"), rows.text("nodeId"), rows.text("title"),
                           rows.value("bodyId"), detail});
            } else {
                grid_.add({kind, 0, "", "", 0, detail});
            }
        }
    }

    db::Connection& connection_;
    const std::string begin_;
    const std::string end_;
    const EditReach& readable_;
    ResultGrid grid_{impactColumns};
};

}  // namespace

Value desk::getImpact(const std::string& pageIdent) try {
    const PageIdentity root = identify(connection(), pageIdent);
    if (!root.isValid()) return {};
    const EditReach readable = designReachOf(connection(), actorOf(host_));
    Impact impact(connection(), root.nodeId, readable);
    impact.addBranch();
    impact.addLinks();
    impact.addInside("entry", selectEntries);
    impact.addInside("exit", selectExits);
    impact.addInside("menu", selectMenus);
    return impact.take();
} catch (...) {
    raiseFrom("getImpact !");
}

}  // namespace torvex
