// Logging in through the gate.

#include "operations/calls/GateTest.h"
#include "operations/register/Binding.h"

namespace torvex::operations {
namespace {

using Kind = Verdict::Kind;

class GateLoginTest : public GateTest {
  protected:
    void SetUp() override {
        GateTest::SetUp();
        actAsNobody();
        from("10.0.0.1");
    }
    void from(const std::string& address) { host.request.setServerVariable("remote_addr", address); }
    const Operation& loginRow() const { return *classes.find("cManager").findOperation("login"); }
    Verdict mayTry(const std::string& name, const std::string& password = "guess") {
        constexpr int noGuess = 2;
        return ask(loginRow(), {name, password}, noGuess);
    }
    void tried(const std::string& name, int code) { ask(loginRow(), {name, "guess"}, code); }
    void guess(const std::string& name, int times) {
        for (int i = 0; i < times; ++i) tried(name, 1);
    }
};
INSTANTIATE_TEST_SUITE_P(Engines, GateLoginTest, test::bothEngines(), test::engineName);

TEST_P(GateLoginTest, TakingALoginOverCountsAsLoggingIn) {
    const Operation& takeOver = *classes.find("desk").findOperation("takeOver");
    for (int i = 0; i < 3; ++i) ask(takeOver, {"anna", "guess"}, 1);
    guess("anna", 3);
    EXPECT_EQ(ask(takeOver, {"anna", "guess"}, 1).kind, Kind::Wait);
    EXPECT_EQ(mayTry("anna").kind, Kind::Wait);
}

TEST_P(GateLoginTest, AnybodyMayTry) {
    EXPECT_TRUE(mayTry("anna").isAllowed());
}

TEST_P(GateLoginTest, AfterWrongPasswordsTheNameHasToWaitAtTheAddress) {
    guess("anna", 6);
    const Verdict verdict = mayTry(" ANNA ");
    EXPECT_EQ(verdict.kind, Kind::Wait);
    EXPECT_GT(verdict.wait.count(), 0);
    EXPECT_EQ(verdict.message, "There were too many failed logins. Wait " +
                                   std::to_string(verdict.wait.count()) + " seconds, then try again.");
    EXPECT_TRUE(mayTry("ben").isAllowed());
    from("10.0.0.2");
    EXPECT_TRUE(mayTry("anna").isAllowed());
}

TEST_P(GateLoginTest, AfterManyWrongPasswordsTheAddressHasToWaitWhateverTheName) {
    for (int i = 0; i < 21; ++i) guess("name " + std::to_string(i), 1);
    EXPECT_EQ(mayTry("yet another").kind, Kind::Wait);
    from("10.0.0.2");
    EXPECT_TRUE(mayTry("yet another").isAllowed());
}

TEST_P(GateLoginTest, OneNameInManySpellingsIsOne) {
    for (const auto* name : {"jess", "JESS", "jeſs", "jesſ", "jeſſ", "Jeſſ"}) guess(name, 1);
    EXPECT_EQ(mayTry("jess").kind, Kind::Wait);
}

TEST_P(GateLoginTest, ACallCountsBeforeItsPasswordIsTested) {
    guess("anna", 5);
    Operation row = loginRow();
    Kind meanwhile = Kind::Allowed;
    row.invoke = [&](void*, const std::vector<Value>&) {
        meanwhile = mayTry("anna").kind;
        return Value(0);
    };
    const Register alone(
        {{"Sample", "For tests.", [](HostContext&) { return std::make_shared<int>(0); }, {}, {row}, {}}});
    const Call call{"Sample", row.name, {{"username", "anna"}, {"password", "right"}}};
    EXPECT_TRUE(CallRun(alone, host.context(), Network{throttle}).run(call).verdict.isAllowed());
    EXPECT_EQ(meanwhile, Kind::Wait);
    EXPECT_TRUE(mayTry("anna").isAllowed());
}

TEST_P(GateLoginTest, ARightPasswordForgivesTheNameWhereItWasGiven) {
    guess("anna", 5);
    tried("anna", 0);
    guess("anna", 5);
    EXPECT_TRUE(mayTry("anna").isAllowed());
}

TEST_P(GateLoginTest, ALockOutLeavesALineInTheLogAndInTheTrail) {
    guess("anna", 6);
    EXPECT_EQ(
        host.log.lines,
        (std::vector<std::string>{"locked out for 2 s after failed logins from 10.0.0.1: author \"anna\""}));
    EXPECT_EQ(cell("select action || '|' || description from TORVEX_AUDIT_TRAIL"),
              "Access denied|Locked out for 2 seconds - IP 10.0.0.1 - username anna");
    EXPECT_EQ(cell("select count(*) from TORVEX_AUDIT_TRAIL where loginId is null"), "1");
}

TEST_P(GateLoginTest, TriesThatHaveToWaitLeaveNothingInTheTrail) {
    guess("anna", 6);
    for (int i = 0; i < 20; ++i) EXPECT_EQ(mayTry("anna").kind, Kind::Wait);
    EXPECT_EQ(cell("select count(*) from TORVEX_AUDIT_TRAIL"), "1");
    EXPECT_EQ(host.log.lines.back(), "a login from 10.0.0.1 has to wait: too many attempts");
}

TEST_P(GateLoginTest, OtherAnswersAreNoGuesses) {
    for (int i = 0; i < 10; ++i) {
        tried("anna", 2);
        tried("anna", 3);
    }
    EXPECT_TRUE(mayTry("anna").isAllowed());
}

TEST_P(GateLoginTest, VerifyingTheSessionsLoginAgainIsNoGuess) {
    guess("anna", 10);
    EXPECT_TRUE(mayTry("", "").isAllowed());
    for (int i = 0; i < 10; ++i) ask(loginRow(), {"", ""}, 1);
    from("10.0.0.2");
    EXPECT_TRUE(mayTry("ben").isAllowed());
}

TEST_P(GateLoginTest, OperationsWithoutAPasswordAreNeverSlowedDown) {
    guess("anna", 10);
    EXPECT_EQ(callOnPage11(sample({}, visitor())), Kind::Allowed);
}

}  // namespace
}  // namespace torvex::operations
