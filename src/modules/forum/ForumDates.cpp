#include "modules/forum/ForumDates.h"

#include <algorithm>
#include <chrono>
#include <fmt/format.h>

#include "platform/Days.h"

namespace torvex {

std::string shownDay(std::string_view date8) {
    const auto part = [date8](std::size_t from, std::size_t length) {
        return from < date8.size() ? date8.substr(from, length) : std::string_view();
    };
    return fmt::format("{}/{}/{}", part(6, 2), part(4, 2), part(0, 4));
}

std::string dayBefore(const DateTime& moment, double days) {
    using namespace std::chrono;
    constexpr double most = 9000 * 366.0;
    const std::chrono::days back(static_cast<int>(std::clamp(days, -most, most)));
    return date8(momentOf(
        std::clamp(dayOf(moment) - back, sys_days(year(1) / 1 / 1), sys_days(year(9999) / 12 / 31))));
}

}  // namespace torvex
