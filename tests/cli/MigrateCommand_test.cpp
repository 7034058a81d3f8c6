#include <filesystem>
#include <fstream>
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
    void goBack() {
        sql("drop table TORVEX_LOGGING; drop table TORVEX_SEARCH_DAYS; drop table TORVEX_LOGGING_MONTHS; "
            "delete from TORVEX_SCHEMA_HITS");
        if (GetParam() == db::Engine::PostgreSql) sql("drop function torvex_hits_changed()");
    }
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

TEST_P(MigrateCommand, NewWordsAreAddedAndChangedOnesStay) {
    init();
    sql("delete from TORVEX_INTERFACE_VOCAB where lang_label = 23");
    sql("update TORVEX_INTERFACE_VOCAB set lang_vocab2 = 'Sichern' where lang_label = 5");
    EXPECT_THAT(output({"migrate", "--install", site()}), HasSubstr("Added 1 words"));
    EXPECT_EQ(sql("select lang_vocab1, lang_vocab2 from TORVEX_INTERFACE_VOCAB where lang_label in (5, 23) "
                  "order by lang_label"),
              "{\"lang_vocab1\":\"Save\",\"lang_vocab2\":\"Sichern\"}\n"
              "{\"lang_vocab1\":\"Log in\",\"lang_vocab2\":\"Anmelden\"}\n");
}

TEST_P(MigrateCommand, TheProgramsFilesAreRenewedAndTranslated) {
    init();
    const std::string master = site() + "/torvex/templates/gen/login.html";
    const std::string before = content("site/torvex/templates/gen/login.html");
    std::ofstream(master) << "old";
    std::filesystem::remove(site() + "/wwwroot/torvex/interface.css");
    std::filesystem::remove_all(site() + "/torvex/templates/de");
    EXPECT_THAT(output({"migrate", "--install", site()}), HasSubstr("Renewed 2 files"));
    EXPECT_EQ(content("site/torvex/templates/gen/login.html"), before);
    EXPECT_TRUE(exists("site/torvex/templates/de/login.html"));
    EXPECT_THAT(output({"migrate", "--install", site()}), HasSubstr("up to date"));
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
