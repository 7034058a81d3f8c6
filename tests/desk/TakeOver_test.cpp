#include <gmock/gmock.h>

#include "desk/desk.h"
#include "support/DoorTest.h"

namespace torvex::test {
namespace {

using testing::ElementsAre;

class TakeOverTest : public DoorTest {
  protected:
    void SetUp() override {
        DoorTest::SetUp();
        if (HasFatalFailure()) return;
        manager().login("anna", "Secret");
        set(anna, "currentSite", "aa.en");
        connection().execute("delete from TORVEX_AUDIT_TRAIL");
        host.log.lines.clear();
        comeFrom("10.0.0.2", "session-b");
    }
    int takeOver(const std::string& username, const std::string& password) {
        torvex::desk desk(host.context());
        desk.connect(connection());
        return desk.takeOver(username, password);
    }
};
INSTANTIATE_TEST_SUITE_P(Engines, TakeOverTest, bothEngines(), engineName);

TEST_P(TakeOverTest, ALoginThatIsHeldElsewhereIsTaken) {
    EXPECT_EQ(manager().login("anna", "Secret"), 3);
    EXPECT_EQ(takeOver("ANNA", " secret "), 0);
    EXPECT_EQ(holder(anna), "session-b|10.0.0.2|||20260615|12:00");
    EXPECT_EQ(host.session.text("torvex_username"), "anna");
    EXPECT_TRUE(host.session.takeTokenRequest());
    EXPECT_TRUE(nextRequest().getLoginState(0));
}

TEST_P(TakeOverTest, TheOtherSessionHasLostTheLogin) {
    takeOver("anna", "Secret");
    comeFrom("10.0.0.1", "session-a");
    host.session.set("torvex_loginId", anna);
    host.session.set("torvex_username", "anna");
    EXPECT_FALSE(nextRequest().getLoginState(0));
}

TEST_P(TakeOverTest, ItStandsInTheTrailAsALogin) {
    takeOver("anna", "Secret");
    EXPECT_THAT(auditTrail(), ElementsAre("7|Anna Author|0||0|login|Anna Author - IP 10.0.0.2"));
}

TEST_P(TakeOverTest, AWrongPasswordTakesNothing) {
    const std::string before = holder(anna);
    EXPECT_EQ(takeOver("anna", "wrong"), 1);
    EXPECT_EQ(takeOver("nobody", "Secret"), 1);
    EXPECT_EQ(takeOver("anna", ""), 1);
    EXPECT_EQ(takeOver("", ""), 1);
    EXPECT_EQ(holder(anna), before);
    EXPECT_FALSE(host.session.takeTokenRequest());
    EXPECT_EQ(host.session.text("torvex_username"), "");
    EXPECT_EQ(auditTrail().size(), 4U);
    EXPECT_EQ(host.log.lines.size(), 3U);
}

/// Unlike `login`, it verifies nothing anew without a password: what the session holds may be lost.
TEST_P(TakeOverTest, WithoutAPasswordALostLoginStaysLost) {
    comeFrom("10.0.0.1", "session-a");
    host.session.set("torvex_loginId", anna);
    host.session.set("torvex_username", "anna");
    host.session.set("torvex_password", encodePassword("Secret"));
    set(anna, "sessionId", "session-b");
    EXPECT_EQ(takeOver("", ""), 1);
    EXPECT_EQ(cell("select sessionId from TORVEX_LOGINS where loginId = 7"), "session-b");
}

TEST_P(TakeOverTest, ALoginThatIsNotValidTodayIsNotTaken) {
    const std::string before = holder(anna);
    set(anna, "validTo", "20260614");
    EXPECT_EQ(takeOver("anna", "Secret"), 1);
    EXPECT_EQ(holder(anna), before);
}

TEST_P(TakeOverTest, TheAddressFilterHolds) {
    const std::string before = holder(anna);
    host.application.set("torvex_access_IP_filter", "10.0.0.1");
    EXPECT_EQ(takeOver("anna", "Secret"), 2);
    EXPECT_EQ(holder(anna), before);
}

TEST_P(TakeOverTest, AFreeLoginIsSimplyLoggedIn) {
    set(anna, "sessionId", "");
    EXPECT_EQ(takeOver("anna", "Secret"), 0);
}

TEST_P(TakeOverTest, FailuresNameTheOperation) {
    drop("TORVEX_LOGINS");
    EXPECT_THAT([&] { takeOver("anna", "Secret"); },
                testing::ThrowsMessage<Error>(testing::HasSubstr("takeOver !")));
}

}  // namespace
}  // namespace torvex::test
