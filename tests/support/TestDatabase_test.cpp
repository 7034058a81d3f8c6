#include "support/TestDatabase.h"

namespace torvex::test {
namespace {

class TestDatabaseTest : public DatabaseTest {};
INSTANTIATE_TEST_SUITE_P(Engines, TestDatabaseTest, bothEngines(), engineName);

TEST_P(TestDatabaseTest, HoldsTheFixedRows) {
    auto rows = connection().query("select name from TORVEX_USERGROUPS where groupId = ?", {1});
    ASSERT_TRUE(rows.next());
    EXPECT_EQ(rows.text("name"), "everybody");
}

TEST_P(TestDatabaseTest, IsFreshForEachTest) {
    EXPECT_EQ(connection().execute("delete from TORVEX_USERGROUPS"), 2);
    const auto other = makeTestDatabase(GetParam());
    auto rows =
        database().open(other->connectionText())->query("select count(*) as found from TORVEX_USERGROUPS");
    ASSERT_TRUE(rows.next());
    EXPECT_EQ(rows.number("found"), 2);
}

}  // namespace
}  // namespace torvex::test
