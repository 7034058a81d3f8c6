#include <gtest/gtest.h>

#include "support/SiteTest.h"
#include "templates/HTMLTemplate.h"

namespace torvex {
namespace {

/// An application page "aa.en.01" (number 1) whose templates lie in its system folder "aa.en.01.99".
class HtmlTemplatePages : public test::SiteTest {
  protected:
    void SetUp() override {
        SiteTest::SetUp();
        contentTemplate(5, "aa", "en", "forum.htm", "the forum's own");
        contentTemplate(6, "aa", "en", "parent.htm", "the parent's");
        page("aa.en.01").id(1).type("A").contentTemplate(6).set("app_system_folder", 0).insert();
    }

    HTMLTemplate made() {
        HTMLTemplate result(host.context());
        result.connect(connection());
        result.setStrVal("before");
        return result;
    }
    /// The number of the template page and the text that was loaded.
    std::pair<PageId, std::string> loaded(const std::string& title, const std::string& mode = "L",
                                          const std::string& pageIdent = "1") {
        HTMLTemplate result = made();
        const PageId pageId = result.loadAppTpl(pageIdent, title, mode);
        return {pageId, result.strVal()};
    }

    const std::pair<PageId, std::string> nothing{-1, ""};
};

INSTANTIATE_TEST_SUITE_P(Engines, HtmlTemplatePages, test::bothEngines(), test::engineName);

TEST_P(HtmlTemplatePages, LoadAppTplFindsTheTemplatePageByItsTitle) {
    page("aa.en.01.99.01").id(7).title("Entry").contentTemplate(5).insert();
    EXPECT_EQ(loaded(" entry "), std::pair(PageId(7), std::string("the forum's own")));
    EXPECT_EQ(loaded("Entry", "L", " AA.EN.01 ").first, 7);
}

TEST_P(HtmlTemplatePages, LoadAppTplTakesTheLowestNodeOfTwoTitles) {
    page("aa.en.01.99.02").id(7).title("Entry").contentTemplate(6).insert();
    page("aa.en.01.99.01").id(8).title("Entry").contentTemplate(5).insert();
    EXPECT_EQ(loaded("Entry").first, 8);
}

TEST_P(HtmlTemplatePages, LoadAppTplGivesATemplatePageWithoutOneThatOfItsAncestor) {
    page("aa.en.01.99").id(9).type("F").contentTemplate(0).insert();
    page("aa.en.01.99.01").id(7).title("Entry").contentTemplate(0).insert();
    EXPECT_EQ(loaded("Entry"), std::pair(PageId(7), std::string("the parent's")));
}

TEST_P(HtmlTemplatePages, LoadAppTplLooksInTheFolderThatThePageNames) {
    page("aa.en.02").id(20).type("F").insert();
    page("aa.en.02.01").id(21).title("Entry").contentTemplate(5).insert();
    page("aa.en.03").id(3).type("A").set("app_system_folder", 20).insert();
    EXPECT_EQ(loaded("Entry", "L", "3").first, 21);
}

TEST_P(HtmlTemplatePages, LoadAppTplReadsTheDesignOnlyInItsMode) {
    page("aa.en.01.99.01").id(7).title("Entry").contentTemplate(5).insertInDesignOnly();
    EXPECT_EQ(loaded("Entry"), nothing);
    EXPECT_EQ(loaded("Entry", "x"), nothing);
    EXPECT_EQ(loaded("Entry", " d ").first, 7);
}

TEST_P(HtmlTemplatePages, LoadAppTplFindsNothing) {
    page("aa.en.01.99.01").id(7).title("Entry").contentTemplate(5).insert();
    page("aa.en.01.99.02").id(8).title("Folder").type("F").contentTemplate(5).insert();
    page("aa.en.01.99.03").id(10).title("Lost").contentTemplate(77).insert();
    page("aa.en.03").id(3).type("A").set("app_system_folder", -1).insert();
    EXPECT_EQ(loaded("Other"), nothing);
    EXPECT_EQ(loaded("Ent%"), nothing);
    EXPECT_EQ(loaded("Folder"), nothing);
    EXPECT_EQ(loaded("Lost"), nothing);
    EXPECT_EQ(loaded("Entry", "L", "3"), nothing);
    EXPECT_EQ(loaded("Entry", "L", "99"), nothing);
    EXPECT_EQ(loaded("Entry", "L", ""), nothing);
    host.files.bytes.clear();
    EXPECT_EQ(loaded("Entry"), nothing);
}

TEST_P(HtmlTemplatePages, SyncFramesTellsTheFrameSetWhichPageItIs) {
    host.application.set("torvex_frames", true);
    HTMLTemplate shown = made();
    shown.setStrVal("<body>x</BODY>");
    shown.syncFrames(" 1 ");
    EXPECT_EQ(shown.strVal(),
              "<body>x<script language=\"JavaScript\">if (window.top.navigation) "
              "{window.top.navigation('1','aa.en.01')}</script></body>");
}

TEST_P(HtmlTemplatePages, SyncFramesLeavesTheBufferWithoutFramesOrWithoutAPage) {
    HTMLTemplate shown = made();
    shown.setStrVal("<body></body>");
    shown.syncFrames("1");
    EXPECT_EQ(shown.strVal(), "<body></body>");
    host.application.set("torvex_frames", true);
    for (const char* ident : {"99", "", "aa.en.77", "-1"}) shown.syncFrames(ident);
    EXPECT_EQ(shown.strVal(), "<body></body>");
}

TEST_P(HtmlTemplatePages, APagesTwoNamesConvert) {
    EXPECT_EQ(made().getNodeId(1), "aa.en.01");
    EXPECT_EQ(made().getPageId("aa.en.01"), 1);
    EXPECT_EQ(made().getNodeId(99), "");
    EXPECT_EQ(made().getPageId("aa.en.99"), -1);
}

TEST_P(HtmlTemplatePages, AConnectionTextDoesAsWellAsAConnection) {
    HTMLTemplate result(host.context());
    result.connect(connectionText());
    host.database.target = &database();
    EXPECT_EQ(result.getNodeId(1), "aa.en.01");
}

}  // namespace
}  // namespace torvex
