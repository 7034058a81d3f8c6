#include "accounts/BriefMemory.h"

#include <gtest/gtest.h>
#include <string>

#include "support/TestHost.h"

namespace torvex {
namespace {

constexpr BriefMemory<std::string> names{"test_name", std::chrono::minutes(5)};

class BriefMemoryTest : public testing::Test {
  protected:
    std::string kept() {
        const auto name = names.get(host.context());
        return name ? *name : "";
    }
    void waitUntil(int minute, int second) {
        host.clock = FixedClock(DateTime{2026, 6, 15, 12, minute, second});
    }

    test::TestHost host;
};

TEST_F(BriefMemoryTest, HoldsTheLatestForItsTime) {
    names.keep(host.context(), "Ann");
    names.keep(host.context(), "Bob");
    waitUntil(5, 0);
    EXPECT_EQ(kept(), "Bob");
    waitUntil(5, 1);
    EXPECT_EQ(kept(), "");
}

TEST_F(BriefMemoryTest, WhatChangesGetsNoMoreTime) {
    names.keep(host.context(), "Ann");
    waitUntil(4, 0);
    names.change(host.context(), "Anna");
    EXPECT_EQ(kept(), "Anna");
    waitUntil(5, 1);
    EXPECT_EQ(kept(), "");
}

TEST_F(BriefMemoryTest, WhatIsGoneCannotChange) {
    names.change(host.context(), "nobody");
    EXPECT_EQ(kept(), "");
    names.keep(host.context(), "Ann");
    waitUntil(6, 0);
    names.change(host.context(), "Anna");
    EXPECT_EQ(kept(), "");
}

TEST_F(BriefMemoryTest, IsForgottenWhenItIsNoLongerNeeded) {
    names.keep(host.context(), "Ann");
    names.forget(host.context());
    EXPECT_EQ(kept(), "");
}

TEST_F(BriefMemoryTest, EachKeyHasItsOwn) {
    constexpr BriefMemory<std::string> others{"test_other", std::chrono::minutes(5)};
    names.keep(host.context(), "Ann");
    others.keep(host.context(), "Bob");
    others.forget(host.context());
    EXPECT_EQ(kept(), "Ann");
}

TEST_F(BriefMemoryTest, WhatWasAskedForStaysWithWhoeverHoldsIt) {
    names.keep(host.context(), "Ann");
    const auto held = names.get(host.context());
    names.forget(host.context());
    EXPECT_EQ(*held, "Ann");
}

TEST_F(BriefMemoryTest, IsNoValueOfTheSession) {
    names.keep(host.context(), "Ann");
    EXPECT_TRUE(host.session.get("test_name").isEmpty());
}

}  // namespace
}  // namespace torvex
