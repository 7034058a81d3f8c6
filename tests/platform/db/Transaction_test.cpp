#include <chrono>
#include <thread>

#include "platform/db/Connection.h"
#include "support/TestDatabase.h"

namespace torvex::db {
namespace {

using namespace std::string_view_literals;

class TransactionTest : public test::DatabaseTest {
  protected:
    static double groups(Connection& on) {
        auto rows = on.query("select count(*) as n from TORVEX_USERGROUPS");
        return rows.next() ? rows.number("n") : -1;
    }
    static void addGroup(Connection& on, std::string_view name = "new") {
        on.execute("insert into TORVEX_USERGROUPS (name) values (?)", {name});
    }
    static constexpr double before = 2;
};
INSTANTIATE_TEST_SUITE_P(Engines, TransactionTest, test::bothEngines(), test::engineName);

TEST_P(TransactionTest, CommitKeepsTheChanges) {
    {
        Transaction transaction(connection());
        addGroup(connection());
        transaction.commit();
    }
    EXPECT_EQ(groups(*openAnother()), before + 1);
}

TEST_P(TransactionTest, RollsBackUnlessCommitted) {
    {
        Transaction transaction(connection());
        addGroup(connection());
        EXPECT_EQ(groups(connection()), before + 1);
    }
    EXPECT_EQ(groups(connection()), before);
    addGroup(connection());
    EXPECT_EQ(groups(*openAnother()), before + 1) << "the connection goes on without a transaction";
}

TEST_P(TransactionTest, OthersSeeNothingBeforeTheCommit) {
    const Lease other = openAnother();
    Transaction transaction(connection());
    addGroup(connection());
    EXPECT_EQ(groups(*other), before);
    transaction.commit();
    EXPECT_EQ(groups(*other), before + 1);
}

TEST_P(TransactionTest, AFailedStatementUndoesAllThatIsRolledBack) {
    {
        Transaction transaction(connection());
        addGroup(connection());
        EXPECT_THROW(connection().execute("insert into TORVEX_USERGROUPS (groupId) values (1)"),
                     DatabaseError);
    }
    EXPECT_EQ(groups(connection()), before);
}

TEST_P(TransactionTest, CannotBeBegunWithinAnother) {
    Transaction transaction(connection());
    addGroup(connection());
    EXPECT_THROW(Transaction inner(connection()), DatabaseError);
    transaction.commit();
    EXPECT_EQ(groups(connection()), before + 1);
}

TEST_P(TransactionTest, CommitWorksWhileRowsAreOpen) {
    Transaction transaction(connection());
    addGroup(connection());
    auto read = connection().query("select name from TORVEX_USERGROUPS");
    ASSERT_TRUE(read.next());
    auto written = connection().query("update TORVEX_USERGROUPS set entryPage = 1 returning name");
    ASSERT_TRUE(written.next());
    transaction.commit();
    EXPECT_EQ(groups(*openAnother()), before + 1);
    EXPECT_NO_THROW(read.next());
    EXPECT_NO_THROW(written.next());
}

TEST_P(TransactionTest, RollbackWorksWhileRowsAreOpen) {
    auto outside = connection().query("select name from TORVEX_USERGROUPS");
    ASSERT_TRUE(outside.next());
    {
        Transaction transaction(connection());
        addGroup(connection());
        auto rows = connection().query("select name from TORVEX_USERGROUPS");
        ASSERT_TRUE(rows.next());
    }
    EXPECT_EQ(groups(connection()), before);
}

TEST_P(TransactionTest, AReadScopeSeesOneState) {
    const Lease other = openAnother();
    {
        ReadScope scope(connection());
        EXPECT_EQ(groups(connection()), before);
        addGroup(*other);
        EXPECT_EQ(groups(connection()), before);
    }
    EXPECT_EQ(groups(connection()), before + 1);
}

TEST_P(TransactionTest, AReadScopeRefusesChanges) {
    {
        const ReadScope scope(connection());
        EXPECT_THROW(addGroup(connection()), DatabaseError);
    }
    EXPECT_EQ(groups(connection()), before);
    addGroup(connection());
    EXPECT_EQ(groups(connection()), before + 1);
}

TEST_P(TransactionTest, WritersTakeTheirTurns) {
    constexpr int rounds = 25;
    connection().execute("insert into TORVEX_SETUP (parameter, value, loginId) values ('counter', '0', 99)");
    const auto count = [this] {
        const Lease own = openAnother(Purpose::Transaction);
        for (int round = 0; round < rounds; ++round) {
            Transaction transaction(*own);
            own->execute("update TORVEX_SETUP set loginId = loginId + 1 where parameter = 'counter'");
            transaction.commit();
        }
    };
    std::thread first(count);
    std::thread second(count);
    first.join();
    second.join();
    auto rows = connection().query("select loginId from TORVEX_SETUP where parameter = 'counter'");
    ASSERT_TRUE(rows.next());
    EXPECT_EQ(rows.number("loginId"), 99 + 2 * rounds);
}

TEST_P(TransactionTest, ReadersDoNotWaitForAWriter) {
    Transaction transaction(connection());
    addGroup(connection());
    const Lease reader = openAnother();
    const ReadScope scope(*reader);
    EXPECT_EQ(groups(*reader), before);
}

TEST_P(TransactionTest, AnAuditLineNeitherWaitsForNorRollsBackWithAChange) {
    const Lease own = openAnother(Purpose::Transaction);
    const auto lines = [this] {
        auto rows = connection().query("select count(*) as n from TORVEX_AUDIT_TRAIL");
        return rows.next() ? rows.number("n") : -1;
    };
    {
        Transaction transaction(*own);
        addGroup(*own);
        const auto started = std::chrono::steady_clock::now();
        database()
            .open(own->connectionText())
            ->execute("insert into TORVEX_AUDIT_TRAIL (loginName) values ('sa')");
        EXPECT_LT(std::chrono::steady_clock::now() - started, std::chrono::seconds(2));
    }
    EXPECT_EQ(lines(), 1);
    EXPECT_EQ(groups(connection()), before);
}

TEST_P(TransactionTest, AHitDoesNotWaitForAChange) {
    const Lease own = openAnother(Purpose::Transaction);
    Transaction transaction(*own);
    addGroup(*own);
    const auto started = std::chrono::steady_clock::now();
    connection().execute("insert into TORVEX_LOGGING (nodeId, yyyymmdd) values ('ab.en', '20260101')");
    EXPECT_LT(std::chrono::steady_clock::now() - started, std::chrono::seconds(2));
}

TEST_P(TransactionTest, AChangeThatReadHitsCanStillWriteThem) {
    const Lease own = openAnother(Purpose::Transaction);
    Transaction transaction(*own);
    { auto rows = own->query("select count(*) as n from TORVEX_LOGGING"); }
    std::thread visitor([this] {
        openAnother()->execute("insert into TORVEX_LOGGING (nodeId, yyyymmdd) values ('ab.en', '20260101')");
    });
    std::this_thread::sleep_for(std::chrono::milliseconds(50));
    EXPECT_NO_THROW(
        own->execute("insert into TORVEX_LOGGING (nodeId, yyyymmdd) values ('ab.en', '20260102')"));
    transaction.commit();
    visitor.join();
    auto rows = connection().query("select count(*) as n from TORVEX_LOGGING");
    ASSERT_TRUE(rows.next());
    EXPECT_EQ(rows.number("n"), 2);
}

}  // namespace
}  // namespace torvex::db
