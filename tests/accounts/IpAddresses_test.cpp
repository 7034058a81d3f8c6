#include "accounts/IpAddresses.h"

#include <gtest/gtest.h>

namespace torvex {
namespace {

TEST(Addresses, AnAddressReadsAsTwelveDigits) {
    EXPECT_EQ(normalizeIp("10.0.0.7"), "010000000007");
    EXPECT_EQ(normalizeIp("255.1.22.3"), "255001022003");
    EXPECT_EQ(normalizeIp("010.000.00.7"), "010000000007");
}

TEST(Addresses, BlanksAreDropped) {
    EXPECT_EQ(normalizeIp(" 10. 0.0 .7 "), "010000000007");
}

TEST(Addresses, FifteenCharactersStayAsTheyAre) {
    EXPECT_EQ(normalizeIp("100.100.100.100"), "100.100.100.100");
    EXPECT_EQ(normalizeIp("not an address?"), "");
    EXPECT_EQ(normalizeIp("notanaddress???"), "notanaddress???");
}

TEST(Addresses, AnythingElseIsNoAddress) {
    for (const auto* text : {"", "10.0.0", "10.0.0.0.0", "10.0.0.", ".10.0.0", "10..0.0", "1000.0.0.0",
                             "a.b.c.d", "10.0.0.x", "::1"}) {
        EXPECT_EQ(normalizeIp(text), "") << text;
    }
}

TEST(Addresses, AnItemHoldsItsOneAddress) {
    EXPECT_TRUE(isInFilterItem("10.0.0.7", "010000000007"));
    EXPECT_FALSE(isInFilterItem("10.0.0.7", "010000000008"));
}

TEST(Addresses, ARangeHoldsItsEnds) {
    EXPECT_TRUE(isInFilterItem("10.0.0.7-10.0.0.9", "010000000007"));
    EXPECT_TRUE(isInFilterItem("10.0.0.7 - 10.0.0.9", "010000000009"));
    EXPECT_FALSE(isInFilterItem("10.0.0.7-10.0.0.9", "010000000010"));
    EXPECT_FALSE(isInFilterItem("10.0.0.9-10.0.0.7", "010000000008"));
}

TEST(Addresses, ARangeWithAnEndThatIsNoAddressHoldsNothing) {
    EXPECT_FALSE(isInFilterItem("10.0.0.7-", "010000000007"));
    EXPECT_FALSE(isInFilterItem("-10.0.0.7", "010000000007"));
    EXPECT_FALSE(isInFilterItem("", "010000000007"));
    EXPECT_FALSE(isInFilterItem("10.0.0.7", ""));
}

}  // namespace
}  // namespace torvex
