#include <filesystem>
#include <fmt/format.h>
#include <fstream>
#include <gmock/gmock.h>

#include "accounts/StrongPassword.h"
#include "cli/ProgramFixture.h"
#include "platform/text/Charset.h"

namespace torvex::test {
namespace {

using testing::AllOf;
using testing::HasSubstr;
using testing::IsEmpty;

class UsersCommand : public ProgramDatabaseTest {
  protected:
    /// The groups "Friends, old" (2) and "Staff" (3), and the user "ann" of the first.
    void SetUp() override {
        init();
        sql("insert into TORVEX_USERGROUPS (groupId, name) values (2, 'Friends, old')");
        sql("insert into TORVEX_USERGROUPS (groupId, name) values (3, 'Staff')");
        sql("insert into TORVEX_USERS (userId, username, password, firstname, lastname, validTo) values "
            "(5, 'ann', 'rose', 'Ann', 'O''Neil', '20261231')");
        sql("insert into TORVEX_GROUPS_USERS (groupId, userId) values (2, 5)");
    }

    ProgramResult importTable(const std::string& table, Arguments further = {}) {
        std::ofstream(folder() + "/users.csv", std::ios::binary) << table;
        Arguments arguments{"import", "users", folder() + "/users.csv", "--install", site()};
        arguments.insert(arguments.end(), further.begin(), further.end());
        return run(arguments);
    }
    std::string exported(Arguments further = {}) {
        Arguments arguments{"export", "users", "--install", site()};
        arguments.insert(arguments.end(), further.begin(), further.end());
        return output(arguments);
    }
    std::string users() {
        return sql(
            "select username, password, firstname, lastname, validFrom, validTo from TORVEX_USERS "
            "order by username");
    }
    std::string memberships() {
        return sql(
            "select username, groupId from TORVEX_GROUPS_USERS a inner join TORVEX_USERS b on "
            "a.userId = b.userId order by username, groupId");
    }
    /// That the table is refused for these lines, and nothing changed.
    void expectRefused(const std::string& table, const std::vector<std::string>& reasons,
                       Arguments further = {}) {
        const std::string before = users() + memberships();
        const ProgramResult result = importTable(table, std::move(further));
        EXPECT_EQ(result.code, 1);
        for (const std::string& reason : reasons) EXPECT_THAT(result.err, HasSubstr(reason));
        EXPECT_EQ(users() + memberships(), before);
    }
};
INSTANTIATE_TEST_SUITE_P(Engines, UsersCommand, bothEngines(), engineName);

constexpr const char* annsLine =
    R"({"username":"ann","password":"rose","firstname":"Ann","lastname":"O'Neil","validFrom":null,"validTo":"20261231"})"
    "\n";

TEST_P(UsersCommand, CommonPasswordsAreTakenWithAWarning) {
    const std::string table = "username,password\r\nbob,fern and moss\r\ncleo, Qwerty\r\nann,\r\n";
    const std::string warning = "users.csv, line 3: the password is one of the 100,000 commonest\n";
    const ProgramResult dry = importTable(table, {"--dry-run"});
    EXPECT_EQ(dry.code, 0);
    EXPECT_THAT(dry.err, HasSubstr(warning));
    const ProgramResult result = importTable(table);
    EXPECT_EQ(result.code, 0);
    EXPECT_THAT(result.err, HasSubstr(warning));
    EXPECT_THAT(result.err, testing::Not(HasSubstr("line 2:")));
    EXPECT_THAT(result.err, testing::Not(HasSubstr("line 4:")));
    EXPECT_EQ(result.out, "Users: 2 added, 0 changed, 1 as they are\n");
}

TEST_P(UsersCommand, AddsUsersWithTheirGroups) {
    const ProgramResult result = importTable(
        "username,password,firstname,lastname,validFrom,validTo,groups\r\n"
        "bob,oak,Bob,\"Falk, jr.\",2026-01-01,20261231,\"Staff|friends, OLD\"\r\n"
        "cleo,ivy,\"Cl\xC3\xA9o \"\"C\"\"\",,,,\r\n");
    EXPECT_EQ(result.code, 0) << result.err;
    EXPECT_EQ(result.out, "Users: 2 added, 0 changed, 0 as they are\n");
    EXPECT_EQ(
        users(),
        std::string(annsLine) +
            R"({"username":"bob","password":"oak","firstname":"Bob","lastname":"Falk, jr.","validFrom":"20260101","validTo":"20261231"})"
            "\n"
            R"({"username":"cleo","password":"ivy","firstname":"Cl)"
            "\xC3\xA9"
            R"(o \"C\"","lastname":"","validFrom":"","validTo":""})"
            "\n");
    EXPECT_EQ(memberships(),
              "{\"username\":\"ann\",\"groupId\":2}\n{\"username\":\"bob\",\"groupId\":2}\n"
              "{\"username\":\"bob\",\"groupId\":3}\n");
    EXPECT_THAT(sql("select action, description from TORVEX_AUDIT_TRAIL"),
                HasSubstr("Intranet/extranet users imported: 2 added, 0 changed, 0 as they are"));
}

