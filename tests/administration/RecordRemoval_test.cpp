// Roles and servers go alike.

#include <gmock/gmock.h>

#include "support/RecordsTest.h"

namespace torvex::test {
namespace {

using testing::ElementsAre;
using testing::IsEmpty;

class RoleRemovalTest : public RecordsTest {
  protected:
    void SetUp() override {
        RecordsTest::SetUp();
        if (HasFatalFailure()) return;
        for (const int id : {3, 4}) {
            const std::string name = "Role \"" + std::to_string(id) + "\" o'x";
            row("TORVEX_ROLES", {{"roleId", id}, {"roleName", name}});
            row("TORVEX_ROLES_LOGINS", {{"roleId", id}, {"loginId", anna}});
            row("TORVEX_EDIT_RIGHTS", {{"roleId", id}, {"site", "aa"}, {"lang", "en"}});
            row("TORVEX_ADVANCED_RIGHTS", {{"roleId", id}, {"advId", 21}});
        }
    }

    std::string remove(int id, int advId = 22) { return manager().deleteRole(id, advId); }
};
INSTANTIATE_TEST_SUITE_P(Engines, RoleRemovalTest, bothEngines(), engineName);

TEST_P(RoleRemovalTest, ARoleGoesWithItsRightsAndMemberships) {
    EXPECT_EQ(remove(3), "");
    for (const auto* table :
         {"TORVEX_ROLES", "TORVEX_ROLES_LOGINS", "TORVEX_EDIT_RIGHTS", "TORVEX_ADVANCED_RIGHTS"}) {
        EXPECT_THAT(rowsOf(std::string("select roleId from ") + table), ElementsAre("4")) << table;
    }
    EXPECT_THAT(auditTrail(),
                ElementsAre("7|Anna Author|0||22|delete|Role \"Role \"3\" o'x\" has been removed"));
}

TEST_P(RoleRemovalTest, TheLineIsWrittenWithoutAnEntryOfTheMenuToo) {
    EXPECT_EQ(manager().deleteRole(3), "");
    EXPECT_THAT(auditTrail(),
                ElementsAre("7|Anna Author|0||0|delete|Role \"Role \"3\" o'x\" has been removed"));
}

TEST_P(RoleRemovalTest, NobodyRemovesNoRole) {
    actAsNobody();
    expectRefusal("-10", [&] { return remove(3); });
    expectRefusal("-10", [&] { return remove(99); });
}

TEST_P(RoleRemovalTest, ARoleThatAnotherAuthorHasOpenStays) {
    hold("TORVEX_ROLES", "roleId", 3, bertsSession);
    expectRefusal("-3", [&] { return remove(3); });
}

TEST_P(RoleRemovalTest, ARoleThatIsNotThereCantBeLocked) {
    for (const int id : {99, 0, -3}) expectRefusal("-3", [&] { return remove(id); });
}

TEST_P(RoleRemovalTest, TheRoleOfTheLastWhoMayGiveRightsStays) {
    connection().execute("update TORVEX_ADVANCED_RIGHTS set editAccess = 1, site = '', lang = ''");
    row("TORVEX_ADVANCED_RIGHTS", {{"roleId", 3}, {"advId", 22}, {"editAccess", 1}});
    expectRefusal("-4", [&] { return remove(3); });
    row("TORVEX_ADVANCED_RIGHTS", {{"roleId", 4}, {"advId", 22}, {"editAccess", 1}});
    EXPECT_EQ(remove(3), "");
}

TEST_P(RoleRemovalTest, TheSystemAdministratorRemovesItAllTheSame) {
    connection().execute("update TORVEX_ADVANCED_RIGHTS set editAccess = 1, site = '', lang = ''");
    row("TORVEX_ADVANCED_RIGHTS", {{"roleId", 3}, {"advId", 22}, {"editAccess", 1}});
    actAs(1, "sa", "The Administrator");
    EXPECT_EQ(remove(3), "");
}

TEST_P(RoleRemovalTest, AFailureAnywhereChangesNothing) {
    failEverywhere("", "-99", [&] { return remove(3); });
}

class ServerRemovalTest : public RecordsTest {
  protected:
    void SetUp() override {
        RecordsTest::SetUp();
        if (HasFatalFailure()) return;
        row("TORVEX_SERVERS", {{"serverId", 3}, {"serverName", "b"}});
        row("TORVEX_SERVERS", {{"serverId", 4}, {"serverName", ""}});
    }

    std::string remove(int id, int advId = 62) { return manager().deleteServer(id, advId); }
};
INSTANTIATE_TEST_SUITE_P(Engines, ServerRemovalTest, bothEngines(), engineName);

TEST_P(ServerRemovalTest, AServerGoes) {
    EXPECT_EQ(remove(3), "");
    EXPECT_THAT(rowsOf("select serverId from TORVEX_SERVERS"), ElementsAre("4"));
    EXPECT_THAT(auditTrail(),
                ElementsAre("7|Anna Author|0||62|delete|Load balancing server \"b\" has been removed"));
}

TEST_P(ServerRemovalTest, WithoutAnEntryOfTheMenuNoLineIsWritten) {
    EXPECT_EQ(manager().deleteServer(3), "");
    EXPECT_THAT(auditTrail(), IsEmpty());
}

TEST_P(ServerRemovalTest, NobodyRemovesNoServer) {
    actAsNobody();
    expectRefusal("-10", [&] { return remove(3); });
    expectRefusal("-10", [&] { return remove(99); });
}

TEST_P(ServerRemovalTest, AServerWithoutANameOrARowIsRefused) {
    hold("TORVEX_SERVERS", "serverId", 4, bertsSession);
    for (const int id : {4, 99, 0, -3}) expectRefusal("-1", [&] { return remove(id); });
}

TEST_P(ServerRemovalTest, AServerThatAnotherAuthorHasOpenStays) {
    hold("TORVEX_SERVERS", "serverId", 3, bertsSession);
    expectRefusal("-3", [&] { return remove(3); });
}

TEST_P(ServerRemovalTest, AFailureAnywhereChangesNothing) {
    failEverywhere("", "-99", [&] { return remove(3); });
}

}  // namespace
}  // namespace torvex::test
