#include "delivery/PageModules.h"
#include "platform/Session.h"
#include "support/SiteTest.h"

namespace torvex::test {
namespace {

class AssemblyTest : public SiteTest {
  protected:
    /// The page 12 under the root 10, both of content template 1 and base template 1.
    void pageOf(const std::string& content, const std::string& base) {
        contentTemplate(1, "aa", "en", "content.html", content);
        baseTemplate(1, "aa", "en", "base.html", base);
        page("aa.en").id(10).contentTemplate(1).baseTemplate(1).insert();
        page("aa.en.01").id(12).insert();
    }

    std::string prepared(const std::string& ident = "12", const std::string& subTitle = "") {
        server().getPage(ident);
        return server().torvex_preparePage(subTitle);
    }

    /// The page of a base template that holds nothing else of interest.
    std::string preparedFrom(const std::string& content, const std::string& base) {
        pageOf(content, base);
        return prepared();
    }
};
INSTANTIATE_TEST_SUITE_P(Engines, AssemblyTest, bothEngines(), engineName);

// The record

TEST_P(AssemblyTest, WithoutAPageThereIsNoText) {
    EXPECT_EQ(server().torvex_preparePage(), "");
    EXPECT_EQ(prepared("77"), "");
}

TEST_P(AssemblyTest, AFolderWithoutAChildStillHasNames) {
    // Callers look at the verdict first; the record alone is enough for assembly.
    pageOf("", "base");
    page("aa.en.02").id(13).type("F").insert();
    EXPECT_EQ(prepared("13"), "base");
}

// Templates

TEST_P(AssemblyTest, TheLayoutOfTheContentTemplateStandsInTheBaseTemplate) {
    EXPECT_EQ(preparedFrom("x<!--!torvex_content_start!-->layout<!--!torvex_content_end!-->y",
                           "<html><!--!torvex_content!--></html>"),
              "<html>layout</html>");
}

TEST_P(AssemblyTest, ThePagesOwnTemplateStandsBeforeAnInheritedOne) {
    pageOf("<!--!torvex_content_start!-->old<!--!torvex_content_end!-->", "<!--!torvex_content!-->");
    contentTemplate(2, "aa", "en", "own.html", "<!--!torvex_content_start!-->own<!--!torvex_content_end!-->");
    connection().execute("update TORVEX_PAGES_LIVE set template = 2 where pageId = 12");
    EXPECT_EQ(prepared(), "own");
}

TEST_P(AssemblyTest, WithoutAContentTemplateThePageIsAnError) {
    baseTemplate(1, "aa", "en", "base.html", "base");
    page("aa.en.01").id(12).baseTemplate(1).insert();
    EXPECT_EQ(prepared(), "error:/error.asp?pageId=12&error=no_template");
}

TEST_P(AssemblyTest, WithoutTheFileOfTheContentTemplateThePageIsAnError) {
    pageOf("", "base");
    host.files.bytes.erase("/install/contentTemplates/aa/en/content.html");
    EXPECT_EQ(prepared(), "error:/error.asp?pageId=12&error=no_template");
}

TEST_P(AssemblyTest, WithoutABaseTemplateThePageIsAnError) {
    contentTemplate(1, "aa", "en", "content.html", "");
    page("aa.en.01").id(12).contentTemplate(1).insert();
    EXPECT_EQ(prepared(), "error:/error.asp?pageId=12&error=no_base_template");
}

TEST_P(AssemblyTest, WithoutTheFileOfTheBaseTemplateThePageIsAnError) {
    pageOf("", "base");
    host.files.bytes.erase("/install/baseTemplates/aa/en/base.html");
    EXPECT_EQ(prepared(), "error:/error.asp?pageId=12&error=no_base_template");
}

TEST_P(AssemblyTest, TemplatesLieByTheSiteAndLanguageOfThePage) {
    contentTemplate(1, "bb", "de", "content.html",
                    "<!--!torvex_content_start!-->b<!--!torvex_content_end!-->");
    baseTemplate(1, "bb", "de", "base.html", "<!--!torvex_content!-->");
    page("bb.de.01").id(12).contentTemplate(1).baseTemplate(1).insert();
    EXPECT_EQ(prepared(), "b");
}

TEST_P(AssemblyTest, AnEmptyBaseTemplateGivesAnEmptyPage) {
    EXPECT_EQ(preparedFrom("", ""), "");
}

TEST_P(AssemblyTest, BlocksForAuthorsAreCutFromTheLayout) {
    EXPECT_EQ(preparedFrom("<!--!torvex_content_start!-->a"
                           "<!--!torvex_admin_start!-->x<!--!torvex_admin_end!-->b"
                           "<!--!TORVEX_ADMIN_start!-->y<!--!torvex_admin_end!-->c"
                           "<!--!torvex_content_end!-->",
                           "<!--!torvex_content!-->"),
              "abc");
}

TEST_P(AssemblyTest, FramesOfApplicationsAreCutWithTheirNumberedKin) {
    EXPECT_EQ(preparedFrom("<!--!torvex_content_start!-->a"
                           "<!--!torvex_appFrame_start!-->w<!--!torvex_appFrame_end!-->"
                           "<!--!torvex_appFrame_1_start!-->x<!--!torvex_appFrame_1_end!-->"
                           "<!--!torvex_appFrame_2_start!-->y<!--!torvex_appFrame_2_end!-->"
                           "<!--!torvex_appFrame_4_start!-->z<!--!torvex_appFrame_4_end!-->"
                           "<!--!torvex_content_end!-->",
                           "<!--!torvex_content!-->"),
              "a<!--!torvex_appFrame_4_start!-->z<!--!torvex_appFrame_4_end!-->");
}

TEST_P(AssemblyTest, BlocksForAuthorsStayInTheBaseTemplate) {
    EXPECT_EQ(preparedFrom("", "<!--!torvex_admin_start!-->x<!--!torvex_admin_end!-->"),
              "<!--!torvex_admin_start!-->x<!--!torvex_admin_end!-->");
}

TEST_P(AssemblyTest, NumberedLayoutsFillTheirOwnTagsUpToTheFirstGap) {
    EXPECT_EQ(preparedFrom("<!--!torvex_content_start!-->main<!--!torvex_content_end!-->"
                           "<!--!torvex_content_1_start!-->one<!--!torvex_content_1_end!-->"
                           "<!--!torvex_content_2_start!-->two<!--!torvex_content_2_end!-->"
                           "<!--!torvex_content_4_start!-->four<!--!torvex_content_4_end!-->",
                           "<!--!torvex_content_2!-->|<!--!torvex_content!-->|<!--!torvex_content_1!-->|"
                           "<!--!torvex_content_4!-->"),
              "two|main|one|<!--!torvex_content_4!-->");
}

TEST_P(AssemblyTest, WithoutALayoutItsTagStays) {
    EXPECT_EQ(preparedFrom("", "<!--!torvex_content!-->"), "<!--!torvex_content!-->");
}

// The head

TEST_P(AssemblyTest, MetaDataComeFirstInTheHead) {
    metaTag(1, "aa", "author");
    pageOf("", "<html><head lang=x><title>t</title></head>");
    metaData(12, 1, "Ann");
    EXPECT_EQ(prepared(),
              "<html><head lang=x>\r\n<META NAME=\"author\" LANG=\"en\" CONTENT=\"Ann\">\r\n\r\n"
              "<title>t</title></head>");
}

TEST_P(AssemblyTest, AHeadWithoutMetaDataGetsTheFrameAlone) {
    EXPECT_EQ(preparedFrom("", "<HEAD><title>"), "<HEAD>\r\n\r\n<title>");
}

TEST_P(AssemblyTest, WithoutAHeadTheMetaDataStandAtTheTag) {
    metaTag(1, "aa", "author");
    pageOf("", "[<!--!torvex_head!-->]");
    metaData(12, 1, "Ann");
    EXPECT_EQ(prepared(), "[<META NAME=\"author\" LANG=\"en\" CONTENT=\"Ann\">\r\n\r\n\r\n]");
}

TEST_P(AssemblyTest, AHeadThatIsNotClosedCountsAsNone) {
    metaTag(1, "aa", "author");
    pageOf("", "<!--!torvex_head!--><head");
    metaData(12, 1, "Ann");
    EXPECT_EQ(prepared(), "<META NAME=\"author\" LANG=\"en\" CONTENT=\"Ann\">\r\n\r\n\r\n<head");
}

TEST_P(AssemblyTest, WithNeitherHeadNorTagTheMetaDataAreLost) {
    metaTag(1, "aa", "author");
    pageOf("", "<body>");
    metaData(12, 1, "Ann");
    EXPECT_EQ(prepared(), "<body>");
}

TEST_P(AssemblyTest, MetaDataInTheHeadAreNotRepeatedAtTheTag) {
    metaTag(1, "aa", "author");
    pageOf("", "<head><!--!torvex_head!--></head>");
    metaData(12, 1, "Ann");
    EXPECT_EQ(prepared(),
              "<head>\r\n<META NAME=\"author\" LANG=\"en\" CONTENT=\"Ann\">\r\n\r\n\r\n\r\n</head>");
}

TEST_P(AssemblyTest, TheStylesheetIsLinkedByItsSiteAndLanguage) {
    pageOf("", "<!--!torvex_head!-->");
    stylesheet(1, "aa", "en", "site.css");
    connection().execute("update TORVEX_PAGES_LIVE set stylesheet = 1 where pageId = 10");
    EXPECT_EQ(prepared(),
              "\r\n<link rel=\"STYLESHEET\" type=\"text/css\" href=\"/stylesheets/aa/en/site.css\">\r\n\r\n");
}

TEST_P(AssemblyTest, TheHeadOfTheContentTemplateFollowsTheStylesheet) {
    pageOf("<!--!torvex_head_start!--><script></script><!--!torvex_head_end!-->", "<!--!torvex_head!-->");
    stylesheet(1, "aa", "en", "site.css");
    connection().execute("update TORVEX_PAGES_LIVE set stylesheet = 1 where pageId = 10");
    EXPECT_EQ(prepared(),
              "\r\n<link rel=\"STYLESHEET\" type=\"text/css\" href=\"/stylesheets/aa/en/site.css\">"
              "\r\n<script></script>\r\n\r\n");
}

// The body tag

TEST_P(AssemblyTest, TheBodyTagComesFromTheContentTemplate) {
    EXPECT_EQ(preparedFrom("<!--!torvex_bodyTag_start!--><BODY class=\"x\"><!--!torvex_bodyTag_end!-->",
                           "<!--!torvex_bodyTag!-->"),
              "<BODY class=\"x\">");
}

TEST_P(AssemblyTest, ABlockWithoutABodyTagGivesThePlainOne) {
    EXPECT_EQ(preparedFrom("<!--!torvex_bodyTag_start!-->class=\"x\"<!--!torvex_bodyTag_end!-->",
                           "<!--!torvex_bodyTag!-->"),
              "<body>");
}

TEST_P(AssemblyTest, WithoutABlockTheBodyTagIsThePlainOne) {
    EXPECT_EQ(preparedFrom("", "<!--!torvex_bodyTag!-->"), "<body>");
}

// Bodies

TEST_P(AssemblyTest, BodiesFillTheFinishedText) {
    pageOf("<!--!torvex_content_start!--><!--!torvex_body_1!--><!--!torvex_content_end!-->",
           "<!--!torvex_content!-->|<!--!torvex_body_2!-->");
    body(12, 1, "first");
    body(12, 2, "second");
    EXPECT_EQ(prepared(), "first|second");
}

TEST_P(AssemblyTest, LinkNotationsAreLeftInPlace) {
    pageOf("", "<!--!torvex_body_1!-->");
    body(12, 1, "<a href=\"page(12)\">");
    EXPECT_EQ(prepared(), "<a href=\"page(12)\">");
}

TEST_P(AssemblyTest, TagsThatNothingFillsStay) {
    EXPECT_EQ(preparedFrom("", "<!--!mine!--><!--!torvex_nothing!-->"),
              "<!--!mine!--><!--!torvex_nothing!-->");
}

// Failures

TEST_P(AssemblyTest, AnErrorTellsTheWayItCame) {
    pageOf("", "<!--!torvex_body_1!-->");
    drop("TORVEX_BODIES_LIVE");
    server().getPage("12");
    const std::string error = errorOf([&] { server().torvex_preparePage(); });
    EXPECT_TRUE(error.starts_with(chain({"torvex_preparePage !", "fillBodies !"}))) << error;
    EXPECT_EQ(error.find("Error in function", chain({"torvex_preparePage !", "fillBodies !"}).size()),
              std::string::npos);
}

TEST_P(AssemblyTest, AnErrorOfARegisterTellsEveryLevel) {
    pageOf("", "base");
    drop("TORVEX_BASETEMPLATES");
    connection().execute(
        "create view TORVEX_BASETEMPLATES as select 1 as btpl_id, 'base.html' as btpl_filename");
    server().getPage("12");
    const std::string error = errorOf([&] { server().torvex_preparePage(); });
    EXPECT_TRUE(
        error.starts_with(chain({"torvex_preparePage !", "getBaseTemplateFile !", "getBaseTemplateFile !"})))
        << error;
}

TEST_P(AssemblyTest, ATemplateThatCantBeReadIsAnError) {
    pageOf("", "base");
    server().getPage("12");
    host.files.readFailure = "the disk is broken";
    const std::string error = errorOf([&] { server().torvex_preparePage(); });
    EXPECT_TRUE(error.starts_with(chain({"torvex_preparePage !", "Load (HTMLTemplate) !"}))) << error;
    EXPECT_TRUE(error.ends_with("the disk is broken")) << error;
}

TEST_P(AssemblyTest, ANeighbourThatNeedsABlockWhichIsMissingAnswersTheBrowser) {
    pageOf("", "<!--!torvex_navigation_start!--><!--!torvex_up!--><!--!torvex_navigation_end!-->");
    host.application.set("torvex_interface_charset", "utf-8");
    server().getPage("12");
    EXPECT_THROW(server().torvex_preparePage(), ResponseEnded);
    EXPECT_EQ(host.response.body(),
              "<html><head><meta http-equiv=\"Content-Type\" content=\"text/html; charset=utf-8\"></head>"
              "<body><div align=center><font size=2 color=#ff0000 face=Arial><br><br><br>"
              "<b>Block \"torvex_previous\" not found !</b></font></div></body></html>");
    EXPECT_EQ(host.response.contentType, "text/html");
    EXPECT_EQ(host.response.charset, "utf-8");
}

// The files in force

TEST_P(AssemblyTest, TheFilesOfAPageAreFoundByEitherName) {
    pageOf("", "");
    stylesheet(1, "aa", "en", "site.css");
    connection().execute("update TORVEX_PAGES_LIVE set stylesheet = 1 where pageId = 10");
    for (const auto* ident : {"12", " 12 ", "AA.en.01"}) {
        EXPECT_EQ(server().getTemplateFile(ident), "content.html");
        EXPECT_EQ(server().getBaseTemplateFile(ident), "base.html");
        EXPECT_EQ(server().getStylesheetFile(ident), "site.css");
    }
}

TEST_P(AssemblyTest, TheFilesOfAPageAreAlwaysTheLiveOnes) {
    pageOf("", "");
    contentTemplate(2, "aa", "en", "design.html", "");
    connection().execute("update TORVEX_PAGES_DESIGN set template = 2 where pageId = 12");
    EXPECT_EQ(server().getTemplateFile("12", "D"), "content.html");
}

TEST_P(AssemblyTest, WhatIsNoPageHasNoFiles) {
    pageOf("", "");
    for (const std::string& bad : badIdentifiers()) {
        EXPECT_EQ(server().getTemplateFile(bad), "") << bad.substr(0, 40);
        EXPECT_EQ(server().getBaseTemplateFile(bad), "") << bad.substr(0, 40);
        EXPECT_EQ(server().getStylesheetFile(bad), "") << bad.substr(0, 40);
    }
}

}  // namespace
}  // namespace torvex::test
