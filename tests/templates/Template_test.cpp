#include "templates/Template.h"

#include "support/SiteTest.h"

namespace torvex::test {
namespace {

class TemplateTest : public SiteTest {
  protected:
    void SetUp() override {
        SiteTest::SetUp();
        if (!HasFatalFailure()) templates.connect(connection());
    }

    void entry(int id, const std::string& name, const std::string& file, int system = 0,
               const std::string& site = "aa", const std::string& lang = "en") {
        row("TORVEX_TEMPLATES", {{"tpl_id", id},
                                 {"tpl_site", site},
                                 {"tpl_lang", lang},
                                 {"tpl_name", name},
                                 {"tpl_description", "Of " + name},
                                 {"tpl_filename", file},
                                 {"tpl_system", system}});
    }

    /// The names of a list, in order.
    std::vector<std::string> names(int listType) {
        const Value list = templates.getTemplateList("aa", "en", listType);
        std::vector<std::string> names;
        if (list.isEmpty()) return names;
        for (std::size_t i = 0; i < list.grid().rows(); ++i) names.push_back(list.grid().at(1, i).toText());
        return names;
    }

    Template templates{host.context()};
};
INSTANTIATE_TEST_SUITE_P(Engines, TemplateTest, bothEngines(), engineName);

// checkTemplate

TEST_P(TemplateTest, ANewNameAndFileAreFree) {
    entry(1, "Plain", "plain.html");
    EXPECT_EQ(templates.checkTemplate("aa", "en", -1, "Wide", "wide.html"), "0");
}

TEST_P(TemplateTest, ANameThatAnotherEntryHasIsTaken) {
    entry(1, "Plain", "plain.html");
    EXPECT_EQ(templates.checkTemplate("aa", "en", -1, "PLAIN", "wide.html"), "1");
}

TEST_P(TemplateTest, AFileThatAnotherEntryHasIsTaken) {
    entry(1, "Plain", "plain.html");
    EXPECT_EQ(templates.checkTemplate("aa", "en", -1, "Wide", "Plain.HTML"), "2");
}

TEST_P(TemplateTest, ATakenNameStandsBeforeATakenFile) {
    entry(1, "Plain", "plain.html");
    EXPECT_EQ(templates.checkTemplate("aa", "en", -1, "Plain", "plain.html"), "1");
}

TEST_P(TemplateTest, AnEntryIsNoConflictWithItself) {
    entry(1, "Plain", "plain.html");
    EXPECT_EQ(templates.checkTemplate("aa", "en", 1, "Plain", "plain.html"), "0");
}

TEST_P(TemplateTest, AnotherSiteOrLanguageIsNoConflict) {
    entry(1, "Plain", "plain.html");
    EXPECT_EQ(templates.checkTemplate("bb", "en", -1, "Plain", "plain.html"), "0");
    EXPECT_EQ(templates.checkTemplate("aa", "de", -1, "Plain", "plain.html"), "0");
}

TEST_P(TemplateTest, APathIsCutToItsFile) {
    entry(1, "Plain", "plain.html");
    EXPECT_EQ(templates.checkTemplate("aa", "en", -1, "Wide", "C:\\my files\\plain.html"), "2");
}

TEST_P(TemplateTest, ANameWithAQuoteIsAName) {
    entry(1, "Ann's", "ann's.html");
    EXPECT_EQ(templates.checkTemplate("aa", "en", -1, "ann's", "x.html"), "1");
    EXPECT_EQ(templates.checkTemplate("aa", "en", -1, "x", "ANN'S.html"), "2");
}

// One entry

TEST_P(TemplateTest, AnObjectStartsWithoutAnEntry) {
    EXPECT_FALSE(templates.tplExists());
    EXPECT_EQ(templates.tplSite() + templates.tplLang() + templates.tplName() + templates.tplDescription() +
                  templates.tplFilename() + templates.tplSystem() + templates.tplSource(),
              "");
}

TEST_P(TemplateTest, AnEntryIsReadWithTheTextOfItsFile) {
    entry(7, "Plain", "plain.html", 1);
    host.files.bytes["/install/contentTemplates/aa/en/plain.html"] = "text";
    EXPECT_TRUE(templates.getTemplate(7));
    EXPECT_TRUE(templates.tplExists());
    EXPECT_EQ(templates.tplSite(), "aa");
    EXPECT_EQ(templates.tplLang(), "en");
    EXPECT_EQ(templates.tplName(), "Plain");
    EXPECT_EQ(templates.tplDescription(), "Of Plain");
    EXPECT_EQ(templates.tplFilename(), "plain.html");
    EXPECT_EQ(templates.tplSystem(), "1");
    EXPECT_EQ(templates.tplSource(), "text");
}

TEST_P(TemplateTest, AnEntryWithoutAFileHasNoText) {
    entry(7, "Plain", "plain.html");
    EXPECT_TRUE(templates.getTemplate(7));
    EXPECT_EQ(templates.tplSource(), "");
    EXPECT_EQ(templates.tplSystem(), "0");
}

TEST_P(TemplateTest, AnUnknownEntryClearsTheOneBefore) {
    entry(7, "Plain", "plain.html");
    templates.getTemplate(7);
    EXPECT_FALSE(templates.getTemplate(8));
    EXPECT_FALSE(templates.tplExists());
    EXPECT_EQ(templates.tplName(), "");
    EXPECT_EQ(templates.tplFilename(), "");
}

TEST_P(TemplateTest, AnEntryIsFoundByItsName) {
    entry(7, "Plain", "plain.html");
    entry(8, "Plain", "plain.html", 0, "bb");
    EXPECT_EQ(templates.getTemplateId("plain", "AA", "en"), 7);
    EXPECT_EQ(templates.getTemplateId("Plain", "bb", "en"), 8);
    EXPECT_EQ(templates.getTemplateId("Plain", "aa", "de"), -1);
    EXPECT_EQ(templates.getTemplateId("' or '1'='1", "aa", "en"), -1);
}

// Lists

TEST_P(TemplateTest, TheListOfAllComesBySystemAndName) {
    entry(1, "Wide", "1.html", 0);
    entry(2, "Search", "2.html", 1);
    entry(3, "narrow", "3.html", 0);
    entry(4, "Forum", "4.html", 1);
    entry(5, "Other", "5.html", 0, "bb");
    const std::vector<std::string> all{"narrow", "Wide", "Forum", "Search"};
    EXPECT_EQ(names(-1), all);
    EXPECT_EQ(names(2), all);
}

TEST_P(TemplateTest, TheListOfSystemEntriesComesByName) {
    entry(1, "Wide", "1.html", 0);
    entry(2, "Search", "2.html", 1);
    entry(4, "Forum", "4.html", 1);
    EXPECT_EQ(names(1), (std::vector<std::string>{"Forum", "Search"}));
}

TEST_P(TemplateTest, TheListOfTheOthersComesByName) {
    entry(1, "Wide", "1.html", 0);
    entry(2, "Search", "2.html", 1);
    entry(3, "narrow", "3.html", 0);
    EXPECT_EQ(names(0), (std::vector<std::string>{"narrow", "Wide"}));
}

TEST_P(TemplateTest, AListHasFourColumns) {
    entry(1, "Wide", "1.html", 1);
    const Value list = templates.getTemplateList("aa", "en", 1);
    ASSERT_TRUE(list.isGrid());
    ASSERT_EQ(list.grid().columns(), 4);
    EXPECT_EQ(list.grid().at(0, 0), Value(1));
    EXPECT_EQ(list.grid().at(1, 0), Value("Wide"));
    EXPECT_EQ(list.grid().at(2, 0), Value("Of Wide"));
    EXPECT_EQ(list.grid().at(3, 0), Value(1));
}

TEST_P(TemplateTest, AListWithoutEntriesIsEmpty) {
    EXPECT_TRUE(templates.getTemplateList("aa", "en", 0).isEmpty());
    EXPECT_TRUE(templates.getTemplateList("' or '1'='1", "en", 0).isEmpty());
}

// What is in force for a page

TEST_P(TemplateTest, APageHasTheFileOfItsOwnTemplate) {
    entry(7, "Plain", " plain.html ");
    page("aa.en.01").id(12).contentTemplate(7).insert();
    EXPECT_EQ(templates.getTemplateFile(" 12 "), "plain.html");
    EXPECT_EQ(templates.getTemplateName(" AA.en.01 "), "Plain");
}

TEST_P(TemplateTest, APageInheritsFromTheNearestAncestorThatNamesOne) {
    entry(7, "Plain", "plain.html");
    entry(8, "Root", "root.html");
    page("aa.en").id(10).contentTemplate(8).insert();
    page("aa.en.01").id(11).contentTemplate(7).insert();
    page("aa.en.01.01").id(12).insert();
    page("aa.en.01.01.01").id(13).insert();
    page("aa.en.02").id(14).insert();
    EXPECT_EQ(templates.getTemplateFile("13"), "plain.html");
    EXPECT_EQ(templates.getTemplateName("13"), "Plain");
    EXPECT_EQ(templates.getTemplateFile("14"), "root.html");
}

TEST_P(TemplateTest, APageThatInheritsUpToTheRootHasNone) {
    page("aa.en").id(10).insert();
    page("aa.en.01").id(11).insert();
    EXPECT_EQ(templates.getTemplateFile("11"), "");
    EXPECT_EQ(templates.getTemplateName("11"), "");
}

TEST_P(TemplateTest, ATemplateThatIsGoneIsNoneAndNotInherited) {
    entry(8, "Root", "root.html");
    page("aa.en").id(10).contentTemplate(8).insert();
    page("aa.en.01").id(11).contentTemplate(77).insert();
    EXPECT_EQ(templates.getTemplateFile("11"), "");
    EXPECT_EQ(templates.getTemplateName("11"), "");
}

TEST_P(TemplateTest, TheModePicksTheTwin) {
    entry(7, "Plain", "plain.html");
    entry(8, "Design", "design.html");
    page("aa.en.01").id(12).contentTemplate(7).insertInLiveOnly();
    page("aa.en.01").id(12).contentTemplate(8).insertInDesignOnly();
    EXPECT_EQ(templates.getTemplateFile("12"), "plain.html");
    EXPECT_EQ(templates.getTemplateFile("12", "D"), "design.html");
    EXPECT_EQ(templates.getTemplateFile("12", "d"), "design.html");
    EXPECT_EQ(templates.getTemplateFile("12", "x"), "plain.html");
    EXPECT_EQ(templates.getTemplateName("12", "D"), "Design");
}

TEST_P(TemplateTest, WhatIsNoPageHasNone) {
    entry(7, "Plain", "plain.html");
    page("aa.fr").id(10).contentTemplate(7).insert();
    for (const std::string& bad : badIdentifiers()) {
        EXPECT_EQ(templates.getTemplateFile(bad), "") << bad.substr(0, 40);
        EXPECT_EQ(templates.getTemplateName(bad), "") << bad.substr(0, 40);
    }
}

TEST_P(TemplateTest, NamesOfPagesConvertByTheDesignTables) {
    page("aa.en.01").id(12).insertInDesignOnly();
    EXPECT_EQ(templates.getNodeId(12), "aa.en.01");
    EXPECT_EQ(templates.getPageId(" aa.EN.01"), 12);
    EXPECT_EQ(templates.getNodeId(13), "");
    EXPECT_EQ(templates.getPageId(""), -1);
}

// Failures

TEST_P(TemplateTest, FailuresTellTheOperation) {
    page("aa.en.01").id(12).contentTemplate(7).insert();
    drop("TORVEX_TEMPLATES");
    const auto begins = [](const std::string& error, const char* function) {
        EXPECT_TRUE(error.starts_with(chain({function}))) << error;
    };
    begins(errorOf([&] { templates.checkTemplate("aa", "en", 1, "x", "y"); }), "checkTemplate !");
    begins(errorOf([&] { templates.getTemplate(1); }), "getTemplate !");
    begins(errorOf([&] { templates.getTemplateId("x", "aa", "en"); }), "getTemplateId !");
    begins(errorOf([&] { templates.getTemplateList("aa", "en", 1); }), "getTemplateList !");
    begins(errorOf([&] { templates.getTemplateFile("12"); }), "getTemplateFile !");
    begins(errorOf([&] { templates.getTemplateName("12"); }), "getTemplateName !");
}

TEST_P(TemplateTest, AFileThatCantBeReadIsAnErrorOfTheEntry) {
    entry(7, "Plain", "plain.html");
    host.files.readFailure = "the disk is broken";
    EXPECT_TRUE(errorOf([&] { templates.getTemplate(7); }).starts_with(chain({"getTemplate !"})));
}

}  // namespace
}  // namespace torvex::test
