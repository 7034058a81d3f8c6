#include <gmock/gmock.h>

#include "support/RolesTest.h"

namespace torvex::test {
namespace {

using testing::ElementsAre;
using testing::StartsWith;

class RegistersRolesTest : public RolesTest {
  protected:
    std::string save(int roleId, const std::string& name, const std::string& description = "") {
        return registers().saveRole(roleId, name, description, 22);
    }
    std::string rowOf(int roleId) {
        const auto rows = rowsOf("select roleName, roleDesc, lock from TORVEX_ROLES where roleId = " +
                                 std::to_string(roleId));
        return rows.empty() ? "" : rows.front();
    }
};
INSTANTIATE_TEST_SUITE_P(Engines, RegistersRolesTest, bothEngines(), engineName);

TEST_P(RegistersRolesTest, RolesAreListedByNameWithHowManyHaveThem) {
    role(9, "Alone");
    row("TORVEX_ROLES_LOGINS", {{"roleId", desk}, {"loginId", bert}});
    row("TORVEX_ROLES_LOGINS", {{"roleId", desk}, {"loginId", bert}});
    row("TORVEX_ROLES_LOGINS", {{"roleId", desk}, {"loginId", 99}});
    EXPECT_THAT(
        linesOf(registers().getRoles()),
        ElementsAre("9|Alone|About Alone|0|0", "3|Desk|About Desk|2|0", "4|Programme|About Programme|1|0"));
}

TEST_P(RegistersRolesTest, TheLoginsOfARoleAreMarkedAmongAll) {
    const auto lines = linesOf(registers().getRoleLogins(desk));
    EXPECT_THAT(lines, testing::Contains("7|anna|Anna Author|1"));
    EXPECT_THAT(lines, testing::Contains("8|bert|Bert Broker|0"));
}

TEST_P(RegistersRolesTest, ARoleIsAdded) {
    const std::string id = save(0, "  Trainees ", " They learn ");
    EXPECT_EQ(rowOf(std::stoi(id)), "Trainees|They learn|");
    EXPECT_THAT(auditTrail(), ElementsAre("7|Anna Author|0||22|new|New role \"Trainees\""));
}

TEST_P(RegistersRolesTest, ARoleGetsAnotherNameAndIsLetGo) {
    hold("TORVEX_ROLES", "roleId", desk, host.session.id());
    EXPECT_EQ(save(desk, "Front desk", ""), "3");
    EXPECT_EQ(rowOf(desk), "Front desk||");
    EXPECT_THAT(auditTrail(), ElementsAre("7|Anna Author|0||22|save|Role \"Front desk\" has been updated"));
}

TEST_P(RegistersRolesTest, ARoleMayBeWrittenOtherwise) {
    EXPECT_EQ(save(desk, "DESK"), "3");
}

TEST_P(RegistersRolesTest, LongTextsAreCut) {
    EXPECT_EQ(save(desk, std::string(60, 'x'), std::string(600, 'y')), "3");
    EXPECT_EQ(rowOf(desk), std::string(50, 'x') + "|" + std::string(500, 'y') + "|");
}

TEST_P(RegistersRolesTest, RefusalsChangeNothing) {
    expectRefusal("-1", [&] { return save(99, "New"); });
    expectRefusal("-2", [&] { return save(desk, "programme"); });
    expectRefusal("-2", [&] { return save(0, " Programme "); });
    expectRefusal("-3", [&] { return save(desk, "   "); });
    expectRefusal("-3", [&] { return save(0, ""); });
    hold("TORVEX_ROLES", "roleId", desk, bertsSession);
    expectRefusal("-4", [&] { return save(desk, "New"); });
    actAsNobody();
    expectRefusal("-10", [&] { return save(desk, "New"); });
}

TEST_P(RegistersRolesTest, AFailureAnywhereChangesNothing) {
    failEverywhere("3", "-99", [&] { return save(desk, "New"); });
}

TEST_P(RegistersRolesTest, OfTwoWhoAddARoleOfOneNameOneDoes) {
    beforeTransaction([&] { role(9, "Trainees"); });
    EXPECT_EQ(save(0, "Trainees"), "-2");
}

TEST_P(RegistersRolesTest, ListsSayWhatFailed) {
    connection().execute("drop table TORVEX_ROLES_LOGINS");
    EXPECT_THAT(errorOf([&] { registers().getRoles(); }), StartsWith(chain({"getRoles !"})));
    EXPECT_THAT(errorOf([&] { registers().getRoleLogins(3); }), StartsWith(chain({"getRoleLogins !"})));
}

}  // namespace
}  // namespace torvex::test
