#include "accounts/EditReach.h"

#include <gmock/gmock.h>

#include "accounts/Actor.h"
#include "support/RightsTest.h"

namespace torvex::test {
namespace {

using testing::ElementsAre;

class EditReachTest : public RightsTest {
  protected:
    EditReach reach(std::initializer_list<EditTask> tasks) {
        const std::vector<EditTask> wanted(tasks);
        return editReachOf(connection(), actorOf(host.context()), wanted);
    }
};
INSTANTIATE_TEST_SUITE_P(Engines, EditReachTest, bothEngines(), engineName);

TEST_P(EditReachTest, WhoHasNoRoleReachesNothing) {
    EXPECT_TRUE(reach({EditTask::Edit}).isNowhere());
    actAsNobody();
    EXPECT_TRUE(reach({EditTask::Edit}).isNowhere());
}

TEST_P(EditReachTest, TheAdministratorReachesEverything) {
    actAsSa();
    EXPECT_TRUE(reach({EditTask::Edit}).covers("zz.yy.01"));
}

TEST_P(EditReachTest, WithoutAScopeItIsTheWholeTree) {
    role(3);
    editRights(3, "AA", "en", {"edit"});
    EXPECT_THAT(reach({EditTask::Edit}).nodes, ElementsAre("aa.en"));
    editRights(3, "bb", "en", {"edit"}, "all");
    EXPECT_THAT(reach({EditTask::Edit}).nodes, ElementsAre("aa.en", "bb.en"));
}

TEST_P(EditReachTest, AScopeReachesItsNodesAndWhatLiesUnderThem) {
    role(3);
    editRights(3, "aa", "en", {"edit"}, "AA.en.02, aa.en.01.05,bb.en.01,aa");
    const EditReach mine = reach({EditTask::Edit});
    EXPECT_THAT(mine.nodes, ElementsAre("aa.en.01.05", "aa.en.02"));
    EXPECT_TRUE(mine.covers("aa.en.02"));
    EXPECT_TRUE(mine.covers("AA.EN.02.01"));
    EXPECT_TRUE(mine.covers("aa.en.01.05.07"));
    EXPECT_FALSE(mine.covers("aa.en.01"));
    EXPECT_FALSE(mine.covers("aa.en"));
    EXPECT_FALSE(mine.covers("bb.en.01"));
    EXPECT_FALSE(mine.covers(""));
    EXPECT_FALSE(mine.covers(std::string(100 * 1024, 'a')));
}

TEST_P(EditReachTest, OnlyTheTasksAskedForCount) {
    role(3);
    editRights(3, "aa", "en", {"publish"}, "aa.en.01");
    role(4);
    editRights(4, "aa", "en", {"edit"}, "aa.en.02");
    EXPECT_THAT(reach({EditTask::Publish}).nodes, ElementsAre("aa.en.01"));
    EXPECT_THAT(reach({EditTask::Publish, EditTask::Edit}).nodes, ElementsAre("aa.en.01", "aa.en.02"));
    EXPECT_TRUE(reach({EditTask::Move}).isNowhere());
}

/// The two ways of asking must never part.
TEST_P(EditReachTest, ItCoversWhatMayBeEdited) {
    role(3);
    role(4);
    for (const auto* scope :
         {"", "ALL", "aa.en.01", " aa.en.01 , aa.en.02.03", "aa.en", "bb.de.01", "a", ","}) {
        connection().execute("delete from TORVEX_EDIT_RIGHTS");
        editRights(3, "aa", "en", {"edit"}, scope);
        editRights(4, "bb", "en", {"edit"}, "bb.en.07");
        const EditReach mine = reach({EditTask::Edit});
        const Actor actor = actorOf(host.context());
        for (const auto* node : {"aa.en", "aa.en.01", "aa.en.01.01", "aa.en.02", "aa.en.02.03", "aa.en.02.04",
                                 "aa.de", "aa.de.01", "bb.en", "bb.en.07.01", "bb.de.01"}) {
            EXPECT_EQ(mine.covers(node), mayEditPage(connection(), actor, EditTask::Edit, node))
                << "scope \"" << scope << "\", node " << node;
        }
    }
}

}  // namespace
}  // namespace torvex::test
