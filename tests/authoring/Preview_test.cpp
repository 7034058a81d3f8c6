#include "delivery/PageModules.h"
#include "platform/Session.h"
#include "support/BodiesTest.h"

namespace torvex::test {
namespace {

class Preview : public BodiesTest {
  protected:
    void SetUp() override {
        BodiesTest::SetUp();
        if (HasFatalFailure()) return;
        contentTemplate(1, "aa", "en", "content.html",
                        "<!--!torvex_content_start!--><!--!torvex_body_1!--><!--!torvex_content_end!-->");
        baseTemplate(1, "aa", "en", "base.html", "<body><!--!torvex_content!--></body>");
        connection().execute("update TORVEX_PAGES_DESIGN set template = 1, baseTemplate = 1");
        connection().execute("update TORVEX_PAGES_LIVE set template = 1, baseTemplate = 1");
        page("aa.en.01").id(12).insert();
        designBody(12, 1, "design");
        body(12, 1, "live");
    }
    void content(const std::string& source) {
        host.files.bytes["/install/contentTemplates/aa/en/content.html"] = source;
    }
    void base(const std::string& source) {
        host.files.bytes["/install/baseTemplates/aa/en/base.html"] = source;
    }

    std::string prepared(const std::string& mode, const std::string& ident = "12",
                         const std::string& subTitle = "") {
        manager().getPage(ident, mode);
        return manager().torvex_preparePage(mode, subTitle);
    }
};
INSTANTIATE_TEST_SUITE_P(Engines, Preview, bothEngines(), engineName);

// torvex_preparePage

TEST_P(Preview, ShowsThePageOfTheMode) {
    EXPECT_EQ(prepared("D"), "<body>design</body>");
    EXPECT_EQ(prepared("d"), "<body>design</body>");
    EXPECT_EQ(prepared("L"), "<body>live</body>");
    EXPECT_EQ(prepared("x"), "<body>live</body>");
    manager().getPage("12");
    EXPECT_EQ(manager().torvex_preparePage(), "<body>live</body>");
}

TEST_P(Preview, WithoutAPageThereIsNoText) {
    EXPECT_EQ(manager().torvex_preparePage("D"), "");
    EXPECT_EQ(prepared("D", "4711"), "");
    page("aa.en.02").id(13).insertInDesignOnly();
    EXPECT_EQ(prepared("L", "13"), "");
    EXPECT_EQ(prepared("D", "13"), "<body>&nbsp;</body>");
}

TEST_P(Preview, TakesTheFilesInForceInTheMode) {
    contentTemplate(2, "aa", "en", "own.html", "<!--!torvex_content_start!-->own<!--!torvex_content_end!-->");
    baseTemplate(2, "aa", "en", "own_base.html", "<!--!torvex_head!-->B<!--!torvex_content!-->");
    stylesheet(3, "aa", "en", "own.css");
    connection().execute(
        "update TORVEX_PAGES_DESIGN set template = 2, baseTemplate = 2, stylesheet = 3 where pageId = 12");
    const std::string design = prepared("D");
    EXPECT_NE(design.find("href=\"/stylesheets/aa/en/own.css\""), std::string::npos) << design;
    EXPECT_TRUE(design.ends_with("Bown")) << design;
    EXPECT_EQ(prepared("L"), "<body>live</body>");
}

TEST_P(Preview, AMissingContentTemplateIsAnAddress) {
    host.files.bytes.erase("/install/contentTemplates/aa/en/content.html");
    for (const char* mode : {"D", "L"}) {
        EXPECT_EQ(prepared(mode), "error:/torvex/error.asp?pageId=12&error=template_not_found&flag=0");
    }
    EXPECT_EQ(prepared("D", "12", "nothing"),
              "error:/torvex/error.asp?pageId=12&error=template_not_found&flag=0");
}

TEST_P(Preview, AMissingBaseTemplateIsAnAddress) {
    host.files.bytes.erase("/install/baseTemplates/aa/en/base.html");
    EXPECT_EQ(prepared("D"), "error:/torvex/error.asp?error=template_body_error&flag=0");
}

TEST_P(Preview, LinksAreBuiltInTheMode) {
    page("aa.en.03").id(14).insertInDesignOnly();
    base("<body><a href=\"page(14)\">x</a></body>");
    EXPECT_NE(prepared("D").find("javascript:top.page('14')"), std::string::npos);
    EXPECT_NE(prepared("L").find("badLink"), std::string::npos);
}

TEST_P(Preview, NeighboursExistInTheMode) {
    page("aa.en.02").id(13).neighbours(14, 15, -1).insert();
    page("aa.en.03").id(14).insertInDesignOnly();
    page("aa.en.04").id(15).offline().insert();
    base(
        "<!--!torvex_navigation_start!--><!--!torvex_previous_start!-->p<!--!torvex_previous!-->"
        "<!--!torvex_previous_end!--><!--!torvex_next_start!-->n<!--!torvex_next!--><!--!torvex_next_end!-->"
        "<!--!torvex_up_start!-->u<!--!torvex_up_end!--><!--!torvex_navigation_end!-->");
    EXPECT_NE(prepared("D", "13").find("p/tvx.asp?pageId=14"), std::string::npos);
    EXPECT_EQ(prepared("L", "13").find("pageId=14"), std::string::npos);
    EXPECT_NE(prepared("L", "13").find("n/tvx.asp?pageId=15"), std::string::npos);
}

TEST_P(Preview, ThePartsForAuthorsAreShown) {
    content(
        "<!--!torvex_content_start!-->x<!--!torvex_admin_start!-->tools<!--!torvex_admin_end!-->"
        "<!--!torvex_content_end!-->");
    EXPECT_NE(prepared("D").find("tools"), std::string::npos);
    EXPECT_NE(prepared("L").find("tools"), std::string::npos);
}

TEST_P(Preview, TheTrailIsThatOfTheMode) {
    base("<!--!torvex_breadcrumb!-->");
    connection().execute("update TORVEX_PAGES_DESIGN set title = 'Design' where pageId = 12");
    connection().execute("update TORVEX_PAGES_LIVE set title = 'Live' where pageId = 12");
    connection().execute("update TORVEX_PAGES_LIVE set online = 0 where nodeId = 'aa.en'");
    const std::string design = prepared("D");
    EXPECT_NE(design.find("<span class=\"breadcrumbActive\">Design</span>"), std::string::npos) << design;
    EXPECT_NE(design.find("<a class=\"breadcrumb\""), std::string::npos) << design;
    const std::string live = prepared("L");
    EXPECT_NE(live.find("<span class=\"breadcrumbActive\">Live</span>"), std::string::npos) << live;
    EXPECT_EQ(live.find("<a class=\"breadcrumb\""), std::string::npos) << live;
}

TEST_P(Preview, ASubPageOfAnApplicationIsNotCounted) {
    page("aa.en.05").id(30).type("A").set("app_system_folder", 0).insert();
    page("aa.en.05.99").id(31).type("F").insert();
    page("aa.en.05.99.01").id(32).title("list").insert();
    designBody(32, 1, "the list");
    EXPECT_EQ(prepared("D", "30", " List "), "<body>the list</body>");
    EXPECT_TRUE(host.hits.views.empty());
}

TEST_P(Preview, AFailingDatabaseIsPassedOn) {
    manager().getPage("12", "D");
    drop("TORVEX_BODIES_DESIGN");
    try {
        manager().torvex_preparePage("D");
        FAIL();
    } catch (const Error& error) {
        EXPECT_TRUE(std::string(error.what()).starts_with(chain({"torvex_preparePage !", "fillBodies !"})))
            << error.what();
    }
}

// Bodies

TEST_P(Preview, ABodyIsThatOfTheDesignUnlessTheModeIsL) {
    EXPECT_EQ(manager().getBody("12", 1), "design");
    EXPECT_EQ(manager().getBody("AA.EN.01", 1, 0, 0, "D"), "design");
    EXPECT_EQ(manager().getBody("12", 1, 0, 0, "x"), "design");
    EXPECT_EQ(manager().getBody("12", 1, 0, 0, "l"), "live");
    EXPECT_EQ(manager().getBody("12", 1, 1, 0, "L"), "live");
    EXPECT_EQ(manager().getBody("12", 9), "");
    EXPECT_EQ(manager().getBody("4711", 1), "");
}

TEST_P(Preview, AFeedThatFailsIsReportedInRed) {
    row("TORVEX_FEEDS_XML",
        {{"feedId", 5}, {"feedURL_XML", "http://x/a.xml"}, {"feedURL_XSL", "http://x/a.xsl"}});
    designBody(12, 2, "stored", 3, 5);
    host.http.failure = "no <network>";
    const std::string report =
        "<div align=\"center\"><font size=\"2\" face=\"verdana,arial,helvetica\" color=\"#fc5a5a\">HTTP/XML "
        "error - no &lt;network&gt;</font></div>";
    EXPECT_EQ(manager().getBodyXML(5), report);
    EXPECT_EQ(manager().getBody("12", 2), report);
    EXPECT_EQ(manager().getBody("12", 9, 3, 5), report);
    host.application.set("torvex_feeds", true);
    EXPECT_EQ(manager().fillBodies("12", "D", "<!--!torvex_body_1!-->|<!--!torvex_body_2!-->"),
              "design|" + report);
    host.application.set("torvex_feeds", false);
    EXPECT_EQ(manager().fillBodies("12", "D", "<!--!torvex_body_1!-->|<!--!torvex_body_2!-->"),
              "design|stored");
}

TEST_P(Preview, AnHtmlFeedIsFetched) {
    row("TORVEX_FEEDS_HTML", {{"feedId", 5}, {"feedURL", "http://x/a.html"}});
    host.http.answers["http://x/a.html"] = {200, "OK", "hello", "text/html", "hello"};
    EXPECT_EQ(manager().getBodyHTML(5), "200hello");
    EXPECT_EQ(manager().getBody("12", 1, 2, 5), "200hello");
    EXPECT_EQ(manager().getBodyHTML(4711), "");
}

TEST_P(Preview, BodiesAreThoseOfTheMode) {
    EXPECT_EQ(manager().fillBodies("12", "D", "<!--!torvex_body_1!-->"), "design");
    EXPECT_EQ(manager().fillBodies("12", "L", "<!--!torvex_body_1!-->"), "live");
    EXPECT_EQ(manager().fillBodies("4711", "L", "<!--!torvex_body_1!-->"), "&nbsp;");
}

// disableLinks

TEST_P(Preview, LinksAreTurnedOff) {
    word(2587, "Off & <away>");
    EXPECT_EQ(manager().disableLinks("<a href=\"x\">1</a><AREA href=y><abbr><a>"),
              "<a onClick=\"return false;\" title=\"Off &amp; &lt;away&gt;\" href=\"x\">1</a>"
              "<area onClick=\"return false;\" title=\"Off &amp; &lt;away&gt;\" href=y><abbr><a>");
    EXPECT_EQ(manager().disableLinks("<a href='x'>1</a><area href=y>", false),
              "<a onClick='return false;' title='Off &amp; &lt;away&gt;' href='x'>1</a>"
              "<area onClick='return false;' title='Off &amp; &lt;away&gt;' href=y>");
}

TEST_P(Preview, AWordWithAQuoteStaysInItsAttribute) {
    word(2587, "It's \"off\"");
    EXPECT_EQ(manager().disableLinks("<a b>", true),
              "<a onClick=\"return false;\" title=\"It's &quot;off&quot;\" b>");
    EXPECT_EQ(manager().disableLinks("<a b>", false),
              "<a onClick='return false;' title='It&#39;s &quot;off&quot;' b>");
}

}  // namespace
}  // namespace torvex::test
