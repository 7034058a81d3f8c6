// desk: the pages that wait for somebody, and those that were changed lately.

#include "desk/Work.h"

#include <algorithm>
#include <array>
#include <optional>
#include <span>

#include "accounts/Actor.h"
#include "accounts/EditReach.h"
#include "accounts/EditScope.h"
#include "desk/FirstRow.h"
#include "desk/PageState.h"
#include "desk/ReachCondition.h"
#include "desk/desk.h"
#include "platform/Days.h"
#include "platform/Errors.h"
#include "platform/HostContext.h"
#include "platform/text/Text.h"
#include "records/DateWindow.h"
#include "records/PageIdentity.h"

namespace torvex {

namespace {

constexpr int mostLines = 500;
constexpr int mostRecent = 200;
constexpr std::chrono::days aheadOfDates{14};

constexpr std::string_view selectPages =
    "select d.pageId, d.site, d.lang, d.nodeId, d.title, l.title as liveTitle, d.type, d.editStatus, "
    "d.deleteStatus, d.approveStatus, e.name as editorName, d.editingDate, d.lockStatus, "
    "h.name as holderName, d.lockingDate, l.onlineFrom, l.onlineTo "
    "from TORVEX_PAGES_DESIGN d left outer join TORVEX_PAGES_LIVE l on l.pageId = d.pageId "
    "left outer join TORVEX_LOGINS e on e.loginId = d.editor "
    "left outer join TORVEX_LOGINS h on h.loginId = d.lockedBy and d.lockStatus = 1 "
    "where (? = '' or d.site = ?) and (? = '' or d.lang = ?) and ";
constexpr std::size_t pageColumns = 14;

// Each pulse of each author counts: the pages that wait have indexes of their own, of which these read nothing but
// the pages counted. A branch is a statement, since SQLite would take another index for several of them.
constexpr std::string_view countPages =
    "select count(*) as number from (select d.pageId from TORVEX_PAGES_DESIGN d "
    "where d.site = ? and d.lang = ? and ";
constexpr std::string_view inBranch = " and d.nodeId >= ? and d.nodeId < ?";
constexpr std::string_view countLimit = " limit ?) waiting";

// What waits. Each asks an index for the few pages that it may be, before it looks at any of them; what can be
// approved or published now is to the letter what its index is of.
constexpr std::string_view mine =
    "d.pageId in (select pageId from TORVEX_PAGES_DESIGN where editor = ? and editStatus in ('N', 'M') "
    "union select pageId from TORVEX_PAGES_DESIGN where lockedBy = ? and lockStatus = 1)";
constexpr std::string_view toApprove =
    "(d.editStatus = 'M' or d.deleteStatus = 1) "
    "and coalesce(d.approveStatus, 0) = 0 and coalesce(d.lockStatus, 0) = 0";
constexpr std::string_view toPublish = "d.approveStatus = 1 and coalesce(d.lockStatus, 0) = 0";
constexpr std::string_view marked = "d.deleteStatus = 1";
// Folders and what lies in the system branch never come on line.
constexpr std::string_view dated =
    "d.pageId in (select pageId from TORVEX_PAGES_LIVE where onlineFrom > ? and onlineFrom <= ? "
    "union select pageId from TORVEX_PAGES_LIVE where onlineTo >= ? and onlineTo <= ?) "
    "and l.online = 1 and l.type <> 'F' and l.nodeId not like '%99%'";

constexpr std::string_view byNode = " order by d.nodeId";
constexpr std::string_view latestFirst = " order by d.editingDate desc, d.nodeId";
constexpr std::string_view latestOfAllFirst = " order by d.editingDate desc, d.pageId desc";

constexpr std::array anyTask = editTasks;
constexpr std::array approveTask{EditTask::Approve};
constexpr std::array publishTask{EditTask::Publish};

/// One of the lists: who may see what of it, and in which order.
struct WorkList {
    std::string_view condition;
    std::vector<db::Parameter> values;
    std::span<const EditTask> tasks;
    std::string_view order = byNode;
};

/// The days within which dates count.
struct Horizon {
    explicit Horizon(const DateTime& now)
        : today(date8(now)), last(date8(momentOf(dayOf(now) + aheadOfDates))) {}

