#include <gmock/gmock.h>

#include "support/SearchPageTest.h"

namespace torvex::test {
namespace {

using ::testing::HasSubstr;
using ::testing::IsEmpty;
using ::testing::Not;

class LoadResultsTest : public SearchPageTest {
  protected:
    void SetUp() override {
        SearchPageTest::SetUp();
        if (HasFatalFailure()) return;
        host.application.set("torvex_scriptTimeout_normal", 40);
    }
    bool isKept(const std::string& key) { return host.session.object("torvex_search_" + key) != nullptr; }
};
INSTANTIATE_TEST_SUITE_P(Engines, LoadResultsTest, bothEngines(), engineName);

// ---- What is asked of the catalogue ----

TEST_P(LoadResultsTest, TheCatalogueIsAskedWithAllThatTheSearchSays) {
    metaTag(1, "aa", "petals");
    search({{"search_string", "Tax Rates"}, {"search_match", "all"}, {"search_sortOrder", "title,rank"}});
    EXPECT_EQ(error, "");
    EXPECT_EQ(fake.openedName, "site");
    EXPECT_EQ(fake.openedRoot, "\\install\\");
    ASSERT_EQ(fake.queries.size(), 1U);
    EXPECT_EQ(asked().text, "((@all tax AND rates) OR (@filename tax AND rates))");
    EXPECT_EQ(asked().language, "bb");
    EXPECT_EQ(asked().sortBy, "doctitle,rank[d]");
    EXPECT_EQ(asked().columns.back(), "petals");
    ASSERT_EQ(asked().scopes.size(), 2U);
    EXPECT_EQ(asked().scopes[0].path, "\\install\\search\\html\\");
    EXPECT_EQ(asked().scopes[1].path, "\\install\\wwwroot\\documents\\");
}

// ---- The page ----

TEST_P(LoadResultsTest, ResultsStandInTheirTemplate) {
    fake.rows = {pageRow("aa.bb.01", "One"), documentRow("aa/001/price list.pdf", "Prices")};
    host.files.bytes["/install/wwwroot/documents/aa/001/price list.pdf"] = "x";
    EXPECT_EQ(withoutMarkers(searchFor("tax")), "1-2: [page(11)|One] [file(aa/001/price list.pdf)|Prices]");
    EXPECT_EQ(error, "");
}

TEST_P(LoadResultsTest, LinksBecomeThoseOfTheSite) {
    fake.rows = {pageRow("aa.bb.01", "One")};
    EXPECT_THAT(searchFor("tax", resultsOnly("<a href=\"<!--!search_link!-->\">x</a>")),
                HasSubstr("<a href=\"/tvx.asp?pageId=11\""));
}

TEST_P(LoadResultsTest, OfAPreviewThoseOfTheInterface) {
    fake.rows = {pageRow("aa.bb.01", "One")};
    EXPECT_THAT(
        search({{"search_string", "tax"}}, resultsOnly("<a href=\"<!--!search_link!-->\">x</a>"), " d "),
        HasSubstr("<a href=\"javascript:top.page('11')\""));
}

TEST_P(LoadResultsTest, ADocumentWithAnOddNameIsLinkedByItsAddress) {
    EXPECT_EQ(shownAs("<!--!search_link!-->", documentRow("aa/a'b\" (1).pdf")),
              "/documents/aa/a%27b%22%20%281%29.pdf");
}

TEST_P(LoadResultsTest, ThePageMayBeNamedByItsNode) {
    documents(1);
    ask("", {{"search_string", "tax"}});
    EXPECT_THAT(load(resultsTemplate, "", " AA.bb.09 "), HasSubstr("1.pdf"));
    EXPECT_EQ(error, "");
}

TEST_P(LoadResultsTest, AnythingElseIsNoSearchPage) {
    for (const auto& ident : badIdentifiers()) {
        ask("", {{"search_string", "tax"}});
        load(resultsTemplate, "", ident);
        EXPECT_EQ(error, "Page ID missing !") << ident;
    }
}

TEST_P(LoadResultsTest, TheTemplateMustHaveAnApplicationBlock) {
    for (const auto* html :
         {"", "<p>x</p>", "<!--!torvex_application_start!-->  <!--!torvex_application_end!-->",
          "<!--!torvex_application_end!-->x<!--!torvex_application_start!-->"}) {
        searchFor("tax", html);
        EXPECT_EQ(error, "Results template contains no application block !");
    }
    EXPECT_THAT(fake.queries, IsEmpty());
}

TEST_P(LoadResultsTest, WithoutAResultBlockTheTemplateStays) {
    documents(1);
    EXPECT_EQ(searchFor("tax",
                        "a<!--!torvex_application_start!-->b<!--!search_paging_start!-->c"
                        "<!--!search_paging_end!--><!--!torvex_application_end!-->d"),
              "ab<!--!search_paging_start!-->c<!--!search_paging_end!-->d");
    EXPECT_EQ(error, "");
}

TEST_P(LoadResultsTest, TheWordsAreShownEncoded) {
    const std::string html = "<i><!--!search_string!--></i>" + resultsOnly("<b><!--!search_string!--></b>");
    documents(1);
    EXPECT_EQ(searchFor("<Tax> & \"rates\"", html),
              "<i>&lt;Tax&gt; &amp; &quot;rates&quot;</i><b>&lt;Tax&gt; &amp; &quot;rates&quot;</b>");
}

TEST_P(LoadResultsTest, TheTimeIsDoubledWhileItSearches) {
    int during = 0;
    fake.answer = [&](const catalogue::Query&) {
        during = host.context().scriptTimeout;
        return std::vector<catalogue::Row>{};
    };
    searchFor("tax");
    EXPECT_EQ(during, 80);
    EXPECT_EQ(host.context().scriptTimeout, 40);
}

TEST_P(LoadResultsTest, NothingFoundIsNoError) {
    EXPECT_EQ(withoutMarkers(searchFor("tax")), "nothing");
    EXPECT_EQ(error, "");
    EXPECT_EQ(host.session.get("torvex_search_string").isEmpty(), true);
}

// ---- From page to page ----

TEST_P(LoadResultsTest, PagesLeadToEachOther) {
    prescribe("search_resultsPerPage", 2);
    documents(5);
    host.application.set("torvex_doc_dir", "/install/wwwroot/documents/");
    EXPECT_THAT(withoutMarkers(searchFor("tax")), HasSubstr("{2&gt;}"));
    EXPECT_EQ(withoutMarkers(turnTo("2")), "3-4: [file(aa/3.pdf)|] [file(aa/4.pdf)|] {&lt;1,3&gt;}");
    EXPECT_EQ(withoutMarkers(turnTo("3")), "5-5: [file(aa/5.pdf)|] {&lt;2}");
    EXPECT_EQ(withoutMarkers(turnTo(" 1 ")), "1-2: [file(aa/1.pdf)|] [file(aa/2.pdf)|] {2&gt;}");
    EXPECT_EQ(fake.queries.size(), 1U);
}

TEST_P(LoadResultsTest, ThatAllFitOnAPageNeedsNoPaging) {
    prescribe("search_resultsPerPage", 3);
    documents(3);
    EXPECT_EQ(withoutMarkers(searchFor("tax")), "1-3: [file(aa/1.pdf)|] [file(aa/2.pdf)|] [file(aa/3.pdf)|]");
    EXPECT_FALSE(isKept("query"));
    EXPECT_FALSE(isKept("recordset"));
    EXPECT_EQ(keptValue("bookmark1"), "");
    EXPECT_EQ(keptValue("string"), "");
}

TEST_P(LoadResultsTest, NoMoreAreShownThanTheLimitSays) {
    prescribe("search_resultsPerPage", 2);
    prescribe("search_maxResults", 3);
    documents(9);
    searchFor("tax");
    EXPECT_EQ(withoutMarkers(turnTo("2")), "3-3: [file(aa/3.pdf)|] {&lt;1}");
    prescribe("search_maxResults", 2);
    EXPECT_THAT(withoutMarkers(searchFor("tax")), Not(HasSubstr("{")));
}

TEST_P(LoadResultsTest, TheSessionKeepsTheRunningSearch) {
    prescribe("search_resultsPerPage", 2);
    prescribe("search_security", 1);
    documents(3);
    searchFor("Tax, Rates");
    EXPECT_EQ(keptValue("string"), "Tax Rates");
    EXPECT_EQ(keptValue("maxResults"), "100");
    EXPECT_EQ(keptValue("resultsPerPage"), "2");
    EXPECT_EQ(keptValue("security"), "True");
    EXPECT_EQ(keptValue("pageSecurity"), "True");
    EXPECT_EQ(keptValue("docSecurity"), "False");
    EXPECT_EQ(keptValue("bookmark1"), "0");
    EXPECT_EQ(keptValue("bookmark2"), "2");
    EXPECT_EQ(keptValue("bookmark3"), "");
    EXPECT_EQ(keptValue("rankBase"), "500");
    EXPECT_TRUE(isKept("query"));
    EXPECT_TRUE(isKept("recordset"));
}

TEST_P(LoadResultsTest, ANewSearchBeginsAnew) {
    prescribe("search_resultsPerPage", 1);
    documents(4);
    searchFor("tax");
    turnTo("2");
    turnTo("3");
    EXPECT_EQ(keptValue("bookmark4"), "3");
    searchFor("rates");
    EXPECT_EQ(keptValue("bookmark2"), "1");
    EXPECT_EQ(keptValue("bookmark3"), "");
    EXPECT_EQ(keptValue("bookmark4"), "");
    turnTo("3");
    EXPECT_EQ(error, "Search parameters not found !");
}

TEST_P(LoadResultsTest, APageIsReachedAfterThoseBeforeIt) {
    prescribe("search_resultsPerPage", 1);
    documents(9);
    for (const auto* page : {"3", "0", "-1", "x", "2.0", "02", "99999999999999999999", "\xFF"}) {
        searchFor("tax");
        turnTo(page);
        EXPECT_EQ(error, "Search parameters not found !") << page;
        EXPECT_FALSE(isKept("query")) << page;
    }
}

TEST_P(LoadResultsTest, AnEmptyPageIsANewSearch) {
    turnTo("");
    EXPECT_EQ(error, "Search string is empty !");
}

TEST_P(LoadResultsTest, WithoutARunningSearchThereIsNoFurtherPage) {
    turnTo("1");
    EXPECT_EQ(error, "Search parameters not found !");
    prescribe("search_resultsPerPage", 1);
    documents(3);
    for (const auto* key : {"string", "maxResults", "resultsPerPage", "security", "pageSecurity",
                            "docSecurity", "bookmark1", "bookmark2"}) {
        searchFor("tax");
        host.session.set(std::string("torvex_search_") + key, Value());
        turnTo("2");
        EXPECT_EQ(error, "Search parameters not found !") << key;
    }
    for (const auto* key : {"query", "recordset"}) {
        searchFor("tax");
        host.session.setObject(std::string("torvex_search_") + key, nullptr);
        turnTo("2");
        EXPECT_EQ(error, "Search parameters not found !") << key;
    }
}

TEST_P(LoadResultsTest, WhatIsKeptMustHoldThePage) {
    prescribe("search_resultsPerPage", 1);
    documents(3);
    searchFor("tax");
    host.session.set("torvex_search_bookmark2", 3);
    turnTo("2");
    EXPECT_EQ(error, "Error recordset positioning !");
    EXPECT_FALSE(isKept("query"));
    searchFor("tax");
    host.session.setObject("torvex_search_recordset", std::make_shared<KeptResults>());
    turnTo("2");
    EXPECT_EQ(error, "Error initializing query object (cashed recordset) !");
    EXPECT_FALSE(isKept("query"));
}

TEST_P(LoadResultsTest, ASearchFromAnotherPageIsANewOne) {
    prescribe("search_resultsPerPage", 1);
    documents(3);
    searchFor("tax");
    ask("", {{"search_pageTo", "2"}, {"search_string", "rates"}},
        {{"http_referer", "http://www.site.test/tvx.asp"}});
    EXPECT_THAT(withoutMarkers(load(resultsTemplate)), HasSubstr("1.pdf"));
    EXPECT_EQ(fake.queries.size(), 2U);
}

TEST_P(LoadResultsTest, ThePageMayBeAskedForByAnAddress) {
    prescribe("search_resultsPerPage", 1);
    documents(3);
    searchFor("tax");
    ask("pageId=20&search_pageTo=2", {}, {{"http_referer", fromResults}});
    EXPECT_THAT(withoutMarkers(load(resultsTemplate)), HasSubstr("2-2: [file(aa/2.pdf)|]"));
}

TEST_P(LoadResultsTest, ResultsAreThoseOfTheirTime) {
    prescribe("search_resultsPerPage", 1);
    documents(3);
    searchFor("tax");
    fake.rows.clear();
    EXPECT_THAT(withoutMarkers(turnTo("2")), HasSubstr("[file(aa/2.pdf)|]"));
}

TEST_P(LoadResultsTest, TheWordsAreShownOnFurtherPages) {
    prescribe("search_resultsPerPage", 1);
    documents(3);
    searchFor("tax");
    EXPECT_THAT(turnTo("2", resultsOnly("<!--!search_string!-->")), "tax");
}

// ---- What goes wrong ----

TEST_P(LoadResultsTest, WithAnErrorNothingIsFilledAndNoResultIsShown) {
    const std::string shown = searchFor("", std::string(resultsTemplate) + "<!--!search_string!-->!");
    EXPECT_EQ(error, "Search string is empty !");
    EXPECT_EQ(withoutMarkers(shown), "nothing!");
    EXPECT_THAT(shown, HasSubstr("torvex_application_start"));
    for (const auto* block : {"search_paging", "search_resultRange", "search_spacer", "search_result"})
        EXPECT_THAT(shown, Not(HasSubstr(std::string("<!--!") + block + "_start")));
}

TEST_P(LoadResultsTest, AnErrorLetsTheRunningSearchGo) {
    prescribe("search_resultsPerPage", 1);
    documents(3);
    searchFor("tax");
    EXPECT_TRUE(isKept("recordset"));
    searchFor("");
    EXPECT_FALSE(isKept("recordset"));
    EXPECT_EQ(keptValue("bookmark1"), "");
    EXPECT_EQ(keptValue("string"), "");
}

TEST_P(LoadResultsTest, NoWordsLeftIsAnError) {
    prescribe("search_wordLength", 4);
    searchFor("the tax");
    EXPECT_EQ(error, "Empty query string !");
    for (const auto* words : {"and", "OR not", "\"()\"", "* * *"}) {
        searchFor(words);
        EXPECT_EQ(error, "Empty query string !") << words;
    }
    EXPECT_THAT(fake.queries, IsEmpty());
}

TEST_P(LoadResultsTest, ACatalogueThatIsGoneIsTold) {
    fake.isGone = true;
    searchFor("and");
    EXPECT_EQ(error, "Error initializing query object (catalog) !");
    ASSERT_EQ(host.log.lines.size(), 1U);
    EXPECT_THAT(host.log.lines[0], HasSubstr("the catalogue is gone"));
}

TEST_P(LoadResultsTest, WhatTheCatalogueRefusesIsTold) {
    const auto errorOfAnswer = [&](auto thrown) {
        fake.answer = [thrown](const catalogue::Query&) -> std::vector<catalogue::Row> { throw thrown; };
        searchFor("tax");
        return error;
    };
    EXPECT_EQ(errorOfAnswer(catalogue::QueryError("a word is missing")),
              "Error initializing query object (query) !");
    EXPECT_EQ(errorOfAnswer(catalogue::TooManyError("too many words")),
              "Too many words are like that, write more of them !");
    EXPECT_EQ(errorOfAnswer(catalogue::UnavailableError("gone")),
              "Error initializing query object (new recordset) !");
    fake.answer = nullptr;
    fake.givesNothing = true;
    searchFor("tax");
    EXPECT_EQ(error, "Error initializing query object (new recordset) !");
}

TEST_P(LoadResultsTest, RowsThatCantBeReadAreTold) {
    documents(2);
    fake.rowsAreBroken = true;
    searchFor("tax");
    EXPECT_EQ(error, "Error in function fillResults (Search module) !");
}

TEST_P(LoadResultsTest, WhatBreaksIsToldByItsOwnLine) {
    documents(2);
    drop("TORVEX_METADATA");
    searchFor("tax");
    EXPECT_EQ(error, "Error initializing query columns !");
    drop("TORVEX_SEARCH");
    searchFor("tax");
    EXPECT_EQ(error, "Error in function getSearchParameters (Search module) !");
    drop("TORVEX_PAGES_DESIGN");
    searchFor("tax");
    EXPECT_EQ(error, "Error in function loadResults (Search module) !");
}

TEST_P(LoadResultsTest, AnErrorIsForgottenByTheNextSearch) {
    Search search(host.context(), fake.opener());
    search.connect(connection());
    ask("", {});
    search.loadResults(searchPage, "", resultsTemplate);
    EXPECT_EQ(search.search_error(), "Search string is empty !");
    ask("", {{"search_string", "tax"}});
    search.loadResults(searchPage, "", resultsTemplate);
    EXPECT_EQ(search.search_error(), "");
}

TEST_P(LoadResultsTest, WhateverIsTypedIsAnsweredWithAPage) {
    documents(1);
    std::string operators, stars;
    while (operators.size() < 250) operators += "and or not near ";
    while (stars.size() < 10000) stars += "*";
    for (const std::string& words :
         {operators, stars, std::string("\"\"\"never ending"), std::string("((((((((((((((("),
          std::string("a\0b", 3), std::string("\xC3\x28\xFF"), std::string("@all"),
          std::string("#filename=*.*"), std::string("<script>alert(1)</script>"), std::string("' or 1=1 --"),
          std::string(100000, 'x')}) {
        const std::string shown = searchFor(words);
        EXPECT_THAT(shown, Not(HasSubstr("<script>")));
        EXPECT_TRUE(error.empty() || error == "Empty query string !") << error;
    }
    for (const auto& query : fake.queries) {
        EXPECT_THAT(query.text, Not(HasSubstr("*")));
        EXPECT_LT(query.text.size(), 2000U);
    }
}

}  // namespace
}  // namespace torvex::test
