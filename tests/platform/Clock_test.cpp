#include <ctime>
#include <gtest/gtest.h>

#include "platform/DateTime.h"

namespace torvex {
namespace {

TEST(Clock, UnixTimeOfTheMachinesClockIsTheMachines) {
    const std::time_t before = std::time(nullptr);
    const std::int64_t now = SystemClock().unixSeconds();
    EXPECT_GE(now, before);
    EXPECT_LE(now, std::time(nullptr));
}

TEST(Clock, UnixTimeOfAClockThatStandsIsItsCivilTimeHere) {
    std::time_t seconds = FixedClock(DateTime{2026, 6, 15, 12, 0, 30}).unixSeconds();
    std::tm local{};
    localtime_r(&seconds, &local);
    EXPECT_EQ(local.tm_year + 1900, 2026);
    EXPECT_EQ(local.tm_mon + 1, 6);
    EXPECT_EQ(local.tm_mday, 15);
    EXPECT_EQ(local.tm_hour, 12);
    EXPECT_EQ(local.tm_sec, 30);
    EXPECT_EQ(FixedClock(DateTime{2026, 6, 15, 12, 1, 0}).unixSeconds() - seconds, 30);
}

}  // namespace
}  // namespace torvex
