// Logins that must have a second factor and have none, at the gate; and who guesses codes.

#include <set>

#include "accounts/ProgramTokens.h"
#include "accounts/SecondFactor.h"
#include "operations/calls/GateTest.h"

namespace torvex::operations {
namespace {

using Kind = Verdict::Kind;

class GateEnrolment : public GateTest {
  protected:
    void SetUp() override {
        GateTest::SetUp();
        if (HasFatalFailure()) return;
        connection().execute("update TORVEX_ROLES set secondFactor = 1 where roleId = 3");
        actAs(anna, "anna", "Anna Author");
    }
    const Operation& find(const char* entry, const char* operation) {
        return *classes.find(entry).findOperation(operation);
    }
    Kind askState() { return callOnPage11(find("desk", "getWork")); }
};
INSTANTIATE_TEST_SUITE_P(Engines, GateEnrolment, test::bothEngines(), test::engineName);

TEST_P(GateEnrolment, NothingIsOpenButSettingItUpAndWhatIsOpenToVisitors) {
    editRights(3, "aa", "en", {"onOff", "move", "publish", "approve", "edit"});
    const std::set<std::string> open{"getSecondFactor", "beginSecondFactor", "confirmSecondFactor"};
    forEachRow(classes, [&](const Operation& operation) {
        if (operation.right.kind == Right::Kind::Nobody) return;
        const bool isOpen = operation.right.kind == Right::Kind::Visitor || open.contains(operation.name);
        EXPECT_EQ(callOnPage11(operation), isOpen ? Kind::Allowed : Kind::NotEnrolled);
    });
}

/// The gate knows them by their names alone.
TEST_P(GateEnrolment, WhatIsOpenIsOfOneClassEach) {
    for (const char* name : {"getSecondFactor", "beginSecondFactor", "confirmSecondFactor"}) {
        const auto has = [&](const ClassEntry& entry) {
            return entry.findOperation(name) || entry.findProperty(name);
        };
        const auto& all = classes.classes();
        EXPECT_EQ(std::count_if(all.begin(), all.end(), has), 1) << name;
    }
}

TEST_P(GateEnrolment, PropertiesAreClosedToo) {
    const Property property{
        "pgTitle", ArgumentType::Text, "For tests.", anyLogin(), [](const void*) { return Value(); }, {}};
    EXPECT_EQ(ask(property).kind, Kind::NotEnrolled);
    giveSecondFactor(connection(), ofLogin(anna), "MZXW6YTB", 1, host.clock.now());
    EXPECT_EQ(ask(property).kind, Kind::Allowed);
}

TEST_P(GateEnrolment, SheIsToldWhatToDo) {
    EXPECT_EQ(ask(sample({}, anyLogin()), {}).message,
              "A role of yours demands a second factor. Set it up first.");
}

TEST_P(GateEnrolment, WithAFactorAllIsOpenAsBefore) {
    EXPECT_EQ(askState(), Kind::NotEnrolled);
    giveSecondFactor(connection(), ofLogin(anna), "MZXW6YTB", 1, host.clock.now());
    EXPECT_EQ(askState(), Kind::Allowed);
    dropSecondFactor(connection(), ofLogin(anna));
    EXPECT_EQ(askState(), Kind::NotEnrolled);
}

TEST_P(GateEnrolment, OnlyTheLoginsOfTheRoleMustHaveOne) {
    connection().execute("delete from TORVEX_ROLES_LOGINS");
    EXPECT_EQ(askState(), Kind::Allowed);
}

TEST_P(GateEnrolment, ASessionWithoutItsLoginIsToldThatFirst) {
    takeOver(anna);
    EXPECT_EQ(askState(), Kind::NotLoggedIn);
}

TEST_P(GateEnrolment, TheCommandLineIsNotAsked) {
    const Call call{"desk", "getRecent", {{"site", "aa"}, {"lang", "en"}}};
    EXPECT_EQ(CallRun(classes, host.context(), Network{throttle}).run(call).verdict.kind, Kind::NotEnrolled);
    EXPECT_TRUE(CallRun(classes, host.context(), CommandLine{}).run(call).verdict.isAllowed());
}

TEST_P(GateEnrolment, ProgramsAreNotAsked) {
    connection().execute("update TORVEX_LOGINS set kind = 'program' where loginId = 7");
    host.session = Session(programSession(anna));
    host.session.set("torvex_loginId", anna);
    host.session.set("torvex_username", "anna");
    EXPECT_EQ(askState(), Kind::Allowed);
}

// ---- Who guesses codes ----

TEST_P(GateEnrolment, WrongCodesCountLikeWrongPasswords) {
    actAsNobody();
    host.request.setServerVariable("remote_addr", "10.0.0.1");
    const Operation& login = find("cManager", "login");
    const Operation& prove = find("desk", "proveSecond");
    for (int i = 0; i < 3; ++i) ask(login, {"anna", "guess"}, 1);
    for (int i = 0; i < 3; ++i) ask(prove, {"anna", "123456", false}, 5);
    EXPECT_EQ(ask(prove, {"anna", "123456", false}, 5).kind, Kind::Wait);
    EXPECT_EQ(ask(login, {"anna", "guess"}, 1).kind, Kind::Wait);
    host.request.setServerVariable("remote_addr", "10.0.0.2");
    EXPECT_EQ(ask(prove, {"anna", "123456", false}, 5).kind, Kind::Allowed);
}

/// Or a new try with the password would make the codes free to guess.
TEST_P(GateEnrolment, ARightPasswordForgivesNoWrongCodes) {
    actAsNobody();
    const Operation& login = find("cManager", "login");
    const Operation& prove = find("desk", "proveSecond");
    for (int i = 0; i < 6; ++i) {
        ask(login, {"anna", "secret"}, 4);
        ask(prove, {"anna", "123456", false}, 5);
    }
    EXPECT_EQ(ask(prove, {"anna", "123456", false}, 5).kind, Kind::Wait);
}

TEST_P(GateEnrolment, ARightCodeForgives) {
    actAsNobody();
    const Operation& prove = find("desk", "proveSecond");
    for (int i = 0; i < 5; ++i) ask(prove, {"anna", "123456", false}, 5);
    ask(prove, {"anna", "123456", false}, 0);
    for (int i = 0; i < 5; ++i) ask(prove, {"anna", "123456", false}, 5);
    EXPECT_EQ(ask(prove, {"anna", "123456", false}, 5).kind, Kind::Allowed);
}

TEST_P(GateEnrolment, WhoDropsAFactorOrRenewsItsCodesGuessesSlowlyToo) {
    giveSecondFactor(connection(), ofLogin(anna), "MZXW6YTB", 1, host.clock.now());
    for (const char* name : {"dropSecondFactor", "renewRecoveryCodes"}) {
        const Operation& row = find("desk", name);
        for (int i = 0; i < 6; ++i) ask(row, {name, "123456"}, "-1");
        EXPECT_EQ(ask(row, {name, "123456"}, "-1").kind, Kind::Wait) << name;
    }
}

}  // namespace
}  // namespace torvex::operations
