#include "installation/Schema.h"

#include <filesystem>
#include <fstream>
#include <iterator>

#include "platform/DateTime.h"
#include "platform/Errors.h"
#include "platform/db/ConnectionText.h"
#include "platform/db/SqliteStore.h"
#include "support/SourceFolder.h"
#include "support/TestDatabase.h"

namespace torvex {
namespace {

namespace fs = std::filesystem;

const FixedClock clock{{2026, 3, 4, 5, 6, 7}};

std::vector<SchemaStep> firstSteps() {
    return {
        {"content", 1, "pages",
         "create table Page (id {identity}, title {text}, hidden {flag} default 0, made {date});"},
        {"audit", 1, "trail", "create table Trail (id {number});"},
        {"hits", 1, "hits", "create table Hit (id {number});"},
    };
}

std::vector<SchemaStep> withStep(SchemaStep step) {
    auto steps = firstSteps();
    steps.push_back(std::move(step));
    return steps;
}

const SchemaStep addColumn{"content", 2, "subtitles",
                           "alter table Page add column subtitle {text} default 'none'; "
                           "update Page set title = 'changed';"};

class SchemaTest : public ::testing::TestWithParam<db::Engine> {
  protected:
    void SetUp() override {
        try {
            made_ = test::makeEmptyTestDatabase(GetParam());
        } catch (const std::exception& error) {
            FAIL() << error.what();
        }
    }

    static Schema schemaOf(std::vector<SchemaStep> steps) {
        return Schema(std::move(steps),
                      {"create extension if not exists citext;"
                       "create collation if not exists torvex (provider = libc, locale = 'C.UTF-8');",
                       "create or replace view Finished as select count(*) as n from Page;"});
    }
    const std::string& text() const { return made_->connectionText(); }
    void create(const std::vector<SchemaStep>& steps) { schemaOf(steps).create(*database_, clock, text()); }
    Migration migrate(const std::vector<SchemaStep>& steps) {
        return schemaOf(steps).migrate(*database_, clock, text());
    }
    db::Lease open() { return database_->open(text()); }
    std::string valueOf(std::string_view statement) {
        const db::Lease connection = open();
        auto rows = connection->query(statement);
        return rows.next() ? rows.text(rows.columnName(0)) : "no row";
    }
    template <typename Action>
    static std::string messageOf(Action action) {
        try {
            action();
        } catch (const Error& error) {
            return error.what();
        }
        return "nothing was thrown";
    }
    std::string messageOfCheck(const std::vector<SchemaStep>& steps) {
        return messageOf([&] { schemaOf(steps).check(*open()); });
    }

