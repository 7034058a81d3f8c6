#include "accounts/GuessThrottle.h"

#include <gtest/gtest.h>
#include <thread>

namespace torvex {
namespace {

using std::chrono::milliseconds;
using std::chrono::seconds;

const GuessThrottle::Clock::time_point start{std::chrono::hours(1000)};

void fail(GuessThrottle& throttle, std::string_view key, int times,
          GuessThrottle::Clock::time_point at = start) {
    for (int i = 0; i < times; ++i) throttle.failed(key, at);
}

TEST(GuessThrottle, AnUnknownKeyMayTry) {
    GuessThrottle throttle;
    EXPECT_EQ(throttle.wait("ann", start), seconds(0));
}

TEST(GuessThrottle, TheFirstFailuresAreFree) {
    GuessThrottle throttle;
    fail(throttle, "ann", 5);
    EXPECT_EQ(throttle.wait("ann", start), seconds(0));
}

TEST(GuessThrottle, TheFailureBehindThemHasToWait) {
    GuessThrottle throttle;
    fail(throttle, "ann", 6);
    EXPECT_EQ(throttle.wait("ann", start), seconds(2));
}

TEST(GuessThrottle, EachFurtherFailureDoublesTheWait) {
    GuessThrottle throttle;
    fail(throttle, "ann", 6);
    for (const int expected : {4, 8, 16, 32, 64, 128, 256}) {
        throttle.failed("ann", start);
        EXPECT_EQ(throttle.wait("ann", start), seconds(expected));
    }
}

TEST(GuessThrottle, TheWaitHasALimit) {
    GuessThrottle throttle;
    fail(throttle, "ann", 1000);
    EXPECT_EQ(throttle.wait("ann", start), seconds(300));
}

TEST(GuessThrottle, TheWaitIsCountedFromTheLastFailure) {
    GuessThrottle throttle;
    fail(throttle, "ann", 7);
    EXPECT_EQ(throttle.wait("ann", start + seconds(1)), seconds(3));
    EXPECT_EQ(throttle.wait("ann", start + seconds(4)), seconds(0));
}

TEST(GuessThrottle, APartOfASecondIsAWholeOne) {
    GuessThrottle throttle;
    fail(throttle, "ann", 6);
    EXPECT_EQ(throttle.wait("ann", start + milliseconds(1900)), seconds(1));
}

TEST(GuessThrottle, ASuccessForgetsTheKey) {
    GuessThrottle throttle;
    fail(throttle, "ann", 20);
    throttle.succeeded("ann");
    EXPECT_EQ(throttle.wait("ann", start), seconds(0));
    fail(throttle, "ann", 5);
    EXPECT_EQ(throttle.wait("ann", start), seconds(0));
}

TEST(GuessThrottle, KeysAreCountedEachForItself) {
    GuessThrottle throttle;
    fail(throttle, "ann", 20);
    EXPECT_EQ(throttle.wait("ben", start), seconds(0));
    throttle.succeeded("ben");
    EXPECT_EQ(throttle.wait("ann", start), seconds(300));
}

TEST(GuessThrottle, FailuresAreForgottenAWhileAfterTheLast) {
    GuessThrottle throttle;
    fail(throttle, "ann", 20);
    const auto later = start + seconds(3601);
    fail(throttle, "ann", 5, later);
    EXPECT_EQ(throttle.wait("ann", later), seconds(0));
}

TEST(GuessThrottle, FailuresAreRememberedUntilThen) {
    GuessThrottle throttle;
    fail(throttle, "ann", 6);
    const auto later = start + seconds(3599);
    throttle.failed("ann", later);
    EXPECT_EQ(throttle.wait("ann", later), seconds(4));
}

TEST(GuessThrottle, AFloodOfKeysLeavesThoseThatHaveToWait) {
    GuessThrottle throttle({.keys = 100});
    fail(throttle, "ann", 20);
    for (int i = 0; i < 1000; ++i) throttle.failed("flood " + std::to_string(i), start);
    EXPECT_EQ(throttle.wait("ann", start), seconds(300));
}

TEST(GuessThrottle, CountsFromManyThreads) {
    GuessThrottle throttle;
    std::vector<std::thread> threads;
    for (int i = 0; i < 4; ++i) threads.emplace_back([&throttle] { fail(throttle, "ann", 2); });
    for (auto& thread : threads) thread.join();
    EXPECT_EQ(throttle.wait("ann", start), seconds(8));
}

}  // namespace
}  // namespace torvex
