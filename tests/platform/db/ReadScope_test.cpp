// Stretches of reading that are like each other, as the requests for one page are.

#include <vector>

#include "support/TestDatabase.h"

namespace torvex::db {
namespace {

using Names = std::vector<std::string>;

class ReadScopeTest : public test::DatabaseTest {
  protected:
    void SetUp() override {
        DatabaseTest::SetUp();
        if (HasFatalFailure()) return;
        connection().executeScript("create table Thing (id bigint primary key, name varchar(20))");
        for (int id = 1; id <= 5; ++id)
            connection().execute("insert into Thing (id, name) values (?, ?)",
                                 {id, std::string_view(std::to_string(id))});
    }

    std::string nameOf(int id) {
        auto rows = connection().query("select name from Thing where id = ?", {id});
        return rows.next() ? rows.text("name") : "none";
    }
    Names read(const std::vector<int>& ids) {
        const ReadScope oneState(connection());
        Names names;
        for (const int id : ids) names.push_back(nameOf(id));
        return names;
    }
    void rename(int id, std::string_view name) {
        openAnother()->execute("update Thing set name = ? where id = ?", {name, id});
    }
};
INSTANTIATE_TEST_SUITE_P(Engines, ReadScopeTest, test::bothEngines(), test::engineName);

TEST_P(ReadScopeTest, ReadsWhatHasChangedSinceOneLikeIt) {
    read({1, 2, 3});
    rename(2, "new");
    EXPECT_EQ(read({1, 2, 3}), (Names{"1", "new", "3"}));
}

TEST_P(ReadScopeTest, IsOfOneStateWhateverOneLikeItHasAsked) {
    read({1, 2});
    const ReadScope oneState(connection());
    EXPECT_EQ(nameOf(1), "1");
    rename(2, "new");
    rename(3, "new");
    EXPECT_EQ(nameOf(2), "2");
    EXPECT_EQ(nameOf(3), "3");
}

TEST_P(ReadScopeTest, MayAskOtherThingsThanOneLikeIt) {
    read({1, 2, 3});
    EXPECT_EQ(read({1, 3, 2, 2, 4, 1}), (Names{"1", "3", "2", "2", "4", "1"}));
    EXPECT_EQ(read({1}), Names{"1"});
    EXPECT_EQ(read({1, 9}), (Names{"1", "none"}));
}

TEST_P(ReadScopeTest, TellsTextsAndNullsApart) {
    const auto ask = [&](Parameter asked) {
        const ReadScope oneState(connection());
        nameOf(1);
        auto rows =
            connection().query("select count(*) as n from Thing where name = ? or name = ''", {asked});
        return rows.next() ? rows.number("n") : -1;
    };
    connection().execute("update Thing set name = '' where id = 5");
    connection().execute("update Thing set name = 'null' where id = 4");
    EXPECT_EQ(ask(std::string_view("null")), 2);
    EXPECT_EQ(ask(nullptr), 1);
    EXPECT_EQ(ask(std::string_view("")), 1);
    EXPECT_EQ(ask(std::string_view("null")), 2);
}

TEST_P(ReadScopeTest, IsLeftByATransactionThatFollows) {
    read({1, 2});
    {
        Transaction transaction(connection());
        connection().execute("update Thing set name = 'mine' where id = 1");
        transaction.commit();
    }
    EXPECT_EQ(read({1, 2}), (Names{"mine", "2"}));
}

TEST_P(ReadScopeTest, MayBeEmpty) {
    { const ReadScope nothing(connection()); }
    EXPECT_EQ(nameOf(1), "1");
}

TEST_P(ReadScopeTest, HoldsNoTransaction) {
    const ReadScope oneState(connection());
    EXPECT_THROW(connection().begin(), DatabaseError);
}

TEST_P(ReadScopeTest, IsNotHinderedByATableThatOneLikeItRead) {
    connection().executeScript("create table Other (id bigint)");
    {
        const ReadScope oneState(connection());
        nameOf(1);
        connection().query("select id from Other");
    }
    openAnother()->executeScript("drop table Other");
    EXPECT_EQ(read({1, 2}), (Names{"1", "2"}));
    const ReadScope oneState(connection());
    nameOf(1);
    EXPECT_THROW(connection().query("select id from Other"), DatabaseError);
}

class PostgresReadScopeTest : public ReadScopeTest {};
INSTANTIATE_TEST_SUITE_P(Engines, PostgresReadScopeTest, testing::Values(Engine::PostgreSql),
                         test::engineName);

TEST_P(PostgresReadScopeTest, IsReadOnANewLineWhenTheOldOneHasDiedAtRest) {
    const auto readOn = [&] {
        const Lease lease = openAnother();
        const ReadScope oneState(*lease);
        auto rows = lease->query("select pg_backend_pid() as pid, name from Thing where id = ?", {1});
        EXPECT_TRUE(rows.next());
        return rows.number("pid");
    };
    const double first = readOn();
    EXPECT_EQ(readOn(), first);
    auto ended = connection().query("select pg_terminate_backend(cast(? as integer)) as done",
                                    {static_cast<int>(first)});
    ASSERT_TRUE(ended.next());
    EXPECT_NE(readOn(), first);
}

}  // namespace
}  // namespace torvex::db
