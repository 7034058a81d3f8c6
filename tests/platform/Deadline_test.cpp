#include "platform/Deadline.h"

#include <gtest/gtest.h>

#include "platform/Errors.h"

namespace torvex {
namespace {

using namespace std::chrono_literals;

TEST(Deadline, NeverComesAsMade) {
    const Deadline never;
    EXPECT_TRUE(never.isNever());
    EXPECT_FALSE(never.hasPassed());
    EXPECT_GT(never.left(), 1000h);
    EXPECT_NO_THROW(never.check());
}

TEST(Deadline, IsAnErrorOnceItHasPassed) {
    EXPECT_NO_THROW(Deadline::in(1h).check());
    const Deadline passed = Deadline::in(-1ms);
    EXPECT_TRUE(passed.hasPassed());
    EXPECT_LT(passed.left(), 0ms);
    try {
        passed.check();
        FAIL();
    } catch (const Error& error) {
        EXPECT_STREQ(error.what(), "the request took longer than it may");
    }
}

TEST(Deadline, TheEarlierOfTwoCounts) {
    const Deadline soon = Deadline::in(1s);
    const Deadline late = Deadline::in(1h);
    EXPECT_EQ(soon.orEarlier(late).until(), soon.until());
    EXPECT_EQ(late.orEarlier(soon).until(), soon.until());
    EXPECT_EQ(Deadline().orEarlier(soon).until(), soon.until());
}

}  // namespace
}  // namespace torvex
