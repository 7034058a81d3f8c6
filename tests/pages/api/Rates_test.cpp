#include "pages/api/Rates.h"

#include <gtest/gtest.h>

namespace torvex::api {
namespace {

using namespace std::chrono_literals;

class ApiRates : public testing::Test {
  protected:
    bool take(const std::string& caller, std::chrono::milliseconds at, const Rate& rate = rate::ofSessions) {
        return rates.take(caller, rate, start + at) == 0s;
    }
    int taken(const std::string& caller, std::chrono::milliseconds at, const Rate& rate = rate::ofSessions) {
        int count = 0;
        while (count < 1000 && take(caller, at, rate)) ++count;
        return count;
    }

    Rates rates;
    const Rates::Clock::time_point start = Rates::Clock::now();
};

TEST_F(ApiRates, ASessionHasAHundredCallsAtOnceAndTwentyASecond) {
    EXPECT_EQ(taken("a", 0ms), 100);
    EXPECT_EQ(taken("a", 1000ms), 20);
    EXPECT_EQ(taken("a", 1050ms), 1);
    EXPECT_EQ(taken("a", 60'000ms), 100);
}

TEST_F(ApiRates, ATokenHasHalfOfThat) {
    EXPECT_EQ(taken("a", 0ms, rate::ofTokens), 50);
    EXPECT_EQ(taken("a", 1000ms, rate::ofTokens), 10);
}

TEST_F(ApiRates, CallersDoNotTakeFromEachOther) {
    EXPECT_EQ(taken("a", 0ms), 100);
    EXPECT_EQ(taken("b", 0ms), 100);
}

TEST_F(ApiRates, TheWaitIsInWholeSeconds) {
    taken("a", 0ms);
    EXPECT_EQ(rates.take("a", rate::ofSessions, start), 1s);
    EXPECT_EQ(rates.take("a", {0.25, 1}, start), 4s);
}

TEST_F(ApiRates, AClockThatGoesBackTakesNothing) {
    EXPECT_TRUE(take("a", 1000ms));
    EXPECT_EQ(taken("a", 0ms), 99);
}

TEST_F(ApiRates, TheNumberOfCallersIsBounded) {
    for (std::size_t i = 0; i < Rates::mostCallers + 100; ++i) take(std::to_string(i), 0ms);
    EXPECT_EQ(rates.callers(), Rates::mostCallers);
    take("late", 60'000ms);
    EXPECT_EQ(rates.callers(), 1U);
}

}  // namespace
}  // namespace torvex::api