TEST_P(UsersCommand, ChangesWhatTheTableSays) {
    const ProgramResult result = importTable("groups;USERNAME;password\nStaff;ANN;\n");
    EXPECT_EQ(result.code, 0) << result.err;
    EXPECT_EQ(result.out, "Users: 0 added, 1 changed, 0 as they are\n");
    EXPECT_EQ(users(), annsLine);
    EXPECT_EQ(memberships(), "{\"username\":\"ann\",\"groupId\":3}\n");
}

TEST_P(UsersCommand, AnEmptyCellTakesAwayButNotThePassword) {
    EXPECT_EQ(importTable("username,password,lastname,validTo,groups\nann,,,,\n").code, 0);
    EXPECT_EQ(
        users(),
        R"({"username":"ann","password":"rose","firstname":"Ann","lastname":"","validFrom":null,"validTo":""})"
        "\n");
    EXPECT_THAT(memberships(), IsEmpty());
}

TEST_P(UsersCommand, ADryRunSaysWhatWouldHappenLineByLine) {
    const std::string before = users() + memberships();
    const ProgramResult result =
        importTable("username,password,groups\nann,lily,Staff\n\nbob,oak,\n", {"--dry-run"});
    EXPECT_EQ(result.code, 0) << result.err;
    EXPECT_EQ(result.out,
              "line 2: changes \"ann\": password, groups\nline 4: adds \"bob\"\n"
              "Would be: 1 added, 1 changed, 0 as they are. Nothing was changed\n");
    EXPECT_EQ(users() + memberships(), before);
    EXPECT_THAT(sql("select action from TORVEX_AUDIT_TRAIL"), IsEmpty());
}

TEST_P(UsersCommand, ADryRunTellsBadLinesToo) {
    expectRefused("username,password\nbob,oak\ncleo,\n", {"users.csv, line 3: a new user needs a password"},
                  {"--dry-run"});
}

TEST_P(UsersCommand, BadLinesAreNamedByTheirNumbersAndNothingIsTaken) {
    expectRefused(
        "username,password,validFrom,groups\n"
        "bob,oak,,\n"
        "cleo,ivy,20261301,\n"
        "dan,elm,,Gardeners\n"
        "eve,fir\n"
        ",x,,\n"
        "\"fay\n\",x,,\n"
        "BOB,x,,\n"
        "gus,,,\n"
        "hal,x,,everybody\n",
        {"line 3: \"20261301\" is no day", "line 4: there is no group \"Gardeners\"",
         "line 5: it has 2 cells, and the first line 4", "line 6: it has no username",
         "line 7: it holds a control character", "line 9: the user stands in line 2 already",
         "line 10: a new user needs a password", "line 11: there is no group \"everybody\"",
         "nothing was changed"});
}

TEST_P(UsersCommand, ABadFirstLineIsTold) {
    expectRefused("", {"line 1: the file is empty"});
    expectRefused("\n\n", {"line 1: the file is empty"});
    expectRefused("password\nx\n", {"line 1: the column username is missing"});
    expectRefused("username,colour\nbob,red\n", {"line 1: there is no column \"colour\"", "firstname"});
    expectRefused("username,Username\nbob,bob\n", {"line 1: the column username stands there twice"});
    expectRefused("username,password\nbob,\"oak\n", {"line 2: the quote is never closed"});
}

TEST_P(UsersCommand, ReadsOtherEncodings) {
    const std::string table = "username,password,lastname\nbob,oak,M\xC3\xBCller\n";
    EXPECT_EQ(importTable(charset::toUtf16File(table)).code, 0);
    EXPECT_THAT(users(), HasSubstr("M\xC3\xBCller"));
    EXPECT_EQ(importTable("\xEF\xBB\xBF"
                          "username,lastname\nbob,M\xC3\xB6ller\n")
                  .code,
              0);
    EXPECT_THAT(users(), HasSubstr("M\xC3\xB6ller"));
    expectRefused("username,lastname\nbob,M\xFCller\n", {"isn't Unicode", "--charset"});
    EXPECT_EQ(importTable("username,lastname\nbob,M\xFCller\n", {"--charset", "windows-1252"}).code, 0);
    EXPECT_THAT(users(), HasSubstr("M\xC3\xBCller"));
    EXPECT_EQ(importTable("username\nbob\n", {"--charset", "klingon"}).code, 2);
}

TEST_P(UsersCommand, AFileThatCantBeReadIsTold) {
    for (const std::string& name : {folder() + "/nowhere.csv", folder()}) {
        const ProgramResult result = run({"import", "users", name, "--install", site()});
        EXPECT_EQ(result.code, 1);
        EXPECT_THAT(result.err, HasSubstr(name + " can't be read"));
    }
}

TEST_P(UsersCommand, ReadsStandardInput) {
    const ProgramResult result =
        run({"import", "users", "-", "--install", site()}, "username,password\nbob,oak\n");
    EXPECT_EQ(result.code, 0) << result.err;
    EXPECT_THAT(users(), HasSubstr("bob"));
}

