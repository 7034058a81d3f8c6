#include "modules/newsflash/NewsflashBox.h"

#include "modules/SiteModules.h"
#include "support/BoardTest.h"

namespace torvex::test {
namespace {

class NewsflashBoxTest : public BoardTest {
  protected:
    void SetUp() override {
        BoardTest::SetUp();
        if (HasFatalFailure()) return;
        host.application.set("torvex_image_url", "/images/");
        category(1, "01", "News");
        feed(5, 1);
    }

    /// The template 50, one of the system's, with this content.
    void drawnBy(const std::string& content, const std::string& around = "") {
        contentTemplate(50, "aa", "en", "flash.html", block("torvex_content", content) + around);
        connection().execute("update TORVEX_TEMPLATES set tpl_system = 1 where tpl_id = 50");
    }
    static std::string items(const std::string& layout) {
        return block("nfItem", block("nfDefault", layout)) + block("nfEmpty", "(none)");
    }

    std::string content(const std::string& mode = "", int number = 3) {
        newsflash made = flash();
        EXPECT_TRUE(made.load(" AA ", " EN ", number, mode));
        return made.nfContent();
    }
    std::string shown(const std::string& mode = "") { return seen(content(mode)); }
    /// As a request for a page asks for it: what was drawn is remembered for the next one.
    std::string requested(const std::string& mode = "", int number = 3) {
        const db::ReadScope request(connection());
        return seen(content(mode, number));
    }

