#include "templates/Markers.h"

#include <chrono>
#include <gtest/gtest.h>

#include "platform/text/Text.h"
#include "support/TestHost.h"
#include "support/ThreadTime.h"
#include "templates/HTMLTemplate.h"

namespace torvex {
namespace {

std::string block(const std::string& name, const std::string& content = "-") {
    return "<!--!" + name + "_start!-->" + content + "<!--!" + name + "_end!-->";
}

class ReplaceAllBlocks : public testing::Test {
  protected:
    std::string replaced(const std::string& buffer, const std::string& tag, const std::string& text = "") {
        HTMLTemplate made(host_.context());
        made.setStrVal(buffer);
        made.replaceAllBlocks(tag, text);
        return made.strVal();
    }

    test::TestHost host_;
};

TEST_F(ReplaceAllBlocks, ReplacesEveryBlockOfTheName) {
    EXPECT_EQ(replaced("0" + block("row") + "1" + block("ROW") + "2", "Row", "x"), "0x1x2");
}

TEST_F(ReplaceAllBlocks, AMissingBlockIsNoError) {
    EXPECT_EQ(replaced("abc", "row", "x"), "abc");
    EXPECT_EQ(replaced("abc", "row_i", "x"), "abc");
    EXPECT_EQ(replaced("", "row_i", "x"), "");
}

TEST_F(ReplaceAllBlocks, AnUnendedBlockStays) {
    EXPECT_EQ(replaced(block("row") + "<!--!row_start!-->y", "row", "x"), "x<!--!row_start!-->y");
    EXPECT_EQ(replaced(block("row") + "<!--!row_start!-->y", "row_i", "x"), "x<!--!row_start!-->y");
}

TEST_F(ReplaceAllBlocks, APlainNameLeavesTheNumberedBlocks) {
    EXPECT_EQ(replaced(block("row") + block("row_1"), "row"), block("row_1"));
}

TEST_F(ReplaceAllBlocks, AFamilyGoesUpToTheFirstMissingNumber) {
    const std::string text =
        "a" + block("row") + "b" + block("row_1") + "c" + block("row_2") + "d" + block("row_4");
    EXPECT_EQ(replaced(text, "row_i"), "abcd" + block("row_4"));
    EXPECT_EQ(replaced(text, "ROW_I", "x"), "axbxcxd" + block("row_4"));
}

TEST_F(ReplaceAllBlocks, AFamilyNeedsNoBlockWithoutANumberAndNoOrder) {
    EXPECT_EQ(replaced(block("row_3") + block("row_1") + "-" + block("row_2") + block("row_1"), "row_i", "x"),
              "xx-xx");
}

TEST_F(ReplaceAllBlocks, AFamilyWithoutTheNumber1StopsThere) {
    EXPECT_EQ(replaced(block("row") + block("row_2"), "row_i"), block("row_2"));
    EXPECT_EQ(replaced(block("row_0") + block("row_01"), "row_i"), block("row_0") + block("row_01"));
}

TEST_F(ReplaceAllBlocks, ANumberThatStandsOnlyInsideAReplacedBlockIsMissing) {
    const std::string text = block("row", block("row_1")) + block("row_2");
    EXPECT_EQ(replaced(text, "row_i"), block("row_2"));
    const std::string inner = block("row_1", block("row_2")) + block("row_3");
    EXPECT_EQ(replaced(inner, "row_i", "x"), "x" + block("row_3"));
}

TEST_F(ReplaceAllBlocks, ALaterNumberMayHoldAnEarlierOne) {
    EXPECT_EQ(replaced("a" + block("row_2", "b" + block("row_1") + "c") + "d", "row_i", "x"), "axd");
}

TEST_F(ReplaceAllBlocks, ABlockWhoseMarkersAreHalfGoneIsNoBlock) {
    // The start of 2 lies inside 1, so its end has none left.
    const std::string text = "<!--!row_1_start!--><!--!row_2_start!--><!--!row_1_end!-->y<!--!row_2_end!-->";
    EXPECT_EQ(replaced(text, "row_i"), "y<!--!row_2_end!-->");
}

TEST_F(ReplaceAllBlocks, WhatIsPutInIsNotSearchedAgain) {
    EXPECT_EQ(replaced(block("row"), "row", block("row")), block("row"));
    EXPECT_EQ(replaced(block("row") + block("row_1"), "row_i", block("row_1", "new")),
              block("row_1", "new") + block("row_1", "new"));
}

TEST_F(ReplaceAllBlocks, ANameThatHoldsTheFamilyMarkFurtherAheadIsPlain) {
    EXPECT_EQ(replaced(block("a_info_i") + block("a_info") + block("a_info_1"), "a_info_i"),
              block("a_info") + block("a_info_1"));
}

TEST_F(ReplaceAllBlocks, MayTakeAPartOfTheBufferItself) {
    HTMLTemplate made(host_.context());
    made.setStrVal("ab" + block("row") + block("row_1"));
    made.replaceAllBlocks("row_i", std::string_view(made.strVal()).substr(0, 2));
    EXPECT_EQ(made.strVal(), "ababab");
}

/// The rule in its plainest form: one number after the other over the whole text.
std::string replacedOneByOne(std::string text, const std::string& name, const std::string& replacement) {
    markers::replaceBlocks(text, name, replacement);
    for (int number = 1;; ++number) {
        const std::string numbered = name + "_" + std::to_string(number);
        if (!markers::findBlock(text, markers::blockStart(numbered), markers::blockEnd(numbered)))
            return text;
        markers::replaceBlocks(text, numbered, replacement);
    }
}

TEST_F(ReplaceAllBlocks, TheFamilyInOnePassAgreesWithOneNumberAfterTheOther) {
    const std::vector<std::string> pieces = {"<!--!r_start!-->",   "<!--!r_end!-->",     "<!--!r_1_start!-->",
                                             "<!--!r_1_end!-->",   "<!--!r_2_start!-->", "<!--!r_2_end!-->",
                                             "<!--!r_3_start!-->", "<!--!r_3_end!-->",   "text"};
    unsigned random = 12345;
    for (int round = 0; round < 20'000; ++round) {
        std::string text;
        for (int piece = 0; piece < 12; ++piece) {
            random = random * 1664525U + 1013904223U;
            text += pieces[(random >> 16U) % pieces.size()];
        }
        ASSERT_EQ(replaced(text, "r_i", "|"), replacedOneByOne(text, "r", "|")) << text;
    }
}

TEST_F(ReplaceAllBlocks, ThousandsOfBlocksTakeNoSquareTime) {
    std::string plain;
    std::string family;
    for (int i = 1; i <= 50'000; ++i) {
        plain += block("row");
        family += block("row_" + std::to_string(i));
    }
    const auto taken = test::threadTimeOf([&] {
        EXPECT_EQ(replaced(plain, "row", "x"), std::string(50'000, 'x'));
        EXPECT_EQ(replaced(family, "row_i", "x"), std::string(50'000, 'x'));
    });
    EXPECT_LT(taken, std::chrono::seconds(20));
}

TEST(Markers, MarkersOfBlocksThatOverlapLeaveNothingBetweenThem) {
    const std::string text = "<!--!x!--><!--!y!-->";
    const auto found = markers::findBlock(text, markers::tag("x!--><!--!y"), markers::tag("y"));
    ASSERT_TRUE(found);
    EXPECT_EQ(found->innerBegin, found->innerEnd);
    EXPECT_EQ(found->end, text.size());
}

TEST(FindMarker, TellsNamesThatBeginAlike) {
    const std::string text = "<!--!torvex_head!--><!--!TORVEX_body!--><!--!torvex_";
    EXPECT_EQ(markers::find(text, "<!--!torvex_body!-->"), 20u);
    EXPECT_EQ(markers::find(text, "<!--!Torvex_Head!-->"), 0u);
    EXPECT_EQ(markers::find(text, "<!--!torvex_foot!-->"), text::npos);
}

TEST(FindMarker, KnowsTheOtherFormsOfALetter) {
    const std::string longS = "<!--!torvex_\u017Fitemap!-->";
    EXPECT_EQ(markers::find("-" + longS, "<!--!torvex_sitemap!-->"), 1u);
    EXPECT_EQ(markers::find("-<!--!torvex_Sitemap!-->", longS), 1u);
}

}  // namespace
}  // namespace torvex
