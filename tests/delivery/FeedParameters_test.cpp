#include "delivery/FeedParameters.h"

#include <gtest/gtest.h>

namespace torvex::feeds {
namespace {

using Pairs = NamedValues;

TEST(FeedParameters, TheVisitorsComeFirstInTheirOrder) {
    EXPECT_EQ(parameters({{"z", "1"}, {"a", "2"}}, "m=3,b=4"),
              (Pairs{{"z", "1"}, {"a", "2"}, {"m", "3"}, {"b", "4"}}));
}

TEST(FeedParameters, AreTrimmed) {
    EXPECT_EQ(parameters({{"a", "  1 2  "}}, "  b = 3 ,  c =  4  "),
              (Pairs{{"a", "1 2"}, {"b", "3"}, {"c", "4"}}));
}

TEST(FeedParameters, AnItemWithoutEqualsIsDropped) {
    EXPECT_EQ(parameters({}, "a,b=1,,c"), (Pairs{{"b", "1"}}));
    EXPECT_EQ(parameters({}, "  "), Pairs{});
    EXPECT_EQ(parameters({}, ","), Pairs{});
}

TEST(FeedParameters, TheFirstEqualsDivides) {
    EXPECT_EQ(parameters({}, "a=b=c,d="), (Pairs{{"a", "b=c"}, {"d", ""}}));
}

TEST(FeedParameters, ANameMayComeFromBoth) {
    EXPECT_EQ(parameters({{"a", "1"}}, "a=2,A=3"), (Pairs{{"a", "1"}, {"a", "2"}, {"A", "3"}}));
}

TEST(FeedParameters, AVisitorsNameSentSeveralTimesIsOneItem) {
    EXPECT_EQ(parameters({{"a", "1"}, {"b", "2"}, {"A", "3"}}, ""), (Pairs{{"a", "1, 3"}, {"b", "2"}}));
}

TEST(ConvertSpecial, EncodesTheRangesAndNothingElse) {
    for (int code = 1; code < 127; ++code) {
        const std::string character(1, static_cast<char>(code));
        const bool special =
            (code >= 33 && code <= 47) || (code >= 58 && code <= 63) || (code >= 123 && code <= 126);
        EXPECT_EQ(convertSpecial(character).size(), special ? 3u : 1u) << code;
        EXPECT_EQ(convertSpecial(character) == character, !special) << code;
    }
}

TEST(ConvertSpecial, WritesUpperCaseHexadecimal) {
    EXPECT_EQ(convertSpecial("/"), "%2F");
    EXPECT_EQ(convertSpecial("{"), "%7B");
    EXPECT_EQ(convertSpecial("!?~"), "%21%3F%7E");
}

TEST(ConvertSpecial, LeavesBlanksBracketsAndLetters) {
    EXPECT_EQ(convertSpecial("a b[_]@^`Z9"), "a b[_]@^`Z9");
    EXPECT_EQ(convertSpecial("caf\u00e9 \u20ac"), "caf\u00e9 \u20ac");
    EXPECT_EQ(convertSpecial(""), "");
}

TEST(QueryText, DividesByAmpersand) {
    EXPECT_EQ(queryText({{"a", "1"}, {"b", "x/y"}}, "c=z"), "a=1&b=x%2Fy&c=z");
    EXPECT_EQ(queryText({}, ""), "");
}

TEST(QueryText, LeavesOutWhatHasNoName) {
    EXPECT_EQ(queryText({{"", "1"}, {"b", "2"}}, "=3,c=4"), "b=2&c=4");
}

TEST(QueryText, KeepsNamesThatOccurTwice) {
    EXPECT_EQ(queryText({{"a", "1"}}, "a=2,a=2"), "a=1&a=2&a=2");
}

TEST(QueryText, WritesBlanksAsPlus) {
    EXPECT_EQ(queryText({{"a b", "c d + e"}}, "f g=h i"), "a+b=c+d+%2B+e&f+g=h+i");
}

TEST(QueryText, AVisitorsNameAddsNoParameter) {
    EXPECT_EQ(queryText({{"x&style", "1"}}, "style=short"), "x%26style=1&style=short");
    EXPECT_EQ(queryText({{"style=long&y", "1"}}, "style=short"), "style%3Dlong%26y=1&style=short");
    EXPECT_EQ(queryText({{"a;b", "1"}, {"c#d", "2"}, {"e%26f", "3"}, {"g+h", "4"}}, ""),
              "a%3Bb=1&c%23d=2&e%2526f=3&g%2Bh=4");
}

TEST(QueryText, TheRegistersNamesStandAsTheyAre) {
    EXPECT_EQ(queryText({}, "a%20b=1,c&d=2,e.f=3"), "a%20b=1&c&d=2&e.f=3");
}

TEST(WithQuery, AddsToTheAddress) {
    EXPECT_EQ(withQuery("http://x/a", "b=1"), "http://x/a?b=1");
    EXPECT_EQ(withQuery("http://x/a?", "b=1"), "http://x/a?b=1");
    EXPECT_EQ(withQuery("http://x/a?c=2", "b=1"), "http://x/a?c=2&b=1");
    EXPECT_EQ(withQuery("http://x/a?c=2?", "b=1"), "http://x/a?c=2?b=1");
}

TEST(WithQuery, AnEmptyTextChangesNothing) {
    EXPECT_EQ(withQuery("http://x/a", ""), "http://x/a");
    EXPECT_EQ(withQuery("http://x/a?", ""), "http://x/a?");
}

}  // namespace
}  // namespace torvex::feeds
