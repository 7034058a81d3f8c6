#include "pages/PolicyReports.h"

namespace torvex {

namespace {

constexpr unsigned countBits = 32;

std::uint64_t minuteOf(PolicyReports::TimePoint now) {
    const auto minutes = std::chrono::duration_cast<std::chrono::minutes>(now.time_since_epoch()).count();
    return (static_cast<std::uint64_t>(minutes) + 1) << countBits;
}

bool isOf(std::uint64_t minute, std::uint64_t taken) {
    return taken >> countBits == minute >> countBits;
}

std::uint32_t countOf(std::uint64_t taken) {
    return static_cast<std::uint32_t>(taken);
}

}  // namespace

bool PolicyReports::areWanted(TimePoint now) const {
    const std::uint64_t taken = taken_.load(std::memory_order_relaxed);
    return countOf(taken) < mostInMinute || !isOf(minuteOf(now), taken);
}

bool PolicyReports::take(TimePoint now) {
    const std::uint64_t minute = minuteOf(now);
    std::uint64_t taken = taken_.load(std::memory_order_relaxed);
    std::uint64_t next = 0;
    do {
        next = isOf(minute, taken) ? taken + 1 : minute + 1;
        if (countOf(next) > mostInMinute) return false;
    } while (!taken_.compare_exchange_weak(taken, next, std::memory_order_relaxed));
    return true;
}

}  // namespace torvex
