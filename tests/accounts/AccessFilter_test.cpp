#include "accounts/AccessFilter.h"

#include <gtest/gtest.h>

namespace torvex {
namespace {

/// What the test leaves of the address: "+" and the address, or "-" and the address when it is refused.
std::string verdict(std::string_view filter, std::string address) {
    const bool passes = passesAccessFilter(filter, address);
    return (passes ? "+" : "-") + address;
}

constexpr std::string_view twoRanges = "10.0.0.1-10.0.0.9,192.168.0.5-192.168.0.9";

TEST(AccessFilter, AnEmptyFilterPassesEverybodyAsTheyAre) {
    EXPECT_EQ(verdict("", "10.0.0.3"), "+10.0.0.3");
    EXPECT_EQ(verdict("", ""), "+");
}

TEST(AccessFilter, AnEmptyAddressPassesNoOtherFilter) {
    EXPECT_EQ(verdict("10.0.0.3", ""), "-");
}

TEST(AccessFilter, AnAddressThatStandsInTheFilterStaysAsItIs) {
    EXPECT_EQ(verdict("10.0.0.1,10.0.0.3", "10.0.0.3"), "+10.0.0.3");
    EXPECT_EQ(verdict(twoRanges, "192.168.0.5"), "+192.168.0.5");
    EXPECT_EQ(verdict("::FFFF:1", "::ffff:1"), "+::ffff:1");
}

TEST(AccessFilter, APartOfALongerAddressInTheFilterPasses) {
    EXPECT_EQ(verdict("110.0.0.30", "10.0.0.3"), "+10.0.0.3");
}

TEST(AccessFilter, TheFirstRangeAdmitsWithItsEnds) {
    EXPECT_EQ(verdict("10.0.0.1-10.0.0.9", "10.0.0.3"), "+010000000003");
    EXPECT_EQ(verdict(twoRanges, "10.0.0.3"), "+010000000003");
    EXPECT_EQ(verdict("10.0.0.01-10.0.0.09", "10.0.0.1"), "+010000000001");
    EXPECT_EQ(verdict("10.0.0.01-10.0.0.09", "10.0.0.9"), "+010000000009");
    EXPECT_EQ(verdict("10.0.0.1-10.0.0.9", "10.0.0.10"), "-010000000010");
}

TEST(AccessFilter, ASingleAddressIsComparedInItsNormalForm) {
    EXPECT_EQ(verdict("010.000.00.7", "10.0.0.7"), "+010000000007");
}

TEST(AccessFilter, LaterRangesAreLostOnShorterAddresses) {
    EXPECT_EQ(verdict(twoRanges, "192.168.0.6"), "-");
    EXPECT_EQ(verdict("10.0.0.1,192.168.0.5-192.168.0.9", "192.168.0.6"), "-");
    EXPECT_EQ(verdict("192.168.0.5-192.168.0.9,10.0.0.1", "192.168.0.6"), "+192168000006");
}

TEST(AccessFilter, FifteenCharactersKeepTheirDotsAgainstBoundsWithout) {
    EXPECT_EQ(verdict("192.168.0.1-192.168.200.1", "192.168.100.100"), "-192.168.100.100");
    // As text, "192." lies between "100" and "200".
    EXPECT_EQ(verdict("100.0.0.0-200.0.0.0", "192.168.100.100"), "+192.168.100.100");
}

TEST(AccessFilter, FifteenCharactersStayAddressesInLaterRanges) {
    EXPECT_EQ(verdict("1.1.1.1,100.0.0.0-200.0.0.0", "192.168.100.100"), "+192.168.100.100");
    EXPECT_EQ(verdict("1.1.1.1,192.168.100.000-192.168.100.200", "192.168.100.100"), "+192.168.100.100");
}

TEST(AccessFilter, BlanksInAnEntryDontMatter) {
    EXPECT_EQ(verdict(" 10.0.0.1 - 10.0.0.9 ", "10.0.0.3"), "+010000000003");
}

TEST(AccessFilter, EntriesThatAreNoRangeHoldNobody) {
    for (const auto* filter : {",", "-", "10.0.0.1-", "-10.0.0.9", "10.0.0.1-10.0.0.5-10.0.0.9", "localhost",
                               "10.0.0.9-10.0.0.1"}) {
        EXPECT_EQ(verdict(filter, "10.0.0.3").front(), '-') << filter;
    }
}

TEST(AccessFilter, WhatIsNoAddressIsRefused) {
    for (const auto* address : {"::1", "somewhere", "10.0.2", "10.0.0.0.3"}) {
        EXPECT_EQ(verdict("10.0.0.1-10.0.0.9", address), "-") << address;
    }
}

// ---- By whole addresses ----

TEST(ExactAccessFilter, AnEmptyFilterPassesEverybody) {
    EXPECT_TRUE(passesExactAccessFilter("", "10.0.0.3"));
    EXPECT_TRUE(passesExactAccessFilter("", ""));
}

TEST(ExactAccessFilter, APartOfAnAddressIsNotTheAddress) {
    EXPECT_TRUE(passesExactAccessFilter("10.0.0.15", "10.0.0.15"));
    EXPECT_FALSE(passesExactAccessFilter("10.0.0.15", "10.0.0.1"));
    EXPECT_FALSE(passesExactAccessFilter("110.0.0.30", "10.0.0.3"));
    EXPECT_FALSE(passesExactAccessFilter("10.0.0.3", ""));
    EXPECT_FALSE(passesExactAccessFilter("10.0.0.3", "."));
}

TEST(ExactAccessFilter, EveryRangeCountsWithItsEnds) {
    for (const auto* inside : {"10.0.0.1", "10.0.0.9", "192.168.0.6", "192.168.0.5"})
        EXPECT_TRUE(passesExactAccessFilter(twoRanges, inside)) << inside;
    for (const auto* outside : {"10.0.0.0", "10.0.0.10", "192.168.0.10", "100.0.0.3"})
        EXPECT_FALSE(passesExactAccessFilter(twoRanges, outside)) << outside;
}

TEST(ExactAccessFilter, AddressesOfFifteenCharactersAreLikeOthers) {
    EXPECT_TRUE(passesExactAccessFilter("192.168.0.1-192.168.200.1", "192.168.100.100"));
    EXPECT_FALSE(passesExactAccessFilter("100.0.0.0-110.0.0.0", "192.168.100.100"));
}

TEST(ExactAccessFilter, BlanksAndLeadingZerosMeanNothing) {
    EXPECT_TRUE(passesExactAccessFilter(" 10.0.0.1 , 010.000.000.007 - 010.000.000.019 ", "10.0.0.8"));
}

TEST(ExactAccessFilter, NetworksHoldWhatBeginsLikeThem) {
    EXPECT_TRUE(passesExactAccessFilter("10.1.0.0/15", "10.1.255.255"));
    EXPECT_TRUE(passesExactAccessFilter("10.0.0.0/15", "10.1.255.255"));
    EXPECT_FALSE(passesExactAccessFilter("10.0.0.0/15", "10.2.0.0"));
    EXPECT_TRUE(passesExactAccessFilter("2001:db8::/32", "2001:db8:ffff::1"));
    EXPECT_FALSE(passesExactAccessFilter("2001:db8::/32", "2001:db9::1"));
    EXPECT_TRUE(passesExactAccessFilter("0.0.0.0/0", "10.2.0.0"));
    EXPECT_FALSE(passesExactAccessFilter("0.0.0.0/0", "2001:db8::1"));
}

TEST(ExactAccessFilter, AddressesOfVersion6AreComparedHoweverTheyAreWritten) {
    EXPECT_TRUE(passesExactAccessFilter("2001:DB8:0::1", "2001:db8::1"));
    EXPECT_TRUE(passesExactAccessFilter("2001:db8::1-2001:db8::ffff", "2001:db8::a0"));
    EXPECT_TRUE(passesExactAccessFilter("10.0.0.1", "::ffff:10.0.0.1"));
    EXPECT_FALSE(passesExactAccessFilter("2001:db8::1", "2001:db8::10"));
}

TEST(ExactAccessFilter, WhatIsNoAddressLetsNobodyIn) {
    for (const auto* filter :
         {"10.0.0", "10.0.0.1.1", "10.0.0.256", "10.0.0.x", "-", "10.0.0.1-", "10.0.0.1-::ffff",
          "10.0.0.0/33", "10.0.0.0/", "/8", "::/129", ",", "10.0.0.0/8/8", "10.0.0.+1"})
        EXPECT_FALSE(passesExactAccessFilter(filter, "10.0.0.1")) << filter;
}

}  // namespace
}  // namespace torvex
