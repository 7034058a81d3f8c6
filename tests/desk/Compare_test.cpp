#include <gmock/gmock.h>

#include "support/DeskTest.h"

namespace torvex::test {
namespace {

using testing::ElementsAre;
using testing::IsEmpty;
using testing::StartsWith;

class DeskCompareTest : public DeskTest {
  protected:
    void SetUp() override {
        DeskTest::SetUp();
        if (HasFatalFailure()) return;
        page("aa.en").title("Home").insert();
    }
    /// Twice the same page, with number 12.
    PageId published() { return walks().insert(); }
    PageBuilder walks() { return page("aa.en.01").id(12).title("Walks"); }
    void designIs(const std::string& column, const Value& value) {
        connection().execute("update TORVEX_PAGES_DESIGN set " + column + " = ? where pageId = 12",
                             {value.isNumber() ? db::Parameter(value.number())
                                               : db::Parameter(std::string_view(value.text()))});
    }
    std::vector<std::string> differences() { return linesOf(desk().compare("12")); }
    void metaDataOf(const std::string& twin, int id, const std::string& value, int inherited = 0) {
        row("TORVEX_PAGES_METADATA_" + twin, {{"metaData_pageId", 12},
                                              {"metaData_id", id},
                                              {"metaData_inherited", inherited},
                                              {"metaData_value", value}});
    }
};
INSTANTIATE_TEST_SUITE_P(Engines, DeskCompareTest, bothEngines(), engineName);

TEST_P(DeskCompareTest, APageThatIsLiveAsItIsDesignedDiffersInNothing) {
    published();
    designBody(12, 1, "same");
    body(12, 1, "same");
    EXPECT_TRUE(desk().compare("12").isEmpty());
}

TEST_P(DeskCompareTest, OnlyWhatDiffersIsListedToTheLetterInTheOrderOfTheSetup) {
    published();
    designIs("onlineTo", "20260701");
    designIs("title", "walks");
    designIs("dynMenu", "1");
    EXPECT_THAT(differences(),
                ElementsAre("title|0|walks|Walks|", "onlineTo|0|20260701|99999999|", "dynMenu|0|1||"));
}

TEST_P(DeskCompareTest, AssetsStandByTheirNames) {
    published();
    contentTemplate(5, "aa", "en", "page.html", "");
    baseTemplate(6, "aa", "en", "frame.html", "");
    stylesheet(7, "aa", "en", "site.css");
    externalApplication(8, "http://www.shop.test");
    designIs("template", 5);
    designIs("baseTemplate", 6);
    designIs("stylesheet", 7);
    designIs("application", 8);
    EXPECT_THAT(differences(), ElementsAre("template|0|page.html||", "baseTemplate|0|frame.html||",
                                           "stylesheet|0|site.css||", "application|0|Application 8||"));
}

TEST_P(DeskCompareTest, PagesStandByTheirTitleAndNode) {
    const PageId visit = page("aa.en.02").title("Visit").insert();
    published();
    designIs("next", visit);
    designIs("up", 4711);
    EXPECT_THAT(differences(), ElementsAre("next|0|Visit (aa.en.02)||", "up|0|4711||"));
}

TEST_P(DeskCompareTest, GroupsStandByTheirNames) {
    published();
    group(21, "Staff");
    group(22, "Friends");
    row("TORVEX_PAGES_GROUPS_DESIGN", {{"pageId", 12}, {"groupId", 21}});
    row("TORVEX_PAGES_GROUPS_DESIGN", {{"pageId", 12}, {"groupId", 22}});
    row("TORVEX_PAGES_GROUPS_DESIGN", {{"pageId", 12}, {"groupId", 22}});
    pageGroup(12, 22);
    EXPECT_THAT(differences(), ElementsAre("groups|0|Friends, Staff|Friends|"));
}

TEST_P(DeskCompareTest, MetaDataStandsByTheNameOfItsTag) {
    published();
    metaTag(1, "aa", "Keywords");
    metaTag(2, "aa", "Description");
    metaTag(3, "aa", "Author");
    metaDataOf("DESIGN", 1, "plants");
    metaDataOf("LIVE", 1, "flowers");
    metaDataOf("DESIGN", 2, "of no meaning", 1);
    metaDataOf("LIVE", 3, "Iris");
    EXPECT_THAT(differences(), ElementsAre("metaData|0||Iris|Author", "metaData|0|plants|flowers|Keywords"));
}

TEST_P(DeskCompareTest, BodiesStandByTheirNumberAndFeedsByTheirTitles) {
    published();
    row("TORVEX_FEEDS_HTML", {{"feedId", 5}, {"feedName", "News"}});
    designBody(12, 10, "<p>ten</p>");
    body(12, 10, "<p>TEN</p>");
    designBody(12, 2, "unseen", 2, 5);
    body(12, 2, "text");
    body(12, 3, "cleared");
    EXPECT_THAT(differences(), ElementsAre("bodyKind|2|html: News|text|", "body|2||text|", "body|3||cleared|",
                                           "body|10|<p>ten</p>|<p>TEN</p>|"));
}

TEST_P(DeskCompareTest, APageThatIsntLiveDiffersInAllItHas) {
    walks().insertInDesignOnly();
    designBody(12, 1, "text");
    EXPECT_THAT(differences(), ElementsAre("title|0|Walks||", "type|0|P||", "onlineFrom|0|00000000||",
                                           "onlineTo|0|99999999||", "body|1|text||"));
}

TEST_P(DeskCompareTest, APageThatIsntThereHasNothingToCompare) {
    for (const auto& bad : badIdentifiers()) EXPECT_TRUE(desk().compare(bad).isEmpty()) << bad;
    page("aa.en.02").id(13).insertInLiveOnly();
    EXPECT_TRUE(desk().compare("13").isEmpty());
}

TEST_P(DeskCompareTest, WhatFailsIsRaised) {
    published();
    drop("TORVEX_BODIES_LIVE");
    EXPECT_THAT(errorOf([&] { desk().compare("12"); }), StartsWith(chain({"compare !"})));
}

}  // namespace
}  // namespace torvex::test
