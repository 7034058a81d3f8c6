#include "templates/StyleSheet.h"

#include "support/SiteTest.h"

namespace torvex::test {
namespace {

class StyleSheetTest : public SiteTest {
  protected:
    void SetUp() override {
        SiteTest::SetUp();
        if (!HasFatalFailure()) assets.connect(connection());
    }

    void entry(int id, const std::string& name, const std::string& file, const std::string& site = "aa") {
        row("TORVEX_STYLESHEETS", {{"ss_id", id},
                                   {"ss_site", site},
                                   {"ss_lang", "en"},
                                   {"ss_name", name},
                                   {"ss_description", "Of " + name},
                                   {"ss_filename", file}});
    }

    StyleSheet assets{host.context()};
};
INSTANTIATE_TEST_SUITE_P(Engines, StyleSheetTest, bothEngines(), engineName);

TEST_P(StyleSheetTest, ANewNameAndFileAreFree) {
    entry(1, "Plain", "plain.x");
    EXPECT_EQ(assets.checkStylesheet("aa", "en", -1, "Wide", "wide.x"), "0");
    EXPECT_EQ(assets.checkStylesheet("bb", "en", -1, "Plain", "plain.x"), "0");
}

TEST_P(StyleSheetTest, ATakenNameStandsBeforeATakenFile) {
    entry(1, "Plain", "plain.x");
    EXPECT_EQ(assets.checkStylesheet("aa", "en", -1, "plain", "PLAIN.x"), "1");
    EXPECT_EQ(assets.checkStylesheet("aa", "en", -1, "Wide", "C:\\files\\PLAIN.x"), "2");
}

TEST_P(StyleSheetTest, AnEntryIsNoConflictWithItself) {
    entry(1, "Plain", "plain.x");
    EXPECT_EQ(assets.checkStylesheet("aa", "en", 1, "Plain", "plain.x"), "0");
}

TEST_P(StyleSheetTest, AnEntryIsReadWithTheTextOfItsFile) {
    entry(7, "Plain", "plain.x");
    host.files.bytes["/install/wwwroot/stylesheets/aa/en/plain.x"] = "text";
    EXPECT_FALSE(assets.ssExists());
    EXPECT_TRUE(assets.getStylesheet(7));
    EXPECT_TRUE(assets.ssExists());
    EXPECT_EQ(assets.ssSite(), "aa");
    EXPECT_EQ(assets.ssLang(), "en");
    EXPECT_EQ(assets.ssName(), "Plain");
    EXPECT_EQ(assets.ssDescription(), "Of Plain");
    EXPECT_EQ(assets.ssFilename(), "plain.x");
    EXPECT_EQ(assets.ssSource(), "text");
}

TEST_P(StyleSheetTest, AnUnknownEntryClearsTheOneBefore) {
    entry(7, "Plain", "plain.x");
    assets.getStylesheet(7);
    EXPECT_FALSE(assets.getStylesheet(8));
    EXPECT_FALSE(assets.ssExists());
    EXPECT_EQ(assets.ssName(), "");
}

TEST_P(StyleSheetTest, AnEntryIsFoundByItsName) {
    entry(7, "Plain", "plain.x");
    EXPECT_EQ(assets.getStylesheetId("PLAIN", "aa", "en"), 7);
    EXPECT_EQ(assets.getStylesheetId("Plain", "bb", "en"), -1);
    EXPECT_EQ(assets.getStylesheetId("Wide", "aa", "en"), -1);
}

TEST_P(StyleSheetTest, TheListComesByNameInThreeColumns) {
    entry(1, "Wide", "1.x");
    entry(2, "narrow", "2.x");
    entry(3, "Other", "3.x", "bb");
    const Value list = assets.getStylesheetList("aa", "en");
    ASSERT_TRUE(list.isGrid());
    ASSERT_EQ(list.grid().columns(), 3);
    ASSERT_EQ(list.grid().rows(), 2);
    EXPECT_EQ(list.grid().at(0, 0), Value(2));
    EXPECT_EQ(list.grid().at(1, 0), Value("narrow"));
    EXPECT_EQ(list.grid().at(2, 0), Value("Of narrow"));
    EXPECT_EQ(list.grid().at(1, 1), Value("Wide"));
}

TEST_P(StyleSheetTest, AListWithoutEntriesIsEmpty) {
    EXPECT_TRUE(assets.getStylesheetList("aa", "en").isEmpty());
}

TEST_P(StyleSheetTest, APageInheritsFromTheNearestAncestorThatNamesOne) {
    entry(7, "Plain", " plain.x ");
    entry(8, "Root", "root.x");
    page("aa.en").id(10).stylesheet(8).insert();
    page("aa.en.01").id(11).stylesheet(7).insert();
    page("aa.en.01.01").id(12).insert();
    page("aa.en.02").id(13).insert();
    EXPECT_EQ(assets.getStylesheetFile("12"), "plain.x");
    EXPECT_EQ(assets.getStylesheetName(" AA.en.01.01 "), "Plain");
    EXPECT_EQ(assets.getStylesheetFile("13"), "root.x");
}

TEST_P(StyleSheetTest, APageThatInheritsUpToTheRootHasNone) {
    page("aa.en").id(10).insert();
    page("aa.en.01").id(11).insert();
    EXPECT_EQ(assets.getStylesheetFile("11"), "");
    EXPECT_EQ(assets.getStylesheetName("11"), "");
}

TEST_P(StyleSheetTest, TheModePicksTheTwin) {
    entry(7, "Plain", "plain.x");
    entry(8, "Design", "design.x");
    page("aa.en.01").id(12).stylesheet(7).insertInLiveOnly();
    page("aa.en.01").id(12).stylesheet(8).insertInDesignOnly();
    EXPECT_EQ(assets.getStylesheetFile("12"), "plain.x");
    EXPECT_EQ(assets.getStylesheetFile("12", "D"), "design.x");
    EXPECT_EQ(assets.getStylesheetName("12", "D"), "Design");
}

TEST_P(StyleSheetTest, WhatIsNoPageHasNone) {
    entry(7, "Plain", "plain.x");
    page("aa.fr").id(10).stylesheet(7).insert();
    for (const std::string& bad : badIdentifiers()) {
        EXPECT_EQ(assets.getStylesheetFile(bad), "") << bad.substr(0, 40);
    }
}

TEST_P(StyleSheetTest, NamesOfPagesConvertByTheDesignTables) {
    page("aa.en.01").id(12).insertInDesignOnly();
    EXPECT_EQ(assets.getNodeId(12), "aa.en.01");
    EXPECT_EQ(assets.getPageId("aa.en.01"), 12);
}

TEST_P(StyleSheetTest, FailuresTellTheOperation) {
    page("aa.en.01").id(12).stylesheet(7).insert();
    drop("TORVEX_STYLESHEETS");
    const auto begins = [](const std::string& error, const char* function) {
        EXPECT_TRUE(error.starts_with(chain({function}))) << error;
    };
    begins(errorOf([&] { assets.checkStylesheet("aa", "en", 1, "x", "y"); }), "checkStylesheet !");
    begins(errorOf([&] { assets.getStylesheet(1); }), "getStylesheet !");
    begins(errorOf([&] { assets.getStylesheetId("x", "aa", "en"); }), "getStylesheetId !");
    begins(errorOf([&] { assets.getStylesheetList("aa", "en"); }), "getStylesheetList !");
    begins(errorOf([&] { assets.getStylesheetFile("12"); }), "getStyleSheetFile !");
    begins(errorOf([&] { assets.getStylesheetName("12"); }), "getStyleSheetName !");
}

}  // namespace
}  // namespace torvex::test
