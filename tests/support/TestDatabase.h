#pragma once

#include <gtest/gtest.h>
#include <memory>
#include <string>

#include "installation/Schema.h"
#include "platform/db/Database.h"

namespace torvex::test {

/// The schema and the fixed rows of an installation, as they lie in the sources.
Schema installSchema();
std::string installRows();

/// A folder that is removed with all that is in it at the end of its life.
class TemporaryFolder {
  public:
    TemporaryFolder();
    TemporaryFolder(const TemporaryFolder&) = delete;
    TemporaryFolder& operator=(const TemporaryFolder&) = delete;
    ~TemporaryFolder();

    const std::string& path() const { return path_; }

  private:
    std::string path_;
};

/// A database that is dropped at the end of its life. For the embedded engine a store in a temporary folder;
/// for PostgreSQL a database on the server that the environment variable TORVEX_TEST_POSTGRES names by the
/// connection text of a maintenance database. Throws when there is none.
class TestDatabase {
  public:
    virtual ~TestDatabase() = default;
    virtual const std::string& connectionText() const = 0;
};

/// With all tables and the fixed rows, copied from one that is made once per process.
std::unique_ptr<TestDatabase> makeTestDatabase(db::Engine engine);
/// With nothing in it. The store's folder doesn't exist yet.
std::unique_ptr<TestDatabase> makeEmptyTestDatabase(db::Engine engine);

/// The base of all tests that touch the database: each test has a fresh one with all tables and the fixed
/// rows.
///
///     class PublishTest : public test::DatabaseTest {};
///     INSTANTIATE_TEST_SUITE_P(Engines, PublishTest, test::bothEngines(), test::engineName);
///     TEST_P(PublishTest, CopiesThePageToTheLiveTables) { connection().execute(...); }
///
/// Without a PostgreSQL server its tests fail; tests/with_postgres.sh starts one.
class DatabaseTest : public ::testing::TestWithParam<db::Engine> {
  protected:
    void SetUp() override;
    void TearDown() override;

    db::Database& database() { return *pools_; }
    db::Connection& connection() { return *connection_; }
    /// Of the fresh database; needs no user and no password.
    const std::string& connectionText() const { return made_->connectionText(); }
    db::Lease openAnother(db::Purpose purpose = db::Purpose::Everything) {
        return pools_->open(connectionText(), {}, {}, purpose);
    }

  private:
    std::unique_ptr<TestDatabase> made_;
    std::unique_ptr<db::Database> pools_;
    db::Lease connection_;
};

inline auto bothEngines() {
    return ::testing::Values(db::Engine::Sqlite, db::Engine::PostgreSql);
}

/// "Sqlite" or "PostgreSql", for the names of tests.
std::string engineName(const ::testing::TestParamInfo<db::Engine>& info);

}  // namespace torvex::test
