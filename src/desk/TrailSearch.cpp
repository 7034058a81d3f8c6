#include "desk/TrailSearch.h"

#include <algorithm>
#include <fmt/format.h>
#include <set>

#include "platform/DateTime.h"
#include "platform/text/Text.h"
#include "records/DateWindow.h"
#include "records/PageIdentity.h"

namespace torvex {

namespace {

constexpr std::string_view earliestDay = "00000000";

/// Lines that one condition holds for are counted up to here: more are many.
constexpr int many = 20000;

/// What is asked of one column.
struct Wish {
    std::string column;
    std::vector<std::string> values;
    bool isRange = false;
};

/// A condition that an index serves.
std::string leading(const Wish& wish) {
    return wish.isRange ? fmt::format("{0} >= ? and {0} < ?", wish.column) : wish.column + " = ?";
}

/// The same as the way to the lines. A range of nodes is read apart: the embedded engine would rather walk through all
/// days in their order than sort the few lines that it finds by it.
std::string chosen(const Wish& wish) {
    if (!wish.isRange) return leading(wish);
    return "auditId in (select auditId from TORVEX_AUDIT_TRAIL where " + leading(wish) + ")";
}

/// The same, kept from an index: there is a better way to these lines.
std::string following(const Wish& wish) {
    return "case when " + leading(wish) + " then 1 else 0 end = 1";
}

struct Wishes {
    std::vector<Wish> columns;
    std::string from{earliestDay};
    std::string to{lastOfDays};
};

std::vector<std::string_view> partsOf(std::string_view filters) {
    std::vector<std::string_view> parts;
    while (!filters.empty()) {
        const std::size_t end = std::min(filters.find(','), filters.size());
        const std::string_view part = text::trim(filters.substr(0, end));
        if (!part.empty()) parts.push_back(part);
        filters.remove_prefix(std::min(end + 1, filters.size()));
    }
    return parts;
}

bool isWhole(const std::string& number) {
    return !number.empty() && number.size() <= 9 &&
           std::ranges::all_of(number, [](char c) { return c >= '0' && c <= '9'; });
}

std::optional<Wish> wishOf(db::Connection& connection, const std::string& name, const std::string& value) {
    if (name == "login" && isWhole(value)) return Wish{"loginId", {value}};
    if (name == "entry" && isWhole(value)) return Wish{"advId", {value}};
    if (name == "action") return Wish{"action", {value}};
    if (name == "branch" && value.size() <= PageIdentity::longestNode)
        return Wish{"nodeId", {value, endOfPrefix(value)}, true};
    if (name != "page") return std::nullopt;
    const PageId pageId = pageIdFrom(connection, value);
    if (pageId <= 0) return std::nullopt;
    return Wish{"pageId", {text::fromNumber(pageId)}};
}

bool takeFilter(db::Connection& connection, std::string_view filter, Wishes& wishes) {
    const std::size_t colon = filter.find(':');
    if (colon == std::string_view::npos) return false;
    const std::string name = text::lowerTrim(filter.substr(0, colon));
    const std::string value = text::lowerTrim(filter.substr(colon + 1));
    if (value.empty()) return false;
    if (name == "from" || name == "to") {
        if (!isDate8(value)) return false;
        (name == "from" ? wishes.from : wishes.to) = value;
        return true;
    }
    auto wish = wishOf(connection, name, value);
    if (!wish) return false;
    wishes.columns.push_back(std::move(*wish));
    return true;
}

int countOf(db::Connection& connection, const Wish& wish, const Wishes& wishes) {
    const std::string statement =
        "select count(*) as lines from (select 1 as one from TORVEX_AUDIT_TRAIL where " + leading(wish) +
        " and Date >= ? and Date <= ? limit ?) few";
    std::vector<db::Parameter> values(wish.values.begin(), wish.values.end());
    values.insert(values.end(), {std::string_view(wishes.from), std::string_view(wishes.to), many});
    auto rows = connection.query(statement, values);
    return rows.next() ? static_cast<int>(rows.number("lines")) : 0;
}

/// The one that the fewest lines hold for; none when the order of days does better. A range of nodes doesn't come
/// in that order, so that all of its lines would be read.
const Wish* rarest(db::Connection& connection, const Wishes& wishes) {
    const Wish* best = nullptr;
    int fewest = many + 1;
    for (const Wish& wish : wishes.columns) {
        const int lines = countOf(connection, wish, wishes);
        if (lines >= fewest || (wish.isRange && lines >= many)) continue;
        best = &wish;
        fewest = lines;
    }
    return best;
}

}  // namespace

std::optional<TrailSearch> TrailSearch::of(db::Connection& connection, std::string_view filters) {
    Wishes wishes;
    std::set<std::string> seen;
    for (const std::string_view filter : partsOf(filters)) {
        if (!seen.insert(text::lowerTrim(filter.substr(0, filter.find(':')))).second) return std::nullopt;
        if (!takeFilter(connection, filter, wishes)) return std::nullopt;
    }
    TrailSearch search;
    search.condition_ = "Date >= ? and Date <= ?";
    search.values_ = {wishes.from, wishes.to};
    const Wish* first = rarest(connection, wishes);
    for (const Wish& wish : wishes.columns) {
        search.condition_ += " and " + (&wish == first ? chosen(wish) : following(wish));
        search.values_.insert(search.values_.end(), wish.values.begin(), wish.values.end());
    }
    return search;
}

}  // namespace torvex
