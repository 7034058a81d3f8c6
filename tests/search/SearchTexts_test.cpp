#include "search/SearchTexts.h"

#include <gmock/gmock.h>

namespace torvex::test {
namespace {

using ::testing::ElementsAre;
using ::testing::IsEmpty;

TEST(SearchTexts, ListsAreDividedByCommasWithoutTheBlanksAround) {
    EXPECT_THAT(listItems(" a , b c,, d"), ElementsAre("a", "b c", "d"));
    EXPECT_THAT(listItems(""), IsEmpty());
    EXPECT_THAT(listItems(" , ,,"), IsEmpty());
    EXPECT_EQ(joinedList({"a", "b"}), "a,b");
    EXPECT_EQ(joinedList({}), "");
}

TEST(SearchTexts, WhiteSpaceAndControlsOfAnyKindDivideWords) {
    EXPECT_EQ(plainWords("  a \t\n b\r\n\u00A0c\u2003d\u3000e "), "a b c d e");
    EXPECT_EQ(plainWords(std::string("a\0b\x01"
                                     "c\x7F"
                                     "d",
                                     7)),
              "a b c d");
    EXPECT_EQ(plainWords(""), "");
    EXPECT_EQ(plainWords(" \t "), "");
}

TEST(SearchTexts, BytesThatAreNoCharactersDivideWords) {
    EXPECT_EQ(plainWords("a\xFFz\xC3"), "a z");
    EXPECT_EQ(plainWords("\xE2\x82"), "");
}

TEST(SearchTexts, SignsOfQueriesBecomeBlanks) {
    EXPECT_EQ(neutralWords("\"tax\" (rates)* @all $x #filename=<a>'b'"), "tax rates all x filename= a b");
    EXPECT_EQ(neutralWords("été-2026 a.b c_d 100% ünïcode?"), "été-2026 a.b c_d 100% ünïcode?");
    EXPECT_EQ(neutralWords("()\"*"), "");
}

TEST(SearchTexts, ListsOfVisitorsLoseSignsAndBlanks) {
    EXPECT_EQ(neutralList(" Doc Title , all)OR(@x ,a?*b"), "doctitle,allorx,ab");
    EXPECT_EQ(neutralList("AA.bb.01++,aa/001+"), "aa.bb.01++,aa/001+");
}

TEST(SearchTexts, WordsAreSplitAtBlanks) {
    EXPECT_THAT(splitWords(" one  two "), ElementsAre("one", "two"));
    EXPECT_THAT(splitWords(""), IsEmpty());
}

}  // namespace
}  // namespace torvex::test
