#include "modules/messageBoard/BoardPublishing.h"

#include "support/BoardTest.h"

namespace torvex::test {
namespace {

using Rows = std::vector<std::string>;

class BoardPublishingTest : public BoardTest {
  protected:
    std::string publish(const std::string& path, bool withBelow = false, bool withItems = false) {
        return board().publish(" AA ", " EN ", path, withBelow, withItems);
    }
    Rows liveCategories() {
        return rowsOf(
            "select msgB_catId, msgB_catTitle from TORVEX_MSGB_CATEGORIES_LIVE order by msgB_catId");
    }
    Rows liveItems() {
        return rowsOf("select msgB_itemId, msgB_itemTitle from TORVEX_MSGB_ITEMS_LIVE order by msgB_itemId");
    }
    Rows designItems() {
        return rowsOf("select msgB_itemId from TORVEX_MSGB_ITEMS_DESIGN order by msgB_itemId");
    }
    void changedCategory(int id, const std::string& path, const std::string& title, Columns more = {}) {
        more.emplace_back("msgB_modified", 1);
        category(id, path, title, more, In::Design);
    }
    void changedItem(int id, int categoryId, const std::string& path, const std::string& title,
                     Columns more = {}) {
        more.emplace_back("msgB_modified", 1);
        item(id, categoryId, path, title, more, In::Design);
    }
};
INSTANTIATE_TEST_SUITE_P(Engines, BoardPublishingTest, bothEngines(), engineName);

// Parents

TEST_P(BoardPublishingTest, ACategoryBelowOneThatIsNotLiveIsRefused) {
    category(1, "01", "News", {}, In::Design);
    changedCategory(2, "01.01", "Below");
    expectRefusal("1", [&] { return publish("01.01", true, true); });
}

TEST_P(BoardPublishingTest, EveryCategoryAboveMustBeLive) {
    category(2, "01.01", "Between");
    changedCategory(3, "01.01.01", "Below");
    expectRefusal("1", [&] { return publish("01.01.01"); });
    category(1, "01", "News", {{"msgB_site", "bb"}});
    expectRefusal("1", [&] { return publish("01.01.01"); });
    connection().execute("update TORVEX_MSGB_CATEGORIES_LIVE set msgB_site = 'aa'");
    EXPECT_EQ(publish("01.01.01"), "");
}

TEST_P(BoardPublishingTest, AFirstLevelHasNothingAboveIt) {
    changedCategory(1, "01", "News");
    EXPECT_EQ(publish("01"), "");
    EXPECT_EQ(liveCategories(), Rows{"01|News"});
}

// Categories

TEST_P(BoardPublishingTest, AModifiedCategoryGoesLiveWithAllItSays) {
    changedCategory(1, "01", "News",
                    {{"msgB_catDesc", "Desc"},
                     {"msgB_itemOrder", 3},
                     {"msgB_archiveAfter", 30},
                     {"msgB_archiveVisible", 1},
                     {"msgB_linkText", "more"},
                     {"msgB_imageAlignment", 2},
                     {"msgB_imageWidth", 100},
                     {"msgB_imageHeight", 50},
                     {"msgB_online", 2},
                     {"msgB_pageSize", 10}});
    EXPECT_EQ(publish("01"), "");
    const std::string columns =
        "select msgB_Id, msgB_site, msgB_lang, msgB_catId, msgB_catTitle, msgB_catDesc, msgB_parent, "
        "msgB_itemOrder, msgB_archiveAfter, msgB_archiveVisible, msgB_linkText, msgB_imageAlignment, "
        "msgB_imageWidth, msgB_imageHeight, msgB_online, msgB_pageSize";
    const Rows wanted{"1|aa|en|01|News|Desc||3|30|1|more|2|100|50|1|10"};
    EXPECT_EQ(rowsOf(columns + " from TORVEX_MSGB_CATEGORIES_LIVE"), wanted);
    EXPECT_EQ(rowsOf(columns + " from TORVEX_MSGB_CATEGORIES_DESIGN"), wanted);
    EXPECT_EQ(rowsOf("select msgB_modified from TORVEX_MSGB_CATEGORIES_DESIGN"), Rows{"0"});
}

TEST_P(BoardPublishingTest, ALiveCategoryIsRenewed) {
    category(1, "01", "Old", {}, In::Live);
    changedCategory(1, "01", "New", {{"msgB_online", 0}});
    EXPECT_EQ(publish("01"), "");
    EXPECT_EQ(rowsOf("select msgB_catTitle, msgB_online from TORVEX_MSGB_CATEGORIES_LIVE"), Rows{"New|0"});
}

TEST_P(BoardPublishingTest, WhatIsNotModifiedStays) {
    category(1, "01", "Live", {}, In::Live);
    category(1, "01", "Design", {{"msgB_online", 2}}, In::Design);
    EXPECT_EQ(publish("01", true, true), "");
    EXPECT_EQ(liveCategories(), Rows{"01|Live"});
    EXPECT_EQ(rowsOf("select msgB_online from TORVEX_MSGB_CATEGORIES_DESIGN"), Rows{"2"});
}

TEST_P(BoardPublishingTest, CategoriesBelowGoAlongOnDemand) {
    changedCategory(1, "01", "News");
    changedCategory(2, "01.01", "Below");
    changedCategory(3, "02", "Beside");
    EXPECT_EQ(publish("01"), "");
    EXPECT_EQ(liveCategories(), Rows{"01|News"});
    EXPECT_EQ(publish("01", true), "");
    EXPECT_EQ(liveCategories(), (Rows{"01|News", "01.01|Below"}));
}

TEST_P(BoardPublishingTest, WithoutAPathTheWholeBoardGoes) {
    changedCategory(1, "01", "News");
    changedCategory(2, "02.01", "Below");
    changedItem(1, 1, "01", "Item");
    changedCategory(3, "03", "Elsewhere", {{"msgB_site", "bb"}});
    EXPECT_EQ(publish("", true, true), "");
    EXPECT_EQ(liveCategories(), (Rows{"01|News", "02.01|Below"}));
    EXPECT_EQ(liveItems(), Rows{"1|Item"});
}

TEST_P(BoardPublishingTest, SignsOfPatternsInAPathAreSigns) {
    changedCategory(1, "01", "News");
    EXPECT_EQ(publish("%", true), "");
    EXPECT_EQ(publish("__", true), "");
    EXPECT_EQ(liveCategories(), Rows{});
}

// Removal

TEST_P(BoardPublishingTest, AMarkedCategoryGoesWithAllBelowIt) {
    category(1, "01", "Gone", {{"msgB_deleted", 1}});
    category(2, "01.01", "Below");
    category(3, "02", "Stays");
    category(4, "01", "Elsewhere", {{"msgB_site", "bb"}});
    item(1, 1, "01", "a");
    item(2, 2, "01.01", "b");
    item(3, 3, "02", "c");
    EXPECT_EQ(publish("01"), "");
    EXPECT_EQ(liveCategories(), (Rows{"01|Elsewhere", "02|Stays"}));
    EXPECT_EQ(rowsOf("select msgB_catId from TORVEX_MSGB_CATEGORIES_DESIGN order by msgB_catId"),
              (Rows{"01", "02"}));
    EXPECT_EQ(liveItems(), Rows{"3|c"});
    EXPECT_EQ(designItems(), Rows{"3"});
}

TEST_P(BoardPublishingTest, AMarkedCategoryBelowGoesOnlyOnDemand) {
    category(1, "01", "News");
    category(2, "01.01", "Marked", {{"msgB_deleted", 1}});
    EXPECT_EQ(publish("01"), "");
    EXPECT_EQ(liveCategories().size(), 2);
    EXPECT_EQ(publish("01", true), "");
    EXPECT_EQ(liveCategories(), Rows{"01|News"});
}

TEST_P(BoardPublishingTest, AMarkedCategoryWithoutAPathTakesNothingElse) {
    category(1, "", "Odd", {{"msgB_deleted", 1}, {"msgB_parent", ""}});
    category(2, "01", "News");
    EXPECT_EQ(publish("", true, true), "");
    EXPECT_EQ(liveCategories(), Rows{"01|News"});
}

TEST_P(BoardPublishingTest, MarkedItemsGoWithTheItems) {
    category(1, "01", "News");
    item(1, 1, "01", "Gone", {{"msgB_deleted", 1}});
    item(2, 1, "01", "Stays");
    EXPECT_EQ(publish("01"), "");
    EXPECT_EQ(liveItems().size(), 2);
    EXPECT_EQ(publish("01", false, true), "");
    EXPECT_EQ(liveItems(), Rows{"2|Stays"});
    EXPECT_EQ(designItems(), Rows{"2"});
}

// Items

TEST_P(BoardPublishingTest, AModifiedItemGoesLiveWithAllItSays) {
    category(1, "01", "News");
    changedItem(5, 1, "01", "Title",
                {{"msgB_itemLink", "12"},
                 {"msgB_itemLinkText", "more"},
                 {"msgB_itemImage", "p.jpg"},
                 {"msgB_itemOnline", 2},
                 {"msgB_itemNewsflash", 2}});
    EXPECT_EQ(publish("01"), "");
    EXPECT_EQ(liveItems(), Rows{});
    EXPECT_EQ(publish("01", false, true), "");
    const std::string columns =
        "select msgB_itemId, msgB_site, msgB_lang, msgB_catId, msgB_Id, msgB_itemTitle, msgB_itemDesc, "
        "msgB_itemLink, msgB_itemLinkText, msgB_itemImage, msgB_itemDate, msgB_onlineDate, msgB_archiveDate, "
        "msgB_itemOnline, msgB_itemNewsflash";
    const Rows wanted{"5|aa|en|01|1|Title|Text|12|more|p.jpg|20260601|20260101|20270101|1|0"};
    EXPECT_EQ(rowsOf(columns + " from TORVEX_MSGB_ITEMS_LIVE"), wanted);
    EXPECT_EQ(rowsOf(columns + " from TORVEX_MSGB_ITEMS_DESIGN"), wanted);
    EXPECT_EQ(rowsOf("select msgB_modified from TORVEX_MSGB_ITEMS_DESIGN"), Rows{"0"});
}

TEST_P(BoardPublishingTest, AnItemKeepsItsOtherStates) {
    category(1, "01", "News");
    changedItem(5, 1, "01", "Off", {{"msgB_itemOnline", 0}, {"msgB_itemNewsflash", 1}});
    item(5, 1, "01", "Old", {}, In::Live);
    EXPECT_EQ(publish("01", false, true), "");
    EXPECT_EQ(
        rowsOf("select msgB_itemTitle, msgB_itemOnline, msgB_itemNewsflash from TORVEX_MSGB_ITEMS_LIVE"),
        Rows{"Off|0|1"});
}

TEST_P(BoardPublishingTest, ItemsOfCategoriesBelowGoAlongOnDemand) {
    category(1, "01", "News");
    category(2, "01.01", "Below");
    changedItem(1, 1, "01", "a");
    changedItem(2, 2, "01.01", "b");
    EXPECT_EQ(publish("01", false, true), "");
    EXPECT_EQ(liveItems(), Rows{"1|a"});
    EXPECT_EQ(publish("01", true, true), "");
    EXPECT_EQ(liveItems(), (Rows{"1|a", "2|b"}));
}

// Newsflashes

TEST_P(BoardPublishingTest, WhatACategoryFeedsGoesLiveWithIt) {
    changedCategory(1, "01", "News");
    category(2, "02", "Other");
    feed(7, 1, In::Design);
    feed(8, 1, In::Live);
    feed(7, 2, In::Design);
    EXPECT_EQ(publish("", true), "");
    EXPECT_EQ(rowsOf("select nf_Id, msgB_Id from TORVEX_NEWSFLASH_CATEGORIES_LIVE"), Rows{"7|1"});
}

TEST_P(BoardPublishingTest, ACategoryThatIsGoneFeedsNothing) {
    category(1, "01", "Gone", {{"msgB_deleted", 1}});
    category(2, "02", "Stays");
    feed(7, 1);
    feed(7, 2);
    EXPECT_EQ(publish("01"), "");
    EXPECT_EQ(rowsOf("select nf_Id, msgB_Id from TORVEX_NEWSFLASH_CATEGORIES_LIVE"), Rows{"7|2"});
    EXPECT_EQ(rowsOf("select nf_Id, msgB_Id from TORVEX_NEWSFLASH_CATEGORIES_DESIGN"), Rows{"7|2"});
}

// Failures

TEST_P(BoardPublishingTest, AFailureAtAnyStepChangesNothing) {
    category(1, "01", "News", {{"msgB_modified", 1}});
    category(2, "01.01", "Gone", {{"msgB_deleted", 1}});
    category(3, "01.02", "New", {{"msgB_modified", 1}}, In::Design);
    item(1, 1, "01", "Changed", {{"msgB_modified", 1}});
    item(2, 1, "01", "Gone", {{"msgB_deleted", 1}});
    feed(7, 1, In::Design);
    failEverywhere("", "-99", [&] { return publish("01", true, true); });
}

}  // namespace
}  // namespace torvex::test
