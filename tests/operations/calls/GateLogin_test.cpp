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

TEST_P(GateLoginTest, AnybodyMayTry) {
    EXPECT_TRUE(mayTry("anna").isAllowed());
}

TEST_P(GateLoginTest, AfterWrongPasswordsTheAddressHasToWaitWhateverTheName) {
    for (const auto* name : {"anna", "ben", "eva", "ida", "ole", "uwe"}) guess(name, 1);
    const Verdict verdict = mayTry("yet another");
    EXPECT_EQ(verdict.kind, Kind::Wait);
    EXPECT_GT(verdict.wait.count(), 0);
    EXPECT_EQ(verdict.message, "There were too many failed logins. Wait " +
                                   std::to_string(verdict.wait.count()) + " seconds, then try again.");
    from("10.0.0.2");
    EXPECT_TRUE(mayTry("yet another").isAllowed());
}

TEST_P(GateLoginTest, AfterWrongPasswordsTheNameHasToWaitWhateverTheAddress) {
    for (int i = 0; i < 6; ++i) {
        from("10.0.1." + std::to_string(i));
        guess("anna", 1);
    }
    from("10.0.2.1");
    EXPECT_EQ(mayTry(" ANNA ").kind, Kind::Wait);
    EXPECT_TRUE(mayTry("ben").isAllowed());
}

TEST_P(GateLoginTest, ARightPasswordForgivesTheNameButNotTheAddress) {
    guess("anna", 5);
    tried("anna", 0);
    guess("anna", 1);
    from("10.0.0.2");
    EXPECT_TRUE(mayTry("anna").isAllowed());
    from("10.0.0.1");
    EXPECT_EQ(mayTry("anna").kind, Kind::Wait);
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
