#include "modules/forum/PostRates.h"

#include <gtest/gtest.h>

namespace torvex {
namespace {

using std::chrono::seconds;
const PostRates::Clock::time_point now = PostRates::Clock::now();

TEST(PostRates, ASessionMayPostSoOftenInTenMinutes) {
    PostRates rates({.window = seconds(600), .ofAddress = 100, .ofSession = 3});
    for (int i = 0; i < 3; ++i) EXPECT_TRUE(rates.take("192.0.2." + std::to_string(i), "s", now));
    EXPECT_FALSE(rates.take("192.0.2.9", "s", now + seconds(599)));
    EXPECT_TRUE(rates.take("192.0.2.9", "other", now));
    EXPECT_TRUE(rates.take("192.0.2.9", "s", now + seconds(600)));
}

TEST(PostRates, AnAddressMayPostSoOftenWhateverItsSessions) {
    PostRates rates({.window = seconds(600), .ofAddress = 3, .ofSession = 100});
    for (int i = 0; i < 3; ++i) EXPECT_TRUE(rates.take("192.0.2.1", std::to_string(i), now));
    EXPECT_FALSE(rates.take("192.0.2.1", "new", now));
    EXPECT_TRUE(rates.take("192.0.2.2", "new", now));
}

TEST(PostRates, WhatIsRefusedDoesNotCount) {
    PostRates rates({.window = seconds(600), .ofAddress = 2, .ofSession = 1});
    EXPECT_TRUE(rates.take("192.0.2.1", "a", now));
    for (int i = 0; i < 5; ++i) EXPECT_FALSE(rates.take("192.0.2.1", "a", now));
    EXPECT_TRUE(rates.take("192.0.2.1", "b", now));
}

TEST(PostRates, AHouseholdIsOneAddress) {
    PostRates rates({.window = seconds(600), .ofAddress = 1, .ofSession = 9});
    EXPECT_TRUE(rates.take("2001:db8:1:2::1", "a", now));
    EXPECT_FALSE(rates.take("2001:db8:1:2:ffff::7", "b", now));
    EXPECT_TRUE(rates.take("2001:db8:1:3::1", "b", now));
}

TEST(PostRates, WhatIsOverMakesRoomForOthers) {
    PostRates rates({.window = seconds(600), .ofAddress = 1, .ofSession = 9, .keys = 10});
    for (int i = 1; i <= 4; ++i)
        EXPECT_TRUE(rates.take("192.0.2." + std::to_string(i), std::to_string(i), now));
    EXPECT_TRUE(rates.take("192.0.2.77", "a", now + seconds(300)));
    EXPECT_TRUE(rates.take("192.0.2.5", "5", now + seconds(600)));
    EXPECT_FALSE(rates.take("192.0.2.77", "b", now + seconds(600)));
}

TEST(PostRates, AFloodOfAddressesIsForgottenWithAllElse) {
    PostRates rates({.window = seconds(600), .ofAddress = 1, .ofSession = 9, .keys = 10});
    EXPECT_TRUE(rates.take("192.0.2.77", "a", now));
    EXPECT_FALSE(rates.take("192.0.2.77", "b", now));
    for (int i = 1; i <= 5; ++i)
        EXPECT_TRUE(rates.take("192.0.2." + std::to_string(i), std::to_string(i), now));
    EXPECT_TRUE(rates.take("192.0.2.77", "c", now));
}

}  // namespace
}  // namespace torvex
