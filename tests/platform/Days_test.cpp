#include "platform/Days.h"

#include <gtest/gtest.h>

namespace torvex {
namespace {

using namespace std::chrono_literals;

constexpr DateTime endOfFebruary{2028, 2, 29, 23, 59, 58};

TEST(Days, AMomentComesBackAsItWas) {
    EXPECT_EQ(momentOf(secondOf(endOfFebruary)), endOfFebruary);
}

TEST(Days, SecondsLeadIntoTheNextDay) {
    EXPECT_EQ(momentOf(secondOf(endOfFebruary) + 3s), (DateTime{2028, 3, 1, 0, 0, 1}));
}

TEST(Days, TheDayOfAMomentBeginsAtMidnight) {
    EXPECT_EQ(momentOf(dayOf(endOfFebruary)), (DateTime{2028, 2, 29, 0, 0, 0}));
    EXPECT_EQ(momentOf(dayOf({1960, 3, 1, 12, 0, 0}) - std::chrono::days(1)),
              (DateTime{1960, 2, 29, 0, 0, 0}));
}

}  // namespace
}  // namespace torvex
