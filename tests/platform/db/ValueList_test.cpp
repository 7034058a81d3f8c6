#include "platform/db/ValueList.h"

#include <map>

#include "support/TestDatabase.h"

namespace torvex::test {
namespace {

class ValueListTest : public DatabaseTest {
  protected:
    void SetUp() override {
        DatabaseTest::SetUp();
        connection().execute("create table NUMBERS (n integer)");
        for (int n = 0; n < 100; ++n) connection().execute("insert into NUMBERS (n) values (?)", {n});
    }

    /// How often each row is found.
    std::map<double, int> found(const std::vector<db::Parameter>& values) {
        static const std::string statement =
            "select n from NUMBERS where n in (" + db::placesOfList("?") + ")";
        std::map<double, int> rows;
        db::forEachRow(connection(), statement, values,
                       [&](const db::Rows& row) { ++rows[row.number("n")]; });
        return rows;
    }
};
INSTANTIATE_TEST_SUITE_P(Engines, ValueListTest, bothEngines(), engineName);

TEST_P(ValueListTest, NothingIsAskedForWithoutValues) {
    connection().execute("drop table NUMBERS");
    EXPECT_TRUE(found({}).empty());
}

TEST_P(ValueListTest, EveryValueIsFoundOnceHoweverManyThereAre) {
    for (const int count : {1, 31, 32, 33, 64, 65, 100}) {
        std::vector<db::Parameter> values;
        for (int n = 0; n < count; ++n) values.emplace_back(n);
        const auto rows = found(values);
        EXPECT_EQ(rows.size(), static_cast<std::size_t>(count));
        for (const auto& [n, times] : rows) EXPECT_EQ(times, 1) << n;
    }
}

}  // namespace
}  // namespace torvex::test
