#include "records/GroupNames.h"

#include "support/SiteTest.h"

namespace torvex::test {
namespace {

class GroupNamesTest : public SiteTest {};
INSTANTIATE_TEST_SUITE_P(Engines, GroupNamesTest, bothEngines(), engineName);

TEST_P(GroupNamesTest, AGroupIsFoundByItsNameInAnyCase) {
    group(5, "Équipe d'été");
    EXPECT_EQ(getGroupIdByName(connection(), "Équipe d'été"), 5);
    EXPECT_EQ(getGroupIdByName(connection(), "éQUIPE D'ÉTÉ"), 5);
    EXPECT_EQ(getGroupIdByName(connection(), "EVERYBODY"), 1);
    EXPECT_EQ(getGroupIdByName(connection(), "inherited"), 0);
}

TEST_P(GroupNamesTest, TheLowestOfSeveralIsTaken) {
    group(9, "Staff");
    group(5, "staff");
    EXPECT_EQ(getGroupIdByName(connection(), "STAFF"), 5);
}

TEST_P(GroupNamesTest, AnUnknownNameIsNoGroup) {
    for (const auto* name : {"", " ", "nobody", "every%", "' or 1=1 --", "<b>"}) {
        EXPECT_EQ(getGroupIdByName(connection(), name), -1) << name;
    }
}

TEST_P(GroupNamesTest, AFailureNamesTheLookup) {
    drop("TORVEX_USERGROUPS");
    EXPECT_TRUE(errorOf([this] {
                    getGroupIdByName(connection(), "Staff");
                }).starts_with(chain({"getGroupIdByName !"})));
}

}  // namespace
}  // namespace torvex::test
