#include "records/PageRows.h"

#include "support/SiteTest.h"

namespace torvex::test {
namespace {

class PageRowsTest : public SiteTest {};
INSTANTIATE_TEST_SUITE_P(Engines, PageRowsTest, bothEngines(), engineName);

TEST_P(PageRowsTest, APageIsThereInTheTableThatHasItsRow) {
    page("aa.en.01").id(12).insertInDesignOnly();
    EXPECT_TRUE(isPage(connection(), 12, Twin::Design));
    EXPECT_FALSE(isPage(connection(), 12, Twin::Live));
    EXPECT_FALSE(isPage(connection(), 13, Twin::Design));
}

TEST_P(PageRowsTest, ATitleMayBeEmptyWhereThereIsAPage) {
    page("aa.en.01").id(12).title("News").insert();
    page("aa.en.02").id(13).title("").insert();
    EXPECT_EQ(titleOfPage(connection(), 12, Twin::Live), "News");
    EXPECT_EQ(titleOfPage(connection(), 13, Twin::Live), "");
    EXPECT_EQ(titleOfPage(connection(), 14, Twin::Live), std::nullopt);
}

TEST_P(PageRowsTest, ATypeStandsWithoutBlanks) {
    page("aa.en.01").id(12).type("F ").insert();
    EXPECT_EQ(typeOfPage(connection(), 12, Twin::Live), "F");
    EXPECT_EQ(typeOfPage(connection(), 13, Twin::Live), "");
}

TEST_P(PageRowsTest, ANumberThatNoPageHasIsNotAskedFor) {
    drop("TORVEX_PAGES_LIVE");
    for (const PageId none : {0.0, -1.0}) {
        EXPECT_FALSE(isPage(connection(), none, Twin::Live));
        EXPECT_EQ(titleOfPage(connection(), none, Twin::Live), std::nullopt);
        EXPECT_EQ(typeOfPage(connection(), none, Twin::Live), "");
    }
}

}  // namespace
}  // namespace torvex::test
