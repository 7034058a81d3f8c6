#include "search/catalogue/Words.h"

#include <gmock/gmock.h>

#include "search/catalogue/Sources.h"

namespace torvex::catalogue {
namespace {

using ::testing::ElementsAre;
using ::testing::IsEmpty;

std::vector<std::string> foldedWords(std::string_view text) {
    std::vector<std::string> words;
    for (const Word& word : wordsOf(text)) words.push_back(word.folded);
    return words;
}

TEST(Words, AreLettersAndDigitsThatStandTogether) {
    EXPECT_THAT(foldedWords("It's 4711, e-mail; snake_case (x)"),
                ElementsAre("it", "s", "4711", "e", "mail", "snake", "case", "x"));
    EXPECT_THAT(foldedWords(""), IsEmpty());
    EXPECT_THAT(foldedWords(" .,-& "), IsEmpty());
}
TEST(Words, LoseCaseAndAccents) {
    EXPECT_THAT(foldedWords("\xC3\x89t\xC3\xA9 e\xCC\x81t\xC3\xA9 \xC3\x86on Stra\xC3\x9F"
                            "e \xC3\x98l"),
                ElementsAre("ete", "ete", "aeon", "strasse", "ol"));
    EXPECT_THAT(foldedWords("\xD0\x9C\xD0\xBE\xD1\x81\xD0\xBA\xD0\xB2\xD0\xB0"),
                ElementsAre("\xD0\xBC\xD0\xBE\xD1\x81\xD0\xBA\xD0\xB2\xD0\xB0"));
}
TEST(Words, SignsOfUndividedWritingsAreWordsOfTheirOwn) {
    const auto words = wordsOf(
        "ab\xE6\x9D\xB1\xE4\xBA\xAC"
        "1");
    ASSERT_EQ(words.size(), 4);
    EXPECT_FALSE(words[0].isSign);
    EXPECT_TRUE(words[1].isSign);
    EXPECT_TRUE(words[2].isSign);
    EXPECT_EQ(words[1].end, words[2].begin);
    EXPECT_EQ(words[3].folded, "1");
}
TEST(Words, KeepTheVowelsOfIndianWritings) {
    EXPECT_THAT(foldedWords("\xE0\xA4\x95\xE0\xA4\xBF \xE0\xA4\x95\xE0\xA5\x81"),
                ElementsAre("\xE0\xA4\x95\xE0\xA4\xBF", "\xE0\xA4\x95\xE0\xA5\x81"));
}
TEST(Words, SayWhereTheyStand) {
    const auto words = wordsOf(" \xC3\xA9t\xC3\xA9!");
    ASSERT_EQ(words.size(), 1);
    EXPECT_EQ(words[0].begin, 1);
    EXPECT_EQ(words[0].end, 6);
}
TEST(Words, BrokenBytesDivide) {
    EXPECT_THAT(foldedWords("a\xFF"
                            "b\xC3"),
                ElementsAre("a", "b"));
}
TEST(Words, AreCutWhereTheyAreTooLong) {
    const auto words = foldedWords(std::string(1000, 'a') + " \xC3\xA9");
    EXPECT_THAT(words, ElementsAre(std::string(longestWord, 'a'), "e"));
}
TEST(Words, ACutTakesNoCharacterApart) {
    EXPECT_EQ(cut("a\xC3\xA9", 2), "a");
    EXPECT_EQ(cut("a\xC3\xA9", 3), "a\xC3\xA9");
    EXPECT_EQ(cut("\xC3\xA9", 1), "");
}

TEST(Patterns, StandForWhatTheySay) {
    EXPECT_TRUE(matchesPattern("ab.en.01.html", "ab.en.01*.html"));
    EXPECT_TRUE(matchesPattern("ab.en.01.html", "*"));
    EXPECT_TRUE(matchesPattern("ab.en.01.02.html", "ab.en.01.??.html"));
    EXPECT_FALSE(matchesPattern("ab.en.01.html", "ab.en.01.??.html"));
    EXPECT_FALSE(matchesPattern("ab.en.01.html", "ab.en.01"));
    EXPECT_TRUE(matchesPattern("\xC3\xA9.pdf", "?.pdf"));
    EXPECT_TRUE(matchesPattern("aXbXc", "a*X*c"));
    EXPECT_FALSE(matchesPattern("", "?"));
    EXPECT_TRUE(matchesPattern("", "**"));
    EXPECT_FALSE(matchesPattern(std::string(255, 'a'), "*a*a*a*a*a*a*a*a*a*b"));
}

}  // namespace
}  // namespace torvex::catalogue
