#include <array>
#include <barrier>
#include <gmock/gmock.h>
#include <thread>

#include "accounts/StoredPassword.h"
#include "support/RecordsTest.h"

namespace torvex::test {
namespace {

using testing::ElementsAre;
using testing::IsEmpty;
using testing::SizeIs;
using testing::StartsWith;

/// What a form gives; the defaults are those of the operation.
struct Form {
    std::string username;
    std::string password;
    std::string name;
    std::string job;
    std::string email;
    int emailNotification = -1;
    std::string validFrom = "-1";
    std::string validTo = "-1";
};

class LoginRecordsTest : public RecordsTest {
  protected:
    /// Login 20 "iris" with everything filled, and the fixed "sa" (1).
    void SetUp() override {
        RecordsTest::SetUp();
        if (HasFatalFailure()) return;
        connection().execute("delete from TORVEX_LOGINS where username = 'sa'");
        row("TORVEX_LOGINS", {{"loginId", 1},
                              {"username", "SA"},
                              {"password", "1234"},
                              {"name", "System administrator"},
                              {"validFrom", "20200101"},
                              {"validTo", "20991231"}});
        row("TORVEX_LOGINS", {{"loginId", 20},
                              {"username", "iris"},
                              {"password", "5678"},
                              {"name", "Iris Falk"},
                              {"job", "Editor"},
                              {"email", "iris@site.test"},
                              {"emailNotification", 1},
                              {"validFrom", "20200101"},
                              {"validTo", "20991231"},
                              {"lock", bertsSession}});
    }

