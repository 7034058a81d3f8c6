#include "platform/UnixTime.h"

#include <ctime>
#include <gtest/gtest.h>

#include "platform/DateTime.h"

namespace torvex {
namespace {

TEST(UnixTime, OfTheMachinesClockIsTheMachines) {
    const std::time_t before = std::time(nullptr);
    const std::int64_t now = unixSeconds(SystemClock());
    EXPECT_GE(now, before);
    EXPECT_LE(now, std::time(nullptr));
}

TEST(UnixTime, OfAClockThatStandsIsItsCivilTimeHere) {
    std::time_t seconds = unixSeconds(FixedClock(DateTime{2026, 6, 15, 12, 0, 30}));
    std::tm local{};
    localtime_r(&seconds, &local);
    EXPECT_EQ(local.tm_year + 1900, 2026);
    EXPECT_EQ(local.tm_mon + 1, 6);
    EXPECT_EQ(local.tm_mday, 15);
    EXPECT_EQ(local.tm_hour, 12);
    EXPECT_EQ(local.tm_sec, 30);
    EXPECT_EQ(unixSeconds(FixedClock(DateTime{2026, 6, 15, 12, 1, 0})) - seconds, 30);
}

}  // namespace
}  // namespace torvex
