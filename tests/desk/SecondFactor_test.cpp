// Setting up a second factor, and logging in with it.

#include <gmock/gmock.h>

#include "support/SecondFactorTest.h"

namespace torvex::test {
namespace {

using testing::ElementsAre;
using testing::HasSubstr;
using testing::IsEmpty;
using testing::StartsWith;

class SecondFactorOfOneself : public SecondFactorTest {
  protected:
    void SetUp() override {
        SecondFactorTest::SetUp();
        if (HasFatalFailure()) return;
        manager().login("anna", "Secret");
        connection().execute("delete from TORVEX_AUDIT_TRAIL");
    }
    void begin() {
        const std::string address = desk().beginSecondFactor();
        const std::size_t from = address.find("secret=") + 7;
        secret = address.substr(from, address.find('&', from) - from);
    }
    /// "isOn|codesLeft|isDemanded"
    std::string state() {
        const Value grid = desk().getSecondFactor();
        return grid.grid().at(0, 0).toText() + "|" + grid.grid().at(2, 0).toText() + "|" +
               grid.grid().at(3, 0).toText();
    }
    void expectRefusal(const std::string& code, const std::string& answer) {
        EXPECT_EQ(answer, code);
        EXPECT_THAT(auditTrail(), IsEmpty());
    }
};
INSTANTIATE_TEST_SUITE_P(Engines, SecondFactorOfOneself, bothEngines(), engineName);

TEST_P(SecondFactorOfOneself, IsSetUpByACodeOfTheNewSecret) {
    host.request.setServerVariable("http_host", "www.site.test");
    EXPECT_EQ(state(), "0|0|0");
    EXPECT_THAT(desk().beginSecondFactor(),
                StartsWith("otpauth://totp/Torvex:anna%20%2D%20www%2Esite%2Etest"));
    begin();
    EXPECT_EQ(factorsAndCodes(), "0|0");
    const std::string codes = desk().confirmSecondFactor(" " + code() + " ");
    EXPECT_EQ(words(codes).size(), 10U);
    EXPECT_EQ(state(), "1|10|0");
    EXPECT_EQ(desk().getSecondFactor().grid().at(1, 0).toText(), "2026-06-15T12:00:00");
    EXPECT_EQ(secondFactorOf(connection(), ofLogin(anna))->secret, secret);
    EXPECT_THAT(auditTrail(),
                ElementsAre("7|Anna Author|0||0|save|Login \"Anna Author\" has a second factor"));
}

TEST_P(SecondFactorOfOneself, TheSessionThatSetItUpGoesOn) {
    begin();
    desk().confirmSecondFactor(code());
    EXPECT_TRUE(nextRequest().getLoginState(0));
    EXPECT_EQ(nextRequest().login(), 0);
}

TEST_P(SecondFactorOfOneself, AWrongCodeSetsNothingUp) {
    begin();
    expectRefusal("-1", desk().confirmSecondFactor(wrongCode()));
    expectRefusal("-1", desk().confirmSecondFactor(""));
    EXPECT_EQ(factorsAndCodes(), "0|0");
    EXPECT_EQ(words(desk().confirmSecondFactor(code())).size(), 10U);
}

TEST_P(SecondFactorOfOneself, WhatWasBegunCountsForTenMinutesAndForWhoBeganIt) {
    expectRefusal("-2", desk().confirmSecondFactor("123456"));
    begin();
    wait(601);
    expectRefusal("-2", desk().confirmSecondFactor(code()));
    begin();
    host.session.set("torvex_loginId", 8);
    expectRefusal("-2", desk().confirmSecondFactor(code()));
    EXPECT_EQ(factorsAndCodes(), "0|0");
}

TEST_P(SecondFactorOfOneself, WhoHasOneBeginsNoOther) {
    begin();
    const std::string begun = secret;
    secret = "MZXW6YTBOIMZXW6YTBOIMZXW6YTBOIAA";
    enrolled(anna);
    expectRefusal("-3", desk().beginSecondFactor());
    secret = begun;
    expectRefusal("-3", desk().confirmSecondFactor(code()));
    EXPECT_NE(secondFactorOf(connection(), ofLogin(anna))->secret, begun);
}

TEST_P(SecondFactorOfOneself, TheCodeThatConfirmedLogsNobodyIn) {
    begin();
    desk().confirmSecondFactor(code());
    comeFrom("10.0.0.1", "session-b");
    EXPECT_EQ(nextRequest().login("anna", "Secret"), 4);
    EXPECT_EQ(desk().proveSecond("anna", code()), 5);
}

TEST_P(SecondFactorOfOneself, IsDroppedByThePasswordOrAnyCode) {
    const auto drop = [&](const std::string& proof) { return desk().dropSecondFactor(" ANNA ", proof); };
    for (const bool byPaper : {false, true}) {
        const auto codes = enrolled(anna);
        EXPECT_EQ(drop(byPaper ? codes[3] : code()), "");
        EXPECT_EQ(factorsAndCodes(), "0|0");
    }
    enrolled(anna);
    EXPECT_EQ(drop(" secret "), "");
    EXPECT_EQ(factorsAndCodes(), "0|0");
    EXPECT_EQ(auditTrail().back(), "7|Anna Author|0||0|delete|Login \"Anna Author\" has no second factor");
    EXPECT_EQ(drop("Secret"), "-3");
}

TEST_P(SecondFactorOfOneself, IsNotDroppedByAnythingElse) {
    enrolled(anna);
    expectRefusal("-1", desk().dropSecondFactor("anna", wrongCode()));
    expectRefusal("-1", desk().dropSecondFactor("anna", ""));
    expectRefusal("-1", desk().dropSecondFactor("bert", "Secret"));
    EXPECT_EQ(factorsAndCodes(), "1|10");
}

TEST_P(SecondFactorOfOneself, IsNotDroppedWhileARoleDemandsIt) {
    const auto codes = enrolled(anna);
    demandOf(anna);
    EXPECT_EQ(state(), "1|10|1");
    expectRefusal("-2", desk().dropSecondFactor("anna", "Secret"));
    expectRefusal("-2", desk().dropSecondFactor("anna", codes[0]));
    EXPECT_EQ(factorsAndCodes(), "1|10");
}

TEST_P(SecondFactorOfOneself, NewCodesOnPaperTakeACodeOfTheTelephone) {
    const auto before = enrolled(anna);
    expectRefusal("-1", desk().renewRecoveryCodes("anna", before[0]));
    expectRefusal("-1", desk().renewRecoveryCodes("anna", wrongCode()));
    expectRefusal("-1", desk().renewRecoveryCodes("bert", code()));
    const auto codes = words(desk().renewRecoveryCodes("anna", code()));
    EXPECT_EQ(codes.size(), 10U);
    EXPECT_EQ(factorsAndCodes(), "1|10");
    EXPECT_THAT(auditTrail(),
                ElementsAre("7|Anna Author|0||0|save|Login \"Anna Author\" has new recovery codes"));
    EXPECT_EQ(desk().renewRecoveryCodes("anna", code()), "-1");
}

TEST_P(SecondFactorOfOneself, NobodyHasNone) {
    actAsNobody();
    EXPECT_EQ(desk().beginSecondFactor(), "-10");
    EXPECT_EQ(desk().confirmSecondFactor("123456"), "-10");
    EXPECT_EQ(desk().dropSecondFactor("anna", "Secret"), "-10");
    EXPECT_EQ(desk().renewRecoveryCodes("anna", "123456"), "-10");
    EXPECT_TRUE(desk().getSecondFactor().isEmpty());
}

TEST_P(SecondFactorOfOneself, WhatFailsChangesNothing) {
    begin();
    drop("TORVEX_RECOVERY_CODES");
    expectRefusal("-99", desk().confirmSecondFactor(code()));
    EXPECT_EQ(cell("select count(*) from TORVEX_SECOND_FACTORS"), "0");
}

// ---- Logging in ----

class LoginByCode : public SecondFactorTest {
  protected:
    void SetUp() override {
        SecondFactorTest::SetUp();
        if (HasFatalFailure()) return;
        codes = enrolled(anna);
        comeFrom("10.0.0.1", "session-a");
        before = holder(anna);
    }
    int login(const std::string& password = "Secret") { return nextRequest().login("anna", password); }
    int prove(const std::string& typed, bool takeOver = false) {
        return desk().proveSecond("anna", typed, takeOver);
    }
    void expectNobodyIn() {
        EXPECT_EQ(holder(anna), before);
        EXPECT_EQ(host.session.text("torvex_username"), "");
        EXPECT_FALSE(host.session.takeTokenRequest());
    }
    void beHeldFrom(const std::string& address) {
        set(anna, "sessionId", "another");
        set(anna, "ipAddress", address);
        before = holder(anna);
    }

