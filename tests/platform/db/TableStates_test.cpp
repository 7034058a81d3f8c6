#include "platform/db/TableStates.h"

#include <gtest/gtest.h>

namespace torvex::db {

namespace {

TableSet setOf(std::initializer_list<std::string_view> names) {
    TableSet tables;
    for (const std::string_view name : names) tables.set(tableNumber(name));
    return tables;
}

}  // namespace

TEST(TableStates, ATableHasOneNumberInAnyCase) {
    EXPECT_EQ(tableNumber("torvex_test_one"), tableNumber("TORVEX_Test_One"));
    EXPECT_NE(tableNumber("torvex_test_one"), tableNumber("torvex_test_two"));
}

TEST(TableStates, AgreeOnTablesThatHaveNotChanged) {
    TableStates before;
    before.note("torvex_test_one", 1);
    before.note("torvex_test_two", 5);
    TableStates after = before;
    after.add("torvex_test_two");
    EXPECT_TRUE(before.agreesWith(after, setOf({"torvex_test_one"})));
    EXPECT_FALSE(before.agreesWith(after, setOf({"torvex_test_two"})));
    EXPECT_FALSE(before.agreesWith(after, setOf({"torvex_test_one", "torvex_test_two"})));
}

TEST(TableStates, AgreeOnNothingOfWhichNobodyCounts) {
    TableStates states;
    states.add("torvex_test_one");
    EXPECT_FALSE(states.agreesWith(states, setOf({"torvex_test_one"})));
    EXPECT_TRUE(states.agreesWith(states, {}));
}

TEST(TableStates, AStatementNamesItsTables) {
    EXPECT_EQ(tablesNamedIn("select a.x from TORVEX_ONE a inner join torvex_two b on b.y=a.y"),
              setOf({"TORVEX_ONE", "TORVEX_TWO"}));
    EXPECT_TRUE(tablesNamedIn("select 1").none());
}

TEST(TableStates, NamesOfDesignsCountApart) {
    EXPECT_EQ(tablesNamedIn("select nodeId from TORVEX_PAGES_DESIGN where pageId = ?"),
              setOf({namesOfDesigns}));
    EXPECT_EQ(tablesNamedIn("select nodeId, title from TORVEX_PAGES_DESIGN where pageId = 1"),
              setOf({designs}));
    EXPECT_EQ(countedNumber("torvex_pages_design", "NodeId"), tableNumber(namesOfDesigns));
    EXPECT_EQ(countedNumber("torvex_pages_design", "title"), tableNumber(designs));
}

}  // namespace torvex::db
