#include "accounts/FailureCounts.h"

#include <gtest/gtest.h>

namespace torvex {
namespace {

using std::chrono::milliseconds;
using std::chrono::seconds;

const FailureCounts::Clock::time_point start{std::chrono::hours(1000)};

FailureCounts::Options options(std::size_t keys = 100'000) {
    return {5, seconds(2), seconds(300), seconds(3600), keys};
}

class FailureCountsTest : public testing::Test {
  protected:
    void fail(const std::string& key, int times, FailureCounts::Clock::time_point at = start) {
        for (int i = 0; i < times; ++i) counts.count(key, at);
    }
    seconds wait(const std::string& key, FailureCounts::Clock::time_point at = start) {
        return counts.wait(key, at);
    }

    FailureCounts counts{options()};
};

TEST_F(FailureCountsTest, AnUnknownKeyMayTry) {
    EXPECT_EQ(wait("ann"), seconds(0));
}

TEST_F(FailureCountsTest, TheFirstFailuresAreFree) {
    fail("ann", 5);
    EXPECT_EQ(wait("ann"), seconds(0));
}

TEST_F(FailureCountsTest, EachFurtherFailureDoublesTheWait) {
    fail("ann", 5);
    for (const int expected : {2, 4, 8, 16, 32, 64, 128, 256}) {
        fail("ann", 1);
        EXPECT_EQ(wait("ann"), seconds(expected));
    }
}

TEST_F(FailureCountsTest, TheWaitHasALimit) {
    fail("ann", 1000);
    EXPECT_EQ(wait("ann"), seconds(300));
}

TEST_F(FailureCountsTest, TheWaitIsCountedFromTheLastFailure) {
    fail("ann", 7);
    EXPECT_EQ(wait("ann", start + seconds(1)), seconds(3));
    EXPECT_EQ(wait("ann", start + seconds(4)), seconds(0));
}

TEST_F(FailureCountsTest, APartOfASecondIsAWholeOne) {
    fail("ann", 6);
    EXPECT_EQ(wait("ann", start + milliseconds(1900)), seconds(1));
}

TEST_F(FailureCountsTest, ForgettingAKeyStartsItAnew) {
    fail("ann", 20);
    counts.forget("ann");
    fail("ann", 5);
    EXPECT_EQ(wait("ann"), seconds(0));
}

TEST_F(FailureCountsTest, KeysAreCountedEachForItself) {
    fail("ann", 20);
    EXPECT_EQ(wait("ben"), seconds(0));
    counts.forget("ben");
    EXPECT_EQ(wait("ann"), seconds(300));
}

TEST_F(FailureCountsTest, FailuresAreForgottenAWhileAfterTheLast) {
    fail("ann", 20);
    const auto later = start + seconds(3601);
    fail("ann", 5, later);
    EXPECT_EQ(wait("ann", later), seconds(0));
}

TEST_F(FailureCountsTest, FailuresAreRememberedUntilThen) {
    fail("ann", 6);
    const auto later = start + seconds(3599);
    fail("ann", 1, later);
    EXPECT_EQ(wait("ann", later), seconds(4));
}

TEST_F(FailureCountsTest, WhatIsTakenBackLeavesTheWaitThatWasThere) {
    fail("ann", 8);
    const auto later = start + seconds(2);
    const auto before = counts.count("ann", later);
    counts.takeBack("ann", later, before);
    EXPECT_EQ(wait("ann", later), seconds(6));
}

TEST_F(FailureCountsTest, TakingBackTheOnlyOneForgetsTheKey) {
    const auto before = counts.count("ann", start);
    counts.takeBack("ann", start, before);
    EXPECT_EQ(counts.size(), 0U);
}

TEST_F(FailureCountsTest, TakingBackLeavesAFailureThatCameMeanwhile) {
    fail("ann", 6);
    const auto before = counts.count("ann", start + seconds(1));
    fail("ann", 1, start + seconds(2));
    counts.takeBack("ann", start + seconds(1), before);
    EXPECT_EQ(wait("ann", start + seconds(2)), seconds(4));
}

TEST_F(FailureCountsTest, AFloodOfKeysLeavesThoseThatAreGuessed) {
    counts = FailureCounts(options(100));
    fail("ann", 20);
    for (int i = 0; i < 10'000; ++i) fail("flood " + std::to_string(i), 6);
    EXPECT_EQ(wait("ann"), seconds(300));
    EXPECT_LE(counts.size(), 100U);
}

}  // namespace
}  // namespace torvex
