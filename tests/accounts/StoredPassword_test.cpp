#include "accounts/StoredPassword.h"

#include <gtest/gtest.h>

namespace torvex {
namespace {

// The expected digits are worked out by hand for the short ones and by a separate script for the long ones.

TEST(StoredPassword, OneLetterGivesItsDigitsTimesGrowingFactors) {
    // "A" is 65 and so is the sum: 6 times 66, 5 times 67.
    EXPECT_EQ(encodePassword("A"), "396335");
}

TEST(StoredPassword, OnlyTheLastTwoDigitsOfTheSumCount) {
    // "AB" is 65 and 66 with the sum 131: 6, 5, 6, 6 times 32 to 35.
    EXPECT_EQ(encodePassword("AB"), "192165204210");
}

TEST(StoredPassword, SumBelowTenIsTakenAsItStands) {
    EXPECT_EQ(encodePassword("\t"), "90");
}

TEST(StoredPassword, CharacterBeyondAsciiCountsWithItsCodePoint) {
    // "É" is 201, the factors begin at 1 + 1.
    EXPECT_EQ(encodePassword("É"), "404");
    EXPECT_EQ(encodePassword("日本"), "10111388626882185");
}

TEST(StoredPassword, LongDigitsAreShrunkToTwentyAtMost) {
    EXPECT_EQ(encodePassword("Secret"), "9514121031514491");
    // "ß" stays one character in capitals.
    EXPECT_EQ(encodePassword("Übergrößenträger"), "86643101077161114");
    EXPECT_EQ(encodePassword("correct horse batter"), "51415611623382349712");
}

TEST(StoredPassword, CaseIsIgnored) {
    EXPECT_EQ(encodePassword("secret"), encodePassword("SECRET"));
    EXPECT_EQ(encodePassword("é"), encodePassword("É"));
}

TEST(StoredPassword, BlanksAroundAreIgnored) {
    EXPECT_EQ(encodePassword("  Secret "), encodePassword("Secret"));
}

TEST(StoredPassword, BlankInsideCounts) {
    EXPECT_NE(encodePassword("Sec ret"), encodePassword("Secret"));
}

TEST(StoredPassword, WhatFollowsTheTwentiethCharacterIsIgnored) {
    EXPECT_EQ(encodePassword("correct horse battery staple"), encodePassword("correct horse batter"));
    EXPECT_NE(encodePassword("correct horse batte"), encodePassword("correct horse batter"));
}

TEST(StoredPassword, EmptyAndBlankGiveNothing) {
    EXPECT_EQ(encodePassword(""), "");
    EXPECT_EQ(encodePassword("   "), "");
}

TEST(StoredPassword, BrokenUtf8GivesSomeDigits) {
    const std::string stored = encodePassword("\xff\xfe");
    EXPECT_FALSE(stored.empty());
    EXPECT_EQ(stored.find_first_not_of("0123456789"), std::string::npos);
}

}  // namespace
}  // namespace torvex
