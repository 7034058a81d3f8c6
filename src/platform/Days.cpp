#include "platform/Days.h"

namespace torvex {

std::chrono::sys_days dayOf(const DateTime& moment) {
    using namespace std::chrono;
    return year(moment.year) / month(static_cast<unsigned>(moment.month)) /
           day(static_cast<unsigned>(moment.day));
}

std::chrono::sys_seconds secondOf(const DateTime& moment) {
    return dayOf(moment) + std::chrono::hours(moment.hour) + std::chrono::minutes(moment.minute) +
           std::chrono::seconds(moment.second);
}

DateTime momentOf(std::chrono::sys_seconds second) {
    const auto day = std::chrono::floor<std::chrono::days>(second);
    const std::chrono::year_month_day date(day);
    const std::chrono::hh_mm_ss time(second - day);
    return {static_cast<int>(date.year()),
            static_cast<int>(static_cast<unsigned>(date.month())),
            static_cast<int>(static_cast<unsigned>(date.day())),
            static_cast<int>(time.hours().count()),
            static_cast<int>(time.minutes().count()),
            static_cast<int>(time.seconds().count())};
}

}  // namespace torvex
