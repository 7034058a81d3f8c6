#include "accounts/CheckPlaces.h"

#include <atomic>
#include <gtest/gtest.h>
#include <thread>
#include <vector>

namespace torvex {
namespace {

using namespace std::chrono_literals;

TEST(CheckPlaces, SoManyAreInsideAtOnceAndTheOthersWaitForThem) {
    CheckPlaces places({.atOnce = 3, .waiting = 100, .patience = 20s});
    std::atomic<int> inside = 0;
    std::atomic<int> most = 0;
    std::vector<std::thread> threads;
    for (int i = 0; i < 12; ++i)
        threads.emplace_back([&] {
            ASSERT_TRUE(places.enter(false));
            const int now = ++inside;
            int before = most;
            while (before < now && !most.compare_exchange_weak(before, now)) {
            }
            std::this_thread::sleep_for(5ms);
            --inside;
            places.leave();
        });
    for (auto& thread : threads) thread.join();
    EXPECT_LE(most, 3);
    EXPECT_GE(most, 1);
}

TEST(CheckPlaces, WhoeverWaitsTooLongGetsNone) {
    CheckPlaces places({.atOnce = 1, .patience = 10ms});
    ASSERT_TRUE(places.enter(false));
    EXPECT_FALSE(places.enter(false));
    places.leave();
    EXPECT_TRUE(places.enter(false));
}

TEST(CheckPlaces, WhenManyWaitStrangersAreTurnedAwayBeforeThoseWhoAreKnown) {
    CheckPlaces places({.atOnce = 1, .waiting = 1, .waitingKnown = 2, .patience = 20s});
    ASSERT_TRUE(places.enter(false));
    std::thread first([&] {
        EXPECT_TRUE(places.enter(false));
        places.leave();
    });
    std::this_thread::sleep_for(50ms);  // so that it waits
    EXPECT_FALSE(places.enter(false));
    std::thread known([&] {
        EXPECT_TRUE(places.enter(true));
        places.leave();
    });
    std::this_thread::sleep_for(50ms);
    EXPECT_FALSE(places.enter(true));
    places.leave();
    first.join();
    known.join();
}

}  // namespace
}  // namespace torvex
