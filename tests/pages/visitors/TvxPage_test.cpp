#include <gmock/gmock.h>

#include "pages/ContentPolicy.h"
#include "pages/Pages.h"
#include "pages/PolicyReports.h"
#include "support/ExtranetTest.h"
#include "support/PageAnswer.h"

namespace torvex::test {
namespace {

using ::testing::HasSubstr;
using ::testing::Not;
using ::testing::StartsWith;

class TvxPageTest : public ExtranetTest {
  protected:
    void SetUp() override {
        ExtranetTest::SetUp();
        if (HasFatalFailure()) return;
        contentTemplate(1, "aa", "bb", "page.html",
                        "<!--!torvex_content_start!-->the layout<!--!torvex_content_end!-->");
        baseTemplate(1, "aa", "bb", "base.html",
                     "<html><head><!--!torvex_head!--></head><body><!--!torvex_content!-->"
                     "<a href=\"page(11)\">one</a><a href=\"page(4711)\">two</a></body></html>");
        connection().execute("update TORVEX_PAGES_LIVE set template = 1, baseTemplate = 1");
        host.application.set("torvex_hyperlink_check", true);
        host.application.set("torvex_charset", "utf-8");
    }
    /// The body of the answer.
    const std::string& show(const std::string& query, NamedValues serverVariables = {}) {
        host.response = {};
        ask(query, {}, std::move(serverVariables));
        tvxPage(host.context(), reports);
        return host.response.body();
    }
    PolicyReports reports;
    std::string leadsTo(const std::string& query, NamedValues serverVariables = {}) {
        show(query, std::move(serverVariables));
        EXPECT_EQ(host.response.status, 302);
        EXPECT_EQ(host.response.body(), "");
        return location(host);
    }
};
INSTANTIATE_TEST_SUITE_P(Engines, TvxPageTest, bothEngines(), engineName);

TEST_P(TvxPageTest, ShowsThePageWithItsLayoutAndItsLinks) {
    const std::string& html = show("pageId=11");
    EXPECT_EQ(host.response.status, 200);
    EXPECT_THAT(html, StartsWith("<html>"));
    EXPECT_THAT(html, HasSubstr("the layout"));
    EXPECT_THAT(html, HasSubstr("<a href=\"/tvx.asp?pageId=11\""));
}

TEST_P(TvxPageTest, DeadLinksGo) {
    EXPECT_THAT(show("pageId=11"), HasSubstr("one</a>two</body>"));
}

TEST_P(TvxPageTest, APageMayBeAskedForByItsNode) {
    EXPECT_THAT(show("pageId=AA.bb.01"), HasSubstr("the layout"));
}

TEST_P(TvxPageTest, WithoutAPageTheDefaultOneIsShown) {
    for (const auto* query : {"", "n=1", "pageId=", "pageId=+"}) {
        EXPECT_THAT(show(query), HasSubstr("the layout")) << query;
    }
    EXPECT_EQ((host.hits.views[{"aa.bb", "20260615"}]), 4);
}

TEST_P(TvxPageTest, WithFramesThePageTellsTheFrameSetWhichItIs) {
    host.application.set("torvex_frames", true);
    EXPECT_THAT(show("pageId=11"), HasSubstr("window.top.navigation('11','aa.bb.01')"));
}

TEST_P(TvxPageTest, AViewIsCounted) {
    show("pageId=11");
    EXPECT_EQ((host.hits.views[{"aa.bb.01", "20260615"}]), 1);
}

TEST_P(TvxPageTest, OnlyPagesThatShowAreCounted) {
    show("pageId=12");
    show("pageId=15");
    show("pageId=4711");
    EXPECT_TRUE(host.hits.views.empty());
}

TEST_P(TvxPageTest, TheCharsetIsTheOneOfAllLanguages) {
    show("pageId=11");
    EXPECT_EQ(host.response.charset, "utf-8");
}

TEST_P(TvxPageTest, WithoutACommonCharsetItIsTheLanguages) {
    host.application.set("torvex_charset", "");
    const std::string id = cell("select charset_id from TORVEX_CHARSETS where charset_label = 'iso-8859-1'");
    ASSERT_NE(id, "");
    language("bb", std::stoi(id));
    show("pageId=11");
    EXPECT_TRUE(text::equals(host.response.charset, "iso-8859-1")) << host.response.charset;
}

TEST_P(TvxPageTest, WhatIsNoPageLeadsToTheErrorPage) {
    EXPECT_EQ(leadsTo("pageId=4711"), "/error.asp?pageId=-1&error=page_not_found");
    for (const auto* query : {"pageId=%00", "pageId=12%00", "pageId=%FF%FE%80%80%80", "pageId='",
                              "pageId=1&pageId=2", "pageId=%3Cscript%3E", "pageId=1e400", "pageId=-1"}) {
        EXPECT_THAT(leadsTo(query), HasSubstr("error=page_not_found")) << query;
        EXPECT_THAT(location(host), Not(HasSubstr("script"))) << query;
    }
}

TEST_P(TvxPageTest, ASecuredPageLeadsToItsLoginPage) {
    EXPECT_EQ(leadsTo("pageId=12"), "/tvx.asp?pageId=18");
    EXPECT_EQ(kept("tvx_pageAppliedFor"), "12");
}

TEST_P(TvxPageTest, AMemberSeesTheSecuredPage) {
    logIn("ben");
    EXPECT_THAT(show("pageId=12"), HasSubstr("the layout"));
}

TEST_P(TvxPageTest, NamesInTheAddressLogNobodyIn) {
    EXPECT_EQ(leadsTo("pageId=12&tvx_username=ben&tvx_password=benpw&username=ben&password=benpw"),
              "/tvx.asp?pageId=18");
}

TEST_P(TvxPageTest, OnlySecuredPagesAreKeptNowhere) {
    show("pageId=11");
    EXPECT_EQ(host.response.cacheControl, "");
    logIn("ben");
    show("pageId=12");
    EXPECT_EQ(host.response.cacheControl, "no-store");
}

TEST_P(TvxPageTest, TheWayToALoginIsKeptNowhere) {
    show("pageId=12");
    EXPECT_EQ(host.response.cacheControl, "no-store");
}

TEST_P(TvxPageTest, APageWithALoginFormIsKeptNowhere) {
    contentTemplate(
        2, "aa", "bb", "login.html",
        "<!--!torvex_content_start!--><form action=\"<!--!torvex_loginURL!-->\"><!--!torvex_content_end!-->");
    connection().execute("update TORVEX_PAGES_LIVE set template = 2 where pageId = 18");
    EXPECT_THAT(show("pageId=18"), HasSubstr("/tvxLogin.asp\">"));
    EXPECT_EQ(host.response.cacheControl, "no-store");
    show("pageId=11");
    EXPECT_EQ(host.response.cacheControl, "");
}

TEST_P(TvxPageTest, ThePagesSiteSaysWhichPolicyItHas) {
    show("pageId=11");
    EXPECT_THAT(header(host, "Content-Security-Policy-Report-Only"), HasSubstr("script-src 'self'"));
    host.application.set("tvx_contentPolicy_aa", "on");
    show("pageId=11");
    EXPECT_THAT(header(host, "Content-Security-Policy"), HasSubstr("script-src 'self'"));
    host.application.set("tvx_contentPolicy_aa", "off");
    host.application.set("tvx_contentPolicy_bb", "on");
    show("pageId=11");
    EXPECT_EQ(header(host, "Content-Security-Policy") + header(host, "Content-Security-Policy-Report-Only"),
              "");
}

TEST_P(TvxPageTest, ThePolicyAllowsThePagesCallOfTheFrameSet) {
    host.application.set("torvex_frames", true);
    host.application.set("tvx_contentPolicy", "on");
    const std::string html = show("pageId=11");
    const std::string opening = "<script language=\"JavaScript\">";
    const std::size_t begin = html.find(opening) + opening.size();
    const std::string script = html.substr(begin, html.find("</script>", begin) - begin);
    EXPECT_THAT(script, StartsWith("if (window.top.navigation)"));
    EXPECT_THAT(header(host, "Content-Security-Policy"), HasSubstr(scriptSource(script)));
}

TEST_P(TvxPageTest, ThePolicyAllowsLinksToDocumentsInWindowsOfTheirOwn) {
    host.application.set("tvx_contentPolicy", "on");
    host.files.bytes["/install/wwwroot/documents/aa/b.pdf"] = "x";
    baseTemplate(2, "aa", "bb", "links.html", "<body><a href=\"file(b.pdf)\">one</a></body>");
    connection().execute("update TORVEX_PAGES_LIVE set baseTemplate = 2");
    EXPECT_THAT(show("pageId=11"), HasSubstr("href=\"javascript:top.popup('aa','b.pdf')\""));
    EXPECT_THAT(header(host, "Content-Security-Policy"),
                HasSubstr(scriptSource("javascript:top.popup('aa','b.pdf')")));
}

TEST_P(TvxPageTest, ASecureSiteLeadsToItsSecureAddress) {
    host.application.set("tvx_website_ssl", true);
    EXPECT_EQ(leadsTo("pageId=11", {{"https", "off"}, {"script_name", "/tvx.asp"}}),
              "https://www.site.test/tvx.asp?pageId=11");
}

TEST_P(TvxPageTest, AnApplicationPageLeadsToItsApplication) {
    externalApplication(5, "/shop/index.asp");
    page("aa.bb.05").id(20).type("A").application(5).insert();
    pageGroup(20, 1);
    EXPECT_EQ(leadsTo("pageId=20&n=1"), "/shop/index.asp?pageId=20&n=1");
}

TEST_P(TvxPageTest, AMissingTemplateLeadsToTheErrorPage) {
    host.files.bytes.erase("/install/contentTemplates/aa/bb/page.html");
    EXPECT_EQ(leadsTo("pageId=11"), "/error.asp?pageId=11&error=no_template");
    EXPECT_TRUE(host.hits.views.empty());
}

TEST_P(TvxPageTest, AMissingBaseTemplateLeadsToTheErrorPage) {
    host.files.bytes.erase("/install/baseTemplates/aa/bb/base.html");
    EXPECT_EQ(leadsTo("pageId=11"), "/error.asp?pageId=11&error=no_base_template");
}

}  // namespace
}  // namespace torvex::test
