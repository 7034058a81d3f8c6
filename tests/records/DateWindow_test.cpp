#include "records/DateWindow.h"

#include <gtest/gtest.h>

namespace torvex {
namespace {

TEST(DateWindow, HoldsOnBothItsDays) {
    EXPECT_FALSE(isWithin("20260309", "20260310", "20260312"));
    EXPECT_TRUE(isWithin("20260310", "20260310", "20260312"));
    EXPECT_TRUE(isWithin("20260312", "20260310", "20260312"));
    EXPECT_FALSE(isWithin("20260313", "20260310", "20260312"));
}

TEST(DateWindow, IsOpenOnASideWithoutADay) {
    EXPECT_TRUE(isWithin("20260310", "", ""));
    EXPECT_TRUE(isWithin("20260310", "", "20260310"));
    EXPECT_FALSE(isWithin("20260311", "", "20260310"));
    EXPECT_TRUE(isWithin("20260310", "20260310", ""));
    EXPECT_FALSE(isWithin("20260309", "20260310", ""));
}

TEST(DateWindow, ShowsNoPageThatIsSwitchedOff) {
    EXPECT_TRUE(isOnlineOn("20260310", 1, "", ""));
    EXPECT_FALSE(isOnlineOn("20260310", 0, "", ""));
    EXPECT_FALSE(isOnlineOn("20260310", 1, "20260311", ""));
}

}  // namespace
}  // namespace torvex