TEST_P(UsersCommand, AFailureOfTheDatabaseChangesNothing) {
    const std::string before = users();
    sql("drop table TORVEX_GROUPS_USERS");
    const ProgramResult result = importTable("username,password,groups\nbob,oak,Staff\n");
    EXPECT_EQ(result.code, 1);
    EXPECT_EQ(users(), before);
}

TEST_P(UsersCommand, ExportsAllUsersWithoutPasswords) {
    sql("insert into TORVEX_USERS (userId, username, password, firstname) values (6, 'Bob \"B\"', 'oak', ' "
        "x')");
    sql("insert into TORVEX_GROUPS_USERS (groupId, userId) values (3, 5)");
    sql("insert into TORVEX_GROUPS_USERS (groupId, userId) values (99, 5)");
    EXPECT_EQ(exported(),
              "username,firstname,lastname,validFrom,validTo,groups\r\n"
              "ann,Ann,O'Neil,,20261231,\"Friends, old|Staff\"\r\n"
              "\"Bob \"\"B\"\"\",\" x\",,,,\r\n");
    EXPECT_THAT(exported({"--passwords"}), HasSubstr("ann,rose,Ann"));
}

TEST_P(UsersCommand, WhatIsExportedIsImportedAsItIs) {
    const std::string table = exported({"--passwords"});
    const std::string before = users() + memberships();
    const ProgramResult same = importTable(table);
    EXPECT_EQ(same.out, "Users: 0 added, 0 changed, 1 as they are\n");
    sql("delete from TORVEX_USERS");
    sql("delete from TORVEX_GROUPS_USERS");
    EXPECT_EQ(importTable(table).code, 0);
    EXPECT_EQ(exported({"--passwords"}), table);
    EXPECT_EQ(memberships(), "{\"username\":\"ann\",\"groupId\":2}\n");
}

// ---- Passwords that are kept as hashes ----

class StrongUsersCommand : public UsersCommand {
  protected:
    void SetUp() override {
        UsersCommand::SetUp();
        const StrongForm form = makeStrongForm("rose");
        sql("update TORVEX_USERS set password = '" + form.mark + "', passwordHash = '" + form.hash + "'");
        before = users();
    }
    std::string hash() { return sql("select passwordHash from TORVEX_USERS where username = 'ann'"); }

    std::string before;
};
INSTANTIATE_TEST_SUITE_P(Engines, StrongUsersCommand, bothEngines(), engineName);

TEST_P(StrongUsersCommand, AreNotExported) {
    const ProgramResult result = run({"export", "users", "--install", site(), "--passwords"});
    EXPECT_THAT(result.out, HasSubstr("ann,,Ann"));
    EXPECT_EQ(result.err,
              "torvex: 1 passwords are kept as hashes and can't be told; their cells are empty\n");
    EXPECT_EQ(importTable(result.out).out, "Users: 0 added, 0 changed, 1 as they are\n");
    EXPECT_EQ(users(), before);
}

TEST_P(StrongUsersCommand, AreLeftByTheSamePassword) {
    EXPECT_EQ(importTable("username,password\nann,ROSE\n").out, "Users: 0 added, 0 changed, 1 as they are\n");
    EXPECT_EQ(importTable("username,password,lastname\nann,rose,Oak\n").code, 0);
    EXPECT_THAT(users(), AllOf(HasSubstr("\"Oak\""), HasSubstr("strong:")));
}

TEST_P(StrongUsersCommand, GiveWayToAnotherPassword) {
    EXPECT_EQ(importTable("username,password\nann,strong:abcdefghijklm\n").out,
              "Users: 0 added, 1 changed, 0 as they are\n");
    EXPECT_THAT(users(), HasSubstr("strong:abcdefghijklm"));
    EXPECT_EQ(hash(), "{\"passwordHash\":\"\"}\n");
}

TEST_P(UsersCommand, ManyUsersShowTheirProgress) {
    std::string table = "username,password,groups\n";
    for (int i = 0; i < 1200; ++i) table += fmt::format("user{:04},word{},Staff\n", i, i);
    const ProgramResult result = importTable(table);
    EXPECT_EQ(result.code, 0) << result.err;
    EXPECT_THAT(result.err, HasSubstr("600 of 1200 users"));
    EXPECT_EQ(sql("select count(*) as n from TORVEX_GROUPS_USERS"), "{\"n\":1201}\n");
    const std::string lines = exported();
    EXPECT_EQ(std::count(lines.begin(), lines.end(), '\n'), 1202);
}

TEST_P(UsersCommand, WrongUsageIsTold) {
    EXPECT_EQ(run({"import"}).code, 2);
    EXPECT_EQ(run({"import", "users"}).code, 2);
    EXPECT_EQ(run({"import", "pages", "x.csv"}).code, 2);
    EXPECT_EQ(run({"export"}).code, 2);
    EXPECT_EQ(run({"export", "pages"}).code, 2);
    for (const auto* command : {"import", "export"}) {
        const ProgramResult help = run({command, "--help"});
        EXPECT_EQ(help.code, 0);
        EXPECT_THAT(help.out, AllOf(HasSubstr("Examples:"), HasSubstr("users")));
    }
}

}  // namespace
}  // namespace torvex::test