    std::string save(int loginId, const Form& form, int advId = 21) {
        return manager().saveLogin(advId, loginId, form.username, form.password, form.name, form.job,
                                   form.email, form.emailNotification, form.validFrom, form.validTo);
    }
    /// "username|password|name|job|email|emailNotification|validFrom|validTo|lock"
    std::string rowOf(const std::string& loginId) {
        const auto rows = rowsOf(
            "select username, password, name, job, email, emailNotification, validFrom, validTo, lock from "
            "TORVEX_LOGINS where loginId = " +
            loginId);
        return rows.empty() ? "" : rows.front();
    }
    static Form complete(const std::string& username = "reed") {
        return {username, "Secret", "Reed Marsh", "Writer", "reed@site.test", 1, "20260101", "20261231"};
    }
    std::string remove(int loginId, int advId = 21) { return manager().deleteLogin(loginId, advId); }
};
INSTANTIATE_TEST_SUITE_P(Engines, LoginRecordsTest, bothEngines(), engineName);

// ---- A new login ----

TEST_P(LoginRecordsTest, ANewLoginHasWhatTheFormGave) {
    const std::string id = save(0, complete());
    EXPECT_EQ(rowOf(id),
              "reed|" + encodePassword("Secret") + "|Reed Marsh|Writer|reed@site.test|1|20260101|20261231|");
    EXPECT_THAT(auditTrail(), ElementsAre("7|Anna Author|0||21|new|New login \"Reed Marsh\""));
}

TEST_P(LoginRecordsTest, ItsIdIsItsNumber) {
    const std::string id = save(0, complete());
    EXPECT_EQ(manager().getLoginId("reed"), std::stoi(id));
}

TEST_P(LoginRecordsTest, WhatIsNotGivenIsEmpty) {
    const std::string id = save(0, {"reed", "Secret", "Reed Marsh", "", ""});
    EXPECT_EQ(rowOf(id), "reed|" + encodePassword("Secret") + "|Reed Marsh|||0|-|-|");
}

TEST_P(LoginRecordsTest, FieldsAreTrimmedAndCutByCharacters) {
    std::string wide;
    for (int i = 0; i < 60; ++i) wide += "\xC3\xA9";
    const auto wideOf = [&](std::size_t count) { return wide.substr(0, 2 * count); };
    const std::string id = save(0, {"  " + wide + " ", " secret ", " " + wide, wide, wide});
    EXPECT_EQ(rowOf(id), wideOf(20) + "|" + encodePassword("secret") + "|" + wideOf(30) + "|" + wideOf(50) +
                             "|" + wideOf(50) + "|0|-|-|");
}

TEST_P(LoginRecordsTest, ItStartsWithTheSettingsOfLogin1) {
    connection().execute("delete from TORVEX_SETUP where loginId <> 0");
    row("TORVEX_SETUP",
        {{"parameter", "torvex_date_format"}, {"value", "ddmmyyyy"}, {"dataType", "C"}, {"loginId", 1}});
    row("TORVEX_SETUP", {{"parameter", "x"}, {"value", "5"}, {"dataType", "N"}, {"loginId", 1}});
    row("TORVEX_SETUP", {{"parameter", "y"}, {"value", "5"}, {"dataType", "N"}, {"loginId", 20}});
    const std::string id = save(0, complete());
    EXPECT_THAT(rowsOf("select parameter, value, dataType from TORVEX_SETUP where loginId = " + id +
                       " order by parameter"),
                ElementsAre("torvex_date_format|ddmmyyyy|C", "x|5|N"));
    EXPECT_THAT(rowsOf("select parameter from TORVEX_SETUP where loginId = 1"), SizeIs(2));
}

TEST_P(LoginRecordsTest, ALoginThatIsNotLoggedInSavesNothing) {
    actAsNobody();
    expectRefusal("-10", [&] { return save(0, {}); });
    expectRefusal("-10", [&] { return save(20, complete()); });
}

TEST_P(LoginRecordsTest, ANewLoginNeedsAUsernameAPasswordAndAName) {
    Form form = complete("iris");
    form.username = "  ";
    form.password = form.name = " ";
    expectRefusal("-3", [&] { return save(0, form); });
    form.username = "iris";
    expectRefusal("-4", [&] { return save(0, form); });
    form.password = "x";
    expectRefusal("-5", [&] { return save(0, form); });
    form.name = "x";
    expectRefusal("-2", [&] { return save(0, form); });
}

TEST_P(LoginRecordsTest, AUsernameIsTakenInAnyCase) {
    expectRefusal("-2", [&] { return save(0, complete(" IRIS ")); });
    expectRefusal("-2", [&] { return save(0, complete("sa")); });
}

TEST_P(LoginRecordsTest, AUsernameWithQuotesIsStoredAsItIs) {
    const std::string id = save(0, complete("o'neil\" --"));
    EXPECT_EQ(cell("select username from TORVEX_LOGINS where loginId = " + id), "o'neil\" --");
    expectRefusal("-2", [&] { return save(0, complete("O'Neil\" --")); });
}

TEST_P(LoginRecordsTest, OfTwoSessionsThatAddOneNameAtOnceOneDoes) {
    std::array<std::string, 2> codes;
    std::barrier start(2);
    std::array<std::thread, 2> threads;
    for (std::size_t i = 0; i < 2; ++i) {
        threads[i] = std::thread([&, i] {
            TestHost own;
            own.database.target = &database();
            own.application.set("torvex_odbc", connectionText());
            own.session.set("torvex_loginId", anna);
            const auto connection = openAnother();
            cManager manager(own.context());
            manager.connect(*connection);
            start.arrive_and_wait();
            codes[i] = manager.saveLogin(21, 0, "reed", "x", "Reed", "");
        });
    }
    for (auto& thread : threads) thread.join();
    EXPECT_THAT(rowsOf("select loginId from TORVEX_LOGINS where username = 'reed'"), SizeIs(1));
    EXPECT_EQ(std::count(codes.begin(), codes.end(), "-2"), 1) << codes[0] << ' ' << codes[1];
}

TEST_P(LoginRecordsTest, ANameThatIsTakenJustBeforeIsFound) {
    beforeTransaction([&] { save(0, complete()); });
    EXPECT_EQ(save(0, complete()), "-2");
    EXPECT_THAT(rowsOf("select loginId from TORVEX_LOGINS where username = 'reed'"), SizeIs(1));
}

// ---- A login that is there ----

TEST_P(LoginRecordsTest, WhatIsGivenReplacesWhatIsThere) {
    EXPECT_EQ(save(20, complete()), "20");
    EXPECT_EQ(rowOf("20"),
              "reed|" + encodePassword("Secret") + "|Reed Marsh|Writer|reed@site.test|1|20260101|20261231|");
    EXPECT_THAT(auditTrail(), ElementsAre("7|Anna Author|0||21|save|Login \"Reed Marsh\" has been updated"));
}

TEST_P(LoginRecordsTest, WhatIsEmptyStaysAndTheRecordIsLetGo) {
    EXPECT_EQ(save(20, {}), "20");
    EXPECT_EQ(rowOf("20"), "iris|5678|Iris Falk|Editor|iris@site.test|1|20200101|20991231|");
    EXPECT_THAT(auditTrail(), ElementsAre("7|Anna Author|0||21|save|Login \"Iris Falk\" has been updated"));
}

TEST_P(LoginRecordsTest, AnEmptyPasswordKeepsTheStoredOne) {
    Form form;
    form.name = "Iris F.";
    form.password = "  ";
    EXPECT_EQ(save(20, form), "20");
    EXPECT_EQ(cell("select password from TORVEX_LOGINS where loginId = 20"), "5678");
}

TEST_P(LoginRecordsTest, ItsOwnNameIsNotTaken) {
    Form form;
    form.username = "IRIS";
    EXPECT_EQ(save(20, form), "20");
    form.username = "Bert";
    expectRefusal("-2", [&] { return save(20, form); });
}

TEST_P(LoginRecordsTest, ANotificationBelowNoughtStays) {
    Form form;
    form.emailNotification = 0;
    save(20, form);
    EXPECT_EQ(cell("select emailNotification from TORVEX_LOGINS where loginId = 20"), "0");
    form.emailNotification = -1;
    save(20, form);
    EXPECT_EQ(cell("select emailNotification from TORVEX_LOGINS where loginId = 20"), "0");
}

TEST_P(LoginRecordsTest, ADayThatDoesNotExistLeavesTheBound) {
    for (const auto* day :
         {"20261301", "20260230", "00000101", "2026-1-1", "202601", "202601011", "today", "20260a01", "-1"}) {
        SCOPED_TRACE(day);
        Form form;
        form.validFrom = form.validTo = day;
        EXPECT_EQ(save(20, form), "20");
        EXPECT_EQ(rowOf("20"), "iris|5678|Iris Falk|Editor|iris@site.test|1|20200101|20991231|");
    }
}

TEST_P(LoginRecordsTest, AnEmptyBoundIsTakenAwayAndADayIsKept) {
    Form form;
    form.validFrom = "  ";
    form.validTo = " 20280229 ";
    EXPECT_EQ(save(20, form), "20");
    EXPECT_EQ(rowOf("20"), "iris|5678|Iris Falk|Editor|iris@site.test|1||20280229|");
}

TEST_P(LoginRecordsTest, ALoginThatIsNotThereIsRefused) {
    for (const int id : {99, -1, -32768}) expectRefusal("-1", [&] { return save(id, complete()); });
    expectRefusal("-2", [&] { return save(99, complete("bert")); });
}

TEST_P(LoginRecordsTest, TheAdministratorKeepsNameAndHasNoBounds) {
    EXPECT_EQ(save(1, complete()), "1");
    EXPECT_EQ(rowOf("1"), "sa|" + encodePassword("Secret") + "|Reed Marsh|Writer|reed@site.test|1|||");
    expectRefusal("-2", [&] { return save(1, complete("bert")); });
}

TEST_P(LoginRecordsTest, TheLineIsWrittenWithoutAnEntryOfTheMenuToo) {
    save(20, {}, 0);
    EXPECT_THAT(auditTrail(), ElementsAre("7|Anna Author|0||0|save|Login \"Iris Falk\" has been updated"));
}

TEST_P(LoginRecordsTest, AFailureOfSavingIsAnErrorAndChangesNothing) {
    for (const int id : {0, 20}) {
        const auto before = everything();
        for (int step = 1;; ++step) {
            failing().reset(step);
            std::string error;
            try {
                save(id, complete());
            } catch (const Error& caught) {
                error = caught.what();
            }
            const bool failed = failing().steps >= step;
            failing().reset(0);
            if (!failed) {
                EXPECT_GT(step, 5);
                break;
            }
            EXPECT_THAT(error, StartsWith(chain({"saveLogin !"})));
            ASSERT_TRUE(everything() == before) << step;
        }
        connection().execute("delete from TORVEX_LOGINS where username = 'reed' and loginId <> 20");
    }
}

TEST_P(LoginRecordsTest, ATrailThatCantBeWrittenIsToldToOperators) {
    drop("TORVEX_AUDIT_TRAIL");
    EXPECT_EQ(save(20, {}), "20");
    EXPECT_THAT(host.log.lines, SizeIs(1));
}

// ---- deleteLogin ----

TEST_P(LoginRecordsTest, ALoginGoesWithItsRolesAndSettings) {
    connection().execute("update TORVEX_LOGINS set lock = ''");
    for (const int id : {20, bert}) {
        row("TORVEX_ROLES_LOGINS", {{"roleId", 3}, {"loginId", id}});
        row("TORVEX_SETUP", {{"parameter", "x"}, {"value", "5"}, {"dataType", "N"}, {"loginId", id}});
    }
    EXPECT_EQ(remove(20), "");
    EXPECT_EQ(rowOf("20"), "");
    EXPECT_THAT(rowsOf("select loginId from TORVEX_ROLES_LOGINS"), ElementsAre("8"));
    EXPECT_THAT(rowsOf("select loginId from TORVEX_SETUP where parameter = 'x'"), ElementsAre("8"));
    EXPECT_THAT(auditTrail(), ElementsAre("7|Anna Author|0||21|delete|Login \"Iris Falk\" has been removed"));
}

TEST_P(LoginRecordsTest, ARemovalByNoEntryWritesNoLine) {
    connection().execute("update TORVEX_LOGINS set lock = ''");
    EXPECT_EQ(manager().deleteLogin(20), "");
    EXPECT_THAT(auditTrail(), IsEmpty());
}

TEST_P(LoginRecordsTest, RefusedRemovalsChangeNothing) {
    for (const int id : {99, 0, -1}) expectRefusal("-1", [&] { return remove(id); });
    hold("TORVEX_LOGINS", "loginId", 1, bertsSession);
    expectRefusal("-2", [&] { return remove(1); });
    expectRefusal("-3", [&] { return remove(20); });
    actAsNobody();
    expectRefusal("-10", [&] { return remove(99); });
    expectRefusal("-10", [&] { return remove(20); });
}

TEST_P(LoginRecordsTest, TheLastLoginThatMayGiveRightsStays) {
    connection().execute("update TORVEX_LOGINS set lock = ''");
    row("TORVEX_ROLES_LOGINS", {{"roleId", 3}, {"loginId", 20}});
    for (const int entry : {21, 22})
        row("TORVEX_ADVANCED_RIGHTS", {{"roleId", 3}, {"advId", entry}, {"editAccess", 1}});
    expectRefusal("-4", [&] { return remove(20); });
    row("TORVEX_ROLES_LOGINS", {{"roleId", 3}, {"loginId", bert}});
    EXPECT_EQ(remove(20), "");
}

TEST_P(LoginRecordsTest, AFailureOfARemovalChangesNothing) {
    connection().execute("update TORVEX_LOGINS set lock = ''");
    failEverywhere("", "-99", [&] { return remove(20); });
}

// ---- Reading ----

TEST_P(LoginRecordsTest, TheDetailsOfALoginFillTheProperties) {
    connection().execute("update TORVEX_LOGINS set username = ' iris ', job = ' Editor ' where loginId = 20");
    manager().getLoginDetails(20);
    EXPECT_EQ(manager().adminLoginId(), 20);
    EXPECT_EQ(manager().adminUsername(), "iris");
    EXPECT_EQ(manager().adminFullname(), "Iris Falk");
    EXPECT_EQ(manager().adminJob(), "Editor");
    EXPECT_EQ(manager().adminEmail(), "iris@site.test");
    EXPECT_EQ(manager().adminEmailNotification(), 1);
    EXPECT_EQ(manager().adminValidFrom(), "20200101");
    EXPECT_EQ(manager().adminValidTo(), "20991231");
    EXPECT_EQ(manager().loginId(), anna) << "the object's own login is another matter";
    EXPECT_EQ(manager().username(), "anna");
}

TEST_P(LoginRecordsTest, ALoginThatIsNotThereEmptiesThem) {
    manager().getLoginDetails(20);
    manager().getLoginDetails(99);
    EXPECT_EQ(manager().adminLoginId(), -1);
    EXPECT_EQ(manager().adminUsername() + manager().adminFullname() + manager().adminJob() +
                  manager().adminEmail() + manager().adminValidFrom() + manager().adminValidTo(),
              "");
    EXPECT_EQ(manager().adminEmailNotification(), 0);
}

TEST_P(LoginRecordsTest, ALoginsColumnsMayBeNull) {
    manager().getLoginDetails(bert);
    EXPECT_EQ(manager().adminLoginId(), bert);
    EXPECT_EQ(manager().adminJob() + manager().adminEmail() + manager().adminValidFrom(), "");
}

TEST_P(LoginRecordsTest, TheListIsByNameOrByUsername) {
    const auto names = [&](int sortId) {
        const Value list = manager().getLoginList(sortId);
        EXPECT_EQ(list.grid().columns(), 4U);
        std::vector<std::string> lines;
        for (std::size_t row = 0; row < list.grid().rows(); ++row) {
            lines.push_back(list.grid().at(0, row).toText() + "|" + list.grid().at(1, row).toText() + "|" +
                            list.grid().at(2, row).toText());
        }
        return lines;
    };
    connection().execute("update TORVEX_LOGINS set username = 'zora' where loginId = 7");
    const std::string anna7 = "7|zora|Anna Author";
    EXPECT_THAT(names(1),
                ElementsAre(anna7, "8|bert|Bert Broker", "20|iris|Iris Falk", "1|SA|System administrator"));
    for (const int sortId : {0, 2, -1}) {
        EXPECT_THAT(names(sortId), ElementsAre("8|bert|Bert Broker", "20|iris|Iris Falk",
                                               "1|SA|System administrator", anna7));
    }
}

TEST_P(LoginRecordsTest, WithoutLoginsTheListIsAnEmptyText) {
    connection().execute("delete from TORVEX_LOGINS");
    EXPECT_EQ(manager().getLoginList(), Value(""));
}

TEST_P(LoginRecordsTest, AllRolesAreListedAndMarked) {
    EXPECT_TRUE(manager().getLoginRoles(20).isEmpty());
    for (const int id : {3, 33}) {
        row("TORVEX_ROLES", {{"roleId", id}, {"roleName", "Role " + std::to_string(100 - id)}});
    }
    row("TORVEX_ROLES_LOGINS", {{"roleId", 33}, {"loginId", 20}});
    row("TORVEX_ROLES_LOGINS", {{"roleId", 33}, {"loginId", 20}});
    const Value list = manager().getLoginRoles(20);
    ASSERT_EQ(list.grid().rows(), 2U);
    EXPECT_EQ(list.grid().columns(), 4U);
    EXPECT_EQ(list.grid().at(0, 0), Value(33));
    EXPECT_EQ(list.grid().at(1, 0), Value("Role 67"));
    EXPECT_EQ(list.grid().at(2, 0), Value(1));
    EXPECT_EQ(list.grid().at(2, 1), Value(0));
}

TEST_P(LoginRecordsTest, FailuresOfReadingHaveTheOperationsLine) {
    drop("TORVEX_LOGINS");
    drop("TORVEX_ROLES");
    EXPECT_THAT(errorOf([&] { manager().getLoginDetails(20); }), StartsWith(chain({"getLoginDetails !"})));
    EXPECT_THAT(errorOf([&] { manager().getLoginList(); }), StartsWith(chain({"getLoginList !"})));
    EXPECT_THAT(errorOf([&] { manager().getLoginRoles(20); }), StartsWith(chain({"getLoginRoles !"})));
}

}  // namespace
}  // namespace torvex::test
