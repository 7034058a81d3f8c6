#include "platform/net/Peer.h"

#include <gtest/gtest.h>

namespace torvex {
namespace {

TEST(NetworkOf, AnAddressOfVersion4IsOne) {
    EXPECT_NE(networkOf("10.0.0.1"), networkOf("10.0.0.2"));
    EXPECT_EQ(networkOf("10.0.0.1"), networkOf("::ffff:10.0.0.1"));
}

TEST(NetworkOf, TheFirstHalfOfAnAddressOfVersion6IsOne) {
    EXPECT_EQ(networkOf("2001:db8:0:7::1"), networkOf("2001:DB8::7:ffff:0:0:1"));
    EXPECT_NE(networkOf("2001:db8:0:7::1"), networkOf("2001:db8:0:8::1"));
    EXPECT_NE(networkOf("::a00:1"), networkOf("10.0.0.1"));
}

TEST(TextOf, AnAddressThatStandsForOneOfVersion4IsWrittenAsThatOne) {
    using boost::asio::ip::make_address;
    EXPECT_EQ(textOf(make_address("::ffff:10.0.0.1")), "10.0.0.1");
    EXPECT_EQ(textOf(make_address("10.0.0.1")), "10.0.0.1");
    EXPECT_EQ(textOf(make_address("2001:DB8::1")), "2001:db8::1");
}

TEST(NetworkOf, WhatIsNoAddressStandsForItself) {
    EXPECT_NE(networkOf("somewhere"), networkOf("elsewhere"));
    EXPECT_EQ(networkOf(""), "");
    EXPECT_LE(networkOf(std::string(100'000, 'x')).size(), 64U);
}

}  // namespace
}  // namespace torvex
