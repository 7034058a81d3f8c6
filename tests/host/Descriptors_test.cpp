#include "host/Descriptors.h"

#include <gtest/gtest.h>
#include <sys/resource.h>

namespace torvex {
namespace {

TEST(Descriptors, TheLimitIsRaisedAsFarAsItGoes) {
    rlimit before{};
    ASSERT_EQ(::getrlimit(RLIMIT_NOFILE, &before), 0);
    const rlimit low{256, before.rlim_max};
    ASSERT_EQ(::setrlimit(RLIMIT_NOFILE, &low), 0);
    EXPECT_EQ(descriptorLimit(), 256U);
    raiseDescriptorLimit();
    rlimit after{};
    ::getrlimit(RLIMIT_NOFILE, &after);
    EXPECT_EQ(after.rlim_cur, before.rlim_max);
    ::setrlimit(RLIMIT_NOFILE, &before);
}

TEST(Descriptors, ThereAreNoMoreConnectionsThanTheyAllow) {
    EXPECT_EQ(connectionsWithin(1'000'000, 4096, 64), 4096U);
    EXPECT_EQ(connectionsWithin(1024, 4096, 64), (1024U - 64 - 8 * 64) / 2);
    EXPECT_EQ(connectionsWithin(1024, 100, 64), 100U);
    EXPECT_EQ(connectionsWithin(100, 4096, 64), 16U);
}

}  // namespace
}  // namespace torvex
