#include <gmock/gmock.h>

#include "support/RecordsTest.h"
#include "templates/Application.h"
#include "templates/BaseTemplate.h"
#include "templates/StyleSheet.h"
#include "templates/Template.h"

namespace torvex::test {
namespace {

using testing::ElementsAre;

/// An entry 5 in each register, called "Roses", with the file rose.html, and one 6 beside it.
class AssetRemovalTest : public RecordsTest {
  protected:
    void SetUp() override {
        RecordsTest::SetUp();
        if (HasFatalFailure()) return;
        for (const int id : {5, 6}) {
            const std::string file = id == 5 ? "rose.html" : "other.html";
            contentTemplate(id, "aa", "en", file, "source");
            baseTemplate(id, "aa", "en", file, "source");
            stylesheet(id, "aa", "en", file, "source");
            row("TORVEX_APPLICATIONS", {{"app_id", id}, {"app_name", "Roses"}});
        }
        for (const auto* statement : {"update TORVEX_TEMPLATES set tpl_name = 'Roses'",
                                      "update TORVEX_BASETEMPLATES set btpl_name = 'Roses'",
                                      "update TORVEX_STYLESHEETS set ss_name = 'Roses'"}) {
            connection().execute(statement);
        }
    }

    std::string removeTemplate(int id = 5, int advId = 0) { return made<Template>().delTemplate(id, advId); }
    std::string removeBaseTemplate(int id = 5, int advId = 0) {
        return made<BaseTemplate>().delBaseTemplate(id, advId);
    }
    std::string removeStylesheet(int id = 5, int advId = 0) {
        return made<StyleSheet>().delStylesheet(id, advId);
    }
    std::string removeApplication(int id = 5, int advId = 0) {
        return made<Application>().delApplication(id, advId);
    }

    /// How many entries and files there are of each register.
    std::vector<std::string> counts() {
        return {cell("select count(*) as n from TORVEX_TEMPLATES"),
                cell("select count(*) as n from TORVEX_BASETEMPLATES"),
                cell("select count(*) as n from TORVEX_STYLESHEETS"),
                cell("select count(*) as n from TORVEX_APPLICATIONS"),
                std::to_string(host.files.bytes.size())};
    }
    void lock(const std::string& table, const std::string& key) { hold(table, key, 5, bertsSession); }

