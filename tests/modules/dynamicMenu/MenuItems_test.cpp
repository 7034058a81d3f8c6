// Which pages are items of a menu, and which of them is marked.

#include "support/InterruptedConnection.h"
#include "support/MenuTest.h"

namespace torvex::test {
namespace {

// The host's clock stands at 2026-06-15.
constexpr const char* yesterday = "20260614";
constexpr const char* tomorrow = "20260616";

class MenuItemsTest : public MenuTest {
  protected:
    void extranet() {
        host.application.set("torvex_extranet", true);
        group(2, "members");
        group(3, "staff");
        user(101, "ann", "annpw", {2});
        user(102, "ben", "benpw", {});
        for (const int pageId : {11, 12, 13, 21, 22, 31, 41, 51}) pageGroup(pageId, 0);
        pageGroup(10, 1);
    }
    void logIn(const std::string& name) {
        host.session.set("tvx_username", name);
        host.session.set("tvx_password", name + "pw");
    }
    void onlyFor(PageId pageId, int groupId) {
        connection().execute("delete from TORVEX_PAGES_GROUPS_LIVE where pageId = ?", {pageId});
        pageGroup(pageId, groupId);
    }
    /// As a request for a page asks for them: what strangers see is remembered for the next one.
    Items requested(const std::string& ident, const std::string& mode = "") {
        const db::ReadScope request(connection());
        return items(ident, mode);
    }
    /// How many statements it takes to draw the menu of a page.
    int statementsFor(const std::string& ident) {
        InterruptedConnection counted(connection());
        dynMenu drawn(host.context());
        drawn.connect(counted);
        EXPECT_TRUE(drawn.load(ident));
        return counted.queries + counted.changesTried;
    }
};
INSTANTIATE_TEST_SUITE_P(Engines, MenuItemsTest, bothEngines(), engineName);

TEST_P(MenuItemsTest, LevelsUpToTheLeastShowWhereverTheVisitorIs) {
    menu({.minLevels = 2, .maxLevels = 3});
    EXPECT_EQ(items("13"), (Items{"-11", "-21", "-22", "-12", "-31", "*13"}));
    EXPECT_EQ(items("21"), (Items{"-11", "*21", "-41", "-22", "-12", "-31", "-13"}));
}

TEST_P(MenuItemsTest, DeeperOnesShowBelowTheVisitorsWay) {
    menu({.minLevels = 1, .maxLevels = 3});
    EXPECT_EQ(items("10"), (Items{"-11", "-12", "-13"}));
    EXPECT_EQ(items("11"), (Items{"*11", "-21", "-22", "-12", "-13"}));
    EXPECT_EQ(items("22"), (Items{"-11", "-21", "*22", "-12", "-13"}));
    EXPECT_EQ(items("41"), (Items{"-11", "-21", "*41", "-22", "-12", "-13"}));
}

TEST_P(MenuItemsTest, NothingIsDeeperThanTheMost) {
    menu({.minLevels = 1, .maxLevels = 2});
    EXPECT_EQ(items("51"), (Items{"-11", "*21", "-22", "-12", "-13"}));
}

TEST_P(MenuItemsTest, APageBelowTheMostMarksItsAncestorThere) {
    menu({.minLevels = 1, .maxLevels = 1});
    EXPECT_EQ(items("51"), (Items{"*11", "-12", "-13"}));
}

TEST_P(MenuItemsTest, WithTheWholeWayShownEachItemOnItIsActive) {
    menu({.minLevels = 1, .maxLevels = 3, .display = 1});
    EXPECT_EQ(items("51"), (Items{"*11", "*21", "*41", "-22", "-12", "-13"}));
    EXPECT_EQ(items("10"), (Items{"-11", "-12", "-13"}));
}

TEST_P(MenuItemsTest, AnotherDisplayMarksNothing) {
    menu({.minLevels = 1, .maxLevels = 3, .display = 2});
    EXPECT_EQ(items("41"), (Items{"-11", "-21", "-41", "-22", "-12", "-13"}));
}

TEST_P(MenuItemsTest, WithAMostBelowTheLeastOnlyTheFirstLevelShows) {
    menu({.minLevels = 2, .maxLevels = 1});
    EXPECT_EQ(items("21"), (Items{"*11", "-12", "-13"}));
    EXPECT_EQ(items("13"), (Items{"-11", "-12", "*13"}));
}

TEST_P(MenuItemsTest, WithAMostBelowTheLeastNobodyIsAskedForTheReference) {
    menu({.minLevels = 2, .maxLevels = 1});
    changeLive(11, "dynMenu", "5");
    EXPECT_EQ(items("21"), (Items{"*11", "-12", "-13"}));
}

TEST_P(MenuItemsTest, WithoutAnyLevelItemsOffTheWayKeepTheirWholeLayout) {
    menu({.minLevels = 0, .maxLevels = 0}, menuLayout(block("dynMenu_level", "x" + itemLayout())));
    ASSERT_TRUE(loaded().load("12"));
    const std::string whole = "x" + block("dynMenu_itemOn", "*11") + block("dynMenu_itemOff", "-11");
    EXPECT_TRUE(loaded().dmContent().starts_with("<!--!dynMenu_start!-->{\r" + whole + "\r\r-12\r\rx"))
        << loaded().dmContent();
}

TEST_P(MenuItemsTest, TheMarkedItemIsTheDeepestOneInMenusOnTheWay) {
    menu({.minLevels = 1, .maxLevels = 3});
    change(41, "dynMenu", "0");
    EXPECT_EQ(items("41"), (Items{"-11", "*21", "-22", "-12", "-13"}));
    change(21, "dynMenu", "0");
    EXPECT_EQ(items("41"), (Items{"*11", "-22", "-12", "-13"}));
    change(11, "dynMenu", "0");
    EXPECT_EQ(items("41"), (Items{"-12", "-13"}));
}

TEST_P(MenuItemsTest, TheMarkMayFallOnAPageThatIsNotShown) {
    menu({.minLevels = 1, .maxLevels = 3});
    changeLive(21, "online", "0");
    EXPECT_EQ(items("21"), (Items{"-11", "-22", "-12", "-13"}));
}

TEST_P(MenuItemsTest, OnlyTheValueOneMakesAPageTheMarkedOne) {
    menu({.minLevels = 1, .maxLevels = 2});
    change(21, "dynMenu", "2");
    EXPECT_EQ(items("21"), (Items{"*11", "-21", "-22", "-12", "-13"}));
}

TEST_P(MenuItemsTest, APageTakenOutOfMenusTakesItsBranchAlong) {
    menu({.minLevels = 3, .maxLevels = 3});
    changeLive(11, "dynMenu", "0");
    EXPECT_EQ(items("13"), (Items{"-12", "-31", "*13"}));
}

TEST_P(MenuItemsTest, APageWithoutASettingIsAnItem) {
    menu();
    connection().execute("update TORVEX_PAGES_LIVE set dynMenu = null where pageId = 12");
    changeLive(13, "dynMenu", "");
    EXPECT_EQ(items("11"), (Items{"*11", "-21", "-22", "-12", "-13"}));
}

TEST_P(MenuItemsTest, TheDigitsOfTheSystemBranchAnywhereInANodeLeaveThePageOut) {
    menu({.minLevels = 2, .maxLevels = 3});
    inMenu(61, "aa.en.99").order(99).insert();
    inMenu(62, "aa.en.99.01").insert();
    inMenu(63, "aa.en.03.99").insert();
    EXPECT_EQ(items("10"), (Items{"-11", "-21", "-22", "-12", "-31", "-13"}));
    EXPECT_EQ(items("10", "D"), (Items{"-11", "-21", "-22", "-12", "-31", "-13"}));
}

TEST_P(MenuItemsTest, ItemsStandInTheOrderOfTheirPlaces) {
    menu();
    change(11, "orderId", "7");
    change(12, "orderId", "5");
    EXPECT_EQ(items("10"), (Items{"-13", "-12", "-11"}));
}

TEST_P(MenuItemsTest, WhatIsOffLineOrOutsideItsDatesIsLeftOutWithItsBranch) {
    menu({.minLevels = 2, .maxLevels = 2});
    changeLive(11, "online", "0");
    EXPECT_EQ(items("10"), (Items{"-12", "-31", "-13"}));
    changeLive(12, "onlineFrom", tomorrow);
    EXPECT_EQ(items("10"), (Items{"-13"}));
    changeLive(13, "onlineTo", yesterday);
    EXPECT_EQ(items("10"), Items{});
    EXPECT_EQ(items("10", "L"), Items{});
    EXPECT_EQ(items("10", "D"), (Items{"-11", "-21", "-22", "-12", "-31", "-13"}));
}

TEST_P(MenuItemsTest, DatesThatAreEmptyDoNotLimit) {
    menu();
    connection().execute("update TORVEX_PAGES_LIVE set onlineFrom = null, onlineTo = '' where pageId = 11");
    EXPECT_EQ(items("13"), (Items{"-11", "-12", "*13"}));
}

TEST_P(MenuItemsTest, APageThatIsNotLiveIsNoItemForVisitors) {
    menu();
    inMenu(14, "aa.en.04").insertInDesignOnly();
    EXPECT_EQ(items("10"), (Items{"-11", "-12", "-13"}));
    EXPECT_EQ(items("10", "D"), (Items{"-11", "-12", "-13", "-14"}));
}

TEST_P(MenuItemsTest, AFolderWithoutAnOnlineChildIsLeftOut) {
    menu();
    change(13, "type", "F");
    EXPECT_EQ(items("10"), (Items{"-11", "-12"}));
    change(12, "type", " f ");
    EXPECT_EQ(items("10"), (Items{"-11", "-12"}));
    changeLive(31, "online", "0");
    EXPECT_EQ(items("10"), (Items{"-11"}));
    EXPECT_EQ(items("10", "D"), (Items{"-11", "-12", "-13"}));
}

TEST_P(MenuItemsTest, AFolderCountsAsItsFirstChildAlone) {
    menu();
    change(11, "type", "F");
    EXPECT_EQ(items("10"), (Items{"-11", "-12", "-13"}));
    changeLive(21, "online", "0");
    EXPECT_EQ(items("10"), (Items{"-12", "-13"}));
    EXPECT_EQ(items("11"), (Items{"-12", "-13"}));
    changeLive(21, "orderId", "5");
    EXPECT_EQ(items("10"), (Items{"-11", "-12", "-13"}));
    EXPECT_EQ(items("22"), (Items{"-11", "*22", "-12", "-13"}));
}

TEST_P(MenuItemsTest, ALineOfFoldersIsFollowedToItsEnd) {
    menu({.minLevels = 1, .maxLevels = 1});
    for (const int pageId : {11, 21, 41}) change(pageId, "type", "F");
    EXPECT_EQ(items("10"), (Items{"-11", "-12", "-13"}));
    changeLive(51, "online", "0");
    EXPECT_EQ(items("10"), (Items{"-12", "-13"}));
}

TEST_P(MenuItemsTest, TheFirstChildOfAFolderNeedNotBeInMenus) {
    menu({.minLevels = 2, .maxLevels = 2});
    change(12, "type", "F");
    change(31, "dynMenu", "0");
    EXPECT_EQ(items("12"), (Items{"-11", "-21", "-22", "*12", "-13"}));
}

TEST_P(MenuItemsTest, RowsThatLeadInACircleComeToAnEnd) {
    menu({.minLevels = 3, .maxLevels = 3});
    change(31, "type", "F");
    change(31, "parent", "aa.en.02.01");
    change(10, "parent", "aa.en");
    EXPECT_EQ(items("13"), (Items{"-11", "-21", "-41", "-22", "-12", "*13"}));
    EXPECT_EQ(items("13", "D"), (Items{"-11", "-21", "-41", "-22", "-12", "*13"}));
}

TEST_P(MenuItemsTest, VisitorsSeeWhatIsOpenToThem) {
    menu({.minLevels = 2, .maxLevels = 2});
    extranet();
    onlyFor(11, 2);
    onlyFor(31, 3);
    EXPECT_EQ(items("13"), (Items{"-12", "*13"}));
    logIn("ann");
    EXPECT_EQ(items("13"), (Items{"-11", "-21", "-22", "-12", "*13"}));
    logIn("ben");
    EXPECT_EQ(items("13"), (Items{"-12", "*13"}));
}

TEST_P(MenuItemsTest, WithTheExtranetOffNoGroupCounts) {
    menu();
    extranet();
    onlyFor(11, 2);
    host.application.set("torvex_extranet", false);
    EXPECT_EQ(items("13"), (Items{"-11", "-12", "*13"}));
}

TEST_P(MenuItemsTest, AMenuMayShowWhatTheVisitorCannotOpen) {
    menu({.extranet = 1});
    extranet();
    onlyFor(11, 2);
    EXPECT_EQ(items("13"), (Items{"-11", "-12", "*13"}));
}

TEST_P(MenuItemsTest, RightsAreAskedForVisitorsAlone) {
    menu();
    extranet();
    onlyFor(11, 2);
    changeLive(12, "online", "0");
    EXPECT_EQ(items("13"), (Items{"*13"}));
    EXPECT_EQ(items("13", "L"), (Items{"-11", "*13"}));
    EXPECT_EQ(items("13", "D"), (Items{"-11", "-12", "*13"}));
}

TEST_P(MenuItemsTest, APageWithoutAnyGroupIsClosed) {
    menu();
    extranet();
    connection().execute("delete from TORVEX_PAGES_GROUPS_LIVE where pageId = 11");
    EXPECT_EQ(items("13"), (Items{"-12", "*13"}));
}

TEST_P(MenuItemsTest, GroupsAreInheritedFromAboveTheMenu) {
    systemTemplate(1, plainLayout());
    menuAt(11, {});
    extranet();
    onlyFor(10, 2);
    EXPECT_EQ(items("11"), Items{});
    logIn("ann");
    EXPECT_EQ(items("11"), (Items{"-21", "-22"}));
    onlyFor(22, 1);
    host.session.set("tvx_username", "");
    EXPECT_EQ(items("11"), (Items{"-22"}));
    connection().execute("delete from TORVEX_PAGES_GROUPS_LIVE where pageId = 10");
    logIn("ann");
    EXPECT_EQ(items("11"), (Items{"-22"}));
}

TEST_P(MenuItemsTest, TheLowestGroupDecidesHowAndAllOfThemWho) {
    menu();
    extranet();
    onlyFor(11, 3);
    pageGroup(11, 2);
    onlyFor(12, 2);
    pageGroup(12, 1);
    onlyFor(13, 3);
    pageGroup(13, 0);
    EXPECT_EQ(items("10"), (Items{"-12", "-13"}));
    logIn("ann");
    EXPECT_EQ(items("10"), (Items{"-11", "-12", "-13"}));
}

TEST_P(MenuItemsTest, AUserOutsideHerDatesIsAStranger) {
    menu();
    extranet();
    onlyFor(11, 2);
    user(103, "dora", "dorapw", {2}, "", "");
    user(104, "eve", "evepw", {2}, tomorrow, "");
    user(105, "finn", "finnpw", {2}, "", yesterday);
    logIn("dora");
    EXPECT_EQ(items("13"), (Items{"-11", "-12", "*13"}));
    for (const auto* name : {"eve", "finn"}) {
        logIn(name);
        EXPECT_EQ(items("13"), (Items{"-12", "*13"})) << name;
    }
}

TEST_P(MenuItemsTest, ANameNeedsItsPassword) {
    menu();
    extranet();
    onlyFor(11, 2);
    logIn("ann");
    for (const auto* password : {"", "wrong"}) {
        host.session.set("tvx_password", password);
        EXPECT_EQ(items("13"), (Items{"-12", "*13"})) << password;
    }
}

TEST_P(MenuItemsTest, AFolderIsOpenWhenWhatItLeadsToIs) {
    menu({.minLevels = 1, .maxLevels = 1});
    extranet();
    change(11, "type", "F");
    onlyFor(21, 2);
    EXPECT_EQ(items("13"), (Items{"-12", "*13"}));
    logIn("ann");
    EXPECT_EQ(items("13"), (Items{"-11", "-12", "*13"}));
    onlyFor(11, 3);
    EXPECT_EQ(items("13"), (Items{"-12", "*13"}));
}

TEST_P(MenuItemsTest, AFolderThatTheMenuOpensIsAskedLikeOneThatItDoesNot) {
    menu({.minLevels = 2, .maxLevels = 2});
    extranet();
    change(11, "type", "F");
    onlyFor(21, 2);
    EXPECT_EQ(items("13"), (Items{"-12", "-31", "*13"}));
    logIn("ann");
    EXPECT_EQ(items("13"), (Items{"-11", "-21", "-22", "-12", "-31", "*13"}));
}

TEST_P(MenuItemsTest, WhatIsRememberedOfStrangersIsNotShownToUsers) {
    menu();
    extranet();
    onlyFor(11, 2);
    EXPECT_EQ(requested("13"), (Items{"-12", "*13"}));
    logIn("ann");
    EXPECT_EQ(requested("13"), (Items{"-11", "-12", "*13"}));
    host.session.set("tvx_username", "");
    EXPECT_EQ(requested("13"), (Items{"-12", "*13"}));
}

TEST_P(MenuItemsTest, WhatIsRememberedHoldsForOnePageViewAndDay) {
    menu();
    extranet();
    onlyFor(11, 2);
    changeLive(12, "onlineFrom", tomorrow);
    EXPECT_EQ(requested("13"), (Items{"*13"}));
    EXPECT_EQ(requested("10"), (Items{"-13"}));
    EXPECT_EQ(requested("13", "L"), (Items{"-11", "*13"}));
    EXPECT_EQ(requested("13", "D"), (Items{"-11", "-12", "*13"}));
    host.application.set("torvex_extranet", false);
    EXPECT_EQ(requested("13"), (Items{"-11", "*13"}));
    host.clock = FixedClock({2026, 6, 16, 12, 0, 0});
    EXPECT_EQ(requested("13"), (Items{"-11", "-12", "*13"}));
}

TEST_P(MenuItemsTest, WhatIsRememberedEndsWithAChange) {
    menu();
    EXPECT_EQ(requested("13"), (Items{"-11", "-12", "*13"}));
    changeLive(12, "online", "0");
    EXPECT_EQ(requested("13"), (Items{"-11", "*13"}));
    host.files.bytes["/install/contentTemplates/aa/en/menu1.html"] =
        menuLayout(block("dynMenu_level", itemLayout("new ")));
    EXPECT_EQ(requested("13"), (Items{"-new 11", "*new 13"}));
}

TEST_P(MenuItemsTest, TheNumberOfStatementsDoesNotGrowWithTheItems) {
    menu({.minLevels = 3, .maxLevels = 3});
    extranet();
    logIn("ann");
    onlyFor(13, 2);
    change(12, "type", "F");
    inMenu(14, "aa.en.04").type("F").insert();
    pageGroup(14, 0);
    inMenu(15, "aa.en.04.01").set("dynMenu", "0").insert();
    pageGroup(15, 0);
    const int few = statementsFor("22");
    const std::size_t fewItems = items("22").size();
    for (int first = 10; first < 50; ++first) {
        const std::string top = "aa.en." + std::to_string(first);
        inMenu(1000 + first, top).type(first % 3 ? "P" : "F").insert();
        pageGroup(1000 + first, first % 2 ? 2 : 0);
        for (int second = 10; second < 13; ++second) {
            const std::string node = top + "." + std::to_string(second);
            inMenu(2000 + 100 * first + second, node).type(second % 2 ? "P" : "F").insert();
            pageGroup(2000 + 100 * first + second, 0);
            inMenu(20000 + 100 * first + second, node + ".01").insert();
            pageGroup(20000 + 100 * first + second, 1);
        }
    }
    EXPECT_EQ(items("22").size(), fewItems + 40 * 7);
    EXPECT_EQ(statementsFor("22"), few);
    EXPECT_LE(few, 12);
}

}  // namespace
}  // namespace torvex::test
