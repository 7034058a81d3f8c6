#include <filesystem>
#include <fmt/format.h>
#include <fstream>
#include <gmock/gmock.h>

#include "cli/ProgramFixture.h"
#include "platform/text/Charset.h"

namespace torvex::test {
namespace {

namespace fs = std::filesystem;
using ::testing::AllOf;
using ::testing::HasSubstr;
using ::testing::IsEmpty;
using ::testing::UnorderedElementsAre;

class SnapshotCommandTest : public ProgramDatabaseTest {
  protected:
    void SetUp() override {
        init();
        sql("insert into TORVEX_LANGUAGES (lang, name) values ('en', 'English')");
    }

    ProgramResult snapshot(Arguments arguments) {
        arguments.insert(arguments.begin(), {"snapshot", "--install", site()});
        return run(arguments);
    }
    void page(int number, const std::string& node, const std::string& type = "P") {
        for (const auto* twin : {"DESIGN", "LIVE"}) {
            sql(fmt::format(
                "insert into TORVEX_PAGES_{} (pageId, nodeId, type, title) values ({}, '{}', '{}', "
                "'Title of {}')",
                twin, number, node, type, number));
        }
    }
    static std::string file(const std::string& node) { return "site/search/html/en/aa/" + node + ".html"; }
    void put(const std::string& name, const std::string& bytes) {
        fs::create_directories(fs::path(folder() + "/" + name).parent_path());
        std::ofstream(folder() + "/" + name) << bytes;
    }
    /// All files below the folder of the snapshots, by their names.
    std::vector<std::string> files() {
        std::vector<std::string> names;
        for (const auto& entry : fs::recursive_directory_iterator(site() + "/search")) {
            if (entry.is_regular_file()) names.push_back(entry.path().filename().string());
        }
        return names;
    }
};
INSTANTIATE_TEST_SUITE_P(Engines, SnapshotCommandTest, bothEngines(), engineName);

TEST_P(SnapshotCommandTest, SaysWhatToGiveWhenNothingIsGiven) {
    for (const Arguments& arguments : {Arguments{}, Arguments{""}, Arguments{"  "}}) {
        const ProgramResult result = snapshot(arguments);
        EXPECT_EQ(result.code, 2);
        EXPECT_THAT(result.err, AllOf(HasSubstr("PAGE"), HasSubstr("--all"), HasSubstr("--help")));
    }
}

TEST_P(SnapshotCommandTest, TakesOnePageOrAll) {
    EXPECT_EQ(snapshot({"--all", "12"}).code, 2);
    EXPECT_EQ(snapshot({"12", "13"}).code, 2);
}

TEST_P(SnapshotCommandTest, ItsHelpHasExamples) {
    const ProgramResult result = run({"snapshot", "--help"});
    EXPECT_EQ(result.code, 0);
    EXPECT_THAT(result.out,
                AllOf(HasSubstr("Examples:"), HasSubstr("torvex snapshot --install mysite --all")));
}

TEST_P(SnapshotCommandTest, WritesThePageOfANumberOrANode) {
    page(12, "aa.en.01");
    page(13, "aa.en.02");
    page(14, "aa.en.03");
    const ProgramResult byNumber = snapshot({"12"});
    EXPECT_EQ(byNumber.code, 0) << byNumber.err;
    EXPECT_EQ(byNumber.out, "Wrote " + site() + "/search/html/en/aa/aa.en.01.html\n");
    EXPECT_EQ(snapshot({"AA.en.02"}).code, 0);
    EXPECT_THAT(files(), UnorderedElementsAre("aa.en.01.html", "aa.en.02.html"));
    EXPECT_THAT(charset::decodeFile(content(file("aa.en.01")), true),
                HasSubstr("<TITLE>Title of 12</TITLE>"));
}

TEST_P(SnapshotCommandTest, APageThatIsntThereIsAnError) {
    for (const auto* ident : {"77", "aa.en.77", "0", "-5", "nonsense", "1.5"}) {
        const ProgramResult result = snapshot({"--", ident});
        EXPECT_EQ(result.code, 1) << ident;
        EXPECT_EQ(result.err, fmt::format("torvex: there is no page \"{}\"\n", ident));
    }
    EXPECT_THAT(files(), IsEmpty());
}

TEST_P(SnapshotCommandTest, APageThatIsntPublishedIsAnError) {
    sql("insert into TORVEX_PAGES_DESIGN (pageId, nodeId, type) values (12, 'aa.en.01', 'P')");
    page(13, "aa.en.99.01");
    for (const auto* ident : {"12", "13"}) {
        const ProgramResult result = snapshot({ident});
        EXPECT_EQ(result.code, 1);
        EXPECT_THAT(result.err, HasSubstr("only published pages"));
    }
}

TEST_P(SnapshotCommandTest, AFolderLosesItsFile) {
    page(12, "aa.en.01", "F");
    put(file("aa.en.01"), "old");
    const ProgramResult result = snapshot({"12"});
    EXPECT_EQ(result.code, 0) << result.err;
    EXPECT_THAT(result.out, HasSubstr("A folder has no snapshot"));
    EXPECT_FALSE(exists(file("aa.en.01")));
}

TEST_P(SnapshotCommandTest, AllPagesAreWrittenAndWhatIsStrayIsRemoved) {
    page(12, "aa.en.01");
    page(13, "aa.en.02", "F");
    page(14, "aa.en.99.01");
    page(15, "bb.de.01");
    put(file("aa.en.02"), "of what is a folder now");
    put(file("aa.en.07"), "of a page that is gone");
    put(file("aa.en.99.01"), "of a system page");
    put(file("bb.de.01"), "in the wrong folder");
    put("site/search/html/en/aa/notes.txt", "somebody's notes");
    put("site/search/html/en/aa/.torvex-0123456789abcdef.tmp", "left by a crash");
    const ProgramResult result = snapshot({"--all"});
    EXPECT_EQ(result.code, 0) << result.err;
    EXPECT_EQ(result.out,
              "Wrote 2 snapshots to " + site() + "/search/html/\nRemoved 3 of pages that are gone\n");
    EXPECT_EQ(result.err, "");
    EXPECT_THAT(files(), UnorderedElementsAre("aa.en.01.html", "bb.de.01.html", "notes.txt"));
    EXPECT_TRUE(exists("site/search/html/de/bb/bb.de.01.html"));
}

TEST_P(SnapshotCommandTest, ManyPagesAreReportedOnTheWay) {
    sql("with recursive n (i) as (select 0 union all select i + 1 from n where i < 149) "
        "insert into TORVEX_PAGES_LIVE (pageId, nodeId, type, title) "
        "select 5000 + i, 'aa.en.' || (10 + i / 10) || '.' || (10 + i % 10), 'P', 'x' from n");
    const ProgramResult result = snapshot({"--all"});
    EXPECT_EQ(result.code, 0) << result.err;
    EXPECT_EQ(files().size(), 150U);
    EXPECT_THAT(result.err, AllOf(HasSubstr("15 of 150 pages\n"), HasSubstr("150 of 150 pages\n")));
}

TEST_P(SnapshotCommandTest, APageThatFailsIsNamedAndTheOthersGoOn) {
    page(12, "aa.en.01");
    page(13, "aa.en.02");
    sql("insert into TORVEX_TEMPLATES (tpl_id, tpl_filename) values (5, 'page.html')");
    sql("update TORVEX_PAGES_LIVE set template = 5 where pageId = 12");
    put("site/contentTemplates/aa/en/page.html", "\xFF broken");
    put(file("aa.en.01"), "kept");
    const ProgramResult result = snapshot({"--all"});
    EXPECT_EQ(result.code, 1);
    EXPECT_THAT(result.err, AllOf(HasSubstr("torvex: page aa.en.01: "), HasSubstr("page.html")));
    EXPECT_THAT(result.out, HasSubstr("Wrote 1 snapshot to "));
    EXPECT_EQ(content(file("aa.en.01")), "kept");
    EXPECT_TRUE(exists(file("aa.en.02")));
    EXPECT_EQ(snapshot({"12"}).code, 1);
}

TEST_P(SnapshotCommandTest, AnInstallationWithoutPagesIsNoError) {
    const ProgramResult result = snapshot({"--all"});
    EXPECT_EQ(result.code, 0) << result.err;
    EXPECT_THAT(result.out, HasSubstr("Wrote 0 snapshots to "));
}

TEST_P(SnapshotCommandTest, AServerThatStartsTakesAwayWhatACrashLeft) {
    put(file("aa.en.01"), "whole");
    put("site/search/html/en/aa/.torvex-0123456789abcdef.tmp", "half of a te");
    const RunningProgram server(folder(), {"serve", "--install", site(), "--listen", "127.0.0.1:0"});
    server.waitForError("serving ");
    EXPECT_THAT(files(), UnorderedElementsAre("aa.en.01.html"));
}

TEST_P(SnapshotCommandTest, WithoutAnInstallationItSaysSo) {
    const ProgramResult result = run({"snapshot", "--all"});
    EXPECT_EQ(result.code, 1);
    EXPECT_THAT(result.err, HasSubstr("--install"));
}

}  // namespace
}  // namespace torvex::test
