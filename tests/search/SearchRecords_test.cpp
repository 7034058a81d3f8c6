#include "search/SearchRecords.h"

#include <gtest/gtest.h>

#include "support/FailingDatabase.h"
#include "support/SearchPageTest.h"

namespace torvex::test {
namespace {

class SearchRecordsTest : public SearchPageTest {
  protected:
    Search& edge() {
        search_ = std::make_unique<Search>(host.context(), fake.opener());
        search_->connect(connection());
        return *search_;
    }
    std::string cleaned() {
        edge().CleanUpDB();
        return search_->search_error();
    }
    void folder(const std::string& site, const std::string& id) {
        row("TORVEX_DOCUMENTS_FOLDERS", {{"fld_site", site}, {"fld_id", id}, {"fld_name", "n" + id}});
    }
    std::string column(const std::string& name, int pageId = 20) {
        return cell("select " + name + " from TORVEX_SEARCH where search_pageId = " + std::to_string(pageId));
    }
    void TearDown() override {
        search_.reset();
        SearchPageTest::TearDown();
    }

  private:
    std::unique_ptr<Search> search_;
};
INSTANTIATE_TEST_SUITE_P(Engines, SearchRecordsTest, bothEngines(), engineName);

// ---- getAllProperties ----

TEST_P(SearchRecordsTest, AllPropertiesAreTheGivenOnesAndTheSitesTags) {
    const std::string given =
        "- template defined -,ALL,CONTENTS,Author,Comments,Company,Filename,Keywords,Subject,Title";
    EXPECT_EQ(edge().getAllProperties("aa"), given);
    metaTag(1, "aa", "petals");
    metaTag(2, "aa", "AUTHOR");
    metaTag(3, "aa", "Height");
    metaTag(4, "bb", "others");
    EXPECT_EQ(edge().getAllProperties("aa"), given + ",Height,petals");
}

TEST_P(SearchRecordsTest, AFailureIsToldAndGivesNoList) {
    drop("TORVEX_METADATA");
    Search& search = edge();
    EXPECT_EQ(search.getAllProperties("aa"), "");
    EXPECT_EQ(search.search_error(), "Error in function getAllProperties (Search module) !");
}

// ---- CleanUpDB ----

TEST_P(SearchRecordsTest, WhatBelongsToPagesThatArentLiveGoes) {
    const PageId design = page("aa.bb.20").insertInDesignOnly();
    row("TORVEX_SEARCH", {{"search_pageId", design}});
    row("TORVEX_SEARCH_LOG", {{"search_pageId", design}, {"search_word", "tax"}});
    row("TORVEX_SEARCH_LOG", {{"search_pageId", 20}, {"search_word", "rates"}});
    for (const double pageId : {design, PageId(20)})
        row("TORVEX_SEARCH_DAYS",
            {{"search_pageId", pageId}, {"search_word", "tax"}, {"yyyymmdd", "20260615"}});
    EXPECT_EQ(cleaned(), "");
    EXPECT_EQ(host.hits.flushes, 1);
    EXPECT_EQ(cell("select search_pageId from TORVEX_SEARCH_DAYS"), "20");
    EXPECT_EQ(cell("select count(*) from TORVEX_SEARCH"), "1");
    EXPECT_EQ(cell("select search_word from TORVEX_SEARCH_LOG"), "rates");
}

TEST_P(SearchRecordsTest, ScopesOfPagesThatAreGoneGo) {
    page("aa.bb.21").insertInDesignOnly();
    prescribe("search_includePages", 4);
    prescribe("search_pageScopes", "aa.bb.01++, AA.bb.77 ,aa.bb.02+,aa.bb.78+,aa.bb.21");
    EXPECT_EQ(cleaned(), "");
    EXPECT_EQ(column("search_pageScopes"), "aa.bb.01++,aa.bb.02+,aa.bb.21");
    EXPECT_EQ(column("search_includePages"), "4");
}

TEST_P(SearchRecordsTest, ScopesOfFoldersThatAreGoneGo) {
    folder("aa", "001");
    folder("aa", "001002");
    folder("bb", "003");
    prescribe("search_includeDocuments", 4);
    prescribe("search_documentScopes", "aa/001/002+, aa/003,AA/001,bb/003++");
    EXPECT_EQ(cleaned(), "");
    EXPECT_EQ(column("search_documentScopes"), "aa/001/002+,AA/001,bb/003++");
    EXPECT_EQ(column("search_includeDocuments"), "4");
}

TEST_P(SearchRecordsTest, AListThatHasLostAllSearchesNothing) {
    prescribe("search_includePages", 4);
    prescribe("search_includeDocuments", 4);
    prescribe("search_pageScopes", "aa.bb.77++");
    prescribe("search_documentScopes", "aa/077");
    EXPECT_EQ(cleaned(), "");
    EXPECT_EQ(column("search_pageScopes"), "");
    EXPECT_EQ(column("search_includePages"), "1");
    EXPECT_EQ(column("search_documentScopes"), "");
    EXPECT_EQ(column("search_includeDocuments"), "1");
}

TEST_P(SearchRecordsTest, AListThatWasEmptyStaysAsItIs) {
    prescribe("search_includePages", 2);
    EXPECT_EQ(cleaned(), "");
    EXPECT_EQ(column("search_includePages"), "2");
    EXPECT_EQ(column("search_includeDocuments"), "0");
}

TEST_P(SearchRecordsTest, CleaningIsWholeOrNotAtAll) {
    const PageId design = page("aa.bb.20").insertInDesignOnly();
    row("TORVEX_SEARCH", {{"search_pageId", design}});
    row("TORVEX_SEARCH_LOG", {{"search_pageId", design}, {"search_word", "tax"}});
    prescribe("search_pageScopes", "aa.bb.77++");
    FailingDatabase failing(database());
    host.database.target = &failing;
    for (int step = 1;; ++step) {
        SCOPED_TRACE(step);
        failing.reset(step);
        const std::string outcome = cleaned();
        if (failing.steps < step) {
            EXPECT_EQ(outcome, "");
            EXPECT_GT(step, 6);
            break;
        }
        EXPECT_EQ(outcome, "Error in function CleanUpDB (Search module) !");
        EXPECT_EQ(cell("select count(*) from TORVEX_SEARCH"), "2");
        EXPECT_EQ(cell("select count(*) from TORVEX_SEARCH_LOG"), "1");
        EXPECT_EQ(column("search_pageScopes"), "aa.bb.77++");
    }
    host.database.target = &database();
}

}  // namespace
}  // namespace torvex::test
