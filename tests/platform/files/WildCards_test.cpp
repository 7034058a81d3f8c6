#include "platform/files/WildCards.h"

#include <gtest/gtest.h>

#include "support/MemoryFileSystem.h"

namespace torvex {
namespace {

TEST(WildCards, AreStarAndQuestionMark) {
    EXPECT_TRUE(hasWildCard("a*"));
    EXPECT_TRUE(hasWildCard("?.txt"));
    EXPECT_FALSE(hasWildCard("a.txt"));
    EXPECT_FALSE(hasWildCard(""));
}

TEST(WildCards, AStarStandsForAnyCharacters) {
    for (const auto* pattern : {"*", "*.txt", "a*", "*b*", "a*c.t*t", "**", "abc.txt*"}) {
        EXPECT_TRUE(matchesWildCard("abc.txt", pattern)) << pattern;
    }
    for (const auto* pattern : {"*.doc", "b*", "*bc", "", "a*d*"}) {
        EXPECT_FALSE(matchesWildCard("abc.txt", pattern)) << pattern;
    }
}

TEST(WildCards, AQuestionMarkStandsForOneCharacter) {
    EXPECT_TRUE(matchesWildCard("abc", "a?c"));
    EXPECT_TRUE(
        matchesWildCard("a\xC3\xA9"
                        "c",
                        "a?c"));
    EXPECT_FALSE(matchesWildCard("ac", "a?c"));
    EXPECT_FALSE(matchesWildCard("abbc", "a?c"));
}

TEST(WildCards, StarsTryEveryPlace) {
    EXPECT_TRUE(matchesWildCard("aXbXbY", "a*bY"));
    EXPECT_TRUE(matchesWildCard("aaab", "*aab"));
    EXPECT_FALSE(matchesWildCard("aaa", "*aab"));
}

TEST(WildCards, AnEndingStarIsNoEndingToo) {
    EXPECT_TRUE(matchesWildCard("readme", "*.*"));
    EXPECT_TRUE(matchesWildCard("readme", "read*.*"));
    EXPECT_TRUE(matchesWildCard("readme", "readme.*"));
    EXPECT_FALSE(matchesWildCard("readme", "*.txt"));
    EXPECT_FALSE(matchesWildCard("a.txt", "a.txt.*"));
}

TEST(WildCards, CaseMatters) {
    EXPECT_FALSE(matchesWildCard("a.txt", "*.TXT"));
}

TEST(WildCards, OnlyMatchingFilesOfTheFolderItselfAreDeleted) {
    test::MemoryFileSystem files;
    files.bytes = {{"/in/a.txt", ""}, {"/in/b.txt", ""}, {"/in/c.doc", ""}, {"/in/sub/a.txt", ""}};
    deleteMatchingFiles(files, "/in/", "*.txt");
    EXPECT_EQ(files.bytes.size(), 2U);
    EXPECT_TRUE(files.bytes.contains("/in/c.doc"));
    EXPECT_TRUE(files.bytes.contains("/in/sub/a.txt"));
    deleteMatchingFiles(files, "/in", "*.nothing");
    EXPECT_EQ(files.bytes.size(), 2U);
}

}  // namespace
}  // namespace torvex
