#include "records/PageGroups.h"

#include "support/SiteTest.h"

namespace torvex::test {
namespace {

class PageGroupsTest : public SiteTest {};
INSTANTIATE_TEST_SUITE_P(Engines, PageGroupsTest, bothEngines(), engineName);

TEST_P(PageGroupsTest, TheNamesStandInTheirOrder) {
    group(5, "members");
    group(6, "Board");
    pageGroup(12, 5);
    pageGroup(12, 6);
    pageGroup(13, 1);
    EXPECT_EQ(pageGroupNames(connection(), 12, Twin::Live), "Board, members");
    EXPECT_EQ(pageGroupNames(connection(), 13, Twin::Live), "everybody");
    EXPECT_EQ(pageGroupNames(connection(), 14, Twin::Live), "");
}

TEST_P(PageGroupsTest, TheDesignHasItsOwn) {
    row("TORVEX_PAGES_GROUPS_DESIGN", {{"pageId", 12}, {"groupId", 0}});
    pageGroup(12, 1);
    EXPECT_EQ(pageGroupNames(connection(), 12, Twin::Design), "inherited");
}

}  // namespace
}  // namespace torvex::test
