#include "platform/UnixTime.h"

#include <ctime>

#include "platform/DateTime.h"

namespace torvex {

namespace {

std::int64_t secondsOf(const DateTime& local) {
    std::tm parts{};
    parts.tm_year = local.year - 1900;
    parts.tm_mon = local.month - 1;
    parts.tm_mday = local.day;
    parts.tm_hour = local.hour;
    parts.tm_min = local.minute;
    parts.tm_sec = local.second;
    parts.tm_isdst = -1;
    return std::mktime(&parts);
}

}  // namespace

std::int64_t unixSeconds(const Clock& clock) {
    if (dynamic_cast<const SystemClock*>(&clock)) return std::time(nullptr);
    return secondsOf(clock.now());
}

}  // namespace torvex
