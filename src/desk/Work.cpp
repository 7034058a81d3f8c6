// desk: the pages that wait for somebody, and those that were changed lately.

#include "desk/Work.h"

#include <algorithm>
#include <array>
#include <optional>
#include <span>

#include "accounts/Actor.h"
#include "accounts/EditReach.h"
#include "desk/PageState.h"
#include "desk/ReachCondition.h"
#include "desk/desk.h"
#include "platform/Days.h"
#include "platform/Errors.h"
#include "platform/HostContext.h"
#include "platform/text/Text.h"
#include "records/DateWindow.h"

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

constexpr std::string_view countPages =
    "select count(*) as number from (select d.pageId from TORVEX_PAGES_DESIGN d "
    "where d.site = ? and d.lang = ? and ";

// What waits. Each asks an index for the few pages that it may be, before it looks at any of them.
constexpr std::string_view mine =
    "d.pageId in (select pageId from TORVEX_PAGES_DESIGN where editor = ? and editStatus in ('N', 'M') "
    "union select pageId from TORVEX_PAGES_DESIGN where lockedBy = ? and lockStatus = 1)";
constexpr std::string_view toApprove =
    "d.pageId in (select pageId from TORVEX_PAGES_DESIGN where editStatus = 'M' "
    "union select pageId from TORVEX_PAGES_DESIGN where deleteStatus = 1) "
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

}  // namespace

int numberWaiting(db::Connection& connection, const Actor& actor, std::string_view kind,
                  std::string_view site, std::string_view lang) {
    const auto list = workListOf(kind, actor, Horizon(actor.now));
    const EditReach reach = list ? editReachOf(connection, actor, list->tasks) : EditReach();
    if (reach.isNowhere()) return 0;
    const ReachCondition isReached("d.nodeId", reach);
    std::vector<db::Parameter> values{site, lang};
    isReached.addTo(values);
    values.emplace_back(mostLines);
    std::string statement(countPages);
    statement.append(list->condition).append(" and ").append(isReached.text()).append(" limit ?) waiting");
    auto rows = connection.query(statement, values);
    return rows.next() ? static_cast<int>(rows.number("number")) : 0;
}

Value desk::getWork(const std::string& site, const std::string& lang, const std::string& kind, int from) try {
    const Actor actor = actorOf(host_);
    const Horizon horizon(actor.now);
    const auto list = workListOf(text::trim(kind), actor, horizon);
    if (!list) return {};
    return listed(connection(), actor, *list,
                  {text::lowerTrim(site), text::lowerTrim(lang), from, mostLines});
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
