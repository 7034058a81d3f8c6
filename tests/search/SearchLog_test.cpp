#include "search/SearchLog.h"

#include <gmock/gmock.h>

#include "support/SearchPageTest.h"

namespace torvex::test {
namespace {

using ::testing::ElementsAre;
using ::testing::IsEmpty;

class SearchLogTest : public SearchPageTest {
  protected:
    /// The words with their counts, in order.
    std::vector<std::string> logged(int pageId = 20) {
        std::vector<std::string> words;
        auto rows = connection().query(
            "select search_word, search_count from TORVEX_SEARCH_LOG where search_pageId = ? order by "
            "search_word",
            {pageId});
        while (rows.next()) words.push_back(rows.text("search_word") + " " + rows.text("search_count"));
        return words;
    }
    /// "word site lang day searches withoutResult" of each row.
    std::vector<std::string> ofDays() {
        std::vector<std::string> words;
        auto rows = connection().query(
            "select search_word, site, lang, yyyymmdd, searches, withoutResult from TORVEX_SEARCH_DAYS "
            "where search_pageId = 20 order by search_word, yyyymmdd");
        while (rows.next()) {
            std::string line = rows.text("search_word");
            for (const auto* column : {"site", "lang", "yyyymmdd", "searches", "withoutResult"})
                line += " " + rows.text(column);
            words.push_back(line);
        }
        return words;
    }
};
INSTANTIATE_TEST_SUITE_P(Engines, SearchLogTest, bothEngines(), engineName);

TEST_P(SearchLogTest, EachWordIsCounted) {
    searchFor("tax rates");
    searchFor("rates");
    EXPECT_THAT(logged(), ElementsAre("rates 2", "tax 1"));
}

TEST_P(SearchLogTest, AWordInAnyCaseIsOneWord) {
    searchFor("Tax");
    searchFor("TAX ÉTÉ");
    searchFor("tax été");
    EXPECT_THAT(logged(), ElementsAre("tax 3", "été 2"));
}

TEST_P(SearchLogTest, APhraseIsOneWord) {
    search({{"search_string", "Salt and Pepper"}, {"search_match", "phrase"}});
    EXPECT_THAT(logged(), ElementsAre("salt and pepper 1"));
}

TEST_P(SearchLogTest, AWordThatIsGivenTwiceCountsTwice) {
    searchFor("tax tax");
    EXPECT_THAT(logged(), ElementsAre("tax 2"));
}

TEST_P(SearchLogTest, EachSearchPageCountsForItself) {
    row("TORVEX_SEARCH_LOG", {{"search_pageId", 21}, {"search_word", "tax"}, {"search_count", 5}});
    searchFor("tax");
    EXPECT_THAT(logged(20), ElementsAre("tax 1"));
    EXPECT_THAT(logged(21), ElementsAre("tax 5"));
}

TEST_P(SearchLogTest, WhatIsDroppedIsntCounted) {
    prescribe("search_wordLength", 4);
    searchFor("the (and) \"rates\"");
    EXPECT_THAT(logged(), ElementsAre("rates 1"));
    searchFor("the");
    EXPECT_THAT(logged(), ElementsAre("rates 1"));
}

TEST_P(SearchLogTest, ALongWordIsCutByCharacters) {
    const std::string letter = "é";
    std::string longest;
    for (int i = 0; i < 250; ++i) longest += letter;
    // What was kept isn't cut by the form.
    host.session.set("X_torvex_search_string", longest + letter);
    searchFor("");
    EXPECT_EQ(error, "");
    EXPECT_THAT(logged(), ElementsAre(longest + " 1"));
}

TEST_P(SearchLogTest, AFurtherPageCountsNothing) {
    for (int i = 0; i < 3; ++i) fake.rows.push_back(documentRow("aa/" + std::to_string(i) + ".pdf"));
    prescribe("search_resultsPerPage", 1);
    searchFor("tax");
    turnTo("2");
    EXPECT_THAT(logged(), ElementsAre("tax 1"));
}

TEST_P(SearchLogTest, WordsAreCountedByDay) {
    fake.rows = {documentRow("aa/1.pdf")};
    searchFor("Tax rates");
    host.clock = FixedClock({2026, 6, 16, 8, 0, 0});
    searchFor("tax");
    EXPECT_THAT(ofDays(),
                ElementsAre("rates aa bb 20260615 1 0", "tax aa bb 20260615 1 0", "tax aa bb 20260616 1 0"));
}

TEST_P(SearchLogTest, WordsThatNothingWasFoundForAreCountedApart) {
    searchFor("tax rates");
    fake.rows = {documentRow("aa/1.pdf")};
    searchFor("rates");
    EXPECT_THAT(ofDays(), ElementsAre("rates aa bb 20260615 2 1", "tax aa bb 20260615 1 1"));
    EXPECT_THAT(logged(), ElementsAre("rates 2", "tax 1"));
}

TEST_P(SearchLogTest, ALogThatFailsEndsTheSearch) {
    drop("TORVEX_SEARCH_LOG");
    searchFor("tax");
    EXPECT_EQ(error, "Error in function logSearch (Search module) !");
    EXPECT_THAT(fake.queries, IsEmpty());
}

}  // namespace
}  // namespace torvex::test
