// The items of a category.

#include "platform/text/Text.h"
#include "support/BoardTest.h"

namespace torvex::test {
namespace {

class BoardItemsTest : public BoardTest {
  protected:
    void SetUp() override {
        BoardTest::SetUp();
        if (HasFatalFailure()) return;
        host.application.set("torvex_image_url", "/images/");
    }

    /// The layout of all items.
    static std::string every(const std::string& layout, const std::string& around = "") {
        return block("torvex_application_3", block("msgB_item", block("msgB_default", layout)) + around);
    }

    std::string load(const std::string& html, bool archive = false, int pageTo = 1,
                     const std::string& mode = "", const std::string& path = "01") {
        return board().load("aa", "en", mode, "", path, archive, pageTo, html);
    }
    std::string shown(const std::string& html, bool archive = false, int pageTo = 1) {
        return seen(load(html, archive, pageTo));
    }
    /// The titles that show, each behind a ";".
    std::string titles(bool archive = false, int pageTo = 1, const std::string& mode = "") {
        return seen(load(every(";" + tag("msgB_itemTitle")), archive, pageTo, mode));
    }

    /// All that a list of items can show beside them.
    static std::string listOf(const std::string& layout) {
        return block("torvex_application_3",
                     block("msgB_item", block("msgB_default", layout)) + block("msgB_empty", "(none)") +
                         block("msgB_totalItems", " " + tag("msgB_firstItem") + "-" + tag("msgB_lastItem") +
                                                      "/" + tag("msgB_totalItems")) +
                         block("msgB_paging", block("msgB_pActive", "[" + tag("msgB_pageId") + "]") +
                                                  block("msgB_pLink", tag("msgB_pageId")) +
                                                  block("msgB_pSpacer", ",")) +
                         block("msgB_gotoArchive", " to archive") + block("msgB_gotoRecent", " to recent"));
    }

