#include "support/ManagerTest.h"

namespace torvex::test {
namespace {

class TreeTest : public ManagerTest {};
INSTANTIATE_TEST_SUITE_P(Engines, TreeTest, bothEngines(), engineName);

// The two names

TEST_P(TreeTest, ANumberGivesTheNodeAndANodeTheNumber) {
    page("aa.en.01").id(12).insertInDesignOnly();
    EXPECT_EQ(manager().getNodeId(12), "aa.en.01");
    EXPECT_EQ(manager().getPageId("aa.en.01"), 12);
    EXPECT_EQ(manager().getPageId("AA.EN.01"), 12);
}

TEST_P(TreeTest, WhatIsNoPageHasNoOtherName) {
    page("aa.en.01").id(12).insertInLiveOnly();
    EXPECT_EQ(manager().getNodeId(12), "");
    EXPECT_EQ(manager().getNodeId(0), "");
    EXPECT_EQ(manager().getNodeId(-12), "");
    EXPECT_EQ(manager().getNodeId(1.5), "");
    EXPECT_EQ(manager().getPageId("aa.en.01"), 0);
    EXPECT_EQ(manager().getPageId(""), 0);
    EXPECT_EQ(manager().getPageId("12"), 0);
    EXPECT_EQ(manager().getPageId("' or 1=1 --"), 0);
}

TEST_P(TreeTest, APageIsAskedForInEitherTable) {
    page("aa.en.01").id(12).insertInDesignOnly();
    page("aa.en.02").id(13).insert();
    EXPECT_FALSE(manager().isPage("12"));
    EXPECT_TRUE(manager().isPage("12", "D"));
    EXPECT_TRUE(manager().isPage("aa.en.01", "d"));
    EXPECT_TRUE(manager().isPage(" 13 "));
    EXPECT_TRUE(manager().isPage(" AA.EN.02 ", "L"));
    EXPECT_TRUE(manager().isPage("13", "anything else"));
    EXPECT_FALSE(manager().isPage("12", "Design"));
}

TEST_P(TreeTest, APageThatIsOnlyLiveIsFoundByItsNumberAlone) {
    page("aa.en.01").id(12).insertInLiveOnly();
    EXPECT_TRUE(manager().isPage("12"));
    EXPECT_FALSE(manager().isPage("12", "D"));
    EXPECT_FALSE(manager().isPage("aa.en.01"));
}

TEST_P(TreeTest, OfflinePagesAndFoldersArePages) {
    page("aa.en.01").id(12).offline().insert();
    page("aa.en.02").id(13).type("F").insert();
    EXPECT_TRUE(manager().isPage("12"));
    EXPECT_TRUE(manager().isPage("13"));
}

TEST_P(TreeTest, BadIdentifiersFindNothing) {
    page("aa.en.01").id(12).insert();
    for (const std::string& bad : badIdentifiers()) {
        SCOPED_TRACE(bad.substr(0, 40));
        EXPECT_FALSE(manager().isPage(bad));
        EXPECT_FALSE(manager().isPage(bad, "D"));
        EXPECT_EQ(manager().getPageTitle(bad), "");
        EXPECT_EQ(manager().getPageType(bad), "");
        EXPECT_EQ(manager().getBreadcrumb(bad), "");
        EXPECT_FALSE(manager().isPageTitle(bad, "aa.en.01"));
    }
}

// Types and titles

TEST_P(TreeTest, TypeAndTitleComeFromTheTableOfTheMode) {
    page("aa.en.01").id(12).title("Draft").type("F").insertInDesignOnly();
    page("aa.en.01").id(12).title("Public").type("P").insertInLiveOnly();
    EXPECT_EQ(manager().getPageTitle("12"), "Public");
    EXPECT_EQ(manager().getPageTitle("aa.en.01", "D"), "Draft");
    EXPECT_EQ(manager().getPageType("12"), "P");
    EXPECT_EQ(manager().getPageType("aa.en.01", "d"), "F");
}

TEST_P(TreeTest, OnlyTheFirstLetterOfATitlesModeCounts) {
    page("aa.en.01").id(12).title("Draft").insertInDesignOnly();
    page("aa.en.01").id(12).title("Public").insertInLiveOnly();
    EXPECT_EQ(manager().getPageTitle("12", "design"), "Draft");
    EXPECT_EQ(manager().getPageTitle("12", "live"), "Public");
    EXPECT_EQ(manager().getPageTitle("12", ""), "Public");
}

TEST_P(TreeTest, AnUntitledPageGivesAWordOfTheInterface) {
    page("aa.en.01").id(12).title("").insert();
    page("aa.en.02").id(13).set("title", {}).insert();
    EXPECT_EQ(manager().getPageTitle("12"), "[no title]");
    EXPECT_EQ(manager().getPageTitle("13", "D"), "[no title]");
}

TEST_P(TreeTest, TheWordIsInTheLanguageOfTheInterface) {
    row("TORVEX_INTERFACE_LANGUAGES", {{"id", 3}, {"lang_id", "nl"}, {"lang_name", "Nederlands"}});
    connection().execute(
        "update TORVEX_INTERFACE_VOCAB set lang_vocab3 = 'geen titel' where lang_label = 2597");
    host.session.set("torvex_current_interface", "nl");
    page("aa.en.01").id(12).title("").insert();
    EXPECT_EQ(manager().getPageTitle("12"), "[geen titel]");
}

TEST_P(TreeTest, APageThatIsNotThereHasNeitherTypeNorTitle) {
    page("aa.en.01").id(12).title("").insertInDesignOnly();
    EXPECT_EQ(manager().getPageTitle("12"), "");
    EXPECT_EQ(manager().getPageType("12"), "");
    EXPECT_EQ(manager().getPageTitle("13", "D"), "");
    EXPECT_EQ(manager().getPageType("13", "D"), "");
}

// Titles that are taken

TEST_P(TreeTest, ATitleIsTakenWhenASiblingHasIt) {
    page("aa.en").id(10).insert();
    page("aa.en.01").id(11).title("About us").insert();
    EXPECT_TRUE(manager().isPageTitle("10", "About us"));
    EXPECT_TRUE(manager().isPageTitle("aa.en", "About us"));
    EXPECT_TRUE(manager().isPageTitle(" AA.EN ", "ABOUT US"));
    EXPECT_FALSE(manager().isPageTitle("10", "About"));
    EXPECT_FALSE(manager().isPageTitle("10", ""));
    EXPECT_FALSE(manager().isPageTitle("11", "About us"));
}

TEST_P(TreeTest, TitlesOfTheDesignAreTakenApart) {
    page("aa.en").id(10).insert();
    page("aa.en.01").id(11).title("Draft").insertInDesignOnly();
    page("aa.en.02").id(12).title("Public").insertInLiveOnly();
    EXPECT_TRUE(manager().isPageTitle("10", "Draft", "D"));
    EXPECT_TRUE(manager().isPageTitle("10", "Draft", "d"));
    EXPECT_FALSE(manager().isPageTitle("10", "Public", "D"));
    EXPECT_FALSE(manager().isPageTitle("10", "Draft"));
    EXPECT_FALSE(manager().isPageTitle("10", "Draft", "L"));
    EXPECT_TRUE(manager().isPageTitle("10", "Public"));
    EXPECT_TRUE(manager().isPageTitle("10", "Public", "L"));
}

TEST_P(TreeTest, APageDoesNotCollideWithItself) {
    page("aa.en").id(10).insert();
    page("aa.en.01").id(11).title("About us").insert();
    EXPECT_FALSE(manager().isPageTitle("10", "About us", "L", "11"));
    EXPECT_FALSE(manager().isPageTitle("10", "About us", "D", " AA.EN.01 "));
    EXPECT_TRUE(manager().isPageTitle("10", "About us", "L", "10"));
    EXPECT_TRUE(manager().isPageTitle("10", "About us", "L", "aa.en.77"));
    page("aa.en.02").id(12).title("About us").insert();
    EXPECT_TRUE(manager().isPageTitle("10", "About us", "L", "11"));
}

TEST_P(TreeTest, TitlesWithQuotesMarkupAndAccentsAreComparedAsTheyAre) {
    page("aa.en").id(10).insert();
    page("aa.en.01").id(11).title("It's <b>\"caf\xC3\xA9\"</b> %_").insert();
    EXPECT_TRUE(manager().isPageTitle("10", "it's <B>\"CAF\xC3\x89\"</b> %_"));
    EXPECT_FALSE(manager().isPageTitle("10", "It's <b>\"cafe\"</b> %_"));
    EXPECT_FALSE(manager().isPageTitle("10", "%"));
    EXPECT_FALSE(manager().isPageTitle("10", "' or '1' = '1"));
}

TEST_P(TreeTest, WithoutAParentTheRootsAreSiblings) {
    page("aa.en").id(10).title("Home").insert();
    EXPECT_TRUE(manager().isPageTitle("", "Home"));
    EXPECT_FALSE(manager().isPageTitle("", "About us"));
}

// The trail

TEST_P(TreeTest, TheTrailNamesThePagesFromTheRootOn) {
    page("aa.en").id(10).title("Home").insert();
    page("aa.en.03").id(11).title("R&D").type("F").insert();
    page("aa.en.03.01").id(12).title("Plans").offline().insert();
    EXPECT_EQ(manager().getBreadcrumb("12"), "Home > R&D > Plans");
    EXPECT_EQ(manager().getBreadcrumb(" AA.EN.03.01 "), "Home > R&D > Plans");
    EXPECT_EQ(manager().getBreadcrumb("10"), "Home");
}

TEST_P(TreeTest, TheTrailOfADesignTakesItsTitles) {
    page("aa.en").id(10).title("Home").insert();
    page("aa.en.03").id(11).title("Draft").insertInDesignOnly();
    EXPECT_EQ(manager().getBreadcrumb("11", "D"), "Home > Draft");
    EXPECT_EQ(manager().getBreadcrumb("11", "d"), "Home > Draft");
    EXPECT_EQ(manager().getBreadcrumb("11"), "Home");
}

TEST_P(TreeTest, AMissingPageAddsNothingToTheTrail) {
    page("aa.en").id(10).title("Home").insert();
    page("aa.en.03.01").id(12).title("Plans").insert();
    EXPECT_EQ(manager().getBreadcrumb("12"), "Home > Plans");
    EXPECT_EQ(manager().getBreadcrumb("aa.en.07.01"), "Home");
    EXPECT_EQ(manager().getBreadcrumb("bb.en.07"), "");
    EXPECT_EQ(manager().getBreadcrumb("aa"), "");
}

TEST_P(TreeTest, AnUntitledPageLeavesAGapInTheTrail) {
    page("aa.en").id(10).title("Home").insert();
    page("aa.en.03").id(11).set("title", {}).insert();
    page("aa.en.03.01").id(12).title("Plans").insert();
    EXPECT_EQ(manager().getBreadcrumb("12"), "Home >  > Plans");
    EXPECT_EQ(manager().getBreadcrumb("11"), "Home > ");
}

// Failures

TEST_P(TreeTest, AFailureNamesTheOperation) {
    page("aa.en.01").id(12).insert();
    drop("TORVEX_PAGES_LIVE");
    EXPECT_TRUE(errorOf([&] { manager().isPage("12"); }).starts_with(chain({"isPage !"})));
    EXPECT_TRUE(errorOf([&] { manager().isPageTitle("12", "x"); }).starts_with(chain({"isPageTitle !"})));
    EXPECT_TRUE(errorOf([&] { manager().getPageTitle("12"); }).starts_with(chain({"getPageTitle !"})));
    EXPECT_TRUE(errorOf([&] { manager().getPageType("12"); }).starts_with(chain({"getPageType !"})));
    EXPECT_TRUE(errorOf([&] { manager().getBreadcrumb("12"); }).starts_with(chain({"getBreadcrumb !"})));
    drop("TORVEX_PAGES_DESIGN");
    EXPECT_TRUE(errorOf([&] { manager().getNodeId(12); }).starts_with(chain({"getNodeId !"})));
    EXPECT_TRUE(errorOf([&] { manager().getPageId("aa.en.01"); }).starts_with(chain({"getPageId !"})));
    EXPECT_TRUE(
        errorOf([&] { manager().isPage("aa.en.01"); }).starts_with(chain({"isPage !", "getPageId !"})));
}

}  // namespace
}  // namespace torvex::test
