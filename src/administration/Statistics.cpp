// cManager: how often a page was viewed, day by day.

#include <algorithm>
#include <chrono>
#include <cmath>
#include <fmt/format.h>
#include <vector>

#include "authoring/cManager.h"
#include "platform/Errors.h"
#include "platform/HostContext.h"
#include "platform/Keys.h"
#include "platform/Session.h"
#include "platform/text/Text.h"
#include "records/DateWindow.h"
#include "records/PageIdentity.h"
#include "templates/HTMLTemplate.h"

namespace torvex {

namespace {

constexpr double labelBeforeMonths = 2800;
/// Of the bar of the day with the most hits, in pixels.
constexpr double widestBar = 145;

constexpr std::string_view selectHits =
    "select yyyy, mm, dd, hits from TORVEX_LOGGING where nodeId = ? and yyyymmdd >= ? and yyyymmdd <= ? "
    "order by yyyymmdd desc";
constexpr std::string_view selectVisitors =
    "select yyyy, mm, dd, uniquehits as hits from TORVEX_LOGGING "
    "where nodeId = ? and yyyymmdd >= ? and yyyymmdd <= ? order by yyyymmdd desc";

/// Before any day.
constexpr std::string_view firstDay = "";

struct Day {
    std::string year;
    std::string month;
    std::string day;
    double hits = 0;
};

std::vector<Day> daysOf(db::Rows rows) {
    std::vector<Day> days;
    while (rows.next()) {
        days.push_back({rows.text("yyyy"), rows.text("mm"), rows.text("dd"), rows.number("hits")});
    }
    return days;
}

/// A date that isn't given whole sets no limit.
std::string limit(const std::string& year, const std::string& month, const std::string& day,
                  std::string_view none) {
    if (year.empty() || month.empty() || day.empty()) return std::string(none);
    return year + month + day;
}

bool isWeekend(const Day& day) {
    const std::chrono::year_month_day date{
        std::chrono::year(static_cast<int>(text::toNumber(day.year))),
        std::chrono::month(static_cast<unsigned>(text::toNumber(day.month))),
        std::chrono::day(static_cast<unsigned>(text::toNumber(day.day)))};
    if (!date.ok()) return false;
    const std::chrono::weekday weekday{std::chrono::sys_days(date)};
    return weekday == std::chrono::Saturday || weekday == std::chrono::Sunday;
}

/// Rounded to the nearest, from the middle to an even number.
std::string widthOf(const Day& day, double most) {
    return text::fromNumber(std::nearbyint(day.hits / most * widestBar));
}

/// The list in the making, by the blocks of the template.
class DayList {
  public:
    DayList(HostContext& host, const HTMLTemplate& page, double most)
        : filled_(host),
          month_(page.extractBlock("month")),
          item_(page.extractBlock("item")),
          total_(page.extractBlock("total")),
          most_(most) {}

    bool isIn(const Day& day) const { return day.month == inMonth_ && day.year == inYear_; }
    void beginMonth(const Day& day, const std::string& name) {
        endMonth();
        inMonth_ = day.month;
        inYear_ = day.year;
        add(month_, {{"month", text::htmlEncode(name + " " + day.year)}});
    }
    void addDay(const Day& day) {
        add(item_, {{"dayType", isWeekend(day) ? "weekend" : "day"},
                    {"day", std::string(text::last("0" + day.day, 2))},
                    {"hits", text::fromNumber(day.hits)},
                    {"width", widthOf(day, most_)}});
        sum_ += day.hits;
    }
    std::string finish() && {
        endMonth();
        return std::move(text_);
    }

  private:
    struct Tag {
        std::string_view name;
        std::string text;
    };

    void endMonth() {
        if (!inYear_.empty()) add(total_, {{"total", text::fromNumber(sum_)}});
        sum_ = 0;
    }
    void add(const std::string& block, std::initializer_list<Tag> tags) {
        filled_.setStrVal(block);
        for (const auto& [name, text] : tags) filled_.replaceTag(name, text);
        text_ += filled_.takeStrVal();
    }

    HTMLTemplate filled_;
    std::string month_;
    std::string item_;
    std::string total_;
    double most_;
    std::string inYear_;  ///< "" before the first month
    std::string inMonth_;
    double sum_ = 0;
    std::string text_;
};

double mostHits(const std::vector<Day>& days) {
    double most = 0;
    for (const Day& day : days) most = std::max(most, day.hits);
    return most;
}

}  // namespace

std::string cManager::statistics(const std::string& pageIdent, const std::string& fromDay,
                                 const std::string& fromMonth, const std::string& fromYear,
                                 const std::string& toDay, const std::string& toMonth,
                                 const std::string& toYear, int statType) try {
    const PageIdentity page = identify(connection(), pageIdent);
    if (!page.isValid()) return {};
    const std::string title = pageTitle(page.pageId, Twin::Live);
    HTMLTemplate report(host_);
    report.load(host_.session.text(sessionKey::adminTemplatesPath) + "statDetail.html");
    const std::string from = limit(fromYear, fromMonth, fromDay, firstDay);
    const std::string to = limit(toYear, toMonth, toDay, lastOfDays);
    const auto days =
        daysOf(connection().query(statType == 0 ? selectVisitors : selectHits, {page.nodeId, from, to}));
    if (days.empty()) return {};
    DayList list(host_, report, mostHits(days));
    for (const Day& day : days) {
        if (day.hits <= 0) continue;
        if (!list.isIn(day)) list.beginMonth(day, getMonth(static_cast<int>(text::toNumber(day.month))));
        list.addDay(day);
    }
    report.replaceBlock("list", std::move(list).finish());
    report.replaceTag("title", text::htmlEncode(title));
    report.removeTags();
    return report.takeStrVal();
} catch (...) {
    raiseFrom("statistics !");
}

std::string cManager::getMonth(int monthId) try {
    const double label = labelBeforeMonths + monthId;
    const std::string name = getVocab(host_.session.text(sessionKey::interfaceLanguage), label);
    return name.empty() ? getVocab("en", label, 1) : name;
} catch (...) {
    raiseFrom("getMonth !");
}

}  // namespace torvex
