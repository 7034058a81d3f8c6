#include "search/SearchColumns.h"

#include <gmock/gmock.h>

#include "search/SearchError.h"
#include "support/SearchPageTest.h"

namespace torvex::test {
namespace {

using ::testing::ElementsAre;
using ::testing::IsEmpty;

class SearchColumnsTest : public SearchPageTest {};
INSTANTIATE_TEST_SUITE_P(Engines, SearchColumnsTest, bothEngines(), engineName);

TEST_P(SearchColumnsTest, TheSitesOwnMetaTagsAreColumns) {
    int id = 0;
    for (const auto* name : {"Colour of Petals", "Author", "SUBJECT", "keywords", "height", " ", "DocTitle",
                             "size", "colourofpetals"})
        metaTag(++id, "aa", name);
    metaTag(++id, "bb", "others");
    EXPECT_THAT(extraColumns(host.context(), connection(), "aa"), ElementsAre("colourofpetals", "height"));
    EXPECT_THAT(extraColumns(host.context(), connection(), "cc"), IsEmpty());
}

TEST_P(SearchColumnsTest, AFailureIsTold) {
    drop("TORVEX_METADATA");
    try {
        extraColumns(host.context(), connection(), "aa");
        ADD_FAILURE() << "no error";
    } catch (const SearchError& thrown) {
        EXPECT_STREQ(thrown.what(), "Error initializing query columns !");
    }
}

TEST(SearchOrder, KeysGetTheNamesOfColumns) {
    EXPECT_EQ(catalogueOrder("rank,title", {}), "rank[d],doctitle");
    EXPECT_EQ(catalogueOrder("Title,keywords,author,subject,comments,company", {}),
              "doctitle,dockeywords,docauthor,docsubject,doccomments,doccompany");
    EXPECT_EQ(catalogueOrder("ranking,filename,doctitle", {}), "rank[d],filename,doctitle");
}

TEST(SearchOrder, KeysThatAreNoColumnGo) {
    EXPECT_EQ(catalogueOrder("characterization,path,size,write,nonsense,height", {}), "");
    EXPECT_EQ(catalogueOrder("height, nonsense ,title", {"height"}), "height,doctitle");
    EXPECT_EQ(catalogueOrder("", {}), "");
}

TEST(SearchOrder, WhatIsReadAreTheDocumentColumnsAndThose) {
    EXPECT_THAT(readColumns({"height"}), ElementsAre("doctitle", "dockeywords", "docauthor", "docsubject",
                                                     "doccomments", "doccompany", "height"));
}

}  // namespace
}  // namespace torvex::test
