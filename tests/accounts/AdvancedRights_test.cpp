#include "accounts/AdvancedRights.h"

#include <gtest/gtest.h>

#include "accounts/Actor.h"
#include "platform/Errors.h"
#include "support/RightsTest.h"

namespace torvex {
namespace {

class ActorAdvancedRightsTest : public test::RightsTest {
  protected:
    void SetUp() override {
        RightsTest::SetUp();
        if (HasFatalFailure()) return;
        emptyMenu();
        entry(501, 1, "g1");
        role(1);
        advancedRight(1, 501, "aa", "", true, false);
    }
    bool may(const Actor& actor, std::string_view flag, int advId, std::string_view site = {}) {
        return mayUseEntry(connection(), actor, flag, advId, site);
    }
    Actor annaNow() { return actorOf(host.context()); }
};
INSTANTIATE_TEST_SUITE_P(Engines, ActorAdvancedRightsTest, test::bothEngines(), test::engineName);

TEST_P(ActorAdvancedRightsTest, AnActorHasWhatItsRolesGive) {
    EXPECT_TRUE(may(annaNow(), "view", 501, "aa"));
    EXPECT_TRUE(may(annaNow(), "", 501, "aa"));
    EXPECT_FALSE(may(annaNow(), "edit", 501, "aa"));
    EXPECT_FALSE(may(annaNow(), "view", 501, "bb"));
    EXPECT_FALSE(may(annaNow(), "view", 501));
}

TEST_P(ActorAdvancedRightsTest, TheAdministratorMayUseEvenAnEntryThatIsNotThere) {
    Actor administrator = annaNow();
    administrator.username = "SA";
    EXPECT_TRUE(may(administrator, "edit", 501));
    EXPECT_TRUE(may(administrator, "edit", 999));
    EXPECT_FALSE(may(annaNow(), "edit", 999));
}

TEST_P(ActorAdvancedRightsTest, NobodyMayUseNothing) {
    EXPECT_FALSE(may(Actor(), "view", 501, "aa"));
}

}  // namespace
}  // namespace torvex
