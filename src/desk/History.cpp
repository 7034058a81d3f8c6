// desk: what was done to a page.

#include "desk/desk.h"
#include "platform/DateTime.h"
#include "platform/Errors.h"
#include "platform/text/Text.h"
#include "records/PageIdentity.h"

namespace torvex {

namespace {

constexpr std::string_view selectLines =
    "select Date, time, loginId, loginName, action, description from TORVEX_AUDIT_TRAIL where pageId = ? "
    "order by Date desc, time desc, auditId desc limit ? offset ?";
constexpr int mostLines = 500;
constexpr std::size_t historyColumns = 5;

/// Nothing for a line whose day or time isn't one.
Value momentOf(const std::string& day, const std::string& time) {
    DateTime moment;
    if (!isDate8(day)) return {};
    const std::string iso = day.substr(0, 4) + "-" + day.substr(4, 2) + "-" + day.substr(6, 2) + "T" + time;
    return parseIso(iso, moment) ? Value(moment) : Value();
}

}  // namespace

Value desk::getHistory(const std::string& pageIdent, int from) try {
    const PageId pageId = pageIdFrom(connection(), pageIdent);
    if (pageId <= 0 || from < 0) return {};
    ResultGrid grid(historyColumns);
    auto rows = connection().query(selectLines, {pageId, mostLines, from});
    while (rows.next()) {
        grid.add({momentOf(rows.text("Date"), rows.text("time")), rows.value("loginId"),
                  rows.text("loginName"), rows.text("action"), rows.text("description")});
    }
    return gridOrEmpty(std::move(grid));
} catch (...) {
    raiseFrom("getHistory !");
}

}  // namespace torvex
