#include "support/ManagerTest.h"

namespace torvex::test {
namespace {

class PageLookupsTest : public ManagerTest {
  protected:
    void designGroup(PageId pageId, int groupId) {
        row("TORVEX_PAGES_GROUPS_DESIGN", {{"pageId", pageId}, {"groupId", groupId}});
    }
    void setDesign(PageId pageId, const std::string& assignments) {
        connection().execute("update TORVEX_PAGES_DESIGN set " + assignments + " where pageId = ?", {pageId});
    }
    void hits(const std::string& nodeId, const std::string& day, int hits) {
        row("TORVEX_LOGGING", {{"nodeId", nodeId}, {"yyyymmdd", day}, {"hits", hits}, {"uniquehits", 1}});
    }
    /// "name:mark" of each group in the list's order.
    static std::string marks(const Value& list) {
        if (list.isEmpty()) return "none";
        std::string result;
        for (std::size_t row = 0; row < list.grid().rows(); ++row) {
            result += (row == 0 ? "" : " ") + list.grid().at(1, row).toText() + ":" +
                      list.grid().at(2, row).toText();
        }
        return result;
    }
};
INSTANTIATE_TEST_SUITE_P(Engines, PageLookupsTest, bothEngines(), engineName);

// Type and statuses

TEST_P(PageLookupsTest, ANewPageGivesItsTypeAndNoughts) {
    page("aa.en.01").id(12).insertInDesignOnly();
    setDesign(12, "editStatus = 'N'");
    EXPECT_EQ(manager().getPageParameters("12"), "PN0000");
    EXPECT_EQ(manager().getPageParameters(" AA.EN.01 "), "PN0000");
}

TEST_P(PageLookupsTest, EachStatusHasItsPlace) {
    page("aa.en.01").id(12).type("F").insertInDesignOnly();
    setDesign(12, "editStatus = 'M', deleteStatus = 1");
    EXPECT_EQ(manager().getPageParameters("12"), "FM0100");
    setDesign(12, "deleteStatus = 0, approveStatus = 1");
    EXPECT_EQ(manager().getPageParameters("12"), "FM0010");
}

TEST_P(PageLookupsTest, APageIsHeldOnlyByAnotherLogin) {
    page("aa.en.01").id(12).insertInDesignOnly();
    setDesign(12, "editStatus = 'P', lockStatus = 1, lockedBy = 7");
    EXPECT_EQ(manager().getPageParameters("12"), "PP1000");
    setDesign(12, "lockedBy = 8");
    EXPECT_EQ(manager().getPageParameters("12"), "PP1001");
    setDesign(12, "lockStatus = 0");
    EXPECT_EQ(manager().getPageParameters("12"), "PP0000");
    setDesign(12, "lockStatus = 1, lockedBy = 7");
    EXPECT_EQ(actAsNobody().getPageParameters("12"), "PP1001");
}

TEST_P(PageLookupsTest, StatusesThatAreNullAreNought) {
    page("aa.en.01").id(12).insertInDesignOnly();
    setDesign(12, "editStatus = 'N', lockStatus = null, deleteStatus = null, approveStatus = null");
    EXPECT_EQ(manager().getPageParameters("12"), "PN0000");
}

TEST_P(PageLookupsTest, WhatIsNotInTheDesignHasNoParameters) {
    page("aa.en.01").id(12).insertInLiveOnly();
    page("aa").id(13).insertInDesignOnly();
    EXPECT_EQ(manager().getPageParameters("12"), "");
    EXPECT_EQ(manager().getPageParameters("aa.en.01"), "");
    EXPECT_EQ(manager().getPageParameters("13"), "");
    for (const std::string& bad : badIdentifiers()) {
        EXPECT_EQ(manager().getPageParameters(bad), "") << bad.substr(0, 40);
    }
}

// Groups

TEST_P(PageLookupsTest, AllGroupsAreListedByName) {
    group(5, "Members");
    group(3, "Board");
    page("aa.en.01").id(12).insert();
    const Value list = manager().getPageGroups("12");
    ASSERT_TRUE(list.isGrid());
    EXPECT_EQ(list.grid().columns(), 4U);
    EXPECT_EQ(marks(list), "Board:0 everybody:0 inherited:0 Members:0");
    EXPECT_EQ(list.grid().at(0, 0), Value(3));
    EXPECT_EQ(list.grid().at(2, 0), Value(0));
    EXPECT_TRUE(list.grid().at(3, 0).isEmpty());
}

TEST_P(PageLookupsTest, TheGroupsOfThePageAreMarked) {
    group(5, "Members");
    group(3, "Board");
    page("aa.en.01").id(12).insert();
    pageGroup(12, 5);
    pageGroup(12, 0);
    designGroup(12, 3);
    EXPECT_EQ(marks(manager().getPageGroups("12")), "Board:0 everybody:0 inherited:1 Members:1");
    EXPECT_EQ(marks(manager().getPageGroups("aa.en.01", "D")), "Board:1 everybody:0 inherited:0 Members:0");
    EXPECT_EQ(marks(manager().getPageGroups("12", "d")), "Board:1 everybody:0 inherited:0 Members:0");
}

TEST_P(PageLookupsTest, AGroupIsNotMarkedForAnothersDigits) {
    group(5, "Five");
    group(15, "Fifteen");
    group(151, "More");
    page("aa.en.01").id(12).insert();
    pageGroup(12, 15);
    EXPECT_EQ(marks(manager().getPageGroups("12")), "everybody:0 Fifteen:1 Five:0 inherited:0 More:0");
}

TEST_P(PageLookupsTest, WithoutAPageNothingIsMarked) {
    pageGroup(0, 1);
    pageGroup(-1, 1);
    for (const std::string& bad : badIdentifiers()) {
        EXPECT_EQ(marks(manager().getPageGroups(bad)), "everybody:0 inherited:0") << bad.substr(0, 40);
    }
}

TEST_P(PageLookupsTest, WithoutAnyGroupTheListIsEmpty) {
    connection().execute("delete from TORVEX_USERGROUPS");
    EXPECT_TRUE(manager().getPageGroups("12").isEmpty());
}

// The login page

TEST_P(PageLookupsTest, ASecuredPageHasItsLoginPage) {
    group(5, "Members");
    page("aa.en").id(10).insert();
    page("aa.en.01").id(12).set("loginPage", 77).insert();
    pageGroup(12, 5);
    EXPECT_EQ(manager().getLoginPage("12"), 77);
    EXPECT_EQ(manager().getLoginPage(" AA.EN.01 "), 77);
}

TEST_P(PageLookupsTest, TheModeDecidesOnGroupsAndLoginPage) {
    group(5, "Members");
    page("aa.en.01").id(12).set("loginPage", 77).insertInDesignOnly();
    page("aa.en.01").id(12).set("loginPage", 78).insertInLiveOnly();
    pageGroup(12, 5);
    EXPECT_EQ(manager().getLoginPage("12"), 78);
    EXPECT_EQ(manager().getLoginPage("12", "D"), -1);
    designGroup(12, 5);
    EXPECT_EQ(manager().getLoginPage("12", "d"), 77);
    EXPECT_EQ(manager().getLoginPage("12", "x"), 78);
}

TEST_P(PageLookupsTest, APageWithoutGroupsIsOpen) {
    page("aa.en.01").id(12).set("loginPage", 77).insert();
    EXPECT_EQ(manager().getLoginPage("12"), -1);
}

TEST_P(PageLookupsTest, APageThatEverybodyHasIsOpen) {
    group(5, "Members");
    page("aa.en.01").id(12).set("loginPage", 77).insert();
    pageGroup(12, 5);
    pageGroup(12, 1);
    EXPECT_EQ(manager().getLoginPage("12"), -1);
    connection().execute("update TORVEX_USERGROUPS set name = 'Not EVERYBODY' where groupId = 1");
    EXPECT_EQ(manager().getLoginPage("12"), -1);
}

TEST_P(PageLookupsTest, InheritedGroupsAreLookedForAbove) {
    group(5, "Members");
    page("aa.en").id(10).insert();
    page("aa.en.01").id(11).set("loginPage", 77).insert();
    page("aa.en.01.01").id(12).set("loginPage", 88).insert();
    page("aa.en.01.01.01").id(13).insert();
    pageGroup(11, 5);
    pageGroup(12, 0);
    pageGroup(13, 0);
    EXPECT_EQ(manager().getLoginPage("13"), 77);
    EXPECT_EQ(manager().getLoginPage("12"), 77);
}

TEST_P(PageLookupsTest, AGroupWhoseNameHoldsInheritedIsLookedForAboveToo) {
    group(5, "Members");
    group(6, "Not INHERITED");
    page("aa.en").id(10).set("loginPage", 77).insert();
    page("aa.en.01").id(11).set("loginPage", 88).insert();
    pageGroup(10, 5);
    pageGroup(11, 6);
    EXPECT_EQ(manager().getLoginPage("11"), 77);
}

TEST_P(PageLookupsTest, InheritanceThatEndsAtTheRootIsOpen) {
    page("aa.en").id(10).set("loginPage", 77).insert();
    page("aa.en.01").id(11).set("loginPage", 77).insert();
    pageGroup(10, 0);
    pageGroup(11, 0);
    EXPECT_EQ(manager().getLoginPage("11"), -1);
    EXPECT_EQ(manager().getLoginPage("10"), -1);
}

TEST_P(PageLookupsTest, InheritanceFromAPageWithoutGroupsOrAPageThatIsGoneIsOpen) {
    page("aa.en").id(10).set("loginPage", 77).insert();
    page("aa.en.01").id(11).insert();
    page("bb.en.01").id(12).insert();
    pageGroup(11, 0);
    pageGroup(12, 0);
    EXPECT_EQ(manager().getLoginPage("11"), -1);
    EXPECT_EQ(manager().getLoginPage("12"), -1);
}

TEST_P(PageLookupsTest, ASecuredPageWithoutALoginPageHasNone) {
    group(5, "Members");
    page("aa.en.01").id(12).set("loginPage", {}).insert();
    pageGroup(12, 5);
    EXPECT_EQ(manager().getLoginPage("12"), -1);
    page("aa.en.02").id(13).insertInDesignOnly();
    pageGroup(13, 5);
    EXPECT_EQ(manager().getLoginPage("13"), -1);
}

TEST_P(PageLookupsTest, TheExtranetNeedNotBeOn) {
    group(5, "Members");
    page("aa.en.01").id(12).set("loginPage", 77).insert();
    pageGroup(12, 5);
    host.application.set("torvex_extranet", false);
    EXPECT_EQ(manager().getLoginPage("12"), 77);
}

TEST_P(PageLookupsTest, WhatIsNoPageHasNoLoginPage) {
    page("aa").id(13).set("loginPage", 77).insert();
    EXPECT_EQ(manager().getLoginPage("13"), -1);
    for (const std::string& bad : badIdentifiers()) {
        EXPECT_EQ(manager().getLoginPage(bad), -1) << bad.substr(0, 40);
    }
}

// Views

TEST_P(PageLookupsTest, TheViewsOfAPageAreThoseOfAllDays) {
    page("aa.en.01").id(12).insert();
    hits("aa.en.01", "20260101", 3);
    hits("aa.en.01", "20260102", 4);
    hits("aa.en.01.01", "20260102", 100);
    EXPECT_EQ(manager().getNumberOfViews("12"), 7);
    EXPECT_EQ(manager().getNumberOfViews(" AA.EN.01 "), 7);
}

TEST_P(PageLookupsTest, TheViewsOfAFolderAreThoseOfAllUnderIt) {
    page("aa.en.01").id(12).type("f").insert();
    hits("aa.en.01", "20260101", 1);
    hits("aa.en.01.01", "20260101", 2);
    hits("aa.en.01.02.03", "20260102", 4);
    hits("aa.en.02", "20260102", 100);
    hits("aa.en.0", "20260102", 100);
    EXPECT_EQ(manager().getNumberOfViews("12"), 7);
}

TEST_P(PageLookupsTest, AFolderOfTheDesignAloneIsCountedAsAPage) {
    page("aa.en.01").id(12).type("F").insertInDesignOnly();
    hits("aa.en.01", "20260101", 1);
    hits("aa.en.01.01", "20260101", 2);
    EXPECT_EQ(manager().getNumberOfViews("12"), 1);
}

TEST_P(PageLookupsTest, APageThatIsGoneKeepsItsViews) {
    hits("aa.en.01", "20260101", 3);
    EXPECT_EQ(manager().getNumberOfViews("aa.en.01"), 3);
}

TEST_P(PageLookupsTest, WithoutViewsTheNumberIsNought) {
    page("aa.en.01").id(12).insert();
    page("aa.en.02").id(13).type("F").insert();
    hits("aa", "20260101", 3);
    EXPECT_EQ(manager().getNumberOfViews("12"), 0);
    EXPECT_EQ(manager().getNumberOfViews("13"), 0);
    EXPECT_EQ(manager().getNumberOfViews("aa"), 0);
    for (const std::string& bad : badIdentifiers()) {
        EXPECT_EQ(manager().getNumberOfViews(bad), 0) << bad.substr(0, 40);
    }
}

TEST_P(PageLookupsTest, UrlencodeLeavesTheShapeOfAQuery) {
    EXPECT_EQ(manager().urlencode("a=1&b=c d"), "a=1&b=c+d");
    EXPECT_EQ(manager().urlencode("x=\xC3\xA9/?"), "x=%C3%A9%2F%3F");
    EXPECT_EQ(manager().urlencode("a=50%25"), "a=50%2525");
    EXPECT_EQ(manager().urlencode(""), "");
}

TEST_P(PageLookupsTest, AFailureNamesTheOperation) {
    page("aa.en.01").id(12).insert();
    drop("TORVEX_LOGGING");
    EXPECT_TRUE(
        errorOf([&] { manager().getNumberOfViews("12"); }).starts_with(chain({"getNumberOfViews !"})));
    drop("TORVEX_USERGROUPS");
    EXPECT_TRUE(errorOf([&] { manager().getPageGroups("12"); }).starts_with(chain({"getPageGroups !"})));
    EXPECT_TRUE(errorOf([&] {
                    manager().getLoginPage("12");
                }).starts_with(chain({"getLoginPage !", "getPageGroupNames !"})));
    drop("TORVEX_PAGES_DESIGN");
    EXPECT_TRUE(
        errorOf([&] { manager().getPageParameters("12"); }).starts_with(chain({"getPageParameters !"})));
}

}  // namespace
}  // namespace torvex::test
