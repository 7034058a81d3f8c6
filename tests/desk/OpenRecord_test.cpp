#include <gmock/gmock.h>

#include "support/RegistersTest.h"

namespace torvex::test {
namespace {

using testing::ElementsAre;
using testing::StartsWith;

class OpenRecordTest : public RegistersTest {
  protected:
    void SetUp() override {
        RegistersTest::SetUp();
        if (HasFatalFailure()) return;
        row("TORVEX_ROLES", {{"roleId", 3}, {"roleName", "Editors"}});
        row("TORVEX_ROLES_LOGINS", {{"loginId", anna}, {"roleId", 3}});
    }
    void allow(int advId, const std::string& site = "", const std::string& lang = "", bool edit = true) {
        row("TORVEX_ADVANCED_RIGHTS", {{"roleId", 3},
                                       {"advId", advId},
                                       {"site", site},
                                       {"lang", lang},
                                       {"viewAccess", 1},
                                       {"editAccess", edit ? 1 : 0}});
    }
    std::string open(const std::string& item, const std::string& id) {
        return linesOf(registers().open(item, id)).at(0);
    }
    std::string lockOfRole() { return cell("select lock from TORVEX_ROLES where roleId = 3"); }
};
INSTANTIATE_TEST_SUITE_P(Engines, OpenRecordTest, bothEngines(), engineName);

TEST_P(OpenRecordTest, ARecordIsHeldByWhoMayChangeIt) {
    allow(22);
    EXPECT_EQ(open(" ROLE ", " 3 "), "held|7|Anna Author");
    EXPECT_EQ(lockOfRole(), host.session.id());
    EXPECT_EQ(open("role", "3"), "held|7|Anna Author");
}

TEST_P(OpenRecordTest, ARecordOfAnotherIsTheirs) {
    allow(22);
    hold("TORVEX_ROLES", "roleId", 3, bertsSession);
    EXPECT_EQ(open("role", "3"), "other|8|Bert Broker");
    EXPECT_EQ(lockOfRole(), bertsSession);
}

TEST_P(OpenRecordTest, ALockWhoseSessionIsGoneIsTaken) {
    allow(22);
    hold("TORVEX_ROLES", "roleId", 3, "a session long ago");
    EXPECT_EQ(open("role", "3"), "held|7|Anna Author");
}

TEST_P(OpenRecordTest, WhoMayOnlyLookTakesNothing) {
    allow(22, "", "", false);
    EXPECT_EQ(open("role", "3"), "noRight|0|");
    EXPECT_EQ(lockOfRole(), "");
}

TEST_P(OpenRecordTest, NobodyTakesNothing) {
    allow(22);
    actAsNobody();
    EXPECT_EQ(open("role", "3"), "noRight|0|");
    EXPECT_EQ(lockOfRole(), "");
}

TEST_P(OpenRecordTest, TheAdministratorMayChangeEverything) {
    connection().execute("delete from TORVEX_LOGINS where username = 'sa'");
    login(2, "sa", "The Administrator");
    actAs(2, "sa", "The Administrator");
    EXPECT_EQ(open("role", "3"), "held|2|The Administrator");
}

TEST_P(OpenRecordTest, WhatIsntThereIsGone) {
    allow(22);
    for (const auto* id : {"99", "", "x", "3 or 1=1"}) EXPECT_EQ(open("role", id), "gone|0|") << id;
    EXPECT_EQ(open("bicycle", "3"), "gone|0|");
}

TEST_P(OpenRecordTest, WhichRecordsThereAreIsToldToWhoMayChangeThem) {
    EXPECT_EQ(open("role", "99"), "noRight|0|");
    EXPECT_EQ(open("role", "3"), "noRight|0|");
}

TEST_P(OpenRecordTest, ARecordOfASiteAsksForTheRightThere) {
    row("TORVEX_TEMPLATES", {{"tpl_id", 43}, {"tpl_site", "aa"}, {"tpl_lang", "en"}});
    row("TORVEX_TEMPLATES", {{"tpl_id", 44}, {"tpl_site", "aa"}, {"tpl_lang", "de"}});
    row("TORVEX_TEMPLATES", {{"tpl_id", 45}, {"tpl_site", "bb"}, {"tpl_lang", "en"}});
    allow(221, "aa", "en");
    EXPECT_EQ(open("contentTemplate", "43"), "held|7|Anna Author");
    EXPECT_EQ(open("contentTemplate", "44"), "noRight|0|");
    EXPECT_EQ(open("contentTemplate", "45"), "noRight|0|");
}

TEST_P(OpenRecordTest, EveryRegisterAsksForItsOwnEntry) {
    const struct {
        std::string item, id, table;
        Columns key;
        int advId;
        bool inSite, inLang;
    } cases[] = {
        {"application", "41", "TORVEX_APPLICATIONS", {{"app_id", 41}}, 40, false, false},
        {"baseTemplate",
         "42",
         "TORVEX_BASETEMPLATES",
         {{"btpl_id", 42}, {"btpl_site", "aa"}, {"btpl_lang", "en"}},
         222,
         true,
         true},
        {"group", "44", "TORVEX_USERGROUPS", {{"groupId", 44}}, 31, false, false},
        {"htmlFeed",
         "45",
         "TORVEX_FEEDS_HTML",
         {{"feedId", 45}, {"feedSite", "aa"}, {"feedLang", "en"}},
         231,
         true,
         true},
        {"interface", "fr", "TORVEX_INTERFACE_LANGUAGES", {{"id", 46}, {"lang_id", "fr"}}, 51, false, false},
        {"language", "de", "TORVEX_LANGUAGES", {{"lang", "de"}}, 12, false, false},
        {"login", "48", "TORVEX_LOGINS", {{"loginId", 48}}, 21, false, false},
        {"metadata",
         "49",
         "TORVEX_METADATA",
         {{"metaData_id", 49}, {"metaData_site", "aa"}},
         120,
         true,
         false},
        {"server", "51", "TORVEX_SERVERS", {{"serverId", 51}}, 62, false, false},
        {"site", "ab", "TORVEX_SITES", {{"site", "ab"}}, 11, false, false},
        {"stylesheet",
         "53",
         "TORVEX_STYLESHEETS",
         {{"ss_id", 53}, {"ss_site", "aa"}, {"ss_lang", "en"}},
         223,
         true,
         true},
        {"user", "54", "TORVEX_USERS", {{"userId", 54}}, 32, false, false},
        {"xmlFeed",
         "55",
         "TORVEX_FEEDS_XML",
         {{"feedId", 55}, {"feedSite", "aa"}, {"feedLang", "en"}},
         232,
         true,
         true},
    };
    for (const auto& one : cases) {
        SCOPED_TRACE(one.item);
        row(one.table, one.key);
        EXPECT_EQ(open(one.item, one.id), "noRight|0|");
        allow(one.advId, one.inSite ? "aa" : "", one.inLang ? "en" : "");
        EXPECT_EQ(open(one.item, one.id), "held|7|Anna Author");
    }
}

TEST_P(OpenRecordTest, TheSettingsAreOneRecord) {
    EXPECT_EQ(open("config", ""), "noRight|0|");
    allow(61);
    EXPECT_EQ(open("config", ""), "held|7|Anna Author");
    host.application.set("torvex_config_lock", bertsSession);
    EXPECT_EQ(open("config", ""), "other|8|Bert Broker");
}

TEST_P(OpenRecordTest, AFailureSaysWhatFailed) {
    allow(22);
    drop("TORVEX_ROLES");
    EXPECT_THAT(errorOf([&] { registers().open("role", "3"); }), StartsWith(chain({"open !"})));
}

}  // namespace
}  // namespace torvex::test
