#include <gmock/gmock.h>

#include "pages/Pages.h"
#include "pages/PolicyReports.h"
#include "support/PageAnswer.h"
#include "support/SearchPageTest.h"

namespace torvex::test {
namespace {

using ::testing::HasSubstr;
using ::testing::Not;
using ::testing::StartsWith;

class SearchPageAddressTest : public SearchPageTest {
  protected:
    void SetUp() override {
        SearchPageTest::SetUp();
        if (HasFatalFailure()) return;
        externalApplication(1, "/torvex_search/search.asp");
        contentTemplate(
            1, "aa", "bb", "search.html",
            "<!--!torvex_content_start!--><!--!torvex_application_start!-->"
            "<!--!search_result_start!-->[<a href=\"<!--!search_link!-->\"><!--!search_title!--></a>]"
            "<!--!search_result_end!--><!--!search_empty_start!-->nothing<!--!search_empty_end!-->"
            "<!--!search_paging_start!--><!--!search_pNext_start!--><a "
            "href=\"/torvex_search/search.asp?pageId=<!--!search_pageId!-->&amp;search_pageTo="
            "<!--!search_nextPage!-->\">more</a><!--!search_pNext_end!--><!--!search_paging_end!-->"
            "<!--!search_failed_start!-->failed<!--!search_failed_end!-->"
            "<!--!search_notAsked_start!-->ask<!--!search_notAsked_end!-->"
            "<!--!torvex_application_end!--><!--!torvex_content_end!-->");
        baseTemplate(
            1, "aa", "bb", "base.html",
            "<html><head></head><body><a href=\"page(11)\">one</a><!--!torvex_content!--></body></html>");
        connection().execute("update TORVEX_PAGES_LIVE set template = 1, baseTemplate = 1");
        connection().execute("update TORVEX_PAGES_LIVE set type = 'A', application = 1 where pageId = 20");
        host.application.set("torvex_charset", "utf-8");
    }
    const std::string& show(const std::string& query, NamedValues form = {},
                            NamedValues serverVariables = {}) {
        host.response = {};
        ask(query, std::move(form), std::move(serverVariables));
        torvex::searchPage(host.context(), reports, fake.opener());
        return host.response.body();
    }

