#include <gmock/gmock.h>

#include "support/RegistersTest.h"

namespace torvex::test {
namespace {

using testing::ElementsAre;
using testing::StartsWith;

class RegistersGroupsTest : public RegistersTest {
  protected:
    void SetUp() override {
        RegistersTest::SetUp();
        if (HasFatalFailure()) return;
        welcome_ = page("aa.en.01").title("Welcome").insert();
        group(5, "Friends");
        group(6, "Board");
    }
    std::string save(int groupId, const std::string& name, const std::string& description = "",
                     const std::string& entryPage = "", const std::string& exitPage = "") {
        return registers().saveGroup(groupId, name, description, entryPage, exitPage, 31);
    }
    std::string rowOf(int groupId) {
        const auto rows = rowsOf(
            "select name, description, entryPage, exitPage, lock from TORVEX_USERGROUPS "
            "where groupId = " +
            std::to_string(groupId));
        return rows.empty() ? "" : rows.front();
    }
    std::string welcome() const { return std::to_string(static_cast<int>(welcome_)); }

    PageId welcome_ = 0;
};
INSTANTIATE_TEST_SUITE_P(Engines, RegistersGroupsTest, bothEngines(), engineName);

TEST_P(RegistersGroupsTest, GroupsAreListedByNameWithWhatTheyGuard) {
    user(1, "rose", "x", {5, 5, 6});
    user(2, "lily", "x", {5});
    pageGroup(welcome_, 5);
    row("TORVEX_PAGES_GROUPS_DESIGN", {{"pageId", welcome_}, {"groupId", 5}});
    row("TORVEX_PAGES_GROUPS_DESIGN", {{"pageId", 77}, {"groupId", 5}});
    row("TORVEX_FOLDERS_GROUPS",
        {{"fld_type", "img"}, {"fld_site", "aa"}, {"fld_id", "001"}, {"groupId", 5}});
    save(5, "Friends", "Of the garden", welcome(), "");
    EXPECT_THAT(linesOf(registers().getGroups()),
                ElementsAre("6|Board|-|-1|-|-1|-|1|0|0",
                            "5|Friends|Of the garden|" + welcome() + "|Welcome|-1|-|2|2|1"));
}

TEST_P(RegistersGroupsTest, AGroupIsAdded) {
    const std::string id = save(0, "  Members ", " All ", " AA.EN.01 ", welcome());
    EXPECT_EQ(rowOf(std::stoi(id)), "Members|All|" + welcome() + "|" + welcome() + "|");
    EXPECT_THAT(auditTrail(), ElementsAre("7|Anna Author|0||31|new|New intranet/extranet group \"Members\""));
}

TEST_P(RegistersGroupsTest, AGroupIsChangedAndLetGo) {
    hold("TORVEX_USERGROUPS", "groupId", 5, host.session.id());
    EXPECT_EQ(save(5, "FRIENDS", "New", "", "-1"), "5");
    EXPECT_EQ(rowOf(5), "FRIENDS|New|-1|-1|");
    EXPECT_THAT(auditTrail(),
                ElementsAre("7|Anna Author|0||31|save|Intranet/extranet group \"FRIENDS\" has been updated"));
}

TEST_P(RegistersGroupsTest, RefusalsChangeNothing) {
    expectRefusal("-1", [&] { return save(99, "New"); });
    expectRefusal("-1", [&] { return save(1, "New"); });
    expectRefusal("-1", [&] { return save(-1, "New"); });
    expectRefusal("-2", [&] { return save(5, "board"); });
    expectRefusal("-2", [&] { return save(0, "EVERYBODY"); });
    expectRefusal("-2", [&] { return save(0, "inherited"); });
    expectRefusal("-3", [&] { return save(5, "  "); });
    expectRefusal("-5", [&] { return save(5, "New", "", "99"); });
    expectRefusal("-5", [&] { return save(5, "New", "", "", "nowhere"); });
    hold("TORVEX_USERGROUPS", "groupId", 5, bertsSession);
    expectRefusal("-4", [&] { return save(5, "New"); });
    actAsNobody();
    expectRefusal("-10", [&] { return save(5, "New"); });
}

TEST_P(RegistersGroupsTest, AFailureAnywhereChangesNothing) {
    failEverywhere("5", "-99", [&] { return save(5, "New"); });
}

TEST_P(RegistersGroupsTest, WhatFailsIsRaised) {
    drop("TORVEX_GROUPS_USERS");
    EXPECT_THAT(errorOf([&] { registers().getGroups(); }), StartsWith(chain({"getGroups !"})));
}

}  // namespace
}  // namespace torvex::test
