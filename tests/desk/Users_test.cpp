#include <gmock/gmock.h>

#include "accounts/SecondFactor.h"
#include "support/RegistersTest.h"

namespace torvex::test {
namespace {

using testing::ElementsAre;
using testing::IsEmpty;
using testing::SizeIs;
using testing::StartsWith;

class RegistersUsersTest : public RegistersTest {
  protected:
    void SetUp() override {
        RegistersTest::SetUp();
        if (HasFatalFailure()) return;
        group(5, "Friends");
        group(6, "Board");
        user(1, "rose", "thorn", {5, 5});
        user(2, "lily", "pond", {});
        connection().execute(
            "update TORVEX_USERS set firstname = 'Rosa', lastname = 'Canina' where userId = 1");
    }
    std::string save(double userId, const std::string& username, const std::string& password = "",
                     const std::string& validFrom = "", const std::string& validTo = "") {
        return registers().saveUser(userId, username, password, " Lilian ", " Teich ", validFrom, validTo,
                                    32);
    }
    std::string rowOf(int userId) {
        const auto rows = rowsOf(
            "select username, password, firstname, lastname, validFrom, validTo, lock from "
            "TORVEX_USERS where userId = " +
            std::to_string(userId));
        return rows.empty() ? "" : rows.front();
    }
    std::vector<std::string> groupsOf(int userId) {
        return rowsOf("select groupId from TORVEX_GROUPS_USERS where userId = " + std::to_string(userId) +
                      " order by groupId");
    }
    std::vector<std::string> found(const std::string& words, int groupId = 0, double from = 0) {
        std::vector<std::string> names;
        const Value list = registers().getUsers(words, groupId, from);
        if (!list.isGrid()) return names;
        for (std::size_t i = 0; i < list.grid().rows(); ++i) names.push_back(list.grid().at(1, i).toText());
        return names;
    }
    std::string set(double userId, int groupId, bool has) {
        return registers().setUserGroup(userId, groupId, has, 32);
    }
    std::vector<std::string> import(const std::string& table, bool dryRun = false) {
        return linesOf(registers().importUsers(table, dryRun, 32));
    }
};
INSTANTIATE_TEST_SUITE_P(Engines, RegistersUsersTest, bothEngines(), engineName);

// ---- Looking ----

TEST_P(RegistersUsersTest, AListGoesOnBehindTheThirtyThousandthName) {
    connection().execute(
        "insert into TORVEX_USERS (userId, username, password, firstname, lastname) "
        "with recursive n (i) as (select 1 union all select i + 1 from n where i < 33000) "
        "select 100 + i, 'guest' || cast(100000 + i as text), '', '', '' from n");
    EXPECT_EQ(found("guest", 0, 32'767).front(), "guest132768");
    EXPECT_EQ(found("guest", 0, 32'768).front(), "guest132769");
    EXPECT_THAT(found("guest", 0, 32'999), ElementsAre("guest133000"));
    EXPECT_THAT(found("guest", 0, 33'000), IsEmpty());
    EXPECT_THAT(found("guest", 0, -1), IsEmpty());
    EXPECT_THAT(found("guest", 0, 1e18), IsEmpty());
}

TEST_P(RegistersUsersTest, UsersAreListedByName) {
    EXPECT_THAT(linesOf(registers().getUsers()), ElementsAre("2|lily|-|-|-|-|0", "1|rose|Rosa|Canina|-|-|1"));
    EXPECT_THAT(linesOf(registers().getUser(1)), ElementsAre("1|rose|Rosa|Canina|-|-|1"));
    EXPECT_TRUE(registers().getUser(99).isEmpty());
}

TEST_P(RegistersUsersTest, WordsStandInAnyOfTheNames) {
    user(3, "50%_off", "x", {});
    EXPECT_THAT(found(" CAN  os "), ElementsAre("rose"));
    EXPECT_THAT(found("can lily"), IsEmpty());
    EXPECT_THAT(found("%"), ElementsAre("50%_off"));
    EXPECT_THAT(found("_"), ElementsAre("50%_off"));
}

TEST_P(RegistersUsersTest, AGroupNarrowsThem) {
    EXPECT_THAT(found("", 5), ElementsAre("rose"));
    EXPECT_THAT(found("", 6), IsEmpty());
    EXPECT_THAT(found("lily", 5), IsEmpty());
}

TEST_P(RegistersUsersTest, ManyComeInParts) {
    connection().execute(
        "insert into TORVEX_USERS (username) with recursive n (i) as (select 1 union all select i + 1 from n "
        "where i < 600) select 'user' || cast(i + 1000 as text) from n");
    EXPECT_THAT(found(""), SizeIs(500));
    EXPECT_THAT(found("", 0, 500), SizeIs(102));
    EXPECT_THAT(found("", 0, -1), IsEmpty());
}

// ---- Second factors ----

TEST_P(RegistersUsersTest, ALostFactorIsReset) {
    giveSecondFactor(connection(), ofVisitor(1), "MZXW6YTB", 1, host.clock.now());
    renewRecoveryCodes(connection(), ofVisitor(1));
    EXPECT_THAT(linesOf(registers().getUserFactor(1)), ElementsAre("2026-06-15T12:00:00|10"));
    EXPECT_TRUE(registers().getUserFactor(2).isEmpty());
    EXPECT_EQ(registers().resetUserFactor(1, 32), "");
    EXPECT_EQ(cell("select count(*) from TORVEX_USER_FACTORS"), "0");
    EXPECT_EQ(cell("select count(*) from TORVEX_USER_RECOVERY_CODES"), "0");
    EXPECT_THAT(auditTrail().back(),
                testing::HasSubstr(
                    "|32|delete|Second factor of intranet/extranet user \"Canina Rosa\" has been reset"));
    EXPECT_EQ(registers().resetUserFactor(1, 32), "-3");
    EXPECT_EQ(auditTrail().size(), 1U);
}

TEST_P(RegistersUsersTest, OneThatIsNotThereIsNotReset) {
    EXPECT_EQ(registers().resetUserFactor(99, 32), "-1");
    EXPECT_EQ(registers().resetUserFactor(2, 32), "-3");
    actAsNobody();
    EXPECT_EQ(registers().resetUserFactor(1, 32), "-10");
    EXPECT_THAT(auditTrail(), IsEmpty());
}

TEST_P(RegistersUsersTest, AResetThatFailsChangesNothing) {
    giveSecondFactor(connection(), ofVisitor(1), "MZXW6YTB", 1, host.clock.now());
    drop("TORVEX_USER_RECOVERY_CODES");
    EXPECT_EQ(registers().resetUserFactor(1, 32), "-99");
    EXPECT_EQ(cell("select count(*) from TORVEX_USER_FACTORS"), "1");
}

// ---- Saving ----

TEST_P(RegistersUsersTest, AUserIsAdded) {
    const std::string id = save(0, " fern ", " Moss ", "20260101", " 20261231 ");
    EXPECT_EQ(rowOf(std::stoi(id)), "fern|Moss|Lilian|Teich|20260101|20261231|");
    EXPECT_THAT(auditTrail(),
                ElementsAre("7|Anna Author|0||32|new|New intranet/extranet user \"Teich Lilian\""));
}

TEST_P(RegistersUsersTest, AUserIsChangedAndLetGo) {
    hold("TORVEX_USERS", "userId", 2, host.session.id());
    EXPECT_EQ(save(2, "LILY"), "2");
    EXPECT_EQ(rowOf(2), "LILY|pond|Lilian|Teich|||");
    EXPECT_THAT(auditTrail(),
                ElementsAre("7|Anna Author|0||32|save|Intranet/extranet user \"Teich Lilian\" has "
                            "been updated"));
}

TEST_P(RegistersUsersTest, TheStrongStoreKeepsPasswordsStrongly) {
    host.application.set("torvex_password_store", "strong");
    EXPECT_EQ(save(2, "lily", "water"), "2");
    EXPECT_THAT(cell("select password from TORVEX_USERS where userId = 2"), StartsWith("strong:"));
    EXPECT_NE(cell("select passwordHash from TORVEX_USERS where userId = 2"), "");
}

TEST_P(RegistersUsersTest, RefusalsChangeNothing) {
    expectRefusal("-1", [&] { return save(99, "new"); });
    expectRefusal("-2", [&] { return save(2, " ROSE "); });
    expectRefusal("-2", [&] { return save(0, "rose", "x"); });
    expectRefusal("-3", [&] { return save(2, "  "); });
    expectRefusal("-5", [&] { return save(0, "new", "  "); });
    expectRefusal("-6", [&] { return save(2, "new", "", "20261301"); });
    expectRefusal("-6", [&] { return save(2, "new", "", "", "soon"); });
    hold("TORVEX_USERS", "userId", 2, bertsSession);
    expectRefusal("-4", [&] { return save(2, "new"); });
    actAsNobody();
    expectRefusal("-10", [&] { return save(2, "new"); });
}

TEST_P(RegistersUsersTest, AFailureAnywhereChangesNothing) {
    failEverywhere("2", "-99", [&] { return save(2, "new", "password"); });
}

// ---- Groups ----

TEST_P(RegistersUsersTest, AUserComesIntoAGroupAndOutOfIt) {
    EXPECT_EQ(set(2, 5, true), "0");
    EXPECT_EQ(set(2, 5, true), "0");
    EXPECT_THAT(groupsOf(2), ElementsAre("5"));
    EXPECT_EQ(set(1, 5, false), "0");
    EXPECT_THAT(groupsOf(1), IsEmpty()) << "both of its rows";
    EXPECT_EQ(auditTrail().back(),
              "7|Anna Author|0||32|save|Intranet/extranet user \"Canina Rosa\" is no longer in the group "
              "\"Friends\"");
}

TEST_P(RegistersUsersTest, AGroupThatCantBeChangedChangesNothing) {
    expectRefusal("-1", [&] { return set(99, 5, true); });
    expectRefusal("-1", [&] { return set(2, 99, true); });
    expectRefusal("-1", [&] { return set(2, 1, true); });
    hold("TORVEX_USERS", "userId", 2, bertsSession);
    expectRefusal("-4", [&] { return set(2, 5, true); });
    actAsNobody();
    expectRefusal("-10", [&] { return set(2, 5, true); });
}

TEST_P(RegistersUsersTest, AFailureOfAGroupChangesNothing) {
    failEverywhere("0", "-99", [&] { return set(2, 5, true); });
}

// ---- A table of them ----

TEST_P(RegistersUsersTest, ADryRunSaysWhatEachLineWouldDo) {
    const auto before = everything();
    EXPECT_THAT(import("username;lastname;password;groups\nrose;Canina;;Friends\nlily;Teich;;Friends|Board\n"
                       "fern;\"Farn; groß\";moss;\nmoss;;;\nrose;x;;\nivy;;x;Nobody",
                       true),
                ElementsAre("2|rose|same|", "3|lily|changes|lastname, groups", "4|fern|adds|",
                            "5|moss|bad|a new user needs a password",
                            "6||bad|the user stands in line 2 already", StartsWith("7||bad|")));
    EXPECT_TRUE(everything() == before);
    EXPECT_THAT(auditTrail(), IsEmpty());
}

TEST_P(RegistersUsersTest, ATableIsTakenWhole) {
    EXPECT_THAT(import("username,password,groups\nfern,moss,Friends|Board\nlily,pond,\nrose,new,Board"),
                ElementsAre("2|fern|adds|", "3|lily|same|", "4|rose|changes|password, groups"));
    EXPECT_EQ(cell("select password from TORVEX_USERS where username = 'fern'"), "moss");
    EXPECT_THAT(groupsOf(1), ElementsAre("6"));
    EXPECT_THAT(auditTrail(), ElementsAre("7|Anna Author|0||32|import|Intranet/extranet users imported: 1 "
                                          "added, 1 changed, 1 as they are"));
}

TEST_P(RegistersUsersTest, OneBadLineKeepsAllOut) {
    const auto before = everything();
    EXPECT_THAT(import("username,password\nfern,moss\nivy,"),
                ElementsAre("2|fern|adds|", "3|ivy|bad|a new user needs a password"));
    EXPECT_THAT(import("name\nfern"), SizeIs(1));
    EXPECT_THAT(import(""), SizeIs(1));
    EXPECT_THAT(import("username,password\n\"fern,moss"), SizeIs(1));
    EXPECT_TRUE(everything() == before);
    EXPECT_THAT(auditTrail(), IsEmpty());
}

TEST_P(RegistersUsersTest, NobodyTakesNoTable) {
    actAsNobody();
    EXPECT_THAT(import("username,password\nfern,moss"), IsEmpty());
    EXPECT_EQ(cell("select userId from TORVEX_USERS where username = 'fern'"), "");
}

TEST_P(RegistersUsersTest, WhatFailsIsRaised) {
    drop("TORVEX_GROUPS_USERS");
    EXPECT_THAT(errorOf([&] { registers().getUsers(); }), StartsWith(chain({"getUsers !"})));
    EXPECT_THAT(errorOf([&] { registers().getUser(1); }), StartsWith(chain({"getUser !"})));
    EXPECT_THAT(errorOf([&] { import("username,password\nfern,moss"); }),
                StartsWith(chain({"importUsers !"})));
}

}  // namespace
}  // namespace torvex::test