    void manyItems(int count) {
        for (int i = 1; i <= count; ++i) item(i, 1, "01", "T" + std::to_string(i));
    }
};
INSTANTIATE_TEST_SUITE_P(Engines, BoardItemsTest, bothEngines(), engineName);

// Which items show

TEST_P(BoardItemsTest, OnlineItemsOfTheCategoryShow) {
    category(1, "01", "News");
    category(2, "02", "Other");
    item(1, 1, "01", "On");
    item(2, 1, "01", "Off", {{"msgB_itemOnline", 0}});
    item(3, 1, "01", "Next", {{"msgB_itemOnline", 2}});
    item(4, 2, "02", "Elsewhere");
    EXPECT_EQ(titles(), ";On");
    EXPECT_EQ(titles(false, 1, "D"), ";Next;On");
}

TEST_P(BoardItemsTest, MarkedItemsAreGoneInTheDesignAlone) {
    category(1, "01", "News");
    item(1, 1, "01", "Marked", {{"msgB_deleted", 1}});
    EXPECT_EQ(titles(), ";Marked");
    EXPECT_EQ(titles(false, 1, "D"), "");
}

TEST_P(BoardItemsTest, AnItemShowsFromItsFirstDayWhateverItsOwnDate) {
    category(1, "01", "News");
    item(1, 1, "01", "Today", {{"msgB_onlineDate", "20260615"}});
    item(2, 1, "01", "Tomorrow", {{"msgB_onlineDate", "20260616"}});
    item(3, 1, "01", "Future", {{"msgB_itemDate", "20301231"}});
    EXPECT_EQ(titles(), ";Future;Today");
}

TEST_P(BoardItemsTest, OnItsArchiveDayAnItemIsInTheArchive) {
    category(1, "01", "News", {{"msgB_archiveVisible", 1}});
    item(1, 1, "01", "Archived", {{"msgB_archiveDate", "20260615"}});
    item(2, 1, "01", "Current", {{"msgB_archiveDate", "20260616"}});
    EXPECT_EQ(titles(), ";Current");
    EXPECT_EQ(titles(true), ";Archived");
}

TEST_P(BoardItemsTest, ACategoryOfArchivedItemsAloneIsEmptyAndLeadsToTheArchive) {
    category(1, "01", "News", {{"msgB_archiveVisible", 1}});
    item(1, 1, "01", "Old", {{"msgB_archiveDate", "20260101"}});
    EXPECT_EQ(shown(listOf(tag("msgB_itemTitle"))), "(none) to archive");
    EXPECT_EQ(shown(listOf(tag("msgB_itemTitle")), true), "Old 1-1/1 to recent");
}

TEST_P(BoardItemsTest, AnArchiveThatIsNotVisibleHasNoLinks) {
    category(1, "01", "News");
    item(1, 1, "01", "Old", {{"msgB_archiveDate", "20260101"}});
    EXPECT_EQ(shown(listOf("x")), "(none)");
    EXPECT_EQ(shown(listOf(tag("msgB_itemTitle")), true), "Old 1-1/1");
}

// Order

TEST_P(BoardItemsTest, ItemsStandInTheOrderOfTheCategory) {
    category(1, "01", "News");
    item(1, 1, "01", "b", {{"msgB_itemDate", "20260103"}});
    item(2, 1, "01", "C", {{"msgB_itemDate", "20260101"}});
    item(3, 1, "01", "a", {{"msgB_itemDate", "20260102"}});
    const std::vector<std::string> wanted{";b;C;a", ";b;a;C", ";C;a;b", ";a;b;C",
                                          ";C;b;a", ";a;C;b", ";b;C;a"};
    for (int order = 0; order <= 6; ++order) {
        connection().execute("update TORVEX_MSGB_CATEGORIES_LIVE set msgB_itemOrder = ?", {order});
        EXPECT_EQ(titles(), wanted[static_cast<std::size_t>(order)]) << order;
    }
}

// Beside sub-categories

TEST_P(BoardItemsTest, ACategoryOfCategoriesHasNoEmptyMessage) {
    category(1, "01", "News");
    category(2, "01.01", "Below");
    const std::string categories =
        block("torvex_application_2", block("msgB_category", tag("msgB_catTitle")));
    EXPECT_EQ(shown(categories + listOf("x")), "Below");
    EXPECT_EQ(shown(listOf("x")), "(none)");
    item(1, 1, "01", "Off", {{"msgB_itemOnline", 0}});
    EXPECT_EQ(shown(categories + listOf("x")), "Below(none)");
}

// Paging

TEST_P(BoardItemsTest, APageHoldsAsManyItemsAsTheCategorySays) {
    category(1, "01", "News", {{"msgB_pageSize", 2}, {"msgB_itemOrder", 6}});
    manyItems(5);
    EXPECT_EQ(shown(listOf(tag("msgB_itemTitle") + " "), false, 2), "T3 T4  3-4/51,[2],3");
}

TEST_P(BoardItemsTest, APageThatIsNotThereIsTheNearest) {
    category(1, "01", "News", {{"msgB_pageSize", 2}, {"msgB_itemOrder", 6}});
    manyItems(5);
    for (const int page : {0, 1, -1, -32768}) EXPECT_EQ(titles(false, page), ";T1;T2") << page;
    for (const int page : {3, 4, 32767}) EXPECT_EQ(titles(false, page), ";T5") << page;
}

TEST_P(BoardItemsTest, WithoutAPageSizeAllItemsAreOnOnePage) {
    category(1, "01", "News", {{"msgB_itemOrder", 6}});
    manyItems(3);
    EXPECT_EQ(shown(listOf(tag("msgB_itemTitle")), false, 7), "T1T2T3 1-3/3");
}

TEST_P(BoardItemsTest, ItemsOfOneDayShowOnOnePageEach) {
    category(1, "01", "News", {{"msgB_pageSize", 2}});
    manyItems(7);
    std::string all;
    for (int page = 1; page <= 4; ++page) all += titles(false, page);
    EXPECT_EQ(all, ";T7;T6;T5;T4;T3;T2;T1");
}

TEST_P(BoardItemsTest, LinksToPagesStandAtTheBlockAndTheTag) {
    category(1, "01", "News", {{"msgB_pageSize", 1}});
    manyItems(2);
    EXPECT_EQ(shown(every("", tag("msgB_paging") + "|" +
                                  block("msgB_paging", block("msgB_pActive", tag("msgB_pageId")) +
                                                           block("msgB_pLink", tag("msgB_pageId"))))),
              "1 | 2 ||1 | 2 |");
}

// Layouts

TEST_P(BoardItemsTest, TheAlignmentChoosesTheLayout) {
    image("p.jpg", 10, 10);
    category(1, "01", "News", {{"msgB_itemOrder", 6}});
    item(1, 1, "01", "a", {{"msgB_itemImage", "p.jpg"}});
    item(2, 1, "01", "b");
    item(3, 1, "01", "c", {{"msgB_itemImage", " p.jpg "}});
    std::string layouts;
    for (const char* name : {"NoImage", "ImageLeft", "ImageRight", "ImageTop", "ImageBottom"})
        layouts +=
            block("msgB_" + text::lower(name).substr(0, 1) + std::string(name + 1), std::string(name) + " ");
    const std::string html = block("torvex_application_3", block("msgB_item", layouts));
    const std::vector<std::string> wanted{
        "ImageLeft NoImage ImageLeft ", "ImageRight NoImage ImageRight ", "ImageLeft NoImage ImageRight ",
        "NoImage NoImage NoImage ",     "ImageTop NoImage ImageTop ",     "ImageBottom NoImage ImageBottom "};
    for (int alignment = 1; alignment <= 6; ++alignment) {
        connection().execute("update TORVEX_MSGB_CATEGORIES_LIVE set msgB_imageAlignment = ?", {alignment});
        EXPECT_EQ(seen(load(html)) + " ", wanted[static_cast<std::size_t>(alignment - 1)]) << alignment;
    }
}

TEST_P(BoardItemsTest, ALayoutThatIsMissingIsTheDefault) {
    image("p.jpg", 10, 10);
    category(1, "01", "News", {{"msgB_itemOrder", 6}});
    item(1, 1, "01", "a", {{"msgB_itemImage", "p.jpg"}});
    item(2, 1, "01", "b");
    EXPECT_EQ(shown(block("torvex_application_3", block("msgB_item", block("msgB_imageLeft", "left ") +
                                                                         block("msgB_default", "default")))),
              "left default");
    EXPECT_EQ(shown(block("torvex_application_3", block("msgB_item", ""))), "");
}

TEST_P(BoardItemsTest, PiecesStandInLinesOfTheirOwn) {
    category(1, "01", "News");
    manyItems(2);
    EXPECT_EQ(load(block("torvex_application_3",
                         block("msgB_item", block("msgB_noImage", "x")) + block("msgB_spacer", "-"))),
              "\rx\r-\rx");
}

TEST_P(BoardItemsTest, ATemplateLacksAnyOfItsBlocks) {
    image("p.jpg", 10, 10);
    category(1, "01", "News", {{"msgB_pageSize", 1}, {"msgB_archiveVisible", 1}});
    item(1, 1, "01", "a", {{"msgB_itemImage", "p.jpg"}, {"msgB_itemLink", "12"}});
    item(2, 1, "01", "b");
    const std::string whole =
        block("torvex_application_1", tag("msgB_breadcrumb")) +
        block("torvex_application_2",
              block("msgB_category", tag("msgB_catTitle")) + block("msgB_spacer", "-")) +
        listOf(block("msgB_itemTitle", tag("msgB_itemTitle")) + block("msgB_itemLink", tag("msgB_itemLink")) +
               block("msgB_more", tag("msgB_more"))) +
        block("msgB_spacer", "-");
    for (const char* name :
         {"torvex_application_1", "torvex_application_2", "torvex_application_3", "msgB_category",
          "msgB_spacer", "msgB_item", "msgB_default", "msgB_empty", "msgB_paging", "msgB_pSpacer",
          "msgB_pActive", "msgB_pLink", "msgB_totalItems", "msgB_gotoArchive", "msgB_gotoRecent",
          "msgB_itemTitle", "msgB_itemLink", "msgB_more"}) {
        std::string html = whole;
        for (const char* end : {"_start!-->", "_end!-->"})
            html = text::replaceAll(html, "<!--!" + std::string(name) + end, "");
        EXPECT_NO_THROW(load(html)) << name;
        EXPECT_NO_THROW(load(html, true)) << name;
    }
    EXPECT_EQ(host.response.body(), "");
}

// Pictures

TEST_P(BoardItemsTest, APictureShowsInItsSize) {
    image("p.jpg", 300, 200);
    category(1, "01", "News", {{"msgB_imageWidth", 150}, {"msgB_imageHeight", 50}});
    item(1, 1, "01", "a", {{"msgB_itemImage", "p.jpg"}});
    EXPECT_EQ(shown(every(tag("msgB_image") + " " + tag("msgB_imageColWidth") + " " + tag("msgB_imageWidth") +
                          " " + tag("msgB_imageHeight"))),
              "/images/aa/p.jpg 150 75 50");
}

TEST_P(BoardItemsTest, APictureThatIsNotRegisteredIsEmptyInItsLayout) {
    category(1, "01", "News");
    item(1, 1, "01", "a", {{"msgB_itemImage", "gone.jpg"}});
    EXPECT_EQ(
        shown(block("torvex_application_3",
                    block("msgB_item", block("msgB_imageLeft",
                                             "left[" + tag("msgB_image") + "]" + tag("msgB_imageColWidth") +
                                                 tag("msgB_imageWidth") + tag("msgB_imageHeight"))))),
        "left[]000");
}

TEST_P(BoardItemsTest, AFailureOfThePicturesNamesItsStep) {
    category(1, "01", "News");
    item(1, 1, "01", "a", {{"msgB_itemImage", "p.jpg"}});
    drop("TORVEX_IMAGES");
    EXPECT_THAT(errorOf([&] { load(every("")); }),
                testing::StartsWith(chain({"load (Message Board) !", "fillItems (Message Board) !",
                                           "getImageDim (Message Board) !"})));
}

// Texts

TEST_P(BoardItemsTest, TitleAndTextAreTextOfTheirAuthor) {
    category(1, "01", "News");
    item(1, 1, "01", "<b>A</b> & b", {{"msgB_itemDesc", "<b>A</b> <script>"}});
    EXPECT_EQ(shown(every(tag("msgB_itemTitle") + "|" + tag("msgB_itemText"))),
              "&lt;b&gt;A&lt;/b&gt; &amp; b|<b>A</b> &lt;script&gt;&nbsp;");
}

TEST_P(BoardItemsTest, NothingOfAnItemIsAMarker) {
    image("<!--!msgB_itemText!-->", 10, 10);
    category(1, "01", "News", {{"msgB_pageSize", 1}});
    const std::string markup =
        tag("msgB_totalItems") + block("msgB_paging", "x") + block("msgB_empty", "y") + tag("torvex_body_1");
    item(1, 1, "01", markup,
         {{"msgB_itemDesc", markup},
          {"msgB_itemLink", "http://x.test/" + markup},
          {"msgB_itemLinkText", markup},
          {"msgB_itemDate", markup},
          {"msgB_itemImage", "<!--!msgB_itemText!-->"}});
    item(2, 1, "01", "other",
         {{"msgB_itemLink", "12"},
          {"msgB_itemLinkText", "more"},
          {"msgB_itemImage", "<!--!msgB_itemText!-->"}});
    const std::string layout = tag("msgB_itemTitle") + tag("msgB_itemText") + tag("msgB_image") +
                               tag("msgB_DD") + tag("msgB_YYYY") + tag("msgB_itemLink") + tag("msgB_more");
    for (const bool html : {false, true}) {
        host.application.set("torvex_msgBoard_html_allowed", html);
        const std::string text = load(every(layout), false, 1);
        const std::string other = load(every(layout), false, 2);
        EXPECT_EQ((text + other).find("<!--!"), std::string::npos) << text << other;
    }
}

TEST_P(BoardItemsTest, TheDateShowsInParts) {
    category(1, "01", "News");
    item(1, 1, "01", "a", {{"msgB_itemDate", "20260307"}});
    EXPECT_EQ(shown(every(tag("msgB_DD") + "." + tag("msgB_MM") + "." + tag("msgB_YY") + " " +
                          tag("msgB_YYYY") + " " + tag("msgB_MMM"))),
              "07.03.26 2026 Mar");
}

TEST_P(BoardItemsTest, ADateThatIsNoneDoesNoHarm) {
    category(1, "01", "News", {{"msgB_itemOrder", 6}});
    item(1, 1, "01", "a", {{"msgB_itemDate", "x"}});
    item(2, 1, "01", "b", {{"msgB_itemDate", Value()}});
    EXPECT_EQ(shown(every("[" + tag("msgB_DD") + tag("msgB_MM") + tag("msgB_YY") + tag("msgB_MMM") + "]")),
              "[x][]");
}

TEST_P(BoardItemsTest, AddressesOfMailAreLinks) {
    category(1, "01", "News");
    item(1, 1, "01", "a", {{"msgB_itemDesc", "Write to us@garden.test."}});
    EXPECT_THAT(load(every(tag("msgB_itemText"))), testing::HasSubstr("<a href=\"mailto:us@garden.test\""));
    EXPECT_THAT(load(every(tag("msgB_itemText"), "me@garden.test")),
                testing::HasSubstr("<a href=\"mailto:me@garden.test\""));
}

TEST_P(BoardItemsTest, AnEmptyListTurnsAddressesIntoLinksToo) {
    category(1, "01", "News");
    EXPECT_THAT(load(every("", block("msgB_empty", "Nothing; ask us@garden.test."))),
                testing::HasSubstr("Nothing; ask <a href=\"mailto:us@garden.test\""));
}

TEST_P(BoardItemsTest, ALongWordIsDrawn) {
    const std::string word(100 * 1024, 'w');
    category(1, "01", "News");
    item(1, 1, "01", "a", {{"msgB_itemDesc", word}});
    EXPECT_EQ(shown(every(tag("msgB_itemText"))), word + "&nbsp;");
}

// Links

TEST_P(BoardItemsTest, AnItemWithoutALinkHasAPlainTitle) {
    category(1, "01", "News");
    item(1, 1, "01", "a", {{"msgB_itemLinkText", "more"}});
    EXPECT_EQ(shown(every(block("msgB_itemTitle", "plain ") +
                          block("msgB_itemLink", "linked " + tag("msgB_itemLink")) +
                          block("msgB_more", tag("msgB_more")))),
              "plain ");
}

TEST_P(BoardItemsTest, ALinkTakesThePlaceOfThePlainTitle) {
    category(1, "01", "News", {{"msgB_itemOrder", 6}});
    item(1, 1, "01", "a", {{"msgB_itemLink", " 12 "}, {"msgB_itemLinkText", " <br>More & more "}});
    item(2, 1, "01", "b", {{"msgB_itemLink", "HTTP://X.Test/Path"}});
    item(3, 1, "01", "c", {{"msgB_itemLink", "001/Plan.PDF"}});
    EXPECT_EQ(shown(every(block("msgB_itemTitle", "plain") + block("msgB_itemLink", tag("msgB_itemLink")) +
                          block("msgB_more", "," + tag("msgB_more")) + " ")),
              "page(12),<br>More &amp; more http://x.test/path file(001/plan.pdf)");
}

TEST_P(BoardItemsTest, LinksBecomeRealOnes) {
    page("aa.en.01").id(12).insert();
    category(1, "01", "News");
    item(1, 1, "01", "a", {{"msgB_itemLink", "12"}});
    EXPECT_THAT(load(every("<a href=\"" + tag("msgB_itemLink") + "\">x</a>")),
                testing::HasSubstr("<a href=\"/tvx.asp?pageId=12\""));
}

}  // namespace
}  // namespace torvex::test
