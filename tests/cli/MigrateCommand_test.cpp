#include <filesystem>
#include <gmock/gmock.h>

#include "cli/ProgramFixture.h"

namespace torvex::test {
namespace {

using testing::HasSubstr;

class MigrateCommand : public ProgramDatabaseTest {
  protected:
    std::vector<std::string> backups() const {
        std::vector<std::string> found;
        if (!std::filesystem::exists(site() + "/data")) return found;
        for (const auto& entry : std::filesystem::directory_iterator(site() + "/data")) {
            if (entry.is_directory()) found.push_back(entry.path().string());
        }
        return found;
    }
    /// Puts the database back to before its step that makes the table of hits.
    void goBack() { sql("drop table TORVEX_LOGGING; delete from TORVEX_SCHEMA_HITS"); }
};
INSTANTIATE_TEST_SUITE_P(Engines, MigrateCommand, bothEngines(), engineName);

TEST_P(MigrateCommand, CurrentDatabaseIsLeftAlone) {
    init();
    EXPECT_THAT(output({"migrate", "--install", site()}), HasSubstr("up to date"));
    EXPECT_TRUE(backups().empty());
}

TEST_P(MigrateCommand, MissingStepsAreAppliedAfterACopy) {
    init();
    goBack();
    EXPECT_THAT(output({"migrate", "--install", site()}), HasSubstr("Applied hits"));
    EXPECT_EQ(sql("select count(*) as n from TORVEX_LOGGING"), "{\"n\":0}\n");
    EXPECT_EQ(backups().size(), GetParam() == db::Engine::Sqlite ? 1U : 0U);
}

TEST_P(MigrateCommand, NewerDatabaseIsRefusedAndLeftAlone) {
    init();
    sql("insert into TORVEX_SCHEMA_CONTENT (version, name, applied) values (999, 'later', '2026-01-01 "
        "00:00:00')");
    const ProgramResult refused = run({"migrate", "--install", site()});
    EXPECT_EQ(refused.code, 1);
    EXPECT_THAT(refused.err, HasSubstr("newer"));
    EXPECT_EQ(sql("select count(*) as n from TORVEX_SCHEMA_CONTENT where version = 999"), "{\"n\":1}\n");
    EXPECT_TRUE(backups().empty());
}

}  // namespace
}  // namespace torvex::test
