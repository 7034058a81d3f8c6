#include "records/SystemBranch.h"

#include <gtest/gtest.h>

namespace torvex {
namespace {

TEST(SystemBranch, ANodeOfASystemBranchHasItsNumberAndItsDigits) {
    for (const char* node : {"aa.en.99", "aa.en.99.01", "aa.en.01.99.02"}) {
        EXPECT_TRUE(systemBranch::hasNumber(node)) << node;
        EXPECT_TRUE(systemBranch::hasDigits(node)) << node;
    }
    for (const char* node : {"aa.en", "aa.en.01", "aa.en.98.90", "aa.en.09.90", ""}) {
        EXPECT_FALSE(systemBranch::hasNumber(node)) << node;
        EXPECT_FALSE(systemBranch::hasDigits(node)) << node;
    }
}

TEST(SystemBranch, ASiteThatIsNamedByTheDigitsHasThemButNotTheNumber) {
    EXPECT_FALSE(systemBranch::hasNumber("99.en.01"));
    EXPECT_TRUE(systemBranch::hasDigits("99.en.01"));
}

TEST(SystemBranch, ALanguageThatIsNamedByTheDigitsHasBoth) {
    EXPECT_TRUE(systemBranch::hasNumber("aa.99.01"));
    EXPECT_TRUE(systemBranch::hasDigits("aa.99.01"));
}

TEST(SystemBranch, ItsRootEndsInTheNumber) {
    EXPECT_EQ(systemBranch::below("aa.en"), "aa.en.99");
    EXPECT_TRUE(systemBranch::isRoot("aa.en.99"));
    EXPECT_FALSE(systemBranch::isRoot("aa.en.99.01"));
    EXPECT_FALSE(systemBranch::isRoot("aa.en.01"));
}

TEST(SystemBranch, TheNumberIsGivenAwayOnlyBelowANodeThatHasTheDigits) {
    EXPECT_EQ(systemBranch::highestBelow("aa.en.01"), 98);
    EXPECT_EQ(systemBranch::highestBelow("aa.en.99"), 99);
    EXPECT_EQ(systemBranch::highestBelow("99.en"), 99);
}

}  // namespace
}  // namespace torvex
