#include "cli/ColumnNames.h"

#include <gtest/gtest.h>

namespace torvex::cli {
namespace {

TEST(ColumnNames, SpellingIsThatOfTheSchema) {
    EXPECT_EQ(ColumnNames().spelled("pageid", "select pageid from TORVEX_PAGES_LIVE"), "pageId");
    EXPECT_EQ(ColumnNames().spelled("tpl_filename", "select * from TORVEX_TEMPLATES"), "tpl_filename");
}

TEST(ColumnNames, TableOfTheStatementDecides) {
    EXPECT_EQ(ColumnNames().spelled("date", "select * from torvex_audit_trail"), "Date");
    EXPECT_EQ(ColumnNames().spelled("date", "select * from TORVEX_LOGINS a"), "date");
}

TEST(ColumnNames, ColumnThatALaterStepAddsIsKnown) {
    EXPECT_EQ(ColumnNames().spelled("passwordhash", "select * from TORVEX_LOGINS"), "passwordHash");
}

TEST(ColumnNames, NameOfTheStatementsOwnGoesBefore) {
    EXPECT_EQ(ColumnNames().spelled("pageid", "select count(*) as PAGEID from TORVEX_PAGES_LIVE"), "PAGEID");
}

TEST(ColumnNames, UnknownNameStaysAsItIs) {
    EXPECT_EQ(ColumnNames().spelled("?column?", "select 1"), "?column?");
    EXPECT_EQ(ColumnNames().spelled("primary", "select 1"), "primary");
}

}  // namespace
}  // namespace torvex::cli