    PolicyReports reports;
};
INSTANTIATE_TEST_SUITE_P(Engines, SearchPageAddressTest, bothEngines(), engineName);

TEST_P(SearchPageAddressTest, ShowsThePageWithItsResults) {
    fake.rows = {pageRow("aa.bb.01", "One & only")};
    const std::string& html = show("pageId=20&search_string=tax");
    EXPECT_EQ(host.response.status, 200);
    EXPECT_THAT(html, StartsWith("<html>"));
    EXPECT_THAT(html, HasSubstr("[<a href=\"/tvx.asp?pageId=11\""));
    EXPECT_THAT(html, HasSubstr(">One &amp; only</a>]"));
    EXPECT_THAT(html, Not(HasSubstr("<!--!")));
    EXPECT_EQ(host.response.charset, "utf-8");
    EXPECT_EQ(host.response.cacheControl, "private, no-cache");
    EXPECT_EQ((host.hits.views[{"aa.bb.09", "20260615"}]), 1);
}

TEST_P(SearchPageAddressTest, WithoutWordsItAsksForSome) {
    EXPECT_THAT(show("pageId=20"), HasSubstr("nothingask</body>"));
    EXPECT_TRUE(fake.queries.empty());
}

TEST_P(SearchPageAddressTest, ACatalogueThatIsGoneLeavesThePage) {
    fake.isGone = true;
    EXPECT_THAT(show("pageId=20&search_string=tax"), HasSubstr("failed"));
    EXPECT_EQ(host.response.status, 200);
}

TEST_P(SearchPageAddressTest, LinksLeadToFurtherPages) {
    prescribe("search_resultsPerPage", 1);
    fake.rows = {pageRow("aa.bb.01", "One"), pageRow("aa.bb.08", "Two")};
    EXPECT_THAT(show("pageId=20&search_string=tax"),
                HasSubstr("<a href=\"/torvex_search/search.asp?pageId=20&amp;search_pageTo=2\""));
    EXPECT_THAT(show("pageId=20&search_pageTo=2", {}, {{"http_referer", fromResults}}),
                HasSubstr("Two</a>]"));
    EXPECT_EQ(fake.queries.size(), 1U);
}

TEST_P(SearchPageAddressTest, WithoutAPageTheSearchPageNearestToTheHomePageIsShown) {
    for (const auto* query : {"search_string=tax+%26", "pageId=+&search_string=tax%20%26"}) {
        show(query);
        EXPECT_EQ(location(host), "/torvex_search/search.asp?pageId=20&search%5Fstring=tax+%26");
    }
    page("cc.bb").id(40).insert();
    pageGroup(40, 1);
    row("TORVEX_SEARCH", {{"search_pageId", 40}, {"search_catalogName", "site"}});
    host.application.set("tvx_default_pageId", 40);
    show("");
    EXPECT_EQ(location(host), "/torvex_search/search.asp?pageId=40");
    EXPECT_TRUE(fake.queries.empty());
}

TEST_P(SearchPageAddressTest, WithoutASearchPageThereIsNone) {
    connection().execute("delete from TORVEX_SEARCH");
    show("search_string=tax");
    EXPECT_EQ(location(host), "/torvex_search/search.asp?pageId=%2D1&search%5Fstring=tax");
    show("pageId=-1&search_string=tax");
    EXPECT_EQ(location(host), "/error.asp?pageId=-1&error=page_not_found");
}

TEST_P(SearchPageAddressTest, OtherPagesArentServedHere) {
    show("pageId=11&search_string=tax");
    EXPECT_EQ(location(host), "/error.asp?pageId=11&error=no_login");
    for (const auto& ident : {"4711", "%3Cscript%3E", "99999999999999999999"}) {
        show(std::string("pageId=") + ident);
        EXPECT_THAT(location(host), StartsWith("/error.asp?")) << ident;
    }
    EXPECT_TRUE(fake.queries.empty());
}

TEST_P(SearchPageAddressTest, AGuardedSearchPageLeadsToItsLogin) {
    connection().execute("update TORVEX_PAGES_GROUPS_LIVE set groupId = 2 where pageId = 20");
    connection().execute("update TORVEX_PAGES_LIVE set loginPage = 18 where pageId = 20");
    show("pageId=20&search_string=tax");
    EXPECT_EQ(location(host), "/tvx.asp?pageId=18");
    EXPECT_TRUE(fake.queries.empty());
}

TEST_P(SearchPageAddressTest, AFormThatIsPostedLeadsToAnAddress) {
    fake.rows = {pageRow("aa.bb.01", "One")};
    show("", {{"pageId", "20"}, {"search_string", "tax"}, {"search_match", "all"}},
         {{"request_method", "POST"}});
    EXPECT_EQ(location(host), "/torvex_search/search.asp?pageId=20");
    EXPECT_TRUE(fake.queries.empty());
    EXPECT_THAT(show("pageId=20"), HasSubstr("One</a>]"));
    EXPECT_EQ(asked().text, "((@all tax) OR (@filename tax))");
    EXPECT_THAT(show("pageId=20"), HasSubstr("ask")) << "it is used up";
}

TEST_P(SearchPageAddressTest, SoDoesAPostedPaging) {
    show("pageId=20", {{"search_pageTo", "2&x=<"}}, {{"request_method", "POST"}});
    EXPECT_EQ(location(host), "/torvex_search/search.asp?pageId=20&search_pageTo=2%26x%3D%3C");
}

TEST_P(SearchPageAddressTest, TheFolderLeadsToThePage) {
    ask("search_string=tax");
    searchFolderPage(host.context());
    EXPECT_EQ(location(host), "/torvex_search/search.asp?pageId=20&search%5Fstring=tax");
}

TEST_P(SearchPageAddressTest, AMissingTemplateIsTold) {
    connection().execute("update TORVEX_PAGES_LIVE set template = 9 where pageId = 20");
    show("pageId=20&search_string=tax");
    EXPECT_THAT(location(host), StartsWith("/error.asp?pageId=20&error=no_template"));
}

// ---- Completion ----

class SearchSuggestionsTest : public ExtranetTest {
  protected:
    void SetUp() override {
        ExtranetTest::SetUp();
        if (HasFatalFailure()) return;
        for (const auto& [pageId, title] : {std::pair{11, "Tax rates"}, {12, "Tax secrets"}, {18, "Log in"}})
            titled(pageId, title);
    }
    void titled(PageId pageId, const std::string& title) {
        connection().execute("update TORVEX_PAGES_LIVE set title = ? where pageId = ?", {title, pageId});
    }
    PageId open(const std::string& node, const std::string& title) {
        const PageId pageId = page(node).title(title).insert();
        pageGroup(pageId, 1);
        return pageId;
    }
    std::string suggest(const std::string& query, const std::string& page = "10") {
        host.response = {};
        ask("pageId=" + page + "&q=" + query);
        searchSuggestions(host.context());
        return host.response.body();
    }
    static constexpr const char* none = "{\"suggestions\":[]}";
};
INSTANTIATE_TEST_SUITE_P(Engines, SearchSuggestionsTest, bothEngines(), engineName);

TEST_P(SearchSuggestionsTest, TitlesThatBeginSoAreGiven) {
    EXPECT_EQ(suggest("TA"), "{\"suggestions\":[{\"title\":\"Tax rates\",\"pageId\":11}]}");
    EXPECT_EQ(host.response.contentType, "application/json");
    EXPECT_EQ(host.response.cacheControl, "no-store");
    EXPECT_EQ(suggest("rates"), none);
}

TEST_P(SearchSuggestionsTest, OnlyThoseThatTheVisitorMaySee) {
    EXPECT_THAT(suggest("tax"), Not(HasSubstr("secrets")));
    logIn("ben");
    EXPECT_THAT(suggest("tax"), HasSubstr("secrets"));
    connection().execute("update TORVEX_PAGES_LIVE set online = 0 where pageId = 12");
    EXPECT_THAT(suggest("tax"), Not(HasSubstr("secrets")));
}

TEST_P(SearchSuggestionsTest, FoldersSystemPagesAndOtherTreesArent) {
    const PageId folder = page("aa.bb.30").title("Tax folder").type("F").insert();
    pageGroup(folder, 1);
    open("aa.bb.99.01", "Tax system");
    open("aa.cc.01", "Tax language");
    open("cc.bb.01", "Tax site");
    page("aa.bb.31").title("Tax design").insertInDesignOnly();
    EXPECT_EQ(suggest("tax"), "{\"suggestions\":[{\"title\":\"Tax rates\",\"pageId\":11}]}");
}

TEST_P(SearchSuggestionsTest, NoMoreThanTenAndNoneTwice) {
    for (int i = 10; i < 40; ++i) open("aa.bb." + std::to_string(i), "Über " + std::to_string(i / 2));
    const std::string found = suggest("%C3%BCb");
    EXPECT_THAT(found, HasSubstr("Über 10"));
    EXPECT_THAT(found, HasSubstr("Über 19"));
    EXPECT_THAT(found, Not(HasSubstr("Über 5")));
    EXPECT_EQ(found.find("Über 10"), found.rfind("Über 10"));
}

TEST_P(SearchSuggestionsTest, TitlesAreEncoded) {
    open("aa.bb.30", "Quotes \" and </script>");
    EXPECT_THAT(suggest("quo"), HasSubstr("\"Quotes \\\" and </script>\""));
}

TEST_P(SearchSuggestionsTest, WhatIsNoBeginningFindsNone) {
    for (const auto* query : {"", "t", "+t+", "%25%25", "t%25", "__", "%00%00", "%FF%FE", "ta%27%20or%201=1"})
        EXPECT_EQ(suggest(query), none) << query;
    EXPECT_EQ(suggest(std::string(101, 't')), none);
    EXPECT_EQ(suggest("Log"), "{\"suggestions\":[{\"title\":\"Log in\",\"pageId\":18}]}");
}

TEST_P(SearchSuggestionsTest, APageThatMayNotBeSeenGivesNone) {
    EXPECT_EQ(suggest("tax", "12"), none);
    EXPECT_EQ(suggest("tax", "4711"), none);
    EXPECT_EQ(suggest("tax", ""), none);
    EXPECT_EQ(suggest("tax", "%3Cx%3E"), none);
}

}  // namespace
}  // namespace torvex::test