    std::string today;
    std::string last;
};

/// Nothing for a kind that there isn't. Views the horizon.
std::optional<WorkList> workListOf(std::string_view kind, const Actor& actor, const Horizon& horizon) {
    if (text::equals(kind, "mine"))
        return WorkList{mine, {actor.loginId, actor.loginId}, anyTask, latestFirst};
    if (text::equals(kind, "approve")) return WorkList{toApprove, {}, approveTask};
    if (text::equals(kind, "publish")) return WorkList{toPublish, {}, publishTask};
    if (text::equals(kind, "marked")) return WorkList{marked, {}, anyTask};
    if (!text::equals(kind, "dates")) return std::nullopt;
    const std::string_view today = horizon.today;
    const std::string_view last = horizon.last;
    return WorkList{dated, {today, last, today, last}, anyTask};
}

/// A day that limits nothing is none.
std::string_view dayOrNone(std::string_view day) {
    return day == "00000000" || day == lastOfDays ? std::string_view() : day;
}

std::vector<Value> lineOf(const db::Rows& row) {
    const bool isHeld = row.number("lockStatus") == 1;
    return {row.value("pageId"),
            row.text("site"),
            row.text("lang"),
            row.text("nodeId"),
            row.text("title"),
            row.text("liveTitle"),
            row.text("type"),
            stateOf(row),
            row.text("editorName"),
            row.value("editingDate"),
            row.text("holderName"),
            isHeld ? row.value("lockingDate") : Value(),
            dayOrNone(row.view("onlineFrom")),
            dayOrNone(row.view("onlineTo"))};
}

/// A part of a list.
struct Part {
    std::string site;  ///< "" for all
    std::string lang;
    int from = 0;
    int number = 0;
};

Value listed(db::Connection& connection, const Actor& actor, const WorkList& list, const Part& part) {
    const EditReach reach = editReachOf(connection, actor, list.tasks);
    if (reach.isNowhere() || part.from < 0 || part.number < 1) return {};
    const ReachCondition isReached("d.nodeId", reach);
    const std::string_view site = part.site;
    const std::string_view lang = part.lang;
    std::vector<db::Parameter> values{site, site, lang, lang};
    values.insert(values.end(), list.values.begin(), list.values.end());
    isReached.addTo(values);
    values.insert(values.end(), {part.number, part.from});
    std::string statement(selectPages);
    statement.append(list.condition).append(" and ").append(isReached.text());
    statement.append(list.order).append(" limit ? offset ?");
    ResultGrid grid(pageColumns);
    auto rows = connection.query(statement, values);
    while (rows.next()) grid.add(lineOf(rows));
    return gridOrEmpty(std::move(grid));
}

/// The nodes of the reach in one tree that lie in no other one of it.
std::vector<std::string> branchesOf(const EditReach& reach, const std::string& root) {
    std::vector<std::string> branches;
    for (const std::string& node : reach.nodes)
        if (node.starts_with(root)) branches.push_back(node);
    return outermost(std::move(branches));
}

/// One of the lists in a site and language.
class Counter {
  public:
    Counter(db::Connection& connection, std::string_view condition, std::string_view site,
            std::string_view lang)
        : connection_(connection), condition_(condition), site_(site), lang_(lang) {}

    void countAll() { add("", {site_, lang_, mostLines}); }
    void countBranch(const std::string& node) {
        if (number_ == mostLines) return;
        const std::string end = endOfPrefix(node);
        add(inBranch, {site_, lang_, std::string_view(node), std::string_view(end), mostLines - number_});
    }
    int number() const { return number_; }

  private:
    void add(std::string_view place, db::Parameters values) {
        std::string statement(countPages);
        statement.append(condition_).append(place).append(countLimit);
        auto rows = connection_.query(statement, values);
        if (rows.next()) number_ += static_cast<int>(rows.number("number"));
    }

    db::Connection& connection_;
    std::string_view condition_;
    std::string_view site_;
    std::string_view lang_;
    int number_ = 0;
};

}  // namespace

int numberWaiting(db::Connection& connection, const Actor& actor, std::string_view kind,
                  std::string_view site, std::string_view lang) {
    const bool isToApprove = text::equals(kind, "approve");
    const EditReach reach = isToApprove ? editReachOf(connection, actor, approveTask)
                                        : editReachOf(connection, actor, publishTask);
    Counter counter(connection, isToApprove ? toApprove : toPublish, site, lang);
    if (reach.isEverywhere) counter.countAll();
    for (const std::string& node : branchesOf(reach, text::lower(site) + "." + text::lower(lang))) {
        counter.countBranch(node);
    }
    return counter.number();
}

Value desk::getWork(const std::string& site, const std::string& lang, const std::string& kind,
                    double from) try {
    const Actor actor = actorOf(host_);
    const Horizon horizon(actor.now);
    const auto list = workListOf(text::trim(kind), actor, horizon);
    const auto first = firstRow(from);
    if (!list || !first) return {};
    return listed(connection(), actor, *list,
                  {text::lowerTrim(site), text::lowerTrim(lang), *first, mostLines});
} catch (...) {
    raiseFrom("getWork !");
}

Value desk::getRecent(const std::string& site, const std::string& lang, int number) try {
    const WorkList list{"d.editingDate is not null", {}, anyTask, latestOfAllFirst};
    return listed(connection(), actorOf(host_), list,
                  {text::lowerTrim(site), text::lowerTrim(lang), 0, std::min(number, mostRecent)});
} catch (...) {
    raiseFrom("getRecent !");
}

}  // namespace torvex
