#include "pages/PolicyReports.h"

#include <gtest/gtest.h>

namespace torvex {
namespace {

using namespace std::chrono_literals;

const PolicyReports::TimePoint start{100min};

TEST(PolicyReports, AFewInAMinuteAreTaken) {
    PolicyReports reports;
    for (std::uint32_t i = 0; i < PolicyReports::mostInMinute; ++i) {
        EXPECT_TRUE(reports.areWanted(start));
        EXPECT_TRUE(reports.take(start)) << i;
    }
    EXPECT_FALSE(reports.areWanted(start));
    EXPECT_FALSE(reports.take(start));
    EXPECT_FALSE(reports.take(start + 59s));
}

TEST(PolicyReports, EachMinuteBeginsAnew) {
    PolicyReports reports;
    while (reports.take(start)) {
    }
    EXPECT_TRUE(reports.areWanted(start + 1min));
    for (std::uint32_t i = 0; i < PolicyReports::mostInMinute; ++i)
        EXPECT_TRUE(reports.take(start + 1min)) << i;
    EXPECT_FALSE(reports.take(start + 1min));
}

}  // namespace
}  // namespace torvex
