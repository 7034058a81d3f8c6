#include "platform/db/SqliteConnection.h"

#include <filesystem>
#include <fstream>
#include <gtest/gtest.h>
#include <random>

#include "platform/db/SqliteFunctions.h"
#include "platform/db/SqliteStore.h"
#include "support/TestDatabase.h"

namespace torvex::db {
namespace {

namespace fs = std::filesystem;

class SqliteStoreTest : public ::testing::Test {
  protected:
    void SetUp() override { createSqliteStore(folder_); }

    std::string messageOfOpening() const {
        try {
            openSqliteStore(folder_, Purpose::Everything);
        } catch (const DatabaseError& error) {
            return error.what();
        }
        return "opened";
    }

    test::TemporaryFolder parent_;
    std::string folder_ = parent_.path() + "/store";
};

TEST_F(SqliteStoreTest, IsThreeFilesThatOnlyTheirOwnerReads) {
    for (const char* name : {"content.db", "hits.db", "audit.db"}) {
        EXPECT_EQ(fs::status(folder_ + "/" + name).permissions(),
                  fs::perms::owner_read | fs::perms::owner_write);
    }
    EXPECT_EQ(std::distance(fs::directory_iterator(folder_), fs::directory_iterator()), 3);
}

TEST_F(SqliteStoreTest, IsNotMadeWhereOneIs) {
    openSqliteStore(folder_, Purpose::Everything)->executeScript("create table Kept (id integer)");
    EXPECT_THROW(createSqliteStore(folder_), DatabaseError);
    EXPECT_NO_THROW(openSqliteStore(folder_, Purpose::Everything)->query("select id from Kept"));
}

TEST_F(SqliteStoreTest, LogsAheadAndWaitsForTheDiskForContentAndTrail) {
    const auto connection = openSqliteStore(folder_, Purpose::Everything);
    const auto setting = [&](const std::string& pragma) {
        auto rows = connection->query("pragma " + pragma);
        return rows.next() ? rows.text(rows.columnName(0)) : "";
    };
    for (const std::string file : {"main", "hits", "audit"})
        EXPECT_EQ(setting(file + ".journal_mode"), "wal");
    EXPECT_EQ(setting("main.synchronous"), "2");
    EXPECT_EQ(setting("hits.synchronous"), "1");
    EXPECT_EQ(setting("audit.synchronous"), "2");
}

TEST_F(SqliteStoreTest, AConnectionForATransactionDoesNotHoldTheTrail) {
    const auto everything = openSqliteStore(folder_, Purpose::Everything);
    everything->executeScript("create table audit.Trail (id integer); create table hits.Hit (id integer)");
    EXPECT_NO_THROW(everything->query("select id from Trail"));
    const auto transaction = openSqliteStore(folder_, Purpose::Transaction);
    EXPECT_THROW(transaction->query("select id from Trail"), DatabaseError);
    EXPECT_NO_THROW(transaction->query("select id from Hit"));
}

TEST_F(SqliteStoreTest, AMissingFileIsNamedAndNotCreated) {
    for (const char* name : {"content.db", "hits.db", "audit.db"}) {
        const std::string file = folder_ + "/" + name;
        fs::rename(file, file + "-away");
        EXPECT_EQ(messageOfOpening(), "there is no database " + file);
        EXPECT_FALSE(fs::exists(file));
        fs::rename(file + "-away", file);
    }
}

TEST_F(SqliteStoreTest, ADamagedFileIsNamed) {
    const std::string file = folder_ + "/content.db";
    std::ofstream(file, std::ios::binary) << std::string(8192, 'x');
    const std::string message = messageOfOpening();
    EXPECT_NE(message.find("damaged"), std::string::npos) << message;
    EXPECT_NE(message.find(file), std::string::npos) << message;
}

TEST_F(SqliteStoreTest, AFolderWithAQuoteInItsNameIsFine) {
    const std::string odd = parent_.path() + "/it's ?a=b & 100% \xC3\xA9";
    createSqliteStore(odd);
    EXPECT_NO_THROW(openSqliteStore(odd, Purpose::Everything));
}

TEST_F(SqliteStoreTest, WaitingTooLongForTheWriteLockNamesTheFile) {
    const auto first = openSqliteStore(folder_, Purpose::Transaction);
    const auto second = openSqliteStore(folder_, Purpose::Transaction);
    const Transaction transaction(*first);
    second->query("pragma busy_timeout = 50");
    try {
        second->begin();
        FAIL() << "two writers at a time";
    } catch (const DatabaseError& error) {
        EXPECT_EQ(std::string(error.what()), "database is locked: another process holds the write lock of " +
                                                 fs::canonical(folder_).string() +
                                                 "/content.db for more than 5 seconds");
    }
    EXPECT_NO_THROW(second->rollback());
    EXPECT_NO_THROW(second->query("select version from TORVEX_SCHEMA_CONTENT"));
}

TEST_F(SqliteStoreTest, ATransactionLocksAFurtherFileOnlyWhenItTouchesIt) {
    openSqliteStore(folder_, Purpose::Everything)->executeScript("create table hits.Hit (id integer)");
    const auto author = openSqliteStore(folder_, Purpose::Transaction);
    const auto visitor = openSqliteStore(folder_, Purpose::Everything);
    Transaction transaction(*author);
    EXPECT_EQ(visitor->execute("insert into Hit (id) values (1)"), 1);
    { auto rows = author->query("select id from Hit"); }
    visitor->query("pragma busy_timeout = 50");
    EXPECT_THROW(visitor->execute("insert into Hit (id) values (2)"), DatabaseError);
    transaction.commit();
    EXPECT_EQ(visitor->execute("insert into Hit (id) values (3)"), 1);
}

TEST_F(SqliteStoreTest, ATextInDoubleQuotesIsNoText) {
    const auto connection = openSqliteStore(folder_, Purpose::Everything);
    EXPECT_THROW(connection->query("select \"nothing\" as n"), DatabaseError);
}

TEST_F(SqliteStoreTest, TwoStatementsInOneTextAreRefused) {
    const auto connection = openSqliteStore(folder_, Purpose::Everything);
    EXPECT_THROW(connection->query("select 1 as n; select 2 as n"), DatabaseError);
    EXPECT_NO_THROW(connection->query("select 1 as n; "));
}

TEST_F(SqliteStoreTest, ABackupIsAStoreOfItsOwn) {
    const auto connection = openSqliteStore(folder_, Purpose::Everything);
    connection->executeScript("create table Kept (id integer); insert into Kept values (7)");
    const std::string copy = parent_.path() + "/copy";
    backUpSqliteStore(folder_, copy);
    connection->executeScript("delete from Kept");
    const auto copied = openSqliteStore(copy, Purpose::Everything);
    auto rows = copied->query("select id from Kept");
    ASSERT_TRUE(rows.next());
    EXPECT_EQ(rows.number("id"), 7);
}

struct LikeCase {
    std::string_view text;
    std::string_view pattern;
    bool matches;
};

TEST(SqliteLike, MatchesAsSqlDoesIgnoringCase) {
    constexpr std::string_view acute = "\xC3\xA9";
    constexpr std::string_view upperAcute = "\xC3\x89";
    const LikeCase cases[] = {
        {"", "", true},
        {"", "%", true},
        {"", "_", false},
        {"a", "", false},
        {"abc", "ABC", true},
        {"abc", "a%", true},
        {"abc", "%C", true},
        {"abc", "%b%", true},
        {"abc", "a_c", true},
        {"abc", "a__c", false},
        {"abc", "____", false},
        {"aXbXc", "a%x%x%c", true},
        {"aab", "%ab", true},
        {"aaab", "a%ab", true},
        {"abab", "%ab%ab%", true},
        {"ab", "%ab%ab%", false},
        {"a%b", "a\\%b", true},
        {"axb", "a\\%b", false},
        {"a_b", "a\\_b", true},
        {"axb", "a\\_b", false},
        {"a\\b", "a\\\\b", true},
        {"ab", "ab\\", false},
        {acute, upperAcute, true},
        {acute, "_", true},
        {acute, "__", false},
        {"\xE2\x84\xAA", "k", true},
        {"\xFF", "\xFF", true},
        {"\xFF", "_", true},
        {"abc", "%%%", true},
        {"abc", "%_%_%_%", true},
        {"abc", "%_%_%_%_%", false},
    };
    for (const LikeCase& each : cases) {
        EXPECT_EQ(matchesLike(each.text, each.pattern, defaultEscape), each.matches)
            << each.text << " like " << each.pattern;
    }
}

TEST(SqliteLike, OnePartAnywhereMatchesLikeAnyOtherPattern) {
    constexpr std::string_view pieces[] = {
        "a",        "B",    "k",    "\xE2\x84\xAA", "s",        "\xC5\xBF", "\xC3\xA9",
        "\xC3\x89", "\xFF", "\xC3", "\xCE\xA3",     "\xCF\x82", "1",        " "};
    std::mt19937 random(7);
    const auto made = [&](std::size_t most) {
        std::string text;
        for (std::size_t i = random() % (most + 1); i > 0; --i) text += pieces[random() % std::size(pieces)];
        return text;
    };
    int matched = 0;
    for (int i = 0; i < 20'000; ++i) {
        const std::string text = made(12);
        const std::string part = made(3);
        // A second wildcard changes nothing but the way it is matched.
        const bool expected = matchesLike(text, "%%" + part + "%", defaultEscape);
        EXPECT_EQ(matchesLike(text, "%" + part + "%", defaultEscape), expected) << text << " and " << part;
        matched += expected ? 1 : 0;
    }
    EXPECT_GT(matched, 1000);
}

TEST(SqliteLike, ManyWildcardsDoNotTakeForever) {
    const std::string text(20000, 'a');
    std::string pattern;
    for (int i = 0; i < 50; ++i) pattern += "%a";
    EXPECT_FALSE(matchesLike(text, pattern + "%b", defaultEscape));
}

}  // namespace
}  // namespace torvex::db
