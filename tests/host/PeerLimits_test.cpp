#include "host/PeerLimits.h"

#include <gtest/gtest.h>

namespace torvex {
namespace {

using boost::asio::ip::make_address;

Peer peer(const char* address) {
    return Peer::of(make_address(address));
}

TEST(Peer, IsAnIpv4AddressOrAnIpv6NetworkOfSixtyFourBits) {
    EXPECT_EQ(peer("10.0.0.1"), peer("10.0.0.1"));
    EXPECT_FALSE(peer("10.0.0.1") == peer("10.0.0.2"));
    EXPECT_EQ(peer("10.0.0.1"), peer("::ffff:10.0.0.1"));
    EXPECT_EQ(peer("2001:db8:1:2::1"), peer("2001:db8:1:2:ffff:ffff:ffff:ffff"));
    EXPECT_FALSE(peer("2001:db8:1:2::1") == peer("2001:db8:1:3::1"));
    EXPECT_FALSE(peer("0.0.0.1") == peer("0:0:0:1::"));
}

TEST(PeerLimits, AnAddressHasNoMoreConnectionsThanItMay) {
    PeerLimits limits(2, 1000, 1000);
    EXPECT_TRUE(limits.enter(peer("10.0.0.1")));
    EXPECT_TRUE(limits.enter(peer("10.0.0.1")));
    EXPECT_FALSE(limits.enter(peer("10.0.0.1")));
    EXPECT_TRUE(limits.enter(peer("10.0.0.2")));
    limits.leave(peer("10.0.0.1"));
    EXPECT_TRUE(limits.enter(peer("10.0.0.1")));
    EXPECT_FALSE(limits.enter(peer("10.0.0.1")));
}

TEST(PeerLimits, BodiesAreBoundedTogetherAndForEachAddress) {
    PeerLimits limits(10, 1000, 400);
    EXPECT_TRUE(limits.hold(peer("10.0.0.1"), 400));
    EXPECT_FALSE(limits.hold(peer("10.0.0.1"), 1));
    EXPECT_TRUE(limits.hold(peer("10.0.0.2"), 400));
    EXPECT_TRUE(limits.hold(peer("10.0.0.3"), 200));
    EXPECT_FALSE(limits.hold(peer("10.0.0.3"), 1));
    limits.release(peer("10.0.0.1"), 100);
    EXPECT_TRUE(limits.hold(peer("10.0.0.3"), 100));
    EXPECT_FALSE(limits.hold(peer("10.0.0.1"), 1));
}

}  // namespace
}  // namespace torvex
