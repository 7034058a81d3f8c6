// desk: how often pages were looked at, as numbers for charts.

#include "desk/desk.h"
#include "platform/Errors.h"
#include "platform/text/Text.h"
#include "records/DateWindow.h"
#include "records/PageIdentity.h"

namespace torvex {

namespace {

// Days are "yyyymmdd": their beginnings are months and years.
constexpr std::string_view selectOfPage =
    "select substr(yyyymmdd, 1, cast(? as integer)) as period, sum(hits) as views, "
    "sum(uniquehits) as visitors from TORVEX_LOGGING where nodeId = ? and yyyymmdd >= ? and yyyymmdd <= ? "
    "group by period order by period";
constexpr std::string_view selectOfBranch =
    "select substr(yyyymmdd, 1, cast(? as integer)) as period, sum(hits) as views, "
    "sum(uniquehits) as visitors from TORVEX_LOGGING where nodeId >= ? and nodeId < ? "
    "and yyyymmdd >= ? and yyyymmdd <= ? "
    "group by period order by period";
/// By days, where a branch would be read whole.
constexpr std::string_view selectOfTree =
    "select substr(yyyymmdd, 1, cast(? as integer)) as period, sum(hits) as views, "
    "sum(uniquehits) as visitors from TORVEX_LOGGING where site = ? and lang = ? "
    "and yyyymmdd >= ? and yyyymmdd <= ? "
    "group by period order by period";

constexpr std::string_view firstDay = "00000000";

int digitsOf(std::string_view by) {
    if (text::equals(by, "year")) return 4;
    return text::equals(by, "month") ? 6 : 8;
}

db::Rows hitsOf(db::Connection& connection, const PageIdentity& page, bool isPageAlone, int digits,
                std::string_view from, std::string_view to) {
    const std::string_view node = page.nodeId;
    if (isPageAlone) return connection.query(selectOfPage, {digits, node, from, to});
    if (node.size() == PageIdentity::rootLength) {
        return connection.query(selectOfTree, {digits, siteOf(node), langOf(node), from, to});
    }
    return connection.query(selectOfBranch, {digits, node, endOfPrefix(node), from, to});
}

}  // namespace

Value desk::getHits(const std::string& scope, const std::string& from, const std::string& to,
                    const std::string& by) try {
    const PageIdentity page = identify(connection(), scope);
    if (!page.isValid()) return {};
    const std::string_view first = text::trim(from).empty() ? firstDay : text::trim(from);
    const std::string_view last = text::trim(to).empty() ? lastOfDays : text::trim(to);
    ResultGrid grid(3);
    auto rows = hitsOf(connection(), page, text::isNumeric(scope), digitsOf(text::trim(by)), first, last);
    while (rows.next()) {
        grid.add({rows.text("period"), rows.number("views"), rows.number("visitors")});
    }
    return gridOrEmpty(std::move(grid));
} catch (...) {
    raiseFrom("getHits !");
}

}  // namespace torvex