  private:
    template <typename C>
    C made() {
        C object(host.context());
        object.connect(connection());
        return object;
    }
};
INSTANTIATE_TEST_SUITE_P(Engines, AssetRemovalTest, bothEngines(), engineName);

TEST_P(AssetRemovalTest, AContentTemplateGoesWithItsFile) {
    EXPECT_EQ(removeTemplate(), "0");
    EXPECT_EQ(cell("select tpl_id from TORVEX_TEMPLATES"), "6");
    EXPECT_FALSE(host.files.fileExists("/install/contentTemplates/aa/en/rose.html"));
    EXPECT_TRUE(host.files.fileExists("/install/contentTemplates/aa/en/other.html"));
}

TEST_P(AssetRemovalTest, ABaseTemplateGoesWithItsFile) {
    EXPECT_EQ(removeBaseTemplate(), "0");
    EXPECT_EQ(cell("select btpl_id from TORVEX_BASETEMPLATES"), "6");
    EXPECT_FALSE(host.files.fileExists("/install/baseTemplates/aa/en/rose.html"));
}

TEST_P(AssetRemovalTest, AStylesheetGoesWithItsFile) {
    EXPECT_EQ(removeStylesheet(), "0");
    EXPECT_EQ(cell("select ss_id from TORVEX_STYLESHEETS"), "6");
    EXPECT_FALSE(host.files.fileExists("/install/wwwroot/stylesheets/aa/en/rose.html"));
}

TEST_P(AssetRemovalTest, AnApplicationGoes) {
    const auto files = host.files.bytes;
    EXPECT_EQ(removeApplication(), "0");
    EXPECT_EQ(cell("select app_id from TORVEX_APPLICATIONS"), "6");
    EXPECT_EQ(host.files.bytes, files);
}

TEST_P(AssetRemovalTest, WhatIsNotThereIsTold) {
    expectRefusal("2", [&] { return removeTemplate(7); });
    expectRefusal("2", [&] { return removeBaseTemplate(7); });
    expectRefusal("2", [&] { return removeStylesheet(7); });
    expectRefusal("2", [&] { return removeApplication(7); });
}

TEST_P(AssetRemovalTest, AnEntryOfADesignPageStays) {
    page("aa.en.01").contentTemplate(5).baseTemplate(5).stylesheet(5).application(5).insertInDesignOnly();
    expectRefusal("3", [&] { return removeTemplate(); });
    expectRefusal("3", [&] { return removeBaseTemplate(); });
    expectRefusal("3", [&] { return removeStylesheet(); });
    expectRefusal("3", [&] { return removeApplication(); });
}

TEST_P(AssetRemovalTest, AnEntryOfALivePageStaysThoughTheDesignHasItNoMore) {
    page("aa.en.01").contentTemplate(5).baseTemplate(5).stylesheet(5).application(5).insertInLiveOnly();
    expectRefusal("3", [&] { return removeTemplate(); });
    expectRefusal("3", [&] { return removeBaseTemplate(); });
    expectRefusal("3", [&] { return removeStylesheet(); });
    expectRefusal("3", [&] { return removeApplication(); });
}

TEST_P(AssetRemovalTest, APageOfAnotherSiteDoesntCountButForApplications) {
    page("bb.en.01").contentTemplate(5).baseTemplate(5).stylesheet(5).application(5).insert();
    EXPECT_EQ(removeTemplate(), "0");
    EXPECT_EQ(removeBaseTemplate(), "0");
    EXPECT_EQ(removeStylesheet(), "0");
    expectRefusal("3", [&] { return removeApplication(); });
}

TEST_P(AssetRemovalTest, AContentTemplateOfANewsflashStays) {
    for (const auto* table : {"TORVEX_NEWSFLASH_DESIGN", "TORVEX_NEWSFLASH_LIVE"}) {
        row(table, {{"nf_Id", 1}, {"site", "aa"}, {"lang", "en"}, {"templateId", 5}});
        expectRefusal("4", [&] { return removeTemplate(); });
        connection().execute(std::string("delete from ") + table);
    }
}

TEST_P(AssetRemovalTest, AContentTemplateOfADynamicMenuStays) {
    for (const auto* table : {"TORVEX_DYNMENU_DESIGN", "TORVEX_DYNMENU_LIVE"}) {
        row(table, {{"pageId", 1}, {"site", "aa"}, {"lang", "en"}, {"templateId", 5}});
        expectRefusal("5", [&] { return removeTemplate(); });
        connection().execute(std::string("delete from ") + table);
    }
}

TEST_P(AssetRemovalTest, PagesAreAskedBeforeNewsflashesAndThoseBeforeMenusAndLocks) {
    lock("TORVEX_TEMPLATES", "tpl_id");
    row("TORVEX_DYNMENU_LIVE", {{"pageId", 1}, {"site", "aa"}, {"lang", "en"}, {"templateId", 5}});
    expectRefusal("5", [&] { return removeTemplate(); });
    row("TORVEX_NEWSFLASH_LIVE", {{"nf_Id", 1}, {"site", "aa"}, {"lang", "en"}, {"templateId", 5}});
    expectRefusal("4", [&] { return removeTemplate(); });
    page("aa.en.01").contentTemplate(5).insertInLiveOnly();
    expectRefusal("3", [&] { return removeTemplate(); });
}

TEST_P(AssetRemovalTest, AnEntryThatAnotherSessionHoldsStays) {
    lock("TORVEX_TEMPLATES", "tpl_id");
    lock("TORVEX_BASETEMPLATES", "btpl_id");
    lock("TORVEX_STYLESHEETS", "ss_id");
    lock("TORVEX_APPLICATIONS", "app_id");
    expectRefusal("6", [&] { return removeTemplate(); });
    expectRefusal("4", [&] { return removeBaseTemplate(); });
    expectRefusal("4", [&] { return removeStylesheet(); });
    expectRefusal("4", [&] { return removeApplication(); });
}

TEST_P(AssetRemovalTest, ALockOfASessionThatIsGoneHoldsNothing) {
    hold("TORVEX_TEMPLATES", "tpl_id", 5, "session-that-is-gone");
    EXPECT_EQ(removeTemplate(), "0");
}

TEST_P(AssetRemovalTest, AnEntryOfTheMenuLeavesALine) {
    removeTemplate(5, 221);
    removeBaseTemplate(5, 222);
    removeStylesheet(5, 223);
    removeApplication(5, 40);
    removeTemplate(6);
    EXPECT_THAT(auditTrail(),
                ElementsAre("7|Anna Author|0||221|delete|Content template \"Roses\" has been removed",
                            "7|Anna Author|0||222|delete|Base template \"Roses\" has been removed",
                            "7|Anna Author|0||223|delete|Stylesheet \"Roses\" has been removed",
                            "7|Anna Author|0||40|delete|Application \"Roses\" has been removed"));
}

TEST_P(AssetRemovalTest, AnEntryWhoseFileIsMissingGoes) {
    host.files.bytes.clear();
    EXPECT_EQ(removeTemplate(), "0");
    EXPECT_EQ(cell("select count(*) as n from TORVEX_TEMPLATES"), "1");
}

TEST_P(AssetRemovalTest, AFileThatCantBeRemovedKeepsItsEntry) {
    host.files.writeFailure = "read-only file system";
    expectRefusal("-1", [&] { return removeTemplate(); });
    EXPECT_EQ(host.log.lines.size(), 1U);
}

TEST_P(AssetRemovalTest, ANameWithWildCardsTakesNoOtherFile) {
    connection().execute("update TORVEX_TEMPLATES set tpl_filename = '*.html' where tpl_id = 5");
    const auto files = host.files.bytes;
    EXPECT_EQ(removeTemplate(), "0");
    EXPECT_EQ(host.files.bytes, files);
}

TEST_P(AssetRemovalTest, AFailureAtAnyStepChangesNothing) {
    failEverywhere("0", "-1", [&] { return removeTemplate(); });
}

TEST_P(AssetRemovalTest, ATrailThatCantBeWrittenKeepsTheEntry) {
    drop("TORVEX_AUDIT_TRAIL");
    const auto before = counts();
    EXPECT_EQ(removeTemplate(5, 221), "-1");
    EXPECT_EQ(counts(), before);
}

}  // namespace
}  // namespace torvex::test
