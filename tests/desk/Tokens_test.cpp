#include <gtest/gtest.h>

#include "accounts/ProgramTokens.h"
#include "desk/desk.h"
#include "support/DoorTest.h"

namespace torvex {
namespace {

class DeskTokens : public test::DoorTest {
  protected:
    static constexpr int robot = 9;

    void SetUp() override {
        DoorTest::SetUp();
        if (HasFatalFailure()) return;
        author(robot, "robot", "Secret", "Robot", {{"kind", "program"}});
        actAs(anna, "anna", "Anna Author");
    }
    desk made() {
        desk one(host.context());
        one.connect(connection());
        return one;
    }
    std::string make(const std::string& name = "menu", const std::string& operations = "reads") {
        return made().makeToken(robot, name, operations, "", "", 21);
    }
    std::string count() { return cell("select count(*) from TORVEX_API_TOKENS"); }
    std::string kindOf(int loginId) {
        return cell("select coalesce(kind, '') from TORVEX_LOGINS where loginId = " +
                    std::to_string(loginId));
    }
    void expectRefusal(const std::string& code, const std::string& answer) {
        EXPECT_EQ(answer, code);
        EXPECT_EQ(count(), "0");
        EXPECT_TRUE(auditTrail().empty());
    }
};
INSTANTIATE_TEST_SUITE_P(Engines, DeskTokens, test::bothEngines(), test::engineName);

TEST_P(DeskTokens, ATokenIsMadeAndTheTrailSaysSoWithoutIt) {
    const std::string token = make();
    EXPECT_EQ(token.substr(0, 4), "tvx_");
    EXPECT_TRUE(useToken(connection(), token, "", host.clock.now()));
    EXPECT_EQ(auditTrail(), std::vector<std::string>{"7|Anna Author|0||21|new|Token \"menu\" for \"Robot\""});
}

TEST_P(DeskTokens, APersonsLoginGetsNone) {
    expectRefusal("-2", made().makeToken(anna, "menu", "reads", "", "", 21));
    expectRefusal("-1", made().makeToken(77, "menu", "reads", "", "", 21));
}

TEST_P(DeskTokens, WishesThatCannotBeUsedAreRefused) {
    expectRefusal("-3", make(""));
    expectRefusal("-3", make("menu", "all"));
    expectRefusal("-3", made().makeToken(robot, "menu", "reads", "", "20260631"));
}

TEST_P(DeskTokens, NobodyMakesNone) {
    actAsNobody();
    expectRefusal("-10", make());
    EXPECT_EQ(made().revokeToken(1), "-10");
    EXPECT_EQ(made().setProgram(anna, true), "-10");
}

TEST_P(DeskTokens, TheListHasAllButTheTokens) {
    make("b");
    make("a", "desk.getWork");
    made().makeToken(robot, "c", "reads", "10.0.0.1", "20271231");
    const Value list = made().getTokens(robot);
    ASSERT_EQ(list.grid().rows(), 3U);
    EXPECT_EQ(list.grid().at(1, 0).toText(), "a");
    EXPECT_EQ(list.grid().at(2, 0).toText(), "desk.getWork");
    EXPECT_EQ(list.grid().at(3, 2).toText(), "10.0.0.1");
    EXPECT_EQ(list.grid().at(4, 2).toText(), "20271231");
    EXPECT_TRUE(list.grid().at(5, 0).isEmpty());
    EXPECT_TRUE(made().getTokens(anna).isEmpty());
}

TEST_P(DeskTokens, ARevokedTokenIsWorthless) {
    const std::string token = make();
    const int tokenId = std::stoi(cell("select tokenId from TORVEX_API_TOKENS"));
    EXPECT_EQ(made().revokeToken(tokenId, 21), "");
    EXPECT_FALSE(useToken(connection(), token, "", host.clock.now()));
    EXPECT_EQ(auditTrail().back(), "7|Anna Author|0||21|delete|Token \"menu\" of \"Robot\"");
    EXPECT_EQ(made().revokeToken(tokenId, 21), "-1");
}

TEST_P(DeskTokens, ALoginBecomesAProgramsAndWhoeverHoldsItIsOut) {
    author(8, "bert", "Secret", "Bert", {{"sessionId", "somewhere"}});
    EXPECT_EQ(made().setProgram(8, true, 21), "");
    EXPECT_EQ(kindOf(8), "program");
    EXPECT_EQ(holder(8).substr(0, 1), "|");
    EXPECT_EQ(auditTrail().back(), "7|Anna Author|0||21|edit|Login \"bert\" is a program's");
    EXPECT_EQ(made().setProgram(8, false, 21), "");
    EXPECT_EQ(kindOf(8), "");
}

TEST_P(DeskTokens, TheAdministratorStaysAPerson) {
    author(2, "sa", "Secret", "System Administrator");
    expectRefusal("-2", made().setProgram(2, true, 21));
    expectRefusal("-1", made().setProgram(77, true, 21));
    EXPECT_EQ(kindOf(2), "");
}

TEST_P(DeskTokens, ALoginThatIsRemovedTakesItsTokensAlong) {
    make();
    EXPECT_EQ(manager().deleteLogin(robot, 21), "");
    EXPECT_EQ(count(), "0");
}

TEST_P(DeskTokens, WhatFailsChangesNothing) {
    drop("TORVEX_API_TOKENS");
    EXPECT_EQ(make(), "-99");
    EXPECT_EQ(made().revokeToken(1), "-99");
    EXPECT_TRUE(auditTrail().empty());
}

}  // namespace
}  // namespace torvex
