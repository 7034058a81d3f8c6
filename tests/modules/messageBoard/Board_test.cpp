// The board as a whole: which of its blocks are filled, the way to a category and the categories below it.

#include "support/BoardTest.h"

namespace torvex::test {
namespace {

class BoardPageTest : public BoardTest {
  protected:
    static std::string trailBlock() {
        return block("torvex_application_1", "trail:" + tag("msgB_breadcrumb"));
    }
    static std::string categoriesBlock(const std::string& spacer = "") {
        return block(
            "torvex_application_2",
            "categories:" + block("msgB_category", tag("msgB_catId") + "=" + tag("msgB_catTitle")) + spacer);
    }
    static std::string itemsBlock() {
        return block("torvex_application_3",
                     "items:" + block("msgB_item", block("msgB_noImage", tag("msgB_itemTitle"))) +
                         block("msgB_empty", "nothing"));
    }

    std::string load(const std::string& html, const std::string& subCat, const std::string& catRoot = "",
                     const std::string& mode = "") {
        return board().load("AA", "EN", mode, catRoot, subCat, false, 1, html);
    }
    std::string shown(const std::string& html, const std::string& subCat, const std::string& catRoot = "",
                      const std::string& mode = "") {
        return seen(load(html, subCat, catRoot, mode));
    }

    void threeLevels() {
        category(1, "01", "News");
        category(2, "01.01", "Garden & park");
        category(3, "01.01.01", "Roses");
    }

