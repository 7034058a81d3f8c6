#include "platform/db/SqliteWatch.h"

#include <gtest/gtest.h>
#include <utility>

#include "platform/db/SqliteConnection.h"
#include "platform/db/SqliteHandle.h"
#include "platform/db/SqliteStore.h"
#include "support/TestDatabase.h"

namespace torvex::db {
namespace {

class SqliteWatchTest : public ::testing::Test {
  protected:
    void SetUp() override {
        createSqliteStore(folder_);
        writer_ = openSqliteStore(folder_, Purpose::Everything);
        writer_->executeScript(
            "create table TORVEX_TABLE_CHANGES (tableName text primary key, changes integer);"
            "insert into TORVEX_TABLE_CHANGES values ('torvex_watched', 1), ('torvex_other', 1)");
        watch_ = watchSqliteStore(folder_);
    }

    static std::string changeOf(const std::string& table) {
        return "update TORVEX_TABLE_CHANGES set changes = changes + 1 where tableName = '" + table + "'";
    }
    /// Whether a look sees another state of the watched table than the one before it.
    bool seesChange() {
        TableSet tables;
        tables.set(tableNumber("torvex_watched"));
        const SharedStates before = std::exchange(last_, watch_->now());
        return !before->agreesWith(*last_, tables);
    }

    test::TemporaryFolder parent_;
    std::string folder_ = parent_.path() + "/store";
    std::unique_ptr<Connection> writer_;
    std::unique_ptr<ContentWatch> watch_;
    SharedStates last_;
};

TEST_F(SqliteWatchTest, GivesTheSameStateWhileNothingIsCommitted) {
    watch_->now();
    const SharedStates first = watch_->now();
    EXPECT_NE(first, nullptr);
    EXPECT_EQ(watch_->now(), first);
}

TEST_F(SqliteWatchTest, SeesWhatIsCommitted) {
    last_ = watch_->now();
    writer_->execute(changeOf("torvex_watched"));
    EXPECT_TRUE(seesChange());
    EXPECT_FALSE(seesChange());
}

TEST_F(SqliteWatchTest, SeesEveryOneOfManyCommits) {
    last_ = watch_->now();
    for (int i = 0; i < 500; ++i) {
        writer_->execute(changeOf("torvex_watched"));
        ASSERT_TRUE(seesChange()) << i;
    }
}

TEST_F(SqliteWatchTest, SeesNothingOfWhatIsNotCommittedYetOrTakenBack) {
    last_ = watch_->now();
    writer_->begin();
    writer_->execute(changeOf("torvex_watched"));
    EXPECT_FALSE(seesChange());
    writer_->rollback();
    EXPECT_FALSE(seesChange());
}

TEST_F(SqliteWatchTest, SeesCommitsBehindALogThatBeginsAnew) {
    last_ = watch_->now();
    for (int i = 0; i < 3; ++i) {
        writer_->executeScript("pragma main.wal_checkpoint(truncate)");
        EXPECT_FALSE(seesChange());
        writer_->execute(changeOf("torvex_watched"));
        EXPECT_TRUE(seesChange());
    }
}

TEST_F(SqliteWatchTest, SeesCommitsToAFileThatIsPackedAnew) {
    last_ = watch_->now();
    writer_->executeScript("vacuum main");
    EXPECT_FALSE(seesChange());
    writer_->execute(changeOf("torvex_watched"));
    EXPECT_TRUE(seesChange());
}

/// Where files can't be shared in memory there is no log, and each look reads the file.
TEST_F(SqliteWatchTest, SeesCommitsToAFileWithoutALog) {
    watch_ = nullptr;
    writer_ = nullptr;
    const SqliteHandle writer = openSqlite(storeFile(folder_, "content"), SQLITE_OPEN_READWRITE);
    ASSERT_EQ(sqlite3_exec(writer.get(), "pragma journal_mode = delete", nullptr, nullptr, nullptr),
              SQLITE_OK);
    watch_ = watchSqliteStore(folder_);
    last_ = watch_->now();
    EXPECT_FALSE(seesChange());
    const std::string change = changeOf("torvex_watched");
    ASSERT_EQ(sqlite3_exec(writer.get(), change.c_str(), nullptr, nullptr, nullptr), SQLITE_OK);
    EXPECT_TRUE(seesChange());
}

}  // namespace
}  // namespace torvex::db
