#include "templates/BaseTemplate.h"

#include "support/SiteTest.h"

namespace torvex::test {
namespace {

class BaseTemplateTest : public SiteTest {
  protected:
    void SetUp() override {
        SiteTest::SetUp();
        if (!HasFatalFailure()) assets.connect(connection());
    }

    void entry(int id, const std::string& name, const std::string& file, const std::string& site = "aa") {
        row("TORVEX_BASETEMPLATES", {{"btpl_id", id},
                                     {"btpl_site", site},
                                     {"btpl_lang", "en"},
                                     {"btpl_name", name},
                                     {"btpl_description", "Of " + name},
                                     {"btpl_filename", file}});
    }

    BaseTemplate assets{host.context()};
};
INSTANTIATE_TEST_SUITE_P(Engines, BaseTemplateTest, bothEngines(), engineName);

TEST_P(BaseTemplateTest, ANewNameAndFileAreFree) {
    entry(1, "Plain", "plain.x");
    EXPECT_EQ(assets.checkBaseTemplate("aa", "en", -1, "Wide", "wide.x"), "0");
    EXPECT_EQ(assets.checkBaseTemplate("bb", "en", -1, "Plain", "plain.x"), "0");
}

TEST_P(BaseTemplateTest, ATakenNameStandsBeforeATakenFile) {
    entry(1, "Plain", "plain.x");
    EXPECT_EQ(assets.checkBaseTemplate("aa", "en", -1, "plain", "PLAIN.x"), "1");
    EXPECT_EQ(assets.checkBaseTemplate("aa", "en", -1, "Wide", "C:\\files\\PLAIN.x"), "2");
}

TEST_P(BaseTemplateTest, AnEntryIsNoConflictWithItself) {
    entry(1, "Plain", "plain.x");
    EXPECT_EQ(assets.checkBaseTemplate("aa", "en", 1, "Plain", "plain.x"), "0");
}

TEST_P(BaseTemplateTest, AnEntryIsReadWithTheTextOfItsFile) {
    entry(7, "Plain", "plain.x");
    host.files.bytes["/install/baseTemplates/aa/en/plain.x"] = "text";
    EXPECT_FALSE(assets.btplExists());
    EXPECT_TRUE(assets.getBaseTemplate(7));
    EXPECT_TRUE(assets.btplExists());
    EXPECT_EQ(assets.btplSite(), "aa");
    EXPECT_EQ(assets.btplLang(), "en");
    EXPECT_EQ(assets.btplName(), "Plain");
    EXPECT_EQ(assets.btplDescription(), "Of Plain");
    EXPECT_EQ(assets.btplFilename(), "plain.x");
    EXPECT_EQ(assets.btplSource(), "text");
}

TEST_P(BaseTemplateTest, AnUnknownEntryClearsTheOneBefore) {
    entry(7, "Plain", "plain.x");
    assets.getBaseTemplate(7);
    EXPECT_FALSE(assets.getBaseTemplate(8));
    EXPECT_FALSE(assets.btplExists());
    EXPECT_EQ(assets.btplName(), "");
}

TEST_P(BaseTemplateTest, AnEntryIsFoundByItsName) {
    entry(7, "Plain", "plain.x");
    EXPECT_EQ(assets.getBaseTemplateId("PLAIN", "aa", "en"), 7);
    EXPECT_EQ(assets.getBaseTemplateId("Plain", "bb", "en"), -1);
    EXPECT_EQ(assets.getBaseTemplateId("Wide", "aa", "en"), -1);
}

TEST_P(BaseTemplateTest, TheListComesByNameInThreeColumns) {
    entry(1, "Wide", "1.x");
    entry(2, "narrow", "2.x");
    entry(3, "Other", "3.x", "bb");
    const Value list = assets.getBaseTemplateList("aa", "en");
    ASSERT_TRUE(list.isGrid());
    ASSERT_EQ(list.grid().columns(), 3);
    ASSERT_EQ(list.grid().rows(), 2);
    EXPECT_EQ(list.grid().at(0, 0), Value(2));
    EXPECT_EQ(list.grid().at(1, 0), Value("narrow"));
    EXPECT_EQ(list.grid().at(2, 0), Value("Of narrow"));
    EXPECT_EQ(list.grid().at(1, 1), Value("Wide"));
}

TEST_P(BaseTemplateTest, AListWithoutEntriesIsEmpty) {
    EXPECT_TRUE(assets.getBaseTemplateList("aa", "en").isEmpty());
}

TEST_P(BaseTemplateTest, APageInheritsFromTheNearestAncestorThatNamesOne) {
    entry(7, "Plain", " plain.x ");
    entry(8, "Root", "root.x");
    page("aa.en").id(10).baseTemplate(8).insert();
    page("aa.en.01").id(11).baseTemplate(7).insert();
    page("aa.en.01.01").id(12).insert();
    page("aa.en.02").id(13).insert();
    EXPECT_EQ(assets.getBaseTemplateFile("12"), "plain.x");
    EXPECT_EQ(assets.getBaseTemplateName(" AA.en.01.01 "), "Plain");
    EXPECT_EQ(assets.getBaseTemplateFile("13"), "root.x");
}

TEST_P(BaseTemplateTest, APageThatInheritsUpToTheRootHasNone) {
    page("aa.en").id(10).insert();
    page("aa.en.01").id(11).insert();
    EXPECT_EQ(assets.getBaseTemplateFile("11"), "");
    EXPECT_EQ(assets.getBaseTemplateName("11"), "");
}

TEST_P(BaseTemplateTest, TheModePicksTheTwin) {
    entry(7, "Plain", "plain.x");
    entry(8, "Design", "design.x");
    page("aa.en.01").id(12).baseTemplate(7).insertInLiveOnly();
    page("aa.en.01").id(12).baseTemplate(8).insertInDesignOnly();
    EXPECT_EQ(assets.getBaseTemplateFile("12"), "plain.x");
    EXPECT_EQ(assets.getBaseTemplateFile("12", "D"), "design.x");
    EXPECT_EQ(assets.getBaseTemplateName("12", "D"), "Design");
}

TEST_P(BaseTemplateTest, WhatIsNoPageHasNone) {
    entry(7, "Plain", "plain.x");
    page("aa.fr").id(10).baseTemplate(7).insert();
    for (const std::string& bad : badIdentifiers()) {
        EXPECT_EQ(assets.getBaseTemplateFile(bad), "") << bad.substr(0, 40);
    }
}

TEST_P(BaseTemplateTest, NamesOfPagesConvertByTheDesignTables) {
    page("aa.en.01").id(12).insertInDesignOnly();
    EXPECT_EQ(assets.getNodeId(12), "aa.en.01");
    EXPECT_EQ(assets.getPageId("aa.en.01"), 12);
}

TEST_P(BaseTemplateTest, FailuresTellTheOperation) {
    page("aa.en.01").id(12).baseTemplate(7).insert();
    drop("TORVEX_BASETEMPLATES");
    const auto begins = [](const std::string& error, const char* function) {
        EXPECT_TRUE(error.starts_with(chain({function}))) << error;
    };
    begins(errorOf([&] { assets.checkBaseTemplate("aa", "en", 1, "x", "y"); }), "checkBaseTemplate !");
    begins(errorOf([&] { assets.getBaseTemplate(1); }), "getBaseTemplate !");
    begins(errorOf([&] { assets.getBaseTemplateId("x", "aa", "en"); }), "getBaseTemplateId !");
    begins(errorOf([&] { assets.getBaseTemplateList("aa", "en"); }), "getBaseTemplateList !");
    begins(errorOf([&] { assets.getBaseTemplateFile("12"); }), "getBaseTemplateFile !");
    begins(errorOf([&] { assets.getBaseTemplateName("12"); }), "getBaseTemplateName !");
}

}  // namespace
}  // namespace torvex::test
