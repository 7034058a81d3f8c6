#include <gmock/gmock.h>

#include "support/BoardTest.h"
#include "support/RegistersTest.h"

namespace torvex::test {
namespace {

using testing::ElementsAre;
using testing::IsEmpty;
using testing::StartsWith;

struct GivenCategory {
    int id = 1;
    std::string parent = "";
    std::string title = "News";
    int itemOrder = 2;
    int imageAlignment = 3;
    bool online = true;
    std::string site = "aa";
    int pageSize = 10;
};

struct GivenItem {
    int id = 10;
    int category = 1;
    std::string title = "Seed swap";
    std::string text = "Bring seeds";
    std::string date = "20260620";
    std::string onlineDate = "20260610";
    std::string archiveDate = "20260701";
    bool online = true;
    bool newsflash = false;
    std::string site = "aa";
};

/// Category 1 "News" at "01" with 2 "Events" below it at "01.01", and item 10 in the first.
class RegistersBoardTest : public WithRegisters<BoardTest> {
  protected:
    void SetUp() override {
        WithRegisters<BoardTest>::SetUp();
        if (HasFatalFailure()) return;
        category(1, "01", "News");
        category(2, "01.01", "Events");
        item(10, 1, "01", "Seed swap");
    }
    std::string saveCategory(const GivenCategory& given) {
        return registers().saveCategory(given.id, given.site, "en", given.parent, given.title, "About",
                                        given.itemOrder, 30, true, "More", given.imageAlignment, 200, 100,
                                        given.online, given.pageSize, 241);
    }
    std::string saveItem(const GivenItem& given) {
        return registers().saveItem(given.id, given.site, "en", given.category, given.title, given.text,
                                    " 12 ", "Read on", "001/rose.gif", given.date, given.onlineDate,
                                    given.archiveDate, given.online, given.newsflash, 241);
    }
    std::string mark(const std::string& kind, int id, bool marked = true, const std::string& site = "aa") {
        return registers().markDeleted(kind, id, site, "en", marked, 241);
    }
    std::string ofCategory(const std::string& id, const std::string& columns) {
        const auto rows =
            rowsOf("select " + columns + " from TORVEX_MSGB_CATEGORIES_DESIGN where msgB_Id = " + id);
        return rows.empty() ? "" : rows.front();
    }
    std::string ofItem(const std::string& id, const std::string& columns) {
        const auto rows =
            rowsOf("select " + columns + " from TORVEX_MSGB_ITEMS_DESIGN where msgB_itemId = " + id);
        return rows.empty() ? "" : rows.front();
    }
};
INSTANTIATE_TEST_SUITE_P(Engines, RegistersBoardTest, bothEngines(), engineName);

TEST_P(RegistersBoardTest, CategoriesAreListedByTheirPathsWithWhatWaits) {
    item(11, 1, "01", "Waits", {{"msgB_modified", 1}}, In::Design);
    category(3, "02", "New", {{"msgB_deleted", 1}}, In::Design);
    const auto lines = linesOf(registers().getCategories(" AA ", "EN"));
    ASSERT_EQ(lines.size(), 3U);
    EXPECT_THAT(lines.at(0), StartsWith("1|01||News|"));
    EXPECT_THAT(lines.at(0), testing::EndsWith("|1|2|1")) << "live, two items, one of them waits";
    EXPECT_THAT(lines.at(1), StartsWith("2|01.01|01|Events|"));
    EXPECT_THAT(lines.at(2), testing::EndsWith("|1|0|0|0|0")) << "marked and not live";
}

TEST_P(RegistersBoardTest, ItemsAreListedTheLatestFirst) {
    item(11, 1, "01", "Later", {{"msgB_itemDate", "20260605"}}, In::Design);
    item(12, 2, "01.01", "Elsewhere");
    EXPECT_THAT(linesOf(registers().getItems("aa", "en", 1)),
                ElementsAre("11|Later|Text|-|-|-|20260605|20260101|20270101|1|0|0|0|0",
                            "10|Seed swap|Text|-|-|-|20260601|20260101|20270101|1|0|0|0|1"));
    EXPECT_EQ(linesOf(registers().getItems("aa", "en", 1, 1)).size(), 1U);
    EXPECT_THAT(linesOf(registers().getItems("aa", "de", 1)), IsEmpty());
}

TEST_P(RegistersBoardTest, ACategoryIsAddedBehindTheLastOfItsLevel) {
    category(3, "01.02", "Marked", {{"msgB_deleted", 1}});
    const std::string below = saveCategory({.id = 0, .parent = " 01 ", .title = " Walks "});
    EXPECT_EQ(ofCategory(below, "msgB_site, msgB_lang, msgB_catId, msgB_parent, msgB_catTitle"),
              "aa|en|01.03|01|Walks");
    const std::string top = saveCategory({.id = 0, .title = "Plants"});
    EXPECT_EQ(ofCategory(top, "msgB_catId, msgB_parent, msgB_deleted, msgB_modified"), "02||0|1");
    const std::string first = saveCategory({.id = 0, .parent = "02", .title = "Herbs"});
    EXPECT_EQ(ofCategory(first, "msgB_catId"), "02.01");
    EXPECT_EQ(auditTrail().front(), "7|Anna Author|0||241|new|New: Category \"Walks\"");
}

TEST_P(RegistersBoardTest, ACategoryIsSavedAsItIsGiven) {
    EXPECT_EQ(saveCategory({.title = "Notes"}), "1");
    EXPECT_EQ(ofCategory("1",
                         "msgB_catId, msgB_catTitle, msgB_catDesc, msgB_itemOrder, msgB_archiveAfter, "
                         "msgB_archiveVisible, msgB_linkText, msgB_imageAlignment, msgB_imageWidth, "
                         "msgB_imageHeight, msgB_online, msgB_pageSize, msgB_modified"),
              "01|Notes|About|2|30|1|More|3|200|100|1|10|1");
    EXPECT_EQ(cell("select msgB_catTitle from TORVEX_MSGB_CATEGORIES_LIVE where msgB_Id = 1"), "News");
    EXPECT_THAT(auditTrail(), ElementsAre("7|Anna Author|0||241|save|Category \"Notes\" has been updated"));
}

TEST_P(RegistersBoardTest, WhatIsSwitchedOnGoesOnWithThePublishing) {
    const std::string id = saveCategory({.id = 0, .title = "Plants"});
    EXPECT_EQ(ofCategory(id, "msgB_online"), "2");
    EXPECT_EQ(board().publish("aa", "en", "02", false, true), "");
    EXPECT_EQ(ofCategory(id, "msgB_online"), "1");
    EXPECT_EQ(cell("select msgB_online from TORVEX_MSGB_CATEGORIES_LIVE where msgB_Id = " + id), "1");
    EXPECT_EQ(saveCategory({.id = std::stoi(id), .online = false}), id);
    EXPECT_EQ(ofCategory(id, "msgB_online"), "0");
    EXPECT_EQ(cell("select msgB_online from TORVEX_MSGB_CATEGORIES_LIVE where msgB_Id = " + id), "1");
    EXPECT_EQ(saveCategory({.id = std::stoi(id)}), id);
    EXPECT_EQ(ofCategory(id, "msgB_online"), "1") << "visitors have never lost it";
}

TEST_P(RegistersBoardTest, AnItemIsAddedToItsCategory) {
    const std::string id =
        saveItem({.id = 0, .category = 2, .title = " Walk ", .text = " One\ntwo\r\nthree "});
    EXPECT_EQ(ofItem(id,
                     "msgB_site, msgB_lang, msgB_catId, msgB_Id, msgB_itemTitle, msgB_itemDesc, "
                     "msgB_itemLink, msgB_itemLinkText, msgB_itemImage, msgB_itemDate, msgB_onlineDate, "
                     "msgB_archiveDate, msgB_itemOnline, msgB_itemNewsflash, msgB_deleted, msgB_modified"),
              "aa|en|01.01|2|Walk|One\r\ntwo\r\nthree|12|Read on|001/rose.gif|20260620|20260610|20260701|2|0|"
              "0|1");
    EXPECT_THAT(auditTrail(), ElementsAre("7|Anna Author|0||241|new|New: Item \"Walk\""));
}

TEST_P(RegistersBoardTest, AnItemWithoutDaysIsOfTodayAndNeverHistory) {
    const std::string id = saveItem({.id = 0, .date = "", .onlineDate = " ", .archiveDate = ""});
    EXPECT_EQ(ofItem(id, "msgB_itemDate, msgB_onlineDate, msgB_archiveDate"), "20260615|20260615|99999999");
    EXPECT_EQ(saveItem({.id = std::stoi(id), .archiveDate = "99999999"}), id);
}

TEST_P(RegistersBoardTest, AnItemGoesToAnotherCategoryWithThePublishing) {
    EXPECT_EQ(saveItem({.category = 2}), "10");
    EXPECT_EQ(ofItem("10", "msgB_catId, msgB_Id, msgB_itemOnline"), "01.01|2|1");
    EXPECT_EQ(board().publish("aa", "en", "01", true, true), "");
    EXPECT_EQ(cell("select msgB_Id from TORVEX_MSGB_ITEMS_LIVE where msgB_itemId = 10"), "2");
}

TEST_P(RegistersBoardTest, TheNewsflashSwitchGoesOnAtOnceAndOffWithThePublishing) {
    EXPECT_EQ(saveItem({.newsflash = true}), "10");
    EXPECT_EQ(ofItem("10", "msgB_itemNewsflash"), "1");
    EXPECT_EQ(saveItem({}), "10");
    EXPECT_EQ(ofItem("10", "msgB_itemNewsflash"), "0") << "visitors never saw it there";
    saveItem({.newsflash = true});
    board().publish("aa", "en", "01", false, true);
    EXPECT_EQ(saveItem({}), "10");
    EXPECT_EQ(ofItem("10", "msgB_itemNewsflash"), "2");
    board().publish("aa", "en", "01", false, true);
    EXPECT_EQ(ofItem("10", "msgB_itemNewsflash"), "0");
    EXPECT_EQ(cell("select msgB_itemNewsflash from TORVEX_MSGB_ITEMS_LIVE where msgB_itemId = 10"), "0");
}

TEST_P(RegistersBoardTest, AMarkedItemGoesWithThePublishing) {
    EXPECT_EQ(mark("item", 10), "0");
    EXPECT_EQ(mark("Item", 10, false), "0");
    EXPECT_EQ(ofItem("10", "msgB_deleted"), "0");
    EXPECT_EQ(mark("item", 10), "0");
    EXPECT_EQ(board().publish("aa", "en", "01", false, true), "");
    EXPECT_EQ(ofItem("10", "msgB_itemId"), "");
    EXPECT_EQ(cell("select count(*) from TORVEX_MSGB_ITEMS_LIVE"), "0");
    EXPECT_EQ(auditTrail().front(),
              "7|Anna Author|0||241|delete|Item \"Seed swap\" has been marked for deletion");
    EXPECT_EQ(auditTrail().at(1), "7|Anna Author|0||241|save|Item \"Seed swap\" has been updated");
}

TEST_P(RegistersBoardTest, AMarkedCategoryGoesWithAllBelowIt) {
    EXPECT_EQ(mark("category", 1), "0");
    EXPECT_EQ(ofCategory("1", "msgB_deleted") + ofCategory("2", "msgB_deleted"), "10");
    EXPECT_EQ(board().publish("aa", "en", "01", true, true), "");
    EXPECT_EQ(cell("select count(*) from TORVEX_MSGB_CATEGORIES_DESIGN"), "0");
    EXPECT_EQ(cell("select count(*) from TORVEX_MSGB_ITEMS_DESIGN"), "0");
}

TEST_P(RegistersBoardTest, RefusedCategoriesChangeNothing) {
    expectRefusal("-1", [&] { return saveCategory({.id = 9}); });
    expectRefusal("-1", [&] { return saveCategory({.online = false, .site = "bb"}); });
    expectRefusal("-2", [&] { return saveCategory({.id = 0, .parent = "07"}); });
    expectRefusal("-2", [&] { return saveCategory({.id = 0, .itemOrder = 1, .site = "zz"}); });
    expectRefusal("-3", [&] { return saveCategory({.title = " "}); });
    expectRefusal("-4", [&] { return saveCategory({.itemOrder = 0}); });
    expectRefusal("-4", [&] { return saveCategory({.itemOrder = 7}); });
    expectRefusal("-4", [&] { return saveCategory({.imageAlignment = 7}); });
    category(3, "ZZ", "Last");
    expectRefusal("-9", [&] { return saveCategory({.id = 0, .parent = ""}); });
    mark("category", 1);
    expectRefusal("-2", [&] { return saveCategory({.id = 0, .parent = "01"}); });
    actAsNobody();
    expectRefusal("-10", [&] { return saveCategory({}); });
}

TEST_P(RegistersBoardTest, RefusedItemsChangeNothing) {
    expectRefusal("-1", [&] { return saveItem({.id = 99}); });
    expectRefusal("-1", [&] { return saveItem({.newsflash = false, .site = "bb"}); });
    expectRefusal("-2", [&] { return saveItem({.category = 9}); });
    expectRefusal("-3", [&] { return saveItem({.title = ""}); });
    expectRefusal("-4", [&] { return saveItem({.date = "20260230"}); });
    expectRefusal("-4", [&] { return saveItem({.onlineDate = "soon"}); });
    expectRefusal("-4", [&] { return saveItem({.archiveDate = "2026"}); });
    expectRefusal("-1", [&] { return mark("item", 99); });
    expectRefusal("-1", [&] { return mark("category", 99); });
    expectRefusal("-1", [&] { return mark("category", 1, true, "bb"); });
    expectRefusal("-1", [&] { return mark("page", 1); });
    actAsNobody();
    expectRefusal("-10", [&] { return saveItem({}); });
    expectRefusal("-10", [&] { return mark("item", 10); });
}

TEST_P(RegistersBoardTest, AFailureAnywhereChangesNothing) {
    failEverywhere("1", "-99", [&] { return saveCategory({.title = "Notes"}); });
    failEverywhere("10", "-99", [&] { return saveItem({.title = "Notes"}); });
    failEverywhere("0", "-99", [&] { return mark("item", 10); });
}

TEST_P(RegistersBoardTest, ListsSayWhatFailed) {
    connection().execute("drop table TORVEX_MSGB_ITEMS_LIVE");
    connection().execute("drop table TORVEX_MSGB_CATEGORIES_LIVE");
    EXPECT_THAT(errorOf([&] { registers().getCategories("aa", "en"); }),
                StartsWith(chain({"getCategories !"})));
    EXPECT_THAT(errorOf([&] { registers().getItems("aa", "en", 1); }), StartsWith(chain({"getItems !"})));
}

}  // namespace
}  // namespace torvex::test
