// desk: which pages are looked at, which more than before, and which not at all; and when they were published.

#include <fmt/format.h>

#include "desk/TrailSearch.h"
#include "desk/desk.h"
#include "platform/DateTime.h"
#include "platform/Days.h"
#include "platform/Errors.h"
#include "platform/db/Grid.h"
#include "platform/text/Text.h"
#include "records/DateWindow.h"
#include "records/PageIdentity.h"

namespace torvex {

namespace {

constexpr int mostPages = 100;

/// The days of the period and as many before it, added up for each page; what a page is compared by stands behind.
constexpr std::string_view selectViewed =
    "select p.pageId, h.nodeId, p.title, h.views, h.visitors, h.earlier from "
    "(select nodeId, sum(case when yyyymmdd >= ? then hits else 0 end) as views, "
    "sum(case when yyyymmdd >= ? then uniquehits else 0 end) as visitors, "
    "sum(case when yyyymmdd < ? then hits else 0 end) as earlier from TORVEX_LOGGING "
    "where site = ? and lang = ? and yyyymmdd >= ? and yyyymmdd <= ? group by nodeId) h "
    "inner join TORVEX_PAGES_LIVE p on p.nodeId = h.nodeId where ";
constexpr std::string_view byViews = "h.views > 0 order by h.views desc, h.nodeId limit ? offset ?";
constexpr std::string_view byRise =
    "h.views > h.earlier order by h.views - h.earlier desc, h.nodeId limit ? offset ?";
/// Of pages that visitors can see: folders and what belongs to the system aren't.
constexpr std::string_view selectUnread =
    "select p.pageId, p.nodeId, p.title, 0 as views, 0 as visitors, 0 as earlier from TORVEX_PAGES_LIVE p "
    "where p.nodeId >= ? and p.nodeId < ? and p.online = 1 and p.type in ('P', 'A') "
    "and p.nodeId not like '%.99%' and not exists (select 1 from TORVEX_LOGGING h where h.nodeId = p.nodeId "
    "and h.yyyymmdd >= ? and h.yyyymmdd <= ?) order by p.nodeId limit ? offset ?";

constexpr std::string_view countPublished = "select Date, count(*) as pages from TORVEX_AUDIT_TRAIL where ";
constexpr std::string_view byDay = " group by Date order by Date";

constexpr std::string_view earliestDay = "00000000";

std::string_view orIfEmpty(std::string_view day, std::string_view none) {
    return text::trim(day).empty() ? none : text::trim(day);
}

std::chrono::sys_days daysOf(std::string_view day) {
    const auto number = [&](std::size_t at, std::size_t length) {
        return static_cast<int>(text::toNumber(day.substr(at, length)));
    };
    return dayOf({number(0, 4), number(4, 2), number(6, 2)});
}

/// The first of as many days before the period; the period's own where it has no beginning.
std::string beginningBefore(std::string_view from, std::string_view to) {
    if (!isDate8(from) || !isDate8(to) || to < from) return std::string(from);
    const auto days = daysOf(to) - daysOf(from) + std::chrono::days(1);
    return date8(momentOf(daysOf(from) - days));
}

Value viewed(db::Connection& connection, std::string_view order, std::string_view site, std::string_view lang,
             std::string_view from, std::string_view to, int start) {
    const std::string before = beginningBefore(from, to);
    return db::gridOf(connection.query(std::string(selectViewed).append(order),
                                       {from, from, from, site, lang, before, to, mostPages, start}));
}

Value unread(db::Connection& connection, std::string_view site, std::string_view lang, std::string_view from,
             std::string_view to, int start) {
    const std::string root = fmt::format("{}.{}", site, lang);
    return db::gridOf(connection.query(selectUnread, {root, endOfPrefix(root), from, to, mostPages, start}));
}

}  // namespace

Value desk::getPageHits(const std::string& site, const std::string& lang, const std::string& from,
                        const std::string& to, const std::string& kind, int start) try {
    const std::string siteCode = text::lowerTrim(site);
    const std::string langCode = text::lowerTrim(lang);
    const std::string_view first = orIfEmpty(from, earliestDay);
    const std::string_view last = orIfEmpty(to, lastOfDays);
    if (start < 0 || siteCode.empty() || langCode.empty()) return {};
    if (text::equals(text::trim(kind), "best"))
        return viewed(connection(), byViews, siteCode, langCode, first, last, start);
    if (text::equals(text::trim(kind), "rising"))
        return viewed(connection(), byRise, siteCode, langCode, first, last, start);
    if (text::equals(text::trim(kind), "unread"))
        return unread(connection(), siteCode, langCode, first, last, start);
    return {};
} catch (...) {
    raiseFrom("getPageHits !");
}

Value desk::getPublishings(const std::string& scope, const std::string& from, const std::string& to) try {
    const PageIdentity page = identify(connection(), scope);
    if (!page.isValid()) return {};
    std::string filters =
        text::isNumeric(scope) ? "page:" + text::fromNumber(page.pageId) : "branch:" + page.nodeId;
    filters += ",action:publish";
    if (!text::trim(from).empty()) filters += ",from:" + from;
    if (!text::trim(to).empty()) filters += ",to:" + to;
    const auto search = TrailSearch::of(connection(), filters);
    if (!search) return {};
    std::string statement(countPublished);
    statement.append(search->condition()).append(byDay);
    return db::gridOf(connection().query(statement, search->values()));
} catch (...) {
    raiseFrom("getPublishings !");
}

}  // namespace torvex
