#include "modules/forum/Places.h"

#include <gtest/gtest.h>

#include "modules/forum/TreeLines.h"
#include "platform/text/Text.h"

namespace torvex {
namespace {

TEST(ForumPlaces, TheFirstOneBelowATopicOrAReaction) {
    EXPECT_EQ(forumPlace::next("", ""), "01");
    EXPECT_EQ(forumPlace::next("01.02", ""), "01.02.01");
}

TEST(ForumPlaces, TheNextOneStandsBehindTheLastAndAllBelowIt) {
    EXPECT_EQ(forumPlace::next("", "01"), "02");
    EXPECT_EQ(forumPlace::next("", "09.01.07"), "10");
    EXPECT_EQ(forumPlace::next("01", "01.02.05"), "01.03");
}

TEST(ForumPlaces, BehindNinetyNineComeLettersThatSortBehind) {
    EXPECT_EQ(forumPlace::next("", "99"), "A0");
    EXPECT_EQ(forumPlace::next("", "A9"), "AA");
    EXPECT_EQ(forumPlace::next("", "az"), "B0");
    EXPECT_EQ(forumPlace::next("01", "01.ZZ.01"), std::nullopt);
}

TEST(ForumPlaces, EachIsSortedBehindTheOneBefore) {
    std::string last;
    int places = 0;
    while (const auto place = forumPlace::next("", last)) {
        EXPECT_LT(text::compare(last, *place), 0);
        last = *place;
        ++places;
    }
    EXPECT_EQ(places, 1035);
}

TEST(ForumPlaces, BehindWhatIsNoPlaceThereIsNone) {
    EXPECT_EQ(forumPlace::next("", "x"), std::nullopt);
    EXPECT_EQ(forumPlace::next("", "!!"), std::nullopt);
    EXPECT_EQ(forumPlace::next("01", "01."), std::nullopt);
}

TEST(ForumPlaces, BelowTheLastLevelAReactionStandsBesideTheOneThatItAnswers) {
    std::string deep = "01";
    while (levelOf(deep) < forumPlace::mostLevels) {
        EXPECT_EQ(forumPlace::parentFor(deep), deep);
        deep += ".01";
    }
    const auto parent = forumPlace::parentFor(deep);
    EXPECT_EQ(levelOf(parent), forumPlace::mostLevels - 1);
    EXPECT_EQ(parent, deep.substr(0, parent.size()));
    EXPECT_EQ(forumPlace::parentFor(deep + ".01.01"), parent);
}

TEST(ForumPlaces, WhatIsBelowAPlaceBeginsWithIt) {
    EXPECT_TRUE(forumPlace::isBelow("01.02", "01"));
    EXPECT_TRUE(forumPlace::isBelow("01.02.03", "01"));
    EXPECT_FALSE(forumPlace::isBelow("01", "01"));
    EXPECT_FALSE(forumPlace::isBelow("02.01", "01"));
    EXPECT_FALSE(forumPlace::isBelow("011", "01"));
}

}  // namespace
}  // namespace torvex
