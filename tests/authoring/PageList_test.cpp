#include "support/ManagerTest.h"

namespace torvex::test {
namespace {

class PageListTest : public ManagerTest {
  protected:
    void SetUp() override {
        ManagerTest::SetUp();
        page("aa.en").id(10).insert();
        page("aa.en.02").id(11).type("F").insert();
        page("aa.en.01").id(12).title("About").insert();
        page("aa.en.02.01").id(13).type("A").insert();
        page("aa.en.99").id(14).type("F").insert();
        page("aa.en.03").id(15).insertInDesignOnly();
        page("bb.nl").id(16).insert();
    }

    /// The numbers of the list's pages in its order, divided by blanks; "none" for an empty value.
    static std::string numbers(const Value& list) {
        if (list.isEmpty()) return "none";
        std::string result;
        for (std::size_t row = 0; row < list.grid().rows(); ++row) {
            result += (row == 0 ? "" : " ") + list.grid().at(0, row).toText();
        }
        return result;
    }
};
INSTANTIATE_TEST_SUITE_P(Engines, PageListTest, bothEngines(), engineName);

TEST_P(PageListTest, HasSixColumnsOfWhichTheLastIsEmpty) {
    const Value list = manager().getPageList("aa", "en");
    ASSERT_TRUE(list.isGrid());
    const ResultGrid& grid = list.grid();
    EXPECT_EQ(grid.columns(), 6U);
    EXPECT_EQ(grid.rows(), 5U);
    EXPECT_EQ(grid.at(0, 1), Value(12));
    EXPECT_EQ(grid.at(1, 1), Value("aa.en.01"));
    EXPECT_EQ(grid.at(2, 1), Value("About"));
    EXPECT_EQ(grid.at(3, 1), Value("P"));
    EXPECT_EQ(grid.at(4, 1), Value(0));
    EXPECT_TRUE(grid.at(5, 1).isEmpty());
}

TEST_P(PageListTest, TheFlagIsNoughtInTheSystemBranchToo) {
    const Value list = manager().getPageList("aa", "en");
    EXPECT_EQ(list.grid().at(1, 4), Value("aa.en.99"));
    EXPECT_EQ(list.grid().at(4, 4), Value(0));
}

TEST_P(PageListTest, AMissingTitleIsAnEmptyCell) {
    connection().execute("update TORVEX_PAGES_LIVE set title = null where pageId = 12");
    EXPECT_TRUE(manager().getPageList("aa", "en").grid().at(2, 1).isEmpty());
}

TEST_P(PageListTest, ListsASiteAndLanguageByNode) {
    EXPECT_EQ(numbers(manager().getPageList("aa", "en")), "10 12 11 13 14");
    EXPECT_EQ(numbers(manager().getPageList(" AA ", " EN ")), "10 12 11 13 14");
    EXPECT_EQ(numbers(manager().getPageList("bb", "nl")), "16");
    EXPECT_EQ(numbers(manager().getPageList("bb", "en")), "none");
    EXPECT_EQ(numbers(manager().getPageList("", "")), "none");
    EXPECT_EQ(numbers(manager().getPageList("' or 1=1 --", "en")), "none");
}

TEST_P(PageListTest, TheDesignHasItsOwnPages) {
    EXPECT_EQ(numbers(manager().getPageList("aa", "en", "D")), "10 12 11 13 15 14");
    EXPECT_EQ(numbers(manager().getPageList("aa", "en", "d")), "10 12 11 13 15 14");
    EXPECT_EQ(numbers(manager().getPageList("aa", "en", "x")), "10 12 11 13 14");
}

TEST_P(PageListTest, AParentTakesThePlaceOfSiteAndLanguage) {
    EXPECT_EQ(numbers(manager().getPageList("bb", "nl", "L", "10")), "12 11 13 14");
    EXPECT_EQ(numbers(manager().getPageList("", "", "L", " AA.EN ")), "12 11 13 14");
    EXPECT_EQ(numbers(manager().getPageList("", "", "D", "aa.en")), "12 11 13 15 14");
    EXPECT_EQ(numbers(manager().getPageList("", "", "L", "11")), "13");
    EXPECT_EQ(numbers(manager().getPageList("", "", "L", "12")), "none");
}

TEST_P(PageListTest, AParentsNodeIsTheBeginningOfWhatIsListed) {
    EXPECT_EQ(numbers(manager().getPageList("", "", "L", "aa.en.0")), "13");
    EXPECT_EQ(numbers(manager().getPageList("", "", "L", "aa.e%")), "none");
    EXPECT_EQ(numbers(manager().getPageList("", "", "L", "aa_en")), "none");
    EXPECT_EQ(numbers(manager().getPageList("", "", "L", "aa.en'")), "none");
}

TEST_P(PageListTest, AParentThatIsTooShortOrUnknownIsNone) {
    EXPECT_EQ(numbers(manager().getPageList("bb", "nl", "L", "aa")), "16");
    EXPECT_EQ(numbers(manager().getPageList("bb", "nl", "L", "77")), "16");
    EXPECT_EQ(numbers(manager().getPageList("bb", "nl", "L", "-1")), "16");
    EXPECT_EQ(numbers(manager().getPageList("bb", "nl", "L", "  ")), "16");
}

TEST_P(PageListTest, ATypeNarrowsTheList) {
    EXPECT_EQ(numbers(manager().getPageList("aa", "en", "L", "", "P")), "10 12");
    EXPECT_EQ(numbers(manager().getPageList("aa", "en", "L", "", "folder")), "11 14");
    EXPECT_EQ(numbers(manager().getPageList("aa", "en", "L", "10", "a")), "13");
    EXPECT_EQ(numbers(manager().getPageList("aa", "en", "L", "", "X")), "none");
}

TEST_P(PageListTest, ATypeIsFoundInEitherCase) {
    connection().execute("update TORVEX_PAGES_LIVE set type = 'p' where pageId = 12");
    EXPECT_EQ(numbers(manager().getPageList("aa", "en", "L", "", "P")), "10 12");
}

TEST_P(PageListTest, TheSystemBranchCanBeLeftOut) {
    page("aa.en.01.99.02").id(17).insert();
    EXPECT_EQ(numbers(manager().getPageList("aa", "en", "L", "", "", false)), "10 12 11 13");
    EXPECT_EQ(numbers(manager().getPageList("aa", "en", "L", "10", "F", false)), "11");
    EXPECT_EQ(numbers(manager().getPageList("aa", "en", "L", "10", "F", true)), "11 14");
}

TEST_P(PageListTest, AFailureNamesTheOperation) {
    drop("TORVEX_PAGES_LIVE");
    EXPECT_TRUE(errorOf([&] { manager().getPageList("aa", "en"); }).starts_with(chain({"getPageList !"})));
}

}  // namespace
}  // namespace torvex::test
