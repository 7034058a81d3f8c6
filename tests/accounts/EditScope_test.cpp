#include "accounts/EditScope.h"

#include <gtest/gtest.h>
#include <string>

namespace torvex {
namespace {

TEST(EditScope, CoversItsNodesAndWhatLiesUnderThem) {
    EXPECT_TRUE(scopeCovers("aa.en.01", "aa.en.01"));
    EXPECT_TRUE(scopeCovers("aa.en.01,aa.en.02", "aa.en.02.07.11"));
    EXPECT_TRUE(scopeCovers("aa.en", "aa.en.99.01"));
}

TEST(EditScope, DoesNotCoverWhatLiesAboveOrBeside) {
    EXPECT_FALSE(scopeCovers("aa.en.01", "aa.en"));
    EXPECT_FALSE(scopeCovers("aa.en.01", "aa.en.02"));
    EXPECT_FALSE(scopeCovers("aa.en.01.02", "aa.en.01.03"));
    EXPECT_FALSE(scopeCovers("aa.en.0", "aa.en.01"));
    EXPECT_FALSE(scopeCovers("", "aa.en.01"));
}

TEST(EditScope, IgnoresCaseBlanksAndNeedlessCommas) {
    EXPECT_TRUE(scopeCovers(" , AA.en .01 ,, ", " aa.EN.01.02 "));
}

TEST(EditScope, CoversNothingShorterThanARoot) {
    EXPECT_FALSE(scopeCovers("aa.e", "aa.e"));
    EXPECT_FALSE(scopeCovers(",,", ""));
    EXPECT_FALSE(scopeCovers("éééé", "éééé"));
}

TEST(EditScope, CutsCharactersNotBytes) {
    EXPECT_TRUE(scopeCovers("éé.en", "ÉÉ.EN.é1"));
}

TEST(EditScope, IsNotWalkedForATextThatIsNoNode) {
    EXPECT_FALSE(scopeCovers("aa.en", "aa.en" + std::string(3'000'000, '1')));
}

TEST(EditScope, ReachesTheWholeTreeWhereNoNodeIsNamed) {
    for (const auto* scope : {"", "  ", "All", " ALL "}) {
        EXPECT_TRUE(scopeReaches(scope, "aa.en.01")) << scope;
        EXPECT_EQ(reachInTree("aa.en", scope), std::vector<std::string>{"aa.en"}) << scope;
    }
    EXPECT_FALSE(scopeReaches("aa.en.02", "aa.en.01"));
}

TEST(EditScope, ReachesNothingInATreeByNodesOfAnother) {
    const std::vector<std::string> nodes{"aa.en.01", "aa.en"};
    EXPECT_EQ(reachInTree("aa.en", "AA.en.01, aa.de.01,,aa.en,aa.enx"), nodes);
    EXPECT_TRUE(reachInTree("aa.en", "aa.de").empty());
}

TEST(EditScope, HasNoNodeBelowAnother) {
    const std::vector<std::string> kept{"aa.en.01", "aa.en.02.01"};
    EXPECT_EQ(outermost({"aa.en.02.01", "aa.en.01.07", "aa.en.01", "aa.en.01.07.02", "aa.en.02.01"}), kept);
    EXPECT_TRUE(outermost({}).empty());
}

}  // namespace
}  // namespace torvex
