#include "support/TestDatabase.h"

#include <algorithm>
#include <array>
#include <cstdlib>
#include <filesystem>
#include <fmt/format.h>
#include <fstream>
#include <libpq-fe.h>
#include <sstream>
#include <stdexcept>
#include <stdlib.h>
#include <unistd.h>

#include "platform/DateTime.h"
#include "platform/db/SqliteStore.h"
#include "support/SourceFolder.h"

namespace torvex::test {

namespace {

namespace fs = std::filesystem;

const fs::path installFolder = fs::path(sourceFolder()) / "install";

std::string contentOf(const fs::path& file) {
    std::ifstream stream(file, std::ios::binary);
    if (!stream) throw std::runtime_error("can't read " + file.string());
    std::ostringstream content;
    content << stream.rdbuf();
    return content.str();
}

std::vector<fs::path> sqlFiles(const fs::path& folder) {
    std::vector<fs::path> files;
    for (const auto& entry : fs::directory_iterator(folder)) {
        if (entry.path().extension() == ".sql") files.push_back(entry.path());
    }
    std::sort(files.begin(), files.end());
    return files;
}

/// The whole schema and the fixed rows, in the database that the text names.
void fill(const std::string& text) {
    const auto database = db::makeDatabase();
    installSchema().create(*database, FixedClock({2026, 1, 1}), text);
    const db::Lease connection = database->open(text);
    db::Transaction transaction(*connection);
    connection->executeScript(installRows());
    transaction.commit();
}

/// A store in a temporary folder of its own.
class SqliteDatabase final : public TestDatabase {
  public:
    const std::string& connectionText() const override { return text_; }
    std::string folder() const { return folder_.path() + "/db"; }

  private:
    TemporaryFolder folder_;
    std::string text_ = "sqlite:" + folder();
};

/// A connection to the maintenance database, without the adapter that is under test.
class Maintenance {
  public:
    Maintenance() : connection_(PQconnectdb(text().c_str())) {
        if (PQstatus(connection_) != CONNECTION_OK) throw std::runtime_error(PQerrorMessage(connection_));
        PQsetNoticeReceiver(
            connection_, [](void*, const PGresult*) {}, nullptr);
    }
    Maintenance(const Maintenance&) = delete;
    Maintenance& operator=(const Maintenance&) = delete;
    ~Maintenance() { PQfinish(connection_); }

    static std::string text() {
        const char* text = std::getenv("TORVEX_TEST_POSTGRES");
        if (text != nullptr && *text != '\0') return text;
        throw std::runtime_error(
            "this test needs a PostgreSQL server: run the tests by tests/with_postgres.sh, or set "
            "TORVEX_TEST_POSTGRES to the connection text of a maintenance database");
    }

    void run(const std::string& statement) {
        PGresult* result = PQexec(connection_, statement.c_str());
        const bool fine = PQresultStatus(result) == PGRES_COMMAND_OK;
        PQclear(result);
        if (!fine) throw std::runtime_error(PQerrorMessage(connection_));
    }

    /// The server's address and login with another database's name.
    std::string textOf(const std::string& database) const {
        return fmt::format("host='{}' port='{}' user='{}' password='{}' dbname='{}'", PQhost(connection_),
                           PQport(connection_), PQuser(connection_), PQpass(connection_), database);
    }

  private:
    PGconn* connection_;
};

class PostgresDatabase final : public TestDatabase {
  public:
    /// `source` is the database that it is a copy of.
    explicit PostgresDatabase(const std::string& source) {
        static int count = 0;
        name_ = fmt::format("torvex_test_{}_{}", getpid(), ++count);
        maintenance_.run(fmt::format("create database {} template {} strategy file_copy", name_, source));
        text_ = maintenance_.textOf(name_);
    }
    ~PostgresDatabase() override {
        try {
            maintenance_.run(fmt::format("drop database if exists {} with (force)", name_));
        } catch (const std::exception& error) {
            ADD_FAILURE() << "the database of the test can't be dropped: " << error.what();
        }
    }

    const std::string& connectionText() const override { return text_; }
    const std::string& name() const { return name_; }

  private:
    Maintenance maintenance_;
    std::string name_;
    std::string text_;
};

std::unique_ptr<TestDatabase> copySqlite() {
    static const auto filled = [] {
        auto made = std::make_unique<SqliteDatabase>();
        fill(made->connectionText());
        return made;
    }();
    auto copy = std::make_unique<SqliteDatabase>();
    fs::copy(filled->folder(), copy->folder());
    return copy;
}

std::unique_ptr<TestDatabase> copyPostgres() {
    // template0 is the one that no operator has put anything into.
    static const auto filled = [] {
        auto made = std::make_unique<PostgresDatabase>("template0");
        fill(made->connectionText());
        return made;
    }();
    return std::make_unique<PostgresDatabase>(filled->name());
}

}  // namespace

Schema installSchema() {
    std::vector<SchemaStep> steps;
    for (const std::string_view store : db::storeNames) {
        for (const fs::path& file : sqlFiles(installFolder / "schema" / store)) {
            const std::string stem = file.stem();
            steps.push_back(
                {std::string(store), std::stoi(stem), stem.substr(stem.find('_') + 1), contentOf(file)});
        }
    }
    const fs::path extras = installFolder / "schema" / "postgresql";
    return Schema(std::move(steps),
                  {contentOf(extras / "prepare.sql"), contentOf(extras / "keep_identity.sql")});
}

std::string installRows() {
    std::string rows;
    for (const fs::path& file : sqlFiles(installFolder / "rows")) rows += contentOf(file) + "\n";
    return rows;
}

TemporaryFolder::TemporaryFolder() : path_(fs::temp_directory_path() / "torvex-test-XXXXXX") {
    if (mkdtemp(path_.data()) == nullptr) throw std::runtime_error("can't make a temporary folder");
}

TemporaryFolder::~TemporaryFolder() {
    std::error_code ignored;
    fs::remove_all(path_, ignored);
}

std::unique_ptr<TestDatabase> makeTestDatabase(db::Engine engine) {
    return engine == db::Engine::Sqlite ? copySqlite() : copyPostgres();
}

std::unique_ptr<TestDatabase> makeEmptyTestDatabase(db::Engine engine) {
    if (engine == db::Engine::Sqlite) return std::make_unique<SqliteDatabase>();
    return std::make_unique<PostgresDatabase>("template0");
}

void DatabaseTest::SetUp() {
    try {
        made_ = makeTestDatabase(GetParam());
        pools_ = db::makeDatabase();
        connection_ = pools_->open(connectionText());
    } catch (const std::exception& error) {
        FAIL() << error.what();
    }
}

void DatabaseTest::TearDown() {
    connection_.reset();
    pools_.reset();
    made_.reset();
}

std::string engineName(const ::testing::TestParamInfo<db::Engine>& info) {
    return info.param == db::Engine::Sqlite ? "Sqlite" : "PostgreSql";
}

}  // namespace torvex::test