    static std::string step(const std::string& path, const std::string& title) {
        return "<a href=\"javascript:viewCat('" + path +
               "')\" class=\"msgB_breadcrumb\" onmouseover=\"window.status=top.torvex_empty;return true;\" "
               ">" +
               title + "</a>";
    }
};
INSTANTIATE_TEST_SUITE_P(Engines, BoardPageTest, bothEngines(), engineName);

// Categories that can't be shown

TEST_P(BoardPageTest, ACategoryThatIsNotThereTakesAllBlocksAway) {
    const std::string html = "a" + trailBlock() + categoriesBlock() + itemsBlock() + "b";
    EXPECT_EQ(load(html, "77"), "ab");
}

TEST_P(BoardPageTest, WithoutItsCategoryNumberedBlocksGoUpToTheFirstGap) {
    EXPECT_EQ(load(block("torvex_application_1", "x") + block("torvex_application_3", "y"), "77"),
              block("torvex_application_3", "y"));
}

TEST_P(BoardPageTest, ACategoryThatIsSwitchedOffIsNotShown) {
    category(1, "01", "News", {{"msgB_online", 0}});
    EXPECT_EQ(load(itemsBlock(), "01"), itemsBlock());
    EXPECT_EQ(
        shown(block("torvex_application_1", "x") + block("torvex_application_2", "x") + itemsBlock(), "01"),
        "");
}

TEST_P(BoardPageTest, ACategoryThatGoesOnWithTheNextPublishingShowsInTheDesignAlone) {
    category(1, "01", "News", {{"msgB_online", 2}});
    item(1, 1, "01", "One");
    const std::string html =
        block("torvex_application_1", "") + block("torvex_application_2", "") + itemsBlock();
    EXPECT_EQ(shown(html, "01"), "");
    EXPECT_EQ(shown(html, "01", "", "D"), "items:One");
}

TEST_P(BoardPageTest, AMarkedCategoryIsGoneInTheDesignAlone) {
    category(1, "01", "News", {{"msgB_deleted", 1}});
    item(1, 1, "01", "One");
    const std::string html =
        block("torvex_application_1", "") + block("torvex_application_2", "") + itemsBlock();
    EXPECT_EQ(shown(html, "01"), "items:One");
    EXPECT_EQ(shown(html, "01", "", "d"), "");
}

TEST_P(BoardPageTest, ACategoryOfAnotherWebsiteIsNotShown) {
    category(1, "01", "News", {{"msgB_site", "bb"}});
    category(2, "02", "Nachrichten", {{"msgB_lang", "de"}});
    const std::string html = trailBlock() + categoriesBlock() + itemsBlock();
    EXPECT_EQ(load(html, "01"), "");
    EXPECT_EQ(load(html, "02"), "");
}

TEST_P(BoardPageTest, ALongPathIsNoCategory) {
    const std::string html = trailBlock() + categoriesBlock() + itemsBlock();
    EXPECT_EQ(load(html, std::string(250, '1')), "");
    std::string deep = "01";
    while (deep.size() < 250) deep += ".01";
    category(9, deep, "Deep");
    EXPECT_EQ(shown(itemsBlock(), deep), "items:nothing");
    EXPECT_EQ(shown(trailBlock(), deep), "trail:" + step("", "top") + " > Deep");
}

TEST_P(BoardPageTest, AQuoteInAPathFindsNothing) {
    category(1, "01", "News");
    EXPECT_EQ(load(trailBlock(), "01' or '1'='1"), "");
}

// The top of the board

TEST_P(BoardPageTest, WithoutACategoryTheTopIsShownWithoutTrailAndItems) {
    threeLevels();
    EXPECT_EQ(shown(trailBlock() + categoriesBlock() + itemsBlock(), ""), "categories:01=News");
}

TEST_P(BoardPageTest, WithoutACategoryTheRootIsShown) {
    threeLevels();
    EXPECT_EQ(shown(categoriesBlock(), "", "01"), "categories:01.01=Garden &amp; park");
}

TEST_P(BoardPageTest, ATemplateWithoutBlocksStaysAsItIs) {
    threeLevels();
    EXPECT_EQ(load("plain", "01"), "plain");
}

// The trail

TEST_P(BoardPageTest, TheTrailLeadsFromTheTopToTheCategory) {
    threeLevels();
    EXPECT_EQ(shown(trailBlock(), "01.01.01"), "trail:" + step("", "top") + " > " + step("01", "News") +
                                                   " > " + step("01.01", "Garden &amp; park") + " > Roses");
}

TEST_P(BoardPageTest, TheTrailBeginsAtTheRoot) {
    threeLevels();
    EXPECT_EQ(shown(trailBlock(), "01.01.01", "01.01"),
              "trail:" + step("01.01", "Garden &amp; park") + " > Roses");
}

TEST_P(BoardPageTest, AtTheRootThereIsNoTrail) {
    threeLevels();
    EXPECT_EQ(load(trailBlock(), "01", "01"), "");
    EXPECT_EQ(load(trailBlock(), "", "01.01"), "");
}

TEST_P(BoardPageTest, OutsideOfTheRootThereIsNoTrail) {
    threeLevels();
    category(4, "02", "Other");
    EXPECT_EQ(load(trailBlock(), "02", "01"), "");
}

TEST_P(BoardPageTest, AStepThatIsMissingIsLeftOutOfTheTrail) {
    category(1, "01", "News");
    category(3, "01.01.01", "Roses");
    EXPECT_EQ(shown(trailBlock(), "01.01.01"),
              "trail:" + step("", "top") + " > " + step("01", "News") + " > Roses");
}

TEST_P(BoardPageTest, TitlesInTheTrailAreText) {
    category(1, "01", "<script>" + tag("msgB_breadcrumb"));
    EXPECT_EQ(shown(trailBlock(), "01"),
              "trail:" + step("", "top") + " > &lt;script&gt;&lt;!--!msgB_breadcrumb!--&gt;");
}

// Categories below

TEST_P(BoardPageTest, CategoriesBelowStandInTheOrderOfTheirTitles) {
    category(1, "01", "News");
    category(2, "01.01", "Zinnias ");
    category(3, "01.02", "asters & more");
    category(4, "01.03", "Off", {{"msgB_online", 0}});
    category(5, "01.01.01", "Deeper");
    EXPECT_EQ(load(categoriesBlock(), "01"), "categories:\r01.02=asters &amp; more\r\r01.01=Zinnias");
}

TEST_P(BoardPageTest, ASpacerStandsBetweenTwoCategories) {
    category(1, "01", "News");
    category(2, "01.01", "A");
    category(3, "01.02", "B");
    category(4, "01.03", "C");
    EXPECT_EQ(load(categoriesBlock(block("msgB_spacer", "-")), "01"),
              "categories:\r01.01=A\r-\r01.02=B\r-\r01.03=C");
}

TEST_P(BoardPageTest, WithoutCategoriesBelowTheBlockIsEmpty) {
    category(1, "01", "News");
    EXPECT_EQ(load("a" + categoriesBlock() + "b", "01"), "ab");
}

TEST_P(BoardPageTest, ABlockWithoutAPlaceForCategoriesIsEmpty) {
    threeLevels();
    EXPECT_EQ(load("a" + block("torvex_application_2", "words") + "b", "01"), "ab");
}

// Links

TEST_P(BoardPageTest, LinksAreThoseOfVisitorsOnlyWithoutAMode) {
    category(1, "01", "News");
    page("aa.en.01").id(12).insert();
    const std::string html = block(
        "torvex_application_3", block("msgB_item", "") + block("msgB_empty", "<a href=\"page(12)\">x</a>"));
    EXPECT_THAT(load(html, "01"), testing::HasSubstr("href=\"/tvx.asp?pageId=12\""));
    EXPECT_THAT(load(html, "01", "", "L"), testing::HasSubstr("href=\"javascript:top.page('12')\""));
    EXPECT_THAT(load(html, "01", "", "D"), testing::HasSubstr("href=\"javascript:top.page('12')\""));
}

// The list of categories

TEST_P(BoardPageTest, TheListHoldsAllCategoriesByTheirPaths) {
    category(2, "02", "Second", {{"msgB_online", 0}, {"msgB_deleted", 1}});
    category(1, "01", "First", {}, In::Design);
    category(3, "03", "Elsewhere", {{"msgB_site", "bb"}});
    const Value design = board().getCategoryList(" AA ", " EN ", "design");
    ASSERT_TRUE(design.isGrid());
    EXPECT_EQ(design.grid().columns(), 4);
    ASSERT_EQ(design.grid().rows(), 2);
    EXPECT_EQ(design.grid().at(0, 0).toText(), "01");
    EXPECT_EQ(design.grid().at(1, 1).toText(), "Second");
    EXPECT_EQ(design.grid().at(2, 1).toNumber(), 1);
    EXPECT_TRUE(design.grid().at(3, 0).isEmpty());
    const Value live = board().getCategoryList("aa", "en", "L");
    EXPECT_EQ(live.grid().columns(), 3);
    ASSERT_EQ(live.grid().rows(), 1);
    EXPECT_EQ(live.grid().at(0, 0).toText(), "02");
}

TEST_P(BoardPageTest, AWebsiteWithoutCategoriesHasNoList) {
    EXPECT_TRUE(board().getCategoryList("aa", "en", "D").isEmpty());
}

// Failures

TEST_P(BoardPageTest, AFailureNamesTheStepsThatItPassed) {
    threeLevels();
    drop("TORVEX_MSGB_ITEMS_LIVE");
    EXPECT_THAT(errorOf([&] { load(itemsBlock(), "01"); }),
                testing::StartsWith(chain({"load (Message Board) !", "fillItems (Message Board) !"})));
}

TEST_P(BoardPageTest, AFailureOfTheCategoryNamesItsStep) {
    drop("TORVEX_MSGB_CATEGORIES_LIVE");
    const auto begins = [](const std::string& step) {
        return testing::StartsWith(chain({"load (Message Board) !", step + " (Message Board) !"}));
    };
    EXPECT_THAT(errorOf([&] { load(itemsBlock(), "01"); }), begins("getCatData"));
    EXPECT_THAT(errorOf([&] { load(categoriesBlock(), ""); }), begins("fillCategories"));
}

TEST_P(BoardPageTest, AFailureOfTheLinksNamesItsStep) {
    category(1, "01", "News");
    host.application.set("torvex_hyperlink_check", true);
    drop("TORVEX_PAGES_LIVE");
    const std::string html =
        block("torvex_application_3", block("msgB_item", "") + "<a href=\"page(12)\">x</a>");
    EXPECT_THAT(errorOf([&] { load(html, "01"); }),
                testing::StartsWith(
                    chain({"load (Message Board) !", "buildLinks (Message Board) !", "buildLinks !"})));
}

}  // namespace
}  // namespace torvex::test
