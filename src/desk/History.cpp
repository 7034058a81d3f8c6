// desk: what was done to a page.

#include "desk/FirstRow.h"
#include "desk/StoredMoment.h"
#include "desk/desk.h"
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

Value momentOf(const db::Rows& row) {
    const auto moment = storedMoment(row.view("Date"), row.view("time"));
    return moment ? Value(*moment) : Value();
}

}  // namespace

Value desk::getHistory(const std::string& pageIdent, double from) try {
    const PageId pageId = pageIdFrom(connection(), pageIdent);
    const auto first = firstRow(from);
    if (pageId <= 0 || !first) return {};
    ResultGrid grid(historyColumns);
    auto rows = connection().query(selectLines, {pageId, mostLines, *first});
    while (rows.next()) {
        grid.add({momentOf(rows), rows.value("loginId"), rows.text("loginName"), rows.text("action"),
                  rows.text("description")});
    }
    return gridOrEmpty(std::move(grid));
} catch (...) {
    raiseFrom("getHistory !");
}

}  // namespace torvex
