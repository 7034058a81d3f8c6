#include "accounts/GuessThrottle.h"

#include <atomic>
#include <gtest/gtest.h>
#include <thread>
#include <vector>

namespace torvex {
namespace {

using std::chrono::seconds;
using Guess = GuessThrottle::Guess;

const GuessThrottle::Clock::time_point start{std::chrono::hours(1000)};

class GuessThrottleTest : public testing::Test {
  protected:
    /// How many of the tries might be made.
    int fail(const std::string& name, const std::string& network, int times) {
        int made = 0;
        for (int i = 0; i < times; ++i) {
            Guess guess{name, network};
            if (throttle.begin(guess, now).count() == 0) ++made;
        }
        return made;
    }
    /// Fails as often as it may within a time.
    int failFor(const std::string& name, const std::string& network, seconds time) {
        int made = 0;
        for (const auto end = now + time; now < end; now += seconds(1)) made += fail(name, network, 1);
        return made;
    }
    void succeed(const std::string& name, const std::string& network) {
        Guess guess{name, network};
        ASSERT_EQ(throttle.begin(guess, now), seconds(0));
        throttle.succeeded(guess);
    }
    seconds wait(const std::string& name, const std::string& network) {
        return throttle.wait({name, network}, now);
    }

    GuessThrottle throttle;
    GuessThrottle::Clock::time_point now = start;
};

TEST_F(GuessThrottleTest, ANameIsSlowedDownWhereItIsGuessed) {
    EXPECT_EQ(fail("ann", "here", 100), 6);
    EXPECT_EQ(wait("ann", "here"), seconds(2));
}

TEST_F(GuessThrottleTest, NobodyIsLockedOutFromElsewhere) {
    fail("ann", "here", 100);
    EXPECT_EQ(wait("ann", "there"), seconds(0));
    EXPECT_EQ(wait("ben", "here"), seconds(0));
}

TEST_F(GuessThrottleTest, ATryThatHasToWaitIsNotCounted) {
    fail("ann", "here", 100);
    now += seconds(2);
    EXPECT_EQ(wait("ann", "here"), seconds(0));
    EXPECT_EQ(fail("ann", "here", 100), 1);
    EXPECT_EQ(wait("ann", "here"), seconds(4));
}

TEST_F(GuessThrottleTest, TwoHundredTriesAtOnceGainNothing) {
    std::atomic<int> made = 0;
    std::vector<std::thread> threads;
    for (int i = 0; i < 8; ++i)
        threads.emplace_back([&] {
            for (int k = 0; k < 25; ++k) {
                Guess guess{"ann", "here"};
                if (throttle.begin(guess, start).count() == 0) ++made;
            }
        });
    for (auto& thread : threads) thread.join();
    EXPECT_EQ(made, 6);
}

TEST_F(GuessThrottleTest, ARightPasswordForgivesTheNameWhereItWasGiven) {
    fail("ann", "here", 5);
    succeed("ann", "here");
    EXPECT_EQ(fail("ann", "here", 5), 5);
    EXPECT_EQ(wait("ann", "here"), seconds(0));
}

TEST_F(GuessThrottleTest, ManyNamesFromOneNetworkAreSlowedDown) {
    int made = 0;
    for (int i = 0; i < 100; ++i) made += fail("name " + std::to_string(i), "here", 1);
    EXPECT_EQ(made, 21);
    EXPECT_GT(wait("another", "here"), seconds(0));
    EXPECT_EQ(wait("another", "there"), seconds(0));
}

TEST_F(GuessThrottleTest, NobodysNameCountsForTheNetworkAlone) {
    EXPECT_EQ(fail("", "here", 100), 21);
    EXPECT_GT(wait("ann", "here"), seconds(0));
    EXPECT_EQ(wait("", "there"), seconds(0));
}

TEST_F(GuessThrottleTest, ALoginOfOnesOwnForgivesNoGuessesAtOthers) {
    for (int i = 0; i < 20; ++i) {
        fail("name " + std::to_string(i), "here", 1);
        succeed("own", "here");
    }
    fail("name 20", "here", 1);
    EXPECT_GT(wait("another", "here"), seconds(0));
}

TEST_F(GuessThrottleTest, ARightLoginCostsItsNetworkNothing) {
    for (int i = 0; i < 100; ++i) succeed("ann", "here");
    EXPECT_EQ(fail("ben", "here", 6), 6);
    EXPECT_EQ(wait("another", "here"), seconds(0));
}

TEST_F(GuessThrottleTest, OneNameFromManyNetworksIsSlowedDownLate) {
    for (int i = 0; i < 100; ++i) EXPECT_EQ(fail("ann", std::to_string(i), 1), 1);
    EXPECT_EQ(wait("ann", "there"), seconds(0));
    fail("ann", "100", 1);
    EXPECT_EQ(wait("ann", "there"), seconds(2));
    EXPECT_EQ(wait("ben", "there"), seconds(0));
}

TEST_F(GuessThrottleTest, AThousandNetworksGuessOnceAMinute) {
    int made = 0;
    for (int minute = 0; minute < 60; ++minute)
        for (int i = 0; i < 60; ++i, now += seconds(1))
            made += fail("ann", std::to_string(minute * 60 + i), 1);
    EXPECT_LT(made, 100 + 6 + 60);
}

TEST_F(GuessThrottleTest, WhereANameHasLoggedInBeforeStrangersLockItOutInNoWay) {
    succeed("ann", "home");
    for (int i = 0; i < 1000; ++i, now += seconds(1)) fail("ann", std::to_string(i), 1);
    for (int i = 0; i < 100; ++i) fail("name " + std::to_string(i), "home", 1);
    EXPECT_GT(wait("ann", "abroad"), seconds(0));
    EXPECT_GT(wait("ben", "home"), seconds(0));
    EXPECT_EQ(wait("ann", "home"), seconds(0));
}

TEST_F(GuessThrottleTest, ThereItIsStillSlowedDownItself) {
    succeed("ann", "home");
    EXPECT_EQ(fail("ann", "home", 100), 6);
}

TEST_F(GuessThrottleTest, AnHourOfGuessingIsSomeTwentyTries) {
    const int made = failFor("ann", "here", std::chrono::hours(1));
    EXPECT_GT(made, 15);
    EXPECT_LT(made, 30);
}

TEST_F(GuessThrottleTest, WhatTestedNoPasswordIsTakenBack) {
    for (int i = 0; i < 200; ++i) {
        Guess guess{"ann", "here"};
        ASSERT_EQ(throttle.begin(guess, now), seconds(0)) << i;
        throttle.takeBack(guess);
    }
}

TEST(GuessThrottlePlaces, WhereANameIsKnownItWaitsForAPlaceWhenStrangersAreTurnedAway) {
    const std::chrono::seconds patience(20);
    GuessThrottle throttle({.atOnce = {.atOnce = 1, .waiting = 0, .waitingKnown = 1, .patience = patience}});
    const Guess known{"ann", "home"};
    throttle.succeeded(known);
    ASSERT_TRUE(throttle.enter({"ben", "home"}));
    EXPECT_FALSE(throttle.enter({"ben", "home"}));
    EXPECT_FALSE(throttle.enter({"ann", "abroad"}));
    std::thread waiting([&] {
        EXPECT_TRUE(throttle.enter(known));
        throttle.leave();
    });
    std::this_thread::sleep_for(std::chrono::milliseconds(50));  // so that it waits
    throttle.leave();
    waiting.join();
}

}  // namespace
}  // namespace torvex
