#include <gmock/gmock.h>

#include "accounts/SecondFactor.h"
#include "support/RecordsTest.h"

namespace torvex::test {
namespace {

using testing::ElementsAre;
using testing::IsEmpty;
using testing::StartsWith;

class GroupsTest : public RecordsTest {
  protected:
    void SetUp() override {
        RecordsTest::SetUp();
        if (HasFatalFailure()) return;
        row("TORVEX_USERGROUPS", {{"groupId", 5},
                                  {"name", "Friends of O'Neil"},
                                  {"description", "Who pays"},
                                  {"entryPage", 12},
                                  {"exitPage", 13}});
        group(6, "Staff");
    }

    std::string remove(int groupId, int advId = 0) { return manager().deleteGroup(groupId, advId); }
    /// In everything that names groups.
    void useEverywhere(int groupId) {
        for (const auto* twin : {"DESIGN", "LIVE"}) {
            row(std::string("TORVEX_PAGES_GROUPS_") + twin, {{"pageId", 12}, {"groupId", groupId}});
        }
        row("TORVEX_FOLDERS_GROUPS",
            {{"fld_type", "img"}, {"fld_site", "aa"}, {"fld_id", "001"}, {"groupId", groupId}});
        row("TORVEX_GROUPS_USERS", {{"groupId", groupId}, {"userId", 40}});
    }
    std::vector<std::string> usersOf(const std::string& table) {
        return rowsOf("select groupId from " + table + " where groupId > 1 order by groupId");
    }
};
INSTANTIATE_TEST_SUITE_P(Engines, GroupsTest, bothEngines(), engineName);

TEST_P(GroupsTest, AGroupIsReadByItsNumber) {
    EXPECT_EQ(manager().getGroupName(5), "Friends of O'Neil");
    EXPECT_EQ(manager().getGroupDescription(5), "Who pays");
    EXPECT_EQ(manager().getGroupEntryPage(5), 12);
    EXPECT_EQ(manager().getGroupExitPage(5), 13);
}

TEST_P(GroupsTest, AGroupWithoutPagesHasMinusOne) {
    EXPECT_EQ(manager().getGroupEntryPage(6), -1);
    EXPECT_EQ(manager().getGroupExitPage(6), -1);
    connection().execute("update TORVEX_USERGROUPS set entryPage = null, exitPage = null");
    EXPECT_EQ(manager().getGroupEntryPage(6), -1);
    EXPECT_EQ(manager().getGroupExitPage(6), -1);
}

TEST_P(GroupsTest, AGroupThatIsNotThereHasNothing) {
    EXPECT_EQ(manager().getGroupName(99), "");
    EXPECT_EQ(manager().getGroupDescription(99), "");
    EXPECT_EQ(manager().getGroupEntryPage(99), 0);
    EXPECT_EQ(manager().getGroupExitPage(99), 0);
    EXPECT_EQ(manager().getGroupId("Nobody"), 0);
}

TEST_P(GroupsTest, AGroupIsFoundByItsName) {
    EXPECT_EQ(manager().getGroupId("friends of o'neil"), 5);
    EXPECT_EQ(manager().getGroupId("everybody"), 1);
}

TEST_P(GroupsTest, AGroupGoesWithAllThatItGuards) {
    useEverywhere(5);
    useEverywhere(6);
    EXPECT_EQ(remove(5, 31), "0");
    for (const auto* table : {"TORVEX_PAGES_GROUPS_DESIGN", "TORVEX_PAGES_GROUPS_LIVE",
                              "TORVEX_FOLDERS_GROUPS", "TORVEX_GROUPS_USERS", "TORVEX_USERGROUPS"}) {
        EXPECT_THAT(usersOf(table), ElementsAre("6")) << table;
    }
    EXPECT_THAT(auditTrail(),
                ElementsAre("7|Anna Author|0||31|delete|Intranet/extranet group \"Friends of O'Neil\" has "
                            "been removed"));
}

TEST_P(GroupsTest, WithoutAnEntryOfTheMenuNoLineIsWritten) {
    EXPECT_EQ(remove(5), "0");
    EXPECT_THAT(auditTrail(), IsEmpty());
}

TEST_P(GroupsTest, NobodyRemovesNoGroup) {
    actAsNobody();
    expectRefusal("1", [&] { return remove(5, 31); });
    expectRefusal("1", [&] { return remove(99, 31); });
}

TEST_P(GroupsTest, AGroupThatAnotherAuthorHasOpenStays) {
    useEverywhere(5);
    hold("TORVEX_USERGROUPS", "groupId", 5, bertsSession);
    expectRefusal("2", [&] { return remove(5, 31); });
}

TEST_P(GroupsTest, AGroupThatIsNotThereCantBeLocked) {
    expectRefusal("2", [&] { return remove(99, 31); });
}

TEST_P(GroupsTest, AFailureAnywhereChangesNothing) {
    useEverywhere(5);
    failEverywhere("0", "99", [&] { return remove(5, 31); });
}

TEST_P(GroupsTest, FailuresOfReadingHaveTheOperationsLine) {
    drop("TORVEX_USERGROUPS");
    EXPECT_THAT(errorOf([&] { manager().getGroupName(5); }), StartsWith(chain({"getGroupName !"})));
    EXPECT_THAT(errorOf([&] { manager().getGroupDescription(5); }),
                StartsWith(chain({"getGroupDescription !"})));
    EXPECT_THAT(errorOf([&] { manager().getGroupEntryPage(5); }), StartsWith(chain({"getGroupEntryPage !"})));
    EXPECT_THAT(errorOf([&] { manager().getGroupExitPage(5); }), StartsWith(chain({"getGroupExitPage !"})));
    EXPECT_THAT(errorOf([&] { manager().getGroupId("x"); }), StartsWith(chain({"getGroupId !"})));
}

// ---- Users ----

class VisitorsTest : public GroupsTest {
  protected:
    void SetUp() override {
        GroupsTest::SetUp();
        if (HasFatalFailure()) return;
        word(2560, "unknown");
        person(40, "O'Neil", "Ann");
    }
    void person(int id, const Value& lastname, const Value& firstname) {
        row("TORVEX_USERS", {{"userId", id},
                             {"username", "user" + std::to_string(id)},
                             {"lastname", lastname},
                             {"firstname", firstname}});
    }
    std::string removeUser(double id, int advId = 0) { return manager().deleteUser(id, advId); }
    std::vector<std::string> groupsOf(double id) {
        const Value list = manager().getUserGroups(id);
        std::vector<std::string> lines;
        if (list.isEmpty()) return lines;
        EXPECT_EQ(list.grid().columns(), 4U);
        for (std::size_t row = 0; row < list.grid().rows(); ++row) {
            lines.push_back(list.grid().at(0, row).toText() + "|" + list.grid().at(1, row).toText() + "|" +
                            list.grid().at(2, row).toText());
        }
        return lines;
    }
};
INSTANTIATE_TEST_SUITE_P(Engines, VisitorsTest, bothEngines(), engineName);

TEST_P(VisitorsTest, OneWhoIsRemovedTakesHerSecondFactorAlong) {
    person(41, "Falk", "Iris");
    for (const int id : {40, 41}) {
        giveSecondFactor(connection(), ofVisitor(id), "MZXW6YTB", 1, host.clock.now());
        renewRecoveryCodes(connection(), ofVisitor(id));
    }
    EXPECT_EQ(removeUser(40), "");
    EXPECT_EQ(cell("select userId from TORVEX_USER_FACTORS"), "41");
    EXPECT_EQ(cell("select count(*) from TORVEX_USER_RECOVERY_CODES"), "10");
}

TEST_P(VisitorsTest, TheFullNameBeginsWithTheLastName) {
    person(41, "Falk", Value());
    person(42, "", "Iris");
    EXPECT_EQ(manager().getUserFullname(40), "O'Neil Ann");
    EXPECT_EQ(manager().getUserFullname(41), "Falk");
    EXPECT_EQ(manager().getUserFullname(42), "Iris");
}

TEST_P(VisitorsTest, OneWithoutANameOrARowIsUnknown) {
    person(41, " ", " ");
    for (const double id : {41.0, 99.0, 0.0, -1.0, 40.5, 1e20}) {
        EXPECT_EQ(manager().getUserFullname(id), "[unknown]") << id;
    }
}

TEST_P(VisitorsTest, AllGroupsButTheReservedOnesAreListedByNameAndMarked) {
    group(7, "Inherited");
    group(8, "EVERYBODY");
    row("TORVEX_GROUPS_USERS", {{"groupId", 6}, {"userId", 40}});
    row("TORVEX_GROUPS_USERS", {{"groupId", 6}, {"userId", 40}});
    EXPECT_THAT(groupsOf(40), ElementsAre("5|Friends of O'Neil|0", "6|Staff|1"));
    EXPECT_THAT(groupsOf(41), ElementsAre("5|Friends of O'Neil|0", "6|Staff|0"));
}

TEST_P(VisitorsTest, WithoutGroupsThereIsNoList) {
    connection().execute("delete from TORVEX_USERGROUPS where groupId > 1");
    EXPECT_TRUE(manager().getUserGroups(40).isEmpty());
}

TEST_P(VisitorsTest, AUserGoesWithTheMemberships) {
    person(41, "Falk", "Iris");
    for (const int id : {40, 41}) row("TORVEX_GROUPS_USERS", {{"groupId", 5}, {"userId", id}});
    EXPECT_EQ(removeUser(40, 32), "");
    EXPECT_THAT(rowsOf("select userId from TORVEX_USERS"), ElementsAre("41"));
    EXPECT_THAT(rowsOf("select userId from TORVEX_GROUPS_USERS"), ElementsAre("41"));
    EXPECT_THAT(
        auditTrail(),
        ElementsAre("7|Anna Author|0||32|delete|Intranet/extranet user \"O'Neil Ann\" has been removed"));
}

TEST_P(VisitorsTest, ARemovalByNoEntryWritesNoLine) {
    EXPECT_EQ(removeUser(40), "");
    EXPECT_THAT(auditTrail(), IsEmpty());
}

TEST_P(VisitorsTest, NobodyRemovesNoUser) {
    actAsNobody();
    expectRefusal("-10", [&] { return removeUser(40, 32); });
    expectRefusal("-10", [&] { return removeUser(99, 32); });
}

TEST_P(VisitorsTest, AUserThatAnotherAuthorHasOpenStays) {
    row("TORVEX_GROUPS_USERS", {{"groupId", 5}, {"userId", 40}});
    hold("TORVEX_USERS", "userId", 40, bertsSession);
    expectRefusal("-3", [&] { return removeUser(40, 32); });
}

TEST_P(VisitorsTest, AUserThatIsNotThereCantBeLocked) {
    for (const double id : {99.0, 0.0, -1.0, 40.5, 1e20}) {
        expectRefusal("-3", [&] { return removeUser(id, 32); });
    }
}

TEST_P(VisitorsTest, AFailureOfARemovalChangesNothing) {
    row("TORVEX_GROUPS_USERS", {{"groupId", 5}, {"userId", 40}});
    failEverywhere("", "-99", [&] { return removeUser(40, 32); });
}

TEST_P(VisitorsTest, FailuresOfReadingUsersHaveTheOperationsLine) {
    drop("TORVEX_USERS");
    drop("TORVEX_GROUPS_USERS");
    EXPECT_THAT(errorOf([&] { manager().getUserFullname(40); }), StartsWith(chain({"getUserFullname !"})));
    EXPECT_THAT(errorOf([&] { manager().getUserGroups(40); }), StartsWith(chain({"getUserGroups !"})));
}

}  // namespace
}  // namespace torvex::test
