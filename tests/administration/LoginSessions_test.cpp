#include <gmock/gmock.h>

#include "support/DoorTest.h"

namespace torvex::test {
namespace {

using testing::ElementsAre;
using testing::IsEmpty;
using testing::StartsWith;

constexpr const char* denied = "||0||0|Access denied|Unauthorized access - IP 10.0.0.1";
constexpr const char* free = "|||||";

class LoginSessions : public DoorTest {
  protected:
    void SetUp() override {
        DoorTest::SetUp();
        if (HasFatalFailure()) return;
        manager().login("anna", "Secret");
        connection().execute("delete from TORVEX_AUDIT_TRAIL");
        set(anna, "currentSite", "aa.en");
        set(anna, "siteLock", "aa.en");
        nextRequest();
    }
};
INSTANTIATE_TEST_SUITE_P(Engines, LoginSessions, bothEngines(), engineName);

// ---- logout ----

TEST_P(LoginSessions, LogoutFreesTheRowAndEndsTheSession) {
    manager().logout();
    EXPECT_EQ(holder(anna), "|10.0.0.1|||20260615|12:00");
    EXPECT_TRUE(host.session.isAbandoned());
    EXPECT_THAT(auditTrail(), ElementsAre("7|Anna Author|0||0|logout|Anna Author - IP 10.0.0.1"));
}

TEST_P(LoginSessions, LogoutsLeaveALineInTheOperatorsLog) {
    author(8, "bob", "x", "Bob Builder", {{"sessionId", "session-b"}});
    manager().endLogin(8);
    manager().logout();
    EXPECT_THAT(host.log.lines, ElementsAre("forced logout of \"Bob Builder\" by \"Anna Author\"",
                                            "logout from 10.0.0.1: author \"anna\""));
}

TEST_P(LoginSessions, LogoutAfterATakeoverLeavesTheNewHolder) {
    set(anna, "sessionId", "session-b");
    manager().logout();
    EXPECT_EQ(holder(anna), "session-b|10.0.0.1|aa.en|aa.en|20260615|12:00");
    EXPECT_TRUE(host.session.isAbandoned());
    EXPECT_THAT(auditTrail(), ElementsAre("7|Anna Author|0||0|logout|Anna Author - IP 10.0.0.1"));
}

TEST_P(LoginSessions, LogoutNamesTheAddressThatItComesFrom) {
    host.application.set("torvex_access_IP_filter", "10.0.0.0-10.0.0.9");
    moveTo(" 10.0.0.2 ").logout();
    EXPECT_THAT(auditTrail(), ElementsAre("7|Anna Author|0||0|logout|Anna Author - IP 10.0.0.2"));
}

TEST_P(LoginSessions, LogoutOfANameWithAQuoteFreesIt) {
    author(8, "o'neil", "x", "O'Neil");
    manager().login("o'neil", "x");
    nextRequest().logout();
    EXPECT_EQ(cell("select sessionId from TORVEX_LOGINS where loginId = 8"), "");
}

TEST_P(LoginSessions, LogoutOfNobodyIsDenied) {
    comeFrom("10.0.0.1", "session-b").logout();
    EXPECT_EQ(holder(anna), "session-a|10.0.0.1|aa.en|aa.en|20260615|12:00");
    EXPECT_TRUE(host.session.isAbandoned());
    EXPECT_THAT(auditTrail(), ElementsAre(denied));
}

TEST_P(LoginSessions, LogoutThatFailsIsReportedAndTheSessionGoesOn) {
    refuseChangesOf(anna);
    EXPECT_THAT(errorOf([&] { manager().logout(); }), StartsWith(chain({"logout !"})));
    EXPECT_FALSE(host.session.isAbandoned());
    EXPECT_THAT(auditTrail(), IsEmpty());
}

// ---- endLogin ----

TEST_P(LoginSessions, EndLoginFreesTheRowAndTellsOfItTwice) {
    author(8, "bob", "x", "Bob Builder",
           {{"sessionId", "session-b"}, {"currentSite", "aa.en"}, {"siteLock", "aa.en"}});
    manager().endLogin(8);
    EXPECT_EQ(holder(8), free);
    EXPECT_EQ(holder(anna), "session-a|10.0.0.1|aa.en|aa.en|20260615|12:00");
    EXPECT_THAT(auditTrail(),
                ElementsAre("8|Bob Builder|0||0|forced logout|Bob Builder logged out by Anna Author",
                            "7|Anna Author|0||0|forced logout|Forced end of session of Bob Builder"));
    EXPECT_FALSE(host.session.isAbandoned());
}

TEST_P(LoginSessions, EndLoginTakesTheActorsNameFromTheRow) {
    author(8, "bob", "x", "Bob");
    set(anna, "name", "Anna Married");
    manager().endLogin(8);
    EXPECT_THAT(auditTrail(), ElementsAre("8|Bob|0||0|forced logout|Bob logged out by Anna Married",
                                          "7|Anna Author|0||0|forced logout|Forced end of session of Bob"));
}

TEST_P(LoginSessions, EndLoginOfNobodyToldOfInTheWordForThem) {
    word(2560, "gone");
    manager().endLogin(99);
    EXPECT_THAT(auditTrail(),
                ElementsAre("99|[gone]|0||0|forced logout|[gone] logged out by Anna Author",
                            "7|Anna Author|0||0|forced logout|Forced end of session of [gone]"));
}

TEST_P(LoginSessions, EndLoginByNobodyDoesNothing) {
    comeFrom("10.0.0.2", "session-b").endLogin(anna);
    EXPECT_EQ(holder(anna), "session-a|10.0.0.1|aa.en|aa.en|20260615|12:00");
    EXPECT_THAT(auditTrail(), IsEmpty());
}

TEST_P(LoginSessions, TheEndedSessionNotices) {
    EXPECT_TRUE(manager().getLoginState());
    manager().endLogin(anna);
    EXPECT_FALSE(manager().getLoginState());
    EXPECT_EQ(kept(), "7|anna|" + encodePassword("Secret") + "|Anna Author");
}

TEST_P(LoginSessions, EndLoginThatFailsIsReported) {
    refuseChangesOf(anna);
    EXPECT_THAT(errorOf([&] { manager().endLogin(anna); }), StartsWith(chain({"endLogin !"})));
    EXPECT_EQ(holder(anna), "session-a|10.0.0.1|aa.en|aa.en|20260615|12:00");
    EXPECT_THAT(auditTrail(), IsEmpty());
}

// ---- getLoginState ----

TEST_P(LoginSessions, ALoginIsOnlineWhileItsRowIsHeld) {
    author(8, "bob", "x", "Bob");
    author(9, "cleo", "x", "Cleo", {{"sessionId", "  "}});
    author(10, "dora", "x", "Dora", {{"sessionId", Value()}});
    EXPECT_TRUE(manager().getLoginState(anna));
    for (const int loginId : {8, 9, 10, 99, -1}) EXPECT_FALSE(manager().getLoginState(loginId)) << loginId;
}

TEST_P(LoginSessions, AnybodyMaySeeWhoIsOnline) {
    EXPECT_TRUE(comeFrom("10.0.0.2", "session-b").getLoginState(anna));
}

TEST_P(LoginSessions, TheSessionOwnsItsLoginWhileTheRowNamesIt) {
    EXPECT_TRUE(manager().getLoginState());
    set(anna, "sessionId", "session-b");
    EXPECT_FALSE(manager().getLoginState());
    set(anna, "sessionId", "");
    EXPECT_FALSE(manager().getLoginState());
    connection().execute("delete from TORVEX_LOGINS");
    EXPECT_FALSE(manager().getLoginState());
}

TEST_P(LoginSessions, AnEmptySessionOwnsNothing) {
    EXPECT_FALSE(comeFrom("10.0.0.1", "session-b").getLoginState());
    host.session.set("torvex_username", "");
    EXPECT_FALSE(manager().getLoginState(0));
}

TEST_P(LoginSessions, SaOwnsItsLoginInEverySession) {
    comeFrom("10.0.0.9", "session-b");
    host.session.set("torvex_username", "SA");
    EXPECT_TRUE(manager().getLoginState());
}

TEST_P(LoginSessions, ANewPasswordEndsNoSession) {
    EXPECT_EQ(manager().saveLogin(21, anna, "anna", "Another", "Anna Author", ""), "7");
    EXPECT_EQ(stored(anna), encodePassword("Another"));
    EXPECT_EQ(holder(anna), "session-a|10.0.0.1|aa.en|aa.en|20260615|12:00");
    EXPECT_TRUE(nextRequest().getLoginState());
}

TEST_P(LoginSessions, NeitherAnEndNorANewPasswordEndsASessionOfSa) {
    author(1, "sa", "Secret", "System Administrator");
    ASSERT_EQ(comeFrom("10.0.0.8", "session-s").login("sa", "Secret"), 0);
    nextRequest().endLogin(1);
    EXPECT_EQ(cell("select sessionId from TORVEX_LOGINS where loginId = 1"), "");
    EXPECT_TRUE(nextRequest().getLoginState());
    EXPECT_EQ(nextRequest().saveLogin(21, 1, "sa", "Another", "System Administrator", ""), "1");
    EXPECT_TRUE(nextRequest().getLoginState());
    EXPECT_EQ(manager().loginId(), 1);
    EXPECT_FALSE(host.session.isAbandoned());
    EXPECT_EQ(comeFrom("10.0.0.9", "session-t").login("sa", "Secret"), 1);
    EXPECT_EQ(nextRequest().login("sa", "Another"), 0);
    EXPECT_EQ(cell("select sessionId from TORVEX_LOGINS where loginId = 1"), "session-t");
}

TEST_P(LoginSessions, WhatCantBeFoundOutIsFalse) {
    drop("TORVEX_LOGINS");
    EXPECT_FALSE(manager().getLoginState(anna));
    EXPECT_FALSE(manager().getLoginState());
    cManager unconnected(host.context());
    EXPECT_FALSE(unconnected.getLoginState());
}

}  // namespace
}  // namespace torvex::test
