// desk: which pages are looked at, which more than before, and which not at all; and when they were published.

#include <fmt/format.h>

#include "desk/FirstRow.h"
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

// A year has thirty times as many days as months, so months are taken whole where they lie within the period; the days
// that are left stand before them and behind them.
constexpr std::string_view ofPeriod =
    "select nodeId, hits as views, uniquehits as visitors, 0 as earlier from ";
constexpr std::string_view ofTimeBefore = "select nodeId, 0 as views, 0 as visitors, hits as earlier from ";
constexpr std::string_view inDays =
    "TORVEX_LOGGING where site = ? and lang = ? and yyyymmdd >= ? and yyyymmdd <= ?";
constexpr std::string_view inMonths =
    "TORVEX_LOGGING_MONTHS where site = ? and lang = ? and yyyymm >= ? and yyyymm <= ?";

/// Those stand between; what a page is compared by stands behind.
constexpr std::string_view selectViewed =
    "select p.pageId, h.nodeId, p.title, h.views, h.visitors, h.earlier from "
    "(select nodeId, sum(views) as views, sum(visitors) as visitors, sum(earlier) as earlier from (";
constexpr std::string_view joinedPages =
    ") parts group by nodeId) h inner join TORVEX_PAGES_LIVE p on p.nodeId = h.nodeId where ";
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
constexpr std::size_t monthLength = 6;

std::string_view orIfEmpty(std::string_view day, std::string_view none) {
    return text::trim(day).empty() ? none : text::trim(day);
}

std::chrono::sys_days daysOf(std::string_view day) {
    const auto number = [&](std::size_t at, std::size_t length) {
        return static_cast<int>(text::toNumber(day.substr(at, length)));
    };
    return dayOf({number(0, 4), number(4, 2), number(6, 2)});
}

std::string dayAfter(std::string_view day, int days) {
    return date8(momentOf(daysOf(day) + std::chrono::days(days)));
}

/// From one to another, both included: days, or months where they have no days.
struct Stretch {
    std::string first;
    std::string last;

    bool isOfMonths() const { return first.size() == monthLength; }
};

std::string monthAfter(std::string_view month, int months) {
    const int number = static_cast<int>(text::toNumber(month.substr(0, 4))) * 12 +
                       static_cast<int>(text::toNumber(month.substr(4))) - 1 + months;
    return fmt::format("{:04}{:02}", number / 12, number % 12 + 1);
}

/// The first month that lies behind the beginning of the period with all of its days.
std::string firstMonth(std::string_view from) {
    const std::string_view month = from.substr(0, monthLength);
    if (from == earliestDay || from.ends_with("01")) return std::string(month);
    return monthAfter(month, 1);
}

std::string lastMonth(std::string_view to) {
    const std::string_view month = to.substr(0, monthLength);
    if (to == lastOfDays || dayAfter(to, 1).substr(0, monthLength) != month) return std::string(month);
    return monthAfter(month, -1);
}

/// No day comes before the day 00 of a month, and none behind its day 99.
std::vector<Stretch> stretchesOf(const Stretch& period) {
    const bool isKnown = (isDate8(period.first) || period.first == earliestDay) &&
                         (isDate8(period.last) || period.last == lastOfDays);
    if (!isKnown) return {period};
    const Stretch months{firstMonth(period.first), lastMonth(period.last)};
    if (months.last < months.first) return {period};
    return {{period.first, months.first + "00"}, months, {months.last + "99", period.last}};
}

/// As many days before the period; none where it has no beginning.
std::vector<Stretch> stretchesBefore(const Stretch& period) {
    if (!isDate8(period.first) || !isDate8(period.last) || period.last < period.first) return {};
    const auto days = daysOf(period.last) - daysOf(period.first) + std::chrono::days(1);
    return stretchesOf({date8(momentOf(daysOf(period.first) - days)), dayAfter(period.first, -1)});
}

/// The statement of the pages that were viewed, and its values.
class Viewed {
  public:
    Viewed(std::string_view site, std::string_view lang, const Stretch& period)
        : site_(site), lang_(lang), period_(stretchesOf(period)), before_(stretchesBefore(period)) {
        for (const Stretch& stretch : period_) add(ofPeriod, stretch);
        for (const Stretch& stretch : before_) add(ofTimeBefore, stretch);
        statement_ += joinedPages;
    }
    Viewed(const Viewed&) = delete;
    Viewed& operator=(const Viewed&) = delete;

    Value list(db::Connection& connection, std::string_view order, int start) && {
        values_.insert(values_.end(), {mostPages, start});
        return db::gridOf(connection.query(statement_.append(order), values_));
    }

  private:
    void add(std::string_view what, const Stretch& stretch) {
        if (!values_.empty()) statement_ += " union all ";
        statement_.append(what).append(stretch.isOfMonths() ? inMonths : inDays);
        values_.insert(values_.end(),
                       {site_, lang_, std::string_view(stretch.first), std::string_view(stretch.last)});
    }

    std::string_view site_;
    std::string_view lang_;
    std::vector<Stretch> period_;
    std::vector<Stretch> before_;
    std::string statement_{selectViewed};
    std::vector<db::Parameter> values_;
};

Value unread(db::Connection& connection, std::string_view site, std::string_view lang, std::string_view from,
             std::string_view to, int start) {
    const std::string root = fmt::format("{}.{}", site, lang);
    return db::gridOf(connection.query(selectUnread, {root, endOfPrefix(root), from, to, mostPages, start}));
}

}  // namespace

Value desk::getPageHits(const std::string& site, const std::string& lang, const std::string& from,
                        const std::string& to, const std::string& kind, double start) try {
    const std::string siteCode = text::lowerTrim(site);
    const std::string langCode = text::lowerTrim(lang);
    const Stretch period{std::string(orIfEmpty(from, earliestDay)), std::string(orIfEmpty(to, lastOfDays))};
    const auto first = firstRow(start);
    if (!first || siteCode.empty() || langCode.empty()) return {};
    if (text::equals(text::trim(kind), "best"))
        return Viewed(siteCode, langCode, period).list(connection(), byViews, *first);
    if (text::equals(text::trim(kind), "rising"))
        return Viewed(siteCode, langCode, period).list(connection(), byRise, *first);
    if (text::equals(text::trim(kind), "unread"))
        return unread(connection(), siteCode, langCode, period.first, period.last, *first);
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