    void set(const std::string& column, const Value& value) {
        for (const char* table : {"TORVEX_NEWSFLASH_DESIGN", "TORVEX_NEWSFLASH_LIVE"}) {
            if (value.isText())
                connection().execute("update " + std::string(table) + " set " + column + " = ?",
                                     {value.text()});
            else
                connection().execute("update " + std::string(table) + " set " + column + " = ?",
                                     {value.toNumber()});
        }
    }
};
INSTANTIATE_TEST_SUITE_P(Engines, NewsflashBoxTest, bothEngines(), engineName);

// Loading

TEST_P(NewsflashBoxTest, OneThatIsThereIsDrawn) {
    drawnBy(items(tag("nfTitle")), block("torvex_head", "<style></style>") + "rest");
    newsflashRow(5, 3, "Latest");
    item(1, 1, "01", "One");
    newsflash made = flash();
    EXPECT_TRUE(made.load("aa", "en", 3));
    EXPECT_EQ(made.nfHeader(), "<style></style>");
    EXPECT_EQ(made.nfContent(), "One");
    EXPECT_THAT(made.nfTemplate(), testing::EndsWith("rest"));
}

TEST_P(NewsflashBoxTest, ItsNumberIsNotItsKey) {
    drawnBy(items(""));
    newsflashRow(5, 3, "Latest");
    newsflash made = flash();
    EXPECT_FALSE(made.load("aa", "en", 5));
    EXPECT_FALSE(made.load("bb", "en", 3));
    EXPECT_FALSE(made.load("aa", "de", 3));
    EXPECT_EQ(made.nfTemplate() + made.nfHeader() + made.nfContent(), "");
}

TEST_P(NewsflashBoxTest, ASecondLoadThatFailsLeavesNothingOfTheFirst) {
    drawnBy(items(tag("nfTitle")));
    newsflashRow(5, 3, "Latest");
    newsflash made = flash();
    EXPECT_TRUE(made.load("aa", "en", 3));
    EXPECT_FALSE(made.load("aa", "en", 4));
    EXPECT_EQ(made.nfTemplate() + made.nfHeader() + made.nfContent(), "");
}

TEST_P(NewsflashBoxTest, AMarkedOneLoadsUntilItIsPublished) {
    drawnBy(items(""));
    newsflashRow(5, 3, "Latest", {{"deleted", 1}});
    EXPECT_TRUE(flash().load("aa", "en", 3));
    EXPECT_TRUE(flash().load("aa", "en", 3, "L"));
    EXPECT_FALSE(flash().load("aa", "en", 3, " d "));
    flash().publish("aa", "en");
    EXPECT_FALSE(flash().load("aa", "en", 3));
}

TEST_P(NewsflashBoxTest, OnlyATemplateOfTheSystemDrawsIt) {
    drawnBy(items(""));
    newsflashRow(5, 3, "Latest");
    connection().execute("update TORVEX_TEMPLATES set tpl_system = 0 where tpl_id = 50");
    EXPECT_FALSE(flash().load("aa", "en", 3));
    connection().execute("delete from TORVEX_TEMPLATES");
    EXPECT_FALSE(flash().load("aa", "en", 3));
}

TEST_P(NewsflashBoxTest, WithoutTheTemplatesFileItDoesNotLoad) {
    drawnBy(items(""));
    newsflashRow(5, 3, "Latest");
    host.files.bytes.erase("/install/contentTemplates/aa/en/flash.html");
    newsflash made = flash();
    EXPECT_FALSE(made.load("aa", "en", 3));
    EXPECT_EQ(made.nfTemplate() + made.nfHeader() + made.nfContent(), "");
}

TEST_P(NewsflashBoxTest, VisitorsAndAuthorsHaveBlocksOfTheirOwn) {
    drawnBy(block("torvex_admin", "author") + block("torvex_public", "visitor"));
    newsflashRow(5, 3, "Latest");
    EXPECT_EQ(shown(), "visitor");
    EXPECT_EQ(shown("L"), "author");
    EXPECT_EQ(shown("D"), "author");
}

TEST_P(NewsflashBoxTest, ATemplateWithoutContentIsEmpty) {
    contentTemplate(50, "aa", "en", "flash.html", "all");
    connection().execute("update TORVEX_TEMPLATES set tpl_system = 1");
    newsflashRow(5, 3, "Latest");
    newsflash made = flash();
    EXPECT_TRUE(made.load("aa", "en", 3));
    EXPECT_EQ(made.nfTemplate(), "all");
    EXPECT_EQ(made.nfContent(), "");
}

// Which items show

TEST_P(NewsflashBoxTest, OnlineItemsOfItsCategoriesShow) {
    drawnBy(items(tag("nfTitle")));
    newsflashRow(5, 3, "Latest");
    category(2, "02", "Other");
    category(3, "03", "More");
    feed(5, 3);
    item(1, 1, "01", "a");
    item(2, 2, "02", "b");
    item(3, 3, "03", "c");
    item(4, 1, "01", "off", {{"msgB_itemOnline", 0}});
    item(5, 1, "01", "next", {{"msgB_itemOnline", 2}});
    item(6, 1, "01", "elsewhere", {{"msgB_site", "bb"}});
    EXPECT_EQ(shown(), "ca");
    EXPECT_EQ(shown("D"), "nextca");
}

TEST_P(NewsflashBoxTest, MarkedItemsShowByTheirMarkAlone) {
    drawnBy(items(tag("nfTitle")));
    newsflashRow(5, 3, "Latest", {{"mode", " M "}});
    item(1, 1, "01", "marked", {{"msgB_itemNewsflash", 1}});
    item(2, 1, "01", "off", {{"msgB_itemNewsflash", 1}, {"msgB_itemOnline", 0}});
    item(3, 1, "01", "leaving", {{"msgB_itemNewsflash", 2}});
    item(4, 1, "01", "plain");
    EXPECT_EQ(shown(), "offmarked");
    EXPECT_EQ(shown("D"), "leavingoffmarked");
}

TEST_P(NewsflashBoxTest, AnyOtherSelectionShowsNone) {
    drawnBy(items(tag("nfTitle")));
    newsflashRow(5, 3, "Latest", {{"mode", "X"}});
    item(1, 1, "01", "a");
    EXPECT_EQ(shown(), "(none)");
}

TEST_P(NewsflashBoxTest, ItemsShowWithinTheirDates) {
    drawnBy(items(tag("nfTitle")));
    newsflashRow(5, 3, "Latest");
    item(1, 1, "01", "today", {{"msgB_onlineDate", "20260615"}, {"msgB_archiveDate", "20260616"}});
    item(2, 1, "01", "tomorrow", {{"msgB_onlineDate", "20260616"}});
    item(3, 1, "01", "archived", {{"msgB_archiveDate", "20260615"}});
    EXPECT_EQ(shown(), "today");
}

TEST_P(NewsflashBoxTest, TheDesignLeavesOutWhatIsMarked) {
    drawnBy(items(tag("nfTitle")));
    newsflashRow(5, 3, "Latest");
    category(2, "02", "Gone", {{"msgB_deleted", 1}});
    feed(5, 2);
    item(1, 1, "01", "gone", {{"msgB_deleted", 1}});
    item(2, 2, "02", "of gone");
    EXPECT_EQ(shown(), "of gonegone");
    EXPECT_EQ(shown("D"), "(none)");
}

TEST_P(NewsflashBoxTest, ACategoryThatTheBoardRemovesDropsOut) {
    drawnBy(items(tag("nfTitle")));
    newsflashRow(5, 3, "Latest");
    category(2, "02", "Gone", {{"msgB_deleted", 1}});
    feed(5, 2);
    item(1, 1, "01", "a");
    item(2, 2, "02", "b");
    EXPECT_EQ(shown(), "ba");
    EXPECT_EQ(board().publish("aa", "en", "02", false, false), "");
    EXPECT_EQ(shown(), "a");
}

TEST_P(NewsflashBoxTest, ItemsStandInItsOrder) {
    drawnBy(items(tag("nfTitle")));
    newsflashRow(5, 3, "Latest");
    item(1, 1, "01", "b", {{"msgB_itemDate", "20260103"}});
    item(2, 1, "01", "C", {{"msgB_itemDate", "20260101"}});
    item(3, 1, "01", "a", {{"msgB_itemDate", "20260102"}});
    const std::vector<std::string> wanted{"baC", "Cab", "abC", "Cba", "aCb", "bCa"};
    for (int order = 1; order <= 6; ++order) {
        set("itemOrder", order);
        EXPECT_EQ(shown(), wanted[static_cast<std::size_t>(order - 1)]) << order;
    }
}

TEST_P(NewsflashBoxTest, AnotherOrderIsAnError) {
    drawnBy(items(""));
    newsflashRow(5, 3, "Latest");
    for (const int order : {0, 7, -1}) {
        set("itemOrder", order);
        newsflash made = flash();
        EXPECT_THAT(errorOf([&] { made.load("aa", "en", 3); }),
                    testing::StartsWith(chain({"Load (newsflash) !", "fillItems (newsflash) !"})));
    }
}

TEST_P(NewsflashBoxTest, ShowsAsManyItemsAsItSays) {
    drawnBy(items(tag("nfTitle")));
    newsflashRow(5, 3, "Latest", {{"numberOfItems", 2}, {"itemOrder", 6}});
    for (int i = 1; i <= 4; ++i) item(i, 1, "01", std::to_string(i));
    EXPECT_EQ(shown(), "12");
}

TEST_P(NewsflashBoxTest, ShowingNoneIsNotBeingEmpty) {
    drawnBy(items(tag("nfTitle")));
    newsflashRow(5, 3, "Latest", {{"numberOfItems", 0}});
    EXPECT_EQ(shown(), "(none)");
    item(1, 1, "01", "a");
    EXPECT_EQ(shown(), "");
    set("numberOfItems", -1);
    EXPECT_EQ(shown(), "");
}

// Pieces

TEST_P(NewsflashBoxTest, ASpacerStandsBetweenTwoItems) {
    drawnBy(items(tag("nfTitle")) + block("nfSpacer", "-"));
    newsflashRow(5, 3, "Latest", {{"itemOrder", 6}});
    for (int i = 1; i <= 3; ++i) item(i, 1, "01", std::to_string(i));
    EXPECT_EQ(content(), "1\r-2\r-3");
}

TEST_P(NewsflashBoxTest, WithoutAPlaceForItemsNothingIsAskedFor) {
    drawnBy("us@garden.test " + block("nfEmpty", "(none)"));
    newsflashRow(5, 3, "Latest");
    drop("TORVEX_MSGB_ITEMS_LIVE");
    EXPECT_EQ(shown(), "<a href=\"mailto:us@garden.test\">us@garden.test</a> (none)");
}

TEST_P(NewsflashBoxTest, TheAlignmentChoosesTheLayout) {
    image("p.jpg", 300, 200);
    drawnBy(block("nfItem",
                  block("nfNoImage", "no ") +
                      block("nfImageLeft", "left " + tag("nfImage") + " " + tag("nfImageColWidth") + " " +
                                               tag("nfImageWidth") + " " + tag("nfImageHeight") + " ") +
                      block("nfImageRight", "right[" + tag("nfImage") + "] ") + block("nfImageTop", "top ") +
                      block("nfDefault", "default ")));
    newsflashRow(5, 3, "Latest", {{"itemOrder", 6}, {"imageWidth", 150}, {"imageAlignment", 3}});
    item(1, 1, "01", "a", {{"msgB_itemImage", "p.jpg"}});
    item(2, 1, "01", "b");
    item(3, 1, "01", "c", {{"msgB_itemImage", "gone.jpg"}});
    EXPECT_EQ(shown(), "left /images/aa/p.jpg 150 150 100 no right[] ");
    set("imageAlignment", 4);
    EXPECT_EQ(shown(), "no no no ");
    set("imageAlignment", 5);
    EXPECT_EQ(shown(), "top no top ");
    set("imageAlignment", 6);
    EXPECT_EQ(shown(), "default no default ");
}

TEST_P(NewsflashBoxTest, AnItemShowsItsTitleTextAndDate) {
    drawnBy(items(tag("nfTitle") + "|" + tag("nfText") + "|" + tag("nfDD") + tag("nfMM") + tag("nfYY") + " " +
                  tag("nfYYYY") + " " + tag("nfMMM")));
    newsflashRow(5, 3, "Latest");
    item(1, 1, "01", "A & b", {{"msgB_itemDesc", "<b>x</b>"}});
    EXPECT_EQ(shown(), "A &amp; b|<b>x</b>&nbsp;|010626 2026 Jun");
}

TEST_P(NewsflashBoxTest, TextsAreCutAsItSays) {
    drawnBy(items("[" + tag("nfText") + "]"));
    newsflashRow(5, 3, "Latest", {{"itemLength", 10}});
    item(1, 1, "01", "a", {{"msgB_itemDesc", "One two three four"}});
    EXPECT_EQ(shown(), "[One two three...&nbsp;]");
    set("itemLength", 0);
    EXPECT_EQ(shown(), "[]");
    set("itemLength", -1);
    EXPECT_EQ(shown(), "[One two three four&nbsp;]");
}

TEST_P(NewsflashBoxTest, ALinkTakesThePlaceOfThePlainTitle) {
    drawnBy(items(block("nfTitle", "plain") + block("nfTitleLink", tag("nfLink")) +
                  block("nfMore", "," + tag("nfMore")) + " "));
    newsflashRow(5, 3, "Latest", {{"itemOrder", 6}});
    item(1, 1, "01", "a", {{"msgB_itemLinkText", "more"}});
    item(2, 1, "01", "b", {{"msgB_itemLink", "12"}, {"msgB_itemLinkText", "more"}});
    item(3, 1, "01", "c", {{"msgB_itemLink", "HTTP://X.test"}});
    item(4, 1, "01", "d", {{"msgB_itemLink", "Plan.pdf"}});
    EXPECT_EQ(shown(), "plain page(12),more http://x.test file(plan.pdf) ");
}

TEST_P(NewsflashBoxTest, NothingOfAnItemIsAMarker) {
    drawnBy(items(tag("nfTitle") + tag("nfText") + tag("nfMore") + tag("nfLink")));
    newsflashRow(5, 3, "Latest");
    const std::string markup = tag("torvex_body_1") + block("nfEmpty", "x") + tag("torvex_newsflash_3");
    item(1, 1, "01", markup,
         {{"msgB_itemDesc", markup}, {"msgB_itemLink", markup}, {"msgB_itemLinkText", markup}});
    for (const bool html : {false, true}) {
        host.application.set("torvex_msgBoard_html_allowed", html);
        EXPECT_EQ(content().find("<!--!"), std::string::npos);
    }
}

TEST_P(NewsflashBoxTest, ATemplateLacksAnyOfItsBlocks) {
    newsflashRow(5, 3, "Latest", {{"imageAlignment", 1}});
    image("p.jpg", 10, 10);
    item(1, 1, "01", "a", {{"msgB_itemImage", "p.jpg"}, {"msgB_itemLink", "12"}});
    item(2, 1, "01", "b");
    for (const char* missing : {"nfItem", "nfEmpty", "nfSpacer", "nfDefault", "nfNoImage", "nfImageLeft"}) {
        std::string layouts;
        for (const char* name : {"nfNoImage", "nfImageLeft", "nfDefault"}) {
            if (std::string_view(name) != missing) layouts += block(name, tag("nfTitle"));
        }
        std::string html = std::string_view(missing) == "nfItem" ? layouts : block("nfItem", layouts);
        for (const char* name : {"nfEmpty", "nfSpacer"}) {
            if (std::string_view(name) != missing) html += block(name, "x");
        }
        connection().execute("delete from TORVEX_TEMPLATES");
        drawnBy(html);
        EXPECT_NO_THROW(content()) << missing;
    }
    EXPECT_EQ(host.response.body(), "");
}

// What is remembered

TEST_P(NewsflashBoxTest, WhatIsRememberedHoldsForOneNewsflashViewAndDay) {
    drawnBy(items(tag("nfTitle") + tag("nfText") + " "));
    newsflashRow(5, 3, "Latest", {{"itemOrder", 6}});
    newsflashRow(6, 4, "One", {{"itemOrder", 6}, {"numberOfItems", 1}});
    feed(6, 1);
    item(1, 1, "01", "a", {{"msgB_itemDesc", "<em>"}});
    item(2, 1, "01", "b", {{"msgB_itemDesc", ""}});
    item(3, 1, "01", "c", {{"msgB_itemDesc", ""}, {"msgB_onlineDate", "20260616"}});
    item(4, 1, "01", "d", {{"msgB_itemDesc", ""}}, In::Design);
    EXPECT_EQ(requested(), "a&lt;em&gt;&nbsp; b ");
    EXPECT_EQ(requested("", 4), "a&lt;em&gt;&nbsp; ");
    EXPECT_EQ(requested("D"), "a&lt;em&gt;&nbsp; b d ");
    host.application.set("torvex_msgBoard_html_allowed", true);
    EXPECT_EQ(requested(), "a<em>&nbsp; b ");
    host.clock = FixedClock({2026, 6, 16, 12, 0, 0});
    EXPECT_EQ(requested(), "a<em>&nbsp; b c ");
}

TEST_P(NewsflashBoxTest, WhatIsRememberedEndsWithAChange) {
    drawnBy(items(tag("nfTitle")));
    newsflashRow(5, 3, "Latest");
    item(1, 1, "01", "a");
    EXPECT_EQ(requested(), "a");
    item(2, 1, "01", "b");
    EXPECT_EQ(requested(), "ba");
    host.files.bytes["/install/contentTemplates/aa/en/flash.html"] =
        block("torvex_content", items(tag("nfTitle") + " "));
    EXPECT_EQ(requested(), "b a ");
}

// On pages

TEST_P(NewsflashBoxTest, StandsOnPagesOfVisitorsAndAuthors) {
    drawnBy(items(tag("nfTitle") + " "), block("torvex_head", "HEAD"));
    newsflashRow(5, 3, "Latest");
    item(1, 1, "01", "live", {}, In::Live);
    item(1, 1, "01", "design", {}, In::Design);
    contentTemplate(1, "aa", "en", "content.html",
                    block("torvex_content", "page:" + tag("torvex_newsflash_3")));
    baseTemplate(1, "aa", "en", "base.html",
                 tag("torvex_head") + tag("torvex_content") + tag("torvex_newsflash_9"));
    page("aa.en").id(10).contentTemplate(1).baseTemplate(1).insert();
    SiteModules modules;
    serveWith(modules);
    server().getPage("10");
    EXPECT_THAT(server().torvex_preparePage(), testing::EndsWith("\r\nHEAD\r\npage:live "));
    cManager authors(host.context(), &modules);
    authors.connect(connection());
    authors.getPage("10", "D");
    EXPECT_THAT(authors.torvex_preparePage("D"), testing::EndsWith("page:design "));
    authors.getPage("10", "L");
    EXPECT_THAT(authors.torvex_preparePage("L"), testing::EndsWith("page:live "));
}

// Failures

TEST_P(NewsflashBoxTest, AFailureNamesTheStepsThatItPassed) {
    image("p.jpg", 10, 10);
    drawnBy(items(tag("nfTitle")));
    newsflashRow(5, 3, "Latest");
    item(1, 1, "01", "a", {{"msgB_itemImage", "p.jpg"}});
    drop("TORVEX_IMAGES");
    EXPECT_THAT(errorOf([&] { flash().load("aa", "en", 3); }),
                testing::StartsWith(
                    chain({"Load (newsflash) !", "fillItems (newsflash) !", "getImageDim (newsflash) !"})));
}

}  // namespace
}  // namespace torvex::test
