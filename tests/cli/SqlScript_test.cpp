#include "cli/SqlScript.h"

#include <gmock/gmock.h>

namespace torvex::cli {
namespace {

using testing::ElementsAre;
using testing::IsEmpty;

TEST(SqlScript, IsDividedAtSemicolons) {
    EXPECT_THAT(splitStatements("a; b ;c"), ElementsAre("a", "b", "c"));
}

TEST(SqlScript, EmptyStatementsAreLeftOut) {
    EXPECT_THAT(splitStatements(""), IsEmpty());
    EXPECT_THAT(splitStatements(" ;\n; "), IsEmpty());
    EXPECT_THAT(splitStatements("a;;b;"), ElementsAre("a", "b"));
}

TEST(SqlScript, SemicolonInQuotesBelongsToTheStatement) {
    EXPECT_THAT(splitStatements("select ';', \";\"; b"), ElementsAre("select ';', \";\"", "b"));
    EXPECT_THAT(splitStatements("select 'it''s;'; b"), ElementsAre("select 'it''s;'", "b"));
    EXPECT_THAT(splitStatements("select '--;', '/*;'; b"), ElementsAre("select '--;', '/*;'", "b"));
}

TEST(SqlScript, SemicolonInACommentBelongsToTheStatement) {
    EXPECT_THAT(splitStatements("a -- ; '\n+ 1; b"), ElementsAre("a -- ; '\n+ 1", "b"));
    EXPECT_THAT(splitStatements("a /* ; ' */ + 1; b"), ElementsAre("a /* ; ' */ + 1", "b"));
}

TEST(SqlScript, CommentAloneIsNoStatement) {
    EXPECT_THAT(splitStatements("-- a;\n/* b; */;"), IsEmpty());
    EXPECT_THAT(splitStatements("-- first\nselect 1"), ElementsAre("select 1"));
}

TEST(SqlScript, WhatDoesNotEndGoesToTheEnd) {
    EXPECT_THAT(splitStatements("select 'a; b"), ElementsAre("select 'a; b"));
    EXPECT_THAT(splitStatements("select /* a; b"), ElementsAre("select /* a; b"));
}

TEST(SqlScript, FirstWordStandsBehindComments) {
    EXPECT_EQ(firstWord("/* a */ -- b\n COMMIT work"), "commit");
    EXPECT_EQ(firstWord("select"), "select");
    EXPECT_EQ(firstWord("(select 1)"), "");
    EXPECT_EQ(firstWord(""), "");
}

}  // namespace
}  // namespace torvex::cli
