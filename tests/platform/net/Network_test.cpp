#include "platform/net/Network.h"

#include <gtest/gtest.h>

namespace torvex {
namespace {

bool lies(const char* address, const char* network) {
    return Network::parse(network).value().contains(parseAddress(address).value());
}

TEST(Network, IsWhateverBeginsWithTheSameBits) {
    EXPECT_TRUE(lies("10.1.2.3", "10.0.0.0/8"));
    EXPECT_FALSE(lies("11.1.2.3", "10.0.0.0/8"));
    EXPECT_TRUE(lies("192.168.130.1", "192.168.128.0/17"));
    EXPECT_FALSE(lies("192.168.127.1", "192.168.128.0/17"));
    EXPECT_TRUE(lies("2001:db8:1::7", "2001:db8::/32"));
    EXPECT_FALSE(lies("2001:db9::7", "2001:db8::/32"));
    EXPECT_TRUE(lies("8.8.8.8", "0.0.0.0/0"));
    EXPECT_FALSE(lies("2001:db8::1", "0.0.0.0/0"));
}

TEST(Network, OfOneAddressHoldsThatAlone) {
    EXPECT_TRUE(lies("10.0.0.1", "10.0.0.1"));
    EXPECT_FALSE(lies("10.0.0.2", "10.0.0.1"));
    EXPECT_TRUE(lies("::1", "::1/128"));
    EXPECT_FALSE(lies("::2", "::1/128"));
}

TEST(Network, TakesAnAddressOfVersionFourInTheFormOfVersionSixForItself) {
    EXPECT_TRUE(lies("::ffff:10.0.0.1", "10.0.0.0/8"));
    EXPECT_TRUE(lies("10.0.0.1", "::ffff:10.0.0.0/104"));
}

TEST(Network, IsNothingElse) {
    for (const auto* text :
         {"", "10.0.0", "10.0.0.0/", "10.0.0.0/33", "10.0.0.0/-1", "10.0.0.0/8x", "::1/129", "10.0.0.256",
          "localhost", "[::1]", "10.0.0.1:80", "fe80::1%eth0", " 10.0.0.1"})
        EXPECT_FALSE(Network::parse(text)) << text;
}

TEST(Network, AnAddressEndsWhereItsTextDoes) {
    EXPECT_FALSE(parseAddress(std::string_view("10.0.0.1\0x", 10)));
    EXPECT_FALSE(parseAddress(std::string(1000, '1')));
    EXPECT_TRUE(parseAddress(std::string_view("10.0.0.12", 8)));
}

}  // namespace
}  // namespace torvex
