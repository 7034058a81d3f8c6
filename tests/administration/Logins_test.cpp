#include <array>
#include <barrier>
#include <gmock/gmock.h>
#include <thread>

#include "platform/text/Text.h"
#include "support/DoorTest.h"

namespace torvex::test {
namespace {

using testing::ElementsAre;
using testing::HasSubstr;

const std::string secretStored = encodePassword("Secret");
constexpr const char* free = "|||||";
constexpr const char* denied = "||0||0|Access denied|Unauthorized access - IP 10.0.0.1";

class Logins : public DoorTest {
  protected:
    /// A login that must be refused, and must change nothing but the audit trail.
    void expectRefused(int code, const std::string& username, const std::string& password) {
        const std::string before = holder(anna);
        const std::string keptBefore = kept();
        EXPECT_EQ(manager().login(username, password), code);
        EXPECT_EQ(holder(anna), before);
        EXPECT_EQ(kept(), keptBefore);
        EXPECT_FALSE(host.session.takeTokenRequest());
        EXPECT_THAT(auditTrail().back(),
                    HasSubstr("||0||0|Access denied|Unauthorized access - IP " +
                              std::string(text::trim(host.request.serverVariable("remote_addr")))));
    }
};
INSTANTIATE_TEST_SUITE_P(Engines, Logins, bothEngines(), engineName);

// ---- The address filter by whole addresses ----

TEST_P(Logins, TheFilterLooksForATextUnlessItIsToBeExact) {
    host.application.set("torvex_access_IP_filter", " 10.0.0.15,10.0.1.1-10.0.1.9 ");
    EXPECT_EQ(manager().login("anna", "Secret"), 0);
    host.application.set("torvex_access_IP_filter_exact", true);
    EXPECT_EQ(nextRequest().login("anna", "Secret"), 2);
    EXPECT_EQ(nextRequest().login(), 2);
    set(anna, "sessionId", "");
    EXPECT_EQ(moveTo("10.0.1.7").login("anna", "Secret"), 0);
    EXPECT_EQ(holder(anna), "session-a|10.0.1.7|||20260615|12:00");
}

// ---- The operators' log ----

TEST_P(Logins, AFailedLoginLeavesALineWithItsReasonAndWithoutThePassword) {
    manager().login("Anna", "open sesame");
    host.application.set("torvex_access_IP_filter", "10.0.0.9");
    manager().login("anna", "Secret");
    host.application.set("torvex_access_IP_filter", "");
    set(anna, "sessionId", "session-b");
    set(anna, "ipAddress", "10.0.0.2");
    manager().login("anna", "Secret");
    EXPECT_THAT(host.log.lines,
                ElementsAre("failed login from 10.0.0.1 (wrong name or password): author \"Anna\"",
                            "failed login from 10.0.0.1 (the address filter refuses it): author \"anna\"",
                            "failed login from 10.0.0.1 (the login is held from another address): author "
                            "\"anna\""));
}

TEST_P(Logins, VerifyingASessionThatHasNoLoginLeavesNoLine) {
    manager().login();
    EXPECT_TRUE(host.log.lines.empty());
}

// ---- The right password ----

TEST_P(Logins, RightPasswordLogsIn) {
    EXPECT_EQ(manager().login("anna", "Secret"), 0);
}

TEST_P(Logins, TheRowShowsItsHolderAndTheTime) {
    set(anna, "currentSite", "aa.en");
    set(anna, "siteLock", "aa.en");
    host.clock = FixedClock({2026, 3, 4, 5, 6, 7});
    manager().login("anna", "Secret");
    EXPECT_EQ(holder(anna), "session-a|10.0.0.1|||20260304|05:06");
}

TEST_P(Logins, TheObjectIsTheRowsLoginInItsSpelling) {
    set(anna, "username", "Anna");
    manager().login("  ANNA ", "Secret");
    EXPECT_EQ(manager().loginId(), anna);
    EXPECT_EQ(manager().username(), "Anna");
    EXPECT_EQ(manager().password(), secretStored);
    EXPECT_EQ(manager().Fullname(), "Anna Author");
}

TEST_P(Logins, TheSessionKeepsTheLogin) {
    host.application.set("torvex_ssl", true);
    manager().login("ANNA", "Secret");
    EXPECT_EQ(kept(), "7|anna|" + secretStored + "|Anna Author");
    EXPECT_TRUE(host.session.isTrue("torvex_ssl"));
    EXPECT_EQ(nextRequest().loginId(), anna);
}

TEST_P(Logins, TheVisitorGetsANewToken) {
    manager().login("anna", "Secret");
    EXPECT_TRUE(host.session.takeTokenRequest());
}

TEST_P(Logins, OneLineOfTheTrailTellsOfIt) {
    manager().login("anna", "Secret");
    EXPECT_THAT(auditTrail(), ElementsAre("7|Anna Author|0||0|login|Anna Author - IP 10.0.0.1"));
}

TEST_P(Logins, CaseAndBlanksOfAPasswordDontCount) {
    EXPECT_EQ(manager().login("anna", "SECRET "), 0);
    EXPECT_EQ(manager().login("anna", "  secret"), 0);
}

TEST_P(Logins, WhatFollowsTheTwentiethCharacterDoesntCount) {
    author(8, "bob", "correct horse battery staple", "Bob");
    EXPECT_EQ(manager().login("bob", "correct horse battery lost"), 0);
    EXPECT_EQ(manager().login("bob", "correct horse batte"), 1);
}

TEST_P(Logins, AQuoteInANameIsPartOfIt) {
    author(8, "o'neil", "x", "O'Neil");
    EXPECT_EQ(manager().login("O'Neil", "x"), 0);
    EXPECT_EQ(manager().Fullname(), "O'Neil");
}

TEST_P(Logins, NamesBeyondAsciiIgnoreCaseAsWell) {
    author(8, "Élodie", "été", "Élodie");
    EXPECT_EQ(manager().login("ÉLODIE", "ÉTÉ"), 0);
}

// ---- Code 1 ----

TEST_P(Logins, WrongPasswordIsRefused) {
    expectRefused(1, "anna", "Secrets");
}

TEST_P(Logins, UnknownNameIsRefused) {
    expectRefused(1, "annie", "Secret");
}

TEST_P(Logins, OneWordAloneIsRefused) {
    expectRefused(1, "anna", "");
    expectRefused(1, "", "Secret");
    expectRefused(1, " ", " ");
}

TEST_P(Logins, TheStoredFormIsNoPassword) {
    expectRefused(1, "anna", secretStored);
}

TEST_P(Logins, BadNamesAndPasswordsAreRefused) {
    for (const std::string& bad : badIdentifiers()) {
        if (bad.empty()) continue;
        expectRefused(1, bad, "Secret");
        expectRefused(1, "anna", bad);
    }
}

TEST_P(Logins, ARefusalIsToldOfInNobodysName) {
    manager().login("anna", "wrong");
    EXPECT_THAT(auditTrail(), ElementsAre(denied));
}

// ---- Dates ----

struct Dates {
    Value from;
    Value to;
    int code;
};

TEST_P(Logins, TodayMustLieWithinTheDates) {
    // The clock stands at 2026-06-15.
    const std::vector<Dates> cases{
        {{}, {}, 0},
        {"", "", 0},
        {"20260615", "20260615", 0},
        {"20260101", "20261231", 0},
        {"20260101", "", 0},
        {"20260101", {}, 0},
        {"", "20260615", 0},
        {{}, "20270101", 0},
        {"20260616", "", 1},
        {"20260616", {}, 1},
        {"20260616", "20270101", 1},
        {"", "20260614", 1},
        {{}, "20260614", 1},
        {"20250101", "20260614", 1},
        {"20270101", "20250101", 1},
    };
    for (const Dates& dates : cases) {
        set(anna, "sessionId", "");
        set(anna, "validFrom", dates.from);
        set(anna, "validTo", dates.to);
        EXPECT_EQ(manager().login("anna", "Secret"), dates.code)
            << dates.from.toText() << " to " << dates.to.toText();
        EXPECT_EQ(cell("select sessionId from TORVEX_LOGINS where loginId = 7"),
                  dates.code == 0 ? "session-a" : "");
    }
}

TEST_P(Logins, AnExpiredLoginIsRefusedLikeAWrongPassword) {
    set(anna, "validTo", "20260614");
    expectRefused(1, "anna", "Secret");
}

TEST_P(Logins, AnExpiredLoginThatIsHeldElsewhereIsJustUnknown) {
    set(anna, "validTo", "20260614");
    set(anna, "sessionId", "session-b");
    set(anna, "ipAddress", "10.0.0.2");
    expectRefused(1, "anna", "Secret");
}

// ---- Code 2 ----

TEST_P(Logins, AnAddressOutsideTheFilterIsRefusedWhateverThePassword) {
    host.application.set("torvex_access_IP_filter", "10.0.0.2");
    expectRefused(2, "anna", "Secret");
    expectRefused(2, "anna", "wrong");
    expectRefused(2, "", "");
}

TEST_P(Logins, WithoutAnAddressNoFilterIsPassed) {
    host.application.set("torvex_access_IP_filter", "10.0.0.1");
    moveTo(" ");
    EXPECT_EQ(manager().login("anna", "Secret"), 2);
    EXPECT_EQ(holder(anna), free);
    EXPECT_THAT(auditTrail(), ElementsAre("||0||0|Access denied|Unauthorized access - IP"));
}

TEST_P(Logins, ABlankFilterIsNone) {
    host.application.set("torvex_access_IP_filter", "   ");
    EXPECT_EQ(manager().login("anna", "Secret"), 0);
    EXPECT_EQ(holder(anna), "session-a|10.0.0.1|||20260615|12:00");
}

TEST_P(Logins, AnAddressInARangeIsKeptInNormalForm) {
    host.application.set("torvex_access_IP_filter", " 10.0.0.1-10.0.0.9,192.168.0.5-192.168.0.9 ");
    moveTo(" 10.0.0.3 ");
    EXPECT_EQ(manager().login("anna", "Secret"), 0);
    EXPECT_EQ(holder(anna), "session-a|010000000003|||20260615|12:00");
    EXPECT_THAT(auditTrail(), ElementsAre("7|Anna Author|0||0|login|Anna Author - IP 010000000003"));
}

TEST_P(Logins, AnAddressThatStandsInTheFilterIsKeptAsItIs) {
    host.application.set("torvex_access_IP_filter", "10.0.0.1-10.0.0.9,192.168.0.5-192.168.0.9");
    moveTo("192.168.0.5");
    EXPECT_EQ(manager().login("anna", "Secret"), 0);
    EXPECT_EQ(holder(anna), "session-a|192.168.0.5|||20260615|12:00");
}

TEST_P(Logins, TheRefusalNamesTheAddressAsItCame) {
    host.application.set("torvex_access_IP_filter", "10.0.0.1-10.0.0.9,192.168.0.5-192.168.0.9");
    moveTo(" 192.168.0.6 ");
    EXPECT_EQ(manager().login("anna", "Secret"), 2);
    EXPECT_THAT(auditTrail(), ElementsAre("||0||0|Access denied|Unauthorized access - IP 192.168.0.6"));
    EXPECT_EQ(holder(anna), free);
}

// ---- Code 3 and the takeover ----

TEST_P(Logins, ALoginHeldAtAnotherAddressIsRefused) {
    manager().login("anna", "Secret");
    comeFrom("10.0.0.2", "session-b");
    expectRefused(3, "anna", "Secret");
    EXPECT_EQ(holder(anna), "session-a|10.0.0.1|||20260615|12:00");
}

TEST_P(Logins, ASessionAtTheSameAddressTakesTheLoginOver) {
    manager().login("anna", "Secret");
    comeFrom("10.0.0.1", "session-b");
    EXPECT_EQ(manager().login("anna", "Secret"), 0);
    EXPECT_EQ(holder(anna), "session-b|10.0.0.1|||20260615|12:00");
}

TEST_P(Logins, TheHolderComesBackFromAnywhere) {
    manager().login("anna", "Secret");
    EXPECT_EQ(moveTo("10.0.0.2").login("anna", "Secret"), 0);
    EXPECT_EQ(holder(anna), "session-a|10.0.0.2|||20260615|12:00");
}

TEST_P(Logins, AHolderWithoutAnAddressIsTakenOver) {
    set(anna, "sessionId", "session-b");
    for (const Value& address : {Value(), Value("")}) {
        set(anna, "ipAddress", address);
        EXPECT_EQ(manager().login("anna", "Secret"), 0);
    }
}

TEST_P(Logins, AFreedLoginIsOpenFromAnyAddress) {
    manager().login("anna", "Secret");
    for (const Value& session : {Value(), Value("")}) {
        set(anna, "sessionId", session);
        comeFrom("10.0.0.2", "session-b");
        EXPECT_EQ(manager().login("anna", "Secret"), 0);
        set(anna, "ipAddress", "10.0.0.1");
    }
}

TEST_P(Logins, AddressesAreComparedInTheFormInWhichTheyAreKept) {
    manager().login("anna", "Secret");
    host.application.set("torvex_access_IP_filter", "10.0.0.0-10.0.0.9");
    comeFrom("10.0.0.1", "session-b");
    expectRefused(3, "anna", "Secret");
}

TEST_P(Logins, SaIsHeldFromAnywhere) {
    author(1, "Sa", "x", "System administrator");
    EXPECT_EQ(manager().login("SA", "x"), 0);
    EXPECT_EQ(comeFrom("10.0.0.2", "session-b").login("sa", "X"), 0);
    EXPECT_EQ(holder(1), "session-b|10.0.0.2|||20260615|12:00");
    EXPECT_EQ(manager().username(), "Sa");
}

TEST_P(Logins, OfTwoSessionsAtOnceOnlyOneGetsIn) {
    for (int round = 0; round < 10; ++round) {
        set(anna, "sessionId", "");
        std::barrier start(2);
        std::array<int, 2> codes{};
        const auto logIn = [&](std::size_t which) {
            TestHost own;
            own.session = Session("session-" + std::to_string(which));
            own.database.target = &database();
            own.application.set("torvex_odbc", connectionText());
            own.request.setServerVariable("remote_addr", "10.0.1." + std::to_string(which));
            cManager other(own.context());
            other.connect(connectionText());
            start.arrive_and_wait();
            codes[which] = other.login("anna", "Secret");
        };
        std::thread first(logIn, 0);
        std::thread second(logIn, 1);
        first.join();
        second.join();
        EXPECT_THAT(codes, testing::UnorderedElementsAre(0, 3));
        const std::size_t winner = codes[0] == 0 ? 0 : 1;
        EXPECT_EQ(cell("select sessionId from TORVEX_LOGINS where loginId = 7"),
                  "session-" + std::to_string(winner));
    }
}

// ---- One session, one login ----

TEST_P(Logins, LoggingInAsSomebodyElseFreesTheFirstLogin) {
    author(8, "bob", "x", "Bob");
    author(9, "cleo", "x", "Cleo",
           {{"sessionId", "session-c"}, {"currentSite", "aa.en"}, {"siteLock", "aa.en"}});
    manager().login("anna", "Secret");
    set(anna, "currentSite", "aa.en");
    set(anna, "siteLock", "aa.en");
    EXPECT_EQ(manager().login("bob", "x"), 0);
    EXPECT_EQ(holder(anna), "|10.0.0.1|||20260615|12:00");
    EXPECT_EQ(holder(8), "session-a|10.0.0.1|||20260615|12:00");
    EXPECT_EQ(holder(9), "session-c||aa.en|aa.en||");
    EXPECT_EQ(kept(), "8|bob|" + encodePassword("x") + "|Bob");
}

TEST_P(Logins, ARefusedLoginFreesNothing) {
    author(8, "bob", "x", "Bob");
    manager().login("anna", "Secret");
    host.session.takeTokenRequest();
    expectRefused(1, "bob", "wrong");
    EXPECT_EQ(manager().loginId(), anna);
}

// ---- Verifying the session again ----

TEST_P(Logins, WithoutArgumentsTheSessionsLoginIsVerified) {
    manager().login("anna", "Secret");
    host.session.takeTokenRequest();
    set(anna, "currentSite", "aa.en");
    EXPECT_EQ(nextRequest().login(), 0);
    EXPECT_EQ(holder(anna), "session-a|10.0.0.1|||20260615|12:00");
    EXPECT_EQ(auditTrail().size(), 2U);
    // Nobody new has come in.
    EXPECT_FALSE(host.session.takeTokenRequest());
}

TEST_P(Logins, WithoutArgumentsAnEmptySessionIsRefused) {
    expectRefused(1, "", "");
    EXPECT_THAT(auditTrail(), ElementsAre(denied));
}

TEST_P(Logins, AChangedPasswordEndsTheSessionsLogin) {
    manager().login("anna", "Secret");
    set(anna, "password", encodePassword("Other"));
    EXPECT_EQ(nextRequest().login(), 1);
}

TEST_P(Logins, ASessionThatLostItsLoginIsRefusedAtAnotherAddress) {
    manager().login("anna", "Secret");
    set(anna, "sessionId", "session-b");
    set(anna, "ipAddress", "10.0.0.2");
    EXPECT_EQ(nextRequest().login(), 3);
}

TEST_P(Logins, TheSessionIsReadAnew) {
    manager().login("anna", "Secret");
    host.session.set("torvex_password", "");
    EXPECT_EQ(manager().login(), 1);
}

// ---- Failures ----

TEST_P(Logins, AFailingDatabaseIsReported) {
    drop("TORVEX_LOGINS");
    EXPECT_THAT(errorOf([&] { manager().login("anna", "Secret"); }), testing::StartsWith(chain({"login !"})));
}

TEST_P(Logins, AFailureOnTheWayLeavesEverythingAsItWas) {
    author(8, "bob", "x", "Bob");
    manager().login("anna", "Secret");
    host.session.takeTokenRequest();
    refuseChangesOf(anna);
    const std::string error = errorOf([&] { manager().login("bob", "x"); });
    EXPECT_THAT(error, testing::StartsWith(chain({"login !"})));
    EXPECT_THAT(error, HasSubstr("guarded"));
    EXPECT_EQ(holder(8), free);
    EXPECT_EQ(holder(anna), "session-a|10.0.0.1|||20260615|12:00");
    EXPECT_EQ(kept(), "7|anna|" + secretStored + "|Anna Author");
    EXPECT_EQ(manager().loginId(), anna);
    EXPECT_FALSE(host.session.takeTokenRequest());
    EXPECT_EQ(auditTrail().size(), 1U);
}

TEST_P(Logins, ALineThatCantBeWrittenIsReported) {
    drop("TORVEX_AUDIT_TRAIL");
    EXPECT_THAT(errorOf([&] { manager().login("anna", "Secret"); }),
                testing::StartsWith(chain({"login !", "addAuditTrail !"})));
}

}  // namespace
}  // namespace torvex::test
