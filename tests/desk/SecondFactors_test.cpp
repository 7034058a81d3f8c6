// Who has to have a second factor, and whoever has lost hers.

#include <gmock/gmock.h>

#include "accounts/SecondFactor.h"
#include "support/RolesTest.h"

namespace torvex::test {
namespace {

using testing::ElementsAre;
using testing::IsEmpty;

class SecondFactorsOfOthers : public RolesTest {
  protected:
    void SetUp() override {
        RolesTest::SetUp();
        if (HasFatalFailure()) return;
        giveSecondFactor(connection(), ofLogin(bert), "MZXW6YTB", 1, host.clock.now());
        renewRecoveryCodes(connection(), ofLogin(bert));
        connection().execute("delete from TORVEX_AUDIT_TRAIL");
    }
    bool hasOne(int loginId) { return secondFactorOf(connection(), ofLogin(loginId)).has_value(); }
    std::string demands(int roleId) {
        return cell("select coalesce(secondFactor, 0) from TORVEX_ROLES where roleId = " +
                    std::to_string(roleId));
    }
    void expectRefusal(const std::string& code, const std::string& answer) {
        EXPECT_EQ(answer, code);
        EXPECT_TRUE(hasOne(bert));
        EXPECT_EQ(demands(desk), "0");
        EXPECT_THAT(auditTrail(), IsEmpty());
    }
};
INSTANTIATE_TEST_SUITE_P(Engines, SecondFactorsOfOthers, bothEngines(), engineName);

TEST_P(SecondFactorsOfOthers, ALostOneIsReset) {
    EXPECT_EQ(registers().resetSecondFactor(bert, 21), "");
    EXPECT_FALSE(hasOne(bert));
    EXPECT_EQ(cell("select count(*) from TORVEX_RECOVERY_CODES"), "0");
    EXPECT_EQ(auditTrail().size(), 1U);
    EXPECT_THAT(auditTrail().back(), testing::HasSubstr("|21|delete|Second factor of login \""));
    EXPECT_EQ(registers().resetSecondFactor(bert, 21), "-3");
}

TEST_P(SecondFactorsOfOthers, OneThatIsNotThereIsNotReset) {
    expectRefusal("-1", registers().resetSecondFactor(77, 21));
    expectRefusal("-3", registers().resetSecondFactor(anna, 21));
}

TEST_P(SecondFactorsOfOthers, TheAdministratorsIsHersAlone) {
    connection().execute("delete from TORVEX_LOGINS where username = 'sa'");
    login(2, "sa", "The Administrator");
    giveSecondFactor(connection(), ofLogin(2), "MZXW6YTB", 1, host.clock.now());
    expectRefusal("-2", registers().resetSecondFactor(2, 21));
    EXPECT_TRUE(hasOne(2));
    actAs(2, "sa", "The Administrator");
    EXPECT_EQ(registers().resetSecondFactor(2, 21), "");
    EXPECT_FALSE(hasOne(2));
}

TEST_P(SecondFactorsOfOthers, ARoleDemandsOneOrNot) {
    EXPECT_EQ(registers().demandSecondFactor(desk, true, 22), "0");
    EXPECT_EQ(demands(desk), "1");
    EXPECT_TRUE(isSecondFactorDemanded(connection(), anna));
    EXPECT_FALSE(isSecondFactorDemanded(connection(), bert));
    EXPECT_EQ(registers().demandSecondFactor(desk, false, 22), "0");
    EXPECT_EQ(demands(desk), "0");
    EXPECT_THAT(auditTrail(),
                ElementsAre(testing::HasSubstr("|22|save|Role \"Desk\" demands a second factor"),
                            testing::HasSubstr("|22|save|Role \"Desk\" no longer demands a second factor")));
}

TEST_P(SecondFactorsOfOthers, ARoleThatIsGoneOrOpenElsewhereStays) {
    expectRefusal("-1", registers().demandSecondFactor(77, true, 22));
    connection().execute("update TORVEX_ROLES set lock = 'another-session' where roleId = 3");
    connection().execute("update TORVEX_LOGINS set sessionId = 'another-session' where loginId = 8");
    expectRefusal("-4", registers().demandSecondFactor(desk, true, 22));
}

TEST_P(SecondFactorsOfOthers, NobodyChangesAnything) {
    actAsNobody();
    expectRefusal("-10", registers().resetSecondFactor(bert, 21));
    expectRefusal("-10", registers().demandSecondFactor(desk, true, 22));
}

TEST_P(SecondFactorsOfOthers, TheListsTellOfIt) {
    registers().demandSecondFactor(desk, true);
    const Value roles = registers().getRoles();
    EXPECT_EQ(roles.grid().at(1, 0).toText() + roles.grid().at(4, 0).toText(), "Desk1");
    EXPECT_EQ(roles.grid().at(1, 1).toText() + roles.grid().at(4, 1).toText(), "Programme0");
    const Value logins = registers().getLogins();
    for (std::size_t line = 0; line < logins.grid().rows(); ++line)
        EXPECT_EQ(logins.grid().at(11, line).toNumber(),
                  logins.grid().at(0, line).toNumber() == bert ? 1 : 0);
}

TEST_P(SecondFactorsOfOthers, ASavedRoleKeepsItsDemand) {
    registers().demandSecondFactor(desk, true);
    EXPECT_EQ(registers().saveRole(desk, "Desk of moss", "About it"), "3");
    EXPECT_EQ(demands(desk), "1");
}

TEST_P(SecondFactorsOfOthers, WhatFailsChangesNothing) {
    drop("TORVEX_RECOVERY_CODES");
    EXPECT_EQ(registers().resetSecondFactor(bert, 21), "-99");
    EXPECT_TRUE(hasOne(bert));
}

}  // namespace
}  // namespace torvex::test
