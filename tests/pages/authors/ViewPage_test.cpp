#include <gmock/gmock.h>

#include "support/AuthorsPagesTest.h"

namespace torvex::test {
namespace {

using testing::AllOf;
using testing::HasSubstr;
using testing::Not;
using testing::StartsWith;

/// Page 1 is the root, whose body 1 differs between design ("draft") and live data ("public"). Anna may do
/// everything to it.
class ViewPage : public AuthorsPagesTest {
  protected:
    void SetUp() override {
        AuthorsPagesTest::SetUp();
        if (HasFatalFailure()) return;
        siteLanguage("aa", "en", "Site");
        baseTemplate(1, "aa", "en", "base.html",
                     "<html><head><script>own()</script></head><body><!--!torvex_content!--></body></html>");
        contentTemplate(1, "aa", "en", "page.html",
                        "<!--!torvex_content_start!--><!--!torvex_body_1!--><!--!torvex_content_end!-->");
        page("aa.en").id(1).contentTemplate(1).baseTemplate(1).title("Home").insert();
        row("TORVEX_BODIES_DESIGN", {{"pageId", 1},
                                     {"bodyId", 1},
                                     {"bodyType", 1},
                                     {"feedId", 0},
                                     {"bodyText", "<p>draft</p><iframe src=\"/a\"></iframe>"}});
        row("TORVEX_BODIES_LIVE",
            {{"pageId", 1}, {"bodyId", 1}, {"bodyType", 1}, {"feedId", 0}, {"bodyText", "<p>public</p>"}});
    }
    /// A role for the site, with all five rights.
    void mayDoAll() {
        row("TORVEX_ROLES", {{"roleId", 1}, {"roleName", "Editors"}});
        row("TORVEX_ROLES_LOGINS", {{"roleId", 1}, {"loginId", anna}});
        row("TORVEX_EDIT_RIGHTS", {{"roleId", 1},
                                   {"site", "aa"},
                                   {"lang", "en"},
                                   {"scope", ""},
                                   {"onOff", 1},
                                   {"move", 1},
                                   {"publish", 1},
                                   {"approve", 1},
                                   {"edit", 1}});
    }
    void open(const std::string& query, NamedValues variables = {{"http_sec_fetch_dest", "iframe"}}) {
        variables.emplace_back("script_name", "/torvex/view.asp");
        ask(query, std::move(variables));
        viewPage(host.context(), shared);
    }
    void send(NamedValues form, NamedValues variables = {}) {
        post(std::move(form), std::move(variables));
        viewPage(host.context(), shared);
    }
    std::string bodyText() {
        return cell("select bodyText from TORVEX_BODIES_DESIGN where pageId = 1 and bodyId = 1");
    }
};
INSTANTIATE_TEST_SUITE_P(Engines, ViewPage, bothEngines(), engineName);

TEST_P(ViewPage, TheEditViewIsTheDesignInItsFramesAndRunsNothing) {
    logInAnna();
    mayDoAll();
    open("pageId=1&mode=D&edit=1");
    EXPECT_EQ(host.response.status, 200);
    EXPECT_THAT(html(),
                AllOf(HasSubstr("draft"), HasSubstr("class=\"bodyborder\""), HasSubstr("name=\"editBody\"")));
    EXPECT_EQ(policy(),
              "script-src 'none'; frame-src 'none'; object-src 'none'; form-action 'none'; base-uri 'self'; "
              "frame-ancestors 'self'");
    EXPECT_THAT(host.response.cacheControl, HasSubstr("no-store"));
}

TEST_P(ViewPage, FramesWithinAPageThatIsEditedAreBoxes) {
    logInAnna();
    mayDoAll();
    open("pageId=1&mode=D&edit=1");
    EXPECT_THAT(html(), AllOf(Not(HasSubstr("<iframe")), HasSubstr("A frame with /a stands here.")));
}

TEST_P(ViewPage, ATriedPageRunsInAnOriginOfItsOwn) {
    logInAnna();
    mayDoAll();
    open("pageId=1&mode=D");
    EXPECT_THAT(html(), AllOf(HasSubstr("draft"), Not(HasSubstr("bodyborder")),
                              HasSubstr("<head><script src=\"/torvex/tryview.js\"></script>")));
    EXPECT_THAT(policy(), AllOf(StartsWith("sandbox allow-scripts allow-forms allow-popups;"),
                                Not(HasSubstr("same-origin"))));
}

TEST_P(ViewPage, TheLivePageIsShownAndNeverEdited) {
    logInAnna();
    mayDoAll();
    open("pageId=1&mode=L&edit=1");
    EXPECT_THAT(html(), AllOf(HasSubstr("public"), Not(HasSubstr("bodyborder"))));
    EXPECT_THAT(policy(), StartsWith("sandbox "));
}

TEST_P(ViewPage, WhatIsNotThereIsTold) {
    logInAnna();
    mayDoAll();
    for (const char* query :
         {"pageId=99&mode=D", "mode=D", "pageId=x&mode=D", "pageId=aa.en.07&mode=D&edit=1"}) {
        open(query);
        EXPECT_EQ(host.response.status, 404) << query;
        EXPECT_THAT(html(), HasSubstr("data-error=\"page_not_found\"")) << query;
    }
    connection().execute("delete from TORVEX_PAGES_LIVE");
    open("pageId=1&mode=L");
    EXPECT_THAT(html(), HasSubstr("data-error=\"page_not_published\""));
}

TEST_P(ViewPage, WhatATemplateLacksLeadsToItsError) {
    logInAnna();
    mayDoAll();
    host.files.bytes.erase("/install/contentTemplates/aa/en/page.html");
    open("pageId=1&mode=D&edit=1");
    EXPECT_EQ(location(host), "/torvex/error.asp?pageId=1&error=template_not_found&flag=0");
}

TEST_P(ViewPage, NobodySeesNothing) {
    for (const char* query : {"pageId=1&mode=D&edit=1", "pageId=1&mode=D", "pageId=1&mode=L"}) {
        open(query);
        EXPECT_EQ(host.response.status, 401) << query;
        EXPECT_THAT(html(), AllOf(HasSubstr("data-error=\"not_logged_in\""), Not(HasSubstr("draft"))));
    }
    open("pageId=1&mode=D", {{"http_sec_fetch_dest", "document"}});
    EXPECT_EQ(location(host), "/torvex/login?to=%2Ftorvex%2Fview%2Easp%3FpageId%3D1%26mode%3DD");
}

TEST_P(ViewPage, ThePostedFormSavesTheBodyAndShowsThePage) {
    logInAnna();
    mayDoAll();
    send({{"token", token()},
          {"html", "<p>new</p>"},
          {"pageId", "1"},
          {"bodyId", "1"},
          {"job", "save"},
          {"mode", "D"}});
    EXPECT_EQ(location(host), "/torvex/view.asp?pageId=1&mode=D&edit=1");
    EXPECT_EQ(bodyText(), "<p>new</p>");
}

TEST_P(ViewPage, AFormWithoutTheSecretIsAskedAboutAndSavesNothing) {
    logInAnna();
    mayDoAll();
    send({{"html", "<p>\"new\"</p>"}, {"pageId", "1"}, {"bodyId", "1"}, {"job", "save"}, {"mode", "D"}});
    EXPECT_THAT(bodyText(), StartsWith("<p>draft"));
    EXPECT_THAT(html(),
                AllOf(HasSubstr("Save this text?"), HasSubstr("body 1 of the page “Home”"),
                      HasSubstr("&lt;p&gt;&quot;new&quot;&lt;/p&gt;</textarea>"), HasSubstr(token())));
    EXPECT_THAT(policy(), AllOf(HasSubstr("frame-ancestors 'none'"), HasSubstr("form-action 'self'")));
    EXPECT_EQ(header(host, "X-Frame-Options"), "DENY");
}

TEST_P(ViewPage, ARefusalIsToldAndSavesNothing) {
    logInAnna();
    mayDoAll();
    connection().execute("update TORVEX_PAGES_DESIGN set approveStatus = 1");
    send({{"token", token()}, {"html", "x"}, {"pageId", "1"}, {"bodyId", "1"}, {"job", "save"}});
    EXPECT_EQ(host.response.status, 409);
    EXPECT_THAT(html(), HasSubstr("The page is approved."));
    connection().execute("update TORVEX_PAGES_DESIGN set approveStatus = 0, lockStatus = 1, lockedBy = 9");
    send({{"token", token()}, {"html", "x"}, {"pageId", "1"}, {"bodyId", "1"}, {"job", "save"}});
    EXPECT_THAT(html(), HasSubstr("Another login has the page."));
    EXPECT_THAT(bodyText(), StartsWith("<p>draft"));
}

TEST_P(ViewPage, WhoMayNotEditSavesNothing) {
    logInAnna();
    send({{"token", token()}, {"html", "x"}, {"pageId", "1"}, {"bodyId", "1"}, {"job", "save"}});
    EXPECT_EQ(host.response.status, 403);
    EXPECT_THAT(bodyText(), StartsWith("<p>draft"));
}

TEST_P(ViewPage, AFormOfNobodyOrOfAnotherSiteSavesNothing) {
    send({{"token", token()}, {"html", "x"}, {"pageId", "1"}, {"bodyId", "1"}, {"job", "save"}});
    EXPECT_THAT(location(host), StartsWith("/torvex/login"));
    logInAnna();
    mayDoAll();
    send({{"token", token()}, {"html", "x"}, {"pageId", "1"}, {"bodyId", "1"}, {"job", "save"}},
         {{"http_origin", "http://evil.test"}});
    EXPECT_EQ(host.response.status, 403);
    EXPECT_THAT(bodyText(), StartsWith("<p>draft"));
}

TEST_P(ViewPage, WhatIsNoBodyIsRefused) {
    logInAnna();
    mayDoAll();
    for (const char* bodyId : {"", "x", "1e9", "-1"}) {
        send({{"token", token()}, {"html", "x"}, {"pageId", "1"}, {"bodyId", bodyId}, {"job", "save"}});
        EXPECT_NE(host.response.status, 200) << bodyId;
        EXPECT_THAT(bodyText(), StartsWith("<p>draft"));
    }
}

}  // namespace
}  // namespace torvex::test