    std::vector<std::string> codes;
    std::string before;
};
INSTANTIATE_TEST_SUITE_P(Engines, LoginByCode, bothEngines(), engineName);

TEST_P(LoginByCode, ThePasswordAloneLetsNobodyInAndIsNoFailure) {
    EXPECT_EQ(login(), 4);
    expectNobodyIn();
    EXPECT_THAT(auditTrail(), IsEmpty());
    EXPECT_THAT(host.log.lines, IsEmpty());
}

TEST_P(LoginByCode, TheCodeLetsHerInAsBefore) {
    EXPECT_EQ(login(), 4);
    EXPECT_EQ(prove(code()), 0);
    EXPECT_EQ(holder(anna), "session-a|10.0.0.1|||20260615|12:00");
    EXPECT_EQ(host.session.text("torvex_username"), "anna");
    EXPECT_TRUE(host.session.takeTokenRequest());
    EXPECT_THAT(auditTrail(), ElementsAre("7|Anna Author|0||0|login|Anna Author - IP 10.0.0.1"));
    EXPECT_EQ(nextRequest().login(), 0);
}

TEST_P(LoginByCode, ALoginWithoutAFactorSeesNoChange) {
    author(8, "bert", "Secret", "Bert");
    EXPECT_EQ(nextRequest().login("bert", "Secret"), 0);
    EXPECT_EQ(nextRequest().login(), 0);
}

TEST_P(LoginByCode, AWrongPasswordIsAWrongPassword) {
    EXPECT_EQ(login("wrong"), 1);
    EXPECT_EQ(prove(code()), 1);
    expectNobodyIn();
}

TEST_P(LoginByCode, AWrongCodeIsAFailedLoginAndTheNextOneMayBeRight) {
    login();
    EXPECT_EQ(prove(wrongCode()), 5);
    EXPECT_EQ(prove(""), 5);
    expectNobodyIn();
    EXPECT_THAT(auditTrail(), ElementsAre("||0||0|Access denied|Unauthorized access - IP 10.0.0.1",
                                          "||0||0|Access denied|Unauthorized access - IP 10.0.0.1"));
    EXPECT_EQ(host.log.lines.front(), "failed login from 10.0.0.1 (wrong code): author \"anna\"");
    EXPECT_EQ(prove(code()), 0);
}

TEST_P(LoginByCode, ACodeLetsInOnce) {
    login();
    EXPECT_EQ(prove(code()), 0);
    comeFrom("10.0.0.1", "session-b");
    EXPECT_EQ(login(), 4);
    EXPECT_EQ(prove(code()), 5);
    wait(30);
    EXPECT_EQ(prove(code()), 0);
}

TEST_P(LoginByCode, ACodeOnPaperLetsInOnceAndTheTrailSaysSo) {
    login();
    EXPECT_EQ(prove(codes[4]), 0);
    EXPECT_EQ(auditTrail().back(), "7|Anna Author|0||0|login|Anna Author used a recovery code");
    comeFrom("10.0.0.1", "session-b");
    login();
    EXPECT_EQ(prove(codes[4]), 5);
    EXPECT_EQ(prove(codes[5]), 0);
}

TEST_P(LoginByCode, WithoutThePasswordNoCodeIsLookedAt) {
    EXPECT_EQ(prove(code()), 1);
    login();
    EXPECT_EQ(desk().proveSecond("bert", code()), 1);
    comeFrom("10.0.0.1", "session-b");
    EXPECT_EQ(prove(code()), 1);
    EXPECT_EQ(secondFactorOf(connection(), ofLogin(anna))->lastStep, 1);
}

TEST_P(LoginByCode, ThePasswordCountsForFiveMinutes) {
    login();
    wait(300);
    const std::string late = code();
    wait(1);
    EXPECT_EQ(prove(late), 1);
    login();
    EXPECT_EQ(prove(late), 0);
}

TEST_P(LoginByCode, APasswordThatWasChangedMeanwhileCountsNoMore) {
    login();
    connection().execute("update TORVEX_LOGINS set password = 'other' where loginId = 7");
    EXPECT_EQ(prove(code()), 1);
    EXPECT_EQ(host.session.text("torvex_username"), "");
}

TEST_P(LoginByCode, ALoginThatIsNotValidTodayIsNotAskedForACode) {
    set(anna, "validTo", "20260614");
    EXPECT_EQ(login(), 1);
}

TEST_P(LoginByCode, TheAddressFilterHoldsForBothSteps) {
    login();
    host.application.set("torvex_access_IP_filter", "10.0.0.2");
    EXPECT_EQ(prove(code()), 2);
    EXPECT_EQ(login(), 2);
    expectNobodyIn();
}

TEST_P(LoginByCode, AHolderElsewhereIsToldAfterTheCode) {
    beHeldFrom("10.0.0.7");
    EXPECT_EQ(login(), 4);
    EXPECT_EQ(prove(code()), 3);
    expectNobodyIn();
    EXPECT_EQ(prove("", true), 0);
    EXPECT_THAT(holder(anna), StartsWith("session-a|10.0.0.1"));
}

/// Neither the code that was shown to no avail, nor the other session's end without a code.
TEST_P(LoginByCode, AHolderElsewhereIsNotEndedWithoutACode) {
    beHeldFrom("10.0.0.7");
    login();
    EXPECT_EQ(prove("", true), 5);
    EXPECT_EQ(prove(code()), 3);
    comeFrom("10.0.0.1", "session-b");
    login();
    EXPECT_EQ(prove(code(), true), 5);
    EXPECT_EQ(prove("", true), 5);
    EXPECT_EQ(holder(anna), before);
}

TEST_P(LoginByCode, TakingOverByThePasswordTakesACode) {
    beHeldFrom("10.0.0.7");
    EXPECT_EQ(desk().takeOver("anna", "Secret"), 4);
    EXPECT_EQ(holder(anna), before);
    EXPECT_EQ(prove(code()), 0);
    EXPECT_THAT(holder(anna), StartsWith("session-a|10.0.0.1"));
}

/// A session that logged in by the password alone before there was a factor.
TEST_P(LoginByCode, AnOlderSessionCannotTakeTheLoginAgainWithoutACode) {
    dropSecondFactor(connection(), ofLogin(anna));
    EXPECT_EQ(login(), 0);
    enrolled(anna);
    set(anna, "sessionId", "");
    EXPECT_EQ(nextRequest().login(), 4);
    EXPECT_EQ(cell("select sessionId from TORVEX_LOGINS where loginId = 7"), "");
    EXPECT_EQ(prove(code()), 0);
}

TEST_P(LoginByCode, WithTheStrongStoreToo) {
    host.application.set("torvex_password_store", "strong");
    EXPECT_EQ(login(), 4);
    EXPECT_EQ(prove(code()), 0);
    EXPECT_THAT(stored(anna), StartsWith("strong:"));
    comeFrom("10.0.0.1", "session-b");
    EXPECT_EQ(login(), 4);
    EXPECT_EQ(prove(codes[0]), 0);
}

TEST_P(LoginByCode, FailuresNameTheOperation) {
    login();
    drop("TORVEX_SECOND_FACTORS");
    EXPECT_THAT([&] { prove("123456"); }, testing::ThrowsMessage<Error>(HasSubstr("proveSecond !")));
}

}  // namespace
}  // namespace torvex::test
