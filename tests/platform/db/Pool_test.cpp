#include <atomic>
#include <filesystem>
#include <string>
#include <thread>
#include <vector>

#include "platform/db/Database.h"
#include "support/TestDatabase.h"

namespace torvex::db {
namespace {

using namespace std::string_literals;
using namespace std::string_view_literals;

constexpr std::string_view countGroups = "select count(*) as n from TORVEX_USERGROUPS";

double groups(Connection& on) {
    auto rows = on.query(countGroups);
    return rows.next() ? rows.number("n") : -1;
}

std::string messageOfOpening(Database& database, std::string_view text, std::string_view user = {},
                             std::string_view password = {}) {
    try {
        database.open(text, user, password);
    } catch (const DatabaseError& error) {
        return error.what();
    }
    return "opened";
}

class PoolTest : public test::DatabaseTest {};
INSTANTIATE_TEST_SUITE_P(Engines, PoolTest, test::bothEngines(), test::engineName);

TEST_P(PoolTest, AConnectionIsUsedAgain) {
    const Connection* first = openAnother().get();
    EXPECT_EQ(openAnother().get(), first);
}

TEST_P(PoolTest, TwoLeasesAtATimeAreTwoConnections) {
    const Lease first = openAnother();
    const Lease second = openAnother();
    EXPECT_NE(first.get(), second.get());
}

TEST_P(PoolTest, OnlySqliteKeepsConnectionsForTransactionsApart) {
    const Connection* first = openAnother(Purpose::Transaction).get();
    const Lease everything = openAnother(Purpose::Everything);
    EXPECT_EQ(everything.get() != first, GetParam() == Engine::Sqlite);
}

TEST_P(PoolTest, WhatWasLeftOpenIsRolledBack) {
    {
        const Lease lease = openAnother();
        lease->begin();
        lease->execute("delete from TORVEX_USERGROUPS");
    }
    const Lease lease = openAnother();
    EXPECT_EQ(groups(*lease), 2);
    EXPECT_NO_THROW({
        Transaction transaction(*lease);
        transaction.commit();
    });
}

TEST_P(PoolTest, AReadingThatWasLeftOpenEnds) {
    openAnother()->beginReading();
    openAnother()->execute("delete from TORVEX_USERGROUPS");
    EXPECT_EQ(groups(*openAnother()), 0);
}

TEST_P(PoolTest, ALeaseMayOutliveTheDatabase) {
    auto pools = makeDatabase();
    const Lease lease = pools->open(connectionText());
    pools.reset();
    EXPECT_EQ(groups(*lease), 2);
}

TEST_P(PoolTest, ThreadsShareThePools) {
    std::atomic<int> right = 0;
    std::vector<std::thread> threads;
    for (int i = 0; i < 8; ++i) {
        threads.emplace_back([&] {
            for (int round = 0; round < 25; ++round) {
                const Lease lease = openAnother();
                const ReadScope scope(*lease);
                if (groups(*lease) == 2) ++right;
            }
        });
    }
    for (std::thread& thread : threads) thread.join();
    EXPECT_EQ(right, 200);
}

TEST(Pool, ATextThatNamesNoDatabaseIsRefusedWithoutBeingQuoted) {
    const auto pools = makeDatabase();
    for (const std::string_view text : {""sv, "secret"sv, "sqlite:"sv, "mysql://u:secret@h/d"sv}) {
        const std::string message = messageOfOpening(*pools, text);
        EXPECT_NE(message.find("names no database"), std::string::npos) << message;
        EXPECT_EQ(message.find("secret"), std::string::npos) << message;
    }
}

TEST(Pool, AMissingFolderIsNotCreated) {
    const test::TemporaryFolder folder;
    const std::string missing = folder.path() + "/missing";
    EXPECT_EQ(messageOfOpening(*makeDatabase(), "sqlite:" + missing),
              "there is no database folder " + missing);
    EXPECT_FALSE(std::filesystem::exists(missing));
}

class PostgresPoolTest : public test::DatabaseTest {
  protected:
    /// Ends the server's side of a connection and waits until it is gone.
    void terminate(double process) {
        connection().query("select pg_terminate_backend(?::int, 5000) as done", {process});
    }
    static double processOf(Connection& on) {
        auto rows = on.query("select pg_backend_pid() as process");
        return rows.next() ? rows.number("process") : -1;
    }
    std::string textWithout(std::string_view part) const {
        std::string text = connectionText();
        const std::size_t at = text.find(part);
        if (at == std::string::npos) throw std::logic_error("the text lacks what is to go");
        return text.erase(at, part.size());
    }
};
INSTANTIATE_TEST_SUITE_P(Engines, PostgresPoolTest, ::testing::Values(Engine::PostgreSql), test::engineName);

TEST_P(PostgresPoolTest, AConnectionThatDiedInThePoolIsReplacedUnseen) {
    terminate(processOf(*openAnother()));
    EXPECT_EQ(groups(*openAnother()), 2);
    terminate(processOf(*openAnother()));
    const Lease lease = openAnother();
    EXPECT_NO_THROW({
        Transaction transaction(*lease);
        lease->execute("delete from TORVEX_USERGROUPS");
        transaction.commit();
    });
    EXPECT_EQ(groups(connection()), 0);
}

TEST_P(PostgresPoolTest, AConnectionThatDiesInUseFailsAndIsNotUsedAgain) {
    {
        const Lease lease = openAnother();
        terminate(processOf(*lease));
        EXPECT_THROW(groups(*lease), DatabaseError);
    }
    EXPECT_EQ(groups(*openAnother()), 2);
}

TEST_P(PostgresPoolTest, UserAndPasswordCompleteATextThatNamesNone) {
    const std::string text = textWithout("user='torvex'");
    const Lease lease = database().open(text, "torvex", "it's \\ secret");
    EXPECT_EQ(groups(*lease), 2);
    EXPECT_EQ(groups(*database().open(lease->connectionText())), 2) << "the text opens the same again";
}

TEST_P(PostgresPoolTest, TheTextsOwnUserComesFirst) {
    EXPECT_EQ(groups(*database().open(connectionText(), "nobody-of-that-name")), 2);
}

TEST_P(PostgresPoolTest, MessagesHoldNoPassword) {
    for (const std::string& wrong : {"postgresql://user:secret@[nowhere"s, "host=/nowhere password=secret"s,
                                     "password='secret"s, "host=x secret"s}) {
        const std::string message = messageOfOpening(database(), wrong, "u", "secret");
        EXPECT_NE(message, "opened");
        EXPECT_EQ(message.find("secret"), std::string::npos) << message;
    }
}

TEST_P(PostgresPoolTest, AFailedTransactionCannotBeCommitted) {
    const Lease lease = openAnother();
    Transaction transaction(*lease);
    lease->execute("delete from TORVEX_USERGROUPS");
    EXPECT_THROW(lease->query("select nothing"), DatabaseError);
    EXPECT_THROW(transaction.commit(), DatabaseError);
    EXPECT_EQ(groups(connection()), 2);
}

TEST_P(PostgresPoolTest, AColumnAddedMeanwhileFailsOneTransactionAtMost) {
    constexpr std::string_view all = "select * from TORVEX_USERGROUPS";
    {
        const Lease lease = openAnother();
        lease->query(all);
        connection().executeScript("alter table TORVEX_USERGROUPS add column more bigint");
        const ReadScope scope(*lease);
        EXPECT_THROW(lease->query(all), DatabaseError);
    }
    const Lease lease = openAnother();
    const ReadScope scope(*lease);
    EXPECT_NO_THROW(lease->query(all));
}

TEST_P(PostgresPoolTest, AValueThatDoesNotFitIsNotQuoted) {
    try {
        connection().query("select name from TORVEX_USERGROUPS where groupId = ?", {"secret"sv});
        FAIL() << "it was taken for a number";
    } catch (const DatabaseError& error) {
        EXPECT_EQ(std::string(error.what()).find("secret"), std::string::npos) << error.what();
    }
}

}  // namespace
}  // namespace torvex::db
