#include "accounts/EditRights.h"

#include <gtest/gtest.h>

#include "accounts/Actor.h"
#include "support/RightsTest.h"

namespace torvex {
namespace {

class ActorEditRightsTest : public test::RightsTest {
  protected:
    Actor annaNow() { return actorOf(host.context()); }
    Actor administrator() {
        Actor actor = annaNow();
        actor.username = "Sa";
        return actor;
    }
};
INSTANTIATE_TEST_SUITE_P(Engines, ActorEditRightsTest, test::bothEngines(), test::engineName);

TEST(EditTasks, AreNamedLikeTheirColumnsInAnyCase) {
    EXPECT_EQ(editTaskOf("ONOFF"), EditTask::OnOff);
    EXPECT_EQ(editTaskOf("approve"), EditTask::Approve);
    EXPECT_EQ(editTaskOf("delete"), std::nullopt);
    EXPECT_EQ(editTaskOf(""), std::nullopt);
    EXPECT_EQ(wordOf(EditTask::OnOff), "onOff");
}

TEST(EditTasks, AreFlagsInTheirOrder) {
    EditRights rights;
    EXPECT_EQ(rights.text(), "00000");
    rights.give(EditTask::Publish);
    EXPECT_EQ(rights.text(), "00100");
    EXPECT_EQ(EditRights::all().text(), "11111");
}

TEST_P(ActorEditRightsTest, AScopeReachesItsBranchAndNotTheTree) {
    role(1);
    editRights(1, "aa", "en", {"edit"}, "aa.en.02");
    EXPECT_TRUE(mayEditPage(connection(), annaNow(), EditTask::Edit, "aa.en.02.01"));
    EXPECT_FALSE(mayEditPage(connection(), annaNow(), EditTask::Edit, "aa.en.03"));
    EXPECT_FALSE(mayEditPage(connection(), annaNow(), EditTask::Publish, "aa.en.02"));
    EXPECT_FALSE(mayEditTree(connection(), annaNow(), EditTask::Edit, "aa", "en"));
    EXPECT_TRUE(mayEditSomewhere(connection(), annaNow(), EditTask::Edit, "aa", "en"));
}

TEST_P(ActorEditRightsTest, APageCountsWhereItIs) {
    role(1);
    editRights(1, "aa", "en", {"edit"});
    EXPECT_TRUE(mayEditPage(connection(), annaNow(), EditTask::Edit, "aa.en.03"));
    EXPECT_FALSE(mayEditPage(connection(), annaNow(), EditTask::Edit, "aa.de.03"));
    EXPECT_FALSE(mayEditPage(connection(), annaNow(), EditTask::Edit, ""));
}

TEST_P(ActorEditRightsTest, TheAdministratorNeedsNoRowButAWebsiteThatExists) {
    EXPECT_TRUE(mayEditPage(connection(), administrator(), EditTask::Move, "aa.en.03"));
    EXPECT_TRUE(mayEditTree(connection(), administrator(), EditTask::Move, "aa", "en"));
    EXPECT_TRUE(mayEditSomewhere(connection(), administrator(), EditTask::Move, "aa", "en"));
    EXPECT_FALSE(mayEditSomewhere(connection(), administrator(), EditTask::Move, "zz", "en"));
    EXPECT_FALSE(mayEditSomewhere(connection(), administrator(), EditTask::Move, "aa", "zz"));
}

TEST_P(ActorEditRightsTest, NobodyHasNone) {
    role(1);
    editRights(1, "aa", "en", {"edit"});
    EXPECT_FALSE(mayEditPage(connection(), Actor(), EditTask::Edit, "aa.en.03"));
    EXPECT_FALSE(mayEditSomewhere(connection(), Actor(), EditTask::Edit, "aa", "en"));
}

}  // namespace
}  // namespace torvex
