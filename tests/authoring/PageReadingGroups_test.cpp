// The groups of a page's record, and the login page that follows from them.

#include "support/ManagerTest.h"

namespace torvex::test {
namespace {

class PageReadingGroupsTest : public ManagerTest {
  protected:
    void designGroup(PageId pageId, int groupId) {
        row("TORVEX_PAGES_GROUPS_DESIGN", {{"pageId", pageId}, {"groupId", groupId}});
    }
};
INSTANTIATE_TEST_SUITE_P(Engines, PageReadingGroupsTest, bothEngines(), engineName);

TEST_P(PageReadingGroupsTest, TheGroupsOfThePageAreNamed) {
    group(5, "Members");
    group(3, "Board");
    page("aa.en.01").id(12).insert();
    pageGroup(12, 5);
    pageGroup(12, 3);
    designGroup(12, 1);
    manager().getPage("12");
    EXPECT_EQ(manager().pgGroups(), "Board, Members");
    manager().getPage("12", "D");
    EXPECT_EQ(manager().pgGroups(), "everybody");
}

TEST_P(PageReadingGroupsTest, GroupsWithoutANameOrThatAreGoneAreLeftOut) {
    group(5, "Members");
    group(6, "x");
    connection().execute("update TORVEX_USERGROUPS set name = null where groupId = 6");
    page("aa.en.01").id(12).insert();
    for (const int groupId : {5, 6, 77}) pageGroup(12, groupId);
    manager().getPage("12");
    EXPECT_EQ(manager().pgGroups(), "Members");
}

TEST_P(PageReadingGroupsTest, APageWithoutGroupsHasNoLoginPage) {
    page("aa.en.01").id(12).set("loginPage", 77).insert();
    manager().getPage("12");
    EXPECT_EQ(manager().pgGroups(), "");
    EXPECT_EQ(manager().pgLoginPage(), -1);
}

TEST_P(PageReadingGroupsTest, APageWithGroupsHasTheLoginPageOfItsRow) {
    page("aa.en.01").id(12).set("loginPage", 77).insertInDesignOnly();
    page("aa.en.01").id(12).set("loginPage", 78).insertInLiveOnly();
    // The names of the system groups are not their numbers.
    pageGroup(12, 1);
    designGroup(12, 0);
    manager().getPage("12");
    EXPECT_EQ(manager().pgLoginPage(), 78);
    manager().getPage("12", "D");
    EXPECT_EQ(manager().pgLoginPage(), 77);
}

TEST_P(PageReadingGroupsTest, AGroupThatIsNamedOneMeansNoLoginPage) {
    group(5, "1");
    page("aa.en.01").id(12).set("loginPage", 77).insert();
    pageGroup(12, 5);
    manager().getPage("12");
    EXPECT_EQ(manager().pgLoginPage(), -1);
    pageGroup(12, 1);
    manager().getPage("12");
    EXPECT_EQ(manager().pgGroups(), "1, everybody");
    EXPECT_EQ(manager().pgLoginPage(), 77);
}

TEST_P(PageReadingGroupsTest, AGroupThatIsNamedNoughtLooksInTheDesignInBothModes) {
    group(5, "0");
    group(6, "Members");
    page("aa.en.01").id(12).set("loginPage", 77).insertInDesignOnly();
    page("aa.en.01").id(12).set("loginPage", 78).insertInLiveOnly();
    pageGroup(12, 5);
    manager().getPage("12");
    EXPECT_EQ(manager().pgLoginPage(), -1) << "the design has no groups, so it is open";
    designGroup(12, 5);
    manager().getPage("12");
    EXPECT_EQ(manager().pgLoginPage(), 77);
    manager().getPage("12", "D");
    EXPECT_EQ(manager().pgLoginPage(), 77);
}

}  // namespace
}  // namespace torvex::test
