// Which menu a page has, and what of its template reaches the page.

#include "support/MenuTest.h"

namespace torvex::test {
namespace {

class MenuLoadingTest : public MenuTest {
  protected:
    bool isClear() {
        return loaded().dmTemplate().empty() && loaded().dmHeader().empty() && loaded().dmContent().empty();
    }
};
INSTANTIATE_TEST_SUITE_P(Engines, MenuLoadingTest, bothEngines(), engineName);

TEST_P(MenuLoadingTest, APageWithoutADefinitionOnAnyAncestorHasNoMenu) {
    menuAt(12, {});
    systemTemplate(1, plainLayout());
    EXPECT_FALSE(loaded().load("11"));
    EXPECT_TRUE(isClear());
}

TEST_P(MenuLoadingTest, TheNearestDefinitionAboveAPageHolds) {
    menu();
    systemTemplate(2, menuLayout(block("dynMenu_level", itemLayout("two "))));
    menuAt(11, {.templateId = 2});
    EXPECT_EQ(items("10"), (Items{"-11", "-12", "-13"}));
    EXPECT_EQ(items("12"), (Items{"-11", "*12", "-31", "-13"}));
    EXPECT_EQ(items("11"), (Items{"-two 21", "-two 22"}));
    EXPECT_EQ(items("51"), (Items{"-two 21", "-two 41", "*two 51", "-two 22"}));
}

TEST_P(MenuLoadingTest, APageIsNamedByNumberOrNode) {
    menu();
    for (const auto* ident : {"12", "  12 ", "aa.en.02", " AA.EN.02 "}) {
        EXPECT_EQ(items(ident), (Items{"-11", "*12", "-31", "-13"})) << ident;
    }
}

TEST_P(MenuLoadingTest, WhatIsNoPageHasNoMenu) {
    menu();
    for (const auto& ident : badIdentifiers()) {
        EXPECT_FALSE(loaded().load(ident)) << ident;
        EXPECT_TRUE(isClear()) << ident;
    }
}

TEST_P(MenuLoadingTest, AFailedLoadLeavesNothingOfTheOneBefore) {
    menu();
    EXPECT_TRUE(loaded().load("12"));
    EXPECT_FALSE(isClear());
    EXPECT_FALSE(loaded().load("999"));
    EXPECT_TRUE(isClear());
}

TEST_P(MenuLoadingTest, AuthorsSeeTheDesignInModeD) {
    systemTemplate(1, plainLayout());
    menuAt(10, {}, true, false);
    EXPECT_FALSE(loaded().load("12"));
    EXPECT_FALSE(loaded().load("12", "L"));
    EXPECT_TRUE(loaded().load("12", " d "));
}

TEST_P(MenuLoadingTest, ADeletedDefinitionHoldsUntilItIsPublishedButNotInTheDesign) {
    menu({.deleted = 1});
    EXPECT_TRUE(loaded().load("12"));
    EXPECT_FALSE(loaded().load("12", "D"));
}

TEST_P(MenuLoadingTest, InTheDesignTheSuccessorOfADeletedDefinitionHolds) {
    menu({.maxLevels = 1, .deleted = 1});
    menuAt(10, {}, true, false);
    EXPECT_EQ(items("12", "D"), (Items{"-11", "*12", "-31", "-13"}));
}

TEST_P(MenuLoadingTest, OnlyATemplateOfTheSystemDrawsAMenu) {
    menu();
    connection().execute("update TORVEX_TEMPLATES set tpl_system = 0");
    EXPECT_FALSE(loaded().load("12"));
    EXPECT_TRUE(isClear());
    connection().execute("delete from TORVEX_TEMPLATES");
    EXPECT_FALSE(loaded().load("12"));
}

TEST_P(MenuLoadingTest, ATemplateWithoutAFileDrawsNoMenu) {
    menu();
    host.files.bytes.clear();
    EXPECT_FALSE(loaded().load("12"));
    connection().execute("update TORVEX_TEMPLATES set tpl_filename = ''");
    EXPECT_FALSE(loaded().load("12"));
    EXPECT_TRUE(isClear());
}

TEST_P(MenuLoadingTest, TheFileLiesWithThePagesSiteAndLanguage) {
    menu();
    connection().execute("update TORVEX_TEMPLATES set tpl_filename = '  menu1.html '");
    EXPECT_TRUE(loaded().load("12"));
    host.files.bytes.erase("/install/contentTemplates/aa/en/menu1.html");
    EXPECT_FALSE(loaded().load("12"));
}

TEST_P(MenuLoadingTest, VisitorsLoseTheAuthorsBlocksAndAuthorsThoseOfVisitors) {
    systemTemplate(1, block("torvex_admin", "a") + block("torvex_public", "p") + block("torvex_admin", "a") +
                          block("torvex_public", "p") + plainLayout());
    menuAt(10, {});
    ASSERT_TRUE(loaded().load("12"));
    EXPECT_TRUE(loaded().dmTemplate().starts_with(block("torvex_public", "p") + block("torvex_public", "p") +
                                                  "<!--!torvex_head"));
    for (const auto* mode : {"D", "L", "x"}) {
        ASSERT_TRUE(loaded().load("12", mode));
        EXPECT_TRUE(loaded().dmTemplate().starts_with(block("torvex_admin", "a") +
                                                      block("torvex_admin", "a") + "<!--!torvex_head"));
    }
}

TEST_P(MenuLoadingTest, TheHeadAndTheContentAreGivenApart) {
    menu();
    ASSERT_TRUE(loaded().load("13"));
    EXPECT_EQ(loaded().dmHeader(), "head");
    EXPECT_EQ(loaded().dmContent(), "<!--!dynMenu_start!-->{\r-11\r\r-12\r\r*13}<!--!dynMenu_end!-->");
    EXPECT_EQ(loaded().dmTemplate(), plainLayout());
}

TEST_P(MenuLoadingTest, ATemplateWithoutHeadOrContentGivesEmptyTexts) {
    menu({}, "nothing");
    EXPECT_TRUE(loaded().load("12"));
    EXPECT_EQ(loaded().dmTemplate(), "nothing");
    EXPECT_EQ(loaded().dmHeader(), "");
    EXPECT_EQ(loaded().dmContent(), "");
}

TEST_P(MenuLoadingTest, LevelsBeyondSmallNumbersAreCut) {
    menu();
    connection().execute("update TORVEX_DYNMENU_LIVE set minLevels = -1e9, maxLevels = 1e9");
    EXPECT_EQ(items("12"), (Items{"-11", "*12", "-31", "-13"}));
}

TEST_P(MenuLoadingTest, EveryFunctionAddsItsLineToAnError) {
    menu();
    const auto load = [&] { loaded().load("12"); };
    drop("TORVEX_PAGES_LIVE");
    EXPECT_TRUE(
        errorOf(load).starts_with(chain({"load (dynMenu) !", "fillItems (dynMenu) !", "isDynMenuItem !"})));
    connection().execute("update TORVEX_DYNMENU_LIVE set display = 1");
    EXPECT_TRUE(errorOf(load).starts_with(
        chain({"load (dynMenu) !", "fillItems (dynMenu) !", "addItems (dynMenu) !"})));
    drop("TORVEX_DYNMENU_LIVE");
    EXPECT_TRUE(errorOf(load).starts_with(chain({"load (dynMenu) !"})));
    EXPECT_TRUE(isClear());
    drop("TORVEX_PAGES_DESIGN");
    EXPECT_TRUE(errorOf(load).starts_with(chain({"load (dynMenu) !", "getNodeId !"})));
}

TEST_P(MenuLoadingTest, TheGroupsHaveALineOfTheirOwn) {
    menu();
    host.application.set("torvex_extranet", true);
    drop("TORVEX_PAGES_GROUPS_LIVE");
    EXPECT_TRUE(errorOf([&] { loaded().load("12"); })
                    .starts_with(chain({"load (dynMenu) !", "fillItems (dynMenu) !", "addItems (dynMenu) !",
                                        "hasAccess !"})));
}

TEST_P(MenuLoadingTest, AnObjectThatWasNeverConnectedFailsAtItsFirstQuery) {
    dynMenu unconnected(host.context());
    EXPECT_TRUE(errorOf([&] { unconnected.load("12"); }).starts_with(chain({"load (dynMenu) !"})));
}

TEST_P(MenuLoadingTest, AConnectionTextServesAsWell) {
    menu();
    dynMenu byText(host.context());
    byText.connect(connectionText());
    EXPECT_TRUE(byText.load("12"));
}

}  // namespace
}  // namespace torvex::test
