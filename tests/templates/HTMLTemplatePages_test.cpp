#include "support/SiteTest.h"
#include "templates/HTMLTemplate.h"

namespace torvex::test {
namespace {

class HTMLTemplatePagesTest : public SiteTest {
  protected:
    /// The application page 12 keeps its templates in its own system branch.
    void SetUp() override {
        SiteTest::SetUp();
        if (HasFatalFailure()) return;
        page("aa.en").id(10).insert();
        page("aa.en.01").id(12).type("A").set("app_system_folder", 0).insert();
        contentTemplate(1, "aa", "en", "list.html", "list");
        contentTemplate(2, "aa", "en", "other.html", "other");
        page("aa.en.01.99").id(20).type("F").insert();
        tpl.connect(connection());
    }

    PageBuilder templatePage(const std::string& node, PageId id, const std::string& title) {
        return page(node).id(id).title(title).contentTemplate(1);
    }

    void expectNothing(PageId result) {
        EXPECT_EQ(result, -1);
        EXPECT_EQ(tpl.strVal(), "");
    }

    HTMLTemplate tpl{host.context()};
};
INSTANTIATE_TEST_SUITE_P(Engines, HTMLTemplatePagesTest, bothEngines(), engineName);

// Templates of applications

TEST_P(HTMLTemplatePagesTest, ATemplateIsFoundByTheTitleOfItsPage) {
    templatePage("aa.en.01.99.01", 21, "List").insert();
    EXPECT_EQ(tpl.loadAppTpl("12", "List"), 21);
    EXPECT_EQ(tpl.strVal(), "list");
}

TEST_P(HTMLTemplatePagesTest, ThePageAndTheTitleAreTakenInAnyCaseAndWithBlanks) {
    templatePage("aa.en.01.99.01", 21, "List").insert();
    EXPECT_EQ(tpl.loadAppTpl(" AA.EN.01 ", "  lIST "), 21);
    EXPECT_EQ(tpl.loadAppTpl(" 12 ", "LIST"), 21);
}

TEST_P(HTMLTemplatePagesTest, OfTwoPagesTheLowestNodeIsTaken) {
    templatePage("aa.en.01.99.02", 21, "List").insert();
    templatePage("aa.en.01.99.01", 22, "List").contentTemplate(2).insert();
    EXPECT_EQ(tpl.loadAppTpl("12", "List"), 22);
    EXPECT_EQ(tpl.strVal(), "other");
}

TEST_P(HTMLTemplatePagesTest, ATemplateMayLieDeeper) {
    templatePage("aa.en.01.99.01.03", 21, "List").insert();
    EXPECT_EQ(tpl.loadAppTpl("12", "List"), 21);
}

TEST_P(HTMLTemplatePagesTest, AnotherFolderMayBeNamed) {
    connection().execute("update TORVEX_PAGES_LIVE set app_system_folder = 30 where pageId = 12");
    page("aa.en.05").id(30).type("F").insert();
    templatePage("aa.en.05.01", 31, "List").insert();
    templatePage("aa.en.01.99.01", 21, "List").insert();
    EXPECT_EQ(tpl.loadAppTpl("12", "List"), 31);
}

TEST_P(HTMLTemplatePagesTest, AFolderThatIsNoPageHoldsNothing) {
    connection().execute("update TORVEX_PAGES_LIVE set app_system_folder = 77 where pageId = 12");
    templatePage("aa.en.01.99.01", 21, "List").insert();
    expectNothing(tpl.loadAppTpl("12", "List"));
}

TEST_P(HTMLTemplatePagesTest, AnApplicationWithoutAFolderHasNoTemplates) {
    connection().execute("update TORVEX_PAGES_LIVE set app_system_folder = -1 where pageId = 12");
    templatePage("aa.en.01.99.01", 21, "List").insert();
    expectNothing(tpl.loadAppTpl("12", "List"));
}

TEST_P(HTMLTemplatePagesTest, OnlyAContentPageIsATemplate) {
    templatePage("aa.en.01.99.01", 21, "List").type("A").insert();
    expectNothing(tpl.loadAppTpl("12", "List"));
}

TEST_P(HTMLTemplatePagesTest, ATemplateOutsideTheFolderIsNotFound) {
    templatePage("aa.en.01.01", 21, "List").insert();
    templatePage("aa.en.02.99.01", 22, "List").insert();
    expectNothing(tpl.loadAppTpl("12", "List"));
}

TEST_P(HTMLTemplatePagesTest, ATitleIsNoPattern) {
    templatePage("aa.en.01.99.01", 21, "List").insert();
    expectNothing(tpl.loadAppTpl("12", "L%"));
    expectNothing(tpl.loadAppTpl("12", "Lis_"));
    expectNothing(tpl.loadAppTpl("12", "x' or '1'='1"));
    expectNothing(tpl.loadAppTpl("12", ""));
}

TEST_P(HTMLTemplatePagesTest, ATitleWithAQuoteIsFound) {
    templatePage("aa.en.01.99.01", 21, "Ann's list").insert();
    EXPECT_EQ(tpl.loadAppTpl("12", "ann's list"), 21);
}

TEST_P(HTMLTemplatePagesTest, ATemplatePageWithoutAFileOfItsOwnInheritsOne) {
    templatePage("aa.en.01.99.01", 21, "List").contentTemplate(0).insert();
    connection().execute("update TORVEX_PAGES_LIVE set template = 2 where pageId = 20");
    EXPECT_EQ(tpl.loadAppTpl("12", "List"), 21);
    EXPECT_EQ(tpl.strVal(), "other");
}

TEST_P(HTMLTemplatePagesTest, ATemplatePageWithoutAnyFileIsNone) {
    templatePage("aa.en.01.99.01", 21, "List").contentTemplate(0).insert();
    expectNothing(tpl.loadAppTpl("12", "List"));
}

TEST_P(HTMLTemplatePagesTest, ATemplateWhoseFileIsGoneIsNone) {
    templatePage("aa.en.01.99.01", 21, "List").insert();
    host.files.bytes.erase("/install/contentTemplates/aa/en/list.html");
    expectNothing(tpl.loadAppTpl("12", "List"));
}

TEST_P(HTMLTemplatePagesTest, TheDesignIsReadInItsMode) {
    templatePage("aa.en.01.99.01", 21, "List").insertInDesignOnly();
    expectNothing(tpl.loadAppTpl("12", "List"));
    EXPECT_EQ(tpl.loadAppTpl("12", "List", " d "), 21);
    expectNothing(tpl.loadAppTpl("12", "List", "X"));
}

TEST_P(HTMLTemplatePagesTest, AnEarlierTextIsGoneWhenNothingIsFound) {
    tpl.setStrVal("before");
    expectNothing(tpl.loadAppTpl("12", "List"));
}

TEST_P(HTMLTemplatePagesTest, WhatIsNoPageHasNoTemplates) {
    templatePage("aa.en.01.99.01", 21, "List").insert();
    for (const std::string& bad : badIdentifiers()) expectNothing(tpl.loadAppTpl(bad, "List"));
}

TEST_P(HTMLTemplatePagesTest, LoadAppTplTellsItsFailures) {
    drop("TORVEX_PAGES_LIVE");
    EXPECT_TRUE(errorOf([&] { tpl.loadAppTpl("12", "List"); }).starts_with(chain({"loadAppTpl !"})));
}

TEST_P(HTMLTemplatePagesTest, LoadAppTplTellsTheFailureOfARegister) {
    templatePage("aa.en.01.99.01", 21, "List").contentTemplate(0).insert();
    drop("TORVEX_TEMPLATES");
    connection().execute("create view TORVEX_TEMPLATES as select 1 as tpl_id, 'x' as tpl_filename");
    connection().execute("update TORVEX_PAGES_LIVE set template = 1 where pageId = 20");
    EXPECT_TRUE(errorOf([&] {
                    tpl.loadAppTpl("12", "List");
                }).starts_with(chain({"loadAppTpl !", "getTemplateFile !"})));
}

// Frames

TEST_P(HTMLTemplatePagesTest, APageInAFrameTellsWhichItIs) {
    host.application.set("torvex_frames", true);
    tpl.setStrVal("<body>x</body>y</BODY>");
    tpl.syncFrames("12");
    const std::string script =
        "<script language=\"JavaScript\">if (window.top.navigation) "
        "{window.top.navigation('12','aa.en.01')}</script></body>";
    EXPECT_EQ(tpl.strVal(), "<body>x" + script + "y" + script);
}

TEST_P(HTMLTemplatePagesTest, WithoutFramesAPageTellsNothing) {
    tpl.setStrVal("<body>x</body>");
    tpl.syncFrames("12");
    EXPECT_EQ(tpl.strVal(), "<body>x</body>");
}

TEST_P(HTMLTemplatePagesTest, WhatIsNoPageTellsNothing) {
    host.application.set("torvex_frames", true);
    page("aa").id(14).insert();
    tpl.setStrVal("<body>x</body>");
    tpl.syncFrames("14");
    for (const std::string& bad : badIdentifiers()) tpl.syncFrames(bad);
    EXPECT_EQ(tpl.strVal(), "<body>x</body>");
}

// Names

TEST_P(HTMLTemplatePagesTest, NamesConvertByTheDesignTables) {
    EXPECT_EQ(tpl.getNodeId(12), "aa.en.01");
    EXPECT_EQ(tpl.getPageId(" AA.en.01 "), 12);
    EXPECT_EQ(tpl.getNodeId(77), "");
    EXPECT_EQ(tpl.getPageId("aa.en.77"), -1);
    EXPECT_EQ(tpl.getPageId(""), -1);
}

TEST_P(HTMLTemplatePagesTest, AConnectionTextServesAsWell) {
    HTMLTemplate other(host.context());
    other.connect(connectionText());
    EXPECT_EQ(other.getPageId("aa.en.01"), 12);
}

TEST_P(HTMLTemplatePagesTest, ATemplateThatWasNeverConnectedFails) {
    HTMLTemplate other(host.context());
    EXPECT_TRUE(errorOf([&] { other.getNodeId(12); }).starts_with(chain({"getNodeId !"})));
    EXPECT_TRUE(errorOf([&] { other.getPageId("aa.en"); }).starts_with(chain({"getPageId !"})));
    EXPECT_TRUE(errorOf([&] { other.loadAppTpl("12", "x"); }).starts_with(chain({"loadAppTpl !"})));
}

}  // namespace
}  // namespace torvex::test
