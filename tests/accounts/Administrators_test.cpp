#include "accounts/Administrators.h"

#include "accounts/Actor.h"
#include "support/RightsTest.h"

namespace torvex::test {
namespace {

class AdministratorsTest : public RightsTest {
  protected:
    void SetUp() override {
        RightsTest::SetUp();
        if (HasFatalFailure()) return;
        role(3);
    }
    void allow(int entry, const std::string& site = "", bool edit = true) {
        advancedRight(3, entry, site, "", true, edit);
    }
    bool someone() { return someoneAdministers(connection(), host.clock.now()); }
    void set(const std::string& column, const std::string& value) {
        connection().execute("update TORVEX_LOGINS set " + column + " = ? where loginId = ?", {value, anna});
    }
};
INSTANTIATE_TEST_SUITE_P(Engines, AdministratorsTest, bothEngines(), engineName);

TEST_P(AdministratorsTest, WhoAdministersMayChangeBothLoginsAndRoles) {
    EXPECT_FALSE(someone());
    allow(21);
    EXPECT_FALSE(someone());
    allow(22);
    EXPECT_TRUE(someone());
}

TEST_P(AdministratorsTest, LookingOrOneSiteIsNotEnough) {
    allow(21);
    allow(22, "", false);
    allow(22, "aa");
    EXPECT_FALSE(someone());
}

TEST_P(AdministratorsTest, TheTwoMayComeFromTwoRoles) {
    allow(21);
    role(4);
    advancedRight(4, 22, "", "", false, true);
    EXPECT_TRUE(someone());
}

TEST_P(AdministratorsTest, TheSystemAdministratorProgramsAndExpiredLoginsDontCount) {
    allow(21);
    allow(22);
    set("kind", "program");
    EXPECT_FALSE(someone());
    set("kind", "");
    set("validTo", "20000101");
    EXPECT_FALSE(someone());
    set("validTo", "");
    set("validFrom", "29990101");
    EXPECT_FALSE(someone());
    set("validFrom", "");
    EXPECT_TRUE(someone());
    set("username", "SA");
    EXPECT_FALSE(someone());
}

TEST_P(AdministratorsTest, NobodyIsTakenWhoWasntThere) {
    const Actor actor{anna, "anna", "Anna Author", host.session.id(), host.clock.now()};
    const Actor administrator{sa, "sa", "System Administrator", host.session.id(), host.clock.now()};
    EXPECT_TRUE(tookLastAdministrator(connection(), actor, true));
    EXPECT_FALSE(tookLastAdministrator(connection(), actor, false));
    EXPECT_FALSE(tookLastAdministrator(connection(), administrator, true));
    allow(21);
    allow(22);
    EXPECT_FALSE(tookLastAdministrator(connection(), actor, true));
}

}  // namespace
}  // namespace torvex::test
