#include <gmock/gmock.h>

#include "pages/Pages.h"
#include "pages/PolicyReports.h"
#include "support/BoardTest.h"
#include "support/PageAnswer.h"

namespace torvex::test {
namespace {

using ::testing::HasSubstr;
using ::testing::Not;

/// Page 31 shows the board from category "01" on.
class MsgBoardPageTest : public BoardTest {
  protected:
    void SetUp() override {
        BoardTest::SetUp();
        if (HasFatalFailure()) return;
        host.database.target = &database();
        host.application.set("torvex_charset", "utf-8");
        row("TORVEX_APPLICATIONS",
            {{"app_id", 1}, {"app_name", "Message board"}, {"app_href_public", "/torvex_msgBoard/"}});
        contentTemplate(1, "aa", "en", "board.html",
                        block("torvex_content", block("torvex_application_1", tag("msgB_breadcrumb")) +
                                                    block("torvex_application_2", categories()) +
                                                    block("torvex_application_3", items())));
        baseTemplate(1, "aa", "en", "base.html",
                     "<html><head></head><body>" + tag("torvex_content") + "</body></html>");
        page("aa.en").id(10).insert();
        page("aa.en.01")
            .id(31)
            .type("A")
            .application(1)
            .contentTemplate(1)
            .baseTemplate(1)
            .set("app_param_public", "catRoot=01")
            .insert();
        category(1, "01", "News");
        category(2, "01.01", "Below & beyond", {{"msgB_pageSize", 2}, {"msgB_archiveVisible", 1}});
        category(3, "02", "Outside");
        for (int i = 1; i <= 5; ++i) item(i, 2, "01.01", "T" + std::to_string(i));
        item(6, 2, "01.01", "Old", {{"msgB_archiveDate", "20260101"}});
        item(7, 3, "02", "Hidden");
    }

    PolicyReports reports;

    static std::string categories() {
        return block("msgB_category", "<a href=\"" + tag("msgB_categoryURL") + tag("msgB_catId") + "\">" +
                                          tag("msgB_catTitle") + "</a>");
    }
    static std::string items() {
        return block("msgB_item", block("msgB_default", "[" + tag("msgB_itemTitle") + "]")) +
               block("msgB_paging", block("msgB_pLink", "<a href=\"" + tag("msgB_pageURL") +
                                                            tag("msgB_pageId") + "\">p</a>")) +
               block("msgB_gotoArchive", "<a href=\"" + tag("msgB_archiveURL") + "\">archive</a>") +
               block("msgB_gotoRecent", "<a href=\"" + tag("msgB_recentURL") + "\">recent</a>");
    }

    std::string show(const std::string& query) {
        host.response = {};
        ask(query);
        msgBoardPage(host.context(), reports);
        return seen(host.response.body());
    }
    static std::string linkTo(const std::string& rest) {
        return "<a href=\"/torvex_msgBoard/?pageId=31&amp;cat=" + rest + "\"";
    }
};
INSTANTIATE_TEST_SUITE_P(Engines, MsgBoardPageTest, bothEngines(), engineName);

TEST_P(MsgBoardPageTest, AnApplicationPageLeadsHere) {
    ask("pageId=31");
    tvxPage(host.context(), reports);
    EXPECT_THAT(location(host), testing::StartsWith("/torvex_msgBoard/?pageId=31"));
}

TEST_P(MsgBoardPageTest, ShowsTheRootOfThePage) {
    const std::string html = show("pageId=31");
    EXPECT_EQ(host.response.status, 200);
    EXPECT_EQ(host.response.charset, "utf-8");
    EXPECT_THAT(html, HasSubstr(linkTo("01.01")));
    EXPECT_THAT(html, HasSubstr("Below &amp; beyond</a>"));
    EXPECT_THAT(html, Not(HasSubstr("[")));
    EXPECT_EQ((host.hits.views[{"aa.en.01", "20260615"}]), 1);
}

TEST_P(MsgBoardPageTest, ShowsACategoryWithPlainLinks) {
    const std::string html = show("pageId=31&cat=01.01");
    EXPECT_THAT(html, HasSubstr("[T5][T4]"));
    EXPECT_THAT(html, HasSubstr(linkTo("01") + " class=\"msgB_breadcrumb\""));
    EXPECT_THAT(html, HasSubstr(linkTo("01.01&amp;page=2")));
    EXPECT_THAT(html, HasSubstr(linkTo("01.01&amp;archive=1")));
    EXPECT_THAT(html, Not(HasSubstr("javascript:")));
}

TEST_P(MsgBoardPageTest, ShowsAnyPageThatIsAskedFor) {
    EXPECT_THAT(show("pageId=31&cat=01.01&page=3"), HasSubstr("[T1]"));
    for (const char* page : {"", "0", "-1", "x", "1e9", "-99999999999999999999", "1;2", "%00"})
        EXPECT_THAT(show("pageId=31&cat=01.01&page=" + std::string(page)), HasSubstr("[T5][T4]")) << page;
    EXPECT_THAT(show("pageId=31&cat=01.01&page=99999999999999999999"), HasSubstr("[T1]"));
}

TEST_P(MsgBoardPageTest, ShowsTheArchive) {
    const std::string html = show("pageId=31&cat=01.01&archive=1");
    EXPECT_THAT(html, HasSubstr("[Old]"));
    EXPECT_THAT(html, HasSubstr(linkTo("01.01") + " onmouseover"));
    EXPECT_THAT(html, HasSubstr(">recent</a>"));
}

TEST_P(MsgBoardPageTest, NothingOutsideOfTheRootIsShown) {
    for (const char* query : {"&cat=02", "&cat=02&catRoot=02", "&cat=", "&cat=%2702"}) {
        const std::string html = show("pageId=31" + std::string(query));
        EXPECT_THAT(html, Not(HasSubstr("Hidden"))) << query;
        EXPECT_THAT(html, HasSubstr("Below")) << query;
    }
}

TEST_P(MsgBoardPageTest, ACategoryThatIsNotThereShowsAnEmptyPage) {
    const std::string longest = "01" + std::string(248, '9');
    for (const std::string& path : {std::string("01.77"), longest, std::string("01%22%3E%3Cscript%3E"),
                                    std::string("01%00"), std::string("01%FF")}) {
        const std::string html = show("pageId=31&cat=" + path);
        EXPECT_EQ(host.response.status, 200);
        EXPECT_THAT(html, Not(HasSubstr("<script>")));
        EXPECT_THAT(html, Not(HasSubstr("[")));
    }
}

TEST_P(MsgBoardPageTest, APageOfAnotherKindIsRefused) {
    show("pageId=10");
    EXPECT_EQ(host.response.status, 302);
    EXPECT_THAT(location(host), HasSubstr("/error.asp?pageId=10&error="));
    show("pageId=4711");
    EXPECT_THAT(location(host), HasSubstr("error=page_not_found"));
}

TEST_P(MsgBoardPageTest, APageWithoutATemplateSaysSo) {
    connection().execute("update TORVEX_PAGES_LIVE set template = 77 where pageId = 31");
    show("pageId=31");
    EXPECT_THAT(location(host), HasSubstr("error=no_template"));
}

}  // namespace
}  // namespace torvex::test
