#include <chrono>
#include <gtest/gtest.h>
#include <limits>

#include "support/TestHost.h"
#include "support/ThreadTime.h"
#include "templates/HTMLTemplate.h"

namespace torvex {
namespace {

class HtmlTemplateTags : public testing::Test {
  protected:
    HTMLTemplate with(const std::string& text) {
        HTMLTemplate made(host_.context());
        made.setStrVal(text);
        return made;
    }
    std::string replaced(const std::string& buffer, const std::string& text,
                         const std::string& letterCase = "", int count = -1) {
        HTMLTemplate made = with(buffer);
        made.replaceTag("x", text, letterCase, count);
        return made.strVal();
    }
    std::string cleared(const std::string& buffer) {
        HTMLTemplate made = with(buffer);
        made.removeTags();
        return made.strVal();
    }

    test::TestHost host_;
};

TEST_F(HtmlTemplateTags, TagExistsIgnoresCase) {
    EXPECT_TRUE(with("a<!--!X!-->b").tagExists("x"));
    EXPECT_TRUE(with("<!--!é!-->").tagExists("É"));
    EXPECT_FALSE(with("<!--!xy!-->").tagExists("x"));
    EXPECT_FALSE(with("<!--! x!-->").tagExists("x"));
    EXPECT_FALSE(with("").tagExists("x"));
}

TEST_F(HtmlTemplateTags, ReplaceTagFillsEveryPlace) {
    EXPECT_EQ(replaced("<!--!x!-->", "y"), "y");
    EXPECT_EQ(replaced("a<!--!x!-->b<!--!X!-->c<!--!x!-->", "y"), "aybycy");
    EXPECT_EQ(replaced("nothing", "y"), "nothing");
}

TEST_F(HtmlTemplateTags, ReplaceTagWithCountZeroChangesNothing) {
    EXPECT_EQ(replaced("<!--!x!--><!--!x!-->", "y", "", 0), "<!--!x!--><!--!x!-->");
}

TEST_F(HtmlTemplateTags, ReplaceTagWithACountFillsThatManyFromTheStart) {
    EXPECT_EQ(replaced("<!--!x!--><!--!x!--><!--!x!-->", "y", "", 1), "y<!--!x!--><!--!x!-->");
    EXPECT_EQ(replaced("<!--!x!--><!--!x!--><!--!x!-->", "y", "", 2), "yy<!--!x!-->");
    EXPECT_EQ(replaced("<!--!x!--><!--!x!-->", "y", "", 9), "yy");
    EXPECT_EQ(replaced("<!--!x!--><!--!x!-->", "y", "", -7), "yy");
    EXPECT_EQ(replaced("<!--!x!--><!--!x!-->", "y", "", std::numeric_limits<int>::min()), "yy");
}

TEST_F(HtmlTemplateTags, ReplaceTagChangesTheCaseOfTheText) {
    EXPECT_EQ(replaced("<!--!x!-->", "ab É", "u"), "AB É");
    EXPECT_EQ(replaced("<!--!x!-->", "aB é", "U"), "AB É");
    EXPECT_EQ(replaced("<!--!x!-->", "AB É", "l"), "ab é");
    EXPECT_EQ(replaced("<!--!x!-->", "aB", "other"), "aB");
}

TEST_F(HtmlTemplateTags, WhatReplaceTagPutsInIsNotSearchedAgain) {
    EXPECT_EQ(replaced("<!--!x!-->", "<!--!x!-->"), "<!--!x!-->");
    EXPECT_EQ(replaced("<!--!x!--><!--!x!-->", "<!--!x!--><!--!x!-->"),
              "<!--!x!--><!--!x!--><!--!x!--><!--!x!-->");
}

TEST_F(HtmlTemplateTags, ReplaceTagMayTakeTheBufferItself) {
    HTMLTemplate made = with("a<!--!x!-->b");
    made.replaceTag("x", made.strVal());
    EXPECT_EQ(made.strVal(), "aa<!--!x!-->bb");
}

TEST_F(HtmlTemplateTags, ANumberedTagGivesItsNumber) {
    EXPECT_EQ(with("<!--!x_7!-->").iTagExists("X"), 7);
    EXPECT_EQ(with("a<!--!x_12!--><!--!x_3!-->").iTagExists("x"), 12);
    EXPECT_EQ(with("<!--!x_a!--><!--!x_5!-->").iTagExists("x"), 5);
    EXPECT_EQ(with("<!--!x!-->").iTagExists("x"), 0);
    EXPECT_EQ(with("<!--!x_7").iTagExists("x"), 0);
    EXPECT_EQ(with("").iTagExists("x"), 0);
}

TEST_F(HtmlTemplateTags, ANumberNotInPlainFormIsPassedOverUnlessThePlainFormOccurs) {
    EXPECT_EQ(with("<!--!x_07!-->").iTagExists("x"), 0);
    EXPECT_EQ(with("<!--!x_07!--><!--!x_3!-->").iTagExists("x"), 3);
    EXPECT_EQ(with("<!--!x_07!--><!--!x_3!--><!--!x_7!-->").iTagExists("x"), 7);
}

TEST_F(HtmlTemplateTags, ANumberThatNeedsMoreThan16BitsIsPassedOver) {
    EXPECT_EQ(with("<!--!x_32767!-->").iTagExists("x"), 32767);
    EXPECT_EQ(with("<!--!x_32768!--><!--!x_2!-->").iTagExists("x"), 2);
    EXPECT_EQ(with("<!--!x_99999999999999999999!-->").iTagExists("x"), 0);
}

TEST_F(HtmlTemplateTags, ATagInsideANumberedOneIsNotLookedAt) {
    EXPECT_EQ(with("<!--!x_<!--!x_7!-->").iTagExists("x"), 0);
}

TEST_F(HtmlTemplateTags, RemoveTagsTakesEveryMarkerOut) {
    EXPECT_EQ(cleared("a<!--!x!-->b<!--!y_start!-->c<!--!y_end!-->d"), "abcd");
    EXPECT_EQ(cleared("a<!-- a comment -->b"), "a<!-- a comment -->b");
    EXPECT_EQ(cleared(""), "");
}

TEST_F(HtmlTemplateTags, RemoveTagsEndsAMarkerAtTheFirstClosing) {
    EXPECT_EQ(cleared("a<!--!x<!--!y!-->b!-->c"), "ab!-->c");
    EXPECT_EQ(cleared("a<!--!-->b"), "ab");
}

TEST_F(HtmlTemplateTags, AnOpeningWithoutAClosingStaysWithAllThatFollows) {
    EXPECT_EQ(cleared("a<!--!x!-->b<!--!y c<!--!z"), "ab<!--!y c<!--!z");
    EXPECT_EQ(cleared("!--><!--!"), "!--><!--!");
}

TEST_F(HtmlTemplateTags, ThousandsOfPlacesTakeNoSquareTime) {
    std::string text;
    std::string expected;
    for (int i = 0; i < 200'000; ++i) {
        text += "<!--!x!-->.";
        expected += "y.";
    }
    const auto taken = test::threadTimeOf([&] {
        EXPECT_EQ(replaced(text, "y"), expected);
        EXPECT_EQ(cleared(text), std::string(200'000, '.'));
        std::string odd;
        for (int i = 0; i < 100'000; ++i) odd += "<!--!x_0" + std::to_string(i % 30000) + "!-->";
        EXPECT_EQ(with(odd).iTagExists("x"), 0);
    });
    EXPECT_LT(taken, std::chrono::seconds(20));
}

}  // namespace
}  // namespace torvex
