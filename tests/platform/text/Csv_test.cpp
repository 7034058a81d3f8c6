#include "platform/text/Csv.h"

#include <gmock/gmock.h>

namespace torvex {
namespace {

using testing::ElementsAre;
using testing::IsEmpty;
using testing::SizeIs;

std::vector<std::string> cellsOf(std::string_view text, char divider = ',') {
    const csv::Table table = csv::read(text, divider);
    EXPECT_EQ(table.openQuote, 0U);
    return table.lines.empty() ? std::vector<std::string>() : table.lines.front().cells;
}

TEST(Csv, CellsAreDividedBySigns) {
    EXPECT_THAT(cellsOf("a,b c, d ,"), ElementsAre("a", "b c", " d ", ""));
    EXPECT_THAT(cellsOf("a;b,c", ';'), ElementsAre("a", "b,c"));
    EXPECT_THAT(cellsOf(","), ElementsAre("", ""));
}

TEST(Csv, QuotesHoldDividersLineEndsAndQuotes) {
    EXPECT_THAT(cellsOf("\"a,b\",\"c\r\nd\",\"say \"\"x\"\"\",\"\""),
                ElementsAre("a,b", "c\r\nd", "say \"x\"", ""));
    EXPECT_THAT(cellsOf("\"\"\"\""), ElementsAre("\""));
}

TEST(Csv, QuotesInsideACellArePartOfIt) {
    EXPECT_THAT(cellsOf("a\"b\",c"), ElementsAre("a\"b\"", "c"));
    EXPECT_THAT(cellsOf("\"a\"b,c"), ElementsAre("ab", "c"));
}

TEST(Csv, LinesEndInThreeWays) {
    const csv::Table table = csv::read("a\nb\r\nc\rd");
    ASSERT_THAT(table.lines, SizeIs(4));
    EXPECT_THAT(table.lines[3].cells, ElementsAre("d"));
    EXPECT_EQ(table.lines[3].number, 4U);
}

TEST(Csv, EmptyLinesAreLeftOutAndCounted) {
    const csv::Table table = csv::read("\n\na\n\nb\n");
    ASSERT_THAT(table.lines, SizeIs(2));
    EXPECT_EQ(table.lines[0].number, 3U);
    EXPECT_EQ(table.lines[1].number, 5U);
    EXPECT_THAT(csv::read("").lines, IsEmpty());
}

TEST(Csv, ALineThatTakesSeveralCountsThem) {
    const csv::Table table = csv::read("\"a\r\nb\nc\",d\ne\n");
    ASSERT_THAT(table.lines, SizeIs(2));
    EXPECT_EQ(table.lines[0].number, 1U);
    EXPECT_EQ(table.lines[1].number, 4U);
}

TEST(Csv, AQuoteThatNothingClosesIsTold) {
    const csv::Table table = csv::read("a,b\nc,\"d\ne,f\n");
    EXPECT_THAT(table.lines, SizeIs(1));
    EXPECT_EQ(table.openQuote, 2U);
    EXPECT_EQ(csv::read("\"").openQuote, 1U);
}

TEST(Csv, TheDividerIsTheCommonestOfTheFirstLine) {
    EXPECT_EQ(csv::dividerOf("a,b,c\n;;;;"), ',');
    EXPECT_EQ(csv::dividerOf("a;b;c"), ';');
    EXPECT_EQ(csv::dividerOf("a\tb"), '\t');
    EXPECT_EQ(csv::dividerOf("\"x,y,z\";b"), ';');
    EXPECT_EQ(csv::dividerOf("a"), ',');
    EXPECT_EQ(csv::dividerOf(""), ',');
}

TEST(Csv, WhatIsWrittenIsReadAgain) {
    const std::vector<std::string> cells{"",   "a",  "a,b",      "a\"b",  "a\nb", "a\rb", " a",
                                         "a ", "\"", "\xC3\xA9", "a;b\t", "\r\n", "a|b"};
    for (const char divider : {',', ';', '\t'})
        EXPECT_EQ(cellsOf(csv::write(cells, divider), divider), cells);
}

TEST(Csv, OnlyWhatMustBeIsQuoted) {
    EXPECT_EQ(csv::write({"a b", "", "c,d", "e\"f"}), "a b,,\"c,d\",\"e\"\"f\"\r\n");
}

}  // namespace
}  // namespace torvex