    std::unique_ptr<test::TestDatabase> made_;
    std::unique_ptr<db::Database> database_ = db::makeDatabase();
};
INSTANTIATE_TEST_SUITE_P(Engines, SchemaTest, test::bothEngines(), test::engineName);

bool contains(const std::string& text, std::string_view part) {
    return text.find(part) != std::string::npos;
}

TEST_P(SchemaTest, CreatesAllTables) {
    create(firstSteps());
    const db::Lease connection = open();
    connection->executeScript(
        "insert into Page (title) values ('A'); insert into Trail values (1); insert into Hit values (1)");
    EXPECT_EQ(valueOf("select title from Page where title = 'a' and hidden = 0"), "A");
    EXPECT_NO_THROW(schemaOf(firstSteps()).check(*connection));
}

TEST_P(SchemaTest, NotesEachStepWithItsTime) {
    create(firstSteps());
    EXPECT_EQ(valueOf("select name from TORVEX_SCHEMA_CONTENT where version = 1"), "pages");
    EXPECT_EQ(valueOf("select applied from TORVEX_SCHEMA_AUDIT where version = 1"), "2026-03-04 05:06:07");
    EXPECT_EQ(valueOf("select count(*) as n from TORVEX_SCHEMA_HITS"), "1");
}

/// The text of a step of the stored hits.
std::string hitsStep(const std::string& file) {
    std::ifstream in(fs::path(test::sourceFolder()) / "install/schema/hits" / file);
    return {std::istreambuf_iterator<char>(in), {}};
}

TEST_P(SchemaTest, MonthsBeginWithTheHitsThatStand) {
    auto steps = firstSteps();
    steps.push_back({"hits", 2, "hits", hitsStep("0001_hits.sql")});
    create(steps);
    open()->executeScript(
        "insert into TORVEX_LOGGING (site, lang, nodeId, yyyymmdd, hits, uniquehits) values "
        "('aa', 'en', 'aa.en.01', '20260630', 3, 1), ('aa', 'en', 'aa.en.01', '20260601', 4, 2), "
        "('aa', 'en', 'aa.en.01', '20260701', 5, null)");
    steps.push_back({"hits", 3, "months", hitsStep("0003_months.sql")});
    migrate(steps);
    const auto month = [&](const std::string& column, const std::string& yyyymm) {
        return valueOf("select " + column +
                       " from TORVEX_LOGGING_MONTHS where nodeId = 'aa.en.01' and "
                       "site = 'aa' and lang = 'en' and yyyymm = '" +
                       yyyymm + "'");
    };
    EXPECT_EQ(month("hits", "202606"), "7");
    EXPECT_EQ(month("uniquehits", "202606"), "3");
    EXPECT_EQ(month("hits", "202607"), "5");
    open()->executeScript("update TORVEX_LOGGING set hits = 6, uniquehits = 1 where yyyymmdd = '20260701'");
    EXPECT_EQ(month("hits", "202607"), "6");
    EXPECT_EQ(month("uniquehits", "202607"), "1");
}

TEST_P(SchemaTest, IsNotCreatedWhereThereIsOne) {
    create(firstSteps());
    open()->executeScript("insert into Page (title) values ('kept')");
    EXPECT_TRUE(contains(messageOf([&] { create(firstSteps()); }), "already"));
    EXPECT_EQ(valueOf("select title from Page"), "kept");
}

TEST_P(SchemaTest, MigrateAppliesWhatIsMissing) {
    create(firstSteps());
    open()->executeScript("insert into Page (title) values ('old')");
    const Migration done = migrate(withStep(addColumn));
    EXPECT_EQ(done.applied, std::vector<std::string>{"subtitles"});
    EXPECT_EQ(valueOf("select subtitle from Page where title = 'CHANGED'"), "none");
    EXPECT_NO_THROW(schemaOf(withStep(addColumn)).check(*open()));
}

TEST_P(SchemaTest, MigrateAppliesStepsInTheirOrder) {
    create(firstSteps());
    auto steps = firstSteps();
    steps.push_back({"content", 3, "third", "insert into Extra (id) values (3);"});
    steps.push_back({"content", 2, "second", "create table Extra (id {number});"});
    EXPECT_EQ(migrate(steps).applied, (std::vector<std::string>{"second", "third"}));
    EXPECT_EQ(valueOf("select id from Extra"), "3");
}

TEST_P(SchemaTest, MigrateDoesNothingWhenNothingIsMissing) {
    create(firstSteps());
    const Migration done = migrate(firstSteps());
    EXPECT_TRUE(done.applied.empty());
    EXPECT_EQ(done.backup, "");
}

TEST_P(SchemaTest, AFailingStepChangesNothingAndIsNamed) {
    create(firstSteps());
    const auto steps = withStep(
        {"content", 2, "broken", "create table Half (id {number}); insert into Nowhere values (1);"});
    const std::string message = messageOf([&] { migrate(steps); });
    EXPECT_TRUE(contains(message, "\"broken\"")) << message;
    EXPECT_THROW(open()->query("select id from Half"), db::DatabaseError);
    EXPECT_EQ(valueOf("select count(*) as n from TORVEX_SCHEMA_CONTENT"), "1");
}

TEST_P(SchemaTest, StepsBeforeAFailingOneStay) {
    create(firstSteps());
    auto steps = withStep(addColumn);
    steps.push_back({"content", 3, "broken", "nonsense;"});
    EXPECT_TRUE(contains(messageOf([&] { migrate(steps); }), "\"broken\""));
    EXPECT_EQ(valueOf("select max(version) as n from TORVEX_SCHEMA_CONTENT"), "2");
    EXPECT_NO_THROW(schemaOf(withStep(addColumn)).check(*open()));
}

TEST_P(SchemaTest, ADatabaseThatIsNewerIsRefused) {
    create(withStep(addColumn));
    const std::string message = messageOfCheck(firstSteps());
    EXPECT_TRUE(contains(message, "newer than this program")) << message;
    EXPECT_TRUE(contains(message, "restore the copy")) << message;
    EXPECT_TRUE(contains(messageOf([&] { migrate(firstSteps()); }), "newer than this program"));
}

TEST_P(SchemaTest, ADatabaseThatIsOlderAsksForTheMigration) {
    create(firstSteps());
    const std::string message = messageOfCheck(withStep(addColumn));
    EXPECT_TRUE(contains(message, "\"torvex migrate\"")) << message;
    EXPECT_TRUE(contains(message, "\"subtitles\"")) << message;
    EXPECT_EQ(contains(message, "pg_dump"), GetParam() == db::Engine::PostgreSql) << message;
}

TEST_P(SchemaTest, ADatabaseWithoutTablesAsksForInit) {
    if (GetParam() == db::Engine::Sqlite) {
        create(firstSteps());
        open()->executeScript(
            "drop table TORVEX_SCHEMA_CONTENT; drop table TORVEX_SCHEMA_AUDIT; drop table "
            "TORVEX_SCHEMA_HITS");
    }
    EXPECT_TRUE(contains(messageOfCheck(firstSteps()), "\"torvex init\""));
    EXPECT_TRUE(contains(messageOf([&] { migrate(firstSteps()); }), "\"torvex init\""));
}

TEST_P(SchemaTest, AStoreThatWasLeftHalfMadeIsCompletedByMigrate) {
    auto steps = firstSteps();
    steps.push_back({"content", 2, "broken", "nonsense;"});
    EXPECT_TRUE(contains(messageOf([&] { create(steps); }), "\"broken\""));
    migrate(firstSteps());
    EXPECT_NO_THROW(schemaOf(firstSteps()).check(*open()));
}

TEST_P(SchemaTest, AStepOfAnUnknownStoreIsRefused) {
    EXPECT_TRUE(contains(messageOf([] { schemaOf({{"elsewhere", 1, "lost", ""}}); }), "\"elsewhere\""));
}

TEST_P(SchemaTest, TheInstalledSchemaIsCreatedAndCheckedWhole) {
    const Schema installed = test::installSchema();
    installed.create(*database_, clock, text());
    const db::Lease connection = open();
    EXPECT_NO_THROW(installed.check(*connection));
    EXPECT_NO_THROW(connection->executeScript(test::installRows()));
}

TEST_P(SchemaTest, TheFinishForPostgresRunsAtCreationAndAfterEachMigration) {
    if (GetParam() == db::Engine::Sqlite) return;
    create(firstSteps());
    EXPECT_EQ(valueOf("select n from Finished"), "0");
    open()->executeScript("drop view Finished");
    migrate(withStep(addColumn));
    EXPECT_EQ(valueOf("select n from Finished"), "0");
}

class SqliteSchemaTest : public SchemaTest {};
INSTANTIATE_TEST_SUITE_P(Engines, SqliteSchemaTest, ::testing::Values(db::Engine::Sqlite), test::engineName);

TEST_P(SqliteSchemaTest, PutsEachTableInTheFileOfItsStore) {
    create(firstSteps());
    EXPECT_EQ(valueOf("select name from main.sqlite_schema where name = 'Page'"), "Page");
    EXPECT_EQ(valueOf("select name from audit.sqlite_schema where name = 'Trail'"), "Trail");
    EXPECT_EQ(valueOf("select name from hits.sqlite_schema where name = 'Hit'"), "Hit");
}

TEST_P(SqliteSchemaTest, MigrateCopiesTheStoreBefore) {
    create(firstSteps());
    open()->executeScript("insert into Page (title) values ('old')");
    const Migration done = migrate(withStep(addColumn));
    EXPECT_EQ(done.backup, db::storeFolder(text()) + "/backup-20260304-050607");
    const db::Lease copy = database_->open("sqlite:" + done.backup);
    EXPECT_NO_THROW(schemaOf(firstSteps()).check(*copy));
    auto rows = copy->query("select title from Page");
    ASSERT_TRUE(rows.next());
    EXPECT_EQ(rows.text("title"), "old");
}

TEST_P(SqliteSchemaTest, ASecondCopyInTheSameSecondHasAnotherName) {
    create(firstSteps());
    fs::create_directory(db::storeFolder(text()) + "/backup-20260304-050607");
    EXPECT_EQ(migrate(withStep(addColumn)).backup, db::storeFolder(text()) + "/backup-20260304-050607-2");
}

class PostgresSchemaTest : public SchemaTest {};
INSTANTIATE_TEST_SUITE_P(Engines, PostgresSchemaTest, ::testing::Values(db::Engine::PostgreSql),
                         test::engineName);

TEST_P(PostgresSchemaTest, MakesNoCopy) {
    create(firstSteps());
    EXPECT_EQ(migrate(withStep(addColumn)).backup, "");
}

}  // namespace
}  // namespace torvex
